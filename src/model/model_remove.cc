// Removing variables and constraints by array. Removal is lazy: each live
// element's record is marked (index i becomes -3 - i) and the model's update
// flag is set; Compact() deletes the marked elements from the engine before
// the next whole-problem operation. Elements already removed, and handles
// that never named an element, are passed over. An array that names a live
// element of another model is refused (code 3) before anything is marked.
#include <vector>

#include "model/zelq_model.h"
#include "scalar/handles.h"

namespace Zelq {
namespace {

void RemoveRecords(ModelData& data, const std::vector<ElementRef>* records, const char* kind,
                   ErrorRecord& error) {
  ClearError(error);
  if (records == nullptr) return;
  for (size_t i = 0; i < records->size(); ++i) {
    const ElementRef& ref = (*records)[i];
    if (ref && ref->index >= 0 && ref->model != &data) {
      SetError(error, kErrorINVALID, "The %d-th %s of the array belongs to another model",
               static_cast<int>(i), kind);
      return;
    }
  }
  for (const ElementRef& ref : *records) {
    if (ref && ref->index >= 0) {
      ref->index = RemovedIndex(ref->index);
      data.update_flag = 1;
    }
  }
}

}  // namespace

void ZelqModel::Remove(IVarArray* vars) { RemoveRecords(Data(), RecordsOf(vars), "variable", Error()); }

void ZelqModel::Remove(IConstrArray* constrs) {
  RemoveRecords(Data(), RecordsOf(constrs), "constraint", Error());
}

}  // namespace Zelq
