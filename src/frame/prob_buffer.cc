#include "frame/prob_buffer.h"

#include <algorithm>
#include <cstddef>

namespace Zelq {

ZelqProbBuffer::ZelqProbBuffer(int size)
    : core_(Shared<std::vector<char>>::Wrap(
          new std::vector<char>(static_cast<size_t>(std::max(size, 0)) + 1, '\0'))) {}

void ZelqProbBuffer::Resize(int size) {
  if (size < 0) return;
  std::vector<char>& bytes = *core_;
  const size_t kept = std::min(bytes.size() - 1, static_cast<size_t>(size));
  bytes.resize(static_cast<size_t>(size) + 1);
  std::fill(bytes.begin() + static_cast<std::ptrdiff_t>(kept), bytes.end(), '\0');
}

}  // namespace Zelq
