// Header layer of linear expressions: Zelq::Expr, Zelq::LinTerm (one
// coefficient times one variable), the arithmetic and comparison operators
// over variables, terms, expressions and numbers, and Zelq::TempConstr, the
// constraint a comparison produces.
//
//   Zelq::Expr profit = 3 * x + 2 * y;
//   model.AddConstr(x + 3 * y <= 6, "wood");
//   model.AddConstr(Zelq::Range(1, x - y, 2));
//
// An expression keeps its terms in insertion order and never merges them
// (x + x has two terms); the model merges duplicates when it adds a row.
// Copies of an Expr share one expression; Clone() gives an independent one.
// Operators never change an expression the caller still names: a temporary
// operand (x1 + x2 + ... + xn) is extended in place, anything else is cloned.
// 2 * x and -x are LinTerm values: no library call until they meet an
// expression, so e += w[j] * x[j] appends one term and nothing else.
#ifndef ZELQ_ZELQCPP_EXPR_H_
#define ZELQ_ZELQCPP_EXPR_H_

#include <algorithm>
#include <cstddef>
#include <iosfwd>
#include <memory>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "zelq/zelqcpp_check.h"
#include "zelq/zelqcpp_consts.h"
#include "zelq/zelqcpp_elems.h"
#include "zelq/zelqcpp_exports.h"

namespace Zelq {

class Expr;
class LinTerm;
class Model;
class TempConstr;

namespace detail {

// Numbers that may stand in an expression: arithmetic types except bool and
// the character types, so that a sense such as 'L' never becomes 76.
template <class T>
concept Number = std::is_arithmetic_v<T> && !std::is_same_v<T, bool> && !std::is_same_v<T, char> &&
                 !std::is_same_v<T, signed char> && !std::is_same_v<T, unsigned char> &&
                 !std::is_same_v<T, wchar_t> && !std::is_same_v<T, char8_t> &&
                 !std::is_same_v<T, char16_t> && !std::is_same_v<T, char32_t>;

// The operand kinds of the operators, ordered so that the larger of two kinds
// is the kind of their sum. Later expression kinds append here.
enum class Kind { kNone, kNumber, kLinear };

// The one place that lists which types are operands, and of which kind.
template <class T>
struct OperandKind : std::integral_constant<Kind, Kind::kNone> {};
template <Number T>
struct OperandKind<T> : std::integral_constant<Kind, Kind::kNumber> {};
template <>
struct OperandKind<Var> : std::integral_constant<Kind, Kind::kLinear> {};
template <>
struct OperandKind<LinTerm> : std::integral_constant<Kind, Kind::kLinear> {};
template <>
struct OperandKind<Expr> : std::integral_constant<Kind, Kind::kLinear> {};

// A linear operand that is a single term (Var or LinTerm), not an expression.
template <class T>
concept TermOperand =
    std::is_same_v<std::remove_cvref_t<T>, Var> || std::is_same_v<std::remove_cvref_t<T>, LinTerm>;

template <class T>
inline constexpr Kind kKindOf = OperandKind<std::remove_cvref_t<T>>::value;

// The expression and pending-constraint types of each kind.
template <Kind K>
struct KindTypes;
template <>
struct KindTypes<Kind::kLinear> {
  using Expression = Expr;
  using Pending = TempConstr;
};

// Two operands that add, subtract and compare: both known, not both numbers.
template <class A, class B>
concept SumOperands = kKindOf<A>
!= Kind::kNone&& kKindOf<B> != Kind::kNone &&
    (kKindOf<A> > Kind::kNumber || kKindOf<B> > Kind::kNumber);

// A number and an expression-like operand, in either order.
template <class A, class B>
concept ScaleOperands = (kKindOf<A> == Kind::kNumber && kKindOf<B> > Kind::kNumber) ||
                        (kKindOf<A> > Kind::kNumber && kKindOf<B> == Kind::kNumber);

template <class T>
concept ExprOperand = kKindOf<T> > Kind::kNumber;

template <class A, class B>
inline constexpr Kind kJointKind = std::max(kKindOf<A>, kKindOf<B>);

template <class A, class B>
using ExprType = typename KindTypes<kJointKind<A, B>>::Expression;
template <class A, class B>
using PendingType = typename KindTypes<kJointKind<A, B>>::Pending;

struct ExprAccess;

// c * mult as the library scales a term: -1 negates as 0 - c.
constexpr double Times(double c, double mult) {
  return mult == 1.0 ? c : mult == -1.0 ? 0.0 - c : c * mult;
}

}  // namespace detail

// coeff * var, as 2 * x, x * 2 and -x give it. It holds a copy of the
// variable handle and the coefficient; it becomes a one-term expression
// only where an expression is needed (Expr e = 2 * x).
class LinTerm {
 public:
  LinTerm(Var var, double coeff) : var_(std::move(var)), coeff_(coeff) {}

