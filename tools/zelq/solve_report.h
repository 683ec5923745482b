// The result lines printed after a solve.
#ifndef ZELQ_TOOLS_ZELQ_SOLVE_REPORT_H_
#define ZELQ_TOOLS_ZELQ_SOLVE_REPORT_H_

#include <string>

#include "zelq/zelqcpp.h"

namespace zelqcli {

// The words for the engine's solution status (its attribute "Status").
const char* StatusText(int status);

// What a finished solve reports, read from the model's attributes.
struct SolveSummary {
  int status = 0;
  bool hasSolution = false;
  bool isMip = false;
  double objective = 0.0;
  double bestBound = 0.0;
  double gap = 0.0;
  double seconds = 0.0;
};

SolveSummary ReadSummary(Zelq::Model& model);

// "Status: ...", "Objective: ...", for a MIP "Best bound: ..." and "Gap: ...%", then
// "Solve time: ... s", one per line.
std::string FormatSummary(const SolveSummary& summary);

}  // namespace zelqcli

#endif  // ZELQ_TOOLS_ZELQ_SOLVE_REPORT_H_
