// ZelqNDim<N>: the library's implementation of Zelq::INDim<N>.
#ifndef ZELQ_MATRIX_ZELQ_NDIM_H_
#define ZELQ_MATRIX_ZELQ_NDIM_H_

#include <string>

#include "frame/error_record.h"
#include "frame/shared_block.h"
#include "matrix/ndim.h"
#include "zelq/zelqcpp_ndim_iface.h"

namespace Zelq {

// The shared core of a shape object: the shape and its error record.
template <int N>
struct NDimCore {
  NDim<N> shape;
  ErrorRecord error;
};

}  // namespace Zelq

template <int N>
class ZelqNDim final : public Zelq::INDim<N> {
 public:
  explicit ZelqNDim(const Zelq::NDim<N>& shape);
  // A shape object that carries a failure (sizes all 0).
  static ZelqNDim* Failed(const Zelq::ErrorRecord& error);

  const void* GetImpl() const override { return &core_->shape; }
  size_t GetDim(int axis) const override { return core_->shape.Dim(axis); }
  size_t GetSize() const override { return core_->shape.Size(); }
  int64_t GetStride(int axis) const override { return core_->shape.Stride(axis); }
  int64_t GetOffset(int axis) const override { return core_->shape.Offset(axis); }
  Zelq::INDim<N>* Clone() const override;
  Zelq::INDim<N>* CreateUniform(size_t n) const override;
  const char* ToString(int what) override;
  bool IsSameShape(const Zelq::INDim<N>* other) const override;
  bool IsSameView(const Zelq::INDim<N>* other) const override;
  int32_t GetFlag() const override { return core_->shape.AxisZeroRecord().flag; }
  int64_t GetExtra() const override { return core_->shape.AxisZeroRecord().extra; }
  int GetErrorCode() const override { return core_->error.Code(); }
  const char* GetErrorMessage() const override { return core_->error.Message(); }

  const Zelq::NDim<N>& Shape() const { return core_->shape; }

 private:
  Zelq::Shared<Zelq::NDimCore<N>> core_;
  std::string text_;
};

#endif  // ZELQ_MATRIX_ZELQ_NDIM_H_
