#include "scalar/zelq_column.h"

#include "scalar/element_arrays.h"

namespace Zelq {
namespace {

bool InRange(int i, const ColumnData& data) {
  return i >= 0 && static_cast<size_t>(i) < data.coeffs.size();
}

// Removes term i by moving the last term into its place (order not kept).
void RemoveTerm(ColumnData& data, size_t i) {
  const size_t last = data.coeffs.size() - 1;
  if (i != last) {
    data.constrs[i] = std::move(data.constrs[last]);
    data.coeffs[i] = data.coeffs[last];
  }
  data.constrs.pop_back();
  data.coeffs.pop_back();
}

// Appends the terms of `from` scaled by `mult`: exactly 1 copies, exactly -1
// negates as 0.0 - c, anything else multiplies.
void AppendScaled(ColumnData& to, const ColumnData& from, double mult) {
  const size_t n = from.coeffs.size();
  for (size_t i = 0; i < n; ++i) {
    const double c = from.coeffs[i];
    to.constrs.push_back(from.constrs[i]);
    to.coeffs.push_back(mult == 1.0 ? c : mult == -1.0 ? 0.0 - c : c * mult);
  }
}

}  // namespace

IColumn* NewColumn(ColumnData data) {
  return new ZelqColumn(Shared<ColumnData>::New(std::move(data)));
}

const ColumnData* ColumnOf(const IColumn* column) {
  return column != nullptr ? &static_cast<const ZelqColumn*>(column)->Data() : nullptr;
}

IColumnArray* NewColumnArray() {
  return new ZelqColumnArray(Shared<ColumnList>::New());
}

const std::vector<ColumnData>* ColumnsOf(const IColumnArray* columns) {
  return columns != nullptr ? &static_cast<const ZelqColumnArray*>(columns)->Columns() : nullptr;
}

int ZelqColumn::GetIdx(int i) const {
  if (!InRange(i, *data_)) return kInvalidIndex;
  const ElementRef& record = data_->constrs[static_cast<size_t>(i)];
  return record ? record->index : kInvalidIndex;
}

double ZelqColumn::GetCoeff(int i) const {
  return InRange(i, *data_) ? data_->coeffs[static_cast<size_t>(i)] : 1e30;
}

void ZelqColumn::AddTerm(const IConstraint* constr, double coeff) {
  const Constraint* value = ConstrOf(constr);
  if (value == nullptr) return;
  data_->constrs.push_back(value->record ? value->record : InvalidRecord());
  data_->coeffs.push_back(coeff);
}

int ZelqColumn::AddTerms(const IConstrArray* constrs, const double* coeffs, int len) {
  const std::vector<ElementRef>* records = RecordsOf(constrs);
  const size_t n = records != nullptr ? records->size() : 0;
  if (coeffs == nullptr || len < 0 || static_cast<size_t>(len) < n) return -1;
  ColumnData& data = *data_;
  data.constrs.reserve(data.constrs.size() + n);
  data.coeffs.reserve(data.coeffs.size() + n);
  for (size_t i = 0; i < n; ++i) {
    data.constrs.push_back((*records)[i]);
    data.coeffs.push_back(coeffs[i]);
  }
  return static_cast<int>(n);
}

void ZelqColumn::AddColumn(const IColumn* column, double mult) {
  const ColumnData* from = ColumnOf(column);
  if (from == nullptr || mult == 0.0) return;
  if (from == data_.Get()) {
    const ColumnData copy = *from;  // adding a column to itself adds its initial terms once
    AppendScaled(*data_, copy, mult);
  } else {
    AppendScaled(*data_, *from, mult);
  }
}

void ZelqColumn::Remove(int i) {
  if (InRange(i, *data_)) RemoveTerm(*data_, static_cast<size_t>(i));
}

void ZelqColumn::Remove(const IConstraint* constr) {
  const Constraint* value = ConstrOf(constr);
  if (value == nullptr) return;
  const int32_t k = value->Index();
  if (k < 0) return;
  ColumnData& data = *data_;
  size_t p = 0;
  while (p < data.coeffs.size()) {
    const ElementRef& record = data.constrs[p];
    if (record && record->index == k) {
      RemoveTerm(data, p);  // p now holds the former last term: look at it again
    } else {
      ++p;
    }
  }
}

void ZelqColumn::Reserve(int count) {
  ReserveHint(data_->constrs, count);
  ReserveHint(data_->coeffs, count);
}

void ZelqColumn::Clear() {
  data_->constrs.clear();
  data_->coeffs.clear();
}

void ZelqColumnArray::PushBack(const IColumn* column) {
  if (const ColumnData* data = ColumnOf(column)) columns_->push_back(*data);
}

IColumn* ZelqColumnArray::GetColumn(int i) const {
  if (i < 0 || static_cast<size_t>(i) >= columns_->size()) return NewColumn(ColumnData());
  return NewColumn((*columns_)[static_cast<size_t>(i)]);
}

void ZelqColumnArray::Reserve(int count) { ReserveHint(*columns_, count); }

}  // namespace Zelq
