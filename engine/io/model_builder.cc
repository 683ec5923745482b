#include "io/model_builder.h"

#include <algorithm>

namespace zelq::engine::io {

int ModelBuilder::AddCol(std::string name) {
  obj.push_back(0.0);
  colLower.push_back(0.0);
  colUpper.push_back(kInf);
  colType.push_back('C');
  colNames.push_back(std::move(name));
  return cols() - 1;
}

int ModelBuilder::AddRow(std::string name, double lower, double upper, char kind) {
  rowLower.push_back(lower);
  rowUpper.push_back(upper);
  rowNames.push_back(std::move(name));
  rowKind.push_back(kind);
  return rows() - 1;
}

void ModelBuilder::AddEntry(int row, int col, double value) {
  entries_.push_back(Entry{row, col, value});
}

void ModelBuilder::Build(Problem& out) const {
  out.Clear();
  out.obj = obj;
  out.colLower = colLower;
  out.colUpper = colUpper;
  out.colType = colType;
  out.branchFactor.assign(obj.size(), 0.0);
  for (const std::string& n : colNames) out.colNames.Add(n.c_str());
  out.objSense = objSense;
  out.objConst = objConst;

  // Bucket the entries by row, then sort each row by column and merge duplicates.
  std::vector<int> start(rowLower.size() + 1, 0);
  for (const Entry& e : entries_) ++start[e.row + 1];
  for (size_t i = 1; i < start.size(); ++i) start[i] += start[i - 1];
  std::vector<int> fill(start.begin(), start.end() - 1);
  std::vector<std::pair<int, double>> byRow(entries_.size());
  for (const Entry& e : entries_) byRow[fill[e.row]++] = {e.col, e.value};
  std::vector<int> idx;
  std::vector<double> val;
  for (int r = 0; r < rows(); ++r) {
    auto first = byRow.begin() + start[r], last = byRow.begin() + start[r + 1];
    std::sort(first, last, [](const auto& a, const auto& b) { return a.first < b.first; });
    idx.clear();
    val.clear();
    for (auto it = first; it != last; ++it) {
      if (!idx.empty() && idx.back() == it->first) {
        val.back() += it->second;
      } else {
        idx.push_back(it->first);
        val.push_back(it->second);
      }
    }
    // Entries that cancel out or were written as 0 are not kept.
    size_t k = 0;
    for (size_t i = 0; i < idx.size(); ++i) {
      if (val[i] != 0.0) {
        idx[k] = idx[i];
        val[k++] = val[i];
      }
    }
    const int n = static_cast<int>(k);
    if (rowKind[r] == kLazy || rowKind[r] == kCut) {
      ExtraRows& extra = rowKind[r] == kLazy ? out.lazy : out.cuts;
      extra.Add(n, idx.data(), val.data(), rowLower[r], rowUpper[r], rowNames[r].c_str());
      continue;
    }
    out.rowLower.push_back(rowLower[r]);
    out.rowUpper.push_back(rowUpper[r]);
    out.rowNames.Add(rowNames[r].c_str());
    out.matrix.AddRow(n, idx.data(), val.data());
  }
}

}  // namespace zelq::engine::io
