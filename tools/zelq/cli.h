// The zelq command: exit codes, the failure it reports, and its commands.
//
// Each command takes the arguments that follow its name and returns the exit code; a failure
// is thrown as CliFailure and printed once by main as "zelq: <message>" on stderr.
#ifndef ZELQ_TOOLS_ZELQ_CLI_H_
#define ZELQ_TOOLS_ZELQ_CLI_H_

#include <string>
#include <vector>

namespace zelqcli {

enum ExitCode {
  kExitOk = 0,
  kExitUsage = 1,     // bad command line
  kExitParam = 2,     // unknown parameter, bad or out-of-range value
  kExitFile = 3,      // missing or unreadable file, parse error, failed write
  kExitSolve = 4,     // the solve itself failed
};

struct CliFailure {
  int exitCode;
  std::string message;
};

using Args = std::vector<std::string>;

int RunSolve(const Args& args);
int RunInfo(const Args& args);
int RunConvert(const Args& args);

// The usage text printed by --help and after a usage error.
const char* UsageText();

}  // namespace zelqcli

#endif  // ZELQ_TOOLS_ZELQ_CLI_H_
