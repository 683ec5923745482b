// Entry points for solving, solutions, the solution pool, MIP starts and basis operations.
#include <cmath>
#include <string>

#include "api/checks.h"
#include "api/guard.h"
#include "solve/solver.h"

using namespace zelq::engine;

namespace {

// Marks the problem busy for the duration of a solve.
class SolvingFlag {
 public:
  explicit SolvingFlag(ZELQprob* prob) : prob_(prob) { prob_->solving = true; }
  ~SolvingFlag() { prob_->solving = false; }
  SolvingFlag(const SolvingFlag&) = delete;
  SolvingFlag& operator=(const SolvingFlag&) = delete;

 private:
  ZELQprob* prob_;
};

int NeedPtr(ZELQprob* prob, const void* p, const char* what) {
  if (p == nullptr) return Fail(prob, ZELQ_RETCODE_INVALID, "%s must not be null", what);
  return ZELQ_RETCODE_OK;
}

int CheckBasisCodes(ZELQprob* prob, int n, const int* codes, const char* what) {
  for (int i = 0; i < n; ++i)
    if (codes[i] < ZELQ_BASIS_LOWER || codes[i] > ZELQ_BASIS_FIXED)
      return Fail(prob, ZELQ_RETCODE_INVALID, "%s[%d] = %d is not a basis status (valid range [0, 4])",
                  what, i, codes[i]);
  return ZELQ_RETCODE_OK;
}

// Clp stops the whole process (an assertion) on objective coefficients of 1e25 and more in
// magnitude, and Cbc's preprocessing (CglProbing) on finite bounds near the infinity of 1e30
// (seen from 1e28 on, for a column fixed by its bounds or by a row). So a solve refuses such
// coefficients, and a MIP solve such bounds, before the solver sees them.
constexpr double kSolverMaxObj = 1e25;
constexpr double kMipMaxBound = 1e25;

// The first finite bound in lower/upper of magnitude kMipMaxBound or more; -1 when none.
int HugeBound(const std::vector<double>& lower, const std::vector<double>& upper) {
  auto huge = [](double v) { return std::fabs(v) >= kMipMaxBound && std::fabs(v) < kInf; };
  for (size_t k = 0; k < lower.size(); ++k)
    if (huge(lower[k]) || huge(upper[k])) return static_cast<int>(k);
  return -1;
}

int CheckSolvable(ZELQprob* prob, bool mip) {
  const Problem& p = prob->problem;
  for (int j = 0; j < p.cols(); ++j)
    if (std::fabs(p.obj[j]) >= kSolverMaxObj)
      return Fail(prob, ZELQ_RETCODE_INVALID,
                  "objective coefficient %g of column %d is too large to solve (the solver takes "
                  "magnitudes below 1e25)",
                  p.obj[j], j);
  if (!mip) return ZELQ_RETCODE_OK;
  int k = HugeBound(p.colLower, p.colUpper);
  const bool cols = k >= 0;
  if (!cols) k = HugeBound(p.rowLower, p.rowUpper);
  if (k >= 0) {
    const double lo = cols ? p.colLower[k] : p.rowLower[k];
    const double up = cols ? p.colUpper[k] : p.rowUpper[k];
    return Fail(prob, ZELQ_RETCODE_INVALID,
                "bounds [%g, %g] of %s %d are too large for a MIP solve (the MIP solver takes "
                "finite bounds below 1e25 in magnitude; 1e30 means no bound)",
                lo, up, cols ? "column" : "row", k);
  }
  return ZELQ_RETCODE_OK;
}

int CheckPoolIndex(ZELQprob* prob, int iSol) {
  const int n = static_cast<int>(prob->solution.pool.size());
  if (n == 0) return Fail(prob, ZELQ_RETCODE_INVALID, "no solution available in the pool");
  if (iSol < 0 || iSol >= n)
    return Fail(prob, ZELQ_RETCODE_INVALID, "pool index %d is out of range [0, %d)", iSol, n);
  return ZELQ_RETCODE_OK;
}

// Arguments shared by FSolve and BSolve.
int CheckSolveArgs(ZELQprob* prob, const double* b, const double* out, const int* len) {
  if (int rc = NeedPtr(prob, b, "b")) return rc;
  if (int rc = NeedPtr(prob, out, "result buffer")) return rc;
  if (int rc = NeedPtr(prob, len, "p_len")) return rc;
  const int m = prob->problem.rows();
  if (*len < m)
    return Fail(prob, ZELQ_RETCODE_INVALID, "buffer length %d is smaller than the row count %d",
                *len, m);
  return CheckFinite(prob, m, b, "b");
}

}  // namespace

