// Look-ups, names, columns and rows, coefficients, whole-problem loading and
// the linear objective of the model.
#include <gtest/gtest.h>

#include <climits>
#include <memory>
#include <string>
#include <vector>

#include "frame/engine_index.h"
#include "model/zelq_model.h"
#include "scalar/expr_data.h"
#include "scalar/expr_handles.h"
#include "scalar/handles.h"

namespace Zelq {
namespace {

template <class T>
using Own = std::unique_ptr<T>;

// Any engine entry failing with code 5.
constexpr auto kFail = [](auto...) { return 5; };

class ModelAccess : public ::testing::Test {
 protected:
  void SetUp() override {
    env_ = Shared<EnvBox>::Wrap(new EnvBox);
    Engine().CreateEnvWithPath(nullptr, &env_->env);
    owner_.reset(NewModel(env_, "m"));
    model_ = static_cast<ZelqModel*>(owner_.get());
    Engine().SetIntParam(model_->Prob(), "Logging", 0);
  }

  // A column with objective `obj` and bounds [0, 10].
  ElementRef AddCol(const char* name, double obj = 0.0) {
    EXPECT_EQ(Engine().AddCol(model_->Prob(), obj, 0, nullptr, nullptr, 'C', 0, 10, name), 0);
    return model_->Data().Append(kVarKind, name);
  }
  // The row sum(coeffs[k] * column cols[k]) <= 100.
  ElementRef AddRow(const char* name, std::vector<int> cols, std::vector<double> coeffs) {
    EXPECT_EQ(Engine().AddRow(model_->Prob(), static_cast<int>(cols.size()), cols.data(),
                              coeffs.data(), 'L', 100, 1e30, name),
              0);
    return model_->Data().Append(kConstrKind, name);
  }
  static void RemoveVar(const ElementRef& ref) { Own<IVar>(NewVarHandle(Var(ref)))->Remove(); }
  static void RemoveConstr(const ElementRef& ref) {
    Own<IConstraint>(NewConstrHandle(Constraint(ref)))->Remove();
  }
  // The recorded message, or "" while the code is 0.
  std::string Err() const { return model_->GetErrorCode() != 0 ? model_->GetErrorMessage() : ""; }
  double EngineCoeff(int row, int col) const {
    double value = -1;
    EXPECT_EQ(Engine().GetElem(model_->Prob(), col, row, &value), 0);
    return value;
  }
  // Runs `op` with one engine entry failing with code 5; the message it recorded.
  template <class Fn, class Op>
  std::string FailingIn(Fn EngineIndex::*entry, Op op) {
    EngineOverride<Fn> fail(entry, kFail);
    op();
    return Err();
  }

