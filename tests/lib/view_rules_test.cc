// The index rules: edge cases, and a comparison of random index lists with a
// straightforward reference that enumerates the selected positions.
#include "matrix/view_rules.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

#include "matrix/zelq_view.h"

namespace Zelq {
namespace {

class Custom final : public Indexing {
 public:
  const char* TypeName() const override { return "Custom"; }
};

Axes AxesOf(std::vector<uint64_t> dims) {
  Axes axes;
  axes.count = static_cast<int>(dims.size());
  int64_t stride = 1;
  for (int k = axes.count - 1; k >= 0; --k) {
    axes.dims[k] = dims[static_cast<size_t>(k)];
    axes.strides[k] = stride;
    stride *= static_cast<int64_t>(dims[static_cast<size_t>(k)]);
  }
  return axes;
}

TEST(ViewRules, ScalarIndices) {
  ErrorRecord err;
  Axes out;
  ASSERT_TRUE(ApplyIndexList(AxesOf({5}), ZelqView{&static_cast<const Indexing&>(Scalar(-1))}, out, err));
  EXPECT_EQ(out.count, 0);
  EXPECT_EQ(out.base, 4);

  EXPECT_FALSE(ApplyIndexList(AxesOf({5}), ZelqView{&static_cast<const Indexing&>(Scalar(5))}, out, err));
  EXPECT_EQ(err.Code(), 3);
  EXPECT_STREQ(err.Message(), "(INVALID) Index (5) is out of bounds for axis 0 of dimension 5");
  EXPECT_FALSE(ApplyIndexList(AxesOf({5}), ZelqView{&static_cast<const Indexing&>(Scalar(-6))}, out, err));
  EXPECT_STREQ(err.Message(), "(INVALID) Index (-6) is out of bounds for axis 0 of dimension 5");
  Full full;
  Scalar zero(0);
  EXPECT_FALSE(ApplyIndexList(AxesOf({3, 0}), ZelqView{&full, &zero}, out, err));
  EXPECT_STREQ(err.Message(), "(INVALID) Index (0) is out of bounds for axis 1 of dimension 0");
  Scalar huge(int64_t{1} << 40);
  EXPECT_FALSE(ApplyIndexList(AxesOf({3}), ZelqView{&huge}, out, err));
  EXPECT_STREQ(err.Message(), "(INVALID) Index (1099511627776) is out of bounds for axis 0 of dimension 3");

  Scalar one(1);
  ASSERT_TRUE(ApplyIndexList(AxesOf({2, 3}), ZelqView{&one}, out, err));  // shorter list
  EXPECT_EQ(out.count, 1);
  EXPECT_EQ(out.dims[0], 3u);
  EXPECT_EQ(out.base, 3);
}

TEST(ViewRules, SlicesFollowTheCountRules) {
  constexpr int64_t kAny = INT64_MIN;  // not checked
  const struct {
    Slice slice;
    uint64_t d;
    int64_t s, o;
    uint64_t dim;
    int64_t stride, offset;
  } cases[] = {
      {Slice().Step(-1), 4, 5, 2, 4, -5, 17},          // whole axis backwards: offset 3s + o
      {Slice(1, 10, 3), 5, 1, 0, 2, 3, 1},             // stop clamps to 5: (3 + 4 - 1) / 3
      {Slice(-3, -1), 5, 1, 0, 2, 1, 2},               // negative bounds count from the end
      {Slice().Start(3).Step(-2), 5, 1, 0, 2, -2, 3},  // walks 3, 1
      {Slice(4, 0, -3), 5, 1, 0, 2, -3, 4},            // walks 4, 1
      {Slice(1, 4, 0), 5, 7, 0, 3, 0, 7},              // step 0 counts like 1, stride 0
      {Slice().Start(10).Step(-1), 5, 1, 0, 6, -1, 5},  // the clamp to d holds backwards too
      {Slice(3, 1), 5, 1, 0, 0, kAny, kAny},           // empty results
      {Slice(1, 3, -1), 5, 1, 0, 0, kAny, kAny},
      {Slice().Stop(-9), 5, 1, 0, 0, kAny, kAny},
      {Slice(), 0, 1, 0, 0, kAny, kAny},
      {Slice(0, 5, INT64_MAX), 5, 8, 0, 1, kAny, kAny},  // steps far beyond the axis: one
      {Slice().Step(INT64_MIN), 5, 8, 0, 1, kAny, 32},   // element, well defined
  };
  for (const auto& c : cases) {
    const AxisView v = ApplySlice(c.slice, c.d, c.s, c.o);
    const std::string at = "case " + std::to_string(&c - cases);
    EXPECT_EQ(v.dim, c.dim) << at;
    EXPECT_TRUE(c.stride == kAny || v.stride == c.stride) << at << ": stride " << v.stride;
    EXPECT_TRUE(c.offset == kAny || v.offset == c.offset) << at << ": offset " << v.offset;
  }
}

TEST(ViewRules, ListLengthAndUnknownTypes) {
  ErrorRecord err;
  Axes out;
  Full full;
  Custom custom;
  EXPECT_FALSE(ApplyIndexList(AxesOf({2, 3}), ZelqView{&full, &full, &full}, out, err));
  EXPECT_STREQ(err.Message(), "(INVALID) View has dimensions larger than #ND (2)");
  EXPECT_FALSE(ApplyIndexList(AxesOf({}), ZelqView{&full}, out, err));
  EXPECT_STREQ(err.Message(), "(INVALID) View has dimensions larger than #ND (0)");

  Axes in = AxesOf({2, 3});
  in.offsets[0] = 100;  // dropped with its axis: nothing joins the base offset
  ASSERT_TRUE(ApplyIndexList(in, ZelqView{&custom}, out, err));
  EXPECT_EQ(out.count, 1);
  EXPECT_EQ(out.dims[0], 3u);
  EXPECT_EQ(out.base, 0);

  ZelqView nested{&full};  // a view used as an index is an unknown type too
  EXPECT_STREQ(nested.TypeName(), "View");
  ASSERT_TRUE(ApplyIndexList(AxesOf({2, 3}), ZelqView{&full, &nested}, out, err));
  EXPECT_EQ(out.count, 1);
  EXPECT_EQ(nested.GetIndex(1), nullptr);
  nested.AddIndex(nullptr);
  EXPECT_EQ(nested.GetCount(), 1);
}

// ---- Reference: the same rules, by enumerating the selected indices. ----

struct Expected {
  bool ok = true;
  std::string message;
  std::vector<uint64_t> dims;
  std::vector<int64_t> positions;  // in flat row-major order
};

int64_t RefClamp(int64_t v, int64_t d) {
  if (v > d) v = d;
  if (v < 0) v += d;
  return v < 0 ? -1 : v;
}

// The indices a slice selects, walking from start towards stop one step at a
// time (a step of 0 repeats start, counting like 1).
std::vector<int64_t> RefSlice(const Slice& s, int64_t d) {
  int64_t step = s.HasStep() ? s.step : 1;
  int64_t start = s.start, stop = s.stop;
  if (d > 0) {
    start = RefClamp(start, d);
    stop = RefClamp(stop, d);
  }
  if (!s.HasStart()) start = step < 0 ? d - 1 : 0;
  if (!s.HasStop()) stop = step < 0 ? -1 : d;
  std::vector<int64_t> picked;
  if (step < 0) {
    for (int64_t i = start; i > stop; i += step) picked.push_back(i);
  } else {
    const int64_t increment = step == 0 ? 1 : step;
    for (int64_t i = start; i < stop; i += increment) picked.push_back(i);
  }
  return picked;
}

Expected Reference(const Axes& in, const std::vector<const Indexing*>& list) {
  Expected e;
  if (static_cast<int>(list.size()) > in.count) {
    e.ok = false;
    e.message = "(INVALID) View has dimensions larger than #ND (" + std::to_string(in.count) + ")";
    return e;
  }
  int64_t base = in.base;
  std::vector<std::vector<int64_t>> contributions;  // per kept axis
  for (int k = 0; k < in.count; ++k) {
    const int64_t d = static_cast<int64_t>(in.dims[k]);
    const int64_t s = in.strides[k], o = in.offsets[k];
    std::string type = k < static_cast<int>(list.size()) ? list[k]->TypeName() : "Full";
    std::vector<int64_t> picked;
    if (type == "Full") {
      for (int64_t i = 0; i < d; ++i) picked.push_back(i);
    } else if (type == "Slice") {
      const Slice& slice = *static_cast<const Slice*>(list[k]);
      picked = RefSlice(slice, d);
      int64_t step = slice.HasStep() ? slice.step : 1;
      if (step == 0) picked.assign(picked.size(), picked.empty() ? 0 : picked[0]);
    } else if (type == "Scalar") {
      int64_t i = static_cast<const Scalar*>(list[k])->index;
      int64_t n = i < 0 ? i + d : i;
      if (n < 0 || n >= d) {
        e.ok = false;
        e.message = "(INVALID) Index (" + std::to_string(i) + ") is out of bounds for axis " +
                    std::to_string(k) + " of dimension " + std::to_string(d);
        return e;
      }
      base += n * s + o;
      continue;
    } else {
      continue;
    }
    std::vector<int64_t> c;
    for (int64_t i : picked) c.push_back(i * s + o);
    contributions.push_back(c);
    e.dims.push_back(picked.size());
  }
  std::vector<int64_t> positions{base};
  for (const auto& c : contributions) {
    std::vector<int64_t> next;
    for (int64_t p : positions)
      for (int64_t add : c) next.push_back(p + add);
    positions = next;
  }
  e.positions = positions;
  return e;
}

std::vector<int64_t> Enumerate(const Axes& a) {
  int64_t start = a.base;
  for (int k = 0; k < a.count; ++k) start += a.offsets[k];
  std::vector<int64_t> positions{start};
  for (int k = 0; k < a.count; ++k) {
    std::vector<int64_t> next;
    for (int64_t p : positions)
      for (uint64_t i = 0; i < a.dims[k]; ++i) next.push_back(p + static_cast<int64_t>(i) * a.strides[k]);
    positions = next;
  }
  return positions;
}

Slice RandomSlice(std::mt19937& rng) {
  std::uniform_int_distribution<int> value(-9, 9);
  std::uniform_int_distribution<int> step(-4, 4);
  Slice s;
  s.flags = static_cast<uint32_t>(rng() % 8);
  s.start = value(rng);
  s.stop = value(rng);
  s.step = step(rng);
  return s;
}

TEST(ViewRules, RandomListsMatchTheReference) {
  std::mt19937 rng(20261121);
  Full full;
  Custom custom;
  int failures_seen = 0;
  for (int round = 0; round < 600; ++round) {
    // A base shape with non-trivial strides and offsets.
    int n = static_cast<int>(rng() % 4);
    Axes in;
    in.count = n;
    for (int k = 0; k < n; ++k) {
      in.dims[k] = rng() % 7;
      in.strides[k] = static_cast<int64_t>(rng() % 21) - 10;
      in.offsets[k] = static_cast<int64_t>(rng() % 50);
    }
    in.base = static_cast<int64_t>(rng() % 100);
    // A list of up to n + 1 entries.
    int length = static_cast<int>(rng() % static_cast<unsigned>(n + 2));
    std::vector<Slice> slices(4);
    std::vector<Scalar> scalars(4);
    std::vector<const Indexing*> list;
    ZelqView view;
    for (int k = 0; k < length; ++k) {
      switch (rng() % 7) {
        case 0: list.push_back(&full); break;
        case 1: list.push_back(&custom); break;
        case 2:
        case 3:
          scalars[k] = Scalar(static_cast<int64_t>(rng() % 15) - 7);
          list.push_back(&scalars[k]);
          break;
        default:
          slices[k] = RandomSlice(rng);
          list.push_back(&slices[k]);
      }
      view.AddIndex(list.back());
    }
    Expected expected = Reference(in, list);
    ErrorRecord err;
    Axes out;
    bool ok = ApplyIndexList(in, view, out, err);
    ASSERT_EQ(ok, expected.ok) << "round " << round;
    if (!ok) {
      EXPECT_EQ(err.Message(), expected.message) << "round " << round;
      ++failures_seen;
      continue;
    }
    ASSERT_EQ(out.count, static_cast<int>(expected.dims.size())) << "round " << round;
    for (int k = 0; k < out.count; ++k) EXPECT_EQ(out.dims[k], expected.dims[k]) << "round " << round;
    EXPECT_EQ(Enumerate(out), expected.positions) << "round " << round;
  }
  EXPECT_GT(failures_seen, 20);  // the failing paths were exercised too
}

}  // namespace
}  // namespace Zelq
