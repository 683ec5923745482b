// Solving and reading results through the model: flushing rules, argument
// checks with their exact messages, engine failures, packed list output, and
// a real LP and MIP checked against their known optima.
#include <gtest/gtest.h>

#include <initializer_list>
#include <memory>
#include <string>
#include <vector>

#include "frame/engine_index.h"
#include "matrix/zelq_ndarray.h"
#include "model/zelq_model.h"
#include "scalar/handles.h"

namespace Zelq {
namespace {

constexpr int kFail = 7;  // a code the library never makes itself: "(SERVER) "
int g_calls = 0;
// Engine replacements of any signature: one fails, one counts its calls and succeeds.
constexpr auto kFailing = [](auto...) { return kFail; };
constexpr auto kCounting = [](auto...) { return ++g_calls, 0; };

// The arguments of the last list call (start or setter).
std::vector<int> g_indices;
std::vector<double> g_values;
int CaptureList(ZELQprob*, int n, const int* list, const double* values) {
  ++g_calls;
  g_indices.assign(list, list + n);
  g_values.assign(values, values + n);
  return 0;
}

// The textbook LP  max 3x + 5y  s.t.  x <= 4, 2y <= 12, 3x + 2y <= 18, built
// in the engine with one record per element: optimum 36 at (2, 6).
class ModelSolveTest : public ::testing::Test {
 protected:
  void SetUp() override {
    g_calls = 0;
    env_ = Shared<EnvBox>::Wrap(new EnvBox);
    ASSERT_EQ(Engine().CreateEnvWithPath(nullptr, &env_->env), 0);
    model_.reset(static_cast<ZelqModel*>(NewModel(env_, "m")));
    ZELQprob* prob = model_->Prob();
    ASSERT_EQ(Engine().SetIntParam(prob, "Logging", 0), 0);
    ASSERT_EQ(Engine().SetObjSense(prob, ZELQ_MAXIMIZE), 0);
    const double obj[] = {3, 5}, val[] = {1, 2, 3, 2}, rhs[] = {4, 12, 18};
    const int beg[] = {0, 1, 2}, cnt[] = {1, 1, 2}, idx[] = {0, 1, 0, 1};
    ASSERT_EQ(Engine().AddCols(prob, 2, obj, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                               nullptr, nullptr),
              0);
    ASSERT_EQ(Engine().AddRows(prob, 3, beg, cnt, idx, val, "LLL", rhs, nullptr, nullptr), 0);
    for (int k = 0; k < 2; ++k) x_.push_back(model_->Data().Append(kVarKind));
    for (int k = 0; k < 3; ++k) rows_.push_back(model_->Data().Append(kConstrKind));
  }

  std::unique_ptr<IVarArray> Vars(std::initializer_list<int> which) const {
    std::vector<ElementRef> refs;
    for (int k : which) refs.push_back(x_[k]);
    return std::unique_ptr<IVarArray>(NewVarArray(std::move(refs)));
  }
  std::unique_ptr<IConstrArray> Rows(std::initializer_list<int> which) const {
    std::vector<ElementRef> refs;
    for (int k : which) refs.push_back(rows_[k]);
    return std::unique_ptr<IConstrArray>(NewConstrArray(std::move(refs)));
  }
  std::unique_ptr<IVar> Handle(int k) const {
    return std::unique_ptr<IVar>(NewVarHandle(Var(x_[k])));
  }
  void Remove(const ElementRef& ref) {
    ref->index = RemovedIndex(ref->index);
    model_->Data().update_flag = 1;
  }
  void ExpectError(int code, const std::string& message) const {
    EXPECT_EQ(model_->GetErrorCode(), code);
    const char* text = model_->GetErrorMessage();
    EXPECT_EQ(text != nullptr ? text : "", message);
  }
  double ColInfo(const char* name, int col) const {
    double value = 0;
    EXPECT_EQ(Engine().GetColInfo(model_->Prob(), name, 1, &col, &value), 0);
    return value;
  }
  // Runs `op` with one engine entry failing and checks the recorded message.
  template <class Fn, class Op>
  void ExpectFails(Fn EngineIndex::*entry, const std::string& message, Op op) {
    EngineOverride<Fn> fail(entry, kFailing);
    op();
    ExpectError(kFail, "(SERVER) " + message);
  }

