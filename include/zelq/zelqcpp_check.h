// Turning the library's error records into Zelq::Exception, and owning the
// objects the library returns. Shared by every value class of the header
// layer.
//
// Ownership: each value class holds a detail::Handle, which owns one library
// object. A handle value that was never copied owns its object alone and
// costs no allocation; the first copy creates a shared reference count,
// later copies and destructions change it atomically. Rule: a handle value
// is used from one thread at a time (copying reads and may change the
// source); once copied, the copies may be used and destroyed on other
// threads.
//
// The library never throws across its boundary: an object that failed keeps a
// code and a message ("(INVALID) Invalid col index"). After a call the value
// classes read them and throw, with both unchanged. Failures the header layer
// finds itself use code 3 and the same "(INVALID) " style of message.
#ifndef ZELQ_ZELQCPP_CHECK_H_
#define ZELQ_ZELQCPP_CHECK_H_

#include <atomic>
#include <cstddef>
#include <memory>
#include <string>
#include <type_traits>
#include <utility>

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

// Owner of one library object, deleted through its interface when the last
// copy goes. The reference count exists only once the handle was copied.
template <class I>
class Handle {
 public:
  Handle() = default;
  explicit Handle(I* raw) : raw_(raw) {}
  Handle(const Handle& other) : raw_(other.raw_), count_(other.Share()) {}
  Handle(Handle&& other) noexcept
      : raw_(std::exchange(other.raw_, nullptr)), count_(std::exchange(other.count_, nullptr)) {}
  Handle& operator=(const Handle& other) {
    if (this != &other) Handle(other).Swap(*this);
    return *this;
  }
  Handle& operator=(Handle&& other) noexcept {
    Handle(std::move(other)).Swap(*this);
    return *this;
  }
  ~Handle() { Release(); }

  I* get() const { return raw_; }
  I* operator->() const { return raw_; }
  explicit operator bool() const { return raw_ != nullptr; }
  bool operator==(std::nullptr_t) const { return raw_ == nullptr; }
  // Values naming the object: 0 when empty, 1 for a handle never copied.
  long use_count() const {
    if (raw_ == nullptr) return 0;
    return count_ != nullptr ? count_->load(std::memory_order_acquire) : 1;
  }

 private:
  using Count = std::atomic<long>;

  // The count a new copy joins, created on the first copy.
  Count* Share() const {
    if (raw_ == nullptr) return nullptr;
    if (count_ == nullptr) {
      count_ = new Count(2);
    } else {
      count_->fetch_add(1, std::memory_order_relaxed);
    }
    return count_;
  }
  void Release() {
    if (raw_ == nullptr) return;
    if (count_ != nullptr && count_->fetch_sub(1, std::memory_order_acq_rel) != 1) return;
    delete count_;
    delete raw_;
  }
  void Swap(Handle& other) noexcept {
    std::swap(raw_, other.raw_);
    std::swap(count_, other.count_);
  }

  I* raw_ = nullptr;
  mutable Count* count_ = nullptr;
};

// Takes ownership of a new library object, then checks it.
template <class I>
Handle<I> Take(I* raw) {
  Handle<I> owned(raw);
  Check(raw);
  return owned;
}

// The same for classes that keep a std::shared_ptr.
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
Handle<I> Require(I* raw, const char* what) {
  if (raw == nullptr) Fail(std::string("No ") + what + " was returned");
  return Handle<I>(raw);
}

}  // namespace detail
}  // namespace Zelq

#endif  // ZELQ_ZELQCPP_CHECK_H_
