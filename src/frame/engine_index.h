// The index of engine operations: the one way the library reaches libzelq.
//
// Every engine call of the library goes through the table returned by
// Engine(), one function pointer per operation of engine_ops.def, bound to
// the real ZELQ_ functions at load time. Unit tests replace an entry to make
// one engine call fail with a chosen code and check what the library records;
// EngineOverride restores the entry when it goes out of scope.
//
//   int rc = Engine().AddRow(prob, n, idx, val, 'L', rhs, 1e30, name);
//
//   EngineOverride fail(&EngineIndex::Solve, [](ZELQprob*) { return 3; });
#ifndef ZELQ_FRAME_ENGINE_INDEX_H_
#define ZELQ_FRAME_ENGINE_INDEX_H_

#include <type_traits>

#include "zelq/zelq.h"

namespace Zelq {

struct EngineIndex {
#define ZELQ_ENGINE_OP(name) decltype(&::ZELQ_##name) name;
#include "frame/engine_ops.def"
#undef ZELQ_ENGINE_OP
};

// The process-wide table. Not locked: tests patch it before they start
// threads that call the engine.
EngineIndex& Engine();

// The table as bound to libzelq, for restoring entries.
const EngineIndex& DefaultEngine();

// Replaces one entry for the lifetime of the object.
template <class Fn>
class EngineOverride {
 public:
  EngineOverride(Fn EngineIndex::*entry, std::type_identity_t<Fn> replacement)
      : entry_(entry), saved_(Engine().*entry) {
    Engine().*entry = replacement;
  }
  ~EngineOverride() { Engine().*entry_ = saved_; }
  EngineOverride(const EngineOverride&) = delete;
  EngineOverride& operator=(const EngineOverride&) = delete;

 private:
  Fn EngineIndex::*entry_;
  Fn saved_;
};

}  // namespace Zelq

#endif  // ZELQ_FRAME_ENGINE_INDEX_H_
