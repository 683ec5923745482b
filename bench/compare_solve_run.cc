// The solvers of the comparison, each run in a child process of its own so that its peak
// memory (ru_maxrss from wait4) is its own and a crash or a hang costs one result only:
//   zelq    the header layer, as the zelq command uses it: Model::Read, then Model::Solve;
//   direct  Clp (ClpSimplex::readMps, initialSolve with the engine's ClpSolve options and
//           tolerances) or Cbc (CbcMain0/CbcMain1 with the driver arguments the engine builds
//           from its default parameters);
//   HiGHS   bench/highs_solve.py on the problem the engine read, exported by another child.
// Times are taken inside the children around the solve call only.
#include "compare_solve_run.h"

#include <poll.h>
#include <sys/prctl.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <time.h>
#include <unistd.h>

#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <string>

#include "CbcModel.hpp"
#include "CbcSolver.hpp"
#include "ClpSimplex.hpp"
#include "ClpSolve.hpp"
#include "OsiClpSolverInterface.hpp"
#include "zelq/zelq.h"
#include "zelq/zelqcpp.h"

namespace zelqbench {

namespace {

using Clock = std::chrono::steady_clock;

double Since(Clock::time_point t) { return std::chrono::duration<double>(Clock::now() - t).count(); }

// CPU seconds of this process (every thread): unlike wall time, hardly changed by other
// work on a shared machine.
double CpuNow() {
  timespec ts{};
  clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &ts);
  return static_cast<double>(ts.tv_sec) + 1e-9 * static_cast<double>(ts.tv_nsec);
}

// What a child writes back through its pipe (plain data, one write).
struct ChildReport {
  int outcome = static_cast<int>(Outcome::kFailed);
  int hasObj = 0;
  double obj = 0.0;
  double solveSec = 0.0;
  double solveCpu = 0.0;
  double readSec = 0.0;
  int64_t rows = 0, cols = 0, nnz = 0;
  int64_t iterations = -1, nodes = -1;  // simplex iterations, branch-and-bound nodes
  int isMip = 0;
  char note[160] = "";
};

void SetNote(ChildReport* r, const std::string& text) {
  std::snprintf(r->note, sizeof r->note, "%s", text.c_str());
}

struct ChildRun {
  std::string output;  // everything the child wrote to the pipe
  bool finished = false;
  bool killed = false;
  int signal = 0;
  int exitCode = -1;
  double peakMb = 0.0;
};

// Runs `body` (writing to the given descriptor) or, when `exec` is set, that program with its
// standard output on the pipe. Kills the child after `deadline` seconds.
ChildRun Spawn(const std::function<void(int)>& body, const std::vector<std::string>* exec,
               double deadline) {
  ChildRun run;
  int fds[2];
  if (pipe(fds) != 0) return run;
  std::fflush(stdout);
  std::fflush(stderr);
  pid_t pid = fork();
  if (pid < 0) {
    close(fds[0]);
    close(fds[1]);
    return run;
  }
  if (pid == 0) {
    prctl(PR_SET_PDEATHSIG, SIGKILL);  // a stopped benchmark leaves no solver running
    close(fds[0]);
    if (exec != nullptr) {
      dup2(fds[1], STDOUT_FILENO);
      close(fds[1]);
      std::vector<char*> argv;
      for (const std::string& a : *exec) argv.push_back(const_cast<char*>(a.c_str()));
      argv.push_back(nullptr);
      execv(argv[0], argv.data());
      std::fprintf(stderr, "cannot run %s: %s\n", argv[0], std::strerror(errno));
      _exit(127);
    }
    body(fds[1]);
    close(fds[1]);
    _exit(0);
  }
  close(fds[1]);
  const auto start = Clock::now();
  char buf[4096];
  for (;;) {
    const double left = deadline - Since(start);
    if (left <= 0) {
      kill(pid, SIGKILL);
      run.killed = true;
      break;
    }
    pollfd p = {fds[0], POLLIN, 0};
    int ready = poll(&p, 1, static_cast<int>(std::min(left, 1.0) * 1000) + 1);
    if (ready < 0 && errno != EINTR) break;
    if (ready <= 0) continue;
    ssize_t got = read(fds[0], buf, sizeof buf);
    if (got > 0) {
      run.output.append(buf, static_cast<size_t>(got));
    } else if (got == 0 || errno != EINTR) {
      break;  // end of file: the child closed the pipe (it is ending)
    }
  }
  close(fds[0]);
  int status = 0;
  rusage usage{};
  while (wait4(pid, &status, 0, &usage) < 0 && errno == EINTR) {
  }
  run.peakMb = static_cast<double>(usage.ru_maxrss) / 1024.0;  // Linux: kilobytes
  if (WIFEXITED(status)) {
    run.finished = true;
    run.exitCode = WEXITSTATUS(status);
  } else if (WIFSIGNALED(status)) {
    run.signal = WTERMSIG(status);
  }
  return run;
}

void WriteReport(int fd, const ChildReport& r) {
  const char* p = reinterpret_cast<const char*>(&r);
  size_t left = sizeof r;
  while (left > 0) {
    ssize_t n = write(fd, p, left);
    if (n <= 0) return;
    p += n;
    left -= static_cast<size_t>(n);
  }
}

// A child's report, or the reason there is none.
ChildReport Collect(const ChildRun& run, double deadline) {
  ChildReport r;
  if (run.killed) {
    r.outcome = static_cast<int>(Outcome::kTimeLimit);
    SetNote(&r, "killed after " + std::to_string(static_cast<int>(deadline)) + " s");
  } else if (run.signal != 0) {
    r.outcome = static_cast<int>(Outcome::kCrashed);
    SetNote(&r, std::string("signal ") + strsignal(run.signal));
  } else if (run.output.size() != sizeof r) {
    r.outcome = static_cast<int>(Outcome::kCrashed);
    SetNote(&r, "no report (exit code " + std::to_string(run.exitCode) + ")");
  } else {
    std::memcpy(&r, run.output.data(), sizeof r);
  }
  return r;
}

// The child's limit plus room for reading and for solvers that overrun their own limit.
double Deadline(double limit) { return limit + std::max(30.0, 0.5 * limit); }

SolverResult FromReport(const ChildReport& r, double peakMb) {
  SolverResult s;
  s.outcome = static_cast<Outcome>(r.outcome);
  s.hasObj = r.hasObj != 0;
  s.obj = r.obj;
  s.solveSec = r.solveSec;
  s.cpuSec = r.solveCpu;
  s.readSec = r.readSec;
  s.iterations = r.iterations;
  s.nodes = r.nodes;
  s.peakMb = peakMb;
  s.runs = 1;
  s.note = r.note;
  return s;
}

// ---- (a) zelq through the header layer ----

void ZelqChild(int fd, const std::string& path, bool isMip, double limit) {
  ChildReport r;
  try {
    Zelq::EnvrConfig config;
    config.Set("Banner", "0");
    config.Set("Logging", "0");
    Zelq::Envr env(config);
    Zelq::Model model = env.CreateModel("compare");
    model.SetIntParam("Logging", 0);
    model.SetDblParam("TimeLimit", limit);
    if (!isMip) {
      // A two-column LP through the same solve path first: the timed solve then does not
      // pay for loading the solver's code into memory (the direct run's reading does).
      Zelq::Model warm = env.CreateModel("warm");
      warm.SetIntParam("Logging", 0);
      Zelq::Var x = warm.AddVar(0, Zelq::kInfinity, 1, Zelq::kContinuous);
      Zelq::Var y = warm.AddVar(0, Zelq::kInfinity, 2, Zelq::kContinuous);
      warm.AddConstr(x + y >= 1);
      warm.Solve();
    }
    auto t = Clock::now();
    model.Read(path.c_str());
    r.readSec = Since(t);
    t = Clock::now();
    const double cpu = CpuNow();
    model.Solve();
    r.solveCpu = CpuNow() - cpu;
    r.solveSec = Since(t);
    const int status = model.GetIntAttr("Status");
    r.iterations = model.GetIntAttr("SimplexIter");
    if (isMip) r.nodes = model.GetIntAttr("NodeCnt");
    r.hasObj = model.GetIntAttr("HasSol") != 0;
    if (r.hasObj) r.obj = model.GetDblAttr("ObjVal");
    if (status == ZELQ_OPTIMAL)
      r.outcome = static_cast<int>(Outcome::kOptimal);
    else if (status == ZELQ_TIMEOUT)
      r.outcome = static_cast<int>(Outcome::kTimeLimit);
    else
      r.outcome = static_cast<int>(Outcome::kNoSolution);
    if (status != ZELQ_OPTIMAL) SetNote(&r, "status " + std::to_string(status));
  } catch (const Zelq::Exception& e) {
    r.outcome = static_cast<int>(Outcome::kFailed);
    SetNote(&r, e.what());
  }
  WriteReport(fd, r);
}

// ---- (b) Clp / Cbc called directly ----

// The engine's LP options: FeasTol and DualTol 1e-6, dual simplex after presolve.
void ClpSolveAsEngine(ClpSimplex* model, double limit) {
  model->setPrimalTolerance(1e-6);
  model->setDualTolerance(1e-6);
  if (limit < 1e30) model->setMaximumWallSeconds(limit);
  ClpSolve opts;
  opts.setSolveType(ClpSolve::useDual);
  opts.setPresolveType(ClpSolve::presolveOn);
  model->initialSolve(opts);
}

void ClpChild(const std::string& path, double limit, ChildReport* r) {
  {
    // The same two-column warm-up LP as the zelq run solves first.
    ClpSimplex warm;
    warm.setLogLevel(0);
    const int beg[] = {0, 1, 2}, idx[] = {0, 0};
    const double val[] = {1, 1}, lo[] = {0, 0}, up[] = {COIN_DBL_MAX, COIN_DBL_MAX}, obj[] = {1, 2};
    const double rlo[] = {1}, rup[] = {COIN_DBL_MAX};
    warm.loadProblem(2, 1, beg, idx, val, lo, up, obj, rlo, rup);
    ClpSolveAsEngine(&warm, limit);
  }
  ClpSimplex model;
  model.setLogLevel(0);
  model.messageHandler()->setLogLevel(0);
  auto t = Clock::now();
  if (model.readMps(path.c_str(), true, false) != 0) {
    SetNote(r, "Clp cannot read " + path);
    return;
  }
  r->readSec = Since(t);
  t = Clock::now();
  const double cpu = CpuNow();
  ClpSolveAsEngine(&model, limit);
  r->solveCpu = CpuNow() - cpu;
  r->solveSec = Since(t);
  r->iterations = model.numberIterations();
  r->hasObj = model.status() == 0;
  r->obj = model.objectiveValue();
  if (model.status() == 0)
    r->outcome = static_cast<int>(Outcome::kOptimal);
  else if (model.status() == 3)
    r->outcome = static_cast<int>(Outcome::kTimeLimit);
  else
    r->outcome = static_cast<int>(Outcome::kNoSolution);
  if (model.status() != 0) SetNote(r, "Clp status " + std::to_string(model.status()));
}

int NoCallback(CbcModel*, int) { return 0; }

void CbcChild(const std::string& path, double limit, ChildReport* r) {
  OsiClpSolverInterface solver;
  solver.messageHandler()->setLogLevel(0);
  auto t = Clock::now();
  if (solver.readMps(path.c_str(), "") != 0) {
    SetNote(r, "Cbc cannot read " + path);
    return;
  }
  r->readSec = Since(t);
  t = Clock::now();
  const double cpu = CpuNow();
  CbcModel model(solver);
  CbcSolverUsefulData data;
  data.noPrinting_ = true;
  CbcMain0(model, data);
  model.setUseElapsedTime(true);
  // The arguments the engine passes with its default parameters and a time limit.
  char sec[64];
  std::snprintf(sec, sizeof sec, "%.17g", limit);
  std::vector<const char*> argv = {"bench", "-log", "0", "-slog", "0"};
  if (limit < 1e30) argv.insert(argv.end(), {"-sec", sec, "-timeMode", "elapsed"});
  argv.insert(argv.end(), {"-ratioGap", "0.0001", "-allowableGap", "9.9999999999999995e-07",
                           "-maxSavedSolutions", "10", "-solve", "-quit"});
  CbcMain1(static_cast<int>(argv.size()), argv.data(), model, NoCallback, data);
  r->solveCpu = CpuNow() - cpu;
  r->solveSec = Since(t);
  r->iterations = model.getIterationCount();
  r->nodes = model.getNodeCount();
  r->hasObj = model.bestSolution() != nullptr;
  if (r->hasObj) r->obj = model.getObjValue();
  if (model.isProvenOptimal() && r->hasObj)
    r->outcome = static_cast<int>(Outcome::kOptimal);
  else if (model.secondaryStatus() == 4)
    r->outcome = static_cast<int>(Outcome::kTimeLimit);
  else
    r->outcome = static_cast<int>(Outcome::kNoSolution);
  if (r->outcome != static_cast<int>(Outcome::kOptimal))
    SetNote(r, "Cbc status " + std::to_string(model.status()) + "/" +
                   std::to_string(model.secondaryStatus()));
}

// ---- the export for (c) ----

void ExportChild(int fd, const std::string& path, const std::string& out) {
  ChildReport r;
  ZELQenvconfig* cfg = nullptr;
  ZELQenv* env = nullptr;
  ZELQprob* prob = nullptr;
  ZELQ_CreateEnvConfig(&cfg);
  ZELQ_SetEnvConfig(cfg, "Banner", "0");
  ZELQ_SetEnvConfig(cfg, "Logging", "0");
  int code = ZELQ_CreateEnvWithConfig(cfg, &env);
  ZELQ_DeleteEnvConfig(&cfg);
  if (code == 0) code = ZELQ_CreateProb(env, &prob);
  if (code != 0) {
    SetNote(&r, "cannot create the engine environment (code " + std::to_string(code) + ")");
  } else if ((code = ZELQ_ReadMps(prob, path.c_str())) != 0) {
    char msg[256] = "";
    ZELQ_GetLastError(prob, msg, sizeof msg);
    SetNote(&r, std::string("reading failed: ") + msg);
  } else {
    ExportedProblem p;
    std::string error;
    if (ExportFromEngine(prob, &p, &error) && WriteExport(p, out, &error)) {
      r.outcome = static_cast<int>(Outcome::kOptimal);  // here: "done"
      r.rows = p.rows;
      r.cols = p.cols;
      r.nnz = p.nnz();
      r.isMip = p.isMip();
    } else {
      SetNote(&r, error);
    }
  }
  if (prob != nullptr) ZELQ_DeleteProb(&prob);
  if (env != nullptr) ZELQ_DeleteEnv(&env);
  WriteReport(fd, r);
}

// Parses the HiGHS child's line "<status> <objective|nan> <seconds> <cpu seconds>[ note]".
SolverResult ParseHighs(const ChildRun& run, double deadline) {
  SolverResult s;
  s.peakMb = run.peakMb;
  s.runs = 1;
  if (run.killed || run.signal != 0) {
    ChildReport r = Collect(run, deadline);
    s.outcome = static_cast<Outcome>(r.outcome);
    s.note = r.note;
    return s;
  }
  char status[32] = "", obj[64] = "";
  double sec = 0.0, cpu = 0.0;
  int used = 0;
  if (std::sscanf(run.output.c_str(), "%31s %63s %lf %lf %n", status, obj, &sec, &cpu, &used) < 4) {
    s.outcome = Outcome::kCrashed;
    s.note = "no result from the HiGHS child (exit code " + std::to_string(run.exitCode) + ")";
    return s;
  }
  s.solveSec = sec;
  s.cpuSec = cpu;
  char* end = nullptr;
  s.obj = std::strtod(obj, &end);
  s.hasObj = end != obj && std::isfinite(s.obj);
  const std::string st = status;
  s.outcome = st == "optimal" ? Outcome::kOptimal
              : st == "time"  ? Outcome::kTimeLimit
              : st == "error" ? Outcome::kFailed
                              : Outcome::kNoSolution;
  if (s.outcome != Outcome::kOptimal) {
    s.note = st;
    std::string rest = run.output.substr(static_cast<size_t>(used));
    while (!rest.empty() && (rest.back() == '\n' || rest.back() == ' ')) rest.pop_back();
    if (!rest.empty()) s.note += ": " + rest;
  }
  return s;
}

}  // namespace

