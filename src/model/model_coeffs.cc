// Reading and changing coefficients of the constraint matrix.
//
// GetA(colBeg, colCnt, rowIdx, values) hands out the whole matrix by columns
// (compressed sparse columns, rows in the engine's order within a column):
//   - colBeg and colCnt, when not null, get one entry per variable: the
//     position of the column's first entry in rowIdx/values and its count;
//   - rowIdx and values, when not null, get the row index and coefficient of
//     every entry and must hold at least as many entries as the matrix has;
//   - with all four null the call only counts.
// It returns the number of entries, or -1 on failure. Callers ask for the
// count first, size their buffers, and call again:
//   int nnz = model->GetA(nullptr, nullptr, nullptr, nullptr);
//   std::vector<int> beg(cols), cnt(cols), idx(nnz); std::vector<double> val(nnz);
//   model->GetA(beg.data(), cnt.data(), idx.data(), val.data());
#include <vector>

#include "frame/engine_index.h"
#include "model/element_checks.h"
#include "model/zelq_model.h"
#include "scalar/handles.h"

namespace Zelq {
namespace {

// Live indices of a (constraint, variable) pair of this model, or false with
// code 3 recorded.
bool CellOf(ZelqModel& model, const IConstraint* constr, const IVar* var, int* row, int* col) {
  const Constraint* c = ConstrOf(constr);
  const Var* v = VarOf(var);
  *row = c != nullptr ? LiveIndex(c->record, model.Data()) : -1;
  *col = v != nullptr ? LiveIndex(v->record, model.Data()) : -1;
  if (*row < 0) {
    SetError(model.Error(), kErrorINVALID, "Invalid constraint");
    return false;
  }
  if (*col < 0) {
    SetError(model.Error(), kErrorINVALID, "Invalid variable");
    return false;
  }
  return true;
}

}  // namespace

double ZelqModel::GetCoeff(const IConstraint* constr, const IVar* var) {
  int row = -1;
  int col = -1;
  if (!CellOf(*this, constr, var, &row, &col) || !Compact()) return 0.0;
  // Compaction renumbers; read the indices again.
  row = ConstrOf(constr)->record->index;
  col = VarOf(var)->record->index;
  double value = 0.0;
  int rc = Engine().GetElem(Prob(), col, row, &value);
  SetError(Error(), rc, "Fail to get coefficient");
  return rc == 0 ? value : 0.0;
}

void ZelqModel::SetCoeff(const IConstraint* constr, const IVar* var, double value) {
  int row = -1;
  int col = -1;
  if (!CellOf(*this, constr, var, &row, &col) || !Compact()) return;
  row = ConstrOf(constr)->record->index;
  col = VarOf(var)->record->index;
  SetError(Error(), Engine().SetElem(Prob(), col, row, value), "Fail to change coefficient");
}

void ZelqModel::SetCoeffs(const IConstrArray* constrs, const IVarArray* vars, const double* values,
                          int len) {
  ErrorRecord& error = Error();
  static const std::vector<ElementRef> kNone;
  const std::vector<ElementRef>* rows = RecordsOf(constrs);
  const std::vector<ElementRef>* cols = RecordsOf(vars);
  const std::vector<ElementRef>& row_list = rows != nullptr ? *rows : kNone;
  const std::vector<ElementRef>& col_list = cols != nullptr ? *cols : kNone;
  if (len < 0 || row_list.size() != col_list.size() ||
      col_list.size() != static_cast<size_t>(len) || (len > 0 && values == nullptr)) {
    SetError(error, kErrorINVALID, "Dimensions mismatch among constraints, variables and values");
    return;
  }
  std::vector<int> row_idx;
  std::vector<int> col_idx;
  if (!LiveIndicesOrError(row_list, Data(), false, &row_idx, error) ||
      !LiveIndicesOrError(col_list, Data(), true, &col_idx, error)) {
    return;
  }
  if (!Compact()) return;
  if (len == 0) return;
  // Compaction may have renumbered the elements checked above.
  for (int k = 0; k < len; ++k) {
    row_idx[k] = row_list[k]->index;
    col_idx[k] = col_list[k]->index;
  }
  SetError(error, Engine().SetElems(Prob(), len, col_idx.data(), row_idx.data(), values),
           "Fail to change coefficients");
}

int ZelqModel::GetA(int* colBeg, int* colCnt, int* rowIdx, double* values) {
  if (!Compact()) return -1;
  ErrorRecord& error = Error();
  int cols = Data().Table(kVarKind).count;
  int size = 0;
  int rc = Engine().GetCols(Prob(), cols, nullptr, nullptr, nullptr, nullptr, nullptr, 0, &size);
  SetError(error, rc, "Fail to get required col size");
  if (rc != 0) return -1;
  if (colBeg == nullptr && colCnt == nullptr && rowIdx == nullptr && values == nullptr) return size;
  rc = Engine().GetCols(Prob(), cols, nullptr, colBeg, colCnt, rowIdx, values, size, &size);
  SetError(error, rc, "Fail to get col data");
  return rc == 0 ? size : -1;
}

}  // namespace Zelq
