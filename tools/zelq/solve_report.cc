#include "solve_report.h"

#include <cstdio>

#include "cli_text.h"

namespace zelqcli {

const char* StatusText(int status) {
  static const char* const kWords[] = {
      "unstarted",         "optimal",     "infeasible",         "unbounded",
      "infeasible or unbounded", "numerical trouble", "node limit reached", "imprecise",
      "time limit reached", "unfinished", "interrupted"};
  if (status < 0 || status >= static_cast<int>(sizeof kWords / sizeof kWords[0])) {
    return "unknown";
  }
  return kWords[status];
}

SolveSummary ReadSummary(Zelq::Model& model) {
  SolveSummary s;
  s.status = model.GetIntAttr("Status");
  s.hasSolution = model.GetIntAttr("HasSol") != 0;
  s.isMip = model.GetIntAttr("IsMIP") != 0;
  s.seconds = model.GetDblAttr("SolvingTime");
  if (s.hasSolution) s.objective = model.GetDblAttr("ObjVal");
  if (s.isMip) {
    s.bestBound = model.GetDblAttr("BestBnd");
    s.gap = model.GetDblAttr("BestGap");
  }
  return s;
}

std::string FormatSummary(const SolveSummary& s) {
  std::string out = std::string("Status: ") + StatusText(s.status) + "\n";
  out += "Objective: " + (s.hasSolution ? FormatNumber(s.objective) : std::string("-")) + "\n";
  if (s.isMip) {
    out += "Best bound: " + FormatNumber(s.bestBound) + "\n";
    char gap[64];
    if (s.hasSolution && s.gap < 1e30) {
      // Gaps within rounding of zero print as 0 rather than as 1.9e-14%.
      std::snprintf(gap, sizeof gap, "%.4g%%", s.gap < 1e-9 ? 0.0 : 100.0 * s.gap);
    } else {
      std::snprintf(gap, sizeof gap, "-");
    }
    out += std::string("Gap: ") + gap + "\n";
  }
  char time[64];
  std::snprintf(time, sizeof time, "%.3f s", s.seconds);
  out += std::string("Solve time: ") + time + "\n";
  return out;
}

}  // namespace zelqcli
