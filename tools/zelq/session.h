// The one environment and model a zelq command works on.
#ifndef ZELQ_TOOLS_ZELQ_SESSION_H_
#define ZELQ_TOOLS_ZELQ_SESSION_H_

#include "zelq/zelqcpp.h"

namespace zelqcli {

// A new model in a new environment. Quiet leaves out the engine's banner; the log stays on so
// that notes and errors of reading a file (with its line) reach the console. Failures throw
// CliFailure (exit 4).
Zelq::Model OpenModel(bool quiet);

}  // namespace zelqcli

#endif  // ZELQ_TOOLS_ZELQ_SESSION_H_
