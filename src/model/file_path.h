// Turning a caller's file path into the form the engine takes.
//
// The engine takes UTF-8 narrow paths. A path that is "~" or begins with
// "~/" is taken relative to the user's home directory: HOMEDRIVE followed by
// HOMEPATH when HOMEPATH is set, else HOME; with no home known the path is
// passed unchanged. Anything else is passed as it is.
//
//   EnginePath p = ToEnginePath("~/models/a.mps");   // p.path == "/home/me/models/a.mps"
#ifndef ZELQ_MODEL_FILE_PATH_H_
#define ZELQ_MODEL_FILE_PATH_H_

#include <string>
#include <string_view>

namespace Zelq {

inline constexpr const char* kPathConversionMessage = "Cannot convert character sequence";

struct EnginePath {
  // 0; 3 for a null or empty path; 2 when the path cannot be converted or
  // converts to nothing.
  int code = 0;
  // The conversion's own text when it failed on the characters; null when
  // the caller's message for its file kind applies.
  const char* message = nullptr;
  std::string path;
};

EnginePath ToEnginePath(const char* path);

// The path with a leading "~" replaced by the home directory (see above).
std::string ExpandHome(std::string_view path);

// True when `text` is well-formed UTF-8 (no overlong forms, surrogates or
// code points above U+10FFFF).
bool IsValidUtf8(std::string_view text);

}  // namespace Zelq

#endif  // ZELQ_MODEL_FILE_PATH_H_
