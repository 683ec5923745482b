// Fuzzes the parameter file reader (ZELQ_ReadParam). A failed read gives a reader's code and a
// message naming the file and keeps every parameter; an accepted one writes out (ZELQ_WriteParam)
// to a file that, read into the built-in defaults, gives the same parameter set.
#include <string>

#include "api/handles.h"
#include "fuzz_util.h"
#include "params/param_file.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  ZELQprob* prob = zelq_fuzz::Prob(0);
  zelq_fuzz::QuietParams(prob);
  const zelq::engine::ParamSet before = prob->params;
  const char* in = zelq_fuzz::WriteInput("in.prm", data, size);
  int rc = ZELQ_ReadParam(prob, in);
  if (rc != 0) {
    zelq_fuzz::CheckFailure(prob, rc, in, "reading the parameters");
    ZELQ_FUZZ_CHECK(prob->params == before, "a failed read (code %d) changed parameters", rc);
    return 0;
  }
  const char* out = zelq_fuzz::FilePath("out.prm");
  rc = ZELQ_WriteParam(prob, out);
  ZELQ_FUZZ_CHECK(rc == 0, "writing the parameters: code %d: %s", rc,
                  zelq_fuzz::LastError(prob).c_str());
  ZELQprob* again = zelq_fuzz::Prob(1);
  // The file lists what differs from the built-in defaults, so it is read into those (a reset
  // would start from the environment's settings, which turn logging off).
  again->params = zelq::engine::ParamSet();
  rc = ZELQ_ReadParam(again, out);
  ZELQ_FUZZ_CHECK(rc == 0, "reading back the written parameters: code %d: %s", rc,
                  zelq_fuzz::LastError(again).c_str());
  ZELQ_FUZZ_CHECK(again->params == prob->params,
                  "the written parameters read back differently:\n%s--- read back:\n%s",
                  zelq_fuzz::ReadFile(out).c_str(),
                  zelq::engine::FormatParamFile(again->params).c_str());
  zelq_fuzz::QuietParams(again);
  return 0;
}
