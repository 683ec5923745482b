#include "io/json_sol.h"

#include <cmath>
#include <cstdio>
#include <memory>

#include "io/text_io.h"

namespace zelq::engine::io {
namespace {

void JsonString(std::string& out, std::string_view s) {
  out += '"';
  for (char ch : s) {
    auto c = static_cast<unsigned char>(ch);
    if (c == '"' || c == '\\') {
      out += '\\';
      out += ch;
    } else if (c < 0x20) {
      char buf[8];
      std::snprintf(buf, sizeof buf, "\\u%04x", c);
      out += buf;
    } else {
      out += ch;
    }
  }
  out += '"';
}

std::string JsonNumber(double v) {
  if (!std::isfinite(v) || std::fabs(v) >= 1e30) return "null";
  return Num(v);
}

// A parsed JSON value (only what solution files need). Object members are a named struct that
// is completed after JValue: a std::pair of a type that is still incomplete does not compile
// with every standard library and compiler.
struct JField;
struct JValue {
  enum Type { kNull, kBool, kNumber, kString, kArray, kObject } type = kNull;
  double number = 0.0;
  std::string text;
  std::vector<JValue> items;   // array elements
  std::vector<JField> fields;  // object members
  int line = 0;
  const JValue* Get(std::string_view key) const;
};

struct JField {
  std::string first;  // the member's key
  JValue second;      // its value
};

const JValue* JValue::Get(std::string_view key) const {
  for (const auto& f : fields) {
    if (f.first == key) return &f.second;
  }
  return nullptr;
}

class JsonParser {
 public:
  explicit JsonParser(std::string_view s) : s_(s) {}
  bool Parse(JValue& out, std::string& err) {
    if (!Value(out, 0)) {
      err = std::to_string(line_) + ": " + err_;
      return false;
    }
    Space();
    if (i_ < s_.size()) {
      err = std::to_string(line_) + ": unexpected text after the JSON value";
      return false;
    }
    return true;
  }

 private:
  bool Fail(const std::string& m) {
    err_ = m;
    return false;
  }
  void Space() {
    while (i_ < s_.size() &&
           (s_[i_] == ' ' || s_[i_] == '\t' || s_[i_] == '\r' || s_[i_] == '\n')) {
      if (s_[i_] == '\n') ++line_;
      ++i_;
    }
  }
  bool Literal(std::string_view word) {
    if (s_.substr(i_, word.size()) != word) return Fail("unknown literal");
    i_ += word.size();
    return true;
  }
  bool Value(JValue& v, int depth);
  bool String(std::string& out);
  bool Number(double& out);
  bool Hex4(unsigned& out);

