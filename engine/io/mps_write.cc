#include "io/mps_write.h"

#include <cmath>
#include <cstdio>
#include <string_view>
#include <tuple>

#include "io/text_io.h"
#include "io/write_names.h"

namespace zelq::engine::io {
namespace {

constexpr size_t kFieldPos[6] = {1, 4, 14, 24, 39, 49};

// OutputNames has already replaced control characters, so a blank is the only white space left.
bool IsWhite(char c) { return c == ' '; }

bool HasWhite(const std::string& s) {
  for (char c : s) {
    if (IsWhite(c)) return true;
  }
  return false;
}

class MpsWriter {
 public:
  MpsWriter(const Problem& p, std::vector<std::string>& notes) : p_(p), notes_(notes) {}
  std::string Run();

 private:
  // One data line with fields 1..6 (empty fields are skipped in free layout).
  void Card(std::initializer_list<std::pair<int, std::string_view>> fields);
  std::string N(double v) const;
  void ChooseNames();
  void Rows();
  void Columns();
  void Rhs();
  void Bounds();
  void ColumnBounds(int j);
  void Bound(const char* type, int j, const std::string& value = std::string());

  void CollectRows();
  void RowCards(int first, int last);

  const Problem& p_;
  std::vector<std::string>& notes_;
  std::string out_;
  bool fixed_ = false;
  std::vector<std::string> cols_;
  // All rows written: the model rows, then lazy constraints, then user cuts.
  std::vector<std::string> rows_;
  std::vector<double> rowLo_, rowUp_;
  std::vector<int> beg_, idx_;  // column-wise entries of all those rows
  std::vector<double> val_;
  std::string objName_ = "OBJ";
};

// Model rows, lazy constraints and user cuts in one list (names unique across all of them), with
// a column-wise copy of their coefficients.
void MpsWriter::CollectRows() {
  rowLo_ = p_.rowLower;
  rowUp_ = p_.rowUpper;
  rows_ = AllRowNamesOf(p_);
  std::vector<std::tuple<int, int, double>> extra;  // (column, row, value)
  int row = p_.rows();
  for (const ExtraRows* e : {&p_.lazy, &p_.cuts}) {
    for (int i = 0; i < e->count(); ++i, ++row) {
      rowLo_.push_back(e->lower[i]);
      rowUp_.push_back(e->upper[i]);
      for (int k = e->beg[i]; k < e->beg[i + 1]; ++k) extra.emplace_back(e->idx[k], row, e->val[k]);
    }
  }
  p_.ColumnMatrix(beg_, idx_, val_);
  if (extra.empty()) return;
  std::vector<int> beg(beg_.size(), 0);
  for (size_t j = 0; j + 1 < beg_.size(); ++j) beg[j + 1] = beg_[j + 1] - beg_[j];
  for (const auto& [c, r, v] : extra) ++beg[c + 1];
  for (size_t j = 1; j < beg.size(); ++j) beg[j] += beg[j - 1];
  std::vector<int> idx(beg.back()), fill(beg.begin(), beg.end() - 1);
  std::vector<double> val(beg.back());
  for (size_t j = 0; j + 1 < beg_.size(); ++j) {
    for (int k = beg_[j]; k < beg_[j + 1]; ++k) {
      idx[fill[j]] = idx_[k];
      val[fill[j]++] = val_[k];
    }
  }
  for (const auto& [c, r, v] : extra) {
    idx[fill[c]] = r;
    val[fill[c]++] = v;
  }
  beg_.swap(beg);
  idx_.swap(idx);
  val_.swap(val);
}

std::string MpsWriter::N(double v) const {
  std::string s = Num(v);
  if (!fixed_ || s.size() <= 12) return s;
  // Fixed layout: the most digits that fit in the 12-character field.
  char buf[40];
  for (int prec = 12; prec > 0; --prec) {
    std::snprintf(buf, sizeof buf, "%.*g", prec, v);
    if (std::string_view(buf).size() <= 12) break;
  }
  return buf;
}

void MpsWriter::Card(std::initializer_list<std::pair<int, std::string_view>> fields) {
  // Appended in place: a file of millions of lines builds no string per line.
  const size_t start = out_.size();
  for (const auto& [field, text] : fields) {
    if (text.empty()) continue;
    const size_t pos = kFieldPos[field - 1], length = out_.size() - start;
    if (length < pos)
      out_.append(pos - length, ' ');
    else
      out_.push_back(' ');
    out_ += text;
  }
  out_ += '\n';
}

void MpsWriter::ChooseNames() {
  cols_ = OutputNames(p_.colNames, p_.cols(), 'C');
  CollectRows();
  // Readers trim fixed-layout fields, so a name that starts or ends with a blank (or is all
  // blanks) would not read back from that layout either.
  bool white = false, longName = false, edge = false;
  for (const auto* list : {&cols_, &rows_}) {
    for (const std::string& n : *list) {
      white = white || HasWhite(n);
      longName = longName || n.size() > 8;
      edge = edge || (!n.empty() && (IsWhite(n.front()) || IsWhite(n.back())));
    }
  }
  if (white && !longName && !edge) {
    fixed_ = true;
    notes_.push_back("names with blanks: the file is written in fixed MPS layout");
  } else if (white) {
    int changed = CleanNames(cols_, IsWhite) + CleanNames(rows_, IsWhite);
    notes_.push_back(std::to_string(changed) + " names with blanks are written with '_' (" +
                     (longName ? "a name is longer than 8 characters"
                               : "a name starts or ends with a blank") +
                     ", so fixed MPS layout cannot be used)");
  }
  // The objective row needs a name of its own.
  for (int k = 1;; ++k) {
    bool clash = false;
    for (const std::string& r : rows_) clash = clash || r == objName_;
    if (!clash) break;
    objName_ = "OBJ" + std::to_string(k);
  }
}

void MpsWriter::RowCards(int first, int last) {
  for (int i = first; i < last; ++i) {
    double lo = rowLo_[i], up = rowUp_[i];
    const char* type = "L";
    if (lo == up) {
      type = "E";
    } else if (lo > -kInf && up >= kInf) {
      type = "G";
    }
    if (lo > up) {
      notes_.push_back("row " + rows_[i] + " has lower bound above its upper bound; written as L");
    }
    Card({{1, type}, {2, rows_[i]}});
  }
}

void MpsWriter::Rows() {
  out_ += "ROWS\n";
  Card({{1, "N"}, {2, objName_}});
  int lazyEnd = p_.rows() + p_.lazy.count();
  RowCards(0, p_.rows());
  if (p_.lazy.count() > 0) {
    out_ += "LAZYCONS\n";
    RowCards(p_.rows(), lazyEnd);
  }
  if (p_.cuts.count() > 0) {
    out_ += "USERCUTS\n";
    RowCards(lazyEnd, static_cast<int>(rows_.size()));
  }
}

void MpsWriter::Columns() {
  out_ += "COLUMNS\n";
  const std::vector<int>& beg = beg_;
  bool inMarker = false;
  int marker = 0;
  // (row, value) of one column, row -1 for the objective; kept across columns.
  std::vector<std::pair<int, double>> entries;
  auto rowName = [&](int row) -> const std::string& { return row < 0 ? objName_ : rows_[row]; };
  for (int j = 0; j < p_.cols(); ++j) {
    bool integer = p_.colType[j] != 'C';
    if (integer != inMarker) {
      char name[24];
      std::snprintf(name, sizeof name, "M%07d", marker++);
      Card({{2, name}, {3, "'MARKER'"}, {5, integer ? "'INTORG'" : "'INTEND'"}});
      inMarker = integer;
    }
    entries.clear();
    if (p_.obj[j] != 0.0 || beg[j] == beg[j + 1]) entries.emplace_back(-1, p_.obj[j]);
    for (int k = beg[j]; k < beg[j + 1]; ++k) entries.emplace_back(idx_[k], val_[k]);
    for (size_t k = 0; k < entries.size(); k += 2) {
      if (k + 1 < entries.size()) {
        Card({{2, cols_[j]},
              {3, rowName(entries[k].first)},
              {4, N(entries[k].second)},
              {5, rowName(entries[k + 1].first)},
              {6, N(entries[k + 1].second)}});
      } else {
        Card({{2, cols_[j]}, {3, rowName(entries[k].first)}, {4, N(entries[k].second)}});
      }
    }
  }
  if (inMarker) Card({{2, "MEND"}, {3, "'MARKER'"}, {5, "'INTEND'"}});
}

void MpsWriter::Rhs() {
  std::string rhs, ranges;
  std::swap(out_, rhs);
  if (p_.objConst != 0.0) Card({{2, "RHS"}, {3, objName_}, {4, N(-p_.objConst)}});
  for (size_t i = 0; i < rows_.size(); ++i) {
    double lo = rowLo_[i], up = rowUp_[i];
    double b = (lo > -kInf && (up >= kInf || lo == up)) ? lo : up;  // G and E use lo
    if (lo <= -kInf && up >= kInf) b = kInf;
    if (b != 0.0) Card({{2, "RHS"}, {3, rows_[i]}, {4, N(b)}});
  }
  std::swap(out_, rhs);
  std::swap(out_, ranges);
  for (size_t i = 0; i < rows_.size(); ++i) {
    double lo = rowLo_[i], up = rowUp_[i];
    if (lo > -kInf && up < kInf && lo < up) Card({{2, "RNG"}, {3, rows_[i]}, {4, N(up - lo)}});
  }
  std::swap(out_, ranges);
  // The RHS section is written even when empty: some readers (Clp's among them) refuse a file
  // without one.
  out_ += "RHS\n" + rhs;
  if (!ranges.empty()) out_ += "RANGES\n" + ranges;
}

void MpsWriter::Bound(const char* type, int j, const std::string& value) {
  Card({{1, type}, {2, "BND"}, {3, cols_[j]}, {4, value}});
}

void MpsWriter::ColumnBounds(int j) {
  double lo = p_.colLower[j], up = p_.colUpper[j];
  bool integer = p_.colType[j] != 'C';
  if (p_.colType[j] == 'B') {
    // BV gives the type (and [0, 1]); other bounds follow as LO/UP records, which keep the type,
    // so a binary with bounds of its own reads back as that binary.
    Bound("BV", j);
    if (lo != 0.0) lo <= -kInf ? Bound("MI", j) : Bound("LO", j, N(lo));
    if (up != 1.0) up >= kInf ? Bound("PL", j) : Bound("UP", j, N(up));
    return;
  }
  if (lo == up) return Bound("FX", j, N(lo));
  if (lo <= -kInf && up >= kInf) return Bound("FR", j);
  if (integer) {
    // Both sides explicitly, so no reader applies the [0, 1] default of marker integers.
    if (lo <= -kInf)
      Bound("MI", j);
    else
      Bound("LI", j, N(lo));
    if (up >= kInf)
      Bound("PL", j);
    else
      Bound("UI", j, N(up));
    return;
  }
  if (lo <= -kInf)
    Bound("MI", j);
  else if (lo != 0.0 || (up < 0.0))
    Bound("LO", j, N(lo));  // LO 0 before a negative UP
  if (up < kInf) Bound("UP", j, N(up));
}

void MpsWriter::Bounds() {
  std::string body;
  std::swap(out_, body);
  for (int j = 0; j < p_.cols(); ++j) ColumnBounds(j);
  std::swap(out_, body);
  if (!body.empty()) out_ += "BOUNDS\n" + body;
}

std::string MpsWriter::Run() {
  ChooseNames();
  out_ += "NAME          ZELQ\n";
  if (p_.objSense < 0) out_ += "OBJSENSE\n    MAX\n";
  Rows();
  Columns();
  Rhs();
  Bounds();
  out_ += "ENDATA\n";
  return std::move(out_);
}

}  // namespace

std::string FormatMps(const Problem& p, std::vector<std::string>& notes) {
  MpsWriter w(p, notes);
  return w.Run();
}

}  // namespace zelq::engine::io
