// Reading results back: MIP and LP solutions, bases, the solution pool and
// the IIS status of variables and constraints.
#include <vector>

#include "frame/engine_index.h"
#include "model/live_list.h"
#include "model/zelq_model.h"
#include "scalar/handles.h"

namespace Zelq {
namespace {

using IisFn = int (*)(ZELQprob*, int, const int*, int*);

// A list getter that reads what the engine holds without compacting: removed
// elements still pending deletion are dropped by their negative index.
// Returns the number of indices passed, whether the engine call failed or not.
int IisStatus(ZelqModel& model, IisFn EngineIndex::*call, const std::vector<ElementRef>* records,
              int* status, const char* message) {
  std::vector<int> indices = LiveIndices(records);
  const int count = static_cast<int>(indices.size());
  SetError(model.Error(), (Engine().*call)(model.Prob(), count, indices.data(), status), "%s",
           message);
  return count;
}

}  // namespace

void ZelqModel::GetSolution(double* values) {
  if (values == nullptr) return;
  if (!Compact()) return;
  SetError(Error(), Engine().GetSolution(Prob(), values), "Failed to get MIP solution");
}

void ZelqModel::GetLpSolution(double* values, double* slack, double* duals, double* redcost) {
  if (values == nullptr && slack == nullptr && duals == nullptr && redcost == nullptr) return;
  if (!Compact()) return;
  SetError(Error(), Engine().GetLpSolution(Prob(), values, slack, duals, redcost),
           "Fail to get LP solution");
}

void ZelqModel::SetLpSolution(double* values, double* slack, double* duals, double* redcost) {
  if (values == nullptr || slack == nullptr || duals == nullptr || redcost == nullptr) return;
  if (!Compact()) return;
  SetError(Error(), Engine().SetLpSolution(Prob(), values, slack, duals, redcost),
           "Fail to set LP solution");
}

int ZelqModel::GetColBasis(int* basis) {
  if (basis != nullptr && Compact()) {
    SetError(Error(), Engine().GetBasis(Prob(), basis, nullptr), "Fail to get col basis");
  }
  return Error().Failed() ? -1 : Data().Table(kVarKind).count;
}

int ZelqModel::GetRowBasis(int* basis) {
  if (basis != nullptr && Compact()) {
    SetError(Error(), Engine().GetBasis(Prob(), nullptr, basis), "Fail to get row basis");
  }
  return Error().Failed() ? -1 : Data().Table(kConstrKind).count;
}

void ZelqModel::SetBasis(int* colBasis, int* rowBasis) {
  if (!Compact()) return;
  SetError(Error(), Engine().SetBasis(Prob(), colBasis, rowBasis), "Fail to set basis");
}

void ZelqModel::SetSlackBasis() {
  if (!Compact()) return;
  SetError(Error(), Engine().SetSlackBasis(Prob()), "Fail to set slack basis");
}

double ZelqModel::GetPoolObjVal(int solution) {
  // Primed with the engine's infinity so a failure never returns garbage.
  double value = 1e30;
  if (!Compact()) return value;
  SetError(Error(), Engine().GetPoolObjVal(Prob(), solution, &value),
           "Fail to get objective value from solution pool");
  return value;
}

int ZelqModel::GetPoolSolution(int solution, const IVarArray* vars, double* values) {
  std::vector<int> indices = LiveIndices(RecordsOf(vars));
  const int count = static_cast<int>(indices.size());
  SetError(Error(), Engine().GetPoolSolution(Prob(), solution, count, indices.data(), values),
           "Fail to get solution values from solution pool");
  return count;
}

int ZelqModel::GetColLowerIIS(const IVarArray* vars, int* status) {
  return IisStatus(*this, &EngineIndex::GetColLowerIIS, RecordsOf(vars), status,
                   "Fail to get IIS status of variables");
}

int ZelqModel::GetColUpperIIS(const IVarArray* vars, int* status) {
  return IisStatus(*this, &EngineIndex::GetColUpperIIS, RecordsOf(vars), status,
                   "Fail to get IIS status of variables");
}

int ZelqModel::GetRowLowerIIS(const IConstrArray* constrs, int* status) {
  return IisStatus(*this, &EngineIndex::GetRowLowerIIS, RecordsOf(constrs), status,
                   "Fail to get IIS status of constraints");
}

int ZelqModel::GetRowUpperIIS(const IConstrArray* constrs, int* status) {
  return IisStatus(*this, &EngineIndex::GetRowUpperIIS, RecordsOf(constrs), status,
                   "Fail to get IIS status of constraints");
}

int ZelqModel::GetSOSIIS(const ISosArray* soss, int* status) {
  return IisStatus(*this, &EngineIndex::GetSOSIIS, RecordsOf(soss), status,
                   "Fail to get IIS status of SOS constraints");
}

int ZelqModel::GetIndicatorIIS(const IGenConstrArray* indicators, int* status) {
  return IisStatus(*this, &EngineIndex::GetIndicatorIIS, RecordsOf(indicators), status,
                   "Fail to get IIS status of indicator constraints");
}

}  // namespace Zelq
