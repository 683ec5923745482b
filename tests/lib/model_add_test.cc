// Adding variables and linear constraints to a model, and removing them:
// what each form stores in the engine, its checks and messages, engine
// failures that must leave the model unchanged, and lazy removal with
// compaction.
#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <numeric>
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

  // The size of a new array, or the index of a new handle, which is then freed.
  template <class T>
  static int Size(T* made) { return std::unique_ptr<T>(made)->Size(); }
  template <class T>
  static int Idx(T* made) { return std::unique_ptr<T>(made)->GetIdx(); }

  Shared<EnvBox> env_ = Shared<EnvBox>::Wrap(new EnvBox);
  std::unique_ptr<ZelqModel> model_;
};

constexpr auto kFail5 = [](auto...) { return 5; };

TEST_F(ModelAdd, SingleVariableForms) {
  EXPECT_EQ(Idx(M().AddVar(-1, 4, 2.5, 'I', "x")), 0);
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
  EXPECT_EQ(Idx(M().AddVar(0, 1, 0, 'C', 2, rows_idx, coeffs, nullptr)), 1);
  EXPECT_EQ(GetCol(1).idx.size(), 2u);
  EXPECT_EQ(ColName(1), "C1");  // unnamed in the engine

  std::unique_ptr<IColumn> column(NewColumn({}));
  std::unique_ptr<IConstraint> r1(rows->GetConstr(1));
  column->AddTerm(r1.get(), 7);
  EXPECT_EQ(Idx(M().AddVar(0, 1, 0, 'C', column.get(), "z")), 2);
  EXPECT_EQ(GetCol(2).idx, std::vector<int>{1});
  EXPECT_EQ(GetCol(2).val, std::vector<double>{7});
  EXPECT_EQ(Idx(M().AddVar(0, 1, 0, 'C', static_cast<const IColumn*>(nullptr), "w")), 3);
  EXPECT_TRUE(GetCol(3).idx.empty());  // a null column adds no coefficients

  // A removed constraint in a column is refused before the engine is called.
  r1->Remove();
  EXPECT_EQ(Idx(M().AddVar(0, 1, 0, 'C', column.get(), "bad")), -2);
  ExpectError(3, "(INVALID) The 1-th constraint has been removed");
  EXPECT_EQ(Attr("Cols"), 4);
  // The engine's own refusal is recorded with the operation's message.
  EXPECT_EQ(Idx(M().AddVar(0, 1, 0, 'Q', "q")), -2);
  ExpectError(3, "(INVALID) Fail to add a variable");
  EXPECT_EQ(VarCount(), 4);
}

TEST_F(ModelAdd, SeveralVariableForms) {
  ASSERT_EQ(Size(M().AddVars(3, 'B', "x")), 3);
  EXPECT_EQ(ColName(0), "x0");
  EXPECT_EQ(ColName(2), "x2");
  EXPECT_EQ(ColInfo("LB", 1), 0);
  char type = 0;
  int one = 1;
  EXPECT_EQ(Engine().GetColType(Prob(), 1, &one, &type), 0);
  EXPECT_EQ(type, 'B');

  std::unique_ptr<IVarArray> b(M().AddVars(2, -5, 5, 1.5, 'C', ""));
  ASSERT_EQ(b->Size(), 2);
  EXPECT_EQ(std::unique_ptr<IVar>(b->GetVar(1))->GetIdx(), 4);
  EXPECT_EQ(ColName(4), "C4");  // an empty prefix gives no names
  EXPECT_EQ(ColInfo("LB", 4), -5);
  EXPECT_EQ(ColInfo("Obj", 3), 1.5);

  // Null bound arrays take the engine's defaults.
  EXPECT_EQ(Size(M().AddVars(1, nullptr, nullptr, nullptr, nullptr, "d")), 1);
  EXPECT_EQ(ColInfo("LB", 5), 0);
  EXPECT_EQ(ColInfo("UB", 5), kInf);
  const char* names[] = {"p", "q"};
  double lbs[] = {1, 2};
  EXPECT_EQ(Size(M().AddVars(2, lbs, nullptr, nullptr, nullptr, names, 2)), 2);
  EXPECT_EQ(ColName(7), "q");
  EXPECT_EQ(ColInfo("LB", 7), 2);
  EXPECT_EQ(M().Data().Table(kVarKind).records[6]->name, "p");

  // Counts below 1 return an empty array without touching the engine or the record.
  Poison();
  for (int count : {0, -1}) EXPECT_EQ(Size(M().AddVars(count, 'C', "n")), 0);
  ExpectError(7, "(SERVER) earlier");
  EXPECT_EQ(Size(M().AddVars(3, nullptr, nullptr, nullptr, nullptr, names, 2)), 0);
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
  ASSERT_EQ(Size(M().AddVars(2, columns.get(), 'C', "y")), 2);
  EXPECT_EQ(ColName(1), "y1");
  EXPECT_EQ(GetCol(1).idx, (std::vector<int>{0, 2}));
  EXPECT_EQ(GetCol(1).val, (std::vector<double>{2, -2}));
  EXPECT_EQ(GetRow(2).val, (std::vector<double>{-1, -2}));
  EXPECT_EQ(Size(M().AddVars(3, columns.get(), 'C', "y")), 0);
  ExpectError(3, "(INVALID) Not enough columns");
  Poison();
  EXPECT_EQ(Size(M().AddVars(1, nullptr, 'C', "y")), 0);
  ExpectError(3, "(INVALID) Not enough columns");
  const char* one_name[] = {"only"};
  EXPECT_EQ(Size(M().AddVars(1, nullptr, nullptr, nullptr, nullptr, columns.get(), one_name, 1)),
            1);
  EXPECT_EQ(ColName(2), "only");
  EXPECT_EQ(GetCol(2).val, (std::vector<double>{1, -1}));

  int beg[] = {0, 1, 3}, idx[] = {1, 0, 2}, bad_idx[] = {1, 0, 9};  // no row 9
  double val[] = {5, 6, 7};
  auto add_matrix = [&](int* at) {
    return Size(M().AddVars(2, nullptr, nullptr, nullptr, nullptr, beg, nullptr, at, val, "m"));
  };
  ASSERT_EQ(add_matrix(idx), 2);
  EXPECT_EQ(GetCol(3).idx, std::vector<int>{1});
  EXPECT_EQ(GetCol(4).val, (std::vector<double>{6, 7}));
  EXPECT_EQ(add_matrix(bad_idx), 0);
  ExpectError(3, "(INVALID) Fail to add vars with column matrix data");

  r2->Remove();
  EXPECT_EQ(Size(M().AddVars(2, columns.get(), 'C', "y")), 0);
  ExpectError(3, "(INVALID) The 2-th constraint has been removed");
  EXPECT_EQ(Attr("Cols"), 5);
  EXPECT_EQ(VarCount(), 5);
}

