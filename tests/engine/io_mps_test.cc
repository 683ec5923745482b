// White-box tests of the MPS reader and writer: the format's traps, errors with their line
// numbers, a differential check against CoinMpsIO on the shipped instances, and exact
// write/read round trips.
#include <gtest/gtest.h>

#include <cmath>
#include <string>

#include "CoinMessageHandler.hpp"
#include "CoinMpsIO.hpp"
#include "CoinPackedMatrix.hpp"
#include "io/mps_write.h"
#include "io/text_io.h"
#include "io_test_util.h"

namespace zelq::engine::io {
namespace {

const std::string kData = ZELQ_TEST_DATA;

Parsed MpsFile(const std::string& name) {
  std::string text, err;
  EXPECT_EQ(ReadTextFile(kData + "/" + name, text, err), 0) << err;
  return ParseWith(ParseMps, text, name);
}

int Col(const Problem& p, const char* name) { return p.colNames.Find(name); }
int Row(const Problem& p, const char* name) { return p.rowNames.Find(name); }

TEST(MpsRead, FreeFormatTrapsFile) {
  Parsed r = MpsFile("traps_free.mps");
  ASSERT_EQ(r.rc, 0) << r.err;
  const Problem& p = r.p;
  EXPECT_EQ(p.objSense, -1);
  EXPECT_EQ(p.objConst, 7.5);  // RHS -7.5 on the objective row
  ASSERT_EQ(p.rows(), 4);      // the second N row is dropped
  EXPECT_EQ(Row(p, "extra"), -1);
  // RANGES relative to the RHS: L [b-|R|, b], G [b, b+|R|], E with R>0 [b, b+R], R<0 [b+R, b].
  EXPECT_EQ(p.rowLower[Row(p, "lim1")], 6.0);
  EXPECT_EQ(p.rowUpper[Row(p, "lim1")], 10.0);  // the set "other" is ignored
  EXPECT_EQ(p.rowLower[Row(p, "lim2")], 2.0);
  EXPECT_EQ(p.rowUpper[Row(p, "lim2")], 5.0);
  EXPECT_EQ(p.rowLower[Row(p, "eqpos")], 4.0);
  EXPECT_EQ(p.rowUpper[Row(p, "eqpos")], 6.0);
  EXPECT_EQ(p.rowLower[Row(p, "eqneg")], 1.0);
  EXPECT_EQ(p.rowUpper[Row(p, "eqneg")], 3.0);
  int n = Col(p, "n"), y = Col(p, "y"), z = Col(p, "z");
  EXPECT_EQ(p.colType[n], 'I');
  EXPECT_EQ(p.colLower[n], 0.0);
  EXPECT_EQ(p.colUpper[n], 1.0);    // marker integer without bounds
  EXPECT_EQ(p.colLower[z], -kInf);  // negative UP, lower never set
  EXPECT_EQ(p.colUpper[z], -1.0);
  EXPECT_EQ(p.colLower[y], -kInf);
  EXPECT_EQ(p.colUpper[y], 8.0);
  EXPECT_EQ(p.obj[Col(p, "x")], 1.0);  // its entry in the dropped row is ignored
  EXPECT_EQ(p.matrix.nnz(), 8);
  EXPECT_GE(r.notes.size(), 3u);  // dropped row, ignored RHS, negative-UP rule
}

TEST(MpsRead, FixedFormatNamesWithBlanksAndEmptySetNames) {
  Parsed r = MpsFile("names_blanks.mps");
  ASSERT_EQ(r.rc, 0) << r.err;
  const Problem& p = r.p;
  ASSERT_EQ(p.cols(), 3);
  ASSERT_EQ(p.rows(), 3);
  EXPECT_EQ(p.colNames.Get(0), "X 1");
  EXPECT_EQ(p.rowNames.Get(1), "DEM 1R");
  EXPECT_EQ(p.rowLower[1], 2.0);  // RHS line with an empty set-name field
  EXPECT_EQ(p.rowUpper[0], 4.0);
  EXPECT_EQ(p.colUpper[Col(p, "Y 3")], 2.5);
  EXPECT_EQ(p.matrix.Get(Row(p, "BAL 2"), Col(p, "Y 3")), 1.0);
}

// Short free-format lines can keep every fixed separator column blank; cutting them at the
// fixed columns would glue fields together, so they must be read by whitespace.
TEST(MpsRead, ShortFreeLinesThatFitFixedColumnsAreReadFree) {
  Parsed r =
      Mps("NAME\nROWS\n N  o\n L  c1\nCOLUMNS\n    xy  c1 1\n    xy  o 2\nRHS\n    c1 4\nENDATA\n");
  ASSERT_EQ(r.rc, 0) << r.err;
  ASSERT_EQ(r.p.cols(), 1);
  EXPECT_EQ(r.p.colNames.Get(0), "xy");
  EXPECT_EQ(r.p.obj[0], 2.0);
  EXPECT_EQ(r.p.rowUpper[0], 4.0);
}

// When both layouts fail, the message comes from the reading that got further.
TEST(MpsRead, FixedLayoutErrorIsReportedForFixedFiles) {
  std::string text, err;
  ASSERT_EQ(ReadTextFile(kData + "/names_blanks.mps", text, err), 0);
  text.replace(text.find("ENDATA"), 6, " XX BND       Y 3          1\nENDATA");
  Parsed r = Mps(text);
  EXPECT_EQ(r.rc, 3);
  EXPECT_NE(r.err.find("t.mps:19: unknown bound type 'XX'"), std::string::npos) << r.err;
}

TEST(MpsRead, CrlfFileEqualsLfFile) {
  Parsed lf = MpsFile("afiro.mps"), crlf = MpsFile("afiro_crlf.mps");
  ASSERT_EQ(lf.rc, 0) << lf.err;
  ASSERT_EQ(crlf.rc, 0) << crlf.err;
  ExpectSameProblem(lf.p, crlf.p);
  EXPECT_EQ(lf.p.cols(), 32);
  EXPECT_EQ(lf.p.rows(), 27);
  EXPECT_EQ(lf.p.matrix.nnz(), 83);
}

TEST(MpsRead, CompressedFilesEqualPlainOnes) {
  for (const char* base : {"afiro.mps", "sc50b.mps"}) {
    std::string plain, packed, err;
    ASSERT_EQ(ReadTextFile(kData + "/" + base, plain, err), 0) << err;
    std::string zipped = kData + "/" + base + (std::string(base) == "afiro.mps" ? ".gz" : ".bz2");
    ASSERT_EQ(ReadTextFile(zipped, packed, err), 0) << err;
    EXPECT_EQ(plain, packed) << zipped;
  }
}

// The number syntax shared by every reader.
TEST(TextIo, ParseNumber) {
  struct Case {
    const char* text;
    bool ok;
    double value;
  } cases[] = {{"1.5D+02", true, 150},  {"+3", true, 3},        {".5", true, 0.5},
               {"1.", true, 1},         {"-0", true, 0},        {"1e30", true, kInf},
               {"2e30", true, kInf},    {"-1e400", true, -kInf}, {"1e400", true, kInf},
               {"1e-400", true, 0},     {"-inf", true, -kInf},  {"Infinity", true, kInf},
               {"nan", false, 0},       {"1x", false, 0},       {"--1", false, 0},
               {"+-1", false, 0},       {"", false, 0},         {"e5", false, 0}};
  for (const Case& c : cases) {
    double v = -7;
    EXPECT_EQ(ParseNumber(c.text, &v), c.ok) << c.text;
    if (c.ok) {
      EXPECT_EQ(v, c.value) << c.text;
    }
  }
}

TEST(MpsRead, BoundRules) {
  const std::string head =
      "NAME t\nROWS\n N obj\n L r\nCOLUMNS\n MARKER 'MARKER' 'INTORG'\n"
      " a r 1\n b r 1\n c r 1\n d r 1\n MARKER 'MARKER' 'INTEND'\n"
      " e r 1\n f r 1\n g r 1\n h r 1\nRHS\n rhs r 1\nBOUNDS\n";
  const std::string bounds =
      " UP bnd a 5\n"                // marker integer: [0, 1] default ends -> [0, 5]
      " BV bnd b\n"                  // binary
      " LO bnd c -2\n"               // lower set, upper reverts to +inf
      " UI bnd d -3\n"               // negative integer upper, lower never set -> -inf
      " LO bnd e 0\n UP bnd e -1\n"  // explicit LO 0 keeps 0 (no rule)
      " UP bnd f -0\n"               // negative zero is not negative
      " FR bnd g\n"
      " FX bnd h 2.5\n";
  Parsed r = Mps(head + bounds + "ENDATA\n");
  ASSERT_EQ(r.rc, 0) << r.err;
  const Problem& p = r.p;
  struct Want {
    const char* col;
    char type;
    double lo, up;
  } want[] = {{"a", 'I', 0, 5},  {"b", 'B', 0, 1}, {"c", 'I', -2, kInf},    {"d", 'I', -kInf, -3},
              {"e", 'C', 0, -1}, {"f", 'C', 0, 0}, {"g", 'C', -kInf, kInf}, {"h", 'C', 2.5, 2.5}};
  for (const Want& w : want) {
    int j = Col(p, w.col);
    ASSERT_GE(j, 0) << w.col;
    EXPECT_EQ(p.colType[j], w.type) << w.col;
    EXPECT_EQ(p.colLower[j], w.lo) << w.col;
    EXPECT_EQ(p.colUpper[j], w.up) << w.col;
  }
}

TEST(MpsRead, ObjsenseOnHeaderLineAndObjname) {
  Parsed r =
      Mps("NAME t\nOBJSENSE MAXIMIZE\nOBJNAME\n second\nROWS\n N first\n N second\n G r\n"
          "COLUMNS\n x first 1 second 4\n x r 1\nRHS\n rhs r 2\nRANGES\n rng r 0\nENDATA\n");
  ASSERT_EQ(r.rc, 0) << r.err;
  EXPECT_EQ(r.p.objSense, -1);
  EXPECT_EQ(r.p.obj[0], 4.0);  // OBJNAME picks the second N row
  EXPECT_EQ(r.p.rowLower[0], 2.0);
  EXPECT_EQ(r.p.rowUpper[0], 2.0);  // a zero range on a G row gives [b, b]
}

TEST(MpsRead, ErrorsNameFileLineAndProblem) {
  const std::string rows = "NAME t\nROWS\n N obj\n L r\nCOLUMNS\n";
  struct Case {
    std::string text;
    int code;
    const char* where;
    const char* what;
  } cases[] = {
      {rows + " x r 1\n x q 2\nENDATA\n", 3, "t.mps:7:", "unknown row 'q'"},
      {rows + " x r abc\nENDATA\n", 3, "t.mps:6:", "bad coefficient 'abc'"},
      {rows + " x r nan\nENDATA\n", 3, "t.mps:6:", "bad coefficient"},
      {rows + " x r 1\n y r 1\n x obj 1\nENDATA\n", 3, "t.mps:8:", "contiguous"},
      {rows + " x r 1\n x r 2\nENDATA\n", 3, "t.mps:7:", "duplicate entry"},
      {rows + " x r 1\nBOUNDS\n UP bnd w 1\nENDATA\n", 3, "t.mps:8:", "unknown column 'w'"},
      {rows + " x r 1\nBOUNDS\n XX bnd x 1\nENDATA\n", 3, "t.mps:8:", "unknown bound type"},
      {rows + " x r 1\nBOUNDS\n SC bnd x 1\nENDATA\n", 10, "t.mps:8:", "semi-continuous"},
      {rows + " x r 1\nQUADOBJ\n x x 1\nENDATA\n", 10, "t.mps:7:", "QUADOBJ"},
      {rows + " x r 1\nRHS\n rhs r 1x\nENDATA\n", 3, "t.mps:8:", "bad right-hand side '1x'"},
      {rows + " x r 1\nRHS\n a b c d e f\nENDATA\n", 3, "t.mps:8:", "expected: [set] row"},
      {rows + " x r 1\n", 3, "t.mps:6:", "without ENDATA"},
      {"NAME t\nROWS\n N obj\n X r\nENDATA\n", 3, "t.mps:4:", "row type 'X'"},
      {"NAME t\nROWS\n N obj\n L r\n L r\nENDATA\n", 3, "t.mps:5:", "duplicate row name 'r'"},
      {"NAME t\nROWZ\nENDATA\n", 3, "t.mps:2:", "unknown section 'ROWZ'"},
      {rows + " M 'MARKER' 'INTEND'\nENDATA\n", 3, "t.mps:6:", "INTEND marker without INTORG"},
      {"NAME t\nOBJSENSE\n SIDEWAYS\nENDATA\n", 3, "t.mps:3:", "not MIN or MAX"},
  };
  for (const Case& c : cases) {
    Parsed r = Mps(c.text);
    EXPECT_EQ(r.rc, c.code) << c.text;
    EXPECT_NE(r.err.find(c.where), std::string::npos) << r.err;
    EXPECT_NE(r.err.find(c.what), std::string::npos) << r.err;
  }
}

// Our reader against CoinMpsIO on every shipped instance: same dimensions and data.
TEST(MpsRead, AgreesWithCoinMpsIO) {
  for (const char* name : {"afiro.mps", "blend.mps", "sc50b.mps", "p0033.mps", "flugpl.mps"}) {
    SCOPED_TRACE(name);
    Parsed r = MpsFile(name);
    ASSERT_EQ(r.rc, 0) << r.err;
    CoinMpsIO coin;
    coin.messageHandler()->setLogLevel(0);
    ASSERT_EQ(coin.readMps((kData + "/" + name).c_str(), ""), 0);
    const Problem& p = r.p;
    ASSERT_EQ(p.cols(), coin.getNumCols());
    ASSERT_EQ(p.rows(), coin.getNumRows());
    EXPECT_EQ(p.matrix.nnz(), coin.getNumElements());
    auto fin = [](double v) { return std::fabs(v) >= 1e30 ? std::copysign(1e30, v) : v; };
    const CoinPackedMatrix* m = coin.getMatrixByRow();
    for (int j = 0; j < p.cols(); ++j) {
      EXPECT_DOUBLE_EQ(p.obj[j], coin.getObjCoefficients()[j]);
      EXPECT_DOUBLE_EQ(p.colLower[j], fin(coin.getColLower()[j])) << j;
      EXPECT_DOUBLE_EQ(p.colUpper[j], fin(coin.getColUpper()[j])) << j;
      EXPECT_EQ(p.colType[j] != 'C', coin.isInteger(j) != 0) << j;
      EXPECT_EQ(p.colNames.Get(j), coin.columnName(j));
    }
    for (int i = 0; i < p.rows(); ++i) {
      EXPECT_DOUBLE_EQ(p.rowLower[i], fin(coin.getRowLower()[i])) << i;
      EXPECT_DOUBLE_EQ(p.rowUpper[i], fin(coin.getRowUpper()[i])) << i;
      EXPECT_EQ(p.rowNames.Get(i), coin.rowName(i));
      for (int k = m->getVectorFirst(i); k < m->getVectorLast(i); ++k) {
        EXPECT_DOUBLE_EQ(p.matrix.Get(i, m->getIndices()[k]), m->getElements()[k]);
      }
    }
  }
}

// Writing and reading back gives exactly the same problem, names included.
TEST(MpsWrite, RoundTripIsExact) {
  for (const char* name : {"afiro.mps", "blend.mps", "p0033.mps", "flugpl.mps", "traps_free.mps",
                           "names_blanks.mps"}) {
    SCOPED_TRACE(name);
    Parsed a = MpsFile(name);
    ASSERT_EQ(a.rc, 0) << a.err;
    std::vector<std::string> notes;
    std::string text = FormatMps(a.p, notes);
    Parsed b = Mps(text);
    ASSERT_EQ(b.rc, 0) << b.err << "\n" << text;
    ExpectSameProblem(a.p, b.p);
  }
}

TEST(MpsWrite, ConventionsInTheText) {
  Problem p;
  ModelBuilder mb;
  int x = mb.AddCol("x"), k = mb.AddCol("k"), u = mb.AddCol("u");
  mb.colType[k] = 'I';
  mb.colUpper[k] = kInf;  // a general integer: explicit bounds, not the [0, 1] default
  mb.colUpper[u] = -2.0;  // negative upper bound with lower 0: LO 0 must come first
  mb.obj[x] = 1.0;
  mb.objSense = -1;
  mb.objConst = 3.0;
  int r = mb.AddRow("range", 1.0, 4.0);
  int f = mb.AddRow("free", -kInf, kInf);
  mb.AddEntry(r, x, 2.0);
  mb.AddEntry(f, k, 1.0);
  mb.AddEntry(f, u, 1.0);
  mb.Build(p);
  std::vector<std::string> notes;
  std::string text = FormatMps(p, notes);
  EXPECT_NE(text.find("OBJSENSE\n    MAX\n"), std::string::npos) << text;
  EXPECT_NE(text.find("OBJ       -3"), std::string::npos) << text;  // constant = -RHS
  EXPECT_NE(text.find("RANGES\n    RNG       range     3\n"), std::string::npos) << text;
  EXPECT_NE(text.find("free      1e+30"), std::string::npos) << text;
  EXPECT_NE(text.find(" LI BND       k         0\n PL BND       k\n"), std::string::npos) << text;
  EXPECT_NE(text.find(" LO BND       u         0\n UP BND       u         -2\n"), std::string::npos)
      << text;
  Parsed back = Mps(text);
  ASSERT_EQ(back.rc, 0) << back.err;
  ExpectSameProblem(p, back.p);

  // Right-hand sides all zero: the RHS section is still there (empty), as other readers need it.
  Problem zero;
  ModelBuilder zb;
  int z = zb.AddCol("z");
  zb.AddEntry(zb.AddRow("row", 0.0, kInf), z, 1.0);
  zb.Build(zero);
  text = FormatMps(zero, notes);
  EXPECT_NE(text.find("\nRHS\nENDATA\n"), std::string::npos) << text;
  Parsed zeroBack = Mps(text);
  ASSERT_EQ(zeroBack.rc, 0) << zeroBack.err;
  ExpectSameProblem(zero, zeroBack.p);
}

TEST(MpsWrite, LongNamesWithBlanksBecomeUnderscores) {
  Problem p;
  ModelBuilder mb;
  mb.AddCol("a very long name");
  mb.AddCol("a_very_long_name");  // clashes after the replacement: made unique
  mb.AddCol("line\nbreak");       // control characters never reach the file
  mb.Build(p);
  std::vector<std::string> notes;
  Parsed back = Mps(FormatMps(p, notes));
  ASSERT_EQ(back.rc, 0) << back.err;
  ASSERT_EQ(back.p.cols(), 3);
  EXPECT_EQ(back.p.colNames.Get(2), "line_break");
  EXPECT_EQ(back.p.colNames.Get(0), "a_very_long_name");
  EXPECT_NE(back.p.colNames.Get(1), "a_very_long_name");
  EXPECT_FALSE(notes.empty());
}

TEST(MpsWrite, LazyConstraintsAndUserCutsRoundTrip) {
  Problem p = WithExtraRows();
  ASSERT_EQ(p.rows(), 2);
  ASSERT_EQ(p.lazy.count(), 2);
  ASSERT_EQ(p.cuts.count(), 1);
  std::vector<std::string> notes;
  std::string text = FormatMps(p, notes);
  EXPECT_NE(text.find("LAZYCONS\n L  l0\n E  l1\nUSERCUTS\n L  cut0\n"), std::string::npos) << text;
  Parsed back = Mps(text);
  ASSERT_EQ(back.rc, 0) << back.err << "\n" << text;
  p.cuts.names[0] = "cut0";  // the unnamed cut is written with its default name
  ExpectSameProblem(p, back.p);
  Parsed bad = Mps("NAME\nROWS\n N o\nLAZYCONS\n N z\nENDATA\n");
  EXPECT_EQ(bad.rc, 3);
  EXPECT_NE(bad.err.find("t.mps:5: free row 'z' in a LAZYCONS"), std::string::npos) << bad.err;
}

TEST(MpsWrite, EmptyProblemRoundTrip) {
  Problem p;
  p.objSense = -1;
  p.objConst = 2.5;
  std::vector<std::string> notes;
  Parsed back = Mps(FormatMps(p, notes));
  ASSERT_EQ(back.rc, 0) << back.err;
  ExpectSameProblem(p, back.p);
}

}  // namespace
}  // namespace zelq::engine::io
