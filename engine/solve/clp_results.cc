// Reading results out of a solved Clp model: solution vectors in the original objective sense,
// basis codes, and normalised Farkas certificates and unbounded rays.
#include <algorithm>
#include <cmath>
#include <memory>

#include "solve/clp_internal.h"

namespace zelq::engine {

int FromClpStatus(ClpSimplex::Status s, double lo, double up) {
  switch (s) {
    case ClpSimplex::basic:
      return ZELQ_BASIS_BASIC;
    case ClpSimplex::isFixed:
      return ZELQ_BASIS_FIXED;
    case ClpSimplex::atUpperBound:
      return lo == up ? ZELQ_BASIS_FIXED : ZELQ_BASIS_UPPER;
    case ClpSimplex::atLowerBound:
      return lo == up ? ZELQ_BASIS_FIXED : ZELQ_BASIS_LOWER;
    default:  // isFree, superBasic
      return ZELQ_BASIS_SUPERBASIC;
  }
}

ClpSimplex::Status ToClpStatus(int code, double lo, double up, double* value) {
  const bool loFinite = lo > -1e30, upFinite = up < 1e30;
  if (code == ZELQ_BASIS_BASIC) return ClpSimplex::basic;
  if (code == ZELQ_BASIS_UPPER && !upFinite) code = ZELQ_BASIS_LOWER;
  if ((code == ZELQ_BASIS_LOWER || code == ZELQ_BASIS_FIXED) && !loFinite)
    code = upFinite ? ZELQ_BASIS_UPPER : ZELQ_BASIS_SUPERBASIC;
  switch (code) {
    case ZELQ_BASIS_LOWER:
    case ZELQ_BASIS_FIXED:
      *value = lo;
      return ClpSimplex::atLowerBound;
    case ZELQ_BASIS_UPPER:
      *value = up;
      return ClpSimplex::atUpperBound;
    default:
      *value = std::clamp(*value, loFinite ? lo : -1e30, upFinite ? up : 1e30);
      return (!loFinite && !upFinite) ? ClpSimplex::isFree : ClpSimplex::superBasic;
  }
}

namespace {

void StoreBasis(ZELQprob* prob, const CoinLpData& d, ClpSimplex* model) {
  Solution& s = prob->solution;
  s.colBasis.resize(d.cols);
  s.rowBasis.resize(d.modelRows);
  for (int j = 0; j < d.cols; ++j)
    s.colBasis[j] = FromClpStatus(model->getColumnStatus(j), d.colLower[j], d.colUpper[j]);
  for (int i = 0; i < d.modelRows; ++i)
    s.rowBasis[i] = FromClpStatus(model->getRowStatus(i), d.rowLower[i], d.rowUpper[i]);
  s.hasBasis = true;
  // The next LP solve of this problem starts from here.
  prob->startColBasis = s.colBasis;
  prob->startRowBasis = s.rowBasis;
}

}  // namespace

void StoreLpResults(ZELQprob* prob, const CoinLpData& d, ClpSimplex* model, bool withValues,
                    bool withBasis) {
  Solution& s = prob->solution;
  const Problem& p = prob->problem;
  if (withBasis) StoreBasis(prob, d, model);
  if (!withValues) return;
  const double sign = d.negated ? -1.0 : 1.0;
  const double* x = model->primalColumnSolution();
  const double* act = model->primalRowSolution();
  const double* y = model->dualRowSolution();
  const double* dj = model->dualColumnSolution();
  s.x.assign(x, x + d.cols);
  s.redcost.resize(d.cols);
  for (int j = 0; j < d.cols; ++j) s.redcost[j] = sign * dj[j];
  s.activity.assign(act, act + d.modelRows);
  s.dual.resize(d.modelRows);
  for (int i = 0; i < d.modelRows; ++i) s.dual[i] = sign * y[i];
  double obj = p.objConst;
  for (int j = 0; j < d.cols; ++j) obj += p.obj[j] * x[j];
  s.objVal = s.lpObjVal = obj;
  s.hasLpSol = true;
}

namespace {

// For a certificate y: max of (A'y)'x over the column bounds minus min of y'r over the row
// bounds. Negative proves infeasibility; +inf when a needed bound is infinite.
double FarkasGap(const CoinLpData& d, const std::vector<double>& y) {
  std::vector<double> z(d.cols, 0.0);
  for (int j = 0; j < d.cols; ++j)
    for (int k = d.beg[j]; k < d.beg[j + 1]; ++k) z[j] += d.val[k] * y[d.idx[k]];
  const double inf = HUGE_VAL;
  double maxZx = 0.0, minYr = 0.0;
  for (int j = 0; j < d.cols; ++j) {
    double bound = z[j] > 0 ? d.colUpper[j] : d.colLower[j];
    if (z[j] == 0) continue;
    if (std::fabs(bound) >= 1e30) return inf;
    maxZx += z[j] * bound;
  }
  for (int i = 0; i < d.rows; ++i) {
    double bound = y[i] > 0 ? d.rowLower[i] : d.rowUpper[i];
    if (y[i] == 0) continue;
    if (std::fabs(bound) >= 1e30) return inf;
    minYr += y[i] * bound;
  }
  return maxZx - minYr;
}

void NormaliseMaxAbs(std::vector<double>* v) {
  double m = 0.0;
  for (double a : *v) m = std::max(m, std::fabs(a));
  if (m > 0)
    for (double& a : *v) a /= m;
}

}  // namespace

bool StoreFarkas(ZELQprob* prob, const CoinLpData& d, ClpSimplex* model) {
  std::unique_ptr<double[]> ray(model->infeasibilityRay());
  if (!ray) return false;
  std::vector<double> y(ray.get(), ray.get() + d.rows);
  NormaliseMaxAbs(&y);
  // Clp's sign depends on the algorithm: keep the orientation that proves infeasibility.
  std::vector<double> neg(y);
  for (double& a : neg) a = -a;
  if (FarkasGap(d, neg) < FarkasGap(d, y)) y.swap(neg);
  y.resize(d.modelRows);
  prob->solution.farkas = std::move(y);
  prob->solution.hasDualFarkas = true;
  return true;
}

bool StoreRay(ZELQprob* prob, const CoinLpData& d, ClpSimplex* model) {
  std::unique_ptr<double[]> ray(model->unboundedRay());
  if (!ray) return false;
  std::vector<double> r(ray.get(), ray.get() + d.cols);
  NormaliseMaxAbs(&r);
  // Orient it so that it improves the minimised objective (the solver's form).
  double cr = 0.0;
  for (int j = 0; j < d.cols; ++j) cr += d.obj[j] * r[j];
  if (cr > 0)
    for (double& a : r) a = -a;
  for (double& a : r)
    if (std::fabs(a) < 1e-12) a = 0.0;
  prob->solution.ray = std::move(r);
  prob->solution.hasPrimalRay = true;
  return true;
}

}  // namespace zelq::engine
