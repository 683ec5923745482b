// ZelqConstraint: the library's implementation of Zelq::IConstraint (a
// linear constraint, one row of the engine problem).
#ifndef ZELQ_SCALAR_ZELQ_CONSTRAINT_H_
#define ZELQ_SCALAR_ZELQ_CONSTRAINT_H_

#include <utility>

#include "frame/shared_block.h"
#include "scalar/element_values.h"
#include "zelq/zelqcpp_elem_iface.h"

namespace Zelq {

class ZelqConstraint final : public IConstraint {
 public:
  explicit ZelqConstraint(Shared<Constraint> value) : value_(std::move(value)) {}

  int GetIdx() const override { return value_->Index(); }
  const char* GetName() override;
  void SetName(const char* name) override;
  int GetBasis() override;
  int GetLowerIIS() override;
  int GetUpperIIS() override;
  double Get(const char* info) override;
  void Set(const char* info, double value) override;
  void Remove() override;
  void GetShadowPriceRange(int side, double* low, double* high) override;
  int GetErrorCode() const override { return value_->error.Code(); }
  const char* GetErrorMessage() const override { return value_->error.Message(); }

  Constraint& Value() const { return *value_; }

 private:
  Shared<Constraint> value_;
};

}  // namespace Zelq

#endif  // ZELQ_SCALAR_ZELQ_CONSTRAINT_H_
