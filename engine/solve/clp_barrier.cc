// Barrier solves with Clp's interior point method, on the part of the LP that needs it.
//
// Clp's barrier aborts the whole process ("primal off to infinity") when its iterates grow past
// 1e40, which happens on LPs with rows that have no entries or no bounds next to columns that
// appear in no row, and fails an assertion on a row whose only column is fixed far from the
// row's bound (x = 1e6 fixed in 1e10 x >= 1). Such rows and columns, and fixed columns, decide
// nothing the barrier could help with, so the barrier runs on the LP without them (the fixed
// columns' activity moves into the row bounds) and their values are filled in afterwards: a
// left-out column sits at the bound its cost points to (0 clamped into its bounds when the cost
// is 0), a left-out row has dual 0. When the left-out part alone decides the problem (a
// left-out column whose cost points to an infinite bound, nothing left) or the column bounds
// keep a row out of its bounds, the dual simplex solves the whole LP instead.
//
// Clp's barrier can also report "optimal" for an unbounded LP, with reduced costs or duals of
// the wrong sign where a bound is infinite, and its crossover (a primal values pass) can stop
// "optimal" with superbasic columns that still improve the objective; for an infeasible LP it
// can report "optimal" at a point outside the bounds. So a barrier result that breaks the
// bounds or those signs is crossed over even when no crossover was asked for, and every
// crossover that ends optimal is finished by a primal simplex from its basis (no iterations
// when the basis is optimal).
//
// Clp's scaling crashes the barrier when a scaled element falls below 1e-13 (seen with the row
// x + 1e19 y <= 10): it then lowers the factorisation's zero tolerance through a cast of the
// model to ClpSimplex, which inside the barrier is a ClpInterior. The scaling is worked out
// first on a copy of the LP, and an LP it would leave with such elements goes to the dual
// simplex. So does an LP with elements of 1e12 or more that Clp's presolve finds infeasible or
// unbounded: the barrier fails an assertion on some of them. And so does an LP with a finite
// bound of 1e19 or more, near the 1e20 the barrier reads as infinite.
#include <algorithm>
#include <cmath>
#include <memory>
#include <vector>

#include "ClpCholeskyBase.hpp"
#include "ClpEventHandler.hpp"
#include "ClpInterior.hpp"
#include "ClpPackedMatrix.hpp"
#include "ClpPresolve.hpp"
#include "solve/clp_internal.h"

