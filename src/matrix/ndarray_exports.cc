// The exported creation functions of the N-dimensional arrays, generated from
// the export list.
#include "zelq/zelqcpp_ndarray_exports.h"

#include <array>

#include "matrix/zelq_ndarray.h"

namespace {

// Checks the sizes given to a factory: none negative, product addressable.
template <int N>
bool CheckSizes(const std::array<int, N>& given, std::array<uint64_t, N>& dims, uint64_t& count,
                Zelq::ErrorRecord& err) {
  count = 1;
  for (int axis = 0; axis < N; ++axis) {
    if (given[axis] < 0) {
      Zelq::SetError(err, Zelq::kErrorINVALID, "Dimension size at axis %d is negative (%d)", axis,
                     given[axis]);
      return false;
    }
    dims[axis] = static_cast<uint64_t>(given[axis]);
    if (__builtin_mul_overflow(count, dims[axis], &count) || count > PTRDIFF_MAX / sizeof(double)) {
      Zelq::SetError(err, Zelq::kErrorINVALID, "Shape %s has too many elements",
                     Zelq::JoinDims(dims.data(), axis + 1).c_str());
      return false;
    }
  }
  return true;
}

// WithData (take_over) hands the buffer to shared storage counting its
// elements; WithExData records count 0, which never frees. A buffer given
// with invalid sizes is still taken over, and released with delete[].
template <class T, int N>
Zelq::INdArray<T, N>* MakeArray(T* data, const std::array<int, N>& given, bool take_over) {
  Zelq::ErrorRecord err;
  std::array<uint64_t, N> dims{};
  uint64_t count = 0;
  const bool valid = CheckSizes<N>(given, dims, count, err);
  Zelq::Shared<T> storage;
  if (data != nullptr) {
    storage = take_over ? (valid ? Zelq::Shared<T>::Make(data, count, 0) : Zelq::Shared<T>::Make(data, 1, 1))
                        : Zelq::Shared<T>::Make(data, 0, 0);
  }
  if (!valid) return new ZelqNdArray<T, N>(Zelq::NdArray<T, N>::Failed(err));
  uint64_t extent = data != nullptr ? count : 0;
  return new ZelqNdArray<T, N>(Zelq::NdArray<T, N>(Zelq::NDim<N>(dims), std::move(storage), extent));
}

}  // namespace

#define ZELQ_NDARRAY_EXPORT_DEF(word, type, n)                                                 \
  Zelq::INdArray<type, n>* CreateNdArray##word##n##WithData(type* data,                        \
                                                            ZELQ_NDARRAY_DIM_PARAMS_##n) {     \
    return MakeArray<type, n>(data, {ZELQ_NDARRAY_DIM_ARGS_##n}, true);                        \
  }                                                                                            \
  Zelq::INdArray<type, n>* CreateNdArray##word##n##WithExData(type* data,                      \
                                                              ZELQ_NDARRAY_DIM_PARAMS_##n) {   \
    return MakeArray<type, n>(data, {ZELQ_NDARRAY_DIM_ARGS_##n}, false);                       \
  }

extern "C" {
ZELQ_NDARRAY_EXPORT_LIST(ZELQ_NDARRAY_EXPORT_DEF)
}