  const Var& GetVar() const { return var_; }
  double GetCoeff() const { return coeff_; }

 private:
  Var var_;
  double coeff_;
};

// A constant plus terms (variable, coefficient).
class Expr {
 public:
  Expr() : Expr(0.0) {}
  // Implicit: a number or a variable stands for an expression. Neither
  // touches a model.
  template <detail::Number T>
  Expr(T constant) : expr_(CreateExpr(static_cast<double>(constant))) {}  // NOLINT
  Expr(const Var& var, double coeff = 1.0)                                // NOLINT
      : expr_(CreateLinExpr(detail::Raw(var), coeff)) {}
  Expr(const LinTerm& term)  // NOLINT
      : Expr(term.GetVar(), term.GetCoeff()) {}
  // Takes ownership of an expression returned by the library.
  explicit Expr(IExpr* raw) : expr_(detail::Require(raw, "expression")) {}

  int Size() const { return Ref().GetSize(); }
  Var GetVar(int i) const { return Var(Ref().GetVar(Term(i))); }
  double GetCoeff(int i) const { return Ref().GetCoeff(Term(i)); }
  double GetConstant() const { return Ref().GetConstant(); }
  void SetCoeff(int i, double value) { Ref().SetCoeff(Term(i), value); }
  void SetConstant(double value) { Ref().SetConstant(value); }
  void AddConstant(double value) { Ref().AddConstant(value); }

  // Appends one term; nothing is merged.
  void AddTerm(const Var& var, double coeff = 1.0) { Ref().AddTerm(detail::Raw(var), coeff); }
  // Number of terms added, or -1 (nothing added) when `coeffs` is null or
  // `len` is shorter than the array.
  int AddTerms(const VarArray& vars, const double* coeffs, int len) {
    return Ref().AddTerms(vars.Get(), coeffs, len);
  }
  int AddTerms(const VarArray& vars, double coeff) { return Ref().AddTerms(vars.Get(), coeff); }
  // Appends mult times every term of `other` and adds mult times its constant.
  void AddExpr(const Expr& other, double mult = 1.0) { Ref().AddExpr(&other.Ref(), mult); }

  // Value at the current solution.
  double Evaluate() const {
    const double value = Ref().Evaluate();
    detail::Check(&Ref());
    return value;
  }
  // Removes term i; the last term takes its place. Out of range does nothing.
  void Remove(int i) { Ref().Remove(i); }
  // Removes every term of `var`.
  void Remove(const Var& var) { Ref().Remove(detail::Raw(var)); }
  void Reserve(int count) {
    detail::CheckReserve(count);
    Ref().Reserve(count);
  }
  void Clear() { Ref().Clear(); }
  Expr Clone() const { return Expr(Ref().Clone()); }

  // "3 + x - 2.5 * y", at most width / 8 terms shown.
  std::string ToString(size_t width = 80) const {
    const char* text = Ref().GetString(width);
    return text != nullptr ? text : "";
  }