  std::string_view s_;
  size_t i_ = 0;
  int line_ = 1;
  std::string err_;
};

bool JsonParser::Hex4(unsigned& out) {
  if (i_ + 4 > s_.size()) return Fail("truncated \\u escape");
  out = 0;
  for (int k = 0; k < 4; ++k) {
    char c = s_[i_++];
    out <<= 4;
    if (c >= '0' && c <= '9')
      out |= static_cast<unsigned>(c - '0');
    else if (c >= 'a' && c <= 'f')
      out |= static_cast<unsigned>(c - 'a' + 10);
    else if (c >= 'A' && c <= 'F')
      out |= static_cast<unsigned>(c - 'A' + 10);
    else
      return Fail("bad \\u escape");
  }
  return true;
}

bool JsonParser::String(std::string& out) {
  ++i_;  // opening quote
  while (i_ < s_.size() && s_[i_] != '"') {
    char c = s_[i_++];
    if (c == '\n') return Fail("line break inside a string");
    if (c != '\\') {
      out += c;
      continue;
    }
    if (i_ >= s_.size()) break;
    char e = s_[i_++];
    switch (e) {
      case '"':
      case '\\':
      case '/':
        out += e;
        break;
      case 'b':
        out += '\b';
        break;
      case 'f':
        out += '\f';
        break;
      case 'n':
        out += '\n';
        break;
      case 'r':
        out += '\r';
        break;
      case 't':
        out += '\t';
        break;
      case 'u': {
        unsigned cp;
        if (!Hex4(cp)) return false;
        if (cp >= 0xD800 && cp < 0xDC00 && s_.substr(i_, 2) == "\\u") {
          i_ += 2;
          unsigned lo;
          if (!Hex4(lo)) return false;
          cp = 0x10000 + ((cp - 0xD800) << 10) + (lo - 0xDC00);
        }
        if (cp < 0x80) {
          out += static_cast<char>(cp);
        } else if (cp < 0x800) {
          out += static_cast<char>(0xC0 | (cp >> 6));
          out += static_cast<char>(0x80 | (cp & 0x3F));
        } else if (cp < 0x10000) {
          out += static_cast<char>(0xE0 | (cp >> 12));
          out += static_cast<char>(0x80 | ((cp >> 6) & 0x3F));
          out += static_cast<char>(0x80 | (cp & 0x3F));
        } else {
          out += static_cast<char>(0xF0 | (cp >> 18));
          out += static_cast<char>(0x80 | ((cp >> 12) & 0x3F));
          out += static_cast<char>(0x80 | ((cp >> 6) & 0x3F));
          out += static_cast<char>(0x80 | (cp & 0x3F));
        }
        break;
      }
      default:
        return Fail("bad escape in a string");
    }
  }
  if (i_ >= s_.size()) return Fail("unterminated string");
  ++i_;
  return true;
}

bool JsonParser::Number(double& out) {
  size_t start = i_;
  while (i_ < s_.size() &&
         std::string_view("+-0123456789.eE").find(s_[i_]) != std::string_view::npos)
    ++i_;
  std::string_view tok = s_.substr(start, i_ - start);
  if (tok.empty() || !ParseNumber(tok, &out)) return Fail("bad number");
  return true;
}

bool JsonParser::Value(JValue& v, int depth) {
  if (depth > 64) return Fail("nesting too deep");
  Space();
  v.line = line_;
  if (i_ >= s_.size()) return Fail("unexpected end of the text");
  char c = s_[i_];
  if (c == '{') {
    v.type = JValue::kObject;
    ++i_;
    Space();
    if (i_ < s_.size() && s_[i_] == '}') return ++i_, true;
    for (;;) {
      Space();
      if (i_ >= s_.size() || s_[i_] != '"') return Fail("expected a member name");
      std::string key;
      if (!String(key)) return false;
      Space();
      if (i_ >= s_.size() || s_[i_] != ':') return Fail("expected ':'");
      ++i_;
      v.fields.push_back(JField{std::move(key), JValue()});
      if (!Value(v.fields.back().second, depth + 1)) return false;
      Space();
      if (i_ < s_.size() && s_[i_] == ',') {
        ++i_;
        continue;
      }
      if (i_ < s_.size() && s_[i_] == '}') return ++i_, true;
      return Fail("expected ',' or '}'");
    }
  }
  if (c == '[') {
    v.type = JValue::kArray;
    ++i_;
    Space();
    if (i_ < s_.size() && s_[i_] == ']') return ++i_, true;
    for (;;) {
      v.items.emplace_back();
      if (!Value(v.items.back(), depth + 1)) return false;
      Space();
      if (i_ < s_.size() && s_[i_] == ',') {
        ++i_;
        continue;
      }
      if (i_ < s_.size() && s_[i_] == ']') return ++i_, true;
      return Fail("expected ',' or ']'");
    }
  }
  if (c == '"') {
    v.type = JValue::kString;
    return String(v.text);
  }
  if (c == 't' || c == 'f') {
    v.type = JValue::kBool;
    v.number = c == 't';
    return Literal(c == 't' ? "true" : "false");
  }
  if (c == 'n') return Literal("null");
  v.type = JValue::kNumber;
  return Number(v.number);
}

}  // namespace

std::string FormatJsonSolution(const SolutionView& s) {
  std::string out = "{\n  \"status\": ";
  JsonString(out, StatusText(s.status));
  out += ",\n  \"status_code\": " + std::to_string(s.status);
  out += ",\n  \"objective\": " + JsonNumber(s.objective);
  out += ",\n  \"columns\": [";
  const auto& cols = *s.colNames;
  for (size_t j = 0; j < cols.size(); ++j) {
    out += j ? ",\n    {\"name\": " : "\n    {\"name\": ";
    JsonString(out, cols[j]);
    out += ", \"value\": " + JsonNumber(s.x[j]);
    if (s.redCost) out += ", \"reduced_cost\": " + JsonNumber(s.redCost[j]);
    out += "}";
  }
  out += cols.empty() ? "]" : "\n  ]";
  if (s.activity && s.rowNames) {
    out += ",\n  \"rows\": [";
    const auto& rows = *s.rowNames;
    for (size_t i = 0; i < rows.size(); ++i) {
      out += i ? ",\n    {\"name\": " : "\n    {\"name\": ";
      JsonString(out, rows[i]);
      out += ", \"activity\": " + JsonNumber(s.activity[i]);
      if (s.dual) out += ", \"dual\": " + JsonNumber(s.dual[i]);
      out += "}";
    }
    out += rows.empty() ? "]" : "\n  ]";
  }
  out += "\n}\n";
  return out;
}

int ParseJsonColumnValues(std::string_view text, const std::string& source, const NameIndex& cols,
                          std::vector<std::pair<int, double>>& out, std::string& err) {
  JValue root;
  std::string perr;
  JsonParser parser(text);
  if (!parser.Parse(root, perr)) {
    err = source + ":" + perr;
    return 3;
  }
  auto at = [&](int line) { return source + ":" + std::to_string(line) + ": "; };
  if (root.type != JValue::kObject) {
    err = at(root.line) + "expected a JSON object";
    return 3;
  }
  const JValue* list = root.Get("columns");
  if (list == nullptr || list->type != JValue::kArray) {
    err = at(root.line) + "no \"columns\" array";
    return 3;
  }
  std::vector<char> seen(cols.size(), 0);
  for (const JValue& e : list->items) {
    const JValue* name = e.type == JValue::kObject ? e.Get("name") : nullptr;
    const JValue* value = e.type == JValue::kObject ? e.Get("value") : nullptr;
    if (name == nullptr || name->type != JValue::kString || value == nullptr) {
      err = at(e.line) + "a column entry needs \"name\" (a string) and \"value\"";
      return 3;
    }
    auto it = cols.find(name->text);
    if (it == cols.end()) {
      err = at(e.line) + "unknown column " + Quote(name->text);
      return 3;
    }
    if (value->type == JValue::kNull) continue;
    if (value->type != JValue::kNumber || std::fabs(value->number) >= 1e30) {
      err = at(e.line) + "the value of column " + Quote(name->text) + " is not a finite number";
      return 3;
    }
    if (seen[it->second]) {
      err = at(e.line) + "column " + Quote(name->text) + " is listed twice";
      return 3;
    }
    seen[it->second] = 1;
    out.emplace_back(it->second, value->number);
  }
  return 0;
}

}  // namespace zelq::engine::io
