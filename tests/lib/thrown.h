// Test helper for the header layer: what a call throws.
#ifndef ZELQ_TESTS_LIB_THROWN_H_
#define ZELQ_TESTS_LIB_THROWN_H_

#include <string>
#include <utility>

#include "zelq/zelqcpp_exception.h"

namespace zelq_test {

// Runs `call` and returns the code and text of the Zelq::Exception it throws
// ({0, ""} when it throws none).
template <class F>
std::pair<int, std::string> Thrown(F call) {
  try {
    call();
  } catch (const Zelq::Exception& e) {
    return {e.GetCode(), e.what()};
  }
  return {0, ""};
}

}  // namespace zelq_test

#endif  // ZELQ_TESTS_LIB_THROWN_H_
