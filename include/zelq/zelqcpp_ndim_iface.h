// Interfaces of shapes (Zelq::INDim<N>) and index lists (Zelq::IView).
//
// These abstract classes are the library's binary interface: the order of
// their virtual operations must not change. Objects are owned by the caller
// and released through the virtual destructor.
#ifndef ZELQ_ZELQCPP_NDIM_IFACE_H_
#define ZELQ_ZELQCPP_NDIM_IFACE_H_

#include <cstddef>
#include <cstdint>

namespace Zelq {

class Indexing;

// Shape of an N-axis object (N = 0..3): sizes, strides and offsets.
template <int N>
class INDim {
 public:
  virtual ~INDim() = default;
  // Address of the object's own shape record; meaningful to the library only.
  virtual const void* GetImpl() const = 0;
  // Size of an axis; 0 outside 0..N-1.
  virtual size_t GetDim(int axis) const = 0;
  // Product of all sizes; 1 for N = 0.
  virtual size_t GetSize() const = 0;
  // Stride of an axis; 1 outside 0..N-1.
  virtual int64_t GetStride(int axis) const = 0;
  // Offset of an axis; the base offset outside 0..N-1.
  virtual int64_t GetOffset(int axis) const = 0;
  // New shape object owning a copy.
  virtual INDim<N>* Clone() const = 0;
  // New row-major shape whose every axis has size n.
  virtual INDim<N>* CreateUniform(size_t n) const = 0;
  // "(2, 3, 4)": sizes (what = 0), strides (1) or offsets (2). Valid until
  // the next call on this object.
  virtual const char* ToString(int what) = 0;
  // All sizes equal.
  virtual bool IsSameShape(const INDim<N>* other) const = 0;
  // All sizes equal, and stride and offset of axis 0 equal.
  virtual bool IsSameView(const INDim<N>* other) const = 0;
  // Flag and extra count of the axis-0 record (both 0 unless set internally).
  virtual int32_t GetFlag() const = 0;
  virtual int64_t GetExtra() const = 0;
  virtual int GetErrorCode() const = 0;
  virtual const char* GetErrorMessage() const = 0;
};

// An index list, read by the view operations of the arrays. The library reads
// it only through these three operations, so either side may implement it
// (the header layer's Zelq::View does).
class IView {
 public:
  virtual ~IView() = default;
  // Number of index objects in the list.
  virtual int GetCount() const = 0;
  // The k-th index object, null outside 0..GetCount()-1. Valid while the
  // list is alive and unchanged.
  virtual const Indexing* GetIndex(int k) const = 0;
  // Appends a copy of `index` (Full, Slice, Scalar; any other type is kept
  // as an entry that drops its axis). A null index is ignored.
  virtual void AddIndex(const Indexing* index) = 0;
};

}  // namespace Zelq

#endif  // ZELQ_ZELQCPP_NDIM_IFACE_H_
