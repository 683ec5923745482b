// Plain-text solution-side files: solutions (".sol"), MIP starts (".mst"), branching orders
// (".ord") and bases (".bas"). All are line based: '#' starts a comment line, blank lines are
// skipped, and the value is the last field of a line, so the name before it may contain blanks.
#pragma once

#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

namespace zelq::engine::io {

using NameIndex = std::unordered_map<std::string, int>;

// Maps each written name to its element index.
NameIndex IndexNames(const std::vector<std::string>& names);

// "UNSTARTED", "OPTIMAL", ... for a status code ("UNKNOWN" outside the range).
const char* StatusText(int status);

// Comment header lines (each without '#'), then one "name value" line per element.
std::string FormatNameValues(const std::vector<std::string>& header,
                             const std::vector<std::string>& names, const double* values);

// Reads "name value" lines; names must be in `index` and appear once. `what` is the kind of
// value for messages ("value", "priority"). With `nonNegative`, negative values are rejected.
// Returns 0, or 3 with `err` = "file:line: problem".
int ParseNameValues(std::string_view text, const std::string& source, const NameIndex& index,
                    const char* what, bool nonNegative, std::vector<std::pair<int, double>>& out,
                    std::string& err);

// Basis file: "C name STATUS" and "R name STATUS" lines with the status words LOWER, BASIC,
// UPPER, SUPERBASIC, FIXED (or their codes 0..4).
std::string FormatBasis(const std::vector<std::string>& cols, const std::vector<std::string>& rows,
                        const std::vector<int>& colBasis, const std::vector<int>& rowBasis);

// Columns not listed are LOWER, rows not listed BASIC; the number of BASIC entries must equal the
// number of rows. Returns 0 or 3 with `err`.
int ParseBasis(std::string_view text, const std::string& source, const NameIndex& cols,
               const NameIndex& rows, std::vector<int>& colBasis, std::vector<int>& rowBasis,
               std::string& err);

}  // namespace zelq::engine::io
