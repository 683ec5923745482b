// Helpers for the solve tests: a quiet environment, small problem builders and dense algebra
// used to check the engine's results independently.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "quiet_prob.h"
#include "zelq/zelq.h"

namespace solve_test {

using engine_test::QuietProb;

// Dense row-major problem: rows lo <= A x <= up, columns l <= x <= u.
struct Dense {
  int m = 0, n = 0;
  std::vector<double> a;  // m * n
  std::vector<double> obj, colLo, colUp, rowLo, rowUp;
  std::vector<char> type;
  int sense = ZELQ_MINIMIZE;
  double objConst = 0.0;
  double A(int i, int j) const { return a[static_cast<size_t>(i) * n + j]; }
};

// The textbook LP  max 3x + 5y  s.t.  x <= 4, 2y <= 12, 3x + 2y <= 18  (optimum 36 at (2, 6)).
inline Dense TextbookLp() {
  Dense d;
  d.m = 3, d.n = 2;
  d.a = {1, 0, 0, 2, 3, 2};
  d.obj = {3, 5};
  d.sense = ZELQ_MAXIMIZE;
  d.colLo = {0, 0};
  d.colUp = {1e30, 1e30};
  d.rowLo = {-1e30, -1e30, -1e30};
  d.rowUp = {4, 12, 18};
  return d;
}

// Loads d into prob through ZELQ_LoadProb; returns the code.
int Load(ZELQprob* prob, const Dense& d);

std::string LastError(ZELQprob* prob);
int IntAttr(ZELQprob* prob, const char* name);
double DblAttr(ZELQprob* prob, const char* name);

// Solves the dense square system M z = rhs (Gaussian elimination with partial pivoting).
std::vector<double> DenseSolve(std::vector<double> M, std::vector<double> rhs, int n);

}  // namespace solve_test
