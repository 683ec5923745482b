// Model data: what a model shares with the element records of its handles.
//
// Each element ever added (variable, constraint, and later kinds) has one
// ElementRecord, shared by the model's table and by every handle of it. The
// record's index is the element's engine index while it is live, -2 for an
// invalid handle, and -3 - i once the element that had index i is removed.
// Removal only marks the record and sets the update flag; Compact() (in
// ZelqModel) deletes marked elements from the engine before the next
// whole-problem operation and renumbers the survivors.
//
// A record's `model` link is cleared (and its index set to -2) when the
// model data goes away, so handles that outlive their model report "Invalid
// variable" instead of touching freed memory.
#ifndef ZELQ_MODEL_MODEL_DATA_H_
#define ZELQ_MODEL_MODEL_DATA_H_

#include <array>
#include <cstdint>
#include <string>
#include <unordered_map>
#include <vector>

#include "frame/engine_boxes.h"
#include "frame/shared_block.h"

namespace Zelq {

struct ModelData;

inline constexpr int32_t kInvalidIndex = -2;
// Index stored for an element removed from index i, and back.
inline constexpr int32_t RemovedIndex(int32_t i) { return -3 - i; }
inline constexpr bool IsRemoved(int32_t index) { return index < kInvalidIndex; }

struct ElementRecord {
  ModelData* model = nullptr;  // null for an invalid handle or a dead model
  std::string name;            // cached; empty until first asked or given
  int32_t index = kInvalidIndex;
};
using ElementRef = Shared<ElementRecord>;

// Element kinds with a table in the model, in compaction order.
enum ElementKind : int {
  kVarKind,
  kConstrKind,
  kSosKind,
  kConeKind,
  kExpConeKind,
  kAffineConeKind,
  kGenConstrKind,
  kQConstrKind,
  kNlConstrKind,
  kPsdVarKind,
  kPsdConstrKind,
  kLmiConstrKind,
  kElementKindCount
};

struct ElementTable {
  std::vector<ElementRef> records;  // by engine index (removed ones stay until compaction)
  int32_t count = 0;                // elements the engine holds
};

// Thirteen 32-bit solver settings copied whole by Clone.
struct SolverSettings {
  int32_t values[8] = {};
  int32_t more[3] = {};
  int32_t single_a = 0;
  int32_t single_b = 0;
};

struct ModelData {
  EnvRef env;    // keeps the engine environment alive
  ProbRef prob;  // the engine problem and its creation status
  std::string name;
  std::array<ElementTable, kElementKindCount> tables;
  uint8_t update_flag = 0;  // set by a removal; cleared by compaction
  std::unordered_map<std::string, ElementRef> names;
  SolverSettings settings;
  std::vector<int32_t> psd_dims;  // dimensions of PSD variables
  std::vector<int32_t> lmi_dims;  // dimensions of LMI constraints

  ModelData() = default;
  ModelData(const ModelData&) = delete;
  ModelData& operator=(const ModelData&) = delete;
  ~ModelData();

  ZELQprob* Prob() const { return prob ? prob->prob : nullptr; }
  ElementTable& Table(ElementKind kind) { return tables[kind]; }

  // A new live record with the next index of `kind`, appended to its table.
  ElementRef Append(ElementKind kind, const char* name = nullptr);
  // Detaches every record (model link null, index -2) and empties the tables.
  void DetachAll();
};

}  // namespace Zelq

#endif  // ZELQ_MODEL_MODEL_DATA_H_
