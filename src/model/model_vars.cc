// Adding variables: one engine call per operation (ZELQ_AddCol for a single
// variable, ZELQ_AddCols for several), then one element record per new
// column. A failed call appends no record and returns a handle on an invalid
// record (index -2) or an empty array, never null.
//
// A count below 1 returns an empty array without an engine call and leaves
// the error record as it was. Column objects name constraints by their
// records; each must be live in this model (a removed one is refused with
// code 3, since its index no longer names the row the caller meant).
#include <vector>

#include "frame/engine_index.h"
#include "model/element_names.h"
#include "model/zelq_model.h"
#include "scalar/handles.h"

namespace Zelq {
namespace {

// Column data in the engine's CSC form: column k's entries are
// idx/val[beg[k] .. beg[k + 1]).
struct ColumnMatrix {
  std::vector<int> beg;
  std::vector<int> idx;
  std::vector<double> val;
};

IVar* InvalidVar() { return NewVarHandle(Var(InvalidRecord())); }
IVarArray* NoVars() { return NewVarArray({}); }

// Appends the engine index of each constraint of `column` to `idx`. False
// (code 3 recorded) when one is not a live constraint of `data`.
bool AppendColumnRows(const ModelData& data, const ColumnData& column, std::vector<int>& idx,
                      ErrorRecord& error) {
  for (const ElementRef& ref : column.constrs) {
    if (!ref || ref->model != &data) {
      SetError(error, kErrorINVALID, "Invalid constraint in column data");
      return false;
    }
    if (ref->index < 0) {
      if (IsRemoved(ref->index)) {
        SetError(error, kErrorINVALID, "The %d-th constraint has been removed",
                 RemovedIndex(ref->index));
      } else {
        SetError(error, kErrorINVALID, "Invalid constraint in column data");
      }
      return false;
    }
    idx.push_back(ref->index);
  }
  return true;
}

// The first `count` columns of `columns` as a CSC matrix. False (code 3
// recorded) when there are fewer columns or one names a bad constraint.
bool GatherColumns(const ModelData& data, const IColumnArray* columns, int count,
                   ColumnMatrix& matrix, ErrorRecord& error) {
  const std::vector<ColumnData>* list = ColumnsOf(columns);
  if (list == nullptr || list->size() < static_cast<size_t>(count)) {
    SetError(error, kErrorINVALID, "Not enough columns");
    return false;
  }
  matrix.beg.assign(static_cast<size_t>(count) + 1, 0);
  for (int k = 0; k < count; ++k) {
    const ColumnData& column = (*list)[k];
    if (!AppendColumnRows(data, column, matrix.idx, error)) return false;
    matrix.val.insert(matrix.val.end(), column.coeffs.begin(), column.coeffs.end());
    matrix.beg[k + 1] = static_cast<int>(matrix.idx.size());
  }
  return true;
}

// Everything ZELQ_AddCols takes besides the problem and the names.
struct ColumnsRequest {
  int count = 0;
  const double* lbs = nullptr;
  const double* ubs = nullptr;
  const double* objs = nullptr;
  const char* vtypes = nullptr;
  const int* beg = nullptr;
  const int* cnt = nullptr;
  const int* idx = nullptr;
  const double* val = nullptr;
};

// The one engine call of every AddVars form, and the records of its columns.
IVarArray* AddColumns(ZelqModel& model, const ColumnsRequest& request, const ElementNames& names,
                      const char* message) {
  int rc = Engine().AddCols(model.Prob(), request.count, request.objs, request.beg, request.cnt,
                            request.idx, request.val, request.vtypes, request.lbs, request.ubs,
                            names.List());
  SetError(model.Error(), rc, "%s", message);
  if (rc != 0) return NoVars();
  std::vector<ElementRef> records;
  records.reserve(static_cast<size_t>(request.count));
  for (int i = 0; i < request.count; ++i) {
    records.push_back(model.Data().Append(kVarKind, names.At(i)));
  }
  return NewVarArray(std::move(records));
}

// A single column through ZELQ_AddCol, and its record.
IVar* AddColumn(ZelqModel& model, double lb, double ub, double obj, char vtype, int nnz,
                const int* rows, const double* coeffs, const char* name, const char* message) {
  int rc = Engine().AddCol(model.Prob(), obj, nnz, rows, coeffs, vtype, lb, ub, name);
  SetError(model.Error(), rc, "%s", message);
  if (rc != 0) return InvalidVar();
  return NewVarHandle(Var(model.Data().Append(kVarKind, name)));
}

// Shared tail of the forms that take a column array.
IVarArray* AddColumnArray(ZelqModel& model, ColumnsRequest request, const IColumnArray* columns,
                          const ElementNames& names) {
  ColumnMatrix matrix;
  if (!GatherColumns(model.Data(), columns, request.count, matrix, model.Error())) return NoVars();
  request.beg = matrix.beg.data();
  request.idx = matrix.idx.data();
  request.val = matrix.val.data();
  return AddColumns(model, request, names, "Fail to add vars");
}

ColumnsRequest Bounds(int count, const double* lbs, const double* ubs, const double* objs,
                      const char* vtypes) {
  ColumnsRequest request;
  request.count = count;
  request.lbs = lbs;
  request.ubs = ubs;
  request.objs = objs;
  request.vtypes = vtypes;
  return request;
}

// The same with a column matrix (begin, count, row index, value arrays).
ColumnsRequest WithMatrix(ColumnsRequest request, const int* beg, const int* cnt, const int* idx,
                          const double* val) {
  request.beg = beg;
  request.cnt = cnt;
  request.idx = idx;
  request.val = val;
  return request;
}

}  // namespace

IVar* ZelqModel::AddVar(double lb, double ub, double obj, char vtype, const char* name) {
  return AddColumn(*this, lb, ub, obj, vtype, 0, nullptr, nullptr, name, "Fail to add a variable");
}

// A null column adds the variable without coefficients.
IVar* ZelqModel::AddVar(double lb, double ub, double obj, char vtype, const IColumn* column,
                        const char* name) {
  const ColumnData* data = ColumnOf(column);
  std::vector<int> rows;
  if (data != nullptr) {
    rows.reserve(data->constrs.size());
    if (!AppendColumnRows(Data(), *data, rows, Error())) return InvalidVar();
  }
  return AddColumn(*this, lb, ub, obj, vtype, static_cast<int>(rows.size()), rows.data(),
                   data != nullptr ? data->coeffs.data() : nullptr, name,
                   "Fail to add a variable using Column data");
}

IVar* ZelqModel::AddVar(double lb, double ub, double obj, char vtype, int nnz, const int* rows,
                        const double* coeffs, const char* name) {
  return AddColumn(*this, lb, ub, obj, vtype, nnz, rows, coeffs, name,
                   "Fail to add a variable with column data");
}

IVarArray* ZelqModel::AddVars(int count, char vtype, const char* prefix) {
  if (count < 1) return NoVars();
  std::vector<char> vtypes(static_cast<size_t>(count), vtype);
  return AddVars(count, nullptr, nullptr, nullptr, vtypes.data(), prefix);
}

IVarArray* ZelqModel::AddVars(int count, double lb, double ub, double obj, char vtype,
                              const char* prefix) {
  if (count < 1) return NoVars();
  const size_t n = static_cast<size_t>(count);
  std::vector<double> lbs(n, lb), ubs(n, ub), objs(n, obj);
  std::vector<char> vtypes(n, vtype);
  return AddVars(count, lbs.data(), ubs.data(), objs.data(), vtypes.data(), prefix);
}

IVarArray* ZelqModel::AddVars(int count, const double* lbs, const double* ubs, const double* objs,
                              const char* vtypes, const char* prefix) {
  if (count < 1) return NoVars();
  ElementNames names;
  names.FromPrefix(prefix, count);
  return AddColumns(*this, Bounds(count, lbs, ubs, objs, vtypes), names, "Fail to add vars");
}

IVarArray* ZelqModel::AddVars(int count, const double* lbs, const double* ubs, const double* objs,
                              const char* vtypes, const char* const* names, int nameCount) {
  if (count < 1) return NoVars();
  if (!CheckNameCount(Error(), count, nameCount)) return NoVars();
  ElementNames list;
  list.UseList(names);
  return AddColumns(*this, Bounds(count, lbs, ubs, objs, vtypes), list, "Fail to add vars");
}

IVarArray* ZelqModel::AddVars(int count, const IColumnArray* columns, char vtype,
                              const char* prefix) {
  if (count < 1) return NoVars();
  std::vector<char> vtypes(static_cast<size_t>(count), vtype);
  return AddVars(count, nullptr, nullptr, nullptr, vtypes.data(), columns, prefix);
}

IVarArray* ZelqModel::AddVars(int count, const double* lbs, const double* ubs, const double* objs,
                              const char* vtypes, const IColumnArray* columns,
                              const char* prefix) {
  if (count < 1) return NoVars();
  ElementNames names;
  names.FromPrefix(prefix, count);
  return AddColumnArray(*this, Bounds(count, lbs, ubs, objs, vtypes), columns, names);
}

IVarArray* ZelqModel::AddVars(int count, const double* lbs, const double* ubs, const double* objs,
                              const char* vtypes, const IColumnArray* columns,
                              const char* const* names, int nameCount) {
  if (count < 1) return NoVars();
  if (!CheckNameCount(Error(), count, nameCount)) return NoVars();
  ElementNames list;
  list.UseList(names);
  return AddColumnArray(*this, Bounds(count, lbs, ubs, objs, vtypes), columns, list);
}

IVarArray* ZelqModel::AddVars(int count, const double* lbs, const double* ubs, const double* objs,
                              const char* vtypes, const int* colBeg, const int* colCnt,
                              const int* colIdx, const double* colVal, const char* prefix) {
  if (count < 1) return NoVars();
  ElementNames names;
  names.FromPrefix(prefix, count);
  ColumnsRequest request =
      WithMatrix(Bounds(count, lbs, ubs, objs, vtypes), colBeg, colCnt, colIdx, colVal);
  return AddColumns(*this, request, names, "Fail to add vars with column matrix data");
}

IVarArray* ZelqModel::AddVars(int count, const double* lbs, const double* ubs, const double* objs,
                              const char* vtypes, const int* colBeg, const int* colCnt,
                              const int* colIdx, const double* colVal, const char* const* names,
                              int nameCount) {
  if (count < 1) return NoVars();
  if (!CheckNameCount(Error(), count, nameCount)) return NoVars();
  ElementNames list;
  list.UseList(names);
  ColumnsRequest request =
      WithMatrix(Bounds(count, lbs, ubs, objs, vtypes), colBeg, colCnt, colIdx, colVal);
  return AddColumns(*this, request, list, "Fail to add vars with column matrix data");
}

}  // namespace Zelq
