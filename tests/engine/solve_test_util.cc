#include "solve_test_util.h"

#include <cmath>
#include <utility>

namespace solve_test {

int Load(ZELQprob* prob, const Dense& d) {
  std::vector<int> beg(d.n + 1, 0), idx;
  std::vector<double> val;
  for (int j = 0; j < d.n; ++j) {
    for (int i = 0; i < d.m; ++i)
      if (d.A(i, j) != 0.0) idx.push_back(i), val.push_back(d.A(i, j));
    beg[j + 1] = static_cast<int>(idx.size());
  }
  std::vector<char> type = d.type.empty() ? std::vector<char>(d.n, 'C') : d.type;
  return ZELQ_LoadProb(prob, d.n, d.m, d.sense, d.objConst, d.obj.data(), beg.data(), nullptr,
                       idx.data(), val.data(), type.data(), d.colLo.data(), d.colUp.data(),
                       nullptr, d.rowLo.data(), d.rowUp.data(), nullptr, nullptr);
}

std::string LastError(ZELQprob* prob) {
  char buf[1024] = {0};
  ZELQ_GetLastError(prob, buf, sizeof buf);
  return buf;
}

int IntAttr(ZELQprob* prob, const char* name) {
  int v = -12345;
  EXPECT_EQ(ZELQ_GetIntAttr(prob, name, &v), ZELQ_RETCODE_OK) << name;
  return v;
}

double DblAttr(ZELQprob* prob, const char* name) {
  double v = -12345;
  EXPECT_EQ(ZELQ_GetDblAttr(prob, name, &v), ZELQ_RETCODE_OK) << name;
  return v;
}

std::vector<double> DenseSolve(std::vector<double> M, std::vector<double> rhs, int n) {
  for (int c = 0; c < n; ++c) {
    int p = c;
    for (int r = c + 1; r < n; ++r)
      if (std::fabs(M[r * n + c]) > std::fabs(M[p * n + c])) p = r;
    for (int k = 0; k < n; ++k) std::swap(M[c * n + k], M[p * n + k]);
    std::swap(rhs[c], rhs[p]);
    for (int r = c + 1; r < n; ++r) {
      double f = M[r * n + c] / M[c * n + c];
      for (int k = c; k < n; ++k) M[r * n + k] -= f * M[c * n + k];
      rhs[r] -= f * rhs[c];
    }
  }
  std::vector<double> z(n);
  for (int r = n - 1; r >= 0; --r) {
    double s = rhs[r];
    for (int k = r + 1; k < n; ++k) s -= M[r * n + k] * z[k];
    z[r] = s / M[r * n + r];
  }
  return z;
}

}  // namespace solve_test
