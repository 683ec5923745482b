// Turning the library's error records into Zelq::Exception, and owning the
// objects the library returns. Shared by every value class of the header
// layer.
//
// The library never throws across its boundary: an object that failed keeps a
// code and a message ("(INVALID) Invalid col index"). After a call the value
// classes read them and throw, with both unchanged. Failures the header layer
// finds itself use code 3 and the same "(INVALID) " style of message.
#ifndef ZELQ_ZELQCPP_CHECK_H_
#define ZELQ_ZELQCPP_CHECK_H_

#include <memory>
#include <string>
#include <type_traits>

#include "zelq/zelqcpp_error_codes.h"
#include "zelq/zelqcpp_exception.h"

namespace Zelq {
namespace detail {

// Throws the failure recorded on `object`, if any.
template <class I>
void Check(const I* object) {
  const int code = object->GetErrorCode();
  if (code == 0) return;
  const char* message = object->GetErrorMessage();
  if (message != nullptr) throw Exception(message, code);
  throw Exception(code);
}

// Takes ownership of a new library object, then checks it.
template <class I>
std::shared_ptr<I> Own(I* raw) {
  std::shared_ptr<I> owned(raw);
  Check(raw);
  return owned;
}

// Runs call(object), then throws what the call recorded on the object.
template <class I, class F>
auto CheckedCall(I& object, F&& call) {
  if constexpr (std::is_void_v<decltype(call(object))>) {
    call(object);
    Check(&object);
  } else {
    auto result = call(object);
    Check(&object);
    return result;
  }
}

// The name the library writes in front of a message with this code.
inline const char* CodeName(int code) {
  switch (code) {
#define ZELQ_CHECK_CODE_NAME(value, name) \
  case value:                             \
    return #name;
    ZELQ_ERROR_CODE_LIST(ZELQ_CHECK_CODE_NAME)
#undef ZELQ_CHECK_CODE_NAME
    default:
      return "UNKNOWN";
  }
}

// A failure found by the header layer itself, worded as the library words its own.
[[noreturn]] inline void Fail(const std::string& message, int code = kErrorINVALID) {
  throw Exception("(" + std::string(CodeName(code)) + ") " + message, code);
}

// Throws when an operation handed back no object although nothing was recorded.
template <class I>
std::shared_ptr<I> Require(I* raw, const char* what) {
  if (raw == nullptr) Fail(std::string("No ") + what + " was returned");
  return std::shared_ptr<I>(raw);
}

}  // namespace detail
}  // namespace Zelq

#endif  // ZELQ_ZELQCPP_CHECK_H_
