// Helpers for the solve tests: a quiet environment, small problem builders and dense algebra
// used to check the engine's results independently.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "zelq/zelq.h"

namespace solve_test {

// Environment and problem with logging off; deleted at scope end.
class QuietProb {
 public:
  QuietProb() {
    ZELQenvconfig* cfg = nullptr;
    ZELQ_CreateEnvConfig(&cfg);
    ZELQ_SetEnvConfig(cfg, "Banner", "0");
    ZELQ_SetEnvConfig(cfg, "Logging", "0");
    ZELQ_CreateEnvWithConfig(cfg, &env_);
    ZELQ_DeleteEnvConfig(&cfg);
    ZELQ_CreateProb(env_, &prob_);
    ZELQ_SetIntParam(prob_, "Logging", 0);
  }
  ~QuietProb() {
    ZELQ_DeleteProb(&prob_);
    ZELQ_DeleteEnv(&env_);
  }
  QuietProb(const QuietProb&) = delete;
  QuietProb& operator=(const QuietProb&) = delete;
  ZELQprob* get() const { return prob_; }
  operator ZELQprob*() const { return prob_; }

 private:
  ZELQenv* env_ = nullptr;
  ZELQprob* prob_ = nullptr;
};

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
