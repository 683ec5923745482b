// Header layer of model elements: Zelq::Var and Zelq::Constraint (handles of
// one variable or constraint of a model), their arrays, and Zelq::Column (the
// constraint coefficients of a variable still to be added).
//
// A handle comes from a model (AddVar, GetVar, ...). Copies share one
// library object, so a removal or a failure seen through one copy is seen
// through all. A default-constructed handle names nothing: any use throws.
//
//   Zelq::Var x = model.AddVar(0, 10, 1, Zelq::kContinuous, "x");
//   x.Set("UB", 4);
//   double value = x.GetValue();   // after a solve
#ifndef ZELQ_ZELQCPP_ELEMS_H_
#define ZELQ_ZELQCPP_ELEMS_H_

#include <cstddef>
#include <iterator>
#include <memory>
#include <string>
#include <type_traits>

#include "zelq/zelqcpp_check.h"
#include "zelq/zelqcpp_consts.h"
#include "zelq/zelqcpp_exports.h"

namespace Zelq {

namespace detail {

// Throws unless 0 <= i < size.
inline void CheckIndex(int i, int size, const char* what) {
  if (i < 0 || i >= size) {
    Fail(std::string(what) + " index " + std::to_string(i) + " out of range [0, " +
         std::to_string(size) + ")");
  }
}

inline void CheckReserve(int count) {
  if (count < 0) Fail("Negative count to reserve: " + std::to_string(count));
}

// The library object behind a value; throws for an empty value.
template <class V>
auto Raw(const V& value) {
  auto* raw = value.Get();
  if (raw == nullptr) Fail(std::string("Empty ") + V::kWhat + " handle");
  return raw;
}

// Input iterator over an array value, yielding element values.
template <class Array, class Value>
class ArrayIterator {
 public:
  using iterator_category = std::input_iterator_tag;
  using value_type = Value;
  using difference_type = std::ptrdiff_t;
  using pointer = void;
  using reference = Value;

  ArrayIterator() = default;
  ArrayIterator(const Array* array, int i) : array_(array), i_(i) {}
  Value operator*() const { return (*array_)[i_]; }
  ArrayIterator& operator++() {
    ++i_;
    return *this;
  }
  ArrayIterator operator++(int) {
    ArrayIterator old = *this;
    ++i_;
    return old;
  }
  bool operator==(const ArrayIterator& other) const { return i_ == other.i_; }

 private:
  const Array* array_ = nullptr;
  int i_ = 0;
};

}  // namespace detail

// One variable of a model. Information names: "Value", "LB", "UB", "Obj",
// "RedCost" (read); "LB", "UB", "Obj", "BranchFactor" (write).
class Var {
 public:
  static constexpr const char* kWhat = "variable";

  // Names nothing; every operation throws.
  Var() = default;
  // Takes ownership of a handle returned by the library.
  explicit Var(IVar* raw) : var_(detail::Require(raw, kWhat)) {}

  // The engine index: 0 or more while live, negative once removed.
  int GetIdx() const { return Ref().GetIdx(); }
  std::string GetName() const {
    const char* name = Ref().GetName();
    return name != nullptr ? name : "";
  }
  void SetName(const char* name) {
    detail::CheckedCall(Ref(), [&](IVar& v) { v.SetName(name); });
  }
  char GetType() const {
    return detail::CheckedCall(Ref(), [](IVar& v) { return v.GetType(); });
  }
  void SetType(char vtype) {
    detail::CheckedCall(Ref(), [&](IVar& v) { v.SetType(vtype); });
  }
  double Get(const char* info) const {
    return detail::CheckedCall(Ref(), [&](IVar& v) { return v.Get(info); });
  }
  void Set(const char* info, double value) {
    detail::CheckedCall(Ref(), [&](IVar& v) { v.Set(info, value); });
  }
  double GetValue() const { return Get("Value"); }
  int GetBasis() const {
    return detail::CheckedCall(Ref(), [](IVar& v) { return v.GetBasis(); });
  }
  int GetLowerIIS() const {
    return detail::CheckedCall(Ref(), [](IVar& v) { return v.GetLowerIIS(); });
  }
  int GetUpperIIS() const {
    return detail::CheckedCall(Ref(), [](IVar& v) { return v.GetUpperIIS(); });
  }
  // Marks the variable removed; the model deletes it at its next solve,
  // attribute read or file write.
  void Remove() { Ref().Remove(); }

  // Whether both name the same live element of one model (compares indices).
  // `x == y` is not an identity test: it builds the constraint x - y == 0.
  bool SameAs(const Var& other) const { return GetIdx() >= 0 && GetIdx() == other.GetIdx(); }

  IVar* Get() const { return var_.get(); }

 private:
  IVar& Ref() const { return *detail::Raw(*this); }
  detail::Handle<IVar> var_;
};

// One linear constraint of a model. Information names: "Slack", "Dual",
// "LB", "UB" (read); "LB", "UB" (write).
class Constraint {
 public:
  static constexpr const char* kWhat = "constraint";

  Constraint() = default;
  explicit Constraint(IConstraint* raw) : constr_(detail::Require(raw, kWhat)) {}

