#include "matrix/shape_ops.h"

#include <algorithm>
#include <string>

namespace Zelq {

Axes PadLeading(const Axes& axes, int count) {
  Axes r;
  r.count = axes.count + count;
  r.base = axes.base;
  for (int k = 0; k < count; ++k) r.dims[k] = 1;  // strides and offsets 0
  std::copy_n(axes.dims, axes.count, r.dims + count);
  std::copy_n(axes.strides, axes.count, r.strides + count);
  std::copy_n(axes.offsets, axes.count, r.offsets + count);
  return r;
}

bool BroadcastAxes(const Axes& a, const Axes& b, Axes& out_a, Axes& out_b, bool shape_message,
                   ErrorRecord& err) {
  Axes ra = a;
  Axes rb = b;
  for (int k = 0; k < a.count; ++k) {
    if (a.dims[k] == b.dims[k]) continue;
    if (a.dims[k] != 1 && b.dims[k] != 1) {
      if (shape_message) {
        SetError(err, kErrorINVALID, "Shape of %s is not compatible with %s", AxesText(a).c_str(),
                 AxesText(b).c_str());
      } else {
        SetError(err, kErrorINVALID, "Operand 1 of shape %s is not compatible with Operand 2 of shape %s",
                 AxesText(a).c_str(), AxesText(b).c_str());
      }
      return false;
    }
    Axes& stretched = a.dims[k] == 1 ? ra : rb;
    stretched.dims[k] = std::max(a.dims[k], b.dims[k]);
    stretched.strides[k] = 0;
  }
  out_a = ra;
  out_b = rb;
  return true;
}

bool CastAxes(const Axes& in, int m, Axes& out, ErrorRecord& err) {
  if (m < in.count || m > Axes::kMax) {
    SetError(err, kErrorINVALID, "Cannot cast %d-dimensional shape to %d-dimension", in.count, m);
    return false;
  }
  out = PadLeading(in, m - in.count);
  return true;
}

bool CastAxesPair(const Axes& a, const Axes& b, int m, Axes& out_a, Axes& out_b, ErrorRecord& err) {
  const int low = std::min(a.count, b.count);
  const int high = std::max(a.count, b.count);
  if (m < high || m > Axes::kMax) {
    SetError(err, kErrorINVALID, "Cannot cast %d-dimensional shape and %d-dimensional shape to %d-dimension",
             low, high, m);
    return false;
  }
  out_a = PadLeading(a, m - a.count);
  out_b = PadLeading(b, m - b.count);
  return true;
}

bool SqueezeAxes(const Axes& in, int axis, Axes& out, ErrorRecord& err) {
  const int normalised = axis < 0 ? in.count + axis : axis;
  const bool exists = normalised >= 0 && normalised < in.count;
  const uint64_t size = exists ? in.dims[normalised] : 0;
  if (!exists || size != 1) {
    SetError(err, kErrorINVALID, "Dimension size at axis %d is not one (%zu)", normalised,
             static_cast<size_t>(size));
    return false;
  }
  Axes r;
  r.base = in.base + in.offsets[normalised];
  for (int k = 0; k < in.count; ++k) {
    if (k == normalised) continue;
    r.dims[r.count] = in.dims[k];
    r.strides[r.count] = in.strides[k];
    r.offsets[r.count] = in.offsets[k];
    ++r.count;
  }
  out = r;
  return true;
}

}  // namespace Zelq
