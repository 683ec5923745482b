#include "matrix/ndarray.h"

#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <new>
#include <type_traits>

#include "matrix/matrix_family.h"
#include "matrix/shape_ops.h"
#include "matrix/view_rules.h"

namespace Zelq {

namespace {

// Integer sums and products wrap around instead of overflowing.
template <class T, bool = std::is_integral_v<T>>
struct AccumulatorOf {
  using type = T;
};
template <class T>
struct AccumulatorOf<T, true> {
  using type = std::make_unsigned_t<T>;
};
template <class T>
using Accumulator = typename AccumulatorOf<T>::type;

// Arrays print at most this many elements in full; larger ones show the
// first and last three entries of every long axis around "...".
constexpr uint64_t kFullPrintLimit = 1000;

template <class T>
void AppendNumber(std::string& text, T value) {
  char buffer[32];
  if constexpr (std::is_floating_point_v<T>) {
    std::snprintf(buffer, sizeof buffer, "%g", value);  // the stream's default form
  } else {
    std::snprintf(buffer, sizeof buffer, "%lld", static_cast<long long>(value));
  }
  text += buffer;
}

// Strides for `target` that reach the elements of `source` in the same flat
// order, if there are any: either the source is row-major (target keeps its
// row-major strides) or both differ only by axes of size 1.
template <int N, int M>
bool ShareLayout(const NDim<N>& source, NDim<M>& target) {
  target.SetBaseOffset(source.Start());
  if (source.IsContiguous() || source.Size() == 0) return true;
  int k = 0;
  for (int m = 0; m < M; ++m) {
    if (target.Dim(m) == 1) continue;
    while (k < N && source.Dim(k) == 1) ++k;
    if (k == N || source.Dim(k) != target.Dim(m)) return false;
    target.SetAxis(m, target.Dim(m), source.Stride(k), 0);
    ++k;
  }
  while (k < N && source.Dim(k) == 1) ++k;
  return k == N;
}

// Product of sizes, false when it leaves the range of addressable elements.
template <size_t M>
bool CheckedSize(const std::array<uint64_t, M>& dims, uint64_t& size) {
  size = 1;
  for (uint64_t d : dims) {
    if (__builtin_mul_overflow(size, d, &size)) return false;
  }
  return size <= static_cast<uint64_t>(PTRDIFF_MAX);
}

}  // namespace

template <class T, int N>
NdArray<T, N> NdArray<T, N>::Allocate(const std::array<uint64_t, N>& dims) {
  NDim<N> shape(dims);
  uint64_t n = 0;
  bool fits = CheckedSize(dims, n) && n <= static_cast<uint64_t>(PTRDIFF_MAX) / sizeof(T);
  T* buffer = fits && n > 0 ? new (std::nothrow) T[n] : nullptr;
  if (n > 0 && buffer == nullptr) {
    ErrorRecord err;
    SetError(err, kErrorMEMORY, "Fail to allocate memory for %zu elements", static_cast<size_t>(n));
    return Failed(err);
  }
  // The array flag makes a one-element buffer go back through delete[] too.
  return NdArray(shape, n > 0 ? Shared<T>::Make(buffer, n, 1) : Shared<T>(), n);
}

template <class T, int N>
NdArray<T, N> NdArray<T, N>::Failed(const ErrorRecord& error) {
  NdArray failed;
  PassError(failed.error_, error);
  return failed;
}

template <class T, int N>
bool NdArray<T, N>::CheckData() const {
  if (Size() == 0 || data_.Get() != nullptr) return true;
  SetError(error_, kErrorINVALID, "NdArray of shape %s has no data", shape_.Text(kDims).c_str());
  return false;
}

template <class T, int N>
bool NdArray<T, N>::Reaches(const NDim<N>& shape) const {
  if (shape.Size() == 0) return true;
  if (data_.Get() == nullptr) return false;
  int64_t low = shape.Start();
  int64_t high = low;
  for (int axis = 0; axis < N; ++axis) {
    int64_t span = 0;
    if (__builtin_mul_overflow(static_cast<int64_t>(shape.Dim(axis) - 1), shape.Stride(axis), &span)) {
      return false;
    }
    if (__builtin_add_overflow(span < 0 ? low : high, span, span < 0 ? &low : &high)) return false;
  }
  return low >= 0 && static_cast<uint64_t>(high) < extent_;
}

template <class T, int N>
NdArray<T, 0> NdArray<T, N>::Sum() const {
  if (!CheckData()) return NdArray<T, 0>::Failed(error_);
  Accumulator<T> total = 0;
  ForEachRun([&total](const T* first, int64_t stride, uint64_t count) {
    for (uint64_t k = 0; k < count; ++k) total += static_cast<Accumulator<T>>(first[static_cast<int64_t>(k) * stride]);
  });
  NdArray<T, 0> result = NdArray<T, 0>::Allocate({});
  if (!result.error_.Failed()) *result.data_.Get() = static_cast<T>(total);
  return result;
}

template <class T, int N>
NdArray<T, 0> NdArray<T, N>::Prod() const {
  if (!CheckData()) return NdArray<T, 0>::Failed(error_);
  Accumulator<T> product = 0;  // an empty array keeps 0
  bool first_element = true;
  ForEachRun([&](const T* first, int64_t stride, uint64_t count) {
    for (uint64_t k = 0; k < count; ++k) {
      auto value = static_cast<Accumulator<T>>(first[static_cast<int64_t>(k) * stride]);
      product = first_element ? value : static_cast<Accumulator<T>>(product * value);
      first_element = false;
    }
  });
  NdArray<T, 0> result = NdArray<T, 0>::Allocate({});
  if (!result.error_.Failed()) *result.data_.Get() = static_cast<T>(product);
  return result;
}

template <class T, int N>
NdArray<T, N> NdArray<T, N>::Repeat(int count, int axis) const {
  return Expand(count, axis, true);
}

template <class T, int N>
NdArray<T, N> NdArray<T, N>::Tile(int count, int axis) const {
  return Expand(count, axis, false);
}

template <class T, int N>
NdArray<T, N> NdArray<T, N>::Expand(int count, int axis, bool repeat) const {
  ErrorRecord err;
  if constexpr (N == 0) {
    SetError(err, kErrorINVALID, "Cannot repeat for NdArray of shape ()");
    return Failed(err);
  } else {
    if (axis < -N || axis >= N) {
      SetError(err, kErrorINVALID, "Axis %d is out of bounds for array of dimension %d", axis, N);
      return Failed(err);
    }
    if (count < 0) {
      SetError(err, kErrorINVALID, "Repeat count (%d) is negative", count);
      return Failed(err);
    }
    if (!CheckData()) return Failed(error_);
    const int a = axis < 0 ? N + axis : axis;
    const uint64_t d = shape_.Dim(a);
    std::array<uint64_t, N> dims = shape_.Dims();
    dims[a] = d * static_cast<uint64_t>(count);
    NdArray result = Allocate(dims);
    if (result.error_.Failed() || result.Size() == 0) return result;
    CopyExpanded(result, a, static_cast<uint64_t>(count), repeat);
    return result;
  }
}

template <class T, int N>
void NdArray<T, N>::CopyExpanded(NdArray& result, int axis, uint64_t count, bool repeat) const {
  // Each result element in flat order reads the source element whose index
  // on `axis` is r / count (Repeat) or r mod d (Tile); other indices agree.
  const uint64_t d = shape_.Dim(axis);
  const std::array<uint64_t, N>& dims = result.shape_.Dims();
  const T* source = data_.Get() + shape_.Start();
  T* out = result.data_.Get();
  std::array<uint64_t, N> index{};
  for (uint64_t f = 0; f < result.Size(); ++f) {
    int64_t position = 0;
    for (int k = 0; k < N; ++k) {
      uint64_t i = k != axis ? index[k] : (repeat ? index[k] / count : index[k] % d);
      position += static_cast<int64_t>(i) * shape_.Stride(k);
    }
    out[f] = source[position];
    for (int k = N - 1; k >= 0 && ++index[k] == dims[k]; --k) index[k] = 0;
  }
}

template <class T, int N>
template <int M>
NdArray<T, M> NdArray<T, N>::Reshape(const std::array<uint64_t, M>& dims) const {
  NDim<M> target(dims);
  uint64_t size = 0;
  if (!CheckedSize(dims, size) || size != Size()) {
    ErrorRecord err;
    SetError(err, kErrorINVALID, "Cannot reshape NdArray of size %zu to new shape %s",
             static_cast<size_t>(Size()), target.Text(kDims).c_str());
    return NdArray<T, M>::Failed(err);
  }
  if (ShareLayout(shape_, target)) return NdArray<T, M>(target, data_, extent_);
  NdArray copy = Clone();
  if (copy.error_.Failed()) return NdArray<T, M>::Failed(copy.error_);
  return copy.template Reshape<M>(dims);
}

template <class T, int N>
NdArray<T, 1> NdArray<T, N>::Flatten() const {
  return Reshape<1>({Size()});
}

template <class T, int N>
NdArray<T, N> NdArray<T, N>::Transpose() const {
  NDim<N> shape = shape_;
  for (int k = 0; k < N / 2; ++k) shape.SwapAxes(k, N - 1 - k);
  return NdArray(shape, data_, extent_);
}

template <class T, int N>
bool NdArray<T, N>::Item(uint64_t flat, T& value) const {
  if (flat >= Size()) {
    ReportIndexOutOfBounds(error_, static_cast<int64_t>(flat), 0, Size());
    return false;
  }
  if (!CheckData()) return false;
  value = data_.Get()[shape_.PositionOfFlat(flat)];
  ClearError(error_);
  return true;
}

template <class T, int N>
bool NdArray<T, N>::SetItem(uint64_t flat, T value) const {
  if (flat >= Size()) {
    ReportIndexOutOfBounds(error_, static_cast<int64_t>(flat), 0, Size());
    return false;
  }
  if (!CheckData()) return false;
  data_.Get()[shape_.PositionOfFlat(flat)] = value;
  ClearError(error_);
  return true;
}

template <class T, int N>
bool NdArray<T, N>::Fill(T value) const {
  if (!CheckData()) return false;
  ForEachRun([value](T* first, int64_t stride, uint64_t count) {
    for (uint64_t k = 0; k < count; ++k) first[static_cast<int64_t>(k) * stride] = value;
  });
  ClearError(error_);
  return true;
}

template <class T, int N>
NdArray<T, N> NdArray<T, N>::Clone() const {
  if (!CheckData()) return Failed(error_);
  NdArray result = Allocate(shape_.Dims());
  if (result.error_.Failed()) return result;
  T* out = result.data_.Get();
  ForEachRun([&out](const T* first, int64_t stride, uint64_t count) {
    if (stride == 1) {
      out = std::copy_n(first, count, out);
      return;
    }
    for (uint64_t k = 0; k < count; ++k) *out++ = first[static_cast<int64_t>(k) * stride];
  });
  return result;
}

template <class T, int N>
NdArray<T, N> NdArray<T, N>::View(const IView& view) const {
  ErrorRecord err;
  Axes axes;
  if (!ApplyIndexList(shape_.ToAxes(), view, axes, err)) return Failed(err);
  NDim<N> shape = NDim<N>::FromAxes(PadLeading(axes, N - axes.count));
  if (shape.Size() > 0 && !CheckData()) return Failed(error_);
  if (!Reaches(shape)) {
    // Only slices that start at or beyond the end of an axis get here: the
    // slice rules keep such starts, and the array refuses to read past its
    // data.
    SetError(err, kErrorINVALID, "View of shape %s reaches outside the data of NdArray of shape %s",
             shape.Text(kDims).c_str(), shape_.Text(kDims).c_str());
    return Failed(err);
  }
  return NdArray(shape, data_, extent_);
}

template <class T, int N>
NdArray<T, 1> NdArray<T, N>::View1(const IView& view) const {
  NdArray viewed = View(view);
  if (viewed.error_.Failed()) return NdArray<T, 1>::Failed(viewed.error_);
  return viewed.Flatten();
}

template <class T, int N>
NdArray<T, 1> NdArray<T, N>::Take(const std::vector<int64_t>& indices) const {
  ErrorRecord err;
  const auto size = static_cast<int64_t>(Size());
  for (int64_t index : indices) {
    if (index < -size || index >= size) {
      ReportIndexOutOfBounds(err, index, 0, Size());
      return NdArray<T, 1>::Failed(err);
    }
  }
  if (!CheckData()) return NdArray<T, 1>::Failed(error_);
  NdArray<T, 1> result = NdArray<T, 1>::Allocate({indices.size()});
  if (result.error_.Failed()) return result;
  for (size_t k = 0; k < indices.size(); ++k) {
    int64_t flat = indices[k] < 0 ? indices[k] + size : indices[k];
    result.data_.Get()[k] = data_.Get()[shape_.PositionOfFlat(static_cast<uint64_t>(flat))];
  }
  return result;
}

template <class T, int N>
bool NdArray<T, N>::ToString(int what, std::string& text) const {
  text.clear();
  if (what == 0) {
    WriteText(text);
    return true;
  }
  if (what < 1 || what > 3) return false;
  text = shape_.Text(what - 1);
  return true;
}

template <class T, int N>
void NdArray<T, N>::WriteText(std::string& text) const {
  if (Size() > 0 && data_.Get() == nullptr) {
    text = "(no data)";
    return;
  }
  const bool elide = Size() > kFullPrintLimit;
  const T* base = data_.Get();
  // Nested brackets, one level per axis: "[[1, 2], [3, 4]]".
  auto append = [&](auto& self, int axis, int64_t position) -> void {
    if (axis == N) {
      AppendNumber(text, base[position]);
      return;
    }
    const uint64_t d = shape_.Dim(axis);
    text += '[';
    for (uint64_t i = 0; i < d; ++i) {
      if (i > 0) text += ", ";
      if (elide && d > 6 && i == 3) {
        text += "...";
        i = d - 4;
        continue;
      }
      self(self, axis + 1, position + static_cast<int64_t>(i) * shape_.Stride(axis));
    }
    text += ']';
  };
  append(append, 0, Size() > 0 ? shape_.Start() : 0);
}

#define ZELQ_INSTANTIATE_NDARRAY(type, n)                                                         \
  template class NdArray<type, n>;                                                                \
  template NdArray<type, 0> NdArray<type, n>::Reshape<0>(const std::array<uint64_t, 0>&) const; \
  template NdArray<type, 1> NdArray<type, n>::Reshape<1>(const std::array<uint64_t, 1>&) const; \
  template NdArray<type, 2> NdArray<type, n>::Reshape<2>(const std::array<uint64_t, 2>&) const; \
  template NdArray<type, 3> NdArray<type, n>::Reshape<3>(const std::array<uint64_t, 3>&) const;
ZELQ_NDARRAY_PAIR_LIST(ZELQ_INSTANTIATE_NDARRAY)
#undef ZELQ_INSTANTIATE_NDARRAY

}  // namespace Zelq
