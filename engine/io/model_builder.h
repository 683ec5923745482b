// Collects a model while a problem file is parsed and turns it into a Problem at the end, so a
// reader never touches the caller's problem before the whole file has been accepted.
#pragma once

#include <string>
#include <vector>

#include "problem/problem.h"

namespace zelq::engine::io {

struct ModelBuilder {
  // Columns: objective, bounds, type ('C', 'I', 'B') and name.
  std::vector<double> obj, colLower, colUpper;
  std::vector<char> colType;
  std::vector<std::string> colNames;
  // Rows: lower <= a_i x <= upper; kind 0 for a model row, kLazy or kCut for rows that go to
  // the problem's lazy constraints or user cuts.
  std::vector<double> rowLower, rowUpper;
  std::vector<std::string> rowNames;
  std::vector<char> rowKind;
  static constexpr char kLazy = 1, kCut = 2;
  int objSense = 1;
  double objConst = 0.0;

  // A continuous column with bounds [0, inf) and no objective; returns its index.
  int AddCol(std::string name);
  int AddRow(std::string name, double lower, double upper, char kind = 0);
  // Matrix entry; entries given twice for one (row, col) are summed by Build().
  void AddEntry(int row, int col, double value);

  int cols() const { return static_cast<int>(obj.size()); }
  int rows() const { return static_cast<int>(rowLower.size()); }

  // Fills `out` (a fresh problem) with the collected model; zero coefficients are dropped.
  // Model rows keep their relative order, and so do lazy constraints and user cuts.
  void Build(Problem& out) const;

 private:
  struct Entry {
    int row, col;
    double value;
  };
  std::vector<Entry> entries_;
};

}  // namespace zelq::engine::io
