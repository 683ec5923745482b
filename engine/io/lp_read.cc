#include <algorithm>
#include <cctype>
#include <cmath>
#include <cstring>
#include <unordered_map>

#include "io/lp_format.h"
#include "io/text_io.h"

namespace zelq::engine::io {
namespace {

enum class Tok { kEnd, kName, kNumber, kOp };

struct Token {
  Tok kind = Tok::kEnd;
  std::string_view text;
  int line = 0;
  bool bol = false;  // first token of its line
  double value = 0.0;
};

enum class Sec { kObjective, kConstraints, kLazy, kCuts, kBounds, kGeneral, kBinary, kEnd };

bool IsOpChar(char c) { return std::strchr("+-*^:[]<>=", c) != nullptr && c != '\0'; }
bool IsSpaceChar(char c) {
  return c == ' ' || c == '\t' || c == '\r' || c == '\n' || c == '\f' || c == '\v';
}

// Splits LP text into tokens; numbers start with a digit or '.', names are runs of other
// non-operator characters; comparison operators are normalised ("=<" -> "<=", "==" -> "=").
std::vector<Token> Lex(std::string_view s) {
  std::vector<Token> out;
  int line = 1;
  bool bol = true;
  size_t i = 0;
  while (i < s.size()) {
    char c = s[i];
    if (c == '\n') {
      ++line;
      bol = true;
      ++i;
      continue;
    }
    if (IsSpaceChar(c)) {
      ++i;
      continue;
    }
    if (c == '\\') {
      while (i < s.size() && s[i] != '\n') ++i;
      continue;
    }
    Token t;
    t.line = line;
    t.bol = bol;
    bol = false;
    size_t start = i;
    if (std::isdigit(static_cast<unsigned char>(c)) ||
        (c == '.' && i + 1 < s.size() && std::isdigit(static_cast<unsigned char>(s[i + 1])))) {
      while (i < s.size() && (std::isdigit(static_cast<unsigned char>(s[i])) || s[i] == '.')) ++i;
      if (i < s.size() && (s[i] == 'e' || s[i] == 'E')) {
        size_t k = i + 1;
        if (k < s.size() && (s[k] == '+' || s[k] == '-')) ++k;
        if (k < s.size() && std::isdigit(static_cast<unsigned char>(s[k]))) {
          i = k;
          while (i < s.size() && std::isdigit(static_cast<unsigned char>(s[i]))) ++i;
        }
      }
      t.kind = Tok::kNumber;
      t.text = s.substr(start, i - start);
      if (!ParseNumber(t.text, &t.value)) t.kind = Tok::kName;  // reported by the parser
    } else if (IsOpChar(c)) {
      t.kind = Tok::kOp;
      ++i;
      char n = i < s.size() ? s[i] : '\0';
      if ((c == '<' || c == '>') && n == '=')
        ++i;
      else if (c == '=' && (n == '<' || n == '>' || n == '='))
        ++i;
      else if (c == '-' && n == '>')
        ++i;
      else if (c == '<' && n == '-')
        i += (i + 1 < s.size() && s[i + 1] == '>') ? 2 : 1;
      t.text = s.substr(start, i - start);
      if (t.text == "=<") t.text = "<=";
      if (t.text == "=>") t.text = ">=";
      if (t.text == "==") t.text = "=";
    } else {
      while (i < s.size() && !IsSpaceChar(s[i]) && !IsOpChar(s[i]) && s[i] != '\\') ++i;
      t.kind = Tok::kName;
      t.text = s.substr(start, i - start);
    }
    out.push_back(t);
  }
  Token end;
  end.line = line;
  out.push_back(end);
  return out;
}

// Names may not start with a digit or a period (such a token is a malformed number).
bool BadName(std::string_view s) {
  return !s.empty() && (std::isdigit(static_cast<unsigned char>(s[0])) || s[0] == '.');
}

struct ColFlags {
  bool lowerGiven = false, upperGiven = false, binary = false;
};

class LpReader {
 public:
  LpReader(const std::string& source, ModelBuilder& out, std::vector<std::string>& notes)
      : source_(source), out_(out), notes_(notes) {}
  int Parse(std::string_view text, std::string& err);

