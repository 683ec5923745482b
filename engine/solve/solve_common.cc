// Settings shared by the Clp and Cbc adapters.
#include "api/handles.h"
#include "zelq/zelq.h"
#include "solve/solver.h"

namespace zelq::engine {

void ApplyLogSettings(ZELQprob* prob) {
  prob->log.SetEnabled(prob->params.Get(IntParam::Logging) != 0);
  prob->log.SetConsole(prob->params.Get(IntParam::LogToConsole) != 0);
}

}  // namespace zelq::engine
