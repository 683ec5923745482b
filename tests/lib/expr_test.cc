// Linear expressions: storage, scaling, removal, merging, printing and
// evaluation, at the ExprData level and through Zelq::IExpr.
#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <limits>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "frame/engine_index.h"
#include "model/zelq_model.h"
#include "scalar/expr_data.h"
#include "scalar/expr_handles.h"
#include "scalar/expr_merge.h"
#include "scalar/handles.h"
#include "scalar/zelq_expr.h"
#include "zelq/zelqcpp_exports.h"

namespace Zelq {
namespace {

using ExprPtr = std::unique_ptr<IExpr>;
using VarPtr = std::unique_ptr<IVar>;

// A variable at column `index` outside any model (enough for storage and merging).
Var ColumnVar(int32_t index) {
  ElementRef record = ElementRef::Wrap(new ElementRecord);
  record->index = index;
  return Var(record);
}

ExprData Terms(const std::vector<std::pair<Var, double>>& terms, double constant = 0) {
  ExprData e;
  for (const auto& [var, coeff] : terms) AppendTerm(e, var, coeff);
  e.constant = constant;
  return e;
}

// (index, coefficient) pairs in order.
std::vector<std::pair<int, double>> Pairs(const ExprData& e) {
  std::vector<std::pair<int, double>> out;
  for (size_t i = 0; i < e.vars.size(); ++i) out.emplace_back(e.vars[i].Index(), e.coeffs[i]);
  return out;
}
using P = std::vector<std::pair<int, double>>;

bool SameBits(double a, double b) { return std::memcmp(&a, &b, sizeof a) == 0; }

// A quiet model holding the textbook LP  max 3x + 5y  s.t.  x <= 4, 2y <= 12,
// 3x + 2y <= 18 (optimum at x = 2, y = 6). Columns are named by the engine
// only, so printing has to fetch the names.
class LpModel {
 public:
  LpModel() : env_(Shared<EnvBox>::Wrap(new EnvBox)) {
    EXPECT_EQ(Engine().CreateEnvWithPath(nullptr, &env_->env), 0);
    model_.reset(NewModel(env_, "m"));
    EXPECT_EQ(Engine().SetIntParam(Prob(), "Logging", 0), 0);
    EXPECT_EQ(Engine().SetObjSense(Prob(), ZELQ_MAXIMIZE), 0);
    const double obj[] = {3, 5}, val[] = {1, 2, 3, 2}, rhs[] = {4, 12, 18};
    const int beg[] = {0, 1, 2}, cnt[] = {1, 1, 2}, idx[] = {0, 1, 0, 1};
    const char* names[] = {"x", "y"};
    EXPECT_EQ(Engine().AddCols(Prob(), 2, obj, nullptr, nullptr, nullptr, nullptr, nullptr,
                               nullptr, nullptr, names),
              0);
    EXPECT_EQ(Engine().AddRows(Prob(), 3, beg, cnt, idx, val, "LLL", rhs, nullptr, nullptr), 0);
    x = Var(Data().Append(kVarKind));
    y = Var(Data().Append(kVarKind));
  }

  ZELQprob* Prob() const { return static_cast<ZelqModel*>(model_.get())->Prob(); }
  ModelData& Data() const { return static_cast<ZelqModel*>(model_.get())->Data(); }
  void Solve() { ASSERT_EQ(Engine().Solve(Prob()), 0); }

  Var x, y;

