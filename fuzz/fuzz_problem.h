// The body of the problem-file targets (MPS, LP): the input is read through the C entry point
// from a file. A failed read must give a reader's code and a message naming the file, and leave
// the loaded problem exactly as it was; a successful read must write out in the same format and
// read back to the same problem (compared through its MPS text). Formats whose writer cleans up
// names (namesKept false) are compared from the first written file on.
#pragma once

#include <cmath>
#include <string>
#include <vector>

#include "api/handles.h"
#include "fuzz_util.h"

namespace zelq_fuzz {

using FileCall = int (*)(ZELQprob*, const char*);

// What the C interface would accept for the same content: finite objective and matrix values,
// bounds that are numbers with at most the right infinity, known column types.
inline void CheckContent(ZELQprob* prob) {
  const zelq::engine::Problem& p = prob->problem;
  const size_t n = static_cast<size_t>(p.cols()), m = static_cast<size_t>(p.rows());
  ZELQ_FUZZ_CHECK(p.colLower.size() == n && p.colUpper.size() == n && p.colType.size() == n &&
                      p.rowUpper.size() == m,
                  "inconsistent sizes for %zu columns and %zu rows", n, m);
  auto finite = [](double v) { return std::isfinite(v) && std::fabs(v) < 1e30; };
  ZELQ_FUZZ_CHECK(finite(p.objConst), "objective constant %g", p.objConst);
  for (size_t j = 0; j < n; ++j) {
    ZELQ_FUZZ_CHECK(finite(p.obj[j]), "objective coefficient %g of column %zu", p.obj[j], j);
    ZELQ_FUZZ_CHECK(!std::isnan(p.colLower[j]) && p.colLower[j] < 1e30 &&
                        !std::isnan(p.colUpper[j]) && p.colUpper[j] > -1e30,
                    "column %zu has bounds [%g, %g]", j, p.colLower[j], p.colUpper[j]);
    char t = p.colType[j];
    ZELQ_FUZZ_CHECK(t == 'C' || t == 'B' || t == 'I', "column %zu has type %d", j, t);
  }
  for (size_t i = 0; i < m; ++i) {
    ZELQ_FUZZ_CHECK(!std::isnan(p.rowLower[i]) && p.rowLower[i] < 1e30 &&
                        !std::isnan(p.rowUpper[i]) && p.rowUpper[i] > -1e30,
                    "row %zu has bounds [%g, %g]", i, p.rowLower[i], p.rowUpper[i]);
  }
  std::vector<int> beg, idx;
  std::vector<double> val;
  p.ColumnMatrix(beg, idx, val);
  for (size_t k = 0; k < val.size(); ++k) {
    ZELQ_FUZZ_CHECK(finite(val[k]), "matrix value %g", val[k]);
    ZELQ_FUZZ_CHECK(idx[k] >= 0 && static_cast<size_t>(idx[k]) < m, "row index %d", idx[k]);
  }
}

inline int FuzzProblemFile(const uint8_t* data, size_t size, const std::string& ending,
                           FileCall read, FileCall write, bool namesKept) {
  static bool quiet = false;
  if (!quiet) {
    QuietParams(Prob(0));
    QuietParams(Prob(1));
    quiet = true;
  }
  ZELQprob* prob = Prob(0);
  LoadSmallProblem(prob);
  const std::string before = MpsText(prob);
  const char* in = WriteInput("in" + ending, data, size);
  int rc = read(prob, in);
  if (rc != 0) {
    CheckFailure(prob, rc, in, "reading the input");
    ZELQ_FUZZ_CHECK(MpsText(prob) == before, "a failed read (code %d) changed the problem", rc);
    return 0;
  }
  CheckContent(prob);
  std::string first = MpsText(prob);
  const char* out = FilePath("out" + ending);
  rc = write(prob, out);
  ZELQ_FUZZ_CHECK(rc == 0, "writing the read problem: code %d: %s", rc, LastError(prob).c_str());
  ZELQprob* again = Prob(1);
  rc = read(again, out);
  ZELQ_FUZZ_CHECK(rc == 0, "reading back the written problem: code %d: %s", rc,
                  LastError(again).c_str());
  for (const char* attr : {"Cols", "Rows", "Elems", "Ints", "Bins"}) {
    ZELQ_FUZZ_CHECK(IntAttr(prob, attr) == IntAttr(again, attr), "%s: %d read, %d read back",
                    attr, IntAttr(prob, attr), IntAttr(again, attr));
  }
  std::string second = MpsText(again);
  if (!namesKept) {
    // The writer may have cleaned up names; from then on the text must be stable.
    first = second;
    rc = write(again, out);
    ZELQ_FUZZ_CHECK(rc == 0, "writing again: code %d: %s", rc, LastError(again).c_str());
    rc = read(prob, out);
    ZELQ_FUZZ_CHECK(rc == 0, "reading back again: code %d: %s", rc, LastError(prob).c_str());
    second = MpsText(prob);
  }
  ZELQ_FUZZ_CHECK(first == second, "the problem read back differs:\n--- read:\n%s\n--- read back:\n%s",
                  first.c_str(), second.c_str());
  return 0;
}

}  // namespace zelq_fuzz
