// model_app: the header layer from an application built against an installed Zelq.
//
//   maximise   3x + 2y
//   subject to x +  y <= 4
//              x + 3y <= 6,   0 <= x <= 3,  y >= 0
//
// The optimum is 11 at x = 3, y = 1. Exits 0 only when the library finds it,
// and reports the library's own code and message when a call fails.
#include <cmath>
#include <cstdio>

#include <zelq/zelqcpp.h>

static_assert(__cplusplus >= 202002L, "the Zelq::zelqcpp target should bring C++20");

namespace {

bool Near(double value, double expected) { return std::fabs(value - expected) < 1e-6; }

int Run() {
  Zelq::EnvrConfig config;
  config.Set("Banner", "0");
  config.Set("Logging", "0");
  Zelq::Envr env(config);
  Zelq::Model model = env.CreateModel("consumer");

  Zelq::Var x = model.AddVar(0.0, 3.0, 0.0, Zelq::kContinuous, "x");
  Zelq::Var y = model.AddVar(0.0, Zelq::kInfinity, 0.0, Zelq::kContinuous, "y");
  model.AddConstr(x + y <= 4.0, "c1");
  model.AddConstr(x + 3.0 * y <= 6.0, "c2");
  model.SetObjective(3.0 * x + 2.0 * y, Zelq::kMaximize);
  model.Solve();

  double objective = model.GetDblAttr("ObjVal");
  std::printf("model_app: objective %g, x = %g, y = %g\n", objective, x.GetValue(), y.GetValue());
  if (!Near(objective, 11.0) || !Near(x.GetValue(), 3.0) || !Near(y.GetValue(), 1.0)) {
    std::fprintf(stderr, "model_app: expected objective 11 at x = 3, y = 1\n");
    return 1;
  }
  return 0;
}

}  // namespace

int main() {
  try {
    return Run();
  } catch (const Zelq::Exception& e) {
    std::fprintf(stderr, "model_app: error %d: %s\n", e.GetCode(), e.what());
    return 1;
  }
}
