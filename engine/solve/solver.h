// The engine's solve layer: what the C entry points of api_solve.cc call. The adapters behind it
// build Clp / Cbc models from the problem store, run them and write prob->solution; COIN headers
// stay inside engine/solve/*.cc and coin_*.h.
//
// Conventions of the results (original objective sense and scale):
//  - dual[i] is d(objective)/d(bound of row i): for a minimisation a binding '<=' row has a dual
//    <= 0, for a maximisation >= 0; redcost = c - A'dual.
//  - farkas (infeasible LP, "ReqFarkasRay" = 1): y with z = A'y such that
//      max { z'x : colLower <= x <= colUpper } < min { y'r : rowLower <= r <= rowUpper },
//    which proves that no x has A x = r within both bound sets.
//  - ray (unbounded LP, "ReqFarkasRay" = 1): r with max |r_j| = 1 that keeps a feasible point
//    feasible (A r and r move only towards infinite bounds) and strictly improves the objective.
//  - Basis matrix: column j < nCols of B is column j of A; the column of row r's slack (basis
//    head entry nCols + r) is the unit vector e_r, so the all-slack basis is the identity.
#pragma once

#include "zelq/zelq.h"

namespace zelq::engine {

// Solves the LP (relaxing integrality when the problem is a MIP) with Clp. Starts from
// prob->startColBasis/startRowBasis when they are set and afterwards stores the final basis
// there. Fills prob->solution and prob->lpCache. Returns a ZELQ_RETCODE_*; infeasibility,
// limits and interrupts are statuses, not failures.
int SolveLp(ZELQprob* prob);

// Solves the MIP with Cbc (the driver's preprocessing, cuts and heuristics), honouring limits,
// gaps, MIP starts, branch priorities and interrupts. Fills prob->solution including the pool.
int SolveMip(ZELQprob* prob);

// Basis operations on the last optimal LP basis (prob->lpCache). All vectors are dense with one
// entry per model row. They return ZELQ_RETCODE_INVALID with a message when no factorized
// basis is available.
int BasisFSolve(ZELQprob* prob, const double* b, double* x, int* nnz);
int BasisBSolve(ZELQprob* prob, const double* b, double* y, int* nnz);
int BasisHead(ZELQprob* prob, int* head);
int ShadowPriceRange(ZELQprob* prob, int row, int side, double* low, double* up);

// Applies the logging parameters ("Logging", "LogToConsole") to prob->log before a solve.
void ApplyLogSettings(ZELQprob* prob);

}  // namespace zelq::engine
