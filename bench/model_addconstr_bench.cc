// Cost of adding linear constraints through the library's interfaces against
// the engine's own ZELQ_AddRow loop for the same rows: seconds, the ratio to
// the engine loop, and heap bytes per term (mallinfo2 growth while the rows
// are added, model kept alive, divided by the number of terms).
//
// Modes:
//   engine  ZELQ_AddRow per row on a bare engine problem
//   fresh   per row: CreateLinExpr, AddTerm, AddConstr, delete expression and handle
//   reused  one expression, Clear + AddTerm per row, AddConstr, delete handle
//
// Usage: bench_model_addconstr [rows]   (default 1000000, two terms each)
#include <malloc.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <vector>

#include "zelq/zelq.h"
#include "zelq/zelqcpp_exports.h"

namespace {

constexpr int kCols = 10000;

// Columns of row r: two distinct columns spread over the problem.
int FirstCol(int r) { return static_cast<int>((static_cast<long>(r) * 7919) % (kCols - 1)); }

size_t HeapBytes() { return mallinfo2().uordblks; }

struct Result {
  double seconds = 1e30;
  double bytes_per_term = 0;
};

using Clock = std::chrono::steady_clock;

double Since(Clock::time_point start) {
  return std::chrono::duration<double>(Clock::now() - start).count();
}

Result EngineLoop(int rows) {
  ZELQenvconfig* config = nullptr;
  ZELQenv* env = nullptr;
  ZELQprob* prob = nullptr;
  if (ZELQ_CreateEnvConfig(&config) != 0 || ZELQ_SetEnvConfig(config, "Logging", "0") != 0 ||
      ZELQ_CreateEnvWithConfig(config, &env) != 0 || ZELQ_CreateProb(env, &prob) != 0 ||
      ZELQ_AddCols(prob, kCols, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                   nullptr, nullptr) != 0)
    std::exit(1);
  ZELQ_DeleteEnvConfig(&config);
  const size_t heap0 = HeapBytes();
  const Clock::time_point start = Clock::now();
  int idx[2];
  const double val[2] = {1.0, 2.0};
  for (int r = 0; r < rows; ++r) {
    idx[0] = FirstCol(r);
    idx[1] = idx[0] + 1;
    if (ZELQ_AddRow(prob, 2, idx, val, 'L', 1.0, 1e30, nullptr) != 0) std::exit(2);
  }
  Result result{Since(start), static_cast<double>(HeapBytes() - heap0) / (2.0 * rows)};
  ZELQ_DeleteProb(&prob);
  ZELQ_DeleteEnv(&env);
  return result;
}

Result Interfaces(int rows, bool reuse) {
  std::unique_ptr<Zelq::IEnvrConfig> config(CreateEnvrConfig());
  config->Set("Banner", "0");
  config->Set("Logging", "0");
  std::unique_ptr<Zelq::IEnvr> env(CreateEnvrWithConfig(config.get(), nullptr));
  std::unique_ptr<Zelq::IModel> model(CreateModel(env.get(), "bench"));
  std::vector<std::unique_ptr<Zelq::IVar>> vars;
  vars.reserve(kCols);
  for (int j = 0; j < kCols; ++j) vars.emplace_back(model->AddVar(0, 1e30, 0, 'C', nullptr));
  if (model->GetErrorCode() != 0) std::exit(3);
  const size_t heap0 = HeapBytes();
  const Clock::time_point start = Clock::now();
  std::unique_ptr<Zelq::IExpr> shared(CreateExpr(0.0));
  for (int r = 0; r < rows; ++r) {
    const int first = FirstCol(r);
    Zelq::IExpr* expr = shared.get();
    std::unique_ptr<Zelq::IExpr> fresh;
    if (reuse) {
      expr->Clear();
      expr->AddTerm(vars[first].get(), 1.0);
    } else {
      fresh.reset(CreateLinExpr(vars[first].get(), 1.0));
      expr = fresh.get();
    }
    expr->AddTerm(vars[first + 1].get(), 2.0);
    std::unique_ptr<Zelq::IConstraint> row(model->AddConstr(expr, 'L', 1.0, nullptr));
    if (model->GetErrorCode() != 0) std::exit(4);
  }
  Result result{Since(start), static_cast<double>(HeapBytes() - heap0) / (2.0 * rows)};
  return result;
}

}  // namespace

int main(int argc, char** argv) {
  const int rows = argc > 1 ? std::atoi(argv[1]) : 1000000;
  if (rows <= 0) return 1;
  // Best of three: the machine is shared, the minimum is the least disturbed run.
  Result engine, fresh, reused;
  for (int rep = 0; rep < 3; ++rep) {
    Result e = EngineLoop(rows), f = Interfaces(rows, false), u = Interfaces(rows, true);
    if (e.seconds < engine.seconds) engine = e;
    if (f.seconds < fresh.seconds) fresh = f;
    if (u.seconds < reused.seconds) reused = u;
  }
  std::printf("%d two-term rows (best of 3)\n", rows);
  std::printf("%-8s %10s %8s %10s %12s\n", "mode", "seconds", "ratio", "ns/row", "heap B/term");
  const struct {
    const char* name;
    const Result& result;
  } lines[] = {{"engine", engine}, {"fresh", fresh}, {"reused", reused}};
  for (const auto& line : lines) {
    std::printf("%-8s %10.4f %8.2f %10.1f %12.1f\n", line.name, line.result.seconds,
                line.result.seconds / engine.seconds, line.result.seconds * 1e9 / rows,
                line.result.bytes_per_term);
  }
  return 0;
}
