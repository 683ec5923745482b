// Banner settings: whether creating an environment shows the engine banner,
// and where.
//
// A configuration remembers the values it hands to the engine for the keys
// "Banner", "Logging" and "LogToConsole" (all on by default). The banner is
// shown when Banner and Logging are on: to the message sink if there is one,
// else on standard output when LogToConsole is on. The engine prints nothing
// when an environment is made, so this decision is the library's alone.
#ifndef ZELQ_FRAME_BANNER_SETTINGS_H_
#define ZELQ_FRAME_BANNER_SETTINGS_H_

#include "zelq/zelqcpp_envr_iface.h"

namespace Zelq {

struct BannerSettings {
  bool banner = true;
  bool logging = true;
  bool log_to_console = true;

  // Notes a setting the engine accepted. Keys match without regard to case,
  // values may carry surrounding blanks; other keys are ignored.
  void Remember(const char* name, const char* value);

  // True when the banner has somewhere to go: fetch it before creating.
  bool Wanted(const ILogCallback* sink) const;

  // Hands a non-empty banner to `sink`, or prints it with a newline on
  // standard output, as Wanted allows.
  void Show(const char* text, ILogCallback* sink) const;
};

}  // namespace Zelq

#endif  // ZELQ_FRAME_BANNER_SETTINGS_H_
