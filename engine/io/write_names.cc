#include "io/write_names.h"

#include <cstring>
#include <string_view>
#include <unordered_set>

namespace zelq::engine::io {

void MakeUnique(std::vector<std::string>& names) {
  // Views into `names`: the vector is not resized here, and an entry is only
  // seen once it holds its final text.
  std::unordered_set<std::string_view> seen;
  seen.reserve(names.size());
  for (size_t i = 0; i < names.size(); ++i) {
    if (seen.insert(names[i]).second) continue;
    std::string base = names[i] + "_" + std::to_string(i);
    std::string candidate = base;
    for (int k = 1; seen.count(candidate); ++k) candidate = base + "_" + std::to_string(k);
    names[i] = std::move(candidate);
    seen.insert(names[i]);
  }
}

std::vector<std::string> OutputNames(const NameList& names, int count, char prefix) {
  std::vector<std::string> out;
  out.reserve(count);
  bool named = false;
  for (int i = 0; i < count; ++i) {
    if (i < names.size() && !names.Get(i).empty()) {
      named = true;
      out.push_back(names.Get(i));
      // Control characters (line breaks, tabs) would break every line-based format.
      for (char& c : out.back()) {
        if (static_cast<unsigned char>(c) < 0x20 || c == 0x7f) c = '_';
      }
    } else {
      out.push_back(prefix + std::to_string(i));
    }
  }
  // Default names alone are distinct already; hashing millions of them is
  // most of the time of writing a large unnamed model.
  if (named) MakeUnique(out);
  return out;
}

int CleanNames(std::vector<std::string>& names, bool (*bad)(char c), const char* firstBad) {
  int changed = 0;
  for (std::string& n : names) {
    bool any = false;
    for (char& c : n) {
      if (bad(c)) {
        c = '_';
        any = true;
      }
    }
    if (!n.empty() && std::strchr(firstBad, n[0]) != nullptr) {
      n.insert(n.begin(), '_');
      any = true;
    }
    if (any) ++changed;
  }
  if (changed > 0) MakeUnique(names);
  return changed;
}

std::vector<std::string> AllRowNamesOf(const Problem& p) {
  std::vector<std::string> names = OutputNames(p.rowNames, p.rows(), 'R');
  if (p.lazy.count() == 0 && p.cuts.count() == 0) return names;
  for (const ExtraRows* e : {&p.lazy, &p.cuts}) {
    const std::string prefix = e == &p.lazy ? "lazy" : "cut";
    for (int i = 0; i < e->count(); ++i) {
      names.push_back(e->names[i].empty() ? prefix + std::to_string(i) : e->names[i]);
    }
  }
  NameList list;
  for (const std::string& n : names) list.Add(n.c_str());
  return OutputNames(list, static_cast<int>(names.size()), 'R');
}

}  // namespace zelq::engine::io
