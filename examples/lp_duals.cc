// A small production-planning LP: how much of two products to make with three
// plants of limited capacity. Shows building a model with operators, a ranged
// constraint, solving, and reading values, duals, reduced costs and the range
// of each capacity over which its dual stays valid.
//
//   maximise   3 x + 5 y
//   subject to plant1:  x          <= 4
//              plant2:       2 y   <= 12
//              plant3:  6 <= 3 x + 2 y <= 18   (a ranged row)
//
// The optimum makes x = 2, y = 6 for a profit of 36. Plant 2 is worth 1.5
// per unit of capacity while its capacity stays within [6, 18]; plant 3 is
// worth 1 per unit within [12, 24]; plant 1 has spare capacity, so its dual is 0.
#include <cmath>
#include <cstdio>

#include "zelq/zelqcpp.h"

int main() {
  try {
    Zelq::Envr env;
    Zelq::Model model = env.CreateModel("production");
    model.SetIntParam("Logging", 0);

    Zelq::Var x = model.AddVar(0, Zelq::kInfinity, 0, Zelq::kContinuous, "x");
    Zelq::Var y = model.AddVar(0, Zelq::kInfinity, 0, Zelq::kContinuous, "y");

    Zelq::Constraint plant1 = model.AddConstr(x <= 4, "plant1");
    Zelq::Constraint plant2 = model.AddConstr(2 * y <= 12, "plant2");
    Zelq::Constraint plant3 = model.AddConstr(Zelq::Range(6, 3 * x + 2 * y, 18), "plant3");
    model.SetObjective(3 * x + 5 * y, Zelq::kMaximize);

    model.Solve();
    if (model.GetIntAttr("LpStatus") != 1) {
      std::printf("no optimal solution\n");
      return 1;
    }

    const double profit = model.GetDblAttr("LpObjVal");
    std::printf("profit %g: x = %g, y = %g\n", profit, x.GetValue(), y.GetValue());

    // The dual of a capacity is the profit one more unit of it would bring;
    // the shadow-price range says how far the capacity may move before that
    // value changes (side 1: the row's upper bound).
    for (Zelq::Constraint plant : {plant1, plant2, plant3}) {
      double low = 0, high = 0;
      plant.GetShadowPriceRange(1, &low, &high);
      std::printf("%s: dual %g, valid for capacity in [%g, %g]\n", plant.GetName().c_str(),
                  plant.Get("Dual") + 0.0, low, high);  // + 0.0 prints -0 as 0
    }
    std::printf("reduced costs: x %g, y %g\n", x.Get("RedCost") + 0.0,
                y.Get("RedCost") + 0.0);

    const bool right = std::fabs(profit - 36) < 1e-6 && std::fabs(plant2.Get("Dual") - 1.5) < 1e-6 &&
                       std::fabs(plant3.Get("Dual") - 1) < 1e-6;
    return right ? 0 : 1;
  } catch (const Zelq::Exception& e) {
    std::printf("error %d: %s\n", e.GetCode(), e.what());
    return 1;
  }
}