 private:
  Shared<EnvBox> env_;
  std::unique_ptr<IModel> model_;
};

TEST(ExprData, TermsCopyTheVariableCodeAndOnlyAFailureMessage) {
  Var failed = ColumnVar(0);
  SetError(failed.error, kErrorINVALID, "Invalid variable");
  Var copy = TermVar(failed);
  EXPECT_EQ(copy.record.Get(), failed.record.Get());
  EXPECT_EQ(copy.error.Code(), 3);
  EXPECT_STREQ(copy.error.Message(), "(INVALID) Invalid variable");

  Var recovered = ColumnVar(1);
  SetError(recovered.error, kErrorINVALID, "old");
  ClearError(recovered.error);  // code 0, stale text
  Var clean = TermVar(recovered);
  EXPECT_EQ(clean.error.Code(), 0);
  EXPECT_EQ(clean.error.Message(), nullptr);

  Var from_null = TermVar(static_cast<const IVar*>(nullptr));
  EXPECT_EQ(from_null.Index(), -2);
  ASSERT_TRUE(from_null.record);
}

TEST(ExprData, BulkAppendsFollowTheGrowthRule) {
  std::vector<ElementRef> five;
  for (int k = 0; k < 5; ++k) five.push_back(ColumnVar(k).record);
  ExprData e;
  EXPECT_EQ(AppendTerms(e, five, 1.0), 5);
  EXPECT_EQ(e.vars.capacity(), 5u);  // 0 + 5 >= 2 * 0: reserve 0 + 5
  EXPECT_EQ(e.coeffs.capacity(), 5u);

  std::vector<ElementRef> three(five.begin(), five.begin() + 3);
  const double c3[] = {7, 8, 9};
  EXPECT_EQ(AppendTerms(e, three, c3), 3);
  EXPECT_EQ(e.vars.capacity(), 10u);  // 8 < 10: the array's own doubling, not 8

  std::vector<ElementRef> twelve(12, five[0]);
  EXPECT_EQ(AppendTerms(e, twelve, 2.0), 12);
  EXPECT_EQ(e.vars.capacity(), 22u);  // 8 + 12 >= 2 * 10: reserve 10 + 12
  EXPECT_EQ(e.coeffs.capacity(), 22u);
  ASSERT_EQ(e.vars.size(), 20u);
  EXPECT_EQ(e.coeffs[5], 7);
  EXPECT_EQ(e.coeffs[7], 9);
  EXPECT_EQ(e.vars[7].Index(), 2);

  ExprData single;
  AppendTerm(single, ColumnVar(0), 1);
  EXPECT_EQ(single.vars.capacity(), 1u);  // single appends never pre-reserve
}

TEST(ExprData, AddScaledExprMultiplierRules) {
  Var x = ColumnVar(0), y = ColumnVar(1);
  ExprData other = Terms({{x, 0.0}, {y, 2.5}}, 4);

  ExprData e = Terms({{x, 1}}, 1);
  AddScaledExpr(e, other, 0.0);
  EXPECT_EQ(Pairs(e), (P{{0, 1}}));
  EXPECT_EQ(e.constant, 1);  // not even the constant

  AddScaledExpr(e, other, -1.0);
  EXPECT_EQ(Pairs(e), (P{{0, 1}, {0, 0.0}, {1, -2.5}}));
  EXPECT_FALSE(std::signbit(e.coeffs[1]));  // 0.0 - 0.0 is +0, unlike -1 * 0.0
  EXPECT_EQ(e.constant, -3);

  AddScaledExpr(e, other, 2.0);
  EXPECT_EQ(Pairs(e), (P{{0, 1}, {0, 0.0}, {1, -2.5}, {0, 0.0}, {1, 5}}));
  EXPECT_EQ(e.constant, 5);

  ExprData self = Terms({{x, 1}, {y, 2}}, 3);
  AddScaledExpr(self, self, 1.0);  // its initial two terms, once
  EXPECT_EQ(Pairs(self), (P{{0, 1}, {1, 2}, {0, 1}, {1, 2}}));
  EXPECT_EQ(self.constant, 6);
}

TEST(ExprData, ScalingIsExactAndDivisionByZeroIsRecorded) {
  Var x = ColumnVar(0);
  const double third = 1.0 / 3.0;
  ExprData e = Terms({{x, 0.1}, {x, third}}, third);
  ExprData before = CloneExpr(e);
  MultiplyExpr(e, 1.0);
  DivideExpr(e, 1.0);
  for (size_t i = 0; i < 2; ++i) EXPECT_TRUE(SameBits(e.coeffs[i], before.coeffs[i]));
  EXPECT_TRUE(SameBits(e.constant, before.constant));

  for (double zero : {0.0, -0.0}) {
    ExprData d = Terms({{x, 5}}, 7);
    DivideExpr(d, zero);
    EXPECT_EQ(d.error.Code(), 3);
    EXPECT_STREQ(d.error.Message(), "(INVALID) Linear expression is divided by zero");
    EXPECT_EQ(Pairs(d), (P{{0, 5}}));
    EXPECT_EQ(d.constant, 7);
    EXPECT_EQ(EvaluateExpr(d), 1e30);  // sticky, even before reading any value
    ClearExpr(d);
    EXPECT_EQ(d.error.Code(), 3);  // Clear keeps the record
    EXPECT_EQ(EvaluateExpr(d), 1e30);
  }

  ExprData t = Terms({{x, 5}}, 7);
  DivideExpr(t, 3.0);
  EXPECT_EQ(t.coeffs[0], 5.0 / 3.0);  // true division: 5 * (1/3) differs in the last bit
  EXPECT_NE(t.coeffs[0], 5.0 * (1.0 / 3.0));
  EXPECT_EQ(t.constant, 7.0 / 3.0);
  MultiplyExpr(t, -3.0);
  EXPECT_EQ(t.coeffs[0], 5.0 / 3.0 * -3.0);
  MultiplyExpr(t, 0.0);
  EXPECT_TRUE(t.vars.empty());
  EXPECT_TRUE(t.coeffs.empty());
  EXPECT_EQ(t.constant, 0.0);
}

TEST(ExprData, RemovalSwapsTheLastTermIn) {
  Var x = ColumnVar(0), y = ColumnVar(1), z = ColumnVar(2);
  ExprData e = Terms({{x, 1}, {y, 2}, {x, 3}});
  RemoveTermAt(e, 0);
  EXPECT_EQ(Pairs(e), (P{{0, 3}, {1, 2}}));
  RemoveTermAt(e, 2);  // out of range
  RemoveTermAt(e, static_cast<size_t>(-1));
  EXPECT_EQ(Pairs(e), (P{{0, 3}, {1, 2}}));
  RemoveTermAt(e, 1);  // the last one: just dropped
  EXPECT_EQ(Pairs(e), (P{{0, 3}}));

  ExprData v = Terms({{x, 1}, {y, 2}, {x, 3}, {x, 4}, {z, 5}});
  SetError(v.vars[4].error, 3, "z's own error");
  RemoveVarTerms(v, 0);
  EXPECT_EQ(Pairs(v), (P{{2, 5}, {1, 2}}));
  EXPECT_STREQ(v.vars[0].error.Message(), "(INVALID) z's own error");  // moved with its term
  RemoveVarTerms(v, -3);  // a removed variable: nothing
  EXPECT_EQ(v.vars.size(), 2u);
}

TEST(ExprMerge, DenseSumsNonZeroTermsAndResetsFlags) {
  Var x = ColumnVar(0), y = ColumnVar(1), z = ColumnVar(2), gone = ColumnVar(-5);
  std::vector<double> values;
  std::vector<uint8_t> flags;

  ExprData e = Terms({{x, 1}, {y, 2}, {x, 3}});
  MergeDense(e, values, flags);
  EXPECT_EQ(Pairs(e), (P{{0, 4}, {1, 2}}));

  // x - x stays as 0; a variable with only 0 coefficients and a detached one go.
  ExprData c = Terms({{x, 1}, {z, 0}, {gone, 7}, {y, 2}, {x, -1}, {z, 0}});
  MergeDense(c, values, flags);
  EXPECT_EQ(Pairs(c), (P{{0, 0}, {1, 2}}));
  EXPECT_EQ(flags, std::vector<uint8_t>(flags.size(), 0));

  // A zero first occurrence takes the sum of the later non-zero ones.
  ExprData z0 = Terms({{y, 0}, {x, 1}, {y, 2}});
  MergeDense(z0, values, flags);
  EXPECT_EQ(Pairs(z0), (P{{1, 2}, {0, 1}}));

  ExprData nan = Terms({{x, std::numeric_limits<double>::quiet_NaN()}});
  MergeDense(nan, values, flags);
  ASSERT_EQ(nan.vars.size(), 1u);  // NaN counts as non-zero
  EXPECT_TRUE(std::isnan(nan.coeffs[0]));

  // Columns beyond the buffers, with and without a non-zero coefficient.
  std::vector<double> small_values(1);
  std::vector<uint8_t> small_flags(1, 0);
  ExprData far = Terms({{ColumnVar(40), 1}, {ColumnVar(90), 0}, {ColumnVar(40), 2}});
  MergeDense(far, small_values, small_flags);
  EXPECT_EQ(Pairs(far), (P{{40, 3}}));
  EXPECT_EQ(small_flags, std::vector<uint8_t>(small_flags.size(), 0));
}

TEST(ExprMerge, SparseKeepsZeroTermsAndDropsDetached) {
  Var x = ColumnVar(0), y = ColumnVar(1), z = ColumnVar(2);
  ExprData e = Terms({{x, 1}, {y, 2}, {x, 3}, {z, 4}});
  MergeSparse(e);
  EXPECT_EQ(Pairs(e), (P{{0, 4}, {1, 2}, {2, 4}}));

  ExprData c = Terms({{z, 0}, {x, 1}, {ColumnVar(-2), 5}, {x, -1}});
  MergeSparse(c);
  EXPECT_EQ(Pairs(c), (P{{2, 0}, {0, 0}}));
}

TEST(ExprMerge, StrategyFollowsColumnsPerTerm) {
  Var x = ColumnVar(0), y = ColumnVar(1);
  std::vector<double> values;
  std::vector<uint8_t> flags;
  // Two terms: 199 / 2 = 99 is dense (drops the 0 term), 200 / 2 = 100 sparse.
  ExprData dense = Terms({{x, 1}, {y, 0}});
  MergeTerms(dense, 199, values, flags);
  EXPECT_EQ(Pairs(dense), (P{{0, 1}}));
  EXPECT_EQ(values.size(), 199u);
  EXPECT_EQ(flags, std::vector<uint8_t>(199, 0));

  std::vector<double> untouched_values;
  std::vector<uint8_t> untouched_flags;
  ExprData sparse = Terms({{x, 1}, {y, 0}});
  MergeTerms(sparse, 200, untouched_values, untouched_flags);
  EXPECT_EQ(Pairs(sparse), (P{{0, 1}, {1, 0}}));
  EXPECT_TRUE(untouched_values.empty());  // a short row never touches the buffers

  ExprData empty;
  MergeTerms(empty, 5, untouched_values, untouched_flags);
  EXPECT_TRUE(untouched_flags.empty());
}

TEST(Expr, ValuesThroughTheInterface) {
  ExprPtr e(CreateExpr(2.5));
  EXPECT_EQ(e->GetSize(), 0);
  EXPECT_EQ(e->GetConstant(), 2.5);
  EXPECT_EQ(e->GetErrorCode(), 0);
  EXPECT_EQ(e->GetErrorMessage(), nullptr);
  e->AddConstant(1);
  e->SetConstant(e->GetConstant() * 2);
  EXPECT_EQ(e->GetConstant(), 7);

  ExprData* data = ExprOf(e.get());
  ASSERT_NE(data, nullptr);
  EXPECT_EQ(ExprOf(nullptr), nullptr);
  AppendTerm(*data, ColumnVar(4), 1.5);
  EXPECT_EQ(e->GetSize(), 1);
  e->SetCoeff(0, -2);
  EXPECT_EQ(e->GetCoeff(0), -2);
  EXPECT_EQ(VarPtr(e->GetVar(0))->GetIdx(), 4);
  // Out-of-range term indices read 0 / an invalid variable and write nothing.
  e->SetCoeff(1, 9);
  e->SetCoeff(-1, 9);
  EXPECT_EQ(e->GetCoeff(1), 0);
  EXPECT_EQ(VarPtr(e->GetVar(-1))->GetIdx(), -2);
  EXPECT_EQ(e->GetSize(), 1);

  ExprPtr shared(NewExprSharing(static_cast<ZelqExpr*>(e.get())->Storage()));
  shared->AddConstant(1);
  EXPECT_EQ(e->GetConstant(), 8);

  ExprPtr null_term(CreateLinExpr(nullptr, 2));
  ASSERT_EQ(null_term->GetSize(), 1);
  EXPECT_EQ(VarPtr(null_term->GetVar(0))->GetIdx(), -2);
  EXPECT_EQ(null_term->GetCoeff(0), 2);

  try {
    e->Reserve(-1);
    ADD_FAILURE() << "no exception";
  } catch (const std::length_error& error) {
    EXPECT_STREQ(error.what(), "vector::reserve");
  }
  EXPECT_EQ(e->GetSize(), 1);
  e->Reserve(40);
  EXPECT_GE(data->coeffs.capacity(), 40u);
  EXPECT_GE(data->vars.capacity(), 40u);
}

TEST(Expr, AddTermsLengthChecks) {
  std::vector<ElementRef> records = {ColumnVar(0).record, ColumnVar(1).record,
                                     ColumnVar(2).record};
  std::unique_ptr<IVarArray> array(NewVarArray(records));
  VarPtr a(NewVarHandle(ColumnVar(5))), b(NewVarHandle(ColumnVar(6)));
  std::vector<IVar*> handles = {a.get(), nullptr, b.get()};
  const double coeffs[] = {1, 2, 3};

  ExprPtr e(CreateExpr(0));
  EXPECT_EQ(e->AddTerms(array.get(), nullptr, 3), -1);
  EXPECT_EQ(e->AddTerms(array.get(), coeffs, 2), -1);
  EXPECT_EQ(e->AddTerms(handles, nullptr, 3), -1);
  EXPECT_EQ(e->AddTerms(handles, coeffs, 2), -1);
  EXPECT_EQ(e->AddTerms(std::vector<IVar*>{}, coeffs, -1), -1);
  EXPECT_EQ(e->GetSize(), 0);
  EXPECT_EQ(e->GetErrorCode(), 0);  // nothing recorded

  EXPECT_EQ(e->AddTerms(array.get(), coeffs, 3), 3);
  EXPECT_EQ(e->AddTerms(handles, coeffs, 5), 3);  // a longer length is fine
  EXPECT_EQ(e->AddTerms(array.get(), 0.5), 3);
  EXPECT_EQ(e->AddTerms(handles, -1.0), 3);
  EXPECT_EQ(e->AddTerms(static_cast<const IVarArray*>(nullptr), 1.0), 0);
  ExprData& d = *ExprOf(e.get());
  EXPECT_EQ(Pairs(d), (P{{0, 1}, {1, 2}, {2, 3}, {5, 1}, {-2, 2}, {6, 3},
                         {0, 0.5}, {1, 0.5}, {2, 0.5}, {5, -1}, {-2, -1}, {6, -1}}));

  e->AddTerm(a.get(), 0);  // coefficient 0 is stored
  e->AddTerm(nullptr, 4);
  EXPECT_EQ(e->GetSize(), 14);
  e->Remove(a.get());
  EXPECT_EQ(e->GetSize(), 11);
  e->Remove(static_cast<const IVar*>(nullptr));
  e->Remove(-1);
  e->Remove(11);
  EXPECT_EQ(e->GetSize(), 11);
}

TEST(Expr, AddExprCloneAndClear) {
  VarPtr x(NewVarHandle(ColumnVar(0)));
  ExprPtr e(CreateLinExpr(x.get(), 2));
  e->AddConstant(1);
  e->AddExpr(e.get(), 1.0);
  EXPECT_EQ(Pairs(*ExprOf(e.get())), (P{{0, 2}, {0, 2}}));
  EXPECT_EQ(e->GetConstant(), 2);
  e->AddExpr(nullptr, 3);
  EXPECT_EQ(e->GetSize(), 2);

  e->iDivide(0.0);
  ExprPtr copy(e->Clone());
  EXPECT_EQ(copy->GetErrorCode(), 0);  // the copy starts with an empty record
  EXPECT_EQ(copy->GetErrorMessage(), nullptr);
  EXPECT_EQ(Pairs(*ExprOf(copy.get())), (P{{0, 2}, {0, 2}}));
  EXPECT_EQ(copy->GetConstant(), 2);
  copy->iMultiply(3);
  EXPECT_EQ(e->GetCoeff(0), 2);  // independent data

  e->Clear();
  EXPECT_EQ(e->GetSize(), 0);
  EXPECT_EQ(e->GetConstant(), 0);
  EXPECT_EQ(e->GetErrorCode(), 3);
  EXPECT_STREQ(e->GetErrorMessage(), "(INVALID) Linear expression is divided by zero");
  EXPECT_EQ(copy->GetCoeff(1), 6);
}

TEST(ExprPrint, TermsSignsAndConstants) {
  LpModel m;
  auto print = [](ExprData e, size_t width = 512) { return PrintExpr(e, width); };
  EXPECT_EQ(print(Terms({})), "0");
  EXPECT_EQ(print(Terms({}, 2.5)), "2.5");
  EXPECT_EQ(print(Terms({}, 1e30)), "1e+30");
  EXPECT_EQ(print(Terms({{m.x, -1}})), " - x");
  EXPECT_EQ(print(Terms({{m.x, 1}})), "x");
  EXPECT_EQ(print(Terms({{m.x, 2}})), "2 * x");
  EXPECT_EQ(print(Terms({{m.x, 1}, {m.y, -2.5}})), "x - 2.5 * y");
  EXPECT_EQ(print(Terms({{m.x, 1}, {m.y, -2.5}}, 3)), "3 + x - 2.5 * y");
  EXPECT_EQ(print(Terms({{m.x, 1.0 / 3}}, -4)), "-4 + 0.333333 * x");
  EXPECT_EQ(print(Terms({{m.x, 0}, {m.y, 1}})), "y");  // coefficient 0 is not printed

  // Width 7 shows no position; width 8 one position (skipped ones count).
  EXPECT_EQ(print(Terms({{m.x, 1}, {m.y, 1}}, 3), 7), "3 ... ");
  EXPECT_EQ(print(Terms({{m.x, 1}}), 7), " ... ");
  EXPECT_EQ(print(Terms({{m.x, 1}, {m.y, 1}}), 8), "x ... ");
  EXPECT_EQ(print(Terms({{m.x, 0}, {m.y, 1}}), 8), " ... ");
  EXPECT_EQ(print(Terms({{m.x, 1}}), 8), "x");

  ExprData seventy, sixty_four;
  std::string first_64 = "x";
  for (int i = 1; i < 64; ++i) first_64 += " + x";
  for (int i = 0; i < 70; ++i) AppendTerm(seventy, m.x, 1);
  for (int i = 0; i < 64; ++i) AppendTerm(sixty_four, m.x, 1);
  EXPECT_EQ(PrintExpr(seventy, 512), first_64 + " ... ");
  EXPECT_EQ(PrintExpr(sixty_four, 519), first_64);

  // A removed variable is not printed; the others still are.
  ExprData e = Terms({{m.x, 2}, {m.y, 3}});
  m.y.record->index = RemovedIndex(1);
  EXPECT_EQ(PrintExpr(e, 512), "2 * x");
}

TEST(ExprPrint, ThroughTheInterface) {
  LpModel m;
  VarPtr x(NewVarHandle(m.x)), y(NewVarHandle(m.y));
  ExprPtr e(CreateLinExpr(x.get(), 1));
  e->AddTerm(y.get(), -2.5);
  {
    // A name that cannot be fetched ends the text where the name would be.
    EngineOverride fail(&EngineIndex::GetColName,
                        [](ZELQprob*, int, char*, int, int*) { return 5; });
    e->SetConstant(3);
    EXPECT_STREQ(e->GetString(512), "3 + ");
    e->SetCoeff(0, -2);
    EXPECT_STREQ(e->GetString(512), "3 - 2 * ");
    e->SetCoeff(0, 1);
    e->SetConstant(0);
  }
  const char* text = e->GetString(512);
  EXPECT_STREQ(text, "x - 2.5 * y");
  e->SetConstant(3);
  EXPECT_STREQ(e->GetString(16), "3 + x - 2.5 * y");
  EXPECT_STREQ(e->GetString(8), "3 + x ... ");
}

TEST(ExprEvaluate, SolutionValuesAndStickyFailures) {
  LpModel m;
  m.Solve();
  VarPtr x(NewVarHandle(m.x)), y(NewVarHandle(m.y));
  ExprPtr e(CreateLinExpr(x.get(), 3));
  e->AddTerm(y.get(), 5);
  e->AddConstant(1);
  EXPECT_NEAR(e->Evaluate(), 37, 1e-9);  // 3 * 2 + 5 * 6 + 1
  EXPECT_EQ(e->GetErrorCode(), 0);

  ExprPtr half(e->Clone());
  half->iDivide(2);
  EXPECT_NEAR(half->Evaluate(), 18.5, 1e-9);
  half->iDivide(-0.0);
  EXPECT_EQ(half->Evaluate(), 1e30);
  EXPECT_EQ(half->GetCoeff(0), 1.5);  // unchanged by the failed division

  // A variable that is not in a model: its "Invalid variable" is taken over.
  ExprPtr detached(CreateLinExpr(nullptr, 1));
  EXPECT_EQ(detached->Evaluate(), 1e30);
  EXPECT_EQ(detached->GetErrorCode(), 3);
  EXPECT_STREQ(detached->GetErrorMessage(), "(INVALID) Invalid variable");

  // An engine failure reading a value: its code and message, then sticky.
  {
    EngineOverride fail(&EngineIndex::GetColInfo,
                        [](ZELQprob*, const char*, int, const int*, double*) { return 5; });
    EXPECT_EQ(e->Evaluate(), 1e30);
  }
  EXPECT_EQ(e->GetErrorCode(), 5);
  EXPECT_STREQ(e->GetErrorMessage(), "(INTERNAL) Fail to get variable information");
  EXPECT_EQ(e->Evaluate(), 1e30);  // the engine works again, the failure stays
  EXPECT_EQ(e->GetSize(), 2);
}

}  // namespace
}  // namespace Zelq
