// Solve overhead of the engine: ZELQ_Solve on an instance read with ZELQ_ReadMps against the
// same solve made directly with Clp (ClpSimplex::readMps + the same ClpSolve options) or with
// Cbc's driver (CbcMain0/CbcMain1 with the arguments the engine passes). Reports the median
// time of each and the ratio; instances missing from the shared data set are skipped.
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <string>
#include <vector>

#include "CbcModel.hpp"
#include "CbcSolver.hpp"
#include "ClpSimplex.hpp"
#include "ClpSolve.hpp"
#include "OsiClpSolverInterface.hpp"
#include "zelq/zelq.h"

namespace {

using Clock = std::chrono::steady_clock;

double Seconds(Clock::time_point a) {
  return std::chrono::duration<double>(Clock::now() - a).count();
}

double Median(std::vector<double> v) {
  std::sort(v.begin(), v.end());
  return v[v.size() / 2];
}

bool Exists(const std::string& path) {
  std::FILE* f = std::fopen(path.c_str(), "r");
  if (f) std::fclose(f);
  return f != nullptr;
}

// Seconds of ZELQ_Solve (reading excluded); objective in *obj.
double EngineSolve(ZELQenv* env, const std::string& path, double* obj) {
  ZELQprob* prob = nullptr;
  ZELQ_CreateProb(env, &prob);
  ZELQ_SetIntParam(prob, "Logging", 0);
  ZELQ_ReadMps(prob, path.c_str());
  auto t = Clock::now();
  ZELQ_Solve(prob);
  double s = Seconds(t);
  ZELQ_GetDblAttr(prob, "ObjVal", obj);
  ZELQ_DeleteProb(&prob);
  return s;
}

double ClpSolveDirect(const std::string& path, double* obj) {
  ClpSimplex model;
  model.setLogLevel(0);
  model.messageHandler()->setLogLevel(0);
  model.readMps(path.c_str(), true, false);
  auto t = Clock::now();
  model.setPrimalTolerance(1e-6);  // the engine's FeasTol and DualTol
  model.setDualTolerance(1e-6);
  ClpSolve opts;
  opts.setSolveType(ClpSolve::useDual);
  opts.setPresolveType(ClpSolve::presolveOn);
  model.initialSolve(opts);
  double s = Seconds(t);
  *obj = model.objectiveValue();
  return s;
}

double CbcSolveDirect(const std::string& path, double* obj) {
  OsiClpSolverInterface solver;
  solver.messageHandler()->setLogLevel(0);
  solver.readMps(path.c_str(), "");
  auto t = Clock::now();
  CbcModel model(solver);
  CbcSolverUsefulData data;
  data.noPrinting_ = true;
  CbcMain0(model, data);
  // The engine's arguments with default parameters (tolerances reach Cbc only when set).
  const char* argv[] = {"bench", "-log", "0", "-slog", "0", "-ratioGap", "0.0001",
                        "-allowableGap", "1e-06", "-maxSavedSolutions", "10", "-solve", "-quit"};
  CbcMain1(static_cast<int>(sizeof argv / sizeof argv[0]), argv, model,
           [](CbcModel*, int) { return 0; }, data);
  double s = Seconds(t);
  *obj = model.getObjValue();
  return s;
}

}  // namespace

int main(int argc, char** argv) {
  const std::string root = argc > 1 ? argv[1] : ZELQ_SHARED_DATA;
  const int reps = argc > 2 ? std::max(1, std::atoi(argv[2])) : 5;
  struct Instance { const char* file; bool mip; };
  const Instance instances[] = {
      {"netlib/afiro.mps", false},    {"netlib/sc105.mps", false},   {"netlib/scagr25.mps", false},
      {"netlib/sctap1.mps", false},   {"netlib/agg2.mps", false},    {"netlib/scsd1.mps", false},
      {"netlib/greenbea.mps", false}, {"kennington/cre-a.mps", false},
      {"miplib3/p0033.mps", true},    {"miplib3/lseu.mps", true},    {"miplib3/egout.mps", true},
      {"miplib3/gen.mps", true},      {"miplib3/fixnet6.mps", true}};
  ZELQenvconfig* cfg = nullptr;
  ZELQ_CreateEnvConfig(&cfg);
  ZELQ_SetEnvConfig(cfg, "Banner", "0");
  ZELQ_SetEnvConfig(cfg, "Logging", "0");
  ZELQenv* env = nullptr;
  ZELQ_CreateEnvWithConfig(cfg, &env);
  ZELQ_DeleteEnvConfig(&cfg);
  std::printf("%-24s %12s %12s %8s %16s %16s\n", "instance", "engine [ms]", "direct [ms]", "ratio",
              "engine obj", "direct obj");
  double sumEngine = 0, sumDirect = 0;
  for (const Instance& in : instances) {
    const std::string path = root + "/" + in.file;
    if (!Exists(path)) {
      std::printf("%-24s skipped (not found)\n", in.file);
      continue;
    }
    std::vector<double> te, td;
    double oe = 0, od = 0;
    for (int r = 0; r < reps; ++r) {
      te.push_back(EngineSolve(env, path, &oe));
      td.push_back(in.mip ? CbcSolveDirect(path, &od) : ClpSolveDirect(path, &od));
    }
    double me = Median(te), md = Median(td);
    sumEngine += me, sumDirect += md;
    std::printf("%-24s %12.3f %12.3f %8.3f %16.8g %16.8g\n", in.file, 1e3 * me, 1e3 * md, me / md, oe,
                od);
  }
  if (sumDirect > 0)
    std::printf("%-24s %12.3f %12.3f %8.3f\n", "total (medians)", 1e3 * sumEngine, 1e3 * sumDirect,
                sumEngine / sumDirect);
  ZELQ_DeleteEnv(&env);
  return 0;
}
