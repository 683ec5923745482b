// The body of the targets for files that give a MIP start (.sol, .mst, .json): read through the
// C entry point into the fixed problem of fuzz_util.h. A failed read must give a reader's code
// and a message naming the file and keep the existing starts; a successful one appends exactly
// one start of distinct, existing columns with finite values. The problem itself never changes.
#pragma once

#include <cmath>
#include <string>
#include <vector>

#include "api/handles.h"
#include "fuzz_util.h"
#include "io/sol_files.h"
#include "io/write_names.h"

namespace zelq_fuzz {

// Runs read(prob, file with the input) and checks the outcome; returns the new start (empty
// when the read failed).
inline zelq::engine::MipStart FuzzStartFile(const uint8_t* data, size_t size,
                                            const std::string& ending, int (*read)(ZELQprob*, const char*)) {
  const std::string& problem = SmallProblemText();
  ZELQprob* prob = Prob(0);
  prob->mipStarts.assign(1, zelq::engine::MipStart{{0, 1.5}});
  const std::vector<zelq::engine::MipStart> before = prob->mipStarts;
  const char* in = WriteInput("in" + ending, data, size);
  int rc = read(prob, in);
  if (rc != 0) {
    CheckFailure(prob, rc, in, "reading the start");
    ZELQ_FUZZ_CHECK(MpsText(prob) == problem, "reading a start (code %d) changed the problem", rc);
    ZELQ_FUZZ_CHECK(prob->mipStarts == before, "a failed read (code %d) changed the starts", rc);
    return {};
  }
  ZELQ_FUZZ_CHECK(MpsText(prob) == problem, "reading a start (code %d) changed the problem", rc);
  ZELQ_FUZZ_CHECK(prob->mipStarts.size() == before.size() + 1, "%zu starts after a read, not %zu",
                  prob->mipStarts.size(), before.size() + 1);
  ZELQ_FUZZ_CHECK(prob->mipStarts.front() == before.front(), "the earlier start changed");
  const zelq::engine::MipStart& start = prob->mipStarts.back();
  ZELQ_FUZZ_CHECK(!start.empty(), "an empty start was accepted");
  const int cols = IntAttr(prob, "Cols");
  std::vector<char> seen(static_cast<size_t>(cols), 0);
  for (auto [j, v] : start) {
    ZELQ_FUZZ_CHECK(j >= 0 && j < cols, "column index %d out of range", j);
    ZELQ_FUZZ_CHECK(!seen[static_cast<size_t>(j)], "column %d given twice", j);
    seen[static_cast<size_t>(j)] = 1;
    ZELQ_FUZZ_CHECK(std::isfinite(v) && std::fabs(v) < 1e30, "column %d has value %g", j, v);
  }
  return start;
}

// The start written as a name-value file (the writer of .sol and .mst files) reads back to the
// same pairs.
inline void CheckNameValueRoundTrip(const zelq::engine::MipStart& start) {
  namespace io = zelq::engine::io;
  ZELQprob* prob = Prob(0);
  std::vector<std::string> all = io::OutputNames(prob->problem.colNames, prob->problem.cols(), 'C');
  std::vector<std::string> names;
  std::vector<double> values;
  for (auto [j, v] : start) {
    names.push_back(all[static_cast<size_t>(j)]);
    values.push_back(v);
  }
  std::string text = io::FormatNameValues({"round trip"}, names, values.data());
  zelq::engine::MipStart back;
  std::string err;
  int rc = io::ParseNameValues(text, "round-trip", io::IndexNames(all), "value", false, back, err);
  ZELQ_FUZZ_CHECK(rc == 0, "the written start does not read back: %s\n%s", err.c_str(),
                  text.c_str());
  ZELQ_FUZZ_CHECK(back == start, "the written start reads back differently:\n%s", text.c_str());
}

}  // namespace zelq_fuzz
