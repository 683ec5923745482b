// Zelq::NDim<N>: sizes, strides and offsets of an N-axis object (N = 0..3).
//
// Besides the N sizes a shape keeps a stack of N+1 axis records: record 0 is
// the base record (stride 1, base offset), record k belongs to axis N-k. The
// storage position of element (i0, ..., iN-1) is sum(ik * stride(k)) plus the
// offsets of all records. New shapes are row-major with zero offsets.
//
//   NDim<3> s({2, 3, 4});   // strides (12, 4, 1)
//   s.Text(kDims);          // "(2, 3, 4)"
#ifndef ZELQ_MATRIX_NDIM_H_
#define ZELQ_MATRIX_NDIM_H_

#include <array>
#include <cstdint>
#include <string>
#include <utility>

namespace Zelq {

struct AxisRecord {
  int64_t position = 0;
  int64_t stride = 1;
  int64_t offset = 0;
  int32_t flag = 0;
  int64_t extra = 0;
};

// Selector of the text forms of a shape.
enum ShapeText { kDims = 0, kStrides = 1, kOffsets = 2 };

// An axis list whose length is known only at run time: the form in which the
// index rules work before the result is given its static number of axes.
struct Axes {
  static constexpr int kMax = 3;
  int count = 0;
  uint64_t dims[kMax] = {};
  int64_t strides[kMax] = {};
  int64_t offsets[kMax] = {};
  int64_t base = 0;
};

template <int N>
class NDim {
  static_assert(N >= 0 && N <= 3, "shapes have 0 to 3 axes");

 public:
  // All sizes 0 (a 0-axis shape has its one element).
  NDim() { SetRowMajor(); }
  explicit NDim(const std::array<uint64_t, N>& dims) : dims_(dims) { SetRowMajor(); }

  uint64_t Dim(int axis) const { return ValidAxis(axis) ? dims_[axis] : 0; }
  int64_t Stride(int axis) const { return ValidAxis(axis) ? Rec(axis).stride : 1; }
  int64_t Offset(int axis) const { return ValidAxis(axis) ? Rec(axis).offset : records_[0].offset; }
  int64_t BaseOffset() const { return records_[0].offset; }
  const std::array<uint64_t, N>& Dims() const { return dims_; }
  // Record 0 is the base record; record k (1..N) belongs to axis N-k.
  const AxisRecord& Record(int k) const { return records_[k]; }
  AxisRecord& Record(int k) { return records_[k]; }
  // The record of an axis (the base record for N = 0).
  const AxisRecord& AxisZeroRecord() const { return records_[N]; }

  void SetAxis(int axis, uint64_t dim, int64_t stride, int64_t offset) {
    dims_[axis] = dim;
    Rec(axis).stride = stride;
    Rec(axis).offset = offset;
  }
  void SetBaseOffset(int64_t offset) { records_[0].offset = offset; }
  // Exchanges the sizes and the axis records of two axes.
  void SwapAxes(int a, int b) {
    std::swap(dims_[a], dims_[b]);
    std::swap(Rec(a), Rec(b));
  }

  // Product of the sizes (1 for N = 0).
  uint64_t Size() const;
  // Position of element (0, ..., 0): the sum of all offsets.
  int64_t Start() const;
  // Storage position of the element at a flat row-major index (< Size()).
  int64_t PositionOfFlat(uint64_t flat) const;
  // True when the strides are row-major for the sizes (size-1 axes ignored).
  bool IsContiguous() const;
  bool SameDims(const NDim& other) const { return dims_ == other.dims_; }

  // "(a, b, c)" of the sizes, strides or offsets, joined by `separator`.
  std::string Text(int what, const char* separator = ", ") const;

  Axes ToAxes() const;
  // Takes the axes of `axes`, which must hold exactly N of them.
  static NDim FromAxes(const Axes& axes);

  static bool ValidAxis(int axis) { return axis >= 0 && axis < N; }

 private:
  AxisRecord& Rec(int axis) { return records_[N - axis]; }
  const AxisRecord& Rec(int axis) const { return records_[N - axis]; }
  void SetRowMajor();

  std::array<uint64_t, N> dims_{};
  std::array<AxisRecord, N + 1> records_{};
};

// "(a, b)" of unsigned or signed numbers; "()" for none.
std::string JoinDims(const uint64_t* values, int count, const char* separator = ", ");
std::string JoinSigned(const int64_t* values, int count, const char* separator = ", ");
// Text form of the sizes in an axis list.
std::string AxesText(const Axes& axes);

}  // namespace Zelq

#endif  // ZELQ_MATRIX_NDIM_H_
