// Engine baselines for the basic model: ZELQ_AddCols then one ZELQ_AddRow per
// row (without and with names), and one ZELQ_LoadProb call with the matrix in
// column form (the arrays are built inside the timed region: a user has to
// build them too).
#include <algorithm>
#include <string>
#include <vector>

#include "build_models_bench.h"
#include "engine_problem.h"
#include "zelq/zelq.h"

namespace build_models {

EngineProblem::EngineProblem(Outcome* out) : out_(out) {
  ZELQenvconfig* config = nullptr;
  int code = ZELQ_CreateEnvConfig(&config);
  if (code == 0) code = ZELQ_SetEnvConfig(config, "Logging", "0");
  if (code == 0) code = ZELQ_CreateEnvWithConfig(config, &env_);
  if (config != nullptr) ZELQ_DeleteEnvConfig(&config);
  if (code == 0) code = ZELQ_CreateProb(env_, &prob_);
  if (code != 0) Fail(out, "creating the engine problem", code, "");
}

EngineProblem::~EngineProblem() {
  if (prob_ != nullptr) ZELQ_DeleteProb(&prob_);
  if (env_ != nullptr) ZELQ_DeleteEnv(&env_);
}

bool EngineProblem::Ok(int code, const char* what) {
  if (code == 0) return true;
  char message[200] = {};
  ZELQ_GetLastError(prob_, message, sizeof message);
  Fail(out_, what, code, message);
  return false;
}

void EngineProblem::Finish(const Options& options, bool solve) {
  int rows = -1, cols = -1, elems = -1;
  if (!Ok(ZELQ_GetIntAttr(prob_, "Rows", &rows), "reading Rows") ||
      !Ok(ZELQ_GetIntAttr(prob_, "Cols", &cols), "reading Cols") ||
      !Ok(ZELQ_GetIntAttr(prob_, "Elems", &elems), "reading Elems"))
    return;
  out_->rows = rows;
  out_->cols = cols;
  out_->elems = elems;
  if (!options.check || !solve) return;
  if (!Ok(ZELQ_Solve(prob_), "solving")) return;
  Ok(ZELQ_GetDblAttr(prob_, "LpObjVal", &out_->check_value), "reading LpObjVal");
}

namespace {

void RowLoop(const Options& options, Outcome* out, bool named) {
  EngineProblem engine(out);
  if (!engine.ok()) return;
  const int n = options.n, pairs = n * n;
  Stopwatch watch;
  std::vector<double> obj(2 * static_cast<size_t>(pairs), 1.0);
  std::fill(obj.begin(), obj.begin() + pairs, 2.0);
  // Column names x0.. and y0.., zero-terminated one after the other.
  std::string names;
  std::vector<size_t> starts;
  std::vector<const char*> name_ptrs;
  if (named) {
    char name[24];
    for (int c = 0; c < 2 * pairs; ++c) {
      const int length = std::snprintf(name, sizeof name, "%c%d", c < pairs ? 'x' : 'y',
                                       c < pairs ? c : c - pairs);
      starts.push_back(names.size());
      names.append(name, static_cast<size_t>(length) + 1);
    }
    for (size_t start : starts) name_ptrs.push_back(names.data() + start);
  }
  if (!engine.Ok(ZELQ_AddCols(engine.prob(), 2 * pairs, obj.data(), nullptr, nullptr, nullptr,
                              nullptr, nullptr, nullptr, nullptr,
                              named ? name_ptrs.data() : nullptr),
                 "ZELQ_AddCols"))
    return;
  const double minus[2] = {1.0, -1.0}, plus[2] = {1.0, 1.0};
  char name_a[24], name_b[24];
  for (int k = 0; k < pairs; ++k) {
    const int idx[2] = {k, pairs + k};
    if (named) {
      std::snprintf(name_a, sizeof name_a, "a%d", k);
      std::snprintf(name_b, sizeof name_b, "b%d", k);
    }
    if (!engine.Ok(ZELQ_AddRow(engine.prob(), 2, idx, minus, 'G', k / n, 0.0,
                               named ? name_a : nullptr),
                   "ZELQ_AddRow") ||
        !engine.Ok(ZELQ_AddRow(engine.prob(), 2, idx, plus, 'G', 0.0, 0.0,
                               named ? name_b : nullptr),
                   "ZELQ_AddRow"))
      return;
  }
  out->seconds = watch.Seconds();
  engine.Finish(options);
}

void RowLoopUnnamed(const Options& options, Outcome* out) { RowLoop(options, out, false); }
void RowLoopNamed(const Options& options, Outcome* out) { RowLoop(options, out, true); }

void BulkLoad(const Options& options, Outcome* out) {
  EngineProblem engine(out);
  if (!engine.ok()) return;
  const int n = options.n, pairs = n * n, cols = 2 * pairs, rows = 2 * pairs;
  Stopwatch watch;
  std::vector<double> obj(cols, 1.0), elem(2 * static_cast<size_t>(cols)), rhs(rows);
  std::fill(obj.begin(), obj.begin() + pairs, 2.0);
  std::vector<int> beg(cols + 1), cnt(cols, 2), idx(2 * static_cast<size_t>(cols));
  std::vector<char> sense(rows, 'G');
  // Column x_k has +1 in rows 2k and 2k+1; column y_k has -1 and +1 there.
  for (int j = 0; j < cols; ++j) {
    const int k = j < pairs ? j : j - pairs;
    beg[j] = 2 * j;
    idx[2 * j] = 2 * k;
    idx[2 * j + 1] = 2 * k + 1;
    elem[2 * j] = j < pairs ? 1.0 : -1.0;
    elem[2 * j + 1] = 1.0;
  }
  beg[cols] = 2 * cols;
  for (int k = 0; k < pairs; ++k) {
    rhs[2 * k] = k / n;
    rhs[2 * k + 1] = 0.0;
  }
  if (!engine.Ok(ZELQ_LoadProb(engine.prob(), cols, rows, 1, 0.0, obj.data(), beg.data(),
                               cnt.data(), idx.data(), elem.data(), nullptr, nullptr, nullptr,
                               sense.data(), rhs.data(), nullptr, nullptr, nullptr),
                 "ZELQ_LoadProb"))
    return;
  out->seconds = watch.Seconds();
  engine.Finish(options);
}

}  // namespace

void AddEngineVariants(std::vector<Variant>* list) {
  list->push_back({"basic", kRowLoop, RowLoopUnnamed});
  list->push_back({"basic", kBulkLoad, BulkLoad});
  list->push_back({"basic", kRowLoopNamed, RowLoopNamed});
}

}  // namespace build_models
