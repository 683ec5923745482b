#include "matrix/view_rules.h"

#include <climits>
#include <cstring>

#include "zelq/zelqcpp_indexing.h"
#include "zelq/zelqcpp_ndim_iface.h"

namespace Zelq {

namespace {

// Clamp of a slice bound to an axis of size d > 0: at most d, negative values
// counted from the end, anything still negative becomes -1. The clamp to d
// holds whatever the sign of the step, so a backward slice whose start lies at
// or beyond d starts at position d.
int64_t ClampBound(int64_t value, int64_t d) {
  if (value > d) value = d;
  if (value < 0) value += d;
  return value < 0 ? -1 : value;
}

// Products and sums of user-given steps may leave the 64-bit range for steps
// far larger than the axis; the result then has at most one element and the
// stride is never used, so wrapping arithmetic keeps the rule well defined.
int64_t WrapMul(int64_t a, int64_t b) {
  return static_cast<int64_t>(static_cast<uint64_t>(a) * static_cast<uint64_t>(b));
}
int64_t WrapAdd(int64_t a, int64_t b) {
  return static_cast<int64_t>(static_cast<uint64_t>(a) + static_cast<uint64_t>(b));
}

// Upward count from start to end (exclusive). A step below 2 (0 included)
// counts every position; otherwise ceil((end - start) / step), computed as
// (end - start - 1) / step + 1 so that huge steps cannot overflow.
int64_t CountUp(int64_t start, int64_t end, int64_t step) {
  if (start >= end) return 0;
  uint64_t span = static_cast<uint64_t>(end) - static_cast<uint64_t>(start);
  if (step < 2) return static_cast<int64_t>(span);
  return static_cast<int64_t>((span - 1) / static_cast<uint64_t>(step) + 1);
}

// Downward count from start to stop (exclusive) with a negative step: the
// same value as (stop - start + step + 1) / step, without overflow.
int64_t CountDown(int64_t start, int64_t stop, int64_t step) {
  if (start <= stop) return 0;
  uint64_t span = static_cast<uint64_t>(start) - static_cast<uint64_t>(stop);
  if (step == -1) return static_cast<int64_t>(span);
  uint64_t magnitude = 0 - static_cast<uint64_t>(step);
  return static_cast<int64_t>((span - 1) / magnitude + 1);
}

// Backward count from a given start down to index 0 (no stop given): start + 1
// for step -1, else (step - start) / step, and 0 when start <= -1.
int64_t CountToZero(int64_t start, int64_t step) {
  if (start <= -1) return 0;
  if (step == -1) return start + 1;
  uint64_t magnitude = 0 - static_cast<uint64_t>(step);
  return static_cast<int64_t>(static_cast<uint64_t>(start) / magnitude + 1);
}

// Count (and start) of a slice without a step: step 1.
int64_t CountNoStep(const Slice& slice, int64_t d, int64_t& start, int64_t stop) {
  if (!slice.HasStart()) {
    start = 0;
    if (!slice.HasStop()) stop = d;
    return stop >= 1 ? stop : 0;
  }
  if (!slice.HasStop()) return start < d ? d - start : 0;
  return start < stop ? stop - start : 0;
}

// Count (and start) of a slice with a step.
int64_t CountWithStep(const Slice& slice, int64_t d, int64_t step, int64_t& start, int64_t stop) {
  if (!slice.HasStart()) {
    if (step < 0) {
      start = d - 1;
      if (!slice.HasStop()) stop = -1;
      return CountDown(start, stop, step);
    }
    start = 0;
    return CountUp(start, slice.HasStop() ? stop : d, step);
  }
  if (!slice.HasStop()) return step < 0 ? CountToZero(start, step) : CountUp(start, d, step);
  return step < 0 ? CountDown(start, stop, step) : CountUp(start, stop, step);
}

bool IsType(const Indexing* index, const char* name) {
  const char* type = index->TypeName();
  return type != nullptr && std::strcmp(type, name) == 0;
}

}  // namespace

AxisView ApplySlice(const Slice& slice, uint64_t dim, int64_t s, int64_t o) {
  const int64_t d = static_cast<int64_t>(dim);
  int64_t start = slice.start;
  int64_t stop = slice.stop;
  if (d > 0) {
    start = ClampBound(start, d);
    stop = ClampBound(stop, d);
  }
  int64_t step = slice.HasStep() ? slice.step : 1;
  int64_t count = slice.HasStep() ? CountWithStep(slice, d, step, start, stop)
                                  : CountNoStep(slice, d, start, stop);
  return {static_cast<uint64_t>(count), WrapMul(step, s), WrapAdd(WrapMul(start, s), o)};
}

void ReportIndexOutOfBounds(ErrorRecord& err, int64_t index, int axis, uint64_t d) {
  if (index >= INT_MIN && index <= INT_MAX && d <= INT_MAX) {
    SetError(err, kErrorINVALID, "Index (%d) is out of bounds for axis %d of dimension %d",
             static_cast<int>(index), axis, static_cast<int>(d));
  } else {  // values beyond int keep their digits
    SetError(err, kErrorINVALID, "Index (%lld) is out of bounds for axis %d of dimension %llu",
             static_cast<long long>(index), axis, static_cast<unsigned long long>(d));
  }
}

bool NormaliseScalar(int64_t index, int axis, uint64_t d, int64_t& normalised, ErrorRecord& err) {
  int64_t i = index;
  bool ok = d >= 1;
  if (ok) {
    if (i < 0) i += static_cast<int64_t>(d);
    ok = i >= 0 && static_cast<uint64_t>(i) < d;
  }
  if (!ok) {
    ReportIndexOutOfBounds(err, index, axis, d);
    return false;
  }
  normalised = i;
  return true;
}

bool ApplyIndexList(const Axes& in, const IView& view, Axes& out, ErrorRecord& err) {
  const int entries = view.GetCount();
  if (entries > in.count) {
    SetError(err, kErrorINVALID, "View has dimensions larger than #ND (%d)", in.count);
    return false;
  }
  Axes result;
  result.base = in.base;
  for (int k = 0; k < in.count; ++k) {
    const uint64_t d = in.dims[k];
    const int64_t s = in.strides[k];
    const int64_t o = in.offsets[k];
    const Indexing* index = k < entries ? view.GetIndex(k) : nullptr;
    AxisView axis{d, s, o};
    if (index != nullptr && IsType(index, "Scalar")) {
      int64_t i = 0;
      if (!NormaliseScalar(static_cast<const Scalar*>(index)->index, k, d, i, err)) return false;
      result.base += i * s + o;
      continue;
    }
    if (index != nullptr && IsType(index, "Slice")) {
      axis = ApplySlice(*static_cast<const Slice*>(index), d, s, o);
    } else if (index != nullptr && !IsType(index, "Full")) {
      continue;  // an unknown index type drops its axis
    }
    result.dims[result.count] = axis.dim;
    result.strides[result.count] = axis.stride;
    result.offsets[result.count] = axis.offset;
    ++result.count;
  }
  out = result;
  return true;
}

}  // namespace Zelq
