#include "io/sol_files.h"

#include <cmath>

#include "io/text_io.h"

namespace zelq::engine::io {
namespace {

constexpr const char* kBasisWords[] = {"LOWER", "BASIC", "UPPER", "SUPERBASIC", "FIXED"};

// Splits a data line into its name (everything before the last field) and its last field.
bool SplitNameValue(std::string_view line, std::string_view* name, std::string_view* value) {
  line = Trim(line);
  size_t cut = line.find_last_of(" \t");
  if (cut == std::string_view::npos) return false;
  *value = line.substr(cut + 1);
  *name = Trim(line.substr(0, cut));
  return !name->empty();
}

std::string Where(const std::string& source, size_t lineIndex) {
  return source + ":" + std::to_string(lineIndex + 1) + ": ";
}

bool Skip(std::string_view line) {
  std::string_view t = Trim(line);
  return t.empty() || t[0] == '#';
}

}  // namespace

NameIndex IndexNames(const std::vector<std::string>& names) {
  NameIndex index;
  index.reserve(names.size() * 2);
  for (size_t i = 0; i < names.size(); ++i) index.emplace(names[i], static_cast<int>(i));
  return index;
}

const char* StatusText(int status) {
  static constexpr const char* kText[] = {"UNSTARTED",  "OPTIMAL",    "INFEASIBLE", "UNBOUNDED",
                                          "INF_OR_UNB", "NUMERICAL",  "NODELIMIT",  "IMPRECISE",
                                          "TIMEOUT",    "UNFINISHED", "INTERRUPTED"};
  if (status < 0 || status > 10) return "UNKNOWN";
  return kText[status];
}

std::string FormatNameValues(const std::vector<std::string>& header,
                             const std::vector<std::string>& names, const double* values) {
  std::string out;
  for (const std::string& h : header) out += "# " + h + "\n";
  for (size_t j = 0; j < names.size(); ++j) out += names[j] + " " + Num(values[j]) + "\n";
  return out;
}

int ParseNameValues(std::string_view text, const std::string& source, const NameIndex& index,
                    const char* what, bool nonNegative, std::vector<std::pair<int, double>>& out,
                    std::string& err) {
  std::vector<std::string_view> lines = SplitLines(text);
  std::vector<char> seen(index.size(), 0);
  for (size_t i = 0; i < lines.size(); ++i) {
    if (Skip(lines[i])) continue;
    std::string_view name, field;
    if (!SplitNameValue(lines[i], &name, &field)) {
      err = Where(source, i) + "expected a column name and a " + what;
      return 3;
    }
    auto it = index.find(std::string(name));
    if (it == index.end()) {
      err = Where(source, i) + "unknown column " + Quote(name);
      return 3;
    }
    double v;
    if (!ParseNumber(field, &v) || std::fabs(v) >= 1e30 || (nonNegative && v < 0.0)) {
      err = Where(source, i) + "bad " + what + " " + Quote(field) + " for column " + Quote(name) +
            (nonNegative ? " (expected a finite number >= 0)" : " (expected a finite number)");
      return 3;
    }
    if (seen[it->second]) {
      err = Where(source, i) + "column " + Quote(name) + " is listed twice";
      return 3;
    }
    seen[it->second] = 1;
    out.emplace_back(it->second, v);
  }
  return 0;
}

std::string FormatBasis(const std::vector<std::string>& cols, const std::vector<std::string>& rows,
                        const std::vector<int>& colBasis, const std::vector<int>& rowBasis) {
  std::string out = "# Zelq basis: " + std::to_string(cols.size()) + " columns, " +
                    std::to_string(rows.size()) + " rows\n";
  out += "# C|R name LOWER|BASIC|UPPER|SUPERBASIC|FIXED\n";
  auto word = [](int s) { return s >= 0 && s <= 4 ? kBasisWords[s] : "LOWER"; };
  for (size_t j = 0; j < cols.size(); ++j) out += "C " + cols[j] + " " + word(colBasis[j]) + "\n";
  for (size_t i = 0; i < rows.size(); ++i) out += "R " + rows[i] + " " + word(rowBasis[i]) + "\n";
  return out;
}

int ParseBasis(std::string_view text, const std::string& source, const NameIndex& cols,
               const NameIndex& rows, std::vector<int>& colBasis, std::vector<int>& rowBasis,
               std::string& err) {
  colBasis.assign(cols.size(), 0);
  rowBasis.assign(rows.size(), 1);
  std::vector<std::string_view> lines = SplitLines(text);
  for (size_t i = 0; i < lines.size(); ++i) {
    if (Skip(lines[i])) continue;
    std::string_view line = Trim(lines[i]);
    std::string_view name, field;
    char kind = line[0];
    if ((kind != 'C' && kind != 'R') || line.size() < 2 || (line[1] != ' ' && line[1] != '\t') ||
        !SplitNameValue(line.substr(2), &name, &field)) {
      err = Where(source, i) + "expected 'C name STATUS' or 'R name STATUS'";
      return 3;
    }
    const NameIndex& index = kind == 'C' ? cols : rows;
    auto it = index.find(std::string(name));
    if (it == index.end()) {
      err = Where(source, i) + "unknown " + (kind == 'C' ? "column " : "row ") + Quote(name);
      return 3;
    }
    int status = -1;
    for (int s = 0; s < 5; ++s) {
      if (IEquals(field, kBasisWords[s]) || field == std::to_string(s)) status = s;
    }
    if (status < 0) {
      err = Where(source, i) + "unknown basis status " + Quote(field) +
            " (expected LOWER, BASIC, UPPER, SUPERBASIC or FIXED)";
      return 3;
    }
    (kind == 'C' ? colBasis : rowBasis)[it->second] = status;
  }
  size_t basic = 0;
  for (int s : colBasis) basic += s == 1;
  for (int s : rowBasis) basic += s == 1;
  if (basic != rows.size()) {
    err = source + ": the basis has " + std::to_string(basic) +
          " BASIC entries, but a problem with " + std::to_string(rows.size()) +
          " rows needs exactly that many";
    return 3;
  }
  return 0;
}

}  // namespace zelq::engine::io
