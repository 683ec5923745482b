// Adding and deleting columns and rows. Every function checks all of its arguments before it
// changes anything, so a failed call leaves the problem as it was.
#include <algorithm>

#include "api/checks.h"

using namespace zelq::engine;

namespace {

template <class T>
void EraseFlagged(std::vector<T>& v, const std::vector<char>& drop) {
  size_t out = 0;
  for (size_t i = 0; i < v.size(); ++i)
    if (!drop[i]) v[out++] = std::move(v[i]);
  v.resize(out);
}

// Appends checked columns; `g` holds the offsets of each column's entries.
void CommitCols(ZELQprob* prob, int nCol, const double* obj, const Groups& g, const int* idx,
                const double* val, const char* type, const double* lower, const double* upper,
                const char* const* names) {
  Problem& p = prob->problem;
  const int first = p.cols();
  for (int k = 0; k < nCol; ++k) {
    p.obj.push_back(obj ? obj[k] : 0.0);
    p.colType.push_back(type ? type[k] : 'C');
    p.colLower.push_back(lower ? NormInf(lower[k]) : 0.0);
    p.colUpper.push_back(upper ? NormInf(upper[k]) : kInf);
    p.branchFactor.push_back(0.0);
    if (names) p.colNames.Add(names[k]);
  }
  if (!names) p.colNames.AddUnnamed(nCol);
  if (g.total > 0) {
    std::vector<int> extra(p.rows(), 0);
    for (int k = 0; k < nCol; ++k)
      for (int e = 0; e < g.len[k]; ++e) extra[idx[g.off[k] + e]] += val[g.off[k] + e] != 0.0;
    for (int r = 0; r < p.rows(); ++r)
      if (extra[r] > 0) p.matrix.Reserve(r, extra[r]);
    for (int k = 0; k < nCol; ++k)
      for (int e = 0; e < g.len[k]; ++e) {
        const double v = val[g.off[k] + e];
        if (v != 0.0) p.matrix.Append(idx[g.off[k] + e], first + k, v);
      }
  }
  if (!prob->startColBasis.empty())
    prob->startColBasis.insert(prob->startColBasis.end(), nCol, ZELQ_BASIS_LOWER);
  InvalidateSolution(prob);
}

int AddColsImpl(ZELQprob* prob, int nCol, const double* obj, const int* beg, const int* cnt,
                const int* idx, const double* val, const char* type, const double* lower,
                const double* upper, const char* const* names) {
  if (int rc = CheckGrowth(prob, prob->problem.cols(), nCol, "columns")) return rc;
  if (nCol == 0) return ZELQ_RETCODE_OK;
  Groups g;
  if (int rc = CheckGroups(prob, nCol, beg, cnt, idx, val, prob->problem.rows(), "column", &g))
    return rc;
  if (int rc = CheckFinite(prob, nCol, obj, "colObj")) return rc;
  if (int rc = CheckColTypes(prob, nCol, type)) return rc;
  if (int rc = CheckLower(prob, nCol, lower, "colLower")) return rc;
  if (int rc = CheckUpper(prob, nCol, upper, "colUpper")) return rc;
  CommitCols(prob, nCol, obj, g, idx, val, type, lower, upper, names);
  return ZELQ_RETCODE_OK;
}

void CommitRow(ZELQprob* prob, int n, const int* idx, const double* val, double lo, double up,
               const char* name) {
  Problem& p = prob->problem;
  p.matrix.AddRow(n, idx, val);
  p.rowLower.push_back(lo);
  p.rowUpper.push_back(up);
  p.rowNames.Add(name);
  if (!prob->startRowBasis.empty()) prob->startRowBasis.push_back(ZELQ_BASIS_BASIC);
}

// Marks the listed elements for deletion.
int DropFlags(ZELQprob* prob, int num, const int* list, int count, const char* what,
              std::vector<char>* drop) {
  if (int rc = CheckList(prob, num, list, count, what)) return rc;
  drop->assign(count, 0);
  for (int k = 0; k < num; ++k) (*drop)[list[k]] = 1;
  return ZELQ_RETCODE_OK;
}

void RenumberMipStarts(ZELQprob* prob, const std::vector<int>& newIndex) {
  for (MipStart& s : prob->mipStarts) {
    size_t out = 0;
    for (const auto& [c, v] : s)
      if (newIndex[c] >= 0) s[out++] = {newIndex[c], v};
    s.resize(out);
  }
}

}  // namespace

int ZELQ_AddCol(ZELQprob* prob, double dColObj, int nColMatCnt, const int* colMatIdx,
                const double* colMatElem, char cColType, double dColLower, double dColUpper,
                const char* colName) {
  return Guard(prob, __func__, [&]() -> int {
    if (nColMatCnt < 0)
      return Fail(prob, ZELQ_RETCODE_INVALID, "entry count %d is negative", nColMatCnt);
    const int beg = 0;
    return AddColsImpl(prob, 1, &dColObj, &beg, &nColMatCnt, colMatIdx, colMatElem, &cColType,
                       &dColLower, &dColUpper, &colName);
  });
}

