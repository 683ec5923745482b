// Objective, types, bounds, branching factors and names of columns and rows.
#include <cmath>

#include "api/checks.h"

using namespace zelq::engine;

namespace {

// Checks list + values, then stores values[k] into target[list[k]] (through `conv`).
template <class Check>
int SetValues(ZELQprob* prob, int num, const int* list, const double* values, int limit,
              const char* what, const char* arrayName, Check check, std::vector<double>& target,
              bool invalidates) {
  if (int rc = CheckList(prob, num, list, limit, what)) return rc;
  if (int rc = CheckPtr(prob, num, values, arrayName)) return rc;
  if (int rc = check(prob, num, values, arrayName)) return rc;
  if (num == 0) return ZELQ_RETCODE_OK;
  for (int k = 0; k < num; ++k) target[list[k]] = NormInf(values[k]);
  if (invalidates) InvalidateSolution(prob);
  return ZELQ_RETCODE_OK;
}

int SetNames(ZELQprob* prob, int num, const int* list, const char* const* names, NameList& nl,
             const char* what) {
  if (int rc = CheckList(prob, num, list, nl.size(), what)) return rc;
  if (int rc = CheckPtr(prob, num, names, "names")) return rc;
  for (int k = 0; k < num; ++k) nl.Set(list[k], names[k]);  // a null name removes the name
  return ZELQ_RETCODE_OK;
}

int FindIdx(ZELQprob* prob, const NameList& nl, const char* name, int* p_idx) {
  if (name == nullptr || p_idx == nullptr)
    return Fail(prob, ZELQ_RETCODE_INVALID, "%s is null", name ? "p_idx" : "name");
  *p_idx = nl.Find(name);
  return ZELQ_RETCODE_OK;
}

}  // namespace

int ZELQ_SetColObj(ZELQprob* prob, int num, const int* list, const double* obj) {
  return Guard(prob, __func__, [&]() -> int {
    return SetValues(prob, num, list, obj, prob->problem.cols(), "columns", "obj", CheckFinite,
                     prob->problem.obj, true);
  });
}

int ZELQ_SetColLower(ZELQprob* prob, int num, const int* list, const double* lower) {
  return Guard(prob, __func__, [&]() -> int {
    return SetValues(prob, num, list, lower, prob->problem.cols(), "columns", "lower", CheckLower,
                     prob->problem.colLower, true);
  });
}

int ZELQ_SetColUpper(ZELQprob* prob, int num, const int* list, const double* upper) {
  return Guard(prob, __func__, [&]() -> int {
    return SetValues(prob, num, list, upper, prob->problem.cols(), "columns", "upper", CheckUpper,
                     prob->problem.colUpper, true);
  });
}

int ZELQ_SetColBranchFactors(ZELQprob* prob, int num, const int* list, const double* factors) {
  return Guard(prob, __func__, [&]() -> int {
    // Branching order does not change the optimum: the last solution stays valid.
    return SetValues(prob, num, list, factors, prob->problem.cols(), "columns", "factors",
                     CheckFinite, prob->problem.branchFactor, false);
  });
}

int ZELQ_SetRowLower(ZELQprob* prob, int num, const int* list, const double* lower) {
  return Guard(prob, __func__, [&]() -> int {
    return SetValues(prob, num, list, lower, prob->problem.rows(), "rows", "lower", CheckLower,
                     prob->problem.rowLower, true);
  });
}

int ZELQ_SetRowUpper(ZELQprob* prob, int num, const int* list, const double* upper) {
  return Guard(prob, __func__, [&]() -> int {
    return SetValues(prob, num, list, upper, prob->problem.rows(), "rows", "upper", CheckUpper,
                     prob->problem.rowUpper, true);
  });
}

int ZELQ_ReplaceColObj(ZELQprob* prob, int num, const int* list, const double* obj) {
  return Guard(prob, __func__, [&]() -> int {
    Problem& p = prob->problem;
    if (int rc = CheckList(prob, num, list, p.cols(), "columns")) return rc;
    if (int rc = CheckPtr(prob, num, obj, "obj")) return rc;
    if (int rc = CheckFinite(prob, num, obj, "obj")) return rc;
    std::fill(p.obj.begin(), p.obj.end(), 0.0);
    for (int k = 0; k < num; ++k) p.obj[list[k]] = obj[k];
    InvalidateSolution(prob);
    return ZELQ_RETCODE_OK;
  });
}

