// Attributes: sizes and statistics of the content, and results of the last solve.
//
// Conventions: counts of problem classes this build does not hold (quadratic, cones, PSD,
// nonlinear, IIS, tuning, multiple objectives) are 0. Results with no value yet (before a solve,
// or after a change of the content) read as the solver's "none": ObjVal, LpObjVal, BestObj,
// BestGap and FeasRelaxObj 1e30, BestBnd -1e30, counts 0. Min/Max statistics look at the
// non-zero magnitudes (bounds and right-hand sides: finite ones only) and are 0 when there is
// none.
#include <sys/resource.h>

#include <algorithm>
#include <cmath>

#include "api/checks.h"

using namespace zelq::engine;

namespace {

// Smallest and largest magnitude of the non-zero (and, for bounds, finite) values.
struct Range {
  double lo = 0, hi = 0;
  bool any = false;
  void Add(double v) {
    const double a = std::fabs(v);
    if (a == 0.0 || a >= kInf) return;
    lo = any ? std::min(lo, a) : a;
    hi = any ? std::max(hi, a) : a;
    any = true;
  }
};

Range ElemRange(const Problem& p) {
  Range r;
  for (int i = 0; i < p.rows(); ++i)
    for (double v : p.matrix.RowVal(i)) r.Add(v);
  return r;
}

Range VecRange(const std::vector<double>& a, const std::vector<double>* b = nullptr) {
  Range r;
  for (double v : a) r.Add(v);
  if (b)
    for (double v : *b) r.Add(v);
  return r;
}

int Clamp(int64_t v) { return static_cast<int>(std::min<int64_t>(v, INT32_MAX)); }

int IntValue(const ZELQprob* prob, IntAttr a) {
  const Problem& p = prob->problem;
  const Solution& s = prob->solution;
  switch (a) {
    case IntAttr::Cols: return p.cols();
    case IntAttr::Rows: return p.rows();
    case IntAttr::Elems: return Clamp(p.matrix.nnz());
    case IntAttr::Bins: return p.CountType('B');
    case IntAttr::Ints: return p.CountType('I');
    case IntAttr::ObjSense: return p.objSense;
    case IntAttr::Status: return s.status;
    case IntAttr::LpStatus: return s.lpStatus;
    case IntAttr::MipStatus: return s.mipStatus;
    case IntAttr::HasSol: return s.HasSol();
    case IntAttr::HasLpSol: return s.hasLpSol;
    case IntAttr::HasMipSol: return s.hasMipSol;
    case IntAttr::HasBasis: return s.hasBasis;
    case IntAttr::HasDualFarkas: return s.hasDualFarkas;
    case IntAttr::HasPrimalRay: return s.hasPrimalRay;
    case IntAttr::HasSensitivity: return prob->lpCache != nullptr;
    case IntAttr::SimplexIter: return Clamp(s.simplexIter);
    case IntAttr::BarrierIter: return Clamp(s.barrierIter);
    case IntAttr::NodeCnt: return Clamp(s.nodeCnt);
    case IntAttr::PoolSols: return static_cast<int>(s.pool.size());
    case IntAttr::IsMIP: return p.IsMip();
    case IntAttr::HasBranchFactor:
      return std::any_of(p.branchFactor.begin(), p.branchFactor.end(),
                         [](double f) { return f != 0.0; });
    case IntAttr::LazyCons: return p.lazy.count();
    case IntAttr::LazyConsElems: return static_cast<int>(p.lazy.idx.size());
    case IntAttr::LpMethodUsed: return s.lpMethodUsed;
    default: return 0;  // families this build does not hold, and unused diagnostics
  }
}

double PeakMemoryMb() {
  rusage ru{};
  if (getrusage(RUSAGE_SELF, &ru) != 0) return 0.0;
  return static_cast<double>(ru.ru_maxrss) / 1024.0;  // ru_maxrss is in KiB on Linux
}

double DblValue(const ZELQprob* prob, DblAttr a) {
  const Problem& p = prob->problem;
  const Solution& s = prob->solution;
  switch (a) {
    case DblAttr::SolvingTime: return s.solvingTime;
    case DblAttr::ObjConst: return p.objConst;
    case DblAttr::ObjVal: return s.objVal;
    case DblAttr::ObjBound: return s.hasMipSol || s.mipStatus != 0 ? s.bestBnd : s.lpObjVal;
    case DblAttr::LpObjVal: return s.lpObjVal;
    case DblAttr::BestObj: return s.bestObj;
    case DblAttr::BestBnd: return s.bestBnd;
    case DblAttr::BestGap: return s.bestGap;
    case DblAttr::FeasRelaxObj: return kInf;
    case DblAttr::MemPeak: return PeakMemoryMb();
    case DblAttr::MinElem: return ElemRange(p).lo;
    case DblAttr::MaxElem: return ElemRange(p).hi;
    case DblAttr::MinBound: return VecRange(p.colLower, &p.colUpper).lo;
    case DblAttr::MaxBound: return VecRange(p.colLower, &p.colUpper).hi;
    case DblAttr::MinCost: return VecRange(p.obj).lo;
    case DblAttr::MaxCost: return VecRange(p.obj).hi;
    case DblAttr::MinRHS: return VecRange(p.rowLower, &p.rowUpper).lo;
    case DblAttr::MaxRHS: return VecRange(p.rowLower, &p.rowUpper).hi;
    default: return 0.0;  // quadratic statistics and unused diagnostics
  }
}

// Looks up an attribute name of the wanted kind; code 3 with a message otherwise.
int Lookup(ZELQprob* prob, const char* name, NameKind want, const void* out, int* index) {
  if (name == nullptr || out == nullptr)
    return Fail(prob, ZELQ_RETCODE_INVALID, "%s is null", name ? "the output pointer" : "name");
  NameRef ref{};
  if (!FindName(name, &ref))
    return Fail(prob, ZELQ_RETCODE_INVALID, "unknown attribute %s",
                QuoteForMessage(name).c_str());
  if (ref.kind != want)
    return Fail(prob, ZELQ_RETCODE_INVALID, "%s is a %s, not a %s", ref.name, KindText(ref.kind),
                KindText(want));
  *index = ref.index;
  return ZELQ_RETCODE_OK;
}

}  // namespace

int ZELQ_GetIntAttr(ZELQprob* prob, const char* attrName, int* p_intAttr) {
  return Guard(prob, __func__, [&]() -> int {
    int index = 0;
    if (int rc = Lookup(prob, attrName, NameKind::kIntAttr, p_intAttr, &index)) return rc;
    *p_intAttr = IntValue(prob, static_cast<IntAttr>(index));
    return ZELQ_RETCODE_OK;
  });
}

int ZELQ_GetDblAttr(ZELQprob* prob, const char* attrName, double* p_dblAttr) {
  return Guard(prob, __func__, [&]() -> int {
    int index = 0;
    if (int rc = Lookup(prob, attrName, NameKind::kDblAttr, p_dblAttr, &index)) return rc;
    *p_dblAttr = DblValue(prob, static_cast<DblAttr>(index));
    return ZELQ_RETCODE_OK;
  });
}
