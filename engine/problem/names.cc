#include "problem/names.h"

namespace zelq::engine {

void NameList::AddUnnamed(int count) {
  // Growing the vector may move short strings the index points into; rebuild later then.
  if (names_.size() + count > names_.capacity()) indexValid_ = false;
  names_.resize(names_.size() + count);
}

void NameList::Add(const char* name) {
  const bool moves = names_.size() == names_.capacity();
  names_.emplace_back(name ? name : "");
  if (names_.back().empty()) {
    if (moves) indexValid_ = false;
    return;
  }
  ++named_;
  if (moves) {
    indexValid_ = false;
  } else if (indexValid_) {
    index_.emplace(names_.back(), size() - 1);  // keeps the first holder of a duplicate
  }
}

void NameList::Set(int i, const char* name) {
  named_ -= !names_[i].empty();
  names_[i] = name ? name : "";
  named_ += !names_[i].empty();
  indexValid_ = false;
}

std::string NameList::Display(int i, char prefix) const {
  if (!names_[i].empty()) return names_[i];
  return prefix + std::to_string(i);
}

int NameList::Find(std::string_view name) const {
  if (name.empty() || named_ == 0) return -1;
  if (!indexValid_) {
    index_.clear();
    index_.reserve(named_);
    for (int i = 0; i < size(); ++i)
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
  indexValid_ = false;
}

void NameList::Clear() {
  names_.clear();
  named_ = 0;
  index_.clear();
  indexValid_ = false;
}

}  // namespace zelq::engine
