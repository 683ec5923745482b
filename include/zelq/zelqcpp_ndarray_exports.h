// Exported creation functions of the N-dimensional arrays.
//
// CreateNdArray<Type><N>WithData(T* data, int d0, ...) and ...WithExData:
// Type is Dbl (double), Int (int) or Int64t (long long), N is 1..3. The new
// array has shape (d0, ..., dN-1), row-major, and its data is `data` itself.
//  - WithData takes the buffer over: it is released with delete[] when the
//    last array sharing it goes away (a one-element buffer with delete, so
//    allocate it with new T). A zero-size buffer is not released.
//  - WithExData wraps the buffer and never frees it; keep it alive while any
//    array, view or reshape of it exists.
// A null data pointer gives an array without storage. Negative sizes give an
// array whose error record holds code 3. No factory returns null.
//
//   double* p = new double[6]{1, 2, 3, 4, 5, 6};
//   Zelq::INdArray<double, 2>* a = CreateNdArrayDbl2WithData(p, 2, 3);
//   delete a;  // frees p
#ifndef ZELQ_ZELQCPP_NDARRAY_EXPORTS_H_
#define ZELQ_ZELQCPP_NDARRAY_EXPORTS_H_

#include "zelq/zelqcpp_export.h"
#include "zelq/zelqcpp_ndarray_iface.h"

// X(word, type, n): the exported (element type, number of axes) pairs.
#define ZELQ_NDARRAY_EXPORT_LIST(X) \
  X(Dbl, double, 1)                 \
  X(Dbl, double, 2)                 \
  X(Dbl, double, 3)                 \
  X(Int, int, 1)                    \
  X(Int, int, 2)                    \
  X(Int, int, 3)                    \
  X(Int64t, long long, 1)           \
  X(Int64t, long long, 2)           \
  X(Int64t, long long, 3)

// Size parameters and arguments of the N-axis factories.
#define ZELQ_NDARRAY_DIM_PARAMS_1 int d0
#define ZELQ_NDARRAY_DIM_PARAMS_2 int d0, int d1
#define ZELQ_NDARRAY_DIM_PARAMS_3 int d0, int d1, int d2
#define ZELQ_NDARRAY_DIM_ARGS_1 d0
#define ZELQ_NDARRAY_DIM_ARGS_2 d0, d1
#define ZELQ_NDARRAY_DIM_ARGS_3 d0, d1, d2

#define ZELQ_NDARRAY_EXPORT_DECL(word, type, n)                                                  \
  ZELQCPP_API Zelq::INdArray<type, n>* CreateNdArray##word##n##WithData(                         \
      type* data, ZELQ_NDARRAY_DIM_PARAMS_##n);                                                  \
  ZELQCPP_API Zelq::INdArray<type, n>* CreateNdArray##word##n##WithExData(                       \
      type* data, ZELQ_NDARRAY_DIM_PARAMS_##n);

extern "C" {
ZELQ_NDARRAY_EXPORT_LIST(ZELQ_NDARRAY_EXPORT_DECL)
}

#endif  // ZELQ_ZELQCPP_NDARRAY_EXPORTS_H_
