// LP solves through the C interface: known optima with duals, reduced costs and basis in both
// objective senses, all LP methods, Farkas certificates, unbounded rays and warm starts.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <chrono>
#include <random>
#include <thread>
#include <tuple>
#include <vector>

#include "solve_test_util.h"
#include "zelq/zelq.h"

using namespace solve_test;

namespace {

// max 3x + 5y + z + 10 s.t. x <= 4, 2y <= 12, 3x + 2y + 3z <= 18, x, y, z >= 0.
// Optimum x = 2, y = 6, z = 0 (objective 46); duals 0, 1.5, 1; reduced cost of z: -2.
Dense Textbook(int sense) {
  Dense d;
  d.m = 3, d.n = 3;
  d.a = {1, 0, 0, 0, 2, 0, 3, 2, 3};
  d.obj = {3, 5, 1};
  if (sense == ZELQ_MINIMIZE)
    for (double& c : d.obj) c = -c;
  d.sense = sense;
  d.objConst = 10;
  d.colLo = {0, 0, 0};
  d.colUp = {1e30, 1e30, 1e30};
  d.rowLo = {-1e30, -1e30, -1e30};
  d.rowUp = {4, 12, 18};
  return d;
}

// Loads lp into prob and solves it by barrier with the given Crossover (-1 is the default).
void SolveBarrier(ZELQprob* prob, const Dense& lp, int crossover) {
  ASSERT_EQ(Load(prob, lp), 0);
  ASSERT_EQ(ZELQ_SetIntParam(prob, "LpMethod", ZELQ_LPMETHOD_BARRIER), 0);
  ASSERT_EQ(ZELQ_SetIntParam(prob, "Crossover", crossover), 0);
  ASSERT_EQ(ZELQ_Solve(prob), 0);
}

struct LpPoint {
  std::vector<double> x, act, dual, rc;
};

// Solves the minimisation d by barrier, with and without crossover, and as the maximisation of
// its negated costs (same point, negated duals and reduced costs); checks the objective
// (c'x without the constant) and the point.
void ExpectBarrierOptimumInBothSenses(const Dense& d, double cx, const LpPoint& want) {
  for (int sense : {ZELQ_MINIMIZE, ZELQ_MAXIMIZE}) {
    const double s = sense == ZELQ_MINIMIZE ? 1.0 : -1.0;
    Dense ds = d;
    ds.sense = sense;
    for (double& c : ds.obj) c *= s;
    for (int crossover : {-1, 0}) {
      SCOPED_TRACE(testing::Message() << "sense " << sense << " crossover " << crossover);
      QuietProb prob;
      ASSERT_NO_FATAL_FAILURE(SolveBarrier(prob, ds, crossover));
      ASSERT_EQ(IntAttr(prob, "Status"), ZELQ_OPTIMAL);
      EXPECT_GT(IntAttr(prob, "BarrierIter"), 0);
      EXPECT_EQ(IntAttr(prob, "HasBasis"), crossover == 0 ? 0 : 1);
      EXPECT_NEAR(DblAttr(prob, "ObjVal"), s * cx + d.objConst, 1e-6);
      LpPoint got{std::vector<double>(d.n), std::vector<double>(d.m), std::vector<double>(d.m),
                  std::vector<double>(d.n)};
      ASSERT_EQ(ZELQ_GetLpSolution(prob, got.x.data(), got.act.data(), got.dual.data(),
                                   got.rc.data()),
                0);
      for (int j = 0; j < d.n; ++j) EXPECT_NEAR(got.x[j], want.x[j], 1e-6) << j;
      for (int j = 0; j < d.n; ++j) EXPECT_NEAR(got.rc[j], s * want.rc[j], 1e-6) << j;
      for (int i = 0; i < d.m; ++i) EXPECT_NEAR(got.act[i], want.act[i], 1e-6) << i;
      for (int i = 0; i < d.m; ++i) EXPECT_NEAR(got.dual[i], s * want.dual[i], 1e-6) << i;
    }
  }
}

TEST(SolveLp, TextbookOptimumInBothSenses) {
  for (int sense : {ZELQ_MAXIMIZE, ZELQ_MINIMIZE}) {
    SCOPED_TRACE(sense);
    QuietProb prob;
    ASSERT_EQ(Load(prob, Textbook(sense)), ZELQ_RETCODE_OK);
    ASSERT_EQ(ZELQ_Solve(prob), ZELQ_RETCODE_OK);
    EXPECT_EQ(IntAttr(prob, "Status"), ZELQ_OPTIMAL);
    EXPECT_EQ(IntAttr(prob, "LpStatus"), ZELQ_OPTIMAL);
    const double s = sense == ZELQ_MAXIMIZE ? 1.0 : -1.0;
    EXPECT_NEAR(DblAttr(prob, "ObjVal"), s * 36 + 10, 1e-9);
    std::vector<double> x(3), act(3), dual(3), rc(3);
    ASSERT_EQ(ZELQ_GetLpSolution(prob, x.data(), act.data(), dual.data(), rc.data()), 0);
    const double ex[] = {2, 6, 0}, eact[] = {2, 12, 18}, edual[] = {0, 1.5, 1}, erc[] = {0, 0, -2};
    for (int k = 0; k < 3; ++k) {
      EXPECT_NEAR(x[k], ex[k], 1e-9);
      EXPECT_NEAR(act[k], eact[k], 1e-9);
      EXPECT_NEAR(dual[k], s * edual[k], 1e-9);
      EXPECT_NEAR(rc[k], s * erc[k], 1e-9);
    }
    std::vector<int> cb(3), rb(3);
    ASSERT_EQ(ZELQ_GetBasis(prob, cb.data(), rb.data()), 0);
    EXPECT_EQ(cb, (std::vector<int>{ZELQ_BASIS_BASIC, ZELQ_BASIS_BASIC, ZELQ_BASIS_LOWER}));
    EXPECT_EQ(rb, (std::vector<int>{ZELQ_BASIS_BASIC, ZELQ_BASIS_UPPER, ZELQ_BASIS_UPPER}));
    int rowList[] = {2, 0};
    int two[2];
    ASSERT_EQ(ZELQ_GetRowBasis(prob, 2, rowList, two), 0);
    EXPECT_EQ(two[0], ZELQ_BASIS_UPPER);
    EXPECT_EQ(two[1], ZELQ_BASIS_BASIC);
    std::vector<double> sol(3);
    ASSERT_EQ(ZELQ_GetSolution(prob, sol.data()), 0);
    EXPECT_NEAR(sol[1], 6, 1e-9);
  }
}

TEST(SolveLp, EveryMethodReachesTheSameOptimum) {
  struct Case { int method, crossover; bool basis; };
  const Case cases[] = {{ZELQ_LPMETHOD_AUTO, -1, true}, {ZELQ_LPMETHOD_DUALSIMPLEX, -1, true},
                        {ZELQ_LPMETHOD_PRIMALSIMPLEX, -1, true}, {ZELQ_LPMETHOD_BARRIER, -1, true},
                        {ZELQ_LPMETHOD_BARRIER, 0, false}};
  for (const Case& c : cases) {
    SCOPED_TRACE(testing::Message() << "method " << c.method << " crossover " << c.crossover);
    QuietProb prob;
    ASSERT_EQ(Load(prob, Textbook(ZELQ_MAXIMIZE)), 0);
    ASSERT_EQ(ZELQ_SetIntParam(prob, "LpMethod", c.method), 0);
    ASSERT_EQ(ZELQ_SetIntParam(prob, "Crossover", c.crossover), 0);
    ASSERT_EQ(ZELQ_Solve(prob), 0);
    EXPECT_EQ(IntAttr(prob, "Status"), ZELQ_OPTIMAL);
    EXPECT_NEAR(DblAttr(prob, "ObjVal"), 46, 1e-6);
    EXPECT_EQ(IntAttr(prob, "HasBasis"), c.basis ? 1 : 0);
    if (c.method == ZELQ_LPMETHOD_BARRIER) {
      EXPECT_GT(IntAttr(prob, "BarrierIter"), 0);
      EXPECT_EQ(IntAttr(prob, "SimplexIter") == 0, c.crossover == 0);
    }
    std::vector<double> x(3);
    ASSERT_EQ(ZELQ_GetLpSolution(prob, x.data(), nullptr, nullptr, nullptr), 0);
    EXPECT_NEAR(x[0], 2, 1e-5);
    EXPECT_NEAR(x[1], 6, 1e-5);
  }
  QuietProb prob;
  ASSERT_EQ(Load(prob, Textbook(ZELQ_MAXIMIZE)), 0);
  ASSERT_EQ(ZELQ_SetIntParam(prob, "LpMethod", 0), 0);
  EXPECT_EQ(ZELQ_Solve(prob), ZELQ_RETCODE_NOTSUPPORTED);
  EXPECT_NE(LastError(prob).find("LpMethod 0"), std::string::npos) << LastError(prob);
}

// Clp's barrier aborts the process ("primal off to infinity") on LPs with an empty free row
// next to columns in no row; the barrier runs without such rows and columns and fills them in.
TEST(SolveLp, BarrierLeavesOutEmptyRowsAndColumnsAndFillsThemIn) {
  // The smallest LP found to abort: -x1 = 0, an empty free row, two columns in no row.
  Dense abort;
  abort.m = 2, abort.n = 3;
  abort.a = {-1, 0, 0, 0, 0, 0};
  abort.obj = {0, 0, 0};
  abort.colLo = {0, 0, 0};
  abort.colUp = {1e30, 1e30, 1e30};
  abort.rowLo = {0, -1e30};
  abort.rowUp = {0, 1e30};
  // min x0 + 2 x3 - x4 + 10 s.t. r0: x0 - x1 = 1, r1 free and empty, r2 in [-1, 5] and empty;
  // x2, x3, x4 in no row. Optimum x = (1, 0, 0, -3, 7), objective 1 - 6 - 7 + 10 = -2.
  Dense d;
  d.m = 3, d.n = 5;
  d.a = {1, -1, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0};
  d.obj = {1, 0, 0, 2, -1};
  d.objConst = 10;
  d.colLo = {0, 0, 0, -3, 1};
  d.colUp = {1e30, 1e30, 1e30, 4, 7};
  d.rowLo = {1, -1e30, -1};
  d.rowUp = {1, 1e30, 5};
  for (int crossover : {-1, 0}) {
    QuietProb small;
    ASSERT_NO_FATAL_FAILURE(SolveBarrier(small, abort, crossover));
    EXPECT_EQ(IntAttr(small, "Status"), ZELQ_OPTIMAL);
  }
  ExpectBarrierOptimumInBothSenses(d, -12, {{1, 0, 0, -3, 7}, {1, 0, 0}, {1, 0, 0},
                                            {0, 1, 0, 2, -1}});
  // The simplex decides LPs where the left-out part or the column bounds alone do: an empty
  // row that excludes 0, a column in no row whose cost points to an infinite bound, and a row
  // the column bounds cannot reach (with a tiny coefficient this one failed an assertion in
  // Clp's barrier: -x1 <= 0, 2 x0 + 1e-9 x1 <= -10).
  Dense infeasible = d;
  infeasible.rowLo[2] = 2;
  Dense unbounded = d;
  unbounded.colLo[4] = -1e30;
  unbounded.obj[4] = 1;
  Dense unreachable;
  unreachable.m = 2, unreachable.n = 2;
  unreachable.a = {0, -1, 2, 1e-9};
  unreachable.obj = {0, 0};
  unreachable.colLo = {0, 0};
  unreachable.colUp = {1e30, 1e30};
  unreachable.rowLo = {-1e30, -1e30};
  unreachable.rowUp = {0, -10};
  for (auto [lp, status] : {std::pair{&infeasible, ZELQ_INFEASIBLE}, {&unbounded, ZELQ_UNBOUNDED},
                            {&unreachable, ZELQ_INFEASIBLE}}) {
    SCOPED_TRACE(status);
    QuietProb prob;
    ASSERT_NO_FATAL_FAILURE(SolveBarrier(prob, *lp, -1));
    EXPECT_EQ(IntAttr(prob, "Status"), status);
    EXPECT_EQ(IntAttr(prob, "BarrierIter"), 0);
  }
}

// Fixed columns stay out of the barrier, their activity moved into the row bounds: Clp's
// barrier failed an assertion on 1e10 x >= 1 with x fixed at 1e6. Their reduced costs are
// c - A'y of the barrier's duals.
TEST(SolveLp, BarrierLeavesOutFixedColumns) {
  // min x0 + 2 x1 + 3 x2 s.t. x0 + x1 + x2 >= 4, x1 - x2 <= 1, x2 = 1, x0 in [0, 10], x1 >= 0:
  // x = (3, 0, 1), objective 6, duals (1, 0), reduced costs (0, 1, 2).
  Dense d;
  d.m = 2, d.n = 3;
  d.a = {1, 1, 1, 0, 1, -1};
  d.obj = {1, 2, 3};
  d.colLo = {0, 0, 1};
  d.colUp = {10, 1e30, 1};
  d.rowLo = {4, -1e30};
  d.rowUp = {1e30, 1};
  ExpectBarrierOptimumInBothSenses(d, 6, {{3, 0, 1}, {4, -1}, {1, 0}, {0, 1, 2}});
  Dense lone;  // 1e10 x >= 1 with x fixed at 1e6: only the fixed column, the simplex decides
  lone.m = 1, lone.n = 1;
  lone.a = {1e10};
  lone.obj = {100};
  lone.colLo = {1e6};
  lone.colUp = {1e6};
  lone.rowLo = {1};
  lone.rowUp = {1e30};
  QuietProb prob;
  ASSERT_NO_FATAL_FAILURE(SolveBarrier(prob, lone, -1));
  EXPECT_EQ(IntAttr(prob, "Status"), ZELQ_OPTIMAL);
  EXPECT_NEAR(DblAttr(prob, "ObjVal"), 1e8, 1e-6);
  EXPECT_EQ(IntAttr(prob, "BarrierIter"), 0);
}

// Clp's scaling crashed the barrier when it left a scaled element below 1e-13: one row
// x + 1e19 y <= 10, or a 1e-13 element next to 6.62e11. Such LPs go to the dual simplex; an LP
// whose only tiny element Clp drops before scaling still runs the barrier. So does an LP with
// an element of 1e20 that presolve finds infeasible (Clp's barrier failed an assertion on it).
TEST(SolveLp, BarrierHandsLpsClpCannotTakeToTheSimplex) {
  Dense row;  // min -x - 2y s.t. x + 1e19 y <= 10, x in [0, 10], y in [0, 4]: optimum -10
  row.m = 1, row.n = 2;
  row.a = {1, 1e19};
  row.obj = {-1, -2};
  row.colLo = {0, 0};
  row.colUp = {10, 4};
  row.rowLo = {-1e30};
  row.rowUp = {10};
  Dense tiny = row;  // x + 1e-19 y <= 10: optimum -18
  tiny.a = {1, 1e-19};
  // min -2 x0 - 2 x1 - x2 s.t. 8.88e-14 x0 <= 8, 5.27e-7 x0 + 6.62e11 x1 + 853 x2 <= 18,
  // x <= (1, 3, 6): x0 = 1, x1 = 0, x2 = (18 - 5.27e-7) / 853.
  Dense mixed;
  mixed.m = 2, mixed.n = 3;
  mixed.a = {8.88e-14, 0, 0, 5.27e-7, 6.62e11, 853};
  mixed.obj = {-2, -2, -1};
  mixed.colLo = {0, 0, 0};
  mixed.colUp = {1, 3, 6};
  mixed.rowLo = {-1e30, -1e30};
  mixed.rowUp = {8, 18};
  const double mixedObj = -2 - (18 - 5.27e-7) / 853;
  // 0.5 z >= 0, x + 0.25 y <= 0, -4 y = 0, w = 0, w >= 0, w + 1e20 y = 0, with x = 100 fixed,
  // w >= 0, z >= 1, y free: -4 y = 0 fixes y, and then x + 0.25 y <= 0 cannot hold.
  Dense infeasible;
  infeasible.m = 6, infeasible.n = 4;
  infeasible.a = {0, 0, 0.5, 0, 1, 0, 0, 0.25, 0, 0, 0, -4,
                  0, 1, 0, 0, 0, 1, 0, 0,    0, 1, 0, 1e20};
  infeasible.obj = {0, 0, 0, 0};
  infeasible.colLo = {100, 0, 1, -1e30};
  infeasible.colUp = {100, 1e30, 1e30, 1e30};
  infeasible.rowLo = {0, -1e30, 0, 0, 0, 0};
  infeasible.rowUp = {1e30, 0, 0, 0, 1e30, 0};
  // Bounds from 1e19 up, near what the barrier reads as infinite. Found by fuzzing: x0 fixed
  // at 1e20 in x0 + x2 + 0.25 y <= 0 becomes 0.25 y <= -1e20 - 100 once the fixed columns are
  // left out, and the barrier ran for over a minute on it (c5 = 1 and 0.25 c5 = 0 make the LP
  // infeasible anyway).
  Dense farFixed;  // columns x0, x1, x2, x3, x4, c5, z, y
  farFixed.m = 5, farFixed.n = 8;
  farFixed.a = {0, 0, 0, 0,  0, 0,    0.5, 0,     1, 0, 1, 0, 0, 0,    0, 0.25,
                0, 0, 0, -4, 0, 0.25, 0,   -4,    0, 0, 0, 0, 0, 1,    0, 0,
                0, 0, 0, 0,  0, 0.25, 0,   0};
  farFixed.obj = {100, 100, 0, 0, 1, 1e6, 0, 0};
  farFixed.sense = ZELQ_MAXIMIZE;
  farFixed.colLo = {1e20, 100, 100, 0, 0, -1, 1, -1e30};
  farFixed.colUp = {1e20, 100, 100, 0, 0, 1, 1, 1e30};
  farFixed.rowLo = {0, -1e30, 0, 1, 0};
  farFixed.rowUp = {1e30, 0, 0, 1, 0};
  Dense farBound = row;  // min -x s.t. x + y <= 10, x in [0, 10], y in [-1e19, 0]: optimum -10
  farBound.a = {1, 1};
  farBound.obj = {-1, 0};
  farBound.colLo = {0, -1e19};
  farBound.colUp = {10, 0};
  // 2 x = 1e29, x >= 0: Clp drops the row's upper bound as infinite and keeps the lower one,
  // and the barrier failed the assertion 'value < 0.0' on it (found by fuzzing).
  Dense farLower;
  farLower.m = 1, farLower.n = 1;
  farLower.a = {2};
  farLower.obj = {1};
  farLower.colLo = {0};
  farLower.colUp = {1e30};
  farLower.rowLo = farLower.rowUp = {1e29};
  // Only tiny keeps the barrier; the dual simplex takes the others.
  struct Case {
    const char* name;
    const Dense* lp;
    int status;
    double obj;
    bool barrier;
  };
  const Case cases[] = {{"row", &row, ZELQ_OPTIMAL, -10, false},
                        {"mixed", &mixed, ZELQ_OPTIMAL, mixedObj, false},
                        {"tiny", &tiny, ZELQ_OPTIMAL, -18, true},
                        {"infeasible", &infeasible, ZELQ_INFEASIBLE, 0, false},
                        {"farFixed", &farFixed, ZELQ_INFEASIBLE, 0, false},
                        {"farBound", &farBound, ZELQ_OPTIMAL, -10, false},
                        {"farLower", &farLower, ZELQ_OPTIMAL, 5e28, false}};
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    QuietProb prob;
    ASSERT_NO_FATAL_FAILURE(SolveBarrier(prob, *c.lp, -1));
    EXPECT_EQ(IntAttr(prob, "Status"), c.status);
    EXPECT_EQ(IntAttr(prob, "BarrierIter") > 0, c.barrier);
    if (c.status == ZELQ_OPTIMAL) {
      EXPECT_NEAR(DblAttr(prob, "ObjVal"), c.obj, 1e-6 * std::max(1.0, std::fabs(c.obj)));
    }
  }
}

