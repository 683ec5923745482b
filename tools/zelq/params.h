// Name=Value parameter settings of the zelq command.
#ifndef ZELQ_TOOLS_ZELQ_PARAMS_H_
#define ZELQ_TOOLS_ZELQ_PARAMS_H_

#include <string>
#include <vector>

#include "zelq/zelqcpp.h"

namespace zelqcli {

struct ParamSetting {
  std::string name;   // as typed; the library resolves it case-insensitively
  std::string value;  // as typed; parsed by the parameter's kind
};

// Splits "Name=Value"; false when there is no '=' or the name is empty.
bool SplitSetting(const std::string& arg, ParamSetting* setting);

// True when the settings switch the solver log off (Logging=0 in any case).
bool TurnsLoggingOff(const std::vector<ParamSetting>& settings);

// Checks and sets every parameter, in order. An unknown name, an attribute name, a value that
// is not a number of the parameter's kind or lies outside its range throws CliFailure with
// exit code 2; nothing after the bad setting is applied.
void ApplySettings(Zelq::Model& model, const std::vector<ParamSetting>& settings);

}  // namespace zelqcli

#endif  // ZELQ_TOOLS_ZELQ_PARAMS_H_
