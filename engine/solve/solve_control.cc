#include "solve/solve_control.h"

namespace zelq::engine {

SolveControl::SolveControl(std::atomic<bool>* interruptFlag, double limit)
    : interrupt(interruptFlag), start(std::chrono::steady_clock::now()), timeLimit(limit) {}

double SolveControl::Elapsed() const {
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

bool SolveControl::ShouldStop() {
  if (reason.load() != kNone) return true;
  if (interrupt != nullptr && interrupt->load()) {
    reason = kInterrupted;
    return true;
  }
  if (timeLimit < 1e30 && Elapsed() >= timeLimit) {
    reason = kTimeLimit;
    return true;
  }
  return false;
}

bool SolveControl::ShouldStopLp() {
  if (mipStopped.load()) return false;
  if (lpGrace <= 0) return ShouldStop();
  if (interrupt != nullptr && interrupt->load()) {
    reason = kInterrupted;
    return true;
  }
  if (timeLimit < 1e30 && Elapsed() >= timeLimit + lpGrace) {
    reason = kTimeLimit;
    return true;
  }
  return false;
}

int ClpStopHandler::event(Event whichEvent) {
  // Clp stops with status 5 when an end-of-iteration event returns a value >= 0.
  if (whichEvent == endOfIteration && control_->ShouldStopLp()) return 0;
  return -1;
}

CbcEventHandler::CbcAction CbcStopHandler::event(CbcEvent whichEvent) {
  if ((whichEvent == node || whichEvent == treeStatus || whichEvent == afterHeuristic ||
       whichEvent == heuristicPass) &&
      control_->ShouldStop()) {
    control_->mipStopped = true;
    return stop;
  }
  return noAction;
}

}  // namespace zelq::engine
