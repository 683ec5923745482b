// Element names with a lazily built name-to-index map.
#pragma once

#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace zelq::engine {

class NameList {
 public:
  NameList() = default;
  // The index's keys point into the strings of the list that built it, so a copy starts without
  // an index and builds its own on first use. A move keeps it: the strings stay where they are.
  NameList(const NameList& o) : names_(o.names_), count_(o.count_), named_(o.named_) {}
  NameList& operator=(const NameList& o) {
    if (this != &o) {
      names_ = o.names_;
      count_ = o.count_;
      named_ = o.named_;
      index_.clear();
      indexValid_ = false;
    }
    return *this;
  }
  NameList(NameList&&) = default;
  NameList& operator=(NameList&&) = default;

  int size() const { return count_; }
  // Appends `count` unnamed elements or one named element.
  void AddUnnamed(int count);
  void Add(const char* name);
  void Set(int i, const char* name);
  // The stored name, empty when the element has none.
  const std::string& Get(int i) const {
    static const std::string kEmpty;
    return i < static_cast<int>(names_.size()) ? names_[i] : kEmpty;
  }
  // Stored name or the default `prefix` + index ("C12", "R3").
  std::string Display(int i, char prefix) const;
  // Index of the element with this name, -1 when none. The map is built on first use after a
  // change, so adding many named elements costs no hashing until someone looks one up.
  int Find(std::string_view name) const;
  bool AnyNamed() const { return named_ > 0; }
  void Delete(const std::vector<char>& drop);
  void Clear();

 private:
  // Names of elements [0, names_.size()); later elements are unnamed, so a problem without
  // names (or named only at the front) spends no memory on them.
  std::vector<std::string> names_;
  int count_ = 0;
  int named_ = 0;
  mutable std::unordered_map<std::string_view, int> index_;
  mutable bool indexValid_ = false;
};

}  // namespace zelq::engine
