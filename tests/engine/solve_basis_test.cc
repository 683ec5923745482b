// Basis operations checked numerically: FSolve/BSolve against the basis matrix assembled from
// the basis head, and shadow price ranges against re-solves with perturbed bounds.
#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <vector>

#include "solve_test_util.h"
#include "zelq/zelq.h"

using namespace solve_test;

namespace {

// min c'x over a mix of <=, >= and = rows with a known feasible point x = 1.
Dense MixedLp(int m, int n, unsigned seed) {
  std::mt19937 rng(seed);
  std::uniform_real_distribution<double> u(0.0, 1.0);
  Dense d;
  d.m = m, d.n = n;
  d.a.assign(static_cast<size_t>(m) * n, 0.0);
  for (double& v : d.a)
    if (u(rng) < 0.5) v = std::round(-5 + 10 * u(rng));
  for (int j = 0; j < n; ++j) d.obj.push_back(1 + 5 * u(rng));
  d.colLo.assign(n, 0);
  d.colUp.assign(n, 4);
  for (int i = 0; i < m; ++i) {
    double at1 = 0;
    for (int j = 0; j < n; ++j) at1 += d.A(i, j);
    int kind = i % 3;  // 0: >=, 1: <=, 2: =
    d.rowLo.push_back(kind == 1 ? -1e30 : (kind == 2 ? at1 : at1 - 1));
    d.rowUp.push_back(kind == 0 ? 1e30 : (kind == 2 ? at1 : at1 + 2));
  }
  return d;
}

// Basis matrix (row-major m x m): structural column j of A, or e_r for the slack of row r.
std::vector<double> BasisMatrix(const Dense& d, const std::vector<int>& head) {
  std::vector<double> B(static_cast<size_t>(d.m) * d.m, 0.0);
  for (int k = 0; k < d.m; ++k) {
    for (int i = 0; i < d.m; ++i)
      B[i * d.m + k] = head[k] < d.n ? d.A(i, head[k]) : (head[k] - d.n == i ? 1.0 : 0.0);
  }
  return B;
}

TEST(SolveBasis, FSolveAndBSolveInvertTheBasisOfTheHead) {
  for (unsigned seed : {1u, 2u, 3u}) {
    SCOPED_TRACE(seed);
    Dense d = MixedLp(9, 12, seed);
    QuietProb prob;
    ASSERT_EQ(Load(prob, d), 0);
    ASSERT_EQ(ZELQ_Solve(prob), 0);
    ASSERT_EQ(IntAttr(prob, "Status"), ZELQ_OPTIMAL);
    std::vector<int> head(d.m);
    ASSERT_EQ(ZELQ_GetBasisHead(prob, head.data()), 0);
    std::vector<int> cb(d.n), rb(d.m);
    ASSERT_EQ(ZELQ_GetBasis(prob, cb.data(), rb.data()), 0);
    for (int k = 0; k < d.m; ++k) {  // the head lists exactly the basic variables
      ASSERT_GE(head[k], 0);
      ASSERT_LT(head[k], d.n + d.m);
      EXPECT_EQ(head[k] < d.n ? cb[head[k]] : rb[head[k] - d.n], ZELQ_BASIS_BASIC);
    }
    std::vector<double> B = BasisMatrix(d, head);
    std::mt19937 rng(seed);
    std::uniform_real_distribution<double> u(-1.0, 1.0);
    std::vector<double> b(d.m);
    for (double& v : b) v = u(rng);
    b[0] = 0.0;
    std::vector<double> x(d.m), y(d.m);
    int len = d.m;
    ASSERT_EQ(ZELQ_FSolve(prob, b.data(), x.data(), &len), 0);
    int nnz = 0;
    for (double v : x) nnz += v != 0.0;
    EXPECT_EQ(len, nnz);
    std::vector<double> expect = DenseSolve(B, b, d.m);
    for (int k = 0; k < d.m; ++k) EXPECT_NEAR(x[k], expect[k], 1e-8) << k;
    len = d.m + 5;  // larger buffers are fine
    ASSERT_EQ(ZELQ_BSolve(prob, b.data(), y.data(), &len), 0);
    std::vector<double> Bt(B.size());
    for (int i = 0; i < d.m; ++i)
      for (int k = 0; k < d.m; ++k) Bt[k * d.m + i] = B[i * d.m + k];
    expect = DenseSolve(Bt, b, d.m);
    for (int k = 0; k < d.m; ++k) EXPECT_NEAR(y[k], expect[k], 1e-8) << k;
  }
}

// The dual of a row stays the same while its bound moves inside the range and changes once it
// leaves it; checked by re-solving with perturbed bounds.
TEST(SolveBasis, ShadowPriceRangeMatchesPerturbedResolves) {
  Dense d = MixedLp(9, 12, 5);
  QuietProb prob;
  ASSERT_EQ(Load(prob, d), 0);
  ASSERT_EQ(ZELQ_Solve(prob), 0);
  ASSERT_EQ(IntAttr(prob, "Status"), ZELQ_OPTIMAL);
  std::vector<double> dual(d.m), act(d.m);
  ASSERT_EQ(ZELQ_GetLpSolution(prob, nullptr, act.data(), dual.data(), nullptr), 0);
  int checkedActive = 0;
  for (int i = 0; i < d.m; ++i) {
    for (int side = 0; side < 2; ++side) {
      const double bound = side == 0 ? d.rowLo[i] : d.rowUp[i];
      if (std::fabs(bound) >= 1e30) continue;
      double lo = 0, up = 0;
      ASSERT_EQ(ZELQ_ComputeShadowPriceRange(prob, i, side, &lo, &up), 0);
      SCOPED_TRACE(testing::Message() << "row " << i << " side " << side << " [" << lo << ", " << up << "]");
      EXPECT_LE(lo, bound + 1e-9);
      EXPECT_GE(up, bound - 1e-9);
      const bool equality = d.rowLo[i] == d.rowUp[i];
      auto resolveDual = [&](double v, int* status) {
        Dense e = d;
        if (equality) {
          e.rowLo[i] = e.rowUp[i] = v;
        } else {
          (side == 0 ? e.rowLo[i] : e.rowUp[i]) = v;
        }
        QuietProb q;
        EXPECT_EQ(Load(q, e), 0);
        EXPECT_EQ(ZELQ_Solve(q), 0);
        *status = IntAttr(q, "Status");
        std::vector<double> y(d.m);
        if (*status == ZELQ_OPTIMAL) ZELQ_GetLpSolution(q, nullptr, nullptr, y.data(), nullptr);
        return y[i];
      };
      int st = 0;
      if (up - lo > 1e-6) {
        for (double t : {0.02, 0.98}) {
          double v = lo + t * (up - lo);
          if (std::fabs(v) > 1e6) continue;
          EXPECT_NEAR(resolveDual(v, &st), dual[i], 1e-7) << "inside at " << v;
        }
      }
      if (std::fabs(dual[i]) < 1e-9) continue;
      ++checkedActive;
      for (double v : {lo - 0.5, up + 0.5}) {
        if (std::fabs(v) > 1e6) continue;
        double y = resolveDual(v, &st);
        if (st == ZELQ_OPTIMAL) {
          EXPECT_GT(std::fabs(y - dual[i]), 1e-7) << "outside at " << v;
        }
      }
    }
  }
  EXPECT_GT(checkedActive, 0);
}

// Hand-checked ranges of the textbook LP max 3x + 5y s.t. x <= 4, 2y <= 12, 3x + 2y <= 18.
TEST(SolveBasis, ShadowPriceRangeOfATextbookLp) {
  Dense d = TextbookLp();
  QuietProb prob;
  ASSERT_EQ(Load(prob, d), 0);
  ASSERT_EQ(ZELQ_Solve(prob), 0);
  struct Case { int row, side; double lo, up; };
  const Case cases[] = {{2, 1, 12, 24}, {1, 1, 6, 18}, {0, 1, 2, 1e30}, {0, 0, -1e30, 2}};
  for (const Case& c : cases) {
    double lo = 0, up = 0;
    ASSERT_EQ(ZELQ_ComputeShadowPriceRange(prob, c.row, c.side, &lo, &up), 0);
    EXPECT_NEAR(lo, c.lo, 1e-7) << c.row << "/" << c.side;
    EXPECT_NEAR(up, c.up, 1e-7) << c.row << "/" << c.side;
  }
}

}  // namespace
