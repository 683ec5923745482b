// One engine call on one element, shared by the variable and constraint
// handles.
//
// The call is made only while the element is live (index 0 or more and still
// attached to a model); otherwise code 3 with the handle's own "Invalid ..."
// message is recorded. The engine's return code is recorded unchanged with
// the operation's message, so a success clears an earlier failure.
//
//   ElementCall(var, "Invalid variable", "Fail to get variable basis",
//               [&](ZELQprob* prob, const int* index) {
//                 return Engine().GetColBasis(prob, 1, index, &basis);
//               });
#ifndef ZELQ_SCALAR_ELEMENT_CALL_H_
#define ZELQ_SCALAR_ELEMENT_CALL_H_

#include "frame/engine_index.h"
#include "frame/error_record.h"
#include "scalar/element_values.h"

namespace Zelq {

// `call(problem, index)` receives the address of the record's own index, so
// the engine reads the element's current index as a one-element list.
template <class Call>
bool ElementCall(ElementValue& value, const char* invalid, const char* failure, Call&& call) {
  if (!value.Live()) {
    SetError(value.error, kErrorINVALID, "%s", invalid);
    return false;
  }
  ElementRecord& record = *value.record;
  const int rc = call(record.model->Prob(), &record.index);
  SetError(value.error, rc, "%s", failure);
  return rc == 0;
}

// Engine name getter of one element kind (ZELQ_GetColName, ZELQ_GetRowName).
using NameGetter = decltype(&::ZELQ_GetColName) EngineIndex::*;

// The element's cached name. A live element with nothing cached first asks
// the engine for the size, then for the text, and caches it. Null when the
// engine fails (recorded with `size_failure` or `text_failure`) or when the
// value has no record at all.
const char* CachedName(ElementValue& value, NameGetter getter, const char* size_failure,
                       const char* text_failure);

// Marks a live element removed (-3 - index) and tells the model to delete it
// before its next whole-problem operation. Anything else is left alone.
inline void MarkRemoved(ElementValue& value) {
  if (!value.record || value.record->index < 0) return;
  ElementRecord& record = *value.record;
  record.index = RemovedIndex(record.index);
  if (record.model != nullptr) record.model->update_flag = 1;
}

}  // namespace Zelq

#endif  // ZELQ_SCALAR_ELEMENT_CALL_H_
