// C-interface tests of environments, configuration, placement, problem life, parameters,
// attributes, information getters and the families this build does not support.
#include <sys/stat.h>
#include <unistd.h>

#include <cmath>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <string>

#include "core_test_util.h"

namespace zelq_test {
namespace {

std::string TempDir(const char* tag) {
  std::string d = ::testing::TempDir() + "zelq_core_" + tag + "_" + std::to_string(::getpid());
  ::mkdir(d.c_str(), 0700);
  return d;
}

TEST(CoreEnv, BannerAndReturnCodeTexts) {
  char buf[200];
  ASSERT_EQ(ZELQ_GetBanner(buf, sizeof buf), 0);
  EXPECT_EQ(std::string(buf).rfind("Zelq engine 8.0.7 (Clp ", 0), 0u) << buf;
  EXPECT_NE(std::string(buf).find("Cbc "), std::string::npos);
  char small[6];
  ASSERT_EQ(ZELQ_GetBanner(small, sizeof small), 0);
  EXPECT_STREQ(small, "Zelq ");
  EXPECT_EQ(ZELQ_GetBanner(nullptr, 10), 3);
  EXPECT_EQ(ZELQ_GetBanner(buf, 0), 3);
  ASSERT_EQ(ZELQ_GetRetcodeMsg(ZELQ_RETCODE_NOTSUPPORTED, buf, sizeof buf), 0);
  EXPECT_STREQ(buf, "The operation or problem class is not supported by this build");
  ASSERT_EQ(ZELQ_GetRetcodeMsg(42, buf, sizeof buf), 0);
  EXPECT_STREQ(buf, "Unknown return code 42");
  ASSERT_EQ(ZELQ_GetRetcodeMsg(-1, buf, sizeof buf), 0);
  EXPECT_STREQ(buf, "Unknown return code -1");
  for (int code : {0, 1, 2, 3, 5, 6, 7, 8}) {
    ASSERT_EQ(ZELQ_GetRetcodeMsg(code, buf, sizeof buf), 0);
    EXPECT_GT(std::strlen(buf), 5u) << code;
  }
  EXPECT_EQ(ZELQ_GetRetcodeMsg(3, buf, -1), 3);
}

TEST(CoreEnv, ConfigurationKeysAndValues) {
  ZELQenvconfig* cfg = nullptr;
  ASSERT_EQ(ZELQ_CreateEnvConfig(&cfg), 0);
  struct Case {
    const char* key;
    const char* value;
    int code;
  } cases[] = {{"Logging", "0", 0},      {"logging", "1", 0},     {"Logging", "2", 3},
               {"Logging", "", 3},       {"Logging", "1x", 3},    {"LogToConsole", "0", 0},
               {"Threads", "-1", 0},     {"Threads", "128", 0},   {"Threads", "129", 3},
               {"Threads", "-2", 3},     {"Banner", "0", 0},      {"NoSuchKey", "1", 3},
               {"Threads", " 4 ", 0}};
  for (const Case& c : cases)
    EXPECT_EQ(ZELQ_SetEnvConfig(cfg, c.key, c.value), c.code) << c.key << "=" << c.value;
  EXPECT_EQ(ZELQ_SetEnvConfig(cfg, nullptr, "1"), 3);
  EXPECT_EQ(ZELQ_SetEnvConfig(cfg, "Logging", nullptr), 3);
  EXPECT_EQ(ZELQ_SetEnvConfig(nullptr, "Logging", "0"), 3);
  EXPECT_EQ(ZELQ_SetEnvConfig(cfg, "Logging", "0"), 0);
  ZELQenv* env = nullptr;
  ASSERT_EQ(ZELQ_CreateEnvWithConfig(cfg, &env), 0);
  ZELQprob* prob = nullptr;
  ASSERT_EQ(ZELQ_CreateProb(env, &prob), 0);
  int v = -5;
  ASSERT_EQ(ZELQ_GetIntParam(prob, "Threads", &v), 0);
  EXPECT_EQ(v, 4);  // the problem starts from the environment's settings
  ASSERT_EQ(ZELQ_GetIntParam(prob, "Logging", &v), 0);
  EXPECT_EQ(v, 0);
  ASSERT_EQ(ZELQ_GetIntParam(prob, "LogToConsole", &v), 0);
  EXPECT_EQ(v, 0);
  // ResetParam goes back to the environment's settings, not to the bare defaults.
  ASSERT_EQ(ZELQ_SetIntParam(prob, "Threads", 2), 0);
  ASSERT_EQ(ZELQ_ResetParam(prob), 0);
  ASSERT_EQ(ZELQ_GetIntParam(prob, "Threads", &v), 0);
  EXPECT_EQ(v, 4);
  // A closed environment makes no new problems; existing ones stay usable.
  ASSERT_EQ(ZELQ_CloseEnv(&env), 0);
  ZELQprob* second = nullptr;
  EXPECT_EQ(ZELQ_CreateProb(env, &second), 3);
  EXPECT_EQ(second, nullptr);
  ASSERT_EQ(ZELQ_DeleteEnv(&env), 0);
  EXPECT_EQ(env, nullptr);
  EXPECT_EQ(ZELQ_DeleteEnv(&env), 0);  // already gone
  EXPECT_EQ(ZELQ_DeleteEnv(nullptr), 3);
  EXPECT_EQ(ZELQ_AddCol(prob, 1, 0, nullptr, nullptr, 'C', 0, 1, "a"), 0);
  EXPECT_EQ(ZELQ_DeleteProb(&prob), 0);
  EXPECT_EQ(ZELQ_DeleteEnvConfig(&cfg), 0);
  EXPECT_EQ(cfg, nullptr);
  EXPECT_EQ(ZELQ_CreateEnvConfig(nullptr), 3);
}

TEST(CoreEnv, PathAndConfigFile) {
  ZELQenv* env = nullptr;
  EXPECT_EQ(ZELQ_CreateEnvWithPath("/nonexistent/zelq/dir", &env), 2);
  EXPECT_EQ(env, nullptr);
  EXPECT_EQ(ZELQ_CreateEnvWithPath("/etc/hostname", &env), 2);  // a file, not a directory
  EXPECT_EQ(ZELQ_CreateEnvWithPath("", nullptr), 3);
  const std::string dir = TempDir("cfg");
  const std::string file = dir + "/zelq.cfg";
  {
    std::ofstream(file) << "# settings\n  Logging = 0   # quiet\n\nThreads=3\nBanner = 0\n";
  }
  ASSERT_EQ(ZELQ_CreateEnvWithPath(dir.c_str(), &env), 0);
  ZELQprob* prob = nullptr;
  ASSERT_EQ(ZELQ_CreateProb(env, &prob), 0);
  int v = 0;
  ASSERT_EQ(ZELQ_GetIntParam(prob, "Threads", &v), 0);
  EXPECT_EQ(v, 3);
  ASSERT_EQ(ZELQ_GetIntParam(prob, "Logging", &v), 0);
  EXPECT_EQ(v, 0);
  // Problems outlive the deleted environment handle.
  ASSERT_EQ(ZELQ_DeleteEnv(&env), 0);
  EXPECT_EQ(ZELQ_SetIntParam(prob, "Threads", 1), 0);
  ASSERT_EQ(ZELQ_DeleteProb(&prob), 0);
  for (const char* bad : {"Logging 0\n", "Logging = 5\n", "Colour = 1\n", "= 1\n"}) {
    std::ofstream(file) << bad;
    EXPECT_EQ(ZELQ_CreateEnvWithPath(dir.c_str(), &env), 3) << bad;
    EXPECT_EQ(env, nullptr);
  }
  std::remove(file.c_str());
  ASSERT_EQ(ZELQ_CreateEnvWithPath(dir.c_str(), &env), 0);  // no file: defaults
  ASSERT_EQ(ZELQ_DeleteEnv(&env), 0);
  ::rmdir(dir.c_str());
}

TEST(CoreEnv, CpuAffinityAndNuma) {
  ZELQenvconfig* cfg = nullptr;
  ASSERT_EQ(ZELQ_CreateEnvConfig(&cfg), 0);
  ASSERT_EQ(ZELQ_SetEnvConfig(cfg, "Logging", "0"), 0);
  ZELQenv* env = nullptr;
  ASSERT_EQ(ZELQ_CreateEnvWithConfig(cfg, &env), 0);
  ZELQ_DeleteEnvConfig(&cfg);
  int all = 0;
  ASSERT_EQ(ZELQ_GetCpuAffinity(env, 0, -1, &all), 0);
  EXPECT_GE(all, 1);
  int none = -1;
  ASSERT_EQ(ZELQ_GetCpuAffinity(env, 0, 0, &none), 0);
  EXPECT_EQ(none, 0);
  EXPECT_EQ(ZELQ_GetCpuAffinity(env, -1, 1, &none), 3);
  EXPECT_EQ(ZELQ_GetCpuAffinity(env, 0, -2, &none), 3);
  EXPECT_EQ(ZELQ_GetCpuAffinity(env, 0, 1 << 20, &none), 3);
  EXPECT_EQ(ZELQ_GetCpuAffinity(nullptr, 0, 1, &none), 3);
  EXPECT_EQ(ZELQ_GetCpuAffinity(env, 0, 1, nullptr), 3);
  EXPECT_EQ(ZELQ_SetCpuAffinity(env, 0, 1, 3), 3);   // bad mode
  EXPECT_EQ(ZELQ_SetCpuAffinity(env, 0, -1, 2), 3);  // would remove every CPU
  // Add the whole range back (mode 1): the set is unchanged.
  ASSERT_EQ(ZELQ_SetCpuAffinity(env, 0, 0, 1), 0);
  int after = 0;
  ASSERT_EQ(ZELQ_GetCpuAffinity(env, 0, -1, &after), 0);
  EXPECT_EQ(after, all);
  int nodes = 0;
  ASSERT_EQ(ZELQ_GetNumaNodeCount(env, &nodes), 0);
  EXPECT_GE(nodes, 1);
  EXPECT_EQ(ZELQ_BindNumaCpu(env, nodes, 0), 3);
  EXPECT_EQ(ZELQ_BindNumaCpu(env, -1, 0), 3);
  EXPECT_EQ(ZELQ_BindNumaCpu(env, 0, 1), 3);
  EXPECT_EQ(ZELQ_BindNumaMem(env, nodes, 0), 3);
  EXPECT_EQ(ZELQ_GetNumaNodeCount(env, nullptr), 3);
  ASSERT_EQ(ZELQ_DeleteEnv(&env), 0);
}

using CoreLife = CoreProblem;

TEST_F(CoreLife, CopyClearResetDelete) {
  ASSERT_EQ(ZELQ_SetDblParam(prob_, "TimeLimit", 12.5), 0);
  ZELQprob* copy = nullptr;
  ASSERT_EQ(ZELQ_CreateCopy(prob_, &copy), 0);
  EXPECT_EQ(Take(copy), Take(prob_));
  double t = 0;
  ASSERT_EQ(ZELQ_GetDblParam(copy, "TimeLimit", &t), 0);
  EXPECT_EQ(t, 12.5);
  // The copy is independent.
  const int l[] = {0};
  ASSERT_EQ(ZELQ_DelRows(copy, 1, l), 0);
  int rows = 0;
  ASSERT_EQ(ZELQ_GetIntAttr(prob_, "Rows", &rows), 0);
  EXPECT_EQ(rows, 2);
  EXPECT_EQ(ZELQ_CreateCopy(prob_, nullptr), 3);
  // Clear keeps parameters.
  ASSERT_EQ(ZELQ_ClearProb(copy), 0);
  Snapshot empty = Take(copy);
  EXPECT_EQ(empty.cols + empty.rows + empty.elems, 0);
  ASSERT_EQ(ZELQ_GetDblParam(copy, "TimeLimit", &t), 0);
  EXPECT_EQ(t, 12.5);
  EXPECT_EQ(ZELQ_Reset(copy, 0), 0);
  EXPECT_EQ(ZELQ_Reset(copy, 1), 0);
  EXPECT_EQ(ZELQ_Reset(copy, 2), 3);
  EXPECT_NE(LastError(copy).find("iClearAll = 2"), std::string::npos);
  EXPECT_EQ(ZELQ_Update(copy), 0);
  EXPECT_EQ(LastError(copy), "");  // a success clears the message
  ASSERT_EQ(ZELQ_DeleteProb(&copy), 0);
  EXPECT_EQ(copy, nullptr);
  EXPECT_EQ(ZELQ_DeleteProb(&copy), 0);
  EXPECT_EQ(ZELQ_DeleteProb(nullptr), 3);
  EXPECT_EQ(ZELQ_CreateProb(nullptr, &copy), 3);
}

TEST_F(CoreLife, ParametersByName) {
  int v = 0;
  double d = 0;
  ASSERT_EQ(ZELQ_SetIntParam(prob_, "logtoconsole", 1), 0);  // names ignore case
  ASSERT_EQ(ZELQ_GetIntParam(prob_, "LogToConsole", &v), 0);
  EXPECT_EQ(v, 1);
  EXPECT_EQ(ZELQ_SetIntParam(prob_, "Threads", 129), 3);
  EXPECT_NE(LastError(prob_).find("129"), std::string::npos);
  EXPECT_EQ(ZELQ_SetIntParam(prob_, "TimeLimit", 1), 3);  // a double parameter
  EXPECT_EQ(ZELQ_SetDblParam(prob_, "TimeLimit", -1), 3);
  EXPECT_EQ(ZELQ_SetDblParam(prob_, "TimeLimit", std::nan("")), 3);
  EXPECT_EQ(ZELQ_SetDblParam(prob_, "NoSuchParam", 1), 3);
  EXPECT_EQ(ZELQ_GetIntParam(prob_, "Cols", &v), 3);  // an attribute
  EXPECT_EQ(ZELQ_GetIntParam(prob_, nullptr, &v), 3);
  ASSERT_EQ(ZELQ_GetIntParamMin(prob_, "Threads", &v), 0);
  EXPECT_EQ(v, -1);
  ASSERT_EQ(ZELQ_GetIntParamMax(prob_, "Threads", &v), 0);
  EXPECT_EQ(v, 128);
  ASSERT_EQ(ZELQ_GetIntParamDef(prob_, "Logging", &v), 0);
  EXPECT_EQ(v, 1);
  ASSERT_EQ(ZELQ_GetDblParamDef(prob_, "FeasTol", &d), 0);
  EXPECT_EQ(d, 1e-6);
  ASSERT_EQ(ZELQ_GetDblParamMax(prob_, "TimeLimit", &d), 0);
  EXPECT_EQ(d, 1e30);
  ASSERT_EQ(ZELQ_GetDblParamMin(prob_, "FeasTol", &d), 0);
  EXPECT_EQ(d, 1e-9);
  int kind = 99;
  ASSERT_EQ(ZELQ_SearchParamAttr(prob_, "timelimit", &kind), 0);
  EXPECT_EQ(kind, ZELQ_KIND_DBLPARAM);
  ASSERT_EQ(ZELQ_SearchParamAttr(nullptr, "Cols", &kind), 0);
  EXPECT_EQ(kind, ZELQ_KIND_INTATTR);
  ASSERT_EQ(ZELQ_SearchParamAttr(nullptr, "ObjVal", &kind), 0);
  EXPECT_EQ(kind, ZELQ_KIND_DBLATTR);
  ASSERT_EQ(ZELQ_SearchParamAttr(prob_, "Nope", &kind), 0);
  EXPECT_EQ(kind, -1);
  EXPECT_EQ(ZELQ_SearchParamAttr(prob_, nullptr, &kind), 3);
}

TEST_F(CoreLife, AttributesAndStatistics) {
  // Add spread-out magnitudes: coefficient -0.25 and 40, bound -7, rhs 1e-3.
  const int idx[] = {0, 2};
  const double val[] = {-0.25, 40};
  ASSERT_EQ(ZELQ_AddRow(prob_, 2, idx, val, 'R', 1e-3, 1e30, "r"), 0);
  const int l[] = {2};
  const double lo[] = {-7};
  ASSERT_EQ(ZELQ_SetColLower(prob_, 1, l, lo), 0);
  struct IntCase {
    const char* name;
    int value;
  } ints[] = {{"Cols", 3},       {"Rows", 3},    {"Elems", 6},       {"Bins", 0},
              {"Ints", 1},       {"IsMIP", 1},   {"ObjSense", 1},    {"Status", 0},
              {"HasSol", 0},     {"HasLpSol", 0}, {"HasMipSol", 0},  {"HasBasis", 0},
              {"PoolSols", 0},   {"QConstrs", 0}, {"PSDCols", 0},    {"Soss", 0},
              {"Cones", 0},      {"MultiObjs", 0}, {"HasQObj", 0},   {"HasBranchFactor", 0},
              {"SimplexIter", 0}, {"NodeCnt", 0}, {"LazyCons", 0},   {"Indicators", 0}};
  for (const IntCase& c : ints) {
    int v = -99;
    ASSERT_EQ(ZELQ_GetIntAttr(prob_, c.name, &v), 0) << c.name;
    EXPECT_EQ(v, c.value) << c.name;
  }
  struct DblCase {
    const char* name;
    double value;
  } dbls[] = {{"MinElem", 0.25}, {"MaxElem", 40},  {"MinBound", 5},   {"MaxBound", 10},
              {"MinCost", 1},    {"MaxCost", 3},   {"MinRHS", 1e-3},  {"MaxRHS", 4},
              {"ObjVal", 1e30},  {"LpObjVal", 1e30}, {"ObjConst", 0}, {"SolvingTime", 0},
              {"MinQElem", 0}};
  for (const DblCase& c : dbls) {
    double v = -99;
    ASSERT_EQ(ZELQ_GetDblAttr(prob_, c.name, &v), 0) << c.name;
    EXPECT_EQ(v, c.value) << c.name;
  }
  const double f[] = {2};
  ASSERT_EQ(ZELQ_SetColBranchFactors(prob_, 1, l, f), 0);
  int v = 0;
  ASSERT_EQ(ZELQ_GetIntAttr(prob_, "HasBranchFactor", &v), 0);
  EXPECT_EQ(v, 1);
  double d = 0;
  EXPECT_EQ(ZELQ_GetIntAttr(prob_, "ObjVal", &v), 3);  // a double attribute
  EXPECT_NE(LastError(prob_).find("ObjVal"), std::string::npos);
  EXPECT_EQ(ZELQ_GetDblAttr(prob_, "TimeLimit", &d), 3);  // a parameter
  EXPECT_EQ(ZELQ_GetDblAttr(prob_, "NoSuchAttr", &d), 3);
  EXPECT_EQ(ZELQ_GetIntAttr(prob_, "Cols", nullptr), 3);
}

TEST_F(CoreLife, InformationByName) {
  std::vector<double> v(3);
  ASSERT_EQ(ZELQ_GetColInfo(prob_, "UB", 3, nullptr, v.data()), 0);
  EXPECT_EQ(v, (std::vector<double>{10, 5, 1e30}));
  ASSERT_EQ(ZELQ_GetColInfo(prob_, "obj", 3, nullptr, v.data()), 0);  // any case
  EXPECT_EQ(v, (std::vector<double>{1, 2, 3}));
  const int l[] = {1, 1};
  ASSERT_EQ(ZELQ_GetRowInfo(prob_, "lb", 2, l, v.data()), 0);
  EXPECT_EQ(v[0], 1);
  EXPECT_EQ(v[1], 1);
  struct Bad {
    bool row;
    const char* name;
    const char* part;
  } bad[] = {{false, "Value", "no solution"}, {true, "Slack", "no solution"},
             {true, "Dual", "no LP solution"}, {false, "RedCost", "no LP solution"},
             {true, "DualFarkas", "Farkas"},   {false, "PrimalRay", "ray"},
             {true, "Obj", "column information"}, {false, "Dual", "row information"},
             {false, "Bogus", "unknown information"}};
  for (const Bad& b : bad) {
    const int rc = b.row ? ZELQ_GetRowInfo(prob_, b.name, 2, nullptr, v.data())
                         : ZELQ_GetColInfo(prob_, b.name, 3, nullptr, v.data());
    EXPECT_EQ(rc, 3) << b.name;
    EXPECT_NE(LastError(prob_).find(b.part), std::string::npos) << LastError(prob_);
  }
  EXPECT_EQ(ZELQ_GetColInfo(prob_, "LB", 2, nullptr, v.data()), 3);  // null list needs all
  EXPECT_EQ(ZELQ_GetColInfo(prob_, "LB", 3, nullptr, nullptr), 3);
  EXPECT_EQ(ZELQ_GetColInfo(prob_, nullptr, 3, nullptr, v.data()), 3);
}

TEST_F(CoreLife, UnsupportedFamiliesSayNotSupported) {
  const int l[] = {0};
  int i = 0;
  double d = 0;
  const Snapshot before = Take(prob_);
  struct Case {
    const char* label;
    int rc;
    const char* part;
  } cases[] = {
      {"AddQConstr", ZELQ_AddQConstr(prob_, 0, nullptr, nullptr, 0, nullptr, nullptr, nullptr, 'L', 0, nullptr), "quadratic"},
      {"SetQuadObj", ZELQ_SetQuadObj(prob_, 0, nullptr, nullptr, nullptr), "quadratic"},
      {"AddPSDCol", ZELQ_AddPSDCol(prob_, 2, "X"), "semidefinite"},
      {"AddCones", ZELQ_AddCones(prob_, 0, nullptr, nullptr, nullptr, nullptr), "conic"},
      {"AddSOSs", ZELQ_AddSOSs(prob_, 0, nullptr, nullptr, nullptr, nullptr, nullptr), "SOS"},
      {"AddIndicators", ZELQ_AddIndicators(prob_, 0, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr), "indicator"},
      {"SetNLObj", ZELQ_SetNLObj(prob_, 0, 0, nullptr, nullptr), "nonlinear"},
      {"MultiObjSetObjSense", ZELQ_MultiObjSetObjSense(prob_, 0, 1), "multiple objectives"},
      {"ComputeIIS", ZELQ_ComputeIIS(prob_), "IIS"},
      {"GetColLowerIIS", ZELQ_GetColLowerIIS(prob_, 1, l, &i), "IIS"},
      {"FeasRelax", ZELQ_FeasRelax(prob_, nullptr, nullptr, nullptr, nullptr), "feasibility relaxation"},
      {"Tune", ZELQ_Tune(prob_), "tuning"},
      {"LoadTuneParam", ZELQ_LoadTuneParam(prob_, 0), "tuning"},
      {"LoadConeProb", ZELQ_LoadConeProb(prob_, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, nullptr, nullptr, nullptr, nullptr, 1, 0, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr), "conic"},
      {"SearchCallbackInfo", ZELQ_SearchCallbackInfo(prob_, "BestObj", &i, &i), "callbacks"},
      {"DelQConstrs 1", ZELQ_DelQConstrs(prob_, 1, l), "quadratic"},
      {"MultiObjGetDblAttr", ZELQ_MultiObjGetDblAttr(prob_, 0, "ObjVal", &d), "multiple"},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(c.rc, ZELQ_RETCODE_NOTSUPPORTED) << c.label;
  }
  EXPECT_NE(LastError(prob_).find("not supported by this build"), std::string::npos);
  EXPECT_EQ(Take(prob_), before);
  // Deleting nothing succeeds; a negative count is still bad input.
  EXPECT_EQ(ZELQ_DelQConstrs(prob_, 0, nullptr), 0);
  EXPECT_EQ(ZELQ_DelSOSs(prob_, 0, nullptr), 0);
  EXPECT_EQ(ZELQ_DelQuadObj(prob_), 0);
  EXPECT_EQ(ZELQ_DelCones(prob_, -1, nullptr), 3);
  // Bad handles are still bad handles; callback data without a callback is invalid.
  EXPECT_EQ(ZELQ_ComputeIIS(nullptr), 3);
  EXPECT_EQ(ZELQ_DelQuadObj(nullptr), 3);
  EXPECT_EQ(ZELQ_GetCallbackInfo(nullptr, "BestObj", &d), 3);
  int fake = 0;
  EXPECT_EQ(ZELQ_AddCallbackLazyConstr(&fake, 0, nullptr, nullptr, 'L', 0), 10);
}

}  // namespace
}  // namespace zelq_test
