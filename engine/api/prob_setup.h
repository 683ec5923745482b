// Settings a problem takes from its environment, shared by problem creation, copies and
// parameter changes.
#pragma once

#include "api/handles.h"

namespace zelq::engine {

// Sets the "Logging", "LogToConsole" and "Threads" parameters from the environment's settings.
void ApplyEnvDefaults(ZELQprob* prob);
// Makes the logger follow the "Logging" and "LogToConsole" parameters.
void SyncLogger(ZELQprob* prob);

}  // namespace zelq::engine
