// ZelqProbBuffer: the implementation of Zelq::IProbBuffer, a zeroed byte
// buffer of size + 1 bytes whose last byte is always a terminator.
#ifndef ZELQ_FRAME_PROB_BUFFER_H_
#define ZELQ_FRAME_PROB_BUFFER_H_

#include <vector>

#include "frame/shared_block.h"
#include "zelq/zelqcpp_envr_iface.h"

namespace Zelq {

class ZelqProbBuffer final : public IProbBuffer {
 public:
  // A negative size is taken as 0.
  explicit ZelqProbBuffer(int size);

  char* GetData() override { return core_->data(); }
  int GetSize() const override { return static_cast<int>(core_->size() - 1); }
  // Keeps the first min(old, new) bytes and zeroes the rest, terminator
  // included. A negative size leaves the buffer as it is.
  void Resize(int size) override;

 private:
  Shared<std::vector<char>> core_;
};

}  // namespace Zelq

#endif  // ZELQ_FRAME_PROB_BUFFER_H_
