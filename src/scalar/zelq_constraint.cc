#include "scalar/zelq_constraint.h"

#include <climits>
#include <cstdio>
#include <cstring>

#include "frame/engine_index.h"
#include "scalar/element_call.h"
#include "scalar/handles.h"

namespace Zelq {
namespace {

constexpr const char* kInvalidConstr = "Invalid constraint";
constexpr double kInfinity = 1e30;

using SetRowFn = decltype(&::ZELQ_SetRowLower);

// The constraint information Set accepts, with its engine setter.
struct ConstrSetter {
  const char* info;
  SetRowFn EngineIndex::*set;
  const char* failure;
};

constexpr ConstrSetter kConstrSetters[] = {
    {"LB", &EngineIndex::SetRowLower, "Fail to set constraint LB"},
    {"UB", &EngineIndex::SetRowUpper, "Fail to set constraint UB"},
};

// IIS status of one bound (0 when it cannot be had).
int BoundIIS(Constraint& constr, decltype(&::ZELQ_GetRowLowerIIS) EngineIndex::*getter) {
  int status = 0;
  const bool ok = ElementCall(constr, kInvalidConstr, "Fail to get IIS status for constraint",
                              [&](ZELQprob* prob, const int* index) {
                                return (Engine().*getter)(prob, 1, index, &status);
                              });
  return ok ? status : 0;
}

}  // namespace

IConstraint* NewConstrHandle(Constraint value) {
  if (!value.record) value.record = InvalidRecord();
  return new ZelqConstraint(Shared<Constraint>::New(std::move(value)));
}

Constraint* ConstrOf(const IConstraint* constr) {
  return constr != nullptr ? &static_cast<const ZelqConstraint*>(constr)->Value() : nullptr;
}

const char* ZelqConstraint::GetName() {
  Constraint& constr = *value_;
  const char* name =
      CachedName(constr, &EngineIndex::GetRowName, "Fail to get required constraint name size",
                 "Fail to get constraint name");
  if (name != nullptr) return name;
  return constr.record ? constr.record->name.c_str() : "";
}

void ZelqConstraint::SetName(const char* name) {
  Constraint& constr = *value_;
  const bool ok = ElementCall(constr, kInvalidConstr, "Fail to set constraint name",
                              [&](ZELQprob* prob, const int* index) {
                                return Engine().SetRowNames(prob, 1, index, &name);
                              });
  // A null name removes the engine's name; the next GetName fetches the default.
  if (ok) constr.record->name = name != nullptr ? name : "";
}

int ZelqConstraint::GetBasis() {
  int basis = INT_MIN;
  const bool ok = ElementCall(*value_, kInvalidConstr, "Fail to get a constraint basis",
                              [&](ZELQprob* prob, const int* index) {
                                return Engine().GetRowBasis(prob, 1, index, &basis);
                              });
  return ok ? basis : INT_MIN;
}

int ZelqConstraint::GetLowerIIS() { return BoundIIS(*value_, &EngineIndex::GetRowLowerIIS); }

int ZelqConstraint::GetUpperIIS() { return BoundIIS(*value_, &EngineIndex::GetRowUpperIIS); }

double ZelqConstraint::Get(const char* info) {
  double value = kInfinity;
  const bool ok = ElementCall(*value_, kInvalidConstr, "Fail to get a constraint information",
                              [&](ZELQprob* prob, const int* index) {
                                return Engine().GetRowInfo(prob, info, 1, index, &value);
                              });
  return ok ? value : kInfinity;
}

void ZelqConstraint::Set(const char* info, double value) {
  Constraint& constr = *value_;
  if (!constr.Live()) {
    SetError(constr.error, kErrorINVALID, "%s", kInvalidConstr);
    return;
  }
  for (const ConstrSetter& setter : kConstrSetters) {
    if (info == nullptr || std::strcmp(info, setter.info) != 0) continue;
    ElementCall(constr, kInvalidConstr, setter.failure, [&](ZELQprob* prob, const int* index) {
      return (Engine().*setter.set)(prob, 1, index, &value);
    });
    return;
  }
  SetError(constr.error, kErrorINVALID, "Unknown constraint information");
}

void ZelqConstraint::Remove() { MarkRemoved(*value_); }

void ZelqConstraint::GetShadowPriceRange(int side, double* low, double* high) {
  Constraint& constr = *value_;
  double range_low = 0.0;
  double range_high = 0.0;
  const int row = constr.Index();
  char failure[80];
  std::snprintf(failure, sizeof failure, "Fail to compute shadow price range for constraint %d",
                row);
  const bool ok =
      ElementCall(constr, kInvalidConstr, failure, [&](ZELQprob* prob, const int* index) {
        return Engine().ComputeShadowPriceRange(prob, *index, side, &range_low, &range_high);
      });
  // The outputs are written only on success.
  if (!ok) return;
  if (low != nullptr) *low = range_low;
  if (high != nullptr) *high = range_high;
}

}  // namespace Zelq
