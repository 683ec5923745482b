// Entry points of the problem classes this build cannot solve yet (quadratic, semidefinite,
// cones, SOS, indicators, nonlinear, multiple objectives, IIS, feasibility relaxation, tuning,
// solve-time callback data). Each checks its handle (code 3 for a bad one) and returns
// ZELQ_RETCODE_NOTSUPPORTED with a last-error text naming the class; deleting zero elements of
// such a class succeeds, since there is nothing to delete.
//
// The list below is the one place these functions are defined: one line per function with its
// class and its parameter list as declared in zelq.h.
#include "api/guard.h"

#pragma GCC diagnostic ignored "-Wunused-parameter"

using namespace zelq::engine;

namespace {

constexpr const char *kQuadratic = "quadratic constraints and objectives are";
constexpr const char *kSemidefinite = "semidefinite (PSD) columns and LMI constraints are";
constexpr const char *kCones = "conic constraints are";
constexpr const char *kSos = "SOS constraints are";
constexpr const char *kIndicators = "indicator constraints are";
constexpr const char *kNonlinear = "nonlinear constraints and objectives are";
constexpr const char *kMultiObj = "multiple objectives are";
constexpr const char *kIis = "IIS computation is";
constexpr const char *kFeasRelax = "feasibility relaxation is";
constexpr const char *kTuning = "parameter tuning is";
constexpr const char *kCallbacks = "solve-time callbacks are";

int Unsupported(ZELQprob *prob, const char *fn, const char *what) {
  return Guard(prob, fn, [&]() -> int {
    return Fail(prob, ZELQ_RETCODE_NOTSUPPORTED, "%s not supported by this build", what);
  });
}

int UnsupportedDel(ZELQprob *prob, const char *fn, const char *what, int num) {
  return Guard(prob, fn, [&]() -> int {
    if (num < 0) return Fail(prob, ZELQ_RETCODE_INVALID, "count %d is negative", num);
    if (num == 0) return ZELQ_RETCODE_OK;
    return Fail(prob, ZELQ_RETCODE_NOTSUPPORTED, "%s not supported by this build", what);
  });
}

// Callback data only exists inside a solve-time callback, which this build never calls.
int UnsupportedCbData(void *cbdata) {
  return cbdata == nullptr ? ZELQ_RETCODE_INVALID : ZELQ_RETCODE_NOTSUPPORTED;
}

}  // namespace

