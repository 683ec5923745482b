#include "solve/logger.h"

#include <vector>

namespace zelq::engine {

Logger::~Logger() {
  if (file_ != nullptr) std::fclose(file_);
}

bool Logger::SetFile(const char* path) {
  std::lock_guard<std::mutex> lock(mu_);
  if (path == nullptr || *path == '\0') {
    if (file_ != nullptr) std::fclose(file_);
    file_ = nullptr;
    return true;
  }
  std::FILE* f = std::fopen(path, "a");
  if (f == nullptr) return false;
  if (file_ != nullptr) std::fclose(file_);
  file_ = f;
  return true;
}

void Logger::SetCallback(Callback cb, void* userdata) {
  std::lock_guard<std::mutex> lock(mu_);
  cb_ = cb;
  cbData_ = userdata;
}

void Logger::Line(const std::string& text) {
  std::lock_guard<std::mutex> lock(mu_);
  if (!enabled_) return;
  if (console_) {
    // One write per line, flushed at once, so lines from several problems do not interleave.
    std::fprintf(stdout, "%s\n", text.c_str());
    std::fflush(stdout);
  }
  if (file_ != nullptr) {
    std::fprintf(file_, "%s\n", text.c_str());
    std::fflush(file_);
  }
  if (cb_ != nullptr) {
    std::vector<char> copy(text.begin(), text.end());
    copy.push_back('\0');
    cb_(copy.data(), cbData_);
  }
}

void Logger::Printf(const char* fmt, ...) {
  char small[512];
  va_list ap;
  va_start(ap, fmt);
  int n = std::vsnprintf(small, sizeof small, fmt, ap);
  va_end(ap);
  if (n < 0) return;
  if (n < static_cast<int>(sizeof small)) {
    Line(small);
    return;
  }
  std::string big(static_cast<size_t>(n) + 1, '\0');
  va_start(ap, fmt);
  std::vsnprintf(big.data(), big.size(), fmt, ap);
  va_end(ap);
  big.resize(n);
  Line(big);
}

}  // namespace zelq::engine
