#include "io/text_io.h"

#include <zlib.h>

#include <cctype>
#include <cerrno>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <memory>

#include "CoinError.hpp"
#include "CoinFileIO.hpp"
#include "params/params.h"

namespace zelq::engine::io {
namespace {

constexpr double kInfinity = 1e30;

struct FileCloser {
  void operator()(std::FILE* f) const { std::fclose(f); }
};
using FilePtr = std::unique_ptr<std::FILE, FileCloser>;

bool EndsWith(std::string_view s, std::string_view suffix) {
  return s.size() >= suffix.size() && s.substr(s.size() - suffix.size()) == suffix;
}

// Compressed input goes through CoinUtils, which knows gzip and bzip2.
int ReadCompressed(const std::string& path, std::string& text, std::string& err) {
  try {
    std::unique_ptr<CoinFileInput> in(CoinFileInput::create(path));
    char buf[1 << 16];
    for (;;) {
      int n = in->read(buf, sizeof buf);
      if (n <= 0) break;
      text.append(buf, static_cast<size_t>(n));
    }
    return 0;
  } catch (const CoinError& e) {
    err = "cannot read '" + path + "': " + e.message();
    return 2;
  }
}

}  // namespace

int ReadTextFile(const std::string& path, std::string& text, std::string& err) {
  text.clear();
  FilePtr f(std::fopen(path.c_str(), "rb"));
  if (!f) {
    err = "cannot open '" + path + "': " + std::strerror(errno);
    return 2;
  }
  unsigned char magic[3] = {0, 0, 0};
  size_t got = std::fread(magic, 1, 3, f.get());
  bool gz = got >= 2 && magic[0] == 0x1f && magic[1] == 0x8b;
  bool bz = got == 3 && magic[0] == 'B' && magic[1] == 'Z' && magic[2] == 'h';
  if (gz || bz) {
    f.reset();
    return ReadCompressed(path, text, err);
  }
  text.assign(reinterpret_cast<const char*>(magic), got);
  char buf[1 << 16];
  for (;;) {
    size_t n = std::fread(buf, 1, sizeof buf, f.get());
    text.append(buf, n);
    if (n < sizeof buf) break;
  }
  if (std::ferror(f.get())) {
    err = "cannot read '" + path + "': " + std::strerror(errno);
    return 2;
  }
  return 0;
}

int WriteTextFile(const std::string& path, std::string_view text, std::string& err) {
  if (EndsWith(path, ".gz")) {
    gzFile g = gzopen(path.c_str(), "wb");
    if (g == nullptr) {
      err = "cannot open '" + path + "' for writing: " + std::strerror(errno);
      return 2;
    }
    size_t done = 0;
    bool ok = true;
    while (ok && done < text.size()) {
      unsigned chunk = static_cast<unsigned>(std::min<size_t>(text.size() - done, 1u << 20));
      ok = gzwrite(g, text.data() + done, chunk) == static_cast<int>(chunk);
      done += chunk;
    }
    if (gzclose(g) != Z_OK || !ok) {
      err = "cannot write '" + path + "'";
      return 2;
    }
    return 0;
  }
  FilePtr f(std::fopen(path.c_str(), "wb"));
  if (!f) {
    err = "cannot open '" + path + "' for writing: " + std::strerror(errno);
    return 2;
  }
  bool ok = std::fwrite(text.data(), 1, text.size(), f.get()) == text.size();
  ok = (std::fclose(f.release()) == 0) && ok;
  if (!ok) {
    err = "cannot write '" + path + "': " + std::strerror(errno);
    return 2;
  }
  return 0;
}

std::vector<std::string_view> SplitLines(std::string_view text) {
  std::vector<std::string_view> lines;
  size_t pos = 0;
  while (pos < text.size()) {
    size_t nl = text.find('\n', pos);
    size_t end = nl == std::string_view::npos ? text.size() : nl;
    std::string_view line = text.substr(pos, end - pos);
    if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
    lines.push_back(line);
    if (nl == std::string_view::npos) break;
    pos = nl + 1;
  }
  return lines;
}

static bool IsSpace(char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\f' || c == '\v'; }

std::vector<std::string_view> Tokens(std::string_view line) {
  std::vector<std::string_view> out;
  size_t i = 0;
  while (i < line.size()) {
    while (i < line.size() && IsSpace(line[i])) ++i;
    size_t start = i;
    while (i < line.size() && !IsSpace(line[i])) ++i;
    if (i > start) out.push_back(line.substr(start, i - start));
  }
  return out;
}

std::string_view Trim(std::string_view s) {
  while (!s.empty() && IsSpace(s.front())) s.remove_prefix(1);
  while (!s.empty() && IsSpace(s.back())) s.remove_suffix(1);
  return s;
}

bool IEquals(std::string_view a, std::string_view b) {
  if (a.size() != b.size()) return false;
  for (size_t i = 0; i < a.size(); ++i) {
    if (std::tolower(static_cast<unsigned char>(a[i])) !=
        std::tolower(static_cast<unsigned char>(b[i])))
      return false;
  }
  return true;
}

std::string Lower(std::string_view s) {
  std::string out(s);
  for (char& c : out) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  return out;
}

bool ParseNumber(std::string_view s, double* out) {
  if (s.empty() || s.size() > 64) return false;
  char buf[72];
  size_t n = 0;
  bool neg = false;
  if (s.front() == '+' || s.front() == '-') {
    neg = s.front() == '-';
    s.remove_prefix(1);
  }
  if (s.empty() || s.front() == '+' || s.front() == '-') return false;
  for (char c : s) buf[n++] = (c == 'D' || c == 'd') ? 'e' : c;
  double v = 0.0;
  std::string_view body(buf, n);
  if (IEquals(body, "inf") || IEquals(body, "infinity")) {
    v = kInfinity;
  } else {
    auto res = std::from_chars(buf, buf + n, v);
    if (res.ptr != buf + n) return false;
    if (res.ec == std::errc::result_out_of_range) {
      // from_chars leaves v unset: a negative exponent underflowed to zero, anything else
      // overflowed to infinity.
      size_t e = body.find_first_of("eE");
      v = (e != std::string_view::npos && e + 1 < n && body[e + 1] == '-') ? 0.0 : kInfinity;
    } else if (res.ec != std::errc()) {
      return false;
    }
    if (std::isnan(v)) return false;
  }
  if (v >= kInfinity) v = kInfinity;
  *out = neg ? -v : v;
  return true;
}

std::string Num(double v) {
  if (v >= kInfinity) return "1e+30";
  if (v <= -kInfinity) return "-1e+30";
  if (v == 0.0) return "0";  // also turns -0 into 0
  return FormatDouble(v);
}

std::string Quote(std::string_view text) { return QuoteForMessage(text); }

}  // namespace zelq::engine::io
