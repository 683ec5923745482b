// zelq: solves, inspects and converts optimisation problems from the command line.
//
//   zelq solve FILE [Name=Value ...] [--write OUT]...
//   zelq info FILE
//   zelq convert IN OUT
#include <cstdio>
#include <cstring>
#include <string>

#include "cli.h"
#include "zelq/zelqcpp.h"

namespace zelqcli {

const char* UsageText() {
  return "usage: zelq solve FILE [Name=Value ...] [--write OUT]...\n"
         "       zelq info FILE\n"
         "       zelq convert IN OUT\n"
         "       zelq --help | --version\n"
         "\n"
         "  solve    read FILE, set parameters by name (case-insensitive, e.g. TimeLimit=60),\n"
         "           solve and print status, objective, best bound and gap (MIP) and time;\n"
         "           --write OUT (repeatable) saves the solution (.sol, .json, .bas, .mst)\n"
         "           or the problem (.mps, .lp, ...) afterwards, by the ending of OUT\n"
         "  info     print sizes, bound and row-sense counts and coefficient ranges\n"
         "  convert  read IN and write it as OUT, in the format of OUT's ending\n"
         "\n"
         "Problem files: .mps, .lp, .cbf, .bin, .dat-s, each optionally compressed (.gz).\n"
         "Exit codes: 0 ok, 1 usage error, 2 bad parameter, 3 missing or unreadable file,\n"
         "            4 solve failed.\n";
}

namespace {

int Dispatch(const std::string& command, const Args& rest) {
  if (command == "solve") return RunSolve(rest);
  if (command == "info") return RunInfo(rest);
  if (command == "convert") return RunConvert(rest);
  throw CliFailure{kExitUsage, "unknown command '" + command + "'"};
}

}  // namespace
}  // namespace zelqcli

int main(int argc, char** argv) {
  using namespace zelqcli;
  if (argc < 2) {
    std::fputs(UsageText(), stderr);
    return kExitUsage;
  }
  std::string command = argv[1];
  if (command == "--help" || command == "-h" || command == "help") {
    std::fputs(UsageText(), stdout);
    return kExitOk;
  }
  if (command == "--version") {
    std::printf("zelq %d.%d.%d\n", GetLibVersion(0), GetLibVersion(1), GetLibVersion(2));
    return kExitOk;
  }
  try {
    return Dispatch(command, Args(argv + 2, argv + argc));
  } catch (const CliFailure& f) {
    std::fflush(stdout);
    std::fprintf(stderr, "zelq: %s\n", f.message.c_str());
    if (f.exitCode == kExitUsage) std::fputs("Run 'zelq --help' for usage.\n", stderr);
    return f.exitCode;
  } catch (const Zelq::Exception& e) {
    // Anything the commands did not put in context yet.
    std::fflush(stdout);
    std::fprintf(stderr, "zelq: %s\n", e.what());
    return kExitSolve;
  }
}
