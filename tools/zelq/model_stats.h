// Size and coefficient statistics of a problem, as `zelq info` prints them.
//
// Works on plain arrays (bounds, objective, matrix values), so it has no tie to the library.
#ifndef ZELQ_TOOLS_ZELQ_MODEL_STATS_H_
#define ZELQ_TOOLS_ZELQ_MODEL_STATS_H_

#include <string>
#include <vector>

namespace zelqcli {

// Smallest and largest absolute value among the finite non-zero values seen.
struct AbsRange {
  double low = 0.0;
  double high = 0.0;
  bool empty = true;
  void Add(double value);
  std::string ToString() const;  // "[1e-01, 2e+00]" or "none"
};

struct ColumnCounts {
  int free = 0, fixed = 0, boxed = 0, lowerOnly = 0, upperOnly = 0;
};

struct RowCounts {
  int equal = 0, lessEqual = 0, greaterEqual = 0, ranged = 0, free = 0;
};

struct BoundStats {
  ColumnCounts columns;
  RowCounts rows;
  AbsRange objective, bounds, rhs;
};

// Classifies columns by their bounds and rows by their sides (magnitudes of 1e30 or more are
// infinite) and takes the ranges of objective, finite bounds and finite right-hand sides.
BoundStats ComputeBoundStats(const std::vector<double>& colLower,
                             const std::vector<double>& colUpper,
                             const std::vector<double>& objective,
                             const std::vector<double>& rowLower,
                             const std::vector<double>& rowUpper);

}  // namespace zelqcli

#endif  // ZELQ_TOOLS_ZELQ_MODEL_STATS_H_
