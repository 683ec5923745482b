// A quiet environment and one problem, deleted at scope end: the starting point of most engine
// tests that go through the C interface.
#pragma once

#include "zelq/zelq.h"

namespace engine_test {

class QuietProb {
 public:
  QuietProb() {
    ZELQenvconfig* cfg = nullptr;
    ZELQ_CreateEnvConfig(&cfg);
    ZELQ_SetEnvConfig(cfg, "Banner", "0");
    ZELQ_SetEnvConfig(cfg, "Logging", "0");
    ZELQ_CreateEnvWithConfig(cfg, &env_);
    ZELQ_DeleteEnvConfig(&cfg);
    ZELQ_CreateProb(env_, &prob_);
    ZELQ_SetIntParam(prob_, "Logging", 0);
  }
  ~QuietProb() {
    ZELQ_DeleteProb(&prob_);
    ZELQ_DeleteEnv(&env_);
  }
  QuietProb(const QuietProb&) = delete;
  QuietProb& operator=(const QuietProb&) = delete;
  ZELQprob* get() const { return prob_; }
  operator ZELQprob*() const { return prob_; }
  ZELQprob* operator->() const { return prob_; }

 private:
  ZELQenv* env_ = nullptr;
  ZELQprob* prob_ = nullptr;
};

}  // namespace engine_test
