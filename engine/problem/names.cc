#include "problem/names.h"

#include <algorithm>

namespace zelq::engine {

void NameList::AddUnnamed(int count) { count_ += count; }

void NameList::Add(const char* name) {
  if (name == nullptr || *name == '\0') {
    ++count_;
    return;
  }
  // Growing the vector may move short strings the index points into; rebuild later then.
  const size_t need = static_cast<size_t>(count_) + 1;
  if (need > names_.capacity()) {
    indexValid_ = false;
    names_.reserve(std::max(need, 2 * names_.capacity()));
  }
  names_.resize(count_);
  names_.emplace_back(name);
  ++count_;
  ++named_;
  if (indexValid_) index_.emplace(names_.back(), count_ - 1);  // keeps the first of duplicates
}

void NameList::Set(int i, const char* name) {
  const bool empty = name == nullptr || *name == '\0';
  if (i >= static_cast<int>(names_.size())) {
    if (empty) return;
    names_.resize(i + 1);
  }
  named_ -= !names_[i].empty();
  names_[i] = empty ? "" : name;
  named_ += !empty;
  indexValid_ = false;
}

std::string NameList::Display(int i, char prefix) const {
  const std::string& n = Get(i);
  if (!n.empty()) return n;
  return prefix + std::to_string(i);
}

int NameList::Find(std::string_view name) const {
  if (name.empty() || named_ == 0) return -1;
  if (!indexValid_) {
    index_.clear();
    index_.reserve(named_);
    for (int i = 0; i < static_cast<int>(names_.size()); ++i)
      if (!names_[i].empty()) index_.emplace(names_[i], i);
    indexValid_ = true;
  }
  auto it = index_.find(name);
  return it == index_.end() ? -1 : it->second;
}

void NameList::Delete(const std::vector<char>& drop) {
  size_t out = 0;
  named_ = 0;
  for (size_t i = 0; i < names_.size(); ++i) {
    if (drop[i]) continue;
    if (out != i) names_[out] = std::move(names_[i]);
    named_ += !names_[out].empty();
    ++out;
  }
  names_.resize(out);
  int kept = 0;
  for (char d : drop) kept += !d;
  count_ = kept;
  indexValid_ = false;
}

void NameList::Clear() {
  names_.clear();
  count_ = 0;
  named_ = 0;
  index_.clear();
  indexValid_ = false;
}

}  // namespace zelq::engine