int ZELQ_AddCols(ZELQprob* prob, int nCol, const double* colObj, const int* colMatBeg,
                 const int* colMatCnt, const int* colMatIdx, const double* colMatElem,
                 const char* colType, const double* colLower, const double* colUpper,
                 char const* const* colNames) {
  return Guard(prob, __func__, [&]() -> int {
    return AddColsImpl(prob, nCol, colObj, colMatBeg, colMatCnt, colMatIdx, colMatElem, colType,
                       colLower, colUpper, colNames);
  });
}

int ZELQ_AddRow(ZELQprob* prob, int nRowMatCnt, const int* rowMatIdx, const double* rowMatElem,
                char cRowSense, double dRowBound, double dRowUpper, const char* rowName) {
  return Guard(prob, __func__, [&]() -> int {
    // One marker per thread: checking a row costs O(entries), not O(columns).
    thread_local DupMarker marks;
    if (int rc = CheckSparse(prob, marks, nRowMatCnt, rowMatIdx, rowMatElem,
                             prob->problem.cols(), "row"))
      return rc;
    double lo = 0, up = 0;
    if (int rc = RowBoundsOne(prob, cRowSense, dRowBound, dRowUpper, &lo, &up)) return rc;
    CommitRow(prob, nRowMatCnt, rowMatIdx, rowMatElem, lo, up, rowName);
    InvalidateSolution(prob);
    return ZELQ_RETCODE_OK;
  });
}

int ZELQ_AddRows(ZELQprob* prob, int nRow, const int* rowMatBeg, const int* rowMatCnt,
                 const int* rowMatIdx, const double* rowMatElem, const char* rowSense,
                 const double* rowBound, const double* rowUpper, char const* const* rowNames) {
  return Guard(prob, __func__, [&]() -> int {
    if (int rc = CheckGrowth(prob, prob->problem.rows(), nRow, "rows")) return rc;
    if (nRow == 0) return ZELQ_RETCODE_OK;
    Groups g;
    if (int rc = CheckGroups(prob, nRow, rowMatBeg, rowMatCnt, rowMatIdx, rowMatElem,
                             prob->problem.cols(), "row", &g))
      return rc;
    std::vector<double> lo, up;
    if (int rc = RowBoundsFromArrays(prob, nRow, rowSense, rowBound, rowUpper, &lo, &up))
      return rc;
    for (int k = 0; k < nRow; ++k) {
      const int64_t b = g.off[k];
      CommitRow(prob, g.len[k], g.len[k] ? rowMatIdx + b : nullptr,
                g.len[k] ? rowMatElem + b : nullptr, lo[k], up[k],
                rowNames ? rowNames[k] : nullptr);
    }
    InvalidateSolution(prob);
    return ZELQ_RETCODE_OK;
  });
}

int ZELQ_DelCols(ZELQprob* prob, int num, const int* list) {
  return Guard(prob, __func__, [&]() -> int {
    Problem& p = prob->problem;
    std::vector<char> drop;
    if (int rc = DropFlags(prob, num, list, p.cols(), "columns", &drop)) return rc;
    if (num == 0) return ZELQ_RETCODE_OK;
    std::vector<int> newIndex(p.cols(), -1);
    int next = 0;
    for (int c = 0; c < p.cols(); ++c)
      if (!drop[c]) newIndex[c] = next++;
    p.matrix.RenumberCols(newIndex);
    p.lazy.RenumberCols(newIndex);
    p.cuts.RenumberCols(newIndex);
    RenumberMipStarts(prob, newIndex);
    EraseFlagged(p.obj, drop);
    EraseFlagged(p.colLower, drop);
    EraseFlagged(p.colUpper, drop);
    EraseFlagged(p.branchFactor, drop);
    EraseFlagged(p.colType, drop);
    p.colNames.Delete(drop);
    if (!prob->startColBasis.empty()) EraseFlagged(prob->startColBasis, drop);
    InvalidateSolution(prob);
    return ZELQ_RETCODE_OK;
  });
}

int ZELQ_DelRows(ZELQprob* prob, int num, const int* list) {
  return Guard(prob, __func__, [&]() -> int {
    Problem& p = prob->problem;
    std::vector<char> drop;
    if (int rc = DropFlags(prob, num, list, p.rows(), "rows", &drop)) return rc;
    if (num == 0) return ZELQ_RETCODE_OK;
    p.matrix.DeleteRows(drop);
    EraseFlagged(p.rowLower, drop);
    EraseFlagged(p.rowUpper, drop);
    p.rowNames.Delete(drop);
    if (!prob->startRowBasis.empty()) EraseFlagged(prob->startRowBasis, drop);
    InvalidateSolution(prob);
    return ZELQ_RETCODE_OK;
  });
}
