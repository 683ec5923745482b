// Whole-problem loading: builds a new content from column-wise data, checks everything, then
// swaps it in so a failed load leaves the old problem untouched.
#include <cmath>

#include "api/checks.h"

using namespace zelq::engine;

namespace {

struct LoadArgs {
  int nCol, nRow, objSense;
  double objConst;
  const double* obj;
  const int *beg, *cnt, *idx;
  const double* val;
  const char* type;
  const double *lower, *upper;
  const char* sense;
  const double *bound, *rowUpper;
  const char* const* colNames;
  const char* const* rowNames;
};

int CheckLoad(ZELQprob* prob, const LoadArgs& a, Groups* g, std::vector<double>* lo,
              std::vector<double>* up) {
  if (int rc = CheckCount(prob, a.nCol, "columns")) return rc;
  if (int rc = CheckCount(prob, a.nRow, "rows")) return rc;
  if (a.objSense != ZELQ_MINIMIZE && a.objSense != ZELQ_MAXIMIZE)
    return Fail(prob, ZELQ_RETCODE_INVALID,
                "objective sense %d is neither 1 (minimize) nor -1 (maximize)", a.objSense);
  if (!std::isfinite(a.objConst) || std::fabs(a.objConst) >= kInf)
    return Fail(prob, ZELQ_RETCODE_INVALID, "objective constant %g is not finite", a.objConst);
  if (int rc = CheckGroups(prob, a.nCol, a.beg, a.cnt, a.idx, a.val, a.nRow, "column", g))
    return rc;
  if (int rc = CheckFinite(prob, a.nCol, a.obj, "colObj")) return rc;
  if (int rc = CheckColTypes(prob, a.nCol, a.type)) return rc;
  if (int rc = CheckLower(prob, a.nCol, a.lower, "colLower")) return rc;
  if (int rc = CheckUpper(prob, a.nCol, a.upper, "colUpper")) return rc;
  return RowBoundsFromArrays(prob, a.nRow, a.sense, a.bound, a.rowUpper, lo, up);
}

// Transposes the checked column-wise entries into rows of the new matrix.
void BuildMatrix(const LoadArgs& a, const Groups& g, RowMatrix* m) {
  std::vector<int64_t> rbeg(a.nRow + 1, 0);
  for (int j = 0; j < a.nCol; ++j)
    for (int e = 0; e < g.len[j]; ++e) ++rbeg[a.idx[g.off[j] + e] + 1];
  for (int r = 0; r < a.nRow; ++r) rbeg[r + 1] += rbeg[r];
  std::vector<int> cols(rbeg[a.nRow]);
  std::vector<double> vals(rbeg[a.nRow]);
  std::vector<int64_t> next(rbeg.begin(), rbeg.end() - 1);
  for (int j = 0; j < a.nCol; ++j)
    for (int e = 0; e < g.len[j]; ++e) {
      const int64_t at = next[a.idx[g.off[j] + e]]++;
      cols[at] = j;
      vals[at] = a.val[g.off[j] + e];
    }
  for (int r = 0; r < a.nRow; ++r)
    m->AddRow(static_cast<int>(rbeg[r + 1] - rbeg[r]), cols.data() + rbeg[r],
              vals.data() + rbeg[r]);
}

void BuildProblem(const LoadArgs& a, const Groups& g, std::vector<double>& lo,
                  std::vector<double>& up, Problem* p) {
  p->objSense = a.objSense;
  p->objConst = a.objConst;
  p->obj.assign(a.nCol, 0.0);
  p->colType.assign(a.nCol, 'C');
  p->colLower.assign(a.nCol, 0.0);
  p->colUpper.assign(a.nCol, kInf);
  p->branchFactor.assign(a.nCol, 0.0);
  for (int j = 0; j < a.nCol; ++j) {
    if (a.obj) p->obj[j] = a.obj[j];
    if (a.type) p->colType[j] = a.type[j];
    if (a.lower) p->colLower[j] = NormInf(a.lower[j]);
    if (a.upper) p->colUpper[j] = NormInf(a.upper[j]);
    if (a.colNames) p->colNames.Add(a.colNames[j]);
  }
  if (!a.colNames) p->colNames.AddUnnamed(a.nCol);
  p->rowLower.swap(lo);
  p->rowUpper.swap(up);
  for (int r = 0; r < a.nRow && a.rowNames; ++r) p->rowNames.Add(a.rowNames[r]);
  if (!a.rowNames) p->rowNames.AddUnnamed(a.nRow);
  BuildMatrix(a, g, &p->matrix);
}

}  // namespace

int ZELQ_LoadProb(ZELQprob* prob, int nCol, int nRow, int iObjSense, double dObjConst,
                  const double* colObj, const int* colMatBeg, const int* colMatCnt,
                  const int* colMatIdx, const double* colMatElem, const char* colType,
                  const double* colLower, const double* colUpper, const char* rowSense,
                  const double* rowBound, const double* rowUpper, char const* const* colNames,
                  char const* const* rowNames) {
  return Guard(prob, __func__, [&]() -> int {
    const LoadArgs a{nCol,      nRow,      iObjSense, dObjConst, colObj,   colMatBeg,
                     colMatCnt, colMatIdx, colMatElem, colType,  colLower, colUpper,
                     rowSense,  rowBound,  rowUpper,  colNames,  rowNames};
    Groups g;
    std::vector<double> lo, up;
    if (int rc = CheckLoad(prob, a, &g, &lo, &up)) return rc;
    Problem fresh;
    BuildProblem(a, g, lo, up, &fresh);
    prob->problem = std::move(fresh);
    prob->mipStarts.clear();
    prob->startColBasis.clear();
    prob->startRowBasis.clear();
    InvalidateSolution(prob);
    return ZELQ_RETCODE_OK;
  });
}
