// Exported factories of linear expressions.
#include "scalar/expr_handles.h"
#include "zelq/zelqcpp_exports.h"

extern "C" {

ZELQCPP_API Zelq::IExpr* CreateExpr(double constant) {
  Zelq::ExprData data;
  data.constant = constant;
  return Zelq::NewExpr(std::move(data));
}

// A null variable still gives the one term, with an invalid variable (index
// -2), as AddTerm does: it is never printed, a merge drops it, and Evaluate
// reports the variable's "Invalid variable".
ZELQCPP_API Zelq::IExpr* CreateLinExpr(Zelq::IVar* var, double coeff) {
  Zelq::ExprData data;
  Zelq::AppendTerm(data, Zelq::TermVar(var), coeff);
  return Zelq::NewExpr(std::move(data));
}

}  // extern "C"
