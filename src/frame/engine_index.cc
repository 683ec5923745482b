#include "frame/engine_index.h"

namespace Zelq {
namespace {

const EngineIndex kBound = {
#define ZELQ_ENGINE_OP(name) &::ZELQ_##name,
#include "frame/engine_ops.def"
#undef ZELQ_ENGINE_OP
};

EngineIndex g_engine = kBound;

}  // namespace

EngineIndex& Engine() { return g_engine; }
const EngineIndex& DefaultEngine() { return kBound; }

}  // namespace Zelq
