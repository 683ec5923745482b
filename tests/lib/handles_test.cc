// Variable and constraint handles, element arrays and columns, on a real
// engine problem built column by column through the engine index.
#include "scalar/handles.h"

#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <memory>
#include <string>

#include "frame/engine_index.h"
#include "model/zelq_model.h"
#include "zelq/zelqcpp_exports.h"

namespace Zelq {
namespace {

constexpr double kInf = 1e30;
constexpr auto kFail3 = [](auto...) { return 3; };
constexpr auto kFail5 = [](auto...) { return 5; };
const std::string kBadVar = "3 (INVALID) Invalid variable";
const std::string kBadConstr = "3 (INVALID) Invalid constraint";

// Code and message of a handle's error record, as one text.
template <class T>
std::string Rec(const T& handle) {
  const char* message = handle->GetErrorMessage();
  return std::to_string(handle->GetErrorCode()) + " " + (message ? message : "<null>");
}

// min x + 2y  s.t.  r0: x + y >= 2,  r1: x - y <= 1,  0 <= x, y <= 10, built
// through the engine with matching element records.
// Optimum x = 1.5, y = 0.5; duals 1.5 (r0) and -0.5 (r1).
class TextbookLp {
 public:
  TextbookLp() : env_(Shared<EnvBox>::Wrap(new EnvBox)) {
    EXPECT_EQ(Engine().CreateEnvWithPath(nullptr, &env_->env), 0);
    model_.reset(NewModel(env_, "m"));
    EXPECT_EQ(Engine().SetIntParam(Prob(), "Logging", 0), 0);
    x.reset(AddVar(0, 10, 1, "x"));
    y.reset(AddVar(0, 10, 2));
    const int idx[] = {0, 1};
    const double sum[] = {1, 1}, diff[] = {1, -1};
    r0.reset(AddRow(2, idx, sum, 'G', 2, "r0"));
    r1.reset(AddRow(2, idx, diff, 'L', 1));
  }

  ZelqModel& Model() { return *static_cast<ZelqModel*>(model_.get()); }
  ModelData& Data() { return Model().Data(); }
  ZELQprob* Prob() { return Model().Prob(); }
  void Destroy() { model_.reset(); }

  IVar* AddVar(double lb, double ub, double obj, const char* name = nullptr) {
    EXPECT_EQ(Engine().AddCol(Prob(), obj, 0, nullptr, nullptr, 'C', lb, ub, name), 0);
    return NewVarHandle(Var(Data().Append(kVarKind)));
  }
  IConstraint* AddRow(int n, const int* idx, const double* val, char sense, double rhs,
                      const char* name = nullptr) {
    EXPECT_EQ(Engine().AddRow(Prob(), n, idx, val, sense, rhs, kInf, name), 0);
    return NewConstrHandle(Constraint(Data().Append(kConstrKind)));
  }

  std::unique_ptr<IVar> x, y;
  std::unique_ptr<IConstraint> r0, r1;

