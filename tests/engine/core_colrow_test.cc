// C-interface tests of columns, rows, coefficients, names, loading and lazy rows: good paths
// with round trips, and bad input that must give code 3, a message, and no change.
#include <climits>
#include <cmath>
#include <functional>
#include <limits>

#include "core_test_util.h"

namespace zelq_test {
namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfD = std::numeric_limits<double>::infinity();

struct BadCall {
  const char* label;
  std::function<int(ZELQprob*)> call;
  int code;
  const char* msgPart;  // expected within ZELQ_GetLastError
};

using CoreColRow = CoreProblem;

TEST_F(CoreColRow, BadInputIsRejectedAndChangesNothing) {
  const int i01[] = {0, 1}, i00[] = {0, 0}, i09[] = {0, 9}, iNeg[] = {-1};
  const double v11[] = {1, 1}, vNaN[] = {1, kNaN}, vInf[] = {kInfD, 1}, vBig[] = {1e30, 1};
  const double one[] = {1};
  const int b0[] = {0}, bNeg[] = {-2}, c2[] = {2}, cNeg[] = {-1};
  const char* nm[] = {"q"};
  const std::vector<BadCall> cases = {
      {"AddRow negative count", [&](ZELQprob* p) { return ZELQ_AddRow(p, -1, i01, v11, 'L', 1, 0, nullptr); }, 3, "negative"},
      {"AddRow index out of range", [&](ZELQprob* p) { return ZELQ_AddRow(p, 2, i09, v11, 'L', 1, 0, nullptr); }, 3, "index 9"},
      {"AddRow negative index", [&](ZELQprob* p) { return ZELQ_AddRow(p, 1, iNeg, one, 'L', 1, 0, nullptr); }, 3, "index -1"},
      {"AddRow duplicate column", [&](ZELQprob* p) { return ZELQ_AddRow(p, 2, i00, v11, 'L', 1, 0, nullptr); }, 3, "twice"},
      {"AddRow NaN coefficient", [&](ZELQprob* p) { return ZELQ_AddRow(p, 2, i01, vNaN, 'L', 1, 0, nullptr); }, 3, "not finite"},
      {"AddRow infinite coefficient", [&](ZELQprob* p) { return ZELQ_AddRow(p, 2, i01, vInf, 'L', 1, 0, nullptr); }, 3, "not finite"},
      {"AddRow 1e30 coefficient", [&](ZELQprob* p) { return ZELQ_AddRow(p, 2, i01, vBig, 'L', 1, 0, nullptr); }, 3, "not finite"},
      {"AddRow null indices", [&](ZELQprob* p) { return ZELQ_AddRow(p, 2, nullptr, v11, 'L', 1, 0, nullptr); }, 3, "null"},
      {"AddRow bad sense", [&](ZELQprob* p) { return ZELQ_AddRow(p, 2, i01, v11, 'X', 1, 0, nullptr); }, 3, "'X'"},
      {"AddRow lowercase sense", [&](ZELQprob* p) { return ZELQ_AddRow(p, 2, i01, v11, 'l', 1, 0, nullptr); }, 3, "not a row sense"},
      {"AddRow NaN rhs", [&](ZELQprob* p) { return ZELQ_AddRow(p, 2, i01, v11, 'E', kNaN, 0, nullptr); }, 3, "NaN"},
      {"AddRow NaN range upper", [&](ZELQprob* p) { return ZELQ_AddRow(p, 2, i01, v11, 'R', 0, kNaN, nullptr); }, 3, "NaN"},
      {"AddRow L with -inf", [&](ZELQprob* p) { return ZELQ_AddRow(p, 2, i01, v11, 'L', -1e30, 0, nullptr); }, 3, "no value"},
      {"AddRow G with +inf", [&](ZELQprob* p) { return ZELQ_AddRow(p, 2, i01, v11, 'G', kInfD, 0, nullptr); }, 3, "no value"},
      {"AddRow E with inf", [&](ZELQprob* p) { return ZELQ_AddRow(p, 2, i01, v11, 'E', 1e31, 0, nullptr); }, 3, "no value"},
      {"AddRows negative count", [&](ZELQprob* p) { return ZELQ_AddRows(p, -3, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr); }, 3, "-3"},
      {"AddRows negative start", [&](ZELQprob* p) { return ZELQ_AddRows(p, 1, bNeg, c2, i01, v11, nullptr, nullptr, nullptr, nullptr); }, 3, "negative"},
      {"AddRows negative count entry", [&](ZELQprob* p) { return ZELQ_AddRows(p, 1, b0, cNeg, i01, v11, nullptr, nullptr, nullptr, nullptr); }, 3, "negative"},
      {"AddRows 'R' without upper", [&](ZELQprob* p) { const char s[] = {'R'}; return ZELQ_AddRows(p, 1, b0, c2, i01, v11, s, one, nullptr, nullptr); }, 3, "upper bound array is null"},
      {"AddRows second row bad", [&](ZELQprob* p) { const int b[] = {0, 2, 4}; const int ix[] = {0, 1, 2, 2}; const double vv[] = {1, 1, 1, 1}; return ZELQ_AddRows(p, 2, b, nullptr, ix, vv, nullptr, nullptr, nullptr, nullptr); }, 3, "row 1"},
      {"AddCol row out of range", [&](ZELQprob* p) { return ZELQ_AddCol(p, 0, 2, i09, v11, 'C', 0, 1, nullptr); }, 3, "index 9"},
      {"AddCol bad type", [&](ZELQprob* p) { return ZELQ_AddCol(p, 0, 0, nullptr, nullptr, 'X', 0, 1, nullptr); }, 3, "column type"},
      {"AddCol NaN objective", [&](ZELQprob* p) { return ZELQ_AddCol(p, kNaN, 0, nullptr, nullptr, 'C', 0, 1, nullptr); }, 3, "colObj"},
      {"AddCol infinite objective", [&](ZELQprob* p) { return ZELQ_AddCol(p, 1e30, 0, nullptr, nullptr, 'C', 0, 1, nullptr); }, 3, "colObj"},
      {"AddCol lower +inf", [&](ZELQprob* p) { return ZELQ_AddCol(p, 0, 0, nullptr, nullptr, 'C', 1e30, 1e30, nullptr); }, 3, "lower bound"},
      {"AddCol upper -inf", [&](ZELQprob* p) { return ZELQ_AddCol(p, 0, 0, nullptr, nullptr, 'C', -1e30, -1e30, nullptr); }, 3, "upper bound"},
      {"AddCol NaN lower", [&](ZELQprob* p) { return ZELQ_AddCol(p, 0, 0, nullptr, nullptr, 'C', kNaN, 1, nullptr); }, 3, "lower bound"},
      {"AddCol duplicate row", [&](ZELQprob* p) { return ZELQ_AddCol(p, 0, 2, i00, v11, 'C', 0, 1, nullptr); }, 3, "twice"},
      {"AddCols negative count", [&](ZELQprob* p) { return ZELQ_AddCols(p, -1, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr); }, 3, "-1"},
      {"AddCols past the index range", [&](ZELQprob* p) { return ZELQ_AddCols(p, INT_MAX, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr); }, 3, "2147483647 more columns on top of 3 exceed the limit of 2147483647"},
      {"AddRows past the index range", [&](ZELQprob* p) { return ZELQ_AddRows(p, INT_MAX - 1, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr); }, 3, "2147483646 more rows on top of 2 exceed"},
      {"DelCols out of range", [&](ZELQprob* p) { const int l[] = {0, 3}; return ZELQ_DelCols(p, 2, l); }, 3, "[0, 2]"},
      {"DelCols null list", [&](ZELQprob* p) { return ZELQ_DelCols(p, 1, nullptr); }, 3, "null"},
      {"DelRows negative count", [&](ZELQprob* p) { return ZELQ_DelRows(p, -1, i01); }, 3, "-1"},
      {"DelRows out of range", [&](ZELQprob* p) { const int l[] = {2}; return ZELQ_DelRows(p, 1, l); }, 3, "[0, 1]"},
      {"SetElem bad column", [&](ZELQprob* p) { return ZELQ_SetElem(p, 3, 0, 1.0); }, 3, "column index 3"},
      {"SetElem bad row", [&](ZELQprob* p) { return ZELQ_SetElem(p, 0, -1, 1.0); }, 3, "row index -1"},
      {"SetElem NaN", [&](ZELQprob* p) { return ZELQ_SetElem(p, 0, 0, kNaN); }, 3, "not a finite"},
      {"SetElems second bad", [&](ZELQprob* p) { const int c[] = {0, 1}, r[] = {0, 5}; return ZELQ_SetElems(p, 2, c, r, v11); }, 3, "list[1] = 5"},
      {"SetColObj inf", [&](ZELQprob* p) { return ZELQ_SetColObj(p, 1, b0, vInf); }, 3, "obj[0]"},
      {"SetColType bad", [&](ZELQprob* p) { const char t[] = {'S'}; return ZELQ_SetColType(p, 1, b0, t); }, 3, "'S'"},
      {"SetColLower +inf", [&](ZELQprob* p) { const double l[] = {1e30}; return ZELQ_SetColLower(p, 1, b0, l); }, 3, "lower bound"},
      {"SetColUpper NaN", [&](ZELQprob* p) { const double u[] = {kNaN}; return ZELQ_SetColUpper(p, 1, b0, u); }, 3, "upper bound"},
      {"SetColUpper null values", [&](ZELQprob* p) { return ZELQ_SetColUpper(p, 1, b0, nullptr); }, 3, "upper is null"},
      {"SetRowLower bad index", [&](ZELQprob* p) { return ZELQ_SetRowLower(p, 1, c2, one); }, 3, "list[0] = 2"},
      {"SetRowUpper -inf", [&](ZELQprob* p) { const double u[] = {-kInfD}; return ZELQ_SetRowUpper(p, 1, b0, u); }, 3, "upper bound"},
      {"SetColNames bad index", [&](ZELQprob* p) { return ZELQ_SetColNames(p, 1, iNeg, nm); }, 3, "list[0] = -1"},
      {"SetRowNames null names", [&](ZELQprob* p) { return ZELQ_SetRowNames(p, 1, b0, nullptr); }, 3, "names is null"},
      {"SetColBranchFactors NaN", [&](ZELQprob* p) { const double f[] = {kNaN}; return ZELQ_SetColBranchFactors(p, 1, b0, f); }, 3, "factors[0]"},
      {"ReplaceColObj bad index", [&](ZELQprob* p) { return ZELQ_ReplaceColObj(p, 1, i09 + 1, one); }, 3, "list[0] = 9"},
      {"SetObjSense 0", [&](ZELQprob* p) { return ZELQ_SetObjSense(p, 0); }, 3, "sense 0"},
      {"SetObjConst NaN", [&](ZELQprob* p) { return ZELQ_SetObjConst(p, kNaN); }, 3, "not finite"},
      {"LoadProb negative rows", [&](ZELQprob* p) { return ZELQ_LoadProb(p, 1, -1, 1, 0, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr); }, 3, "-1"},
      {"LoadProb row index out of range", [&](ZELQprob* p) { const int b[] = {0, 2}; return ZELQ_LoadProb(p, 1, 1, 1, 0, nullptr, b, nullptr, i01, v11, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr); }, 3, "column 0"},
      {"LoadProb bad objective sense", [&](ZELQprob* p) { return ZELQ_LoadProb(p, 0, 0, 2, 0, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr); }, 3, "sense 2"},
      {"LoadProb bad row sense", [&](ZELQprob* p) { const char s[] = {'Q'}; return ZELQ_LoadProb(p, 0, 1, 1, 0, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, s, one, nullptr, nullptr, nullptr); }, 3, "row 0"},
      {"AddLazyConstr duplicate", [&](ZELQprob* p) { return ZELQ_AddLazyConstr(p, 2, i00, v11, 'L', 1, 0, nullptr); }, 3, "twice"},
      {"AddUserCuts bad sense", [&](ZELQprob* p) { const char s[] = {'?'}; return ZELQ_AddUserCuts(p, 1, b0, c2, i01, v11, s, one, nullptr, nullptr); }, 3, "not a row sense"},
  };
  const Snapshot before = Take(prob_);
  for (const BadCall& c : cases) {
    SCOPED_TRACE(c.label);
    EXPECT_EQ(c.call(prob_), c.code);
    EXPECT_NE(LastError(prob_).find(c.msgPart), std::string::npos) << LastError(prob_);
    EXPECT_EQ(Take(prob_), before);
    int lazy = -1;
    EXPECT_EQ(ZELQ_GetIntAttr(prob_, "LazyCons", &lazy), 0);
    EXPECT_EQ(lazy, 0);
  }
}

TEST_F(CoreColRow, BadHandleGivesCode3Everywhere) {
  ZELQprob* null = nullptr;
  alignas(8) unsigned char junk[64] = {1, 2, 3};
  for (ZELQprob* p : {null, reinterpret_cast<ZELQprob*>(junk)}) {
    int n = 0;
    double d = 0;
    EXPECT_EQ(ZELQ_AddRow(p, 0, nullptr, nullptr, 'L', 0, 0, nullptr), 3);
    EXPECT_EQ(ZELQ_AddCols(p, 0, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr), 3);
    EXPECT_EQ(ZELQ_DelRows(p, 0, nullptr), 3);
    EXPECT_EQ(ZELQ_GetElem(p, 0, 0, &d), 3);
    EXPECT_EQ(ZELQ_GetIntAttr(p, "Cols", &n), 3);
    EXPECT_EQ(ZELQ_SetIntParam(p, "Logging", 0), 3);
    EXPECT_EQ(ZELQ_ClearProb(p), 3);
    EXPECT_EQ(ZELQ_AddQConstr(p, 0, nullptr, nullptr, 0, nullptr, nullptr, nullptr, 'L', 0, nullptr), 3);
    char buf[16];
    EXPECT_EQ(ZELQ_GetLastError(p, buf, sizeof buf), 3);
  }
}

TEST_F(CoreColRow, ZeroCountsAreNoOps) {
  const Snapshot before = Take(prob_);
  EXPECT_EQ(ZELQ_AddRows(prob_, 0, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr), 0);
  EXPECT_EQ(ZELQ_AddCols(prob_, 0, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr), 0);
  EXPECT_EQ(ZELQ_DelCols(prob_, 0, nullptr), 0);
  EXPECT_EQ(ZELQ_DelRows(prob_, 0, nullptr), 0);
  EXPECT_EQ(ZELQ_SetColObj(prob_, 0, nullptr, nullptr), 0);
  EXPECT_EQ(ZELQ_SetElems(prob_, 0, nullptr, nullptr, nullptr), 0);
  EXPECT_EQ(Take(prob_), before);
}

TEST_F(CoreColRow, RowsAndColumnsRoundTrip) {
  // Row with a zero coefficient (dropped), a ranged row and a free row.
  const int idx[] = {2, 0, 1};
  const double val[] = {5, 0, -1};
  ASSERT_EQ(ZELQ_AddRow(prob_, 3, idx, val, 'R', -2, 7, "r3"), 0);
  ASSERT_EQ(ZELQ_AddRow(prob_, 0, nullptr, nullptr, 'N', 0, 0, nullptr), 0);
  const Snapshot s = Take(prob_);
  EXPECT_EQ(s.rows, 4);
  EXPECT_EQ(s.elems, 6);
  EXPECT_EQ(s.rowLb, (std::vector<double>{-1e30, 1, -2, -1e30}));
  EXPECT_EQ(s.rowUb, (std::vector<double>{4, 1e30, 7, 1e30}));
  EXPECT_EQ(s.rowNames, (std::vector<std::string>{"c1", "c2", "r3", "R3"}));
  EXPECT_EQ(s.colUb, (std::vector<double>{10, 5, 1e30}));
  EXPECT_EQ(s.types, (std::vector<char>{'C', 'I', 'C'}));
  // Column view of two columns, in list order, with a size query first.
  const int list[] = {2, 1};
  int need = -1;
  ASSERT_EQ(ZELQ_GetCols(prob_, 2, list, nullptr, nullptr, nullptr, nullptr, 0, &need), 0);
  EXPECT_EQ(need, 5);
  std::vector<int> beg(2), cnt(2), ri(need);
  std::vector<double> rv(need);
  EXPECT_EQ(ZELQ_GetCols(prob_, 2, list, beg.data(), cnt.data(), ri.data(), rv.data(), need - 1, nullptr), 3);
  EXPECT_NE(LastError(prob_).find("5 are needed"), std::string::npos);
  ASSERT_EQ(ZELQ_GetCols(prob_, 2, list, beg.data(), cnt.data(), ri.data(), rv.data(), need, nullptr), 0);
  EXPECT_EQ(beg, (std::vector<int>{0, 2}));
  EXPECT_EQ(cnt, (std::vector<int>{2, 3}));
  EXPECT_EQ(ri, (std::vector<int>{1, 2, 0, 1, 2}));
  EXPECT_EQ(rv, (std::vector<double>{1, 5, 1, 1, -1}));
  // Null list needs num == count.
  EXPECT_EQ(ZELQ_GetRows(prob_, 2, nullptr, nullptr, nullptr, nullptr, nullptr, 0, &need), 3);
  // Copy the content through GetRows/AddRows into a fresh problem: same snapshot.
  ZELQprob* copy = nullptr;
  ASSERT_EQ(ZELQ_CreateProb(env_, &copy), 0);
  const double obj[] = {1, 2, 3};
  const char* cn[] = {"x", "y", "z"};
  ASSERT_EQ(ZELQ_AddCols(copy, 3, obj, nullptr, nullptr, nullptr, nullptr, s.types.data(), s.colLb.data(), s.colUb.data(), cn), 0);
  const char* rn[] = {"c1", "c2", "r3", nullptr};
  ASSERT_EQ(ZELQ_AddRows(copy, 4, s.beg.data(), s.cnt.data(), s.idx.data(), s.val.data(), nullptr, s.rowLb.data(), s.rowUb.data(), rn), 0);
  EXPECT_EQ(Take(copy), s);
  ASSERT_EQ(ZELQ_DeleteProb(&copy), 0);
}

TEST_F(CoreColRow, AddColsWithEntriesAndDeleteRenumbers) {
  const int beg[] = {0, 1};
  const int cnt[] = {1, 2};
  const int idx[] = {1, 0, 1};
  const double val[] = {4, 6, 7};
  const char* names[] = {"u", nullptr};
  ASSERT_EQ(ZELQ_AddCols(prob_, 2, nullptr, beg, cnt, idx, val, nullptr, nullptr, nullptr, names), 0);
  double e = 0;
  ASSERT_EQ(ZELQ_GetElem(prob_, 4, 1, &e), 0);
  EXPECT_EQ(e, 7);
  EXPECT_EQ(ColName(prob_, 4), "C4");
  // Delete y (index 1, listed twice) and row c1: survivors renumber in order.
  const int dc[] = {1, 1};
  ASSERT_EQ(ZELQ_DelCols(prob_, 2, dc), 0);
  const int dr[] = {0};
  ASSERT_EQ(ZELQ_DelRows(prob_, 1, dr), 0);
  const Snapshot s = Take(prob_);
  EXPECT_EQ(s.cols, 4);
  EXPECT_EQ(s.rows, 1);
  EXPECT_EQ(s.colNames, (std::vector<std::string>{"x", "z", "u", "C3"}));
  EXPECT_EQ(s.rowNames, (std::vector<std::string>{"c2"}));
  EXPECT_EQ(s.obj, (std::vector<double>{1, 3, 0, 0}));
  EXPECT_EQ(s.types, (std::vector<char>{'C', 'C', 'C', 'C'}));
  EXPECT_EQ(s.idx, (std::vector<int>{1, 2, 3}));
  EXPECT_EQ(s.val, (std::vector<double>{1, 4, 7}));
  int j = -2;
  ASSERT_EQ(ZELQ_GetColIdx(prob_, "u", &j), 0);
  EXPECT_EQ(j, 2);
  ASSERT_EQ(ZELQ_GetColIdx(prob_, "y", &j), 0);
  EXPECT_EQ(j, -1);
  ASSERT_EQ(ZELQ_GetRowIdx(prob_, "c2", &j), 0);
  EXPECT_EQ(j, 0);
  ASSERT_EQ(ZELQ_GetRowIdx(prob_, "c1", &j), 0);
  EXPECT_EQ(j, -1);
}

TEST_F(CoreColRow, ElementsAndObjective) {
  double e = -1;
  ASSERT_EQ(ZELQ_SetElem(prob_, 2, 0, 2.5), 0);  // new entry
  ASSERT_EQ(ZELQ_GetElem(prob_, 2, 0, &e), 0);
  EXPECT_EQ(e, 2.5);
  ASSERT_EQ(ZELQ_SetElem(prob_, 0, 0, 0.0), 0);  // removes
  ASSERT_EQ(ZELQ_GetElem(prob_, 0, 0, &e), 0);
  EXPECT_EQ(e, 0.0);
  const int cols[] = {1, 1}, rows[] = {0, 0};
  const double vals[] = {3, 8};
  ASSERT_EQ(ZELQ_SetElems(prob_, 2, cols, rows, vals), 0);
  ASSERT_EQ(ZELQ_GetElem(prob_, 1, 0, &e), 0);
  EXPECT_EQ(e, 8);  // the last one wins
  int elems = 0;
  ASSERT_EQ(ZELQ_GetIntAttr(prob_, "Elems", &elems), 0);
  EXPECT_EQ(elems, 4);
  const int l[] = {2};
  const double o[] = {-4};
  ASSERT_EQ(ZELQ_ReplaceColObj(prob_, 1, l, o), 0);
  EXPECT_EQ(Take(prob_).obj, (std::vector<double>{0, 0, -4}));
  ASSERT_EQ(ZELQ_SetObjSense(prob_, ZELQ_MAXIMIZE), 0);
  ASSERT_EQ(ZELQ_SetObjConst(prob_, 2.5), 0);
  double c = 0;
  ASSERT_EQ(ZELQ_GetDblAttr(prob_, "ObjConst", &c), 0);
  EXPECT_EQ(c, 2.5);
  EXPECT_EQ(Take(prob_).sense, -1);
  // Bounds of magnitude >= 1e30 read back as exactly 1e30.
  const double lo[] = {-3e35};
  ASSERT_EQ(ZELQ_SetColLower(prob_, 1, l, lo), 0);
  EXPECT_EQ(Take(prob_).colLb[2], -1e30);
}

TEST_F(CoreColRow, NamesWithSmallBuffers) {
  int need = 0;
  ASSERT_EQ(ZELQ_GetColName(prob_, 0, nullptr, 0, &need), 0);
  EXPECT_EQ(need, 2);
  const int l[] = {0};
  const char* longName[] = {"a_rather_long_name"};
  ASSERT_EQ(ZELQ_SetColNames(prob_, 1, l, longName), 0);
  char buf[8] = "#######";
  EXPECT_EQ(ZELQ_GetColName(prob_, 0, buf, 5, &need), 3);
  EXPECT_EQ(need, 19);
  EXPECT_STREQ(buf, "a_ra");  // cut short, terminated
  EXPECT_NE(LastError(prob_).find("19"), std::string::npos);
  EXPECT_EQ(ZELQ_GetColName(prob_, 0, buf, 0, nullptr), 3);
  EXPECT_EQ(ZELQ_GetColName(prob_, 3, buf, 8, nullptr), 3);
  EXPECT_EQ(ZELQ_GetRowName(prob_, 0, nullptr, 0, nullptr), 3);
  ASSERT_EQ(ZELQ_GetRowName(prob_, 1, buf, 3, &need), 0);
  EXPECT_STREQ(buf, "c2");
  // Removing a name gives the default back; the old name no longer resolves.
  const char* none[] = {nullptr};
  ASSERT_EQ(ZELQ_SetColNames(prob_, 1, l, none), 0);
  EXPECT_EQ(ColName(prob_, 0), "C0");
  int j = 0;
  ASSERT_EQ(ZELQ_GetColIdx(prob_, "a_rather_long_name", &j), 0);
  EXPECT_EQ(j, -1);
  EXPECT_EQ(ZELQ_GetColIdx(prob_, nullptr, &j), 3);
}

TEST_F(CoreColRow, LoadProbReplacesContent) {
  // max 3a + 2b  s.t.  a + b <= 4 ('L'), 1 <= a - b <= 2 ('R'); a binary.
  const double obj[] = {3, 2};
  const int beg[] = {0, 2, 4};
  const int idx[] = {0, 1, 0, 1};
  const double val[] = {1, 1, 1, -1};
  const char type[] = {'B', 'C'};
  const char sense[] = {'L', 'R'};
  const double rhs[] = {4, 1}, upper[] = {0, 2};
  const char* cn[] = {"a", "b"};
  ASSERT_EQ(ZELQ_AddLazyConstr(prob_, 0, nullptr, nullptr, 'N', 0, 0, nullptr), 0);
  ASSERT_EQ(ZELQ_LoadProb(prob_, 2, 2, -1, 1.5, obj, beg, nullptr, idx, val, type, nullptr, nullptr, sense, rhs, upper, cn, nullptr), 0);
  const Snapshot s = Take(prob_);
  EXPECT_EQ(s.cols, 2);
  EXPECT_EQ(s.rows, 2);
  EXPECT_EQ(s.sense, -1);
  EXPECT_EQ(s.beg, (std::vector<int>{0, 2}));
  EXPECT_EQ(s.idx, (std::vector<int>{0, 1, 0, 1}));
  EXPECT_EQ(s.val, (std::vector<double>{1, 1, 1, -1}));
  EXPECT_EQ(s.rowLb, (std::vector<double>{-1e30, 1}));
  EXPECT_EQ(s.rowUb, (std::vector<double>{4, 2}));
  EXPECT_EQ(s.colLb, (std::vector<double>{0, 0}));
  EXPECT_EQ(s.colUb, (std::vector<double>{1e30, 1e30}));  // 'B' bounds are applied at solve time
  EXPECT_EQ(s.colNames, (std::vector<std::string>{"a", "b"}));
  EXPECT_EQ(s.rowNames, (std::vector<std::string>{"R0", "R1"}));
  int n = -1;
  ASSERT_EQ(ZELQ_GetIntAttr(prob_, "Bins", &n), 0);
  EXPECT_EQ(n, 1);
  ASSERT_EQ(ZELQ_GetIntAttr(prob_, "LazyCons", &n), 0);
  EXPECT_EQ(n, 0);
  // Lower/upper form (no senses) with column counts.
  const int cnt[] = {1, 0};
  const double lo[] = {-1}, up[] = {3};
  ASSERT_EQ(ZELQ_LoadProb(prob_, 2, 1, 1, 0, nullptr, beg, cnt, idx, val, nullptr, nullptr, nullptr, nullptr, lo, up, nullptr, nullptr), 0);
  const Snapshot t = Take(prob_);
  EXPECT_EQ(t.elems, 1);
  EXPECT_EQ(t.rowLb, (std::vector<double>{-1}));
  EXPECT_EQ(t.rowUb, (std::vector<double>{3}));
  EXPECT_EQ(t.sense, 1);
}

TEST_F(CoreColRow, LazyConstraintsAndCutsFollowColumnDeletes) {
  const int idx[] = {0, 2};
  const double val[] = {1, 2};
  ASSERT_EQ(ZELQ_AddLazyConstr(prob_, 2, idx, val, 'L', 3, 0, "lz"), 0);
  const int beg[] = {0, 1, 2};
  const char sense[] = {'G', 'E'};
  const double rhs[] = {0, 1};
  ASSERT_EQ(ZELQ_AddUserCuts(prob_, 2, beg, nullptr, idx, val, sense, rhs, nullptr, nullptr), 0);
  int n = 0;
  ASSERT_EQ(ZELQ_GetIntAttr(prob_, "LazyCons", &n), 0);
  EXPECT_EQ(n, 1);
  ASSERT_EQ(ZELQ_GetIntAttr(prob_, "LazyConsElems", &n), 0);
  EXPECT_EQ(n, 2);
  const int del[] = {0};
  ASSERT_EQ(ZELQ_DelCols(prob_, 1, del), 0);
  ASSERT_EQ(ZELQ_GetIntAttr(prob_, "LazyConsElems", &n), 0);
  EXPECT_EQ(n, 1);
  // Lazy rows are not model rows.
  ASSERT_EQ(ZELQ_GetIntAttr(prob_, "Rows", &n), 0);
  EXPECT_EQ(n, 2);
}

}  // namespace
}  // namespace zelq_test