// Clp's barrier calls these LPs optimal (and its crossover agrees on the unbounded one): the
// interior point breaks a row, or its duals have the sign that improves without limit.
TEST(SolveLp, BarrierDoesNotCallInfeasibleOrUnboundedLpsOptimal) {
  Dense infeasible;  // x + y >= 5 with x + y <= 3, x, y >= 0
  infeasible.m = 2, infeasible.n = 2;
  infeasible.a = {1, 1, 1, 1};
  infeasible.obj = {1, 0};
  infeasible.colLo = {0, 0};
  infeasible.colUp = {1e30, 1e30};
  infeasible.rowLo = {5, -1e30};
  infeasible.rowUp = {1e30, 3};
  Dense unbounded;  // min -x s.t. x - y >= 5, x, y >= 0
  unbounded.m = 1, unbounded.n = 2;
  unbounded.a = {1, -1};
  unbounded.obj = {-1, 0};
  unbounded.colLo = {0, 0};
  unbounded.colUp = {1e30, 1e30};
  unbounded.rowLo = {5};
  unbounded.rowUp = {1e30};
  for (auto [lp, status] :
       {std::pair{&infeasible, ZELQ_INFEASIBLE}, {&unbounded, ZELQ_UNBOUNDED}}) {
    for (int crossover : {-1, 0}) {
      SCOPED_TRACE(testing::Message() << "status " << status << " crossover " << crossover);
      QuietProb prob;
      ASSERT_NO_FATAL_FAILURE(SolveBarrier(prob, *lp, crossover));
      EXPECT_EQ(IntAttr(prob, "Status"), status);
      EXPECT_GT(IntAttr(prob, "BarrierIter"), 0);
    }
  }
}

