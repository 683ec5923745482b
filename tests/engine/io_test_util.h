// Helpers for the file-format tests: parse text into a Problem and compare problems.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "io/lp_format.h"
#include "io/model_builder.h"
#include "io/mps_read.h"
#include "problem/problem.h"

namespace zelq::engine::io {

struct Parsed {
  int rc = -1;
  std::string err;
  std::vector<std::string> notes;
  Problem p;
};

inline Parsed ParseWith(int (*parse)(std::string_view, const std::string&, ModelBuilder&,
                                     std::string&, std::vector<std::string>&),
                        const std::string& text, const std::string& source) {
  Parsed out;
  ModelBuilder mb;
  out.rc = parse(text, source, mb, out.err, out.notes);
  if (out.rc == 0) mb.Build(out.p);
  return out;
}

inline Parsed Mps(const std::string& text) { return ParseWith(ParseMps, text, "t.mps"); }
inline Parsed Lp(const std::string& text) { return ParseWith(ParseLp, text, "t.lp"); }

// Dense copy of the matrix for comparisons.
inline std::vector<std::vector<double>> DenseRows(const Problem& p) {
  std::vector<std::vector<double>> d(p.rows(), std::vector<double>(p.cols(), 0.0));
  for (int r = 0; r < p.rows(); ++r) {
    auto idx = p.matrix.RowIdx(r);
    auto val = p.matrix.RowVal(r);
    for (size_t k = 0; k < idx.size(); ++k) d[r][idx[k]] = val[k];
  }
  return d;
}

// Everything a problem file carries, compared exactly (names included when `names`).
inline void ExpectSameProblem(const Problem& a, const Problem& b, bool names = true) {
  ASSERT_EQ(a.cols(), b.cols());
  ASSERT_EQ(a.rows(), b.rows());
  EXPECT_EQ(a.objSense, b.objSense);
  EXPECT_EQ(a.objConst, b.objConst);
  EXPECT_EQ(a.obj, b.obj);
  EXPECT_EQ(a.colLower, b.colLower);
  EXPECT_EQ(a.colUpper, b.colUpper);
  EXPECT_EQ(a.colType, b.colType);
  EXPECT_EQ(a.rowLower, b.rowLower);
  EXPECT_EQ(a.rowUpper, b.rowUpper);
  EXPECT_EQ(a.matrix.nnz(), b.matrix.nnz());
  EXPECT_TRUE(DenseRows(a) == DenseRows(b));
  for (auto [x, y] : {std::pair{&a.lazy, &b.lazy}, std::pair{&a.cuts, &b.cuts}}) {
    EXPECT_EQ(x->beg, y->beg);
    EXPECT_EQ(x->idx, y->idx);
    EXPECT_EQ(x->val, y->val);
    EXPECT_EQ(x->lower, y->lower);
    EXPECT_EQ(x->upper, y->upper);
    if (names) {
      EXPECT_EQ(x->names, y->names);
    }
  }
  if (!names) return;
  for (int j = 0; j < a.cols(); ++j) EXPECT_EQ(a.colNames.Get(j), b.colNames.Get(j));
  for (int i = 0; i < a.rows(); ++i) EXPECT_EQ(a.rowNames.Get(i), b.rowNames.Get(i));
}

// A small model with two rows, two lazy constraints and one user cut (one unnamed).
inline Problem WithExtraRows() {
  ModelBuilder mb;
  int x = mb.AddCol("x"), y = mb.AddCol("y");
  mb.obj[x] = 1.0;
  mb.obj[y] = -2.0;
  int r0 = mb.AddRow("r0", -kInf, 4.0);
  int l0 = mb.AddRow("l0", 1.0, 3.0, ModelBuilder::kLazy);
  int c0 = mb.AddRow("", -kInf, 2.0, ModelBuilder::kCut);
  int r1 = mb.AddRow("r1", 1.0, kInf);
  int l1 = mb.AddRow("l1", 0.0, 0.0, ModelBuilder::kLazy);
  mb.AddEntry(r0, x, 1.0);
  mb.AddEntry(r0, y, 1.0);
  mb.AddEntry(l0, y, 2.0);
  mb.AddEntry(c0, x, 1.0);
  mb.AddEntry(c0, y, -1.0);
  mb.AddEntry(r1, x, 3.0);
  mb.AddEntry(l1, x, 1.0);
  mb.AddEntry(l1, y, -1.0);
  Problem p;
  mb.Build(p);
  return p;
}

inline std::string ReadAll(const std::string& path) {
  std::FILE* f = std::fopen(path.c_str(), "rb");
  std::string s;
  if (!f) return s;
  char buf[4096];
  size_t n;
  while ((n = std::fread(buf, 1, sizeof buf, f)) > 0) s.append(buf, n);
  std::fclose(f);
  return s;
}

}  // namespace zelq::engine::io
