// A four-item knapsack solved as a MIP, with a known feasible packing given to
// the solver as a MIP start.
//
//   maximise   10 a + 13 b + 7 c + 8 d
//   subject to  3 a +  4 b + 2 c + 3 d <= 7,   a, b, c, d binary
//
// The start packs c and d (value 15); the optimum packs a and b (value 23).
#include <cmath>
#include <cstdio>
#include <vector>

#include "zelq/zelqcpp.h"

int main() {
  try {
    Zelq::Envr env;
    Zelq::Model model = env.CreateModel("knapsack");
    model.SetIntParam("Logging", 0);

    const std::vector<double> value = {10, 13, 7, 8};
    const std::vector<double> weight = {3, 4, 2, 3};
    Zelq::VarArray items = model.AddVars(4, Zelq::kBinary, "item");

    model.AddConstr(Zelq::Dot(items, weight) <= 7, "capacity");
    model.SetObjective(Zelq::Dot(items, value), Zelq::kMaximize);

    // A start names a value for each variable it covers; AddMipStart hands the
    // collected values to the solver as one start.
    const double start[] = {0, 0, 1, 1};
    for (int i = 0; i < items.Size(); ++i) model.SetMipStart(items[i], start[i]);
    model.AddMipStart();

    model.Solve();
    if (model.GetIntAttr("MipStatus") != 1) {
      std::printf("no optimal solution\n");
      return 1;
    }
    const double best = model.GetDblAttr("BestObj");
    std::printf("best value %g, packing:", best);
    for (Zelq::Var item : items)
      if (item.GetValue() > 0.5) std::printf(" %s", item.GetName().c_str());
    std::printf("\n");
    return std::fabs(best - 23) < 1e-6 ? 0 : 1;
  } catch (const Zelq::Exception& e) {
    std::printf("error %d: %s\n", e.GetCode(), e.what());
    return 1;
  }
}
