// Names of the elements that one add operation creates.
//
// An operation names its new elements either from a prefix (prefix followed
// by the running index within the call: "x0", "x1", ...; a null or empty
// prefix gives no names) or from the caller's own list, whose length must
// match the element count. The engine takes the list as an array of texts;
// the model caches each text in the new element's record.
//
//   ElementNames names;
//   names.FromPrefix("x", 3);
//   Engine().AddCols(prob, 3, ..., names.List());  // "x0", "x1", "x2"
#ifndef ZELQ_MODEL_ELEMENT_NAMES_H_
#define ZELQ_MODEL_ELEMENT_NAMES_H_

#include <string>
#include <vector>

#include "frame/error_record.h"

namespace Zelq {

class ElementNames {
 public:
  ElementNames() = default;
  ElementNames(const ElementNames&) = delete;
  ElementNames& operator=(const ElementNames&) = delete;

  // Makes `count` names from `prefix`; nothing when the prefix is null or empty.
  void FromPrefix(const char* prefix, int count);
  // Uses the caller's list (which must hold the element count of texts).
  void UseList(const char* const* names) { list_ = names; }

  // The texts as the engine takes them; null when the elements get no names.
  const char* const* List() const { return list_; }
  // Name of element i; null when it has none.
  const char* At(int i) const { return list_ != nullptr ? list_[i] : nullptr; }

 private:
  std::string texts_;                 // every name, each ended by '\0'
  std::vector<const char*> pointers_;  // into texts_
  const char* const* list_ = nullptr;
};

// Records code 3 "Invalid size of input names" unless the list's length
// equals the element count; false in that case.
bool CheckNameCount(ErrorRecord& error, int count, int name_count);

}  // namespace Zelq

#endif  // ZELQ_MODEL_ELEMENT_NAMES_H_