 private:
  Shared<EnvBox> env_;
  std::unique_ptr<IModel> model_;
};

TEST(Handles, InvalidVariableResults) {
  TextbookLp lp;
  std::unique_ptr<IVarArray> vars(CreateVarArray());
  std::unique_ptr<IVar> out(vars->GetVar(0));  // out of range: invalid record
  EXPECT_EQ(out->GetIdx(), -2);
  EXPECT_EQ(out->Get("LB"), kInf);
  EXPECT_EQ(Rec(out), kBadVar);
  EXPECT_EQ(out->GetType(), 0);
  EXPECT_EQ(out->GetLowerIIS(), 0);
  EXPECT_STREQ(out->GetName(), "");
  std::unique_ptr<IVar> none(NewVarHandle(Var()));  // no record at all
  EXPECT_EQ(none->GetIdx(), -2);
  EXPECT_EQ(none->GetBasis(), INT_MIN);

  // Removing x (index 0): -3 - 0, update flag set, every call refused.
  EXPECT_EQ(lp.Data().update_flag, 0);
  lp.x->Remove();
  EXPECT_EQ(lp.Data().update_flag, 1);
  lp.x->Remove();  // a second removal changes nothing
  EXPECT_EQ(lp.x->GetIdx(), -3);
  lp.y->Remove();
  EXPECT_EQ(lp.y->GetIdx(), -4);
  EXPECT_EQ(lp.x->GetBasis(), INT_MIN);
  EXPECT_EQ(Rec(lp.x), kBadVar);
  lp.x->Set("LB", 5);
  EXPECT_EQ(Rec(lp.x), kBadVar);
  lp.x->SetName("z");
  lp.x->SetType('I');
  EXPECT_EQ(Rec(lp.x), kBadVar);
  EXPECT_STREQ(lp.x->GetName(), "");  // nothing cached, nothing fetched

  // A handle that outlives its model is invalid, not dangling.
  lp.Destroy();
  EXPECT_EQ(lp.y->GetIdx(), -2);
  EXPECT_EQ(lp.y->Get("Value"), kInf);
  EXPECT_EQ(Rec(lp.y), kBadVar);
  lp.y->Remove();
  EXPECT_EQ(lp.y->GetIdx(), -2);
}

TEST(Handles, InvalidConstraintResults) {
  TextbookLp lp;
  std::unique_ptr<IConstrArray> constrs(CreateConstrArray());
  std::unique_ptr<IConstraint> out(constrs->GetConstr(-1));
  EXPECT_EQ(out->GetIdx(), -2);
  EXPECT_EQ(out->Get("Dual"), kInf);
  EXPECT_EQ(Rec(out), kBadConstr);

  lp.r1->Remove();
  lp.r1->Remove();
  EXPECT_EQ(lp.r1->GetIdx(), -4);
  EXPECT_EQ(lp.Data().update_flag, 1);
  EXPECT_EQ(lp.r1->GetBasis(), INT_MIN);
  EXPECT_EQ(lp.r1->GetLowerIIS(), 0);
  EXPECT_EQ(lp.r1->GetUpperIIS(), 0);
  double low = 7, high = 8;
  lp.r1->GetShadowPriceRange(0, &low, &high);
  EXPECT_TRUE(low == 7 && high == 8);  // outputs untouched on failure
  lp.r1->Set("UB", 3);
  lp.r1->SetName("q");
  EXPECT_EQ(Rec(lp.r1), kBadConstr);

  // Compaction deletes r1 and x; the survivors are renumbered and still reach
  // their own engine elements.
  lp.x->Remove();
  ASSERT_TRUE(lp.Model().Compact());
  EXPECT_EQ(lp.y->GetIdx(), 0);
  EXPECT_EQ(lp.y->Get("Obj"), 2);
  EXPECT_EQ(lp.r0->GetIdx(), 0);
  EXPECT_STREQ(lp.r0->GetName(), "r0");
  EXPECT_EQ(lp.r1->GetIdx(), -4);
}

TEST(Handles, InformationRoundTrips) {
  TextbookLp lp;
  IVar& y = *lp.y;
  const std::pair<const char*, double> infos[] = {
      {"LB", -1.5}, {"UB", 4}, {"Obj", -3}, {"BranchFactor", 2}};
  for (auto [info, value] : infos) y.Set(info, value);
  EXPECT_EQ(y.GetErrorCode(), 0);
  for (auto [info, value] : infos) EXPECT_EQ(y.Get(info), value) << info;
  EXPECT_EQ(lp.x->Get("LB"), 0);  // only the handle's own column changed
  for (const char* bad : {"Value", "lb", "", static_cast<const char*>(nullptr)}) {
    y.Set(bad, 9);
    EXPECT_EQ(Rec(&y), "3 (INVALID) Unknown variable information");
  }
  EXPECT_EQ(y.Get("LB"), -1.5);
  EXPECT_EQ(y.GetErrorCode(), 0);  // a success clears the earlier failure

  EXPECT_EQ(y.GetType(), 'C');
  y.SetType('I');
  EXPECT_EQ(y.GetType(), 'I');
  EXPECT_EQ(lp.x->GetType(), 'C');
  y.SetType('Q');  // the engine refuses the type and keeps the old one
  EXPECT_EQ(Rec(&y), "3 (INVALID) Fail to set variable type");
  EXPECT_EQ(y.GetType(), 'I');
  EXPECT_EQ(y.Get("Nope"), kInf);  // unknown to the engine
  EXPECT_STREQ(y.GetErrorMessage(), "(INVALID) Fail to get variable information");

  // VarInfo, as the expression uses it, records on the value it is given.
  Var copy = *VarOf(&y);
  EXPECT_EQ(VarInfo(copy, "UB"), 4);
  EXPECT_EQ(copy.error.Code(), 0);
  EXPECT_EQ(y.GetErrorCode(), 3);

  IConstraint& r0 = *lp.r0;
  EXPECT_EQ(r0.Get("LB"), 2);
  EXPECT_EQ(r0.Get("UB"), kInf);
  r0.Set("UB", 6);
  r0.Set("LB", -1);
  EXPECT_EQ(r0.GetErrorCode(), 0);
  EXPECT_EQ(r0.Get("LB"), -1);
  EXPECT_EQ(r0.Get("UB"), 6);
  EXPECT_EQ(lp.r1->Get("UB"), 1);
  r0.Set("Obj", 1);
  EXPECT_STREQ(r0.GetErrorMessage(), "(INVALID) Unknown constraint information");
  r0.Set(nullptr, 1);
  EXPECT_EQ(r0.GetErrorCode(), 3);
  EXPECT_EQ(r0.Get("Obj"), kInf);  // a column information
  EXPECT_STREQ(r0.GetErrorMessage(), "(INVALID) Fail to get a constraint information");
  EXPECT_EQ(r0.Get("LB"), -1);

  // The IIS family is not served by this engine build: its code is kept.
  EXPECT_EQ(r0.GetLowerIIS(), 0);
  EXPECT_EQ(Rec(&r0), "10 (UNKNOWN) Fail to get IIS status for constraint");
  EXPECT_EQ(lp.x->GetUpperIIS(), 0);
  EXPECT_STREQ(lp.x->GetErrorMessage(), "(UNKNOWN) Fail to get IIS status for variable");
}

// What a per-element engine call received.
ZELQprob* g_prob = nullptr;
int g_num = 0;
const int* g_list = nullptr;

TEST(Handles, EngineFailuresAreRecordedAndChangeNothing) {
  TextbookLp lp;
  IVar& y = *lp.y;
  {
    EngineOverride fail(&EngineIndex::SetColLower, [](ZELQprob* p, int n, const int* list, auto) {
      return g_prob = p, g_num = n, g_list = list, 5;
    });
    y.Set("LB", 3);
  }
  // One element: count 1 and the record's own index field.
  EXPECT_EQ(g_prob, lp.Prob());
  EXPECT_EQ(g_num, 1);
  EXPECT_EQ(g_list, &VarOf(&y)->record->index);
  const struct {
    decltype(&::ZELQ_SetColLower) EngineIndex::*entry;
    bool row;
    const char* info;
    const char* message;
  } setters[] = {
      {&EngineIndex::SetColLower, false, "LB", "Fail to set variable LB"},
      {&EngineIndex::SetColUpper, false, "UB", "Fail to set variable UB"},
      {&EngineIndex::SetColObj, false, "Obj", "Fail to set variable objective"},
      {&EngineIndex::SetColBranchFactors, false, "BranchFactor",
       "Fail to set branch factor of variable"},
      {&EngineIndex::SetRowLower, true, "LB", "Fail to set constraint LB"},
      {&EngineIndex::SetRowUpper, true, "UB", "Fail to set constraint UB"},
  };
  for (const auto& setter : setters) {
    auto check = [&](auto* handle) {
      const double before = handle->Get(setter.info);
      {
        EngineOverride fail(setter.entry, kFail5);
        handle->Set(setter.info, 3);
        EXPECT_EQ(Rec(handle), std::string("5 (INTERNAL) ") + setter.message);
      }
      EXPECT_EQ(handle->Get(setter.info), before) << setter.message;
    };
    setter.row ? check(lp.r1.get()) : check(&y);
  }
  {
    EngineOverride fail(&EngineIndex::GetColBasis,
                        [](auto, auto, auto, int* out) { return *out = 1, 7; });
    EXPECT_EQ(y.GetBasis(), INT_MIN);
    EXPECT_EQ(Rec(&y), "7 (SERVER) Fail to get variable basis");
  }
  {
    EngineOverride fail(&EngineIndex::GetColInfo,
                        [](auto, auto, auto, auto, double* out) { return *out = 4, 12; });
    EXPECT_EQ(y.Get("LB"), kInf);
    EXPECT_EQ(Rec(&y), "12 (UNKNOWN) Fail to get variable information");
  }
  {
    EngineOverride fail(&EngineIndex::GetColType,
                        [](auto, auto, auto, char* out) { return *out = 'B', 3; });
    EXPECT_EQ(y.GetType(), 0);
    EXPECT_EQ(Rec(&y), "3 (INVALID) Fail to get variable type");
  }
  IConstraint& r1 = *lp.r1;
  {
    EngineOverride fail(&EngineIndex::GetRowBasis, [](auto...) { return 6; });
    EXPECT_EQ(r1.GetBasis(), INT_MIN);
    EXPECT_EQ(Rec(&r1), "6 (THREAD) Fail to get a constraint basis");
  }
  EngineOverride range(&EngineIndex::ComputeShadowPriceRange,
                       [](auto, auto, auto, double* low, auto) { return *low = 1, 5; });
  double low = -9, high = 9;
  r1.GetShadowPriceRange(1, &low, &high);
  EXPECT_EQ(Rec(&r1), "5 (INTERNAL) Fail to compute shadow price range for constraint 1");
  EXPECT_EQ(low, -9);
}

TEST(Handles, NamesAreFetchedOnceAndCached) {
  TextbookLp lp;
  EXPECT_STREQ(lp.x->GetName(), "x");
  EXPECT_STREQ(lp.y->GetName(), "C1");  // the engine's name for an unnamed column
  EXPECT_STREQ(lp.r1->GetName(), "R1");
  {
    EngineOverride fail(&EngineIndex::GetColName, kFail5);  // cached now: no engine call
    EXPECT_STREQ(lp.x->GetName(), "x");
    EXPECT_EQ(lp.x->GetErrorCode(), 0);
  }
  lp.y->SetName("long_name_of_y");
  EXPECT_EQ(lp.y->GetErrorCode(), 0);
  EXPECT_STREQ(lp.y->GetName(), "long_name_of_y");
  int idx = -1;
  EXPECT_EQ(Engine().GetColIdx(lp.Prob(), "long_name_of_y", &idx), 0);
  EXPECT_EQ(idx, 1);
  lp.y->SetName(nullptr);  // drops the name: the engine's default comes back
  EXPECT_STREQ(lp.y->GetName(), "C1");
  lp.r0->SetName("cap");
  EXPECT_STREQ(lp.r0->GetName(), "cap");
  EXPECT_EQ(Engine().GetRowIdx(lp.Prob(), "cap", &idx), 0);
  EXPECT_EQ(idx, 0);
  {
    EngineOverride col(&EngineIndex::SetColNames, kFail3), row(&EngineIndex::SetRowNames, kFail3);
    lp.x->SetName("w");
    EXPECT_EQ(Rec(lp.x), "3 (INVALID) Fail to set variable name");
    EXPECT_STREQ(lp.x->GetName(), "x");  // cache unchanged
    lp.r0->SetName("w");
    EXPECT_EQ(Rec(lp.r0), "3 (INVALID) Fail to set constraint name");
    EXPECT_STREQ(lp.r0->GetName(), "cap");
  }

  // Fetch failures: the size query, then the text.
  std::unique_ptr<IVar> fresh(lp.AddVar(0, 1, 0, "fresh"));
  std::unique_ptr<IConstraint> row(lp.AddRow(0, nullptr, nullptr, 'L', 1, "row"));
  {
    EngineOverride fail(&EngineIndex::GetColName, kFail5);
    EXPECT_STREQ(fresh->GetName(), "");
    EXPECT_EQ(Rec(fresh), "5 (INTERNAL) Fail to get required variable name size");
    Var value = *VarOf(fresh.get());
    EXPECT_EQ(VarName(value), nullptr);
  }
  {
    EngineOverride fail(&EngineIndex::GetRowName, [](auto, auto, char* buff, auto, int* size) {
      return *size = 4, buff == nullptr ? 0 : 3;
    });
    EXPECT_STREQ(row->GetName(), "");
    EXPECT_EQ(Rec(row), "3 (INVALID) Fail to get constraint name");
  }
  EXPECT_STREQ(fresh->GetName(), "fresh");
  EXPECT_EQ(fresh->GetErrorCode(), 0);
  EXPECT_STREQ(row->GetName(), "row");
  lp.x->Remove();
  EXPECT_STREQ(lp.x->GetName(), "x");  // a removed element keeps its cached name
}

TEST(Handles, ArraysShareRecords) {
  TextbookLp lp;
  std::unique_ptr<IVarArray> vars(CreateVarArray());
  vars->PushBack(lp.x.get());
  vars->PushBack(lp.x.get());
  vars->PushBack(static_cast<const IVar*>(nullptr));
  ASSERT_EQ(vars->Size(), 2);
  const std::vector<ElementRef>& records = *RecordsOf(vars.get());
  EXPECT_EQ(records[0].Get(), records[1].Get());
  EXPECT_EQ(records[0].Get(), VarOf(lp.x.get())->record.Get());

  vars->PushBack(lp.y.get());
  vars->PushBack(vars.get());  // appending to itself doubles it once
  ASSERT_EQ(vars->Size(), 6);
  EXPECT_EQ(std::unique_ptr<IVar>(vars->GetVar(5))->GetIdx(), 1);
  std::unique_ptr<IVarArray> more(CreateVarArray());
  more->Reserve(-5);
  more->Append(vars.get());
  more->Append(more.get());
  EXPECT_EQ(more->Size(), 12);
  EXPECT_EQ(vars->Size(), 6);

  // A removal through one handle is seen through every entry on the record.
  std::unique_ptr<IVar> first(vars->GetVar(0)), second(more->GetVar(1));
  first->Remove();
  EXPECT_EQ(second->GetIdx(), -3);
  EXPECT_EQ(lp.x->GetIdx(), -3);
  std::unique_ptr<IVar> beyond(vars->GetVar(6));
  EXPECT_EQ(beyond->GetIdx(), -2);
  EXPECT_EQ(beyond->Get("LB"), kInf);

  // Records stay alive with the array after the handles are gone.
  lp.y.reset();
  EXPECT_EQ(std::unique_ptr<IVar>(vars->GetVar(2))->Get("Obj"), 2);

  std::unique_ptr<IConstrArray> constrs(CreateConstrArray());
  constrs->Reserve(2);
  constrs->PushBack(lp.r1.get());
  constrs->PushBack(lp.r0.get());
  constrs->PushBack(nullptr);
  constrs->Append(constrs.get());
  constrs->Append(nullptr);
  ASSERT_EQ(constrs->Size(), 4);
  std::unique_ptr<IConstraint> c3(constrs->GetConstr(3));
  EXPECT_EQ(c3->GetIdx(), 0);
  EXPECT_EQ(c3->Get("LB"), 2);
  EXPECT_EQ(std::unique_ptr<IConstraint>(constrs->GetConstr(4))->GetIdx(), -2);
  EXPECT_EQ(RecordsOf(static_cast<const IConstrArray*>(nullptr)), nullptr);
}

TEST(Handles, ColumnTerms) {
  TextbookLp lp;
  std::unique_ptr<IColumn> col(CreateColumn());
  std::unique_ptr<IConstrArray> rows(CreateConstrArray());
  rows->PushBack(lp.r0.get());
  rows->PushBack(lp.r1.get());
  const double coeffs[] = {0.0, 3.0};
  EXPECT_EQ(col->AddTerms(rows.get(), nullptr, 2), -1);
  EXPECT_EQ(col->AddTerms(rows.get(), coeffs, 1), -1);  // one short
  EXPECT_EQ(col->AddTerms(rows.get(), coeffs, -1), -1);
  EXPECT_EQ(col->Size(), 0);
  EXPECT_EQ(col->AddTerms(rows.get(), coeffs, 2), 2);
  EXPECT_EQ(col->AddTerms(nullptr, coeffs, 0), 0);
  col->AddTerm(lp.r0.get(), 5);
  col->AddTerm(nullptr, 5);
  ASSERT_EQ(col->Size(), 3);  // (r0, 0), (r1, 3), (r0, 5)
  EXPECT_EQ(col->GetIdx(1), 1);
  EXPECT_EQ(col->GetCoeff(2), 5);
  EXPECT_EQ(col->GetIdx(3), -2);
  EXPECT_EQ(col->GetIdx(-1), -2);
  EXPECT_EQ(col->GetCoeff(3), kInf);

  // Multipliers: 0 adds nothing, -1 negates as 0.0 - c (so 0 stays +0.0).
  std::unique_ptr<IColumn> sum(CreateColumn());
  sum->AddColumn(col.get(), 0.0);
  sum->AddColumn(nullptr, 1.0);
  EXPECT_EQ(sum->Size(), 0);
  sum->AddColumn(col.get(), -1.0);
  ASSERT_EQ(sum->Size(), 3);
  EXPECT_FALSE(std::signbit(sum->GetCoeff(0)));
  EXPECT_EQ(sum->GetCoeff(1), -3);
  sum->AddColumn(col.get(), 2.5);
  EXPECT_EQ(sum->GetCoeff(4), 7.5);
  sum->AddColumn(sum.get(), 1.0);  // its own initial six terms, once
  ASSERT_EQ(sum->Size(), 12);
  EXPECT_EQ(sum->GetCoeff(10), 7.5);

  // Removal by position moves the last term in.
  col->Remove(0);
  ASSERT_EQ(col->Size(), 2);
  EXPECT_EQ(col->GetIdx(0), 0);
  EXPECT_EQ(col->GetCoeff(0), 5);
  EXPECT_EQ(col->GetCoeff(1), 3);
  col->Remove(2);
  col->Remove(-1);
  EXPECT_EQ(col->Size(), 2);
  col->Remove(1);
  EXPECT_EQ(col->Size(), 1);

  // Removal by constraint drops every term of it, including a moved-in one.
  std::unique_ptr<IColumn> copy(sum->Clone());
  copy->Remove(lp.r0.get());
  ASSERT_EQ(copy->Size(), 4);
  for (int i = 0; i < copy->Size(); ++i) EXPECT_EQ(copy->GetIdx(i), 1);
  EXPECT_EQ(sum->Size(), 12);  // the clone is independent
  copy->Remove(static_cast<const IConstraint*>(nullptr));
  lp.r1->Remove();
  copy->Remove(lp.r1.get());  // a removed constraint matches nothing
  EXPECT_EQ(copy->Size(), 4);
  EXPECT_EQ(copy->GetIdx(0), -4);  // terms see the removal
  copy->Reserve(-1);
  copy->Clear();
  EXPECT_EQ(copy->Size(), 0);

  // Column arrays hold copies, in and out.
  std::unique_ptr<IColumnArray> cols(CreateColumnArray());
  col->Clear();
  col->AddTerm(lp.r0.get(), 2);
  cols->PushBack(col.get());
  cols->PushBack(nullptr);
  col->AddTerm(lp.r0.get(), 4);
  ASSERT_EQ(cols->Size(), 1);
  std::unique_ptr<IColumn> got(cols->GetColumn(0)), out(cols->GetColumn(1));
  got->Clear();
  EXPECT_EQ((*ColumnsOf(cols.get()))[0].coeffs.size(), 1u);
  EXPECT_EQ(out->Size(), 0);
  cols->Clear();
  EXPECT_EQ(cols->Size(), 0);
}

TEST(Handles, SolvedLpThroughHandles) {
  TextbookLp lp;
  ASSERT_EQ(Engine().Solve(lp.Prob()), 0);
  EXPECT_NEAR(lp.x->Get("Value"), 1.5, 1e-9);
  EXPECT_NEAR(lp.y->Get("Value"), 0.5, 1e-9);
  EXPECT_NEAR(lp.x->Get("RedCost"), 0, 1e-9);
  EXPECT_NEAR(lp.r0->Get("Dual"), 1.5, 1e-9);
  EXPECT_NEAR(lp.r1->Get("Dual"), -0.5, 1e-9);
  EXPECT_NEAR(lp.r0->Get("Slack"), 2, 1e-9);
  EXPECT_EQ(lp.x->GetBasis(), ZELQ_BASIS_BASIC);
  EXPECT_EQ(lp.y->GetBasis(), ZELQ_BASIS_BASIC);
  EXPECT_NE(lp.r0->GetBasis(), ZELQ_BASIS_BASIC);
  EXPECT_EQ(lp.r0->GetErrorCode(), 0);

  // r0's bound can move over [1, 19] before y or x leaves the basis.
  double low = 0, high = 0;
  lp.r0->GetShadowPriceRange(0, &low, &high);
  EXPECT_NEAR(low, 1, 1e-9);
  EXPECT_NEAR(high, 19, 1e-9);
  lp.r0->GetShadowPriceRange(0, nullptr, nullptr);
  EXPECT_EQ(lp.r0->GetErrorCode(), 0);

  // A changed bound reaches the engine: re-solving moves the optimum.
  lp.r0->Set("LB", 3);
  ASSERT_EQ(Engine().Solve(lp.Prob()), 0);
  EXPECT_NEAR(lp.x->Get("Value"), 2, 1e-9);
  EXPECT_NEAR(lp.y->Get("Value"), 1, 1e-9);
}

}  // namespace
}  // namespace Zelq
