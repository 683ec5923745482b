// Index objects: Zelq::Full, Zelq::Slice, Zelq::Scalar.
//
// An index list is consumed from axis 0 on; each entry turns one axis of a
// shape into an axis of the view (Full, Slice) or removes it (Scalar). These
// are plain values that cross the library boundary: a Zelq::IView hands them
// to the library by pointer, and the library dispatches on TypeName(), never
// on C++ type identity, so both sides may use this one definition.
//
//   a(Zelq::Slice(0, 3), Zelq::Scalar(-1));    // rows 0..2 of the last column
//   a(Zelq::Slice().Step(-1));                 // axis 0 reversed
#ifndef ZELQ_ZELQCPP_INDEXING_H_
#define ZELQ_ZELQCPP_INDEXING_H_

#include <cstdint>

namespace Zelq {

// Root of the index objects. TypeName() decides how an entry is applied:
// "Full", "Slice" and "Scalar"; an entry of any other name drops its axis.
class Indexing {
 public:
  virtual ~Indexing() = default;
  virtual const char* TypeName() const = 0;
};

// The whole axis.
class Full final : public Indexing {
 public:
  const char* TypeName() const override { return "Full"; }
};

// start:stop:step with "not given" flags, as in Python slices. Negative start
// and stop count from the end of the axis; a negative step walks backwards.
class Slice final : public Indexing {
 public:
  static constexpr uint32_t kNoStep = 1;   // bit 0: no step given (step 1)
  static constexpr uint32_t kNoStop = 2;   // bit 1: no stop given
  static constexpr uint32_t kNoStart = 4;  // bit 2: no start given

  // ":" - nothing given.
  Slice() = default;
  // start:stop
  Slice(int64_t start_at, int64_t stop_at) : start(start_at), stop(stop_at), flags(kNoStep) {}
  // start:stop:step
  Slice(int64_t start_at, int64_t stop_at, int64_t step_by)
      : start(start_at), stop(stop_at), step(step_by), flags(0) {}

  // Fluent setters for partial slices: Slice().Start(2), Slice().Step(-1).
  Slice& Start(int64_t value) { start = value; flags &= ~kNoStart; return *this; }
  Slice& Stop(int64_t value) { stop = value; flags &= ~kNoStop; return *this; }
  Slice& Step(int64_t value) { step = value; flags &= ~kNoStep; return *this; }

  bool HasStart() const { return (flags & kNoStart) == 0; }
  bool HasStop() const { return (flags & kNoStop) == 0; }
  bool HasStep() const { return (flags & kNoStep) == 0; }

  const char* TypeName() const override { return "Slice"; }

  int64_t start = 0;
  int64_t stop = 0;
  int64_t step = 1;
  uint32_t flags = kNoStep | kNoStop | kNoStart;
};

// One position of the axis; the axis is removed from the view. -1 is the last.
class Scalar final : public Indexing {
 public:
  Scalar() = default;
  explicit Scalar(int64_t at) : index(at) {}
  const char* TypeName() const override { return "Scalar"; }

  int64_t index = 0;
};

}  // namespace Zelq

#endif  // ZELQ_ZELQCPP_INDEXING_H_