  int GetIdx() const { return Ref().GetIdx(); }
  std::string GetName() const {
    const char* name = Ref().GetName();
    return name != nullptr ? name : "";
  }
  void SetName(const char* name) {
    detail::CheckedCall(Ref(), [&](IConstraint& c) { c.SetName(name); });
  }
  double Get(const char* info) const {
    return detail::CheckedCall(Ref(), [&](IConstraint& c) { return c.Get(info); });
  }
  void Set(const char* info, double value) {
    detail::CheckedCall(Ref(), [&](IConstraint& c) { c.Set(info, value); });
  }
  int GetBasis() const {
    return detail::CheckedCall(Ref(), [](IConstraint& c) { return c.GetBasis(); });
  }
  int GetLowerIIS() const {
    return detail::CheckedCall(Ref(), [](IConstraint& c) { return c.GetLowerIIS(); });
  }
  int GetUpperIIS() const {
    return detail::CheckedCall(Ref(), [](IConstraint& c) { return c.GetUpperIIS(); });
  }
  void Remove() { Ref().Remove(); }
  // Range of the right-hand side over which the dual stays valid.
  void GetShadowPriceRange(int side, double* low, double* high) const {
    detail::CheckedCall(Ref(), [&](IConstraint& c) { c.GetShadowPriceRange(side, low, high); });
  }
  bool SameAs(const Constraint& other) const { return GetIdx() >= 0 && GetIdx() == other.GetIdx(); }

  IConstraint* Get() const { return constr_.get(); }

 private:
  IConstraint& Ref() const { return *detail::Raw(*this); }
  detail::Handle<IConstraint> constr_;
};

// An ordered list of variables; elements are shared, not copied.
class VarArray {
 public:
  using iterator = detail::ArrayIterator<VarArray, Var>;

  VarArray() : array_(CreateVarArray()) {}
  explicit VarArray(IVarArray* raw) : array_(detail::Require(raw, "variable array")) {}

  int Size() const { return array_->Size(); }
  Var operator[](int i) const { return GetVar(i); }
  Var GetVar(int i) const {
    detail::CheckIndex(i, Size(), "Variable");
    return Var(array_->GetVar(i));
  }
  void PushBack(const Var& var) { array_->PushBack(detail::Raw(var)); }
  void PushBack(const VarArray& vars) { array_->PushBack(vars.Get()); }
  void Reserve(int count) {
    detail::CheckReserve(count);
    array_->Reserve(count);
  }
  iterator begin() const { return iterator(this, 0); }
  iterator end() const { return iterator(this, Size()); }

  IVarArray* Get() const { return array_.get(); }

 private:
  detail::Handle<IVarArray> array_;
};

// An ordered list of constraints; elements are shared, not copied.
class ConstrArray {
 public:
  using iterator = detail::ArrayIterator<ConstrArray, Constraint>;

  ConstrArray() : array_(CreateConstrArray()) {}
  explicit ConstrArray(IConstrArray* raw) : array_(detail::Require(raw, "constraint array")) {}

  int Size() const { return array_->Size(); }
  Constraint operator[](int i) const { return GetConstr(i); }
  Constraint GetConstr(int i) const {
    detail::CheckIndex(i, Size(), "Constraint");
    return Constraint(array_->GetConstr(i));
  }
  void PushBack(const Constraint& constr) { array_->PushBack(detail::Raw(constr)); }
  void PushBack(const ConstrArray& constrs) { array_->Append(constrs.Get()); }
  void Reserve(int count) {
    detail::CheckReserve(count);
    array_->Reserve(count);
  }
  iterator begin() const { return iterator(this, 0); }
  iterator end() const { return iterator(this, Size()); }

  IConstrArray* Get() const { return array_.get(); }

 private:
  detail::Handle<IConstrArray> array_;
};

// The constraint coefficients of a variable to be added with Model::AddVar.
//
//   Zelq::Column col;
//   col.AddTerm(capacity, 3);   // coefficient 3 in constraint `capacity`
class Column {
 public:
  Column() : column_(CreateColumn()) {}
  explicit Column(IColumn* raw) : column_(detail::Require(raw, "column")) {}

  int Size() const { return column_->Size(); }
  // Engine index of the constraint of term i.
  int GetIdx(int i) const {
    detail::CheckIndex(i, Size(), "Term");
    return column_->GetIdx(i);
  }
  double GetCoeff(int i) const {
    detail::CheckIndex(i, Size(), "Term");
    return column_->GetCoeff(i);
  }
  void AddTerm(const Constraint& constr, double coeff) {
    column_->AddTerm(detail::Raw(constr), coeff);
  }
  // Number of terms added, or -1 (nothing added) when `coeffs` is null or
  // `len` is shorter than the array.
  int AddTerms(const ConstrArray& constrs, const double* coeffs, int len) {
    return column_->AddTerms(constrs.Get(), coeffs, len);
  }
  void AddColumn(const Column& other, double mult) { column_->AddColumn(other.Get(), mult); }
  // Removes term i (the last term takes its place); out of range does nothing.
  void Remove(int i) { column_->Remove(i); }
  void Remove(const Constraint& constr) { column_->Remove(detail::Raw(constr)); }
  void Reserve(int count) {
    detail::CheckReserve(count);
    column_->Reserve(count);
  }
  void Clear() { column_->Clear(); }
  Column Clone() const { return Column(column_->Clone()); }

  IColumn* Get() const { return column_.get(); }

 private:
  detail::Handle<IColumn> column_;
};

class ColumnArray {
 public:
  ColumnArray() : array_(CreateColumnArray()) {}
  explicit ColumnArray(IColumnArray* raw) : array_(detail::Require(raw, "column array")) {}

  int Size() const { return array_->Size(); }
  void PushBack(const Column& column) { array_->PushBack(column.Get()); }
  // A copy of column i.
  Column GetColumn(int i) const {
    detail::CheckIndex(i, Size(), "Column");
    return Column(array_->GetColumn(i));
  }
  void Reserve(int count) {
    detail::CheckReserve(count);
    array_->Reserve(count);
  }
  void Clear() { array_->Clear(); }

  IColumnArray* Get() const { return array_.get(); }

 private:
  detail::Handle<IColumnArray> array_;
};

}  // namespace Zelq

#endif  // ZELQ_ZELQCPP_ELEMS_H_
