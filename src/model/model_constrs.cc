// Adding linear constraints: from an expression, from row data, and several
// at once from senses, bounds or a row matrix. One engine call per operation
// (ZELQ_AddRow or ZELQ_AddRows), then one element record per new row. A
// failed call appends no record and returns a handle on an invalid record
// (index -2) or an empty array, never null.
//
// An expression becomes a row in place: its terms whose variable is not live
// (removed, or never in a model) are dropped first, exactly as the dense
// merge drops them, so a stale index never reaches the engine; then its
// duplicates are merged (x + 2y + 3x -> 4x + 2y) and its constant moves to
// the right-hand side. A variable of another model is refused with code 3
// and leaves the expression as it was.
//
// Adding a constraint from a short expression is the hot path: the indices
// go into a buffer kept in the model core, the coefficients are passed from
// the expression itself, and an expression that merging cannot change skips
// the merge.
#include <cstdint>
#include <vector>

#include "frame/engine_index.h"
#include "model/element_names.h"
#include "model/zelq_model.h"
#include "scalar/expr_data.h"
#include "scalar/expr_handles.h"
#include "scalar/expr_merge.h"
#include "scalar/handles.h"

namespace Zelq {
namespace {

constexpr double kInfinity = 1e30;
// Rows with at most this many terms are checked for duplicates directly.
constexpr size_t kShortRow = 8;

IConstraint* InvalidConstr() { return NewConstrHandle(Constraint(InvalidRecord())); }
IConstrArray* NoConstrs() { return NewConstrArray({}); }

// 'E', 'G' and 'L': bit (sense - 69) of 133 is set for exactly these three.
bool IsRowSense(char sense) {
  const unsigned offset = static_cast<unsigned>(static_cast<int>(sense)) - 69u;
  return offset < 8u && ((133u >> offset) & 1u) != 0;
}

// Removes the terms whose variable has a negative index, keeping the order
// of the others.
void DropDetachedTerms(ExprData& expr) {
  size_t kept = 0;
  for (size_t i = 0; i < expr.vars.size(); ++i) {
    if (expr.vars[i].Index() < 0) continue;
    if (kept != i) {
      expr.vars[kept] = std::move(expr.vars[i]);
      expr.coeffs[kept] = expr.coeffs[i];
    }
    ++kept;
  }
  expr.vars.erase(expr.vars.begin() + static_cast<std::ptrdiff_t>(kept), expr.vars.end());
  expr.coeffs.resize(kept);
}

// True when merging cannot change the (live) terms: few of them, every
// coefficient non-zero and no variable twice. Both merge strategies leave
// such an expression exactly as it is.
bool AlreadyMerged(const ExprData& expr) {
  const size_t n = expr.vars.size();
  if (n > kShortRow) return false;
  for (size_t i = 0; i < n; ++i) {
    if (expr.coeffs[i] == 0.0) return false;
    const int32_t index = expr.vars[i].Index();
    for (size_t j = 0; j < i; ++j) {
      if (expr.vars[j].Index() == index) return false;
    }
  }
  return true;
}

// Makes `expr` ready to be a row of `model` and writes its column indices to
// the core's row buffer; the coefficients stay in expr->coeffs. Null (code 3
// recorded) for a null expression or a variable of another model.
ExprData* PrepareRow(ZelqModel& model, const IExpr* handle) {
  ExprData* expr = ExprOf(handle);
  if (expr == nullptr) {
    SetError(model.Error(), kErrorINVALID, "Invalid linear expression");
    return nullptr;
  }
  const ModelData* data = &model.Data();
  bool detached = false;
  for (size_t i = 0; i < expr->vars.size(); ++i) {
    const Var& var = expr->vars[i];
    if (var.Index() < 0) {
      detached = true;
    } else if (var.record->model != data) {
      SetError(model.Error(), kErrorINVALID, "The %d-th term's variable belongs to another model",
               static_cast<int>(i));
      return nullptr;
    }
  }
  if (detached) DropDetachedTerms(*expr);
  ModelCore& core = model.Core();
  if (!AlreadyMerged(*expr)) {
    MergeTerms(*expr, model.Data().Table(kVarKind).count, core.merge_values, core.merge_flags);
  }
  const size_t n = expr->vars.size();
  if (core.row_indices.size() < n) core.row_indices.resize(n);
  for (size_t i = 0; i < n; ++i) core.row_indices[i] = expr->vars[i].Index();
  return expr;
}

// The engine call of every single-row form, and the record of its row.
IConstraint* AddOneRow(ZelqModel& model, int nnz, const int* cols, const double* coeffs,
                       char sense, double bound, double upper, const char* name,
                       const char* message) {
  int rc = Engine().AddRow(model.Prob(), nnz, cols, coeffs, sense, bound, upper, name);
  SetError(model.Error(), rc, "%s", message);
  if (rc != 0) return InvalidConstr();
  return NewConstrHandle(Constraint(model.Data().Append(kConstrKind, name)));
}

// The engine call of every several-row form, and the records of its rows.
// Without senses, `bounds` and `uppers` are the rows' lower and upper bounds.
struct RowsRequest {
  int count = 0;
  const int* beg = nullptr;
  const int* cnt = nullptr;
  const int* idx = nullptr;
  const double* val = nullptr;
  const char* senses = nullptr;
  const double* bounds = nullptr;
  const double* uppers = nullptr;
};

IConstrArray* AddRows(ZelqModel& model, const RowsRequest& request, const ElementNames& names) {
  int rc = Engine().AddRows(model.Prob(), request.count, request.beg, request.cnt, request.idx,
                            request.val, request.senses, request.bounds, request.uppers,
                            names.List());
  SetError(model.Error(), rc, "Fail to add constraints with row matrix data");
  if (rc != 0) return NoConstrs();
  std::vector<ElementRef> records;
  records.reserve(static_cast<size_t>(request.count));
  for (int i = 0; i < request.count; ++i) {
    records.push_back(model.Data().Append(kConstrKind, names.At(i)));
  }
  return NewConstrArray(std::move(records));
}

RowsRequest Matrix(int count, const int* beg, const int* cnt, const int* idx, const double* val) {
  RowsRequest request;
  request.count = count;
  request.beg = beg;
  request.cnt = cnt;
  request.idx = idx;
  request.val = val;
  return request;
}

// Checks of the row-matrix forms with senses; false with code 3 recorded.
bool CheckSensesAndRhs(ErrorRecord& error, const char* senses, const double* rhs) {
  if (senses == nullptr) {
    SetError(error, kErrorINVALID, "Invalid constraint sense");
    return false;
  }
  if (rhs == nullptr) {
    SetError(error, kErrorINVALID, "Invalid right-hand side values of constraints");
    return false;
  }
  return true;
}

bool CheckBounds(ErrorRecord& error, const double* lbs, const double* ubs) {
  if (lbs == nullptr || ubs == nullptr) {
    SetError(error, kErrorINVALID, "Invalid right-hand side values of constraints");
    return false;
  }
  return true;
}

// Bound pairs of empty rows given by sense and right-hand side. The first
// sense without a pair ('R' needs two bounds; anything else is unknown)
// records code 3 and ends the conversion: its pair and all later ones keep
// the (0, 0) the lists start with. The caller still adds every row, and the
// engine's code then replaces the recorded one, leaving the message.
void SensesToBounds(int count, const char* senses, const double* rhs, std::vector<double>& lowers,
                    std::vector<double>& uppers, ErrorRecord& error) {
  for (int i = 0; i < count; ++i) {
    switch (senses[i]) {
      case 'E':
        lowers[i] = rhs[i];
        uppers[i] = rhs[i];
        break;
      case 'G':
        lowers[i] = rhs[i];
        uppers[i] = kInfinity;
        break;
      case 'L':
        lowers[i] = -kInfinity;
        uppers[i] = rhs[i];
        break;
      case 'N':
        lowers[i] = -kInfinity;
        uppers[i] = kInfinity;
        break;
      case 'R':
        SetError(error, kErrorINVALID, "Use constrbuilder to add range constraint");
        return;
      default:
        SetError(error, kErrorINVALID, "Invalid constraint sense");
        return;
    }
  }
}

}  // namespace

IConstraint* ZelqModel::AddConstr(const IExpr* expr, char sense, double rhs, const char* name) {
  if (!IsRowSense(sense)) {
    SetError(Error(), kErrorINVALID, "Invalid constraint sense");
    return InvalidConstr();
  }
  ExprData* data = PrepareRow(*this, expr);
  if (data == nullptr) return InvalidConstr();
  return AddOneRow(*this, static_cast<int>(data->vars.size()), Core().row_indices.data(),
                   data->coeffs.data(), sense, rhs - data->constant, kInfinity, name,
                   "Fail to add a constraint");
}

IConstraint* ZelqModel::AddConstr(const IExpr* expr, double lb, double ub, const char* name) {
  ExprData* data = PrepareRow(*this, expr);
  if (data == nullptr) return InvalidConstr();
  return AddOneRow(*this, static_cast<int>(data->vars.size()), Core().row_indices.data(),
                   data->coeffs.data(), 'R', lb - data->constant, ub - data->constant, name,
                   "Fail to add a constraint");
}

IConstraint* ZelqModel::AddConstr(int nnz, const int* cols, const double* coeffs, char sense,
                                  double rhs, const char* name) {
  if (!IsRowSense(sense)) {
    SetError(Error(), kErrorINVALID, "Invalid constraint sense: %d", static_cast<int>(sense));
    return InvalidConstr();
  }
  return AddOneRow(*this, nnz, cols, coeffs, sense, rhs, kInfinity, name,
                   "Fail to add a constraint with row data");
}

IConstraint* ZelqModel::AddConstr(int nnz, const int* cols, const double* coeffs, double lb,
                                  double ub, const char* name) {
  return AddOneRow(*this, nnz, cols, coeffs, 'R', lb, ub, name,
                   "Fail to add a constraint with row data");
}

IConstrArray* ZelqModel::AddConstrs(int count, const char* senses, const double* rhs,
                                    const char* prefix) {
  if (senses == nullptr || rhs == nullptr || count < 1) return NoConstrs();
  const size_t n = static_cast<size_t>(count);
  std::vector<double> lowers(n, 0.0), uppers(n, 0.0);
  SensesToBounds(count, senses, rhs, lowers, uppers, Error());
  return AddConstrs(count, lowers.data(), uppers.data(), prefix);
}

IConstrArray* ZelqModel::AddConstrs(int count, const double* lbs, const double* ubs,
                                    const char* prefix) {
  return AddConstrs(count, nullptr, nullptr, nullptr, nullptr, lbs, ubs, prefix);
}

IConstrArray* ZelqModel::AddConstrs(int count, const char* senses, const double* rhs,
                                    const char* const* names, int nameCount) {
  if (senses == nullptr || rhs == nullptr || count < 1) return NoConstrs();
  if (!CheckNameCount(Error(), count, nameCount)) return NoConstrs();
  const size_t n = static_cast<size_t>(count);
  std::vector<double> lowers(n, 0.0), uppers(n, 0.0);
  SensesToBounds(count, senses, rhs, lowers, uppers, Error());
  return AddConstrs(count, lowers.data(), uppers.data(), names, nameCount);
}

IConstrArray* ZelqModel::AddConstrs(int count, const double* lbs, const double* ubs,
                                    const char* const* names, int nameCount) {
  return AddConstrs(count, nullptr, nullptr, nullptr, nullptr, lbs, ubs, names, nameCount);
}

IConstrArray* ZelqModel::AddConstrs(int count, const int* rowBeg, const int* rowCnt,
                                    const int* rowIdx, const double* rowVal, const char* senses,
                                    const double* rhs, const char* prefix) {
  if (count < 1) return NoConstrs();
  if (!CheckSensesAndRhs(Error(), senses, rhs)) return NoConstrs();
  ElementNames names;
  names.FromPrefix(prefix, count);
  RowsRequest request = Matrix(count, rowBeg, rowCnt, rowIdx, rowVal);
  request.senses = senses;
  request.bounds = rhs;
  return AddRows(*this, request, names);
}

IConstrArray* ZelqModel::AddConstrs(int count, const int* rowBeg, const int* rowCnt,
                                    const int* rowIdx, const double* rowVal, const double* lbs,
                                    const double* ubs, const char* prefix) {
  if (count < 1) return NoConstrs();
  if (!CheckBounds(Error(), lbs, ubs)) return NoConstrs();
  ElementNames names;
  names.FromPrefix(prefix, count);
  RowsRequest request = Matrix(count, rowBeg, rowCnt, rowIdx, rowVal);
  request.bounds = lbs;
  request.uppers = ubs;
  return AddRows(*this, request, names);
}

IConstrArray* ZelqModel::AddConstrs(int count, const int* rowBeg, const int* rowCnt,
                                    const int* rowIdx, const double* rowVal, const char* senses,
                                    const double* rhs, const char* const* names, int nameCount) {
  if (count < 1) return NoConstrs();
  if (!CheckNameCount(Error(), count, nameCount)) return NoConstrs();
  if (!CheckSensesAndRhs(Error(), senses, rhs)) return NoConstrs();
  ElementNames list;
  list.UseList(names);
  RowsRequest request = Matrix(count, rowBeg, rowCnt, rowIdx, rowVal);
  request.senses = senses;
  request.bounds = rhs;
  return AddRows(*this, request, list);
}

IConstrArray* ZelqModel::AddConstrs(int count, const int* rowBeg, const int* rowCnt,
                                    const int* rowIdx, const double* rowVal, const double* lbs,
                                    const double* ubs, const char* const* names, int nameCount) {
  if (count < 1) return NoConstrs();
  if (!CheckNameCount(Error(), count, nameCount)) return NoConstrs();
  if (!CheckBounds(Error(), lbs, ubs)) return NoConstrs();
  ElementNames list;
  list.UseList(names);
  RowsRequest request = Matrix(count, rowBeg, rowCnt, rowIdx, rowVal);
  request.bounds = lbs;
  request.uppers = ubs;
  return AddRows(*this, request, list);
}

}  // namespace Zelq
