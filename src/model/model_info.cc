// Information of variables and constraints by name: reading values of a list
// of elements, and setting bounds, objective coefficients and branch factors
// in bulk.
#include <cstring>
#include <vector>

#include "frame/engine_index.h"
#include "model/live_list.h"
#include "model/zelq_model.h"
#include "scalar/handles.h"

namespace Zelq {
namespace {

using SetFn = int (*)(ZELQprob*, int, const int*, const double*);

// One information name a setter accepts, the engine call it maps to and the
// message of that call's failure.
struct InfoSetter {
  const char* name;
  SetFn EngineIndex::*call;
  const char* failure;
};

// The messages of one element kind's setter.
struct InfoKind {
  const char* empty_name;
  const char* bad_values;
  const char* unknown_name;
  const InfoSetter* setters;
  int setter_count;
};

const InfoSetter kColSetters[] = {
    {"LB", &EngineIndex::SetColLower, "Fail to set col LB"},
    {"UB", &EngineIndex::SetColUpper, "Fail to set col UB"},
    {"Obj", &EngineIndex::SetColObj, "Fail to set col obj"},
    {"BranchFactor", &EngineIndex::SetColBranchFactors, "Fail to set branch factors of col"},
};

const InfoSetter kRowSetters[] = {
    {"LB", &EngineIndex::SetRowLower, "Fail to set row LB"},
    {"UB", &EngineIndex::SetRowUpper, "Fail to set row UB"},
};

const InfoKind kColInfo = {"Empty information name of variables",
                           "Invalid input values for variables",
                           "Unknown double information of variable", kColSetters, 4};

const InfoKind kRowInfo = {"Empty information name of constraints",
                           "Invalid input values for constraints",
                           "Unknown double information of constraint", kRowSetters, 2};

// Checks the arguments, pairs the live elements with their values and calls
// the engine setter the name selects (names match exactly, case included).
// A list without live elements changes nothing, whatever the name.
void SetInfo(ZelqModel& model, const InfoKind& kind, const char* name,
             const std::vector<ElementRef>* records, const double* values, int len) {
  ErrorRecord& error = model.Error();
  if (name == nullptr || name[0] == '\0') {
    SetError(error, kErrorINVALID, "%s", kind.empty_name);
    return;
  }
  if (values == nullptr || len < ListSize(records)) {
    SetError(error, kErrorINVALID, "%s", kind.bad_values);
    return;
  }
  LivePairs pairs = PairLive(records, values);
  if (pairs.Count() == 0) return;
  for (int k = 0; k < kind.setter_count; ++k) {
    const InfoSetter& setter = kind.setters[k];
    if (std::strcmp(name, setter.name) != 0) continue;
    int rc = (Engine().*setter.call)(model.Prob(), pairs.Count(), pairs.indices.data(),
                                     pairs.values.data());
    SetError(error, rc, "%s", setter.failure);
    return;
  }
  SetError(error, kErrorINVALID, "%s", kind.unknown_name);
}

}  // namespace

int ZelqModel::GetColInfo(const char* name, const IVarArray* vars, double* values) {
  std::vector<int> indices = LiveIndices(RecordsOf(vars));
  const int count = static_cast<int>(indices.size());
  SetError(Error(), Engine().GetColInfo(Prob(), name, count, indices.data(), values),
           "Fail to get col info");
  return Error().Failed() ? -1 : count;
}

int ZelqModel::GetRowInfo(const char* name, const IConstrArray* constrs, double* values) {
  std::vector<int> indices = LiveIndices(RecordsOf(constrs));
  const int count = static_cast<int>(indices.size());
  SetError(Error(), Engine().GetRowInfo(Prob(), name, count, indices.data(), values),
           "Fail to get row info");
  return Error().Failed() ? -1 : count;
}

void ZelqModel::SetColInfo(const char* name, const IVarArray* vars, const double* values, int len) {
  SetInfo(*this, kColInfo, name, RecordsOf(vars), values, len);
}

void ZelqModel::SetRowInfo(const char* name, const IConstrArray* constrs, const double* values,
                           int len) {
  SetInfo(*this, kRowInfo, name, RecordsOf(constrs), values, len);
}

}  // namespace Zelq
