#include "scalar/expr_merge.h"

#include <algorithm>
#include <cstddef>
#include <map>

namespace Zelq {

void MergeTerms(ExprData& expr, int num_cols, std::vector<double>& values,
                std::vector<uint8_t>& flags) {
  const size_t n = expr.vars.size();
  if (n == 0) return;
  const size_t cols = static_cast<size_t>(std::max(num_cols, 0));
  if (cols / n > 99) {
    MergeSparse(expr);
    return;
  }
  if (values.size() < cols) values.resize(cols);
  if (flags.size() < cols) flags.resize(cols, 0);
  MergeDense(expr, values, flags);
}

void MergeDense(ExprData& expr, std::vector<double>& values, std::vector<uint8_t>& flags) {
  // First pass: sum the non-zero coefficients per column. A NaN counts as
  // non-zero.
  for (size_t p = 0; p < expr.vars.size(); ++p) {
    int32_t k = expr.vars[p].Index();
    double c = expr.coeffs[p];
    if (k < 0 || c == 0.0) continue;
    size_t col = static_cast<size_t>(k);
    if (col >= flags.size()) {
      flags.resize(col + 1, 0);
      values.resize(col + 1);
    }
    if (flags[col] != 0) {
      values[col] += c;
    } else {
      values[col] = c;
      flags[col] = 1;
    }
  }
  // Second pass: the first surviving term of a column takes the sum and
  // clears the flag; every other term goes.
  size_t p = 0;
  while (p < expr.vars.size()) {
    int32_t k = expr.vars[p].Index();
    size_t col = static_cast<size_t>(k);
    // A column of coefficient-0 terms only may lie beyond the buffers.
    if (k >= 0 && col < flags.size() && flags[col] != 0) {
      expr.coeffs[p] = values[col];
      flags[col] = 0;
      ++p;
    } else {
      RemoveTermAt(expr, p);  // position p now holds the former last term
    }
  }
}

void MergeSparse(ExprData& expr) {
  std::map<int32_t, size_t> first;
  size_t p = 0;
  while (p < expr.vars.size()) {
    int32_t k = expr.vars[p].Index();
    if (k < 0) {
      RemoveTermAt(expr, p);
      continue;
    }
    auto [it, inserted] = first.emplace(k, p);
    if (inserted) {
      ++p;
    } else {
      // Recorded positions lie before p, so the swap cannot move them.
      expr.coeffs[it->second] += expr.coeffs[p];
      RemoveTermAt(expr, p);
    }
  }
}

}  // namespace Zelq
