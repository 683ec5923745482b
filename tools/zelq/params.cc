#include "params.h"

#include <cctype>

#include "cli.h"
#include "cli_text.h"

namespace zelqcli {
namespace {

// Kinds reported by the library's name lookup.
constexpr int kDoubleParam = 0;
constexpr int kIntParam = 1;

[[noreturn]] void Fail(const std::string& message) { throw CliFailure{kExitParam, message}; }

std::string Range(const std::string& low, const std::string& high) {
  return "[" + low + ", " + high + "]";
}

void SetInt(Zelq::Model& model, const ParamSetting& s) {
  int value = 0;
  if (!ParseInt(s.value, &value)) {
    Fail("parameter " + s.name + " takes an integer, got '" + s.value + "'");
  }
  int current = 0, def = 0, low = 0, high = 0;
  model.GetIntParamInfo(s.name.c_str(), &current, &def, &low, &high);
  if (value < low || value > high) {
    Fail("value " + s.value + " of parameter " + s.name + " is out of range " +
         Range(std::to_string(low), std::to_string(high)));
  }
  model.SetIntParam(s.name.c_str(), value);
}

void SetDouble(Zelq::Model& model, const ParamSetting& s) {
  double value = 0;
  if (!ParseDouble(s.value, &value)) {
    Fail("parameter " + s.name + " takes a number, got '" + s.value + "'");
  }
  double current = 0, def = 0, low = 0, high = 0;
  model.GetDblParamInfo(s.name.c_str(), &current, &def, &low, &high);
  if (value < low || value > high) {
    Fail("value " + s.value + " of parameter " + s.name + " is out of range " +
         Range(FormatNumber(low), FormatNumber(high)));
  }
  model.SetDblParam(s.name.c_str(), value);
}

void ApplyOne(Zelq::Model& model, const ParamSetting& s) {
  int kind = model.GetParamAttrType(s.name.c_str());
  if (kind == kIntParam) {
    SetInt(model, s);
  } else if (kind == kDoubleParam) {
    SetDouble(model, s);
  } else if (kind < 0) {
    Fail("unknown parameter '" + s.name + "'");
  } else {
    Fail("'" + s.name + "' is an attribute, not a parameter");
  }
}

}  // namespace

bool SplitSetting(const std::string& arg, ParamSetting* setting) {
  size_t eq = arg.find('=');
  if (eq == std::string::npos || eq == 0) return false;
  // Parameter names are letters and digits, so "dir=x/model.mps" stays a file name.
  for (size_t i = 0; i < eq; ++i) {
    if (!std::isalnum(static_cast<unsigned char>(arg[i])) && arg[i] != '_') return false;
  }
  setting->name = arg.substr(0, eq);
  setting->value = arg.substr(eq + 1);
  return true;
}

bool TurnsLoggingOff(const std::vector<ParamSetting>& settings) {
  bool off = false;
  for (const ParamSetting& s : settings) {
    int value = 1;
    if (Lower(s.name) == "logging" && ParseInt(s.value, &value)) off = value == 0;
  }
  return off;
}

void ApplySettings(Zelq::Model& model, const std::vector<ParamSetting>& settings) {
  for (const ParamSetting& s : settings) {
    try {
      ApplyOne(model, s);
    } catch (const Zelq::Exception& e) {
      // The library refused the name or the value (or the engine's own search failed).
      Fail("cannot set parameter " + s.name + "=" + s.value + ": " + e.what());
    }
  }
}

}  // namespace zelqcli
