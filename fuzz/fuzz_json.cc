// Fuzzes the JSON solution reader (ZELQ_ReadJsonSol) on files; see fuzz_start.h for the checks.
// The same text given as a string (ZELQ_ReadJsonStr) must be judged the same way, and an accepted
// start must survive being written as a JSON solution and read again.
#include <cstring>

#include "fuzz_start.h"
#include "io/json_sol.h"

namespace {

namespace io = zelq::engine::io;

void CheckSameAsString(const uint8_t* data, size_t size, const zelq::engine::MipStart& start) {
  std::string text(reinterpret_cast<const char*>(data), size);
  if (text.find('\0') != std::string::npos) return;  // a C string ends at the first zero byte
  if (size >= 2 && ((data[0] == 0x1f && data[1] == 0x8b) || (data[0] == 'B' && data[1] == 'Z')))
    return;  // compressed files have no string counterpart
  ZELQprob* prob = zelq_fuzz::Prob(0);
  prob->mipStarts.clear();
  int rc = ZELQ_ReadJsonStr(prob, text.c_str());
  ZELQ_FUZZ_CHECK((rc == 0) == !start.empty(), "the file read %s but the string gave code %d: %s",
                  start.empty() ? "failed" : "succeeded", rc,
                  zelq_fuzz::LastError(prob).c_str());
  if (rc == 0) {
    ZELQ_FUZZ_CHECK(prob->mipStarts.size() == 1 && prob->mipStarts[0] == start,
                    "the string gave a different start than the file");
  } else {
    ZELQ_FUZZ_CHECK(rc == ZELQ_RETCODE_INVALID, "the string failed with code %d", rc);
    ZELQ_FUZZ_CHECK(zelq_fuzz::LastError(prob).find("<string>") != std::string::npos,
                    "the message does not name the string: %s", zelq_fuzz::LastError(prob).c_str());
  }
}

void CheckJsonRoundTrip(const zelq::engine::MipStart& start) {
  ZELQprob* prob = zelq_fuzz::Prob(0);
  std::vector<std::string> cols = io::OutputNames(prob->problem.colNames, prob->problem.cols(), 'C');
  std::vector<std::string> rows = io::OutputNames(prob->problem.rowNames, prob->problem.rows(), 'R');
  std::vector<double> x(cols.size(), 0.0);
  for (auto [j, v] : start) x[static_cast<size_t>(j)] = v;
  io::SolutionView view;
  view.status = 1;
  view.objective = 1.25;
  view.colNames = &cols;
  view.rowNames = &rows;
  view.x = x.data();
  std::string text = io::FormatJsonSolution(view);
  zelq::engine::MipStart back;
  std::string err;
  int rc = io::ParseJsonColumnValues(text, "round-trip", io::IndexNames(cols), back, err);
  ZELQ_FUZZ_CHECK(rc == 0, "the written solution does not read back: %s\n%s", err.c_str(),
                  text.c_str());
  ZELQ_FUZZ_CHECK(back.size() == cols.size(), "%zu of %zu columns read back:\n%s", back.size(),
                  cols.size(), text.c_str());
  for (auto [j, v] : back) {
    ZELQ_FUZZ_CHECK(v == x[static_cast<size_t>(j)], "column %d reads back as %.17g, not %.17g\n%s",
                    j, v, x[static_cast<size_t>(j)], text.c_str());
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  zelq::engine::MipStart start = zelq_fuzz::FuzzStartFile(data, size, ".json", ZELQ_ReadJsonSol);
  CheckSameAsString(data, size, start);
  if (!start.empty()) CheckJsonRoundTrip(start);
  return 0;
}
