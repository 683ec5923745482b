// Argument checking of the solve, solution, basis and log entry points: exact codes, key parts
// of the messages, and no change to the problem after a rejected call.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <iterator>
#include <functional>
#include <limits>
#include <string>
#include <vector>

#include "solve_test_util.h"
#include "zelq/zelq.h"

using namespace solve_test;

namespace {

struct BadCall {
  const char* what;
  std::function<int(ZELQprob*)> call;
  int code;
  const char* message;  // expected part of ZELQ_GetLastError
};

void RunTable(ZELQprob* prob, const std::vector<BadCall>& table) {
  for (const BadCall& c : table) {
    EXPECT_EQ(c.call(prob), c.code) << c.what;
    EXPECT_NE(LastError(prob).find(c.message), std::string::npos)
        << c.what << ": " << LastError(prob);
  }
}

TEST(SolveApi, CallsBeforeAnySolveAreRejected) {
  QuietProb prob;
  ASSERT_EQ(Load(prob, TextbookLp()), 0);
  double v[3], b[3] = {1, 0, 0}, lo, up;
  int head[3], len = 3, cb[2];
  RunTable(prob, {
      {"GetSolution", [&](ZELQprob* p) { return ZELQ_GetSolution(p, v); }, 3, "no solution available"},
      {"GetLpSolution", [&](ZELQprob* p) { return ZELQ_GetLpSolution(p, v, 0, 0, 0); }, 3, "no LP solution"},
      {"GetBasis", [&](ZELQprob* p) { return ZELQ_GetBasis(p, cb, nullptr); }, 3, "no basis available"},
      {"GetColBasis", [&](ZELQprob* p) { return ZELQ_GetColBasis(p, 2, nullptr, cb); }, 3, "no basis"},
      {"FSolve", [&](ZELQprob* p) { return ZELQ_FSolve(p, b, v, &len); }, 3, "no factorized basis: solve the LP first"},
      {"BSolve", [&](ZELQprob* p) { return ZELQ_BSolve(p, b, v, &len); }, 3, "no factorized basis"},
      {"GetBasisHead", [&](ZELQprob* p) { return ZELQ_GetBasisHead(p, head); }, 3, "no factorized basis"},
      {"Range", [&](ZELQprob* p) { return ZELQ_ComputeShadowPriceRange(p, 0, 1, &lo, &up); }, 3, "no factorized basis"},
      {"PoolObj", [&](ZELQprob* p) { return ZELQ_GetPoolObjVal(p, 0, &lo); }, 3, "no solution available in the pool"},
      {"PoolSol", [&](ZELQprob* p) { return ZELQ_GetPoolSolution(p, 0, 2, nullptr, v); }, 3, "pool"},
  });
  EXPECT_EQ(ZELQ_Solve(nullptr), ZELQ_RETCODE_INVALID);
  EXPECT_EQ(ZELQ_SolveLp(nullptr), ZELQ_RETCODE_INVALID);
  EXPECT_EQ(ZELQ_GetSolution(nullptr, v), ZELQ_RETCODE_INVALID);
}

TEST(SolveApi, BadArgumentsAfterASolveLeaveEverythingAsItWas) {
  QuietProb prob;
  ASSERT_EQ(Load(prob, TextbookLp()), 0);
  ASSERT_EQ(ZELQ_Solve(prob), 0);
  const double nan = std::numeric_limits<double>::quiet_NaN();
  double v[3], b[3] = {1, 0, 0}, bnan[3] = {1, nan, 0}, lo, up;
  int len2 = 2, len3 = 3;
  int badCol[2] = {1, 5}, goodCol[2] = {0, 0}, goodRow[3] = {1, 1, 1}, badRow[3] = {1, 1, -1};
  int listOut[1] = {2}, listNeg[1] = {-1}, dup[2] = {1, 1}, one[1] = {0};
  double vals[2] = {1, 1}, valNan[1] = {nan};
  RunTable(prob, {
      {"FSolve short", [&](ZELQprob* p) { return ZELQ_FSolve(p, b, v, &len2); }, 3, "buffer length 2 is smaller than the row count 3"},
      {"FSolve nan", [&](ZELQprob* p) { return ZELQ_FSolve(p, bnan, v, &len3); }, 3, "b"},
      {"FSolve null", [&](ZELQprob* p) { return ZELQ_FSolve(p, nullptr, v, &len3); }, 3, "b must not be null"},
      {"BSolve null len", [&](ZELQprob* p) { return ZELQ_BSolve(p, b, v, nullptr); }, 3, "p_len"},
      {"Head null", [&](ZELQprob* p) { return ZELQ_GetBasisHead(p, nullptr); }, 3, "head"},
      {"Range row", [&](ZELQprob* p) { return ZELQ_ComputeShadowPriceRange(p, 3, 0, &lo, &up); }, 3, "3"},
      {"Range side", [&](ZELQprob* p) { return ZELQ_ComputeShadowPriceRange(p, 0, 2, &lo, &up); }, 3, "side 2"},
      {"SetBasis code", [&](ZELQprob* p) { return ZELQ_SetBasis(p, badCol, goodRow); }, 3, "colBasis[1] = 5"},
      {"SetBasis row", [&](ZELQprob* p) { return ZELQ_SetBasis(p, goodCol, badRow); }, 3, "rowBasis[2] = -1"},
      {"SetBasis null", [&](ZELQprob* p) { return ZELQ_SetBasis(p, nullptr, goodRow); }, 3, "colBasis"},
      {"ColBasis index", [&](ZELQprob* p) { int o; return ZELQ_GetColBasis(p, 1, listOut, &o); }, 3, "2"},
      {"RowBasis index", [&](ZELQprob* p) { int o; return ZELQ_GetRowBasis(p, 1, listNeg, &o); }, 3, "-1"},
      {"MipStart index", [&](ZELQprob* p) { return ZELQ_AddMipStart(p, 1, listOut, vals); }, 3, "2"},
      {"MipStart dup", [&](ZELQprob* p) { return ZELQ_AddMipStart(p, 2, dup, vals); }, 3, "twice"},
      {"MipStart nan", [&](ZELQprob* p) { return ZELQ_AddMipStart(p, 1, one, valNan); }, 3, "colVal"},
      {"MipStart zero", [&](ZELQprob* p) { return ZELQ_AddMipStart(p, 0, one, vals); }, 3, "num = 0"},
      {"MipStart many", [&](ZELQprob* p) { return ZELQ_AddMipStart(p, 3, one, vals); }, 3, "[1, 2]"},
      {"SetLpSolution nan", [&](ZELQprob* p) { return ZELQ_SetLpSolution(p, valNan, 0, 0, 0); }, 3, "value"},
      {"SetLpSolution none", [&](ZELQprob* p) { return ZELQ_SetLpSolution(p, 0, 0, 0, 0); }, 3, "null"},
      {"Callback", [&](ZELQprob* p) {
         return ZELQ_SetCallback(p, [](ZELQprob*, void*, int, void*) { return 0; }, ZELQ_CBCONTEXT_MIPSOL, nullptr);
       }, 10, "not supported"},
      {"LogFile", [&](ZELQprob* p) { return ZELQ_SetLogFile(p, "/nonexistent-dir/zelq.log"); }, 2, "/nonexistent-dir/zelq.log"},
  });
  // Nothing changed: the solution, the basis and the start basis are the ones of the solve.
  std::vector<double> x(2);
  ASSERT_EQ(ZELQ_GetSolution(prob, x.data()), 0);
  EXPECT_NEAR(x[0], 2, 1e-9);
  EXPECT_NEAR(x[1], 6, 1e-9);
  ASSERT_EQ(ZELQ_Solve(prob), 0);
  EXPECT_EQ(IntAttr(prob, "SimplexIter"), 0);  // still warm from the optimal basis
  EXPECT_EQ(ZELQ_SetCallback(prob, nullptr, 0, nullptr), 0);
  int len = 3;
  EXPECT_EQ(ZELQ_FSolve(prob, b, v, &len), 0);
}

TEST(SolveApi, SetLpSolutionIsReadBackAndDropsTheFactorization) {
  QuietProb prob;
  ASSERT_EQ(Load(prob, TextbookLp()), 0);
  ASSERT_EQ(ZELQ_Solve(prob), 0);
  double x[2] = {1, 2}, dual[3] = {0, 0.5, 0};
  ASSERT_EQ(ZELQ_SetLpSolution(prob, x, nullptr, dual, nullptr), 0);
  double gx[2], act[3], gd[3], rc[2];
  ASSERT_EQ(ZELQ_GetLpSolution(prob, gx, act, gd, rc), 0);
  EXPECT_EQ(gx[1], 2);
  EXPECT_EQ(gd[1], 0.5);
  EXPECT_EQ(act[0], 0);
  EXPECT_EQ(rc[0], 0);
  EXPECT_NEAR(DblAttr(prob, "ObjVal"), 3 * 1 + 5 * 2, 1e-12);
  double b[3] = {1, 0, 0}, v[3];
  int len = 3;
  EXPECT_EQ(ZELQ_FSolve(prob, b, v, &len), ZELQ_RETCODE_INVALID);
}

TEST(SolveApi, LogFileReceivesTheSolverLog) {
  const std::string path = testing::TempDir() + "zelq_solve_log_test.log";
  std::remove(path.c_str());
  QuietProb prob;
  ASSERT_EQ(Load(prob, TextbookLp()), 0);
  ASSERT_EQ(ZELQ_SetIntParam(prob, "Logging", 1), 0);
  ASSERT_EQ(ZELQ_SetIntParam(prob, "LogToConsole", 0), 0);
  ASSERT_EQ(ZELQ_SetLogFile(prob, path.c_str()), 0);
  testing::internal::CaptureStdout();
  ASSERT_EQ(ZELQ_Solve(prob), 0);
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
  ASSERT_EQ(ZELQ_SetLogFile(prob, nullptr), 0);  // closes it
  std::ifstream in(path);
  std::string all((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
  EXPECT_NE(all.find("Optimal"), std::string::npos) << all;
  std::remove(path.c_str());
}

// Instances of the shared data set with published optima (skipped when absent).
TEST(SolveApi, PublishedOptimaOfNetlibAndMiplibInstances) {
  struct Case { const char* file; double optimum; bool mip; };
  const Case cases[] = {{"netlib/afiro.mps", -4.6475314286e+02, false},
                        {"netlib/sc50a.mps", -6.4575077059e+01, false},
                        {"miplib3/p0033.mps", 3089, true},
                        {"miplib3/stein27.mps", 18, true}};
  int ran = 0;
  for (const Case& c : cases) {
    std::string path = std::string("/work/shared/data/") + c.file;
    std::string local = std::string(ZELQ_TEST_DATA) + "/" + (std::strrchr(c.file, '/') + 1);
    QuietProb prob;
    if (ZELQ_ReadMps(prob, local.c_str()) != 0 && ZELQ_ReadMps(prob, path.c_str()) != 0) continue;
    ++ran;
    ASSERT_EQ(ZELQ_Solve(prob), 0) << c.file;
    EXPECT_EQ(IntAttr(prob, "Status"), ZELQ_OPTIMAL) << c.file;
    EXPECT_NEAR(DblAttr(prob, "ObjVal"), c.optimum, 1e-6 * std::max(1.0, std::fabs(c.optimum))) << c.file;
    EXPECT_EQ(IntAttr(prob, c.mip ? "HasMipSol" : "HasLpSol"), 1) << c.file;
  }
  if (ran == 0) GTEST_SKIP() << "no instance files found";
}

TEST(SolveApi, EmptyAndRowlessProblemsSolve) {
  QuietProb empty;
  ASSERT_EQ(ZELQ_SetObjConst(empty, 7.5), 0);
  ASSERT_EQ(ZELQ_Solve(empty), 0);
  EXPECT_EQ(IntAttr(empty, "Status"), ZELQ_OPTIMAL);
  EXPECT_NEAR(DblAttr(empty, "ObjVal"), 7.5, 1e-12);

  Dense d;  // min x - y with x in [1, 3], y in [-2, 5], no rows
  d.n = 2;
  d.obj = {1, -1};
  d.colLo = {1, -2};
  d.colUp = {3, 5};
  for (char type : {'C', 'I'}) {
    d.type = {type, type};
    QuietProb prob;
    ASSERT_EQ(Load(prob, d), 0);
    ASSERT_EQ(ZELQ_Solve(prob), 0);
    EXPECT_EQ(IntAttr(prob, "Status"), ZELQ_OPTIMAL) << type;
    EXPECT_NEAR(DblAttr(prob, "ObjVal"), -4, 1e-9) << type;
    std::vector<double> x(2);
    ASSERT_EQ(ZELQ_GetSolution(prob, x.data()), 0);
    EXPECT_NEAR(x[0], 1, 1e-9);
    EXPECT_NEAR(x[1], 5, 1e-9);
  }
}

}  // namespace
