// Problem life: create, copy, clear, delete, reset, last error.
#include <cstring>

#include "api/checks.h"
#include "api/prob_setup.h"

using namespace zelq::engine;

namespace zelq::engine {

void ApplyEnvDefaults(ZELQprob* prob) {
  if (!prob->env) return;
  std::string msg;
  prob->params.Set(IntParam::Logging, prob->env->logging, msg);
  prob->params.Set(IntParam::LogToConsole, prob->env->logToConsole, msg);
  prob->params.Set(IntParam::Threads, prob->env->threads, msg);
}

void SyncLogger(ZELQprob* prob) {
  prob->log.SetEnabled(prob->params.Get(IntParam::Logging) != 0);
  prob->log.SetConsole(prob->params.Get(IntParam::LogToConsole) != 0);
}

}  // namespace zelq::engine

int ZELQ_CreateProb(ZELQenv* env, ZELQprob** p_prob) {
  return GuardNoProb(__func__, [&]() -> int {
    if (p_prob == nullptr || !ValidEnv(env) || env->state->closed) return ZELQ_RETCODE_INVALID;
    auto prob = std::make_unique<zelq_prob_s>();
    prob->env = env->state;
    ApplyEnvDefaults(prob.get());
    SyncLogger(prob.get());
    *p_prob = prob.release();
    return ZELQ_RETCODE_OK;
  });
}

int ZELQ_CreateCopy(ZELQprob* src, ZELQprob** p_dst) {
  return Guard(src, __func__, [&]() -> int {
    if (p_dst == nullptr) return Fail(src, ZELQ_RETCODE_INVALID, "destination pointer is null");
    std::unique_ptr<zelq_prob_s> dst;
    try {
      dst = std::make_unique<zelq_prob_s>();
      dst->env = src->env;
      dst->problem = src->problem;
      dst->params = src->params;
      dst->mipStarts = src->mipStarts;
      dst->startColBasis = src->startColBasis;
      dst->startRowBasis = src->startRowBasis;
    } catch (const std::bad_alloc&) {
      return Fail(src, ZELQ_RETCODE_MEMORY, "not enough memory for a copy of the problem");
    }
    SyncLogger(dst.get());
    *p_dst = dst.release();
    return ZELQ_RETCODE_OK;
  });
}

int ZELQ_ClearProb(ZELQprob* prob) {
  return Guard(prob, __func__, [&]() -> int {
    prob->problem.Clear();
    prob->mipStarts.clear();
    prob->startColBasis.clear();
    prob->startRowBasis.clear();
    InvalidateSolution(prob);
    return ZELQ_RETCODE_OK;
  });
}

int ZELQ_DeleteProb(ZELQprob** p_prob) {
  return GuardNoProb(__func__, [&]() -> int {
    if (p_prob == nullptr) return ZELQ_RETCODE_INVALID;
    if (*p_prob == nullptr) return ZELQ_RETCODE_OK;  // nothing to delete
    if (!ValidProb(*p_prob)) return ZELQ_RETCODE_INVALID;
    (*p_prob)->magic = 0;  // a stale copy of the pointer is then refused, not used
    delete *p_prob;
    *p_prob = nullptr;
    return ZELQ_RETCODE_OK;
  });
}

int ZELQ_Reset(ZELQprob* prob, int iClearAll) {
  return Guard(prob, __func__, [&]() -> int {
    if (iClearAll != 0 && iClearAll != 1)
      return Fail(prob, ZELQ_RETCODE_INVALID, "iClearAll = %d; use 0 or 1", iClearAll);
    InvalidateSolution(prob);
    if (iClearAll == 1) {
      prob->mipStarts.clear();
      prob->startColBasis.clear();
      prob->startRowBasis.clear();
    }
    return ZELQ_RETCODE_OK;
  });
}

int ZELQ_ResetParam(ZELQprob* prob) {
  return Guard(prob, __func__, [&]() -> int {
    prob->params.Reset();
    ApplyEnvDefaults(prob);
    SyncLogger(prob);
    return ZELQ_RETCODE_OK;
  });
}

int ZELQ_Update(ZELQprob* prob) {
  return Guard(prob, __func__, [&]() -> int { return ZELQ_RETCODE_OK; });
}

int ZELQ_GetLastError(ZELQprob* prob, char* buff, int buffSize) {
  // Not through Guard: reading the message must not clear it.
  tCurrentFunction = __func__;
  if (!ValidProb(prob) || buff == nullptr || buffSize <= 0) return ZELQ_RETCODE_INVALID;
  const std::string& e = prob->lastError;
  const size_t n = std::min(e.size(), static_cast<size_t>(buffSize - 1));
  std::memcpy(buff, e.data(), n);
  buff[n] = '\0';
  return ZELQ_RETCODE_OK;
}
