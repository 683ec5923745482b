#include "io/mps_read.h"

#include <array>
#include <cmath>
#include <unordered_map>

#include "io/text_io.h"

namespace zelq::engine::io {
namespace {

enum class Section { kNone, kName, kObjSense, kObjName, kRows, kColumns, kRhs, kRanges, kBounds };

// Sections of the format that hold data this build cannot represent.
struct Unsupported {
  const char* name;
  const char* what;
};
constexpr std::array<Unsupported, 10> kUnsupported = {{
    {"QUADOBJ", "quadratic objective"},
    {"QMATRIX", "quadratic objective"},
    {"QSECTION", "quadratic objective"},
    {"QCMATRIX", "quadratic constraints"},
    {"CSECTION", "cone constraints"},
    {"SOS", "SOS constraints"},
    {"SETS", "SOS constraints"},
    {"INDICATORS", "indicator constraints"},
    {"GENCONS", "general constraints"},
    {"PWLOBJ", "piecewise-linear objective"},
}};

// The six fixed-format fields of a data line (field 1: columns 2-3, field 2: 5-12, field 3:
// 15-22, field 4: 25-36, field 5: 40-47, field 6: 50-61).
struct Fields {
  std::array<std::string_view, 6> f;
};

constexpr std::array<std::pair<size_t, size_t>, 6> kFixed = {
    {{1, 2}, {4, 8}, {14, 8}, {24, 12}, {39, 8}, {49, 12}}};

bool IsBlank(char c) { return c == ' '; }

// True when the line keeps every fixed-format separator column blank and has no tabs.
bool FitsFixedLayout(std::string_view line) {
  if (line.find('\t') != std::string_view::npos) return false;
  static constexpr size_t kSeparators[] = {0, 3, 12, 13, 22, 23, 36, 37, 38, 47, 48};
  for (size_t pos : kSeparators) {
    if (pos < line.size() && !IsBlank(line[pos])) return false;
  }
  for (size_t pos = 61; pos < line.size(); ++pos) {
    if (!IsBlank(line[pos])) return false;
  }
  return true;
}

Fields SliceFixed(std::string_view line) {
  Fields out;
  for (size_t i = 0; i < kFixed.size(); ++i) {
    auto [pos, len] = kFixed[i];
    if (pos < line.size()) out.f[i] = Trim(line.substr(pos, len));
  }
  return out;
}

struct ColState {
  bool lowerSet = false;       // a bound record fixed the lower bound
  bool binaryDefault = false;  // marker integer still on its default bounds [0, 1]
};

class MpsReader {
 public:
  MpsReader(const std::string& source, bool fixed, ModelBuilder& out,
            std::vector<std::string>& notes)
      : source_(source), out_(out), notes_(notes), fixed_(fixed) {}

  int Parse(const std::vector<std::string_view>& lines, std::string& err);
  int ErrorLine() const { return lineNo_; }

 private:
  int Fail(int code, const std::string& msg) {
    err_ = source_ + ":" + std::to_string(lineNo_) + ": " + msg;
    return code;
  }
  void Note(const std::string& msg) {
    if (notes_.size() < 20) notes_.push_back(source_ + ":" + std::to_string(lineNo_) + ": " + msg);
  }
  int Header(std::string_view line);
  int Data(std::string_view line);
  int SplitFree(const std::vector<std::string_view>& t, Fields& out);
  int RowLine(const Fields& d);
  int ColumnLine(const Fields& d);
  int ColumnEntry(int col, std::string_view row, std::string_view value);
  int MarkerLine(std::string_view keyword);
  int RhsLine(const Fields& d, bool ranges);
  int BoundLine(const Fields& d);
  int ApplyBound(std::string_view type, int col, std::string_view value);
  int Value(std::string_view text, const char* what, double* v);
  int Finish();

  const std::string& source_;
  ModelBuilder& out_;
  std::vector<std::string>& notes_;
  std::string err_;
  int lineNo_ = 0;
  bool fixed_ = false;
  Section section_ = Section::kNone;
  bool sawEnd_ = false;

