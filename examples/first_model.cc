// The first model of docs/getting-started.md: a two-product plan.
//
//   maximise   3 x + 2 y
//   subject to x +   y <= 4
//              x + 3 y <= 6
//              x       <= 3,   x, y >= 0
//
// The optimum is 11, at x = 3 and y = 1.
#include <cmath>
#include <cstdio>

#include "zelq/zelqcpp.h"

int main() {
  try {
    Zelq::Envr env;                                    // the engine environment
    Zelq::Model model = env.CreateModel("first");      // one problem in it

    Zelq::Var x = model.AddVar(0, Zelq::kInfinity, 0, Zelq::kContinuous, "x");
    Zelq::Var y = model.AddVar(0, Zelq::kInfinity, 0, Zelq::kContinuous, "y");

    model.AddConstr(x + y <= 4, "total");
    model.AddConstr(x + 3 * y <= 6, "wood");
    model.AddConstr(x <= 3, "cap");
    model.SetObjective(3 * x + 2 * y, Zelq::kMaximize);

    model.Solve();

    const double best = model.GetDblAttr("LpObjVal");
    std::printf("objective %g at x = %g, y = %g\n", best, x.GetValue(), y.GetValue());
    return std::fabs(best - 11) < 1e-9 ? 0 : 1;
  } catch (const Zelq::Exception& e) {                 // any failure, with its code and message
    std::printf("error %d: %s\n", e.GetCode(), e.what());
    return 1;
  }
}
