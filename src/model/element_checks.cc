#include "model/element_checks.h"

namespace Zelq {

bool LiveIndicesOrError(const std::vector<ElementRef>& list, const ModelData& data, bool vars,
                        std::vector<int>* indices, ErrorRecord& error) {
  indices->reserve(list.size());
  for (const ElementRef& ref : list) {
    if (RemovedFrom(ref, data)) {
      SetError(
          error, kErrorINVALID,
          vars ? "The %d-th variable has been removed" : "The %d-th constraint has been removed",
          RemovedIndex(ref->index));
      return false;
    }
    int32_t index = LiveIndex(ref, data);
    if (index < 0) {
      SetError(error, kErrorINVALID, "%s", vars ? "Invalid variable" : "Invalid constraint");
      return false;
    }
    indices->push_back(index);
  }
  return true;
}

}  // namespace Zelq
