// Call sequences that once broke the engine: a problem copy sharing its source's name index,
// basis operations on an LP without rows, MIPs that stopped Cbc or made it overrun an array
// (preprocessing dropping a column, bounds near infinity, an integer column fixed at a fraction),
// and problems that did not read back from the files they were written to. Each case is the
// smallest form of an input the call-sequence fuzz target found.
#include <gtest/gtest.h>
#include <unistd.h>

#include <cmath>
#include <cstdio>
#include <memory>
#include <string>
#include <vector>

#include "problem/names.h"
#include "quiet_prob.h"
#include "zelq/zelq.h"

namespace {

using Quiet = engine_test::QuietProb;

std::string Scratch(const char* ext) {
  return "/tmp/zelq_callseq_" + std::to_string(::getpid()) + ext;
}

// Solves p and reads the status, the objective value and the pool size; each read must succeed
// (the engine answers them after any finished solve, infeasible ones included).
struct MipResult {
  int status = -1, pool = -1;
  double obj = 0;
};
MipResult SolveMip(ZELQprob* p) {
  MipResult r;
  EXPECT_EQ(ZELQ_Solve(p), 0);
  EXPECT_EQ(ZELQ_GetIntAttr(p, "Status", &r.status), 0);
  EXPECT_EQ(ZELQ_GetDblAttr(p, "ObjVal", &r.obj), 0);
  EXPECT_EQ(ZELQ_GetIntAttr(p, "PoolSols", &r.pool), 0);
  return r;
}

TEST(CallSequence, CopiedNamesKeepTheirOwnIndex) {
  using zelq::engine::NameList;
  auto source = std::make_unique<NameList>();
  source->Add("x");
  source->Add("y");
  ASSERT_EQ(source->Find("y"), 1);  // builds the source's index
  NameList copy(*source);
  NameList assigned;
  assigned = *source;
  source->Set(1, "renamed");
  source.reset();  // the copies must not look into the source's strings
  EXPECT_EQ(copy.Find("y"), 1);
  EXPECT_EQ(copy.Find("renamed"), -1);
  EXPECT_EQ(assigned.Find("x"), 0);
  EXPECT_EQ(assigned.Find("y"), 1);

  // The same through the C interface: copy, then change and delete the source.
  Quiet src;
  const char* names[] = {"a", "b"};
  ASSERT_EQ(ZELQ_AddCols(src, 2, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                         nullptr, names),
            0);
  int idx = -1;
  ASSERT_EQ(ZELQ_GetColIdx(src, "b", &idx), 0);
  ASSERT_EQ(idx, 1);
  ZELQprob* dup = nullptr;
  ASSERT_EQ(ZELQ_CreateCopy(src, &dup), 0);
  const char* other[] = {"c"};
  const int one[] = {1};
  ASSERT_EQ(ZELQ_SetColNames(src, 1, one, other), 0);
  ASSERT_EQ(ZELQ_DelCols(src, 1, one), 0);
  EXPECT_EQ(ZELQ_GetColIdx(dup, "b", &idx), 0);
  EXPECT_EQ(idx, 1);
  EXPECT_EQ(ZELQ_GetColIdx(dup, "c", &idx), 0);
  EXPECT_EQ(idx, -1);
  ZELQ_DeleteProb(&dup);
}

TEST(CallSequence, BasisOperationsOnAnLpWithoutRows) {
  Quiet p;
  const double obj[] = {1.0, -1.0}, lo[] = {0.0, 0.0}, up[] = {2.0, 3.0};
  ASSERT_EQ(ZELQ_AddCols(p, 2, obj, nullptr, nullptr, nullptr, nullptr, nullptr, lo, up, nullptr),
            0);
  ASSERT_EQ(ZELQ_Solve(p), 0);
  double objVal = 0;
  ASSERT_EQ(ZELQ_GetDblAttr(p, "ObjVal", &objVal), 0);
  EXPECT_DOUBLE_EQ(objVal, -3.0);
  // B is 0 x 0: the solves give nothing, the head is empty, and nothing is written.
  double b = 7.0, x = 42.0;
  int len = 0;
  EXPECT_EQ(ZELQ_FSolve(p, &b, &x, &len), 0);
  EXPECT_EQ(len, 0);
  len = 5;
  EXPECT_EQ(ZELQ_BSolve(p, &b, &x, &len), 0);
  EXPECT_EQ(len, 0);
  EXPECT_EQ(x, 42.0);
  int head = -9;
  EXPECT_EQ(ZELQ_GetBasisHead(p, &head), 0);
  EXPECT_EQ(head, -9);
  double low = 0, high = 0;
  EXPECT_EQ(ZELQ_ComputeShadowPriceRange(p, 0, 0, &low, &high), ZELQ_RETCODE_INVALID);
}

TEST(CallSequence, SolvesRefuseObjectivesTheSolverCannotTake) {
  Quiet p;
  const double obj[] = {1.0, 1e25}, up[] = {1.0, 1.0};
  ASSERT_EQ(ZELQ_AddCols(p, 2, obj, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, up,
                         nullptr),
            0);
  char err[256] = "";
  for (bool lpOnly : {false, true}) {
    EXPECT_EQ(lpOnly ? ZELQ_SolveLp(p) : ZELQ_Solve(p), ZELQ_RETCODE_INVALID);
    ASSERT_EQ(ZELQ_GetLastError(p, err, sizeof err), 0);
    EXPECT_STREQ(err, lpOnly ? "ZELQ_SolveLp: objective coefficient 1e+25 of column 1 is too "
                               "large to solve (the solver takes magnitudes below 1e25)"
                             : "ZELQ_Solve: objective coefficient 1e+25 of column 1 is too large "
                               "to solve (the solver takes magnitudes below 1e25)");
  }
  int status = -1;
  ASSERT_EQ(ZELQ_GetIntAttr(p, "Status", &status), 0);
  EXPECT_EQ(status, ZELQ_UNSTARTED);
  // Just below the limit the problem solves: min x0 - 9.99e24 x1 over [0, 1]^2 is -9.99e24.
  const int one[] = {1};
  const double below[] = {-9.99e24};
  ASSERT_EQ(ZELQ_SetColObj(p, 1, one, below), 0);
  ASSERT_EQ(ZELQ_Solve(p), 0);
  double objVal = 0;
  ASSERT_EQ(ZELQ_GetDblAttr(p, "ObjVal", &objVal), 0);
  EXPECT_DOUBLE_EQ(objVal, -9.99e24);
}

// max 3y - 3.5x with x integer, 0 <= y - x <= 0.25 and x fixed at a huge value, once by its
// bounds and once by a row: Cbc's preprocessing stopped the process (an assertion in CglProbing)
// from about 1e28 on. A MIP solve refuses finite bounds from 1e25 on; the LP relaxation still
// solves, and just below the limit so does the MIP (optimum -0.5 x at y = x).
TEST(CallSequence, MipSolvesRefuseBoundsNearInfinity) {
  for (bool byRow : {false, true}) {
    SCOPED_TRACE(byRow ? "fixed by a row" : "fixed by its bounds");
    Quiet p;
    const double huge = 1e29;
    // Row 0 is y - x in [0, 0.25]; row 1 (byRow only) is x = huge.
    const int beg[] = {0, byRow ? 2 : 1}, cnt[] = {byRow ? 2 : 1, 1};
    const int i1[] = {0, 1, 0}, i0[] = {0, 0};
    const int* idx = byRow ? i1 : i0;
    const double v1[] = {-1, 1, 1}, v0[] = {-1, 1};
    const double* val = byRow ? v1 : v0;
    const double obj[] = {-3.5, 3}, lo[] = {byRow ? 0 : huge, 0},
                 up[] = {byRow ? ZELQ_INFINITY : huge, ZELQ_INFINITY}, rb[] = {0, huge},
                 ru[] = {0.25, huge};
    const char type[] = {'I', 'C'}, sense[] = {'R', 'E'};
    ASSERT_EQ(ZELQ_LoadProb(p, 2, byRow ? 2 : 1, ZELQ_MAXIMIZE, 0, obj, beg, cnt, idx, val, type,
                            lo, up, sense, rb, ru, nullptr, nullptr),
              0);
    EXPECT_EQ(ZELQ_Solve(p), ZELQ_RETCODE_INVALID);
    char err[256] = "";
    ASSERT_EQ(ZELQ_GetLastError(p, err, sizeof err), 0);
    EXPECT_STREQ(err, byRow ? "ZELQ_Solve: bounds [1e+29, 1e+29] of row 1 are too large for a MIP "
                              "solve (the MIP solver takes finite bounds below 1e25 in magnitude; "
                              "1e30 means no bound)"
                            : "ZELQ_Solve: bounds [1e+29, 1e+29] of column 0 are too large for a "
                              "MIP solve (the MIP solver takes finite bounds below 1e25 in "
                              "magnitude; 1e30 means no bound)");
    int status = -1;
    ASSERT_EQ(ZELQ_GetIntAttr(p, "Status", &status), 0);
    EXPECT_EQ(status, ZELQ_UNSTARTED);
    EXPECT_EQ(ZELQ_SolveLp(p), 0);
    const double below = 9.99e24;
    const int first[] = {0};
    if (byRow) {
      const int row[] = {1};
      ASSERT_EQ(ZELQ_SetRowLower(p, 1, row, &below), 0);
      ASSERT_EQ(ZELQ_SetRowUpper(p, 1, row, &below), 0);
    } else {
      ASSERT_EQ(ZELQ_SetColLower(p, 1, first, &below), 0);
      ASSERT_EQ(ZELQ_SetColUpper(p, 1, first, &below), 0);
    }
    ASSERT_EQ(ZELQ_Solve(p), 0);
    double objVal = 0;
    ASSERT_EQ(ZELQ_GetIntAttr(p, "Status", &status), 0);
    ASSERT_EQ(ZELQ_GetDblAttr(p, "ObjVal", &objVal), 0);
    EXPECT_EQ(status, ZELQ_OPTIMAL);
    EXPECT_NEAR(objVal, -0.5 * below, 1e-6 * below);
  }
}

// An integer column fixed at -0.75 by its bounds: with a time limit of 0 Cbc stopped the process
// (an assertion in its solution check). Bounds without an integer between them make the MIP
// infeasible, with or without a limit; fractional bounds around integers are rounded inward.
TEST(CallSequence, IntegerColumnsWithFractionalBounds) {
  struct Case {
    double lo, up;
    int sense, status;
    double obj;
  } cases[] = {
      {-0.75, -0.75, ZELQ_MINIMIZE, ZELQ_INFEASIBLE, 0},
      {0.25, 0.75, ZELQ_MAXIMIZE, ZELQ_INFEASIBLE, 0},
      {0.3, 2.7, ZELQ_MINIMIZE, ZELQ_OPTIMAL, 1},
      {0.3, 2.7, ZELQ_MAXIMIZE, ZELQ_OPTIMAL, 2},
      {-1.000001, 0.9999999, ZELQ_MINIMIZE, ZELQ_OPTIMAL, -1},
  };
  for (const Case& c : cases) {
    for (double limit : {0.0, 60.0}) {
      SCOPED_TRACE(std::to_string(c.lo) + " .. " + std::to_string(c.up) + ", sense " +
                   std::to_string(c.sense) + ", TimeLimit " + std::to_string(limit));
      Quiet p;
      const double obj[] = {1};
      const char type[] = {'I'};
      ASSERT_EQ(ZELQ_AddCols(p, 1, obj, nullptr, nullptr, nullptr, nullptr, type, &c.lo, &c.up,
                             nullptr),
                0);
      ASSERT_EQ(ZELQ_SetObjSense(p, c.sense), 0);
      ASSERT_EQ(ZELQ_SetDblParam(p, "TimeLimit", limit), 0);
      const MipResult r = SolveMip(p);
      if (limit > 0 || c.status == ZELQ_INFEASIBLE) {
        EXPECT_EQ(r.status, c.status);
      }
      if (r.status == ZELQ_OPTIMAL) {
        EXPECT_NEAR(r.obj, c.obj, 1e-9);
      }
    }
  }
}

// max 7x + 4y + 3z  s.t. 2x + 3y + z <= 10, 1 <= 4x + y <= 100, x binary, y integer <= 10, z >= 0,
// with the lazy constraint x <= 0.5 (so preprocessing fixes x = 0 and drops it): the second
// row then needs y >= 1, and the optimum is y = 1, z = 7 with value 25.
TEST(CallSequence, MipStartWithALazyConstraintThatFixesAColumn) {
  for (int mode : {-1, 2, 3}) {
    for (int startCols : {1, 3}) {
      SCOPED_TRACE("MipStartMode " + std::to_string(mode) + ", start of " +
                   std::to_string(startCols) + " columns");
      Quiet p;
      const int beg[] = {0, 2, 4}, cnt[] = {2, 2, 1}, idx[] = {0, 1, 0, 1, 0};
      const double val[] = {2, 4, 3, 1, 1}, obj[] = {7, 4, 3}, lo[] = {0, 0, 0},
                   up[] = {1, 10, 1e30}, rb[] = {10, 1}, ru[] = {0, 100};
      const char type[] = {'B', 'I', 'C'}, sense[] = {'L', 'R'};
      ASSERT_EQ(ZELQ_LoadProb(p, 3, 2, ZELQ_MAXIMIZE, 0, obj, beg, cnt, idx, val, type, lo, up,
                              sense, rb, ru, nullptr, nullptr),
                0);
      ASSERT_EQ(ZELQ_SetIntParam(p, "MipStartMode", mode), 0);
      const int list[] = {0, 1, 2};
      const double start[] = {0, 2, 2};
      ASSERT_EQ(ZELQ_AddMipStart(p, startCols, list, start), 0);
      const int li[] = {0};
      const double lv[] = {1};
      ASSERT_EQ(ZELQ_AddLazyConstr(p, 1, li, lv, 'L', 0.5, 0, nullptr), 0);
      const MipResult r = SolveMip(p);
      EXPECT_EQ(r.status, ZELQ_OPTIMAL);
      EXPECT_NEAR(r.obj, 25.0, 1e-6);
      EXPECT_GE(r.pool, 1);
    }
  }
}

// min -a - 2y + x with a integer in [0, 10], y in [0, 4], x binary fixed at 1 by its bounds;
// a + y <= 4 and 3y <= 10. Preprocessing drops x, and Cbc 2.10 then copied its saved solutions
// back with the original column count (read past their arrays under AddressSanitizer; no MIP
// start involved). Optimum -6 at a = 1, y = 3. Without preprocessing the pool may hold more
// solutions, each feasible and no better than the first.
TEST(CallSequence, MipWhosePreprocessingDropsAFixedColumn) {
  for (int presolve : {-1, 0}) {
    SCOPED_TRACE("Presolve " + std::to_string(presolve));
    Quiet p;
    const int beg[] = {0, 1, 3}, cnt[] = {1, 2, 0}, idx[] = {0, 0, 1};
    const double val[] = {1, 1, 3}, obj[] = {-1, -2, 1}, lo[] = {0, 0, 1}, up[] = {10, 4, 1},
                 rhs[] = {4, 10};
    const char type[] = {'I', 'C', 'B'}, sense[] = {'L', 'L'};
    ASSERT_EQ(ZELQ_LoadProb(p, 3, 2, ZELQ_MINIMIZE, 0, obj, beg, cnt, idx, val, type, lo, up,
                            sense, rhs, nullptr, nullptr, nullptr),
              0);
    ASSERT_EQ(ZELQ_SetIntParam(p, "Presolve", presolve), 0);
    const MipResult r = SolveMip(p);
    EXPECT_EQ(r.status, ZELQ_OPTIMAL);
    EXPECT_NEAR(r.obj, -6.0, 1e-6);
    ASSERT_GE(r.pool, 1);
    for (int i = 0; i < r.pool; ++i) {
      double x[3] = {}, v = 0;
      ASSERT_EQ(ZELQ_GetPoolSolution(p, i, 3, nullptr, x), 0);
      ASSERT_EQ(ZELQ_GetPoolObjVal(p, i, &v), 0);
      EXPECT_NEAR(v, -x[0] - 2 * x[1] + x[2], 1e-6);
      EXPECT_GE(v, -6.0 - 1e-6);
      EXPECT_LE(x[0] + x[1], 4 + 1e-6);
      EXPECT_NEAR(x[2], 1.0, 1e-9);
    }
  }
}

// Writes p in the format of `ext`, reads it into a new problem and returns that problem.
ZELQprob* RoundTrip(ZELQprob* p, const char* ext, Quiet& into) {
  const std::string path = Scratch(ext);
  const bool mps = std::string(ext) == ".mps";
  EXPECT_EQ(mps ? ZELQ_WriteMps(p, path.c_str()) : ZELQ_WriteLp(p, path.c_str()), 0);
  char err[512] = "";
  const int rc = mps ? ZELQ_ReadMps(into, path.c_str()) : ZELQ_ReadLp(into, path.c_str());
  ZELQ_GetLastError(into, err, sizeof err);
  EXPECT_EQ(rc, 0) << err;
  std::remove(path.c_str());
  return into;
}

TEST(CallSequence, WrittenProblemsReadBack) {
  // A binary with bounds of its own stays a binary with those bounds.
  {
    Quiet p, back;
    const double lo[] = {-1.0, 0.0, 0.0}, up[] = {5.0, 1e30, 1.0};
    const char type[] = {'B', 'B', 'B'};
    ASSERT_EQ(ZELQ_AddCols(p, 3, nullptr, nullptr, nullptr, nullptr, nullptr, type, lo, up,
                           nullptr),
              0);
    RoundTrip(p, ".mps", back);
    char t[3] = {};
    double l[3] = {}, u[3] = {};
    ASSERT_EQ(ZELQ_GetColType(back, 3, nullptr, t), 0);
    ASSERT_EQ(ZELQ_GetColInfo(back, "LB", 3, nullptr, l), 0);
    ASSERT_EQ(ZELQ_GetColInfo(back, "UB", 3, nullptr, u), 0);
    for (int j = 0; j < 3; ++j) {
      EXPECT_EQ(t[j], 'B') << j;
      EXPECT_EQ(l[j], lo[j]) << j;
      EXPECT_EQ(u[j], up[j]) << j;
    }
  }
  // Names that start or end with a blank, or are all blanks, cannot use fixed MPS layout.
  for (const char* odd : {"  ", " a", "b "}) {
    SCOPED_TRACE(std::string("name \"") + odd + "\"");
    Quiet p, back;
    const char* names[] = {odd, "x y"};
    ASSERT_EQ(ZELQ_AddCols(p, 2, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                           nullptr, names),
              0);
    RoundTrip(p, ".mps", back);
    int n = 0;
    ASSERT_EQ(ZELQ_GetIntAttr(back, "Cols", &n), 0);
    EXPECT_EQ(n, 2);
    int idx = -2;
    ASSERT_EQ(ZELQ_GetColIdx(back, "x_y", &idx), 0);
    EXPECT_EQ(idx, 1);
  }
  // Rows of a problem without columns are constants; both formats keep their bounds.
  for (const char* ext : {".lp", ".mps"}) {
    SCOPED_TRACE(ext);
    Quiet p, back;
    const char sense[] = {'G', 'L', 'E', 'N', 'R'};
    const double rb[] = {-2, 3, 0, 0, -1}, ru[] = {0, 0, 0, 0, 4};
    ASSERT_EQ(ZELQ_AddRows(p, 5, nullptr, nullptr, nullptr, nullptr, sense, rb, ru, nullptr), 0);
    ASSERT_EQ(ZELQ_AddLazyConstr(p, 0, nullptr, nullptr, 'N', 0, 0, nullptr), 0);
    RoundTrip(p, ext, back);
    int m = 0, lazy = 0;
    ASSERT_EQ(ZELQ_GetIntAttr(back, "Rows", &m), 0);
    ASSERT_EQ(ZELQ_GetIntAttr(back, "LazyCons", &lazy), 0);
    ASSERT_EQ(m, 5);
    EXPECT_EQ(lazy, 1);
    double l[5] = {}, u[5] = {};
    ASSERT_EQ(ZELQ_GetRowInfo(back, "LB", 5, nullptr, l), 0);
    ASSERT_EQ(ZELQ_GetRowInfo(back, "UB", 5, nullptr, u), 0);
    const double wantLo[] = {-2, -1e30, 0, -1e30, -1}, wantUp[] = {1e30, 3, 0, 1e30, 4};
    for (int i = 0; i < 5; ++i) {
      EXPECT_EQ(l[i], wantLo[i]) << i;
      EXPECT_EQ(u[i], wantUp[i]) << i;
    }
  }
}

}  // namespace
