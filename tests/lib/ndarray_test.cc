// N-dimensional arrays through their interface, created by the exported
// factories: element walk on views, reductions, repeat/tile, reshape, text.
#include <gtest/gtest.h>

#include <memory>
#include <numeric>
#include <random>
#include <vector>

#include "matrix/zelq_ndarray.h"
#include "matrix/zelq_ndim.h"
#include "matrix/zelq_view.h"
#include "zelq/zelqcpp_ndarray_exports.h"

namespace Zelq {
namespace {

template <class T, int N>
using Ptr = std::unique_ptr<INdArray<T, N>>;

template <class T, int N>
const T* DataOf(const INdArray<T, N>* a) {
  return static_cast<const ZelqNdArray<T, N>*>(a)->Value().Data().Get();
}

// 0, 1, 2, ... in an array of the given sizes, owned by the array.
Ptr<double, 2> Iota2(int rows, int cols) {
  auto* data = new double[static_cast<size_t>(rows * cols)];
  std::iota(data, data + rows * cols, 0.0);
  return Ptr<double, 2>(CreateNdArrayDbl2WithData(data, rows, cols));
}

template <class T, int N>
std::vector<T> Elements(INdArray<T, N>* a) {
  std::vector<T> values;
  for (size_t f = 0; f < a->GetSize(); ++f) values.push_back(a->Item(f));
  return values;
}

TEST(NdArrayFactories, OwnOrWrapTheBuffer) {
  double stack[6] = {1, 2, 3, 4, 5, 6};
  {
    Ptr<double, 2> a(CreateNdArrayDbl2WithExData(stack, 2, 3));
    EXPECT_EQ(a->GetNDim(), 2);
    EXPECT_EQ(a->GetSize(), 6u);
    EXPECT_EQ(DataOf(a.get()), stack);  // nothing copied
    Ptr<double, 2> t(a->Transpose());
    a.reset();
    t->SetItem(1, 40);  // (0, 1) of the transpose is (1, 0) of the original
  }
  EXPECT_EQ(stack[3], 40);  // the buffer outlived every array over it

  // WithData frees the buffer (the sanitizer build checks the release form).
  { Ptr<long long, 3> owned(CreateNdArrayInt64t3WithData(new long long[24](), 2, 3, 4)); }
  { Ptr<int, 1> single(CreateNdArrayInt1WithData(new int(5), 1)); }

  Ptr<int, 2> empty(CreateNdArrayInt2WithData(nullptr, 2, 3));
  EXPECT_EQ(empty->GetErrorCode(), 0);
  EXPECT_EQ(empty->GetSize(), 6u);
  Ptr<int, 0> sum(empty->Sum());
  EXPECT_EQ(sum->GetErrorCode(), 3);
  EXPECT_STREQ(sum->GetErrorMessage(), "(INVALID) NdArray of shape (2, 3) has no data");
  EXPECT_STREQ(empty->ToString(0), "(no data)");
  ZelqView rows{&static_cast<const Indexing&>(Full())};
  Ptr<int, 2> empty_view(empty->GetView(&rows));
  EXPECT_STREQ(empty_view->GetErrorMessage(), "(INVALID) NdArray of shape (2, 3) has no data");

  Ptr<double, 3> bad(CreateNdArrayDbl3WithData(new double[4], 2, -2, 1));
  EXPECT_EQ(bad->GetErrorCode(), 3);
  EXPECT_STREQ(bad->GetErrorMessage(), "(INVALID) Dimension size at axis 1 is negative (-2)");
  EXPECT_EQ(bad->GetSize(), 0u);
}

TEST(NdArrayFactories, EveryExportMakesItsShape) {
  std::vector<double> dbl(24);
  std::vector<int> in(24);
  std::vector<long long> big(24);
#define ZELQ_CHECK_EXPORT(word, type, n)                                                     \
  {                                                                                          \
    type* data = std::is_same_v<type, double>  ? reinterpret_cast<type*>(dbl.data())         \
                 : std::is_same_v<type, int>   ? reinterpret_cast<type*>(in.data())          \
                                               : reinterpret_cast<type*>(big.data());        \
    Ptr<type, n> a(CreateNdArray##word##n##WithExData(data, ZELQ_TEST_DIMS_##n));           \
    EXPECT_EQ(a->GetNDim(), n);                                                              \
    EXPECT_EQ(a->GetSize(), n == 1 ? 2u : n == 2 ? 6u : 24u);                                \
    EXPECT_EQ(a->GetDim(n - 1), n == 1 ? 2u : n == 2 ? 3u : 4u);                             \
    Ptr<type, n> b(CreateNdArray##word##n##WithData(new type[24](), ZELQ_TEST_DIMS_##n));   \
    EXPECT_EQ(b->GetErrorCode(), 0);                                                         \
  }
#define ZELQ_TEST_DIMS_1 2
#define ZELQ_TEST_DIMS_2 2, 3
#define ZELQ_TEST_DIMS_3 2, 3, 4
  ZELQ_NDARRAY_EXPORT_LIST(ZELQ_CHECK_EXPORT)
#undef ZELQ_CHECK_EXPORT
}

TEST(NdArray, RepeatAndTile) {
  int values[4] = {1, 2, 3, 4};
  Ptr<int, 2> a(CreateNdArrayInt2WithExData(values, 2, 2));
  Ptr<int, 2> r(a->Repeat(2, 1));
  EXPECT_STREQ(r->ToString(0), "[[1, 1, 2, 2], [3, 3, 4, 4]]");
  Ptr<int, 2> t(a->Tile(2, 1));
  EXPECT_STREQ(t->ToString(0), "[[1, 2, 1, 2], [3, 4, 3, 4]]");
  Ptr<int, 2> last(a->Repeat(2, -1));
  EXPECT_STREQ(last->ToString(0), "[[1, 1, 2, 2], [3, 3, 4, 4]]");
  Ptr<int, 2> rows(a->Repeat(3, 0));
  EXPECT_STREQ(rows->ToString(1), "(6, 2)");
  Ptr<int, 2> tiled_rows(a->Tile(2, -2));
  EXPECT_STREQ(tiled_rows->ToString(0), "[[1, 2], [3, 4], [1, 2], [3, 4]]");
  Ptr<int, 2> transposed(a->Transpose());
  Ptr<int, 2> rt(transposed->Repeat(2, 0));  // the walk follows the view's strides
  EXPECT_STREQ(rt->ToString(0), "[[1, 3], [1, 3], [2, 4], [2, 4]]");
  Ptr<int, 2> none(a->Repeat(0, 1));
  EXPECT_STREQ(none->ToString(1), "(2, 0)");

  Ptr<int, 2> bad(a->Repeat(2, 2));
  EXPECT_EQ(bad->GetErrorCode(), 3);
  EXPECT_STREQ(bad->GetErrorMessage(), "(INVALID) Axis 2 is out of bounds for array of dimension 2");
  bad.reset(a->Tile(2, -3));
  EXPECT_STREQ(bad->GetErrorMessage(), "(INVALID) Axis -3 is out of bounds for array of dimension 2");
  bad.reset(a->Tile(-1, 0));
  EXPECT_STREQ(bad->GetErrorMessage(), "(INVALID) Repeat count (-1) is negative");
  EXPECT_EQ(a->GetErrorCode(), 0);  // the source is left as it was

  Ptr<int, 0> scalar(a->Sum());
  Ptr<int, 0> repeated(scalar->Repeat(2, 0));
  EXPECT_STREQ(repeated->GetErrorMessage(), "(INVALID) Cannot repeat for NdArray of shape ()");
  repeated.reset(scalar->Tile(2, 0));
  EXPECT_STREQ(repeated->GetErrorMessage(), "(INVALID) Cannot repeat for NdArray of shape ()");
}

TEST(NdArray, ReshapeSharesWhenStridesReachTheElements) {
  Ptr<double, 2> a = Iota2(2, 3);
  ZelqNDim<1> four(NDim<1>({4}));
  Ptr<double, 1> bad(a->Reshape(&four));
  EXPECT_EQ(bad->GetErrorCode(), 3);
  EXPECT_STREQ(bad->GetErrorMessage(), "(INVALID) Cannot reshape NdArray of size 6 to new shape (4)");
  bad.reset(a->Reshape(static_cast<const INDim<1>*>(nullptr)));
  EXPECT_STREQ(bad->GetErrorMessage(), "(INVALID) Shape to reshape to is null");

  ZelqNDim<3> cube(NDim<3>({3, 1, 2}));
  Ptr<double, 3> r(a->Reshape(&cube));
  EXPECT_EQ(DataOf(r.get()), DataOf(a.get()));  // contiguous: shared
  EXPECT_STREQ(r->ToString(0), "[[[0, 1]], [[2, 3]], [[4, 5]]]");

  Ptr<double, 2> t(a->Transpose());
  ZelqNDim<1> six(NDim<1>({6}));
  Ptr<double, 1> flat(t->Reshape(&six));
  EXPECT_NE(DataOf(flat.get()), DataOf(a.get()));  // not reachable by strides: copied
  EXPECT_EQ(Elements(flat.get()), (std::vector<double>{0, 3, 1, 4, 2, 5}));

  // A (3, 1) column of the transpose only gains or loses size-1 axes: shared.
  Slice first_column(0, 1);
  Full full;
  ZelqView column{&full, &first_column};
  Ptr<double, 2> col(t->GetView(&column));
  ZelqNDim<3> tall(NDim<3>({1, 3, 1}));
  Ptr<double, 3> col3(col->Reshape(&tall));
  EXPECT_EQ(DataOf(col3.get()), DataOf(a.get()));
  EXPECT_EQ(Elements(col3.get()), (std::vector<double>{0, 1, 2}));

  // A 0-axis array reshapes into any size-1 shape without copying.
  Ptr<double, 0> total(a->Sum());
  ZelqNDim<2> one(NDim<2>({1, 1}));
  Ptr<double, 2> boxed(total->Reshape(&one));
  EXPECT_EQ(DataOf(boxed.get()), DataOf(total.get()));
  EXPECT_EQ(boxed->Item(0), 15);
}

TEST(NdArray, ReductionsItemsAndFill) {
  Ptr<double, 2> a = Iota2(2, 3);
  Ptr<double, 0> sum(a->Sum());
  EXPECT_EQ(sum->Item(0), 15);
  EXPECT_EQ(sum->GetNDim(), 0);
  Ptr<double, 0> prod(a->Prod());
  EXPECT_EQ(prod->Item(0), 0);
  long long values[3] = {2, 3, 4};
  Ptr<long long, 1> v(CreateNdArrayInt64t1WithExData(values, 3));
  Ptr<long long, 0> p(v->Prod());
  EXPECT_EQ(p->Item(0), 24);
  Ptr<long long, 1> none(CreateNdArrayInt64t1WithExData(values, 0));
  Ptr<long long, 0> empty_sum(none->Sum());
  Ptr<long long, 0> empty_prod(none->Prod());
  EXPECT_EQ(empty_sum->Item(0), 0);
  EXPECT_EQ(empty_prod->Item(0), 0);

  Ptr<double, 2> t(a->Transpose());
  EXPECT_EQ(t->Item(1), 3);  // flat row-major over the transposed sizes
  EXPECT_EQ(t->Item(6), 0);
  EXPECT_EQ(t->GetErrorCode(), 3);
  EXPECT_STREQ(t->GetErrorMessage(), "(INVALID) Index (6) is out of bounds for axis 0 of dimension 6");
  EXPECT_EQ(t->Item(5), 5);
  EXPECT_EQ(t->GetErrorCode(), 0);  // success clears the record
  t->SetItem(9, 1);
  EXPECT_EQ(t->GetErrorCode(), 3);
  EXPECT_EQ(Elements(a.get()), (std::vector<double>{0, 1, 2, 3, 4, 5}));

  Slice odd(1, 3, 2);
  Full full;
  ZelqView columns{&full, &odd};
  Ptr<double, 2> view(a->GetView(&columns));
  view->Fill(-1);
  EXPECT_EQ(Elements(a.get()), (std::vector<double>{0, -1, 2, 3, -1, 5}));
  Ptr<double, 2> copy(view->Clone());
  copy->Fill(7);
  EXPECT_EQ(Elements(a.get()), (std::vector<double>{0, -1, 2, 3, -1, 5}));

  int indices[4] = {5, -1, 0, 2};
  Ptr<int, 1> list(CreateNdArrayInt1WithExData(indices, 4));
  Ptr<double, 1> taken(t->Take(list.get()));
  EXPECT_EQ(Elements(taken.get()), (std::vector<double>{5, 5, 0, -1}));
  indices[1] = -7;
  taken.reset(t->Take(list.get()));
  EXPECT_STREQ(taken->GetErrorMessage(), "(INVALID) Index (-7) is out of bounds for axis 0 of dimension 6");
  taken.reset(t->Take(nullptr));
  EXPECT_STREQ(taken->GetErrorMessage(), "(INVALID) Index array is null");
}

TEST(NdArray, ViewsOfViewsShareAndWalkCorrectly) {
  // A transposed slice of a reshaped array, read through Sum, Clone, Flatten.
  Ptr<double, 2> a = Iota2(4, 6);
  ZelqNDim<3> shape(NDim<3>({2, 3, 4}));
  Ptr<double, 3> r(a->Reshape(&shape));
  Slice back = Slice().Step(-1);
  Slice middle(1, 3);
  Slice even = Slice().Step(2);
  ZelqView index{&back, &middle, &even};
  Ptr<double, 3> v(r->GetView(&index));  // (2, 2, 2)
  Ptr<double, 3> t(v->Transpose());     // (2, 2, 2), axes reversed
  EXPECT_EQ(DataOf(t.get()), DataOf(a.get()));
  // v[i][j][k] = 12 * (1 - i) + 4 * (1 + j) + 2 * k; t[k][j][i] = v[i][j][k]
  std::vector<double> expected;
  for (int k = 0; k < 2; ++k)
    for (int j = 0; j < 2; ++j)
      for (int i = 0; i < 2; ++i) expected.push_back(12 * (1 - i) + 4 * (1 + j) + 2 * k);
  Ptr<double, 0> sum(t->Sum());
  EXPECT_EQ(sum->Item(0), std::accumulate(expected.begin(), expected.end(), 0.0));
  Ptr<double, 3> clone(t->Clone());
  EXPECT_EQ(Elements(clone.get()), expected);
  Ptr<double, 1> flat(t->Flatten());
  EXPECT_EQ(Elements(flat.get()), expected);
  EXPECT_STREQ(t->ToString(2), "(2, 4, -12)");

  // Scalars remove axes, which come back in front with size 1.
  Scalar last(-1);
  ZelqView row{&last};
  Ptr<double, 2> tail(a->GetView(&row));
  EXPECT_STREQ(tail->ToString(1), "(1, 6)");
  EXPECT_EQ(DataOf(tail.get()), DataOf(a.get()));
  Ptr<double, 1> tail1(a->GetView1(&row));
  EXPECT_EQ(tail1->Item(0), 18);
  Ptr<double, 1> strided(a->GetView1(&index));  // not one stride: copied
  EXPECT_EQ(strided->GetErrorCode(), 3);        // three entries for two axes
  EXPECT_STREQ(strided->GetErrorMessage(), "(INVALID) View has dimensions larger than #ND (2)");
  ZelqView corners{&back, &back};
  strided.reset(a->GetView1(&corners));
  EXPECT_EQ(strided->Item(0), 23);
  EXPECT_EQ(strided->GetSize(), 24u);

  // The kept clamp of backward slices can reach past the axis: refused here.
  Slice beyond = Slice().Start(10).Step(-1);
  ZelqView past{&beyond};
  Ptr<double, 2> refused(a->GetView(&past));
  EXPECT_STREQ(refused->GetErrorMessage(),
               "(INVALID) View of shape (5, 6) reaches outside the data of NdArray of shape (4, 6)");
  Ptr<double, 2> null_view(a->GetView(nullptr));
  EXPECT_STREQ(null_view->GetErrorMessage(), "(INVALID) View is null");
}

TEST(NdArray, TextForms) {
  double values[6] = {1.5, -2, 1e-7, 123456789, 0.1, 3};
  Ptr<double, 2> a(CreateNdArrayDbl2WithExData(values, 2, 3));
  EXPECT_STREQ(a->ToString(0), "[[1.5, -2, 1e-07], [1.23457e+08, 0.1, 3]]");
  EXPECT_STREQ(a->ToString(1), "(2, 3)");
  EXPECT_STREQ(a->ToString(2), "(3, 1)");
  EXPECT_STREQ(a->ToString(3), "(0, 0)");
  EXPECT_STREQ(a->ToString(4), "");
  EXPECT_STREQ(a->GetErrorMessage(),
               "(INVALID) Text selector 4 is not 0 (elements), 1 (sizes), 2 (strides) or 3 (offsets)");
  Ptr<double, 0> sum(a->Sum());
  EXPECT_STREQ(sum->ToString(0), "1.23457e+08");
  EXPECT_STREQ(sum->ToString(1), "()");
  Ptr<double, 2> none(CreateNdArrayDbl2WithExData(values, 2, 0));
  EXPECT_STREQ(none->ToString(0), "[[], []]");

  std::vector<int> many(2000);
  std::iota(many.begin(), many.end(), 0);
  Ptr<int, 2> big(CreateNdArrayInt2WithExData(many.data(), 2, 1000));
  EXPECT_STREQ(big->ToString(0), "[[0, 1, 2, ..., 997, 998, 999], [1000, 1001, 1002, ..., 1997, 1998, 1999]]");
  Ptr<int, 2> small(CreateNdArrayInt2WithExData(many.data(), 1, 10));
  EXPECT_STREQ(small->ToString(0), "[[0, 1, 2, 3, 4, 5, 6, 7, 8, 9]]");
}

// Random views of a (possibly transposed or sliced) array: the elements read
// through Clone, Flatten and Sum are the reference's positions.
TEST(NdArray, RandomViewsReadTheReferencePositions) {
  std::mt19937 rng(7);
  std::vector<double> store(4 * 5 * 6);
  std::iota(store.begin(), store.end(), 0.0);  // element value = its position
  Ptr<double, 3> base(CreateNdArrayDbl3WithExData(store.data(), 4, 5, 6));
  Ptr<double, 3> transposed(base->Transpose());
  int checked = 0;
  for (int round = 0; round < 300; ++round) {
    INdArray<double, 3>* source = round % 2 ? transposed.get() : base.get();
    std::vector<Slice> slices(3);
    ZelqView view;
    for (int k = 0; k < 3; ++k) {
      slices[k].flags = static_cast<uint32_t>(rng() % 8);
      slices[k].start = static_cast<int64_t>(rng() % 15) - 7;
      slices[k].stop = static_cast<int64_t>(rng() % 15) - 7;
      slices[k].step = static_cast<int64_t>(rng() % 7) - 3;
      view.AddIndex(&slices[k]);
    }
    Ptr<double, 3> v(source->GetView(&view));
    if (v->GetErrorCode() != 0) continue;  // reaching outside the data
    // Reference: walk the view's flat indices one by one through Item.
    std::vector<double> expected = Elements(v.get());
    Ptr<double, 3> clone(v->Clone());
    ASSERT_EQ(Elements(clone.get()), expected) << round;
    Ptr<double, 1> flat(v->Flatten());
    ASSERT_EQ(Elements(flat.get()), expected) << round;
    Ptr<double, 0> sum(v->Sum());
    EXPECT_EQ(sum->Item(0), std::accumulate(expected.begin(), expected.end(), 0.0)) << round;
    for (double x : expected) ASSERT_TRUE(x >= 0 && x < 120) << round;
    ++checked;
  }
  EXPECT_GT(checked, 150);
}

}  // namespace
}  // namespace Zelq
