// zelq solve FILE [Name=Value ...] [--write OUT]...
#include <cstdio>
#include <string>
#include <vector>

#include "cli.h"
#include "file_kinds.h"
#include "params.h"
#include "session.h"
#include "solve_report.h"

namespace zelqcli {
namespace {

struct SolveArgs {
  std::string file;
  std::vector<ParamSetting> settings;
  std::vector<std::string> writes;
};

SolveArgs ParseSolveArgs(const Args& args) {
  SolveArgs out;
  for (size_t i = 0; i < args.size(); ++i) {
    const std::string& a = args[i];
    ParamSetting setting;
    if (a == "--write") {
      if (i + 1 >= args.size()) throw CliFailure{kExitUsage, "--write needs a file name"};
      out.writes.push_back(args[++i]);
    } else if (a.rfind("--write=", 0) == 0) {
      out.writes.push_back(a.substr(8));
    } else if (a.rfind("-", 0) == 0 && a.size() > 1) {
      throw CliFailure{kExitUsage, "unknown option '" + a + "' for solve"};
    } else if (SplitSetting(a, &setting)) {
      out.settings.push_back(setting);
    } else if (out.file.empty()) {
      out.file = a;
    } else {
      throw CliFailure{kExitUsage, "unexpected argument '" + a +
                                       "' (parameters are given as Name=Value)"};
    }
  }
  if (out.file.empty()) throw CliFailure{kExitUsage, "solve needs a problem file"};
  for (const std::string& w : out.writes) {
    if (w.empty()) throw CliFailure{kExitUsage, "--write needs a file name"};
    CheckWritable(w, false);
  }
  return out;
}

}  // namespace

int RunSolve(const Args& args) {
  SolveArgs a = ParseSolveArgs(args);
  Zelq::Model model = OpenModel(TurnsLoggingOff(a.settings));
  // Parameters first: a bad one stops the run before any reading or solving.
  ApplySettings(model, a.settings);
  ReadProblem(model, a.file);
  SolveSummary summary;
  try {
    model.Solve();
    summary = ReadSummary(model);
  } catch (const Zelq::Exception& e) {
    throw CliFailure{kExitSolve, std::string("solving '") + a.file + "' failed: " + e.what()};
  }
  std::fputs(FormatSummary(summary).c_str(), stdout);
  std::fflush(stdout);
  for (const std::string& out : a.writes) {
    WriteFile(model, out);
    std::printf("Wrote %s\n", out.c_str());
  }
  return kExitOk;
}

}  // namespace zelqcli