// x + y >= 5 with x, y in [0, 2], plus a harmless row and a free row.
TEST(SolveLp, InfeasibleGivesAFarkasCertificateThatProvesIt) {
  Dense d;
  d.m = 3, d.n = 2;
  d.a = {1, 1, 1, -1, 1, 3};
  d.obj = {1, 1};
  d.colLo = {0, 0};
  d.colUp = {2, 2};
  d.rowLo = {5, -1e30, -1e30};
  d.rowUp = {1e30, 10, 1e30};
  for (int method : {ZELQ_LPMETHOD_DUALSIMPLEX, ZELQ_LPMETHOD_PRIMALSIMPLEX}) {
    SCOPED_TRACE(method);
    QuietProb prob;
    ASSERT_EQ(Load(prob, d), 0);
    ASSERT_EQ(ZELQ_SetIntParam(prob, "ReqFarkasRay", 1), 0);
    ASSERT_EQ(ZELQ_SetIntParam(prob, "LpMethod", method), 0);
    ASSERT_EQ(ZELQ_Solve(prob), 0);
    EXPECT_EQ(IntAttr(prob, "Status"), ZELQ_INFEASIBLE);
    ASSERT_EQ(IntAttr(prob, "HasDualFarkas"), 1);
    std::vector<double> y(3);
    ASSERT_EQ(ZELQ_GetRowInfo(prob, "DualFarkas", 3, nullptr, y.data()), 0);
    // max (A'y)'x over the column box must stay below min y'r over the row bounds.
    double maxZx = 0, minYr = 0;
    for (int j = 0; j < 2; ++j) {
      double z = 0;
      for (int i = 0; i < 3; ++i) z += d.A(i, j) * y[i];
      maxZx += z > 0 ? z * d.colUp[j] : z * d.colLo[j];
    }
    for (int i = 0; i < 3; ++i) {
      if (std::fabs(y[i]) < 1e-12) continue;
      double b = y[i] > 0 ? d.rowLo[i] : d.rowUp[i];
      ASSERT_LT(std::fabs(b), 1e30) << "certificate uses an infinite bound of row " << i;
      minYr += y[i] * b;
    }
    EXPECT_LT(maxZx, minYr - 1e-6);
    std::vector<double> x(2);
    EXPECT_EQ(ZELQ_GetLpSolution(prob, x.data(), nullptr, nullptr, nullptr), ZELQ_RETCODE_INVALID);
  }
}

