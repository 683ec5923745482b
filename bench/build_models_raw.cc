// Reference variants through the library's interfaces without the header
// layer: the basic model with one expression reused for every row (Clear,
// two AddTerm calls, AddConstr), the basic model with rows given by column
// indices, and the knapsack row from arrays (IExpr::AddTerms), which is the
// baseline of the knapsack comparison.
#include <memory>
#include <vector>

#include "build_models_bench.h"
#include "zelq/zelqcpp_exports.h"

namespace build_models {
namespace {

// An environment without banner or log output and one model in it.
struct RawModel {
  std::unique_ptr<Zelq::IEnvr> env;
  std::unique_ptr<Zelq::IModel> model;

  explicit RawModel(Outcome* out) {
    std::unique_ptr<Zelq::IEnvrConfig> config(CreateEnvrConfig());
    config->Set("Banner", "0");
    config->Set("Logging", "0");
    env.reset(CreateEnvrWithConfig(config.get(), nullptr));
    if (env->GetErrorCode() != 0) {
      Fail(out, "creating the environment", env->GetErrorCode(), env->GetErrorMessage());
      return;
    }
    model.reset(env->CreateModel("bench"));
    if (model->GetErrorCode() != 0)
      Fail(out, "creating the model", model->GetErrorCode(), model->GetErrorMessage());
  }

  // False (and the failure recorded) when the last model call failed.
  bool Ok(Outcome* out, const char* what) const {
    if (model->GetErrorCode() == 0) return true;
    Fail(out, what, model->GetErrorCode(), model->GetErrorMessage());
    return false;
  }

  void ReadSizes(Outcome* out) const {
    out->rows = model->GetIntAttr("Rows");
    out->cols = model->GetIntAttr("Cols");
    out->elems = model->GetIntAttr("Elems");
    Ok(out, "reading the sizes");
  }

  void Solve(const Options& options, Outcome* out) const {
    ReadSizes(out);
    if (!options.check) return;
    model->Solve();
    if (!Ok(out, "solving")) return;
    out->check_value = model->GetDblAttr("LpObjVal");
    Ok(out, "reading LpObjVal");
  }
};

// Both pair arrays of the basic model: x with cost 2, then y with cost 1.
bool AddPairs(const RawModel& raw, int pairs, Outcome* out,
              std::unique_ptr<Zelq::IVarArray>* x, std::unique_ptr<Zelq::IVarArray>* y) {
  x->reset(raw.model->AddVars(pairs, 0.0, 1e30, 2.0, 'C', ""));
  if (!raw.Ok(out, "AddVars x")) return false;
  y->reset(raw.model->AddVars(pairs, 0.0, 1e30, 1.0, 'C', ""));
  return raw.Ok(out, "AddVars y");
}

void BasicReusedExpr(const Options& options, Outcome* out) {
  RawModel raw(out);
  if (out->error[0] != '\0') return;
  const int n = options.n, pairs = n * n;
  Stopwatch watch;
  std::unique_ptr<Zelq::IVarArray> x, y;
  if (!AddPairs(raw, pairs, out, &x, &y)) return;
  std::unique_ptr<Zelq::IExpr> expr(CreateExpr(0.0));
  for (int k = 0; k < pairs; ++k) {
    const std::unique_ptr<Zelq::IVar> xk(x->GetVar(k)), yk(y->GetVar(k));
    expr->Clear();
    expr->AddTerm(xk.get(), 1.0);
    expr->AddTerm(yk.get(), -1.0);
    delete raw.model->AddConstr(expr.get(), 'G', k / n, nullptr);
    if (!raw.Ok(out, "AddConstr")) return;
    expr->Clear();
    expr->AddTerm(xk.get(), 1.0);
    expr->AddTerm(yk.get(), 1.0);
    delete raw.model->AddConstr(expr.get(), 'G', 0.0, nullptr);
    if (!raw.Ok(out, "AddConstr")) return;
  }
  out->seconds = watch.Seconds();
  raw.Solve(options, out);
}

void BasicIndexRows(const Options& options, Outcome* out) {
  RawModel raw(out);
  if (out->error[0] != '\0') return;
  const int n = options.n, pairs = n * n;
  Stopwatch watch;
  std::unique_ptr<Zelq::IVarArray> x, y;
  if (!AddPairs(raw, pairs, out, &x, &y)) return;
  const double minus[2] = {1.0, -1.0}, plus[2] = {1.0, 1.0};
  for (int k = 0; k < pairs; ++k) {
    const int cols[2] = {k, pairs + k};
    delete raw.model->AddConstr(2, cols, minus, 'G', k / n, nullptr);
    if (!raw.Ok(out, "AddConstr")) return;
    delete raw.model->AddConstr(2, cols, plus, 'G', 0.0, nullptr);
    if (!raw.Ok(out, "AddConstr")) return;
  }
  out->seconds = watch.Seconds();
  raw.Solve(options, out);
}

void KnapAddTerms(const Options& options, Outcome* out) {
  RawModel raw(out);
  if (out->error[0] != '\0') return;
  const int m = options.knap;
  const std::vector<double> w = KnapWeights(m);
  std::unique_ptr<Zelq::IVarArray> x(raw.model->AddVars(m, 0.0, 1.0, 0.0, 'B', ""));
  if (!raw.Ok(out, "AddVars")) return;
  Stopwatch watch;
  std::unique_ptr<Zelq::IExpr> expr(CreateExpr(0.0));
  if (expr->AddTerms(x.get(), w.data(), m) != m) {
    Fail(out, "IExpr::AddTerms", expr->GetErrorCode(), expr->GetErrorMessage());
    return;
  }
  std::unique_ptr<Zelq::IConstraint> row(
      raw.model->AddConstr(expr.get(), 'L', KnapCapacity(w), nullptr));
  if (!raw.Ok(out, "AddConstr")) return;
  out->seconds = watch.Seconds();
  raw.ReadSizes(out);
  if (!options.check) return;
  std::unique_ptr<Zelq::IExpr> stored(raw.model->GetRow(row.get()));
  if (!raw.Ok(out, "GetRow")) return;
  for (int t = 0; t < stored->GetSize(); ++t) out->check_value += stored->GetCoeff(t);
}

}  // namespace

void AddRawVariants(std::vector<Variant>* list) {
  list->push_back({"basic", "interfaces, reused IExpr", BasicReusedExpr});
  list->push_back({"basic", "interfaces, index rows", BasicIndexRows});
  list->push_back({"knapsack", kAddTerms, KnapAddTerms});
}

}  // namespace build_models
