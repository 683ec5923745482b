#include <gtest/gtest.h>

#include <cctype>
#include <climits>
#include <initializer_list>
#include <memory>
#include <set>
#include <string>

#include "frame/engine_index.h"
#include "model/param_table.h"
#include "model/zelq_model.h"
#include "zelq/zelqcpp_exception.h"

namespace Zelq {
namespace {

std::string Cased(const char* text, int (*convert)(int)) {
  std::string out(text);
  for (char& c : out) c = static_cast<char>(convert(static_cast<unsigned char>(c)));
  return out;
}

TEST(ParamTable, CountsOrderUniquenessAndQuotedRows) {
  int counts[4][2] = {};
  std::set<std::string> lower_names;
  int last_group = 0;
  for (const ParamRow& row : kParamRows) {
    ASSERT_TRUE(row.kind <= 3 && row.unlisted <= 1) << row.name;
    ++counts[row.kind][row.unlisted];
    // Public double, public int, unlisted double, unlisted int parameters,
    // then the same four groups of attributes.
    int group = static_cast<int>(row.kind / 2 * 4 + row.unlisted * 2 + row.kind % 2);
    EXPECT_LE(last_group, group) << row.name;
    last_group = group;
    EXPECT_TRUE(lower_names.insert(Cased(row.name, std::tolower)).second) << row.name;
  }
  const int expected[4][2] = {{16, 43}, {59, 457}, {26, 18}, {49, 15}};
  for (int k = 0; k < 4; ++k) {
    EXPECT_EQ(counts[k][0], expected[k][0]) << k;
    EXPECT_EQ(counts[k][1], expected[k][1]) << k;
  }
  const ParamRow quoted[] = {
      {"TimeLimit", 0, 0, "Time limit of the optimization"},
      {"MemLimit", 0, 0, "Memory limit (MB) for the optimization"},
      {"FeasTol", 0, 0, "The feasibility tolerance"},
      {"RelGap", 0, 0, "The relative gap for MIP"},
      {"InfBound", 0, 1, "Internal infinite bound value"},
      {"HeurNoLpTimeLimit", 0, 1, "Time limit for the no LP heuristic (-1.0 is default behaviour)"},
      {"Logging", 1, 0, "Whether to print solving logs"},
      {"LpMethod", 1, 0, "Specifies the LP method"},
      {"NonConvex", 1, 0,
       "Whether to solve non-convex problem (-1: auto, 0: no, 1: local optimal, 2: global optimal)"},
      {"Threads", 1, 0, "Number of threads to use"},
      {"MipStartMode", 1, 0,
       "Specifies MIP start mode (-1: default, 0: reject all, 1: accept feasible and full, "
       "2: accept feasible, 3: accept all)"},
      {"TuneMethod", 1, 0, "Tuning method (-1: auto, 0: fast, 1: aggressive)"},
      {"LazyConstraints", 1, 0, "Whether lazy constraints will be added (-1: auto, 0: no, 1: yes)."},
      {"SolvingTime", 2, 0, "The time spent for the optimization (in seconds)"},
      {"ObjVal", 2, 0, "The objective value"},
      {"BestGap", 2, 0, "Relative MIP gap"},
      {"MultiObjs", 3, 0, "Number of multi-objective(s) in the problem"},
      {"Status", 3, 0, "The solution status"},
      {"HasSol", 3, 0, "Whether solution is available"},
      {"PoolSols", 3, 0, "Number of solutions in solution pool"},
  };
  for (const ParamRow& want : quoted) {
    const ParamRow* row = kParamRows;
    while (row != kParamRows + kParamRowCount && std::string(row->name) != want.name) ++row;
    ASSERT_NE(row, kParamRows + kParamRowCount) << want.name;
    EXPECT_TRUE(row->kind == want.kind && row->unlisted == want.unlisted) << want.name;
    EXPECT_STREQ(row->description, want.description);
  }
}

int search_calls = 0;
const char* search_name = nullptr;

TEST(SearchParamAttr, PublicNamesLocallyOthersThroughTheEngineAsTyped) {
  EngineOverride count(&EngineIndex::SearchParamAttr, [](ZELQprob* p, const char* name, int* k) {
    ++search_calls;
    search_name = name;
    return p != nullptr ? 99 : DefaultEngine().SearchParamAttr(p, name, k);
  });
  std::string canonical = "kept";
  EXPECT_EQ(SearchParamAttr(nullptr, canonical), -1);
  EXPECT_EQ(SearchParamAttr("", canonical), -1);
  EXPECT_EQ(canonical, "kept");
  for (const ParamRow& row : kParamRows) {
    if (row.unlisted != 0) continue;
    for (auto convert : std::initializer_list<int (*)(int)>{std::toupper, std::tolower}) {
      EXPECT_EQ(SearchParamAttr(Cased(row.name, convert).c_str(), canonical), int(row.kind));
      EXPECT_EQ(canonical, row.name);
    }
  }
  EXPECT_EQ(search_calls, 0);

  // Prefixes and extensions of public names are not names.
  for (const char* text : {"TimeLim", "TimeLimitX", "Time Limit", "ispdlpiter"}) {
    EXPECT_EQ(SearchParamAttr(text, canonical), -1) << text;
    EXPECT_EQ(canonical, text);
  }
  const char* typed = "infbound";
  EXPECT_EQ(SearchParamAttr(typed, canonical), 0);
  EXPECT_EQ(canonical, "infbound");
  EXPECT_EQ(search_name, typed);
  EXPECT_EQ(SearchParamAttr("Sifting", canonical), 1);
  EXPECT_EQ(SearchParamAttr("PRIMALINFMAX", canonical), 2);
  EXPECT_EQ(SearchParamAttr("LpMethodUsed", canonical), 3);
  EXPECT_EQ(search_calls, 8);

  EngineOverride fail(&EngineIndex::SearchParamAttr, [](ZELQprob*, const char*, int*) { return 5; });
  try {
    SearchParamAttr("NoSuchName", canonical);
    ADD_FAILURE() << "no exception";
  } catch (const Exception& e) {
    EXPECT_EQ(e.GetCode(), 5);
    EXPECT_STREQ(e.what(), "Internal error or solver library failure");
  }
}

// A model in a quiet engine environment.
class ParamModel : public ::testing::Test {
 protected:
  void SetUp() override {
    ZELQenvconfig* config = nullptr;
    ASSERT_EQ(Engine().CreateEnvConfig(&config), 0);
    Engine().SetEnvConfig(config, "Banner", "0");
    Engine().SetEnvConfig(config, "Logging", "0");
    env_ = Shared<EnvBox>::Wrap(new EnvBox);
    ASSERT_EQ(Engine().CreateEnvWithConfig(config, &env_->env), 0);
    Engine().DeleteEnvConfig(&config);
    model_.reset(static_cast<ZelqModel*>(NewModel(env_, "params")));
    model_->SetIntParam("Logging", 0);
    ASSERT_EQ(model_->GetErrorCode(), 0);
  }
  void ExpectError(int code, const char* message) const {
    EXPECT_EQ(model_->GetErrorCode(), code);
    EXPECT_STREQ(model_->GetErrorMessage() ? model_->GetErrorMessage() : "", message);
  }
  Shared<EnvBox> env_;
  std::unique_ptr<ZelqModel> model_;
};

std::string engine_name;
int engine_calls = 0;
int cols_at_read = -1;
constexpr auto kCount = [](auto...) { return ++engine_calls, 0; };

TEST_F(ParamModel, RoundTripsInfoAndTheSpellingTheEngineSees) {
  EngineOverride capture(&EngineIndex::GetDblParam, [](ZELQprob* p, const char* name, double* v) {
    engine_name = name;
    return DefaultEngine().GetDblParam(p, name, v);
  });
  EXPECT_EQ(model_->GetDblParam("TIMELIMIT"), 1e30);
  EXPECT_EQ(engine_name, "TimeLimit");
  model_->SetDblParam("timelimit", 12.5);
  EXPECT_EQ(model_->GetDblParam("TimeLimit"), 12.5);
  model_->SetIntParam("threads", 4);
  EXPECT_EQ(model_->GetIntParam("THREADS"), 4);
  model_->SetDblParam("infbound", 1e20);  // unlisted: found by the engine's search
  EXPECT_EQ(model_->GetDblParam("infbound"), 1e20);
  EXPECT_EQ(engine_name, "infbound");
  int i[4] = {};
  model_->GetIntParamInfo("loglevel", &i[0], &i[1], &i[2], &i[3]);
  EXPECT_TRUE(i[0] == 2 && i[1] == 2 && i[2] == 0 && i[3] == 3);
  model_->SetDblParam("FeasTol", 1e-7);
  double x[4] = {};
  model_->GetDblParamInfo("feastol", &x[0], &x[1], &x[2], &x[3]);
  EXPECT_TRUE(x[0] == 1e-7 && x[1] == 1e-6 && x[2] == 1e-9 && x[3] == 1e-2);
  model_->GetIntParamInfo("Threads", nullptr, &i[1], nullptr, nullptr);  // only what is asked
  EXPECT_EQ(i[1], -1);
  ExpectError(0, "");
}

TEST_F(ParamModel, BadNamesRecordCodeThreeWithoutEngineCalls) {
  EngineOverride a(&EngineIndex::GetIntParam, kCount), b(&EngineIndex::GetIntAttr, kCount);
  EngineOverride c(&EngineIndex::GetDblParam, kCount), d(&EngineIndex::GetDblAttr, kCount);
  EngineOverride e(&EngineIndex::SetIntParam, kCount);
  engine_calls = 0;
  EXPECT_EQ(model_->GetIntParam("TimeLimit"), -2147483648LL);
  ExpectError(3, "(INVALID) Not ZELQ int parameter");
  EXPECT_EQ(model_->GetIntParam(nullptr), INT_MIN);
  ExpectError(3, "(INVALID) Unknown ZELQ parameter");
  EXPECT_EQ(model_->GetDblParam("ObjVal"), 1e30);  // an attribute is not a parameter
  ExpectError(3, "(INVALID) Not ZELQ double parameter");
  model_->SetIntParam("TimeLimt", 1);
  ExpectError(3, "(INVALID) Unknown ZELQ parameter");
  model_->SetDblParam("LogLevel", 1.0);
  ExpectError(3, "(INVALID) Not ZELQ double parameter");
  EXPECT_EQ(model_->GetIntAttr(""), INT_MIN);
  ExpectError(3, "(INVALID) Unknown ZELQ attribute");
  EXPECT_EQ(model_->GetIntAttr("Threads"), INT_MIN);
  ExpectError(3, "(INVALID) Not ZELQ int attribute");
  EXPECT_EQ(model_->GetDblAttr("Status"), 1e30);
  ExpectError(3, "(INVALID) Not ZELQ double attribute");
  int i[4] = {7, 7, 7, 7};
  model_->GetIntParamInfo("FeasTol", &i[0], &i[1], &i[2], &i[3]);
  ExpectError(3, "(INVALID) Not ZELQ int parameter");
  double x[4] = {7, 7, 7, 7};
  model_->GetDblParamInfo(nullptr, &x[0], &x[1], &x[2], &x[3]);
  ExpectError(3, "(INVALID) Unknown ZELQ parameter");
  EXPECT_EQ(i[0] + i[3] + x[0] + x[3], 28.0);
  EXPECT_EQ(engine_calls, 0);
  EXPECT_EQ(model_->GetIntParam("Threads"), 0);  // the record is cleared at entry
  ExpectError(0, "");
}

TEST_F(ParamModel, EngineFailuresRecordTheEngineCode) {
  {
    EngineOverride f(&EngineIndex::GetIntParam, [](ZELQprob*, const char*, int*) { return 5; });
    // A failing read's output is not returned.
    EngineOverride g(&EngineIndex::GetDblParam, [](auto, auto, double* v) { return *v = 3, 12; });
    EXPECT_EQ(model_->GetIntParam("Threads"), INT_MIN);
    ExpectError(5, "(INTERNAL) Failed to get int param value");
    EXPECT_EQ(model_->GetDblParam("TimeLimit"), 1e30);
    ExpectError(12, "(UNKNOWN) Failed to get double param value");
  }
  {
    EngineOverride f(&EngineIndex::GetIntAttr, [](ZELQprob*, const char*, int*) { return 5; });
    EngineOverride g(&EngineIndex::GetDblAttr, [](ZELQprob*, const char*, double*) { return 1; });
    EXPECT_EQ(model_->GetIntAttr("Cols"), INT_MIN);
    ExpectError(5, "(INTERNAL) Failed to get int attribute");
    EXPECT_EQ(model_->GetDblAttr("ObjVal"), 1e30);
    ExpectError(1, "(MEMORY) Fail to get double attribute");
  }
  // The real engine rejects out-of-range values and keeps the old ones.
  model_->SetIntParam("LogLevel", 4);
  ExpectError(3, "(INVALID) Failed to set int param");
  model_->SetDblParam("FeasTol", 1.0);
  ExpectError(3, "(INVALID) Failed to set double param");
  EXPECT_TRUE(model_->GetIntParam("LogLevel") == 2 && model_->GetDblParam("FeasTol") == 1e-6);

  // Info getters stop at the first failure and write nothing.
  engine_calls = 0;
  EngineOverride def(&EngineIndex::GetIntParamDef, [](ZELQprob*, const char*, int*) { return 8; });
  EngineOverride min(&EngineIndex::GetIntParamMin, kCount);
  EngineOverride max(&EngineIndex::GetDblParamMax, [](ZELQprob*, const char*, double*) { return 2; });
  int i[4] = {7, 7, 7, 7};
  model_->GetIntParamInfo("Threads", &i[0], &i[1], &i[2], &i[3]);
  ExpectError(8, "(NONCONVEX) Failed to get int param info");
  EXPECT_EQ(engine_calls, 0);
  double x[4] = {7, 7, 7, 7};
  model_->GetDblParamInfo("TimeLimit", &x[0], &x[1], &x[2], &x[3]);
  ExpectError(2, "(FILE) Failed to get double param info");
  EXPECT_EQ(i[0] + i[1] + x[0] + x[2], 28.0);
}

TEST_F(ParamModel, AttributeReadsCompactFirstAndStopWhenCompactionFails) {
  for (int i = 0; i < 3; ++i) {
    ASSERT_EQ(Engine().AddCol(model_->Prob(), 0, 0, nullptr, nullptr, 'C', 0, 1, nullptr), 0);
    model_->Data().Append(kVarKind);
  }
  ElementTable& table = model_->Data().Table(kVarKind);
  table.records[1]->index = RemovedIndex(1);
  model_->Data().update_flag = 1;
  model_->SetDblParam("TimeLimit", 5);
  EXPECT_EQ(model_->GetDblAttr("Status"), 1e30);  // wrong kind: no compaction either
  EXPECT_EQ(model_->GetParamAttrType("Cols"), 3);
  {
    EngineOverride del(&EngineIndex::DelCols, [](ZELQprob*, int, const int*) { return 5; });
    EngineOverride read(&EngineIndex::GetIntAttr, [](ZELQprob*, const char*, int*) { return 9; });
    EXPECT_EQ(model_->GetIntAttr("Cols"), INT_MIN);
    ExpectError(5, "(INTERNAL) Fail to del cols");
  }
  EXPECT_EQ(table.records.size(), 3u);
  EXPECT_EQ(table.records[1]->index, RemovedIndex(1));

  EngineOverride capture(&EngineIndex::GetDblAttr, [](ZELQprob* p, const char* name, double* v) {
    DefaultEngine().GetIntAttr(p, "Cols", &cols_at_read);
    return DefaultEngine().GetDblAttr(p, name, v);
  });
  model_->GetDblAttr("ObjVal");
  ExpectError(0, "");
  EXPECT_EQ(cols_at_read, 2);
  EXPECT_TRUE(model_->Data().update_flag == 0 && table.records.size() == 2u);
  EXPECT_EQ(model_->GetIntAttr("cols"), 2);
}

TEST_F(ParamModel, ParamAttrTypeClearsAndReportsKinds) {
  model_->GetIntParam("TimeLimit");
  EXPECT_EQ(model_->GetParamAttrType("timelimit"), 0);
  ExpectError(0, "");
  EXPECT_EQ(model_->GetParamAttrType("LPMETHOD"), 1);
  EXPECT_EQ(model_->GetParamAttrType("hassol"), 3);
  EXPECT_EQ(model_->GetParamAttrType("InfBound"), 0);
  EXPECT_EQ(model_->GetParamAttrType("Nope"), -1);
  EXPECT_EQ(model_->GetParamAttrType(nullptr), -1);
  EngineOverride fail(&EngineIndex::SearchParamAttr, [](ZELQprob*, const char*, int*) { return 3; });
  EXPECT_THROW(model_->GetParamAttrType("Nope"), Exception);
  EXPECT_THROW(model_->GetIntAttr("Nope"), Exception);
}

}  // namespace
}  // namespace Zelq