bool ExportInChild(const std::string& path, const std::string& out, InstanceInfo* info,
                   std::string* error) {
  ChildRun run = Spawn([&](int fd) { ExportChild(fd, path, out); }, nullptr, 600.0);
  ChildReport r = Collect(run, 600.0);
  if (r.outcome != static_cast<int>(Outcome::kOptimal)) {
    *error = r.note;
    return false;
  }
  info->rows = r.rows;
  info->cols = r.cols;
  info->nnz = r.nnz;
  info->isMip = r.isMip != 0;
  return true;
}

SolverResult RunZelqOnce(const std::string& path, bool isMip, double limit) {
  const double deadline = Deadline(limit);
  ChildRun run = Spawn([&](int fd) { ZelqChild(fd, path, isMip, limit); }, nullptr, deadline);
  return FromReport(Collect(run, deadline), run.peakMb);
}

SolverResult RunDirectOnce(const std::string& path, bool isMip, double limit) {
  const double deadline = Deadline(limit);
  ChildRun run = Spawn(
      [&](int fd) {
        ChildReport r;
        isMip ? CbcChild(path, limit, &r) : ClpChild(path, limit, &r);
        WriteReport(fd, r);
      },
      nullptr, deadline);
  return FromReport(Collect(run, deadline), run.peakMb);
}

SolverResult RunHighsOnce(const HighsSetup& setup, const std::string& exported, bool isMip,
                          double limit) {
  const double deadline = Deadline(limit);
  char lim[64];
  std::snprintf(lim, sizeof lim, "%.17g", limit);
  const std::vector<std::string> argv = {setup.python, setup.script, exported, lim,
                                         isMip ? "mip" : "lp"};
  ChildRun run = Spawn([](int) {}, &argv, deadline);
  return ParseHighs(run, deadline);
}

}  // namespace zelqbench
