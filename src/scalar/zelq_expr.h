// ZelqExpr: the implementation of Zelq::IExpr.
//
// A thin shell: every operation forwards to the ExprData held through shared
// storage, so several objects can share one expression. The shell's own
// field is the text of the last GetString, which the returned pointer
// points into.
#ifndef ZELQ_SCALAR_ZELQ_EXPR_H_
#define ZELQ_SCALAR_ZELQ_EXPR_H_

#include <string>
#include <utility>

#include "frame/shared_block.h"
#include "scalar/expr_data.h"
#include "zelq/zelqcpp_expr_iface.h"

namespace Zelq {

class ZelqExpr final : public IExpr {
 public:
  explicit ZelqExpr(Shared<ExprData> data) : data_(std::move(data)) {}

  int GetSize() const override;
  IVar* GetVar(int i) const override;
  double GetCoeff(int i) const override;
  double GetConstant() const override;
  void SetCoeff(int i, double value) override;
  void SetConstant(double value) override;
  void AddConstant(double value) override;
  void AddTerm(const IVar* var, double coeff) override;
  int AddTerms(const IVarArray* vars, const double* coeffs, int len) override;
  int AddTerms(const IVarArray* vars, double coeff) override;
  int AddTerms(const std::vector<IVar*>& vars, const double* coeffs, int len) override;
  int AddTerms(const std::vector<IVar*>& vars, double coeff) override;
  void AddExpr(const IExpr* other, double mult) override;
  double Evaluate() override;
  void Remove(int i) override;
  void Remove(const IVar* var) override;
  void Reserve(int count) override;
  void Clear() override;
  IExpr* Clone() const override;
  void iDivide(double divisor) override;
  void iMultiply(double factor) override;
  const char* GetString(size_t width) override;
  int GetErrorCode() const override;
  const char* GetErrorMessage() const override;

  ExprData& Data() const { return *data_; }
  const Shared<ExprData>& Storage() const { return data_; }

 private:
  Shared<ExprData> data_;
  std::string text_;
};

}  // namespace Zelq

#endif  // ZELQ_SCALAR_ZELQ_EXPR_H_
