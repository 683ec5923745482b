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
#include <string>
#include <vector>

namespace build_models {

struct Options {
  int n = 1000;        // basic model: n * n pairs (x, y)
  int knap = 1000000;  // knapsack row: number of terms
  bool check = false;  // checking pass: solve (basic) or checksum (knapsack)
  std::string scratch_dir = "/tmp";  // where the writing variants put their files
  std::string mps_path;              // the file a read-back reads (PuLP's output)
};

// Written by the child process into a pipe: plain data only.
struct Outcome {
  double seconds = 0;        // building
  double write_seconds = 0;  // writing the MPS file (writing variants only)
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
  // PuLP through its script in a Python child process instead of `run`; its
  // speed-ups are taken against the header-layer variant named `peer` (build
  // times) and `write_peer` (build + write times).
  bool pulp = false;
  const char* peer = nullptr;
  const char* write_peer = nullptr;
};

// Names the ratios refer to.
inline constexpr const char* kRowLoop = "engine row loop";
inline constexpr const char* kRowLoopNamed = "engine row loop, named";
inline constexpr const char* kBulkLoad = "engine bulk load";
inline constexpr const char* kAddTerms = "interfaces, IExpr::AddTerms";
inline constexpr const char* kHeaderOps = "header, operators";
inline constexpr const char* kHeaderOpsWrite = "header, operators + write MPS";
inline constexpr const char* kHeaderKnap = "header, e += w[j] * x[j]";
inline constexpr const char* kHeaderKnapWrite = "header, e += w[j] * x[j] + write MPS";

// Variants by family, in table order; the header layer's list is empty when
// the header layer is not present in this checkout.
void AddEngineVariants(std::vector<Variant>* list);
void AddRawVariants(std::vector<Variant>* list);
void AddHeaderVariants(std::vector<Variant>* list);
void AddPulpVariants(std::vector<Variant>* list);

// A file name in the scratch directory that is this process's own.
std::string ScratchFile(const Options& options, const char* stem);

// Reads options.mps_path through the engine (ZELQ_ReadMps) into the outcome's
// sizes; in the checking pass it also solves (basic) or sums the coefficients
// of the first row (knapsack). Runs in a child like a variant.
void ReadBackBasic(const Options& options, Outcome* out);
void ReadBackKnapsack(const Options& options, Outcome* out);

// Where PuLP comes from: the interpreter that has it and the script.
struct PulpSetup {
  std::string python = "/usr/bin/python3";
  std::string script;
};

// Runs argv[0] (a path) with the arguments; its standard output and error
// are collected in `output`, its peak resident memory in `peak_mb`. Returns
// the exit status (128 + signal when killed, -1 when it could not start).
int RunCommand(const std::vector<std::string>& argv, std::string* output, double* peak_mb);

// Takes build and write times and the sizes from the script's result line;
// false when there is none for this model and size.
bool ParsePulpLine(const std::string& output, const char* model, long long size, Outcome* out);

// Runs the script for one model and size, writing `mps_path`; a failure is
// recorded in `out` with the script's last line of output.
bool RunPulp(const PulpSetup& setup, const char* model, long long size,
             const std::string& mps_path, Outcome* out, double* peak_mb);

// Empty when the script is there and the interpreter imports pulp; else why not.
std::string PulpUnavailable(const PulpSetup& setup);

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
