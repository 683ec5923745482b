// Records of element arrays whose kinds (SOS, indicator, nonlinear,
// quadratic and PSD constraints) get their handles in a later release. Until
// then no such array exists, and every list of them reads as empty.
#include "scalar/handles.h"

namespace Zelq {

const std::vector<ElementRef>* RecordsOf(const ISosArray*) { return nullptr; }
const std::vector<ElementRef>* RecordsOf(const IGenConstrArray*) { return nullptr; }
const std::vector<ElementRef>* RecordsOf(const INlConstrArray*) { return nullptr; }
const std::vector<ElementRef>* RecordsOf(const IQConstrArray*) { return nullptr; }
const std::vector<ElementRef>* RecordsOf(const IPsdConstrArray*) { return nullptr; }

}  // namespace Zelq
