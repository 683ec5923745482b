// Interface of the linear expression: Zelq::IExpr.
//
// A constant plus terms (variable, coefficient) kept in insertion order;
// nothing is merged on insertion. Slot order is the library's binary
// interface; operations never throw (Reserve with a negative count excepted).
#ifndef ZELQ_ZELQCPP_EXPR_IFACE_H_
#define ZELQ_ZELQCPP_EXPR_IFACE_H_

#include <cstddef>
#include <vector>

#include "zelq/zelqcpp_fwd.h"

namespace Zelq {

class IExpr {
 public:
  virtual ~IExpr() = default;
  virtual int GetSize() const = 0;
  // Term i is not range-checked: pass 0 <= i < GetSize().
  virtual IVar* GetVar(int i) const = 0;
  virtual double GetCoeff(int i) const = 0;
  virtual double GetConstant() const = 0;
  virtual void SetCoeff(int i, double value) = 0;
  virtual void SetConstant(double value) = 0;
  virtual void AddConstant(double value) = 0;
  virtual void AddTerm(const IVar* var, double coeff) = 0;
  // The AddTerms forms return the number of terms added, or -1 (nothing
  // added) when `coeffs` is null or `len` is shorter than the variables.
  virtual int AddTerms(const IVarArray* vars, const double* coeffs, int len) = 0;
  virtual int AddTerms(const IVarArray* vars, double coeff) = 0;
  virtual int AddTerms(const std::vector<IVar*>& vars, const double* coeffs, int len) = 0;
  virtual int AddTerms(const std::vector<IVar*>& vars, double coeff) = 0;
  virtual void AddExpr(const IExpr* other, double mult) = 0;
  // Value at the current solution; 1e30 once any failure was recorded.
  virtual double Evaluate() = 0;
  // Swaps the last term into position i.
  virtual void Remove(int i) = 0;
  virtual void Remove(const IVar* var) = 0;
  virtual void Reserve(int count) = 0;
  virtual void Clear() = 0;
  virtual IExpr* Clone() const = 0;
  virtual void iDivide(double divisor) = 0;
  virtual void iMultiply(double factor) = 0;
  // Printed form showing at most width / 8 term positions; valid until the
  // next GetString on this object.
  virtual const char* GetString(size_t width) = 0;
  virtual int GetErrorCode() const = 0;
  virtual const char* GetErrorMessage() const = 0;
};

}  // namespace Zelq

#endif  // ZELQ_ZELQCPP_EXPR_IFACE_H_
