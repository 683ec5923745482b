// Shared pieces of the model-building benchmark: the variants' common
// signature, the two test models, and a stopwatch.
//
// Each variant builds one model from scratch in its own process and fills an
// Outcome: the building time, the sizes the engine reports afterwards, and
// (in the checking pass) the optimum or a checksum that must agree across all
// variants of the same model.
#ifndef ZELQ_BENCH_BUILD_MODELS_BENCH_H_
#define ZELQ_BENCH_BUILD_MODELS_BENCH_H_

#include <chrono>
#include <cstdio>
#include <vector>

namespace build_models {

struct Options {
  int n = 1000;        // basic model: n * n pairs (x, y)
  int knap = 1000000;  // knapsack row: number of terms
  bool check = false;  // checking pass: solve (basic) or checksum (knapsack)
};

// Written by the child process into a pipe: plain data only.
struct Outcome {
  double seconds = 0;
  long long rows = -1;
  long long cols = -1;
  long long elems = -1;
  double check_value = 0;  // optimum (basic) or coefficient sum (knapsack)
  char error[240] = {};
};

using RunFn = void (*)(const Options&, Outcome*);

struct Variant {
  const char* model;  // "basic" or "knapsack"
  const char* name;
  RunFn run;
  // Time ratio printed against this variant (null: the engine row loop for
  // the basic model, IExpr::AddTerms for the knapsack row),
  // and the largest ratio the design aims for (0: none).
  const char* baseline = nullptr;
  double target = 0;
  double bulk_target = 0;  // same against the engine's bulk load (basic model)
};

// Names the ratios refer to.
inline constexpr const char* kRowLoop = "engine row loop";
inline constexpr const char* kRowLoopNamed = "engine row loop, named";
inline constexpr const char* kBulkLoad = "engine bulk load";
inline constexpr const char* kAddTerms = "interfaces, IExpr::AddTerms";

// Variants by family, in table order; the header layer's list is empty when
// the header layer is not present in this checkout.
void AddEngineVariants(std::vector<Variant>* list);
void AddRawVariants(std::vector<Variant>* list);
void AddHeaderVariants(std::vector<Variant>* list);

// The basic model: for k = i * n + j (i, j < n), variables x_k (cost 2) and
// y_k (cost 1), both in [0, inf), and two rows per k, in this order:
//   x_k - y_k >= i      x_k + y_k >= 0
// Columns are x_0 .. x_(n^2-1) then y_0 .. y_(n^2-1). At the optimum x_k = i,
// y_k = 0, so the minimum is n * sum_i 2 i = n^2 (n - 1).
inline double BasicOptimum(int n) { return static_cast<double>(n) * n * (n - 1); }

// Knapsack weights w_j = 1 + (j % 97); the row is sum_j w_j x_j <= half their sum.
inline double KnapWeight(int j) { return 1.0 + j % 97; }
std::vector<double> KnapWeights(int m);
double KnapCapacity(const std::vector<double>& weights);

class Stopwatch {
 public:
  Stopwatch() : start_(std::chrono::steady_clock::now()) {}
  double Seconds() const {
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start_).count();
  }

 private:
  std::chrono::steady_clock::time_point start_;
};

// Records a failure in the outcome (the first one wins).
void Fail(Outcome* out, const char* what, int code, const char* message);

}  // namespace build_models

#endif  // ZELQ_BENCH_BUILD_MODELS_BENCH_H_
