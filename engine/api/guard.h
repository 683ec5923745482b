// Helpers every C entry point uses: handle checks, the last-error text, and the catch-all that
// keeps exceptions from crossing the C boundary.
//
// Usage:
//   int ZELQ_SetObjConst(ZELQprob* prob, double c) {
//     return zelq::engine::Guard(prob, __func__, [&]() -> int {
//       if (!std::isfinite(c)) return Fail(prob, ZELQ_RETCODE_INVALID, "constant %g is not finite", c);
//       ...
//       return ZELQ_RETCODE_OK;
//     });
//   }
#pragma once

#include <cstdarg>
#include <exception>
#include <new>
#include <string>

#include "api/handles.h"
#include "zelq/zelq.h"

namespace zelq::engine {

// Name of the entry point being executed on this thread (for messages); set by Guard.
extern thread_local const char* tCurrentFunction;

// Records "<function>: <message>" as the problem's last error (when prob is not null) and
// returns code. Never throws.
int Fail(ZELQprob* prob, int code, const char* fmt, ...) __attribute__((format(printf, 3, 4)));

// Fail() for a file that cannot be opened, parsed or written: also logs the message, so
// applications that only pass on a short message of their own still show the file, the line
// and the problem in the solver log.
int FileFailure(ZELQprob* prob, int code, const std::string& detail);

inline bool ValidProb(const ZELQprob* prob) { return prob != nullptr && prob->magic == kProbMagic; }
inline bool ValidEnv(const ZELQenv* env) { return env != nullptr && env->magic == kEnvMagic; }

// Runs body() for an entry point on `prob`: rejects a null or foreign handle with code 3, maps
// exceptions to codes (1 for memory, 5 otherwise), and clears the last error on success.
template <class Body>
int Guard(ZELQprob* prob, const char* fn, Body&& body) noexcept {
  tCurrentFunction = fn;
  if (!ValidProb(prob)) return ZELQ_RETCODE_INVALID;
  try {
    int rc = body();
    if (rc == ZELQ_RETCODE_OK) prob->lastError.clear();
    return rc;
  } catch (const std::bad_alloc&) {
    return Fail(prob, ZELQ_RETCODE_MEMORY, "out of memory");
  } catch (const std::exception& e) {
    return Fail(prob, ZELQ_RETCODE_INTERNAL, "internal error: %s", e.what());
  } catch (...) {
    return Fail(prob, ZELQ_RETCODE_INTERNAL, "internal error");
  }
}

// The same for entry points without a problem (environment, configuration, callback data).
template <class Body>
int GuardNoProb(const char* fn, Body&& body) noexcept {
  tCurrentFunction = fn;
  try {
    return body();
  } catch (const std::bad_alloc&) {
    return ZELQ_RETCODE_MEMORY;
  } catch (...) {
    return ZELQ_RETCODE_INTERNAL;
  }
}

// Content changed: the last solution and the solver state no longer apply.
void InvalidateSolution(ZELQprob* prob);

}  // namespace zelq::engine
