#include "scalar/element_arrays.h"

#include "scalar/handles.h"

namespace Zelq {
namespace {

// The record behind a handle value; an invalid record for a value without one.
ElementRef RecordOf(const ElementValue& value) {
  return value.record ? value.record : InvalidRecord();
}

// Appends `from` to `to`, reserving room first when asked. `from` may be `to`
// itself; its entries are then copied before the list grows.
void AppendRecords(RecordList& to, const RecordList* from, bool reserve) {
  if (from == nullptr) return;
  if (from == &to) {
    RecordList copy = to;
    AppendRecords(to, &copy, reserve);
    return;
  }
  if (reserve) to.reserve(to.size() + from->size());
  to.insert(to.end(), from->begin(), from->end());
}

bool InRange(int i, const RecordList& records) {
  return i >= 0 && static_cast<size_t>(i) < records.size();
}

}  // namespace

IVarArray* NewVarArray(std::vector<ElementRef> records) {
  return new ZelqVarArray(Shared<RecordList>::New(std::move(records)));
}

IConstrArray* NewConstrArray(std::vector<ElementRef> records) {
  return new ZelqConstrArray(Shared<RecordList>::New(std::move(records)));
}

const std::vector<ElementRef>* RecordsOf(const IVarArray* vars) {
  return vars != nullptr ? &static_cast<const ZelqVarArray*>(vars)->Records() : nullptr;
}

const std::vector<ElementRef>* RecordsOf(const IConstrArray* constrs) {
  return constrs != nullptr ? &static_cast<const ZelqConstrArray*>(constrs)->Records() : nullptr;
}

void ZelqVarArray::PushBack(const IVar* var) {
  if (const Var* value = VarOf(var)) records_->push_back(RecordOf(*value));
}

void ZelqVarArray::PushBack(const IVarArray* vars) {
  AppendRecords(*records_, RecordsOf(vars), false);
}

IVar* ZelqVarArray::GetVar(int i) const {
  if (!InRange(i, *records_)) return NewVarHandle(Var(InvalidRecord()));
  return NewVarHandle(Var((*records_)[static_cast<size_t>(i)]));
}

void ZelqVarArray::Append(const IVarArray* vars) {
  AppendRecords(*records_, RecordsOf(vars), true);
}

void ZelqVarArray::Reserve(int count) { ReserveHint(*records_, count); }

void ZelqConstrArray::PushBack(const IConstraint* constr) {
  if (const Constraint* value = ConstrOf(constr)) records_->push_back(RecordOf(*value));
}

IConstraint* ZelqConstrArray::GetConstr(int i) const {
  if (!InRange(i, *records_)) return NewConstrHandle(Constraint(InvalidRecord()));
  return NewConstrHandle(Constraint((*records_)[static_cast<size_t>(i)]));
}

void ZelqConstrArray::Append(const IConstrArray* constrs) {
  AppendRecords(*records_, RecordsOf(constrs), true);
}

void ZelqConstrArray::Reserve(int count) { ReserveHint(*records_, count); }

}  // namespace Zelq
