// ZelqModel: the implementation of Zelq::IModel.
//
// The class declares every operation of zelqcpp_model_ops.inc; each family is
// defined in its own source file (model_life.cc, model_vars.cc, ...), and the
// families a later release provides are defined by model_pending.cc, where
// they record code 3 and do nothing.
//
// Calling convention of every operation: check arguments (code 3, no engine
// call), call the engine through Engine() and record a non-zero code with the
// operation's message, return an empty result on failure, and record 0 on
// success. Operations on the whole problem call Compact() first.
#ifndef ZELQ_MODEL_ZELQ_MODEL_H_
#define ZELQ_MODEL_ZELQ_MODEL_H_

#include <cstdint>
#include <unordered_map>
#include <utility>
#include <vector>

#include "frame/error_record.h"
#include "frame/shared_block.h"
#include "model/model_data.h"
#include "zelq/zelqcpp_model_iface.h"

namespace Zelq {

struct ModelCore {
  Shared<ModelData> data;
  ErrorRecord error;
  ICallbackBase* user_callback = nullptr;
  std::vector<double> work[3];  // solution buffers of the callback context
  // Pending MIP start: variable record -> (record, value); AddMipStart
  // hands it to the engine and empties it.
  std::unordered_map<const ElementRecord*, std::pair<ElementRef, double>> mip_start;
  // Buffers of the dense merge, sized by the column count; flags stay zero
  // between uses.
  std::vector<double> merge_values;
  std::vector<uint8_t> merge_flags;
  // Column indices of the row being added from an expression; reused so that
  // adding a constraint allocates nothing for its terms.
  std::vector<int> row_indices;
};

class ZelqModel final : public IModel {
 public:
  explicit ZelqModel(Shared<ModelCore> core) : core_(std::move(core)) {}

#define ZELQ_MODEL_OP(family, result, name, params, qualifier) \
  result name params qualifier override;
#include "zelq/zelqcpp_model_ops.inc"
#undef ZELQ_MODEL_OP

  ModelCore& Core() const { return *core_; }
  ModelData& Data() const { return *core_->data; }
  ErrorRecord& Error() const { return core_->error; }
  ZELQprob* Prob() const { return core_->data->Prob(); }

  // Clears the error record, then deletes every element marked removed from
  // the engine and renumbers the survivors. False (with the engine's code and
  // message recorded) when a deletion failed.
  bool Compact();

  // JSON solution text in and out (model_files.cc). Reading compacts first;
  // writing asks the engine for the size, resizes `buffer` and fetches.
  void ReadJsonString(const char* text);
  void WriteJsonString(IProbBuffer* buffer);

 private:
  Shared<ModelCore> core_;
};

// Builds a model core in `env` (ZELQ_CreateProb); a failed creation is
// recorded as "Critical: fail to create problem" in the new model.
IModel* NewModel(const Shared<EnvBox>& env, const char* name);

}  // namespace Zelq

#endif  // ZELQ_MODEL_ZELQ_MODEL_H_
