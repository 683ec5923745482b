// Pieces of the Clp adapter shared between its files.
#pragma once

#include "ClpSimplex.hpp"
#include "api/handles.h"
#include "zelq/zelq.h"
#include "solve/coin_model.h"

namespace zelq::engine {

// ZELQ_BASIS_* code of a Clp status for a variable with bounds [lo, up].
int FromClpStatus(ClpSimplex::Status s, double lo, double up);
// Clp status for a ZELQ_BASIS_* code; also sets *value to the value the variable takes.
ClpSimplex::Status ToClpStatus(int code, double lo, double up, double* value);

// Writes x, activities, duals, reduced costs, objective and basis of an optimal (or stopped)
// Clp model into prob->solution; duals and reduced costs in the original sense.
void StoreLpResults(ZELQprob* prob, const CoinLpData& data, ClpSimplex* model, bool withValues,
                    bool withBasis);
// Barrier solve of `m` (see clp_barrier.cc), then a primal crossover when `crossover` is set,
// the barrier did not finish or its result is not an optimum; without crossover *basisValid
// becomes false. Returns the barrier iterations.
long RunClpBarrier(ZELQprob* prob, ClpSimplex* m, bool crossover, bool* basisValid);
// Farkas certificate of an infeasible model (false when Clp gave none).
bool StoreFarkas(ZELQprob* prob, const CoinLpData& data, ClpSimplex* model);
// Unbounded ray (false when Clp gave none).
bool StoreRay(ZELQprob* prob, const CoinLpData& data, ClpSimplex* model);

}  // namespace zelq::engine