TEST_F(ModelAdd, EngineFailuresAddNoRecords) {
  std::unique_ptr<IVar> x = Var1("x");
  std::unique_ptr<IConstrArray> rows(M().AddConstrs(1, std::vector<double>{0}.data(),
                                                    std::vector<double>{1}.data(), "r"));
  std::unique_ptr<IColumn> column(NewColumn({}));
  std::unique_ptr<IConstraint> r0(rows->GetConstr(0));
  column->AddTerm(r0.get(), 1);
  std::unique_ptr<IColumnArray> columns(NewColumnArray());
  columns->PushBack(column.get());
  std::unique_ptr<IExpr> e = Expr({{x.get(), 1}}, 0);
  int row0 = 0, beg[] = {0, 1};
  double one = 1;
  EngineOverride add_col(&EngineIndex::AddCol, kFail5);
  EngineOverride add_cols(&EngineIndex::AddCols, kFail5);
  EngineOverride add_row(&EngineIndex::AddRow, kFail5);
  EngineOverride add_rows(&EngineIndex::AddRows, kFail5);
  // Each operation makes nothing and records the engine's code with its own message.
  const std::pair<std::function<bool()>, const char*> cases[] = {
      {[&] { return Idx(M().AddVar(0, 1, 0, 'C', "a")) == -2; }, "Fail to add a variable"},
      {[&] { return Idx(M().AddVar(0, 1, 0, 'C', 1, &row0, &one, "b")) == -2; },
       "Fail to add a variable with column data"},
      {[&] { return Idx(M().AddVar(0, 1, 0, 'C', column.get(), "c")) == -2; },
       "Fail to add a variable using Column data"},
      {[&] { return Size(M().AddVars(2, 'C', "a")) == 0; }, "Fail to add vars"},
      {[&] { return Size(M().AddVars(1, columns.get(), 'C', "b")) == 0; }, "Fail to add vars"},
      {[&] {
         return Size(M().AddVars(1, nullptr, nullptr, nullptr, nullptr, beg, nullptr, &row0,
                                 &one, "c")) == 0;
       },
       "Fail to add vars with column matrix data"},
      {[&] { return Idx(M().AddConstr(e.get(), 'L', 1, "a")) == -2; }, "Fail to add a constraint"},
      {[&] { return Idx(M().AddConstr(e.get(), 0.0, 1.0, "b")) == -2; },
       "Fail to add a constraint"},
      {[&] { return Idx(M().AddConstr(1, &row0, &one, 'G', 1, "c")) == -2; },
       "Fail to add a constraint with row data"},
      // The engine's code replaces the sense error recorded before the call.
      {[&] { return Size(M().AddConstrs(2, "LR", std::vector<double>{1, 2}.data(), "a")) == 0; },
       "Fail to add constraints with row matrix data"},
  };
  for (const auto& [add, message] : cases) {
    EXPECT_TRUE(add()) << message;
    ExpectError(5, ("(INTERNAL) " + std::string(message)).c_str());
  }
  EXPECT_EQ(VarCount(), 1);
  EXPECT_EQ(ConstrCount(), 1);
  EXPECT_EQ(M().Data().Table(kVarKind).records.size(), 1u);
  EXPECT_EQ(M().Data().Table(kConstrKind).records.size(), 1u);
  EXPECT_EQ(Attr("Cols"), 1);
  EXPECT_EQ(Attr("Rows"), 1);
}

