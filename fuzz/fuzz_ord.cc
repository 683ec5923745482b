// Fuzzes the branching order reader (ZELQ_ReadOrd) on the fixed problem of fuzz_util.h. A failed
// read gives a reader's code and a message naming the file and keeps the priorities; an accepted
// one sets one finite priority per column, and the file ZELQ_WriteOrd makes of them reads back
// to the same priorities.
#include <cmath>
#include <string>
#include <vector>

#include "api/handles.h"
#include "fuzz_util.h"

namespace {

const std::vector<double> kFactors = {0, 3, -1.5, 0, 7};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::string& problem = zelq_fuzz::SmallProblemText();
  ZELQprob* prob = zelq_fuzz::Prob(0);
  prob->problem.branchFactor = kFactors;
  const char* in = zelq_fuzz::WriteInput("in.ord", data, size);
  int rc = ZELQ_ReadOrd(prob, in);
  if (rc != 0) {
    zelq_fuzz::CheckFailure(prob, rc, in, "reading the order");
    ZELQ_FUZZ_CHECK(zelq_fuzz::MpsText(prob) == problem, "reading an order changed the problem");
    ZELQ_FUZZ_CHECK(prob->problem.branchFactor == kFactors,
                    "a failed read (code %d) changed the priorities", rc);
    return 0;
  }
  ZELQ_FUZZ_CHECK(zelq_fuzz::MpsText(prob) == problem, "reading an order changed the problem");
  const std::vector<double> read = prob->problem.branchFactor;
  ZELQ_FUZZ_CHECK(read.size() == static_cast<size_t>(zelq_fuzz::IntAttr(prob, "Cols")),
                  "%zu priorities", read.size());
  for (double f : read) ZELQ_FUZZ_CHECK(std::isfinite(f) && std::fabs(f) < 1e30, "priority %g", f);

  const char* out = zelq_fuzz::FilePath("out.ord");
  rc = ZELQ_WriteOrd(prob, out);
  ZELQ_FUZZ_CHECK(rc == 0, "writing the order: code %d: %s", rc,
                  zelq_fuzz::LastError(prob).c_str());
  prob->problem.branchFactor = kFactors;
  rc = ZELQ_ReadOrd(prob, out);
  ZELQ_FUZZ_CHECK(rc == 0, "reading back the written order: code %d: %s\n%s", rc,
                  zelq_fuzz::LastError(prob).c_str(), zelq_fuzz::ReadFile(out).c_str());
  ZELQ_FUZZ_CHECK(prob->problem.branchFactor == read, "the written order reads back differently:\n%s",
                  zelq_fuzz::ReadFile(out).c_str());
  return 0;
}
