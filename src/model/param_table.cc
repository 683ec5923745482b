#include "model/param_table.h"

#include <cctype>
#include <map>
#include <utility>
#include <vector>

#include "frame/engine_error.h"
#include "frame/engine_index.h"

namespace Zelq {

// One row per entry of names.def, in its order. The declared size makes a
// changed row count a compile error.
const ParamRow kParamRows[] = {
#define ZELQ_DBL_PARAM(name, unlisted, def, min, max, desc) {#name, 0, unlisted, desc},
#define ZELQ_INT_PARAM(name, unlisted, def, min, max, desc) {#name, 1, unlisted, desc},
#define ZELQ_DBL_ATTR(name, unlisted, desc) {#name, 2, unlisted, desc},
#define ZELQ_INT_ATTR(name, unlisted, desc) {#name, 3, unlisted, desc},
#include "../../engine/params/names.def"
};

namespace {

char Lower(char c) { return static_cast<char>(std::tolower(static_cast<unsigned char>(c))); }

std::string LowerCopy(const char* text) {
  std::string lower(text);
  for (char& c : lower) c = Lower(c);
  return lower;
}

// The public rows twice over: a trie on lower-cased characters whose
// terminal nodes carry the kind, and lower-cased name -> canonical spelling.
class LookupIndex {
 public:
  LookupIndex() : nodes_(1) {
    for (const ParamRow& row : kParamRows) {
      if (row.unlisted != 0) continue;
      std::string lower = LowerCopy(row.name);
      Insert(lower, static_cast<int>(row.kind));
      spellings_.emplace(std::move(lower), row.name);
    }
  }

  // The kind of a public name, or -1.
  int Find(const char* name) const {
    int32_t node = 0;
    for (const char* p = name; *p != '\0'; ++p) {
      node = Child(node, Lower(*p));
      if (node < 0) return kUnknownName;
    }
    return nodes_[node].kind;
  }

  const char* Spelling(const std::string& lower) const { return spellings_.at(lower); }

 private:
  struct Node {
    int32_t kind = kUnknownName;                   // set on terminal nodes
    std::vector<std::pair<char, int32_t>> next;    // branch character -> node
  };

  int32_t Child(int32_t node, char c) const {
    for (const auto& [branch, child] : nodes_[node].next) {
      if (branch == c) return child;
    }
    return -1;
  }

  void Insert(const std::string& lower, int kind) {
    int32_t node = 0;
    for (char c : lower) {
      int32_t child = Child(node, c);
      if (child < 0) {
        child = static_cast<int32_t>(nodes_.size());
        nodes_[node].next.emplace_back(c, child);
        nodes_.emplace_back();  // invalidates references into nodes_, none held
      }
      node = child;
    }
    nodes_[node].kind = kind;
  }

  std::vector<Node> nodes_;  // nodes_[0] is the root
  std::map<std::string, const char*> spellings_;
};

// Built on first use; the guarded static makes the construction thread-safe.
const LookupIndex& Index() {
  static const LookupIndex index;
  return index;
}

}  // namespace

int SearchParamAttr(const char* name, std::string& canonical) {
  if (name == nullptr || name[0] == '\0') return kUnknownName;
  canonical = name;
  const LookupIndex& index = Index();
  int kind = index.Find(name);
  if (kind != kUnknownName) {
    canonical = index.Spelling(LowerCopy(name));
    return kind;
  }
  // Unlisted or unknown: the engine decides, and sees the caller's spelling.
  kind = kUnknownName;
  ThrowEngineError(Engine().SearchParamAttr(nullptr, name, &kind));
  return kind;
}

}  // namespace Zelq
