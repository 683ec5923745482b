// Solving comparison: zelq (header layer), Clp / Cbc called directly, and HiGHS through
// scipy. This header holds the parts with no solver in them (the instance index, the
// exported problem file that the HiGHS child loads, agreement and summary arithmetic), so
// that they can be tested on their own; compare_solve_run.cc runs the solvers.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "zelq/zelq.h"

namespace zelqbench {

// One benchmark instance from the data index (INDEX.tsv: set, file, format, optimum, source).
struct IndexEntry {
  std::string set;   // "netlib", "kennington" or "miplib3"
  std::string file;  // path below the data directory, e.g. "netlib/afiro.mps"
  std::string name;  // file name without directory and ".mps[.gz]"
  double optimum = 0.0;
};

// Reads the LP and MIP instances of the chosen sets from the index text; other sets, the
// header line and duplicates of an instance under another file name (afiro_crlf) are left
// out. `sets` holds "netlib" (Netlib with the Kennington LPs), "kennington" or "miplib3".
// Returns false with *error set when a selected line has no parsable optimum.
bool ParseIndex(const std::string& text, const std::vector<std::string>& sets,
                std::vector<IndexEntry>* out, std::string* error);

// The problem as the engine holds it, written for the HiGHS child (bench/highs_solve.py):
//   8 bytes "ZQLPBIN1"; int64 rows, cols, nnz, sense (1 minimise, -1 maximise);
//   float64 objective constant; float64 obj[cols], colLower[cols], colUpper[cols];
//   float64 rowLower[rows], rowUpper[rows]; int64 rowBeg[rows + 1]; int32 colIdx[nnz];
//   float64 val[nnz]; uint8 integer[cols] (1 for binary and integer columns).
// Infinite bounds are written as +-inf; binary columns get bounds within [0, 1].
struct ExportedProblem {
  int64_t rows = 0, cols = 0, sense = 1;
  double objConst = 0.0;
  std::vector<double> obj, colLower, colUpper, rowLower, rowUpper, val;
  std::vector<int64_t> rowBeg;
  std::vector<int32_t> colIdx;
  std::vector<uint8_t> integer;

  int64_t nnz() const { return static_cast<int64_t>(val.size()); }
  bool isMip() const;
};

// Fills *out from the engine's query calls; false with *error set when a call fails.
bool ExportFromEngine(ZELQprob* prob, ExportedProblem* out, std::string* error);
bool WriteExport(const ExportedProblem& p, const std::string& path, std::string* error);
// Reads a file written by WriteExport and checks its sizes and indices.
bool ReadExport(const std::string& path, ExportedProblem* out, std::string* error);

// |a - b| / max(1, |b|): relative to the reference b, absolute near zero.
double RelDiff(double a, double b);

// What one solver reported for one instance.
enum class Outcome { kOptimal, kTimeLimit, kNoSolution, kFailed, kCrashed, kSkipped };
const char* OutcomeText(Outcome o);

struct SolverResult {
  Outcome outcome = Outcome::kSkipped;
  bool hasObj = false;
  double obj = 0.0;
  double solveSec = 0.0;  // wall seconds of the solve, median over the runs taken
  double cpuSec = 0.0;    // CPU seconds of the solve, median over the runs taken
  double readSec = 0.0;   // reading the file (zelq and direct only)
  double peakMb = 0.0;    // largest ru_maxrss of the child processes
  long long iterations = -1, nodes = -1;  // of the first run; -1 when not known
  int runs = 0;
  std::string note;       // failure text
};

// Agreement of one instance's objectives: each against the published optimum and against
// each other, with a relative tolerance. A time-limited run with an objective counts as
// agreeing only when its value matches; runs without an objective are not compared.
struct Agreement {
  int agree = 0;        // results within tolerance of the published optimum
  int disagree = 0;     // results with an objective off the optimum (time limits excluded)
  int limited = 0;      // time-limited runs
  bool mutual = true;   // every pair of objectives within tolerance
  double worstMutual = 0.0;
};
Agreement Compare(const std::vector<const SolverResult*>& results, double optimum, double tol);

// Geometric means. Plain: exp(mean(log r)) of ratios; shifted: exp(mean(log(t + s))) - s.
double GeoMean(const std::vector<double>& ratios);
double ShiftedGeoMean(const std::vector<double>& times, double shift);

}  // namespace zelqbench
