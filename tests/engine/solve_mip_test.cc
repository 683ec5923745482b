// MIP solves through the C interface: known optima, pool order, limits, interrupts from another
// thread, MIP starts, relaxations and the Cbc status mapping.
#include <gtest/gtest.h>

#include <chrono>
#include <cmath>
#include <random>
#include <string>
#include <thread>
#include <vector>

#include "solve_test_util.h"
#include "zelq/zelq.h"

using namespace solve_test;

namespace {

const double kValue[] = {23, 31, 29, 44, 53, 38, 63, 85, 89, 82, 17, 40};
const double kWeight[] = {92, 57, 49, 68, 60, 43, 67, 84, 87, 72, 31, 50};
constexpr int kItems = 12;
constexpr double kCapacity = 300;

// max value'x s.t. weight'x <= capacity, x binary; plus an objective constant.
Dense Knapsack(double objConst) {
  Dense d;
  d.m = 1, d.n = kItems;
  d.a.assign(kWeight, kWeight + kItems);
  d.obj.assign(kValue, kValue + kItems);
  d.type.assign(kItems, 'B');
  d.sense = ZELQ_MAXIMIZE;
  d.objConst = objConst;
  d.colLo.assign(kItems, 0);
  d.colUp.assign(kItems, 1);
  d.rowLo = {-1e30};
  d.rowUp = {kCapacity};
  return d;
}

double BruteForceKnapsack() {
  double best = 0;
  for (int mask = 0; mask < (1 << kItems); ++mask) {
    double v = 0, w = 0;
    for (int j = 0; j < kItems; ++j)
      if (mask & (1 << j)) v += kValue[j], w += kWeight[j];
    if (w <= kCapacity) best = std::max(best, v);
  }
  return best;
}

// Market split: sum_j a_ij x_j + s_i - t_i = b_i, x binary, minimise sum (s_i + t_i). Random
// instances of this size are far beyond a few seconds of branch and bound.
Dense MarketSplit(int m, int n, unsigned seed) {
  std::mt19937 rng(seed);
  std::uniform_int_distribution<int> coef(0, 99);
  Dense d;
  d.m = m, d.n = n + 2 * m;
  d.a.assign(static_cast<size_t>(d.m) * d.n, 0.0);
  for (int i = 0; i < m; ++i) {
    double sum = 0;
    for (int j = 0; j < n; ++j) sum += d.a[i * d.n + j] = coef(rng);
    d.a[i * d.n + n + 2 * i] = 1;
    d.a[i * d.n + n + 2 * i + 1] = -1;
    d.rowLo.push_back(std::floor(sum / 2));
    d.rowUp.push_back(std::floor(sum / 2));
  }
  for (int j = 0; j < d.n; ++j) {
    bool x = j < n;
    d.obj.push_back(x ? 0 : 1);
    d.type.push_back(x ? 'B' : 'C');
    d.colLo.push_back(0);
    d.colUp.push_back(x ? 1 : 1e30);
  }
  return d;
}

TEST(SolveMip, KnapsackOptimumBoundGapAndPool) {
  const double best = BruteForceKnapsack();
  QuietProb prob;
  ASSERT_EQ(Load(prob, Knapsack(5)), 0);
  ASSERT_EQ(ZELQ_Solve(prob), 0);
  EXPECT_EQ(IntAttr(prob, "Status"), ZELQ_OPTIMAL);
  EXPECT_EQ(IntAttr(prob, "MipStatus"), ZELQ_OPTIMAL);
  EXPECT_EQ(IntAttr(prob, "HasMipSol"), 1);
  EXPECT_NEAR(DblAttr(prob, "ObjVal"), best + 5, 1e-6);
  EXPECT_NEAR(DblAttr(prob, "BestObj"), best + 5, 1e-6);
  EXPECT_GE(DblAttr(prob, "BestBnd"), best + 5 - 1e-6);  // a bound of a maximisation is above
  EXPECT_LE(DblAttr(prob, "BestGap"), 1e-4 + 1e-9);
  std::vector<double> x(kItems);
  ASSERT_EQ(ZELQ_GetSolution(prob, x.data()), 0);
  double v = 0, w = 0;
  for (int j = 0; j < kItems; ++j) {
    EXPECT_NEAR(x[j], std::round(x[j]), 1e-6);
    v += kValue[j] * x[j], w += kWeight[j] * x[j];
  }
  EXPECT_NEAR(v, best, 1e-6);
  EXPECT_LE(w, kCapacity + 1e-6);
  const int pool = IntAttr(prob, "PoolSols");
  ASSERT_GE(pool, 1);
  double prev = 1e300;
  for (int i = 0; i < pool; ++i) {
    double obj = 0;
    ASSERT_EQ(ZELQ_GetPoolObjVal(prob, i, &obj), 0);
    EXPECT_LE(obj, prev + 1e-9) << "pool not best first at " << i;
    prev = obj;
    std::vector<double> px(kItems);
    ASSERT_EQ(ZELQ_GetPoolSolution(prob, i, kItems, nullptr, px.data()), 0);
    double pv = 5;
    for (int j = 0; j < kItems; ++j) pv += kValue[j] * px[j];
    EXPECT_NEAR(pv, obj, 1e-6);
  }
  double obj0 = 0;
  ASSERT_EQ(ZELQ_GetPoolObjVal(prob, 0, &obj0), 0);
  EXPECT_NEAR(obj0, best + 5, 1e-6);
  EXPECT_EQ(ZELQ_GetPoolObjVal(prob, pool, &obj0), ZELQ_RETCODE_INVALID);
  EXPECT_NE(LastError(prob).find("out of range"), std::string::npos) << LastError(prob);
}

TEST(SolveMip, SolveLpSolvesTheRelaxation) {
  QuietProb prob;
  ASSERT_EQ(Load(prob, Knapsack(0)), 0);
  ASSERT_EQ(ZELQ_SolveLp(prob), 0);
  EXPECT_EQ(IntAttr(prob, "Status"), ZELQ_OPTIMAL);
  EXPECT_EQ(IntAttr(prob, "HasMipSol"), 0);
  const double lp = DblAttr(prob, "ObjVal");
  EXPECT_GT(lp, BruteForceKnapsack() + 1e-6);  // this relaxation has a fractional optimum
  std::vector<double> x(kItems);
  ASSERT_EQ(ZELQ_GetLpSolution(prob, x.data(), nullptr, nullptr, nullptr), 0);
  int fractional = 0;
  for (double v : x) fractional += std::fabs(v - std::round(v)) > 1e-6;
  EXPECT_EQ(fractional, 1);
}

TEST(SolveMip, InfeasibleAndUnboundedMips) {
  Dense d;  // 2x + 2y = 3 with x, y binary: the LP is feasible, the MIP is not
  d.m = 1, d.n = 2;
  d.a = {2, 2};
  d.obj = {1, 1};
  d.type = {'B', 'B'};
  d.colLo = {0, 0};
  d.colUp = {1, 1};
  d.rowLo = {3};
  d.rowUp = {3};
  QuietProb prob;
  ASSERT_EQ(Load(prob, d), 0);
  ASSERT_EQ(ZELQ_Solve(prob), 0);
  EXPECT_EQ(IntAttr(prob, "Status"), ZELQ_INFEASIBLE);
  EXPECT_EQ(IntAttr(prob, "HasMipSol"), 0);
  std::vector<double> x(2);
  EXPECT_EQ(ZELQ_GetSolution(prob, x.data()), ZELQ_RETCODE_INVALID);
  EXPECT_NE(LastError(prob).find("no solution available"), std::string::npos);

  Dense u;  // max x + y, x - y <= 0.5, integers without upper bounds
  u.m = 1, u.n = 2;
  u.a = {1, -1};
  u.obj = {1, 1};
  u.type = {'I', 'I'};
  u.sense = ZELQ_MAXIMIZE;
  u.colLo = {0, 0};
  u.colUp = {1e30, 1e30};
  u.rowLo = {-1e30};
  u.rowUp = {0.5};
  QuietProb unb;
  ASSERT_EQ(Load(unb, u), 0);
  ASSERT_EQ(ZELQ_Solve(unb), 0);
  int st = IntAttr(unb, "Status");
  EXPECT_TRUE(st == ZELQ_UNBOUNDED || st == ZELQ_INF_OR_UNB) << st;
}

// Cbc's preprocessing answered this MIP with x = 10, y = -3 (x + y = 7 > 4); the engine checks
// the incumbent against the problem and solves again without preprocessing.
TEST(SolveMip, AnIncumbentThatBreaksARowIsNotReported) {
  Dense d;  // min -x s.t. x + y <= 4, x + 3y <= 10, x in [0, 10], y a free integer
  d.m = 2, d.n = 2;
  d.a = {1, 1, 1, 3};
  d.obj = {-1, 0};
  d.type = {'C', 'I'};
  d.colLo = {0, -1e30};
  d.colUp = {10, 1e30};
  d.rowLo = {-1e30, -1e30};
  d.rowUp = {4, 10};
  QuietProb prob;
  ASSERT_EQ(Load(prob, d), 0);
  ASSERT_EQ(ZELQ_Solve(prob), 0);
  ASSERT_EQ(IntAttr(prob, "Status"), ZELQ_OPTIMAL);
  EXPECT_NEAR(DblAttr(prob, "ObjVal"), -10, 1e-9);
  std::vector<double> x(2);
  ASSERT_EQ(ZELQ_GetSolution(prob, x.data()), 0);
  EXPECT_NEAR(x[0], 10, 1e-9);
  EXPECT_LE(x[0] + x[1], 4 + 1e-9);
  EXPECT_LE(x[0] + 3 * x[1], 10 + 1e-9);
  EXPECT_NEAR(x[1], std::round(x[1]), 1e-9);
}

TEST(SolveMip, TimeLimitStopsAHardInstance) {
  QuietProb prob;
  ASSERT_EQ(Load(prob, MarketSplit(6, 50, 11)), 0);
  ASSERT_EQ(ZELQ_SetDblParam(prob, "TimeLimit", 1.0), 0);
  auto t0 = std::chrono::steady_clock::now();
  ASSERT_EQ(ZELQ_Solve(prob), 0);
  double secs = std::chrono::duration<double>(std::chrono::steady_clock::now() - t0).count();
  EXPECT_EQ(IntAttr(prob, "Status"), ZELQ_TIMEOUT);
  EXPECT_LT(secs, 4.0);
  EXPECT_GE(DblAttr(prob, "SolvingTime"), 0.9);
}

TEST(SolveMip, NodeLimitStopsTheSearch) {
  QuietProb prob;
  ASSERT_EQ(Load(prob, MarketSplit(6, 50, 12)), 0);
  ASSERT_EQ(ZELQ_SetIntParam(prob, "NodeLimit", 20), 0);
  ASSERT_EQ(ZELQ_SetDblParam(prob, "TimeLimit", 60.0), 0);
  ASSERT_EQ(ZELQ_Solve(prob), 0);
  EXPECT_EQ(IntAttr(prob, "Status"), ZELQ_NODELIMIT);
  EXPECT_LE(IntAttr(prob, "NodeCnt"), 40);
}

TEST(SolveMip, InterruptFromAnotherThreadStopsWithinASecond) {
  QuietProb prob;
  ASSERT_EQ(Load(prob, MarketSplit(6, 50, 13)), 0);
  ASSERT_EQ(ZELQ_SetDblParam(prob, "TimeLimit", 60.0), 0);
  // An interrupt while idle is ignored: the next solve runs normally.
  ASSERT_EQ(ZELQ_Interrupt(prob), 0);
  std::chrono::steady_clock::time_point asked, done;
  std::thread stopper([&] {
    std::this_thread::sleep_for(std::chrono::milliseconds(1500));
    asked = std::chrono::steady_clock::now();
    ZELQ_Interrupt(prob);
  });
  ASSERT_EQ(ZELQ_Solve(prob), 0);
  done = std::chrono::steady_clock::now();
  stopper.join();
  EXPECT_EQ(IntAttr(prob, "Status"), ZELQ_INTERRUPTED);
  EXPECT_LT(std::chrono::duration<double>(done - asked).count(), 1.0);
  EXPECT_GT(std::chrono::duration<double>(done - asked).count(), -0.01);  // not before the ask
  EXPECT_EQ(ZELQ_Interrupt(nullptr), ZELQ_RETCODE_INVALID);
}

// Log lines of a solve, collected through the log callback.
struct Lines {
  std::vector<std::string> all;
  bool Contains(const std::string& s) const {
    for (const std::string& l : all)
      if (l.find(s) != std::string::npos) return true;
    return false;
  }
};
void Collect(char* msg, void* data) { static_cast<Lines*>(data)->all.push_back(msg); }

TEST(SolveMip, MipStartsAreUsedAccordingToTheMode) {
  const double best = BruteForceKnapsack();
  // Optimal choice found by enumeration, given as a complete start.
  std::vector<double> opt(kItems, 0.0);
  for (int mask = 0; mask < (1 << kItems); ++mask) {
    double v = 0, w = 0;
    for (int j = 0; j < kItems; ++j)
      if (mask & (1 << j)) v += kValue[j], w += kWeight[j];
    if (w <= kCapacity && v == best)
      for (int j = 0; j < kItems; ++j) opt[j] = (mask >> j) & 1;
  }
  std::vector<int> all(kItems);
  for (int j = 0; j < kItems; ++j) all[j] = j;
  struct Case { int mode; bool partial; bool used; };
  const Case cases[] = {{-1, false, true}, {1, false, true}, {0, false, false},
                        {2, true, true}, {1, true, false}};
  for (const Case& c : cases) {
    SCOPED_TRACE(testing::Message() << "mode " << c.mode << " partial " << c.partial);
    QuietProb prob;
    ASSERT_EQ(Load(prob, Knapsack(0)), 0);
    Lines lines;
    ASSERT_EQ(ZELQ_SetIntParam(prob, "Logging", 1), 0);
    ASSERT_EQ(ZELQ_SetIntParam(prob, "LogToConsole", 0), 0);
    ASSERT_EQ(ZELQ_SetLogCallback(prob, Collect, &lines), 0);
    ASSERT_EQ(ZELQ_SetIntParam(prob, "MipStartMode", c.mode), 0);
    ASSERT_EQ(ZELQ_AddMipStart(prob, c.partial ? 6 : kItems, all.data(), opt.data()), 0);
    ASSERT_EQ(ZELQ_Solve(prob), 0);
    EXPECT_NEAR(DblAttr(prob, "ObjVal"), best, 1e-6);
    EXPECT_EQ(lines.Contains("MIPStart"), c.used);
  }
}

TEST(SolveMip, LoggingOffWritesNothingAndOnReachesTheCallback) {
  for (int logging : {0, 1}) {
    QuietProb prob;
    ASSERT_EQ(Load(prob, Knapsack(0)), 0);
    Lines lines;
    ASSERT_EQ(ZELQ_SetLogCallback(prob, Collect, &lines), 0);
    ASSERT_EQ(ZELQ_SetIntParam(prob, "Logging", logging), 0);
    ASSERT_EQ(ZELQ_SetIntParam(prob, "LogToConsole", 0), 0);
    testing::internal::CaptureStdout();
    ASSERT_EQ(ZELQ_Solve(prob), 0);
    ASSERT_EQ(ZELQ_SolveLp(prob), 0);
    std::string out = testing::internal::GetCapturedStdout();
    EXPECT_EQ(out, "") << "logging " << logging;
    EXPECT_EQ(lines.all.empty(), logging == 0);
  }
}

// max 7x + 3z - 2u - 2v  s.t.  2x + z + a u + a v <= 0, x binary, z >= 0, u, v >= -1: the
// optimum takes u = v = -1, x = 1 and z = 2a - 2. Within the bounds the row's activity reaches
// 2a, past the 1e20 that COIN's presolve takes as infinite: with a = 1e20 (found by fuzzing) it
// failed an assertion, with a = 5e19 it called the MIP infeasible. Below 1e18 presolve runs.
TEST(SolveMip, RowsWhoseActivityReachesCoinInfinitySkipPresolve) {
  for (double a : {1e20, 5e19, 1e17}) {
    SCOPED_TRACE(testing::Message() << "element " << a);
    Dense d;
    d.m = 1, d.n = 4;
    d.a = {2, 1, a, a};
    d.obj = {7, 3, -2, -2};
    d.type = {'B', 'C', 'C', 'C'};
    d.sense = ZELQ_MAXIMIZE;
    d.colLo = {0, 0, -1, -1};
    d.colUp = {1, 1e30, 1e30, 1e30};
    d.rowLo = {-1e30};
    d.rowUp = {0};
    QuietProb prob;
    ASSERT_EQ(Load(prob, d), 0);
    Lines lines;
    ASSERT_EQ(ZELQ_SetIntParam(prob, "Logging", 1), 0);
    ASSERT_EQ(ZELQ_SetIntParam(prob, "LogToConsole", 0), 0);
    ASSERT_EQ(ZELQ_SetLogCallback(prob, Collect, &lines), 0);
    ASSERT_EQ(ZELQ_Solve(prob), 0);
    ASSERT_EQ(IntAttr(prob, "Status"), ZELQ_OPTIMAL);
    EXPECT_NEAR(DblAttr(prob, "ObjVal") / (6 * a), 1.0, 1e-9);
    std::vector<double> x(4);
    ASSERT_EQ(ZELQ_GetSolution(prob, x.data()), 0);
    EXPECT_NEAR(x[0], 1.0, 1e-6);
    EXPECT_NEAR(x[2], -1.0, 1e-6);
    EXPECT_NEAR(x[3], -1.0, 1e-6);
    EXPECT_EQ(lines.Contains("Cbc runs without presolve"), a >= 5e17);
  }
}

TEST(SolveMip, ParallelSearchAndBranchFactorsKeepTheOptimum) {
  const double best = BruteForceKnapsack();
  for (int threads : {1, 2}) {
    for (bool factors : {false, true}) {
      SCOPED_TRACE(testing::Message() << threads << " threads, factors " << factors);
      QuietProb prob;
      ASSERT_EQ(Load(prob, Knapsack(0)), 0);
      ASSERT_EQ(ZELQ_SetIntParam(prob, "Threads", threads), 0);
      if (factors) {
        std::vector<int> list = {0, 5, 9};
        std::vector<double> f = {3, 1, 2};
        ASSERT_EQ(ZELQ_SetColBranchFactors(prob, 3, list.data(), f.data()), 0);
      }
      ASSERT_EQ(ZELQ_Solve(prob), 0);
      EXPECT_EQ(IntAttr(prob, "Status"), ZELQ_OPTIMAL);
      EXPECT_NEAR(DblAttr(prob, "ObjVal"), best, 1e-6);
    }
  }
}

TEST(SolveMip, ProblemsOnDifferentThreadsSolveCorrectly) {
  const double best = BruteForceKnapsack();
  std::vector<double> got(4, 0.0);
  std::vector<std::thread> workers;
  for (int t = 0; t < 4; ++t) {
    workers.emplace_back([&got, t] {
      QuietProb prob;
      if (Load(prob, Knapsack(t)) != 0) return;
      ASSERT_EQ(ZELQ_SetIntParam(prob, "NodeLimit", 1000 + t), 0);  // differing arguments
      for (int rep = 0; rep < 3; ++rep) {
        if (ZELQ_Solve(prob) != 0) return;
        got[t] += DblAttr(prob, "ObjVal") - t;
      }
    });
  }
  for (std::thread& w : workers) w.join();
  for (int t = 0; t < 4; ++t) EXPECT_NEAR(got[t], 3 * best, 1e-6) << t;
}

}  // namespace
