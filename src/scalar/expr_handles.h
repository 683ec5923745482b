// Making linear-expression objects and reaching the value behind one.
//
// Every Zelq::IExpr the library sees was made by the library, so the model
// and the builders reach the ExprData directly.
#ifndef ZELQ_SCALAR_EXPR_HANDLES_H_
#define ZELQ_SCALAR_EXPR_HANDLES_H_

#include "frame/shared_block.h"
#include "scalar/expr_data.h"
#include "zelq/zelqcpp_expr_iface.h"

namespace Zelq {

// The value behind an expression; null for a null pointer.
ExprData* ExprOf(const IExpr* expr);

// A new expression owning `data` (fresh shared storage).
IExpr* NewExpr(ExprData data);
// A new expression object sharing existing data.
IExpr* NewExprSharing(const Shared<ExprData>& data);

}  // namespace Zelq

#endif  // ZELQ_SCALAR_EXPR_HANDLES_H_
