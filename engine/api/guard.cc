#include "api/guard.h"

#include <cstdio>

namespace zelq::engine {

thread_local const char* tCurrentFunction = "";

int Fail(ZELQprob* prob, int code, const char* fmt, ...) {
  if (prob == nullptr) return code;
  char buf[1024];
  int n = std::snprintf(buf, sizeof buf, "%s: ", tCurrentFunction ? tCurrentFunction : "");
  if (n < 0 || n >= static_cast<int>(sizeof buf)) n = 0;
  va_list ap;
  va_start(ap, fmt);
  std::vsnprintf(buf + n, sizeof buf - n, fmt, ap);
  va_end(ap);
  try {
    prob->lastError = buf;
  } catch (...) {
  }
  return code;
}

void InvalidateSolution(ZELQprob* prob) {
  prob->solution.Clear();
  prob->lpCache.reset();
}

int FileFailure(ZELQprob* prob, int code, const std::string& detail) {
  Fail(prob, code, "%s", detail.c_str());
  if (prob == nullptr) return code;
  std::string line = "Error: ";
  line.append(prob->lastError);
  prob->log.Line(line);
  return code;
}

}  // namespace zelq::engine