TEST_F(ModelAdd, ConstraintsFromSenses) {
  ASSERT_EQ(Size(M().AddConstrs(2, "EN", std::vector<double>{4, 5}.data(), "r")), 2);
  EXPECT_EQ(RowBounds(0), std::make_pair(4.0, 4.0));
  EXPECT_EQ(RowBounds(1), std::make_pair(-kInf, kInf));
  EXPECT_EQ(RowName(1), "r1");
  EXPECT_EQ(M().GetErrorCode(), 0);

  // 'R' has no single right-hand side: the message stays, the rows still go
  // in with (0, 0) from the bad sense on, and the engine's 0 is the code.
  ASSERT_EQ(Size(M().AddConstrs(3, "LRE", std::vector<double>{1, 2, 3}.data(), "s")), 3);
  ExpectError(0, "(INVALID) Use constrbuilder to add range constraint");
  EXPECT_EQ(RowBounds(2), std::make_pair(-kInf, 1.0));
  EXPECT_EQ(RowBounds(3), std::make_pair(0.0, 0.0));
  EXPECT_EQ(RowBounds(4), std::make_pair(0.0, 0.0));
  EXPECT_EQ(Size(M().AddConstrs(2, "GX", std::vector<double>{6, 7}.data(), "t")), 2);
  ExpectError(0, "(INVALID) Invalid constraint sense");
  EXPECT_EQ(RowBounds(5), std::make_pair(6.0, kInf));
  EXPECT_EQ(RowBounds(6), std::make_pair(0.0, 0.0));

  Poison();
  double rhs[] = {1};
  EXPECT_EQ(Size(M().AddConstrs(1, static_cast<const char*>(nullptr), rhs, "n")), 0);
  EXPECT_EQ(Size(M().AddConstrs(1, "E", nullptr, "n")), 0);
  EXPECT_EQ(Size(M().AddConstrs(0, "E", rhs, "n")), 0);
  ExpectError(7, "(SERVER) earlier");

  const char* names[] = {"u", "v"};
  EXPECT_EQ(Size(M().AddConstrs(2, "GL", std::vector<double>{1, 2}.data(), names, 2)), 2);
  EXPECT_EQ(RowName(8), "v");
  EXPECT_EQ(M().Data().Table(kConstrKind).records[7]->name, "u");
  EXPECT_EQ(Size(M().AddConstrs(3, "GLE", std::vector<double>(3).data(), names, 2)), 0);
  ExpectError(3, "(INVALID) Invalid size of input names");
  EXPECT_EQ(Attr("Rows"), 9);
  EXPECT_EQ(ConstrCount(), 9);
}

TEST_F(ModelAdd, ConstraintsFromExpressions) {
  std::unique_ptr<IVar> x = Var1("x"), y = Var1("y");
  // Duplicates merge before the engine sees the row; the constant moves over.
  std::unique_ptr<IExpr> e = Expr({{x.get(), 1}, {y.get(), 2}, {x.get(), 3}}, 5);
  EXPECT_EQ(Idx(M().AddConstr(e.get(), 'L', 10, "c")), 0);
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
    EXPECT_EQ(Idx(M().AddConstr(g.get(), sense, 1, "bad")), -2);
    ExpectError(3, "(INVALID) Invalid constraint sense");
  }
  EXPECT_EQ(Idx(M().AddConstr(static_cast<const IExpr*>(nullptr), 'L', 1, "n")), -2);
  ExpectError(3, "(INVALID) Invalid linear expression");

  // A removed variable never reaches the engine.
  std::unique_ptr<IVar> z = Var1("z");
  std::unique_ptr<IExpr> with_removed = Expr({{z.get(), 1}, {x.get(), 2}, {z.get(), 3}}, 0);
  z->Remove();
  EXPECT_EQ(Idx(M().AddConstr(with_removed.get(), 'L', 1, nullptr)), 4);
  EXPECT_EQ(GetRow(4).idx, std::vector<int>{0});
  EXPECT_EQ(with_removed->GetSize(), 1);

  // A variable of another model is refused; the expression stays as it was.
  std::unique_ptr<ZelqModel> other(static_cast<ZelqModel*>(NewModel(env_, "other")));
  std::unique_ptr<IVar> o0(other->AddVar(0, 1, 0, 'C', nullptr));
  std::unique_ptr<IExpr> mixed = Expr({{x.get(), 1}, {o0.get(), 1}, {x.get(), 1}}, 0);
  EXPECT_EQ(Idx(M().AddConstr(mixed.get(), 'L', 1, nullptr)), -2);
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
  ASSERT_EQ(Idx(M().AddConstr(sparse.get(), 'L', 1, nullptr)), 0);
  EXPECT_EQ(GetRow(0).idx, std::vector<int>{3});  // the engine drops the cancelled coefficient
  // Twelve terms over ten columns: a long row through the dense merge.
  std::vector<std::pair<IVar*, double>> terms;
  for (int i = 0; i < 12; ++i) terms.push_back({v[i % 10].get(), 1.0});
  std::unique_ptr<IExpr> dense = Expr(terms, 0);
  ASSERT_EQ(Idx(M().AddConstr(dense.get(), 'G', 0, nullptr)), 1);
  Row row = GetRow(1);
  ASSERT_EQ(row.idx.size(), 10u);
  EXPECT_EQ(std::accumulate(row.val.begin(), row.val.end(), 0.0), 12);
  EXPECT_EQ(dense->GetSize(), 10);
}

