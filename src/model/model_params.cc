// Parameters and attributes by name: reads, writes and the kind of a name.
//
// Every operation looks the name up first (the engine gets the canonical
// spelling), then clears the record and checks the kind (code 3, no engine
// call). Parameter operations leave pending removals alone; attribute reads
// compact first so that counts such as "Cols" see only live elements.
#include <climits>
#include <string>

#include "frame/engine_index.h"
#include "model/param_table.h"
#include "model/zelq_model.h"

namespace Zelq {
namespace {

constexpr int kIntFailure = INT_MIN;
constexpr double kDblFailure = 1e30;

struct KindRule {
  int kind;
  const char* unknown;
  const char* wrong;
};

constexpr KindRule kIntParamRule{kIntParamKind, "Unknown ZELQ parameter", "Not ZELQ int parameter"};
constexpr KindRule kDblParamRule{kDblParamKind, "Unknown ZELQ parameter",
                                 "Not ZELQ double parameter"};
constexpr KindRule kIntAttrRule{kIntAttrKind, "Unknown ZELQ attribute", "Not ZELQ int attribute"};
constexpr KindRule kDblAttrRule{kDblAttrKind, "Unknown ZELQ attribute",
                                "Not ZELQ double attribute"};

// Looks `name` up, clears the record and checks the kind against `rule`.
// True with the engine's spelling in `canonical`; false with code 3 recorded.
bool Resolve(ErrorRecord& error, const char* name, const KindRule& rule, std::string& canonical) {
  int kind = SearchParamAttr(name, canonical);
  error.ClearAtEntry();
  if (kind < 0) {
    SetError(error, kErrorINVALID, "%s", rule.unknown);
    return false;
  }
  if (kind != rule.kind) {
    SetError(error, kErrorINVALID, "%s", rule.wrong);
    return false;
  }
  return true;
}

template <class T>
using ParamRead = int (*)(ZELQprob*, const char*, T*);

// Current, default, minimum and maximum through the four engine reads,
// stopping at the first failure. Outputs are written only when all succeed;
// null outputs are skipped.
template <class T>
void ReadParamInfo(ZelqModel& model, const char* name, const KindRule& rule,
                   ParamRead<T> EngineIndex::* const (&reads)[4], T* const (&outputs)[4],
                   const char* message) {
  std::string canonical;
  if (!Resolve(model.Error(), name, rule, canonical)) return;
  T values[4] = {};
  for (int i = 0; i < 4; ++i) {
    int rc = (Engine().*reads[i])(model.Prob(), canonical.c_str(), &values[i]);
    if (rc != 0) {
      SetError(model.Error(), rc, "%s", message);
      return;
    }
  }
  for (int i = 0; i < 4; ++i) {
    if (outputs[i] != nullptr) *outputs[i] = values[i];
  }
}

// One value through one engine read; `failure` when the read did not succeed.
template <class T>
T ReadValue(ZelqModel& model, const std::string& canonical, ParamRead<T> EngineIndex::*read,
            const char* message, T failure) {
  T value{};
  int rc = (Engine().*read)(model.Prob(), canonical.c_str(), &value);
  SetError(model.Error(), rc, "%s", message);
  return rc == 0 ? value : failure;
}

}  // namespace

void ZelqModel::GetIntParamInfo(const char* name, int* current, int* defaultValue, int* minimum,
                                int* maximum) {
  static constexpr ParamRead<int> EngineIndex::* kReads[4] = {
      &EngineIndex::GetIntParam, &EngineIndex::GetIntParamDef, &EngineIndex::GetIntParamMin,
      &EngineIndex::GetIntParamMax};
  ReadParamInfo<int>(*this, name, kIntParamRule, kReads, {current, defaultValue, minimum, maximum},
                     "Failed to get int param info");
}

void ZelqModel::GetDblParamInfo(const char* name, double* current, double* defaultValue,
                                double* minimum, double* maximum) {
  static constexpr ParamRead<double> EngineIndex::* kReads[4] = {
      &EngineIndex::GetDblParam, &EngineIndex::GetDblParamDef, &EngineIndex::GetDblParamMin,
      &EngineIndex::GetDblParamMax};
  ReadParamInfo<double>(*this, name, kDblParamRule, kReads,
                        {current, defaultValue, minimum, maximum},
                        "Failed to get double param info");
}

int ZelqModel::GetIntParam(const char* name) {
  std::string canonical;
  if (!Resolve(Error(), name, kIntParamRule, canonical)) return kIntFailure;
  return ReadValue(*this, canonical, &EngineIndex::GetIntParam, "Failed to get int param value",
                   kIntFailure);
}

double ZelqModel::GetDblParam(const char* name) {
  std::string canonical;
  if (!Resolve(Error(), name, kDblParamRule, canonical)) return kDblFailure;
  return ReadValue(*this, canonical, &EngineIndex::GetDblParam,
                   "Failed to get double param value", kDblFailure);
}

void ZelqModel::SetIntParam(const char* name, int value) {
  std::string canonical;
  if (!Resolve(Error(), name, kIntParamRule, canonical)) return;
  SetError(Error(), Engine().SetIntParam(Prob(), canonical.c_str(), value),
           "Failed to set int param");
}

void ZelqModel::SetDblParam(const char* name, double value) {
  std::string canonical;
  if (!Resolve(Error(), name, kDblParamRule, canonical)) return;
  SetError(Error(), Engine().SetDblParam(Prob(), canonical.c_str(), value),
           "Failed to set double param");
}

int ZelqModel::GetIntAttr(const char* name) {
  std::string canonical;
  if (!Resolve(Error(), name, kIntAttrRule, canonical)) return kIntFailure;
  if (!Compact()) return kIntFailure;
  return ReadValue(*this, canonical, &EngineIndex::GetIntAttr, "Failed to get int attribute",
                   kIntFailure);
}

double ZelqModel::GetDblAttr(const char* name) {
  std::string canonical;
  if (!Resolve(Error(), name, kDblAttrRule, canonical)) return kDblFailure;
  if (!Compact()) return kDblFailure;
  return ReadValue(*this, canonical, &EngineIndex::GetDblAttr, "Fail to get double attribute",
                   kDblFailure);
}

int ZelqModel::GetParamAttrType(const char* name) {
  Error().ClearAtEntry();
  std::string canonical;
  return SearchParamAttr(name, canonical);
}

}  // namespace Zelq
