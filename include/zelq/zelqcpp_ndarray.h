// Header layer of the N-dimensional arrays: Zelq::NdArray<T, N>, Zelq::NDim<N>
// and Zelq::View, value classes over the library's interfaces.
//
// Copies of a value share one library object. Every call checks the object's
// error record and throws Zelq::Exception with the recorded code and message
// unchanged. Views, reshapes and transposes share the elements.
//
//   double* p = new double[6]{1, 2, 3, 4, 5, 6};
//   auto a = Zelq::NdArray<double, 2>::Adopt(p, 2, 3);   // takes p over
//   auto col = a(Zelq::Slice(0, 2), -1);                  // (2): 3, 6
//   auto t = a.Transpose().Reshape(6);                    // 1, 4, 2, 5, 3, 6
//   double total = a(Zelq::Full(), Zelq::Slice().Step(-1)).Sum();  // 21
//
// These classes are the application's side of the boundary. The library has
// internal classes of the same names; the two never meet in one translation
// unit or program, and what crosses the boundary is only the interfaces and
// the index objects of zelqcpp_indexing.h.
#ifndef ZELQ_ZELQCPP_NDARRAY_H_
#define ZELQ_ZELQCPP_NDARRAY_H_

#include <array>
#include <cstddef>
#include <cstring>
#include <memory>
#include <string>
#include <tuple>
#include <type_traits>
#include <utility>
#include <vector>

#include "zelq/zelqcpp_check.h"
#include "zelq/zelqcpp_exception.h"
#include "zelq/zelqcpp_indexing.h"
#include "zelq/zelqcpp_ndarray_exports.h"

namespace Zelq {

namespace detail {

// A shape given by sizes on the application's side: row-major, no offsets.
template <int N>
class SizesShape final : public INDim<N> {
 public:
  explicit SizesShape(const std::array<size_t, N>& dims) : dims_(dims) {}
  const void* GetImpl() const override { return nullptr; }
  size_t GetDim(int axis) const override { return axis >= 0 && axis < N ? dims_[axis] : 0; }
  size_t GetSize() const override {
    size_t size = 1;
    for (size_t d : dims_) size *= d;
    return size;
  }
  int64_t GetStride(int axis) const override {
    int64_t stride = 1;
    for (int k = N - 1; k > axis && axis >= 0; --k) stride *= static_cast<int64_t>(dims_[k]);
    return stride;
  }
  int64_t GetOffset(int) const override { return 0; }
  INDim<N>* Clone() const override { return new SizesShape(dims_); }
  INDim<N>* CreateUniform(size_t n) const override {
    std::array<size_t, N> dims;
    dims.fill(n);
    return new SizesShape(dims);
  }
  const char* ToString(int what) override {
    text_ = "(";
    for (int k = 0; k < N; ++k) {
      if (k > 0) text_ += ", ";
      text_ += what == 0 ? std::to_string(dims_[k]) : std::to_string(what == 1 ? GetStride(k) : 0);
    }
    text_ += ")";
    return text_.c_str();
  }
  bool IsSameShape(const INDim<N>* other) const override {
    for (int k = 0; k < N; ++k) {
      if (other == nullptr || other->GetDim(k) != dims_[k]) return false;
    }
    return other != nullptr;
  }
  bool IsSameView(const INDim<N>* other) const override {
    return IsSameShape(other) && other->GetStride(0) == GetStride(0) && other->GetOffset(0) == 0;
  }
  int32_t GetFlag() const override { return 0; }
  int64_t GetExtra() const override { return 0; }
  int GetErrorCode() const override { return 0; }
  const char* GetErrorMessage() const override { return nullptr; }

