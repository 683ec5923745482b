// Interfaces of element handles (variables, linear constraints), their
// arrays, and columns (the constraint coefficients of a variable to be added).
//
// A handle names one model element without copying it; copies share the
// element, so a removal through one handle is seen by all. GetIdx is the
// element's engine index: 0 or more while live, -2 for an invalid handle and
// -3 - i for an element removed from index i. Slot order is the library's
// binary interface; operations never throw.
#ifndef ZELQ_ZELQCPP_ELEM_IFACE_H_
#define ZELQ_ZELQCPP_ELEM_IFACE_H_

#include "zelq/zelqcpp_fwd.h"

namespace Zelq {

class IVar {
 public:
  virtual ~IVar() = default;
  virtual int GetIdx() const = 0;
  // Cached name, fetched from the model at first use; owned by the element.
  virtual const char* GetName() = 0;
  virtual void SetName(const char* name) = 0;
  virtual char GetType() = 0;
  virtual void SetType(char vtype) = 0;
  virtual int GetBasis() = 0;
  virtual int GetLowerIIS() = 0;
  virtual int GetUpperIIS() = 0;
  // Information by name ("Value", "LB", "UB", "Obj", "RedCost", ...); 1e30 on failure.
  virtual double Get(const char* info) = 0;
  // "LB", "UB", "Obj" or "BranchFactor".
  virtual void Set(const char* info, double value) = 0;
  // Marks the variable removed; the model deletes it before its next
  // whole-problem operation.
  virtual void Remove() = 0;
  virtual int GetErrorCode() const = 0;
  virtual const char* GetErrorMessage() const = 0;
};

class IConstraint {
 public:
  virtual ~IConstraint() = default;
  virtual int GetIdx() const = 0;
  virtual const char* GetName() = 0;
  virtual void SetName(const char* name) = 0;
  virtual int GetBasis() = 0;
  virtual int GetLowerIIS() = 0;
  virtual int GetUpperIIS() = 0;
  // Information by name ("Slack", "Dual", "LB", "UB", ...); 1e30 on failure.
  virtual double Get(const char* info) = 0;
  // "LB" or "UB".
  virtual void Set(const char* info, double value) = 0;
  virtual void Remove() = 0;
  // Range of the right-hand side over which the dual stays valid; `side` is
  // passed to the engine unchanged.
  virtual void GetShadowPriceRange(int side, double* low, double* high) = 0;
  virtual int GetErrorCode() const = 0;
  virtual const char* GetErrorMessage() const = 0;
};

class IVarArray {
 public:
  virtual ~IVarArray() = default;
  virtual void PushBack(const IVar* var) = 0;
  virtual void PushBack(const IVarArray* vars) = 0;
  virtual int Size() const = 0;
  // A new handle sharing the element; an invalid handle when out of range.
  virtual IVar* GetVar(int i) const = 0;
  // Appends all of `vars` after reserving room for them.
  virtual void Append(const IVarArray* vars) = 0;
  virtual void Reserve(int count) = 0;
};

class IConstrArray {
 public:
  virtual ~IConstrArray() = default;
  virtual void PushBack(const IConstraint* constr) = 0;
  virtual int Size() const = 0;
  virtual IConstraint* GetConstr(int i) const = 0;
  virtual void Append(const IConstrArray* constrs) = 0;
  virtual void Reserve(int count) = 0;
};

// Constraint coefficients of a variable that is still to be added.
class IColumn {
 public:
  virtual ~IColumn() = default;
  virtual int Size() const = 0;
  // Engine index of the constraint of term i (negative once removed).
  virtual int GetIdx(int i) const = 0;
  virtual double GetCoeff(int i) const = 0;
  virtual void AddTerm(const IConstraint* constr, double coeff) = 0;
  // Returns the number of terms added, or -1 (nothing added) when `coeffs`
  // is null or shorter than the array.
  virtual int AddTerms(const IConstrArray* constrs, const double* coeffs, int len) = 0;
  virtual void AddColumn(const IColumn* column, double mult) = 0;
  virtual void Remove(int i) = 0;
  virtual void Remove(const IConstraint* constr) = 0;
  virtual void Reserve(int count) = 0;
  virtual void Clear() = 0;
  virtual IColumn* Clone() const = 0;
};

class IColumnArray {
 public:
  virtual ~IColumnArray() = default;
  virtual void PushBack(const IColumn* column) = 0;
  virtual int Size() const = 0;
  // A copy of column i; an empty column when out of range.
  virtual IColumn* GetColumn(int i) const = 0;
  virtual void Reserve(int count) = 0;
  virtual void Clear() = 0;
};

}  // namespace Zelq

#endif  // ZELQ_ZELQCPP_ELEM_IFACE_H_
