// Broadcasting, casting and squeezing of shapes.
//
// Operands with fewer axes are given the missing axes in front (leading
// axes of size 1), as numpy does: a (3) operand meets a (2, 3) operand as
// (1, 3). A 0-axis operand becomes (1). Failures record code 3.
//
//   NDim<2> a({2, 1}), b({1, 3}), ra, rb;
//   BroadcastShapes(a, b, ra, rb, err);   // both (2, 3); stride 0 where stretched
#ifndef ZELQ_MATRIX_SHAPE_OPS_H_
#define ZELQ_MATRIX_SHAPE_OPS_H_

#include "frame/error_record.h"
#include "matrix/ndim.h"

namespace Zelq {

// Axis-list forms; the templates below are thin typed wrappers.
// Gives `axes` `count` more leading axes of size 1 (stride 0, offset 0).
Axes PadLeading(const Axes& axes, int count);
// Pair rule on lists of equal length; `shape_message` selects "Shape of %s is
// not compatible with %s" (true) or the operand message (false).
bool BroadcastAxes(const Axes& a, const Axes& b, Axes& out_a, Axes& out_b, bool shape_message,
                   ErrorRecord& err);
bool CastAxes(const Axes& in, int m, Axes& out, ErrorRecord& err);
bool CastAxesPair(const Axes& a, const Axes& b, int m, Axes& out_a, Axes& out_b, ErrorRecord& err);
bool SqueezeAxes(const Axes& in, int axis, Axes& out, ErrorRecord& err);

// Two shapes of the same number of axes, broadcast axis by axis: equal sizes
// stay; a size 1 meets any size and gets stride 0; else "Shape of ... is not
// compatible with ...".
template <int N>
bool BroadcastShapes(const NDim<N>& a, const NDim<N>& b, NDim<N>& out_a, NDim<N>& out_b,
                     ErrorRecord& err) {
  Axes ra, rb;
  if (!BroadcastAxes(a.ToAxes(), b.ToAxes(), ra, rb, true, err)) return false;
  out_a = NDim<N>::FromAxes(ra);
  out_b = NDim<N>::FromAxes(rb);
  return true;
}

// Two operands of a matrix operation: the one with fewer axes gets leading
// size-1 axes, then the pair rule applies; a failure names both operand shapes.
template <int N1, int N2, int M = (N1 > N2 ? N1 : N2)>
bool BroadcastOperands(const NDim<N1>& a, const NDim<N2>& b, NDim<M>& out_a, NDim<M>& out_b,
                       ErrorRecord& err) {
  Axes ra, rb;
  if (!BroadcastAxes(PadLeading(a.ToAxes(), M - N1), PadLeading(b.ToAxes(), M - N2), ra, rb,
                     false, err)) {
    // the message names the operands as given, not as padded
    SetError(err, kErrorINVALID, "Operand 1 of shape %s is not compatible with Operand 2 of shape %s",
             a.Text(kDims).c_str(), b.Text(kDims).c_str());
    return false;
  }
  out_a = NDim<M>::FromAxes(ra);
  out_b = NDim<M>::FromAxes(rb);
  return true;
}

// Casts a shape to M >= N axes by leading insertion; fewer axes always fail.
template <int M, int N>
bool CastShape(const NDim<N>& in, NDim<M>& out, ErrorRecord& err) {
  Axes r;
  if (!CastAxes(in.ToAxes(), M, r, err)) return false;
  out = NDim<M>::FromAxes(r);
  return true;
}

// Casts two shapes to a common M, which must not be below either's count.
template <int M, int N1, int N2>
bool CastShapes(const NDim<N1>& a, const NDim<N2>& b, NDim<M>& out_a, NDim<M>& out_b,
                ErrorRecord& err) {
  Axes ra, rb;
  if (!CastAxesPair(a.ToAxes(), b.ToAxes(), M, ra, rb, err)) return false;
  out_a = NDim<M>::FromAxes(ra);
  out_b = NDim<M>::FromAxes(rb);
  return true;
}

// Removes axis `axis` (negative counts from the end), which must have size 1;
// its offset joins the base offset.
template <int N>
bool Squeeze(const NDim<N>& in, int axis, NDim<(N > 0 ? N - 1 : 0)>& out, ErrorRecord& err) {
  Axes r;
  if (!SqueezeAxes(in.ToAxes(), axis, r, err)) return false;
  out = NDim<(N > 0 ? N - 1 : 0)>::FromAxes(r);
  return true;
}

}  // namespace Zelq

#endif  // ZELQ_MATRIX_SHAPE_OPS_H_
