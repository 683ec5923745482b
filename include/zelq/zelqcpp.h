// The header layer of Zelq: value classes over the library's interfaces.
//
//   #include "zelq/zelqcpp.h"
//
//   Zelq::Envr env;
//   Zelq::Model model = env.CreateModel("plan");
//   Zelq::Var x = model.AddVar(0, Zelq::kInfinity, 0, Zelq::kContinuous, "x");
//   Zelq::Var y = model.AddVar(0, Zelq::kInfinity, 0, Zelq::kContinuous, "y");
//   model.AddConstr(x + y <= 4, "total");
//   model.SetObjective(3 * x + 2 * y, Zelq::kMaximize);
//   model.Solve();
//
// Parts: zelqcpp_envr.h (Envr, EnvrConfig), zelqcpp_model.h (Model),
// zelqcpp_elems.h (Var, Constraint, arrays, Column), zelqcpp_expr.h (Expr,
// operators, TempConstr), zelqcpp_ndarray.h (NdArray, NDim, View) and
// zelqcpp_check.h (failures as Zelq::Exception).
#ifndef ZELQ_ZELQCPP_H_
#define ZELQ_ZELQCPP_H_

#include "zelq/zelqcpp_check.h"
#include "zelq/zelqcpp_consts.h"
#include "zelq/zelqcpp_elems.h"
#include "zelq/zelqcpp_envr.h"
#include "zelq/zelqcpp_exception.h"
#include "zelq/zelqcpp_expr.h"
#include "zelq/zelqcpp_model.h"
#include "zelq/zelqcpp_ndarray.h"

#endif  // ZELQ_ZELQCPP_H_
