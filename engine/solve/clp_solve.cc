// LP solves with Clp: model set-up from the problem store and the parameters, the chosen
// algorithm (dual / primal simplex, barrier with optional crossover), warm starts from the kept
// basis, status mapping, and the cache for later basis operations.
#include <memory>

#include "ClpSimplex.hpp"
#include "ClpSolve.hpp"
#include "api/guard.h"
#include "solve/clp_internal.h"
#include "solve/coin_log.h"
#include "solve/lp_cache.h"
#include "solve/solve_control.h"
#include "solve/solver.h"

namespace zelq::engine {

void LpCacheDeleter::operator()(LpCache* cache) const { delete cache; }

namespace {

struct LpRun {
  int method = ZELQ_LPMETHOD_DUALSIMPLEX;
  bool presolve = true;
  bool crossover = true;
  bool wantRays = false;
  bool warm = false;
  long barrierIter = 0;
  long extraIter = 0;      // simplex iterations before a clean-up run
  bool basisValid = true;  // false after barrier without crossover
};

void ApplyClpParams(const ParamSet& ps, ClpSimplex* m) {
  m->setPrimalTolerance(ps.Get(DblParam::FeasTol));
  m->setDualTolerance(ps.Get(DblParam::DualTol));
  if (ps.Get(IntParam::Scaling) == 0) m->scaling(0);
  // Clp: 50 perturbs from the start, 100 only when progress stalls (the default: 50).
  if (ps.Get(IntParam::DualPerturb) == 0) m->setPerturbation(100);
  if (ps.Get(IntParam::DualPerturb) == 1) m->setPerturbation(50);
}

// Sets the kept start basis on the model; false when none fits the current dimensions.
bool ApplyStartBasis(ZELQprob* prob, const CoinLpData& d, ClpSimplex* m) {
  if (static_cast<int>(prob->startColBasis.size()) != d.cols ||
      static_cast<int>(prob->startRowBasis.size()) != d.modelRows)
    return false;
  double* x = m->primalColumnSolution();
  double* r = m->primalRowSolution();
  for (int j = 0; j < d.cols; ++j) {
    double v = 0.0;
    m->setColumnStatus(j, ToClpStatus(prob->startColBasis[j], d.colLower[j], d.colUpper[j], &v));
    x[j] = v;
  }
  for (int i = 0; i < d.rows; ++i) {
    double v = 0.0;
    int code = i < d.modelRows ? prob->startRowBasis[i] : ZELQ_BASIS_BASIC;
    m->setRowStatus(i, ToClpStatus(code, d.rowLower[i], d.rowUpper[i], &v));
    r[i] = v;
  }
  return true;
}

void RunAlgorithm(ZELQprob* prob, ClpSimplex* m, LpRun* run) {
  if (run->method == ZELQ_LPMETHOD_BARRIER) {
    run->barrierIter = RunClpBarrier(prob, m, run->crossover, &run->basisValid);
    return;
  }
  const bool primal = run->method == ZELQ_LPMETHOD_PRIMALSIMPLEX;
  if (run->warm) {
    primal ? m->primal(0) : m->dual(0);
    return;
  }
  ClpSolve opts;
  opts.setSolveType(primal ? ClpSolve::usePrimal : ClpSolve::useDual);
  opts.setPresolveType(run->presolve ? ClpSolve::presolveOn : ClpSolve::presolveOff);
  m->initialSolve(opts);
}

// Clp's secondary status 2, 3 or 4: the scaled problem is optimal but the unscaled one keeps
// primal (2), dual (3) or both (4) infeasibilities.
bool UnscaledInfeasible(const ClpSimplex* m) {
  return m->status() == 0 && m->secondaryStatus() >= 2 && m->secondaryStatus() <= 4;
}

// Finishes on the unscaled problem from the current basis (the dual simplex repairs primal
// infeasibilities, the primal simplex dual ones), as Clp's own initialSolve does after presolve.
void CleanUpUnscaled(ClpSimplex* m, LpRun* run) {
  if (!UnscaledInfeasible(m)) return;
  const int scaling = m->scalingFlag();
  int iterations = m->numberIterations();
  m->scaling(0);
  m->secondaryStatus() == 2 ? m->dual(0) : m->primal(0);
  m->scaling(scaling);
  run->extraIter += iterations;
}

int MapClpStatus(const ClpSimplex* m, const SolveControl& control) {
  switch (m->status()) {
    case 0:
      return UnscaledInfeasible(m) ? ZELQ_IMPRECISE : ZELQ_OPTIMAL;
    case 1:
      return ZELQ_INFEASIBLE;
    case 2:
      return ZELQ_UNBOUNDED;
    case 4:
      return ZELQ_NUMERICAL;
    default:  // 3 limits, 5 stopped by our event handler
      if (control.reason == SolveControl::kInterrupted) return ZELQ_INTERRUPTED;
      if (control.reason == SolveControl::kTimeLimit) return ZELQ_TIMEOUT;
      return ZELQ_UNFINISHED;
  }
}

// With ReqFarkasRay: certificates need a run without presolve; unbounded rays come cleanly
// from the primal simplex.
void CollectRays(ZELQprob* prob, const CoinLpData& d, ClpSimplex* m, int status) {
  if (status == ZELQ_INFEASIBLE) {
    if (!StoreFarkas(prob, d, m)) {
      m->dual(0);
      StoreFarkas(prob, d, m);
    }
  } else if (status == ZELQ_UNBOUNDED) {
    if (m->algorithm() < 0 || !StoreRay(prob, d, m)) {
      m->primal(0);
      if (m->status() == 2) StoreRay(prob, d, m);
    }
  }
}

LpRun ChooseRun(ZELQprob* prob) {
  const ParamSet& ps = prob->params;
  LpRun run;
  int method = ps.Get(IntParam::LpMethod);
  run.method = method == ZELQ_LPMETHOD_AUTO ? ZELQ_LPMETHOD_DUALSIMPLEX : method;
  run.crossover = ps.Get(IntParam::Crossover) != 0;
  run.wantRays = ps.Get(IntParam::ReqFarkasRay) == 1;
  run.presolve = ps.Get(IntParam::Presolve) != 0 && !run.wantRays;
  return run;
}

void KeepCache(ZELQprob* prob, const CoinLpData& d, std::unique_ptr<ClpSimplex> m,
               std::unique_ptr<CoinLogHandler> handler, bool optimalBasis) {
  ClpEventHandler plain;
  m->passInEventHandler(&plain);  // the stop handler points at this solve's control block
  auto cache = std::unique_ptr<LpCache, LpCacheDeleter>(new LpCache);
  cache->handler = std::move(handler);
  cache->model = std::move(m);
  cache->cols = d.cols;
  cache->modelRows = d.modelRows;
  cache->rows = d.rows;
  cache->negated = d.negated;
  cache->optimalBasis = optimalBasis;
  prob->lpCache = std::move(cache);
}

}  // namespace

int SolveLp(ZELQprob* prob) {
  LpRun run = ChooseRun(prob);
  if (run.method < 1 || run.method > 3)
    return Fail(prob, ZELQ_RETCODE_NOTSUPPORTED,
                "LpMethod %d is not supported by this build (use -1, 1, 2 or 3)", run.method);
  prob->solution.Clear();
  prob->lpCache.reset();
  prob->interrupt = false;  // an interrupt issued while idle does not stop this solve
  ApplyLogSettings(prob);
  SolveControl control(&prob->interrupt, prob->params.Get(DblParam::TimeLimit));

  CoinLpData data;
  BuildCoinData(prob->problem, true, &data);
  auto model = std::make_unique<ClpSimplex>();
  auto handler = std::make_unique<CoinLogHandler>(
      &prob->log, CoinLogLevel(prob->params.Get(IntParam::Logging), prob->params.Get(IntParam::LogLevel)));
  model->passInMessageHandler(handler.get());
  LoadIntoClp(data, model.get());
  ApplyClpParams(prob->params, model.get());
  ClpStopHandler stopper(&control);
  model->passInEventHandler(&stopper);
  if (run.wantRays) model->setSpecialOptions(model->specialOptions() | 32);
  run.warm = run.method != ZELQ_LPMETHOD_BARRIER && ApplyStartBasis(prob, data, model.get());

  RunAlgorithm(prob, model.get(), &run);
  CleanUpUnscaled(model.get(), &run);
  int status = MapClpStatus(model.get(), control);
  if (run.wantRays) CollectRays(prob, data, model.get(), status);
  // A presolved run that stopped early returns a postsolved basis of no use as a start: keep
  // the previous start basis then. Runs without presolve stop at a real simplex basis.
  if (status != ZELQ_OPTIMAL && run.presolve && !run.warm) run.basisValid = false;

  Solution& s = prob->solution;
  s.status = s.lpStatus = status;
  s.simplexIter = run.extraIter + model->numberIterations();
  s.barrierIter = run.barrierIter;
  s.lpMethodUsed = run.method;
  StoreLpResults(prob, data, model.get(), status == ZELQ_OPTIMAL || status == ZELQ_IMPRECISE,
                 run.basisValid);
  s.solvingTime = control.Elapsed();
  KeepCache(prob, data, std::move(model), std::move(handler),
            status == ZELQ_OPTIMAL && run.basisValid);
  return ZELQ_RETCODE_OK;
}

}  // namespace zelq::engine
