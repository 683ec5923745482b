#include "cli_text.h"

#include <cctype>
#include <cerrno>
#include <climits>
#include <cmath>
#include <cstdio>
#include <cstdlib>

namespace zelqcli {

std::string Lower(std::string text) {
  for (char& c : text) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  return text;
}

bool EndsWithNoCase(const std::string& text, const std::string& tail) {
  return text.size() >= tail.size() &&
         Lower(text.substr(text.size() - tail.size())) == Lower(tail);
}

bool ParseInt(const std::string& text, int* value) {
  if (text.empty() || std::isspace(static_cast<unsigned char>(text[0]))) return false;
  char* end = nullptr;
  errno = 0;
  long long v = std::strtoll(text.c_str(), &end, 10);
  if (*end != '\0' || errno == ERANGE || v < INT_MIN || v > INT_MAX) return false;
  *value = static_cast<int>(v);
  return true;
}

bool ParseDouble(const std::string& text, double* value) {
  if (text.empty() || std::isspace(static_cast<unsigned char>(text[0]))) return false;
  char* end = nullptr;
  double v = std::strtod(text.c_str(), &end);
  if (*end != '\0' || !std::isfinite(v)) return false;
  *value = v;
  return true;
}

std::string FormatNumber(double value) {
  if (value >= 1e30) return "inf";
  if (value <= -1e30) return "-inf";
  char buf[64];
  std::snprintf(buf, sizeof buf, "%.10g", value);
  return buf;
}

}  // namespace zelqcli
