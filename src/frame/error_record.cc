#include "frame/error_record.h"

#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <utility>

namespace Zelq {

namespace {
constexpr int kPrefixBound = 32;   // "(%s) " never takes more than this
constexpr int kMessageBound = 96;  // so the text keeps at most 95 characters
}  // namespace

ErrorRecord::ErrorRecord(const ErrorRecord& other) : code_(other.code_) {
  if (other.message_ != nullptr) {
    message_ = new char[kBufferSize];
    std::memcpy(message_, other.message_, kBufferSize);
  }
}

ErrorRecord& ErrorRecord::operator=(const ErrorRecord& other) {
  if (this != &other) {
    ErrorRecord copy(other);
    *this = std::move(copy);
  }
  return *this;
}

ErrorRecord::ErrorRecord(ErrorRecord&& other) noexcept
    : code_(other.code_), message_(std::exchange(other.message_, nullptr)) {
  other.code_ = 0;
}

ErrorRecord& ErrorRecord::operator=(ErrorRecord&& other) noexcept {
  if (this != &other) {
    delete[] message_;
    code_ = std::exchange(other.code_, 0);
    message_ = std::exchange(other.message_, nullptr);
  }
  return *this;
}

void ErrorRecord::ClearAtEntry() {
  code_ = 0;
  if (message_ != nullptr) message_[0] = '\0';
}

char* ErrorRecord::Buffer() {
  if (message_ == nullptr) {
    message_ = new char[kBufferSize];
    message_[0] = '\0';
  }
  return message_;
}

const char* ErrorCodeName(int32_t code) {
  switch (code) {
#define ZELQ_ERROR_CODE_CASE(value, name) \
  case value:                             \
    return #name;
    ZELQ_ERROR_CODE_LIST(ZELQ_ERROR_CODE_CASE)
#undef ZELQ_ERROR_CODE_CASE
    default:
      return "UNKNOWN";
  }
}

void SetError(ErrorRecord& record, int32_t code, const char* format, ...) {
  record.code_ = code;
  if (code == 0) return;
  char* buffer = record.Buffer();
  std::snprintf(buffer, kPrefixBound, "(%s) ", ErrorCodeName(code));
  size_t prefix = std::strlen(buffer);
  va_list args;
  va_start(args, format);
  std::vsnprintf(buffer + prefix, kMessageBound, format, args);
  va_end(args);
}

void SetErrorText(ErrorRecord& record, int32_t code, const char* text) {
  record.code_ = code;
  if (code == 0 || text == nullptr) return;
  char* buffer = record.Buffer();
  if (text == buffer) return;  // passing a record's text to itself
  std::snprintf(buffer, ErrorRecord::kBufferSize, "%s", text);
}

}  // namespace Zelq