// max x + y s.t. x - y <= 1, x, y >= 0: unbounded along (1, 1).
TEST(SolveLp, UnboundedGivesAnImprovingRay) {
  Dense d;
  d.m = 1, d.n = 2;
  d.a = {1, -1};
  d.obj = {1, 1};
  d.sense = ZELQ_MAXIMIZE;
  d.colLo = {0, 0};
  d.colUp = {1e30, 1e30};
  d.rowLo = {-1e30};
  d.rowUp = {1};
  for (int method : {ZELQ_LPMETHOD_DUALSIMPLEX, ZELQ_LPMETHOD_PRIMALSIMPLEX}) {
    SCOPED_TRACE(method);
    QuietProb prob;
    ASSERT_EQ(Load(prob, d), 0);
    ASSERT_EQ(ZELQ_SetIntParam(prob, "ReqFarkasRay", 1), 0);
    ASSERT_EQ(ZELQ_SetIntParam(prob, "LpMethod", method), 0);
    ASSERT_EQ(ZELQ_Solve(prob), 0);
    EXPECT_EQ(IntAttr(prob, "Status"), ZELQ_UNBOUNDED);
    ASSERT_EQ(IntAttr(prob, "HasPrimalRay"), 1);
    std::vector<double> r(2);
    ASSERT_EQ(ZELQ_GetColInfo(prob, "PrimalRay", 2, nullptr, r.data()), 0);
    EXPECT_GE(r[0], -1e-9);
    EXPECT_GE(r[1], -1e-9);
    EXPECT_LE(r[0] - r[1], 1e-9);                        // the row's upper bound is kept
    EXPECT_GT(r[0] + r[1], 1e-6);                        // improves the maximisation
    EXPECT_NEAR(std::max(std::fabs(r[0]), std::fabs(r[1])), 1.0, 1e-9);
  }
  QuietProb quiet;  // without the request: status only
  ASSERT_EQ(Load(quiet, d), 0);
  ASSERT_EQ(ZELQ_Solve(quiet), 0);
  EXPECT_EQ(IntAttr(quiet, "Status"), ZELQ_UNBOUNDED);
  EXPECT_EQ(IntAttr(quiet, "HasPrimalRay"), 0);
}

