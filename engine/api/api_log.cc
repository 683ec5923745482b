// Entry points for the solver log and for solve-time callbacks.
#include "api/guard.h"

using namespace zelq::engine;

extern "C" {

int ZELQ_SetLogFile(ZELQprob* prob, const char* logfilename) {
  return Guard(prob, __func__, [&]() -> int {
    if (!prob->log.SetFile(logfilename))
      return Fail(prob, ZELQ_RETCODE_FILE, "cannot open log file '%s' for appending", logfilename);
    return ZELQ_RETCODE_OK;
  });
}

int ZELQ_SetLogCallback(ZELQprob* prob, ZELQlogcallback cb, void* userdata) {
  return Guard(prob, __func__, [&]() -> int {
    prob->log.SetCallback(cb, userdata);
    return ZELQ_RETCODE_OK;
  });
}

int ZELQ_SetCallback(ZELQprob* prob, ZELQcallback cb, int cbctx, void* userdata) {
  (void)userdata;
  return Guard(prob, __func__, [&]() -> int {
    if (cb == nullptr) return ZELQ_RETCODE_OK;  // nothing installed, nothing to remove
    return Fail(prob, ZELQ_RETCODE_NOTSUPPORTED,
                "solve-time callbacks (contexts 0x%x) are not supported by this build", cbctx);
  });
}

}  // extern "C"
