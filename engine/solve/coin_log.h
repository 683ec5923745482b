// Routes COIN library messages (Clp, Cbc, Cgl, CoinUtils) into the problem's Logger.
#pragma once

#include "CoinMessageHandler.hpp"

namespace zelq::engine {

class Logger;

class CoinLogHandler : public CoinMessageHandler {
 public:
  // level: COIN log level (0 silent ... 3 verbose); log may be null (drops everything).
  CoinLogHandler(Logger* log, int level);
  int print() override;
  CoinMessageHandler* clone() const override;

 private:
  Logger* log_;
};

// COIN log level for the engine's "Logging"/"LogLevel" parameters: 0 when logging is off.
int CoinLogLevel(int logging, int logLevel);

}  // namespace zelq::engine
