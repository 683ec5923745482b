// Basis-factor operations: forward and backward solves with the optimal
// basis, the basis head, and shadow-price ranges of rows.
#include <algorithm>
#include <climits>
#include <cstdint>
#include <vector>

#include "frame/engine_index.h"
#include "matrix/zelq_ndarray.h"
#include "model/zelq_model.h"

namespace Zelq {
namespace {

using FactorSolveFn = int (*)(ZELQprob*, const double*, double*, int*);

// The array behind an interface pointer; null for a null pointer.
const NdArray<double, 1>* ArrayOf(const INdArray<double, 1>* array) {
  auto* impl = dynamic_cast<const ZelqNdArray<double, 1>*>(array);
  return impl != nullptr ? &impl->Value() : nullptr;
}

// Elements an array can take; 0 when there is no array or no storage.
uint64_t CapacityOf(const NdArray<double, 1>* array) {
  return array != nullptr && array->Data().Get() != nullptr ? array->Size() : 0;
}

int ClampToInt(uint64_t value) { return static_cast<int>(std::min<uint64_t>(value, INT_MAX)); }

// The elements of a one-axis array as one dense run for the engine. Holds a
// counted reference to the array's storage while it lives. A strided view is
// gathered into a copy; WriteBack() scatters the copy into the view.
class DenseRun {
 public:
  explicit DenseRun(const NdArray<double, 1>& array) : array_(array), storage_(array.Data()) {
    if (array.Shape().IsContiguous()) {
      data_ = storage_.Get() + array.Shape().Start();
      return;
    }
    copy_.reserve(array.Size());
    array.ForEachRun([this](double* first, int64_t stride, uint64_t count) {
      for (uint64_t k = 0; k < count; ++k) copy_.push_back(first[static_cast<int64_t>(k) * stride]);
    });
    data_ = copy_.data();
  }

  double* Data() const { return data_; }

  void WriteBack() const {
    if (data_ != copy_.data()) return;
    size_t next = 0;
    array_.ForEachRun([&](double* first, int64_t stride, uint64_t count) {
      for (uint64_t k = 0; k < count; ++k) first[static_cast<int64_t>(k) * stride] = copy_[next++];
    });
  }

 private:
  const NdArray<double, 1>& array_;
  Shared<double> storage_;
  std::vector<double> copy_;
  double* data_ = nullptr;
};

// The array forms of the forward and backward solves: `n` is the count the
// engine takes as the buffer length and leaves as the result's non-zeros.
// Both forms report engine failures with the same text on purpose.
int SolveOnArrays(ZelqModel& model, FactorSolveFn EngineIndex::*call,
                  const INdArray<double, 1>* input, const INdArray<double, 1>* output, int n) {
  const NdArray<double, 1>* in = ArrayOf(input);
  const NdArray<double, 1>* out = ArrayOf(output);
  const uint64_t a = CapacityOf(in);
  const uint64_t b = CapacityOf(out);
  if (n <= 0 || static_cast<uint64_t>(n) > a || static_cast<uint64_t>(n) > b) {
    SetError(model.Error(), kErrorINVALID, "Invalid size of input values %d and index size %d",
             ClampToInt(a), ClampToInt(b));
    return 0;
  }
  if (!model.Compact()) return n;
  if (static_cast<uint64_t>(model.Data().Table(kConstrKind).count) > std::min(a, b)) {
    SetError(model.Error(), kErrorINVALID,
             "Not enough buffer for output array (at least row size)");
    return 0;
  }
  DenseRun rhs(*in);
  DenseRun result(*out);
  int rc = (Engine().*call)(model.Prob(), rhs.Data(), result.Data(), &n);
  SetError(model.Error(), rc, "Fail to perform forward solve on ndarray");
  result.WriteBack();
  return n;
}

}  // namespace

void ZelqModel::FSolve(const double* rhs, double* solution, int* len) {
  if (!Compact()) return;
  SetError(Error(), Engine().FSolve(Prob(), rhs, solution, len), "Fail to perform forward solve");
}

void ZelqModel::BSolve(const double* rhs, double* solution, int* len) {
  if (!Compact()) return;
  SetError(Error(), Engine().BSolve(Prob(), rhs, solution, len), "Fail to perform backward solve");
}

int ZelqModel::FSolve(INdArray<double, 1>* input, INdArray<double, 1>* output, int len) {
  return SolveOnArrays(*this, &EngineIndex::FSolve, input, output, len);
}

int ZelqModel::BSolve(INdArray<double, 1>* input, INdArray<double, 1>* output, int len) {
  return SolveOnArrays(*this, &EngineIndex::BSolve, input, output, len);
}

void ZelqModel::GetBasisHead(int* head, int size) {
  if (!Compact()) return;
  const int rows = Data().Table(kConstrKind).count;
  if (rows > size) {
    SetError(Error(), kErrorINVALID, "Not enough buffer of size %d (at least %d)", size, rows);
    return;
  }
  SetError(Error(), Engine().GetBasisHead(Prob(), head), "Fail to retrieve basis head");
}

// A failed compaction is reported in the returned array's own record: the
// caller checks the array, not the model.
IntNdArray1* ZelqModel::GetBasisHead() {
  if (!Compact()) {
    NdArray<int, 1> empty;
    SetError(empty.Error(), kErrorINTERNAL, "Fail to update problem before getting basis head");
    return new ZelqNdArray<int, 1>(std::move(empty));
  }
  const uint64_t rows = static_cast<uint64_t>(Data().Table(kConstrKind).count);
  NdArray<int, 1> head = NdArray<int, 1>::Allocate({rows});
  if (!head.Error().Failed()) {
    std::fill_n(head.Data().Get(), rows, 0);
    SetError(Error(), Engine().GetBasisHead(Prob(), head.Data().Get()),
             "Fail to retrieve basis head");
  }
  return new ZelqNdArray<int, 1>(std::move(head));
}

void ZelqModel::ComputeShadowPriceRange(int row, int side, double* low, double* high) {
  if (!Compact()) return;
  SetError(Error(), Engine().ComputeShadowPriceRange(Prob(), row, side, low, high),
           "Fail to compute shadow price range for row %d", row);
}

}  // namespace Zelq
