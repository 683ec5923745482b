#include "frame/banner_settings.h"

#include <cctype>
#include <cstdio>
#include <cstdlib>

namespace Zelq {
namespace {

bool SameKey(const char* name, const char* key) {
  for (; *name != '\0' && *key != '\0'; ++name, ++key) {
    if (std::tolower(static_cast<unsigned char>(*name)) !=
        std::tolower(static_cast<unsigned char>(*key))) {
      return false;
    }
  }
  return *name == '\0' && *key == '\0';
}

// The engine accepts only 0 and 1 for these keys; anything non-zero is on.
bool IsOn(const char* value) { return std::strtol(value, nullptr, 10) != 0; }

}  // namespace

void BannerSettings::Remember(const char* name, const char* value) {
  if (name == nullptr || value == nullptr) return;
  if (SameKey(name, "Banner")) {
    banner = IsOn(value);
  } else if (SameKey(name, "Logging")) {
    logging = IsOn(value);
  } else if (SameKey(name, "LogToConsole")) {
    log_to_console = IsOn(value);
  }
}

bool BannerSettings::Wanted(const ILogCallback* sink) const {
  return banner && logging && (sink != nullptr || log_to_console);
}

void BannerSettings::Show(const char* text, ILogCallback* sink) const {
  if (text == nullptr || text[0] == '\0' || !Wanted(sink)) return;
  if (sink != nullptr) {
    sink->DisplayMessage(text);
    return;
  }
  std::printf("%s\n", text);
  std::fflush(stdout);
}

}  // namespace Zelq
