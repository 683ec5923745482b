// Banner, return-code texts, environment configurations and environments.
#include <sys/stat.h>

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <string>

#include "api/guard.h"

#if __has_include(<coin/ClpConfig.h>) && __has_include(<coin/CbcConfig.h>)
#include <coin/CbcConfig.h>
#include <coin/ClpConfig.h>
#endif
#ifndef CLP_VERSION
#define CLP_VERSION "1.17"
#endif
#ifndef CBC_VERSION
#define CBC_VERSION "2.10"
#endif

using namespace zelq::engine;

namespace {

#define ZELQ_STR2(x) #x
#define ZELQ_STR(x) ZELQ_STR2(x)
constexpr const char kBanner[] = "Zelq engine " ZELQ_STR(ZELQ_VERSION_MAJOR) "." ZELQ_STR(
    ZELQ_VERSION_MINOR) "." ZELQ_STR(ZELQ_VERSION_TECHNICAL) " (Clp " CLP_VERSION
                                                             ", Cbc " CBC_VERSION ")";

int CopyText(const char* text, char* buff, int buffSize) {
  if (buff == nullptr || buffSize <= 0) return ZELQ_RETCODE_INVALID;
  const size_t n = std::min(std::strlen(text), static_cast<size_t>(buffSize - 1));
  std::memcpy(buff, text, n);
  buff[n] = '\0';
  return ZELQ_RETCODE_OK;
}

bool ParseInt(const std::string& text, int lo, int hi, int* out) {
  if (text.empty()) return false;
  size_t used = 0;
  long v = 0;
  try {
    v = std::stol(text, &used);
  } catch (...) {
    return false;
  }
  if (used != text.size() || v < lo || v > hi) return false;
  *out = static_cast<int>(v);
  return true;
}

std::string Lower(std::string s) {
  for (char& c : s) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  return s;
}

// Applies one configuration setting; false for an unknown key or a bad value.
bool ApplySetting(EnvState& s, const std::string& key, const std::string& value) {
  const std::string k = Lower(key);
  if (k == "logging") return ParseInt(value, 0, 1, &s.logging);
  if (k == "logtoconsole") return ParseInt(value, 0, 1, &s.logToConsole);
  if (k == "threads") return ParseInt(value, -1, 128, &s.threads);
  if (k == "banner") return ParseInt(value, 0, 1, &s.banner);
  return false;
}

std::string Trim(const std::string& s) {
  const size_t b = s.find_first_not_of(" \t\r\n");
  if (b == std::string::npos) return "";
  const size_t e = s.find_last_not_of(" \t\r\n");
  return s.substr(b, e - b + 1);
}

// Reads "<dir>/zelq.cfg" when present: "key = value" lines, '#' starts a comment.
int ReadConfigFile(const std::string& dir, EnvState& s) {
  std::ifstream in(dir + "/zelq.cfg");
  if (!in) return ZELQ_RETCODE_OK;  // the file is optional
  std::string line;
  while (std::getline(in, line)) {
    const size_t hash = line.find('#');
    if (hash != std::string::npos) line.resize(hash);
    line = Trim(line);
    if (line.empty()) continue;
    const size_t eq = line.find('=');
    if (eq == std::string::npos) return ZELQ_RETCODE_INVALID;
    if (!ApplySetting(s, Trim(line.substr(0, eq)), Trim(line.substr(eq + 1))))
      return ZELQ_RETCODE_INVALID;
  }
  if (in.bad()) return ZELQ_RETCODE_FILE;
  return ZELQ_RETCODE_OK;
}

int MakeEnv(const EnvState& settings, ZELQenv** p_env) {
  auto env = std::make_unique<zelq_env_s>();
  env->state = std::make_shared<EnvState>(settings);
  env->state->closed = false;
  // Nothing is printed here: the front end fetches the banner with
  // ZELQ_GetBanner and decides whether and where to show it.
  *p_env = env.release();
  return ZELQ_RETCODE_OK;
}

bool ValidConfig(const ZELQenvconfig* c) { return c != nullptr && c->magic == (kEnvMagic ^ 1); }

}  // namespace

int ZELQ_GetBanner(char* buff, int buffSize) { return CopyText(kBanner, buff, buffSize); }

