// The content of one engine problem: columns, rows, matrix, objective, names and the extra
// rows (lazy constraints, user cuts). Plain data with small helpers; the C entry points in
// engine/api validate arguments before they change anything here.
#pragma once

#include <string>
#include <vector>

#include "problem/names.h"
#include "problem/row_matrix.h"

namespace zelq::engine {

inline constexpr double kInf = 1e30;

// Rows kept apart from the model rows (lazy constraints and user cuts), in CSR form.
struct ExtraRows {
  std::vector<int> beg;  // size count + 1
  std::vector<int> idx;
  std::vector<double> val;
  std::vector<double> lower, upper;
  std::vector<std::string> names;
  int count() const { return static_cast<int>(lower.size()); }
  void Clear() { *this = ExtraRows{}; }
  // Appends a row (entries already checked; zeros are kept out).
  void Add(int n, const int* rowIdx, const double* rowVal, double lo, double up, const char* name);
  // Column renumbering after deletions (newIndex[c] == -1: entry dropped). O(entries).
  void RenumberCols(const std::vector<int>& newIndex);
};

struct Problem {
  // Columns.
  std::vector<double> obj, colLower, colUpper, branchFactor;
  std::vector<char> colType;  // 'C', 'B' or 'I'
  NameList colNames;
  // Rows: lower <= a_i x <= upper.
  std::vector<double> rowLower, rowUpper;
  NameList rowNames;
  RowMatrix matrix;
  int objSense = 1;  // 1 minimise, -1 maximise
  double objConst = 0.0;
  ExtraRows lazy, cuts;

  int cols() const { return static_cast<int>(obj.size()); }
  int rows() const { return static_cast<int>(rowLower.size()); }
  bool IsMip() const;  // any 'B' or 'I' column
  int CountType(char t) const;

  void Clear();
  // Column-wise copy of the matrix in CSC form (beg has cols()+1 entries).
  void ColumnMatrix(std::vector<int>& beg, std::vector<int>& idx, std::vector<double>& val) const;
};

// Converts a sense and right-hand side to row bounds. Returns false for an unknown sense.
// 'R' and 0 take [bound, upper]; 'N' is free.
bool SenseToBounds(char sense, double bound, double upper, double* lo, double* up);

}  // namespace zelq::engine
