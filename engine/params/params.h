// The engine's parameter store and the name lookup for parameters and
// attributes, all generated from names.def.
#pragma once

#include <array>
#include <cstddef>
#include <span>
#include <string>
#include <string_view>

namespace zelq::engine {

// Return codes shared with the C interface.
inline constexpr int kParamOk = 0;
inline constexpr int kParamErrMemory = 1;
inline constexpr int kParamErrFile = 2;
inline constexpr int kParamErrInvalid = 3;
inline constexpr int kParamErrInternal = 5;

// Row kinds, numbered as the C interface reports them.
enum class NameKind : int {
  kDblParam = 0,
  kIntParam = 1,
  kDblAttr = 2,
  kIntAttr = 3,
};

// One enumerator per row of each kind, in table order; kCount closes each.
enum class DblParam : int {
#define ZELQ_DBL_PARAM(name, unlisted, def, min, max, desc) name,
#include "names.def"
  kCount
};

enum class IntParam : int {
#define ZELQ_INT_PARAM(name, unlisted, def, min, max, desc) name,
#include "names.def"
  kCount
};

enum class DblAttr : int {
#define ZELQ_DBL_ATTR(name, unlisted, desc) name,
#include "names.def"
  kCount
};

enum class IntAttr : int {
#define ZELQ_INT_ATTR(name, unlisted, desc) name,
#include "names.def"
  kCount
};

inline constexpr std::size_t kDblParamCount = static_cast<std::size_t>(DblParam::kCount);
inline constexpr std::size_t kIntParamCount = static_cast<std::size_t>(IntParam::kCount);
inline constexpr std::size_t kDblAttrCount = static_cast<std::size_t>(DblAttr::kCount);
inline constexpr std::size_t kIntAttrCount = static_cast<std::size_t>(IntAttr::kCount);
inline constexpr std::size_t kNameCount =
    kDblParamCount + kIntParamCount + kDblAttrCount + kIntAttrCount;

template <typename T>
struct ParamInfo {
  const char* name;
  bool unlisted;
  T def;
  T min;
  T max;
  const char* description;
};
using DblParamInfo = ParamInfo<double>;
using IntParamInfo = ParamInfo<int>;

// One row of the whole name table, in table order.
struct NameRow {
  const char* name;
  NameKind kind;
  bool unlisted;
  const char* description;
};

const DblParamInfo& InfoOf(DblParam p);
const IntParamInfo& InfoOf(IntParam p);
const char* NameOf(DblAttr a);
const char* NameOf(IntAttr a);

// All rows in table order (kNameCount of them).
std::span<const NameRow> NameTable();

// Result of a name lookup: the kind and the index within that kind
// (the enumerator value of DblParam, IntParam, DblAttr or IntAttr).
struct NameRef {
  NameKind kind;
  int index;
  // Canonical spelling of the row.
  const char* name;
};

// Case-insensitive (ASCII) lookup over every row, public and unlisted.
// Returns false for an unknown name. Never allocates; thread-safe.
bool FindName(std::string_view name, NameRef* out);

// Kind 0..3 of `name`, or -1 when it is unknown or null. When `kind` is not
// null the same value is stored there too.
int SearchParamAttr(const char* name, int* kind);

// Which property of a parameter the info getters read.
enum class ParamField { kDefault, kMin, kMax };

// Default, minimum or maximum of a parameter by name. Returns kParamOk, or
// kParamErrInvalid with `msg` set for an unknown or wrong-kind name or a
// null output pointer; `*out` is written only on success.
int GetIntParamField(const char* name, ParamField field, int* out, std::string& msg);
int GetDblParamField(const char* name, ParamField field, double* out, std::string& msg);

// The current values of every parameter. Starts at the defaults; a value
// outside [min, max] (or NaN) is never stored.
class ParamSet {
 public:
  ParamSet();

  // Back to the defaults.
  void Reset();

  double Get(DblParam p) const { return dbl_[static_cast<std::size_t>(p)]; }
  int Get(IntParam p) const { return int_[static_cast<std::size_t>(p)]; }

  // Checked setters: kParamOk, or kParamErrInvalid with `msg` naming the
  // parameter, the value and the valid range (the value is left unchanged).
  int Set(DblParam p, double value, std::string& msg);
  int Set(IntParam p, int value, std::string& msg);

  // By-name access; the name is looked up case-insensitively among all rows.
  // An unknown name, a name of another kind or a null pointer gives
  // kParamErrInvalid with `msg` set; outputs are written only on success.
  int GetIntByName(const char* name, int* value, std::string& msg) const;
  int GetDblByName(const char* name, double* value, std::string& msg) const;
  int SetIntByName(const char* name, int value, std::string& msg);
  int SetDblByName(const char* name, double value, std::string& msg);

  bool IsDefault(DblParam p) const;
  bool IsDefault(IntParam p) const;

  friend bool operator==(const ParamSet&, const ParamSet&) = default;

 private:
  std::array<double, kDblParamCount> dbl_;
  std::array<int, kIntParamCount> int_;
};

// Checks a value against a parameter's range without storing it. Returns
// kParamOk or kParamErrInvalid with `msg` set, e.g.
// "TimeLimit: value -1 is below the minimum 0 (valid range [0, 1e+30])".
int CheckValue(DblParam p, double value, std::string& msg);
int CheckValue(IntParam p, int value, std::string& msg);

// Shortest text that reads back as exactly `value`.
std::string FormatDouble(double value);

// `text` quoted for an error message: non-printable bytes are escaped as
// \xNN and overlong text is cut short, so any input is safe to show.
std::string QuoteForMessage(std::string_view text);

// "double parameter", "integer attribute", ...
const char* KindText(NameKind kind);

}  // namespace zelq::engine
