// The header layer's expressions and operators, as an application uses them:
// terms, coefficients and constants of operator results, temporaries reused
// and named expressions left alone, pending constraints, and what must not
// compile.
#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <thread>
#include <type_traits>
#include <utility>
#include <vector>

#include "zelq/zelqcpp.h"

#include "thrown.h"

namespace {

using Zelq::Expr;
using Zelq::LinTerm;
using Zelq::TempConstr;
using Zelq::Var;

using zelq_test::Thrown;

Zelq::Envr QuietEnvr() {
  Zelq::EnvrConfig config;
  config.Set("Banner", "0");
  config.Set("Logging", "0");
  return Zelq::Envr(config);
}

// (variable index, coefficient) of every term, then the constant.
std::string Terms(const Expr& e) {
  std::ostringstream out;
  for (int i = 0; i < e.Size(); ++i) out << "(" << e.GetVar(i).GetIdx() << "," << e.GetCoeff(i) << ")";
  out << e.GetConstant();
  return out.str();
}

class HeaderExpr : public testing::Test {
 protected:
  Zelq::Envr env_ = QuietEnvr();
  Zelq::Model model_ = env_.CreateModel("ops");
  Var x_ = model_.AddVar(0, 10, 0, Zelq::kContinuous, "x");
  Var y_ = model_.AddVar(0, 10, 0, Zelq::kContinuous, "y");
};

// What the operators must refuse at compile time.
template <class A, class B>
concept Addable = requires(A a, B b) { a + b; };
template <class A, class B>
concept Unequal = requires(A a, B b) { a != b; };
static_assert(Addable<Var, double> && Addable<int, Var> && Addable<Expr&, Var&>);
static_assert(!Addable<Var, char> && !Addable<bool, Expr> && !Addable<Var, const char*>);
static_assert(!Addable<Var, TempConstr>, "constraints do not chain");
static_assert(!Unequal<Var, Var>, "there is no != between handles");
static_assert(!std::is_convertible_v<TempConstr, bool> && !std::is_constructible_v<bool, TempConstr>);
static_assert(!std::is_constructible_v<Expr, char> && !std::is_constructible_v<Expr, bool>);
static_assert(std::is_same_v<decltype(std::declval<Var>() == std::declval<Var>()), TempConstr>);
// Scaling a variable or a term gives a term; anything that adds gives an expression.
static_assert(std::is_same_v<decltype(2 * std::declval<Var&>()), LinTerm> &&
              std::is_same_v<decltype(std::declval<Var>() * 2.5), LinTerm> &&
              std::is_same_v<decltype(-std::declval<Var&>()), LinTerm> &&
              std::is_same_v<decltype(-(2 * std::declval<Var&>()) * 3), LinTerm>);
static_assert(std::is_same_v<decltype(2 * std::declval<Var&>() + 1), Expr> &&
              std::is_same_v<decltype(std::declval<Var&>() / 2), Expr> &&
              std::is_same_v<decltype(2 * std::declval<Expr&>()), Expr>);
static_assert(std::is_convertible_v<LinTerm, Expr> && !Addable<LinTerm, char>);

TEST_F(HeaderExpr, ArithmeticGivesTermsAndConstants) {
  EXPECT_EQ(Terms(x_ + y_), "(0,1)(1,1)0");
  EXPECT_EQ(Terms(2 * x_ + y_ * 3 + 4), "(0,2)(1,3)4");
  EXPECT_EQ(Terms(3 - x_), "(0,-1)3");
  EXPECT_EQ(Terms(-x_), "(0,-1)0");
  EXPECT_EQ(Terms(x_ / 4), "(0,0.25)0");
  EXPECT_EQ(Terms((x_ + 2) - (y_ - 1)), "(0,1)(1,-1)3");
  EXPECT_EQ(Terms(-(x_ + 2 * y_ - 1) * 2), "(0,-2)(1,-4)2");
  EXPECT_EQ(Terms(x_ + x_), "(0,1)(0,1)0");  // never merged
  EXPECT_EQ(Terms(0.5 + (x_ + y_)), "(0,1)(1,1)0.5");

  Expr e = x_;
  e += y_;
  e -= 2 * x_;
  e += 1.5;
  e *= 2;
  e /= 4;
  EXPECT_EQ(Terms(e), "(0,0.5)(1,0.5)(0,-1)0.75");
  EXPECT_EQ(e.ToString(), "0.75 + 0.5 * x + 0.5 * y - x");
  std::ostringstream printed;
  printed << (x_ - 2.5 * y_);
  EXPECT_EQ(printed.str(), "x - 2.5 * y");
}

TEST_F(HeaderExpr, TermsActAsExpressionsEverywhere) {
  Expr e = 2 * x_;
  EXPECT_EQ(Terms(e), "(0,2)0");
  EXPECT_EQ(Terms(-(x_ * 3) * 2), "(0,-6)0");
  EXPECT_EQ(Terms(2 * x_ + 3 * y_), "(0,2)(1,3)0");
  EXPECT_EQ(Terms(x_ - 2 * y_), "(0,1)(1,-2)0");
  EXPECT_EQ(Terms(2 * x_ - y_ + 1), "(0,2)(1,-1)1");
  EXPECT_EQ(Terms(1 - 2 * x_), "(0,-2)1");
  EXPECT_EQ(Terms(e + 3 * y_), "(0,2)(1,3)0");
  EXPECT_EQ(Terms(e), "(0,2)0");  // the named operand is left alone
  EXPECT_EQ(Terms(0 * x_), "(0,0)0");  // kept like any stored coefficient

  Zelq::IExpr* const raw = e.Get();
  e += 4 * y_;
  e -= 0.5 * x_;
  e -= -y_;
  EXPECT_EQ(e.Get(), raw);  // appended in place, no expression in between
  EXPECT_EQ(Terms(e), "(0,2)(1,4)(0,-0.5)(1,1)0");

  TempConstr le = 2 * x_ <= 3 * y_ + 1;
  EXPECT_EQ(Terms(le.GetExpr()) + le.GetSense(), "(0,2)(1,-3)0L");
  EXPECT_EQ(le.GetRhs(), 1);
  TempConstr mirrored = 6 <= -x_;
  EXPECT_EQ(Terms(mirrored.GetExpr()) + mirrored.GetSense(), "(0,-1)0G");
  EXPECT_EQ(Terms(Zelq::Range(0, 2 * x_, 4).GetExpr()), "(0,2)0");

  LinTerm none(Var(), 2);
  EXPECT_EQ(Thrown([&] { Expr bad = none; }).second, "(INVALID) Empty variable handle");
  EXPECT_EQ(Thrown([&] { (void)(none + x_); }).second, "(INVALID) Empty variable handle");
}

TEST_F(HeaderExpr, HandlesShareOneObjectAcrossCopiesAndThreads) {
  Expr e = x_ + y_;
  Zelq::IExpr* const raw = e.Get();
  {
    Expr copy = e;
    Expr other;
    other = copy;
    EXPECT_EQ(other.Get(), raw);
    EXPECT_NE((std::move(copy) + 1).Get(), raw);  // still shared with e: cloned
  }
  EXPECT_EQ((std::move(e) + 1).Get(), raw);  // copies gone: unshared again
  e = x_;  // a moved-from value takes a new one
  EXPECT_EQ(Terms(e), "(0,1)0");

  // Copies made on one thread may be dropped on others at the same time.
  std::vector<Var> left(1000, x_), right(1000, x_);
  std::thread a([v = std::move(left)]() mutable { v.clear(); });
  std::thread b([v = std::move(right)]() mutable { v.clear(); });
  a.join();
  b.join();
  EXPECT_EQ(x_.GetName(), "x");
}

TEST_F(HeaderExpr, NamedOperandsStayAndTemporariesAreReused) {
  Expr e = x_ + 1;
  Zelq::IExpr* const named = e.Get();
  Expr sum = e + y_;
  EXPECT_NE(sum.Get(), named);
  EXPECT_EQ(Terms(e), "(0,1)1");  // unchanged
  Expr scaled = e * 3;
  Expr negated = -e;
  EXPECT_EQ(Terms(e), "(0,1)1");
  EXPECT_EQ(Terms(scaled) + Terms(negated), "(0,3)3(0,-1)-1");

  Expr temp = x_ + y_;
  Zelq::IExpr* const raw = temp.Get();
  Expr grown = std::move(temp) + 2 * x_;
  EXPECT_EQ(grown.Get(), raw);  // extended in place
  Expr doubled = std::move(grown) * 2;
  EXPECT_EQ(doubled.Get(), raw);

  // A temporary that another value still shares is cloned, not changed.
  Expr shared = x_ + y_;
  Expr copy = shared;
  Expr more = std::move(shared) + 1;
  EXPECT_NE(more.Get(), copy.Get());
  EXPECT_EQ(Terms(copy), "(0,1)(1,1)0");

  // Copies share one expression; Clone does not.
  Expr a = x_;
  Expr b = a;
  Expr c = a.Clone();
  b.AddTerm(y_, 2);
  EXPECT_EQ(a.Size(), 2);
  EXPECT_EQ(c.Size(), 1);
}

TEST_F(HeaderExpr, LongChainsAreLinear) {
  Zelq::VarArray vars = model_.AddVars(1000, 0, 1, 0, Zelq::kContinuous, "v");
  std::vector<Var> list(vars.begin(), vars.end());
  Expr chain;
  for (int i = 0; i < 100000; ++i) chain = std::move(chain) + list[static_cast<size_t>(i % 1000)];
  EXPECT_EQ(chain.Size(), 100000);
  Expr folded = list[0] + list[1] + list[2] + list[3] + list[4] + 7;
  EXPECT_EQ(folded.Size(), 5);
  EXPECT_EQ(Zelq::Sum(vars).Size(), 1000);
  EXPECT_EQ(Zelq::Sum(list).Size(), 1000);

  Zelq::VarArray two;
  two.PushBack(x_);
  two.PushBack(y_);
  EXPECT_EQ(Terms(Zelq::Dot(two, {2, -3})), "(0,2)(1,-3)0");
  EXPECT_EQ(Thrown([&] { Zelq::Dot(two, {1}); }),
            std::make_pair(3, std::string("(INVALID) 1 coefficients given for 2 variables")));
}

TEST_F(HeaderExpr, ComparisonsMoveEverythingLeft) {
  TempConstr le = x_ + 2 <= 5;
  EXPECT_EQ(Terms(le.GetExpr()), "(0,1)0");
  EXPECT_EQ(le.GetSense(), 'L');
  EXPECT_EQ(le.GetRhs(), 3);
  EXPECT_EQ(le.GetLower(), -Zelq::kInfinity);
  EXPECT_EQ(le.GetUpper(), 3);
  EXPECT_FALSE(le.IsRange());

  TempConstr both = 2 * x_ + 1 >= y_ - 3;
  EXPECT_EQ(Terms(both.GetExpr()), "(0,2)(1,-1)0");
  EXPECT_EQ(both.GetSense(), 'G');
  EXPECT_EQ(both.GetRhs(), -4);
  EXPECT_EQ(both.GetUpper(), Zelq::kInfinity);

  TempConstr mirrored = 5 >= x_;  // read as x <= 5
  EXPECT_EQ(Terms(mirrored.GetExpr()) + mirrored.GetSense(), "(0,1)0L");
  EXPECT_EQ(mirrored.GetRhs(), 5);

  TempConstr same = x_ == y_;
  EXPECT_EQ(Terms(same.GetExpr()) + same.GetSense(), "(0,1)(1,-1)0E");
  EXPECT_EQ(same.GetLower(), 0);
  EXPECT_EQ(same.GetUpper(), 0);

  Expr named = x_ + 4;
  TempConstr range = Zelq::Range(1, named, 9);
  EXPECT_TRUE(range.IsRange());
  EXPECT_EQ(range.GetSense(), Zelq::kRange);
  EXPECT_EQ(range.GetLower(), -3);
  EXPECT_EQ(range.GetUpper(), 5);
  EXPECT_EQ(Terms(named), "(0,1)4");  // the named expression keeps its constant
  EXPECT_FALSE(x_.SameAs(y_));
  EXPECT_TRUE(x_.SameAs(model_.GetVarByName("x")));
}

TEST_F(HeaderExpr, FailuresThrowTheLibraryMessage) {
  Expr e = x_ + 1;
  EXPECT_EQ(Thrown([&] { e /= 0.0; }),
            std::make_pair(3, std::string("(INVALID) Linear expression is divided by zero")));
  EXPECT_EQ(Terms(e), "(0,1)1");  // unchanged
  EXPECT_EQ(Thrown([&] { (void)(x_ / 0); }).first, 3);

  Var none;
  EXPECT_EQ(Thrown([&] { none.GetIdx(); }),
            std::make_pair(3, std::string("(INVALID) Empty variable handle")));
  EXPECT_EQ(Thrown([&] { (void)(none + 1); }).second, "(INVALID) Empty variable handle");
  EXPECT_EQ(Thrown([&] { e.GetVar(1); }),
            std::make_pair(3, std::string("(INVALID) Term index 1 out of range [0, 1)")));
  EXPECT_EQ(Thrown([&] { e.Reserve(-1); }).first, 3);
  Expr moved = std::move(e);
  EXPECT_EQ(Thrown([&] { e.Size(); }).second, "(INVALID) Empty expression handle");  // NOLINT
  EXPECT_EQ(moved.Size(), 1);

  // Evaluating before any solve: the variable's failure is carried over.
  auto [code, message] = Thrown([&] { moved.Evaluate(); });
  EXPECT_NE(code, 0);
  EXPECT_FALSE(message.empty());
}

}  // namespace
