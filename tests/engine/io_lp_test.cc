// White-box tests of the LP-format reader and writer: syntax forms, errors with line numbers,
// and exact MPS -> LP -> problem round trips.
#include <gtest/gtest.h>

#include <string>

#include "io/text_io.h"
#include "io_test_util.h"

namespace zelq::engine::io {
namespace {

const std::string kData = ZELQ_TEST_DATA;

int Col(const Problem& p, const char* name) { return p.colNames.Find(name); }

TEST(LpRead, SectionsAndForms) {
  Parsed r =
      Lp("\\ comment line\n"
         "Maximize\n"
         " obj: 3 x + 2 y - z + 0 w + 4.5 \\ trailing comment\n"
         "   - 1.5\n"
         "Subject To\n"
         " c1: x + y + z <= 10\n"
         " c2: - x + 2 y >= -5\n"
         " 2 x - 3 * z = 0\n"
         " rng: -2 <= x - y <= 8\n"
         " rev: 9 >= y + z >= 1\n"
         " k: x + 3 <= 7\n"
         " fr: z >= -inf\n"
         "Bounds\n"
         " x <= 40\n"
         " -inf <= y <= -1\n"
         " z free\n"
         " 2 <= n <= 9\n"
         " w = 2.5\n"
         " 1 <= b\n"
         "General\n n\n"
         "Binary\n b c\n"
         "End\n");
  ASSERT_EQ(r.rc, 0) << r.err;
  const Problem& p = r.p;
  EXPECT_EQ(p.objSense, -1);
  EXPECT_EQ(p.objConst, 3.0);
  ASSERT_EQ(p.cols(), 7);  // x y z w, then n b c in order of appearance
  EXPECT_EQ(p.colNames.Get(4), "n");
  EXPECT_EQ(p.obj[Col(p, "z")], -1.0);
  ASSERT_EQ(p.rows(), 7);
  EXPECT_EQ(p.rowNames.Get(2), "");  // unnamed row
  EXPECT_EQ(p.matrix.Get(2, Col(p, "z")), -3.0);
  struct RowWant {
    int row;
    double lo, up;
  } rows[] = {{0, -kInf, 10}, {1, -5, kInf}, {2, 0, 0},       {3, -2, 8},
              {4, 1, 9},      {5, -kInf, 4}, {6, -kInf, kInf}};
  for (const RowWant& w : rows) {
    EXPECT_EQ(p.rowLower[w.row], w.lo) << w.row;
    EXPECT_EQ(p.rowUpper[w.row], w.up) << w.row;
  }
  struct ColWant {
    const char* name;
    char type;
    double lo, up;
  } cols[] = {{"x", 'C', 0, 40},    {"y", 'C', -kInf, -1}, {"z", 'C', -kInf, kInf},
              {"w", 'C', 2.5, 2.5}, {"n", 'I', 2, 9},      {"b", 'B', 1, 1},
              {"c", 'B', 0, 1}};
  for (const ColWant& w : cols) {
    int j = Col(p, w.name);
    ASSERT_GE(j, 0) << w.name;
    EXPECT_EQ(p.colType[j], w.type) << w.name;
    EXPECT_EQ(p.colLower[j], w.lo) << w.name;
    EXPECT_EQ(p.colUpper[j], w.up) << w.name;
  }
}

TEST(LpRead, LoneNegativeUpperBoundKeepsLowerZero) {
  Parsed r = Lp("min\n x\nst\n c: x >= -5\nbounds\n x <= -1\nend\n");
  ASSERT_EQ(r.rc, 0) << r.err;
  EXPECT_EQ(r.p.colLower[0], 0.0);
  EXPECT_EQ(r.p.colUpper[0], -1.0);
}

TEST(LpRead, ErrorsNameFileLineAndProblem) {
  struct Case {
    const char* text;
    int code;
    const char* where;
    const char* what;
  } cases[] = {
      {"Subject To\n c: x <= 1\nEnd\n", 3, "t.lp:1:", "expected Minimize or Maximize"},
      {"Min\n x\nSubject To\n c: x + y\nEnd\n", 3, "t.lp:5:", "expected '<=', '>=' or '='"},
      {"Min\n x\nSubject To\n c: x <= abc\n", 3, "t.lp:4:", "expected a number"},
      {"Min\n x y\nEnd\n", 3, "t.lp:2:", "expected '+' or '-' before 'y'"},
      {"Min\n x\nSubject To\n c: x <= 1\n c: x >= 0\n", 3, "t.lp:5:", "duplicate row name 'c'"},
      {"Min\n x\nSubject To\n c: 1 <= x >= 0\n", 3, "t.lp:4:", "ranged row"},
      {"Min\n x\nBounds\n x\n", 3, "t.lp:5:", "expected a comparison"},
      {"Min\n x\nSubject To\n c: 0 >= 1 + x\n", 3, "t.lp:5:", "expected '<=', '>=' or '='"},
      {"Min\n x\nBounds\n x >= inf\n", 3, "t.lp:4:", "infinite bound"},
      {"Min\n 1.2.3 x\n", 3, "t.lp:2:", "bad number '1.2.3'"},
      {"Min\n x + [ x ^ 2 ] / 2\n", 10, "t.lp:2:", "quadratic"},
      {"Min\n x\nSubject To\n c: b = 1 -> x <= 2\n", 10, "t.lp:4:", "indicator"},
      {"Min\n x\nSOS\n s1: S1:: x:1\n", 10, "t.lp:3:", "not supported"},
      {"Min\n x\nSemi-Continuous\n x\n", 10, "t.lp:3:", "not supported"},
      {"Min\n x\nSubject To\n c: x = inf\n", 3, "t.lp:4:", "infinite right-hand side"},
  };
  for (const Case& c : cases) {
    Parsed r = Lp(c.text);
    EXPECT_EQ(r.rc, c.code) << c.text;
    EXPECT_NE(r.err.find(c.where), std::string::npos) << c.text << " -> " << r.err;
    EXPECT_NE(r.err.find(c.what), std::string::npos) << c.text << " -> " << r.err;
  }
}

// MPS -> LP text -> problem gives the same problem (ranges stay one row each).
TEST(LpWrite, RoundTripFromMpsIsExact) {
  for (const char* name : {"afiro.mps", "blend.mps", "p0033.mps", "flugpl.mps", "traps_free.mps"}) {
    SCOPED_TRACE(name);
    std::string text, err;
    ASSERT_EQ(ReadTextFile(kData + "/" + name, text, err), 0) << err;
    Parsed a = ParseWith(ParseMps, text, name);
    ASSERT_EQ(a.rc, 0) << a.err;
    std::vector<std::string> notes;
    std::string lp = FormatLp(a.p, notes);
    Parsed b = Lp(lp);
    ASSERT_EQ(b.rc, 0) << b.err << "\n" << lp;
    // blend's numeric row names are not LP names: they come back with a '_' prefix.
    ExpectSameProblem(a.p, b.p, std::string(name) != "blend.mps");
  }
}

TEST(LpWrite, NamesAreCleanedAndKeptApart) {
  ModelBuilder mb;
  for (const char* n : {"x y", "x_y", "2abc", "end", "a+b", "e7"}) mb.AddCol(n);
  for (int j = 0; j < mb.cols(); ++j) mb.obj[j] = j + 1.0;
  mb.AddRow("bounds", -kInf, 3.0);  // keywords are prefixed for readers that reject them
  mb.AddEntry(0, 0, 1.0);
  Problem p;
  mb.Build(p);
  std::vector<std::string> notes;
  std::string lp = FormatLp(p, notes);
  Parsed b = Lp(lp);
  ASSERT_EQ(b.rc, 0) << b.err << "\n" << lp;
  ExpectSameProblem(p, b.p, false);
  std::vector<std::string> names;
  for (int j = 0; j < b.p.cols(); ++j) names.push_back(b.p.colNames.Get(j));
  EXPECT_EQ(names[0], "x_y");
  EXPECT_NE(names[1], "x_y");
  EXPECT_EQ(names[2], "_2abc");
  EXPECT_EQ(names[3], "_end");
  EXPECT_EQ(names[4], "a_b");
  EXPECT_EQ(b.p.rowNames.Get(0), "_bounds");
  EXPECT_FALSE(notes.empty());
}

TEST(LpWrite, LazyConstraintsAndUserCutsRoundTrip) {
  Problem p = WithExtraRows();
  std::vector<std::string> notes;
  std::string lp = FormatLp(p, notes);
  EXPECT_NE(
      lp.find(
          "Lazy Constraints\n l0: 1 <= 2 y <= 3\n l1: x - y = 0\nUser Cuts\n cut0: x - y <= 2\n"),
      std::string::npos)
      << lp;
  Parsed back = Lp(lp);
  ASSERT_EQ(back.rc, 0) << back.err << "\n" << lp;
  p.cuts.names[0] = "cut0";
  ExpectSameProblem(p, back.p);
}

TEST(LpWrite, EmptyProblemAndEmptyRows) {
  ModelBuilder mb;
  mb.objConst = -2.0;
  mb.AddRow("empty", 1.0, kInf);
  Problem p;
  mb.Build(p);
  std::vector<std::string> notes;
  std::string lp = FormatLp(p, notes);
  Parsed b = Lp(lp);
  ASSERT_EQ(b.rc, 0) << b.err << "\n" << lp;
  ExpectSameProblem(p, b.p);
}

}  // namespace
}  // namespace zelq::engine::io