// A random feasible LP: max c'x, A x <= b, 0 <= x <= 10 with positive data.
Dense RandomLp(int m, int n, unsigned seed) {
  std::mt19937 rng(seed);
  std::uniform_real_distribution<double> u(0.0, 1.0);
  Dense d;
  d.m = m, d.n = n;
  d.sense = ZELQ_MAXIMIZE;
  d.a.assign(static_cast<size_t>(m) * n, 0.0);
  for (double& v : d.a)
    if (u(rng) < 0.3) v = 1 + 9 * u(rng);
  for (int j = 0; j < n; ++j) d.obj.push_back(1 + 9 * u(rng));
  d.colLo.assign(n, 0);
  d.colUp.assign(n, 10);
  d.rowLo.assign(m, -1e30);
  for (int i = 0; i < m; ++i) d.rowUp.push_back(50 + 100 * u(rng));
  return d;
}

TEST(SolveLp, WarmStartAfterAModificationNeedsFewerIterations) {
  Dense d = RandomLp(120, 160, 7);
  QuietProb warm;
  ASSERT_EQ(Load(warm, d), 0);
  ASSERT_EQ(ZELQ_Solve(warm), 0);
  ASSERT_EQ(IntAttr(warm, "Status"), ZELQ_OPTIMAL);
  std::vector<double> x(d.n);
  ASSERT_EQ(ZELQ_GetSolution(warm, x.data()), 0);
  int big = 0;
  for (int j = 0; j < d.n; ++j)
    if (x[j] > x[big]) big = j;
  ASSERT_GT(x[big], 0.1);
  double newUp = x[big] / 2;
  ASSERT_EQ(ZELQ_SetColUpper(warm, 1, &big, &newUp), 0);
  ASSERT_EQ(ZELQ_Solve(warm), 0);
  ASSERT_EQ(IntAttr(warm, "Status"), ZELQ_OPTIMAL);
  const int warmIter = IntAttr(warm, "SimplexIter");

  d.colUp[big] = newUp;
  QuietProb cold;
  ASSERT_EQ(Load(cold, d), 0);
  ASSERT_EQ(ZELQ_Solve(cold), 0);
  const int coldIter = IntAttr(cold, "SimplexIter");
  EXPECT_NEAR(DblAttr(warm, "ObjVal"), DblAttr(cold, "ObjVal"), 1e-6);
  EXPECT_LT(warmIter, coldIter);

  // A slack basis set explicitly makes the next solve cold again.
  ASSERT_EQ(ZELQ_SetSlackBasis(warm), 0);
  ASSERT_EQ(ZELQ_SetIntParam(warm, "Presolve", 0), 0);
  ASSERT_EQ(ZELQ_Solve(warm), 0);
  EXPECT_GT(IntAttr(warm, "SimplexIter"), warmIter);
  // Setting the optimal basis back gives a solve without iterations.
  std::vector<int> cb(d.n), rb(d.m);
  ASSERT_EQ(ZELQ_GetBasis(warm, cb.data(), rb.data()), 0);
  ASSERT_EQ(ZELQ_SetBasis(warm, cb.data(), rb.data()), 0);
  ASSERT_EQ(ZELQ_Solve(warm), 0);
  EXPECT_EQ(IntAttr(warm, "SimplexIter"), 0);
  EXPECT_NEAR(DblAttr(warm, "ObjVal"), DblAttr(cold, "ObjVal"), 1e-6);
}

