// Looking up variables and constraints by index and name, naming them in
// bulk, and reading a variable's column or a constraint's row.
#include <vector>

#include "frame/engine_index.h"
#include "model/element_checks.h"
#include "model/zelq_model.h"
#include "scalar/expr_data.h"
#include "scalar/expr_handles.h"
#include "scalar/handles.h"

namespace Zelq {
namespace {

// The words that differ between variables and constraints.
struct KindText {
  const char* invalid_index;
  const char* internal_index;
  const char* no_such;
  const char* set_names;
};

constexpr KindText kVarText = {"Invalid col index", "Internal col index error", "No such variable",
                               "Fail to set names of variables"};
constexpr KindText kConstrText = {"Invalid row index", "Internal row index error",
                                  "No such constraint", "Fail to set names of constraints"};

// The record at engine index i of `table`: live there, or removed from there
// and not yet compacted. Anything else is a table out of step with the engine
// (code 5). Failures give an invalid record (index -2).
ElementRef RecordAt(const ElementTable& table, int i, const KindText& text, ErrorRecord& error) {
  if (i < 0 || i >= table.count) {
    SetError(error, kErrorINVALID, "%s", text.invalid_index);
    return InvalidRecord();
  }
  error.ClearAtEntry();
  if (static_cast<size_t>(i) < table.records.size()) {
    const ElementRef& ref = table.records[i];
    if (ref->index == i || ref->index == RemovedIndex(i)) return ref;
  }
  SetError(error, kErrorINTERNAL, "%s", text.internal_index);
  return InvalidRecord();
}

// The record named `name` through the engine's name index; compaction first
// so that engine indices and table positions agree.
using FindFn = int (*)(ZELQprob*, const char*, int*);
ElementRef RecordNamed(ZelqModel& model, ElementKind kind, FindFn find, const char* name,
                       const KindText& text) {
  if (!model.Compact()) return InvalidRecord();
  ErrorRecord& error = model.Error();
  int idx = -1;
  int rc = find(model.Prob(), name, &idx);
  if (rc != 0 || idx < 0) {
    SetError(error, rc != 0 ? rc : kErrorINVALID, "%s", text.no_such);
    return InvalidRecord();
  }
  const ElementTable& table = model.Data().Table(kind);
  if (static_cast<size_t>(idx) >= table.records.size() || table.records[idx]->index != idx) {
    SetError(error, kErrorINTERNAL, "%s", text.internal_index);
    return InvalidRecord();
  }
  return table.records[idx];
}

std::vector<ElementRef> LiveRecords(const ElementTable& table) {
  std::vector<ElementRef> live;
  live.reserve(table.records.size());
  for (const ElementRef& ref : table.records) {
    if (ref->index >= 0) live.push_back(ref);
  }
  return live;
}

// Names every element of `records` with one engine call. Each element is
// checked first (removed: code 3 with its former index), then the count of
// names; the cached names change only when the engine accepted them.
using SetNamesFn = int (*)(ZELQprob*, int, const int*, const char* const*);
void SetRecordNames(ZelqModel& model, const std::vector<ElementRef>* records,
                    const char* const* names, int len, bool vars, SetNamesFn set_names,
                    const KindText& text) {
  ErrorRecord& error = model.Error();
  error.ClearAtEntry();
  static const std::vector<ElementRef> kNone;
  const std::vector<ElementRef>& list = records != nullptr ? *records : kNone;
  std::vector<int> indices;
  if (!LiveIndicesOrError(list, model.Data(), vars, &indices, error)) return;
  if (len < 0 || static_cast<size_t>(len) != list.size() || (len > 0 && names == nullptr)) {
    SetError(error, kErrorINVALID, "Invalid size of input names");
    return;
  }
  if (indices.empty()) return;
  int rc = set_names(model.Prob(), len, indices.data(), names);
  SetError(error, rc, "%s", text.set_names);
  if (rc != 0) return;
  for (size_t k = 0; k < list.size(); ++k) list[k]->name = names[k] != nullptr ? names[k] : "";
}

}  // namespace

IVar* ZelqModel::GetVar(int idx) {
  return NewVarHandle(Var(RecordAt(Data().Table(kVarKind), idx, kVarText, Error())));
}

IConstraint* ZelqModel::GetConstr(int idx) {
  return NewConstrHandle(
      Constraint(RecordAt(Data().Table(kConstrKind), idx, kConstrText, Error())));
}

IVar* ZelqModel::GetVarByName(const char* name) {
  return NewVarHandle(Var(RecordNamed(*this, kVarKind, Engine().GetColIdx, name, kVarText)));
}

IConstraint* ZelqModel::GetConstrByName(const char* name) {
  return NewConstrHandle(
      Constraint(RecordNamed(*this, kConstrKind, Engine().GetRowIdx, name, kConstrText)));
}

IVarArray* ZelqModel::GetVars() {
  Error().ClearAtEntry();
  return NewVarArray(LiveRecords(Data().Table(kVarKind)));
}

IConstrArray* ZelqModel::GetConstrs() {
  Error().ClearAtEntry();
  return NewConstrArray(LiveRecords(Data().Table(kConstrKind)));
}

void ZelqModel::SetNames(const IVarArray* vars, const char* const* names, int len) {
  SetRecordNames(*this, RecordsOf(vars), names, len, true, Engine().SetColNames, kVarText);
}

void ZelqModel::SetNames(const IConstrArray* constrs, const char* const* names, int len) {
  SetRecordNames(*this, RecordsOf(constrs), names, len, false, Engine().SetRowNames, kConstrText);
}

namespace {

using SliceFn = decltype(&::ZELQ_GetCols);

// One column or row of the engine's matrix: the size query, then the fetch,
// each recorded with its own message. False after a failure.
bool FetchSlice(ZelqModel& model, SliceFn EngineIndex::*fetch, int index, const char* size_message,
                const char* data_message, std::vector<int>& indices, std::vector<double>& coeffs) {
  int size = 0;
  int rc = (Engine().*fetch)(model.Prob(), 1, &index, nullptr, nullptr, nullptr, nullptr, 0, &size);
  SetError(model.Error(), rc, "%s", size_message);
  if (rc != 0) return false;
  indices.resize(size);
  coeffs.resize(size);
  rc = (Engine().*fetch)(model.Prob(), 1, &index, nullptr, nullptr, indices.data(), coeffs.data(),
                         size, &size);
  SetError(model.Error(), rc, "%s", data_message);
  return rc == 0;
}

// The records of `table` at the engine's indices; code 5 with `message` for
// an index the table does not hold.
bool MapRecords(ErrorRecord& error, const std::vector<ElementRef>& table,
                const std::vector<int>& indices, const char* message,
                std::vector<ElementRef>& records) {
  records.reserve(indices.size());
  for (int k : indices) {
    if (k < 0 || static_cast<size_t>(k) >= table.size()) {
      SetError(error, kErrorINTERNAL, "%s", message);
      return false;
    }
    records.push_back(table[k]);
  }
  return true;
}

}  // namespace

// The column of a live variable: each engine row is mapped back to the
// constraint record at that position of the (compacted) table.
IColumn* ZelqModel::GetCol(const IVar* var) {
  const Var* value = VarOf(var);
  if (value == nullptr || LiveIndex(value->record, Data()) < 0) {
    SetError(Error(), kErrorINVALID, "Invalid variable");
    return NewColumn(ColumnData{});
  }
  std::vector<int> rows;
  ColumnData column;
  if (!Compact() ||
      !FetchSlice(*this, &EngineIndex::GetCols, value->record->index,
                  "Fail to get required col size", "Fail to get col data", rows, column.coeffs) ||
      !MapRecords(Error(), Data().Table(kConstrKind).records, rows, "Internal row index error",
                  column.constrs)) {
    return NewColumn(ColumnData{});
  }
  return NewColumn(std::move(column));
}

// The row of a live constraint as an expression over the model's variables,
// with constant 0.
IExpr* ZelqModel::GetRow(const IConstraint* constr) {
  const Constraint* value = ConstrOf(constr);
  if (value == nullptr || LiveIndex(value->record, Data()) < 0) {
    SetError(Error(), kErrorINVALID, "Invalid constraint");
    return NewExpr(ExprData{});
  }
  std::vector<int> cols;
  std::vector<ElementRef> vars;
  ExprData expr;
  if (!Compact() ||
      !FetchSlice(*this, &EngineIndex::GetRows, value->record->index,
                  "Fail to get required row buffer size", "Fail to get row data", cols,
                  expr.coeffs) ||
      !MapRecords(Error(), Data().Table(kVarKind).records, cols, "Internal col index error",
                  vars)) {
    return NewExpr(ExprData{});
  }
  expr.vars.reserve(vars.size());
  for (ElementRef& ref : vars) expr.vars.push_back(Var(std::move(ref)));
  return NewExpr(std::move(expr));
}

}  // namespace Zelq
