// An engine environment and problem for the model-building benchmark, without log output and
// closed on scope exit. Failed calls are recorded in the variant's Outcome with the engine's
// own message.
#ifndef ZELQ_BENCH_ENGINE_PROBLEM_H_
#define ZELQ_BENCH_ENGINE_PROBLEM_H_

#include "build_models_bench.h"
#include "zelq/zelq.h"

namespace build_models {

class EngineProblem {
 public:
  explicit EngineProblem(Outcome* out);
  ~EngineProblem();
  EngineProblem(const EngineProblem&) = delete;
  EngineProblem& operator=(const EngineProblem&) = delete;

  ZELQprob* prob() const { return prob_; }
  bool ok() const { return prob_ != nullptr && out_->error[0] == '\0'; }

  // Records a failed call; returns false then.
  bool Ok(int code, const char* what);

  // Leaves the sizes in the outcome and, in the checking pass with `solve`, the LP optimum.
  void Finish(const Options& options, bool solve = true);

 private:
  Outcome* out_;
  ZELQenv* env_ = nullptr;
  ZELQprob* prob_ = nullptr;
};

}  // namespace build_models

#endif  // ZELQ_BENCH_ENGINE_PROBLEM_H_
