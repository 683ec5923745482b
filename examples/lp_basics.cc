// lp_basics: build a small linear program, solve it, read the results, then
// change the model and solve again.
//
//   maximise   3x + 5y
//   subject to      x       <= 4    (plant 1)
//                       2y  <= 12   (plant 2)
//                  3x + 2y  <= 18   (plant 3)
//              x, y >= 0
//
// The optimum is 36 at x = 2, y = 6. Every object a factory or an operation
// returns belongs to the caller; failures are read from GetErrorCode and
// GetErrorMessage after each call (the library never throws).
#include <cstdio>
#include <memory>
#include <vector>

#include "zelq/zelqcpp_exports.h"

namespace {

template <class T>
using Owned = std::unique_ptr<T>;

// Prints the object's failure, if any; true when it has none.
template <class T>
bool Ok(const T& object, const char* what) {
  if (object.GetErrorCode() == 0) return true;
  std::fprintf(stderr, "%s failed: %s\n", what, object.GetErrorMessage());
  return false;
}

Owned<Zelq::IConstraint> AddConstraint(Zelq::IModel& model, const std::vector<Zelq::IVar*>& vars,
                                       const std::vector<double>& coeffs, double rhs,
                                       const char* name) {
  Owned<Zelq::IExpr> expr(CreateExpr(0.0));
  for (size_t k = 0; k < vars.size(); ++k) expr->AddTerm(vars[k], coeffs[k]);
  return Owned<Zelq::IConstraint>(model.AddConstr(expr.get(), 'L', rhs, name));
}

void PrintSolution(Zelq::IModel& model, Zelq::IVar& x, Zelq::IVar& y,
                   const std::vector<Zelq::IConstraint*>& rows) {
  std::printf("status %d, objective %g\n", model.GetIntAttr("Status"), model.GetDblAttr("ObjVal"));
  std::printf("  x = %g, y = %g\n", x.Get("Value"), y.Get("Value"));
  for (Zelq::IConstraint* row : rows) {
    std::printf("  %s: activity %g, dual %g\n", row->GetName(), row->Get("Slack"),
                row->Get("Dual") + 0.0);  // + 0.0 prints -0 as 0
  }
}

}  // namespace

int main() {
  Owned<Zelq::IEnvrConfig> config(CreateEnvrConfig());
  config->Set("Banner", "0");
  config->Set("Logging", "0");
  Owned<Zelq::IEnvr> env(CreateEnvrWithConfig(config.get(), nullptr));
  if (!Ok(*env, "creating the environment")) return 1;
  Owned<Zelq::IModel> model(CreateModel(env.get(), "plants"));
  if (!Ok(*model, "creating the model")) return 1;

  // Variables carry their objective coefficient.
  Owned<Zelq::IVar> x(model->AddVar(0.0, 1e30, 3.0, 'C', "x"));
  Owned<Zelq::IVar> y(model->AddVar(0.0, 1e30, 5.0, 'C', "y"));
  Owned<Zelq::IConstraint> plant1 = AddConstraint(*model, {x.get()}, {1}, 4, "plant1");
  Owned<Zelq::IConstraint> plant2 = AddConstraint(*model, {y.get()}, {2}, 12, "plant2");
  Owned<Zelq::IConstraint> plant3 = AddConstraint(*model, {x.get(), y.get()}, {3, 2}, 18, "plant3");
  model->SetObjSense(-1);  // maximise
  if (!Ok(*model, "building the model")) return 1;

  model->Solve();
  if (!Ok(*model, "solving")) return 1;
  std::printf("First solve\n");
  PrintSolution(*model, *x, *y, {plant1.get(), plant2.get(), plant3.get()});
  std::printf("  basis: x %d, y %d (1 = basic)\n", x->GetBasis(), y->GetBasis());

  // The dual of plant3 holds while its capacity stays in this range.
  double low = 0, high = 0;
  plant3->GetShadowPriceRange(1, &low, &high);
  if (Ok(*plant3, "shadow price range")) {
    std::printf("  plant3's dual holds for capacities in [%g, %g]\n", low, high);
  }

  // Closing plant 3 removes its constraint; the model applies the removal
  // before the next solve.
  plant3->Remove();
  model->Solve();
  if (!Ok(*model, "solving again")) return 1;
  std::printf("Without plant3\n");
  PrintSolution(*model, *x, *y, {plant1.get(), plant2.get()});
  return 0;
}
