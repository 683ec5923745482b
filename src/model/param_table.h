// The parameter and attribute name table, and the case-insensitive lookup of
// public names.
//
// The table lists every name the engine knows, in the order of
// engine/params/names.def (parameters first, then attributes). Public rows
// feed a lookup index built on first use; unlisted rows (internal knobs and
// diagnostics) are left to the engine's own search.
//
//   std::string canonical;
//   int kind = SearchParamAttr("timelimit", canonical);  // 0, "TimeLimit"
#ifndef ZELQ_MODEL_PARAM_TABLE_H_
#define ZELQ_MODEL_PARAM_TABLE_H_

#include <cstddef>
#include <cstdint>
#include <string>

namespace Zelq {

// Row kinds, numbered as the engine's search reports them.
enum ParamKind : int {
  kUnknownName = -1,
  kDblParamKind = 0,
  kIntParamKind = 1,
  kDblAttrKind = 2,
  kIntAttrKind = 3,
};

struct ParamRow {
  const char* name;         // canonical spelling, e.g. "TimeLimit"
  uint32_t kind;            // a ParamKind from 0 to 3
  uint16_t unlisted;        // 1: known to the engine, kept out of the lookup
  const char* description;  // one line of English
};

inline constexpr std::size_t kParamRowCount = 683;
extern const ParamRow kParamRows[kParamRowCount];

// The kind (0..3) of `name`, or -1 when neither the table's public rows nor
// the engine know it. Null or empty names give -1 and leave `canonical` as it
// was. Otherwise `canonical` receives the table's spelling for a public name,
// or the caller's spelling for a name only the engine resolves. Throws
// Zelq::Exception with the engine's code when the engine's search fails.
int SearchParamAttr(const char* name, std::string& canonical);

}  // namespace Zelq

#endif  // ZELQ_MODEL_PARAM_TABLE_H_
