// ZelqVarArray and ZelqConstrArray: growable lists of element records.
//
// Each entry is a shared reference, so an array keeps its elements' records
// alive; pushing one variable twice gives two entries on one record.
#ifndef ZELQ_SCALAR_ELEMENT_ARRAYS_H_
#define ZELQ_SCALAR_ELEMENT_ARRAYS_H_

#include <exception>
#include <utility>
#include <vector>

#include "frame/shared_block.h"
#include "model/model_data.h"
#include "zelq/zelqcpp_elem_iface.h"

namespace Zelq {

using RecordList = std::vector<ElementRef>;

// Reserve is only a hint: a count below 1, or one the allocator refuses,
// leaves the list as it was (nothing may throw across the interface).
template <class List>
void ReserveHint(List& list, int count) {
  if (count <= 0) return;
  try {
    list.reserve(static_cast<size_t>(count));
  } catch (const std::exception&) {
  }
}

class ZelqVarArray final : public IVarArray {
 public:
  explicit ZelqVarArray(Shared<RecordList> records) : records_(std::move(records)) {}

  void PushBack(const IVar* var) override;
  void PushBack(const IVarArray* vars) override;
  int Size() const override { return static_cast<int>(records_->size()); }
  IVar* GetVar(int i) const override;
  void Append(const IVarArray* vars) override;
  void Reserve(int count) override;

  const RecordList& Records() const { return *records_; }

 private:
  Shared<RecordList> records_;
};

class ZelqConstrArray final : public IConstrArray {
 public:
  explicit ZelqConstrArray(Shared<RecordList> records) : records_(std::move(records)) {}

  void PushBack(const IConstraint* constr) override;
  int Size() const override { return static_cast<int>(records_->size()); }
  IConstraint* GetConstr(int i) const override;
  void Append(const IConstrArray* constrs) override;
  void Reserve(int count) override;

  const RecordList& Records() const { return *records_; }

 private:
  Shared<RecordList> records_;
};

}  // namespace Zelq

#endif  // ZELQ_SCALAR_ELEMENT_ARRAYS_H_
