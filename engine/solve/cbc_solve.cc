// MIP solves with Cbc. The in-memory model is handed to Cbc's full driver (CbcMain0/CbcMain1:
// preprocessing, the standard Cgl cut generators and primal heuristics with the driver's tuned
// defaults), so the engine solves as strongly as the cbc command line. Our parameters become
// driver arguments; interrupts, the wall-clock limit and logging go through handlers.
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <mutex>
#include <string>
#include <vector>

#include "CbcModel.hpp"
#include "CbcSolver.hpp"
#include "OsiClpSolverInterface.hpp"
#include "api/guard.h"
#include "solve/cbc_internal.h"
#include "solve/coin_log.h"
#include "solve/coin_model.h"
#include "solve/solve_control.h"
#include "solve/solver.h"

namespace zelq::engine {

namespace {

constexpr int kPoolSize = 10;

std::string Num(double v) {
  char buf[64];
  std::snprintf(buf, sizeof buf, "%.17g", v);
  return buf;
}

// How much Cbc may reduce the MIP before its search: Clp's presolve of the LPs and Cbc's
// preprocessing, only the presolve, or neither.
enum class Reduction { kFull, kPresolveOnly, kNone };

// COIN's presolve takes any number from 1e20 up as infinite. When the column bounds let a row's
// activity reach that far, its implied-bound arithmetic breaks: it calls a feasible MIP
// infeasible, or fails an assertion in implied_free_action (found by fuzzing: two columns in
// [-1, inf) with elements of 1e20 in one row). Such MIPs are solved without presolve; 1e18
// leaves a margin of 100 (MIPLIB 3 reaches 1e12 at most).
constexpr double kPresolveActivityLimit = 1e18;

// The largest row activity the finite column bounds allow, in absolute value, of any row;
// bounds from 1e20 up count as infinite, as in COIN, and add nothing.
double LargestBoundedActivity(const CoinLpData& d) {
  std::vector<double> reach(d.rows, 0.0);
  for (int j = 0; j < d.cols; ++j) {
    double m = 0.0;
    for (double b : {d.colLower[j], d.colUpper[j]})
      if (std::fabs(b) < 1e20) m = std::max(m, std::fabs(b));
    for (int k = d.beg[j]; k < d.beg[j + 1]; ++k) reach[d.idx[k]] += std::fabs(d.val[k]) * m;
  }
  return reach.empty() ? 0.0 : *std::max_element(reach.begin(), reach.end());
}

bool AnyBranchFactor(const Problem& p) {
  for (double f : p.branchFactor)
    if (f != 0.0) return true;
  return false;
}

int ThreadCount(const ZELQprob* prob) {
  int t = prob->params.Get(IntParam::Threads);
  // Auto is one thread: Cbc's parallel search is not deterministic and gains little on the
  // small shared machines this engine targets; ask for more explicitly.
  return t <= 0 ? 1 : t;
}

// Driver arguments for our parameters.
std::vector<std::string> DriverArgs(const ZELQprob* prob, int logLevel, Reduction reduction) {
  const ParamSet& ps = prob->params;
  std::vector<std::string> a = {"zelq", "-log", std::to_string(logLevel), "-slog",
                                std::to_string(logLevel > 1 ? 1 : 0)};
  auto add = [&a](const char* k, const std::string& v) {
    a.push_back(k);
    a.push_back(v);
  };
  if (ps.Get(DblParam::TimeLimit) < 1e30) {
    add("-sec", Num(ps.Get(DblParam::TimeLimit)));
    add("-timeMode", "elapsed");
  }
  if (ps.Get(IntParam::NodeLimit) >= 0) add("-maxNodes", std::to_string(ps.Get(IntParam::NodeLimit)));
  add("-ratioGap", Num(ps.Get(DblParam::RelGap)));
  add("-allowableGap", Num(ps.Get(DblParam::AbsGap)));
  // Tolerances go to the driver only when set: its own defaults are what its cut and
  // heuristic settings are tuned for (passing 1e-6 measurably slowed MIPLIB's misc07).
  if (!ps.IsDefault(DblParam::IntTol)) add("-integerTolerance", Num(ps.Get(DblParam::IntTol)));
  if (!ps.IsDefault(DblParam::FeasTol)) add("-primalTolerance", Num(ps.Get(DblParam::FeasTol)));
  if (!ps.IsDefault(DblParam::DualTol)) add("-dualTolerance", Num(ps.Get(DblParam::DualTol)));
  int threads = ThreadCount(prob);
  if (threads > 1) add("-threads", std::to_string(threads));
  bool preprocess = true;
  if (ps.Get(IntParam::Presolve) == 0 || reduction == Reduction::kNone) {
    add("-presolve", "off");
    add("-preprocess", "off");
    preprocess = false;
  } else if (AnyBranchFactor(prob->problem) || reduction == Reduction::kPresolveOnly) {
    add("-preprocess", "off");  // preprocessing renumbers columns and drops priorities
    preprocess = false;
  }
  // Once preprocessing has dropped columns, the driver copies its saved solutions back with the
  // original column count and reads past the end of their arrays (Cbc 2.10; found by fuzzing
  // under AddressSanitizer, with and without a MIP start). So further solutions are kept only
  // without preprocessing; otherwise the pool is the best solution.
  if (!preprocess) add("-maxSavedSolutions", std::to_string(kPoolSize));
  if (ps.Get(IntParam::Scaling) == 0) add("-scaling", "off");
  if (ps.Get(IntParam::CutLevel) == 0) add("-cuts", "off");
  if (ps.Get(IntParam::HeurLevel) == 0) add("-heuristics", "off");
  a.push_back("-solve");
  a.push_back("-quit");
  return a;
}

// Larger branch factor: branched on earlier. Cbc takes smaller numbers first; default 1000.
void PassPriorities(const Problem& p, CbcModel* model) {
  if (!AnyBranchFactor(p)) return;
  model->findIntegers(true);
  std::vector<int> prio;
  for (int j = 0; j < p.cols(); ++j) {
    if (p.colType[j] == 'C') continue;
    double f = std::clamp(p.branchFactor[j], -999.0, 999.0);
    prio.push_back(1000 - static_cast<int>(std::lround(f)));
  }
  if (!prio.empty()) model->passInPriorities(prio.data(), false);
}

void LoadSolver(const ZELQprob* prob, const CoinLpData& d, OsiClpSolverInterface* osi) {
  osi->loadProblem(d.cols, d.rows, d.beg.data(), d.idx.data(), d.val.data(), d.colLower.data(),
                   d.colUpper.data(), d.obj.data(), d.rowLower.data(), d.rowUpper.data());
  for (int j = 0; j < d.cols; ++j)
    if (d.isInt[j]) osi->setInteger(j);
  osi->setObjSense(prob->problem.objSense);
}

void PassMipStart(const MipStart& start, OsiSolverInterface* osi, CbcModel* model) {
  if (start.empty()) return;
  std::vector<std::pair<std::string, double>> named;
  named.reserve(start.size());
  for (const auto& [j, v] : start) named.emplace_back(osi->getColName(j), v);
  model->setMIPStart(named);
}

int NoCallback(CbcModel*, int) { return 0; }

// Cbc's driver parses its arguments through process-wide state (the read position in argv), so
// MIP solves of different problems on different threads take turns.
std::mutex& DriverMutex() {
  static std::mutex mu;
  return mu;
}

std::vector<double> Activities(const Problem& p, const std::vector<double>& x) {
  std::vector<double> act(p.rows(), 0.0);
  for (int i = 0; i < p.rows(); ++i) {
    auto idx = p.matrix.RowIdx(i);
    auto val = p.matrix.RowVal(i);
    for (size_t k = 0; k < idx.size(); ++k) act[i] += val[k] * x[idx[k]];
  }
  return act;
}

// Saved solutions, best first, checked in the original space.
void StorePool(ZELQprob* prob, CbcModel& model) {
  const Problem& p = prob->problem;
  Solution& s = prob->solution;
  const double feasTol = std::max(1e-6, prob->params.Get(DblParam::FeasTol));
  const double intTol = std::max(1e-5, prob->params.Get(DblParam::IntTol));
  // The incumbent is Cbc's own verdict; other saved solutions are checked, since the driver
  // may leave some of them in its preprocessed space.
  auto push = [&](const double* sol, bool trusted) {
    if (sol == nullptr) return;
    std::vector<double> x(sol, sol + p.cols());
    double obj = 0.0;
    if (MipViolation(p, x, 10 * feasTol, 10 * intTol, &obj) > 0.0 && !trusted) return;
    // Cbc may hand back an incumbent array it never filled (seen after a time limit): a
    // vector with NaN values is no solution, whoever vouches for it.
    const auto finite = [](double v) { return std::isfinite(v); };
    if (!std::isfinite(obj) || !std::all_of(x.begin(), x.end(), finite)) return;
    for (const PoolEntry& e : s.pool)
      if (e.x == x) return;
    s.pool.push_back({obj, std::move(x)});
  };
  if (model.getNumCols() == p.cols()) {
    push(model.bestSolution(), true);
    for (int i = 0; i < model.numberSavedSolutions(); ++i) push(model.savedSolution(i), false);
  }
  std::stable_sort(s.pool.begin(), s.pool.end(), [&](const PoolEntry& a, const PoolEntry& b) {
    return p.objSense * a.obj < p.objSense * b.obj;
  });
}

int MapCbcStatus(CbcModel& model, const SolveControl& control, bool hasSol) {
  if (control.reason == SolveControl::kInterrupted) return ZELQ_INTERRUPTED;
  const int sec = model.secondaryStatus();
  if (control.reason == SolveControl::kTimeLimit || sec == 4) return ZELQ_TIMEOUT;
  if (sec == 3) return ZELQ_NODELIMIT;
  if (sec == 5) return ZELQ_INTERRUPTED;
  if (sec == 7) return hasSol ? ZELQ_UNBOUNDED : ZELQ_INF_OR_UNB;
  if (sec == 1 || (!hasSol && model.isProvenInfeasible())) return ZELQ_INFEASIBLE;
  if (model.status() == 0 && hasSol) return ZELQ_OPTIMAL;
  if (model.status() == 0 && !hasSol) return ZELQ_INFEASIBLE;
  return ZELQ_UNFINISHED;
}

void StoreMipResults(ZELQprob* prob, CbcModel& model, const SolveControl& control) {
  const Problem& p = prob->problem;
  Solution& s = prob->solution;
  StorePool(prob, model);
  const bool hasSol = !s.pool.empty();
  s.status = s.mipStatus = MapCbcStatus(model, control, hasSol);
  s.nodeCnt = model.getNodeCount();
  s.simplexIter = model.getIterationCount();
  const double sense = p.objSense;
  if (hasSol) {
    s.mipX = s.pool.front().x;
    s.mipActivity = Activities(p, s.mipX);
    s.objVal = s.bestObj = s.pool.front().obj;
    s.hasMipSol = true;
  } else {
    s.bestObj = sense * 1e30;
  }
  double bound = model.getBestPossibleObjValue();
  if (std::fabs(bound) < 1e30) {
    bound += p.objConst;
    // The bound never passes the incumbent (it may after a gap stop or by round-off).
    if (hasSol && sense * bound > sense * s.bestObj) bound = s.bestObj;
    s.bestBnd = bound;
  } else {
    s.bestBnd = s.status == ZELQ_OPTIMAL ? s.bestObj : -sense * 1e30;
  }
  s.bestGap = hasSol && std::fabs(s.bestBnd) < 1e30
                  ? std::fabs(s.bestObj - s.bestBnd) / std::max(1e-10, std::fabs(s.bestObj))
                  : 1e30;
}

// Integer columns take integer values only, so their bounds are rounded inward (within the
// integrality tolerance) before Cbc sees them: an integer column fixed at a fractional value made
// Cbc stop the process (an assertion in its solution check) when a time limit ended the search
// at once. Returns the first column left with no integer between its bounds, or -1.
int RoundIntegerBounds(CoinLpData* d, double intTol) {
  for (int j = 0; j < d->cols; ++j) {
    if (!d->isInt[j]) continue;
    d->colLower[j] = std::ceil(d->colLower[j] - intTol);
    d->colUpper[j] = std::floor(d->colUpper[j] + intTol);
    if (d->colLower[j] > d->colUpper[j]) return j;
  }
  return -1;
}

// The result of a MIP that integer column j makes infeasible on its own.
void StoreNoIntegerValue(ZELQprob* prob, int j) {
  const Problem& p = prob->problem;
  Solution& s = prob->solution;
  s.status = s.mipStatus = ZELQ_INFEASIBLE;
  s.bestObj = s.bestBnd = p.objSense * 1e30;
  char line[200];
  std::snprintf(line, sizeof line,
                "Integer column %d has no integer value in [%g, %g]: the problem is infeasible", j,
                p.colLower[j], p.colUpper[j]);
  prob->log.Line(line);
}

// Sets up Cbc's driver on the model and runs it with our parameters as arguments.
void RunDriver(ZELQprob* prob, int level, Reduction reduction, SolveControl* control,
               CbcModel* model) {
  const MipStart start = ChooseMipStart(prob);
  std::vector<std::string> args = DriverArgs(prob, level, reduction);
  std::vector<const char*> argv;
  for (const std::string& x : args) argv.push_back(x.c_str());
  CbcSolverUsefulData driverData;
  driverData.noPrinting_ = level == 0;
  CbcStopHandler cbcStop(control);
  std::lock_guard<std::mutex> lock(DriverMutex());
  CbcMain0(*model, driverData);
  model->passInEventHandler(&cbcStop);
  model->setUseElapsedTime(true);
  PassPriorities(prob->problem, model);
  PassMipStart(start, model->solver(), model);
  CbcMain1(static_cast<int>(argv.size()), argv.data(), *model, NoCallback, driverData);
}

// True when Cbc's incumbent breaks a bound, a row or integrality of the problem by more than
// the pool's tolerance.
bool IncumbentBroken(const ZELQprob* prob, CbcModel& model) {
  const Problem& p = prob->problem;
  if (model.bestSolution() == nullptr || model.getNumCols() != p.cols()) return false;
  const std::vector<double> x(model.bestSolution(), model.bestSolution() + p.cols());
  const double feasTol = std::max(1e-6, prob->params.Get(DblParam::FeasTol));
  const double intTol = std::max(1e-5, prob->params.Get(DblParam::IntTol));
  double obj = 0.0;
  return MipViolation(p, x, 10 * feasTol, 10 * intTol, &obj) > 0.0;
}

// Runs Cbc on the problem's data; false when its incumbent breaks the problem.
bool RunCbc(ZELQprob* prob, const CoinLpData& d, int level, Reduction reduction,
            SolveControl* control) {
  CoinLogHandler handler(&prob->log, level);
  OsiClpSolverInterface osi;
  osi.passInMessageHandler(&handler);
  LoadSolver(prob, d, &osi);
  ClpStopHandler clpStop(control);
  osi.getModelPtr()->passInEventHandler(&clpStop);
  CbcModel model(osi);
  model.passInMessageHandler(&handler);
  RunDriver(prob, level, reduction, control, &model);
  if (IncumbentBroken(prob, model)) return false;
  StoreMipResults(prob, model, *control);
  return true;
}

// A MIP whose only solution from Cbc breaks the problem: no solution, status NUMERICAL.
void StoreBrokenIncumbent(ZELQprob* prob) {
  Solution& s = prob->solution;
  s.Clear();
  s.status = s.mipStatus = ZELQ_NUMERICAL;
  s.bestObj = s.bestBnd = prob->problem.objSense * 1e30;
  s.bestGap = 1e30;
  prob->log.Line("Cbc's solution breaks the problem's rows or bounds; no solution is reported");
}

}  // namespace

int SolveMip(ZELQprob* prob) {
  prob->solution.Clear();
  prob->lpCache.reset();
  prob->interrupt = false;  // an interrupt issued while idle does not stop this solve
  ApplyLogSettings(prob);
  const ParamSet& ps = prob->params;
  SolveControl control(&prob->interrupt, ps.Get(DblParam::TimeLimit));
  // Cbc checks its own limit between nodes; the LP handler only stops an LP that runs far past
  // it (a long root relaxation), so that the LPs after Cbc's stop can keep the incumbent.
  control.lpGrace = std::max(1.0, 0.05 * control.timeLimit);
  const int level = CoinLogLevel(ps.Get(IntParam::Logging), ps.Get(IntParam::LogLevel));

  CoinLpData d;
  BuildCoinData(prob->problem, false, &d);
  if (int j = RoundIntegerBounds(&d, ps.Get(DblParam::IntTol)); j >= 0) {
    StoreNoIntegerValue(prob, j);
    prob->solution.solvingTime = control.Elapsed();
    return ZELQ_RETCODE_OK;
  }
  Reduction first = Reduction::kFull, retry = Reduction::kPresolveOnly;
  if (double reach = LargestBoundedActivity(d); reach >= kPresolveActivityLimit) {
    prob->log.Printf("A row's activity within the column bounds reaches %g; Cbc runs without "
                     "presolve",
                     reach);
    first = retry = Reduction::kNone;
  }
  // Cbc's preprocessing can hand back an incumbent that breaks a row of the problem (seen with
  // a free integer column: x + y <= 4 came back with x + y = 7); the MIP is then solved again
  // without preprocessing.
  if (!RunCbc(prob, d, level, first, &control)) {
    prob->log.Line("Cbc's solution breaks the problem; solving again without preprocessing");
    if (!RunCbc(prob, d, level, retry, &control)) StoreBrokenIncumbent(prob);
  }
  prob->solution.solvingTime = control.Elapsed();
  return ZELQ_RETCODE_OK;
}

}  // namespace zelq::engine
