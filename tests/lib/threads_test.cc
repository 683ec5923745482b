// Concurrent use through the header layer, as an application does it: one
// model per thread (build, solve, change, re-solve, query, files), and values
// that share library objects copied and dropped on several threads while
// their model stays with its own thread. Meant to run clean under
// ThreadSanitizer (the tsan preset) as well as in the ordinary build.
#include <gtest/gtest.h>

#include <atomic>
#include <cmath>
#include <cstdio>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "zelq/zelqcpp.h"

namespace {

using Zelq::Constraint;
using Zelq::Expr;
using Zelq::Model;
using Zelq::Var;
using Zelq::VarArray;

constexpr int kThreads = 4;

Zelq::Envr QuietEnvr() {
  Zelq::EnvrConfig config;
  config.Set("Banner", "0");
  config.Set("Logging", "0");
  return Zelq::Envr(config);
}

// Runs `work(t)` on kThreads threads at once (released together) and returns
// the failures they report, one text per failed check.
template <typename Work>
std::vector<std::string> RunTogether(Work work) {
  std::vector<std::string> failures[kThreads];
  std::atomic<int> ready{0};
  std::vector<std::thread> threads;
  for (int t = 0; t < kThreads; ++t) {
    threads.emplace_back([&, t] {
      ready.fetch_add(1);
      while (ready.load() < kThreads) std::this_thread::yield();
      try {
        work(t, failures[t]);
      } catch (const Zelq::Exception& e) {
        failures[t].push_back("thread " + std::to_string(t) + ": " + e.what());
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  std::vector<std::string> all;
  for (auto& list : failures) all.insert(all.end(), list.begin(), list.end());
  return all;
}

void ExpectNear(std::vector<std::string>& failures, int t, const char* what, double got,
                double want) {
  if (!(std::fabs(got - want) <= 1e-6 * (1 + std::fabs(want)))) {
    failures.push_back("thread " + std::to_string(t) + ": " + what + " " + std::to_string(got) +
                       " instead of " + std::to_string(want));
  }
}

// min sum_k 2 x_k + y_k  s.t.  x_k - y_k >= i, x_k + y_k >= 0 for k = i n + j:
// the optimum is n^2 (n - 1).
double BuildBasic(Model& model, int n) {
  VarArray x = model.AddVars(n * n, 0, Zelq::kInfinity, 2, Zelq::kContinuous, "x");
  VarArray y = model.AddVars(n * n, 0, Zelq::kInfinity, 1, Zelq::kContinuous, "y");
  for (int i = 0; i < n; ++i) {
    for (int j = 0; j < n; ++j) {
      const int k = i * n + j;
      model.AddConstr(x[k] - y[k] >= i);
      model.AddConstr(x[k] + y[k] >= 0);
    }
  }
  return static_cast<double>(n) * n * (n - 1);
}

// Each thread owns its environment and models; every model differs by thread,
// so results that leaked between threads would show as wrong optima.
TEST(Threads, ModelsOnDifferentThreadsBuildSolveAndQueryAtOnce) {
  const std::vector<std::string> failures = RunTogether([](int t, std::vector<std::string>& bad) {
    Zelq::Envr env = QuietEnvr();
    for (int round = 0; round < 3; ++round) {
      // An LP: build, solve, tighten a bound, re-solve.
      const int n = 12 + 2 * t + round;
      Model lp = env.CreateModel(("lp" + std::to_string(t)).c_str());
      const double optimum = BuildBasic(lp, n);
      lp.Solve();
      ExpectNear(bad, t, "LP optimum", lp.GetDblAttr("ObjVal"), optimum);
      Var last = lp.GetVar(n * n - 1);  // x for i = n - 1
      ExpectNear(bad, t, "x value", last.GetValue(), n - 1);
      last.Set("LB", n + 1.0);          // costs 2 more per unit
      lp.Solve();
      ExpectNear(bad, t, "tightened optimum", lp.GetDblAttr("ObjVal"), optimum + 4);

      // A file round trip of the thread's own model, then a solve of the copy.
      const std::string path = testing::TempDir() + "zelq_threads_" + std::to_string(t) + "_" +
                               std::to_string(round) + ".mps";
      lp.Write(path.c_str());
      Model back = env.CreateModel("back");
      back.Read(path.c_str());
      std::remove(path.c_str());
      back.Solve();
      ExpectNear(bad, t, "read-back optimum", back.GetDblAttr("ObjVal"), optimum + 4);

      // A knapsack MIP: max sum v_j z_j with weights w_j, capacity 10 + t.
      // Items (value, weight): (10, 5), (6, 4), (5, 3), (3, 2); the best
      // choice is found by enumeration below.
      Model mip = env.CreateModel("mip");
      const double value[] = {10, 6, 5, 3}, weight[] = {5, 4, 3, 2};
      VarArray z = mip.AddVars(4, Zelq::kBinary, "z");
      const double capacity = 7 + t;
      mip.AddConstr(Zelq::Dot(z, {5, 4, 3, 2}) <= capacity);
      mip.SetObjective(Zelq::Dot(z, {10, 6, 5, 3}), Zelq::kMaximize);
      mip.Solve();
      double best = 0;
      for (int mask = 0; mask < 16; ++mask) {
        double v = 0, w = 0;
        for (int j = 0; j < 4; ++j)
          if (mask & (1 << j)) v += value[j], w += weight[j];
        if (w <= capacity && v > best) best = v;
      }
      ExpectNear(bad, t, "MIP optimum", mip.GetDblAttr("ObjVal"), best);
    }
  });
  EXPECT_TRUE(failures.empty()) << failures.front();
}

// Copies of values made on the owning thread go to other threads, which copy
// them again and drop them all while the owner keeps using the model: only
// reference counts are shared, and the originals stay valid.
TEST(Threads, SharedHandlesAreCopiedAndDroppedOnOtherThreads) {
  Zelq::Envr env = QuietEnvr();
  Model model = env.CreateModel("shared");
  VarArray x = model.AddVars(8, 0, 10, 1, Zelq::kContinuous, "x");
  Var first = x[0], second = x[1];
  Expr sum = first + 2 * second + 1;
  Constraint row = model.AddConstr(sum <= 9, "row");

  struct Batch {
    std::vector<Var> vars;
    std::vector<Expr> exprs;
    std::vector<Constraint> rows;
    std::vector<Model> models;
    std::vector<VarArray> arrays;
  };
  std::vector<Batch> batches(kThreads);
  for (Batch& b : batches) {
    for (int k = 0; k < 200; ++k) {
      b.vars.push_back(k % 2 ? first : second);
      b.exprs.push_back(sum);
      b.rows.push_back(row);
      b.models.push_back(model);
      b.arrays.push_back(x);
    }
  }
  std::vector<std::thread> threads;
  for (Batch& b : batches) {
    threads.emplace_back([mine = std::move(b)]() mutable {
      for (int round = 0; round < 3; ++round) {
        std::vector<Var> more(mine.vars);  // copies of copies, on this thread
        std::vector<Expr> exprs(mine.exprs);
        more.clear();
        exprs.clear();
      }
      mine = Batch();  // the thread drops its share
    });
  }
  // The owner goes on with its model meanwhile.
  for (int k = 0; k < 50; ++k) model.AddConstr(x[k % 8] + x[(k + 1) % 8] >= 1);
  for (std::thread& thread : threads) thread.join();

  EXPECT_EQ(first.GetName(), "x0");
  EXPECT_EQ(sum.Size(), 2);
  EXPECT_EQ(row.GetName(), "row");
  EXPECT_EQ(model.GetIntAttr("Rows"), 51);
  model.SetObjective(Zelq::Sum(x), Zelq::kMinimize);
  model.Solve();
  EXPECT_NEAR(model.GetDblAttr("ObjVal"), 4, 1e-9);  // eight in a ring: four at 1
}

// Expressions built on the owner's thread over the same variables are dropped
// on two threads at once: the variables' shared counts change atomically.
TEST(Threads, ExpressionsSharingVariablesAreDroppedConcurrently) {
  Zelq::Envr env = QuietEnvr();
  Model model = env.CreateModel("exprs");
  VarArray x = model.AddVars(4, 0, 1, 0, Zelq::kContinuous, "x");
  std::vector<Expr> left, right;
  for (int k = 0; k < 500; ++k) {
    left.push_back(x[k % 4] + 2 * x[(k + 1) % 4]);
    right.push_back(Zelq::Sum(x) + k);
  }
  std::thread a([v = std::move(left)]() mutable { v.clear(); });
  std::thread b([v = std::move(right)]() mutable { v.clear(); });
  a.join();
  b.join();
  EXPECT_EQ(x[3].GetName(), "x3");
  EXPECT_EQ(model.GetIntAttr("Cols"), 4);
}

}  // namespace
