// Adding variables and linear constraints to a model, and removing them:
// what each form stores in the engine, its checks and messages, engine
// failures that must leave the model unchanged, and lazy removal with
// compaction.
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "frame/engine_index.h"
#include "model/zelq_model.h"
#include "scalar/expr_data.h"
#include "scalar/expr_handles.h"
#include "scalar/handles.h"
#include "scalar/zelq_column.h"

namespace Zelq {
namespace {

constexpr double kInf = 1e30;

struct Row {
  std::vector<int> idx;
  std::vector<double> val;
};

class ModelAdd : public ::testing::Test {
 protected:
  void SetUp() override {
    ASSERT_EQ(Engine().CreateEnvWithPath(nullptr, &env_->env), 0);
    model_.reset(static_cast<ZelqModel*>(NewModel(env_, "m")));
    ASSERT_EQ(Engine().SetIntParam(Prob(), "Logging", 0), 0);
  }

  ZelqModel& M() { return *model_; }
  ZELQprob* Prob() { return model_->Prob(); }
  int Attr(const char* name) {
    int value = -1;
    EXPECT_EQ(Engine().GetIntAttr(Prob(), name, &value), 0);
    return value;
  }
  double ColInfo(const char* info, int j) {
    double value = 0;
    EXPECT_EQ(Engine().GetColInfo(Prob(), info, 1, &j, &value), 0);
    return value;
  }
  std::pair<double, double> RowBounds(int i) {
    double lb = 0, ub = 0;
    EXPECT_EQ(Engine().GetRowInfo(Prob(), "LB", 1, &i, &lb), 0);
    EXPECT_EQ(Engine().GetRowInfo(Prob(), "UB", 1, &i, &ub), 0);
    return {lb, ub};
  }
  using NameFn = int (*)(ZELQprob*, int, char*, int, int*);
  std::string Name(NameFn get, int i) {
    char buffer[64] = {};
    int size = 0;
    EXPECT_EQ(get(Prob(), i, buffer, sizeof buffer, &size), 0);
    return buffer;
  }
  std::string ColName(int j) { return Name(Engine().GetColName, j); }
  std::string RowName(int i) { return Name(Engine().GetRowName, i); }
  // Entries of row or column i, by the engine's size query and fetch.
  using LinesFn = int (*)(ZELQprob*, int, const int*, int*, int*, int*, double*, int, int*);
  Row Line(LinesFn get, int i) {
    int size = 0;
    EXPECT_EQ(get(Prob(), 1, &i, nullptr, nullptr, nullptr, nullptr, 0, &size), 0);
    Row row{std::vector<int>(size), std::vector<double>(size)};
    int beg = 0, cnt = 0;
    EXPECT_EQ(get(Prob(), 1, &i, &beg, &cnt, row.idx.data(), row.val.data(), size, &size), 0);
    return row;
  }
  Row GetRow(int i) { return Line(Engine().GetRows, i); }
  Row GetCol(int j) { return Line(Engine().GetCols, j); }
  int VarCount() { return M().Data().Table(kVarKind).count; }
  int ConstrCount() { return M().Data().Table(kConstrKind).count; }
  void ExpectError(int code, const char* message) {
    EXPECT_EQ(M().GetErrorCode(), code);
    EXPECT_STREQ(M().GetErrorMessage(), message);
  }
  // Records a failure that a later operation must leave alone.
  void Poison() { SetError(M().Error(), 7, "earlier"); }

  std::unique_ptr<IVar> Var1(const char* name = nullptr) {
    return std::unique_ptr<IVar>(M().AddVar(0, 10, 0, 'C', name));
  }
  // An expression over the given (variable, coefficient) terms.
  static std::unique_ptr<IExpr> Expr(std::vector<std::pair<IVar*, double>> terms, double constant) {
    ExprData data;
    for (auto& [var, coeff] : terms) AppendTerm(data, TermVar(var), coeff);
    data.constant = constant;
    return std::unique_ptr<IExpr>(NewExpr(std::move(data)));
  }

