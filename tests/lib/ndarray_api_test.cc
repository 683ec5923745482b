// The header layer as an application uses it: value classes over the shared
// library, failures thrown as Zelq::Exception with the recorded code and text.
#include "zelq/zelqcpp_ndarray.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "thrown.h"

namespace {

using Zelq::Full;
using Zelq::NdArray;
using Zelq::NDim;
using Zelq::Scalar;
using Zelq::Slice;

using zelq_test::Thrown;

TEST(NdArrayApi, CreatesIndexesAndSlices) {
  auto a = NdArray<double, 2>::FromValues({1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12}, 4, 3);
  EXPECT_EQ(a.Size(), 12u);
  EXPECT_EQ(a.Shape().ToString(), "(4, 3)");
  EXPECT_EQ(a.Shape().ToString(1), "(3, 1)");

  auto last_column = a(Slice(0, 3), Scalar(-1));
  static_assert(std::is_same_v<decltype(last_column), NdArray<double, 1>>);
  EXPECT_EQ(last_column.ToString(), "[3, 6, 9]");
  EXPECT_EQ(a(Slice(0, 3), -1).ToString(), "[3, 6, 9]");  // integers are scalars
  EXPECT_EQ(a(1).ToString(), "[4, 5, 6]");
  EXPECT_EQ(a(Full(), Slice().Step(-2)).ToString(), "[[3, 1], [6, 4], [9, 7], [12, 10]]");
  EXPECT_EQ(a(Slice().Start(-2)).Shape().ToString(), "(2, 3)");
  EXPECT_EQ(a.At(-1, 0), 10);
  EXPECT_EQ(a.Item(11), 12);

  // Writes through a view land in the array.
  a(Slice(1, 3), Slice(1, 3)).Fill(0);
  last_column.Set(-9, 1);
  EXPECT_EQ(a.ToString(), "[[1, 2, 3], [4, 0, -9], [7, 0, 0], [10, 11, 12]]");

  NdArray<int, 3> zeros(2, 3, 4);
  EXPECT_EQ(zeros.Sum(), 0);
  zeros.Set(5, 1, 2, 3);
  EXPECT_EQ(zeros.Item(23), 5);
  NdArray<long long, 1> one(1);  // a one-element buffer, released as one element
  one.Fill(7);
  EXPECT_EQ(one.Prod(), 7);
  NdArray<double, 1> none(0);
  EXPECT_EQ(none.Sum(), 0);
  EXPECT_EQ(none.Prod(), 0);
  EXPECT_EQ(none.ToString(), "[]");
}

TEST(NdArrayApi, ReshapesRepeatsAndViewsShareData) {
  std::vector<int> buffer = {1, 2, 3, 4, 5, 6};
  {
    auto a = NdArray<int, 2>::Wrap(buffer.data(), 2, 3);
    auto t = a.Transpose();
    EXPECT_EQ(t.Shape().ToString(), "(3, 2)");
    t.Set(60, 2, 1);  // shared: lands in the caller's buffer
    auto r = a.Reshape(3, 2);
    r.SetItem(0, 10);
    auto flat = t.Flatten();  // not contiguous: a copy
    flat.Fill(0);
    EXPECT_EQ(t.Reshape(6).ToString(), "[10, 4, 2, 5, 3, 60]");
    EXPECT_EQ(a.Repeat(2, 0).ToString(), "[[10, 2, 3], [10, 2, 3], [4, 5, 60], [4, 5, 60]]");
    EXPECT_EQ(a.Tile(2, -1).ToString(), "[[10, 2, 3, 10, 2, 3], [4, 5, 60, 4, 5, 60]]");
    EXPECT_EQ(a.Take({-1, 0, 4}).ToString(), "[60, 10, 5]");
    EXPECT_EQ(a.Reshape(NDim<3>(1, 2, 3)).Shape().ToString(), "(1, 2, 3)");
    auto clone = a.Clone();
    clone.Fill(0);
    EXPECT_EQ(a.Sum(), 10 + 2 + 3 + 4 + 5 + 60);
    Zelq::View rows(Slice().Step(-1));
    EXPECT_EQ(a.GetView(rows).ToString(), "[[4, 5, 60], [10, 2, 3]]");
    EXPECT_EQ(a.GetView1(rows).ToString(), "[4, 5, 60, 10, 2, 3]");
  }
  EXPECT_EQ(buffer, (std::vector<int>{10, 2, 3, 4, 5, 60}));  // not freed, written through

  auto* owned = new double[4]{1, 2, 3, 4};
  auto b = NdArray<double, 2>::Adopt(owned, 2, 2);
  NdArray<double, 2> copy = b;  // copies share the array
  copy.SetItem(3, 8);
  EXPECT_EQ(b.Prod(), 48);
}

TEST(NdArrayApi, ShapesAndRunTimeIndexLists) {
  auto a = NdArray<long long, 3>::FromValues({0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11}, 2, 3, 2);
  auto v = a(Slice().Step(-1), 1);  // axis 1 removed
  NDim<2> shape = v.Shape();
  EXPECT_EQ(shape.ToString(), "(2, 2)");
  EXPECT_EQ(shape.ToString(1), "(-6, 1)");
  EXPECT_EQ(shape.Offset(-1), 8);  // dropping the removed axis folds all offsets into the base
  EXPECT_TRUE(shape.IsSameShape(NDim<2>(2, 2)));
  EXPECT_FALSE(shape.IsSameView(NDim<2>(2, 2)));
  EXPECT_EQ(v.ToString(), "[[8, 9], [2, 3]]");

  // An index of a type the rules do not know drops its axis.
  struct Custom final : Zelq::Indexing {
    const char* TypeName() const override { return "Custom"; }
  } custom;
  Zelq::View list;
  list.AddIndex(&custom);
  list.AddIndex(nullptr);
  Slice second(1, 2);
  list.AddIndex(&second);
  EXPECT_EQ(list.GetCount(), 2);
  EXPECT_STREQ(list.GetIndex(0)->TypeName(), "Custom");
  auto dropped = a.GetView(list);  // axis 0 dropped: (1, 1, 2) of the first block
  EXPECT_EQ(dropped.Shape().ToString(), "(1, 1, 2)");
  EXPECT_EQ(dropped.ToString(), "[[[2, 3]]]");
}

TEST(NdArrayApi, FailuresThrowTheRecordedCodeAndMessage) {
  auto a = NdArray<double, 2>::FromValues({1, 2, 3, 4, 5, 6}, 2, 3);
  EXPECT_EQ(Thrown([&] { a.Reshape(4); }),
            std::make_pair(3, std::string("(INVALID) Cannot reshape NdArray of size 6 to new shape (4)")));
  EXPECT_EQ(Thrown([&] { a.At(2, 0); }),
            std::make_pair(3, std::string("(INVALID) Index (2) is out of bounds for axis 0 of dimension 2")));
  EXPECT_EQ(Thrown([&] { a(Full(), -4); }),
            std::make_pair(3, std::string("(INVALID) Index (-4) is out of bounds for axis 1 of dimension 3")));
  EXPECT_EQ(Thrown([&] { a.Repeat(2, 2); }),
            std::make_pair(3, std::string("(INVALID) Axis 2 is out of bounds for array of dimension 2")));
  EXPECT_EQ(Thrown([&] { a.Item(6); }),
            std::make_pair(3, std::string("(INVALID) Index (6) is out of bounds for axis 0 of dimension 6")));
  EXPECT_EQ(Thrown([&] { a.ToString(9); }).first, 3);
  Zelq::View longer{Full(), Full(), Full()};
  EXPECT_EQ(Thrown([&] { a.GetView(longer); }),
            std::make_pair(3, std::string("(INVALID) View has dimensions larger than #ND (2)")));
  EXPECT_EQ(Thrown([] { NdArray<int, 2> bad(2, -1); }),
            std::make_pair(3, std::string("(INVALID) Dimension size at axis 1 is negative (-1)")));
  EXPECT_EQ(Thrown([] { NdArray<int, 1>::FromValues({1, 2}, 3); }).first, 3);
  EXPECT_EQ(a.Sum(), 21);  // failures left the array as it was

  Zelq::Exception plain(5);
  EXPECT_STREQ(plain.what(), "ERROR");
  EXPECT_EQ(plain.GetCode(), 5);
}

}  // namespace
