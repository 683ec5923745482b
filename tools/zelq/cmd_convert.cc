// zelq convert IN OUT
#include <cstdio>
#include <string>

#include "cli.h"
#include "file_kinds.h"
#include "session.h"

namespace zelqcli {

int RunConvert(const Args& args) {
  for (const std::string& a : args) {
    if (a.size() > 1 && a[0] == '-') throw CliFailure{kExitUsage, "unknown option '" + a + "' for convert"};
  }
  if (args.size() != 2) throw CliFailure{kExitUsage, "convert needs an input and an output file"};
  CheckWritable(args[1], true);
  Zelq::Model model = OpenModel(true);
  ReadProblem(model, args[0]);
  WriteFile(model, args[1]);
  std::printf("Wrote %s\n", args[1].c_str());
  return kExitOk;
}

}  // namespace zelqcli
