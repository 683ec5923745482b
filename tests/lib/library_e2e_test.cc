// The library as an application sees it: only the exported factories and the
// interfaces of the shared library. Builds an LP and a MIP with known optima,
// solves them on the real engine, reads values, duals, bases and attributes,
// removes elements and re-solves, and releases objects in awkward orders.
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "zelq/zelqcpp_exports.h"

namespace {

using Zelq::IConstraint;
using Zelq::IExpr;
using Zelq::IModel;
using Zelq::IVar;

template <class T>
using Owned = std::unique_ptr<T>;

std::string Message(const char* text) { return text != nullptr ? text : ""; }

// A quiet environment: no banner, no solver log.
Owned<Zelq::IEnvr> QuietEnvr() {
  Owned<Zelq::IEnvrConfig> config(CreateEnvrConfig());
  config->Set("Banner", "0");
  config->Set("Logging", "0");
  return Owned<Zelq::IEnvr>(CreateEnvrWithConfig(config.get(), nullptr));
}

// sum coeffs[k] * vars[k] (sense) rhs, through a linear expression.
Owned<IConstraint> AddRow(IModel& model, const std::vector<IVar*>& vars,
                          const std::vector<double>& coeffs, char sense, double rhs,
                          const char* name) {
  Owned<IExpr> expr(CreateExpr(0));
  for (size_t k = 0; k < vars.size(); ++k) expr->AddTerm(vars[k], coeffs[k]);
  Owned<IConstraint> row(model.AddConstr(expr.get(), sense, rhs, name));
  EXPECT_EQ(model.GetErrorCode(), 0) << Message(model.GetErrorMessage());
  return row;
}

void SolveOptimal(IModel& model) {
  model.Solve();
  ASSERT_EQ(model.GetErrorCode(), 0) << Message(model.GetErrorMessage());
  ASSERT_EQ(model.GetIntAttr("Status"), 1);  // optimal
}

// max 3x + 5y  s.t.  x <= 4, 2y <= 12, 3x + 2y <= 18: 36 at (2, 6), duals
// (0, 1.5, 1). Without the third row: 42 at (4, 6); then without x: 30.
TEST(LibraryEndToEnd, LpSolveRemoveAndResolve) {
  Owned<Zelq::IEnvr> env = QuietEnvr();
  ASSERT_EQ(env->GetErrorCode(), 0) << Message(env->GetErrorMessage());
  Owned<IModel> model(CreateModel(env.get(), "textbook"));
  ASSERT_EQ(model->GetErrorCode(), 0);
  EXPECT_STREQ(model->GetName(), "textbook");
  Owned<IVar> x(model->AddVar(0, 1e30, 3, 'C', "x"));
  Owned<IVar> y(model->AddVar(0, 1e30, 5, 'C', "y"));
  Owned<IConstraint> c0 = AddRow(*model, {x.get()}, {1}, 'L', 4, "c0");
  Owned<IConstraint> c1 = AddRow(*model, {y.get()}, {2}, 'L', 12, "c1");
  Owned<IConstraint> c2 = AddRow(*model, {x.get(), y.get()}, {3, 2}, 'L', 18, "c2");
  model->SetObjSense(-1);  // maximise
  ASSERT_EQ(model->GetErrorCode(), 0);

  SolveOptimal(*model);
  EXPECT_NEAR(model->GetDblAttr("ObjVal"), 36, 1e-9);
  EXPECT_EQ(model->GetIntAttr("Cols"), 2);
  EXPECT_NEAR(x->Get("Value"), 2, 1e-9);
  EXPECT_NEAR(y->Get("Value"), 6, 1e-9);
  EXPECT_NEAR(c1->Get("Dual"), 1.5, 1e-9);
  EXPECT_NEAR(c2->Get("Dual"), 1, 1e-9);
  EXPECT_NEAR(c2->Get("Slack"), 18, 1e-9);
  EXPECT_EQ(x->GetBasis(), 1);  // basic

  // The same values through the model's list forms.
  Owned<Zelq::IVarArray> vars(CreateVarArray());
  vars->PushBack(y.get());
  vars->PushBack(x.get());
  double values[2] = {};
  EXPECT_EQ(model->GetColInfo("Value", vars.get(), values), 2);
  EXPECT_NEAR(values[0], 6, 1e-9);
  EXPECT_NEAR(values[1], 2, 1e-9);

  // Removal is lazy: indices change at the next whole-problem operation.
  c2->Remove();
  EXPECT_EQ(c2->GetIdx(), -5);
  SolveOptimal(*model);
  EXPECT_NEAR(model->GetDblAttr("ObjVal"), 42, 1e-9);
  EXPECT_EQ(model->GetIntAttr("Rows"), 2);
  EXPECT_NEAR(x->Get("Value"), 4, 1e-9);
  EXPECT_EQ(c2->Get("Dual"), 1e30);  // removed: no information
  EXPECT_NE(c2->GetErrorCode(), 0);

  Owned<Zelq::IVarArray> gone(CreateVarArray());
  gone->PushBack(x.get());
  model->Remove(gone.get());
  SolveOptimal(*model);
  EXPECT_NEAR(model->GetDblAttr("ObjVal"), 30, 1e-9);
  EXPECT_EQ(model->GetIntAttr("Cols"), 1);
  EXPECT_EQ(y->GetIdx(), 0);  // renumbered
  EXPECT_LT(x->GetIdx(), -2);
  EXPECT_EQ(model->GetColInfo("Value", vars.get(), values), 1);  // x dropped, output packed
  EXPECT_NEAR(values[0], 6, 1e-9);
}

// max 5x + 4y  s.t.  6x + 4y <= 24, x + 2y <= 6, x, y integer >= 0: 20 at
// (4, 0), while the LP relaxation reaches 21 at (3, 1.5).
TEST(LibraryEndToEnd, MipWithStartAndPool) {
  Owned<Zelq::IEnvr> env = QuietEnvr();
  Owned<IModel> model(CreateModel(env.get(), "mip"));
  Owned<IVar> x(model->AddVar(0, 10, 5, 'I', "x"));
  Owned<IVar> y(model->AddVar(0, 10, 4, 'I', "y"));
  Owned<IConstraint> a = AddRow(*model, {x.get(), y.get()}, {6, 4}, 'L', 24, "a");
  Owned<IConstraint> b = AddRow(*model, {x.get(), y.get()}, {1, 2}, 'L', 6, "b");
  model->SetObjSense(-1);

  model->SetMipStart(x.get(), 3);  // feasible, objective 19
  model->SetMipStart(y.get(), 1);
  model->AddMipStart();
  ASSERT_EQ(model->GetErrorCode(), 0) << Message(model->GetErrorMessage());
  SolveOptimal(*model);
  EXPECT_NEAR(model->GetDblAttr("ObjVal"), 20, 1e-9);
  EXPECT_NEAR(x->Get("Value"), 4, 1e-9);
  EXPECT_NEAR(y->Get("Value"), 0, 1e-9);
  EXPECT_NEAR(model->GetPoolObjVal(0), 20, 1e-9);

  // Without the first row the integer optimum is 6x with x <= 6 -> 30.
  a->Remove();
  SolveOptimal(*model);
  EXPECT_NEAR(model->GetDblAttr("ObjVal"), 30, 1e-9);
  EXPECT_EQ(b->GetIdx(), 0);
}

// Handles, arrays and expressions may outlive their model and environment;
// they report an invalid element instead of reaching freed memory.
TEST(LibraryEndToEnd, HandlesOutliveTheirModel) {
  Owned<IVar> x;
  Owned<IConstraint> row;
  Owned<IExpr> expr;
  Owned<Zelq::IVarArray> vars(CreateVarArray());
  {
    Owned<Zelq::IEnvr> env = QuietEnvr();
    Owned<IModel> model(CreateModel(env.get(), "short"));
    x.reset(model->AddVar(0, 1, 1, 'C', "x"));
    expr.reset(CreateLinExpr(x.get(), 2));
    row = AddRow(*model, {x.get()}, {1}, 'L', 1, "r");
    vars->PushBack(x.get());
    env.reset();  // the model keeps the engine environment alive
    SolveOptimal(*model);
    EXPECT_NEAR(x->Get("Value"), 0, 1e-9);  // minimising x >= 0
  }
  EXPECT_EQ(x->GetIdx(), -2);
  EXPECT_EQ(x->Get("Value"), 1e30);
  EXPECT_EQ(Message(x->GetErrorMessage()), "(INVALID) Invalid variable");
  EXPECT_EQ(row->GetIdx(), -2);
  EXPECT_EQ(expr->GetSize(), 1);
  EXPECT_EQ(vars->Size(), 1);
}

}  // namespace
