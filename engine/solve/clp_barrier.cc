// Barrier solves with Clp's interior point method, on the part of the LP that needs it.
//
// Clp's barrier aborts the whole process ("primal off to infinity") when its iterates grow past
// 1e40, which happens on LPs with rows that have no entries or no bounds next to columns that
// appear in no row. Such rows and columns decide nothing the barrier could help with, so the
// barrier runs on the LP without them and their values are filled in afterwards: a left-out
// column sits at the bound its cost points to (0 clamped into its bounds when the cost is 0), a
// left-out row has dual 0. When the left-out part alone decides the problem (an empty row that
// excludes 0, a left-out column whose cost points to an infinite bound, nothing left), the dual
// simplex solves the whole LP instead.
#include <algorithm>
#include <memory>
#include <vector>

#include "ClpCholeskyBase.hpp"
#include "ClpEventHandler.hpp"
#include "ClpInterior.hpp"
#include "solve/clp_internal.h"

namespace zelq::engine {

namespace {

constexpr double kClpInf = 1e27;  // Clp reads bounds beyond this as infinite

struct BarrierPart {
  std::vector<int> rows, cols;  // kept rows and columns of the whole LP, in order
  std::vector<double> value;    // per column of the whole LP: the value of a left-out column
  bool simplex = false;         // the left-out part decides the LP: solve it with the simplex
  bool Whole(const ClpSimplex& m) const {
    return static_cast<int>(rows.size()) == m.numberRows() &&
           static_cast<int>(cols.size()) == m.numberColumns();
  }
};

// Value of a column without entries in a minimisation with cost c; false when that value is
// an infinite bound (the LP is unbounded if feasible) or the bounds exclude each other.
bool LeftOutValue(double c, double lo, double up, double* v) {
  if (lo > up) return false;
  *v = c > 0 ? lo : c < 0 ? up : std::clamp(0.0, lo, up);
  return *v > -kClpInf && *v < kClpInf;
}

BarrierPart PlanBarrierPart(const ClpSimplex& m) {
  const int n = m.numberColumns(), rowCount = m.numberRows();
  const CoinPackedMatrix* a = m.matrix();  // column ordered
  const CoinBigIndex* beg = a->getVectorStarts();
  const int* len = a->getVectorLengths();
  const int* idx = a->getIndices();
  const double* val = a->getElements();
  const double* rlo = m.rowLower();
  const double* rup = m.rowUpper();
  const double tol = m.primalTolerance();
  BarrierPart part;
  std::vector<char> keepRow(rowCount, 0);
  for (int j = 0; j < n; ++j)
    for (CoinBigIndex k = beg[j]; k < beg[j] + len[j]; ++k)
      if (val[k] != 0.0) keepRow[idx[k]] = 1;
  for (int i = 0; i < rowCount; ++i) {
    if (!keepRow[i] && (rlo[i] > tol || rup[i] < -tol)) part.simplex = true;  // 0 outside [lo, up]
    if (rlo[i] < -kClpInf && rup[i] > kClpInf) keepRow[i] = 0;                  // free row
    if (keepRow[i]) part.rows.push_back(i);
  }
  part.value.assign(n, 0.0);
  for (int j = 0; j < n; ++j) {
    bool used = false;
    for (CoinBigIndex k = beg[j]; k < beg[j] + len[j] && !used; ++k)
      used = val[k] != 0.0 && keepRow[idx[k]];
    if (used) {
      part.cols.push_back(j);
    } else if (!LeftOutValue(m.objective()[j], m.columnLower()[j], m.columnUpper()[j],
                             &part.value[j])) {
      part.simplex = true;
    }
  }
  if (part.rows.empty() || part.cols.empty()) part.simplex = true;
  return part;
}

// Writes the barrier's result on the kept part, and the values of the left-out part, into the
// whole LP: values, row activities, duals (0 on left-out rows) and reduced costs (the cost on
// left-out columns).
void ExpandBarrierResult(const BarrierPart& part, ClpSimplex& sub, ClpSimplex* m) {
  double* x = m->primalColumnSolution();
  double* dj = m->dualColumnSolution();
  double* y = m->dualRowSolution();
  const double* cost = m->objective();
  for (int j = 0; j < m->numberColumns(); ++j) x[j] = part.value[j], dj[j] = cost[j];
  std::fill(y, y + m->numberRows(), 0.0);
  for (size_t k = 0; k < part.cols.size(); ++k) {
    x[part.cols[k]] = sub.primalColumnSolution()[k];
    dj[part.cols[k]] = sub.dualColumnSolution()[k];
  }
  for (size_t k = 0; k < part.rows.size(); ++k) y[part.rows[k]] = sub.dualRowSolution()[k];
  double* act = m->primalRowSolution();
  std::fill(act, act + m->numberRows(), 0.0);
  m->matrix()->times(x, act);
}

}  // namespace

long RunClpBarrier(ClpSimplex* m, int iterLimit, bool crossover, bool* basisValid) {
  const BarrierPart part = PlanBarrierPart(*m);
  if (part.simplex) {
    m->dual(0);
    return 0;
  }
  std::unique_ptr<ClpSimplex> sub;
  if (!part.Whole(*m))
    sub = std::make_unique<ClpSimplex>(m, static_cast<int>(part.rows.size()), part.rows.data(),
                                       static_cast<int>(part.cols.size()), part.cols.data());
  ClpSimplex* target = sub ? sub.get() : m;
  ClpInterior barrier;
  ClpEventHandler plain;
  barrier.passInEventHandler(&plain);  // borrowModel asserts without one
  barrier.borrowModel(*target);
  barrier.setCholesky(new ClpCholeskyBase());
  barrier.setMaximumBarrierIterations(iterLimit);
  barrier.primalDual();
  const long iterations = barrier.numberIterations();
  const int status = barrier.status();
  barrier.returnModel(*target);
  if (sub) ExpandBarrierResult(part, *sub, m);
  m->setNumberIterations(0);  // from here on only simplex iterations are counted
  if (crossover || status != 0) {
    m->primal(1);  // crossover: values pass from the interior point
  } else {
    m->setProblemStatus(status);
    *basisValid = false;
  }
  return iterations;
}

}  // namespace zelq::engine
