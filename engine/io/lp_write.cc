#include <cctype>
#include <cstring>
#include <span>
#include <unordered_set>

#include "io/lp_format.h"
#include "io/text_io.h"
#include "io/write_names.h"

namespace zelq::engine::io {
namespace {

constexpr size_t kWrapAt = 200;

bool BadLpChar(char c) {
  if (std::isalnum(static_cast<unsigned char>(c))) return false;
  return std::strchr("!\"#$%&(),.;?@_'`{}~|", c) == nullptr || c == '\0';
}

// Words a reader could take for a section keyword or an infinity.
bool IsReserved(const std::string& name) {
  static const std::unordered_set<std::string> kWords = {
      "minimize", "minimise", "minimum",  "min",  "maximize", "maximise", "maximum",
      "max",      "subject",  "such",     "st",   "s.t.",     "st.",      "bounds",
      "bound",    "general",  "generals", "gen",  "integer",  "integers", "int",
      "binary",   "binaries", "bin",      "semi", "semis",    "sos",      "end",
      "free",     "inf",      "infinity", "user", "lazy",     "pwlobj"};
  return kWords.count(Lower(name)) > 0;
}

int CleanLpNames(std::vector<std::string>& names) {
  int changed = CleanNames(names, BadLpChar, "0123456789.");
  int reserved = 0;
  for (std::string& n : names) {
    if (IsReserved(n)) {
      n.insert(n.begin(), '_');
      ++reserved;
    }
  }
  if (reserved > 0) MakeUnique(names);
  return changed + reserved;
}

class LpWriter {
 public:
  LpWriter(const Problem& p, std::vector<std::string>& notes) : p_(p), notes_(notes) {}
  std::string Run();

 private:
  // Appends " + 3 x" style terms, wrapping long lines before a sign.
  void Term(double c, const std::string& name, bool first);
  void Piece(const std::string& text);
  void Objective();
  void Row(const std::string& name, double lo, double up, std::span<const int> idx,
           std::span<const double> val);
  void Constraints();
  void Bounds();
  void NameList(const char* header, char type);

