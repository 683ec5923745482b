// Header-layer variants: the models written the way an application writes
// them with Zelq::Model, Zelq::VarArray, Zelq::Expr and the operators.
// Without the header layer in the checkout the list stays empty.
#if __has_include("zelq/zelqcpp.h")

#include <unistd.h>

#include <string>
#include <vector>

#include "build_models_bench.h"
#include "zelq/zelqcpp.h"

namespace build_models {
namespace {

// An environment without banner or log output.
Zelq::Envr QuietEnvr() {
  Zelq::EnvrConfig config;
  config.Set("Banner", "0");
  config.Set("Logging", "0");
  return Zelq::Envr(config);
}

void ReadSizes(Zelq::Model& model, Outcome* out) {
  out->rows = model.GetIntAttr("Rows");
  out->cols = model.GetIntAttr("Cols");
  out->elems = model.GetIntAttr("Elems");
}

void SolveIfChecking(Zelq::Model& model, const Options& options, Outcome* out) {
  ReadSizes(model, out);
  if (!options.check) return;
  model.Solve();
  out->check_value = model.GetDblAttr("LpObjVal");
}

// Writes the model as an MPS file into the scratch directory, as an
// application does to hand it to another solver; the time goes to
// write_seconds and the file is removed again.
void WriteMpsTimed(Zelq::Model& model, const Options& options, Outcome* out) {
  const std::string path = ScratchFile(options, "header") + ".mps";
  Stopwatch watch;
  model.Write(path.c_str());
  out->write_seconds = watch.Seconds();
  unlink(path.c_str());
}

// Runs `body`, turning the header layer's exceptions into a recorded failure.
template <typename Body>
void Guarded(Outcome* out, Body body) {
  try {
    body();
  } catch (const Zelq::Exception& e) {
    Fail(out, "header layer", e.GetCode(), e.what());
  }
}

void BasicOperators(const Options& options, Outcome* out, bool named, bool write = false) {
  Guarded(out, [&] {
    const Zelq::Envr env = QuietEnvr();
    Zelq::Model m = env.CreateModel("bench");
    const int n = options.n;
    Stopwatch watch;
    Zelq::VarArray x = m.AddVars(n * n, 0, Zelq::kInfinity, 2, Zelq::kContinuous, named ? "x" : "");
    Zelq::VarArray y = m.AddVars(n * n, 0, Zelq::kInfinity, 1, Zelq::kContinuous, named ? "y" : "");
    char name_a[24] = "", name_b[24] = "";
    for (int i = 0; i < n; ++i) {
      for (int j = 0; j < n; ++j) {
        const int k = i * n + j;
        if (named) {
          std::snprintf(name_a, sizeof name_a, "a%d", k);
          std::snprintf(name_b, sizeof name_b, "b%d", k);
        }
        m.AddConstr(x[k] - y[k] >= i, name_a);
        m.AddConstr(x[k] + y[k] >= 0, name_b);
      }
    }
    out->seconds = watch.Seconds();
    if (write) WriteMpsTimed(m, options, out);
    SolveIfChecking(m, options, out);
  });
}

void BasicUnnamed(const Options& options, Outcome* out) { BasicOperators(options, out, false); }
void BasicNamed(const Options& options, Outcome* out) { BasicOperators(options, out, true); }
void BasicWrite(const Options& options, Outcome* out) {
  BasicOperators(options, out, false, true);
}

// Costs through the objective: SetObjective(2 Sum(x) + Sum(y)).
void BasicObjectiveExpr(const Options& options, Outcome* out) {
  Guarded(out, [&] {
    const Zelq::Envr env = QuietEnvr();
    Zelq::Model m = env.CreateModel("bench");
    const int n = options.n;
    Stopwatch watch;
    Zelq::VarArray x = m.AddVars(n * n, Zelq::kContinuous);
    Zelq::VarArray y = m.AddVars(n * n, Zelq::kContinuous);
    m.SetObjective(2 * Zelq::Sum(x) + Zelq::Sum(y), Zelq::kMinimize);
    for (int i = 0; i < n; ++i) {
      for (int j = 0; j < n; ++j) {
        const int k = i * n + j;
        m.AddConstr(x[k] - y[k] >= i);
        m.AddConstr(x[k] + y[k] >= 0);
      }
    }
    out->seconds = watch.Seconds();
    SolveIfChecking(m, options, out);
  });
}

// The knapsack row built by `fill` from the variables and weights, then added.
template <typename Fill>
void Knapsack(const Options& options, Outcome* out, Fill fill, bool write = false) {
  Guarded(out, [&] {
    const Zelq::Envr env = QuietEnvr();
    Zelq::Model m = env.CreateModel("bench");
    const std::vector<double> w = KnapWeights(options.knap);
    Zelq::VarArray x = m.AddVars(options.knap, 0, 1, 0, Zelq::kBinary, "");
    Stopwatch watch;
    Zelq::Expr e = fill(x, w);
    Zelq::Constraint row = m.AddConstr(e <= KnapCapacity(w));
    out->seconds = watch.Seconds();
    if (write) WriteMpsTimed(m, options, out);
    ReadSizes(m, out);
    if (!options.check) return;
    const Zelq::Expr stored = m.GetRow(row);
    for (int t = 0; t < stored.Size(); ++t) out->check_value += stored.GetCoeff(t);
  });
}

Zelq::Expr KnapTerms(const Zelq::VarArray& x, const std::vector<double>& w) {
  const int m = static_cast<int>(w.size());
  Zelq::Expr e;
  for (int j = 0; j < m; ++j) e += w[j] * x[j];
  return e;
}

void KnapPlusEquals(const Options& options, Outcome* out) { Knapsack(options, out, KnapTerms); }
void KnapPlusEqualsWrite(const Options& options, Outcome* out) {
  Knapsack(options, out, KnapTerms, true);
}

void KnapDot(const Options& options, Outcome* out) {
  Knapsack(options, out, [](const Zelq::VarArray& x, const std::vector<double>& w) {
    return Zelq::Dot(x, w);
  });
}

void KnapAddTermsMethod(const Options& options, Outcome* out) {
  Knapsack(options, out, [](const Zelq::VarArray& x, const std::vector<double>& w) {
    Zelq::Expr e;
    e.AddTerms(x, w.data(), x.Size());
    return e;
  });
}

}  // namespace

void AddHeaderVariants(std::vector<Variant>* list) {
  list->push_back({"basic", kHeaderOps, BasicUnnamed, nullptr, 1.3, 2.0});
  list->push_back({"basic", "header, operators, named", BasicNamed, kRowLoopNamed});
  list->push_back({"basic", "header, operators, Sum objective", BasicObjectiveExpr});
  list->push_back({"knapsack", kHeaderKnap, KnapPlusEquals, nullptr, 2.0});
  list->push_back({"knapsack", "header, Dot(x, w)", KnapDot});
  list->push_back({"knapsack", "header, Expr::AddTerms", KnapAddTermsMethod});
  // Building and then writing the file another solver would read: the fair
  // counterpart of PuLP, which always writes one for Cbc.
  list->push_back({"basic", kHeaderOpsWrite, BasicWrite});
  list->push_back({"knapsack", kHeaderKnapWrite, KnapPlusEqualsWrite});
}

}  // namespace build_models

#else  // the header layer is not in this checkout yet

#include <vector>

#include "build_models_bench.h"

namespace build_models {
void AddHeaderVariants(std::vector<Variant>*) {}
}  // namespace build_models

#endif
