// ZelqNdArray<T, N>: the library's implementation of Zelq::INdArray<T, N>,
// a handle on shared storage of one Zelq::NdArray<T, N>.
#ifndef ZELQ_MATRIX_ZELQ_NDARRAY_H_
#define ZELQ_MATRIX_ZELQ_NDARRAY_H_

#include <string>

#include "frame/shared_block.h"
#include "matrix/ndarray.h"
#include "zelq/zelqcpp_ndarray_iface.h"

template <class T, int N>
class ZelqNdArray final : public Zelq::INdArray<T, N> {
 public:
  explicit ZelqNdArray(Zelq::NdArray<T, N> value);

  int GetNDim() const override { return N; }
  size_t GetDim(int axis) const override { return Value().Shape().Dim(axis); }
  size_t GetSize() const override { return Value().Size(); }
  Zelq::INDim<N>* GetShape() const override;
  Zelq::INdArray<T, 1>* Reshape(const Zelq::INDim<1>* shape) const override;
  Zelq::INdArray<T, 2>* Reshape(const Zelq::INDim<2>* shape) const override;
  Zelq::INdArray<T, 3>* Reshape(const Zelq::INDim<3>* shape) const override;
  Zelq::INdArray<T, 1>* Flatten() const override;
  Zelq::INdArray<T, 0>* Prod() const override;
  Zelq::INdArray<T, N>* Repeat(int count, int axis) const override;
  Zelq::INdArray<T, N>* Tile(int count, int axis) const override;
  Zelq::INdArray<T, 0>* Sum() const override;
  Zelq::INdArray<T, N>* Transpose() const override;
  T Item(size_t index) override;
  Zelq::INdArray<T, N>* GetView(const Zelq::IView* view) const override;
  Zelq::INdArray<T, 1>* Take(const Zelq::INdArray<int, 1>* indices) const override;
  Zelq::INdArray<T, 1>* GetView1(const Zelq::IView* view) const override;
  void SetItem(size_t index, T value) override;
  void Fill(T value) override;
  Zelq::INdArray<T, N>* Clone() const override;
  const char* ToString(int what) override;
  int GetErrorCode() const override { return Value().Error().Code(); }
  const char* GetErrorMessage() const override { return Value().Error().Message(); }

  const Zelq::NdArray<T, N>& Value() const { return *core_; }

 private:
  template <int M>
  Zelq::INdArray<T, M>* ReshapeTo(const Zelq::INDim<M>* shape) const;

  Zelq::Shared<Zelq::NdArray<T, N>> core_;
  std::string text_;
};

#endif  // ZELQ_MATRIX_ZELQ_NDARRAY_H_
