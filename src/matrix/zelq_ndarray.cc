#include "matrix/zelq_ndarray.h"

#include <utility>

#include "matrix/matrix_family.h"
#include "matrix/zelq_ndim.h"

namespace {

// A new handle owning a new core made of `value`.
template <class T, int M>
Zelq::INdArray<T, M>* Wrap(Zelq::NdArray<T, M> value) {
  return new ZelqNdArray<T, M>(std::move(value));
}

// A new handle on an array that carries code 3 and `message`.
template <class T, int M>
Zelq::INdArray<T, M>* Invalid(const char* message) {
  Zelq::ErrorRecord err;
  Zelq::SetError(err, Zelq::kErrorINVALID, "%s", message);
  return Wrap(Zelq::NdArray<T, M>::Failed(err));
}

}  // namespace

template <class T, int N>
ZelqNdArray<T, N>::ZelqNdArray(Zelq::NdArray<T, N> value)
    : core_(Zelq::Shared<Zelq::NdArray<T, N>>::Wrap(new Zelq::NdArray<T, N>(std::move(value)))) {}

template <class T, int N>
Zelq::INDim<N>* ZelqNdArray<T, N>::GetShape() const {
  return new ZelqNDim<N>(Value().Shape());
}

template <class T, int N>
template <int M>
Zelq::INdArray<T, M>* ZelqNdArray<T, N>::ReshapeTo(const Zelq::INDim<M>* shape) const {
  if (shape == nullptr) return Invalid<T, M>("Shape to reshape to is null");
  if (shape->GetErrorCode() != 0) {  // a failed shape passes its failure on
    Zelq::ErrorRecord err;
    Zelq::SetErrorText(err, shape->GetErrorCode(), shape->GetErrorMessage());
    return Wrap(Zelq::NdArray<T, M>::Failed(err));
  }
  std::array<uint64_t, M> dims{};
  for (int axis = 0; axis < M; ++axis) dims[axis] = shape->GetDim(axis);
  return Wrap(Value().template Reshape<M>(dims));
}

template <class T, int N>
Zelq::INdArray<T, 1>* ZelqNdArray<T, N>::Reshape(const Zelq::INDim<1>* shape) const {
  return ReshapeTo<1>(shape);
}

template <class T, int N>
Zelq::INdArray<T, 2>* ZelqNdArray<T, N>::Reshape(const Zelq::INDim<2>* shape) const {
  return ReshapeTo<2>(shape);
}

template <class T, int N>
Zelq::INdArray<T, 3>* ZelqNdArray<T, N>::Reshape(const Zelq::INDim<3>* shape) const {
  return ReshapeTo<3>(shape);
}

template <class T, int N>
Zelq::INdArray<T, 1>* ZelqNdArray<T, N>::Flatten() const {
  return Wrap(Value().Flatten());
}

template <class T, int N>
Zelq::INdArray<T, 0>* ZelqNdArray<T, N>::Prod() const {
  return Wrap(Value().Prod());
}

template <class T, int N>
Zelq::INdArray<T, N>* ZelqNdArray<T, N>::Repeat(int count, int axis) const {
  return Wrap(Value().Repeat(count, axis));
}

template <class T, int N>
Zelq::INdArray<T, N>* ZelqNdArray<T, N>::Tile(int count, int axis) const {
  return Wrap(Value().Tile(count, axis));
}

template <class T, int N>
Zelq::INdArray<T, 0>* ZelqNdArray<T, N>::Sum() const {
  return Wrap(Value().Sum());
}

template <class T, int N>
Zelq::INdArray<T, N>* ZelqNdArray<T, N>::Transpose() const {
  return Wrap(Value().Transpose());
}

template <class T, int N>
T ZelqNdArray<T, N>::Item(size_t index) {
  T value{};
  Value().Item(index, value);
  return value;
}

template <class T, int N>
Zelq::INdArray<T, N>* ZelqNdArray<T, N>::GetView(const Zelq::IView* view) const {
  if (view == nullptr) return Invalid<T, N>("View is null");
  return Wrap(Value().View(*view));
}

template <class T, int N>
Zelq::INdArray<T, 1>* ZelqNdArray<T, N>::Take(const Zelq::INdArray<int, 1>* indices) const {
  if (indices == nullptr) return Invalid<T, 1>("Index array is null");
  auto* source = const_cast<Zelq::INdArray<int, 1>*>(indices);
  std::vector<int64_t> flat(source->GetSize());
  for (size_t k = 0; k < flat.size(); ++k) {
    flat[k] = source->Item(k);
    if (source->GetErrorCode() != 0) {  // e.g. an index array without data
      Zelq::ErrorRecord err;
      Zelq::SetErrorText(err, source->GetErrorCode(), source->GetErrorMessage());
      return Wrap(Zelq::NdArray<T, 1>::Failed(err));
    }
  }
  return Wrap(Value().Take(flat));
}

template <class T, int N>
Zelq::INdArray<T, 1>* ZelqNdArray<T, N>::GetView1(const Zelq::IView* view) const {
  if (view == nullptr) return Invalid<T, 1>("View is null");
  return Wrap(Value().View1(*view));
}

template <class T, int N>
void ZelqNdArray<T, N>::SetItem(size_t index, T value) {
  Value().SetItem(index, value);
}

template <class T, int N>
void ZelqNdArray<T, N>::Fill(T value) {
  Value().Fill(value);
}

template <class T, int N>
Zelq::INdArray<T, N>* ZelqNdArray<T, N>::Clone() const {
  return Wrap(Value().Clone());
}

template <class T, int N>
const char* ZelqNdArray<T, N>::ToString(int what) {
  if (Value().ToString(what, text_)) {
    Zelq::ClearError(Value().Error());
  } else {
    Zelq::SetError(Value().Error(), Zelq::kErrorINVALID,
                   "Text selector %d is not 0 (elements), 1 (sizes), 2 (strides) or 3 (offsets)", what);
  }
  return text_.c_str();
}

#define ZELQ_INSTANTIATE_ZELQ_NDARRAY(type, n) template class ZelqNdArray<type, n>;
ZELQ_NDARRAY_PAIR_LIST(ZELQ_INSTANTIATE_ZELQ_NDARRAY)
#undef ZELQ_INSTANTIATE_ZELQ_NDARRAY
