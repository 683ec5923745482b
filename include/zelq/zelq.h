/*
 * zelq.h - the C interface of the Zelq engine (libzelq).
 *
 * Conventions shared by every function:
 *  - Every function returns an int: ZELQ_RETCODE_OK (0) on success, a positive code on failure.
 *    A failed call leaves the problem as it was. ZELQ_GetRetcodeMsg gives the text of a code;
 *    ZELQ_GetLastError gives the detailed message of the last failed call on a problem
 *    (for files: "name:line: problem").
 *  - Elements (columns, rows, ...) are addressed by 0-based int indices in the order the engine
 *    holds them; deleting elements renumbers the survivors in order. Lists are passed as a count
 *    and a pointer to indices.
 *  - Bounds of magnitude >= ZELQ_INFINITY (1e30) mean "no bound".
 *  - Variable-length getters follow "size query before fetch": call once with null buffers and a
 *    non-null pReqSize to learn the size, then again with buffers of at least that size.
 *  - Strings are zero-terminated bytes; the engine copies whatever it keeps.
 *  - Functions of families this build cannot serve yet (quadratic, cones, semidefinite, nonlinear,
 *    IIS, tuning, multiple objectives, solve-time callbacks and some file formats) return
 *    ZELQ_RETCODE_NOTSUPPORTED; nothing is faked.
 *  - One problem is used by one thread at a time; ZELQ_Interrupt may be called from any thread.
 */
#ifndef ZELQ_ZELQ_H
#define ZELQ_ZELQ_H

