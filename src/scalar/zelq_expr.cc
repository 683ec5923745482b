#include "scalar/zelq_expr.h"

#include <cstddef>
#include <vector>

#include "scalar/expr_handles.h"
#include "scalar/handles.h"

namespace Zelq {
namespace {

// Term indices are the caller's responsibility and are not checked against
// the error record; an index out of range is still kept from reading or
// writing outside the arrays.
bool InRange(const ExprData& expr, int i) {
  return i >= 0 && static_cast<size_t>(i) < expr.vars.size();
}

// The length check of the AddTerms forms that take a coefficient array.
bool CoeffsCover(const double* coeffs, int len, size_t n) {
  return coeffs != nullptr && len >= 0 && static_cast<size_t>(len) >= n;
}

const std::vector<ElementRef>& NoRecords() {
  static const std::vector<ElementRef> empty;
  return empty;
}

// The records of an array; a null array counts as empty.
const std::vector<ElementRef>& ArrayRecords(const IVarArray* vars) {
  const std::vector<ElementRef>* records = RecordsOf(vars);
  return records != nullptr ? *records : NoRecords();
}

}  // namespace

ExprData* ExprOf(const IExpr* expr) {
  return expr != nullptr ? &static_cast<const ZelqExpr*>(expr)->Data() : nullptr;
}

IExpr* NewExpr(ExprData data) {
  return new ZelqExpr(Shared<ExprData>::New(std::move(data)));
}

IExpr* NewExprSharing(const Shared<ExprData>& data) { return new ZelqExpr(data); }

int ZelqExpr::GetSize() const { return static_cast<int>(Data().vars.size()); }

// An index out of range gives a handle of an invalid variable.
IVar* ZelqExpr::GetVar(int i) const {
  if (!InRange(Data(), i)) return NewVarHandle(Var(InvalidRecord()));
  return NewVarHandle(Data().vars[static_cast<size_t>(i)]);
}

// An index out of range reads 0.
double ZelqExpr::GetCoeff(int i) const {
  return InRange(Data(), i) ? Data().coeffs[static_cast<size_t>(i)] : 0.0;
}

double ZelqExpr::GetConstant() const { return Data().constant; }

void ZelqExpr::SetCoeff(int i, double value) {
  if (InRange(Data(), i)) Data().coeffs[static_cast<size_t>(i)] = value;
}

void ZelqExpr::SetConstant(double value) { Data().constant = value; }

void ZelqExpr::AddConstant(double value) { Data().constant += value; }

void ZelqExpr::AddTerm(const IVar* var, double coeff) { AppendTerm(Data(), TermVar(var), coeff); }

int ZelqExpr::AddTerms(const IVarArray* vars, const double* coeffs, int len) {
  const std::vector<ElementRef>& records = ArrayRecords(vars);
  if (!CoeffsCover(coeffs, len, records.size())) return -1;
  return AppendTerms(Data(), records, coeffs);
}

int ZelqExpr::AddTerms(const IVarArray* vars, double coeff) {
  return AppendTerms(Data(), ArrayRecords(vars), coeff);
}

int ZelqExpr::AddTerms(const std::vector<IVar*>& vars, const double* coeffs, int len) {
  if (!CoeffsCover(coeffs, len, vars.size())) return -1;
  return AppendTerms(Data(), vars, coeffs);
}

int ZelqExpr::AddTerms(const std::vector<IVar*>& vars, double coeff) {
  return AppendTerms(Data(), vars, coeff);
}

// A null expression adds nothing.
void ZelqExpr::AddExpr(const IExpr* other, double mult) {
  const ExprData* data = ExprOf(other);
  if (data != nullptr) AddScaledExpr(Data(), *data, mult);
}

double ZelqExpr::Evaluate() { return EvaluateExpr(Data()); }

void ZelqExpr::Remove(int i) {
  if (i >= 0) RemoveTermAt(Data(), static_cast<size_t>(i));
}

void ZelqExpr::Remove(const IVar* var) {
  const Var* value = VarOf(var);
  if (value != nullptr) RemoveVarTerms(Data(), value->Index());
}

// A negative count becomes a huge size, and the arrays throw
// std::length_error: the one exception an expression lets through.
void ZelqExpr::Reserve(int count) {
  Data().coeffs.reserve(static_cast<size_t>(count));
  Data().vars.reserve(static_cast<size_t>(count));
}

void ZelqExpr::Clear() { ClearExpr(Data()); }

IExpr* ZelqExpr::Clone() const { return NewExpr(CloneExpr(Data())); }

void ZelqExpr::iDivide(double divisor) { DivideExpr(Data(), divisor); }

void ZelqExpr::iMultiply(double factor) { MultiplyExpr(Data(), factor); }

const char* ZelqExpr::GetString(size_t width) {
  text_ = PrintExpr(Data(), width);
  return text_.c_str();
}

int ZelqExpr::GetErrorCode() const { return Data().error.Code(); }

const char* ZelqExpr::GetErrorMessage() const { return Data().error.Message(); }

}  // namespace Zelq