TEST_F(ModelAdd, RowDataAndRowMatrixForms) {
  ASSERT_EQ(Size(M().AddVars(3, 'C', "x")), 3);
  int cols[] = {2, 0};
  double coeffs[] = {1.5, -1};
  EXPECT_EQ(Idx(M().AddConstr(2, cols, coeffs, 'G', 3, "a")), 0);
  EXPECT_EQ(RowBounds(0), std::make_pair(3.0, kInf));
  EXPECT_EQ(GetRow(0).idx, (std::vector<int>{2, 0}));
  EXPECT_EQ(GetRow(0).val, (std::vector<double>{1.5, -1}));
  EXPECT_EQ(Idx(M().AddConstr(2, cols, coeffs, -2.0, 2.0, "b")), 1);
  EXPECT_EQ(RowBounds(1), std::make_pair(-2.0, 2.0));
  EXPECT_EQ(Idx(M().AddConstr(2, cols, coeffs, 'N', 3, "n")), -2);
  ExpectError(3, "(INVALID) Invalid constraint sense: 78");
  int dup[] = {1, 1};
  EXPECT_EQ(Idx(M().AddConstr(2, dup, coeffs, 'E', 3, "d")), -2);
  ExpectError(3, "(INVALID) Fail to add a constraint with row data");

  int beg[] = {0, 2, 3}, idx[] = {0, 1, 2};
  double val[] = {1, 2, 3}, lbs[] = {0, 0};
  ASSERT_EQ(Size(M().AddConstrs(2, beg, nullptr, idx, val, "LE", std::vector<double>{7, 8}.data(),
                                "m")),
            2);
  EXPECT_EQ(RowName(3), "m1");
  EXPECT_EQ(RowBounds(2), std::make_pair(-kInf, 7.0));
  EXPECT_EQ(GetRow(3).val, std::vector<double>{3});
  const char* names[] = {"p", "q"};
  EXPECT_EQ(Size(M().AddConstrs(2, beg, nullptr, idx, val, std::vector<double>{-1, -2}.data(),
                                std::vector<double>{1, 2}.data(), names, 2)),
            2);
  EXPECT_EQ(RowName(5), "q");
  EXPECT_EQ(RowBounds(5), std::make_pair(-2.0, 2.0));
  const double one[] = {1};
  EXPECT_EQ(Size(M().AddConstrs(1, beg, nullptr, idx, val, "R", one, "x")), 0);
  ExpectError(3, "(INVALID) Fail to add constraints with row matrix data");
  EXPECT_EQ(Size(M().AddConstrs(2, beg, nullptr, idx, val, "LE", nullptr, "z")), 0);
  ExpectError(3, "(INVALID) Invalid right-hand side values of constraints");
  EXPECT_EQ(Size(M().AddConstrs(2, beg, nullptr, idx, val, lbs, nullptr, "z")), 0);
  ExpectError(3, "(INVALID) Invalid right-hand side values of constraints");
  const char* no_senses = nullptr;
  EXPECT_EQ(Size(M().AddConstrs(2, beg, nullptr, idx, val, no_senses, lbs, "z")), 0);
  ExpectError(3, "(INVALID) Invalid constraint sense");
  EXPECT_EQ(Size(M().AddConstrs(2, beg, nullptr, idx, val, lbs, lbs, names, 1)), 0);
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
    EngineOverride fail(&EngineIndex::DelCols, kFail5);
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
