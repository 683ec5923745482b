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

const InfoSetter kNlConstrSetters[] = {
    {"LB", &EngineIndex::SetNLConstrLower, "Fail to set LB of nonlinear constraints"},
    {"UB", &EngineIndex::SetNLConstrUpper, "Fail to set UB of nonlinear constraints"},
};

const InfoSetter kPsdConstrSetters[] = {
    {"LB", &EngineIndex::SetPSDConstrLower, "Fail to set LB of PSD constraint"},
    {"UB", &EngineIndex::SetPSDConstrUpper, "Fail to set UB of PSD constraint"},
};

const InfoKind kColInfo = {"Empty information name of variables",
                           "Invalid input values for variables",
                           "Unknown double information of variable", kColSetters, 4};

const InfoKind kRowInfo = {"Empty information name of constraints",
                           "Invalid input values for constraints",
                           "Unknown double information of constraint", kRowSetters, 2};

const InfoKind kNlConstrInfo = {"Empty information name of nonlinear constraints",
                                "Invalid input values for nonlinear constraints",
                                "Unknown double information of nonlinear constraint",
                                kNlConstrSetters, 2};

const InfoKind kPsdConstrInfo = {"Empty information name of PSD constraints",
                                 "Invalid input values for PSD constraints",
                                 "Unknown double information of PSD constraint", kPsdConstrSetters,
                                 2};

using GetInfoFn = int (*)(ZELQprob*, const char*, int, const int*, double*);

// Reads one information value per live element of the list; returns the
// number of live elements, or -1 when the engine call failed.
int GetInfo(ZelqModel& model, GetInfoFn EngineIndex::*call, const char* name,
            const std::vector<ElementRef>* records, double* values, const char* message) {
  std::vector<int> indices = LiveIndices(records);
  const int count = static_cast<int>(indices.size());
  SetError(model.Error(), (Engine().*call)(model.Prob(), name, count, indices.data(), values),
           message, name != nullptr ? name : "");
  return model.Error().Failed() ? -1 : count;
}

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

// The message formats take the information name; only the nonlinear one
// shows it.
int ZelqModel::GetColInfo(const char* name, const IVarArray* vars, double* values) {
  return GetInfo(*this, &EngineIndex::GetColInfo, name, RecordsOf(vars), values,
                 "Fail to get col info");
}

int ZelqModel::GetRowInfo(const char* name, const IConstrArray* constrs, double* values) {
  return GetInfo(*this, &EngineIndex::GetRowInfo, name, RecordsOf(constrs), values,
                 "Fail to get row info");
}

int ZelqModel::GetNlConstrInfo(const char* name, const INlConstrArray* constrs, double* values) {
  return GetInfo(*this, &EngineIndex::GetNLConstrInfo, name, RecordsOf(constrs), values,
                 "Fail to get nonlinear constraint info of '%s'");
}

int ZelqModel::GetQConstrInfo(const char* name, const IQConstrArray* constrs, double* values) {
  return GetInfo(*this, &EngineIndex::GetQConstrInfo, name, RecordsOf(constrs), values,
                 "Fail to get quadratic constraint info");
}

int ZelqModel::GetPsdConstrInfo(const char* name, const IPsdConstrArray* constrs,
                                double* values) {
  return GetInfo(*this, &EngineIndex::GetPSDConstrInfo, name, RecordsOf(constrs), values,
                 "Fail to get info of PSD constraints");
}

void ZelqModel::SetNlConstrInfo(const char* name, const INlConstrArray* constrs,
                                const double* values, int len) {
  SetInfo(*this, kNlConstrInfo, name, RecordsOf(constrs), values, len);
}

void ZelqModel::SetPsdConstrInfo(const char* name, const IPsdConstrArray* constrs,
                                 const double* values, int len) {
  SetInfo(*this, kPsdConstrInfo, name, RecordsOf(constrs), values, len);
}

void ZelqModel::SetColInfo(const char* name, const IVarArray* vars, const double* values, int len) {
  SetInfo(*this, kColInfo, name, RecordsOf(vars), values, len);
}

void ZelqModel::SetRowInfo(const char* name, const IConstrArray* constrs, const double* values,
                           int len) {
  SetInfo(*this, kRowInfo, name, RecordsOf(constrs), values, len);
}

}  // namespace Zelq
