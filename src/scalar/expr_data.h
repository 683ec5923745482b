// ExprData: the value of a linear expression, and what can be done to it.
//
// A constant plus terms (variable, coefficient) in two parallel arrays, kept
// in insertion order. Nothing is merged on insertion: the same variable may
// appear in several terms and coefficient 0 is stored like any other; the
// model merges a copy's duplicates (expr_merge.h) before it builds a row.
// Terms whose variable has a negative index (not in a model, or removed)
// stay stored, are skipped when printing and dropped when merging.
//
//   ExprData e;
//   AppendTerm(e, TermVar(x), 2.0);
//   e.constant = 3;
//   PrintExpr(e, 512);  // "3 + 2 * x"
#ifndef ZELQ_SCALAR_EXPR_DATA_H_
#define ZELQ_SCALAR_EXPR_DATA_H_

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "frame/error_record.h"
#include "scalar/element_values.h"
#include "zelq/zelqcpp_fwd.h"

namespace Zelq {

struct ExprData {
  std::vector<double> coeffs;
  std::vector<Var> vars;
  double constant = 0;
  ErrorRecord error;
};

// The engine's infinity, returned by Evaluate once a failure is recorded.
inline constexpr double kExprInfinity = 1e30;

// A variable as a term stores it: shares the element and takes the code; the
// message is copied only when the code is non-zero. A null handle gives a
// variable with index -2.
Var TermVar(const Var& var);
Var TermVar(const IVar* var);

// Appends one term; no pre-reservation.
void AppendTerm(ExprData& expr, Var var, double coeff);

// Growth rule of the bulk appends: with cap the capacity of the variable
// array, reserves cap + n terms when size + n reaches 2 * cap; otherwise the
// arrays grow by themselves.
void ReserveForTerms(ExprData& expr, size_t n);

// Bulk appends, with the growth rule. `coeffs` has one value per variable.
// Null entries of `vars` become terms with an invalid variable.
// Each returns the number of terms added.
int AppendTerms(ExprData& expr, const std::vector<ElementRef>& vars, const double* coeffs);
int AppendTerms(ExprData& expr, const std::vector<ElementRef>& vars, double coeff);
int AppendTerms(ExprData& expr, const std::vector<IVar*>& vars, const double* coeffs);
int AppendTerms(ExprData& expr, const std::vector<IVar*>& vars, double coeff);

// expr += mult * other. Multiplier 0 changes nothing; 1 and -1 copy and
// negate (0.0 - c) the coefficients exactly. `other` may be `expr` itself:
// its initial terms are appended once.
void AddScaledExpr(ExprData& expr, const ExprData& other, double mult);

// Factor 0 empties the terms and zeroes the constant; 1 changes nothing.
void MultiplyExpr(ExprData& expr, double factor);
// Divisor 0 (either sign) records code 3 and changes nothing; 1 changes
// nothing. Otherwise true division of every coefficient and the constant.
void DivideExpr(ExprData& expr, double divisor);

// Moves the last term into position i and drops the last position; an i out
// of range does nothing.
void RemoveTermAt(ExprData& expr, size_t i);
// Removes every term whose variable has column index `index` (>= 0).
void RemoveVarTerms(ExprData& expr, int32_t index);

// Terms removed, constant 0; the error record stays.
void ClearExpr(ExprData& expr);
// Copies of the terms and the constant, with an empty error record.
ExprData CloneExpr(const ExprData& expr);

// Value at the current solution. A failure already recorded in the
// expression, or taken over from a variable whose value cannot be read,
// makes the result 1e30; evaluation never clears it.
double EvaluateExpr(ExprData& expr);

// The printed form, showing at most width / 8 term positions.
std::string PrintExpr(ExprData& expr, size_t width);

}  // namespace Zelq

#endif  // ZELQ_SCALAR_EXPR_DATA_H_
