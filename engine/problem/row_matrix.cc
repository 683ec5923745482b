#include "problem/row_matrix.h"

#include <algorithm>

namespace zelq::engine {

void RowMatrix::AddRow(int n, const int* idx, const double* val) {
  int kept = 0;
  for (int k = 0; k < n; ++k) kept += (val[k] != 0.0);
  start_.push_back(static_cast<int64_t>(idx_.size()));
  len_.push_back(kept);
  cap_.push_back(kept);
  for (int k = 0; k < n; ++k) {
    if (val[k] == 0.0) continue;
    idx_.push_back(idx[k]);
    val_.push_back(val[k]);
  }
  nnz_ += kept;
}

void RowMatrix::AddEmptyRows(int count) {
  const int64_t at = static_cast<int64_t>(idx_.size());
  start_.insert(start_.end(), count, at);
  len_.insert(len_.end(), count, 0);
  cap_.insert(cap_.end(), count, 0);
}

double RowMatrix::Get(int row, int col) const {
  const int64_t s = start_[row];
  for (int k = 0; k < len_[row]; ++k)
    if (idx_[s + k] == col) return val_[s + k];
  return 0.0;
}

void RowMatrix::Set(int row, int col, double v) {
  int64_t s = start_[row];
  for (int k = 0; k < len_[row]; ++k) {
    if (idx_[s + k] != col) continue;
    if (v != 0.0) {
      val_[s + k] = v;
      return;
    }
    // Remove by moving the row's last entry into the hole.
    const int last = len_[row] - 1;
    idx_[s + k] = idx_[s + last];
    val_[s + k] = val_[s + last];
    --len_[row];
    --nnz_;
    return;
  }
  if (v == 0.0) return;
  Append(row, col, v);
}

void RowMatrix::Append(int row, int col, double v) {
  if (len_[row] == cap_[row]) Grow(row, static_cast<int64_t>(len_[row]) + 1);
  const int64_t at = start_[row] + len_[row];
  idx_[at] = col;
  val_[at] = v;
  ++len_[row];
  ++nnz_;
}

void RowMatrix::Reserve(int row, int extra) {
  const int64_t need = static_cast<int64_t>(len_[row]) + extra;
  if (need > cap_[row]) Grow(row, need);
}

std::span<const int> RowMatrix::RowIdx(int row) const {
  return {idx_.data() + start_[row], static_cast<size_t>(len_[row])};
}

std::span<const double> RowMatrix::RowVal(int row) const {
  return {val_.data() + start_[row], static_cast<size_t>(len_[row])};
}

// Moves `row` to the end of the arena with room for at least `need` entries (doubling, so a
// sequence of appends costs amortised O(1) each). A row already at the end grows in place.
void RowMatrix::Grow(int row, int64_t need) {
  int64_t newCap = std::max<int64_t>({need, 2 * static_cast<int64_t>(cap_[row]), 4});
  const int64_t s = start_[row];
  const int64_t arena = static_cast<int64_t>(idx_.size());
  if (s + cap_[row] == arena) {  // last slice: extend in place
    idx_.resize(s + newCap);
    val_.resize(s + newCap);
    cap_[row] = static_cast<int>(newCap);
    return;
  }
  idx_.resize(arena + newCap);
  val_.resize(arena + newCap);
  std::copy_n(idx_.begin() + s, len_[row], idx_.begin() + arena);
  std::copy_n(val_.begin() + s, len_[row], val_.begin() + arena);
  garbage_ += cap_[row];
  start_[row] = arena;
  cap_[row] = static_cast<int>(newCap);
  if (garbage_ > static_cast<int64_t>(idx_.size()) / 2) Compact();
}

// Rewrites the arena with every row packed in order; rows keep their capacity slack only when
// they are the growing row (capacity equals length afterwards otherwise). O(arena size).
void RowMatrix::Compact() {
  std::vector<int> idx;
  std::vector<double> val;
  idx.reserve(nnz_ + nnz_ / 4 + 4);
  val.reserve(nnz_ + nnz_ / 4 + 4);
  for (int r = 0; r < rows(); ++r) {
    const int64_t s = start_[r];
    start_[r] = static_cast<int64_t>(idx.size());
    idx.insert(idx.end(), idx_.begin() + s, idx_.begin() + s + len_[r]);
    val.insert(val.end(), val_.begin() + s, val_.begin() + s + len_[r]);
    cap_[r] = len_[r];
  }
  idx_.swap(idx);
  val_.swap(val);
  garbage_ = 0;
}

void RowMatrix::DeleteRows(const std::vector<char>& drop) {
  int out = 0;
  for (int r = 0; r < rows(); ++r) {
    if (drop[r]) {
      nnz_ -= len_[r];
      continue;
    }
    start_[out] = start_[r];
    len_[out] = len_[r];
    cap_[out] = cap_[r];
    ++out;
  }
  start_.resize(out);
  len_.resize(out);
  cap_.resize(out);
  Compact();
}

void RowMatrix::RenumberCols(const std::vector<int>& newIndex) {
  for (int r = 0; r < rows(); ++r) {
    const int64_t s = start_[r];
    int out = 0;
    for (int k = 0; k < len_[r]; ++k) {
      const int c = newIndex[idx_[s + k]];
      if (c < 0) continue;
      idx_[s + out] = c;
      val_[s + out] = val_[s + k];
      ++out;
    }
    nnz_ -= len_[r] - out;
    len_[r] = out;
  }
}

void RowMatrix::Clear() { *this = RowMatrix{}; }

size_t RowMatrix::MemoryBytes() const {
  return start_.capacity() * sizeof(int64_t) + (len_.capacity() + cap_.capacity()) * sizeof(int) +
         idx_.capacity() * sizeof(int) + val_.capacity() * sizeof(double);
}

}  // namespace zelq::engine
