#include "solve/coin_model.h"

#include <algorithm>
#include <cmath>

#include "ClpSimplex.hpp"
#include "CoinFinite.hpp"
#include "problem/problem.h"

namespace zelq::engine {

double ToCoinBound(double v) {
  if (v >= kInf) return COIN_DBL_MAX;
  if (v <= -kInf) return -COIN_DBL_MAX;
  return v;
}

double FromCoinBound(double v) {
  if (v >= 1e30) return kInf;
  if (v <= -1e30) return -kInf;
  return v;
}

namespace {

void BuildColumns(const Problem& p, bool negate, CoinLpData* d) {
  const int n = p.cols();
  d->obj.resize(n);
  d->colLower.resize(n);
  d->colUpper.resize(n);
  d->isInt.assign(n, 0);
  for (int j = 0; j < n; ++j) {
    d->obj[j] = negate ? -p.obj[j] : p.obj[j];
    double lo = p.colLower[j], up = p.colUpper[j];
    if (p.colType[j] == 'B') {
      lo = std::max(lo, 0.0);
      up = std::min(up, 1.0);
    }
    d->isInt[j] = p.colType[j] == 'B' || p.colType[j] == 'I';
    d->colLower[j] = ToCoinBound(lo);
    d->colUpper[j] = ToCoinBound(up);
  }
}

void AppendRowBounds(const std::vector<double>& lo, const std::vector<double>& up, CoinLpData* d) {
  for (size_t i = 0; i < lo.size(); ++i) {
    d->rowLower.push_back(ToCoinBound(lo[i]));
    d->rowUpper.push_back(ToCoinBound(up[i]));
  }
}

// Merges the extra rows (CSR) into the column-major matrix of the model rows.
void AppendExtraRows(const std::vector<const ExtraRows*>& extras, int firstRow, CoinLpData* d) {
  const int n = d->cols;
  std::vector<int> count(n, 0);
  for (const ExtraRows* e : extras)
    for (int k : e->idx) ++count[k];
  std::vector<int> beg(n + 1, 0);
  for (int j = 0; j < n; ++j) beg[j + 1] = beg[j] + (d->beg[j + 1] - d->beg[j]) + count[j];
  std::vector<int> idx(beg[n]);
  std::vector<double> val(beg[n]);
  std::vector<int> fill(n);
  for (int j = 0; j < n; ++j) {
    int len = d->beg[j + 1] - d->beg[j];
    std::copy_n(d->idx.begin() + d->beg[j], len, idx.begin() + beg[j]);
    std::copy_n(d->val.begin() + d->beg[j], len, val.begin() + beg[j]);
    fill[j] = beg[j] + len;
  }
  int row = firstRow;
  for (const ExtraRows* e : extras) {
    for (int i = 0; i < e->count(); ++i, ++row) {
      for (int k = e->beg[i]; k < e->beg[i + 1]; ++k) {
        int j = e->idx[k];
        idx[fill[j]] = row;
        val[fill[j]++] = e->val[k];
      }
    }
  }
  d->beg.swap(beg);
  d->idx.swap(idx);
  d->val.swap(val);
}

}  // namespace

void BuildCoinData(const Problem& p, bool minimiseOnly, CoinLpData* d) {
  d->cols = p.cols();
  d->modelRows = p.rows();
  d->negated = minimiseOnly && p.objSense == -1;
  BuildColumns(p, d->negated, d);
  p.ColumnMatrix(d->beg, d->idx, d->val);
  d->rowLower.clear();
  d->rowUpper.clear();
  AppendRowBounds(p.rowLower, p.rowUpper, d);
  std::vector<const ExtraRows*> extras;
  if (p.lazy.count() > 0) extras.push_back(&p.lazy);
  if (p.cuts.count() > 0) extras.push_back(&p.cuts);
  for (const ExtraRows* e : extras) AppendRowBounds(e->lower, e->upper, d);
  d->rows = static_cast<int>(d->rowLower.size());
  if (!extras.empty()) AppendExtraRows(extras, d->modelRows, d);
}

void LoadIntoClp(const CoinLpData& d, ClpSimplex* model) {
  model->loadProblem(d.cols, d.rows, d.beg.data(), d.idx.data(), d.val.data(), d.colLower.data(),
                     d.colUpper.data(), d.obj.data(), d.rowLower.data(), d.rowUpper.data());
  model->setOptimizationDirection(1.0);
}

}  // namespace zelq::engine
