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

// Loads d into prob through ZELQ_LoadProb; returns the code.
int Load(ZELQprob* prob, const Dense& d);

std::string LastError(ZELQprob* prob);
int IntAttr(ZELQprob* prob, const char* name);
double DblAttr(ZELQprob* prob, const char* name);

// Solves the dense square system M z = rhs (Gaussian elimination with partial pivoting).
std::vector<double> DenseSolve(std::vector<double> M, std::vector<double> rhs, int n);

}  // namespace solve_test
