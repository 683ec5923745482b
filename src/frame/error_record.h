// Error record: the code and message every failing library object keeps.
//
// A record starts as (0, null). The first non-zero code allocates a 128-byte
// buffer that lives as long as the record; messages are "(NAME) text", cut to
// 127 characters. Recording 0 clears the code but keeps the old text, so
// readers look at the message only when the code is non-zero.
//
//   ErrorRecord err;
//   SetError(err, kErrorINVALID, "Invalid col index");  // "(INVALID) Invalid col index"
#ifndef ZELQ_FRAME_ERROR_RECORD_H_
#define ZELQ_FRAME_ERROR_RECORD_H_

#include <cstdint>

#include "zelq/zelqcpp_error_codes.h"

namespace Zelq {

class ErrorRecord {
 public:
  static constexpr int kBufferSize = 128;

  ErrorRecord() = default;
  ~ErrorRecord() { delete[] message_; }
  // A record belongs to one object; copying an object copies its record's text.
  ErrorRecord(const ErrorRecord& other);
  ErrorRecord& operator=(const ErrorRecord& other);
  ErrorRecord(ErrorRecord&& other) noexcept;
  ErrorRecord& operator=(ErrorRecord&& other) noexcept;

  int32_t Code() const { return code_; }
  // Null until the first failure; stale text after a later success.
  const char* Message() const { return message_; }
  bool Failed() const { return code_ != 0; }

  // Clearing at entry: code 0 and, if a buffer exists, an empty text.
  void ClearAtEntry();

 private:
  friend void SetError(ErrorRecord&, int32_t, const char*, ...);
  friend void SetErrorText(ErrorRecord&, int32_t, const char*);
  char* Buffer();

  int32_t code_ = 0;
  char* message_ = nullptr;
};

// Name written in the message prefix: "OK", "MEMORY", ... or "UNKNOWN".
const char* ErrorCodeName(int32_t code);

// Records `code` with a printf-formatted message behind the "(NAME) " prefix.
// Code 0 only clears the code. The message part keeps at most 95 characters.
void SetError(ErrorRecord& record, int32_t code, const char* format, ...)
    __attribute__((format(printf, 3, 4)));

// Records `code` with a complete text (no prefix added, at most 127 characters).
// Used to pass an inner object's failure on; (0, null) initialises.
void SetErrorText(ErrorRecord& record, int32_t code, const char* text);

// Records success (code 0); the old text stays readable but stale.
inline void ClearError(ErrorRecord& record) { SetErrorText(record, 0, nullptr); }

// Copies another record's code and message (SetErrorText with its fields).
inline void PassError(ErrorRecord& to, const ErrorRecord& from) {
  SetErrorText(to, from.Code(), from.Message());
}

}  // namespace Zelq

#endif  // ZELQ_FRAME_ERROR_RECORD_H_
