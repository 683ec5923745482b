// Zelq::NdArray<T, N>: the library's dense array of numbers (N = 0..3 axes,
// T = char, double, int, long long).
//
// An array is a shape over shared element storage: views, transposes and
// reshapes share the storage of the array they come from, so writes through
// one are seen by all. Every whole-array operation walks the elements in flat
// row-major order through the strides and offsets, so it is correct on any
// view. Operations never throw; a failing one returns an array (or leaves
// this one) with a non-zero error code.
//
//   NdArray<double, 2> a = ...;               // (2, 3)
//   NdArray<double, 2> t = a.Transpose();     // (3, 2), same storage
//   NdArray<double, 0> total = t.Sum();
//
// The header layer offers applications a value class of the same name over
// Zelq::INdArray. The two never meet: library sources do not include the
// header layer, and its classes are hidden inside the shared library.
#ifndef ZELQ_MATRIX_NDARRAY_H_
#define ZELQ_MATRIX_NDARRAY_H_

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "frame/error_record.h"
#include "frame/shared_block.h"
#include "matrix/ndim.h"

namespace Zelq {

class IView;

template <class T, int N>
class NdArray {
 public:
  // An array without storage whose sizes are all 0.
  NdArray() = default;
  // `extent` is the number of storage positions the data covers; views may
  // reach only positions 0..extent-1.
  NdArray(const NDim<N>& shape, Shared<T> data, uint64_t extent)
      : shape_(shape), data_(std::move(data)), extent_(extent) {}

  // A new row-major array with its own, uninitialised storage; on allocation
  // failure the result carries code 1.
  static NdArray Allocate(const std::array<uint64_t, N>& dims);
  // An array that carries `error` and has no storage.
  static NdArray Failed(const ErrorRecord& error);

  const NDim<N>& Shape() const { return shape_; }
  uint64_t Size() const { return shape_.Size(); }
  const Shared<T>& Data() const { return data_; }
  uint64_t Extent() const { return extent_; }
  ErrorRecord& Error() const { return error_; }

  NdArray<T, 0> Sum() const;
  // Product of the elements; 0 for an empty array.
  NdArray<T, 0> Prod() const;
  // Each element repeated `count` times along `axis`.
  NdArray Repeat(int count, int axis) const;
  // The whole axis repeated `count` times.
  NdArray Tile(int count, int axis) const;
  // Same elements in shape `dims`; shares the storage when strides can reach
  // the elements in the new order, copies otherwise.
  template <int M>
  NdArray<T, M> Reshape(const std::array<uint64_t, M>& dims) const;
  NdArray<T, 1> Flatten() const;
  // Axes k and N-1-k exchanged; shares the storage. Unchanged for N < 2.
  NdArray Transpose() const;
  // Element at a flat row-major index. On failure records code 3 on this
  // array and leaves `value` alone.
  bool Item(uint64_t flat, T& value) const;
  bool SetItem(uint64_t flat, T value) const;
  bool Fill(T value) const;
  NdArray Clone() const;
  // The view of an index list, sharing the storage. Axes removed by scalar
  // indices come back as leading axes of size 1.
  NdArray View(const IView& view) const;
  // The indexed elements on one axis.
  NdArray<T, 1> View1(const IView& view) const;
  // Elements at flat row-major indices (negative ones count from the end).
  NdArray<T, 1> Take(const std::vector<int64_t>& indices) const;
  // Elements (0), sizes (1), strides (2) or offsets (3); false for another
  // selector.
  bool ToString(int what, std::string& text) const;

  // The element walk: calls run(first, stride, count) for every run of the
  // last axis, in flat row-major order; element k of a run is first[k*stride].
  template <class F>
  void ForEachRun(F run) const;

 private:
  template <class, int>
  friend class NdArray;

  // False (code 3 on `error_`) when elements are needed but there is no data.
  bool CheckData() const;
  // Whether every position the shape reaches lies inside the storage.
  bool Reaches(const NDim<N>& shape) const;
  NdArray Expand(int count, int axis, bool repeat) const;
  void CopyExpanded(NdArray& result, int axis, uint64_t count, bool repeat) const;
  void WriteText(std::string& text) const;

  NDim<N> shape_;
  Shared<T> data_;
  uint64_t extent_ = 0;
  // The array's own record; mutable because failed reads record on it.
  mutable ErrorRecord error_;
};

template <class T, int N>
template <class F>
void NdArray<T, N>::ForEachRun(F run) const {
  if (Size() == 0 || data_.Get() == nullptr) return;
  T* first = data_.Get() + shape_.Start();
  if constexpr (N == 0) {
    run(first, int64_t{1}, uint64_t{1});
  } else {
    // An odometer over the outer axes visits the same positions in the same
    // order as turning each flat index into indices, without a division per
    // element.
    const uint64_t inner = shape_.Dim(N - 1);
    const int64_t inner_stride = shape_.Stride(N - 1);
    std::array<uint64_t, N> index{};
    int64_t position = 0;
    for (;;) {
      run(first + position, inner_stride, inner);
      int axis = N - 2;
      for (; axis >= 0; --axis) {
        position += shape_.Stride(axis);
        if (++index[axis] < shape_.Dim(axis)) break;
        position -= shape_.Stride(axis) * static_cast<int64_t>(index[axis]);
        index[axis] = 0;
      }
      if (axis < 0) return;
    }
  }
}

}  // namespace Zelq

#endif  // ZELQ_MATRIX_NDARRAY_H_