int ZELQ_SetColType(ZELQprob* prob, int num, const int* list, const char* type) {
  return Guard(prob, __func__, [&]() -> int {
    Problem& p = prob->problem;
    if (int rc = CheckList(prob, num, list, p.cols(), "columns")) return rc;
    if (int rc = CheckPtr(prob, num, type, "type")) return rc;
    if (int rc = CheckColTypes(prob, num, type)) return rc;
    if (num == 0) return ZELQ_RETCODE_OK;
    for (int k = 0; k < num; ++k) p.colType[list[k]] = type[k];
    InvalidateSolution(prob);
    return ZELQ_RETCODE_OK;
  });
}

int ZELQ_GetColType(ZELQprob* prob, int num, const int* list, char* type) {
  return Guard(prob, __func__, [&]() -> int {
    const Problem& p = prob->problem;
    if (int rc = CheckGetList(prob, num, list, p.cols(), "columns")) return rc;
    if (int rc = CheckPtr(prob, num, type, "type")) return rc;
    for (int k = 0; k < num; ++k) type[k] = p.colType[ListAt(list, k)];
    return ZELQ_RETCODE_OK;
  });
}

int ZELQ_SetColNames(ZELQprob* prob, int num, const int* list, char const* const* names) {
  return Guard(prob, __func__, [&]() -> int {
    return SetNames(prob, num, list, names, prob->problem.colNames, "columns");
  });
}

int ZELQ_SetRowNames(ZELQprob* prob, int num, const int* list, char const* const* names) {
  return Guard(prob, __func__, [&]() -> int {
    return SetNames(prob, num, list, names, prob->problem.rowNames, "rows");
  });
}

int ZELQ_GetColIdx(ZELQprob* prob, const char* name, int* p_idx) {
  return Guard(prob, __func__,
               [&]() -> int { return FindIdx(prob, prob->problem.colNames, name, p_idx); });
}

int ZELQ_GetRowIdx(ZELQprob* prob, const char* name, int* p_idx) {
  return Guard(prob, __func__,
               [&]() -> int { return FindIdx(prob, prob->problem.rowNames, name, p_idx); });
}

int ZELQ_GetColName(ZELQprob* prob, int iCol, char* buff, int buffLen, int* pReqSize) {
  return Guard(prob, __func__, [&]() -> int {
    if (int rc = CheckIndex(prob, iCol, prob->problem.cols(), "column")) return rc;
    return CopyOut(prob, prob->problem.colNames.Display(iCol, 'C'), buff, buffLen, pReqSize);
  });
}

int ZELQ_GetRowName(ZELQprob* prob, int iRow, char* buff, int buffLen, int* pReqSize) {
  return Guard(prob, __func__, [&]() -> int {
    if (int rc = CheckIndex(prob, iRow, prob->problem.rows(), "row")) return rc;
    return CopyOut(prob, prob->problem.rowNames.Display(iRow, 'R'), buff, buffLen, pReqSize);
  });
}

int ZELQ_SetObjSense(ZELQprob* prob, int iObjSense) {
  return Guard(prob, __func__, [&]() -> int {
    if (iObjSense != ZELQ_MINIMIZE && iObjSense != ZELQ_MAXIMIZE)
      return Fail(prob, ZELQ_RETCODE_INVALID,
                  "objective sense %d is neither 1 (minimize) nor -1 (maximize)", iObjSense);
    if (prob->problem.objSense == iObjSense) return ZELQ_RETCODE_OK;
    prob->problem.objSense = iObjSense;
    InvalidateSolution(prob);
    return ZELQ_RETCODE_OK;
  });
}

int ZELQ_SetObjConst(ZELQprob* prob, double dObjConst) {
  return Guard(prob, __func__, [&]() -> int {
    if (!std::isfinite(dObjConst) || std::fabs(dObjConst) >= kInf)
      return Fail(prob, ZELQ_RETCODE_INVALID, "objective constant %g is not finite", dObjConst);
    prob->problem.objConst = dObjConst;
    InvalidateSolution(prob);
    return ZELQ_RETCODE_OK;
  });
}
