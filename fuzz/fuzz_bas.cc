// Fuzzes the basis file reader (ZELQ_ReadBasis) on the fixed problem of fuzz_util.h. A failed
// read gives a reader's code and a message naming the file and keeps the start basis; an
// accepted one is a start basis of the problem's sizes with statuses 0..4 and one BASIC entry per
// row, which the basis writer's text reads back unchanged. The problem itself never changes.
#include <string>
#include <vector>

#include "api/handles.h"
#include "fuzz_util.h"
#include "io/sol_files.h"
#include "io/write_names.h"

namespace {

namespace io = zelq::engine::io;

// A valid start basis of the fixed problem: rows basic, columns at a bound.
const std::vector<int> kColBasis = {0, 2, 0, 0, 0};
const std::vector<int> kRowBasis = {1, 1, 1};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::string& problem = zelq_fuzz::SmallProblemText();
  ZELQprob* prob = zelq_fuzz::Prob(0);
  prob->startColBasis = kColBasis;
  prob->startRowBasis = kRowBasis;
  const char* in = zelq_fuzz::WriteInput("in.bas", data, size);
  int rc = ZELQ_ReadBasis(prob, in);
  if (rc != 0) {
    zelq_fuzz::CheckFailure(prob, rc, in, "reading the basis");
    ZELQ_FUZZ_CHECK(zelq_fuzz::MpsText(prob) == problem, "reading a basis changed the problem");
    ZELQ_FUZZ_CHECK(prob->startColBasis == kColBasis && prob->startRowBasis == kRowBasis,
                    "a failed read (code %d) changed the start basis", rc);
    return 0;
  }
  ZELQ_FUZZ_CHECK(zelq_fuzz::MpsText(prob) == problem, "reading a basis changed the problem");
  const std::vector<int>& cb = prob->startColBasis;
  const std::vector<int>& rb = prob->startRowBasis;
  const int cols = zelq_fuzz::IntAttr(prob, "Cols"), rows = zelq_fuzz::IntAttr(prob, "Rows");
  ZELQ_FUZZ_CHECK(cb.size() == static_cast<size_t>(cols) && rb.size() == static_cast<size_t>(rows),
                  "basis sizes %zu/%zu for %d columns and %d rows", cb.size(), rb.size(), cols,
                  rows);
  int basic = 0;
  for (const std::vector<int>* v : {&cb, &rb}) {
    for (int s : *v) {
      ZELQ_FUZZ_CHECK(s >= ZELQ_BASIS_LOWER && s <= ZELQ_BASIS_FIXED, "basis status %d", s);
      basic += s == ZELQ_BASIS_BASIC;
    }
  }
  ZELQ_FUZZ_CHECK(basic == rows, "%d basic entries for %d rows", basic, rows);

  std::vector<std::string> colNames = io::OutputNames(prob->problem.colNames, cols, 'C');
  std::vector<std::string> rowNames = io::OutputNames(prob->problem.rowNames, rows, 'R');
  std::string text = io::FormatBasis(colNames, rowNames, cb, rb);
  std::vector<int> cb2, rb2;
  std::string err;
  rc = io::ParseBasis(text, "round-trip", io::IndexNames(colNames), io::IndexNames(rowNames), cb2,
                      rb2, err);
  ZELQ_FUZZ_CHECK(rc == 0, "the written basis does not read back: %s\n%s", err.c_str(),
                  text.c_str());
  ZELQ_FUZZ_CHECK(cb2 == cb && rb2 == rb, "the written basis reads back differently:\n%s",
                  text.c_str());
  return 0;
}