 private:
  std::array<size_t, N> dims_;
  std::string text_;
};

// The exported factory of each (element type, number of axes), from the
// export list; kExported is false for the pairs without a factory.
template <class T, int N>
struct Factory {
  static constexpr bool kExported = false;
};

#define ZELQ_NDARRAY_UNPACK_1(d) d[0]
#define ZELQ_NDARRAY_UNPACK_2(d) d[0], d[1]
#define ZELQ_NDARRAY_UNPACK_3(d) d[0], d[1], d[2]
#define ZELQ_NDARRAY_FACTORY_TRAIT(word, type, n)                                       \
  template <>                                                                           \
  struct Factory<type, n> {                                                             \
    static constexpr bool kExported = true;                                             \
    static INdArray<type, n>* WithData(type* data, const std::array<int, n>& d) {       \
      return ::CreateNdArray##word##n##WithData(data, ZELQ_NDARRAY_UNPACK_##n(d));      \
    }                                                                                   \
    static INdArray<type, n>* WithExData(type* data, const std::array<int, n>& d) {     \
      return ::CreateNdArray##word##n##WithExData(data, ZELQ_NDARRAY_UNPACK_##n(d));    \
    }                                                                                   \
  };
ZELQ_NDARRAY_EXPORT_LIST(ZELQ_NDARRAY_FACTORY_TRAIT)
#undef ZELQ_NDARRAY_FACTORY_TRAIT

// Integers given as indices stand for Zelq::Scalar.
template <class I>
auto ToIndex(const I& index) {
  if constexpr (std::is_integral_v<I>) {
    return Scalar(static_cast<int64_t>(index));
  } else {
    static_assert(std::is_base_of_v<Indexing, I>, "an index is an integer or a Zelq::Indexing");
    return index;
  }
}

// 1 for the index kinds that keep their axis (Full, Slice).
template <class I>
constexpr int kKeepsAxis = std::is_same_v<I, Full> || std::is_same_v<I, Slice> ? 1 : 0;

}  // namespace detail

// An index list built on the application's side. The library reads it
// through Zelq::IView; entries are copies of the index objects given.
//
//   Zelq::View v(Zelq::Slice(1, 3), Zelq::Scalar(0));
//   v.AddIndex(&extra);
class View final : public IView {
 public:
  View() = default;
  template <class... I>
  explicit View(const I&... indices) {
    (Append(detail::ToIndex(indices)), ...);
  }

  int GetCount() const override { return static_cast<int>(list_.size()); }
  const Indexing* GetIndex(int k) const override {
    return k >= 0 && k < GetCount() ? list_[static_cast<size_t>(k)].get() : nullptr;
  }
  void AddIndex(const Indexing* index) override {
    if (index == nullptr) return;
    const char* name = index->TypeName();
    if (name != nullptr && std::strcmp(name, "Full") == 0) return Append(Full());
    if (name != nullptr && std::strcmp(name, "Slice") == 0) return Append(*static_cast<const Slice*>(index));
    if (name != nullptr && std::strcmp(name, "Scalar") == 0) return Append(*static_cast<const Scalar*>(index));
    list_.push_back(std::make_shared<Other>(name));
  }

 private:
  // An index of a type the rules do not know: it drops its axis.
  class Other final : public Indexing {
   public:
    explicit Other(const char* name) : name_(name != nullptr ? name : "") {}
    const char* TypeName() const override { return name_.c_str(); }

   private:
    std::string name_;
  };

  template <class I>
  void Append(const I& index) {
    list_.push_back(std::make_shared<I>(index));
  }

  std::vector<std::shared_ptr<const Indexing>> list_;
};

// A shape: sizes, strides and offsets. Made from sizes, or read from an array.
//
//   Zelq::NDim<2> s(2, 3);   s.ToString();  // "(2, 3)"
template <int N>
class NDim {
 public:
  template <class... S, class = std::enable_if_t<sizeof...(S) == N && (std::is_integral_v<S> && ...)>>
  explicit NDim(S... sizes)
      : shape_(std::make_shared<detail::SizesShape<N>>(std::array<size_t, N>{static_cast<size_t>(sizes)...})) {}
  // Takes ownership of a shape object returned by the library.
  explicit NDim(INDim<N>* raw) : shape_(detail::Own(raw)) {}

