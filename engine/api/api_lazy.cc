// Lazy constraints and user cuts: rows kept apart from the model rows. The solver hands them to
// Cbc/Clp with the model rows (lazy constraints are real constraints; user cuts are valid
// inequalities, so they never cut off an optimum).
#include "api/checks.h"

using namespace zelq::engine;

namespace {

int AddOne(ZELQprob* prob, ExtraRows& target, int n, const int* idx, const double* val,
           char sense, double bound, double upper, const char* name) {
  thread_local DupMarker marks;
  if (int rc = CheckSparse(prob, marks, n, idx, val, prob->problem.cols(), "row")) return rc;
  double lo = 0, up = 0;
  if (int rc = RowBoundsOne(prob, sense, bound, upper, &lo, &up)) return rc;
  target.Add(n, idx, val, lo, up, name);
  InvalidateSolution(prob);
  return ZELQ_RETCODE_OK;
}

int AddMany(ZELQprob* prob, ExtraRows& target, int nRow, const int* beg, const int* cnt,
            const int* idx, const double* val, const char* sense, const double* bound,
            const double* upper, const char* const* names) {
  if (int rc = CheckGrowth(prob, target.count(), nRow, "rows")) return rc;
  if (nRow == 0) return ZELQ_RETCODE_OK;
  Groups g;
  if (int rc = CheckGroups(prob, nRow, beg, cnt, idx, val, prob->problem.cols(), "row", &g))
    return rc;
  std::vector<double> lo, up;
  if (int rc = RowBoundsFromArrays(prob, nRow, sense, bound, upper, &lo, &up)) return rc;
  for (int k = 0; k < nRow; ++k) {
    const int64_t b = g.off[k];
    target.Add(g.len[k], g.len[k] ? idx + b : nullptr, g.len[k] ? val + b : nullptr, lo[k],
               up[k], names ? names[k] : nullptr);
  }
  InvalidateSolution(prob);
  return ZELQ_RETCODE_OK;
}

}  // namespace

int ZELQ_AddLazyConstr(ZELQprob* prob, int nRowMatCnt, const int* rowMatIdx,
                       const double* rowMatElem, char cRowSense, double dRowBound,
                       double dRowUpper, const char* rowName) {
  return Guard(prob, __func__, [&]() -> int {
    return AddOne(prob, prob->problem.lazy, nRowMatCnt, rowMatIdx, rowMatElem, cRowSense,
                  dRowBound, dRowUpper, rowName);
  });
}

int ZELQ_AddLazyConstrs(ZELQprob* prob, int nRow, const int* rowMatBeg, const int* rowMatCnt,
                        const int* rowMatIdx, const double* rowMatElem, const char* rowSense,
                        const double* rowBound, const double* rowUpper,
                        char const* const* rowNames) {
  return Guard(prob, __func__, [&]() -> int {
    return AddMany(prob, prob->problem.lazy, nRow, rowMatBeg, rowMatCnt, rowMatIdx, rowMatElem,
                   rowSense, rowBound, rowUpper, rowNames);
  });
}

int ZELQ_AddUserCut(ZELQprob* prob, int nRowMatCnt, const int* rowMatIdx,
                    const double* rowMatElem, char cRowSense, double dRowBound, double dRowUpper,
                    const char* rowName) {
  return Guard(prob, __func__, [&]() -> int {
    return AddOne(prob, prob->problem.cuts, nRowMatCnt, rowMatIdx, rowMatElem, cRowSense,
                  dRowBound, dRowUpper, rowName);
  });
}

int ZELQ_AddUserCuts(ZELQprob* prob, int nRow, const int* rowMatBeg, const int* rowMatCnt,
                     const int* rowMatIdx, const double* rowMatElem, const char* rowSense,
                     const double* rowBound, const double* rowUpper,
                     char const* const* rowNames) {
  return Guard(prob, __func__, [&]() -> int {
    return AddMany(prob, prob->problem.cuts, nRow, rowMatBeg, rowMatCnt, rowMatIdx, rowMatElem,
                   rowSense, rowBound, rowUpper, rowNames);
  });
}
