#include "model_stats.h"

#include <cmath>
#include <cstdio>

namespace zelqcli {
namespace {

bool Finite(double v) { return std::fabs(v) < 1e30; }

void CountColumn(double lower, double upper, ColumnCounts* c) {
  bool hasLower = Finite(lower), hasUpper = Finite(upper);
  if (hasLower && hasUpper) {
    ++(lower == upper ? c->fixed : c->boxed);
  } else if (hasLower) {
    ++c->lowerOnly;
  } else if (hasUpper) {
    ++c->upperOnly;
  } else {
    ++c->free;
  }
}

void CountRow(double lower, double upper, RowCounts* r) {
  bool hasLower = Finite(lower), hasUpper = Finite(upper);
  if (hasLower && hasUpper) {
    ++(lower == upper ? r->equal : r->ranged);
  } else if (hasLower) {
    ++r->greaterEqual;
  } else if (hasUpper) {
    ++r->lessEqual;
  } else {
    ++r->free;
  }
}

}  // namespace

void AbsRange::Add(double value) {
  double a = std::fabs(value);
  if (a == 0.0 || !Finite(a)) return;
  if (empty || a < low) low = a;
  if (empty || a > high) high = a;
  empty = false;
}

std::string AbsRange::ToString() const {
  if (empty) return "none";
  char buf[64];
  std::snprintf(buf, sizeof buf, "[%.0e, %.0e]", low, high);
  return buf;
}

BoundStats ComputeBoundStats(const std::vector<double>& colLower,
                             const std::vector<double>& colUpper,
                             const std::vector<double>& objective,
                             const std::vector<double>& rowLower,
                             const std::vector<double>& rowUpper) {
  BoundStats s;
  for (size_t j = 0; j < colLower.size() && j < colUpper.size(); ++j) {
    CountColumn(colLower[j], colUpper[j], &s.columns);
    s.bounds.Add(colLower[j]);
    s.bounds.Add(colUpper[j]);
  }
  for (double c : objective) s.objective.Add(c);
  for (size_t i = 0; i < rowLower.size() && i < rowUpper.size(); ++i) {
    CountRow(rowLower[i], rowUpper[i], &s.rows);
    s.rhs.Add(rowLower[i]);
    s.rhs.Add(rowUpper[i]);
  }
  return s;
}

}  // namespace zelqcli
