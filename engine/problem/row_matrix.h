// Row-wise sparse matrix kept in one arena.
//
// Each row owns a slice [start, start + cap) of the arena, of which the first len entries are
// used. Appending to a full row moves the row to the end of the arena with doubled capacity, so
// appends are amortised O(1) and adding rows one by one is linear in the number of non-zeros.
// Moved-out slices become garbage that Compact() reclaims when it exceeds half the arena.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

namespace zelq::engine {

class RowMatrix {
 public:
  int rows() const { return static_cast<int>(start_.size()); }
  int64_t nnz() const { return nnz_; }

  // Appends a row; the caller has checked indices, duplicates and finiteness. Zeros are dropped.
  void AddRow(int n, const int* idx, const double* val);
  // Appends `count` empty rows.
  void AddEmptyRows(int count);
  // Coefficient of (row, col), 0 when absent. O(row length).
  double Get(int row, int col) const;
  // Sets (row, col) to v; v == 0 removes the entry. O(row length).
  void Set(int row, int col, double v);
  // Appends (col, v) to a row that has no entry for col yet; amortised O(1).
  void Append(int row, int col, double v);
  // Makes room for `extra` more entries in a row (before a run of Append calls).
  void Reserve(int row, int extra);

  std::span<const int> RowIdx(int row) const;
  std::span<const double> RowVal(int row) const;

  // Removes rows whose flag in `drop` is non-zero (drop.size() == rows()).
  void DeleteRows(const std::vector<char>& drop);
  // Renumbers columns: newIndex[c] is the new index of column c, or -1 when c is deleted.
  void RenumberCols(const std::vector<int>& newIndex);
  void Clear();
  // Approximate bytes held (for the benchmarks).
  size_t MemoryBytes() const;

 private:
  void Grow(int row, int64_t need);
  void Compact();

  std::vector<int64_t> start_;
  std::vector<int> len_;
  std::vector<int> cap_;
  std::vector<int> idx_;
  std::vector<double> val_;
  int64_t nnz_ = 0;
  int64_t garbage_ = 0;
};

}  // namespace zelq::engine