  Shared<EnvBox> env_;
  std::unique_ptr<ZelqModel> model_;
  std::vector<ElementRef> x_, rows_;
};

std::unique_ptr<ZelqNdArray<double, 1>> Array(std::initializer_list<double> values) {
  NdArray<double, 1> array = NdArray<double, 1>::Allocate({values.size()});
  std::copy(values.begin(), values.end(), array.Data().Get());
  return std::make_unique<ZelqNdArray<double, 1>>(std::move(array));
}

TEST_F(ModelSolveTest, RealLpResultsAndBasisSolves) {
  model_->Solve();
  ASSERT_EQ(model_->GetErrorCode(), 0);
  double x[2] = {}, dual[3] = {};
  model_->GetSolution(x);
  model_->GetLpSolution(nullptr, nullptr, dual, nullptr);
  EXPECT_NEAR(x[0], 2, 1e-9);
  EXPECT_NEAR(x[1], 6, 1e-9);
  EXPECT_NEAR(dual[1], 1.5, 1e-9);
  EXPECT_NEAR(dual[2], 1, 1e-9);
  int colBasis[2] = {}, rowBasis[3] = {};
  EXPECT_EQ(model_->GetColBasis(colBasis), 2);
  EXPECT_EQ(model_->GetRowBasis(rowBasis), 3);
  EXPECT_EQ(rowBasis[0], ZELQ_BASIS_BASIC);  // x <= 4 is slack at x = 2
  model_->SetBasis(colBasis, rowBasis);
  EXPECT_EQ(model_->GetErrorCode(), 0);

  int head[3] = {};
  model_->GetBasisHead(head, 3);  // a buffer of exactly the row count
  ASSERT_EQ(model_->GetErrorCode(), 0);
  std::unique_ptr<IntNdArray1> array(model_->GetBasisHead());
  ASSERT_EQ(array->GetSize(), 3u);
  for (int k = 0; k < 3; ++k) EXPECT_EQ(array->Item(k), head[k]);

  // B x = b and B'y = b, with basis column k the structural column head[k]
  // or the slack e_r of row r = head[k] - 2.
  const double a[3][2] = {{1, 0}, {0, 2}, {3, 2}};
  auto basis = [&](int i, int k) { return head[k] < 2 ? a[i][head[k]] : head[k] - 2 == i; };
  const double b[3] = {1, -2, 0.5};
  double fx[3] = {}, by[3] = {};
  int fx_nonzeros = 3, by_nonzeros = 3;  // buffer lengths in, non-zeros out
  model_->FSolve(b, fx, &fx_nonzeros);
  model_->BSolve(b, by, &by_nonzeros);
  ASSERT_EQ(model_->GetErrorCode(), 0);
  for (int i = 0; i < 3; ++i) {
    double bx = 0, bty = 0;
    for (int k = 0; k < 3; ++k) bx += basis(i, k) * fx[k], bty += basis(k, i) * by[k];
    EXPECT_NEAR(bx, b[i], 1e-9) << i;
    EXPECT_NEAR(bty, b[i], 1e-9) << i;
  }
  // The array forms agree; a strided output view is written through its
  // strides and the positions between them stay as they were.
  auto input = Array({1, -2, 0.5}), dense = Array({0, 0, 0});
  EXPECT_EQ(model_->FSolve(input.get(), dense.get(), 3), fx_nonzeros);
  for (int k = 0; k < 3; ++k) EXPECT_NEAR(dense->Item(k), fx[k], 1e-12);
  Shared<double> storage = Shared<double>::Make(new double[6]{9, 9, 9, 9, 9, 9}, 6, 1);
  NDim<1> every_other({3});
  every_other.SetAxis(0, 3, 2, 0);
  ZelqNdArray<double, 1> strided(NdArray<double, 1>(every_other, storage, 6));
  EXPECT_EQ(model_->BSolve(input.get(), &strided, 3), by_nonzeros);
  for (int k = 0; k < 3; ++k) {
    EXPECT_NEAR(storage.Get()[2 * k], by[k], 1e-12);
    EXPECT_EQ(storage.Get()[2 * k + 1], 9);
  }

  double low = 0, high = 0;  // 3x + 2y <= 18 keeps its dual for rhs in [12, 24]
  model_->ComputeShadowPriceRange(2, 1, &low, &high);
  EXPECT_NEAR(low, 12, 1e-7);
  EXPECT_NEAR(high, 24, 1e-7);
  model_->ComputeShadowPriceRange(7, 1, &low, &high);
  ExpectError(3, "(INVALID) Fail to compute shadow price range for row 7");
}

TEST_F(ModelSolveTest, BufferAndSizeChecksComeBeforeTheEngine) {
  EngineOverride count(&EngineIndex::GetBasisHead, kCounting);
  int head[3] = {};
  model_->GetBasisHead(head, 2);
  ExpectError(3, "(INVALID) Not enough buffer of size 2 (at least 3)");
  EXPECT_EQ(g_calls, 0);
  model_->GetBasisHead(head, 3);
  EXPECT_EQ(model_->GetErrorCode(), 0);
  EXPECT_EQ(g_calls, 1);

  // Array solves need 0 < n <= min(a, b), checked before the flush, so a
  // pending removal stays pending.
  auto three = Array({0, 0, 0}), two = Array({0, 0});
  Remove(x_[0]);
  EXPECT_EQ(model_->FSolve(three.get(), three.get(), 0), 0);
  ExpectError(3, "(INVALID) Invalid size of input values 3 and index size 3");
  EXPECT_EQ(model_->BSolve(three.get(), two.get(), 3), 0);
  ExpectError(3, "(INVALID) Invalid size of input values 3 and index size 2");
  EXPECT_EQ(model_->FSolve(nullptr, three.get(), 1), 0);
  ExpectError(3, "(INVALID) Invalid size of input values 0 and index size 3");
  EXPECT_EQ(model_->Data().update_flag, 1);
  // A valid count flushes; three rows do not fit an output of two.
  EXPECT_EQ(model_->FSolve(three.get(), two.get(), 2), 0);
  ExpectError(3, "(INVALID) Not enough buffer for output array (at least row size)");
  EXPECT_EQ(model_->Data().update_flag, 0);
}

TEST_F(ModelSolveTest, FailedFlushStopsEveryFlushingOperation) {
  model_->Solve();
  Remove(x_[0]);
  EngineOverride fail(&EngineIndex::DelCols, kFailing);
  EngineOverride solve(&EngineIndex::Solve, kCounting);
  const std::string flush = "(SERVER) Fail to del cols";
  model_->Solve();
  ExpectError(kFail, flush);
  EXPECT_EQ(g_calls, 0);
  EXPECT_EQ(model_->GetPoolObjVal(0), 1e30);
  int basis[3] = {};
  EXPECT_EQ(model_->GetColBasis(basis), -1);
  EXPECT_EQ(model_->GetRowBasis(basis), -1);
  auto three = Array({0, 0, 0});
  EXPECT_EQ(model_->BSolve(three.get(), three.get(), 3), 3);  // the count, untouched
  ExpectError(kFail, flush);
  // The array form of the basis head reports in the array, not the model.
  std::unique_ptr<IntNdArray1> head(model_->GetBasisHead());
  EXPECT_EQ(head->GetErrorCode(), 5);
  EXPECT_STREQ(head->GetErrorMessage(),
               "(INTERNAL) Fail to update problem before getting basis head");
  EXPECT_EQ(head->GetSize(), 0u);
  ExpectError(kFail, flush);
  // Nothing was deleted.
  EXPECT_EQ(model_->Data().Table(kVarKind).count, 2);
  EXPECT_EQ(x_[0]->index, -3);
}

TEST_F(ModelSolveTest, EngineFailuresAreRecordedWithEachOperationsMessage) {
  double d[3] = {};
  int i[3] = {}, len = 3;
  auto three = Array({0, 0, 0});
  auto v0 = Vars({0});
  auto r0 = Rows({0});
  using E = EngineIndex;
  ExpectFails(&E::Solve, "Fail to solve problem", [&] { model_->Solve(); });
  ExpectFails(&E::SolveLp, "Fail to solve as LP problem", [&] { model_->SolveLp(); });
  ExpectFails(&E::Update, "Fail to update problem", [&] { model_->Update(); });
  ExpectFails(&E::Interrupt, "Fail to interrupt solving", [&] { model_->Interrupt(); });
  ExpectFails(&E::GetSolution, "Failed to get MIP solution", [&] { model_->GetSolution(d); });
  ExpectFails(&E::GetLpSolution, "Fail to get LP solution",
              [&] { model_->GetLpSolution(nullptr, nullptr, d, nullptr); });
  ExpectFails(&E::SetLpSolution, "Fail to set LP solution",
              [&] { model_->SetLpSolution(d, d, d, d); });
  ExpectFails(&E::GetBasis, "Fail to get col basis",
              [&] { EXPECT_EQ(model_->GetColBasis(i), -1); });
  ExpectFails(&E::GetBasis, "Fail to get row basis",
              [&] { EXPECT_EQ(model_->GetRowBasis(i), -1); });
  ExpectFails(&E::SetBasis, "Fail to set basis", [&] { model_->SetBasis(i, i); });
  ExpectFails(&E::SetSlackBasis, "Fail to set slack basis", [&] { model_->SetSlackBasis(); });
  ExpectFails(&E::GetPoolObjVal, "Fail to get objective value from solution pool",
              [&] { EXPECT_EQ(model_->GetPoolObjVal(0), 1e30); });
  ExpectFails(&E::FSolve, "Fail to perform forward solve", [&] { model_->FSolve(d, d, &len); });
  ExpectFails(&E::BSolve, "Fail to perform backward solve", [&] { model_->BSolve(d, d, &len); });
  // Both array forms use the forward text.
  ExpectFails(&E::FSolve, "Fail to perform forward solve on ndarray",
              [&] { EXPECT_EQ(model_->FSolve(three.get(), three.get(), 3), 3); });
  ExpectFails(&E::BSolve, "Fail to perform forward solve on ndarray",
              [&] { EXPECT_EQ(model_->BSolve(three.get(), three.get(), 3), 3); });
  ExpectFails(&E::GetBasisHead, "Fail to retrieve basis head", [&] { model_->GetBasisHead(i, 3); });
  ExpectFails(&E::GetBasisHead, "Fail to retrieve basis head",
              [&] { delete model_->GetBasisHead(); });
  ExpectFails(&E::ComputeShadowPriceRange, "Fail to compute shadow price range for row 1",
              [&] { model_->ComputeShadowPriceRange(1, 0, d, d); });
  ExpectFails(&E::SetColLower, "Fail to set col LB",
              [&] { model_->SetColInfo("LB", v0.get(), d, 1); });
  ExpectFails(&E::SetColUpper, "Fail to set col UB",
              [&] { model_->SetColInfo("UB", v0.get(), d, 1); });
  ExpectFails(&E::SetColObj, "Fail to set col obj",
              [&] { model_->SetColInfo("Obj", v0.get(), d, 1); });
  ExpectFails(&E::SetColBranchFactors, "Fail to set branch factors of col",
              [&] { model_->SetColInfo("BranchFactor", v0.get(), d, 1); });
  ExpectFails(&E::SetRowLower, "Fail to set row LB",
              [&] { model_->SetRowInfo("LB", r0.get(), d, 1); });
  ExpectFails(&E::SetRowUpper, "Fail to set row UB",
              [&] { model_->SetRowInfo("UB", r0.get(), d, 1); });
  ExpectFails(&E::SetNLPrimalStart, "Fail to set NL primal start information",
              [&] { model_->SetNlPrimalStart(v0.get(), d); });
  ExpectFails(&E::AddMipStart, "Fail to add MIP start information", [&] {
    model_->SetMipStart(Handle(0).get(), 1);
    model_->AddMipStart();
  });
  EXPECT_EQ(ColInfo("LB", 0), 0);  // the failed setters changed nothing
}

TEST_F(ModelSolveTest, NullBuffersDoNothingAndKeepTheRecord) {
  EngineOverride get(&EngineIndex::GetLpSolution, kCounting);
  EngineOverride set(&EngineIndex::SetLpSolution, kCounting);
  double d[3] = {};
  model_->SetColInfo("", Vars({0}).get(), d, 1);  // leaves a failure in the record
  model_->GetLpSolution(nullptr, nullptr, nullptr, nullptr);
  model_->SetLpSolution(d, d, nullptr, d);
  model_->GetSolution(nullptr);
  EXPECT_EQ(g_calls, 0);
  ExpectError(3, "(INVALID) Empty information name of variables");
  EXPECT_EQ(model_->GetColBasis(nullptr), -1);  // the record still holds a failure
  model_->SetLpSolution(d, d, d, d);
  EXPECT_EQ(g_calls, 1);
  EXPECT_EQ(model_->GetColBasis(nullptr), 2);
  EXPECT_EQ(model_->GetRowBasis(nullptr), 3);
}

TEST_F(ModelSolveTest, SetInfoChecksInOrderAndSkipsRemovedElements) {
  const double two[2] = {10, 20};
  model_->SetColInfo(nullptr, Vars({0, 1}).get(), two, 2);
  ExpectError(3, "(INVALID) Empty information name of variables");
  model_->SetColInfo("UB", Vars({0, 1}).get(), nullptr, 2);
  ExpectError(3, "(INVALID) Invalid input values for variables");
  model_->SetColInfo("UB", Vars({0, 1, 0}).get(), two, 2);  // 3 handles, 2 values
  ExpectError(3, "(INVALID) Invalid input values for variables");
  model_->SetColInfo("lb", Vars({0}).get(), two, 1);  // names are case-sensitive
  ExpectError(3, "(INVALID) Unknown double information of variable");
  model_->SetRowInfo("", Rows({0}).get(), two, 1);
  ExpectError(3, "(INVALID) Empty information name of constraints");
  model_->SetRowInfo("LB", Rows({0, 1}).get(), two, 1);
  ExpectError(3, "(INVALID) Invalid input values for constraints");
  model_->SetRowInfo("Obj", Rows({0}).get(), two, 1);  // rows take only LB and UB
  ExpectError(3, "(INVALID) Unknown double information of constraint");

  Remove(x_[0]);  // its value is skipped with it: y alone gets 20
  model_->SetColInfo("UB", Vars({0, 1}).get(), two, 2);
  EXPECT_EQ(model_->GetErrorCode(), 0);
  EXPECT_EQ(ColInfo("UB", 0), 1e30);
  EXPECT_EQ(ColInfo("UB", 1), 20);
  // Nothing live: no effect even for an unknown name (the name and value
  // checks still come first).
  model_->SetColInfo("lb", Vars({0}).get(), two, 1);
  EXPECT_EQ(model_->GetErrorCode(), 0);
  model_->SetColInfo("", Vars({0}).get(), two, 1);
  ExpectError(3, "(INVALID) Empty information name of variables");

  model_->SetColInfo("BranchFactor", Vars({1}).get(), two, 1);
  EXPECT_EQ(ColInfo("BranchFactor", 1), 10);
  model_->SetRowInfo("UB", Rows({2}).get(), two + 1, 1);
  double row_ub = 0;
  EXPECT_EQ(model_->GetRowInfo("UB", Rows({2}).get(), &row_ub), 1);
  EXPECT_EQ(row_ub, 20);
}

TEST_F(ModelSolveTest, ListGettersPackTheirOutputAndCountLiveElements) {
  const double ub[2] = {7, 8};
  model_->SetColInfo("UB", Vars({0, 1}).get(), ub, 2);
  Remove(x_[0]);
  double out[3] = {-1, -1, -1};
  EXPECT_EQ(model_->GetColInfo("UB", Vars({0, 1, 0}).get(), out), 1);  // no flush
  EXPECT_EQ(out[0], 8);
  EXPECT_EQ(out[1], -1);
  EXPECT_EQ(model_->Data().update_flag, 1);
  EXPECT_EQ(model_->GetColInfo("NoSuchInfo", Vars({1}).get(), out), -1);
  ExpectError(3, "(INVALID) Fail to get col info");
  EXPECT_EQ(model_->GetRowInfo("Obj", Rows({0}).get(), out), -1);
  ExpectError(3, "(INVALID) Fail to get row info");
  EXPECT_EQ(model_->GetColInfo("UB", nullptr, out), 0);
  EXPECT_EQ(model_->GetErrorCode(), 0);
  // Pool and IIS getters return the filtered count even when the engine
  // fails (no pool yet; this engine has no IIS status: code 10).
  EXPECT_EQ(model_->GetPoolSolution(0, Vars({0, 1}).get(), out), 1);
  ExpectError(3, "(INVALID) Fail to get solution values from solution pool");
  int status[3] = {};
  EXPECT_EQ(model_->GetColLowerIIS(Vars({0, 1}).get(), status), 1);
  EXPECT_EQ(model_->GetColUpperIIS(Vars({1, 1}).get(), status), 2);
  ExpectError(10, "(UNKNOWN) Fail to get IIS status of variables");
  rows_[1]->index = RemovedIndex(1);
  EXPECT_EQ(model_->GetRowLowerIIS(Rows({0, 1, 2}).get(), status), 2);
  EXPECT_EQ(model_->GetRowUpperIIS(Rows({1}).get(), status), 0);
  ExpectError(10, "(UNKNOWN) Fail to get IIS status of constraints");
}

TEST_F(ModelSolveTest, MipStartsAndPool) {
  const char types[2] = {'I', 'I'};
  const int cols[2] = {0, 1};
  ASSERT_EQ(Engine().SetColType(model_->Prob(), 2, cols, types), 0);
  auto x = Handle(0), y = Handle(1);
  model_->SetMipStart(nullptr, 1);
  ExpectError(3, "(INVALID) Invalid variable");
  std::unique_ptr<IModel> other(NewModel(env_, "other"));
  std::unique_ptr<IVar> stranger(
      NewVarHandle(Var(static_cast<ZelqModel*>(other.get())->Data().Append(kVarKind))));
  model_->SetMipStart(stranger.get(), 1);
  ExpectError(3, "(INVALID) Invalid variable");

  model_->SetMipStart(y.get(), 5);
  model_->SetMipStart(x.get(), 1);
  model_->SetMipStart(y.get(), 6);  // replaces 5
  EXPECT_EQ(model_->GetErrorCode(), 0);
  {
    EngineOverride capture(&EngineIndex::AddMipStart, &CaptureList);
    model_->AddMipStart();
    model_->AddMipStart();  // the map was emptied: no second call
    EXPECT_EQ(g_calls, 1);
    EXPECT_EQ(g_indices, (std::vector<int>{0, 1}));
    EXPECT_EQ(g_values, (std::vector<double>{1, 6}));
    // A start on an element removed afterwards is dropped.
    model_->SetMipStart(x.get(), 2);
    model_->SetMipStart(y.get(), 6);
    Remove(x_[0]);
    model_->SetMipStart(x.get(), 3);
    ExpectError(3, "(INVALID) Invalid variable");
    model_->AddMipStart();
    EXPECT_EQ(g_indices, (std::vector<int>{0}));  // y, renumbered by the flush
    EXPECT_EQ(g_values, (std::vector<double>{6}));
  }
  // The real engine: max 5y with 2y <= 12 -> 30.
  model_->SetMipStart(y.get(), 6);
  model_->AddMipStart();
  model_->Solve();
  ASSERT_EQ(model_->GetErrorCode(), 0);
  EXPECT_NEAR(model_->GetPoolObjVal(0), 30, 1e-9);
  double value = 0;
  EXPECT_EQ(model_->GetPoolSolution(0, Vars({0, 1}).get(), &value), 1);
  EXPECT_NEAR(value, 6, 1e-9);
}

TEST_F(ModelSolveTest, NonlinearStartsPairLiveElementsAfterTheFlush) {
  double values[2] = {1, 2};
  Remove(x_[0]);
  {
    EngineOverride capture(&EngineIndex::SetNLPrimalStart, &CaptureList);
    model_->SetNlPrimalStart(Vars({0, 1}).get(), values);
    EXPECT_EQ(g_indices, (std::vector<int>{0}));  // y after the flush
    EXPECT_EQ(g_values, (std::vector<double>{2}));
    model_->SetNlPrimalStart(Handle(1).get(), 4.5);
    EXPECT_EQ(g_values, (std::vector<double>{4.5}));
    // Nothing live, an empty list or a null handle: no engine call.
    model_->SetNlPrimalStart(Vars({0}).get(), values);
    model_->SetNlPrimalStart(Vars({}).get(), nullptr);
    model_->SetNlPrimalStart(nullptr, 1.0);
    EXPECT_EQ(g_calls, 2);
    EXPECT_EQ(model_->GetErrorCode(), 0);
    model_->SetNlPrimalStart(Vars({1}).get(), nullptr);
    ExpectError(3, "(INVALID) Invalid input values for variables");
    EXPECT_EQ(g_calls, 2);
  }
  model_->SetNlPrimalStart(Vars({1}).get(), values);  // unsupported by this engine
  ExpectError(10, "(UNKNOWN) Fail to set NL primal start information");
}

TEST_F(ModelSolveTest, InterruptNeverFlushesAndUpdateDoes) {
  Remove(x_[0]);
  model_->Interrupt();  // idle: harmless
  EXPECT_EQ(model_->GetErrorCode(), 0);
  EXPECT_EQ(model_->Data().update_flag, 1);
  model_->Update();
  EXPECT_EQ(model_->GetErrorCode(), 0);
  EXPECT_EQ(model_->Data().update_flag, 0);
  EXPECT_EQ(x_[1]->index, 0);  // renumbered: x was deleted
}

// Lists of kinds whose handles come later read as empty; the engine still
// answers for the family, and each operation records with its own message.
TEST_F(ModelSolveTest, ListOperationsOfLaterKindsCheckAndReportLikeTheirTwins) {
  const double one[1] = {1};
  double out[1] = {0};
  int status[1] = {0};
  model_->SetNlConstrInfo("", nullptr, one, 1);
  ExpectError(3, "(INVALID) Empty information name of nonlinear constraints");
  model_->SetNlConstrInfo("LB", nullptr, nullptr, 0);
  ExpectError(3, "(INVALID) Invalid input values for nonlinear constraints");
  model_->SetPsdConstrInfo(nullptr, nullptr, one, 1);
  ExpectError(3, "(INVALID) Empty information name of PSD constraints");
  model_->SetPsdConstrInfo("UB", nullptr, nullptr, 0);
  ExpectError(3, "(INVALID) Invalid input values for PSD constraints");
  model_->SetPsdConstrInfo("UB", nullptr, one, 1);  // nothing live: no call, record untouched
  ExpectError(3, "(INVALID) Invalid input values for PSD constraints");

  EXPECT_EQ(model_->GetNlConstrInfo("Slack", nullptr, out), -1);
  ExpectError(ZELQ_RETCODE_NOTSUPPORTED, "(UNKNOWN) Fail to get nonlinear constraint info of 'Slack'");
  EXPECT_EQ(model_->GetQConstrInfo("Slack", nullptr, out), -1);
  ExpectError(ZELQ_RETCODE_NOTSUPPORTED, "(UNKNOWN) Fail to get quadratic constraint info");
  EXPECT_EQ(model_->GetPsdConstrInfo("Slack", nullptr, out), -1);
  ExpectError(ZELQ_RETCODE_NOTSUPPORTED, "(UNKNOWN) Fail to get info of PSD constraints");
  EXPECT_EQ(model_->GetSOSIIS(nullptr, status), 0);
  ExpectError(ZELQ_RETCODE_NOTSUPPORTED, "(UNKNOWN) Fail to get IIS status of SOS constraints");
  EXPECT_EQ(model_->GetIndicatorIIS(nullptr, status), 0);
  ExpectError(ZELQ_RETCODE_NOTSUPPORTED,
              "(UNKNOWN) Fail to get IIS status of indicator constraints");
}

}  // namespace
}  // namespace Zelq
