// The lists that generate the matrix families: one entry per number of axes
// and per element type. Explicit instantiations and the exported factories
// expand these lists instead of repeating each member by hand.
#ifndef ZELQ_MATRIX_MATRIX_FAMILY_H_
#define ZELQ_MATRIX_MATRIX_FAMILY_H_

// X(n): every supported number of axes.
#define ZELQ_NDIM_LIST(X) X(0) X(1) X(2) X(3)

// X(type): every element type of the N-dimensional arrays.
#define ZELQ_ELEMENT_TYPE_LIST(X) X(char) X(double) X(int) X(long long)

// X(type, n): every (element type, number of axes) pair.
#define ZELQ_NDARRAY_PAIR_LIST_FOR(X, type) X(type, 0) X(type, 1) X(type, 2) X(type, 3)
#define ZELQ_NDARRAY_PAIR_LIST(X)        \
  ZELQ_NDARRAY_PAIR_LIST_FOR(X, char)    \
  ZELQ_NDARRAY_PAIR_LIST_FOR(X, double)  \
  ZELQ_NDARRAY_PAIR_LIST_FOR(X, int)     \
  ZELQ_NDARRAY_PAIR_LIST_FOR(X, long long)

#endif  // ZELQ_MATRIX_MATRIX_FAMILY_H_
