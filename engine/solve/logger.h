// Where solver output goes: the console (when logging is on), a log file and a log callback.
// Every line passes through Line(); the Coin message handler and the engine's own notes use it.
#pragma once

#include <atomic>
#include <cstdarg>
#include <cstdio>
#include <mutex>
#include <string>

namespace zelq::engine {

class Logger {
 public:
  using Callback = void (*)(char* msg, void* userdata);

  ~Logger();
  // Console output follows the "Logging" and "LogToConsole" parameters.
  void SetConsole(bool on) { console_ = on; }
  void SetEnabled(bool on) { enabled_ = on; }
  bool Enabled() const { return enabled_; }
  // Returns false when the file cannot be opened (the old file stays in use).
  bool SetFile(const char* path);
  void SetCallback(Callback cb, void* userdata);

  // One line without its newline.
  void Line(const std::string& text);
  void Printf(const char* fmt, ...) __attribute__((format(printf, 2, 3)));

 private:
  // Switched by parameter changes while a solve may be logging from another thread.
  std::atomic<bool> enabled_{true};
  std::atomic<bool> console_{true};
  std::FILE* file_ = nullptr;
  Callback cb_ = nullptr;
  void* cbData_ = nullptr;
  std::mutex mu_;
};

}  // namespace zelq::engine
