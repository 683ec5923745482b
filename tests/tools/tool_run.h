// Test helper: runs a command-line program and collects what it prints.
#ifndef ZELQ_TESTS_TOOLS_TOOL_RUN_H_
#define ZELQ_TESTS_TOOLS_TOOL_RUN_H_

#include <sys/wait.h>

#include <cstdio>
#include <string>

namespace zelq_test {

struct ToolRun {
  int exitCode = -1;
  std::string out;  // stdout and stderr together
};

// Runs `command` through the shell with stderr joined to stdout.
inline ToolRun Execute(const std::string& command) {
  ToolRun r;
  std::FILE* p = popen((command + " 2>&1").c_str(), "r");
  if (!p) return r;
  char buf[4096];
  size_t n;
  while ((n = std::fread(buf, 1, sizeof buf, p)) > 0) r.out.append(buf, n);
  int st = pclose(p);
  r.exitCode = WIFEXITED(st) ? WEXITSTATUS(st) : -1;
  return r;
}

}  // namespace zelq_test

#endif  // ZELQ_TESTS_TOOLS_TOOL_RUN_H_
