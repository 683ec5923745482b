#include "params.h"

#include <charconv>
#include <cmath>
#include <cstdint>
#include <unordered_map>

namespace zelq::engine {
namespace {

constexpr DblParamInfo kDblInfo[] = {
#define ZELQ_DBL_PARAM(name, unlisted, def, min, max, desc) \
  {#name, (unlisted) != 0, def, min, max, desc},
#include "names.def"
};

constexpr IntParamInfo kIntInfo[] = {
#define ZELQ_INT_PARAM(name, unlisted, def, min, max, desc) \
  {#name, (unlisted) != 0, def, min, max, desc},
#include "names.def"
};

constexpr const char* kDblAttrNames[] = {
#define ZELQ_DBL_ATTR(name, unlisted, desc) #name,
#include "names.def"
};

constexpr const char* kIntAttrNames[] = {
#define ZELQ_INT_ATTR(name, unlisted, desc) #name,
#include "names.def"
};

constexpr NameRow kNameRows[] = {
#define ZELQ_DBL_PARAM(name, unlisted, def, min, max, desc) \
  {#name, NameKind::kDblParam, (unlisted) != 0, desc},
#define ZELQ_INT_PARAM(name, unlisted, def, min, max, desc) \
  {#name, NameKind::kIntParam, (unlisted) != 0, desc},
#define ZELQ_DBL_ATTR(name, unlisted, desc) {#name, NameKind::kDblAttr, (unlisted) != 0, desc},
#define ZELQ_INT_ATTR(name, unlisted, desc) {#name, NameKind::kIntAttr, (unlisted) != 0, desc},
#include "names.def"
};

static_assert(std::size(kDblInfo) == kDblParamCount);
static_assert(std::size(kIntInfo) == kIntParamCount);
static_assert(std::size(kNameRows) == kNameCount);
static_assert(kNameCount == 683);

template <typename T, std::size_t N>
constexpr bool DefaultsWithinRange(const ParamInfo<T> (&rows)[N]) {
  for (const auto& r : rows) {
    if (!(r.min <= r.def && r.def <= r.max)) return false;
  }
  return true;
}
static_assert(DefaultsWithinRange(kDblInfo), "a double default lies outside its range");
static_assert(DefaultsWithinRange(kIntInfo), "an integer default lies outside its range");

constexpr unsigned char AsciiLower(unsigned char c) {
  return (c >= 'A' && c <= 'Z') ? static_cast<unsigned char>(c - 'A' + 'a') : c;
}

// FNV-1a over the lower-cased bytes.
struct CaseInsensitiveHash {
  std::size_t operator()(std::string_view s) const noexcept {
    std::uint64_t h = 14695981039346656037ull;
    for (char c : s) {
      h ^= AsciiLower(static_cast<unsigned char>(c));
      h *= 1099511628211ull;
    }
    return static_cast<std::size_t>(h);
  }
};

struct CaseInsensitiveEqual {
  bool operator()(std::string_view a, std::string_view b) const noexcept {
    if (a.size() != b.size()) return false;
    for (std::size_t i = 0; i < a.size(); ++i) {
      if (AsciiLower(static_cast<unsigned char>(a[i])) !=
          AsciiLower(static_cast<unsigned char>(b[i]))) {
        return false;
      }
    }
    return true;
  }
};

using NameIndex =
    std::unordered_map<std::string_view, NameRef, CaseInsensitiveHash, CaseInsensitiveEqual>;

NameIndex BuildIndex() {
  NameIndex index;
  index.reserve(kNameCount);
  int next[4] = {0, 0, 0, 0};
  for (const NameRow& row : kNameRows) {
    int& slot = next[static_cast<int>(row.kind)];
    index.emplace(row.name, NameRef{row.kind, slot++, row.name});
  }
  return index;
}

// Built once on first use; the guarded static makes it thread-safe.
const NameIndex& Index() {
  static const NameIndex index = BuildIndex();
  return index;
}

std::string RangeText(const std::string& lo, const std::string& hi) {
  return " (valid range [" + lo + ", " + hi + "])";
}

std::string IntText(int v) { return std::to_string(v); }

// Resolves `name` to a row of the wanted kind, or explains why not.
int Resolve(const char* name, NameKind want, NameRef* ref, std::string& msg) {
  const char* what = KindText(want);
  if (name == nullptr) {
    msg = std::string("Null name given for a ") + what;
    return kParamErrInvalid;
  }
  if (!FindName(name, ref)) {
    msg = std::string(want == NameKind::kDblParam || want == NameKind::kIntParam
                          ? "Unknown parameter "
                          : "Unknown attribute ") +
          QuoteForMessage(name);
    return kParamErrInvalid;
  }
  if (ref->kind != want) {
    msg = std::string("'") + ref->name + "' is " +
          (ref->kind == NameKind::kIntParam || ref->kind == NameKind::kIntAttr ? "an " : "a ") +
          KindText(ref->kind) + ", not " +
          (want == NameKind::kIntParam || want == NameKind::kIntAttr ? "an " : "a ") + what;
    return kParamErrInvalid;
  }
  return kParamOk;
}

template <typename T>
T FieldOf(const ParamInfo<T>& info, ParamField field) {
  switch (field) {
    case ParamField::kMin:
      return info.min;
    case ParamField::kMax:
      return info.max;
    case ParamField::kDefault:
      break;
  }
  return info.def;
}

bool ValidField(ParamField field) {
  return field == ParamField::kDefault || field == ParamField::kMin || field == ParamField::kMax;
}

}  // namespace

const DblParamInfo& InfoOf(DblParam p) { return kDblInfo[static_cast<std::size_t>(p)]; }
const IntParamInfo& InfoOf(IntParam p) { return kIntInfo[static_cast<std::size_t>(p)]; }
const char* NameOf(DblAttr a) { return kDblAttrNames[static_cast<std::size_t>(a)]; }
const char* NameOf(IntAttr a) { return kIntAttrNames[static_cast<std::size_t>(a)]; }

std::span<const NameRow> NameTable() { return kNameRows; }

const char* KindText(NameKind kind) {
  switch (kind) {
    case NameKind::kDblParam:
      return "double parameter";
    case NameKind::kIntParam:
      return "integer parameter";
    case NameKind::kDblAttr:
      return "double attribute";
    case NameKind::kIntAttr:
      return "integer attribute";
  }
  return "name";
}

bool FindName(std::string_view name, NameRef* out) {
  const NameIndex& index = Index();
  auto it = index.find(name);
  if (it == index.end()) return false;
  if (out != nullptr) *out = it->second;
  return true;
}

int SearchParamAttr(const char* name, int* kind) {
  NameRef ref{};
  int found = (name != nullptr && FindName(name, &ref)) ? static_cast<int>(ref.kind) : -1;
  if (kind != nullptr) *kind = found;
  return found;
}

int GetIntParamField(const char* name, ParamField field, int* out, std::string& msg) {
  NameRef ref{};
  if (int rc = Resolve(name, NameKind::kIntParam, &ref, msg); rc != kParamOk) return rc;
  if (out == nullptr || !ValidField(field)) {
    msg = std::string("Invalid output argument for integer parameter '") + ref.name + "'";
    return kParamErrInvalid;
  }
  *out = FieldOf(kIntInfo[ref.index], field);
  return kParamOk;
}

int GetDblParamField(const char* name, ParamField field, double* out, std::string& msg) {
  NameRef ref{};
  if (int rc = Resolve(name, NameKind::kDblParam, &ref, msg); rc != kParamOk) return rc;
  if (out == nullptr || !ValidField(field)) {
    msg = std::string("Invalid output argument for double parameter '") + ref.name + "'";
    return kParamErrInvalid;
  }
  *out = FieldOf(kDblInfo[ref.index], field);
  return kParamOk;
}

int CheckValue(DblParam p, double value, std::string& msg) {
  const DblParamInfo& info = InfoOf(p);
  const std::string range = RangeText(FormatDouble(info.min), FormatDouble(info.max));
  const std::string head = std::string(info.name) + ": value " + FormatDouble(value);
  if (std::isnan(value)) {
    msg = head + " is not a number" + range;
  } else if (value < info.min) {
    msg = head + " is below the minimum " + FormatDouble(info.min) + range;
  } else if (value > info.max) {
    msg = head + " is above the maximum " + FormatDouble(info.max) + range;
  } else {
    return kParamOk;
  }
  return kParamErrInvalid;
}

int CheckValue(IntParam p, int value, std::string& msg) {
  const IntParamInfo& info = InfoOf(p);
  const std::string range = RangeText(IntText(info.min), IntText(info.max));
  const std::string head = std::string(info.name) + ": value " + IntText(value);
  if (value < info.min) {
    msg = head + " is below the minimum " + IntText(info.min) + range;
  } else if (value > info.max) {
    msg = head + " is above the maximum " + IntText(info.max) + range;
  } else {
    return kParamOk;
  }
  return kParamErrInvalid;
}

ParamSet::ParamSet() { Reset(); }

void ParamSet::Reset() {
  for (std::size_t i = 0; i < kDblParamCount; ++i) dbl_[i] = kDblInfo[i].def;
  for (std::size_t i = 0; i < kIntParamCount; ++i) int_[i] = kIntInfo[i].def;
}

int ParamSet::Set(DblParam p, double value, std::string& msg) {
  if (int rc = CheckValue(p, value, msg); rc != kParamOk) return rc;
  dbl_[static_cast<std::size_t>(p)] = value;
  return kParamOk;
}

int ParamSet::Set(IntParam p, int value, std::string& msg) {
  if (int rc = CheckValue(p, value, msg); rc != kParamOk) return rc;
  int_[static_cast<std::size_t>(p)] = value;
  return kParamOk;
}

int ParamSet::GetIntByName(const char* name, int* value, std::string& msg) const {
  NameRef ref{};
  if (int rc = Resolve(name, NameKind::kIntParam, &ref, msg); rc != kParamOk) return rc;
  if (value == nullptr) {
    msg = std::string("Null output pointer for integer parameter '") + ref.name + "'";
    return kParamErrInvalid;
  }
  *value = int_[static_cast<std::size_t>(ref.index)];
  return kParamOk;
}

int ParamSet::GetDblByName(const char* name, double* value, std::string& msg) const {
  NameRef ref{};
  if (int rc = Resolve(name, NameKind::kDblParam, &ref, msg); rc != kParamOk) return rc;
  if (value == nullptr) {
    msg = std::string("Null output pointer for double parameter '") + ref.name + "'";
    return kParamErrInvalid;
  }
  *value = dbl_[static_cast<std::size_t>(ref.index)];
  return kParamOk;
}

int ParamSet::SetIntByName(const char* name, int value, std::string& msg) {
  NameRef ref{};
  if (int rc = Resolve(name, NameKind::kIntParam, &ref, msg); rc != kParamOk) return rc;
  return Set(static_cast<IntParam>(ref.index), value, msg);
}

int ParamSet::SetDblByName(const char* name, double value, std::string& msg) {
  NameRef ref{};
  if (int rc = Resolve(name, NameKind::kDblParam, &ref, msg); rc != kParamOk) return rc;
  return Set(static_cast<DblParam>(ref.index), value, msg);
}

bool ParamSet::IsDefault(DblParam p) const {
  // Bitwise-equal values only: -0.0 differs from a 0.0 default.
  const double v = Get(p);
  const double d = InfoOf(p).def;
  return v == d && std::signbit(v) == std::signbit(d);
}

bool ParamSet::IsDefault(IntParam p) const { return Get(p) == InfoOf(p).def; }

std::string FormatDouble(double value) {
  if (std::isnan(value)) return "nan";
  char buf[64];
  auto res = std::to_chars(buf, buf + sizeof buf, value);
  if (res.ec != std::errc()) return "?";
  return std::string(buf, res.ptr);
}

std::string QuoteForMessage(std::string_view text) {
  constexpr std::size_t kMaxShown = 64;
  static constexpr char kHex[] = "0123456789abcdef";
  std::string out = "'";
  for (std::size_t i = 0; i < text.size() && i < kMaxShown; ++i) {
    const auto c = static_cast<unsigned char>(text[i]);
    if (c >= 0x20 && c < 0x7f) {
      out += static_cast<char>(c);
    } else {
      out += "\\x";
      out += kHex[c >> 4];
      out += kHex[c & 0xf];
    }
  }
  if (text.size() > kMaxShown) out += "...";
  out += "'";
  return out;
}

}  // namespace zelq::engine