  size_t Dim(int axis) const { return shape_->GetDim(axis); }
  size_t Size() const { return shape_->GetSize(); }
  int64_t Stride(int axis) const { return shape_->GetStride(axis); }
  int64_t Offset(int axis) const { return shape_->GetOffset(axis); }
  // "(2, 3)" of the sizes (what = 0), strides (1) or offsets (2).
  std::string ToString(int what = 0) const {
    std::string text = shape_->ToString(what);
    detail::Check(shape_.get());
    return text;
  }
  bool IsSameShape(const NDim& other) const { return shape_->IsSameShape(other.shape_.get()); }
  bool IsSameView(const NDim& other) const { return shape_->IsSameView(other.shape_.get()); }
  const INDim<N>* Get() const { return shape_.get(); }

 private:
  std::shared_ptr<INDim<N>> shape_;
};

// A dense array of T with N axes. Arrays of char and 0-axis arrays come only
// from the library (Sum and Prod return the number itself here).
template <class T, int N>
class NdArray {
  using Factory = detail::Factory<T, N>;

 public:
  // Takes ownership of an array object returned by the library.
  explicit NdArray(INdArray<T, N>* raw) : array_(detail::Own(raw)) {}

  // A new array of the given sizes, every element 0.
  template <class... S, class = std::enable_if_t<sizeof...(S) == N && (std::is_integral_v<S> && ...)>>
  explicit NdArray(S... sizes) : NdArray(Create(nullptr, {static_cast<int>(sizes)...})) {}

  // A new array holding a copy of `values` (row-major) in the given sizes.
  template <class... S>
  static NdArray FromValues(const std::vector<T>& values, S... sizes) {
    return NdArray(Create(&values, {static_cast<int>(sizes)...}));
  }
  // Takes `data` over (allocated with new T[size], or new T for one element).
  template <class... S>
  static NdArray Adopt(T* data, S... sizes) {
    static_assert(Factory::kExported && sizeof...(S) == N, "no factory for this element type and size");
    return NdArray(Factory::WithData(data, {static_cast<int>(sizes)...}));
  }
  // Wraps `data`, which must outlive every array sharing it; never frees it.
  template <class... S>
  static NdArray Wrap(T* data, S... sizes) {
    static_assert(Factory::kExported && sizeof...(S) == N, "no factory for this element type and size");
    return NdArray(Factory::WithExData(data, {static_cast<int>(sizes)...}));
  }

  static constexpr int NDims() { return N; }
  size_t Dim(int axis) const { return array_->GetDim(axis); }
  size_t Size() const { return array_->GetSize(); }
  NDim<N> Shape() const { return NDim<N>(array_->GetShape()); }

  // Same elements in new sizes; a view when strides can reach them.
  template <class... S, class = std::enable_if_t<(std::is_integral_v<S> && ...)>>
  NdArray<T, sizeof...(S)> Reshape(S... sizes) const {
    return Reshape(NDim<sizeof...(S)>(sizes...));
  }
  template <int M>
  NdArray<T, M> Reshape(const NDim<M>& shape) const {
    return NdArray<T, M>(array_->Reshape(shape.Get()));
  }
  NdArray<T, 1> Flatten() const { return NdArray<T, 1>(array_->Flatten()); }
  NdArray Transpose() const { return NdArray(array_->Transpose()); }
  NdArray Repeat(int count, int axis) const { return NdArray(array_->Repeat(count, axis)); }
  NdArray Tile(int count, int axis) const { return NdArray(array_->Tile(count, axis)); }
  NdArray Clone() const { return NdArray(array_->Clone()); }
  T Sum() const { return First(NdArray<T, 0>(array_->Sum())); }
  // 0 for an empty array.
  T Prod() const { return First(NdArray<T, 0>(array_->Prod())); }

