// White-box tests of the core entry points: start information kept in step with deletions and
// additions, solutions dropped on content changes, information read from stored results, and
// the logger.
#include <gtest/gtest.h>

#include <cstdio>
#include <fstream>
#include <string>
#include <vector>

#include "api/handles.h"
#include "zelq/zelq.h"

namespace zelq::engine {
namespace {

class CoreInternal : public ::testing::Test {
 protected:
  void SetUp() override {
    ZELQenvconfig* cfg = nullptr;
    ASSERT_EQ(ZELQ_CreateEnvConfig(&cfg), 0);
    ASSERT_EQ(ZELQ_SetEnvConfig(cfg, "Logging", "0"), 0);
    ASSERT_EQ(ZELQ_CreateEnvWithConfig(cfg, &env_), 0);
    ZELQ_DeleteEnvConfig(&cfg);
    ASSERT_EQ(ZELQ_CreateProb(env_, &p_), 0);
    ASSERT_EQ(ZELQ_AddCols(p_, 4, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                           nullptr, nullptr),
              0);
    const int idx[] = {0, 3};
    const double val[] = {1, 2};
    for (int r = 0; r < 3; ++r) ASSERT_EQ(ZELQ_AddRow(p_, 2, idx, val, 'L', r, 0, nullptr), 0);
  }
  void TearDown() override {
    ZELQ_DeleteProb(&p_);
    ZELQ_DeleteEnv(&env_);
  }
  void FakeLpSolution() {
    Solution& s = p_->solution;
    s.hasLpSol = true;
    s.status = s.lpStatus = ZELQ_OPTIMAL;
    s.x = {1, 2, 3, 4};
    s.redcost = {0, 0, 1, 0};
    s.activity = {9, 8, 7};
    s.dual = {-1, 0, 0};
    s.objVal = s.lpObjVal = 5;
  }
  ZELQenv* env_ = nullptr;
  ZELQprob* p_ = nullptr;
};

TEST_F(CoreInternal, StartInformationFollowsEdits) {
  p_->startColBasis = {0, 1, 2, 1};
  p_->startRowBasis = {1, 0, 2};
  p_->mipStarts = {{{0, 1.0}, {2, 3.0}, {3, 4.0}}};
  ASSERT_EQ(ZELQ_AddCol(p_, 0, 0, nullptr, nullptr, 'C', -1e30, 1e30, "free"), 0);
  ASSERT_EQ(ZELQ_AddRow(p_, 0, nullptr, nullptr, 'N', 0, 0, nullptr), 0);
  EXPECT_EQ(p_->startColBasis, (std::vector<int>{0, 1, 2, 1, ZELQ_BASIS_LOWER}));
  EXPECT_EQ(p_->startRowBasis, (std::vector<int>{1, 0, 2, ZELQ_BASIS_BASIC}));
  const int dc[] = {2, 0};
  ASSERT_EQ(ZELQ_DelCols(p_, 2, dc), 0);
  EXPECT_EQ(p_->startColBasis, (std::vector<int>{1, 1, ZELQ_BASIS_LOWER}));
  ASSERT_EQ(p_->mipStarts.size(), 1u);
  EXPECT_EQ(p_->mipStarts[0], (MipStart{{1, 4.0}}));  // column 3 is now column 1
  const int dr[] = {1};
  ASSERT_EQ(ZELQ_DelRows(p_, 1, dr), 0);
  EXPECT_EQ(p_->startRowBasis, (std::vector<int>{1, 2, ZELQ_BASIS_BASIC}));
  // Without a start basis nothing is invented.
  p_->startColBasis.clear();
  ASSERT_EQ(ZELQ_AddCol(p_, 0, 0, nullptr, nullptr, 'C', 0, 1, nullptr), 0);
  EXPECT_TRUE(p_->startColBasis.empty());
  // Reset(1) drops start information, Reset(0) keeps it.
  p_->startColBasis = {0, 0, 0, 0};
  ASSERT_EQ(ZELQ_Reset(p_, 0), 0);
  EXPECT_FALSE(p_->startColBasis.empty());
  ASSERT_EQ(ZELQ_Reset(p_, 1), 0);
  EXPECT_TRUE(p_->startColBasis.empty());
  EXPECT_TRUE(p_->mipStarts.empty());
}

TEST_F(CoreInternal, ContentChangesDropTheSolutionNamesDoNot) {
  const int l[] = {0};
  const double one[] = {1};
  const char* nm[] = {"a"};
  FakeLpSolution();
  ASSERT_EQ(ZELQ_SetColNames(p_, 1, l, nm), 0);
  ASSERT_EQ(ZELQ_SetColBranchFactors(p_, 1, l, one), 0);
  EXPECT_TRUE(p_->solution.hasLpSol);
  struct Change {
    const char* label;
    int (*fn)(ZELQprob*);
  } changes[] = {
      {"SetColObj", [](ZELQprob* p) { const int i[] = {0}; const double v[] = {2}; return ZELQ_SetColObj(p, 1, i, v); }},
      {"SetColUpper", [](ZELQprob* p) { const int i[] = {0}; const double v[] = {2}; return ZELQ_SetColUpper(p, 1, i, v); }},
      {"SetRowLower", [](ZELQprob* p) { const int i[] = {0}; const double v[] = {-2}; return ZELQ_SetRowLower(p, 1, i, v); }},
      {"SetElem", [](ZELQprob* p) { return ZELQ_SetElem(p, 1, 1, 3.0); }},
      {"SetColType", [](ZELQprob* p) { const int i[] = {0}; const char t[] = {'I'}; return ZELQ_SetColType(p, 1, i, t); }},
      {"SetObjSense", [](ZELQprob* p) { return ZELQ_SetObjSense(p, -1); }},
      {"SetObjConst", [](ZELQprob* p) { return ZELQ_SetObjConst(p, 1.0); }},
      {"AddLazyConstr", [](ZELQprob* p) { return ZELQ_AddLazyConstr(p, 0, nullptr, nullptr, 'N', 0, 0, nullptr); }},
      {"AddRow", [](ZELQprob* p) { return ZELQ_AddRow(p, 0, nullptr, nullptr, 'N', 0, 0, nullptr); }},
      {"DelRows", [](ZELQprob* p) { const int i[] = {0}; return ZELQ_DelRows(p, 1, i); }},
  };
  for (const Change& c : changes) {
    FakeLpSolution();
    p_->solution.activity.resize(p_->problem.rows());
    p_->solution.dual.resize(p_->problem.rows());
    ASSERT_EQ(c.fn(p_), 0) << c.label;
    EXPECT_FALSE(p_->solution.HasSol()) << c.label;
    int has = 1;
    ASSERT_EQ(ZELQ_GetIntAttr(p_, "HasSol", &has), 0);
    EXPECT_EQ(has, 0) << c.label;
  }
}

TEST_F(CoreInternal, InformationFromStoredResults) {
  FakeLpSolution();
  std::vector<double> v(4);
  ASSERT_EQ(ZELQ_GetColInfo(p_, "value", 4, nullptr, v.data()), 0);
  EXPECT_EQ(v, (std::vector<double>{1, 2, 3, 4}));
  const int l[] = {2, 0};
  ASSERT_EQ(ZELQ_GetColInfo(p_, "RedCost", 2, l, v.data()), 0);
  EXPECT_EQ(v[0], 1);
  ASSERT_EQ(ZELQ_GetRowInfo(p_, "Slack", 3, nullptr, v.data()), 0);
  EXPECT_EQ(v[2], 7);
  ASSERT_EQ(ZELQ_GetRowInfo(p_, "Dual", 3, nullptr, v.data()), 0);
  EXPECT_EQ(v[0], -1);
  double obj = 0;
  ASSERT_EQ(ZELQ_GetDblAttr(p_, "ObjVal", &obj), 0);
  EXPECT_EQ(obj, 5);
  // With a MIP solution, "Value" reads it; duals still come from the LP.
  p_->solution.hasMipSol = true;
  p_->solution.mipX = {0, 0, 1, 1};
  p_->solution.mipActivity = {2, 2, 2};
  ASSERT_EQ(ZELQ_GetColInfo(p_, "Value", 4, nullptr, v.data()), 0);
  EXPECT_EQ(v, (std::vector<double>{0, 0, 1, 1}));
  ASSERT_EQ(ZELQ_GetRowInfo(p_, "Value", 3, nullptr, v.data()), 0);
  EXPECT_EQ(v[0], 2);
  p_->solution.hasPrimalRay = true;
  p_->solution.ray = {0, 1, 0, 0};
  ASSERT_EQ(ZELQ_GetColInfo(p_, "PrimalRay", 4, nullptr, v.data()), 0);
  EXPECT_EQ(v[1], 1);
  // A result of the wrong length is an internal inconsistency, not garbage.
  p_->solution.ray.pop_back();
  EXPECT_EQ(ZELQ_GetColInfo(p_, "PrimalRay", 4, nullptr, v.data()), ZELQ_RETCODE_INTERNAL);
}

TEST_F(CoreInternal, LoggingParametersDriveTheLogger) {
  EXPECT_FALSE(p_->log.Enabled());  // the environment said Logging = 0
  ASSERT_EQ(ZELQ_SetIntParam(p_, "Logging", 1), 0);
  EXPECT_TRUE(p_->log.Enabled());
  ZELQprob* copy = nullptr;
  ASSERT_EQ(ZELQ_CreateCopy(p_, &copy), 0);
  EXPECT_TRUE(copy->log.Enabled());
  ASSERT_EQ(ZELQ_ResetParam(p_), 0);
  EXPECT_FALSE(p_->log.Enabled());
  ZELQ_DeleteProb(&copy);
}

TEST(Logger, ConsoleFileCallbackAndSwitches) {
  Logger log;
  log.SetConsole(false);
  const std::string path = ::testing::TempDir() + "zelq_core_logger.log";
  std::remove(path.c_str());
  ASSERT_TRUE(log.SetFile(path.c_str()));
  std::vector<std::string> got;
  log.SetCallback([](char* msg, void* ud) { static_cast<std::vector<std::string>*>(ud)->push_back(msg); },
                  &got);
  log.Line("first");
  log.Printf("%s %d", "second", 2);
  std::string big(2000, 'x');
  log.Printf("%s", big.c_str());
  log.SetEnabled(false);
  log.Line("hidden");
  log.SetEnabled(true);
  EXPECT_FALSE(log.SetFile("/nonexistent/dir/x.log"));  // keeps the old file
  log.Line("third");
  log.SetCallback(nullptr, nullptr);
  log.Line("fourth");
  ASSERT_TRUE(log.SetFile(nullptr));
  log.Line("fifth");
  EXPECT_EQ(got, (std::vector<std::string>{"first", "second 2", big, "third"}));
  std::ifstream in(path);
  std::vector<std::string> lines;
  for (std::string s; std::getline(in, s);) lines.push_back(s);
  EXPECT_EQ(lines, (std::vector<std::string>{"first", "second 2", big, "third", "fourth"}));
  std::remove(path.c_str());
}

}  // namespace
}  // namespace zelq::engine
