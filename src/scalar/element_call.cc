#include "scalar/element_call.h"

#include <string>

namespace Zelq {

const char* CachedName(ElementValue& value, NameGetter getter, const char* size_failure,
                       const char* text_failure) {
  if (!value.record) return nullptr;
  ElementRecord& record = *value.record;
  if (!value.Live() || !record.name.empty()) return record.name.c_str();
  ZELQprob* prob = record.model->Prob();
  int size = 0;
  int rc = (Engine().*getter)(prob, record.index, nullptr, 0, &size);
  SetError(value.error, rc, "%s", size_failure);
  if (rc != 0) return nullptr;
  std::string text(size > 0 ? static_cast<size_t>(size) : 1u, '\0');
  rc = (Engine().*getter)(prob, record.index, text.data(), static_cast<int>(text.size()), &size);
  SetError(value.error, rc, "%s", text_failure);
  if (rc != 0) return nullptr;
  const size_t end = text.find('\0');
  if (end != std::string::npos) text.resize(end);
  record.name = std::move(text);
  return record.name.c_str();
}

}  // namespace Zelq