  Shared<EnvBox> env_;
  Own<IModel> owner_;
  ZelqModel* model_ = nullptr;
};

TEST_F(ModelAccess, GetVarAndGetConstrFollowTheIndexRules) {
  ElementRef x = AddCol("x"), y = AddCol("y");
  AddCol("z");
  AddRow("r", {0}, {1.0});
  for (int bad : {-1, 3}) {
    EXPECT_EQ(Own<IVar>(model_->GetVar(bad))->GetIdx(), -2);
    EXPECT_EQ(Err(), "(INVALID) Invalid col index");
  }
  for (int bad : {-1, 1}) {
    EXPECT_EQ(Own<IConstraint>(model_->GetConstr(bad))->GetIdx(), -2);
    EXPECT_EQ(Err(), "(INVALID) Invalid row index");
  }
  EXPECT_EQ(Own<IVar>(model_->GetVar(2))->GetIdx(), 2);
  EXPECT_STREQ(model_->GetErrorMessage(), "");  // cleared at entry

  // A removed element is still found until compaction, sharing its record.
  RemoveVar(y);
  Own<IVar> removed(model_->GetVar(1));
  EXPECT_EQ(removed->GetIdx(), RemovedIndex(1));
  EXPECT_EQ(VarOf(removed.get())->record.Get(), y.Get());

  // Tables out of step with the engine are internal errors.
  x->index = 5;
  EXPECT_EQ(Own<IVar>(model_->GetVar(0))->GetIdx(), -2);
  EXPECT_EQ(Err(), "(INTERNAL) Internal col index error");
  x->index = 0;
  model_->Data().Table(kConstrKind).count = 2;  // one more than the table holds
  EXPECT_EQ(Own<IConstraint>(model_->GetConstr(1))->GetIdx(), -2);
  EXPECT_EQ(Err(), "(INTERNAL) Internal row index error");
  model_->Data().Table(kConstrKind).count = 1;
}

TEST_F(ModelAccess, LooksUpByNameAfterCompactionAndListsLiveElements) {
  ElementRef x = AddCol("x"), y = AddCol("y"), w = AddCol("w"), r0 = AddRow("r0", {0}, {1.0});
  AddRow("r1", {1}, {1.0});
  RemoveVar(x);
  RemoveConstr(r0);
  EXPECT_EQ(Own<IVar>(model_->GetVarByName("y"))->GetIdx(), 0);  // renumbered
  EXPECT_EQ(Err(), "");
  EXPECT_EQ(Own<IConstraint>(model_->GetConstrByName("r1"))->GetIdx(), 0);

  EXPECT_EQ(Own<IVar>(model_->GetVarByName("x"))->GetIdx(), -2);
  EXPECT_EQ(Err(), "(INVALID) No such variable");
  EXPECT_EQ(Own<IConstraint>(model_->GetConstrByName("r0"))->GetIdx(), -2);
  EXPECT_EQ(Err(), "(INVALID) No such constraint");
  EXPECT_EQ(FailingIn(&EngineIndex::GetColIdx,
                      [&] { EXPECT_EQ(Own<IVar>(model_->GetVarByName("y"))->GetIdx(), -2); }),
            "(INTERNAL) No such variable");

  Own<IVarArray> vars(model_->GetVars());
  ASSERT_EQ(vars->Size(), 2);
  EXPECT_EQ((*RecordsOf(vars.get()))[0].Get(), y.Get());
  EXPECT_EQ((*RecordsOf(vars.get()))[1].Get(), w.Get());
  EXPECT_EQ(Own<IConstrArray>(model_->GetConstrs())->Size(), 1);
}

TEST_F(ModelAccess, SetNamesChecksElementsThenCountThenCallsTheEngine) {
  std::vector<ElementRef> cols;
  for (const char* name : {"v0", "v1", "v2", "v3", "v4"}) cols.push_back(AddCol(name));
  Own<IVarArray> all(NewVarArray(cols));
  const char* names[] = {"a", "b", "c", "d", "e"};
  model_->SetNames(all.get(), names, 5);
  EXPECT_EQ(Err(), "");
  EXPECT_EQ(cols[3]->name, "d");
  EXPECT_EQ(Own<IVar>(model_->GetVarByName("d"))->GetIdx(), 3);

  model_->SetNames(all.get(), names, 4);
  EXPECT_EQ(Err(), "(INVALID) Invalid size of input names");
  EXPECT_EQ(cols[0]->name, "a");

  // A removed element is reported before the count is looked at.
  RemoveVar(cols[4]);
  RemoveVar(cols[4]);  // a second removal changes nothing
  EXPECT_EQ(cols[4]->index, -7);
  const char* others[] = {"p", "q", "r", "s"};
  model_->SetNames(all.get(), others, 4);
  EXPECT_EQ(Err(), "(INVALID) The 4-th variable has been removed");
  Own<IVarArray> live(model_->GetVars());
  EXPECT_EQ(FailingIn(&EngineIndex::SetColNames, [&] { model_->SetNames(live.get(), others, 4); }),
            "(INTERNAL) Fail to set names of variables");
  EXPECT_EQ(cols[0]->name, "a");  // the cache follows the engine

  ElementRef r0 = AddRow("r0", {}, {});
  ElementRef r1 = AddRow("r1", {}, {});
  Own<IConstrArray> rows(NewConstrArray({r0, r1}));
  const char* row_names[] = {"first", "second"};
  model_->SetNames(rows.get(), row_names, 2);
  EXPECT_EQ(r1->name, "second");
  RemoveConstr(r1);
  model_->SetNames(rows.get(), others, 2);
  EXPECT_EQ(Err(), "(INVALID) The 1-th constraint has been removed");
}

TEST_F(ModelAccess, GetColAndGetRowRoundTrip) {
  ElementRef x = AddCol("x"), y = AddCol("y"), z = AddCol("z");
  ElementRef r0 = AddRow("r0", {0, 2}, {1.5, -2.0});
  ElementRef r1 = AddRow("r1", {0, 1}, {3.0, 4.0});
  ElementRef r2 = AddRow("r2", {0}, {7.0});

  // With r1 removed, the column's rows map to the renumbered records.
  RemoveConstr(r1);
  Own<IColumn> col(model_->GetCol(Own<IVar>(NewVarHandle(Var(x))).get()));
  EXPECT_EQ(Err(), "");
  const ColumnData* data = ColumnOf(col.get());
  ASSERT_EQ(data->constrs.size(), 2u);
  EXPECT_EQ(data->constrs[0].Get(), r0.Get());
  EXPECT_EQ(data->constrs[1].Get(), r2.Get());
  EXPECT_EQ(data->coeffs, (std::vector<double>{1.5, 7.0}));

  Own<IExpr> row(model_->GetRow(Own<IConstraint>(NewConstrHandle(Constraint(r0))).get()));
  ASSERT_EQ(row->GetSize(), 2);
  EXPECT_EQ(ExprOf(row.get())->vars[0].record.Get(), x.Get());
  EXPECT_EQ(ExprOf(row.get())->vars[1].record.Get(), z.Get());
  EXPECT_EQ(row->GetCoeff(1), -2.0);
  EXPECT_EQ(row->GetConstant(), 0.0);

  Own<IConstraint> c1(NewConstrHandle(Constraint(r1)));
  EXPECT_EQ(Own<IExpr>(model_->GetRow(c1.get()))->GetSize(), 0);
  EXPECT_EQ(Err(), "(INVALID) Invalid constraint");
  Own<IVar> invalid(NewVarHandle(Var(InvalidRecord())));
  EXPECT_EQ(Own<IColumn>(model_->GetCol(invalid.get()))->Size(), 0);
  EXPECT_EQ(Err(), "(INVALID) Invalid variable");
}

using GetFn = int (*)(ZELQprob*, int, const int*, int*, int*, int*, double*, int, int*);
// Fails the size query.
const GetFn kFailSize = kFail;
// Answers the size query with 1 entry and fails the fetch.
const GetFn kFailFetch = [](ZELQprob*, int, const int*, int*, int*, int* out, double*, int,
                            int* size) {
  *size = 1;
  return out == nullptr ? 0 : 4;
};

TEST_F(ModelAccess, ColumnRowAndMatrixReadsReportEngineFailures) {
  Own<IVar> x(NewVarHandle(Var(AddCol("x"))));
  Own<IConstraint> r(NewConstrHandle(Constraint(AddRow("r", {0}, {2.0}))));
  const GetFn fails[] = {kFailSize, kFailFetch};
  const char* col_texts[] = {"(INTERNAL) Fail to get required col size",
                             "(UNKNOWN) Fail to get col data"};
  const char* row_texts[] = {"(INTERNAL) Fail to get required row buffer size",
                             "(UNKNOWN) Fail to get row data"};
  int beg = 0, cnt = 0, idx = 0;
  double val = 0;
  for (int k = 0; k < 2; ++k) {
    EngineOverride cols(&EngineIndex::GetCols, fails[k]);
    EngineOverride rows(&EngineIndex::GetRows, fails[k]);
    EXPECT_EQ(Own<IColumn>(model_->GetCol(x.get()))->Size(), 0);
    EXPECT_EQ(Err(), col_texts[k]);
    EXPECT_EQ(model_->GetA(&beg, &cnt, &idx, &val), -1);
    EXPECT_EQ(Err(), col_texts[k]);
    EXPECT_EQ(Own<IExpr>(model_->GetRow(r.get()))->GetSize(), 0);
    EXPECT_EQ(Err(), row_texts[k]);
  }
  EngineOverride count_only(&EngineIndex::GetCols, kFailFetch);
  EXPECT_EQ(model_->GetA(nullptr, nullptr, nullptr, nullptr), 1);  // no fetch
}

TEST_F(ModelAccess, CoefficientsGetSetAndWholeMatrix) {
  ElementRef x = AddCol("x"), y = AddCol("y");
  ElementRef r0 = AddRow("r0", {0}, {1.0}), r1 = AddRow("r1", {1}, {2.0});
  Own<IVar> xv(NewVarHandle(Var(x))), yv(NewVarHandle(Var(y)));
  Own<IConstraint> c0(NewConstrHandle(Constraint(r0))), c1(NewConstrHandle(Constraint(r1)));

  EXPECT_EQ(model_->GetCoeff(c1.get(), yv.get()), 2.0);
  model_->SetCoeff(c1.get(), xv.get(), -3.5);
  EXPECT_EQ(model_->GetCoeff(c1.get(), xv.get()), -3.5);
  {
    EngineOverride fail(&EngineIndex::GetElem,
                        [](auto, auto, auto, double* v) { return *v = 9, 5; });
    EXPECT_EQ(model_->GetCoeff(c0.get(), xv.get()), 0.0);
    EXPECT_EQ(Err(), "(INTERNAL) Fail to get coefficient");
  }
  EXPECT_EQ(FailingIn(&EngineIndex::SetElem, [&] { model_->SetCoeff(c0.get(), xv.get(), 4.0); }),
            "(INTERNAL) Fail to change coefficient");
  EXPECT_EQ(EngineCoeff(0, 0), 1.0);

  Own<IConstrArray> rows(NewConstrArray({r0, r1, r0}));
  Own<IVarArray> cols(NewVarArray({y, y, x}));
  Own<IVarArray> two(NewVarArray({y, y}));
  const double values[] = {5.0, 6.0, 7.0};
  for (int len : {2, 3}) {  // values short, then one array short
    model_->SetCoeffs(rows.get(), len == 2 ? cols.get() : two.get(), values, len);
    EXPECT_EQ(Err(), "(INVALID) Dimensions mismatch among constraints, variables and values");
  }
  EXPECT_EQ(FailingIn(&EngineIndex::SetElems,
                      [&] { model_->SetCoeffs(rows.get(), cols.get(), values, 3); }),
            "(INTERNAL) Fail to change coefficients");
  model_->SetCoeffs(rows.get(), cols.get(), values, 3);
  EXPECT_EQ(EngineCoeff(0, 1), 5.0);
  EXPECT_EQ(EngineCoeff(1, 1), 6.0);
  EXPECT_EQ(EngineCoeff(0, 0), 7.0);

  // The whole matrix by columns: x: (r0 7, r1 -3.5), y: (r0 5, r1 6).
  EXPECT_EQ(model_->GetA(nullptr, nullptr, nullptr, nullptr), 4);
  std::vector<int> beg(2), cnt(2), idx(4);
  std::vector<double> val(4);
  EXPECT_EQ(model_->GetA(beg.data(), cnt.data(), idx.data(), val.data()), 4);
  EXPECT_EQ(beg, (std::vector<int>{0, 2}));
  EXPECT_EQ(cnt, (std::vector<int>{2, 2}));
  EXPECT_EQ(idx, (std::vector<int>{0, 1, 0, 1}));
  EXPECT_EQ(val, (std::vector<double>{7.0, -3.5, 5.0, 6.0}));

  // Removing x makes y column 0; the removed elements are reported.
  RemoveVar(x);
  EXPECT_EQ(model_->GetCoeff(c1.get(), yv.get()), 6.0);
  EXPECT_EQ(model_->GetCoeff(c1.get(), xv.get()), 0.0);
  EXPECT_EQ(Err(), "(INVALID) Invalid variable");
  model_->SetCoeffs(rows.get(), cols.get(), values, 3);
  EXPECT_EQ(Err(), "(INVALID) The 0-th variable has been removed");
  EXPECT_EQ(EngineCoeff(0, 0), 5.0);  // unchanged
  RemoveConstr(r0);
  model_->SetCoeffs(rows.get(), cols.get(), values, 3);
  EXPECT_EQ(Err(), "(INVALID) The 0-th constraint has been removed");
}

TEST_F(ModelAccess, LoadMatrixRebuildsTheTablesAndSolves) {
  ElementRef old = AddCol("old");
  // max 3x + 2y + 1  s.t.  x + y <= 4,  x + 3y <= 6,  0 <= x <= 3,  y >= 0.
  const double obj[] = {3, 2}, elems[] = {1, 1, 1, 3}, rhs[] = {4, 6};
  const double lower[] = {0, 0}, upper[] = {3, 1e30};
  const int beg[] = {0, 2}, cnt[] = {2, 2}, rows[] = {0, 1, 0, 1};
  const char sense[] = {'L', 'L'};
  const char* col_names[] = {"x", "y"};
  const char* row_names[] = {"c0", "c1"};
  auto load = [&](int n_col) {
    model_->LoadMatrix(n_col, 2, -1, 1.0, obj, beg, cnt, rows, elems, nullptr, lower, upper, sense,
                       rhs, nullptr, col_names, row_names);
  };
  load(-1);
  EXPECT_EQ(Err(), "(INVALID) Invalid number of variables or constraints");
  EXPECT_EQ(FailingIn(&EngineIndex::LoadProb, [&] { load(2); }), "(INTERNAL) Fail to load problem");
  EXPECT_EQ(old->index, 0);
  EXPECT_EQ(model_->Data().Table(kVarKind).count, 1);

  load(2);
  EXPECT_EQ(Err(), "");
  EXPECT_EQ(old->index, -2);
  EXPECT_EQ(model_->Data().Table(kVarKind).count, 2);
  EXPECT_EQ(model_->Data().Table(kConstrKind).count, 2);
  EXPECT_EQ(VarOf(Own<IVar>(model_->GetVar(1)).get())->record->name, "y");
  EXPECT_EQ(Own<IConstraint>(model_->GetConstrByName("c1"))->GetIdx(), 1);
  EXPECT_EQ(model_->GetObjSense(), -1);
  ASSERT_EQ(Engine().Solve(model_->Prob()), 0);
  double value = 0;
  ASSERT_EQ(Engine().GetDblAttr(model_->Prob(), "ObjVal", &value), 0);
  EXPECT_NEAR(value, 12.0, 1e-7);  // x = 3, y = 1
}

TEST_F(ModelAccess, ObjectiveRoundTrip) {
  ElementRef x = AddCol("x", 4.0), z = AddCol("z", 6.0), y = AddCol("y", 9.0), w = AddCol("w", 1.0);
  RemoveVar(z);
  // 2x + 1y + 3x + 8z + 5, where z is removed.
  ExprData data;
  data.vars = {Var(x), Var(y), Var(x), Var(z)};
  data.coeffs = {2.0, 1.0, 3.0, 8.0};
  data.constant = 5.0;
  Own<IExpr> expr(NewExpr(std::move(data)));

  model_->SetObjective(expr.get(), -1);
  EXPECT_EQ(Err(), "");
  EXPECT_EQ(expr->GetSize(), 4);  // the caller's expression is not merged
  EXPECT_EQ(model_->GetObjSense(), -1);
  Own<IExpr> got(model_->GetObjective());
  ASSERT_EQ(got->GetSize(), 2);  // w's old coefficient was replaced by 0
  EXPECT_EQ(ExprOf(got.get())->vars[0].record.Get(), x.Get());
  EXPECT_EQ(got->GetCoeff(0), 5.0);
  EXPECT_EQ(ExprOf(got.get())->vars[1].record.Get(), y.Get());
  EXPECT_EQ(got->GetCoeff(1), 1.0);
  EXPECT_EQ(got->GetConstant(), 5.0);

  // A bad sense, and refused coefficients, leave the objective as it was.
  Own<IExpr> empty(NewExpr(ExprData{}));
  model_->SetObjective(empty.get(), 0);
  EXPECT_EQ(Err(), "(INVALID) Invalid objective sense");
  EXPECT_EQ(FailingIn(&EngineIndex::ReplaceColObj, [&] { model_->SetLinObjective(empty.get()); }),
            "(INTERNAL) Fail to set objective");
  got.reset(model_->GetObjective());
  EXPECT_EQ(got->GetSize(), 2);
  EXPECT_EQ(got->GetConstant(), 5.0);

  // Listed columns only; the removed one is skipped with its value.
  Own<IVarArray> vars(NewVarArray({w, z, x}));
  const double coeffs[] = {-1.0, 100.0, 0.0};
  model_->SetLinObjective(vars.get(), coeffs, 2);
  EXPECT_EQ(Err(), "(INVALID) Invalid input values for variables");
  model_->SetLinObjective(vars.get(), coeffs, 3);
  EXPECT_EQ(Err(), "");
  got.reset(model_->GetObjective());
  ASSERT_EQ(got->GetSize(), 2);
  EXPECT_EQ(ExprOf(got.get())->vars[0].record.Get(), y.Get());
  EXPECT_EQ(ExprOf(got.get())->vars[1].record.Get(), w.Get());
  EXPECT_EQ(got->GetCoeff(1), -1.0);

  model_->SetObjSense(1);
  model_->SetObjConst(-2.5);
  EXPECT_EQ(model_->GetObjSense(), 1);
  EXPECT_EQ(Own<IExpr>(model_->GetObjective())->GetConstant(), -2.5);
  model_->SetLinObjective(nullptr);
  EXPECT_EQ(Err(), "(INVALID) Invalid expression");
}

TEST_F(ModelAccess, ObjectiveReportsEngineFailures) {
  AddCol("x", 1.0);
  Own<IExpr> empty(NewExpr(ExprData{}));
  Own<IVarArray> vars(model_->GetVars());
  const double coeff = 2.0;
  EXPECT_EQ(FailingIn(&EngineIndex::SetObjSense, [&] { model_->SetObjSense(-1); }),
            "(INTERNAL) Fail to set objective sense");
  EXPECT_EQ(FailingIn(&EngineIndex::SetObjConst, [&] { model_->SetObjConst(1.0); }),
            "(INTERNAL) Fail to set objective constant");
  EXPECT_EQ(FailingIn(&EngineIndex::SetObjConst, [&] { model_->SetLinObjective(empty.get()); }),
            "(INTERNAL) Fail to set objective");
  EXPECT_EQ(FailingIn(&EngineIndex::SetColObj,
                      [&] { model_->SetLinObjective(vars.get(), &coeff, 1); }),
            "(INTERNAL) Fail to set objective");
  EXPECT_EQ(Own<IExpr>(model_->GetObjective())->GetCoeff(0), 1.0);  // unchanged
  EXPECT_EQ(FailingIn(&EngineIndex::GetColInfo,
                      [&] { EXPECT_EQ(Own<IExpr>(model_->GetObjective())->GetSize(), 0); }),
            "(INTERNAL) Fail to get objective");
  EXPECT_EQ(FailingIn(&EngineIndex::GetIntAttr, [&] { EXPECT_EQ(model_->GetObjSense(), INT_MIN); }),
            "(INTERNAL) Fail to get objective sense");
}

}  // namespace
}  // namespace Zelq
