#include "scalar/zelq_var.h"

#include <climits>
#include <cstring>

#include "frame/engine_index.h"
#include "scalar/element_call.h"
#include "scalar/handles.h"

namespace Zelq {
namespace {

constexpr const char* kInvalidVar = "Invalid variable";
constexpr double kInfinity = 1e30;

using SetColFn = decltype(&::ZELQ_SetColLower);

// The variable information Set accepts, with its engine setter.
struct VarSetter {
  const char* info;
  SetColFn EngineIndex::*set;
  const char* failure;
};

constexpr VarSetter kVarSetters[] = {
    {"LB", &EngineIndex::SetColLower, "Fail to set variable LB"},
    {"UB", &EngineIndex::SetColUpper, "Fail to set variable UB"},
    {"Obj", &EngineIndex::SetColObj, "Fail to set variable objective"},
    {"BranchFactor", &EngineIndex::SetColBranchFactors, "Fail to set branch factor of variable"},
};

// IIS status of one bound (0 when it cannot be had).
int BoundIIS(Var& var, decltype(&::ZELQ_GetColLowerIIS) EngineIndex::*getter) {
  int status = 0;
  const bool ok = ElementCall(var, kInvalidVar, "Fail to get IIS status for variable",
                              [&](ZELQprob* prob, const int* index) {
                                return (Engine().*getter)(prob, 1, index, &status);
                              });
  return ok ? status : 0;
}

}  // namespace

IVar* NewVarHandle(Var value) {
  if (!value.record) value.record = InvalidRecord();
  return new ZelqVar(Shared<Var>::New(std::move(value)));
}

Var* VarOf(const IVar* var) {
  return var != nullptr ? &static_cast<const ZelqVar*>(var)->Value() : nullptr;
}

const char* VarName(Var& var) {
  return CachedName(var, &EngineIndex::GetColName, "Fail to get required variable name size",
                    "Fail to get variable name");
}

double VarInfo(Var& var, const char* info) {
  double value = kInfinity;
  const bool ok = ElementCall(var, kInvalidVar, "Fail to get variable information",
                              [&](ZELQprob* prob, const int* index) {
                                return Engine().GetColInfo(prob, info, 1, index, &value);
                              });
  return ok ? value : kInfinity;
}

const char* ZelqVar::GetName() {
  const char* name = VarName(*value_);
  if (name != nullptr) return name;
  return value_->record ? value_->record->name.c_str() : "";
}

void ZelqVar::SetName(const char* name) {
  Var& var = *value_;
  const bool ok = ElementCall(var, kInvalidVar, "Fail to set variable name",
                              [&](ZELQprob* prob, const int* index) {
                                return Engine().SetColNames(prob, 1, index, &name);
                              });
  // A null name removes the engine's name; the next GetName fetches the default.
  if (ok) var.record->name = name != nullptr ? name : "";
}

char ZelqVar::GetType() {
  char type = 0;
  const bool ok = ElementCall(
      *value_, kInvalidVar, "Fail to get variable type",
      [&](ZELQprob* prob, const int* index) { return Engine().GetColType(prob, 1, index, &type); });
  return ok ? type : 0;
}

void ZelqVar::SetType(char vtype) {
  ElementCall(*value_, kInvalidVar, "Fail to set variable type",
              [&](ZELQprob* prob, const int* index) {
                return Engine().SetColType(prob, 1, index, &vtype);
              });
}

int ZelqVar::GetBasis() {
  int basis = INT_MIN;
  const bool ok = ElementCall(*value_, kInvalidVar, "Fail to get variable basis",
                              [&](ZELQprob* prob, const int* index) {
                                return Engine().GetColBasis(prob, 1, index, &basis);
                              });
  return ok ? basis : INT_MIN;
}

int ZelqVar::GetLowerIIS() { return BoundIIS(*value_, &EngineIndex::GetColLowerIIS); }

int ZelqVar::GetUpperIIS() { return BoundIIS(*value_, &EngineIndex::GetColUpperIIS); }

double ZelqVar::Get(const char* info) { return VarInfo(*value_, info); }

void ZelqVar::Set(const char* info, double value) {
  Var& var = *value_;
  if (!var.Live()) {
    SetError(var.error, kErrorINVALID, "%s", kInvalidVar);
    return;
  }
  for (const VarSetter& setter : kVarSetters) {
    if (info == nullptr || std::strcmp(info, setter.info) != 0) continue;
    ElementCall(var, kInvalidVar, setter.failure, [&](ZELQprob* prob, const int* index) {
      return (Engine().*setter.set)(prob, 1, index, &value);
    });
    return;
  }
  SetError(var.error, kErrorINVALID, "Unknown variable information");
}

void ZelqVar::Remove() { MarkRemoved(*value_); }

}  // namespace Zelq
