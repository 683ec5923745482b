// Shapes: layout, text forms, the shape object, broadcasting, casts, squeezes.
#include <gtest/gtest.h>

#include <memory>

#include "matrix/ndim.h"
#include "matrix/shape_ops.h"
#include "matrix/zelq_ndim.h"

namespace Zelq {
namespace {

TEST(NDim, RowMajorLayoutAndTextForms) {
  NDim<3> s({2, 3, 4});
  EXPECT_EQ(s.Text(kDims), "(2, 3, 4)");
  EXPECT_EQ(s.Text(kStrides), "(12, 4, 1)");
  EXPECT_EQ(s.Text(kOffsets), "(0, 0, 0)");
  EXPECT_EQ(s.Text(kDims, ","), "(2,3,4)");
  EXPECT_EQ(s.Size(), 24u);
  EXPECT_EQ(s.PositionOfFlat(23), 23);
  // record k belongs to axis N-k; record 0 is the base record
  EXPECT_EQ(s.Record(3).stride, 12);
  EXPECT_EQ(s.Record(1).stride, 1);
  EXPECT_EQ(s.Record(0).stride, 1);

  NDim<0> scalar;
  EXPECT_EQ(scalar.Text(kDims), "()");
  EXPECT_EQ(scalar.Size(), 1u);
  const AxisRecord& base = scalar.Record(0);
  EXPECT_EQ(base.position, 0);
  EXPECT_EQ(base.stride, 1);
  EXPECT_EQ(base.offset, 0);
  EXPECT_EQ(base.flag, 0);
  EXPECT_EQ(base.extra, 0);

  EXPECT_EQ(NDim<1>({7}).Text(kDims), "(7)");
  NDim<2> m({4, 5});
  EXPECT_EQ(m.Dim(5), 0u);
  EXPECT_EQ(m.Stride(5), 1);
  m.SetBaseOffset(9);
  EXPECT_EQ(m.Offset(-1), 9);
  m.SetAxis(1, 5, -1, 4);
  EXPECT_EQ(m.Text(kStrides), "(5, -1)");
  EXPECT_EQ(m.Start(), 13);
  EXPECT_EQ(m.PositionOfFlat(6), 13 + 5 - 1);
}

TEST(ZelqNDim, InterfaceSlots) {
  auto shape = std::make_unique<ZelqNDim<2>>(NDim<2>({2, 3}));
  EXPECT_EQ(shape->GetDim(1), 3u);
  EXPECT_EQ(shape->GetDim(2), 0u);
  EXPECT_EQ(shape->GetSize(), 6u);
  EXPECT_EQ(shape->GetStride(0), 3);
  EXPECT_EQ(shape->GetStride(-1), 1);
  EXPECT_EQ(shape->GetOffset(7), 0);
  EXPECT_EQ(shape->GetFlag(), 0);
  EXPECT_EQ(shape->GetExtra(), 0);
  EXPECT_EQ(shape->GetImpl(), &shape->Shape());
  EXPECT_STREQ(shape->ToString(0), "(2, 3)");
  EXPECT_STREQ(shape->ToString(1), "(3, 1)");
  EXPECT_STREQ(shape->ToString(2), "(0, 0)");
  EXPECT_STREQ(shape->ToString(3), "");
  EXPECT_EQ(shape->GetErrorCode(), 3);
  EXPECT_STREQ(shape->GetErrorMessage(),
               "(INVALID) Text selector 3 is not 0 (sizes), 1 (strides) or 2 (offsets)");
  EXPECT_STREQ(shape->ToString(0), "(2, 3)");
  EXPECT_EQ(shape->GetErrorCode(), 0);

  std::unique_ptr<INDim<2>> clone(shape->Clone());
  EXPECT_TRUE(clone->IsSameShape(shape.get()));
  EXPECT_TRUE(clone->IsSameView(shape.get()));
  std::unique_ptr<INDim<2>> uniform(shape->CreateUniform(3));
  EXPECT_STREQ(uniform->ToString(0), "(3, 3)");
  EXPECT_STREQ(uniform->ToString(1), "(3, 1)");
  EXPECT_FALSE(uniform->IsSameShape(shape.get()));
  EXPECT_FALSE(uniform->IsSameShape(nullptr));

  NDim<2> moved({2, 3});
  moved.SetAxis(0, 2, 3, 1);
  ZelqNDim<2> offset_view(moved);
  EXPECT_TRUE(offset_view.IsSameShape(shape.get()));
  EXPECT_FALSE(offset_view.IsSameView(shape.get()));

  std::unique_ptr<INDim<0>> none(new ZelqNDim<0>(NDim<0>()));
  EXPECT_STREQ(none->ToString(0), "()");
  EXPECT_EQ(none->GetSize(), 1u);
  std::unique_ptr<INDim<3>> cube(ZelqNDim<3>(NDim<3>()).CreateUniform(2));
  EXPECT_STREQ(cube->ToString(1), "(4, 2, 1)");
}

TEST(ShapeOps, BroadcastsPairsAndOperands) {
  ErrorRecord err;
  NDim<2> a({2, 1}), b({1, 3}), ra, rb;
  ASSERT_TRUE(BroadcastShapes(a, b, ra, rb, err));
  EXPECT_EQ(ra.Text(kDims), "(2, 3)");
  EXPECT_EQ(rb.Text(kDims), "(2, 3)");
  EXPECT_EQ(ra.Text(kStrides), "(1, 0)");
  EXPECT_EQ(rb.Text(kStrides), "(0, 1)");

  EXPECT_FALSE(BroadcastShapes(NDim<2>({2, 3}), NDim<2>({3, 3}), ra, rb, err));
  EXPECT_STREQ(err.Message(), "(INVALID) Shape of (2, 3) is not compatible with (3, 3)");
  EXPECT_EQ(ra.Text(kDims), "(2, 3)");  // outputs untouched on failure

  NDim<2> oa, ob;
  ASSERT_TRUE(BroadcastOperands(NDim<1>({3}), NDim<2>({2, 3}), oa, ob, err));
  EXPECT_EQ(oa.Text(kDims), "(2, 3)");  // (3) meets (2, 3) as (1, 3): leading axis
  EXPECT_EQ(oa.Text(kStrides), "(0, 1)");
  EXPECT_EQ(ob.Text(kStrides), "(3, 1)");

  NDim<1> sa, sb;
  ASSERT_TRUE(BroadcastOperands(NDim<0>(), NDim<1>({4}), sa, sb, err));
  EXPECT_EQ(sa.Text(kDims), "(4)");
  EXPECT_EQ(sa.Text(kStrides), "(0)");

  EXPECT_FALSE(BroadcastOperands(NDim<1>({4}), NDim<2>({2, 3}), oa, ob, err));
  EXPECT_EQ(err.Code(), 3);
  EXPECT_STREQ(err.Message(), "(INVALID) Operand 1 of shape (4) is not compatible with Operand 2 of shape (2, 3)");
  NDim<3> ta, tb;
  EXPECT_FALSE(BroadcastOperands(NDim<3>({2, 3, 4}), NDim<2>({2, 4}), ta, tb, err));
  EXPECT_STREQ(err.Message(),
               "(INVALID) Operand 1 of shape (2, 3, 4) is not compatible with Operand 2 of shape (2, 4)");
}

TEST(ShapeOps, CastsOnlyToAtLeastAsManyAxes) {
  ErrorRecord err;
  NDim<0> s0;
  NDim<1> s1;
  NDim<2> s2;
  NDim<3> s3({2, 3, 4});
  EXPECT_FALSE(CastShape<0>(NDim<1>({2}), s0, err));
  EXPECT_STREQ(err.Message(), "(INVALID) Cannot cast 1-dimensional shape to 0-dimension");
  EXPECT_FALSE(CastShape<0>(NDim<2>(), s0, err));
  EXPECT_STREQ(err.Message(), "(INVALID) Cannot cast 2-dimensional shape to 0-dimension");
  EXPECT_FALSE(CastShape<1>(NDim<2>(), s1, err));
  EXPECT_STREQ(err.Message(), "(INVALID) Cannot cast 2-dimensional shape to 1-dimension");
  EXPECT_FALSE(CastShape<0>(s3, s0, err));
  EXPECT_STREQ(err.Message(), "(INVALID) Cannot cast 3-dimensional shape to 0-dimension");
  EXPECT_FALSE(CastShape<1>(s3, s1, err));
  EXPECT_STREQ(err.Message(), "(INVALID) Cannot cast 3-dimensional shape to 1-dimension");
  EXPECT_FALSE(CastShape<2>(s3, s2, err));
  EXPECT_STREQ(err.Message(), "(INVALID) Cannot cast 3-dimensional shape to 2-dimension");

  NDim<3> up;
  ASSERT_TRUE(CastShape<3>(NDim<1>({5}), up, err));
  EXPECT_EQ(up.Text(kDims), "(1, 1, 5)");
  ASSERT_TRUE(CastShape<3>(s3, up, err));
  EXPECT_EQ(up.Text(kStrides), "(12, 4, 1)");

  NDim<0> p0, q0;
  NDim<1> p1, q1;
  NDim<2> p2, q2;
  EXPECT_FALSE(CastShapes<0>(NDim<0>(), NDim<1>(), p0, q0, err));
  EXPECT_STREQ(err.Message(), "(INVALID) Cannot cast 0-dimensional shape and 1-dimensional shape to 0-dimension");
  EXPECT_FALSE(CastShapes<0>(NDim<0>(), NDim<2>(), p0, q0, err));
  EXPECT_STREQ(err.Message(), "(INVALID) Cannot cast 0-dimensional shape and 2-dimensional shape to 0-dimension");
  EXPECT_FALSE(CastShapes<0>(NDim<0>(), NDim<3>(), p0, q0, err));
  EXPECT_STREQ(err.Message(), "(INVALID) Cannot cast 0-dimensional shape and 3-dimensional shape to 0-dimension");
  EXPECT_FALSE(CastShapes<1>(NDim<1>(), NDim<2>(), p1, q1, err));
  EXPECT_STREQ(err.Message(), "(INVALID) Cannot cast 1-dimensional shape and 2-dimensional shape to 1-dimension");
  EXPECT_FALSE(CastShapes<1>(NDim<1>(), NDim<3>(), p1, q1, err));
  EXPECT_STREQ(err.Message(), "(INVALID) Cannot cast 1-dimensional shape and 3-dimensional shape to 1-dimension");
  EXPECT_FALSE(CastShapes<2>(NDim<2>(), NDim<3>(), p2, q2, err));
  EXPECT_STREQ(err.Message(), "(INVALID) Cannot cast 2-dimensional shape and 3-dimensional shape to 2-dimension");
  ASSERT_TRUE(CastShapes<2>(NDim<0>(), NDim<1>({3}), p2, q2, err));
  EXPECT_EQ(p2.Text(kDims), "(1, 1)");
  EXPECT_EQ(q2.Text(kDims), "(1, 3)");
}

TEST(ShapeOps, SqueezesOnlyAxesOfSizeOne) {
  ErrorRecord err;
  NDim<3> s({3, 1, 4});
  s.SetAxis(1, 1, 4, 7);  // the removed axis's offset joins the base offset
  NDim<2> out;
  ASSERT_TRUE(Squeeze(s, 1, out, err));
  EXPECT_EQ(out.Text(kDims), "(3, 4)");
  EXPECT_EQ(out.BaseOffset(), 7);
  EXPECT_EQ(out.Start(), s.Start());
  ASSERT_TRUE(Squeeze(s, -2, out, err));
  EXPECT_EQ(out.Text(kStrides), "(4, 1)");

  EXPECT_FALSE(Squeeze(s, 0, out, err));
  EXPECT_STREQ(err.Message(), "(INVALID) Dimension size at axis 0 is not one (3)");
  EXPECT_FALSE(Squeeze(s, 5, out, err));
  EXPECT_STREQ(err.Message(), "(INVALID) Dimension size at axis 5 is not one (0)");
  EXPECT_FALSE(Squeeze(s, -5, out, err));
  EXPECT_STREQ(err.Message(), "(INVALID) Dimension size at axis -2 is not one (0)");
  NDim<0> none;
  ASSERT_TRUE(Squeeze(NDim<1>({1}), 0, none, err));
}

}  // namespace
}  // namespace Zelq
