// Engine-handle boxes: the engine environment and problem, held in shared
// storage so that an environment and every model made from it can share them.
//
// EnvBox deletes the engine environment with its last reference; ProbBox
// deletes its engine problem. Neither destructor lets an exception escape.
#ifndef ZELQ_FRAME_ENGINE_BOXES_H_
#define ZELQ_FRAME_ENGINE_BOXES_H_

#include <cstdint>

#include "frame/shared_block.h"
#include "zelq/zelq.h"
#include "zelq/zelqcpp_envr_iface.h"

namespace Zelq {

struct EnvBox {
  ZELQenv* env = nullptr;
  ILogCallback* sink = nullptr;  // receives the banner; not owned

  EnvBox() = default;
  explicit EnvBox(ILogCallback* message_sink) : sink(message_sink) {}
  ~EnvBox() noexcept;
  EnvBox(const EnvBox&) = delete;
  EnvBox& operator=(const EnvBox&) = delete;
};

struct ProbBox {
  int32_t reserved = 0;  // zero at creation, copied unchanged
  int32_t status = 0;    // engine code of the creation or copy
  ZELQprob* prob = nullptr;

  ProbBox() = default;
  // ZELQ_CreateProb in `env`; the code goes to `status`.
  explicit ProbBox(ZELQenv* env);
  // Copies both fields; makes an own engine copy only of a source whose
  // status is 0 (ZELQ_CreateCopy, code to `status`).
  ProbBox(const ProbBox& other);
  ProbBox& operator=(const ProbBox& other);
  ~ProbBox() noexcept;

  // Deletes the problem and zeroes both fields.
  void Clear();
};

using EnvRef = Shared<EnvBox>;
using ProbRef = Shared<ProbBox>;

}  // namespace Zelq

#endif  // ZELQ_FRAME_ENGINE_BOXES_H_