int ZELQ_GetRetcodeMsg(int code, char* buff, int buffSize) {
  const char* text = nullptr;
  switch (code) {
    case ZELQ_RETCODE_OK: text = "Success"; break;
    case ZELQ_RETCODE_MEMORY: text = "Out of memory"; break;
    case ZELQ_RETCODE_FILE: text = "A file could not be opened, read or written"; break;
    case ZELQ_RETCODE_INVALID: text = "Invalid argument (handle, index, count, value or name)"; break;
    case ZELQ_RETCODE_INTERNAL: text = "Internal error or solver library failure"; break;
    case ZELQ_RETCODE_THREAD: text = "A thread could not be started or joined"; break;
    case ZELQ_RETCODE_SERVER: text = "Remote solving error"; break;
    case ZELQ_RETCODE_NONCONVEX: text = "The problem is non-convex"; break;
    case ZELQ_RETCODE_NOTSUPPORTED:
      text = "The operation or problem class is not supported by this build";
      break;
    default: break;
  }
  if (text != nullptr) return CopyText(text, buff, buffSize);
  char unknown[48];
  std::snprintf(unknown, sizeof unknown, "Unknown return code %d", code);
  return CopyText(unknown, buff, buffSize);
}

int ZELQ_CreateEnvConfig(ZELQenvconfig** p_config) {
  return GuardNoProb(__func__, [&]() -> int {
    if (p_config == nullptr) return ZELQ_RETCODE_INVALID;
    *p_config = new zelq_envconfig_s();
    return ZELQ_RETCODE_OK;
  });
}

int ZELQ_DeleteEnvConfig(ZELQenvconfig** p_config) {
  return GuardNoProb(__func__, [&]() -> int {
    if (p_config == nullptr) return ZELQ_RETCODE_INVALID;
    if (*p_config == nullptr) return ZELQ_RETCODE_OK;
    if (!ValidConfig(*p_config)) return ZELQ_RETCODE_INVALID;
    (*p_config)->magic = 0;
    delete *p_config;
    *p_config = nullptr;
    return ZELQ_RETCODE_OK;
  });
}

int ZELQ_SetEnvConfig(ZELQenvconfig* config, const char* name, const char* value) {
  return GuardNoProb(__func__, [&]() -> int {
    if (!ValidConfig(config) || name == nullptr || value == nullptr) return ZELQ_RETCODE_INVALID;
    EnvState next = config->settings;  // a bad value leaves the configuration unchanged
    if (!ApplySetting(next, name, Trim(value))) return ZELQ_RETCODE_INVALID;
    config->settings = next;
    return ZELQ_RETCODE_OK;
  });
}

int ZELQ_CreateEnvWithPath(const char* path, ZELQenv** p_env) {
  return GuardNoProb(__func__, [&]() -> int {
    if (p_env == nullptr) return ZELQ_RETCODE_INVALID;
    EnvState settings;
    if (path != nullptr && *path != '\0') {
      struct stat st{};
      if (::stat(path, &st) != 0 || !S_ISDIR(st.st_mode)) return ZELQ_RETCODE_FILE;
      if (int rc = ReadConfigFile(path, settings)) return rc;
    }
    return MakeEnv(settings, p_env);
  });
}

int ZELQ_CreateEnvWithConfig(ZELQenvconfig* config, ZELQenv** p_env) {
  return GuardNoProb(__func__, [&]() -> int {
    if (p_env == nullptr || !ValidConfig(config)) return ZELQ_RETCODE_INVALID;
    return MakeEnv(config->settings, p_env);
  });
}

int ZELQ_CloseEnv(ZELQenv** p_env) {
  return GuardNoProb(__func__, [&]() -> int {
    if (p_env == nullptr || !ValidEnv(*p_env)) return ZELQ_RETCODE_INVALID;
    (*p_env)->state->closed = true;
    return ZELQ_RETCODE_OK;
  });
}

int ZELQ_DeleteEnv(ZELQenv** p_env) {
  return GuardNoProb(__func__, [&]() -> int {
    if (p_env == nullptr) return ZELQ_RETCODE_INVALID;
    if (*p_env == nullptr) return ZELQ_RETCODE_OK;
    if (!ValidEnv(*p_env)) return ZELQ_RETCODE_INVALID;
    (*p_env)->state->closed = true;
    (*p_env)->magic = 0;
    delete *p_env;  // problems keep the shared settings alive
    *p_env = nullptr;
    return ZELQ_RETCODE_OK;
  });
}
