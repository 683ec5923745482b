#include "frame/engine_boxes.h"

#include "frame/engine_index.h"

namespace Zelq {

EnvBox::~EnvBox() noexcept {
  if (env != nullptr) Engine().DeleteEnv(&env);
}

ProbBox::ProbBox(ZELQenv* env) { status = Engine().CreateProb(env, &prob); }

ProbBox::ProbBox(const ProbBox& other) : reserved(other.reserved), status(other.status) {
  if (other.status == 0) status = Engine().CreateCopy(other.prob, &prob);
}

ProbBox& ProbBox::operator=(const ProbBox& other) {
  if (this == &other) return *this;
  Clear();
  reserved = other.reserved;
  status = other.status;
  if (other.status == 0) status = Engine().CreateCopy(other.prob, &prob);
  return *this;
}

ProbBox::~ProbBox() noexcept {
  if (prob != nullptr) Engine().DeleteProb(&prob);
}

void ProbBox::Clear() {
  if (prob != nullptr) Engine().DeleteProb(&prob);
  prob = nullptr;
  reserved = 0;
  status = 0;
}

}  // namespace Zelq
