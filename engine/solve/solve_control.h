// Stops a running Clp or Cbc solve on ZELQ_Interrupt or at the wall-clock time limit. The
// solvers copy their event handlers, so the handlers only point at one shared SolveControl.
#pragma once

#include <atomic>
#include <chrono>

#include "CbcEventHandler.hpp"
#include "ClpEventHandler.hpp"

namespace zelq::engine {

struct SolveControl {
  enum Reason { kNone = 0, kInterrupted, kTimeLimit };

  SolveControl(std::atomic<bool>* interruptFlag, double timeLimit);
  // Polled by the handlers; remembers why it said stop.
  bool ShouldStop();
  // Polled by the LP handler. In a MIP solve the LPs go on for `lpGrace` seconds past the time
  // limit, and not at all once Cbc has been told to stop: Cbc's own stop at its limit, and the
  // LPs it solves after any stop to map the incumbent back through preprocessing, must run to
  // the end, or the incumbent is lost.
  bool ShouldStopLp();
  double Elapsed() const;

  std::atomic<bool>* interrupt;
  std::chrono::steady_clock::time_point start;
  double timeLimit;  // seconds; >= 1e30: none
  double lpGrace = 0;  // seconds the LP handler waits past the time limit
  std::atomic<int> reason{kNone};
  std::atomic<bool> mipStopped{false};  // the Cbc handler has returned stop
};

class ClpStopHandler : public ClpEventHandler {
 public:
  explicit ClpStopHandler(SolveControl* control) : control_(control) {}
  int event(Event whichEvent) override;
  ClpEventHandler* clone() const override { return new ClpStopHandler(*this); }

 private:
  SolveControl* control_;
};

class CbcStopHandler : public CbcEventHandler {
 public:
  explicit CbcStopHandler(SolveControl* control) : control_(control) {}
  CbcAction event(CbcEvent whichEvent) override;
  CbcEventHandler* clone() const override { return new CbcStopHandler(*this); }

 private:
  SolveControl* control_;
};

}  // namespace zelq::engine
