// Error codes recorded by the library's objects and carried by Zelq::Exception.
//
// One list drives the constants and the names written in front of every
// recorded message ("(INVALID) ..."). Engine return codes use the same values,
// so an engine failure and an argument error look alike to the caller.
#ifndef ZELQ_ZELQCPP_ERROR_CODES_H_
#define ZELQ_ZELQCPP_ERROR_CODES_H_

// X(value, name): every code the library names. Any other value is "UNKNOWN".
#define ZELQ_ERROR_CODE_LIST(X) \
  X(0, OK)                      \
  X(1, MEMORY)                  \
  X(2, FILE)                    \
  X(3, INVALID)                 \
  X(5, INTERNAL)                \
  X(6, THREAD)                  \
  X(7, SERVER)                  \
  X(8, NONCONVEX)

namespace Zelq {

enum ErrorCode : int {
#define ZELQ_ERROR_CODE_ENUM(value, name) kError##name = value,
  ZELQ_ERROR_CODE_LIST(ZELQ_ERROR_CODE_ENUM)
#undef ZELQ_ERROR_CODE_ENUM
};

}  // namespace Zelq

#endif  // ZELQ_ZELQCPP_ERROR_CODES_H_
