#include "frame/engine_error.h"

#include "frame/engine_index.h"
#include "zelq/zelqcpp_exception.h"

namespace Zelq {

void ThrowEngineError(int code) {
  if (code == 0) return;
  char buffer[1024] = {};
  Engine().GetRetcodeMsg(code, buffer, 1020);
  throw Exception(buffer, code);
}

}  // namespace Zelq