  Shared<EnvBox> env_ = Shared<EnvBox>::Wrap(new EnvBox);
  std::unique_ptr<ZelqModel> model_;
};

using AddColFn = int (*)(ZELQprob*, double, int, const int*, const double*, char, double, double,
                         const char*);
using AddColsFn = int (*)(ZELQprob*, int, const double*, const int*, const int*, const int*,
                          const double*, const char*, const double*, const double*,
                          const char* const*);
using AddRowFn = int (*)(ZELQprob*, int, const int*, const double*, char, double, double,
                         const char*);
using AddRowsFn = int (*)(ZELQprob*, int, const int*, const int*, const int*, const double*,
                          const char*, const double*, const double*, const char* const*);

TEST_F(ModelAdd, SingleVariableForms) {
  std::unique_ptr<IVar> x(M().AddVar(-1, 4, 2.5, 'I', "x"));
  EXPECT_EQ(x->GetIdx(), 0);
  EXPECT_EQ(M().GetErrorCode(), 0);
  EXPECT_EQ(ColInfo("LB", 0), -1);
  EXPECT_EQ(ColInfo("UB", 0), 4);
  EXPECT_EQ(ColInfo("Obj", 0), 2.5);
  EXPECT_EQ(ColName(0), "x");
  EXPECT_EQ(M().Data().Table(kVarKind).records[0]->name, "x");  // cached at creation

  std::unique_ptr<IConstrArray> rows(M().AddConstrs(2, std::vector<double>{0, 0}.data(),
                                                    std::vector<double>{1, 1}.data(), "r"));
  int rows_idx[] = {1, 0};
  double coeffs[] = {3, 4};
  std::unique_ptr<IVar> y(M().AddVar(0, 1, 0, 'C', 2, rows_idx, coeffs, nullptr));
  EXPECT_EQ(y->GetIdx(), 1);
  Row col = GetCol(1);
  ASSERT_EQ(col.idx.size(), 2u);
  EXPECT_EQ(ColName(1), "C1");  // unnamed in the engine

  std::unique_ptr<IColumn> column(NewColumn({}));
  std::unique_ptr<IConstraint> r1(rows->GetConstr(1));
  column->AddTerm(r1.get(), 7);
  std::unique_ptr<IVar> z(M().AddVar(0, 1, 0, 'C', column.get(), "z"));
  EXPECT_EQ(z->GetIdx(), 2);
  EXPECT_EQ(GetCol(2).idx, std::vector<int>{1});
  EXPECT_EQ(GetCol(2).val, std::vector<double>{7});
  std::unique_ptr<IVar> w(M().AddVar(0, 1, 0, 'C', static_cast<const IColumn*>(nullptr), "w"));
  EXPECT_EQ(w->GetIdx(), 3);  // a null column adds no coefficients
  EXPECT_TRUE(GetCol(3).idx.empty());

  // A removed constraint in a column is refused before the engine is called.
  r1->Remove();
  std::unique_ptr<IVar> bad(M().AddVar(0, 1, 0, 'C', column.get(), "bad"));
  EXPECT_EQ(bad->GetIdx(), -2);
  ExpectError(3, "(INVALID) The 1-th constraint has been removed");
  EXPECT_EQ(Attr("Cols"), 4);
  EXPECT_EQ(VarCount(), 4);

  // The engine's own refusal is recorded with the operation's message.
  std::unique_ptr<IVar> typo(M().AddVar(0, 1, 0, 'Q', "q"));
  EXPECT_EQ(typo->GetIdx(), -2);
  ExpectError(3, "(INVALID) Fail to add a variable");
  EXPECT_EQ(VarCount(), 4);
}

TEST_F(ModelAdd, SeveralVariableForms) {
  std::unique_ptr<IVarArray> a(M().AddVars(3, 'B', "x"));
  ASSERT_EQ(a->Size(), 3);
  EXPECT_EQ(ColName(0), "x0");
  EXPECT_EQ(ColName(2), "x2");
  EXPECT_EQ(ColInfo("LB", 1), 0);
  char type = 0;
  int one = 1;
  EXPECT_EQ(Engine().GetColType(Prob(), 1, &one, &type), 0);
  EXPECT_EQ(type, 'B');

  std::unique_ptr<IVarArray> b(M().AddVars(2, -5, 5, 1.5, 'C', ""));
  ASSERT_EQ(b->Size(), 2);
  std::unique_ptr<IVar> b1(b->GetVar(1));
  EXPECT_EQ(b1->GetIdx(), 4);
  EXPECT_EQ(ColName(4), "C4");  // an empty prefix gives no names
  EXPECT_EQ(ColInfo("LB", 4), -5);
  EXPECT_EQ(ColInfo("Obj", 3), 1.5);

  // Null bound arrays take the engine's defaults.
  std::unique_ptr<IVarArray> c(M().AddVars(1, nullptr, nullptr, nullptr, nullptr, "d"));
  EXPECT_EQ(ColInfo("LB", 5), 0);
  EXPECT_EQ(ColInfo("UB", 5), kInf);

  const char* names[] = {"p", "q"};
  double lbs[] = {1, 2};
  std::unique_ptr<IVarArray> d(M().AddVars(2, lbs, nullptr, nullptr, nullptr, names, 2));
  EXPECT_EQ(ColName(7), "q");
  EXPECT_EQ(ColInfo("LB", 7), 2);
  EXPECT_EQ(M().Data().Table(kVarKind).records[6]->name, "p");
  EXPECT_EQ(Attr("Cols"), 8);

  // Counts below 1 return an empty array without touching the engine or the record.
  Poison();
  for (int count : {0, -1}) {
    std::unique_ptr<IVarArray> none(M().AddVars(count, 'C', "n"));
    EXPECT_EQ(none->Size(), 0);
  }
  ExpectError(7, "(SERVER) earlier");

  std::unique_ptr<IVarArray> mismatch(M().AddVars(3, nullptr, nullptr, nullptr, nullptr, names, 2));
  EXPECT_EQ(mismatch->Size(), 0);
  ExpectError(3, "(INVALID) Invalid size of input names");
  EXPECT_EQ(Attr("Cols"), 8);
  EXPECT_EQ(VarCount(), 8);
}

TEST_F(ModelAdd, ColumnArrayAndMatrixForms) {
  std::unique_ptr<IConstrArray> rows(M().AddConstrs(3, std::vector<double>(3, 0).data(),
                                                    std::vector<double>(3, 9).data(), "r"));
  std::unique_ptr<IColumnArray> columns(NewColumnArray());
  std::unique_ptr<IConstraint> r0(rows->GetConstr(0)), r2(rows->GetConstr(2));
  for (double c : {1.0, 2.0}) {
    std::unique_ptr<IColumn> column(NewColumn({}));
    column->AddTerm(r0.get(), c);
    column->AddTerm(r2.get(), -c);
    columns->PushBack(column.get());
  }
  std::unique_ptr<IVarArray> a(M().AddVars(2, columns.get(), 'C', "y"));
  ASSERT_EQ(a->Size(), 2);
  EXPECT_EQ(ColName(1), "y1");
  EXPECT_EQ(GetCol(1).idx, (std::vector<int>{0, 2}));
  EXPECT_EQ(GetCol(1).val, (std::vector<double>{2, -2}));
  EXPECT_EQ(GetRow(2).val, (std::vector<double>{-1, -2}));

  std::unique_ptr<IVarArray> three(M().AddVars(3, columns.get(), 'C', "y"));
  EXPECT_EQ(three->Size(), 0);
  ExpectError(3, "(INVALID) Not enough columns");
  std::unique_ptr<IVarArray> none(M().AddVars(1, nullptr, 'C', "y"));
  ExpectError(3, "(INVALID) Not enough columns");
  const char* one_name[] = {"only"};
  std::unique_ptr<IVarArray> named(
      M().AddVars(1, nullptr, nullptr, nullptr, nullptr, columns.get(), one_name, 1));
  EXPECT_EQ(ColName(2), "only");
  EXPECT_EQ(GetCol(2).val, (std::vector<double>{1, -1}));

  int beg[] = {0, 1, 3};
  int idx[] = {1, 0, 2};
  double val[] = {5, 6, 7};
  std::unique_ptr<IVarArray> m(
      M().AddVars(2, nullptr, nullptr, nullptr, nullptr, beg, nullptr, idx, val, "m"));
  ASSERT_EQ(m->Size(), 2);
  EXPECT_EQ(GetCol(3).idx, std::vector<int>{1});
  EXPECT_EQ(GetCol(4).val, (std::vector<double>{6, 7}));
  int bad_idx[] = {1, 0, 9};  // row 9 does not exist: the engine refuses
  std::unique_ptr<IVarArray> bad(
      M().AddVars(2, nullptr, nullptr, nullptr, nullptr, beg, nullptr, bad_idx, val, "m"));
  EXPECT_EQ(bad->Size(), 0);
  ExpectError(3, "(INVALID) Fail to add vars with column matrix data");

  r2->Remove();
  std::unique_ptr<IVarArray> stale(M().AddVars(2, columns.get(), 'C', "y"));
  ExpectError(3, "(INVALID) The 2-th constraint has been removed");
  EXPECT_EQ(Attr("Cols"), 5);
  EXPECT_EQ(VarCount(), 5);
}

TEST_F(ModelAdd, EngineFailuresAddNoRecords) {
  std::unique_ptr<IVar> x(M().AddVar(0, 1, 0, 'C', "x"));
  std::unique_ptr<IConstrArray> rows(M().AddConstrs(1, std::vector<double>{0}.data(),
                                                    std::vector<double>{1}.data(), "r"));
  std::unique_ptr<IColumn> column(NewColumn({}));
  std::unique_ptr<IConstraint> r0(rows->GetConstr(0));
  column->AddTerm(r0.get(), 1);
  std::unique_ptr<IColumnArray> columns(NewColumnArray());
  columns->PushBack(column.get());
  int row0 = 0;
  double one = 1;
  int beg[] = {0, 1};
  {
    EngineOverride<AddColFn> fail(&EngineIndex::AddCol,
                                  [](ZELQprob*, double, int, const int*, const double*, char,
                                     double, double, const char*) { return 5; });
    std::unique_ptr<IVar> a(M().AddVar(0, 1, 0, 'C', "a"));
    EXPECT_EQ(a->GetIdx(), -2);
    ExpectError(5, "(INTERNAL) Fail to add a variable");
    std::unique_ptr<IVar> b(M().AddVar(0, 1, 0, 'C', 1, &row0, &one, "b"));
    ExpectError(5, "(INTERNAL) Fail to add a variable with column data");
    std::unique_ptr<IVar> c(M().AddVar(0, 1, 0, 'C', column.get(), "c"));
    ExpectError(5, "(INTERNAL) Fail to add a variable using Column data");
  }
  {
    EngineOverride<AddColsFn> fail(
        &EngineIndex::AddCols,
        [](ZELQprob*, int, const double*, const int*, const int*, const int*, const double*,
           const char*, const double*, const double*, const char* const*) { return 5; });
    std::unique_ptr<IVarArray> a(M().AddVars(2, 'C', "a"));
    EXPECT_EQ(a->Size(), 0);
    ExpectError(5, "(INTERNAL) Fail to add vars");
    std::unique_ptr<IVarArray> b(M().AddVars(1, columns.get(), 'C', "b"));
    ExpectError(5, "(INTERNAL) Fail to add vars");
    std::unique_ptr<IVarArray> c(
        M().AddVars(1, nullptr, nullptr, nullptr, nullptr, beg, nullptr, &row0, &one, "c"));
    ExpectError(5, "(INTERNAL) Fail to add vars with column matrix data");
  }
  {
    EngineOverride<AddRowFn> fail(
        &EngineIndex::AddRow,
        [](ZELQprob*, int, const int*, const double*, char, double, double, const char*) {
          return 5;
        });
    std::unique_ptr<IExpr> e = Expr({{x.get(), 1}}, 0);
    std::unique_ptr<IConstraint> a(M().AddConstr(e.get(), 'L', 1, "a"));
    EXPECT_EQ(a->GetIdx(), -2);
    ExpectError(5, "(INTERNAL) Fail to add a constraint");
    std::unique_ptr<IConstraint> b(M().AddConstr(e.get(), 0.0, 1.0, "b"));
    ExpectError(5, "(INTERNAL) Fail to add a constraint");
    std::unique_ptr<IConstraint> c(M().AddConstr(1, &row0, &one, 'G', 1, "c"));
    ExpectError(5, "(INTERNAL) Fail to add a constraint with row data");
  }
  {
    EngineOverride<AddRowsFn> fail(
        &EngineIndex::AddRows,
        [](ZELQprob*, int, const int*, const int*, const int*, const double*, const char*,
           const double*, const double*, const char* const*) { return 5; });
    // The engine's code replaces the sense error recorded before the call.
    std::unique_ptr<IConstrArray> a(M().AddConstrs(2, "LR", std::vector<double>{1, 2}.data(), "a"));
    EXPECT_EQ(a->Size(), 0);
    ExpectError(5, "(INTERNAL) Fail to add constraints with row matrix data");
  }
  EXPECT_EQ(VarCount(), 1);
  EXPECT_EQ(ConstrCount(), 1);
  EXPECT_EQ(M().Data().Table(kVarKind).records.size(), 1u);
  EXPECT_EQ(M().Data().Table(kConstrKind).records.size(), 1u);
  EXPECT_EQ(Attr("Cols"), 1);
  EXPECT_EQ(Attr("Rows"), 1);
}

TEST_F(ModelAdd, ConstraintsFromSenses) {
  std::unique_ptr<IConstrArray> en(M().AddConstrs(2, "EN", std::vector<double>{4, 5}.data(), "r"));
  ASSERT_EQ(en->Size(), 2);
  EXPECT_EQ(RowBounds(0), std::make_pair(4.0, 4.0));
  EXPECT_EQ(RowBounds(1), std::make_pair(-kInf, kInf));
  EXPECT_EQ(RowName(1), "r1");
  EXPECT_EQ(M().GetErrorCode(), 0);

  // 'R' has no single right-hand side: the message stays, the rows still go
  // in with (0, 0) from the bad sense on, and the engine's 0 is the code.
  std::unique_ptr<IConstrArray> lre(M().AddConstrs(3, "LRE", std::vector<double>{1, 2, 3}.data(),
                                                   "s"));
  ASSERT_EQ(lre->Size(), 3);
  ExpectError(0, "(INVALID) Use constrbuilder to add range constraint");
  EXPECT_EQ(RowBounds(2), std::make_pair(-kInf, 1.0));
  EXPECT_EQ(RowBounds(3), std::make_pair(0.0, 0.0));
  EXPECT_EQ(RowBounds(4), std::make_pair(0.0, 0.0));
  std::unique_ptr<IConstrArray> gx(M().AddConstrs(2, "GX", std::vector<double>{6, 7}.data(),
                                                  "t"));
  ExpectError(0, "(INVALID) Invalid constraint sense");
  EXPECT_EQ(RowBounds(5), std::make_pair(6.0, kInf));
  EXPECT_EQ(RowBounds(6), std::make_pair(0.0, 0.0));

  Poison();
  double rhs[] = {1};
  EXPECT_EQ(std::unique_ptr<IConstrArray>(M().AddConstrs(1, static_cast<const char*>(nullptr), rhs, "n"))->Size(), 0);
  EXPECT_EQ(std::unique_ptr<IConstrArray>(M().AddConstrs(1, "E", nullptr, "n"))->Size(), 0);
  EXPECT_EQ(std::unique_ptr<IConstrArray>(M().AddConstrs(0, "E", rhs, "n"))->Size(), 0);
  ExpectError(7, "(SERVER) earlier");

  const char* names[] = {"u", "v"};
  std::unique_ptr<IConstrArray> named(M().AddConstrs(2, "GL", std::vector<double>{1, 2}.data(),
                                                     names, 2));
  EXPECT_EQ(RowName(8), "v");
  EXPECT_EQ(M().Data().Table(kConstrKind).records[7]->name, "u");
  std::unique_ptr<IConstrArray> short_names(M().AddConstrs(3, "GLE", std::vector<double>(3).data(),
                                                           names, 2));
  EXPECT_EQ(short_names->Size(), 0);
  ExpectError(3, "(INVALID) Invalid size of input names");
  EXPECT_EQ(Attr("Rows"), 9);
  EXPECT_EQ(ConstrCount(), 9);
}

TEST_F(ModelAdd, ConstraintsFromExpressions) {
  std::unique_ptr<IVar> x = Var1("x"), y = Var1("y");
  // Duplicates merge before the engine sees the row; the constant moves over.
  std::unique_ptr<IExpr> e = Expr({{x.get(), 1}, {y.get(), 2}, {x.get(), 3}}, 5);
  std::unique_ptr<IConstraint> c(M().AddConstr(e.get(), 'L', 10, "c"));
  EXPECT_EQ(c->GetIdx(), 0);
  EXPECT_EQ(M().GetErrorCode(), 0);
  EXPECT_EQ(GetRow(0).idx, (std::vector<int>{0, 1}));
  EXPECT_EQ(GetRow(0).val, (std::vector<double>{4, 2}));
  EXPECT_EQ(RowBounds(0), std::make_pair(-kInf, 5.0));
  EXPECT_EQ(RowName(0), "c");
  EXPECT_EQ(e->GetSize(), 2);  // merged in place

  std::unique_ptr<IExpr> g = Expr({{y.get(), -1}}, -1);
  std::unique_ptr<IConstraint> cg(M().AddConstr(g.get(), 'G', 2, nullptr));
  EXPECT_EQ(RowBounds(1), std::make_pair(3.0, kInf));
  std::unique_ptr<IConstraint> ce(M().AddConstr(g.get(), 'E', 2, nullptr));
  EXPECT_EQ(RowBounds(2), std::make_pair(3.0, 3.0));
  std::unique_ptr<IConstraint> range(M().AddConstr(g.get(), 1.0, 4.0, "range"));
  EXPECT_EQ(RowBounds(3), std::make_pair(2.0, 5.0));

  for (char sense : {'N', 'R', 'l', '\0', static_cast<char>(-59)}) {
    std::unique_ptr<IConstraint> bad(M().AddConstr(g.get(), sense, 1, "bad"));
    EXPECT_EQ(bad->GetIdx(), -2);
    ExpectError(3, "(INVALID) Invalid constraint sense");
  }
  std::unique_ptr<IConstraint> null_expr(M().AddConstr(static_cast<const IExpr*>(nullptr), 'L',
                                                       1, "n"));
  ExpectError(3, "(INVALID) Invalid linear expression");

  // A removed variable never reaches the engine.
  std::unique_ptr<IVar> z = Var1("z");
  std::unique_ptr<IExpr> with_removed = Expr({{z.get(), 1}, {x.get(), 2}, {z.get(), 3}}, 0);
  z->Remove();
  std::unique_ptr<IConstraint> cr(M().AddConstr(with_removed.get(), 'L', 1, nullptr));
  EXPECT_EQ(GetRow(4).idx, std::vector<int>{0});
  EXPECT_EQ(with_removed->GetSize(), 1);

  // A variable of another model is refused; the expression stays as it was.
  std::unique_ptr<ZelqModel> other(static_cast<ZelqModel*>(NewModel(env_, "other")));
  std::unique_ptr<IVar> o0(other->AddVar(0, 1, 0, 'C', nullptr));
  std::unique_ptr<IExpr> mixed = Expr({{x.get(), 1}, {o0.get(), 1}, {x.get(), 1}}, 0);
  std::unique_ptr<IConstraint> cm(M().AddConstr(mixed.get(), 'L', 1, nullptr));
  EXPECT_EQ(cm->GetIdx(), -2);
  ExpectError(3, "(INVALID) The 1-th term's variable belongs to another model");
  EXPECT_EQ(mixed->GetSize(), 3);
  EXPECT_EQ(Attr("Rows"), 5);
  EXPECT_EQ(ConstrCount(), 5);
}

TEST_F(ModelAdd, MergeStrategiesAndLongRows) {
  std::unique_ptr<IVarArray> vars(M().AddVars(1000, 'C', nullptr));
  std::vector<std::unique_ptr<IVar>> v;
  for (int i = 0; i < 1000; ++i) v.emplace_back(vars->GetVar(i));
  // 1000 columns / 3 terms > 99: the sparse merge; duplicates and a zero sum.
  std::unique_ptr<IExpr> sparse = Expr({{v[700].get(), 1}, {v[3].get(), 2}, {v[700].get(), -1}}, 0);
  std::unique_ptr<IConstraint> a(M().AddConstr(sparse.get(), 'L', 1, nullptr));
  ASSERT_EQ(M().GetErrorCode(), 0);
  Row row = GetRow(0);
  ASSERT_EQ(row.idx.size(), 1u);  // the engine drops the cancelled coefficient
  EXPECT_EQ(row.idx[0], 3);
  // Twelve terms over ten columns: a long row through the dense merge.
  std::vector<std::pair<IVar*, double>> terms;
  for (int i = 0; i < 12; ++i) terms.push_back({v[i % 10].get(), 1.0});
  std::unique_ptr<IExpr> dense = Expr(terms, 0);
  std::unique_ptr<IConstraint> b(M().AddConstr(dense.get(), 'G', 0, nullptr));
  ASSERT_EQ(M().GetErrorCode(), 0);
  row = GetRow(1);
  ASSERT_EQ(row.idx.size(), 10u);
  double sum = 0;
  for (double value : row.val) sum += value;
  EXPECT_EQ(sum, 12);
  EXPECT_EQ(dense->GetSize(), 10);
}

TEST_F(ModelAdd, RowDataAndRowMatrixForms) {
  std::unique_ptr<IVarArray> vars(M().AddVars(3, 'C', "x"));
  int cols[] = {2, 0};
  double coeffs[] = {1.5, -1};
  std::unique_ptr<IConstraint> a(M().AddConstr(2, cols, coeffs, 'G', 3, "a"));
  EXPECT_EQ(a->GetIdx(), 0);
  EXPECT_EQ(RowBounds(0), std::make_pair(3.0, kInf));
  EXPECT_EQ(GetRow(0).idx, (std::vector<int>{2, 0}));
  EXPECT_EQ(GetRow(0).val, (std::vector<double>{1.5, -1}));
  std::unique_ptr<IConstraint> b(M().AddConstr(2, cols, coeffs, -2.0, 2.0, "b"));
  EXPECT_EQ(RowBounds(1), std::make_pair(-2.0, 2.0));
  std::unique_ptr<IConstraint> n(M().AddConstr(2, cols, coeffs, 'N', 3, "n"));
  ExpectError(3, "(INVALID) Invalid constraint sense: 78");
  int dup[] = {1, 1};
  std::unique_ptr<IConstraint> d(M().AddConstr(2, dup, coeffs, 'E', 3, "d"));
  ExpectError(3, "(INVALID) Fail to add a constraint with row data");

  int beg[] = {0, 2, 3};
  int idx[] = {0, 1, 2};
  double val[] = {1, 2, 3};
  std::unique_ptr<IConstrArray> m(
      M().AddConstrs(2, beg, nullptr, idx, val, "LE", std::vector<double>{7, 8}.data(), "m"));
  ASSERT_EQ(m->Size(), 2);
  EXPECT_EQ(RowName(3), "m1");
  EXPECT_EQ(RowBounds(2), std::make_pair(-kInf, 7.0));
  EXPECT_EQ(GetRow(3).val, std::vector<double>{3});
  const char* names[] = {"p", "q"};
  std::unique_ptr<IConstrArray> bounds(
      M().AddConstrs(2, beg, nullptr, idx, val, std::vector<double>{-1, -2}.data(),
                     std::vector<double>{1, 2}.data(), names, 2));
  EXPECT_EQ(RowName(5), "q");
  EXPECT_EQ(RowBounds(5), std::make_pair(-2.0, 2.0));
  std::unique_ptr<IConstrArray> ranged(M().AddConstrs(
      1, beg, nullptr, idx, val, "R", std::vector<double>{1}.data(), "x"));
  ExpectError(3, "(INVALID) Fail to add constraints with row matrix data");

  double lbs[] = {0, 0};
  EXPECT_EQ(std::unique_ptr<IConstrArray>(
                M().AddConstrs(2, beg, nullptr, idx, val, "LE", nullptr, "z"))->Size(), 0);
  ExpectError(3, "(INVALID) Invalid right-hand side values of constraints");
  EXPECT_EQ(std::unique_ptr<IConstrArray>(
                M().AddConstrs(2, beg, nullptr, idx, val, lbs, nullptr, "z"))->Size(), 0);
  ExpectError(3, "(INVALID) Invalid right-hand side values of constraints");
  EXPECT_EQ(std::unique_ptr<IConstrArray>(M().AddConstrs(
                2, beg, nullptr, idx, val, static_cast<const char*>(nullptr), lbs, "z"))->Size(), 0);
  ExpectError(3, "(INVALID) Invalid constraint sense");
  EXPECT_EQ(std::unique_ptr<IConstrArray>(
                M().AddConstrs(2, beg, nullptr, idx, val, lbs, lbs, names, 1))->Size(), 0);
  ExpectError(3, "(INVALID) Invalid size of input names");
  EXPECT_EQ(Attr("Rows"), 6);
  EXPECT_EQ(ConstrCount(), 6);
}

TEST_F(ModelAdd, RemovalMarksThenCompactionDeletes) {
  std::unique_ptr<IVarArray> vars(M().AddVars(5, 'C', "x"));
  std::unique_ptr<IConstrArray> rows(M().AddConstrs(3, "LLL", std::vector<double>(3, 1).data(),
                                                    "r"));
  std::unique_ptr<IVarArray> gone(NewVarArray({}));
  std::unique_ptr<IVar> x1(vars->GetVar(1)), x3(vars->GetVar(3)), x4(vars->GetVar(4));
  gone->PushBack(x3.get());
  gone->PushBack(x1.get());
  gone->PushBack(x3.get());  // twice: the second sees it removed already
  M().Remove(gone.get());
  EXPECT_EQ(x1->GetIdx(), -4);
  EXPECT_EQ(x3->GetIdx(), -6);
  EXPECT_EQ(M().Data().update_flag, 1);
  M().Remove(gone.get());
  EXPECT_EQ(x3->GetIdx(), -6);
  EXPECT_EQ(Attr("Cols"), 5);  // nothing sent yet

  std::unique_ptr<IConstrArray> row_gone(NewConstrArray({}));
  std::unique_ptr<IConstraint> r0(rows->GetConstr(0)), r2(rows->GetConstr(2));
  row_gone->PushBack(r0.get());
  M().Remove(row_gone.get());
  EXPECT_EQ(r0->GetIdx(), -3);

  {
    using DelFn = int (*)(ZELQprob*, int, const int*);
    EngineOverride<DelFn> fail(&EngineIndex::DelCols, [](ZELQprob*, int, const int*) { return 5; });
    EXPECT_FALSE(M().Compact());
    ExpectError(5, "(INTERNAL) Fail to del cols");
    EXPECT_EQ(VarCount(), 5);
    EXPECT_EQ(M().Data().Table(kVarKind).records.size(), 5u);
    EXPECT_EQ(x4->GetIdx(), 4);
    EXPECT_EQ(x1->GetIdx(), -4);
    EXPECT_EQ(M().Data().update_flag, 1);
  }
  EXPECT_TRUE(M().Compact());
  EXPECT_EQ(Attr("Cols"), 3);
  EXPECT_EQ(Attr("Rows"), 2);
  EXPECT_EQ(ColName(2), "x4");
  EXPECT_EQ(x4->GetIdx(), 2);
  EXPECT_EQ(x1->GetIdx(), -4);
  EXPECT_EQ(r2->GetIdx(), 1);
  EXPECT_EQ(VarCount(), 3);
  EXPECT_EQ(ConstrCount(), 2);
  EXPECT_EQ(M().Data().update_flag, 0);

  // An array naming a live element of another model marks nothing.
  std::unique_ptr<ZelqModel> other(static_cast<ZelqModel*>(NewModel(env_, "other")));
  std::unique_ptr<IVar> foreign(other->AddVar(0, 1, 0, 'C', nullptr));
  std::unique_ptr<IVarArray> mixed(NewVarArray({}));
  mixed->PushBack(x4.get());
  mixed->PushBack(foreign.get());
  M().Remove(mixed.get());
  ExpectError(3, "(INVALID) The 1-th variable of the array belongs to another model");
  EXPECT_EQ(x4->GetIdx(), 2);
  EXPECT_EQ(foreign->GetIdx(), 0);
  M().Remove(static_cast<IVarArray*>(nullptr));
  EXPECT_EQ(M().GetErrorCode(), 0);
}

}  // namespace
}  // namespace Zelq
