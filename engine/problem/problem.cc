#include "problem/problem.h"

#include <algorithm>

namespace zelq::engine {

bool Problem::IsMip() const {
  return std::any_of(colType.begin(), colType.end(), [](char t) { return t == 'B' || t == 'I'; });
}

int Problem::CountType(char t) const {
  return static_cast<int>(std::count(colType.begin(), colType.end(), t));
}

void Problem::Clear() { *this = Problem{}; }

void Problem::ColumnMatrix(std::vector<int>& beg, std::vector<int>& idx,
                           std::vector<double>& val) const {
  beg.assign(cols() + 1, 0);
  for (int r = 0; r < rows(); ++r)
    for (int c : matrix.RowIdx(r)) ++beg[c + 1];
  for (int c = 0; c < cols(); ++c) beg[c + 1] += beg[c];
  idx.resize(beg[cols()]);
  val.resize(beg[cols()]);
  std::vector<int> next(beg.begin(), beg.end() - 1);
  for (int r = 0; r < rows(); ++r) {
    auto ri = matrix.RowIdx(r);
    auto rv = matrix.RowVal(r);
    for (size_t k = 0; k < ri.size(); ++k) {
      const int at = next[ri[k]]++;
      idx[at] = r;
      val[at] = rv[k];
    }
  }
}

static double ClampInf(double v) { return v >= kInf ? kInf : (v <= -kInf ? -kInf : v); }

bool SenseToBounds(char sense, double bound, double upper, double* lo, double* up) {
  switch (sense) {
    case 'L': *lo = -kInf; *up = bound; break;
    case 'G': *lo = bound; *up = kInf; break;
    case 'E': *lo = bound; *up = bound; break;
    case 'N': *lo = -kInf; *up = kInf; break;
    case 'R':
    case 0: *lo = bound; *up = upper; break;
    default: return false;
  }
  *lo = ClampInf(*lo);
  *up = ClampInf(*up);
  return true;
}

}  // namespace zelq::engine

namespace zelq::engine {

void ExtraRows::Add(int n, const int* rowIdx, const double* rowVal, double lo, double up,
                    const char* name) {
  if (beg.empty()) beg.push_back(0);
  for (int k = 0; k < n; ++k) {
    if (rowVal[k] == 0.0) continue;
    idx.push_back(rowIdx[k]);
    val.push_back(rowVal[k]);
  }
  beg.push_back(static_cast<int>(idx.size()));
  lower.push_back(lo);
  upper.push_back(up);
  names.emplace_back(name ? name : "");
}

void ExtraRows::RenumberCols(const std::vector<int>& newIndex) {
  int out = 0;
  for (int r = 0; r < count(); ++r) {
    const int b = beg[r], e = beg[r + 1];
    beg[r] = out;
    for (int k = b; k < e; ++k) {
      const int c = newIndex[idx[k]];
      if (c < 0) continue;
      idx[out] = c;
      val[out] = val[k];
      ++out;
    }
  }
  if (!beg.empty()) beg[count()] = out;
  idx.resize(out);
  val.resize(out);
}

}  // namespace zelq::engine
