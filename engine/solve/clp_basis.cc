// Basis operations on the last optimal LP basis: forward and backward solves with B, the basis
// head, and the range of a row bound over which the basis stays optimal.
//
// The factorization comes from OsiClpSolverInterface (getBInvCol / getBInvRow unscale for us).
// Osi's column for a basic slack may be -e_r; our B uses +e_r (the all-slack basis is the
// identity), so results are corrected by the sign Osi uses, measured from a basic slack.
#include <algorithm>
#include <cmath>
#include <vector>

#include "api/guard.h"
#include "solve/clp_internal.h"
#include "solve/coin_model.h"
#include "solve/lp_cache.h"
#include "solve/solver.h"

namespace zelq::engine {

namespace {

// Enables the factorization for the lifetime of the object.
class Factorized {
 public:
  explicit Factorized(LpCache* c) : c_(c), m_(c->rows), head_(m_), col_(m_) {
    c_->Osi()->enableFactorization();
    c_->Osi()->getBasics(head_.data());
    slackSign_ = MeasureSlackSign();
  }
  ~Factorized() { c_->Osi()->disableFactorization(); }
  Factorized(const Factorized&) = delete;
  Factorized& operator=(const Factorized&) = delete;

  const std::vector<int>& head() const { return head_; }
  // D_k: -1 when Osi's basis column k is -e_r for a slack, else +1.
  double Sign(int k) const { return head_[k] >= c_->cols ? slackSign_ : 1.0; }

  // x = B^-1 b in our convention.
  void Forward(const double* b, double* x) {
    std::fill(x, x + m_, 0.0);
    for (int r = 0; r < m_; ++r) {
      if (b[r] == 0.0) continue;
      c_->Osi()->getBInvCol(r, col_.data());
      for (int k = 0; k < m_; ++k) x[k] += b[r] * col_[k];
    }
    for (int k = 0; k < m_; ++k) x[k] *= Sign(k);
  }
  // y = B^-T b in our convention.
  void Backward(const double* b, double* y) {
    std::fill(y, y + m_, 0.0);
    for (int k = 0; k < m_; ++k) {
      double bk = b[k] * Sign(k);
      if (bk == 0.0) continue;
      c_->Osi()->getBInvRow(k, col_.data());
      for (int r = 0; r < m_; ++r) y[r] += bk * col_[r];
    }
  }

 private:
  double MeasureSlackSign() {
    for (int k = 0; k < m_; ++k) {
      if (head_[k] < c_->cols) continue;
      c_->Osi()->getBInvCol(head_[k] - c_->cols, col_.data());
      return col_[k] < 0 ? -1.0 : 1.0;
    }
    return 1.0;
  }

