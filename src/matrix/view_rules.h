// The rules by which an index list turns a shape into a view.
//
// The rules work on an Axes list: Full keeps an axis, Slice narrows it,
// Scalar removes it (its offset joins the base offset), and an entry of any
// other type name drops its axis without touching the base offset. Failures
// record code 3 with the messages of the shape family.
#ifndef ZELQ_MATRIX_VIEW_RULES_H_
#define ZELQ_MATRIX_VIEW_RULES_H_

#include <cstdint>

#include "frame/error_record.h"
#include "matrix/ndim.h"

namespace Zelq {

class IView;
class Slice;

struct AxisView {
  uint64_t dim;
  int64_t stride;
  int64_t offset;
};

// The axis a slice makes of an axis of size d, stride s and offset o.
AxisView ApplySlice(const Slice& slice, uint64_t d, int64_t s, int64_t o);

// Normalises a scalar index on an axis of size d (negative counts from the
// end). False, with the index as passed in the message, when out of range.
bool NormaliseScalar(int64_t index, int axis, uint64_t d, int64_t& normalised, ErrorRecord& err);

// Applies `view` to `in`. False with code 3 when the list is longer than the
// number of axes or a scalar index is out of range; `out` is then unchanged.
bool ApplyIndexList(const Axes& in, const IView& view, Axes& out, ErrorRecord& err);

// Records "Index (...) is out of bounds for axis ... of dimension ...".
void ReportIndexOutOfBounds(ErrorRecord& err, int64_t index, int axis, uint64_t d);

}  // namespace Zelq

#endif  // ZELQ_MATRIX_VIEW_RULES_H_
