// Compaction: deleting removed elements from the engine before whole-problem
// operations, and the error readers.
#include "frame/engine_index.h"
#include "model/zelq_model.h"

namespace Zelq {
namespace {

using DelFn = int (*)(ZELQprob*, int, const int*);

struct KindDeletion {
  DelFn EngineIndex::*del;
  const char* message;
};

// In the order of ElementKind.
const KindDeletion kDeletions[kElementKindCount] = {
    {&EngineIndex::DelCols, "Fail to del cols"},
    {&EngineIndex::DelRows, "Fail to del rows"},
    {&EngineIndex::DelSOSs, "Fail to del SOS constraints"},
    {&EngineIndex::DelCones, "Fail to del cones"},
    {&EngineIndex::DelExpCones, "Fail to del exponential cones"},
    {&EngineIndex::DelAffineCones, "Fail to del affine cones"},
    {&EngineIndex::DelIndicators, "Fail to del indicator constraints"},
    {&EngineIndex::DelQConstrs, "Fail to del quadratic constraints"},
    {&EngineIndex::DelNLConstrs, "Fail to del nonlinear constraints"},
    {&EngineIndex::DelPSDCols, "Fail to del PSD variables"},
    {&EngineIndex::DelPSDConstrs, "Fail to del PSD constraints"},
    {&EngineIndex::DelLMIConstrs, "Fail to del LMI constraints"},
};

// Deletes the removed records of one table from the engine and renumbers the
// survivors as the engine does. The table is left as it was on failure.
bool CompactTable(ElementTable& table, ZELQprob* prob, const KindDeletion& deletion,
                  ErrorRecord& error) {
  std::vector<int> old_indices;
  for (const ElementRef& ref : table.records) {
    if (IsRemoved(ref->index)) old_indices.push_back(RemovedIndex(ref->index));
  }
  if (old_indices.empty()) return true;
  int rc = (Engine().*deletion.del)(prob, static_cast<int>(old_indices.size()),
                                      old_indices.data());
  SetError(error, rc, "%s", deletion.message);
  if (rc != 0) return false;
  std::vector<ElementRef> survivors;
  survivors.reserve(table.records.size() - old_indices.size());
  for (ElementRef& ref : table.records) {
    if (ref->index >= 0) {
      ref->index = static_cast<int32_t>(survivors.size());
      survivors.push_back(std::move(ref));
    }
  }
  table.records = std::move(survivors);
  table.count = static_cast<int32_t>(table.records.size());
  return true;
}

}  // namespace

bool ZelqModel::Compact() {
  ErrorRecord& error = Error();
  error.ClearAtEntry();
  ModelData& data = Data();
  if (data.update_flag == 0) return true;
  for (int kind = 0; kind < kElementKindCount; ++kind) {
    if (!CompactTable(data.tables[kind], data.Prob(), kDeletions[kind], error)) return false;
  }
  data.update_flag = 0;
  return true;
}

int ZelqModel::GetErrorCode() const { return Error().Code(); }

const char* ZelqModel::GetErrorMessage() const { return Error().Message(); }

}  // namespace Zelq
