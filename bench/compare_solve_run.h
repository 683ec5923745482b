// Child-process runs of the three solvers of the solving comparison (compare_solve_run.cc).
#pragma once

#include <cstdint>
#include <string>

#include "compare_solve.h"

namespace zelqbench {

struct InstanceInfo {
  int64_t rows = 0, cols = 0, nnz = 0;
  bool isMip = false;
};

struct HighsSetup {
  std::string python;  // interpreter with numpy and scipy
  std::string script;  // bench/highs_solve.py
};

// Reads `path` with the engine (ZELQ_ReadMps) in a child and writes the exported problem to
// `out`; the sizes and the problem class come back in *info.
bool ExportInChild(const std::string& path, const std::string& out, InstanceInfo* info,
                   std::string* error);

// One run of each solver in a child process, with the time limit `limit` in seconds. For an
// LP each child first solves a two-column LP through the same path (not timed), so that the
// times compare solves, not the first loading of each solver's code.
SolverResult RunZelqOnce(const std::string& path, bool isMip, double limit);
SolverResult RunDirectOnce(const std::string& path, bool isMip, double limit);
SolverResult RunHighsOnce(const HighsSetup& setup, const std::string& exported, bool isMip,
                          double limit);

}  // namespace zelqbench