  LpCache* c_;
  int m_;
  std::vector<int> head_;
  std::vector<double> col_;
  double slackSign_ = 1.0;
};

int CheckCache(ZELQprob* prob) {
  LpCache* c = prob->lpCache.get();
  if (c == nullptr || !c->optimalBasis)
    return Fail(prob, ZELQ_RETCODE_INVALID, "no factorized basis: solve the LP first");
  if (c->rows != c->modelRows)
    return Fail(prob, ZELQ_RETCODE_NOTSUPPORTED,
                "basis operations are not available while lazy constraints or user cuts are "
                "part of the LP (%d extra rows)", c->rows - c->modelRows);
  return ZELQ_RETCODE_OK;
}

int CountNonZeros(const double* v, int n) {
  int nnz = 0;
  for (int i = 0; i < n; ++i) nnz += v[i] != 0.0;
  return nnz;
}

// Range of delta for which every basic value v + delta * g stays within its bounds. Values
// are first clipped to their bounds so that solver tolerances do not widen the range.
void RatioTest(const std::vector<double>& v0, const std::vector<double>& g,
               const std::vector<double>& lo, const std::vector<double>& up, double* dMin,
               double* dMax) {
  *dMin = -HUGE_VAL;
  *dMax = HUGE_VAL;
  for (size_t i = 0; i < v0.size(); ++i) {
    if (std::fabs(g[i]) < 1e-12) continue;
    const double v = std::min(std::max(v0[i], lo[i]), up[i]);
    double toUp = up[i] < 1e30 ? (up[i] - v) / g[i] : (g[i] > 0 ? HUGE_VAL : -HUGE_VAL);
    double toLo = lo[i] > -1e30 ? (lo[i] - v) / g[i] : (g[i] > 0 ? -HUGE_VAL : HUGE_VAL);
    *dMax = std::min(*dMax, std::max(toUp, toLo));
    *dMin = std::max(*dMin, std::min(toUp, toLo));
  }
}

double ClampOut(double v) { return std::isfinite(v) ? FromCoinBound(v) : (v > 0 ? kInf : -kInf); }

}  // namespace

int BasisFSolve(ZELQprob* prob, const double* b, double* x, int* nnz) {
  if (int rc = CheckCache(prob)) return rc;
  // Without rows B is empty: Osi has no basis head to factorize (and asserts on one).
  if (prob->lpCache->rows == 0) return *nnz = 0, ZELQ_RETCODE_OK;
  Factorized f(prob->lpCache.get());
  f.Forward(b, x);
  *nnz = CountNonZeros(x, prob->lpCache->rows);
  return ZELQ_RETCODE_OK;
}

int BasisBSolve(ZELQprob* prob, const double* b, double* y, int* nnz) {
  if (int rc = CheckCache(prob)) return rc;
  if (prob->lpCache->rows == 0) return *nnz = 0, ZELQ_RETCODE_OK;
  Factorized f(prob->lpCache.get());
  f.Backward(b, y);
  *nnz = CountNonZeros(y, prob->lpCache->rows);
  return ZELQ_RETCODE_OK;
}

int BasisHead(ZELQprob* prob, int* head) {
  if (int rc = CheckCache(prob)) return rc;
  if (prob->lpCache->rows == 0) return ZELQ_RETCODE_OK;
  Factorized f(prob->lpCache.get());
  std::copy(f.head().begin(), f.head().end(), head);
  return ZELQ_RETCODE_OK;
}

int ShadowPriceRange(ZELQprob* prob, int row, int side, double* low, double* up) {
  if (int rc = CheckCache(prob)) return rc;
  LpCache* c = prob->lpCache.get();
  ClpSimplex* m = c->Model();
  const double rl = m->rowLower()[row], ru = m->rowUpper()[row];
  const double act = m->primalRowSolution()[row];
  ClpSimplex::Status st = m->getRowStatus(row);
  const bool fixed = rl == ru;
  const bool active = st != ClpSimplex::basic &&
                      (fixed || (side == 0 ? st == ClpSimplex::atLowerBound
                                           : st == ClpSimplex::atUpperBound));
  if (!active) {  // the bound does not bind: it may move until it reaches the activity
    *low = side == 0 ? -kInf : act;
    *up = side == 0 ? act : kInf;
    return ZELQ_RETCODE_OK;
  }
  Factorized f(c);
  const int rows = c->rows;
  std::vector<double> e(rows, 0.0), g(rows), v(rows), lo(rows), upb(rows);
  e[row] = 1.0;
  f.Forward(e.data(), g.data());
  for (int k = 0; k < rows; ++k) {
    int j = f.head()[k];
    if (j >= c->cols) g[k] = -g[k];  // our slack column +e_r is -1 times the activity's
    if (j < c->cols) {
      v[k] = m->primalColumnSolution()[j];
      lo[k] = m->columnLower()[j];
      upb[k] = m->columnUpper()[j];
    } else {
      v[k] = m->primalRowSolution()[j - c->cols];
      lo[k] = m->rowLower()[j - c->cols];
      upb[k] = m->rowUpper()[j - c->cols];
    }
  }
  double dMin, dMax;
  RatioTest(v, g, lo, upb, &dMin, &dMax);
  const double beta = side == 0 ? rl : ru;
  double hi = beta + dMax, lw = beta + dMin;
  if (!fixed && side == 0) hi = std::min(hi, ru);
  if (!fixed && side == 1) lw = std::max(lw, rl);
  *low = ClampOut(lw);
  *up = ClampOut(hi);
  return ZELQ_RETCODE_OK;
}

}  // namespace zelq::engine
