// The solver-free parts of the solving comparison: the instance index, the exported problem
// file for the HiGHS child, objective agreement and geometric means.
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <set>
#include <sstream>

#include "compare_solve.h"
#include "zelq/zelq.h"

namespace zelqbench {

namespace {

constexpr char kMagic[8] = {'Z', 'Q', 'L', 'P', 'B', 'I', 'N', '1'};

std::vector<std::string> SplitTabs(const std::string& line) {
  std::vector<std::string> f;
  size_t start = 0;
  for (;;) {
    size_t tab = line.find('\t', start);
    f.push_back(line.substr(start, tab == std::string::npos ? std::string::npos : tab - start));
    if (tab == std::string::npos) return f;
    start = tab + 1;
  }
}

// The index's set column for each of our set names.
std::string SetOf(const std::string& indexSet) {
  if (indexSet == "netlib-lp") return "netlib";
  if (indexSet == "netlib-kennington-lp") return "kennington";
  if (indexSet == "miplib3") return "miplib3";
  return "";
}

std::string BaseName(const std::string& file) {
  std::string n = file.substr(file.find_last_of('/') + 1);
  for (const char* ext : {".gz", ".mps"})
    if (n.size() > std::strlen(ext) && n.compare(n.size() - std::strlen(ext), std::string::npos, ext) == 0)
      n.resize(n.size() - std::strlen(ext));
  return n;
}

double ToFileBound(double v) {
  if (v >= ZELQ_INFINITY) return std::numeric_limits<double>::infinity();
  if (v <= -ZELQ_INFINITY) return -std::numeric_limits<double>::infinity();
  return v;
}

std::string EngineError(ZELQprob* prob, const char* what, int code) {
  char msg[512] = "";
  ZELQ_GetLastError(prob, msg, sizeof msg);
  return std::string(what) + " failed (code " + std::to_string(code) + "): " + msg;
}

template <class T>
bool Put(std::FILE* f, const T* data, size_t n) {
  return n == 0 || std::fwrite(data, sizeof(T), n, f) == n;
}

template <class T>
bool Get(std::FILE* f, T* data, size_t n) {
  return n == 0 || std::fread(data, sizeof(T), n, f) == n;
}

}  // namespace

bool ParseIndex(const std::string& text, const std::vector<std::string>& sets,
                std::vector<IndexEntry>* out, std::string* error) {
  out->clear();
  std::istringstream in(text);
  std::string line;
  std::set<std::string> seen;
  int lineNo = 0;
  while (std::getline(in, line)) {
    ++lineNo;
    if (!line.empty() && line.back() == '\r') line.pop_back();
    std::vector<std::string> f = SplitTabs(line);
    if (f.size() < 4) continue;
    const std::string set = SetOf(f[0]);
    if (set.empty()) continue;  // the header line and the sets this comparison does not cover
    // "netlib" stands for Netlib with its Kennington LPs.
    const bool chosen = std::any_of(sets.begin(), sets.end(), [&](const std::string& s) {
      return s == set || (s == "netlib" && set == "kennington");
    });
    if (!chosen) continue;
    IndexEntry e;
    e.set = set;
    e.file = f[1];
    e.name = BaseName(f[1]);
    // afiro_crlf is afiro with CRLF line ends: a reader test, not another instance.
    const std::string key = e.name.substr(0, e.name.find("_crlf"));
    if (!seen.insert(key).second) continue;
    char* end = nullptr;
    e.optimum = std::strtod(f[3].c_str(), &end);
    if (f[3].empty() || end == nullptr || *end != '\0' || !std::isfinite(e.optimum)) {
      *error = "index line " + std::to_string(lineNo) + ": optimum '" + f[3] + "' of " + f[1] +
               " is not a number";
      return false;
    }
    out->push_back(e);
  }
  return true;
}

bool ExportedProblem::isMip() const {
  return std::any_of(integer.begin(), integer.end(), [](uint8_t v) { return v != 0; });
}

bool ExportFromEngine(ZELQprob* prob, ExportedProblem* out, std::string* error) {
  int rows = 0, cols = 0, sense = 1, code = 0;
  double objConst = 0.0;
  if ((code = ZELQ_GetIntAttr(prob, "Rows", &rows)) || (code = ZELQ_GetIntAttr(prob, "Cols", &cols)) ||
      (code = ZELQ_GetIntAttr(prob, "ObjSense", &sense)) ||
      (code = ZELQ_GetDblAttr(prob, "ObjConst", &objConst))) {
    *error = EngineError(prob, "reading the problem's attributes", code);
    return false;
  }
  ExportedProblem& p = *out;
  p = ExportedProblem();
  p.rows = rows;
  p.cols = cols;
  p.sense = sense;
  p.objConst = objConst;
  p.obj.resize(cols);
  p.colLower.resize(cols);
  p.colUpper.resize(cols);
  p.rowLower.resize(rows);
  p.rowUpper.resize(rows);
  std::vector<char> type(cols);
  if ((code = ZELQ_GetColInfo(prob, ZELQ_DBLINFO_OBJ, cols, nullptr, p.obj.data())) ||
      (code = ZELQ_GetColInfo(prob, ZELQ_DBLINFO_LB, cols, nullptr, p.colLower.data())) ||
      (code = ZELQ_GetColInfo(prob, ZELQ_DBLINFO_UB, cols, nullptr, p.colUpper.data())) ||
      (code = ZELQ_GetColType(prob, cols, nullptr, type.data())) ||
      (code = ZELQ_GetRowInfo(prob, ZELQ_DBLINFO_LB, rows, nullptr, p.rowLower.data())) ||
      (code = ZELQ_GetRowInfo(prob, ZELQ_DBLINFO_UB, rows, nullptr, p.rowUpper.data()))) {
    *error = EngineError(prob, "reading the bounds and costs", code);
    return false;
  }
  int nnz = 0;
  if ((code = ZELQ_GetRows(prob, rows, nullptr, nullptr, nullptr, nullptr, nullptr, 0, &nnz))) {
    *error = EngineError(prob, "sizing the matrix", code);
    return false;
  }
  std::vector<int> beg(static_cast<size_t>(rows) + 1), idx(std::max(nnz, 1));
  p.val.resize(nnz);
  std::vector<double> val(std::max(nnz, 1));
  if ((code = ZELQ_GetRows(prob, rows, nullptr, beg.data(), nullptr, idx.data(), val.data(), nnz,
                           &nnz))) {
    *error = EngineError(prob, "reading the matrix", code);
    return false;
  }
  beg[rows] = nnz;
  p.rowBeg.assign(beg.begin(), beg.end());
  p.colIdx.assign(idx.begin(), idx.begin() + nnz);
  p.val.assign(val.begin(), val.begin() + nnz);
  p.integer.assign(cols, 0);
  for (int j = 0; j < cols; ++j) {
    if (type[j] == 'B') {
      p.colLower[j] = std::max(p.colLower[j], 0.0);
      p.colUpper[j] = std::min(p.colUpper[j], 1.0);
    }
    p.integer[j] = type[j] == 'B' || type[j] == 'I';
    p.colLower[j] = ToFileBound(p.colLower[j]);
    p.colUpper[j] = ToFileBound(p.colUpper[j]);
  }
  for (int i = 0; i < rows; ++i) {
    p.rowLower[i] = ToFileBound(p.rowLower[i]);
    p.rowUpper[i] = ToFileBound(p.rowUpper[i]);
  }
  return true;
}

bool WriteExport(const ExportedProblem& p, const std::string& path, std::string* error) {
  std::FILE* f = std::fopen(path.c_str(), "wb");
  if (f == nullptr) {
    *error = "cannot create " + path;
    return false;
  }
  const size_t r = static_cast<size_t>(p.rows), c = static_cast<size_t>(p.cols);
  const int64_t head[4] = {p.rows, p.cols, p.nnz(), p.sense};
  bool ok = Put(f, kMagic, 8) && Put(f, head, 4) && Put(f, &p.objConst, 1) &&
            Put(f, p.obj.data(), c) && Put(f, p.colLower.data(), c) && Put(f, p.colUpper.data(), c) &&
            Put(f, p.rowLower.data(), r) && Put(f, p.rowUpper.data(), r) &&
            Put(f, p.rowBeg.data(), r + 1) && Put(f, p.colIdx.data(), p.colIdx.size()) &&
            Put(f, p.val.data(), p.val.size()) && Put(f, p.integer.data(), c);
  ok = std::fclose(f) == 0 && ok;
  if (!ok) *error = "cannot write " + path;
  return ok;
}

bool ReadExport(const std::string& path, ExportedProblem* out, std::string* error) {
  std::FILE* f = std::fopen(path.c_str(), "rb");
  if (f == nullptr) {
    *error = "cannot open " + path;
    return false;
  }
  auto fail = [&](const std::string& what) {
    std::fclose(f);
    *error = path + ": " + what;
    return false;
  };
  char magic[8];
  int64_t head[4];
  ExportedProblem& p = *out;
  p = ExportedProblem();
  if (!Get(f, magic, 8) || std::memcmp(magic, kMagic, 8) != 0) return fail("not an exported problem");
  if (!Get(f, head, 4) || !Get(f, &p.objConst, 1)) return fail("header cut short");
  // Sizes beyond 2^31 entries cannot come from the engine; refuse them before allocating.
  const int64_t kMax = std::numeric_limits<int32_t>::max();
  if (head[0] < 0 || head[1] < 0 || head[2] < 0 || head[0] > kMax || head[1] > kMax ||
      head[2] > kMax || (head[3] != 1 && head[3] != -1))
    return fail("bad header");
  p.rows = head[0];
  p.cols = head[1];
  p.sense = head[3];
  const size_t r = static_cast<size_t>(p.rows), c = static_cast<size_t>(p.cols),
               nz = static_cast<size_t>(head[2]);
  p.obj.resize(c);
  p.colLower.resize(c);
  p.colUpper.resize(c);
  p.rowLower.resize(r);
  p.rowUpper.resize(r);
  p.rowBeg.resize(r + 1);
  p.colIdx.resize(nz);
  p.val.resize(nz);
  p.integer.resize(c);
  if (!Get(f, p.obj.data(), c) || !Get(f, p.colLower.data(), c) || !Get(f, p.colUpper.data(), c) ||
      !Get(f, p.rowLower.data(), r) || !Get(f, p.rowUpper.data(), r) ||
      !Get(f, p.rowBeg.data(), r + 1) || !Get(f, p.colIdx.data(), nz) || !Get(f, p.val.data(), nz) ||
      !Get(f, p.integer.data(), c))
    return fail("data cut short");
  if (std::fgetc(f) != EOF) return fail("data after the last array");
  if (p.rowBeg[0] != 0 || p.rowBeg[r] != head[2]) return fail("row starts do not span the matrix");
  for (size_t i = 0; i < r; ++i)
    if (p.rowBeg[i + 1] < p.rowBeg[i]) return fail("row starts decrease at row " + std::to_string(i));
  for (size_t k = 0; k < nz; ++k)
    if (p.colIdx[k] < 0 || p.colIdx[k] >= p.cols)
      return fail("column index " + std::to_string(p.colIdx[k]) + " out of range");
  std::fclose(f);
  return true;
}

double RelDiff(double a, double b) { return std::fabs(a - b) / std::max(1.0, std::fabs(b)); }

const char* OutcomeText(Outcome o) {
  switch (o) {
    case Outcome::kOptimal: return "optimal";
    case Outcome::kTimeLimit: return "time limit";
    case Outcome::kNoSolution: return "no solution";
    case Outcome::kFailed: return "failed";
    case Outcome::kCrashed: return "crashed";
    case Outcome::kSkipped: return "skipped";
  }
  return "?";
}

Agreement Compare(const std::vector<const SolverResult*>& results, double optimum, double tol) {
  Agreement a;
  std::vector<double> objs;
  for (const SolverResult* r : results) {
    if (r->outcome == Outcome::kTimeLimit) ++a.limited;
    if (!r->hasObj) continue;
    objs.push_back(r->obj);
    if (RelDiff(r->obj, optimum) <= tol)
      ++a.agree;
    else if (r->outcome != Outcome::kTimeLimit)
      ++a.disagree;
  }
  for (size_t i = 0; i < objs.size(); ++i)
    for (size_t k = i + 1; k < objs.size(); ++k) {
      // Symmetric: relative to the larger magnitude of the two.
      double d = std::fabs(objs[i] - objs[k]) / std::max({1.0, std::fabs(objs[i]), std::fabs(objs[k])});
      a.worstMutual = std::max(a.worstMutual, d);
    }
  a.mutual = a.worstMutual <= tol;
  return a;
}

double GeoMean(const std::vector<double>& ratios) {
  if (ratios.empty()) return std::nan("");
  double s = 0.0;
  for (double r : ratios) s += std::log(r);
  return std::exp(s / static_cast<double>(ratios.size()));
}

double ShiftedGeoMean(const std::vector<double>& times, double shift) {
  if (times.empty()) return std::nan("");
  double s = 0.0;
  for (double t : times) s += std::log(t + shift);
  return std::exp(s / static_cast<double>(times.size())) - shift;
}

}  // namespace zelqbench
