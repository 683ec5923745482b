// Interface of the N-dimensional arrays: Zelq::INdArray<T, N>.
//
// T is char, double, int or long long; N is 0..3. The slot order below is the
// library's binary interface. Operations never throw: a failing operation
// returns an array (or, for Item/SetItem/Fill, leaves this one) whose
// GetErrorCode() is non-zero and whose GetErrorMessage() says why. Every
// returned object is new and owned by the caller.
#ifndef ZELQ_ZELQCPP_NDARRAY_IFACE_H_
#define ZELQ_ZELQCPP_NDARRAY_IFACE_H_

#include <cstddef>

#include "zelq/zelqcpp_ndim_iface.h"

namespace Zelq {

template <class T, int N>
class INdArray {
 public:
  virtual ~INdArray() = default;
  virtual int GetNDim() const = 0;
  virtual size_t GetDim(int axis) const = 0;
  virtual size_t GetSize() const = 0;
  virtual INDim<N>* GetShape() const = 0;
  // Same elements in a new shape of equal size; shares the data when the
  // elements can be reached by strides, copies otherwise.
  virtual INdArray<T, 1>* Reshape(const INDim<1>* shape) const = 0;
  virtual INdArray<T, 2>* Reshape(const INDim<2>* shape) const = 0;
  virtual INdArray<T, 3>* Reshape(const INDim<3>* shape) const = 0;
  virtual INdArray<T, 1>* Flatten() const = 0;
  // Product of all elements as a 0-axis array; 0 for an empty array.
  virtual INdArray<T, 0>* Prod() const = 0;
  virtual INdArray<T, N>* Repeat(int count, int axis) const = 0;
  virtual INdArray<T, N>* Tile(int count, int axis) const = 0;
  virtual INdArray<T, 0>* Sum() const = 0;
  // Axis order reversed; shares the data.
  virtual INdArray<T, N>* Transpose() const = 0;
  // Element at a flat row-major index; 0 and an error when out of range.
  virtual T Item(size_t index) = 0;
  // The indexed elements, sharing the data. Axes removed by scalar indices
  // come back as leading axes of size 1, so the result keeps N axes.
  virtual INdArray<T, N>* GetView(const IView* view) const = 0;
  // Elements at the flat row-major indices held by `indices` (negative
  // entries count from the end).
  virtual INdArray<T, 1>* Take(const INdArray<int, 1>* indices) const = 0;
  // The indexed elements as one axis (shared when reachable by one stride).
  virtual INdArray<T, 1>* GetView1(const IView* view) const = 0;
  virtual void SetItem(size_t index, T value) = 0;
  virtual void Fill(T value) = 0;
  // Own row-major copy of the elements.
  virtual INdArray<T, N>* Clone() const = 0;
  // Elements (what = 0), sizes (1), strides (2) or offsets (3). Valid until
  // the next call on this object.
  virtual const char* ToString(int what) = 0;
  virtual int GetErrorCode() const = 0;
  virtual const char* GetErrorMessage() const = 0;
};

}  // namespace Zelq

#endif  // ZELQ_ZELQCPP_NDARRAY_IFACE_H_
