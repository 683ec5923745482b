// Fuzzes the reader of mst files (ZELQ_ReadMst); see fuzz_start.h for the checks. A start that was
// accepted must also survive being written and read again.
#include "fuzz_start.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  zelq::engine::MipStart start = zelq_fuzz::FuzzStartFile(data, size, ".mst", ZELQ_ReadMst);
  if (!start.empty()) zelq_fuzz::CheckNameValueRoundTrip(start);
  return 0;
}