TEST(SolveLp, WarmStartAfterAddingARowAndFromOddStartBases) {
  Dense d = RandomLp(60, 80, 9);
  QuietProb prob;
  ASSERT_EQ(Load(prob, d), 0);
  ASSERT_EQ(ZELQ_Solve(prob), 0);
  std::vector<double> x(d.n);
  ASSERT_EQ(ZELQ_GetSolution(prob, x.data()), 0);
  // A cut through the optimum: sum x <= 0.9 * current sum.
  std::vector<int> idx(d.n);
  std::vector<double> one(d.n, 1.0);
  double sum = 0;
  for (int j = 0; j < d.n; ++j) idx[j] = j, sum += x[j];
  ASSERT_EQ(ZELQ_AddRow(prob, d.n, idx.data(), one.data(), 'L', 0.9 * sum, 0, nullptr), 0);
  ASSERT_EQ(ZELQ_Solve(prob), 0);
  ASSERT_EQ(IntAttr(prob, "Status"), ZELQ_OPTIMAL);
  const int warmIter = IntAttr(prob, "SimplexIter");
  Dense e = d;
  e.m += 1;
  e.a.insert(e.a.end(), one.begin(), one.end());
  e.rowLo.push_back(-1e30);
  e.rowUp.push_back(0.9 * sum);
  QuietProb cold;
  ASSERT_EQ(Load(cold, e), 0);
  ASSERT_EQ(ZELQ_Solve(cold), 0);
  EXPECT_NEAR(DblAttr(prob, "ObjVal"), DblAttr(cold, "ObjVal"), 1e-6);
  EXPECT_LT(warmIter, IntAttr(cold, "SimplexIter"));
  // Start bases with too many or too few basic entries are repaired, not fatal.
  for (int code : {ZELQ_BASIS_BASIC, ZELQ_BASIS_LOWER, ZELQ_BASIS_UPPER, ZELQ_BASIS_SUPERBASIC}) {
    std::vector<int> cb(e.n, code), rb(e.m, code);
    ASSERT_EQ(ZELQ_SetBasis(prob, cb.data(), rb.data()), 0);
    ASSERT_EQ(ZELQ_Solve(prob), 0);
    EXPECT_EQ(IntAttr(prob, "Status"), ZELQ_OPTIMAL) << code;
    EXPECT_NEAR(DblAttr(prob, "ObjVal"), DblAttr(cold, "ObjVal"), 1e-6) << code;
  }
}

