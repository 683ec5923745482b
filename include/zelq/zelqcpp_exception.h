// Zelq::Exception: the header layer's exception type.
//
// The library never throws across its boundary; it records a code and a
// message on the object that failed. The header layer reads them after each
// call and throws this exception, carrying both unchanged:
//
//   try { auto b = a.Reshape(4); }
//   catch (const Zelq::Exception& e) { e.GetCode(); /* 3 */ e.what(); }
#ifndef ZELQ_ZELQCPP_EXCEPTION_H_
#define ZELQ_ZELQCPP_EXCEPTION_H_

#include <stdexcept>
#include <string>

namespace Zelq {

class Exception : public std::runtime_error {
 public:
  Exception(const std::string& message, int code) : std::runtime_error(message), code_(code) {}
  explicit Exception(int code) : std::runtime_error("ERROR"), code_(code) {}

  // The recorded error code (3 for argument, index and size errors).
  int GetCode() const noexcept { return code_; }

 private:
  int code_;
};

}  // namespace Zelq

#endif  // ZELQ_ZELQCPP_EXCEPTION_H_
