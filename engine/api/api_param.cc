// Parameters by name over the problem's ParamSet.
#include "api/checks.h"
#include "api/prob_setup.h"

using namespace zelq::engine;

namespace {

int Result(ZELQprob* prob, int rc, const std::string& msg) {
  if (rc == kParamOk) return ZELQ_RETCODE_OK;
  return Fail(prob, rc == kParamErrInvalid ? ZELQ_RETCODE_INVALID : ZELQ_RETCODE_INTERNAL, "%s",
              msg.c_str());
}

template <class T, class Fn>
int Field(ZELQprob* prob, const char* name, ParamField field, T* out, Fn fn) {
  std::string msg;
  return Result(prob, fn(name, field, out, msg), msg);
}

}  // namespace

int ZELQ_SetIntParam(ZELQprob* prob, const char* paramName, int intParam) {
  return Guard(prob, __func__, [&]() -> int {
    std::string msg;
    const int rc = prob->params.SetIntByName(paramName, intParam, msg);
    if (rc == kParamOk) SyncLogger(prob);  // "Logging" and "LogToConsole" drive the logger
    return Result(prob, rc, msg);
  });
}

int ZELQ_GetIntParam(ZELQprob* prob, const char* paramName, int* p_intParam) {
  return Guard(prob, __func__, [&]() -> int {
    std::string msg;
    return Result(prob, prob->params.GetIntByName(paramName, p_intParam, msg), msg);
  });
}

int ZELQ_GetIntParamDef(ZELQprob* prob, const char* paramName, int* p_intParam) {
  return Guard(prob, __func__, [&]() -> int {
    return Field(prob, paramName, ParamField::kDefault, p_intParam, GetIntParamField);
  });
}

int ZELQ_GetIntParamMin(ZELQprob* prob, const char* paramName, int* p_intParam) {
  return Guard(prob, __func__, [&]() -> int {
    return Field(prob, paramName, ParamField::kMin, p_intParam, GetIntParamField);
  });
}

int ZELQ_GetIntParamMax(ZELQprob* prob, const char* paramName, int* p_intParam) {
  return Guard(prob, __func__, [&]() -> int {
    return Field(prob, paramName, ParamField::kMax, p_intParam, GetIntParamField);
  });
}

int ZELQ_SetDblParam(ZELQprob* prob, const char* paramName, double dblParam) {
  return Guard(prob, __func__, [&]() -> int {
    std::string msg;
    return Result(prob, prob->params.SetDblByName(paramName, dblParam, msg), msg);
  });
}

int ZELQ_GetDblParam(ZELQprob* prob, const char* paramName, double* p_dblParam) {
  return Guard(prob, __func__, [&]() -> int {
    std::string msg;
    return Result(prob, prob->params.GetDblByName(paramName, p_dblParam, msg), msg);
  });
}

int ZELQ_GetDblParamDef(ZELQprob* prob, const char* paramName, double* p_dblParam) {
  return Guard(prob, __func__, [&]() -> int {
    return Field(prob, paramName, ParamField::kDefault, p_dblParam, GetDblParamField);
  });
}

int ZELQ_GetDblParamMin(ZELQprob* prob, const char* paramName, double* p_dblParam) {
  return Guard(prob, __func__, [&]() -> int {
    return Field(prob, paramName, ParamField::kMin, p_dblParam, GetDblParamField);
  });
}

int ZELQ_GetDblParamMax(ZELQprob* prob, const char* paramName, double* p_dblParam) {
  return Guard(prob, __func__, [&]() -> int {
    return Field(prob, paramName, ParamField::kMax, p_dblParam, GetDblParamField);
  });
}

int ZELQ_SearchParamAttr(ZELQprob* prob, const char* name, int* p_kind) {
  auto body = [&]() -> int {
    if (name == nullptr || p_kind == nullptr)
      return Fail(prob, ZELQ_RETCODE_INVALID, "%s is null", name ? "p_kind" : "name");
    SearchParamAttr(name, p_kind);  // -1 for an unknown name
    return ZELQ_RETCODE_OK;
  };
  if (prob == nullptr) return GuardNoProb(__func__, body);
  return Guard(prob, __func__, body);
}
