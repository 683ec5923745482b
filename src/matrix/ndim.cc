#include "matrix/ndim.h"

#include "matrix/matrix_family.h"

namespace Zelq {

namespace {

template <class V>
std::string Join(const V* values, int count, const char* separator) {
  std::string text = "(";
  for (int k = 0; k < count; ++k) {
    if (k > 0) text += separator;
    text += std::to_string(values[k]);
  }
  text += ")";
  return text;
}

}  // namespace

std::string JoinDims(const uint64_t* values, int count, const char* separator) {
  return Join(values, count, separator);
}

std::string JoinSigned(const int64_t* values, int count, const char* separator) {
  return Join(values, count, separator);
}

std::string AxesText(const Axes& axes) { return JoinDims(axes.dims, axes.count); }

template <int N>
void NDim<N>::SetRowMajor() {
  int64_t stride = 1;
  for (int axis = N - 1; axis >= 0; --axis) {
    Rec(axis).stride = stride;
    stride *= static_cast<int64_t>(dims_[axis]);
  }
}

template <int N>
uint64_t NDim<N>::Size() const {
  uint64_t size = 1;
  for (uint64_t d : dims_) size *= d;
  return size;
}

template <int N>
int64_t NDim<N>::Start() const {
  int64_t start = 0;
  for (const AxisRecord& r : records_) start += r.offset;
  return start;
}

template <int N>
int64_t NDim<N>::PositionOfFlat(uint64_t flat) const {
  int64_t position = Start();
  for (int axis = N - 1; axis >= 0; --axis) {
    uint64_t d = dims_[axis];
    position += static_cast<int64_t>(flat % d) * Rec(axis).stride;
    flat /= d;
  }
  return position;
}

template <int N>
bool NDim<N>::IsContiguous() const {
  int64_t expected = 1;
  for (int axis = N - 1; axis >= 0; --axis) {
    if (dims_[axis] == 1) continue;
    if (Rec(axis).stride != expected) return false;
    expected *= static_cast<int64_t>(dims_[axis]);
  }
  return true;
}

template <int N>
std::string NDim<N>::Text(int what, const char* separator) const {
  if (what == kDims) return JoinDims(dims_.data(), N, separator);
  int64_t values[N > 0 ? N : 1] = {};
  for (int axis = 0; axis < N; ++axis) {
    values[axis] = what == kStrides ? Rec(axis).stride : Rec(axis).offset;
  }
  return JoinSigned(values, N, separator);
}

template <int N>
Axes NDim<N>::ToAxes() const {
  Axes axes;
  axes.count = N;
  for (int axis = 0; axis < N; ++axis) {
    axes.dims[axis] = dims_[axis];
    axes.strides[axis] = Rec(axis).stride;
    axes.offsets[axis] = Rec(axis).offset;
  }
  axes.base = records_[0].offset;
  return axes;
}

template <int N>
NDim<N> NDim<N>::FromAxes(const Axes& axes) {
  NDim shape;
  for (int axis = 0; axis < N; ++axis) {
    shape.SetAxis(axis, axes.dims[axis], axes.strides[axis], axes.offsets[axis]);
  }
  shape.SetBaseOffset(axes.base);
  return shape;
}

#define ZELQ_INSTANTIATE_NDIM(n) template class NDim<n>;
ZELQ_NDIM_LIST(ZELQ_INSTANTIATE_NDIM)
#undef ZELQ_INSTANTIATE_NDIM

}  // namespace Zelq