  // Rows as declared: type letter, index in the builder (-1 for N rows).
  std::unordered_map<std::string, int> rowIndex_;
  std::vector<char> rowType_;
  std::vector<int> rowTarget_;
  int objRow_ = -1;
  std::string objName_;  // from OBJNAME
  std::vector<double> rhs_, range_;
  std::vector<int> rangeLine_;  // line of each row's range; 0 for none

  std::unordered_map<std::string, int> colIndex_;
  std::vector<ColState> colState_;
  std::vector<int> rowMark_;  // last column that had an entry in each row (duplicate check)
  bool inMarker_ = false;
  char rowKind_ = 0;  // kind of the rows being declared (model, lazy, cut)
  std::string rhsSet_, rangeSet_, boundSet_;
  bool haveRhsSet_ = false, haveRangeSet_ = false, haveBoundSet_ = false;
};

// True when every data line fits the fixed layout (headers are read by tokens in both layouts).
bool FitsFixed(const std::vector<std::string_view>& lines) {
  bool any = false;
  for (std::string_view line : lines) {
    if (line.empty() || line[0] == '*' || Trim(line).empty()) continue;
    if (!IsBlank(line[0])) continue;
    if (!FitsFixedLayout(line)) return false;
    any = true;
  }
  return any;
}

int MpsReader::Parse(const std::vector<std::string_view>& lines, std::string& err) {
  int rc = 0;
  for (size_t i = 0; i < lines.size() && rc == 0 && !sawEnd_; ++i) {
    lineNo_ = static_cast<int>(i) + 1;
    std::string_view line = lines[i];
    if (line.empty() || line[0] == '*' || Trim(line).empty()) continue;
    rc = IsBlank(line[0]) || line[0] == '\t' ? Data(line) : Header(line);
  }
  if (rc == 0 && !sawEnd_) {
    lineNo_ = static_cast<int>(lines.size());
    rc = Fail(3, "the file ends without ENDATA (truncated file?)");
  }
  if (rc == 0) rc = Finish();
  if (rc != 0) err = err_;
  return rc;
}

int MpsReader::Header(std::string_view line) {
  std::vector<std::string_view> t = Tokens(line);
  std::string key = Lower(t[0]);
  for (char& c : key) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
  if (key == "NAME") {
    section_ = Section::kName;
  } else if (key == "ROWS" || key == "LAZYCONS" || key == "USERCUTS") {
    // Lazy constraints and user cuts are declared like rows; their entries follow in COLUMNS,
    // RHS and RANGES.
    section_ = Section::kRows;
    rowKind_ = key == "ROWS" ? 0 : key == "LAZYCONS" ? ModelBuilder::kLazy : ModelBuilder::kCut;
  } else if (key == "COLUMNS") {
    section_ = Section::kColumns;
  } else if (key == "RHS") {
    section_ = Section::kRhs;
  } else if (key == "RANGES") {
    section_ = Section::kRanges;
  } else if (key == "BOUNDS") {
    section_ = Section::kBounds;
  } else if (key == "ENDATA") {
    sawEnd_ = true;
  } else if (key == "OBJSENSE" || key == "OBJSEN") {
    section_ = Section::kObjSense;
    if (t.size() > 1) return Data(t[1]);
  } else if (key == "OBJNAME") {
    section_ = Section::kObjName;
    if (t.size() > 1) return Data(t[1]);
  } else {
    for (const Unsupported& u : kUnsupported) {
      if (key == u.name) {
        return Fail(10, "section " + key + " (" + u.what + ") is not supported by this build");
      }
    }
    // Free files may start data lines in column 1; anything else is a bad header.
    if (section_ == Section::kNone || section_ == Section::kName || fixed_) {
      return Fail(3, "unknown section " + Quote(t[0]));
    }
    return Data(line);
  }
  return 0;
}

int MpsReader::Value(std::string_view text, const char* what, double* v) {
  if (text.empty()) return Fail(3, std::string("missing ") + what);
  if (!ParseNumber(text, v)) return Fail(3, std::string("bad ") + what + " " + Quote(text));
  return 0;
}

int MpsReader::SplitFree(const std::vector<std::string_view>& t, Fields& d) {
  size_t n = t.size();
  switch (section_) {
    case Section::kRows:
      if (n != 2) return Fail(3, "expected a row type and a row name");
      d.f[0] = t[0];
      d.f[1] = t[1];
      return 0;
    case Section::kColumns:
      if (n >= 2 && t[1] == "'MARKER'") {
        d.f[1] = t[0];
        d.f[2] = t[1];
        d.f[4] = t[n - 1];
        return 0;
      }
      if (n != 3 && n != 5) return Fail(3, "expected: column row value [row value]");
      for (size_t i = 0; i < n; ++i) d.f[i + 1] = t[i];
      return 0;
    case Section::kRhs:
    case Section::kRanges: {
      // Two or four fields: no set name; three or five: with a set name.
      if (n < 2 || n > 5) return Fail(3, "expected: [set] row value [row value]");
      size_t first = (n % 2 == 0) ? 2 : 1;
      for (size_t i = 0; i < n; ++i) d.f[first + i] = t[i];
      return 0;
    }
    case Section::kBounds: {
      if (n < 2 || n > 4) return Fail(3, "expected: type [set] column [value]");
      d.f[0] = t[0];
      std::string type = Lower(t[0]);
      bool valued = type == "up" || type == "lo" || type == "fx" || type == "li" || type == "ui" ||
                    type == "sc" || type == "si";
      bool withSet;
      if (valued) {
        withSet = n == 4;
      } else if (n == 3) {
        // "FR set col" or "FR col value": a known column followed by a non-column has no set.
        withSet = !(colIndex_.count(std::string(t[1])) && !colIndex_.count(std::string(t[2])));
      } else {
        withSet = n == 4;
      }
      size_t k = 1;
      if (withSet) d.f[1] = t[k++];
      if (k < n) d.f[2] = t[k++];
      if (k < n) d.f[3] = t[k++];
      return 0;
    }
    default:
      d.f[1] = t[0];
      return 0;
  }
}

int MpsReader::Data(std::string_view line) {
  Fields d;
  if (section_ == Section::kObjSense || section_ == Section::kObjName ||
      section_ == Section::kName) {
    std::vector<std::string_view> t = Tokens(line);
    d.f[1] = t.empty() ? std::string_view() : t[0];
  } else if (fixed_) {
    d = SliceFixed(line);
  } else if (int rc = SplitFree(Tokens(line), d); rc != 0) {
    return rc;
  }
  switch (section_) {
    case Section::kNone:
      return Fail(3, "data line before the first section");
    case Section::kName:
      return 0;
    case Section::kObjSense: {
      std::string s = Lower(d.f[1]).substr(0, 3);
      if (s == "max") {
        out_.objSense = -1;
      } else if (s == "min") {
        out_.objSense = 1;
      } else {
        return Fail(3, "OBJSENSE value " + Quote(d.f[1]) + " is not MIN or MAX");
      }
      return 0;
    }
    case Section::kObjName:
      if (!rowType_.empty()) return Fail(3, "OBJNAME must come before ROWS");
      objName_ = std::string(d.f[1]);
      return 0;
    case Section::kRows:
      return RowLine(d);
    case Section::kColumns:
      return ColumnLine(d);
    case Section::kRhs:
      return RhsLine(d, false);
    case Section::kRanges:
      return RhsLine(d, true);
    case Section::kBounds:
      return BoundLine(d);
  }
  return 0;
}

int MpsReader::RowLine(const Fields& d) {
  std::string type = Lower(d.f[0]);
  if (type.size() != 1 || std::string_view("nlge").find(type[0]) == std::string_view::npos) {
    return Fail(3, "row type " + Quote(d.f[0]) + " is not N, L, G or E");
  }
  if (d.f[1].empty()) return Fail(3, "missing row name");
  if (out_.cols() > 0 || !rhs_.empty()) {
    return Fail(3, "ROWS entries must come before COLUMNS, RHS and RANGES");
  }
  std::string name(d.f[1]);
  if (rowIndex_.count(name)) return Fail(3, "duplicate row name " + Quote(name));
  int target = -1;
  char t = static_cast<char>(std::toupper(static_cast<unsigned char>(type[0])));
  if (t == 'N' && rowKind_ != 0) {
    return Fail(3, "free row " + Quote(name) + " in a LAZYCONS or USERCUTS section");
  }
  if (t == 'N') {
    bool isObj = objRow_ < 0 && (objName_.empty() || objName_ == name);
    if (isObj) {
      objRow_ = static_cast<int>(rowType_.size());
    } else {
      Note("free row " + Quote(name) + " is dropped (only the objective row may be of type N)");
    }
  } else {
    target = out_.AddRow(name, 0.0, 0.0, rowKind_);
  }
  rowIndex_.emplace(name, static_cast<int>(rowType_.size()));
  rowType_.push_back(t);
  rowTarget_.push_back(target);
  return 0;
}

int MpsReader::MarkerLine(std::string_view keyword) {
  if (keyword == "'INTORG'") {
    if (inMarker_) return Fail(3, "INTORG marker inside an integer block");
    inMarker_ = true;
  } else if (keyword == "'INTEND'") {
    if (!inMarker_) return Fail(3, "INTEND marker without INTORG");
    inMarker_ = false;
  } else if (keyword == "'SOSORG'" || keyword == "'SOSEND'") {
    return Fail(10, "SOS markers (SOS constraints) are not supported by this build");
  } else {
    return Fail(3, "unknown marker " + Quote(keyword) + " (expected 'INTORG' or 'INTEND')");
  }
  return 0;
}

int MpsReader::ColumnLine(const Fields& d) {
  if (d.f[2] == "'MARKER'") return MarkerLine(d.f[4].empty() ? d.f[3] : d.f[4]);
  if (d.f[1].empty()) return Fail(3, "missing column name");
  std::string name(d.f[1]);
  int col = out_.cols() - 1;
  if (col < 0 || out_.colNames[col] != name) {
    if (colIndex_.count(name)) {
      return Fail(3, "column " + Quote(name) +
                         " appears again after other columns (its entries must be contiguous)");
    }
    if (rowMark_.empty()) rowMark_.assign(rowType_.size(), -1);
    col = out_.AddCol(name);
    colIndex_.emplace(name, col);
    colState_.emplace_back();
    if (inMarker_) {
      out_.colType[col] = 'I';
      out_.colUpper[col] = 1.0;
      colState_[col].binaryDefault = true;
    }
  }
  if (int rc = ColumnEntry(col, d.f[2], d.f[3]); rc != 0) return rc;
  if (!d.f[4].empty() || !d.f[5].empty()) return ColumnEntry(col, d.f[4], d.f[5]);
  return 0;
}

int MpsReader::ColumnEntry(int col, std::string_view rowName, std::string_view text) {
  if (rowName.empty()) return Fail(3, "missing row name");
  auto it = rowIndex_.find(std::string(rowName));
  if (it == rowIndex_.end()) return Fail(3, "unknown row " + Quote(rowName));
  double v;
  if (int rc = Value(text, "coefficient", &v); rc != 0) return rc;
  if (std::fabs(v) >= 1e30) return Fail(3, "coefficient " + Quote(text) + " is infinite");
  int r = it->second;
  if (rowMark_[r] == col) {
    return Fail(
        3, "duplicate entry for column " + Quote(out_.colNames[col]) + " in row " + Quote(rowName));
  }
  rowMark_[r] = col;
  if (r == objRow_) {
    out_.obj[col] = v;
  } else if (rowTarget_[r] >= 0) {
    out_.AddEntry(rowTarget_[r], col, v);
  }
  return 0;
}

int MpsReader::RhsLine(const Fields& d, bool ranges) {
  std::string& set = ranges ? rangeSet_ : rhsSet_;
  bool& haveSet = ranges ? haveRangeSet_ : haveRhsSet_;
  if (!haveSet) {
    set = std::string(d.f[1]);
    haveSet = true;
  } else if (set != d.f[1]) {
    Note(std::string(ranges ? "RANGES" : "RHS") + " set " + Quote(d.f[1]) +
         " ignored (only the first set, " + Quote(set) + ", is used)");
    return 0;
  }
  if (rhs_.empty()) {
    rhs_.assign(rowType_.size(), 0.0);
    range_.assign(rowType_.size(), 0.0);
    rangeLine_.assign(rowType_.size(), 0);
  }
  for (int pair = 0; pair < 2; ++pair) {
    std::string_view rowName = d.f[2 + 2 * pair], text = d.f[3 + 2 * pair];
    if (pair == 1 && rowName.empty() && text.empty()) break;
    if (rowName.empty()) return Fail(3, "missing row name");
    auto it = rowIndex_.find(std::string(rowName));
    if (it == rowIndex_.end()) return Fail(3, "unknown row " + Quote(rowName));
    double v;
    if (int rc = Value(text, ranges ? "range" : "right-hand side", &v); rc != 0) return rc;
    int r = it->second;
    if (ranges) {
      if (rowType_[r] == 'N') {
        Note("range on free row " + Quote(rowName) + " ignored");
        continue;
      }
      range_[r] = v;
      rangeLine_[r] = lineNo_;
    } else if (r == objRow_) {
      if (std::fabs(v) >= 1e30) return Fail(3, "infinite objective constant");
      out_.objConst = -v;
    } else if (rowType_[r] == 'N') {
      Note("right-hand side of free row " + Quote(rowName) + " ignored");
    } else if ((rowType_[r] != 'G' && v <= -1e30) || (rowType_[r] != 'L' && v >= 1e30)) {
      // An L row below -infinity or a G row above +infinity: no value satisfies it.
      return Fail(3, std::string("infinite right-hand side ") + Quote(text) + " for " +
                         rowType_[r] + " row " + Quote(rowName));
    } else {
      rhs_[r] = v;
    }
  }
  return 0;
}

int MpsReader::BoundLine(const Fields& d) {
  if (!haveBoundSet_) {
    boundSet_ = std::string(d.f[1]);
    haveBoundSet_ = true;
  } else if (boundSet_ != d.f[1]) {
    Note("BOUNDS set " + Quote(d.f[1]) + " ignored (only the first set, " + Quote(boundSet_) +
         ", is used)");
    return 0;
  }
  if (d.f[2].empty()) return Fail(3, "missing column name");
  auto it = colIndex_.find(std::string(d.f[2]));
  if (it == colIndex_.end()) return Fail(3, "bound on unknown column " + Quote(d.f[2]));
  return ApplyBound(d.f[0], it->second, d.f[3]);
}

int MpsReader::ApplyBound(std::string_view typeText, int col, std::string_view text) {
  std::string type = Lower(typeText);
  double& lo = out_.colLower[col];
  double& up = out_.colUpper[col];
  ColState& st = colState_[col];
  if (type == "sc" || type == "si") {
    return Fail(10, "bound type " + Quote(typeText) +
                        " (semi-continuous column) is not supported by this build");
  }
  bool valued = type == "up" || type == "lo" || type == "fx" || type == "li" || type == "ui";
  bool known = valued || type == "fr" || type == "mi" || type == "pl" || type == "bv";
  if (!known) return Fail(3, "unknown bound type " + Quote(typeText));
  double v = 0.0;
  if (valued) {
    if (int rc = Value(text, "bound value", &v); rc != 0) return rc;
    if ((type == "lo" || type == "li") && v >= 1e30) return Fail(3, "lower bound is +infinity");
    if ((type == "up" || type == "ui") && v <= -1e30) return Fail(3, "upper bound is -infinity");
    if (type == "fx" && std::fabs(v) >= 1e30) return Fail(3, "fixed bound is infinite");
  }
  if (st.binaryDefault && type != "bv") {
    up = kInf;  // a bound record ends the [0, 1] default of a marker integer
    st.binaryDefault = false;
  }
  if (type == "lo" || type == "li") {
    lo = v;
    st.lowerSet = true;
  } else if (type == "up" || type == "ui") {
    up = v;
    if (v < 0.0 && !st.lowerSet && lo == 0.0) {
      lo = -kInf;
      Note("negative upper bound on column " + Quote(out_.colNames[col]) +
           " with no lower bound: the lower bound becomes -infinity");
    }
  } else if (type == "fx") {
    lo = up = v;
    st.lowerSet = true;
  } else if (type == "fr") {
    lo = -kInf;
    up = kInf;
    st.lowerSet = true;
  } else if (type == "mi") {
    lo = -kInf;
    st.lowerSet = true;
  } else if (type == "pl") {
    up = kInf;
  } else if (type == "bv") {
    lo = 0.0;
    up = 1.0;
    st.lowerSet = true;
    st.binaryDefault = false;
    out_.colType[col] = 'B';
  }
  if (type == "li" || type == "ui") out_.colType[col] = 'I';
  return 0;
}

int MpsReader::Finish() {
  for (size_t r = 0; r < rowType_.size(); ++r) {
    int t = rowTarget_[r];
    if (t < 0) continue;
    double b = rhs_.empty() ? 0.0 : rhs_[r];
    double lo = b, up = b;
    if (rowType_[r] == 'L') lo = -kInf;
    if (rowType_[r] == 'G') up = kInf;
    if (!rangeLine_.empty() && rangeLine_[r] > 0) {
      double R = range_[r];
      if (rowType_[r] == 'G') {
        up = b + std::fabs(R);
      } else if (rowType_[r] == 'L') {
        lo = b - std::fabs(R);
      } else if (R > 0.0) {
        up = b + R;
      } else if (R < 0.0) {
        lo = b + R;
      }
      // A range measured from an infinite right-hand side (an L row "<= +inf", a G row
      // ">= -inf") puts the other bound at infinity too: no value satisfies the row.
      if (lo >= kInf || up <= -kInf) {
        lineNo_ = rangeLine_[r];
        return Fail(3, std::string("range on ") + rowType_[r] + " row " +
                           Quote(out_.rowNames[t]) + " whose right-hand side is infinite");
      }
    }
    out_.rowLower[t] = lo <= -kInf ? -kInf : lo;
    out_.rowUpper[t] = up >= kInf ? kInf : up;
  }
  return 0;
}

}  // namespace

// Free layout first. A file that fails there but fits the fixed layout is read again by
// columns: names with blanks always break the free reading (a row line gets three fields, a
// column line an even number), so the second reading only happens for such files. When both
// fail, the message comes from the reading that got further.
int ParseMps(std::string_view text, const std::string& source, ModelBuilder& out, std::string& err,
             std::vector<std::string>& notes) {
  std::vector<std::string_view> lines = SplitLines(text);
  ModelBuilder freeModel;
  std::vector<std::string> freeNotes;
  MpsReader freeReader(source, false, freeModel, freeNotes);
  int rc = freeReader.Parse(lines, err);
  if (rc != 3 || !FitsFixed(lines)) {
    out = std::move(freeModel);
    notes.insert(notes.end(), freeNotes.begin(), freeNotes.end());
    return rc;
  }
  ModelBuilder fixedModel;
  std::vector<std::string> fixedNotes;
  std::string fixedErr;
  MpsReader fixedReader(source, true, fixedModel, fixedNotes);
  int rcFixed = fixedReader.Parse(lines, fixedErr);
  if (rcFixed == 0) {
    out = std::move(fixedModel);
    notes.insert(notes.end(), fixedNotes.begin(), fixedNotes.end());
    return 0;
  }
  if (fixedReader.ErrorLine() > freeReader.ErrorLine()) {
    err = fixedErr;
    rc = rcFixed;
  }
  return rc;
}

}  // namespace zelq::engine::io
