// Choosing the MIP start handed to Cbc (see cbc_internal.h for the policy).
#include <cmath>

#include "problem/problem.h"
#include "solve/cbc_internal.h"

namespace zelq::engine {

double MipViolation(const Problem& p, const std::vector<double>& x, double feasTol, double intTol,
                    double* obj) {
  double viol = 0.0;
  *obj = p.objConst;
  for (int j = 0; j < p.cols(); ++j) {
    double lo = p.colLower[j], up = p.colUpper[j];
    if (p.colType[j] == 'B') lo = std::max(lo, 0.0), up = std::min(up, 1.0);
    viol += std::max(0.0, lo - x[j] - feasTol) + std::max(0.0, x[j] - up - feasTol);
    if (p.colType[j] != 'C') viol += std::max(0.0, std::fabs(x[j] - std::round(x[j])) - intTol);
    *obj += p.obj[j] * x[j];
  }
  for (int i = 0; i < p.rows(); ++i) {
    auto idx = p.matrix.RowIdx(i);
    auto val = p.matrix.RowVal(i);
    double a = 0.0;
    for (size_t k = 0; k < idx.size(); ++k) a += val[k] * x[idx[k]];
    double tol = feasTol * std::max(1.0, std::fabs(a));
    viol += std::max(0.0, p.rowLower[i] - a - tol) + std::max(0.0, a - p.rowUpper[i] - tol);
  }
  return viol;
}

namespace {

// Dense values of a start that gives every column (the last value of a repeated column wins).
bool CompleteValues(const MipStart& s, int n, std::vector<double>* x) {
  x->assign(n, std::nan(""));
  for (const auto& [j, v] : s) (*x)[j] = v;
  for (double v : *x)
    if (std::isnan(v)) return false;
  return true;
}

}  // namespace

MipStart ChooseMipStart(const ZELQprob* prob) {
  const int mode = prob->params.Get(IntParam::MipStartMode);
  if (mode == 0 || prob->mipStarts.empty()) return {};
  if (mode == 3) return prob->mipStarts.front();
  const Problem& p = prob->problem;
  const double feasTol = prob->params.Get(DblParam::FeasTol);
  const double intTol = prob->params.Get(DblParam::IntTol);
  const MipStart* best = nullptr;
  const MipStart* firstPartial = nullptr;
  double bestObj = 0.0;
  std::vector<double> x;
  for (const MipStart& s : prob->mipStarts) {
    if (!CompleteValues(s, p.cols(), &x)) {
      if (firstPartial == nullptr) firstPartial = &s;
      continue;
    }
    double obj = 0.0;
    if (MipViolation(p, x, feasTol, intTol, &obj) > 0.0) continue;
    if (best == nullptr || p.objSense * obj < p.objSense * bestObj) best = &s, bestObj = obj;
  }
  if (best != nullptr) return *best;
  if (mode != 1 && firstPartial != nullptr) return *firstPartial;
  return {};
}

}  // namespace zelq::engine
