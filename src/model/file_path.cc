#include "model/file_path.h"

#include <cstdlib>

#include "zelq/zelqcpp_error_codes.h"

namespace Zelq {
namespace {

// The home directory from the environment; empty and `found` false when
// neither HOMEPATH nor HOME is set.
std::string HomeDirectory(bool& found) {
  found = true;
  if (const char* home_path = std::getenv("HOMEPATH")) {
    const char* drive = std::getenv("HOMEDRIVE");
    return std::string(drive != nullptr ? drive : "") + home_path;
  }
  if (const char* home = std::getenv("HOME")) return home;
  found = false;
  return {};
}

// Length of the UTF-8 sequence led by `lead`, 0 for a byte that cannot lead.
int SequenceLength(unsigned char lead) {
  if (lead < 0x80) return 1;
  if (lead >= 0xC2 && lead <= 0xDF) return 2;
  if (lead >= 0xE0 && lead <= 0xEF) return 3;
  if (lead >= 0xF0 && lead <= 0xF4) return 4;
  return 0;  // continuation bytes, overlong leads C0/C1, and F5..FF
}

}  // namespace

std::string ExpandHome(std::string_view path) {
  if (path.empty() || path[0] != '~' || (path.size() > 1 && path[1] != '/')) {
    return std::string(path);
  }
  bool found = false;
  std::string home = HomeDirectory(found);
  if (!found) return std::string(path);
  return home.append(path.substr(1));
}

bool IsValidUtf8(std::string_view text) {
  size_t i = 0;
  while (i < text.size()) {
    auto lead = static_cast<unsigned char>(text[i]);
    int length = SequenceLength(lead);
    if (length == 0 || i + length > text.size()) return false;
    for (int k = 1; k < length; ++k) {
      if ((static_cast<unsigned char>(text[i + k]) & 0xC0) != 0x80) return false;
    }
    // The second byte's range rules out overlong forms, surrogates and
    // values beyond U+10FFFF.
    auto second = static_cast<unsigned char>(length > 1 ? text[i + 1] : 0);
    if ((lead == 0xE0 && second < 0xA0) || (lead == 0xED && second > 0x9F) ||
        (lead == 0xF0 && second < 0x90) || (lead == 0xF4 && second > 0x8F)) {
      return false;
    }
    i += length;
  }
  return true;
}

EnginePath ToEnginePath(const char* path) {
  EnginePath result;
  if (path == nullptr || path[0] == '\0') {
    result.code = kErrorINVALID;
    return result;
  }
  result.path = ExpandHome(path);
  if (!IsValidUtf8(result.path)) {
    result.code = kErrorFILE;
    result.message = kPathConversionMessage;
    result.path.clear();
  } else if (result.path.empty()) {
    result.code = kErrorFILE;
  }
  return result;
}

}  // namespace Zelq
