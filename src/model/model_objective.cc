// The linear objective: sense, constant, coefficients, and reading it back.
#include <climits>
#include <numeric>
#include <vector>

#include "frame/engine_index.h"
#include "model/element_checks.h"
#include "model/zelq_model.h"
#include "scalar/expr_data.h"
#include "scalar/expr_handles.h"
#include "scalar/handles.h"

namespace Zelq {
namespace {

// Objective coefficients of every column from the terms of `expr`, summed per
// column (0 for columns the expression does not use). Terms of removed or
// invalid variables are dropped; a variable of another model is code 3.
bool DenseObjective(const ExprData& expr, const ModelData& data, std::vector<double>* dense,
                    ErrorRecord& error) {
  dense->assign(data.tables[kVarKind].count, 0.0);
  for (size_t k = 0; k < expr.vars.size(); ++k) {
    const ElementRef& ref = expr.vars[k].record;
    if (!ref || ref->index < 0) continue;
    int32_t col = LiveIndex(ref, data);
    if (col < 0 || static_cast<size_t>(col) >= dense->size()) {
      SetError(error, kErrorINVALID, "Invalid variable");
      return false;
    }
    (*dense)[col] += expr.coeffs[k];
  }
  return true;
}

}  // namespace

void ZelqModel::SetObjSense(int sense) {
  if (!Compact()) return;
  SetError(Error(), Engine().SetObjSense(Prob(), sense), "Fail to set objective sense");
}

void ZelqModel::SetObjConst(double constant) {
  if (!Compact()) return;
  SetError(Error(), Engine().SetObjConst(Prob(), constant), "Fail to set objective constant");
}

// Replaces the whole linear objective. The constant goes first and is put
// back if the coefficients are refused, so a failure leaves the objective as
// it was. The caller's expression is only read.
void ZelqModel::SetLinObjective(const IExpr* expr) {
  ErrorRecord& error = Error();
  const ExprData* value = ExprOf(expr);
  if (value == nullptr) {
    SetError(error, kErrorINVALID, "Invalid expression");
    return;
  }
  if (!Compact()) return;
  std::vector<double> dense;
  if (!DenseObjective(*value, Data(), &dense, error)) return;
  ZELQprob* prob = Prob();
  double old_constant = 0.0;
  int rc = Engine().GetDblAttr(prob, "ObjConst", &old_constant);
  if (rc == 0) rc = Engine().SetObjConst(prob, value->constant);
  if (rc != 0) {
    SetError(error, rc, "Fail to set objective");
    return;
  }
  std::vector<int> cols(dense.size());
  std::iota(cols.begin(), cols.end(), 0);
  rc = Engine().ReplaceColObj(prob, static_cast<int>(cols.size()), cols.data(), dense.data());
  SetError(error, rc, "Fail to set objective");
  if (rc != 0) Engine().SetObjConst(prob, old_constant);
}

// Sets the objective coefficients of the listed variables only; removed ones
// are skipped with their values.
void ZelqModel::SetLinObjective(const IVarArray* vars, const double* coeffs, int len) {
  ErrorRecord& error = Error();
  const std::vector<ElementRef>* list = RecordsOf(vars);
  size_t size = list != nullptr ? list->size() : 0;
  if (size > 0 && (coeffs == nullptr || len < 0 || static_cast<size_t>(len) < size)) {
    SetError(error, kErrorINVALID, "Invalid input values for variables");
    return;
  }
  if (!Compact()) return;
  std::vector<int> cols;
  std::vector<double> values;
  cols.reserve(size);
  values.reserve(size);
  for (size_t k = 0; k < size; ++k) {
    const ElementRef& ref = (*list)[k];
    if (!ref || ref->index < 0) continue;
    int32_t col = LiveIndex(ref, Data());
    if (col < 0) {
      SetError(error, kErrorINVALID, "Invalid variable");
      return;
    }
    cols.push_back(col);
    values.push_back(coeffs[k]);
  }
  if (cols.empty()) return;
  SetError(error,
           Engine().SetColObj(Prob(), static_cast<int>(cols.size()), cols.data(), values.data()),
           "Fail to set objective");
}

// One term per column with a non-zero objective coefficient, in column order,
// plus the objective constant.
IExpr* ZelqModel::GetObjective() {
  if (!Compact()) return NewExpr(ExprData{});
  ErrorRecord& error = Error();
  const std::vector<ElementRef>& records = Data().Table(kVarKind).records;
  int cols = static_cast<int>(records.size());
  std::vector<double> obj(records.size());
  double constant = 0.0;
  int rc = Engine().GetColInfo(Prob(), "Obj", cols, nullptr, obj.data());
  if (rc == 0) rc = Engine().GetDblAttr(Prob(), "ObjConst", &constant);
  SetError(error, rc, "Fail to get objective");
  if (rc != 0) return NewExpr(ExprData{});
  ExprData expr;
  for (int j = 0; j < cols; ++j) {
    if (obj[j] == 0.0) continue;
    expr.vars.push_back(Var(records[j]));
    expr.coeffs.push_back(obj[j]);
  }
  expr.constant = constant;
  return NewExpr(std::move(expr));
}

int ZelqModel::GetObjSense() {
  if (!Compact()) return INT_MIN;
  int sense = 0;
  int rc = Engine().GetIntAttr(Prob(), "ObjSense", &sense);
  SetError(Error(), rc, "Fail to get objective sense");
  return rc == 0 ? sense : INT_MIN;
}

// The sense is checked before anything changes, so that a bad sense does not
// leave a new objective behind.
void ZelqModel::SetObjective(const IExpr* expr, int sense) {
  if (sense != ZELQ_MINIMIZE && sense != ZELQ_MAXIMIZE) {
    SetError(Error(), kErrorINVALID, "Invalid objective sense");
    return;
  }
  SetLinObjective(expr);
  if (Error().Failed()) return;
  SetObjSense(sense);
}

}  // namespace Zelq