  const Problem& p_;
  std::vector<std::string>& notes_;
  std::string out_;
  size_t lineStart_ = 0;
  std::vector<std::string> cols_, rows_;
};

void LpWriter::Piece(const std::string& text) {
  if (out_.size() - lineStart_ + text.size() > kWrapAt) {
    out_ += "\n   ";
    lineStart_ = out_.size() - 3;
  }
  out_ += text;
}

void LpWriter::Term(double c, const std::string& name, bool first) {
  std::string text = first ? (c < 0 ? "- " : "") : (c < 0 ? " - " : " + ");
  double a = c < 0 ? -c : c;
  if (a != 1.0) text += Num(a) + " ";
  Piece(text + name);
}

void LpWriter::Objective() {
  out_ += p_.objSense < 0 ? "Maximize\n" : "Minimize\n";
  lineStart_ = out_.size();
  out_ += " obj: ";
  // Every column appears, zeros included, so a reader creates them all in this order.
  for (int j = 0; j < p_.cols(); ++j) Term(p_.obj[j], cols_[j], j == 0);
  if (p_.objConst != 0.0 || p_.cols() == 0) {
    double k = p_.objConst;
    std::string sign = p_.cols() == 0 ? (k < 0 ? "- " : "") : (k < 0 ? " - " : " + ");
    Piece(sign + Num(k < 0 ? -k : k));
  }
  out_ += "\n";
}

void LpWriter::Row(const std::string& name, double lo, double up, std::span<const int> idx,
                   std::span<const double> val) {
  lineStart_ = out_.size();
  out_ += " " + name + ":";
  if (idx.empty() && p_.cols() == 0) {
    // Without columns the row is the constant 0, and "0 >= 3" reads as the start of a range
    // "hi >= expr >= lo": the two-sided form has only one reading.
    out_ += ' ';
    out_ += lo <= -kInf ? "-inf" : Num(lo);
    out_ += " <= 0 <= ";
    out_ += up >= kInf ? "+inf" : Num(up);
    out_ += "\n";
    return;
  }
  bool ranged = lo > -kInf && up < kInf && lo != up;
  if (ranged) {
    out_ += ' ';
    out_ += Num(lo);
    out_ += " <=";
  }
  out_ += " ";
  if (idx.empty()) Piece(p_.cols() > 0 ? "0 " + cols_[0] : "0");
  for (size_t k = 0; k < idx.size(); ++k) Term(val[k], cols_[idx[k]], k == 0);
  if (ranged) {
    Piece(" <= " + Num(up));
    if (lo > up) notes_.push_back("row " + name + " has lower bound above upper bound");
  } else if (lo == up) {
    Piece(" = " + Num(lo));
  } else if (lo > -kInf) {
    Piece(" >= " + Num(lo));
  } else if (up < kInf) {
    Piece(" <= " + Num(up));
  } else {
    Piece(" >= -inf");
  }
  out_ += "\n";
}

void LpWriter::Constraints() {
  out_ += "Subject To\n";
  for (int i = 0; i < p_.rows(); ++i) {
    Row(rows_[i], p_.rowLower[i], p_.rowUpper[i], p_.matrix.RowIdx(i), p_.matrix.RowVal(i));
  }
  size_t next = static_cast<size_t>(p_.rows());
  for (const ExtraRows* e : {&p_.lazy, &p_.cuts}) {
    if (e->count() == 0) continue;
    out_ += e == &p_.lazy ? "Lazy Constraints\n" : "User Cuts\n";
    for (int i = 0; i < e->count(); ++i) {
      const int b = e->beg[i], n = e->beg[i + 1] - b;
      Row(rows_[next++], e->lower[i], e->upper[i], std::span<const int>(e->idx.data() + b, n),
          std::span<const double>(e->val.data() + b, n));
    }
  }
}

std::string BoundText(double v) {
  if (v <= -kInf) return "-inf";
  if (v >= kInf) return "+inf";
  return Num(v);
}

void LpWriter::Bounds() {
  std::string body;
  for (int j = 0; j < p_.cols(); ++j) {
    double lo = p_.colLower[j], up = p_.colUpper[j];
    bool dflt = p_.colType[j] == 'B' ? (lo == 0.0 && up == 1.0) : (lo == 0.0 && up >= kInf);
    if (dflt) continue;
    // Always both sides, with the value first, so no reader applies a one-sided rule.
    body += ' ';
    body += BoundText(lo);
    body += " <= ";
    body += cols_[j];
    body += " <= ";
    body += BoundText(up);
    body += '\n';
  }
  if (!body.empty()) out_ += "Bounds\n" + body;
}

void LpWriter::NameList(const char* header, char type) {
  std::string body;
  size_t lineLen = 0;
  for (int j = 0; j < p_.cols(); ++j) {
    if (p_.colType[j] != type) continue;
    if (lineLen + cols_[j].size() > kWrapAt) {
      body += "\n";
      lineLen = 0;
    }
    body += " " + cols_[j];
    lineLen += cols_[j].size() + 1;
  }
  if (!body.empty()) out_ += std::string(header) + "\n" + body + "\n";
}

std::string LpWriter::Run() {
  cols_ = OutputNames(p_.colNames, p_.cols(), 'C');
  rows_ = AllRowNamesOf(p_);
  int changed = CleanLpNames(cols_) + CleanLpNames(rows_);
  if (changed > 0) {
    notes_.push_back(std::to_string(changed) +
                     " names were changed to fit the LP format's name rules");
  }
  out_ += "\\ Written by Zelq\n";
  Objective();
  Constraints();
  Bounds();
  NameList("General", 'I');
  NameList("Binary", 'B');
  out_ += "End\n";
  return std::move(out_);
}

}  // namespace

std::string FormatLp(const Problem& p, std::vector<std::string>& notes) {
  LpWriter w(p, notes);
  return w.Run();
}

}  // namespace zelq::engine::io