  // Element at a flat row-major index.
  T Item(size_t index) const {
    T value = array_->Item(index);
    detail::Check(array_.get());
    return value;
  }
  void SetItem(size_t index, T value) const {
    array_->SetItem(index, value);
    detail::Check(array_.get());
  }
  void Fill(T value) const {
    array_->Fill(value);
    detail::Check(array_.get());
  }
  // Elements at flat row-major indices (negative ones count from the end).
  NdArray<T, 1> Take(std::vector<int> indices) const {
    NdArray<int, 1> list = NdArray<int, 1>::Wrap(indices.data(), indices.size());
    return NdArray<T, 1>(array_->Take(list.Get()));
  }

  // Element at axis indices (negative ones count from the end).
  template <class... I, class = std::enable_if_t<sizeof...(I) == N && (std::is_integral_v<I> && ...)>>
  T At(I... indices) const {
    return Point(indices...).Item(0);
  }
  template <class... I, class = std::enable_if_t<sizeof...(I) == N && (std::is_integral_v<I> && ...)>>
  void Set(T value, I... indices) const {
    Point(indices...).SetItem(0, value);
  }

  // A view: Full and Slice keep their axis, integers and Scalar remove it.
  //   a(Zelq::Slice(0, 3), -1)   a(Zelq::Full(), Zelq::Slice().Step(2))
  template <class... I>
  auto operator()(const I&... indices) const {
    static_assert(sizeof...(I) <= N, "more indices than the array has axes");
    constexpr int M = N - static_cast<int>(sizeof...(I)) + (0 + ... + detail::kKeepsAxis<decltype(detail::ToIndex(indices))>);
    static_assert(M >= 1, "every axis is indexed by a scalar: use At() for one element");
    NdArray viewed = GetView(View(indices...));
    if constexpr (M == N) {
      return viewed;
    } else {
      return viewed.template Reshape<M>(viewed.template LastSizes<M>());
    }
  }
  // The view of an index list built at run time; axes removed by scalars come
  // back as leading axes of size 1.
  NdArray GetView(const IView& view) const { return NdArray(array_->GetView(&view)); }
  NdArray<T, 1> GetView1(const IView& view) const { return NdArray<T, 1>(array_->GetView1(&view)); }

  // Elements (what = 0) as "[[1, 2], [3, 4]]"; sizes (1), strides (2) or
  // offsets (3) as "(2, 2)".
  std::string ToString(int what = 0) const {
    std::string text = array_->ToString(what);
    detail::Check(array_.get());
    return text;
  }

  INdArray<T, N>* Get() const { return array_.get(); }

 private:
  template <class, int>
  friend class NdArray;

  static INdArray<T, N>* Create(const std::vector<T>* values, const std::array<int, N>& sizes) {
    static_assert(Factory::kExported, "no factory for this element type and number of axes");
    size_t size = 1;
    for (int d : sizes) size *= d > 0 ? static_cast<size_t>(d) : 0;
    if (values != nullptr && values->size() != size) {
      throw Exception("(INVALID) " + std::to_string(values->size()) + " values given for " +
                          std::to_string(size) + " elements",
                      3);
    }
    // The library frees a one-element buffer with delete, larger ones with delete[].
    T* data = size == 0 ? nullptr : size == 1 ? new T() : new T[size]();
    if (values != nullptr && size > 0) std::memcpy(data, values->data(), size * sizeof(T));
    return Factory::WithData(data, sizes);
  }

  static T First(const NdArray<T, 0>& scalar) { return scalar.Item(0); }

  template <int M>
  NDim<M> LastSizes() const {
    std::array<size_t, M> dims{};
    for (int k = 0; k < M; ++k) dims[k] = Dim(N - M + k);
    return std::apply([](auto... d) { return NDim<M>(d...); }, dims);
  }

  template <class... I>
  NdArray Point(I... indices) const {
    return GetView(View(Scalar(static_cast<int64_t>(indices))...));
  }

  std::shared_ptr<INdArray<T, N>> array_;
};

}  // namespace Zelq

#endif  // ZELQ_ZELQCPP_NDARRAY_H_