  Expr& operator+=(const Expr& other) { return Add(other, 1.0); }
  Expr& operator+=(const Var& var) {
    AddTerm(var, 1.0);
    return *this;
  }
  Expr& operator+=(const LinTerm& term) {
    AddTerm(term.GetVar(), term.GetCoeff());
    return *this;
  }
  Expr& operator+=(double constant) {
    AddConstant(constant);
    return *this;
  }
  Expr& operator-=(const Expr& other) { return Add(other, -1.0); }
  Expr& operator-=(const Var& var) {
    AddTerm(var, -1.0);
    return *this;
  }
  Expr& operator-=(const LinTerm& term) {
    AddTerm(term.GetVar(), detail::Times(term.GetCoeff(), -1.0));
    return *this;
  }
  Expr& operator-=(double constant) {
    AddConstant(-constant);
    return *this;
  }
  // Multiplying by exactly 0 removes every term.
  Expr& operator*=(double factor) {
    Ref().iMultiply(factor);
    return *this;
  }
  // Dividing by 0 throws (code 3) and leaves the expression as it was.
  Expr& operator/=(double divisor) {
    Ref().iDivide(divisor);
    if (divisor == 0.0) detail::Check(&Ref());
    return *this;
  }

  IExpr* Get() const { return expr_.get(); }

 private:
  friend struct detail::ExprAccess;

  IExpr& Ref() const { return *detail::Raw(*this); }
  int Term(int i) const {
    detail::CheckIndex(i, Size(), "Term");
    return i;
  }
  Expr& Add(const Expr& other, double mult) {
    // e += e adds e's terms once more, as the library takes the count first.
    Ref().AddExpr(&other.Ref(), mult);
    return *this;
  }

 public:
  static constexpr const char* kWhat = "expression";

 private:
  detail::Handle<IExpr> expr_;
};

// Writes ToString() with the default width.
inline std::ostream& operator<<(std::ostream& out, const Expr& expr) {
  return out << expr.ToString();
}

namespace detail {

struct ExprAccess {
  // A temporary expression that nothing else shares is extended in place;
  // one that other values still name is cloned, so they never change.
  static Expr Reuse(Expr&& expr) {
    if (expr.expr_ == nullptr || !Unshared(expr)) return expr.Clone();
    return std::move(expr);
  }
  static bool Unshared(const Expr& expr) { return expr.expr_.use_count() <= 1; }
};

// The expression an operator result starts from.
inline Expr StartFrom(Expr&& expr) { return ExprAccess::Reuse(std::move(expr)); }
inline Expr StartFrom(const Expr& expr) { return expr.Clone(); }
inline Expr StartFrom(const Var& var) { return Expr(var); }
inline Expr StartFrom(const LinTerm& term) { return Expr(term); }
template <Number T>
Expr StartFrom(T constant) {
  return Expr(static_cast<double>(constant));
}

// result += mult * operand.
inline void AddScaled(Expr& result, const Expr& expr, double mult) { result.AddExpr(expr, mult); }
inline void AddScaled(Expr& result, const Var& var, double mult) { result.AddTerm(var, mult); }
inline void AddScaled(Expr& result, const LinTerm& term, double mult) {
  result.AddTerm(term.GetVar(), Times(term.GetCoeff(), mult));
}
template <Number T>
void AddScaled(Expr& result, T constant, double mult) {
  result.AddConstant(mult * static_cast<double>(constant));
}

// a + mult * b for two single terms: one new expression sized for both, so
// its term arrays are allocated once.
template <TermOperand A, TermOperand B>
Expr TermPair(const A& a, const B& b, double mult) {
  Expr result;
  result.Reserve(2);
  AddScaled(result, a, 1.0);
  AddScaled(result, b, mult);
  return result;
}

// factor * operand: a term stays a term, an expression is scaled.
inline LinTerm Scaled(const Var& var, double factor) { return LinTerm(var, factor); }
inline LinTerm Scaled(Var&& var, double factor) { return LinTerm(std::move(var), factor); }
inline LinTerm Scaled(const LinTerm& term, double factor) {
  return LinTerm(term.GetVar(), Times(term.GetCoeff(), factor));
}
template <class E>
  requires std::is_same_v<std::remove_cvref_t<E>, Expr>
Expr Scaled(E&& expr, double factor) {
  Expr result = StartFrom(std::forward<E>(expr));
  result *= factor;
  return result;
}

// The left-hand side a pending constraint keeps: a named expression is
// shared, not copied; a term becomes a new expression.
inline Expr Operand(Expr&& expr) { return std::move(expr); }
inline Expr Operand(const Expr& expr) { return expr; }
inline Expr Operand(const Var& var) { return Expr(var); }
inline Expr Operand(const LinTerm& term) { return Expr(term); }

// The sense that holds with both sides swapped.
constexpr char Mirrored(char sense) {
  return sense == kLessEqual ? kGreaterEqual : sense == kGreaterEqual ? kLessEqual : sense;
}

template <class A, class B>
PendingType<A, B> Compare(A&& lhs, B&& rhs, char sense);

}  // namespace detail

// A linear constraint waiting to be added: expr (sense) rhs, or
// lower <= expr <= upper. The bounds have the expression's constant moved
// into them, as the model moves it: x + 2 <= 5 gives rhs 3. A temporary
// expression is kept with its constant set to 0 (expr x). A named
// expression is shared, not copied, and keeps its constant: GetExpr() then
// still shows it, the bounds already account for it, and the constraint
// follows later changes of the expression until it is added. There is no
// conversion to bool.
class TempConstr {
 public:
  TempConstr(Expr expr, char sense, double rhs) : TempConstr(std::move(expr), sense, rhs, rhs) {
    if (sense == kLessEqual) lower_ = -kInfinity;
    if (sense == kGreaterEqual) upper_ = kInfinity;
  }
  TempConstr(double lower, Expr expr, double upper)
      : TempConstr(std::move(expr), kRange, lower, upper) {}

