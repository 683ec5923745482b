#include "model/model_data.h"

namespace Zelq {

ModelData::~ModelData() { DetachAll(); }

ElementRef ModelData::Append(ElementKind kind, const char* element_name) {
  ElementTable& table = tables[kind];
  ElementRef ref = ElementRef::New();
  ref->model = this;
  ref->index = table.count++;
  if (element_name != nullptr) ref->name = element_name;
  table.records.push_back(ref);
  return ref;
}

void ModelData::DetachAll() {
  for (ElementTable& table : tables) {
    for (ElementRef& ref : table.records) {
      ref->model = nullptr;
      ref->index = kInvalidIndex;
    }
    table.records.clear();
    table.count = 0;
  }
  names.clear();
}

}  // namespace Zelq
