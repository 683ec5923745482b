// Helpers shared by the fuzz targets: quiet problems that live for the whole process, the input
// written to a file with the ending a reader expects, a small fixed problem with awkward names,
// and checks that abort with a message when an invariant breaks (the fuzzer keeps that input).
#pragma once

#include <unistd.h>

#include <cstdarg>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <list>
#include <string>
#include <vector>

#include "zelq/zelq.h"

namespace zelq_fuzz {

[[noreturn]] __attribute__((format(printf, 4, 5))) inline void Die(const char* file, int line,
                                                                  const char* cond,
                                                                  const char* fmt, ...) {
  std::fprintf(stderr, "%s:%d: fuzz invariant failed: %s\n  ", file, line, cond);
  va_list ap;
  va_start(ap, fmt);
  std::vfprintf(stderr, fmt, ap);
  va_end(ap);
  std::fputc('\n', stderr);
  std::abort();
}

// Aborts with the condition and a printf-style explanation when `cond` is false.
#define ZELQ_FUZZ_CHECK(cond, ...)                                              \
  do {                                                                          \
    if (!(cond)) ::zelq_fuzz::Die(__FILE__, __LINE__, #cond, __VA_ARGS__);      \
  } while (0)

// Problem number `slot` (0..3) of this process, created quiet on first use and kept to the end
// (creating environments per input would dominate the run time).
inline ZELQprob* Prob(int slot = 0) {
  static ZELQenv* envs[4] = {nullptr, nullptr, nullptr, nullptr};  // kept: reachable, no leak
  static ZELQprob* probs[4] = {nullptr, nullptr, nullptr, nullptr};
  if (slot < 0 || slot >= 4) Die(__FILE__, __LINE__, "slot", "slot %d out of range", slot);
  if (probs[slot] == nullptr) {
    ZELQenvconfig* cfg = nullptr;
    ZELQenv*& env = envs[slot];
    ZELQ_CreateEnvConfig(&cfg);
    ZELQ_SetEnvConfig(cfg, "Banner", "0");
    ZELQ_SetEnvConfig(cfg, "Logging", "0");
    int rc = ZELQ_CreateEnvWithConfig(cfg, &env);
    ZELQ_DeleteEnvConfig(&cfg);
    ZELQ_FUZZ_CHECK(rc == 0 && env != nullptr, "cannot create an environment (code %d)", rc);
    rc = ZELQ_CreateProb(env, &probs[slot]);
    ZELQ_FUZZ_CHECK(rc == 0, "cannot create a problem (code %d)", rc);
  }
  return probs[slot];
}

// Parameters back to their defaults, logging off.
inline void QuietParams(ZELQprob* prob) {
  ZELQ_ResetParam(prob);
  ZELQ_SetIntParam(prob, "Logging", 0);
  ZELQ_SetIntParam(prob, "LogToConsole", 0);
}

// A file of this process with the given ending ("in.mps"), in /dev/shm when it exists (memory
// backed, so a file per input costs little), else in the temporary directory. Removed at exit.
inline const char* FilePath(const std::string& ending) {
  struct Files {
    std::list<std::string> paths;  // a list keeps the returned pointers valid
    ~Files() {
      for (const std::string& p : paths) ::unlink(p.c_str());
    }
  };
  static Files files;
  for (const std::string& p : files.paths) {
    if (p.size() >= ending.size() && p.compare(p.size() - ending.size(), ending.size(), ending) == 0)
      return p.c_str();
  }
  std::string dir = ::access("/dev/shm", W_OK) == 0 ? "/dev/shm" : "/tmp";
  files.paths.push_back(dir + "/zelq_fuzz_" + std::to_string(::getpid()) + "_" + ending);
  return files.paths.back().c_str();
}

// Writes the input to the file FilePath(ending) and returns its path.
inline const char* WriteInput(const std::string& ending, const uint8_t* data, size_t size) {
  const char* path = FilePath(ending);
  std::FILE* f = std::fopen(path, "wb");
  ZELQ_FUZZ_CHECK(f != nullptr, "cannot create %s", path);
  bool ok = size == 0 || std::fwrite(data, 1, size, f) == size;
  ok = std::fclose(f) == 0 && ok;
  ZELQ_FUZZ_CHECK(ok, "cannot write %s", path);
  return path;
}

inline std::string ReadFile(const char* path) {
  std::string text;
  std::FILE* f = std::fopen(path, "rb");
  ZELQ_FUZZ_CHECK(f != nullptr, "cannot open %s", path);
  char buf[4096];
  size_t n;
  while ((n = std::fread(buf, 1, sizeof buf, f)) > 0) text.append(buf, n);
  std::fclose(f);
  return text;
}

inline std::string LastError(ZELQprob* prob) {
  static char buf[8192];
  buf[0] = '\0';
  ZELQ_GetLastError(prob, buf, sizeof buf);
  return buf;
}

inline int IntAttr(ZELQprob* prob, const char* name) {
  int v = -1;
  int rc = ZELQ_GetIntAttr(prob, name, &v);
  ZELQ_FUZZ_CHECK(rc == 0, "attribute %s: code %d", name, rc);
  return v;
}

// The problem's MPS text: a complete snapshot of a problem's content to compare against.
inline std::string MpsText(ZELQprob* prob) {
  int need = 0;
  int rc = ZELQ_WriteMpsStr(prob, nullptr, 0, &need);
  ZELQ_FUZZ_CHECK(rc == 0 && need > 0, "MPS size query: code %d: %s", rc, LastError(prob).c_str());
  std::string text(static_cast<size_t>(need), '\0');
  rc = ZELQ_WriteMpsStr(prob, text.data(), need, nullptr);
  ZELQ_FUZZ_CHECK(rc == 0, "MPS text: code %d: %s", rc, LastError(prob).c_str());
  text.resize(static_cast<size_t>(need - 1));
  return text;
}

// A failed read: the code is one a file reader may give (unreadable file, bad content, or content
// this build does not support) and the message names the file.
inline void CheckFailure(ZELQprob* prob, int rc, const char* path, const char* what) {
  std::string msg = LastError(prob);
  ZELQ_FUZZ_CHECK(rc == ZELQ_RETCODE_FILE || rc == ZELQ_RETCODE_INVALID ||
                      rc == ZELQ_RETCODE_NOTSUPPORTED,
                  "%s failed with code %d: %s", what, rc, msg.c_str());
  ZELQ_FUZZ_CHECK(!msg.empty(), "%s failed with code %d and no message", what, rc);
  ZELQ_FUZZ_CHECK(msg.find(path) != std::string::npos, "%s: the message does not name %s: %s",
                  what, path, msg.c_str());
}

// Loads the fixed problem the solution-side readers work on: 5 columns (continuous, integer,
// binary), 3 rows, and names with a blank, '#', ':', UTF-8 bytes and one that looks like the
// default name of another column.
inline void LoadSmallProblem(ZELQprob* prob) {
  static const double obj[] = {1, -2, 0.5, 0, 3};
  static const int beg[] = {0, 2, 4, 5, 6};
  static const int cnt[] = {2, 2, 1, 1, 3};
  static const int idx[] = {0, 1, 0, 2, 1, 2, 0, 1, 2};
  static const double val[] = {1, -1, 2, 1, 4, -3, 1, 1, 1};
  static const char type[] = {'C', 'I', 'B', 'C', 'I'};
  static const double lb[] = {0, -5, 0, -1e30, 0};
  static const double ub[] = {10, 5, 1, 1e30, 1e30};
  static const char sense[] = {'L', 'G', 'E'};
  static const double rhs[] = {4, -2, 1};
  static const char* const cols[] = {"x", "y z", "w#1", "\xc3\xbc\xc3\xa9", "C1"};
  static const char* const rows[] = {"c1", "r 2", "lim:3"};
  int rc = ZELQ_LoadProb(prob, 5, 3, ZELQ_MINIMIZE, 0.0, obj, beg, cnt, idx, val, type, lb, ub,
                         sense, rhs, nullptr, cols, rows);
  ZELQ_FUZZ_CHECK(rc == 0, "loading the fixed problem: code %d: %s", rc,
                  LastError(prob).c_str());
}

// The fixed problem in Prob(0), quiet, with its MPS text.
inline const std::string& SmallProblemText() {
  static const std::string text = [] {
    QuietParams(Prob(0));
    LoadSmallProblem(Prob(0));
    return MpsText(Prob(0));
  }();
  return text;
}

}  // namespace zelq_fuzz
