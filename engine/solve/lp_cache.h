// What an LP solve leaves behind for the basis operations (FSolve, BSolve, basis head, shadow
// price ranges). Owned by the problem through prob->lpCache; dropped when the content changes.
#pragma once

#include <memory>
#include <vector>

#include "OsiClpSolverInterface.hpp"
#include "api/handles.h"
#include "zelq/zelq.h"
#include "solve/coin_log.h"

namespace zelq::engine {

struct LpCache {
  // Message handler of the solved model; declared first so it outlives the model.
  std::unique_ptr<CoinLogHandler> handler;
  // The solved model (minimisation form). The Osi wrapper for factorization access is made on
  // the first basis operation and then owns the model; Model() finds it either way.
  std::unique_ptr<ClpSimplex> model;
  std::unique_ptr<OsiClpSolverInterface> osi;
  int cols = 0;
  int modelRows = 0;
  int rows = 0;  // model rows plus lazy/cut rows
  bool negated = false;
  bool optimalBasis = false;  // an optimal simplex basis is available

  ClpSimplex* Model() const { return osi ? osi->getModelPtr() : model.get(); }
  OsiClpSolverInterface* Osi() {
    if (!osi) osi = std::make_unique<OsiClpSolverInterface>(model.release(), true);
    return osi.get();
  }
};

}  // namespace zelq::engine
