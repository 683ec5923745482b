#include "solve/coin_log.h"

#include <string>

#include "solve/logger.h"

namespace zelq::engine {

CoinLogHandler::CoinLogHandler(Logger* log, int level) : log_(log) {
  setLogLevel(level);
  // Keep COIN from writing to stdout itself: every line goes through print().
  setFilePointer(nullptr);
}

int CoinLogHandler::print() {
  if (log_ == nullptr || !log_->Enabled()) return 0;
  std::string text = messageBuffer();
  // A message may hold several lines; the Logger takes one line at a time.
  size_t start = 0;
  while (start <= text.size()) {
    size_t end = text.find('\n', start);
    if (end == std::string::npos) end = text.size();
    if (end > start) log_->Line(text.substr(start, end - start));
    start = end + 1;
  }
  return 0;
}

CoinMessageHandler* CoinLogHandler::clone() const { return new CoinLogHandler(*this); }

int CoinLogLevel(int logging, int logLevel) {
  if (logging == 0) return 0;
  // LogLevel 0..3 -> COIN 1..3: level 1 already gives the usual progress lines.
  if (logLevel <= 1) return 1;
  return logLevel == 2 ? 1 : 3;
}

}  // namespace zelq::engine
