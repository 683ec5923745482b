#include "model/element_names.h"

#include <cstdio>
#include <cstring>

namespace Zelq {

void ElementNames::FromPrefix(const char* prefix, int count) {
  list_ = nullptr;
  texts_.clear();
  pointers_.clear();
  if (prefix == nullptr || prefix[0] == '\0' || count < 1) return;
  // All names go into one buffer first; pointers are taken once it no longer
  // grows.
  const size_t prefix_length = std::strlen(prefix);
  texts_.reserve(static_cast<size_t>(count) * (prefix_length + 8));
  std::vector<size_t> offsets(static_cast<size_t>(count));
  char digits[16];
  for (int i = 0; i < count; ++i) {
    offsets[i] = texts_.size();
    int length = std::snprintf(digits, sizeof digits, "%d", i);
    texts_.append(prefix, prefix_length);
    texts_.append(digits, static_cast<size_t>(length));
    texts_.push_back('\0');
  }
  pointers_.resize(offsets.size());
  for (size_t i = 0; i < offsets.size(); ++i) pointers_[i] = texts_.data() + offsets[i];
  list_ = pointers_.data();
}

bool CheckNameCount(ErrorRecord& error, int count, int name_count) {
  if (name_count == count) return true;
  SetError(error, kErrorINVALID, "Invalid size of input names");
  return false;
}

}  // namespace Zelq
