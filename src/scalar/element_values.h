// The values behind element handles: a shared element record plus the
// handle's own error record.
//
// Var is what a Zelq::IVar handle (ZelqVar) holds and what a linear
// expression stores per term; copying one shares the element and copies the
// error record. Constraint is the same for linear constraints.
#ifndef ZELQ_SCALAR_ELEMENT_VALUES_H_
#define ZELQ_SCALAR_ELEMENT_VALUES_H_

#include <cstdint>
#include <utility>

#include "frame/error_record.h"
#include "model/model_data.h"

namespace Zelq {

struct ElementValue {
  ElementRef record;
  ErrorRecord error;

  ElementValue() = default;
  explicit ElementValue(ElementRef ref) : record(std::move(ref)) {}

  // The engine index; -2 when there is no record.
  int32_t Index() const { return record ? record->index : kInvalidIndex; }
  bool Live() const { return Index() >= 0 && record->model != nullptr; }
};

struct Var : ElementValue {
  using ElementValue::ElementValue;
};

struct Constraint : ElementValue {
  using ElementValue::ElementValue;
};

// A handle value for an invalid element (index -2, no model).
inline ElementRef InvalidRecord() { return ElementRef::Wrap(new ElementRecord); }

}  // namespace Zelq

#endif  // ZELQ_SCALAR_ELEMENT_VALUES_H_
