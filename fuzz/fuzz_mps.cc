// Fuzzes the MPS reader (ZELQ_ReadMps) on files; see fuzz_problem.h for the checks.
#include "fuzz_problem.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  return zelq_fuzz::FuzzProblemFile(data, size, ".mps", ZELQ_ReadMps, ZELQ_WriteMps, true);
}
