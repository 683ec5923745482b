// ZelqView: the library's index list (an IView, and itself an index object of
// type name "View", which the view rules treat as an unknown type).
#ifndef ZELQ_MATRIX_ZELQ_VIEW_H_
#define ZELQ_MATRIX_ZELQ_VIEW_H_

#include <initializer_list>
#include <vector>

#include "frame/shared_block.h"
#include "zelq/zelqcpp_indexing.h"
#include "zelq/zelqcpp_ndim_iface.h"

namespace Zelq {

class ZelqView final : public IView, public Indexing {
 public:
  ZelqView() = default;
  // Copies of the given index objects, in order.
  ZelqView(std::initializer_list<const Indexing*> indices);

  int GetCount() const override { return static_cast<int>(list_.size()); }
  const Indexing* GetIndex(int k) const override;
  void AddIndex(const Indexing* index) override;
  const char* TypeName() const override { return "View"; }

 private:
  // Each entry is shared storage of its own copy of an index object.
  std::vector<Shared<Indexing>> list_;
};

}  // namespace Zelq

#endif  // ZELQ_MATRIX_ZELQ_VIEW_H_