extern "C" {

int ZELQ_Solve(ZELQprob* prob) {
  return Guard(prob, __func__, [&]() -> int {
    const bool mip = prob->problem.IsMip();
    if (int rc = CheckSolvable(prob, mip)) return rc;
    SolvingFlag busy(prob);
    return mip ? SolveMip(prob) : SolveLp(prob);
  });
}

int ZELQ_SolveLp(ZELQprob* prob) {
  return Guard(prob, __func__, [&]() -> int {
    if (int rc = CheckSolvable(prob, false)) return rc;
    SolvingFlag busy(prob);
    return SolveLp(prob);
  });
}

// Not through Guard: it may run on another thread while a solve writes the problem, so it
// touches nothing but the atomic flag.
int ZELQ_Interrupt(ZELQprob* prob) {
  return GuardNoProb(__func__, [&]() -> int {
    if (!ValidProb(prob)) return ZELQ_RETCODE_INVALID;
    prob->interrupt = true;
    return ZELQ_RETCODE_OK;
  });
}

int ZELQ_AddMipStart(ZELQprob* prob, int num, const int* list, const double* colVal) {
  return Guard(prob, __func__, [&]() -> int {
    const int n = prob->problem.cols();
    if (num < 1 || num > n)
      return Fail(prob, ZELQ_RETCODE_INVALID, "num = %d is out of range [1, %d]", num, n);
    if (int rc = CheckList(prob, num, list, n, "list")) return rc;
    if (int rc = NeedPtr(prob, colVal, "colVal")) return rc;
    if (int rc = CheckFinite(prob, num, colVal, "colVal")) return rc;
    DupMarker marks;
    marks.Begin(n);
    for (int k = 0; k < num; ++k)
      if (marks.Seen(list[k]))
        return Fail(prob, ZELQ_RETCODE_INVALID, "column %d appears twice in list", list[k]);
    MipStart start;
    start.reserve(num);
    for (int k = 0; k < num; ++k) start.emplace_back(list[k], colVal[k]);
    prob->mipStarts.push_back(std::move(start));
    return ZELQ_RETCODE_OK;
  });
}

int ZELQ_GetSolution(ZELQprob* prob, double* colVal) {
  return Guard(prob, __func__, [&]() -> int {
    const Solution& s = prob->solution;
    if (!s.HasSol()) return Fail(prob, ZELQ_RETCODE_INVALID, "no solution available");
    if (int rc = NeedPtr(prob, colVal, "colVal")) return rc;
    const std::vector<double>& x = s.hasMipSol ? s.mipX : s.x;
    std::copy(x.begin(), x.end(), colVal);
    return ZELQ_RETCODE_OK;
  });
}

int ZELQ_GetLpSolution(ZELQprob* prob, double* value, double* slack, double* rowDual,
                       double* redCost) {
  return Guard(prob, __func__, [&]() -> int {
    const Solution& s = prob->solution;
    if (!s.hasLpSol) return Fail(prob, ZELQ_RETCODE_INVALID, "no LP solution available");
    if (value) std::copy(s.x.begin(), s.x.end(), value);
    if (slack) std::copy(s.activity.begin(), s.activity.end(), slack);
    if (rowDual) std::copy(s.dual.begin(), s.dual.end(), rowDual);
    if (redCost) std::copy(s.redcost.begin(), s.redcost.end(), redCost);
    return ZELQ_RETCODE_OK;
  });
}

int ZELQ_SetLpSolution(ZELQprob* prob, const double* value, const double* slack,
                       const double* rowDual, const double* redCost) {
  return Guard(prob, __func__, [&]() -> int {
    const Problem& p = prob->problem;
    const int n = p.cols(), m = p.rows();
    if (value == nullptr && slack == nullptr && rowDual == nullptr && redCost == nullptr)
      return Fail(prob, ZELQ_RETCODE_INVALID, "all four arrays are null");
    if (value && CheckFinite(prob, n, value, "value")) return ZELQ_RETCODE_INVALID;
    if (slack && CheckFinite(prob, m, slack, "slack")) return ZELQ_RETCODE_INVALID;
    if (rowDual && CheckFinite(prob, m, rowDual, "rowDual")) return ZELQ_RETCODE_INVALID;
    if (redCost && CheckFinite(prob, n, redCost, "redCost")) return ZELQ_RETCODE_INVALID;
    Solution& s = prob->solution;
    auto take = [](const double* src, int len, std::vector<double>* dst) {
      if (src) dst->assign(src, src + len);
      else dst->assign(len, 0.0);
    };
    take(value, n, &s.x);
    take(slack, m, &s.activity);
    take(rowDual, m, &s.dual);
    take(redCost, n, &s.redcost);
    double obj = p.objConst;
    for (int j = 0; j < n; ++j) obj += p.obj[j] * s.x[j];
    s.objVal = s.lpObjVal = obj;
    s.hasLpSol = true;
    prob->lpCache.reset();  // the factorization belongs to the solver's solution
    return ZELQ_RETCODE_OK;
  });
}

int ZELQ_GetBasis(ZELQprob* prob, int* colBasis, int* rowBasis) {
  return Guard(prob, __func__, [&]() -> int {
    const Solution& s = prob->solution;
    if (!s.hasBasis) return Fail(prob, ZELQ_RETCODE_INVALID, "no basis available: solve the LP first");
    if (colBasis) std::copy(s.colBasis.begin(), s.colBasis.end(), colBasis);
    if (rowBasis) std::copy(s.rowBasis.begin(), s.rowBasis.end(), rowBasis);
    return ZELQ_RETCODE_OK;
  });
}

int ZELQ_SetBasis(ZELQprob* prob, const int* colBasis, const int* rowBasis) {
  return Guard(prob, __func__, [&]() -> int {
    const int n = prob->problem.cols(), m = prob->problem.rows();
    if (int rc = NeedPtr(prob, colBasis, "colBasis")) return rc;
    if (int rc = NeedPtr(prob, rowBasis, "rowBasis")) return rc;
    if (int rc = CheckBasisCodes(prob, n, colBasis, "colBasis")) return rc;
    if (int rc = CheckBasisCodes(prob, m, rowBasis, "rowBasis")) return rc;
    prob->startColBasis.assign(colBasis, colBasis + n);
    prob->startRowBasis.assign(rowBasis, rowBasis + m);
    return ZELQ_RETCODE_OK;
  });
}

int ZELQ_SetSlackBasis(ZELQprob* prob) {
  return Guard(prob, __func__, [&]() -> int {
    prob->startColBasis.assign(prob->problem.cols(), ZELQ_BASIS_LOWER);
    prob->startRowBasis.assign(prob->problem.rows(), ZELQ_BASIS_BASIC);
    return ZELQ_RETCODE_OK;
  });
}

int ZELQ_GetColBasis(ZELQprob* prob, int num, const int* list, int* colBasis) {
  return Guard(prob, __func__, [&]() -> int {
    const Solution& s = prob->solution;
    if (int rc = CheckGetList(prob, num, list, prob->problem.cols(), "list")) return rc;
    if (int rc = CheckPtr(prob, num, colBasis, "colBasis")) return rc;
    if (!s.hasBasis) return Fail(prob, ZELQ_RETCODE_INVALID, "no basis available: solve the LP first");
    for (int k = 0; k < num; ++k) colBasis[k] = s.colBasis[ListAt(list, k)];
    return ZELQ_RETCODE_OK;
  });
}

int ZELQ_GetRowBasis(ZELQprob* prob, int num, const int* list, int* rowBasis) {
  return Guard(prob, __func__, [&]() -> int {
    const Solution& s = prob->solution;
    if (int rc = CheckGetList(prob, num, list, prob->problem.rows(), "list")) return rc;
    if (int rc = CheckPtr(prob, num, rowBasis, "rowBasis")) return rc;
    if (!s.hasBasis) return Fail(prob, ZELQ_RETCODE_INVALID, "no basis available: solve the LP first");
    for (int k = 0; k < num; ++k) rowBasis[k] = s.rowBasis[ListAt(list, k)];
    return ZELQ_RETCODE_OK;
  });
}

int ZELQ_GetPoolObjVal(ZELQprob* prob, int iSol, double* p_objVal) {
  return Guard(prob, __func__, [&]() -> int {
    if (int rc = CheckPoolIndex(prob, iSol)) return rc;
    if (int rc = NeedPtr(prob, p_objVal, "p_objVal")) return rc;
    *p_objVal = prob->solution.pool[iSol].obj;
    return ZELQ_RETCODE_OK;
  });
}

int ZELQ_GetPoolSolution(ZELQprob* prob, int iSol, int num, const int* list, double* colVal) {
  return Guard(prob, __func__, [&]() -> int {
    if (int rc = CheckPoolIndex(prob, iSol)) return rc;
    if (int rc = CheckGetList(prob, num, list, prob->problem.cols(), "list")) return rc;
    if (int rc = CheckPtr(prob, num, colVal, "colVal")) return rc;
    const std::vector<double>& x = prob->solution.pool[iSol].x;
    for (int k = 0; k < num; ++k) colVal[k] = x[ListAt(list, k)];
    return ZELQ_RETCODE_OK;
  });
}

int ZELQ_FSolve(ZELQprob* prob, const double* b, double* x, int* p_len) {
  return Guard(prob, __func__, [&]() -> int {
    if (int rc = CheckSolveArgs(prob, b, x, p_len)) return rc;
    return BasisFSolve(prob, b, x, p_len);
  });
}

int ZELQ_BSolve(ZELQprob* prob, const double* b, double* y, int* p_len) {
  return Guard(prob, __func__, [&]() -> int {
    if (int rc = CheckSolveArgs(prob, b, y, p_len)) return rc;
    return BasisBSolve(prob, b, y, p_len);
  });
}

int ZELQ_GetBasisHead(ZELQprob* prob, int* head) {
  return Guard(prob, __func__, [&]() -> int {
    if (int rc = NeedPtr(prob, head, "head")) return rc;
    return BasisHead(prob, head);
  });
}

int ZELQ_ComputeShadowPriceRange(ZELQprob* prob, int iRow, int side, double* p_low,
                                 double* p_up) {
  return Guard(prob, __func__, [&]() -> int {
    if (int rc = CheckIndex(prob, iRow, prob->problem.rows(), "row")) return rc;
    if (side != 0 && side != 1)
      return Fail(prob, ZELQ_RETCODE_INVALID, "side %d is not 0 (lower bound) or 1 (upper bound)", side);
    if (int rc = NeedPtr(prob, p_low, "p_low")) return rc;
    if (int rc = NeedPtr(prob, p_up, "p_up")) return rc;
    return ShadowPriceRange(prob, iRow, side, p_low, p_up);
  });
}

}  // extern "C"
