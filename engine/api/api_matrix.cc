// Reading and changing matrix coefficients.
#include <cmath>
#include <functional>
#include <span>

#include "api/checks.h"

using namespace zelq::engine;

namespace {

// Writes the listed groups of a compressed matrix (CSR rows, or CSC columns of the transposed
// copy) into the caller's buffers, following the size-query convention.
struct Source {
  std::function<std::span<const int>(int)> idx;
  std::function<std::span<const double>(int)> val;
};

int FetchGroups(ZELQprob* prob, int num, const int* list, const Source& src, int* beg, int* cnt,
                int* outIdx, double* outVal, int nElemSize, int* pReqSize) {
  int64_t total = 0;
  for (int k = 0; k < num; ++k) total += static_cast<int64_t>(src.idx(ListAt(list, k)).size());
  if (total > INT32_MAX)
    return Fail(prob, ZELQ_RETCODE_INVALID, "%lld entries do not fit an int count",
                static_cast<long long>(total));
  if (pReqSize) *pReqSize = static_cast<int>(total);
  const bool wantEntries = outIdx != nullptr || outVal != nullptr;
  if (num > 0 && !wantEntries && beg == nullptr && cnt == nullptr && pReqSize == nullptr)
    return Fail(prob, ZELQ_RETCODE_INVALID, "every output pointer is null");
  if (wantEntries && nElemSize < total)
    return Fail(prob, ZELQ_RETCODE_INVALID,
                "element buffers hold %d entries but %lld are needed (pass null buffers and "
                "pReqSize to query the size)", nElemSize, static_cast<long long>(total));
  int at = 0;
  for (int k = 0; k < num; ++k) {
    const int e = ListAt(list, k);
    auto ii = src.idx(e);
    auto vv = src.val(e);
    if (beg) beg[k] = at;
    if (cnt) cnt[k] = static_cast<int>(ii.size());
    for (size_t q = 0; q < ii.size(); ++q, ++at) {
      if (outIdx) outIdx[at] = ii[q];
      if (outVal) outVal[at] = vv[q];
    }
  }
  return ZELQ_RETCODE_OK;
}

int CheckElemValue(ZELQprob* prob, double v, const char* what) {
  if (!std::isfinite(v) || std::fabs(v) >= kInf)
    return Fail(prob, ZELQ_RETCODE_INVALID, "%s %g is not a finite value below 1e30", what, v);
  return ZELQ_RETCODE_OK;
}

}  // namespace

int ZELQ_GetCols(ZELQprob* prob, int num, const int* list, int* colMatBeg, int* colMatCnt,
                 int* colMatIdx, double* colMatElem, int nElemSize, int* pReqSize) {
  return Guard(prob, __func__, [&]() -> int {
    const Problem& p = prob->problem;
    if (int rc = CheckGetList(prob, num, list, p.cols(), "columns")) return rc;
    std::vector<int> beg, idx;
    std::vector<double> val;
    p.ColumnMatrix(beg, idx, val);
    Source src{[&](int c) { return std::span<const int>(idx.data() + beg[c], beg[c + 1] - beg[c]); },
               [&](int c) {
                 return std::span<const double>(val.data() + beg[c], beg[c + 1] - beg[c]);
               }};
    return FetchGroups(prob, num, list, src, colMatBeg, colMatCnt, colMatIdx, colMatElem,
                       nElemSize, pReqSize);
  });
}

int ZELQ_GetRows(ZELQprob* prob, int num, const int* list, int* rowMatBeg, int* rowMatCnt,
                 int* rowMatIdx, double* rowMatElem, int nElemSize, int* pReqSize) {
  return Guard(prob, __func__, [&]() -> int {
    const Problem& p = prob->problem;
    if (int rc = CheckGetList(prob, num, list, p.rows(), "rows")) return rc;
    Source src{[&](int r) { return p.matrix.RowIdx(r); },
               [&](int r) { return p.matrix.RowVal(r); }};
    return FetchGroups(prob, num, list, src, rowMatBeg, rowMatCnt, rowMatIdx, rowMatElem,
                       nElemSize, pReqSize);
  });
}

int ZELQ_GetElem(ZELQprob* prob, int iCol, int iRow, double* p_elem) {
  return Guard(prob, __func__, [&]() -> int {
    const Problem& p = prob->problem;
    if (int rc = CheckIndex(prob, iCol, p.cols(), "column")) return rc;
    if (int rc = CheckIndex(prob, iRow, p.rows(), "row")) return rc;
    if (p_elem == nullptr) return Fail(prob, ZELQ_RETCODE_INVALID, "p_elem is null");
    *p_elem = p.matrix.Get(iRow, iCol);
    return ZELQ_RETCODE_OK;
  });
}

int ZELQ_SetElem(ZELQprob* prob, int iCol, int iRow, double newElem) {
  return Guard(prob, __func__, [&]() -> int {
    Problem& p = prob->problem;
    if (int rc = CheckIndex(prob, iCol, p.cols(), "column")) return rc;
    if (int rc = CheckIndex(prob, iRow, p.rows(), "row")) return rc;
    if (int rc = CheckElemValue(prob, newElem, "coefficient")) return rc;
    p.matrix.Set(iRow, iCol, newElem);
    InvalidateSolution(prob);
    return ZELQ_RETCODE_OK;
  });
}

int ZELQ_SetElems(ZELQprob* prob, int num, const int* cols, const int* rows,
                  const double* elems) {
  return Guard(prob, __func__, [&]() -> int {
    Problem& p = prob->problem;
    if (int rc = CheckList(prob, num, cols, p.cols(), "columns")) return rc;
    if (int rc = CheckList(prob, num, rows, p.rows(), "rows")) return rc;
    if (int rc = CheckPtr(prob, num, elems, "elems")) return rc;
    if (int rc = CheckFinite(prob, num, elems, "elems")) return rc;
    if (num == 0) return ZELQ_RETCODE_OK;
    for (int k = 0; k < num; ++k) p.matrix.Set(rows[k], cols[k], elems[k]);  // last one wins
    InvalidateSolution(prob);
    return ZELQ_RETCODE_OK;
  });
}