 private:
  const Token& Peek(size_t k = 0) const { return toks_[std::min(pos_ + k, toks_.size() - 1)]; }
  int FailAt(int line, int code, const std::string& msg) {
    err_ = source_ + ":" + std::to_string(line) + ": " + msg;
    return code;
  }
  int Fail(int code, const std::string& msg) { return FailAt(Peek().line, code, msg); }
  std::string Shown(const Token& t) const {
    return t.kind == Tok::kEnd ? std::string("the end of the file") : Quote(t.text);
  }
  bool IsComparison(const Token& t) const {
    return t.kind == Tok::kOp &&
           (t.text == "<" || t.text == "<=" || t.text == ">" || t.text == ">=" || t.text == "=");
  }
  // Recognises a section keyword at the current position; `words` is how many tokens it uses.
  bool Keyword(Sec* sec, int* words, int* unsupported) const;
  bool AtSectionEnd() const;
  int Col(std::string_view name);
  int ParseValue(double* v);
  bool LooksLikeValueThenComparison() const;
  int ParseExpr(std::vector<std::pair<int, double>>& terms, double& constant, bool objective);
  int Objective();
  int Constraint(char kind);
  int Bound();
  int Finish();

  const std::string& source_;
  ModelBuilder& out_;
  std::vector<std::string>& notes_;
  std::string err_;
  std::vector<Token> toks_;
  size_t pos_ = 0;
  std::unordered_map<std::string, int> colIndex_, rowIndex_;
  std::vector<ColFlags> flags_;
};

bool LpReader::Keyword(Sec* sec, int* words, int* unsupported) const {
  const Token& t = Peek();
  if (t.kind != Tok::kName || !t.bol) return false;
  if (Peek(1).kind == Tok::kOp && Peek(1).text == ":") return false;  // a row named like a keyword
  std::string w = Lower(t.text);
  std::string next =
      Peek(1).kind == Tok::kName && Peek(1).line == t.line ? Lower(Peek(1).text) : "";
  *words = 1;
  *unsupported = 0;
  if (w == "minimize" || w == "minimise" || w == "minimum" || w == "min" || w == "maximize" ||
      w == "maximise" || w == "maximum" || w == "max") {
    *sec = Sec::kObjective;
  } else if ((w == "subject" && next == "to") || (w == "such" && next == "that")) {
    *sec = Sec::kConstraints;
    *words = 2;
  } else if (w == "st" || w == "s.t." || w == "st.") {
    *sec = Sec::kConstraints;
  } else if (w == "bounds" || w == "bound") {
    *sec = Sec::kBounds;
  } else if (w == "general" || w == "generals" || w == "gen" || w == "integer" || w == "integers" ||
             w == "int") {
    *sec = Sec::kGeneral;
  } else if (w == "binary" || w == "binaries" || w == "bin") {
    *sec = Sec::kBinary;
  } else if (w == "end") {
    *sec = Sec::kEnd;
  } else if (w == "user" && next == "cuts") {
    *sec = Sec::kCuts;
    *words = 2;
  } else if (w == "lazy" && next == "constraints") {
    *sec = Sec::kLazy;
    *words = 2;
  } else if (w == "semi" || w == "semis" || w == "sos" || w == "pwlobj") {
    *unsupported = 1;
  } else {
    return false;
  }
  return true;
}

bool LpReader::AtSectionEnd() const {
  Sec s;
  int words, unsupported;
  return Peek().kind == Tok::kEnd || Keyword(&s, &words, &unsupported);
}

int LpReader::Col(std::string_view name) {
  auto [it, added] = colIndex_.try_emplace(std::string(name), out_.cols());
  if (added) {
    out_.AddCol(std::string(name));
    flags_.emplace_back();
  }
  return it->second;
}

// [sign] number | [sign] inf | [sign] infinity
int LpReader::ParseValue(double* v) {
  double sign = 1.0;
  if (Peek().kind == Tok::kOp && (Peek().text == "+" || Peek().text == "-")) {
    if (Peek().text == "-") sign = -1.0;
    ++pos_;
  }
  const Token& t = Peek();
  if (t.kind == Tok::kNumber) {
    *v = sign * t.value;
  } else if (t.kind == Tok::kName && (IEquals(t.text, "inf") || IEquals(t.text, "infinity"))) {
    *v = sign * kInf;
  } else {
    return Fail(3, "expected a number but found " + Shown(t));
  }
  ++pos_;
  return 0;
}

bool LpReader::LooksLikeValueThenComparison() const {
  size_t k = 0;
  if (Peek().kind == Tok::kOp && (Peek().text == "+" || Peek().text == "-")) k = 1;
  const Token& t = Peek(k);
  bool value = t.kind == Tok::kNumber ||
               (t.kind == Tok::kName && (IEquals(t.text, "inf") || IEquals(t.text, "infinity")));
  return value && IsComparison(Peek(k + 1));
}

int LpReader::ParseExpr(std::vector<std::pair<int, double>>& terms, double& constant,
                        bool objective) {
  bool first = true;
  std::unordered_map<int, double> sums;
  for (;;) {
    if (AtSectionEnd() || IsComparison(Peek())) break;
    if (!objective && Peek().kind == Tok::kName && Peek(1).kind == Tok::kOp &&
        Peek(1).text == ":" && !first) {
      break;
    }
    double sign = 1.0;
    bool sawSign = false;
    while (Peek().kind == Tok::kOp && (Peek().text == "+" || Peek().text == "-")) {
      if (Peek().text == "-") sign = -sign;
      sawSign = true;
      ++pos_;
    }
    const Token& t = Peek();
    if (t.kind == Tok::kOp && t.text == "[") {
      return Fail(10, "quadratic terms are not supported by this build");
    }
    if (!first && !sawSign) return Fail(3, "expected '+' or '-' before " + Shown(t));
    double coef = 1.0;
    bool number = false;
    if (t.kind == Tok::kNumber) {
      coef = t.value;
      number = true;
      ++pos_;
      if (Peek().kind == Tok::kOp && Peek().text == "*") ++pos_;
    }
    Sec s;
    int words, unsupported;
    const Token& v = Peek();
    if (v.kind == Tok::kName && BadName(v.text)) return Fail(3, "bad number " + Quote(v.text));
    if (v.kind == Tok::kName && !Keyword(&s, &words, &unsupported)) {
      int col = Col(v.text);
      // Terms of one column add up; like any coefficient, the sum must be finite.
      double& sum = sums[col];
      sum += sign * coef;
      if (!(std::fabs(sum) < kInf)) {
        return FailAt(v.line, 3, "infinite coefficient " + Num(sum) + " of " + Quote(v.text));
      }
      terms.emplace_back(col, sign * coef);
      ++pos_;
    } else if (number) {
      constant += sign * coef;
    } else {
      return Fail(3, "expected a term but found " + Shown(v));
    }
    first = false;
  }
  return 0;
}

int LpReader::Objective() {
  const int line = Peek().line;
  if (Peek().kind == Tok::kName && Peek(1).kind == Tok::kOp && Peek(1).text == ":") pos_ += 2;
  std::vector<std::pair<int, double>> terms;
  double constant = 0.0;
  if (int rc = ParseExpr(terms, constant, true); rc != 0) return rc;
  if (IsComparison(Peek())) return Fail(3, "unexpected " + Shown(Peek()) + " in the objective");
  if (!(std::fabs(constant) < kInf)) {
    return FailAt(line, 3, "infinite objective constant " + Num(constant));
  }
  for (auto [col, c] : terms) out_.obj[col] += c;
  out_.objConst += constant;
  return 0;
}

int LpReader::Constraint(char kind) {
  const int line = Peek().line;
  std::string name;
  if (Peek().kind == Tok::kName && Peek(1).kind == Tok::kOp && Peek(1).text == ":") {
    name = std::string(Peek().text);
    pos_ += 2;
    if (rowIndex_.count(name)) return FailAt(line, 3, "duplicate row name " + Quote(name));
  }
  double lo = -kInf, up = kInf, left = 0.0, rhs = 0.0;
  std::string leftOp, op;
  if (LooksLikeValueThenComparison()) {  // "lo <= expr <= hi"
    if (int rc = ParseValue(&left); rc != 0) return rc;
    leftOp = std::string(Peek().text);
    ++pos_;
  }
  std::vector<std::pair<int, double>> terms;
  double constant = 0.0;
  if (int rc = ParseExpr(terms, constant, false); rc != 0) return rc;
  if (!leftOp.empty() && terms.empty() && !IsComparison(Peek())) {
    // "0 >= 1": a row without terms, not a range.
    op = leftOp;
    rhs = constant;
    constant = left;
    leftOp.clear();
  } else {
    if (!IsComparison(Peek())) {
      return Fail(3, "expected '<=', '>=' or '=' but found " + Shown(Peek()));
    }
    op = std::string(Peek().text);
    ++pos_;
    if (int rc = ParseValue(&rhs); rc != 0) return rc;
  }
  if (Peek().kind == Tok::kOp &&
      (Peek().text == "->" || Peek().text == "<-" || Peek().text == "<->")) {
    return FailAt(line, 10, "indicator constraints are not supported by this build");
  }
  bool le = op[0] == '<';
  if (!leftOp.empty()) {
    bool leftLe = leftOp[0] == '<';
    if (leftOp == "=" || op == "=" || leftLe != le) {
      return FailAt(line, 3, "a ranged row needs two '<=' or two '>=' comparisons");
    }
    lo = le ? left : rhs;
    up = le ? rhs : left;
  } else if (op == "=") {
    if (rhs <= -kInf || rhs >= kInf) {
      return FailAt(line, 3, "equality with an infinite right-hand side");
    }
    lo = up = rhs;
  } else if (le) {
    up = rhs;
  } else {
    lo = rhs;
  }
  // Constants written on the left move to the right.
  if (lo > -kInf) lo -= constant;
  if (up < kInf) up -= constant;
  // "x <= -inf" (also reached through constants of 1e30 and beyond) leaves no value.
  if (lo >= kInf || up <= -kInf) {
    return FailAt(line, 3, std::string("infinite ") + (lo >= kInf ? "lower" : "upper") +
                               " bound on the wrong side of " +
                               (name.empty() ? std::string("the row") : "row " + Quote(name)));
  }
  int row = out_.AddRow(name, lo, up, kind);
  if (!name.empty()) rowIndex_.emplace(name, row);
  for (auto [col, c] : terms) out_.AddEntry(row, col, c);
  return 0;
}

int LpReader::Bound() {
  const Token& t = Peek();
  const int line = t.line;
  if (t.kind == Tok::kName && !(IEquals(t.text, "inf") || IEquals(t.text, "infinity")) &&
      Peek(1).kind == Tok::kName && IEquals(Peek(1).text, "free")) {
    int c = Col(t.text);
    out_.colLower[c] = -kInf;
    out_.colUpper[c] = kInf;
    flags_[c].lowerGiven = flags_[c].upperGiven = true;
    pos_ += 2;
    return 0;
  }
  // Collect "value op name [op value]" or "name op value".
  double v1 = 0.0;
  std::string op1;
  bool valueFirst = t.kind != Tok::kName || IEquals(t.text, "inf") || IEquals(t.text, "infinity");
  if (valueFirst) {
    if (int rc = ParseValue(&v1); rc != 0) return rc;
    if (!IsComparison(Peek())) return Fail(3, "expected a comparison but found " + Shown(Peek()));
    op1 = std::string(Peek().text);
    ++pos_;
  }
  if (Peek().kind != Tok::kName || BadName(Peek().text)) {
    return Fail(3, "expected a variable name but found " + Shown(Peek()));
  }
  int c = Col(Peek().text);
  ++pos_;
  auto apply = [&](const std::string& op, double v, bool varOnLeft) {
    bool lower = (op[0] == '>') == varOnLeft;  // "x >= v" or "v <= x" set the lower bound
    if (op == "=") {
      out_.colLower[c] = out_.colUpper[c] = v;
      flags_[c].lowerGiven = flags_[c].upperGiven = true;
    } else if (lower) {
      out_.colLower[c] = v;
      flags_[c].lowerGiven = true;
    } else {
      out_.colUpper[c] = v;
      flags_[c].upperGiven = true;
    }
  };
  if (valueFirst) apply(op1, v1, false);
  if (IsComparison(Peek())) {
    std::string op2(Peek().text);
    ++pos_;
    double v2;
    if (int rc = ParseValue(&v2); rc != 0) return rc;
    apply(op2, v2, true);
  } else if (!valueFirst) {
    return Fail(3, "expected a comparison after the variable but found " + Shown(Peek()));
  }
  if (out_.colLower[c] >= kInf || out_.colUpper[c] <= -kInf) {
    return FailAt(line, 3, "infinite bound on the wrong side of " + Quote(out_.colNames[c]));
  }
  return 0;
}

int LpReader::Finish() {
  for (int c = 0; c < out_.cols(); ++c) {
    if (!flags_[c].binary) continue;
    out_.colType[c] = 'B';
    if (!flags_[c].lowerGiven) out_.colLower[c] = 0.0;
    if (!flags_[c].upperGiven) out_.colUpper[c] = 1.0;
  }
  return 0;
}

int LpReader::Parse(std::string_view text, std::string& err) {
  toks_ = Lex(text);
  Sec sec;
  int words = 0, unsupported = 0;
  if (!Keyword(&sec, &words, &unsupported) || sec != Sec::kObjective) {
    err = source_ + ":" + std::to_string(Peek().line) +
          ": expected Minimize or Maximize but found " + Shown(Peek());
    return 3;
  }
  int rc = 0;
  bool seenObjective = false;
  while (rc == 0 && Peek().kind != Tok::kEnd) {
    if (!Keyword(&sec, &words, &unsupported)) {
      rc = Fail(3, "unexpected " + Shown(Peek()));
      break;
    }
    if (unsupported) {
      rc = Fail(10, "section " + Quote(Peek().text) + " is not supported by this build");
      break;
    }
    std::string w = Lower(Peek().text);
    pos_ += words;
    if (sec == Sec::kEnd) break;
    if (sec == Sec::kObjective) {
      if (seenObjective) {
        rc = Fail(3, "a second objective section");
        break;
      }
      seenObjective = true;
      out_.objSense = w.substr(0, 3) == "max" ? -1 : 1;
      rc = Objective();
      continue;
    }
    while (rc == 0 && !AtSectionEnd()) {
      if (sec == Sec::kConstraints || sec == Sec::kLazy || sec == Sec::kCuts) {
        char kind = sec == Sec::kLazy   ? ModelBuilder::kLazy
                    : sec == Sec::kCuts ? ModelBuilder::kCut
                                        : 0;
        rc = Constraint(kind);
      } else if (sec == Sec::kBounds) {
        rc = Bound();
      } else if (Peek().kind != Tok::kName || BadName(Peek().text)) {
        rc = Fail(3, "expected a variable name but found " + Shown(Peek()));
      } else {
        int c = Col(Peek().text);
        ++pos_;
        if (sec == Sec::kBinary) {
          flags_[c].binary = true;
        } else {
          flags_[c].binary = false;
          out_.colType[c] = 'I';
        }
      }
    }
  }
  if (rc == 0) rc = Finish();
  if (rc != 0) err = err_;
  (void)notes_;
  return rc;
}

}  // namespace

int ParseLp(std::string_view text, const std::string& source, ModelBuilder& out, std::string& err,
            std::vector<std::string>& notes) {
  LpReader reader(source, out, notes);
  return reader.Parse(text, err);
}

}  // namespace zelq::engine::io