namespace zelq::engine {

namespace {

constexpr double kClpInf = 1e27;  // Clp reads bounds beyond this as infinite

struct BarrierPart {
  std::vector<int> rows, cols;  // kept rows and columns of the whole LP, in order
  std::vector<double> value;    // per column of the whole LP: the value of a left-out column
  std::vector<double> shift;    // per kept row: the activity of the left-out columns in it
  bool simplex = false;  // the left-out part or a row out of reach decides the LP: use the simplex
  bool Whole(const ClpSimplex& m) const {
    return static_cast<int>(rows.size()) == m.numberRows() &&
           static_cast<int>(cols.size()) == m.numberColumns();
  }
};

// Value of a left-out column (fixed, or without entries in a kept row) in a minimisation with
// cost c; false when that value is an infinite bound (the LP is unbounded if feasible) or the
// bounds exclude each other.
bool LeftOutValue(double c, double lo, double up, double* v) {
  if (lo > up) return false;
  *v = c > 0 ? lo : c < 0 ? up : std::clamp(0.0, lo, up);
  return *v > -kClpInf && *v < kClpInf;
}

// True when the column bounds keep some row's activity out of its bounds (an empty row whose
// bounds exclude 0, for one). Clp's barrier fails an assertion on some such LPs (seen with
// x0 + 1e-9 x1 <= -10, x >= 0); the simplex finds them infeasible at once.
bool SomeRowOutOfReach(const ClpSimplex& m) {
  const int rowCount = m.numberRows();
  std::vector<double> least(rowCount, 0.0), most(rowCount, 0.0);
  std::vector<char> leastInf(rowCount, 0), mostInf(rowCount, 0);
  const CoinPackedMatrix* a = m.matrix();
  for (int j = 0; j < m.numberColumns(); ++j) {
    const double lo = m.columnLower()[j], up = m.columnUpper()[j];
    for (CoinBigIndex k = a->getVectorFirst(j); k < a->getVectorLast(j); ++k) {
      const int i = a->getIndices()[k];
      const double v = a->getElements()[k];
      const double low = v > 0 ? lo : up, high = v > 0 ? up : lo;  // bounds giving least, most
      if (low < -kClpInf || low > kClpInf)
        leastInf[i] = 1;
      else
        least[i] += v * low;
      if (high < -kClpInf || high > kClpInf)
        mostInf[i] = 1;
      else
        most[i] += v * high;
    }
  }
  const double tol = m.primalTolerance();
  for (int i = 0; i < rowCount; ++i) {
    const double lo = m.rowLower()[i], up = m.rowUpper()[i];
    if (!leastInf[i] && up < kClpInf && least[i] > up + tol * (1 + std::fabs(up))) return true;
    if (!mostInf[i] && lo > -kClpInf && most[i] < lo - tol * (1 + std::fabs(lo))) return true;
  }
  return false;
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
  BarrierPart part;
  part.simplex = SomeRowOutOfReach(m);
  std::vector<char> fixed(n), keepRow(rowCount, 0);
  for (int j = 0; j < n; ++j) fixed[j] = m.columnLower()[j] == m.columnUpper()[j];
  for (int j = 0; j < n; ++j)
    for (CoinBigIndex k = beg[j]; k < beg[j] + len[j]; ++k)
      if (val[k] != 0.0 && !fixed[j]) keepRow[idx[k]] = 1;
  for (int i = 0; i < rowCount; ++i) {
    if (rlo[i] < -kClpInf && rup[i] > kClpInf) keepRow[i] = 0;  // free row
    if (keepRow[i]) part.rows.push_back(i);
  }
  part.value.assign(n, 0.0);
  for (int j = 0; j < n; ++j) {
    bool used = false;
    for (CoinBigIndex k = beg[j]; k < beg[j] + len[j] && !used && !fixed[j]; ++k)
      used = val[k] != 0.0 && keepRow[idx[k]];
    if (used) {
      part.cols.push_back(j);
    } else if (!LeftOutValue(m.objective()[j], m.columnLower()[j], m.columnUpper()[j],
                             &part.value[j])) {
      part.simplex = true;
    }
  }
  if (part.rows.empty() || part.cols.empty()) part.simplex = true;
  if (part.simplex) return part;
  std::vector<double> shift(rowCount, 0.0);
  for (int j = 0; j < n; ++j)
    if (part.value[j] != 0.0)  // only left-out columns have a value here
      for (CoinBigIndex k = beg[j]; k < beg[j] + len[j]; ++k)
        shift[idx[k]] += val[k] * part.value[j];
  for (int i : part.rows) part.shift.push_back(shift[i]);
  return part;
}

// Writes the barrier's result on the kept part, and the values of the left-out part, into the
// whole LP: values, row activities, duals (0 on left-out rows) and reduced costs (c - A'y on
// left-out columns).
void ExpandBarrierResult(const BarrierPart& part, ClpSimplex& sub, ClpSimplex* m) {
  double* x = m->primalColumnSolution();
  double* dj = m->dualColumnSolution();
  double* y = m->dualRowSolution();
  const double* cost = m->objective();
  for (int j = 0; j < m->numberColumns(); ++j) x[j] = part.value[j];
  std::fill(y, y + m->numberRows(), 0.0);
  for (size_t k = 0; k < part.cols.size(); ++k) x[part.cols[k]] = sub.primalColumnSolution()[k];
  for (size_t k = 0; k < part.rows.size(); ++k) y[part.rows[k]] = sub.dualRowSolution()[k];
  m->matrix()->transposeTimes(y, dj);  // dj = A'y, replaced by c - A'y below
  for (int j = 0; j < m->numberColumns(); ++j) dj[j] = cost[j] - dj[j];
  for (size_t k = 0; k < part.cols.size(); ++k) dj[part.cols[k]] = sub.dualColumnSolution()[k];
  double* act = m->primalRowSolution();
  std::fill(act, act + m->numberRows(), 0.0);
  m->matrix()->times(x, act);
}

// True when no reduced cost or dual of m's current solution has the sign that would improve a
// minimisation without limit: a negative reduced cost on a column without upper bound, a
// positive one without lower bound, and likewise for the rows' duals.
bool DualSignsHold(const ClpSimplex& m) {
  double scale = 1.0;
  for (int j = 0; j < m.numberColumns(); ++j)
    scale = std::max(scale, std::fabs(m.objective()[j]));
  const double tol = 1e-7 * scale;
  auto holds = [tol](double d, double lo, double up) {
    return !((d < -tol && up > kClpInf) || (d > tol && lo < -kClpInf));
  };
  for (int j = 0; j < m.numberColumns(); ++j)
    if (!holds(m.dualColumnSolution()[j], m.columnLower()[j], m.columnUpper()[j])) return false;
  for (int i = 0; i < m.numberRows(); ++i)
    if (!holds(m.dualRowSolution()[i], m.rowLower()[i], m.rowUpper()[i])) return false;
  return true;
}

// True when m's current values keep the column bounds and row bounds, to 1e-6 relative to the
// bound and to the size of the terms that make up the row; Clp's barrier can report "optimal"
// for an infeasible LP.
bool PrimalFeasible(const ClpSimplex& m) {
  const double* x = m.primalColumnSolution();
  const CoinPackedMatrix* a = m.matrix();
  std::vector<double> act(m.numberRows(), 0.0), mag(m.numberRows(), 0.0);
  for (int j = 0; j < m.numberColumns(); ++j)
    for (CoinBigIndex k = a->getVectorFirst(j); k < a->getVectorLast(j); ++k) {
      const double term = a->getElements()[k] * x[j];
      act[a->getIndices()[k]] += term;
      mag[a->getIndices()[k]] += std::fabs(term);
    }
  auto inside = [](double v, double lo, double up, double size) {
    return v >= lo - 1e-6 * (1 + size + std::fabs(lo)) &&
           v <= up + 1e-6 * (1 + size + std::fabs(up));
  };
  for (int j = 0; j < m.numberColumns(); ++j)
    if (!inside(x[j], m.columnLower()[j], m.columnUpper()[j], 0.0)) return false;
  for (int i = 0; i < m.numberRows(); ++i)
    if (!inside(act[i], m.rowLower()[i], m.rowUpper()[i], mag[i])) return false;
  return true;
}

// Primal simplex from the values of m (the crossover), then from its basis when it ends optimal.
void CrossOver(ClpSimplex* m) {
  m->primal(1);
  if (m->status() != 0) return;
  const int iterations = m->numberIterations();
  m->primal(0);
  m->setNumberIterations(iterations + m->numberIterations());
}

// Loads m's bounds, costs and sense over the matrix a into copy, silent. Clp's scaling keeps
// its factors in the model it scales and presolve works on the model it is given, so both run
// on such copies and m stays as it was.
void LoadFreshCopy(const ClpSimplex& m, const CoinPackedMatrix& a, ClpSimplex* copy) {
  copy->setLogLevel(0);
  copy->loadProblem(a, m.columnLower(), m.columnUpper(), m.objective(), m.rowLower(),
                    m.rowUpper());
  copy->setOptimizationDirection(m.optimizationDirection());
}

// True when Clp's scaling of m would leave a matrix element below 1e-13 (Clp's own threshold,
// checked with a margin of 10). The scale factors are worked out on a ClpSimplex copy of m,
// where the step that follows such elements is safe, without the elements below 1e-12 that
// Clp leaves out when it computes them; every element of m counts in the smallest.
bool ScalingLeavesTinyElements(const ClpSimplex& m) {
  if (m.scalingFlag() == 0) return false;
  CoinPackedMatrix kept(*m.matrix());
  kept.compress(1e-12);
  ClpSimplex probe;
  LoadFreshCopy(m, kept, &probe);
  probe.scaling(m.scalingFlag());
  const auto* matrix = dynamic_cast<const ClpPackedMatrix*>(probe.clpMatrix());
  if (matrix == nullptr) return false;
  matrix->scale(&probe, nullptr);
  const double* rowScale = probe.rowScale();
  const double* colScale = probe.columnScale();
  if (rowScale == nullptr || colScale == nullptr) return false;  // Clp chose not to scale
  const CoinPackedMatrix* a = m.matrix();  // the dropped elements count in Clp's final range
  for (int j = 0; j < m.numberColumns(); ++j)
    for (CoinBigIndex k = a->getVectorFirst(j); k < a->getVectorLast(j); ++k) {
      const double v = std::fabs(a->getElements()[k]);
      if (v != 0.0 && v * rowScale[a->getIndices()[k]] * colScale[j] < 1e-12) return true;
    }
  return false;
}

// True when m has an element of 1e12 or more and Clp's presolve alone finds m infeasible or
// unbounded (a singleton row that fixes a column another row cannot take, for one). Clp's
// barrier fails the assertion 'value < 0.0' in setupForSolve on such LPs with elements of 1e15
// and more; the simplex settles them. Other LPs keep the barrier, whose own result checks
// catch what it gets wrong.
bool PresolveDecides(const ClpSimplex& m) {
  const CoinPackedMatrix* a = m.matrix();
  const double* elements = a->getElements();
  bool large = false;
  for (int j = 0; j < m.numberColumns() && !large; ++j)
    for (CoinBigIndex k = a->getVectorFirst(j); k < a->getVectorLast(j) && !large; ++k)
      large = std::fabs(elements[k]) >= 1e12;
  if (!large) return false;
  ClpSimplex copy;
  LoadFreshCopy(m, *a, &copy);
  ClpPresolve presolve;
  std::unique_ptr<ClpSimplex> reduced(presolve.presolvedModel(copy, m.primalTolerance(), false));
  return reduced == nullptr;
}

// True when a finite bound of m, column or row, reaches 1e19 in magnitude. Clp's barrier takes
// 1e20 as infinite, so a row bound moved there by a fixed column's activity (x fixed at 1e20
// in x + 0.25 y <= 0) turns into no bound, or into one that excludes everything, and the
// barrier then ran for over a minute without ending; the simplex found that LP infeasible at
// once. A lower bound above Clp's infinity of 1e27 is still a bound (2 x = 1e29 keeps its lower
// bound of 1e29 and loses its upper one), and the barrier failed an assertion on it.
bool BoundNearInfinity(const ClpSimplex& m) {
  auto near = [](const double* lo, const double* up, int count) {
    for (int k = 0; k < count; ++k) {
      if (lo[k] >= 1e19 || (lo[k] <= -1e19 && lo[k] > -kClpInf)) return true;
      if (up[k] <= -1e19 || (up[k] >= 1e19 && up[k] < kClpInf)) return true;
    }
    return false;
  };
  return near(m.columnLower(), m.columnUpper(), m.numberColumns()) ||
         near(m.rowLower(), m.rowUpper(), m.numberRows());
}

// Solves m by the dual simplex instead of the barrier, saying why in the log; returns the
// barrier iterations, 0.
long DualSimplexInstead(ZELQprob* prob, ClpSimplex* m, const char* why) {
  prob->log.Printf("Barrier: %s; dual simplex instead", why);
  m->dual(0);
  return 0;
}

}  // namespace

long RunClpBarrier(ZELQprob* prob, ClpSimplex* m, bool crossover, bool* basisValid) {
  const BarrierPart part = PlanBarrierPart(*m);
  if (part.simplex)
    return DualSimplexInstead(prob, m,
                              "the column bounds or the left-out rows and columns decide the LP");
  std::unique_ptr<ClpSimplex> sub;
  if (!part.Whole(*m)) {
    prob->log.Printf("Barrier: %d empty or free rows and %d fixed columns or columns in no row "
                     "left out",
                     m->numberRows() - static_cast<int>(part.rows.size()),
                     m->numberColumns() - static_cast<int>(part.cols.size()));
    sub = std::make_unique<ClpSimplex>(m, static_cast<int>(part.rows.size()), part.rows.data(),
                                       static_cast<int>(part.cols.size()), part.cols.data());
    for (size_t k = 0; k < part.shift.size(); ++k) {  // the left-out columns' activity
      if (sub->rowLower()[k] > -kClpInf) sub->rowLower()[k] -= part.shift[k];
      if (sub->rowUpper()[k] < kClpInf) sub->rowUpper()[k] -= part.shift[k];
    }
  }
  ClpSimplex* target = sub ? sub.get() : m;
  if (BoundNearInfinity(*target))
    return DualSimplexInstead(prob, m,
                              "a finite bound reaches 1e19, near what the barrier takes as "
                              "infinite");
  if (PresolveDecides(*target))
    return DualSimplexInstead(prob, m, "presolve finds the LP infeasible or unbounded");
  if (ScalingLeavesTinyElements(*target))
    return DualSimplexInstead(prob, m,
                              "Clp's scaling would leave matrix elements below 1e-13, which its "
                              "barrier cannot take");
  ClpInterior barrier;
  ClpEventHandler plain;
  barrier.passInEventHandler(&plain);  // borrowModel asserts without one
  barrier.borrowModel(*target);
  barrier.setCholesky(new ClpCholeskyBase());
  barrier.setMaximumBarrierIterations(prob->params.Get(IntParam::BarIterLimit));
  barrier.primalDual();
  const long iterations = barrier.numberIterations();
  const int status = barrier.status();
  barrier.returnModel(*target);
  if (sub) ExpandBarrierResult(part, *sub, m);
  m->setNumberIterations(0);  // from here on only simplex iterations are counted
  const bool optimum = status == 0 && PrimalFeasible(*m) && DualSignsHold(*m);
  if (status == 0 && !optimum)
    prob->log.Line("Barrier: the interior point is not an optimum; crossing over");
  if (crossover || !optimum) {
    CrossOver(m);
  } else {
    m->setProblemStatus(status);
    *basisValid = false;
  }
  return iterations;
}

}  // namespace zelq::engine