#define ZELQ_UNSUPPORTED(family, name, params) \
  int name params { return Unsupported(prob, #name, family); }
#define ZELQ_UNSUPPORTED_DEL(family, name, params, count) \
  int name params { return UnsupportedDel(prob, #name, family, count); }
#define ZELQ_UNSUPPORTED_CBDATA(name, params) \
  int name params { return UnsupportedCbData(cbdata); }

ZELQ_UNSUPPORTED(kQuadratic, ZELQ_AddQConstr,
                 (ZELQprob *prob, int nRowMatCnt, const int *rowMatIdx, const double *rowMatElem,
                  int nQMatElem, const int *qMatRow, const int *qMatCol, const double *qMatElem,
                  char cRowSense, double dRowBound, const char *name))
ZELQ_UNSUPPORTED(kQuadratic, ZELQ_GetQConstr,
                 (ZELQprob *prob, int idx, int *p_nRowMatCnt, int *rowMatIdx, double *rowMatElem,
                  int *p_nQMatElem, int *qMatRow, int *qMatCol, double *qMatElem, char *p_cRowSense,
                  double *p_dRowBound, int nRowMatSize, int *pRowMatReqSize, int nQMatSize,
                  int *pQMatReqSize))
ZELQ_UNSUPPORTED_DEL(kQuadratic, ZELQ_DelQConstrs, (ZELQprob *prob, int num, const int *list), num)
ZELQ_UNSUPPORTED(kQuadratic, ZELQ_SetQuadObj,
                 (ZELQprob *prob, int num, const int *qRow, const int *qCol, const double *qElem))
ZELQ_UNSUPPORTED(kQuadratic, ZELQ_GetQuadObj,
                 (ZELQprob *prob, int *p_nQElem, int *qRow, int *qCol, double *qElem))
ZELQ_UNSUPPORTED_DEL(kQuadratic, ZELQ_DelQuadObj, (ZELQprob *prob), 0)
ZELQ_UNSUPPORTED(kQuadratic, ZELQ_SetQConstrSense,
                 (ZELQprob *prob, int num, const int *list, const char *sense))
ZELQ_UNSUPPORTED(kQuadratic, ZELQ_SetQConstrRhs,
                 (ZELQprob *prob, int num, const int *list, const double *rhs))
ZELQ_UNSUPPORTED(kQuadratic, ZELQ_SetQConstrNames,
                 (ZELQprob *prob, int num, const int *list, char const *const *names))
ZELQ_UNSUPPORTED(kQuadratic, ZELQ_GetQConstrSense,
                 (ZELQprob *prob, int num, const int *list, char *sense))
ZELQ_UNSUPPORTED(kQuadratic, ZELQ_GetQConstrRhs,
                 (ZELQprob *prob, int num, const int *list, double *rhs))
ZELQ_UNSUPPORTED(kQuadratic, ZELQ_GetQConstrIdx, (ZELQprob *prob, const char *name, int *p_idx))
ZELQ_UNSUPPORTED(kQuadratic, ZELQ_GetQConstrName,
                 (ZELQprob *prob, int idx, char *buff, int buffLen, int *pReqSize))
ZELQ_UNSUPPORTED(kQuadratic, ZELQ_GetQConstrInfo,
                 (ZELQprob *prob, const char *infoName, int num, const int *list, double *info))

ZELQ_UNSUPPORTED(kSemidefinite, ZELQ_AddPSDCol, (ZELQprob *prob, int colDim, const char *name))
ZELQ_UNSUPPORTED(kSemidefinite, ZELQ_AddPSDCols,
                 (ZELQprob *prob, int nCol, const int *colDims, char const *const *names))
ZELQ_UNSUPPORTED_DEL(kSemidefinite, ZELQ_DelPSDCols, (ZELQprob *prob, int num, const int *list),
                     num)
ZELQ_UNSUPPORTED(kSemidefinite, ZELQ_GetPSDCols,
                 (ZELQprob *prob, int num, const int *list, int *colDims, int *colLens))
ZELQ_UNSUPPORTED(kSemidefinite, ZELQ_AddPSDConstr,
                 (ZELQprob *prob, int nRowMatCnt, const int *rowMatIdx, const double *rowMatElem,
                  int nColCnt, const int *psdColIdx, const int *symMatIdx, char cRowSense,
                  double dRowBound, double dRowUpper, const char *name))
ZELQ_UNSUPPORTED(kSemidefinite, ZELQ_GetPSDConstr,
                 (ZELQprob *prob, int idx, int *p_nRowMatCnt, int *rowMatIdx, double *rowMatElem,
                  int *p_nColCnt, int *psdColIdx, int *symMatIdx, double *p_dRowLower,
                  double *p_dRowUpper, int nRowMatSize, int *pRowMatReqSize, int nColSize,
                  int *pColReqSize))
ZELQ_UNSUPPORTED_DEL(kSemidefinite, ZELQ_DelPSDConstrs, (ZELQprob *prob, int num, const int *list),
                     num)
ZELQ_UNSUPPORTED(kSemidefinite, ZELQ_AddLMIConstr,
                 (ZELQprob *prob, int nDim, int nLMIMatCnt, const int *colIdx,
                  const int *symMatIdx, int constMatIdx, const char *name))
ZELQ_UNSUPPORTED(kSemidefinite, ZELQ_GetLMIConstr,
                 (ZELQprob *prob, int idx, int *p_nDim, int *p_nLMILen, int *colIdx,
                  int *symMatIdx, int *p_constMatIdx, int nLMISize, int *pLMIReqSize))
ZELQ_UNSUPPORTED_DEL(kSemidefinite, ZELQ_DelLMIConstrs, (ZELQprob *prob, int num, const int *list),
                     num)
ZELQ_UNSUPPORTED(kSemidefinite, ZELQ_GetPSDElem,
                 (ZELQprob *prob, int iCol, int iRow, int *p_symMatIdx))
ZELQ_UNSUPPORTED(kSemidefinite, ZELQ_SetPSDElem,
                 (ZELQprob *prob, int iCol, int iRow, int symMatIdx))
ZELQ_UNSUPPORTED(kSemidefinite, ZELQ_GetLMIElem,
                 (ZELQprob *prob, int iCol, int iRow, int *p_symMatIdx))
ZELQ_UNSUPPORTED(kSemidefinite, ZELQ_SetLMIElem,
                 (ZELQprob *prob, int iCol, int iRow, int symMatIdx))
ZELQ_UNSUPPORTED(kSemidefinite, ZELQ_AddSymMat,
                 (ZELQprob *prob, int ndim, int nElem, const int *rows, const int *cols,
                  const double *elems))
ZELQ_UNSUPPORTED(kSemidefinite, ZELQ_GetSymMat,
                 (ZELQprob *prob, int iMat, int *p_nDim, int *p_nElem, int *rows, int *cols,
                  double *elems))
ZELQ_UNSUPPORTED(kSemidefinite, ZELQ_GetPSDObj, (ZELQprob *prob, int iCol, int *p_symMatIdx))
ZELQ_UNSUPPORTED_DEL(kSemidefinite, ZELQ_DelPSDObj, (ZELQprob *prob), 0)
ZELQ_UNSUPPORTED(kSemidefinite, ZELQ_ReplacePSDObj,
                 (ZELQprob *prob, int num, const int *list, const int *symMatIdx))
ZELQ_UNSUPPORTED(kSemidefinite, ZELQ_SetPSDColNames,
                 (ZELQprob *prob, int num, const int *list, char const *const *names))
ZELQ_UNSUPPORTED(kSemidefinite, ZELQ_SetPSDConstrLower,
                 (ZELQprob *prob, int num, const int *list, const double *lower))
ZELQ_UNSUPPORTED(kSemidefinite, ZELQ_SetPSDConstrUpper,
                 (ZELQprob *prob, int num, const int *list, const double *upper))
ZELQ_UNSUPPORTED(kSemidefinite, ZELQ_SetPSDConstrNames,
                 (ZELQprob *prob, int num, const int *list, char const *const *names))
ZELQ_UNSUPPORTED(kSemidefinite, ZELQ_SetLMIConstrRhs,
                 (ZELQprob *prob, int num, const int *list, const int *constMatIdx))
ZELQ_UNSUPPORTED(kSemidefinite, ZELQ_SetLMIConstrNames,
                 (ZELQprob *prob, int num, const int *list, char const *const *names))
ZELQ_UNSUPPORTED(kSemidefinite, ZELQ_GetLMIConstrRhs,
                 (ZELQprob *prob, int num, const int *list, int *constMatIdx))
ZELQ_UNSUPPORTED(kSemidefinite, ZELQ_GetPSDColIdx, (ZELQprob *prob, const char *name, int *p_idx))
ZELQ_UNSUPPORTED(kSemidefinite, ZELQ_GetPSDConstrIdx,
                 (ZELQprob *prob, const char *name, int *p_idx))
ZELQ_UNSUPPORTED(kSemidefinite, ZELQ_GetLMIConstrIdx,
                 (ZELQprob *prob, const char *name, int *p_idx))
ZELQ_UNSUPPORTED(kSemidefinite, ZELQ_GetPSDColName,
                 (ZELQprob *prob, int idx, char *buff, int buffLen, int *pReqSize))
ZELQ_UNSUPPORTED(kSemidefinite, ZELQ_GetPSDConstrName,
                 (ZELQprob *prob, int idx, char *buff, int buffLen, int *pReqSize))
ZELQ_UNSUPPORTED(kSemidefinite, ZELQ_GetLMIConstrName,
                 (ZELQprob *prob, int idx, char *buff, int buffLen, int *pReqSize))
ZELQ_UNSUPPORTED(kSemidefinite, ZELQ_GetPSDColInfo,
                 (ZELQprob *prob, const char *infoName, int iCol, double *info))
ZELQ_UNSUPPORTED(kSemidefinite, ZELQ_GetPSDConstrInfo,
                 (ZELQprob *prob, const char *infoName, int num, const int *list, double *info))
ZELQ_UNSUPPORTED(kSemidefinite, ZELQ_GetLMIConstrInfo,
                 (ZELQprob *prob, const char *infoName, int iLMI, double *info))
ZELQ_UNSUPPORTED(kSemidefinite, ZELQ_GetPSDSolution,
                 (ZELQprob *prob, double *psdColValue, double *psdRowSlack, double *psdRowDual,
                  double *psdColDual))
ZELQ_UNSUPPORTED(kSemidefinite, ZELQ_GetLMISolution,
                 (ZELQprob *prob, double *lmiSlack, double *lmiDual))

ZELQ_UNSUPPORTED(kCones, ZELQ_AddCones,
                 (ZELQprob *prob, int nCone, const int *coneType, const int *coneBeg,
                  const int *coneCnt, const int *coneIdx))
ZELQ_UNSUPPORTED(kCones, ZELQ_GetCones,
                 (ZELQprob *prob, int nCone, const int *list, int *coneType, int *coneBeg,
                  int *coneCnt, int *coneIdx, int nElemSize, int *pReqSize))
ZELQ_UNSUPPORTED_DEL(kCones, ZELQ_DelCones, (ZELQprob *prob, int nCone, const int *list), nCone)
ZELQ_UNSUPPORTED(kCones, ZELQ_AddExpCones,
                 (ZELQprob *prob, int nCone, const int *coneType, const int *coneIdx))
ZELQ_UNSUPPORTED(kCones, ZELQ_GetExpCones,
                 (ZELQprob *prob, int nCone, const int *list, int *coneType, int *coneIdx,
                  int nElemSize, int *pReqSize))
ZELQ_UNSUPPORTED_DEL(kCones, ZELQ_DelExpCones, (ZELQprob *prob, int nCone, const int *list), nCone)
ZELQ_UNSUPPORTED(kCones, ZELQ_AddAffineCone,
                 (ZELQprob *prob, int coneType, int nRow, int nElem, const int *rowMatBeg,
                  const int *rowMatCnt, const int *rowMatIdx, const double *rowMatElem,
                  const double *rowConst, const char *name))
ZELQ_UNSUPPORTED(kCones, ZELQ_GetAffineCone,
                 (ZELQprob *prob, int idx, int *p_coneType, int *p_nRow, int *p_nElem,
                  int *rowMatBeg, int *rowMatCnt, int *rowMatIdx, double *rowMatElem,
                  double *rowConst, int nElemSize, int *pReqSize))
ZELQ_UNSUPPORTED_DEL(kCones, ZELQ_DelAffineCones, (ZELQprob *prob, int num, const int *list), num)
ZELQ_UNSUPPORTED(kCones, ZELQ_SetAffineConeNames,
                 (ZELQprob *prob, int num, const int *list, char const *const *names))
ZELQ_UNSUPPORTED(kCones, ZELQ_GetAffineConeIdx, (ZELQprob *prob, const char *name, int *p_idx))
ZELQ_UNSUPPORTED(kCones, ZELQ_GetAffineConeName,
                 (ZELQprob *prob, int idx, char *buff, int buffLen, int *pReqSize))

ZELQ_UNSUPPORTED(kSos, ZELQ_AddSOSs,
                 (ZELQprob *prob, int nSos, const int *sosType, const int *sosBeg,
                  const int *sosCnt, const int *sosIdx, const double *sosWt))
ZELQ_UNSUPPORTED(kSos, ZELQ_GetSOSs,
                 (ZELQprob *prob, int nSos, const int *list, int *sosType, int *sosBeg,
                  int *sosCnt, int *sosIdx, double *sosWt, int nElemSize, int *pReqSize))
ZELQ_UNSUPPORTED_DEL(kSos, ZELQ_DelSOSs, (ZELQprob *prob, int nSos, const int *list), nSos)

ZELQ_UNSUPPORTED(kIndicators, ZELQ_AddIndicators,
                 (ZELQprob *prob, int nInd, const int *binColIdx, const int *binColVal,
                  const int *rowMatBeg, const int *rowMatCnt, const int *rowMatIdx,
                  const double *rowMatElem, const char *rowSense, const double *rowBound,
                  char const *const *names))
ZELQ_UNSUPPORTED(kIndicators, ZELQ_GetIndicators,
                 (ZELQprob *prob, int nInd, const int *list, int *binColIdx, int *binColVal,
                  int *rowMatBeg, int *rowMatCnt, int *rowMatIdx, double *rowMatElem,
                  char *rowSense, double *rowBound, int nElemSize, int *pReqSize))
ZELQ_UNSUPPORTED_DEL(kIndicators, ZELQ_DelIndicators, (ZELQprob *prob, int num, const int *list),
                     num)
ZELQ_UNSUPPORTED(kIndicators, ZELQ_SetIndicatorNames,
                 (ZELQprob *prob, int num, const int *list, char const *const *names))
ZELQ_UNSUPPORTED(kIndicators, ZELQ_GetIndicatorIdx, (ZELQprob *prob, const char *name, int *p_idx))
ZELQ_UNSUPPORTED(kIndicators, ZELQ_GetIndicatorName,
                 (ZELQprob *prob, int idx, char *buff, int buffLen, int *pReqSize))

ZELQ_UNSUPPORTED(kNonlinear, ZELQ_AddNLConstr,
                 (ZELQprob *prob, int nToken, int nConst, const int *tokens,
                  const double *constants, char cRowSense, double dRowBound, double dRowUpper,
                  const char *name))
ZELQ_UNSUPPORTED(kNonlinear, ZELQ_AddNLConstrs,
                 (ZELQprob *prob, int nRow, const int *tokenBeg, const int *tokenCnt,
                  const int *tokens, const int *constBeg, const int *constCnt,
                  const double *constants, const char *rowSense, const double *rowBound,
                  const double *rowUpper, char const *const *names))
ZELQ_UNSUPPORTED(kNonlinear, ZELQ_GetNLConstr,
                 (ZELQprob *prob, int idx, int *p_nToken, int *p_nConst, int *tokens,
                  double *constants, double *p_dRowLower, double *p_dRowUpper))
ZELQ_UNSUPPORTED_DEL(kNonlinear, ZELQ_DelNLConstrs, (ZELQprob *prob, int num, const int *list),
                     num)
ZELQ_UNSUPPORTED(kNonlinear, ZELQ_SetNLObj,
                 (ZELQprob *prob, int nToken, int nConst, const int *tokens,
                  const double *constants))
ZELQ_UNSUPPORTED(kNonlinear, ZELQ_GetNLObj,
                 (ZELQprob *prob, int *p_nToken, int *p_nConst, int *tokens, double *constants))
ZELQ_UNSUPPORTED_DEL(kNonlinear, ZELQ_DelNLObj, (ZELQprob *prob), 0)
ZELQ_UNSUPPORTED(kNonlinear, ZELQ_SetNLConstrLower,
                 (ZELQprob *prob, int num, const int *list, const double *lower))
ZELQ_UNSUPPORTED(kNonlinear, ZELQ_SetNLConstrUpper,
                 (ZELQprob *prob, int num, const int *list, const double *upper))
ZELQ_UNSUPPORTED(kNonlinear, ZELQ_SetNLConstrNames,
                 (ZELQprob *prob, int num, const int *list, char const *const *names))
ZELQ_UNSUPPORTED(kNonlinear, ZELQ_GetNLConstrIdx, (ZELQprob *prob, const char *name, int *p_idx))
ZELQ_UNSUPPORTED(kNonlinear, ZELQ_GetNLConstrName,
                 (ZELQprob *prob, int idx, char *buff, int buffLen, int *pReqSize))
ZELQ_UNSUPPORTED(kNonlinear, ZELQ_GetNLConstrInfo,
                 (ZELQprob *prob, const char *infoName, int num, const int *list, double *info))
ZELQ_UNSUPPORTED(kNonlinear, ZELQ_SetNLPrimalStart,
                 (ZELQprob *prob, int num, const int *list, const double *values))

ZELQ_UNSUPPORTED(kMultiObj, ZELQ_MultiObjSetColObj,
                 (ZELQprob *prob, int iObj, int num, const int *list, const double *obj))
ZELQ_UNSUPPORTED(kMultiObj, ZELQ_MultiObjGetColObj,
                 (ZELQprob *prob, int iObj, int num, const int *list, double *obj))
ZELQ_UNSUPPORTED(kMultiObj, ZELQ_MultiObjDelColObj, (ZELQprob *prob, int iObj))
ZELQ_UNSUPPORTED(kMultiObj, ZELQ_MultiObjSetObjSense, (ZELQprob *prob, int iObj, int iObjSense))
ZELQ_UNSUPPORTED(kMultiObj, ZELQ_MultiObjSetObjConst, (ZELQprob *prob, int iObj, double dObjConst))
ZELQ_UNSUPPORTED(kMultiObj, ZELQ_MultiObjSetObjParam,
                 (ZELQprob *prob, int iObj, const char *name, double value))
ZELQ_UNSUPPORTED(kMultiObj, ZELQ_MultiObjGetObjParam,
                 (ZELQprob *prob, int iObj, const char *name, double *p_value))
ZELQ_UNSUPPORTED(kMultiObj, ZELQ_MultiObjResetObjParam, (ZELQprob *prob, int iObj))
ZELQ_UNSUPPORTED(kMultiObj, ZELQ_MultiObjSetIntParam,
                 (ZELQprob *prob, int iObj, const char *name, int value))
ZELQ_UNSUPPORTED(kMultiObj, ZELQ_MultiObjGetIntParam,
                 (ZELQprob *prob, int iObj, const char *name, int *p_value))
ZELQ_UNSUPPORTED(kMultiObj, ZELQ_MultiObjSetDblParam,
                 (ZELQprob *prob, int iObj, const char *name, double value))
ZELQ_UNSUPPORTED(kMultiObj, ZELQ_MultiObjGetDblParam,
                 (ZELQprob *prob, int iObj, const char *name, double *p_value))
ZELQ_UNSUPPORTED(kMultiObj, ZELQ_MultiObjResetParam, (ZELQprob *prob, int iObj))
ZELQ_UNSUPPORTED(kMultiObj, ZELQ_MultiObjGetIntAttr,
                 (ZELQprob *prob, int iObj, const char *name, int *p_value))
ZELQ_UNSUPPORTED(kMultiObj, ZELQ_MultiObjGetDblAttr,
                 (ZELQprob *prob, int iObj, const char *name, double *p_value))
ZELQ_UNSUPPORTED(kMultiObj, ZELQ_MultiObjGetPoolObjVal,
                 (ZELQprob *prob, int iObj, int iSol, double *p_objVal))

ZELQ_UNSUPPORTED(kIis, ZELQ_GetColLowerIIS,
                 (ZELQprob *prob, int num, const int *list, int *colLowerIIS))
ZELQ_UNSUPPORTED(kIis, ZELQ_GetColUpperIIS,
                 (ZELQprob *prob, int num, const int *list, int *colUpperIIS))
ZELQ_UNSUPPORTED(kIis, ZELQ_GetRowLowerIIS,
                 (ZELQprob *prob, int num, const int *list, int *rowLowerIIS))
ZELQ_UNSUPPORTED(kIis, ZELQ_GetRowUpperIIS,
                 (ZELQprob *prob, int num, const int *list, int *rowUpperIIS))
ZELQ_UNSUPPORTED(kIis, ZELQ_GetSOSIIS, (ZELQprob *prob, int num, const int *list, int *sosIIS))
ZELQ_UNSUPPORTED(kIis, ZELQ_GetIndicatorIIS,
                 (ZELQprob *prob, int num, const int *list, int *indicatorIIS))

ZELQ_UNSUPPORTED(kCones, ZELQ_LoadConeProb,
                 (ZELQprob *prob, int nCol, int nRow, int nFree, int nPositive, int nBox,
                  int nCone, int nRotateCone, int nPrimalExp, int nDualExp, int nPrimalPow,
                  int nDualPow, int nPSD, const int *coneDim, const int *powDim,
                  const double *powAlpha, const int *psdDim, int iObjSense, double dObjConst,
                  const double *colObj, const int *qObjBeg, const int *qObjCnt, const int *qObjIdx,
                  const double *qObjElem, const int *colMatBeg, const int *colMatCnt,
                  const int *colMatIdx, const double *colMatElem, const double *rowRhs,
                  const double *boxLower, const double *boxUpper, char const *const *colNames,
                  char const *const *rowNames, char const *const *psdColNames, int *outRowMap))

ZELQ_UNSUPPORTED(kNonlinear, ZELQ_LoadNLDataProb,
                 (ZELQprob *prob, int nCol, int nRow, int iObjSense, const double *colLower,
                  const double *colUpper, const double *rowLower, const double *rowUpper,
                  int nJacElem, const int *jacRow, const int *jacCol, int nHessElem,
                  const int *hessRow, const int *hessCol, ZELQnlpcallback eval, int evalMask,
                  void *userdata))

ZELQ_UNSUPPORTED(kIis, ZELQ_ComputeIIS, (ZELQprob *prob))

ZELQ_UNSUPPORTED(kFeasRelax, ZELQ_FeasRelax,
                 (ZELQprob *prob, const double *colLowPen, const double *colUppPen,
                  const double *rowBndPen, const double *rowUppPen))

ZELQ_UNSUPPORTED(kTuning, ZELQ_Tune, (ZELQprob *prob))
ZELQ_UNSUPPORTED(kTuning, ZELQ_LoadTuneParam, (ZELQprob *prob, int idx))

ZELQ_UNSUPPORTED(kCallbacks, ZELQ_SearchCallbackInfo,
                 (ZELQprob *prob, const char *name, int *p_type, int *p_dim))

ZELQ_UNSUPPORTED_CBDATA(ZELQ_GetCallbackInfo, (void *cbdata, const char *cbinfo, void *p_val))
ZELQ_UNSUPPORTED_CBDATA(ZELQ_AddCallbackSolution,
                        (void *cbdata, const double *sol, double *p_objval))
ZELQ_UNSUPPORTED_CBDATA(ZELQ_AddCallbackUserCut,
                        (void *cbdata, int nRowMatCnt, const int *rowMatIdx,
                         const double *rowMatElem, char cRowSense, double dRowRhs))
ZELQ_UNSUPPORTED_CBDATA(ZELQ_AddCallbackUserCuts,
                        (void *cbdata, int nRow, const int *rowMatBeg, const int *rowMatCnt,
                         const int *rowMatIdx, const double *rowMatElem, const char *rowSense,
                         const double *rowRhs))
ZELQ_UNSUPPORTED_CBDATA(ZELQ_AddCallbackLazyConstr,
                        (void *cbdata, int nRowMatCnt, const int *rowMatIdx,
                         const double *rowMatElem, char cRowSense, double dRowRhs))
ZELQ_UNSUPPORTED_CBDATA(ZELQ_AddCallbackLazyConstrs,
                        (void *cbdata, int nRow, const int *rowMatBeg, const int *rowMatCnt,
                         const int *rowMatIdx, const double *rowMatElem, const char *rowSense,
                         const double *rowRhs))
