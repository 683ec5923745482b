// Checks of element handles passed back into their model.
//
// A handle is usable by a model when its record belongs to that model's data
// and its index is live (0 or more). Records of another model, invalid
// handles (index -2) and removed elements (index -3 - i) are not.
#ifndef ZELQ_MODEL_ELEMENT_CHECKS_H_
#define ZELQ_MODEL_ELEMENT_CHECKS_H_

#include <cstdint>
#include <vector>

#include "frame/error_record.h"
#include "model/model_data.h"

namespace Zelq {

inline bool BelongsTo(const ElementRef& ref, const ModelData& data) {
  return ref && ref->model == &data;
}

// The live engine index of `ref` in `data`, or -1 when it has none.
inline int32_t LiveIndex(const ElementRef& ref, const ModelData& data) {
  return BelongsTo(ref, data) && ref->index >= 0 ? ref->index : -1;
}

// True for an element of `data` that was removed (index -3 - i).
inline bool RemovedFrom(const ElementRef& ref, const ModelData& data) {
  return BelongsTo(ref, data) && IsRemoved(ref->index);
}

// The live indices of `list` for an operation that must not skip elements:
// false with code 3 at the first element that was removed ("The %d-th
// variable has been removed", with its former index) or is not of `data`
// ("Invalid variable"); `vars` picks the words for variables or constraints.
bool LiveIndicesOrError(const std::vector<ElementRef>& list, const ModelData& data, bool vars,
                        std::vector<int>* indices, ErrorRecord& error);

}  // namespace Zelq

#endif  // ZELQ_MODEL_ELEMENT_CHECKS_H_
