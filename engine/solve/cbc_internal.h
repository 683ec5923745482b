// Pieces of the Cbc adapter shared between its files.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "api/handles.h"
#include "zelq/zelq.h"

namespace zelq::engine {

// The MIP start handed to Cbc, as (column index, value) pairs; empty when none is used.
//
// Policy ("MipStartMode"): 0 uses no start. Otherwise complete starts (every column given) are
// checked against bounds, integrality and rows with "FeasTol"/"IntTol", and the feasible one
// with the best objective is used. Without a feasible complete start, mode -1/2 hands the first
// partial start to Cbc, which fixes the given integer values and solves the remaining LP to
// complete it (a failed completion is dropped); mode 1 uses none; mode 3 hands the first start
// of any kind to Cbc as given.
MipStart ChooseMipStart(const ZELQprob* prob);

// Sum of violations of x against the column bounds, integrality and rows (0 when feasible
// within the tolerances); also returns the objective c'x + const in *obj.
double MipViolation(const Problem& p, const std::vector<double>& x, double feasTol,
                    double intTol, double* obj);

}  // namespace zelq::engine
