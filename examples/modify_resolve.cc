// Changing a solved model and solving it again: add a constraint, change an
// objective coefficient, then remove the constraint. Each solve starts from
// the model as it stands after the change.
//
//   maximise 3 x + 5 y  s.t.  x <= 4,  2 y <= 12,  3 x + 2 y <= 18     -> 36
//   add      x + y <= 5                                                -> 25
//   objective coefficient of x becomes 10                              -> 45
//   remove   x + y <= 5                                                -> 55
#include <cmath>
#include <cstdio>

#include "zelq/zelqcpp.h"

namespace {

// Solves and returns the optimal objective (NaN when not optimal).
double SolveAndReport(Zelq::Model& model, const char* step) {
  model.Solve();
  const double objective =
      model.GetIntAttr("LpStatus") == 1 ? model.GetDblAttr("LpObjVal") : std::nan("");
  std::printf("%-28s objective %g\n", step, objective);
  return objective;
}

}  // namespace

int main() {
  try {
    Zelq::Envr env;
    Zelq::Model model = env.CreateModel("resolve");
    model.SetIntParam("Logging", 0);

    Zelq::Var x = model.AddVar(0, 4, 0, Zelq::kContinuous, "x");
    Zelq::Var y = model.AddVar(0, Zelq::kInfinity, 0, Zelq::kContinuous, "y");
    model.AddConstr(2 * y <= 12, "c2");
    model.AddConstr(3 * x + 2 * y <= 18, "c3");
    model.SetObjective(3 * x + 5 * y, Zelq::kMaximize);

    const double expected[] = {36, 25, 45, 55};
    double got[4];
    got[0] = SolveAndReport(model, "original");

    Zelq::Constraint extra = model.AddConstr(x + y <= 5, "extra");
    got[1] = SolveAndReport(model, "with x + y <= 5");

    x.Set("Obj", 10);
    got[2] = SolveAndReport(model, "objective 10 x + 5 y");

    extra.Remove();  // removal is applied before the next solve
    got[3] = SolveAndReport(model, "without x + y <= 5");

    for (int i = 0; i < 4; ++i)
      if (!(std::fabs(got[i] - expected[i]) < 1e-6)) return 1;
    return 0;
  } catch (const Zelq::Exception& e) {
    std::printf("error %d: %s\n", e.GetCode(), e.what());
    return 1;
  }
}
