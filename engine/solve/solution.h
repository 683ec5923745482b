// Results of the last solve of a problem. Cleared whenever the problem's content changes, so a
// result always belongs to the content it was computed for.
#pragma once

#include <vector>

namespace zelq::engine {

struct PoolEntry {
  double obj = 0.0;
  std::vector<double> x;
};

struct Solution {
  int status = 0;     // ZELQ_UNSTARTED ... ZELQ_INTERRUPTED: of the last Solve/SolveLp
  int lpStatus = 0;   // of the last LP solve (or the root relaxation)
  int mipStatus = 0;  // of the last MIP solve

  bool hasLpSol = false;   // x, activity, dual, redcost from an LP solve
  bool hasMipSol = false;  // mipX from a MIP solve
  bool hasBasis = false;   // colBasis, rowBasis
  bool hasDualFarkas = false;
  bool hasPrimalRay = false;

  std::vector<double> x, activity, dual, redcost;  // LP solution, original sense and scale
  std::vector<double> mipX, mipActivity;           // best MIP solution
  std::vector<int> colBasis, rowBasis;             // ZELQ_BASIS_* codes
  std::vector<double> farkas;                      // one entry per row
  std::vector<double> ray;                         // one entry per column
  std::vector<PoolEntry> pool;                     // best first

  double objVal = 1e30;    // objective of the reported solution (LP or best MIP)
  double lpObjVal = 1e30;  // objective of the LP solution
  double bestObj = 1e30;   // best MIP objective found
  double bestBnd = -1e30;  // best MIP bound
  double bestGap = 1e30;   // relative gap |bestObj - bestBnd| / max(1e-10, |bestObj|)
  long simplexIter = 0;
  long barrierIter = 0;
  long nodeCnt = 0;
  double solvingTime = 0.0;
  int lpMethodUsed = 0;

  bool HasSol() const { return hasLpSol || hasMipSol; }
  void Clear() { *this = Solution{}; }
};

}  // namespace zelq::engine
