#include "model/live_list.h"

namespace Zelq {

std::vector<int> LiveIndices(const std::vector<ElementRef>* records) {
  std::vector<int> indices;
  if (records == nullptr) return indices;
  indices.reserve(records->size());
  for (const ElementRef& ref : *records) {
    if (ref && ref->index >= 0) indices.push_back(ref->index);
  }
  return indices;
}

LivePairs PairLive(const std::vector<ElementRef>* records, const double* values) {
  LivePairs pairs;
  if (records == nullptr) return pairs;
  pairs.indices.reserve(records->size());
  pairs.values.reserve(records->size());
  for (size_t k = 0; k < records->size(); ++k) {
    const ElementRef& ref = (*records)[k];
    if (!ref || ref->index < 0) continue;
    pairs.indices.push_back(ref->index);
    pairs.values.push_back(values[k]);
  }
  return pairs;
}

}  // namespace Zelq