#ifdef __cplusplus
extern "C" {
#endif

#if defined(_WIN32)
#define ZELQ_API __declspec(dllexport)
#else
#define ZELQ_API __attribute__((visibility("default")))
#endif

/* ---- Version -------------------------------------------------------------------------------- */
#define ZELQ_VERSION_MAJOR 8
#define ZELQ_VERSION_MINOR 0
#define ZELQ_VERSION_TECHNICAL 7

/* ---- Return codes --------------------------------------------------------------------------- */
#define ZELQ_RETCODE_OK 0
#define ZELQ_RETCODE_MEMORY 1       /* allocation failed, or a problem copy could not be made */
#define ZELQ_RETCODE_FILE 2         /* a file could not be opened, read or written */
#define ZELQ_RETCODE_INVALID 3      /* a bad argument: handle, index, count, sense, type, value, name */
#define ZELQ_RETCODE_INTERNAL 5     /* an internal inconsistency, or a solver library failure */
#define ZELQ_RETCODE_THREAD 6       /* a thread could not be started or joined */
#define ZELQ_RETCODE_SERVER 7       /* reserved for remote solving */
#define ZELQ_RETCODE_NONCONVEX 8    /* the problem is non-convex where convexity is required */
#define ZELQ_RETCODE_NOTSUPPORTED 10 /* the operation or problem class is not supported by this build */

/* ---- Numbers and characters ----------------------------------------------------------------- */
#define ZELQ_INFINITY 1e30
#define ZELQ_UNDEFINED 1e40
#define ZELQ_BUFFSIZE 1000

#define ZELQ_MINIMIZE 1
#define ZELQ_MAXIMIZE -1

/* Variable types */
#define ZELQ_CONTINUOUS 'C'
#define ZELQ_BINARY 'B'
#define ZELQ_INTEGER 'I'

/* Row senses; a row with sense 'R' (or 0) takes its lower and upper bound from the two values. */
#define ZELQ_LESS_EQUAL 'L'
#define ZELQ_GREATER_EQUAL 'G'
#define ZELQ_EQUAL 'E'
#define ZELQ_FREE 'N'
#define ZELQ_RANGE 'R'

/* Solution status (attributes "Status", "LpStatus", "MipStatus") */
#define ZELQ_UNSTARTED 0
#define ZELQ_OPTIMAL 1
#define ZELQ_INFEASIBLE 2
#define ZELQ_UNBOUNDED 3
#define ZELQ_INF_OR_UNB 4
#define ZELQ_NUMERICAL 5
#define ZELQ_NODELIMIT 6
#define ZELQ_IMPRECISE 7
#define ZELQ_TIMEOUT 8
#define ZELQ_UNFINISHED 9
#define ZELQ_INTERRUPTED 10

/* Basis status of a column or of a row (a row's status refers to its activity) */
#define ZELQ_BASIS_LOWER 0
#define ZELQ_BASIS_BASIC 1
#define ZELQ_BASIS_UPPER 2
#define ZELQ_BASIS_SUPERBASIC 3
#define ZELQ_BASIS_FIXED 4

/* LpMethod parameter values */
#define ZELQ_LPMETHOD_AUTO -1
#define ZELQ_LPMETHOD_DUALSIMPLEX 1
#define ZELQ_LPMETHOD_BARRIER 2
#define ZELQ_LPMETHOD_PRIMALSIMPLEX 3

/* SOS, cone and exponential-cone types */
#define ZELQ_SOS_TYPE1 1
#define ZELQ_SOS_TYPE2 2
#define ZELQ_CONE_QUAD 1
#define ZELQ_CONE_RQUAD 2
#define ZELQ_EXPCONE_PRIMAL 3
#define ZELQ_EXPCONE_DUAL 4

/* Solve-time callback contexts (a mask of these is passed to ZELQ_SetCallback) */
#define ZELQ_CBCONTEXT_MIPRELAX 0x1
#define ZELQ_CBCONTEXT_MIPSOL 0x2
#define ZELQ_CBCONTEXT_MIPNODE 0x4
#define ZELQ_CBCONTEXT_INCUMBENT 0x8

/* Kinds returned by ZELQ_SearchParamAttr */
#define ZELQ_KIND_DBLPARAM 0
#define ZELQ_KIND_INTPARAM 1
#define ZELQ_KIND_DBLATTR 2
#define ZELQ_KIND_INTATTR 3

/* Information names for ZELQ_GetColInfo / ZELQ_GetRowInfo */
#define ZELQ_DBLINFO_VALUE "Value"          /* column value, or row activity */
#define ZELQ_DBLINFO_SLACK "Slack"          /* row activity: the value of the row's expression */
#define ZELQ_DBLINFO_DUAL "Dual"            /* row dual value */
#define ZELQ_DBLINFO_REDCOST "RedCost"      /* column reduced cost */
#define ZELQ_DBLINFO_LB "LB"
#define ZELQ_DBLINFO_UB "UB"
#define ZELQ_DBLINFO_OBJ "Obj"
#define ZELQ_DBLINFO_BRANCHFACTOR "BranchFactor"
#define ZELQ_DBLINFO_DUALFARKAS "DualFarkas" /* row entry of a Farkas certificate */
#define ZELQ_DBLINFO_PRIMALRAY "PrimalRay"  /* column entry of an unbounded ray */

/* Callback information names for ZELQ_GetCallbackInfo */
#define ZELQ_CBINFO_BESTOBJ "BestObj"
#define ZELQ_CBINFO_BESTBND "BestBnd"
#define ZELQ_CBINFO_HASINCUMBENT "HasIncumbent"
#define ZELQ_CBINFO_INCUMBENT "Incumbent"
#define ZELQ_CBINFO_MIPCANDIDATE "MipCandidate"
#define ZELQ_CBINFO_MIPCANDOBJ "MipCandObj"
#define ZELQ_CBINFO_RELAXSOLUTION "RelaxSolution"
#define ZELQ_CBINFO_RELAXSOLOBJ "RelaxSolObj"
#define ZELQ_CBINFO_NODESTATUS "NodeStatus"

/* ---- Opaque handles -------------------------------------------------------------------------- */
typedef struct zelq_env_s ZELQenv;
typedef struct zelq_envconfig_s ZELQenvconfig;
typedef struct zelq_prob_s ZELQprob;

/* Log callback: one line of solver output (without its newline) and the caller's pointer. */
typedef void (*ZELQlogcallback)(char *msg, void *userdata);
/* Solve-time callback: the callback data for ZELQ_GetCallbackInfo and friends, the context, and
   the caller's pointer; returning non-zero asks the solve to stop. */
typedef int (*ZELQcallback)(ZELQprob *prob, void *cbdata, int cbctx, void *userdata);
/* Nonlinear evaluation callback (see ZELQ_LoadNLDataProb). */
typedef int (*ZELQnlpcallback)(void *userdata, int request, int n, const double *x, int m,
                               double *out, int nOut);

/* ==== Environment and configuration =========================================================== */
/* Writes the banner (name, version, solver libraries) into buff, at most buffSize-1 chars. */
ZELQ_API int ZELQ_GetBanner(char *buff, int buffSize);
/* Writes the text of a return code into buff, at most buffSize-1 chars. */
ZELQ_API int ZELQ_GetRetcodeMsg(int code, char *buff, int buffSize);
/* Creates / deletes a configuration: name/value settings applied when an environment is made
   from it. Keys: "Logging" (0/1), "LogToConsole" (0/1), "Threads" (-1..128), "Banner" (0/1).
   Creating an environment prints nothing; "Banner" is kept for the caller, which may show the
   text of ZELQ_GetBanner itself. */
ZELQ_API int ZELQ_CreateEnvConfig(ZELQenvconfig **p_config);
ZELQ_API int ZELQ_DeleteEnvConfig(ZELQenvconfig **p_config);
ZELQ_API int ZELQ_SetEnvConfig(ZELQenvconfig *config, const char *name, const char *value);
/* Creates an environment. path: null or "" for defaults, else an existing directory whose optional
   file "zelq.cfg" holds "key = value" configuration lines (code 2 if the directory is missing). */
ZELQ_API int ZELQ_CreateEnvWithPath(const char *path, ZELQenv **p_env);
ZELQ_API int ZELQ_CreateEnvWithConfig(ZELQenvconfig *config, ZELQenv **p_env);
/* Closes an environment (no new problems); its problems stay usable until deleted. */
ZELQ_API int ZELQ_CloseEnv(ZELQenv **p_env);
/* Deletes an environment handle; the engine frees it when its last problem is deleted too. */
ZELQ_API int ZELQ_DeleteEnv(ZELQenv **p_env);

/* ==== Processor and memory placement (Linux) =================================================== */
/* Counts the CPUs in [cpuStart, cpuStart+cpuCount) the process may run on (cpuCount -1: all). */
ZELQ_API int ZELQ_GetCpuAffinity(ZELQenv *env, int cpuStart, int cpuCount, int *p_nAllowed);
/* Changes the process's CPU set with the range [cpuStart, cpuStart+cpuCount):
   mode 0 replaces the set by the range, 1 adds the range, 2 removes it. */
ZELQ_API int ZELQ_SetCpuAffinity(ZELQenv *env, int cpuStart, int cpuCount, int mode);
/* Restricts the process to the CPUs of NUMA node `node` (flags reserved, pass 0). */
ZELQ_API int ZELQ_BindNumaCpu(ZELQenv *env, int node, int flags);
/* Prefers memory of NUMA node `node` for the process's new allocations (flags reserved, 0). */
ZELQ_API int ZELQ_BindNumaMem(ZELQenv *env, int node, int flags);
ZELQ_API int ZELQ_GetNumaNodeCount(ZELQenv *env, int *p_count);

/* ==== Problem life ============================================================================ */
ZELQ_API int ZELQ_CreateProb(ZELQenv *env, ZELQprob **p_prob);
/* Deep copy of content and parameters (not of solutions). */
ZELQ_API int ZELQ_CreateCopy(ZELQprob *src, ZELQprob **p_dst);
/* Removes all content and solutions; parameters are kept. */
ZELQ_API int ZELQ_ClearProb(ZELQprob *prob);
ZELQ_API int ZELQ_DeleteProb(ZELQprob **p_prob);
/* Drops the solution (iClearAll 0) or also basis, MIP starts and other extra information (1). */
ZELQ_API int ZELQ_Reset(ZELQprob *prob, int iClearAll);
ZELQ_API int ZELQ_ResetParam(ZELQprob *prob);
/* Applies pending changes (the engine applies changes at once; kept for symmetry). */
ZELQ_API int ZELQ_Update(ZELQprob *prob);
/* Detailed message of the last failed call on prob (empty after a success). */
ZELQ_API int ZELQ_GetLastError(ZELQprob *prob, char *buff, int buffSize);

/* ==== Whole-problem loading ===================================================================== */
/* Replaces the content. Matrix in CSC (colMatBeg/colMatCnt, may be null for none). Rows: if rowSense
   is null, rowBound/rowUpper are lower/upper bounds; else rowBound is the rhs, and rowUpper the
   upper bound of 'R' rows. colType, colLower, colUpper, names may be null (defaults C, 0, inf). */
ZELQ_API int ZELQ_LoadProb(ZELQprob *prob, int nCol, int nRow, int iObjSense, double dObjConst,
                           const double *colObj, const int *colMatBeg, const int *colMatCnt,
                           const int *colMatIdx, const double *colMatElem, const char *colType,
                           const double *colLower, const double *colUpper, const char *rowSense,
                           const double *rowBound, const double *rowUpper,
                           char const *const *colNames, char const *const *rowNames);
ZELQ_API int ZELQ_LoadConeProb(ZELQprob *prob, int nCol, int nRow, int nFree, int nPositive,
                               int nBox, int nCone, int nRotateCone, int nPrimalExp, int nDualExp,
                               int nPrimalPow, int nDualPow, int nPSD, const int *coneDim,
                               const int *powDim, const double *powAlpha, const int *psdDim,
                               int iObjSense, double dObjConst, const double *colObj,
                               const int *qObjBeg, const int *qObjCnt, const int *qObjIdx,
                               const double *qObjElem, const int *colMatBeg, const int *colMatCnt,
                               const int *colMatIdx, const double *colMatElem,
                               const double *rowRhs, const double *boxLower,
                               const double *boxUpper, char const *const *colNames,
                               char const *const *rowNames, char const *const *psdColNames,
                               int *outRowMap);
ZELQ_API int ZELQ_LoadNLDataProb(ZELQprob *prob, int nCol, int nRow, int iObjSense,
                                 const double *colLower, const double *colUpper,
                                 const double *rowLower, const double *rowUpper, int nJacElem,
                                 const int *jacRow, const int *jacCol, int nHessElem,
                                 const int *hessRow, const int *hessCol, ZELQnlpcallback eval,
                                 int evalMask, void *userdata);

/* ==== Columns and rows ========================================================================== */
/* One column with objective coefficient, nColMatCnt matrix entries (row indices must exist),
   type ('C', 'B', 'I'), bounds and name (may be null). */
ZELQ_API int ZELQ_AddCol(ZELQprob *prob, double dColObj, int nColMatCnt, const int *colMatIdx,
                         const double *colMatElem, char cColType, double dColLower,
                         double dColUpper, const char *colName);
/* nCol columns; matrix entries in CSC form (colMatBeg[j], colMatCnt[j]; colMatCnt may be null to
   use colMatBeg[j+1]-colMatBeg[j]); colMatBeg null: no entries. Null arrays take defaults. */
ZELQ_API int ZELQ_AddCols(ZELQprob *prob, int nCol, const double *colObj, const int *colMatBeg,
                          const int *colMatCnt, const int *colMatIdx, const double *colMatElem,
                          const char *colType, const double *colLower, const double *colUpper,
                          char const *const *colNames);
/* One row: sense 'L','G','E','N' with rhs dRowBound, or 'R'/0 with bounds [dRowBound, dRowUpper]. */
ZELQ_API int ZELQ_AddRow(ZELQprob *prob, int nRowMatCnt, const int *rowMatIdx,
                         const double *rowMatElem, char cRowSense, double dRowBound,
                         double dRowUpper, const char *rowName);
/* nRow rows in CSR form; rowSense null: rowBound/rowUpper are lower/upper bounds. */
ZELQ_API int ZELQ_AddRows(ZELQprob *prob, int nRow, const int *rowMatBeg, const int *rowMatCnt,
                          const int *rowMatIdx, const double *rowMatElem, const char *rowSense,
                          const double *rowBound, const double *rowUpper,
                          char const *const *rowNames);
/* Delete listed columns / rows (duplicates allowed); survivors are renumbered in order. */
ZELQ_API int ZELQ_DelCols(ZELQprob *prob, int num, const int *list);
ZELQ_API int ZELQ_DelRows(ZELQprob *prob, int num, const int *list);
/* Matrix data of listed columns / rows in CSC / CSR form (list null: all, with num = count).
   beg and cnt get num entries each (either may be null); *pReqSize gets the number of entries.
   Size query: idx and elem null. Element buffers shorter than the entries (nElemSize) give 3. */
ZELQ_API int ZELQ_GetCols(ZELQprob *prob, int num, const int *list, int *colMatBeg,
                          int *colMatCnt, int *colMatIdx, double *colMatElem, int nElemSize,
                          int *pReqSize);
ZELQ_API int ZELQ_GetRows(ZELQprob *prob, int num, const int *list, int *rowMatBeg,
                          int *rowMatCnt, int *rowMatIdx, double *rowMatElem, int nElemSize,
                          int *pReqSize);
/* Coefficient of column iCol in row iRow (0 when absent); setting 0 removes the entry. */
ZELQ_API int ZELQ_GetElem(ZELQprob *prob, int iCol, int iRow, double *p_elem);
ZELQ_API int ZELQ_SetElem(ZELQprob *prob, int iCol, int iRow, double newElem);
ZELQ_API int ZELQ_SetElems(ZELQprob *prob, int num, const int *cols, const int *rows,
                           const double *elems);
ZELQ_API int ZELQ_SetColObj(ZELQprob *prob, int num, const int *list, const double *obj);
ZELQ_API int ZELQ_SetColType(ZELQprob *prob, int num, const int *list, const char *type);
ZELQ_API int ZELQ_GetColType(ZELQprob *prob, int num, const int *list, char *type);
ZELQ_API int ZELQ_SetColLower(ZELQprob *prob, int num, const int *list, const double *lower);
ZELQ_API int ZELQ_SetColUpper(ZELQprob *prob, int num, const int *list, const double *upper);
ZELQ_API int ZELQ_SetColNames(ZELQprob *prob, int num, const int *list,
                              char const *const *names);
/* Branching priority of integer columns for MIP solves (larger branches first; default 0). */
ZELQ_API int ZELQ_SetColBranchFactors(ZELQprob *prob, int num, const int *list,
                                      const double *factors);
ZELQ_API int ZELQ_SetRowLower(ZELQprob *prob, int num, const int *list, const double *lower);
ZELQ_API int ZELQ_SetRowUpper(ZELQprob *prob, int num, const int *list, const double *upper);
ZELQ_API int ZELQ_SetRowNames(ZELQprob *prob, int num, const int *list,
                              char const *const *names);
/* Index of a named column / row; -1 when no element has that name (still returns 0). */
ZELQ_API int ZELQ_GetColIdx(ZELQprob *prob, const char *name, int *p_idx);
ZELQ_API int ZELQ_GetRowIdx(ZELQprob *prob, const char *name, int *p_idx);
/* Name of a column / row ("C<j>" / "R<i>" when unnamed); pReqSize gets the size with terminator.
   buff null is a size query; a buffer too short gets a cut-short copy and the call returns 3. */
ZELQ_API int ZELQ_GetColName(ZELQprob *prob, int iCol, char *buff, int buffLen, int *pReqSize);
ZELQ_API int ZELQ_GetRowName(ZELQprob *prob, int iRow, char *buff, int buffLen, int *pReqSize);
/* Per-element information by name (ZELQ_DBLINFO_*); list null with num = count means all. */
ZELQ_API int ZELQ_GetColInfo(ZELQprob *prob, const char *infoName, int num, const int *list,
                             double *info);
ZELQ_API int ZELQ_GetRowInfo(ZELQprob *prob, const char *infoName, int num, const int *list,
                             double *info);
/* Sets the listed objective coefficients and zeroes every other one. */
ZELQ_API int ZELQ_ReplaceColObj(ZELQprob *prob, int num, const int *list, const double *obj);
ZELQ_API int ZELQ_SetObjSense(ZELQprob *prob, int iObjSense);
ZELQ_API int ZELQ_SetObjConst(ZELQprob *prob, double dObjConst);

/* ==== Lazy constraints and user cuts ============================================================
   Kept apart from the rows; the solver enforces lazy constraints and may use user cuts. */
ZELQ_API int ZELQ_AddLazyConstr(ZELQprob *prob, int nRowMatCnt, const int *rowMatIdx,
                                const double *rowMatElem, char cRowSense, double dRowBound,
                                double dRowUpper, const char *rowName);
ZELQ_API int ZELQ_AddLazyConstrs(ZELQprob *prob, int nRow, const int *rowMatBeg,
                                 const int *rowMatCnt, const int *rowMatIdx,
                                 const double *rowMatElem, const char *rowSense,
                                 const double *rowBound, const double *rowUpper,
                                 char const *const *rowNames);
ZELQ_API int ZELQ_AddUserCut(ZELQprob *prob, int nRowMatCnt, const int *rowMatIdx,
                             const double *rowMatElem, char cRowSense, double dRowBound,
                             double dRowUpper, const char *rowName);
ZELQ_API int ZELQ_AddUserCuts(ZELQprob *prob, int nRow, const int *rowMatBeg,
                              const int *rowMatCnt, const int *rowMatIdx,
                              const double *rowMatElem, const char *rowSense,
                              const double *rowBound, const double *rowUpper,
                              char const *const *rowNames);

/* ==== Quadratic (not supported by this build yet) =============================================== */
/* Quadratic terms are (qMatRow[k], qMatCol[k], qMatElem[k]) triples meaning elem * x_row * x_col. */
ZELQ_API int ZELQ_AddQConstr(ZELQprob *prob, int nRowMatCnt, const int *rowMatIdx,
                             const double *rowMatElem, int nQMatElem, const int *qMatRow,
                             const int *qMatCol, const double *qMatElem, char cRowSense,
                             double dRowBound, const char *name);
ZELQ_API int ZELQ_GetQConstr(ZELQprob *prob, int idx, int *p_nRowMatCnt, int *rowMatIdx,
                             double *rowMatElem, int *p_nQMatElem, int *qMatRow, int *qMatCol,
                             double *qMatElem, char *p_cRowSense, double *p_dRowBound,
                             int nRowMatSize, int *pRowMatReqSize, int nQMatSize,
                             int *pQMatReqSize);
ZELQ_API int ZELQ_DelQConstrs(ZELQprob *prob, int num, const int *list);
ZELQ_API int ZELQ_SetQuadObj(ZELQprob *prob, int num, const int *qRow, const int *qCol,
                             const double *qElem);
ZELQ_API int ZELQ_GetQuadObj(ZELQprob *prob, int *p_nQElem, int *qRow, int *qCol,
                             double *qElem);
ZELQ_API int ZELQ_DelQuadObj(ZELQprob *prob);
ZELQ_API int ZELQ_SetQConstrSense(ZELQprob *prob, int num, const int *list, const char *sense);
ZELQ_API int ZELQ_SetQConstrRhs(ZELQprob *prob, int num, const int *list, const double *rhs);
ZELQ_API int ZELQ_SetQConstrNames(ZELQprob *prob, int num, const int *list,
                                  char const *const *names);
ZELQ_API int ZELQ_GetQConstrSense(ZELQprob *prob, int num, const int *list, char *sense);
ZELQ_API int ZELQ_GetQConstrRhs(ZELQprob *prob, int num, const int *list, double *rhs);
ZELQ_API int ZELQ_GetQConstrIdx(ZELQprob *prob, const char *name, int *p_idx);
ZELQ_API int ZELQ_GetQConstrName(ZELQprob *prob, int idx, char *buff, int buffLen,
                                 int *pReqSize);
ZELQ_API int ZELQ_GetQConstrInfo(ZELQprob *prob, const char *infoName, int num,
                                 const int *list, double *info);

/* ==== Semidefinite and LMI (not supported by this build yet) ==================================== */
ZELQ_API int ZELQ_AddPSDCol(ZELQprob *prob, int colDim, const char *name);
ZELQ_API int ZELQ_AddPSDCols(ZELQprob *prob, int nCol, const int *colDims,
                             char const *const *names);
ZELQ_API int ZELQ_DelPSDCols(ZELQprob *prob, int num, const int *list);
ZELQ_API int ZELQ_GetPSDCols(ZELQprob *prob, int num, const int *list, int *colDims,
                             int *colLens);
ZELQ_API int ZELQ_AddPSDConstr(ZELQprob *prob, int nRowMatCnt, const int *rowMatIdx,
                               const double *rowMatElem, int nColCnt, const int *psdColIdx,
                               const int *symMatIdx, char cRowSense, double dRowBound,
                               double dRowUpper, const char *name);
ZELQ_API int ZELQ_GetPSDConstr(ZELQprob *prob, int idx, int *p_nRowMatCnt, int *rowMatIdx,
                               double *rowMatElem, int *p_nColCnt, int *psdColIdx,
                               int *symMatIdx, double *p_dRowLower, double *p_dRowUpper,
                               int nRowMatSize, int *pRowMatReqSize, int nColSize,
                               int *pColReqSize);
ZELQ_API int ZELQ_DelPSDConstrs(ZELQprob *prob, int num, const int *list);
ZELQ_API int ZELQ_AddLMIConstr(ZELQprob *prob, int nDim, int nLMIMatCnt, const int *colIdx,
                               const int *symMatIdx, int constMatIdx, const char *name);
ZELQ_API int ZELQ_GetLMIConstr(ZELQprob *prob, int idx, int *p_nDim, int *p_nLMILen,
                               int *colIdx, int *symMatIdx, int *p_constMatIdx, int nLMISize,
                               int *pLMIReqSize);
ZELQ_API int ZELQ_DelLMIConstrs(ZELQprob *prob, int num, const int *list);
ZELQ_API int ZELQ_GetPSDElem(ZELQprob *prob, int iCol, int iRow, int *p_symMatIdx);
ZELQ_API int ZELQ_SetPSDElem(ZELQprob *prob, int iCol, int iRow, int symMatIdx);
ZELQ_API int ZELQ_GetLMIElem(ZELQprob *prob, int iCol, int iRow, int *p_symMatIdx);
ZELQ_API int ZELQ_SetLMIElem(ZELQprob *prob, int iCol, int iRow, int symMatIdx);
/* Symmetric matrix of dimension ndim from lower-triangle (row, col, value) triples. */
ZELQ_API int ZELQ_AddSymMat(ZELQprob *prob, int ndim, int nElem, const int *rows,
                            const int *cols, const double *elems);
ZELQ_API int ZELQ_GetSymMat(ZELQprob *prob, int iMat, int *p_nDim, int *p_nElem, int *rows,
                            int *cols, double *elems);
ZELQ_API int ZELQ_GetPSDObj(ZELQprob *prob, int iCol, int *p_symMatIdx);
ZELQ_API int ZELQ_DelPSDObj(ZELQprob *prob);
ZELQ_API int ZELQ_ReplacePSDObj(ZELQprob *prob, int num, const int *list, const int *symMatIdx);
ZELQ_API int ZELQ_SetPSDColNames(ZELQprob *prob, int num, const int *list,
                                 char const *const *names);
ZELQ_API int ZELQ_SetPSDConstrLower(ZELQprob *prob, int num, const int *list,
                                    const double *lower);
ZELQ_API int ZELQ_SetPSDConstrUpper(ZELQprob *prob, int num, const int *list,
                                    const double *upper);
ZELQ_API int ZELQ_SetPSDConstrNames(ZELQprob *prob, int num, const int *list,
                                    char const *const *names);
ZELQ_API int ZELQ_SetLMIConstrRhs(ZELQprob *prob, int num, const int *list,
                                  const int *constMatIdx);
ZELQ_API int ZELQ_SetLMIConstrNames(ZELQprob *prob, int num, const int *list,
                                    char const *const *names);
ZELQ_API int ZELQ_GetLMIConstrRhs(ZELQprob *prob, int num, const int *list, int *constMatIdx);
ZELQ_API int ZELQ_GetPSDColIdx(ZELQprob *prob, const char *name, int *p_idx);
ZELQ_API int ZELQ_GetPSDConstrIdx(ZELQprob *prob, const char *name, int *p_idx);
ZELQ_API int ZELQ_GetLMIConstrIdx(ZELQprob *prob, const char *name, int *p_idx);
ZELQ_API int ZELQ_GetPSDColName(ZELQprob *prob, int idx, char *buff, int buffLen,
                                int *pReqSize);
ZELQ_API int ZELQ_GetPSDConstrName(ZELQprob *prob, int idx, char *buff, int buffLen,
                                   int *pReqSize);
ZELQ_API int ZELQ_GetLMIConstrName(ZELQprob *prob, int idx, char *buff, int buffLen,
                                   int *pReqSize);
ZELQ_API int ZELQ_GetPSDColInfo(ZELQprob *prob, const char *infoName, int iCol, double *info);
ZELQ_API int ZELQ_GetPSDConstrInfo(ZELQprob *prob, const char *infoName, int num,
                                   const int *list, double *info);
ZELQ_API int ZELQ_GetLMIConstrInfo(ZELQprob *prob, const char *infoName, int iLMI,
                                   double *info);
/* Full packed lower triangles of every PSD column / LMI slack; size query with null buffers. */
ZELQ_API int ZELQ_GetPSDSolution(ZELQprob *prob, double *psdColValue, double *psdRowSlack,
                                 double *psdRowDual, double *psdColDual);
ZELQ_API int ZELQ_GetLMISolution(ZELQprob *prob, double *lmiSlack, double *lmiDual);

/* ==== Cones, SOS, indicators (not supported by this build yet) ================================ */
ZELQ_API int ZELQ_AddCones(ZELQprob *prob, int nCone, const int *coneType, const int *coneBeg,
                           const int *coneCnt, const int *coneIdx);
ZELQ_API int ZELQ_GetCones(ZELQprob *prob, int nCone, const int *list, int *coneType,
                           int *coneBeg, int *coneCnt, int *coneIdx, int nElemSize,
                           int *pReqSize);
ZELQ_API int ZELQ_DelCones(ZELQprob *prob, int nCone, const int *list);
ZELQ_API int ZELQ_AddExpCones(ZELQprob *prob, int nCone, const int *coneType,
                              const int *coneIdx);
ZELQ_API int ZELQ_GetExpCones(ZELQprob *prob, int nCone, const int *list, int *coneType,
                              int *coneIdx, int nElemSize, int *pReqSize);
ZELQ_API int ZELQ_DelExpCones(ZELQprob *prob, int nCone, const int *list);
ZELQ_API int ZELQ_AddAffineCone(ZELQprob *prob, int coneType, int nRow, int nElem,
                                const int *rowMatBeg, const int *rowMatCnt,
                                const int *rowMatIdx, const double *rowMatElem,
                                const double *rowConst, const char *name);
ZELQ_API int ZELQ_GetAffineCone(ZELQprob *prob, int idx, int *p_coneType, int *p_nRow,
                                int *p_nElem, int *rowMatBeg, int *rowMatCnt, int *rowMatIdx,
                                double *rowMatElem, double *rowConst, int nElemSize,
                                int *pReqSize);
ZELQ_API int ZELQ_DelAffineCones(ZELQprob *prob, int num, const int *list);
ZELQ_API int ZELQ_SetAffineConeNames(ZELQprob *prob, int num, const int *list,
                                     char const *const *names);
ZELQ_API int ZELQ_GetAffineConeIdx(ZELQprob *prob, const char *name, int *p_idx);
ZELQ_API int ZELQ_GetAffineConeName(ZELQprob *prob, int idx, char *buff, int buffLen,
                                    int *pReqSize);
ZELQ_API int ZELQ_AddSOSs(ZELQprob *prob, int nSos, const int *sosType, const int *sosBeg,
                          const int *sosCnt, const int *sosIdx, const double *sosWt);
ZELQ_API int ZELQ_GetSOSs(ZELQprob *prob, int nSos, const int *list, int *sosType, int *sosBeg,
                          int *sosCnt, int *sosIdx, double *sosWt, int nElemSize,
                          int *pReqSize);
ZELQ_API int ZELQ_DelSOSs(ZELQprob *prob, int nSos, const int *list);
/* Indicator k: if column binColIdx[k] equals binColVal[k] then the row (CSR entry k) holds. */
ZELQ_API int ZELQ_AddIndicators(ZELQprob *prob, int nInd, const int *binColIdx,
                                const int *binColVal, const int *rowMatBeg,
                                const int *rowMatCnt, const int *rowMatIdx,
                                const double *rowMatElem, const char *rowSense,
                                const double *rowBound, char const *const *names);
ZELQ_API int ZELQ_GetIndicators(ZELQprob *prob, int nInd, const int *list, int *binColIdx,
                                int *binColVal, int *rowMatBeg, int *rowMatCnt, int *rowMatIdx,
                                double *rowMatElem, char *rowSense, double *rowBound,
                                int nElemSize, int *pReqSize);
ZELQ_API int ZELQ_DelIndicators(ZELQprob *prob, int num, const int *list);
ZELQ_API int ZELQ_SetIndicatorNames(ZELQprob *prob, int num, const int *list,
                                    char const *const *names);
ZELQ_API int ZELQ_GetIndicatorIdx(ZELQprob *prob, const char *name, int *p_idx);
ZELQ_API int ZELQ_GetIndicatorName(ZELQprob *prob, int idx, char *buff, int buffLen,
                                   int *pReqSize);

/* ==== Nonlinear (not supported by this build yet) =============================================
   Expressions are postfix token lists (operator codes and operands) plus a constant pool. */
ZELQ_API int ZELQ_AddNLConstr(ZELQprob *prob, int nToken, int nConst, const int *tokens,
                              const double *constants, char cRowSense, double dRowBound,
                              double dRowUpper, const char *name);
ZELQ_API int ZELQ_AddNLConstrs(ZELQprob *prob, int nRow, const int *tokenBeg,
                               const int *tokenCnt, const int *tokens, const int *constBeg,
                               const int *constCnt, const double *constants,
                               const char *rowSense, const double *rowBound,
                               const double *rowUpper, char const *const *names);
ZELQ_API int ZELQ_GetNLConstr(ZELQprob *prob, int idx, int *p_nToken, int *p_nConst,
                              int *tokens, double *constants, double *p_dRowLower,
                              double *p_dRowUpper);
ZELQ_API int ZELQ_DelNLConstrs(ZELQprob *prob, int num, const int *list);
ZELQ_API int ZELQ_SetNLObj(ZELQprob *prob, int nToken, int nConst, const int *tokens,
                           const double *constants);
ZELQ_API int ZELQ_GetNLObj(ZELQprob *prob, int *p_nToken, int *p_nConst, int *tokens,
                           double *constants);
ZELQ_API int ZELQ_DelNLObj(ZELQprob *prob);
ZELQ_API int ZELQ_SetNLConstrLower(ZELQprob *prob, int num, const int *list,
                                   const double *lower);
ZELQ_API int ZELQ_SetNLConstrUpper(ZELQprob *prob, int num, const int *list,
                                   const double *upper);
ZELQ_API int ZELQ_SetNLConstrNames(ZELQprob *prob, int num, const int *list,
                                   char const *const *names);
ZELQ_API int ZELQ_GetNLConstrIdx(ZELQprob *prob, const char *name, int *p_idx);
ZELQ_API int ZELQ_GetNLConstrName(ZELQprob *prob, int idx, char *buff, int buffLen,
                                  int *pReqSize);
ZELQ_API int ZELQ_GetNLConstrInfo(ZELQprob *prob, const char *infoName, int num,
                                  const int *list, double *info);
ZELQ_API int ZELQ_SetNLPrimalStart(ZELQprob *prob, int num, const int *list,
                                   const double *values);

/* ==== Multiple objectives (not supported by this build yet) ===================================== */
ZELQ_API int ZELQ_MultiObjSetColObj(ZELQprob *prob, int iObj, int num, const int *list,
                                    const double *obj);
ZELQ_API int ZELQ_MultiObjGetColObj(ZELQprob *prob, int iObj, int num, const int *list,
                                    double *obj);
ZELQ_API int ZELQ_MultiObjDelColObj(ZELQprob *prob, int iObj);
ZELQ_API int ZELQ_MultiObjSetObjSense(ZELQprob *prob, int iObj, int iObjSense);
ZELQ_API int ZELQ_MultiObjSetObjConst(ZELQprob *prob, int iObj, double dObjConst);
ZELQ_API int ZELQ_MultiObjSetObjParam(ZELQprob *prob, int iObj, const char *name,
                                      double value);
ZELQ_API int ZELQ_MultiObjGetObjParam(ZELQprob *prob, int iObj, const char *name,
                                      double *p_value);
ZELQ_API int ZELQ_MultiObjResetObjParam(ZELQprob *prob, int iObj);
ZELQ_API int ZELQ_MultiObjSetIntParam(ZELQprob *prob, int iObj, const char *name, int value);
ZELQ_API int ZELQ_MultiObjGetIntParam(ZELQprob *prob, int iObj, const char *name, int *p_value);
ZELQ_API int ZELQ_MultiObjSetDblParam(ZELQprob *prob, int iObj, const char *name, double value);
ZELQ_API int ZELQ_MultiObjGetDblParam(ZELQprob *prob, int iObj, const char *name,
                                      double *p_value);
ZELQ_API int ZELQ_MultiObjResetParam(ZELQprob *prob, int iObj);
ZELQ_API int ZELQ_MultiObjGetIntAttr(ZELQprob *prob, int iObj, const char *name, int *p_value);
ZELQ_API int ZELQ_MultiObjGetDblAttr(ZELQprob *prob, int iObj, const char *name,
                                     double *p_value);
ZELQ_API int ZELQ_MultiObjGetPoolObjVal(ZELQprob *prob, int iObj, int iSol, double *p_objVal);

/* ==== Files =====================================================================================
   Readers replace the problem's content (problem files) or load the named data into the current
   problem (solution, basis, start, order, parameters). Names ending in ".gz" are read compressed.
   Parse failures return 3 (2 for unreadable files) and leave the problem unchanged; the message
   ("file:line: problem") is available from ZELQ_GetLastError. Formats: see docs/file-formats.md. */
ZELQ_API int ZELQ_ReadMps(ZELQprob *prob, const char *mpsfilename);
ZELQ_API int ZELQ_ReadLp(ZELQprob *prob, const char *lpfilename);
ZELQ_API int ZELQ_ReadSDPA(ZELQprob *prob, const char *sdpafilename);
ZELQ_API int ZELQ_ReadCbf(ZELQprob *prob, const char *cbffilename);
ZELQ_API int ZELQ_ReadBin(ZELQprob *prob, const char *binfilename);
ZELQ_API int ZELQ_ReadSol(ZELQprob *prob, const char *solfilename);
ZELQ_API int ZELQ_ReadJsonSol(ZELQprob *prob, const char *jsonfilename);
ZELQ_API int ZELQ_ReadJsonStr(ZELQprob *prob, const char *str);
ZELQ_API int ZELQ_ReadBasis(ZELQprob *prob, const char *basfilename);
ZELQ_API int ZELQ_ReadMst(ZELQprob *prob, const char *mstfilename);
ZELQ_API int ZELQ_ReadOrd(ZELQprob *prob, const char *ordfilename);
ZELQ_API int ZELQ_ReadParam(ZELQprob *prob, const char *parfilename);
ZELQ_API int ZELQ_ReadTune(ZELQprob *prob, const char *tunefilename);
ZELQ_API int ZELQ_WriteMps(ZELQprob *prob, const char *mpsfilename);
ZELQ_API int ZELQ_WriteLp(ZELQprob *prob, const char *lpfilename);
ZELQ_API int ZELQ_WriteCbf(ZELQprob *prob, const char *cbffilename);
ZELQ_API int ZELQ_WriteBin(ZELQprob *prob, const char *binfilename);
ZELQ_API int ZELQ_WriteNL(ZELQprob *prob, const char *nlfilename);
ZELQ_API int ZELQ_WriteIIS(ZELQprob *prob, const char *iisfilename);
ZELQ_API int ZELQ_WriteRelax(ZELQprob *prob, const char *relaxfilename);
ZELQ_API int ZELQ_WriteSol(ZELQprob *prob, const char *solfilename);
ZELQ_API int ZELQ_WriteJsonSol(ZELQprob *prob, const char *jsonfilename);
/* JSON solution text; size query: buff null -> *pReqSize = bytes including the terminator. */
ZELQ_API int ZELQ_WriteJsonStr(ZELQprob *prob, char *buff, int buffSize, int *pReqSize);
ZELQ_API int ZELQ_WritePoolSol(ZELQprob *prob, int iSol, const char *solfilename);
ZELQ_API int ZELQ_WriteBasis(ZELQprob *prob, const char *basfilename);
ZELQ_API int ZELQ_WriteMst(ZELQprob *prob, const char *mstfilename);
ZELQ_API int ZELQ_WriteOrd(ZELQprob *prob, const char *ordfilename);
ZELQ_API int ZELQ_WriteParam(ZELQprob *prob, const char *parfilename);
ZELQ_API int ZELQ_WriteTuneParam(ZELQprob *prob, int idx, const char *parfilename);
/* MPS text; size query: buff null -> *pReqSize = bytes including the terminator. */
ZELQ_API int ZELQ_WriteMpsStr(ZELQprob *prob, char *buff, int buffSize, int *pReqSize);

/* ==== Solving =================================================================================== */
/* Solves the problem: LP with Clp, MIP with Cbc. Infeasible, unbounded, limits and interrupts are
   not failures: read the "Status" attribute. */
ZELQ_API int ZELQ_Solve(ZELQprob *prob);
/* Solves the LP relaxation (integrality dropped). */
ZELQ_API int ZELQ_SolveLp(ZELQprob *prob);
/* Asks a running solve to stop soon (safe from any thread, and harmless when idle). */
ZELQ_API int ZELQ_Interrupt(ZELQprob *prob);
/* Adds a (partial) MIP start: values of the listed columns; used by the next MIP solve. */
ZELQ_API int ZELQ_AddMipStart(ZELQprob *prob, int num, const int *list, const double *colVal);
ZELQ_API int ZELQ_ComputeIIS(ZELQprob *prob);
ZELQ_API int ZELQ_FeasRelax(ZELQprob *prob, const double *colLowPen, const double *colUppPen,
                            const double *rowBndPen, const double *rowUppPen);
ZELQ_API int ZELQ_Tune(ZELQprob *prob);
ZELQ_API int ZELQ_LoadTuneParam(ZELQprob *prob, int idx);

/* ==== Solutions and basis ======================================================================= */
/* Column values of the best MIP solution (or of the LP solution for an LP). */
ZELQ_API int ZELQ_GetSolution(ZELQprob *prob, double *colVal);
/* LP solution; any pointer may be null. slack = row activities. */
ZELQ_API int ZELQ_GetLpSolution(ZELQprob *prob, double *value, double *slack, double *rowDual,
                                double *redCost);
ZELQ_API int ZELQ_SetLpSolution(ZELQprob *prob, const double *value, const double *slack,
                                const double *rowDual, const double *redCost);
/* Basis status (ZELQ_BASIS_*) of every column / row; either pointer may be null. */
ZELQ_API int ZELQ_GetBasis(ZELQprob *prob, int *colBasis, int *rowBasis);
/* Sets a starting basis for the next LP solve. */
ZELQ_API int ZELQ_SetBasis(ZELQprob *prob, const int *colBasis, const int *rowBasis);
ZELQ_API int ZELQ_SetSlackBasis(ZELQprob *prob);
ZELQ_API int ZELQ_GetColBasis(ZELQprob *prob, int num, const int *list, int *colBasis);
ZELQ_API int ZELQ_GetRowBasis(ZELQprob *prob, int num, const int *list, int *rowBasis);
ZELQ_API int ZELQ_GetPoolObjVal(ZELQprob *prob, int iSol, double *p_objVal);
/* Values of the listed columns in pool solution iSol (list null: all columns). */
ZELQ_API int ZELQ_GetPoolSolution(ZELQprob *prob, int iSol, int num, const int *list,
                                  double *colVal);
/* With the optimal basis B of the last LP solve: FSolve solves B x = b, BSolve solves B' y = b.
   b and x/y are dense of length nRows; *p_len is the buffer length on entry (>= nRows) and the
   number of non-zeros of the result on return. Basis column i of B is basis head entry i. */
ZELQ_API int ZELQ_FSolve(ZELQprob *prob, const double *b, double *x, int *p_len);
ZELQ_API int ZELQ_BSolve(ZELQprob *prob, const double *b, double *y, int *p_len);
/* head[i] = j < nCols for a basic column, nCols + r for the slack (activity) of row r. */
ZELQ_API int ZELQ_GetBasisHead(ZELQprob *prob, int *head);
/* Range [*p_low, *p_up] of the value of row iRow's bound over which the current basis stays
   optimal, so its dual stays valid. side 0: the lower bound, 1: the upper bound. */
ZELQ_API int ZELQ_ComputeShadowPriceRange(ZELQprob *prob, int iRow, int side, double *p_low,
                                          double *p_up);

/* ==== IIS status (not supported by this build yet) ============================================= */
ZELQ_API int ZELQ_GetColLowerIIS(ZELQprob *prob, int num, const int *list, int *colLowerIIS);
ZELQ_API int ZELQ_GetColUpperIIS(ZELQprob *prob, int num, const int *list, int *colUpperIIS);
ZELQ_API int ZELQ_GetRowLowerIIS(ZELQprob *prob, int num, const int *list, int *rowLowerIIS);
ZELQ_API int ZELQ_GetRowUpperIIS(ZELQprob *prob, int num, const int *list, int *rowUpperIIS);
ZELQ_API int ZELQ_GetSOSIIS(ZELQprob *prob, int num, const int *list, int *sosIIS);
ZELQ_API int ZELQ_GetIndicatorIIS(ZELQprob *prob, int num, const int *list, int *indicatorIIS);

/* ==== Parameters and attributes =================================================================
   Names are case-insensitive; see docs/parameters.md. Out-of-range values return 3. */
ZELQ_API int ZELQ_SetIntParam(ZELQprob *prob, const char *paramName, int intParam);
ZELQ_API int ZELQ_GetIntParam(ZELQprob *prob, const char *paramName, int *p_intParam);
ZELQ_API int ZELQ_GetIntParamDef(ZELQprob *prob, const char *paramName, int *p_intParam);
ZELQ_API int ZELQ_GetIntParamMin(ZELQprob *prob, const char *paramName, int *p_intParam);
ZELQ_API int ZELQ_GetIntParamMax(ZELQprob *prob, const char *paramName, int *p_intParam);
ZELQ_API int ZELQ_SetDblParam(ZELQprob *prob, const char *paramName, double dblParam);
ZELQ_API int ZELQ_GetDblParam(ZELQprob *prob, const char *paramName, double *p_dblParam);
ZELQ_API int ZELQ_GetDblParamDef(ZELQprob *prob, const char *paramName, double *p_dblParam);
ZELQ_API int ZELQ_GetDblParamMin(ZELQprob *prob, const char *paramName, double *p_dblParam);
ZELQ_API int ZELQ_GetDblParamMax(ZELQprob *prob, const char *paramName, double *p_dblParam);
ZELQ_API int ZELQ_GetIntAttr(ZELQprob *prob, const char *attrName, int *p_intAttr);
ZELQ_API int ZELQ_GetDblAttr(ZELQprob *prob, const char *attrName, double *p_dblAttr);
/* Kind of a name (ZELQ_KIND_*), or -1 when unknown; prob may be null. */
ZELQ_API int ZELQ_SearchParamAttr(ZELQprob *prob, const char *name, int *p_kind);

/* ==== Logging and callbacks ===================================================================== */
/* Appends solver log lines to a file (null or "" stops). */
ZELQ_API int ZELQ_SetLogFile(ZELQprob *prob, const char *logfilename);
/* Sends every log line to cb (null removes it). */
ZELQ_API int ZELQ_SetLogCallback(ZELQprob *prob, ZELQlogcallback cb, void *userdata);
/* Sets (or with cb null, removes) the solve-time callback for the contexts in cbctx. */
ZELQ_API int ZELQ_SetCallback(ZELQprob *prob, ZELQcallback cb, int cbctx, void *userdata);
ZELQ_API int ZELQ_GetCallbackInfo(void *cbdata, const char *cbinfo, void *p_val);
/* Type (0 double, 1 int) and length (1 for scalars, nCols for vectors) of a callback info name. */
ZELQ_API int ZELQ_SearchCallbackInfo(ZELQprob *prob, const char *name, int *p_type, int *p_dim);
ZELQ_API int ZELQ_AddCallbackSolution(void *cbdata, const double *sol, double *p_objval);
ZELQ_API int ZELQ_AddCallbackUserCut(void *cbdata, int nRowMatCnt, const int *rowMatIdx,
                                     const double *rowMatElem, char cRowSense, double dRowRhs);
ZELQ_API int ZELQ_AddCallbackUserCuts(void *cbdata, int nRow, const int *rowMatBeg,
                                      const int *rowMatCnt, const int *rowMatIdx,
                                      const double *rowMatElem, const char *rowSense,
                                      const double *rowRhs);
ZELQ_API int ZELQ_AddCallbackLazyConstr(void *cbdata, int nRowMatCnt, const int *rowMatIdx,
                                        const double *rowMatElem, char cRowSense,
                                        double dRowRhs);
ZELQ_API int ZELQ_AddCallbackLazyConstrs(void *cbdata, int nRow, const int *rowMatBeg,
                                         const int *rowMatCnt, const int *rowMatIdx,
                                         const double *rowMatElem, const char *rowSense,
                                         const double *rowRhs);

#ifdef __cplusplus
}
#endif

#endif /* ZELQ_ZELQ_H */
