#include "param_file.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <charconv>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <new>
#include <vector>

namespace zelq::engine {
namespace {

bool IsBlank(char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\v' || c == '\f'; }

// Splits a comment-free line into whitespace-separated fields.
std::vector<std::string_view> SplitFields(std::string_view line) {
  std::vector<std::string_view> fields;
  std::size_t i = 0;
  while (i < line.size()) {
    while (i < line.size() && IsBlank(line[i])) ++i;
    const std::size_t start = i;
    while (i < line.size() && !IsBlank(line[i])) ++i;
    if (i > start) fields.push_back(line.substr(start, i - start));
  }
  return fields;
}

std::string_view StripPlus(std::string_view v) {
  if (v.size() > 1 && v[0] == '+' && v[1] != '-' && v[1] != '+') v.remove_prefix(1);
  return v;
}

template <typename T>
std::errc ParseNumber(std::string_view text, T* out) {
  text = StripPlus(text);
  auto res = std::from_chars(text.data(), text.data() + text.size(), *out);
  if (res.ec != std::errc()) return res.ec;
  return res.ptr == text.data() + text.size() ? std::errc() : std::errc::invalid_argument;
}

std::string ValueError(std::errc ec, const char* type, std::string_view value, const char* name) {
  if (ec == std::errc::result_out_of_range) {
    return "value " + QuoteForMessage(value) + " for parameter '" + name +
           "' is out of the " + type + " range";
  }
  return std::string("invalid ") + type + " value " + QuoteForMessage(value) +
         " for parameter '" + name + "'";
}

// Applies one "Name Value" pair to `params`; on failure `msg` holds the
// problem without the file position.
int ApplyPair(std::string_view name, std::string_view value, ParamSet& params,
              std::string& msg) {
  NameRef ref{};
  if (!FindName(name, &ref)) {
    msg = "unknown parameter " + QuoteForMessage(name);
    return kParamErrInvalid;
  }
  if (ref.kind == NameKind::kIntParam) {
    int v = 0;
    if (std::errc ec = ParseNumber(value, &v); ec != std::errc()) {
      msg = ValueError(ec, "integer", value, ref.name);
      return kParamErrInvalid;
    }
    return params.Set(static_cast<IntParam>(ref.index), v, msg);
  }
  if (ref.kind == NameKind::kDblParam) {
    double v = 0.0;
    if (std::errc ec = ParseNumber(value, &v); ec != std::errc()) {
      msg = ValueError(ec, "double", value, ref.name);
      return kParamErrInvalid;
    }
    return params.Set(static_cast<DblParam>(ref.index), v, msg);
  }
  msg = std::string("'") + ref.name + "' is an attribute, not a parameter";
  return kParamErrInvalid;
}

// Handles one line; blank and comment-only lines succeed without effect.
int ApplyLine(std::string_view line, ParamSet& params, std::string& msg) {
  if (std::size_t hash = line.find('#'); hash != std::string_view::npos) {
    line = line.substr(0, hash);
  }
  const std::vector<std::string_view> fields = SplitFields(line);
  if (fields.empty()) return kParamOk;
  if (fields.size() == 1) {
    msg = "missing value for parameter " + QuoteForMessage(fields[0]);
    return kParamErrInvalid;
  }
  if (fields.size() > 2) {
    msg = "unexpected text " + QuoteForMessage(fields[2]) + " after the value of parameter " +
          QuoteForMessage(fields[0]);
    return kParamErrInvalid;
  }
  return ApplyPair(fields[0], fields[1], params, msg);
}

int ParseInto(std::string_view text, std::string_view source, ParamSet& work, std::string& msg) {
  constexpr std::string_view kBom = "\xEF\xBB\xBF";
  if (text.substr(0, kBom.size()) == kBom) text.remove_prefix(kBom.size());
  std::size_t line_no = 0;
  while (!text.empty()) {
    ++line_no;
    const std::size_t end = text.find('\n');
    const std::string_view line = text.substr(0, end);
    text = end == std::string_view::npos ? std::string_view() : text.substr(end + 1);
    std::string problem;
    if (ApplyLine(line, work, problem) != kParamOk) {
      msg = std::string(source) + ":" + std::to_string(line_no) + ": " + problem;
      return kParamErrInvalid;
    }
  }
  return kParamOk;
}

std::string ErrnoText() { return std::strerror(errno); }

int ReadWholeFile(const char* path, std::string& out, std::string& msg) {
  std::FILE* f = std::fopen(path, "rb");
  if (f == nullptr) {
    msg = std::string("cannot open parameter file '") + path + "': " + ErrnoText();
    return kParamErrFile;
  }
  char buf[8192];
  std::size_t n = 0;
  while ((n = std::fread(buf, 1, sizeof buf, f)) > 0) out.append(buf, n);
  const bool failed = std::ferror(f) != 0;
  const std::string why = failed ? ErrnoText() : std::string();
  std::fclose(f);
  if (failed) {
    msg = std::string("cannot read parameter file '") + path + "': " + why;
    return kParamErrFile;
  }
  return kParamOk;
}

bool WriteAll(int fd, const std::string& text) {
  std::size_t done = 0;
  while (done < text.size()) {
    const ssize_t n = ::write(fd, text.data() + done, text.size() - done);
    if (n < 0 && errno == EINTR) continue;
    if (n <= 0) return false;
    done += static_cast<std::size_t>(n);
  }
  return true;
}

// Writes `text` to a fresh temporary file next to `path`, then renames it.
int ReplaceFile(const std::string& path, const std::string& text, std::string& msg) {
  std::string tmp = path + ".XXXXXX";
  const int fd = ::mkstemp(tmp.data());
  if (fd < 0) {
    msg = std::string("cannot write parameter file '") + path + "': " + ErrnoText();
    return kParamErrFile;
  }
  bool ok = ::fchmod(fd, 0644) == 0 && WriteAll(fd, text) && ::fsync(fd) == 0;
  const std::string why = ok ? std::string() : ErrnoText();
  ok = (::close(fd) == 0) && ok;
  if (ok && std::rename(tmp.c_str(), path.c_str()) == 0) return kParamOk;
  msg = std::string("cannot write parameter file '") + path + "': " +
        (why.empty() ? ErrnoText() : why);
  ::unlink(tmp.c_str());
  return kParamErrFile;
}

}  // namespace

std::string FormatParamFile(const ParamSet& params) {
  std::string out = "# Zelq parameter file: parameters that differ from their defaults\n";
  for (std::size_t i = 0; i < kDblParamCount; ++i) {
    const auto p = static_cast<DblParam>(i);
    if (params.IsDefault(p)) continue;
    out += InfoOf(p).name;
    out += ' ';
    out += FormatDouble(params.Get(p));
    out += '\n';
  }
  for (std::size_t i = 0; i < kIntParamCount; ++i) {
    const auto p = static_cast<IntParam>(i);
    if (params.IsDefault(p)) continue;
    out += InfoOf(p).name;
    out += ' ';
    out += std::to_string(params.Get(p));
    out += '\n';
  }
  return out;
}

int ParseParamFile(std::string_view text, std::string_view source, ParamSet& params,
                   std::string& msg) {
  try {
    ParamSet work = params;
    if (int rc = ParseInto(text, source, work, msg); rc != kParamOk) return rc;
    params = work;
    return kParamOk;
  } catch (const std::bad_alloc&) {
    msg = "out of memory while reading parameters";
    return kParamErrMemory;
  }
}

int WriteParamFile(const char* path, const ParamSet& params, std::string& msg) {
  if (path == nullptr || *path == '\0') {
    msg = "no parameter file name given";
    return kParamErrInvalid;
  }
  try {
    return ReplaceFile(path, FormatParamFile(params), msg);
  } catch (const std::bad_alloc&) {
    msg = "out of memory while writing parameters";
    return kParamErrMemory;
  }
}

int ReadParamFile(const char* path, ParamSet& params, std::string& msg) {
  if (path == nullptr || *path == '\0') {
    msg = "no parameter file name given";
    return kParamErrInvalid;
  }
  try {
    std::string text;
    if (int rc = ReadWholeFile(path, text, msg); rc != kParamOk) return rc;
    return ParseParamFile(text, path, params, msg);
  } catch (const std::bad_alloc&) {
    msg = "out of memory while reading parameters";
    return kParamErrMemory;
  }
}

}  // namespace zelq::engine
