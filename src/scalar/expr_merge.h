// Merging duplicate variables of a linear expression in place, before the
// model turns it into a row: afterwards each column occurs once.
//
// Two strategies, chosen by the model's column count N against the number of
// terms n (integer division N / n):
//   dense  (N / n <= 99): O(n) with a value and a flag buffer indexed by
//          column, owned and reused by the caller. Terms of coefficient 0
//          and detached variables are dropped; a sum that cancels (x - x)
//          stays with coefficient 0.
//   sparse (N / n > 99):  O(n log n) with an ordered map column -> first
//          position, so a short row of a huge model never touches a buffer of
//          the model's size. Terms of coefficient 0 and zero sums are kept.
// Both remove duplicates by moving the last term into their position, so
// the order of the terms is not kept.
//
//   MergeTerms(expr, num_cols, core.merge_values, core.merge_flags);
#ifndef ZELQ_SCALAR_EXPR_MERGE_H_
#define ZELQ_SCALAR_EXPR_MERGE_H_

#include <cstdint>
#include <vector>

#include "scalar/expr_data.h"

namespace Zelq {

// Picks the strategy; n = 0 does nothing. The buffers are grown to at least
// `num_cols` entries; every flag is zero again on return.
void MergeTerms(ExprData& expr, int num_cols, std::vector<double>& values,
                std::vector<uint8_t>& flags);

// Dense strategy. `flags` must be all zero; the buffers grow when a column
// lies beyond them.
void MergeDense(ExprData& expr, std::vector<double>& values, std::vector<uint8_t>& flags);

// Sparse strategy. Terms whose variable is detached (negative index) are
// dropped, as the dense strategy drops them.
void MergeSparse(ExprData& expr);

}  // namespace Zelq

#endif  // ZELQ_SCALAR_EXPR_MERGE_H_
