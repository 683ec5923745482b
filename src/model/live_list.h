// Index lists for the list operations of the model (information, pool
// solutions, IIS status, starts).
//
// A list of handles reaches the engine as the indices of its live elements
// only: handles with a negative index (removed or invalid) are dropped
// silently, so the engine reads and writes a packed list that is no longer
// aligned with the caller's list when elements were dropped.
#ifndef ZELQ_MODEL_LIVE_LIST_H_
#define ZELQ_MODEL_LIVE_LIST_H_

#include <vector>

#include "model/model_data.h"

namespace Zelq {

// Engine indices of the live records, in list order; none for a null list.
std::vector<int> LiveIndices(const std::vector<ElementRef>* records);

// Live indices paired with the value at the same list position.
struct LivePairs {
  std::vector<int> indices;
  std::vector<double> values;
  int Count() const { return static_cast<int>(indices.size()); }
};

// Pairs record k with values[k] for every live record; `values` must hold
// one value per record of the list.
LivePairs PairLive(const std::vector<ElementRef>* records, const double* values);

// Number of records in a list; 0 for a null list.
inline int ListSize(const std::vector<ElementRef>* records) {
  return records != nullptr ? static_cast<int>(records->size()) : 0;
}

}  // namespace Zelq

#endif  // ZELQ_MODEL_LIVE_LIST_H_
