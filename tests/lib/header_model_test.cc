// The header layer's environment and model over the shared library: failures
// thrown with the library's exact code and message, constraints read back
// from the model, LP and MIP solves against known optima, sharing and
// cloning, the log sink, and solutions as JSON text.
#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <utility>
#include <vector>

#include "zelq/zelqcpp.h"

#include "thrown.h"

namespace {

using Zelq::Constraint;
using Zelq::Expr;
using Zelq::Model;
using Zelq::Var;

using zelq_test::Thrown;

std::pair<int, std::string> Invalid(const char* text) { return {3, std::string("(INVALID) ") + text}; }

Zelq::Envr QuietEnvr() {
  Zelq::EnvrConfig config;
  config.Set("Banner", "0");
  config.Set("Logging", "0");
  return Zelq::Envr(config);
}

// max 3x + 2y  s.t.  x + y <= 4, x + 3y <= 6, x <= 3: 11 at (3, 1).
struct SmallLp {
  explicit SmallLp(Model m) : model(std::move(m)) {
    x = model.AddVar(0, Zelq::kInfinity, 0, Zelq::kContinuous, "x");
    y = model.AddVar(0, Zelq::kInfinity, 0, Zelq::kContinuous, "y");
    total = model.AddConstr(x + y <= 4, "total");
    wood = model.AddConstr(x + 3 * y <= 6, "wood");
    cap = model.AddConstr(x <= 3, "cap");
    model.SetObjective(3 * x + 2 * y, Zelq::kMaximize);
  }
  Model model;
  Var x, y;
  Constraint total, wood, cap;
};

TEST(HeaderModel, FailuresCarryTheRecordedCodeAndMessage) {
  Zelq::Envr env = QuietEnvr();
  Model model = env.CreateModel("errors");
  Var x = model.AddVar(0, 1, 0, Zelq::kContinuous, "x");

  EXPECT_EQ(Thrown([&] { model.AddVar(0, 1, 0, 'X', "bad"); }), Invalid("Fail to add a variable"));
  EXPECT_EQ(model.GetIntAttr("Cols"), 1);  // nothing added

  EXPECT_EQ(Thrown([&] { model.GetVarByName("missing"); }), Invalid("No such variable"));
  EXPECT_EQ(Thrown([&] { model.GetVar(1); }), Invalid("Invalid col index"));
  EXPECT_EQ(Thrown([&] { model.GetVar(-1); }), Invalid("Invalid col index"));
  EXPECT_EQ(Thrown([&] { model.GetIntParam("TimeLimit"); }), Invalid("Not ZELQ int parameter"));
  EXPECT_EQ(Thrown([&] { model.GetDblAttr("Cols"); }), Invalid("Not ZELQ double attribute"));
  EXPECT_EQ(Thrown([&] { model.AddConstr(x + 0, 'N', 1); }), Invalid("Invalid constraint sense"));
  EXPECT_EQ(Thrown([&] { x.Set("Color", 1); }), Invalid("Unknown variable information"));
  // A range sense among several rows would otherwise add rows bounded (0, 0).
  const double rhs[] = {1, 2, 3};
  EXPECT_EQ(Thrown([&] { model.AddConstrs(3, "LRE", rhs); }),
            Invalid("Use constrbuilder to add range constraint"));
  EXPECT_EQ(Thrown([&] { model.AddConstrs(3, "LEX", rhs); }), Invalid("Invalid constraint sense"));
  EXPECT_EQ(model.GetIntAttr("Rows"), 0);
  Zelq::ConstrArray rows = model.AddConstrs(2, "GN", rhs, "r");
  EXPECT_EQ(model.GetRowInfo("LB", rows), (std::vector<double>{1, -Zelq::kInfinity}));
  EXPECT_EQ(rows[1].GetName(), "r1");

  // A removed handle reports the library's own words.
  model.Remove(x);
  EXPECT_EQ(model.GetIntAttr("Cols"), 0);
  EXPECT_EQ(Thrown([&] { x.Get("LB"); }), Invalid("Invalid variable"));
  EXPECT_EQ(Thrown([&] { Constraint().GetIdx(); }), Invalid("Empty constraint handle"));
  EXPECT_EQ(Thrown([&] { Zelq::VarArray()[0]; }), Invalid("Variable index 0 out of range [0, 0)"));

  // Names are case-insensitive; a successful call after a failure does not throw.
  model.SetDblParam("timelimit", 12.5);
  EXPECT_EQ(model.GetDblParam("TIMELIMIT"), 12.5);
}

TEST(HeaderModel, ConstraintsReadBackFromTheModel) {
  Zelq::Envr env = QuietEnvr();
  Model model = env.CreateModel("rows");
  Var x = model.AddVar(0, 10, 0, Zelq::kContinuous, "x");
  Var y = model.AddVar(0, 10, 0, Zelq::kContinuous, "y");

  Constraint le = model.AddConstr(2 * x + y + 1 <= 7 - x, "le");  // 3x + y <= 6
  EXPECT_EQ(le.Get("UB"), 6);
  EXPECT_EQ(le.Get("LB"), -Zelq::kInfinity);
  Expr row = model.GetRow(le);
  ASSERT_EQ(row.Size(), 2);
  EXPECT_EQ(model.GetCoeff(le, x), 3);
  EXPECT_EQ(model.GetCoeff(le, y), 1);

  Constraint ge = model.AddConstr(4 >= y, "ge");  // y <= 4
  EXPECT_EQ(ge.Get("UB"), 4);
  Constraint eq = model.AddConstr(x == y, "eq");
  EXPECT_EQ(eq.Get("LB"), 0);
  EXPECT_EQ(eq.Get("UB"), 0);
  EXPECT_EQ(model.GetCoeff(eq, y), -1);
  Constraint range = model.AddConstr(Zelq::Range(1, x + y + 1, 5), "range");
  EXPECT_EQ(range.Get("LB"), 0);
  EXPECT_EQ(range.Get("UB"), 4);
  Constraint direct = model.AddConstr(x - y, 2.0, 3.0, "direct");
  EXPECT_EQ(direct.Get("LB"), 2);

  EXPECT_EQ(model.GetConstrByName("eq").GetIdx(), 2);
  EXPECT_EQ(model.GetConstrs().Size(), 5);
  model.SetCoeff(eq, x, 5);
  EXPECT_EQ(model.GetCoeff(eq, x), 5);
  EXPECT_EQ(model.GetCol(x).Size(), 4);

  Zelq::ConstrArray bounds;
  bounds.PushBack(le);
  bounds.PushBack(range);
  model.SetRowInfo("UB", bounds, {8, 9});
  EXPECT_EQ(model.GetRowInfo("UB", bounds), (std::vector<double>{8, 9}));
  EXPECT_EQ(Thrown([&] { model.SetRowInfo("UB", bounds, {1}); }),
            Invalid("Invalid input values for constraints"));
  Zelq::CoeffMatrix a = model.GetA();
  EXPECT_EQ(a.colCnt, (std::vector<int>{4, 5}));
  EXPECT_EQ(a.values.size(), 9u);
}

TEST(HeaderModel, SolvesLpAndMipToKnownOptima) {
  Zelq::Envr env = QuietEnvr();
  SmallLp lp(env.CreateModel("lp"));
  lp.model.Solve();
  EXPECT_EQ(lp.model.GetIntAttr("Status"), 1);
  EXPECT_NEAR(lp.model.GetDblAttr("ObjVal"), 11, 1e-9);
  EXPECT_NEAR(lp.x.GetValue(), 3, 1e-9);
  EXPECT_NEAR(lp.y.Get("Value"), 1, 1e-9);
  std::vector<double> values = lp.model.GetSolution();
  ASSERT_EQ(values.size(), 2u);
  EXPECT_NEAR(values[1], 1, 1e-9);
  EXPECT_NEAR(Expr(3 * lp.x + 2 * lp.y).Evaluate(), 11, 1e-9);
  std::vector<double> slack, duals;
  lp.model.GetLpSolution(nullptr, &slack, &duals, nullptr);
  ASSERT_EQ(duals.size(), 3u);
  ASSERT_EQ(slack.size(), 3u);
  // All three rows bind at (3, 1), so the duals are not unique; any optimal
  // set prices the right-hand sides at the objective value.
  EXPECT_NEAR(std::abs(4 * duals[0] + 6 * duals[1] + 3 * duals[2]), 11, 1e-9);
  EXPECT_NEAR(duals[1], lp.wood.Get("Dual"), 1e-12);
  EXPECT_EQ(lp.model.GetColBasis().size(), 2u);

  // Removing the cap: x + y <= 4 alone gives 12 at (4, 0).
  lp.model.Remove(lp.cap);
  lp.model.Solve();
  EXPECT_NEAR(lp.model.GetDblAttr("ObjVal"), 12, 1e-9);
  EXPECT_EQ(lp.model.GetIntAttr("Rows"), 2);

  // max 5a + 4b  s.t.  6a + 4b <= 24, a + 2b <= 6, integer: 20 at (4, 0);
  // the LP relaxation would reach 21.
  Model mip = env.CreateModel("mip");
  Zelq::VarArray ab = mip.AddVars(2, 0, 10, 0, Zelq::kInteger, "v");
  mip.AddConstr(Zelq::Dot(ab, {6, 4}) <= 24);
  mip.AddConstr(ab[0] + 2 * ab[1] <= 6);
  mip.SetObjective(5 * ab[0] + 4 * ab[1], Zelq::kMaximize);
  EXPECT_EQ(mip.GetObjSense(), Zelq::kMaximize);
  mip.SetMipStart(ab[0], 3);
  mip.SetMipStart(ab[1], 1);
  mip.AddMipStart();
  mip.Solve();
  EXPECT_NEAR(mip.GetDblAttr("ObjVal"), 20, 1e-9);
  EXPECT_EQ(mip.GetColInfo("Value", ab), (std::vector<double>{4, 0}));
  EXPECT_EQ(ab[1].GetName(), "v1");
}
// A named expression goes into the row without a copy: same rows as a fresh
// expression gives, the expression keeps its constant, duplicates merge.
TEST(HeaderModel, NamedExpressionsBecomeRowsWithoutCopies) {
  Zelq::Envr env = QuietEnvr();
  Model model = env.CreateModel("named");
  Var x = model.AddVar(0, 10, 0, Zelq::kContinuous, "x");
  Var y = model.AddVar(0, 10, 0, Zelq::kContinuous, "y");

  Expr e = x + 2 * y + 2;
  Zelq::TempConstr pending = e <= 10;
  EXPECT_EQ(pending.GetExpr().Get(), e.Get());  // shared, not cloned
  EXPECT_EQ(pending.GetRhs(), 8);
  Constraint le = model.AddConstr(pending, "le");
  Constraint ge = model.AddConstr(3 <= e, "ge");
  Constraint range = model.AddConstr(Zelq::Range(-1, e, 12), "range");
  Constraint eq = model.AddConstr(e == x + 4, "eq");  // 2y == 2
  EXPECT_EQ(e.GetConstant(), 2);
  EXPECT_EQ(model.GetRowInfo("LB", model.GetConstrs()),
            (std::vector<double>{-Zelq::kInfinity, 1, -3, 2}));
  EXPECT_EQ(model.GetRowInfo("UB", model.GetConstrs()),
            (std::vector<double>{8, Zelq::kInfinity, 10, 2}));
  EXPECT_EQ(model.GetCoeff(le, y), 2);
  EXPECT_EQ(model.GetCoeff(range, x), 1);
  EXPECT_EQ(model.GetCoeff(eq, x), 0);

  Expr twice = x + x + 1;
  Constraint merged = model.AddConstr(twice <= 5);
  EXPECT_EQ(model.GetCoeff(merged, x), 2);
  EXPECT_EQ(merged.Get("UB"), 4);
  EXPECT_EQ(twice.Size(), 1);  // merged in place, same value
  EXPECT_EQ(twice.GetCoeff(0), 2);
  EXPECT_EQ(twice.GetConstant(), 1);

  model.SetObjective(3 * x, Zelq::kMaximize);
  EXPECT_EQ(model.GetObjective().GetCoeff(0), 3);
  EXPECT_EQ(Thrown([&] { model.AddConstr(Expr(Zelq::LinTerm(Var(), 1)) <= 1); }),
            Invalid("Empty variable handle"));
  EXPECT_EQ(model.GetIntAttr("Rows"), 5);
}

TEST(HeaderModel, CopiesShareAndClonesAreIndependent) {
  std::vector<std::string> log;
  Model model = [&] {
    Zelq::Envr env([&](const char* text) { log.push_back(text); });
    return env.CreateModel("base");  // the model keeps what it needs alive
  }();
  EXPECT_FALSE(log.empty());  // the banner went to the sink, not to stdout
  model.SetIntParam("Logging", 0);

  SmallLp lp(model);
  Model copy = lp.model;
  EXPECT_EQ(copy.Get(), lp.model.Get());
  copy.AddVar(0, 1, 1, Zelq::kBinary, "z");
  EXPECT_EQ(lp.model.GetIntAttr("Cols"), 3);

  Model clone = lp.model.Clone();
  EXPECT_EQ(clone.GetName(), "base_copy");
  clone.Remove(clone.GetVarByName("z"));
  clone.GetConstrByName("cap").Set("UB", 0);  // x <= 0: 2y with x + 3y <= 6 gives 4
  clone.Solve();
  lp.model.Solve();
  EXPECT_NEAR(clone.GetDblAttr("ObjVal"), 4, 1e-9);
  EXPECT_NEAR(lp.model.GetDblAttr("ObjVal"), 12, 1e-9);  // z = 1 adds 1
  EXPECT_EQ(lp.model.GetIntAttr("Cols"), 3);

  model.Clear();
  EXPECT_EQ(lp.model.GetIntAttr("Cols"), 0);
}

TEST(HeaderModel, SolutionRoundTripsThroughJsonText) {
  Zelq::Envr env = QuietEnvr();
  SmallLp lp(env.CreateModel("json"));
  SmallLp other(env.CreateModel("json"));
  EXPECT_EQ(Thrown([&] { other.model.WriteJsonString(); }),
            Invalid("Fail to write to JSON solution file"));  // nothing solved yet

  lp.model.Solve();
  const std::string json = lp.model.WriteJsonString();
  EXPECT_NE(json.find("\"objective\": 11"), std::string::npos) << json;
  EXPECT_NE(lp.model.WriteMpsString().find("ROWS"), std::string::npos);
  other.model.ReadJsonString(json.c_str());
  other.model.Solve();
  EXPECT_EQ(other.model.WriteJsonString(), json);
  EXPECT_EQ(Thrown([&] { other.model.ReadJsonString("{ not json"); }),
            Invalid("Failed to read JSON solution file"));
}

}  // namespace
