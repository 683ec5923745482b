#include "matrix/zelq_view.h"

#include <cstring>
#include <string>

namespace Zelq {

namespace {

// Stand-in for an index object of a type the rules do not know: it keeps the
// type name, so the entry drops its axis as the original would.
class OtherIndex final : public Indexing {
 public:
  explicit OtherIndex(const char* name) : name_(name != nullptr ? name : "") {}
  const char* TypeName() const override { return name_.c_str(); }

 private:
  std::string name_;
};

// A copy of `index` made on this side of the boundary, chosen by type name.
Indexing* CopyIndex(const Indexing& index) {
  const char* name = index.TypeName();
  if (name != nullptr && std::strcmp(name, "Full") == 0) return new Full;
  if (name != nullptr && std::strcmp(name, "Slice") == 0) {
    return new Slice(static_cast<const Slice&>(index));
  }
  if (name != nullptr && std::strcmp(name, "Scalar") == 0) {
    return new Scalar(static_cast<const Scalar&>(index));
  }
  return new OtherIndex(name);
}

}  // namespace

ZelqView::ZelqView(std::initializer_list<const Indexing*> indices) {
  for (const Indexing* index : indices) AddIndex(index);
}

const Indexing* ZelqView::GetIndex(int k) const {
  if (k < 0 || k >= GetCount()) return nullptr;
  return list_[static_cast<size_t>(k)].Get();
}

void ZelqView::AddIndex(const Indexing* index) {
  if (index == nullptr) return;
  list_.push_back(Shared<Indexing>::Wrap(CopyIndex(*index)));
}

}  // namespace Zelq
