#include "matrix/zelq_ndim.h"

#include "matrix/matrix_family.h"

template <int N>
ZelqNDim<N>::ZelqNDim(const Zelq::NDim<N>& shape)
    : core_(Zelq::Shared<Zelq::NDimCore<N>>::Wrap(new Zelq::NDimCore<N>{shape, {}})) {}

template <int N>
ZelqNDim<N>* ZelqNDim<N>::Failed(const Zelq::ErrorRecord& error) {
  auto* shape = new ZelqNDim(Zelq::NDim<N>());
  Zelq::PassError(shape->core_->error, error);
  return shape;
}

template <int N>
Zelq::INDim<N>* ZelqNDim<N>::Clone() const {
  return new ZelqNDim(core_->shape);
}

template <int N>
Zelq::INDim<N>* ZelqNDim<N>::CreateUniform(size_t n) const {
  std::array<uint64_t, N> dims;
  dims.fill(n);
  return new ZelqNDim(Zelq::NDim<N>(dims));
}

template <int N>
const char* ZelqNDim<N>::ToString(int what) {
  if (what < Zelq::kDims || what > Zelq::kOffsets) {
    Zelq::SetError(core_->error, Zelq::kErrorINVALID,
                   "Text selector %d is not 0 (sizes), 1 (strides) or 2 (offsets)", what);
    text_.clear();
  } else {
    Zelq::ClearError(core_->error);
    text_ = core_->shape.Text(what);
  }
  return text_.c_str();
}

template <int N>
bool ZelqNDim<N>::IsSameShape(const Zelq::INDim<N>* other) const {
  if (other == nullptr) return false;
  for (int axis = 0; axis < N; ++axis) {
    if (other->GetDim(axis) != GetDim(axis)) return false;
  }
  return true;
}

template <int N>
bool ZelqNDim<N>::IsSameView(const Zelq::INDim<N>* other) const {
  return IsSameShape(other) && other->GetStride(0) == GetStride(0) &&
         other->GetOffset(0) == GetOffset(0);
}

#define ZELQ_INSTANTIATE_ZELQ_NDIM(n) template class ZelqNDim<n>;
ZELQ_NDIM_LIST(ZELQ_INSTANTIATE_ZELQ_NDIM)
#undef ZELQ_INSTANTIATE_ZELQ_NDIM
