// Interface of the model: Zelq::IModel, 386 slots.
//
// The operations and their slot order come from zelqcpp_model_ops.inc. A
// model never throws across the interface: each operation records its result
// in the model's error record (GetErrorCode/GetErrorMessage). Operations of
// families this release does not provide yet record code 3 and do nothing.
#ifndef ZELQ_ZELQCPP_MODEL_IFACE_H_
#define ZELQ_ZELQCPP_MODEL_IFACE_H_

#include "zelq/zelqcpp_elem_iface.h"
#include "zelq/zelqcpp_envr_iface.h"
#include "zelq/zelqcpp_expr_iface.h"
#include "zelq/zelqcpp_fwd.h"
#include "zelq/zelqcpp_ndarray_iface.h"

namespace Zelq {

// A result type of the list may not contain a comma.
using IntNdArray1 = INdArray<int, 1>;

class IModel {
 public:
  virtual ~IModel() = default;
#define ZELQ_MODEL_OP(family, result, name, params, qualifier) \
  virtual result name params qualifier = 0;
#include "zelq/zelqcpp_model_ops.inc"
#undef ZELQ_MODEL_OP
};

}  // namespace Zelq

#endif  // ZELQ_ZELQCPP_MODEL_IFACE_H_