// Rows a, b and "a + b >= rhs_a + rhs_b + 1" on badly scaled data: only a combination of three
// rows proves infeasibility.
TEST(SolveLp, FarkasCertificateOfAScaledCombinationInfeasibility) {
  Dense d = RandomLp(20, 30, 3);
  for (int j = 0; j < d.n; ++j) {
    double scale = (j % 3 == 0) ? 1000.0 : ((j % 3 == 1) ? 0.001 : 1.0);
    for (int i = 0; i < d.m; ++i) d.a[i * d.n + j] *= scale;
  }
  std::vector<double> extra(d.n);
  for (int j = 0; j < d.n; ++j) extra[j] = d.A(0, j) + d.A(1, j);
  d.a.insert(d.a.end(), extra.begin(), extra.end());
  d.m += 1;
  d.rowLo.push_back(d.rowUp[0] + d.rowUp[1] + 1);
  d.rowUp.push_back(1e30);
  QuietProb prob;
  ASSERT_EQ(Load(prob, d), 0);
  ASSERT_EQ(ZELQ_SetIntParam(prob, "ReqFarkasRay", 1), 0);
  ASSERT_EQ(ZELQ_Solve(prob), 0);
  ASSERT_EQ(IntAttr(prob, "Status"), ZELQ_INFEASIBLE);
  ASSERT_EQ(IntAttr(prob, "HasDualFarkas"), 1);
  std::vector<double> y(d.m);
  ASSERT_EQ(ZELQ_GetRowInfo(prob, "DualFarkas", d.m, nullptr, y.data()), 0);
  double maxZx = 0, minYr = 0;
  for (int j = 0; j < d.n; ++j) {
    double z = 0;
    for (int i = 0; i < d.m; ++i) z += d.A(i, j) * y[i];
    maxZx += z > 0 ? z * d.colUp[j] : z * d.colLo[j];
  }
  for (int i = 0; i < d.m; ++i) {
    if (std::fabs(y[i]) < 1e-12) continue;
    double b = y[i] > 0 ? d.rowLo[i] : d.rowUp[i];
    ASSERT_LT(std::fabs(b), 1e30) << "row " << i << " y " << y[i];
    minYr += y[i] * b;
  }
  EXPECT_LT(maxZx, minYr - 1e-7);
}

