// ZelqVar: the library's implementation of Zelq::IVar.
//
// The handle holds one shared Var (element record + error record); copies of
// the handle made by the library share both, so a removal or a failure seen
// through one copy is seen through all.
#ifndef ZELQ_SCALAR_ZELQ_VAR_H_
#define ZELQ_SCALAR_ZELQ_VAR_H_

#include <utility>

#include "frame/shared_block.h"
#include "scalar/element_values.h"
#include "zelq/zelqcpp_elem_iface.h"

namespace Zelq {

class ZelqVar final : public IVar {
 public:
  explicit ZelqVar(Shared<Var> value) : value_(std::move(value)) {}

  int GetIdx() const override { return value_->Index(); }
  const char* GetName() override;
  void SetName(const char* name) override;
  char GetType() override;
  void SetType(char vtype) override;
  int GetBasis() override;
  int GetLowerIIS() override;
  int GetUpperIIS() override;
  double Get(const char* info) override;
  void Set(const char* info, double value) override;
  void Remove() override;
  int GetErrorCode() const override { return value_->error.Code(); }
  const char* GetErrorMessage() const override { return value_->error.Message(); }

  Var& Value() const { return *value_; }

 private:
  Shared<Var> value_;
};

}  // namespace Zelq

#endif  // ZELQ_SCALAR_ZELQ_VAR_H_
