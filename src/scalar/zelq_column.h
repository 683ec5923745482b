// ZelqColumn and ZelqColumnArray: the constraint coefficients of variables
// still to be added. Plain holders: no error record, nothing reaches the
// engine until the model adds a variable with them.
#ifndef ZELQ_SCALAR_ZELQ_COLUMN_H_
#define ZELQ_SCALAR_ZELQ_COLUMN_H_

#include <utility>
#include <vector>

#include "frame/shared_block.h"
#include "scalar/handles.h"
#include "zelq/zelqcpp_elem_iface.h"

namespace Zelq {

class ZelqColumn final : public IColumn {
 public:
  explicit ZelqColumn(Shared<ColumnData> data) : data_(std::move(data)) {}

  int Size() const override { return static_cast<int>(data_->coeffs.size()); }
  // -2 and 1e30 for a term position out of range.
  int GetIdx(int i) const override;
  double GetCoeff(int i) const override;
  void AddTerm(const IConstraint* constr, double coeff) override;
  int AddTerms(const IConstrArray* constrs, const double* coeffs, int len) override;
  void AddColumn(const IColumn* column, double mult) override;
  void Remove(int i) override;
  void Remove(const IConstraint* constr) override;
  void Reserve(int count) override;
  void Clear() override;
  IColumn* Clone() const override { return NewColumn(*data_); }

  const ColumnData& Data() const { return *data_; }

 private:
  Shared<ColumnData> data_;
};

using ColumnList = std::vector<ColumnData>;

class ZelqColumnArray final : public IColumnArray {
 public:
  explicit ZelqColumnArray(Shared<ColumnList> columns) : columns_(std::move(columns)) {}

  void PushBack(const IColumn* column) override;
  int Size() const override { return static_cast<int>(columns_->size()); }
  IColumn* GetColumn(int i) const override;
  void Reserve(int count) override;
  void Clear() override { columns_->clear(); }

  const ColumnList& Columns() const { return *columns_; }

 private:
  Shared<ColumnList> columns_;
};

// A new empty column array.
IColumnArray* NewColumnArray();

}  // namespace Zelq

#endif  // ZELQ_SCALAR_ZELQ_COLUMN_H_
