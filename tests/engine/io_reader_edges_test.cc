// Inputs at the edges of what the file readers accept, kept from fuzzing: each case once got
// through a reader as content the C interface would refuse, or broke a reader's own round trip.
#include <gtest/gtest.h>

#include <string>

#include "io_test_util.h"

namespace zelq::engine::io {
namespace {

void ExpectError(const Parsed& r, const std::string& text, const std::string& where,
                 const std::string& what) {
  EXPECT_EQ(r.rc, 3) << text;
  EXPECT_NE(r.err.find(where), std::string::npos) << text << " -> " << r.err;
  EXPECT_NE(r.err.find(what), std::string::npos) << text << " -> " << r.err;
}

// A row bound of -infinity above or +infinity below leaves no value; the C interface refuses
// such rows, so the readers must too, also when constants move the bound there.
TEST(ReaderEdges, LpRowBoundsInfiniteOnTheWrongSide) {
  const std::string head = "Min\n x\nSubject To\n";
  struct Case {
    const char* rows;
    const char* what;
  } bad[] = {
      {" c: x <= -inf\n", "infinite upper bound on the wrong side of row 'c'"},
      {" c: x >= +infinity\n", "infinite lower bound on the wrong side of row 'c'"},
      {" c: x + 1e30 = 5\n", "infinite upper bound on the wrong side of row 'c'"},
      {" c: x - 1e30 >= 5\n", "infinite lower bound on the wrong side of row 'c'"},
      {" 0 < 0 - 1e30\n", "infinite upper bound on the wrong side of the row"},
  };
  for (const Case& c : bad) ExpectError(Lp(head + c.rows), c.rows, "t.lp:4:", c.what);

  // The right infinity is no bound; large finite constants stay finite.
  Parsed ok = Lp(head + " a: x <= inf\n b: x >= -inf\n c: x + 1e29 <= 5\n d: -1e30 <= x <= 1\n");
  ASSERT_EQ(ok.rc, 0) << ok.err;
  ASSERT_EQ(ok.p.rows(), 4);
  EXPECT_EQ(ok.p.rowUpper[0], 1e30);
  EXPECT_EQ(ok.p.rowLower[1], -1e30);
  EXPECT_EQ(ok.p.rowUpper[2], 5 - 1e29);
  EXPECT_EQ(ok.p.rowLower[3], -1e30);
  EXPECT_EQ(ok.p.rowUpper[3], 1.0);
}

// Coefficients of 1e30 and beyond are infinite, also when the terms of one column add up to
// that; the objective constant likewise.
TEST(ReaderEdges, LpInfiniteCoefficients) {
  struct Case {
    const char* text;
    const char* where;
    const char* what;
  } bad[] = {
      {"Min\n x - 1e30 y\n", "t.lp:2:", "infinite coefficient -1e+30 of 'y'"},
      {"Min\n x\nSubject To\n c: 6e29 x +\n 6e29 x <= 1\n", "t.lp:5:",
       "infinite coefficient 1e+30 of 'x'"},
      {"Min\n x + 1e30\nSubject To\n c: x <= 1\n", "t.lp:2:", "infinite objective constant"},
  };
  for (const Case& c : bad) ExpectError(Lp(c.text), c.text, c.where, c.what);

  // Terms that add up below 1e30 (or cancel) are fine.
  Parsed ok = Lp("Min\n 6e29 x - 6e29 x + 9e29 y\nSubject To\n c: 5e29 x + 4e29 x >= 1\n");
  ASSERT_EQ(ok.rc, 0) << ok.err;
  ASSERT_EQ(ok.p.cols(), 2);
  EXPECT_EQ(ok.p.obj[0], 0.0);
  EXPECT_EQ(ok.p.obj[1], 9e29);
  EXPECT_EQ(ok.p.matrix.nnz(), 1);
}

TEST(ReaderEdges, MpsRightHandSideInfiniteOnTheWrongSide) {
  const std::string head = "NAME t\nROWS\n N obj\n L l\n G g\n E e\nCOLUMNS\n x obj 1 l 1\n"
                           " x g 1 e 1\nRHS\n";
  struct Case {
    const char* rhs;
    const char* what;
  } bad[] = {
      {" rhs l -1e30\n", "infinite right-hand side '-1e30' for L row 'l'"},
      {" rhs g 1e+31\n", "infinite right-hand side '1e+31' for G row 'g'"},
      {" rhs e -Inf\n", "infinite right-hand side '-Inf' for E row 'e'"},
      {" rhs l 1 e 1e30\n", "infinite right-hand side '1e30' for E row 'e'"},
  };
  for (const Case& c : bad) ExpectError(Mps(head + c.rhs + "ENDATA\n"), c.rhs, "t.mps:11:", c.what);

  // A range measured from the infinite side has its other end at infinity too; the error names
  // the range's line, whether RANGES comes after RHS or before it.
  const std::string infRhs = " rhs l 1e30 g -1e30\n";
  ExpectError(Mps(head + infRhs + "RANGES\n rng l 1000\nENDATA\n"), "L range", "t.mps:13:",
              "range on L row 'l' whose right-hand side is infinite");
  ExpectError(Mps(head + infRhs + "RANGES\n rng e 1 g -5\nENDATA\n"), "G range", "t.mps:13:",
              "range on G row 'g' whose right-hand side is infinite");
  const std::string cols = "NAME t\nROWS\n N obj\n L l\nCOLUMNS\n x obj 1 l 1\n";
  ExpectError(Mps(cols + "RANGES\n rng l 4\nRHS\n rhs l 1e30\nENDATA\n"), "RANGES first",
              "t.mps:8:", "range on L row 'l' whose right-hand side is infinite");

  // The right infinity makes a row free on that side; a range on an E row may be infinite.
  Parsed ok = Mps(head + " rhs l 1e30 g -1e30\n rhs e 2\nRANGES\n rng e -1e30\nENDATA\n");
  ASSERT_EQ(ok.rc, 0) << ok.err;
  ASSERT_EQ(ok.p.rows(), 3);
  EXPECT_EQ(ok.p.rowUpper[0], 1e30);
  EXPECT_EQ(ok.p.rowLower[1], -1e30);
  EXPECT_EQ(ok.p.rowLower[2], -1e30);
  EXPECT_EQ(ok.p.rowUpper[2], 2.0);
}

}  // namespace
}  // namespace zelq::engine::io
