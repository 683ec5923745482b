// White-box tests of the problem store: row matrix arena, name lists, problem helpers.
#include <gtest/gtest.h>

#include <map>
#include <random>

#include "problem/problem.h"

namespace zelq::engine {
namespace {

using Dense = std::map<std::pair<int, int>, double>;

Dense Dump(const RowMatrix& m) {
  Dense d;
  for (int r = 0; r < m.rows(); ++r) {
    auto idx = m.RowIdx(r);
    auto val = m.RowVal(r);
    for (size_t k = 0; k < idx.size(); ++k) {
      EXPECT_TRUE(d.emplace(std::make_pair(r, idx[k]), val[k]).second) << "duplicate entry";
    }
  }
  return d;
}

TEST(RowMatrix, AddRowDropsZerosAndKeepsOrder) {
  RowMatrix m;
  const int idx[] = {4, 1, 7};
  const double val[] = {2.0, 0.0, -3.5};
  m.AddRow(3, idx, val);
  m.AddEmptyRows(2);
  m.AddRow(1, idx, val);
  ASSERT_EQ(m.rows(), 4);
  EXPECT_EQ(m.nnz(), 3);
  EXPECT_EQ(std::vector<int>(m.RowIdx(0).begin(), m.RowIdx(0).end()), (std::vector<int>{4, 7}));
  EXPECT_TRUE(m.RowIdx(1).empty());
  EXPECT_TRUE(m.RowIdx(2).empty());
  EXPECT_EQ(m.Get(3, 4), 2.0);
  EXPECT_EQ(m.Get(0, 1), 0.0);
  EXPECT_EQ(m.Get(0, 7), -3.5);
}

// Random edits against a dense reference: growth of rows that are not last in the arena moves
// them, and the garbage they leave is compacted; content must never change by it.
TEST(RowMatrix, RandomEditsMatchReference) {
  std::mt19937 rng(7);
  RowMatrix m;
  Dense ref;
  const int kRows = 40, kCols = 30;
  m.AddEmptyRows(kRows);
  for (int step = 0; step < 20000; ++step) {
    const int r = rng() % kRows, c = rng() % kCols;
    const double v = (rng() % 4 == 0) ? 0.0 : static_cast<double>(rng() % 100) - 50.0;
    m.Set(r, c, v);
    if (v == 0.0)
      ref.erase({r, c});
    else
      ref[{r, c}] = v;
  }
  EXPECT_EQ(Dump(m), ref);
  EXPECT_EQ(m.nnz(), static_cast<int64_t>(ref.size()));
  // The arena stays within a constant factor of the live entries.
  EXPECT_LT(m.MemoryBytes(), 64 * (ref.size() + kRows) + 4096);
}

TEST(RowMatrix, DeleteRowsAndRenumberCols) {
  RowMatrix m;
  for (int r = 0; r < 5; ++r) {
    const int idx[] = {0, 1, 2, 3};
    const double val[] = {r + 1.0, r + 2.0, r + 3.0, r + 4.0};
    m.AddRow(4, idx, val);
  }
  m.Set(4, 5, 9.0);  // row 4 grows after the others
  m.DeleteRows({1, 0, 0, 1, 0});
  ASSERT_EQ(m.rows(), 3);
  EXPECT_EQ(m.nnz(), 13);
  EXPECT_EQ(m.Get(0, 0), 2.0);  // old row 1
  EXPECT_EQ(m.Get(1, 3), 6.0);  // old row 2
  EXPECT_EQ(m.Get(2, 5), 9.0);  // old row 4
  // Drop columns 1 and 3; 0->0, 2->1, 4->2, 5->3.
  m.RenumberCols({0, -1, 1, -1, 2, 3});
  EXPECT_EQ(m.nnz(), 7);
  EXPECT_EQ(m.Get(1, 1), 5.0);
  EXPECT_EQ(m.Get(2, 3), 9.0);
  EXPECT_EQ(m.Get(2, 0), 5.0);
  // Rows keep accepting entries after the renumbering.
  m.Set(0, 2, 1.5);
  EXPECT_EQ(m.Get(0, 2), 1.5);
  EXPECT_EQ(m.nnz(), 8);
}

TEST(RowMatrix, AppendManyToOneRowAmongOthers) {
  RowMatrix m;
  const int one[] = {0};
  const double v[] = {1.0};
  for (int r = 0; r < 100; ++r) m.AddRow(1, one, v);
  for (int c = 1; c < 1000; ++c) m.Append(50, c, c);
  m.Reserve(10, 5);
  for (int c = 1; c <= 5; ++c) m.Append(10, c, -c);
  EXPECT_EQ(m.nnz(), 100 + 999 + 5);
  EXPECT_EQ(m.RowIdx(50).size(), 1000u);
  EXPECT_EQ(m.Get(50, 999), 999.0);
  EXPECT_EQ(m.Get(10, 5), -5.0);
  EXPECT_EQ(m.Get(49, 0), 1.0);
  EXPECT_EQ(m.Get(51, 0), 1.0);
}

TEST(NameList, FindAfterAddsRenamesAndDeletes) {
  NameList n;
  n.Add("x");
  n.AddUnnamed(2);
  n.Add("y");
  EXPECT_EQ(n.Find("y"), 3);
  EXPECT_EQ(n.Find("x"), 0);
  EXPECT_EQ(n.Find(""), -1);
  EXPECT_EQ(n.Display(1, 'C'), "C1");
  // Adds after a lookup keep the index usable, including across vector growth.
  for (int i = 0; i < 200; ++i) {
    n.Add(("v" + std::to_string(i)).c_str());
    ASSERT_EQ(n.Find("v" + std::to_string(i)), 4 + i);
  }
  EXPECT_EQ(n.Find("x"), 0);
  n.Set(0, "z");
  EXPECT_EQ(n.Find("x"), -1);
  EXPECT_EQ(n.Find("z"), 0);
  n.Set(3, nullptr);
  EXPECT_EQ(n.Find("y"), -1);
  EXPECT_EQ(n.Display(3, 'R'), "R3");
  std::vector<char> drop(n.size(), 0);
  drop[0] = drop[1] = 1;
  n.Delete(drop);
  EXPECT_EQ(n.Find("z"), -1);
  EXPECT_EQ(n.Find("v0"), 2);
  EXPECT_EQ(n.Display(0, 'C'), "C0");
  EXPECT_TRUE(n.AnyNamed());
}

TEST(NameList, DuplicateNamesFindTheFirst) {
  NameList n;
  n.Add("a");
  n.Add("a");
  EXPECT_EQ(n.Find("a"), 0);
  n.Add("a");
  EXPECT_EQ(n.Find("a"), 0);
  n.Delete({1, 0, 0});
  EXPECT_EQ(n.Find("a"), 0);
  EXPECT_EQ(n.size(), 2);
}

TEST(Problem, ColumnMatrixAndTypeCounts) {
  Problem p;
  p.obj = {1, 2, 3};
  p.colLower = {0, 0, 0};
  p.colUpper = {1, 1, 1};
  p.colType = {'C', 'I', 'B'};
  const int i0[] = {2, 0};
  const double v0[] = {5, 6};
  const int i1[] = {1};
  const double v1[] = {7};
  p.matrix.AddRow(2, i0, v0);
  p.matrix.AddRow(1, i1, v1);
  p.rowLower = {0, 0};
  p.rowUpper = {1, 1};
  std::vector<int> beg, idx;
  std::vector<double> val;
  p.ColumnMatrix(beg, idx, val);
  EXPECT_EQ(beg, (std::vector<int>{0, 1, 2, 3}));
  EXPECT_EQ(idx, (std::vector<int>{0, 1, 0}));
  EXPECT_EQ(val, (std::vector<double>{6, 7, 5}));
  EXPECT_TRUE(p.IsMip());
  EXPECT_EQ(p.CountType('B'), 1);
  p.colType = {'C', 'C', 'C'};
  EXPECT_FALSE(p.IsMip());
}

TEST(Problem, SenseToBounds) {
  struct Case {
    char sense;
    double b, u, lo, up;
  } cases[] = {{'L', 4, 0, -kInf, 4},   {'G', 4, 0, 4, kInf},  {'E', 4, 0, 4, 4},
               {'N', 4, 0, -kInf, kInf}, {'R', 1, 3, 1, 3},     {0, 1, 3, 1, 3},
               {'L', 2e30, 0, -kInf, kInf}, {'R', -5e30, 7e31, -kInf, kInf}};
  for (const Case& c : cases) {
    double lo = 0, up = 0;
    ASSERT_TRUE(SenseToBounds(c.sense, c.b, c.u, &lo, &up)) << c.sense;
    EXPECT_EQ(lo, c.lo) << c.sense;
    EXPECT_EQ(up, c.up) << c.sense;
  }
  double lo = 0, up = 0;
  EXPECT_FALSE(SenseToBounds('X', 0, 0, &lo, &up));
  EXPECT_FALSE(SenseToBounds('l', 0, 0, &lo, &up));
}

TEST(ExtraRows, AddAndRenumber) {
  ExtraRows e;
  const int i0[] = {0, 2, 3};
  const double v0[] = {1, 0, 3};
  e.Add(3, i0, v0, -kInf, 4, "a");
  e.Add(0, nullptr, nullptr, 0, kInf, nullptr);
  const int i2[] = {1};
  const double v2[] = {2};
  e.Add(1, i2, v2, 1, 1, "c");
  EXPECT_EQ(e.count(), 3);
  EXPECT_EQ(e.beg, (std::vector<int>{0, 2, 2, 3}));
  e.RenumberCols({0, -1, 1, 2});
  EXPECT_EQ(e.beg, (std::vector<int>{0, 2, 2, 2}));
  EXPECT_EQ(e.idx, (std::vector<int>{0, 2}));
  EXPECT_EQ(e.val, (std::vector<double>{1, 3}));
}

}  // namespace
}  // namespace zelq::engine
