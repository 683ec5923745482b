// Solving, pushing pending edits into the engine, interrupting, and the MIP
// and nonlinear starting points.
#include <algorithm>
#include <vector>

#include "frame/engine_index.h"
#include "model/live_list.h"
#include "model/zelq_model.h"
#include "scalar/handles.h"

namespace Zelq {
namespace {

// The list form of the nonlinear primal start, shared by both overloads.
void NlPrimalStart(ZelqModel& model, const std::vector<ElementRef>* records, const double* values) {
  if (!model.Compact()) return;
  if (ListSize(records) == 0) return;
  // The values are read by list position; without them there is nothing to
  // pair, and reading through a null pointer must not happen.
  if (values == nullptr) {
    SetError(model.Error(), kErrorINVALID, "Invalid input values for variables");
    return;
  }
  LivePairs pairs = PairLive(records, values);
  if (pairs.Count() == 0) return;
  int rc = Engine().SetNLPrimalStart(model.Prob(), pairs.Count(), pairs.indices.data(),
                                     pairs.values.data());
  SetError(model.Error(), rc, "Fail to set NL primal start information");
}

}  // namespace

void ZelqModel::Solve() {
  if (!Compact()) return;
  SetError(Error(), Engine().Solve(Prob()), "Fail to solve problem");
}

void ZelqModel::SolveLp() {
  if (!Compact()) return;
  SetError(Error(), Engine().SolveLp(Prob()), "Fail to solve as LP problem");
}

// Called from another thread while Solve runs, so it neither compacts nor
// touches the record on success: the solving thread owns both until the
// engine returns.
void ZelqModel::Interrupt() {
  int rc = Engine().Interrupt(Prob());
  if (rc != 0) SetError(Error(), rc, "Fail to interrupt solving");
}

void ZelqModel::Update() {
  if (!Compact()) return;
  SetError(Error(), Engine().Update(Prob()), "Fail to update problem");
}

void ZelqModel::SetMipStart(const IVar* var, double value) {
  const Var* handle = VarOf(var);
  if (handle == nullptr || !handle->record || handle->record->model != &Data() ||
      handle->record->index < 0) {
    SetError(Error(), kErrorINVALID, "Invalid variable");
    return;
  }
  // A later value for the same variable replaces the earlier one.
  Core().mip_start.insert_or_assign(handle->record.Get(), std::make_pair(handle->record, value));
  ClearError(Error());
}

void ZelqModel::AddMipStart() {
  if (!Compact()) return;
  auto& pending = Core().mip_start;
  if (pending.empty()) {
    pending.clear();
    return;
  }
  std::vector<std::pair<int, double>> pairs;
  pairs.reserve(pending.size());
  for (const auto& entry : pending) {
    const auto& [ref, value] = entry.second;
    if (ref->index >= 0) pairs.emplace_back(ref->index, value);
  }
  // Each start is handed to the engine once, whether it takes it or not.
  pending.clear();
  if (pairs.empty()) return;
  // Index order keeps what the engine receives independent of hashing.
  std::sort(pairs.begin(), pairs.end());
  std::vector<int> indices;
  std::vector<double> values;
  indices.reserve(pairs.size());
  values.reserve(pairs.size());
  for (const auto& [index, value] : pairs) {
    indices.push_back(index);
    values.push_back(value);
  }
  int rc =
      Engine().AddMipStart(Prob(), static_cast<int>(indices.size()), indices.data(), values.data());
  SetError(Error(), rc, "Fail to add MIP start information");
}

void ZelqModel::SetNlPrimalStart(const IVarArray* vars, const double* values) {
  NlPrimalStart(*this, RecordsOf(vars), values);
}

void ZelqModel::SetNlPrimalStart(const IVar* var, double value) {
  std::vector<ElementRef> one;
  if (const Var* handle = VarOf(var); handle != nullptr && handle->record) {
    one.push_back(handle->record);
  }
  NlPrimalStart(*this, &one, &value);
}

}  // namespace Zelq