// dfl001 takes the dual simplex a few seconds: long enough to stop it from outside.
TEST(SolveLp, TimeLimitAndInterruptStopALongSimplexRun) {
  const char* path = "/work/shared/data/netlib/dfl001.mps";
  {
    QuietProb probe;
    if (ZELQ_ReadMps(probe, path) != 0) GTEST_SKIP() << "dfl001.mps not available";
  }
  QuietProb timed;
  ASSERT_EQ(ZELQ_ReadMps(timed, path), 0);
  ASSERT_EQ(ZELQ_SetDblParam(timed, "TimeLimit", 0.3), 0);
  auto t0 = std::chrono::steady_clock::now();
  ASSERT_EQ(ZELQ_Solve(timed), 0);
  double secs = std::chrono::duration<double>(std::chrono::steady_clock::now() - t0).count();
  EXPECT_EQ(IntAttr(timed, "Status"), ZELQ_TIMEOUT);
  EXPECT_LT(secs, 1.5);
  EXPECT_EQ(IntAttr(timed, "HasLpSol"), 0);

  QuietProb prob;
  ASSERT_EQ(ZELQ_ReadMps(prob, path), 0);
  ASSERT_EQ(ZELQ_SetIntParam(prob, "Presolve", 0), 0);  // so the reached basis is kept
  std::chrono::steady_clock::time_point asked;
  std::thread stopper([&] {
    std::this_thread::sleep_for(std::chrono::milliseconds(400));
    asked = std::chrono::steady_clock::now();
    ZELQ_Interrupt(prob);
  });
  ASSERT_EQ(ZELQ_Solve(prob), 0);
  auto done = std::chrono::steady_clock::now();
  stopper.join();
  EXPECT_EQ(IntAttr(prob, "Status"), ZELQ_INTERRUPTED);
  EXPECT_LT(std::chrono::duration<double>(done - asked).count(), 1.0);
  // Without presolve the basis reached so far is kept: the next solve continues from it and
  // must still end at the published optimum.
  ASSERT_EQ(IntAttr(prob, "HasBasis"), 1);
  ASSERT_EQ(ZELQ_SetDblParam(prob, "TimeLimit", 120), 0);
  ASSERT_EQ(ZELQ_Solve(prob), 0);
  EXPECT_EQ(IntAttr(prob, "Status"), ZELQ_OPTIMAL);
  EXPECT_NEAR(DblAttr(prob, "ObjVal"), 1.126639605e+07, 1e-2);
}

}  // namespace