  const Expr& GetExpr() const { return expr_; }
  // kLessEqual, kGreaterEqual, kEqual, or kRange for a two-sided constraint.
  char GetSense() const { return sense_; }
  // The bound the sense compares with (the lower bound of a range).
  double GetRhs() const { return sense_ == kLessEqual ? upper_ : lower_; }
  double GetLower() const { return lower_; }
  double GetUpper() const { return upper_; }
  bool IsRange() const { return sense_ == kRange; }

 private:
  friend class Model;

  TempConstr(Expr expr, char sense, double first, double second)
      : expr_(std::move(expr)), sense_(sense), first_(first), second_(second) {
    const double constant = expr_.GetConstant();
    lower_ = first - constant;
    upper_ = second - constant;
    // An expression nothing else names loses its constant; the bounds given
    // to the model are then the moved ones.
    if (constant != 0.0 && detail::ExprAccess::Unshared(expr_)) {
      expr_.SetConstant(0.0);
      first_ = lower_;
      second_ = upper_;
    }
  }

  Expr expr_;
  char sense_;
  // The bounds as the model takes them with expr_: it moves expr_'s constant.
  double first_;
  double second_;
  double lower_;
  double upper_;
};

// lower <= expr <= upper.
inline TempConstr Range(double lower, const Expr& expr, double upper) {
  return TempConstr(lower, expr, upper);
}
inline TempConstr Range(double lower, Expr&& expr, double upper) {
  return TempConstr(lower, std::move(expr), upper);
}

// a + b, a - b: any two of Var, LinTerm, Expr and a number, not two numbers.
template <class A, class B>
requires detail::SumOperands<A, B> detail::ExprType<A, B>
operator+(A&& a, B&& b) {
  if constexpr (detail::kKindOf<A> == detail::Kind::kNumber) {
    detail::ExprType<A, B> result = detail::StartFrom(std::forward<B>(b));
    detail::AddScaled(result, a, 1.0);
    return result;
  } else if constexpr (detail::TermOperand<A> && detail::TermOperand<B>) {
    return detail::TermPair(a, b, 1.0);
  } else {
    detail::ExprType<A, B> result = detail::StartFrom(std::forward<A>(a));
    detail::AddScaled(result, b, 1.0);
    return result;
  }
}

template <class A, class B>
requires detail::SumOperands<A, B> detail::ExprType<A, B>
operator-(A&& a, B&& b) {
  if constexpr (detail::kKindOf<A> == detail::Kind::kNumber) {
    detail::ExprType<A, B> result = detail::Scaled(std::forward<B>(b), -1.0);
    detail::AddScaled(result, a, 1.0);
    return result;
  } else if constexpr (detail::TermOperand<A> && detail::TermOperand<B>) {
    return detail::TermPair(a, b, -1.0);
  } else {
    detail::ExprType<A, B> result = detail::StartFrom(std::forward<A>(a));
    detail::AddScaled(result, b, -1.0);
    return result;
  }
}

// -x and -(2 * x) are terms; -e is an expression.
template <class A>
  requires detail::ExprOperand<A>
auto operator-(A&& a) {
  return detail::Scaled(std::forward<A>(a), -1.0);
}

// number * a, a * number: a term for a variable or a term, else an expression.
template <class A, class B>
  requires detail::ScaleOperands<A, B>
auto operator*(A&& a, B&& b) {
  if constexpr (detail::kKindOf<A> == detail::Kind::kNumber) {
    return detail::Scaled(std::forward<B>(b), static_cast<double>(a));
  } else {
    return detail::Scaled(std::forward<A>(a), static_cast<double>(b));
  }
}

// a / number; dividing by 0 throws (code 3).
template <class A, class B>
requires(detail::ExprOperand<A>&& detail::kKindOf<B> ==
         detail::Kind::kNumber) detail::ExprType<A, B>
operator/(A&& a, B divisor) {
  detail::ExprType<A, B> result = detail::StartFrom(std::forward<A>(a));
  result /= static_cast<double>(divisor);
  return result;
}

// a <= b, a >= b, a == b: a pending constraint with every term on the left.
// Note that x == y with two variables builds the constraint x - y == 0; it
// does not compare handles (see Var::SameAs).
template <class A, class B>
requires detail::SumOperands<A, B> detail::PendingType<A, B>
operator<=(A&& a, B&& b) {
  return detail::Compare(std::forward<A>(a), std::forward<B>(b), kLessEqual);
}
template <class A, class B>
requires detail::SumOperands<A, B> detail::PendingType<A, B>
operator>=(A&& a, B&& b) {
  return detail::Compare(std::forward<A>(a), std::forward<B>(b), kGreaterEqual);
}
template <class A, class B>
requires detail::SumOperands<A, B> detail::PendingType<A, B>
operator==(A&& a, B&& b) { return detail::Compare(std::forward<A>(a), std::forward<B>(b), kEqual); }

namespace detail {

// lhs (sense) rhs as expr (sense) bound. A number on the left swaps the sides
// (5 >= x is x <= 5); otherwise the right side moves to the left.
template <class A, class B>
PendingType<A, B> Compare(A&& lhs, B&& rhs, char sense) {
  using Pending = PendingType<A, B>;
  if constexpr (kKindOf<A> == Kind::kNumber) {
    return Pending(Operand(std::forward<B>(rhs)), Mirrored(sense), static_cast<double>(lhs));
  } else if constexpr (kKindOf<B> == Kind::kNumber) {
    return Pending(Operand(std::forward<A>(lhs)), sense, static_cast<double>(rhs));
  } else if constexpr (TermOperand<A> && TermOperand<B>) {
    return Pending(TermPair(lhs, rhs, -1.0), sense, 0.0);
  } else {
    ExprType<A, B> expr = StartFrom(std::forward<A>(lhs));
    AddScaled(expr, rhs, -1.0);
    return Pending(std::move(expr), sense, 0.0);
  }
}

}  // namespace detail

// The sum of the variables, built in one pass.
inline Expr Sum(const VarArray& vars) {
  Expr sum;
  sum.AddTerms(vars, 1.0);
  return sum;
}
inline Expr Sum(const std::vector<Var>& vars) {
  Expr sum;
  sum.Reserve(static_cast<int>(vars.size()));
  for (const Var& var : vars) sum.AddTerm(var, 1.0);
  return sum;
}
// sum coeffs[i] * vars[i]; the sizes must agree.
inline Expr Dot(const VarArray& vars, const std::vector<double>& coeffs) {
  if (static_cast<size_t>(vars.Size()) != coeffs.size()) {
    detail::Fail(std::to_string(coeffs.size()) + " coefficients given for " +
                 std::to_string(vars.Size()) + " variables");
  }
  Expr dot;
  if (!coeffs.empty()) dot.AddTerms(vars, coeffs.data(), static_cast<int>(coeffs.size()));
  return dot;
}

}  // namespace Zelq

#endif  // ZELQ_ZELQCPP_EXPR_H_
