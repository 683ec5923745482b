// fuzz_calls: runs the input as a program of engine C calls on one environment and two problem
// slots, and checks after every call that the engine kept its promises.
//
// Encoding. The input is read byte by byte; reading past the end gives 0. Each step reads an
// opcode byte: the low bit picks the problem slot (0 or 1), the rest (op >> 1) % kOpCount the call
// (see the Op enum below, in order). The arguments follow, each from its own bytes:
//   index(limit)  one byte b < 0xF0: b % (limit + 2) - 1, so -1 and `limit` (both invalid) come
//                 up often; b >= 0xF0: INT_MIN, INT_MAX, -2, limit, limit + 1000, 0.
//   count(max)    one byte b < 0xF8: b % (max + 1); else -1, INT_MIN, INT_MAX, 1 << 20, 0.
//                 Counts above kMaxArr come with null arrays (the engine must refuse them);
//                 adds and loads skip such counts (with null arrays they are legal requests
//                 for that many default elements).
//   value         one byte: an entry of kValues (finite, tiny, huge, +-1e30, inf, NaN, ...).
//   sense, type   one byte: an entry of kSenses / kTypes (valid and invalid characters).
//   name          one byte: an entry of kNames (null, empty, duplicates, blanks, long).
//   flag          one byte, its low bit.
// A program stops at the end of the input or after kMaxSteps steps; solves are capped at
// kMaxSolves per input and problems at kMaxDim columns and rows, so every input runs quickly.
//
// Invariants (a violation prints the step and aborts, so libFuzzer keeps the input):
//  * no crash, no sanitizer report, no leak;
//  * a failing call returns a known non-zero code, leaves a non-empty message (when it had a
//    valid problem) and leaves the problem's content exactly as it was;
//  * a successful call leaves the content that a shadow copy of the problem predicts (sizes,
//    bounds, objective, types, names, matrix, sense and constant), an empty last error, and
//    values that read back as set; calls with arguments that are clearly invalid (indices out of
//    range, NaN values, unknown types or senses) must fail;
//  * the matrix reads the same by rows and by columns, without explicit zeros;
//  * after a solve reported optimal, the objective value is c'x + constant of the reported x and
//    x satisfies bounds, rows and integrality within tolerance; for an LP no reduced cost or dual
//    has the sign that improves the objective without limit;
//  * a problem written to MPS or LP and read back has the same content (names aside where the
//    format documents changes; MPS range rows within the rounding of RHS - range, and a row
//    with lower > upper bound as the documented L row), and a copy has the content of its
//    source.
// ZELQ_FUZZ_TRACE=1 in the environment prints each step and every written problem file.
//
// Generator mode: built with -DZELQ_FUZZ_CALLS_MAIN, the file is a small program that writes the
// hand-made seed programs into a directory (see WriteSeeds).

#include <strings.h>
#include <unistd.h>

#include <algorithm>
#include <cctype>
#include <climits>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "zelq/zelq.h"

namespace {

constexpr int kMaxArr = 64;    // counts above this are passed with null arrays
constexpr int kMaxDim = 10;    // adds that would make more columns or rows are skipped
constexpr int kMaxSteps = 200;
constexpr int kMaxSolves = 3;
constexpr double kInf = 1e30;

const double kValues[] = {0.0,    1.0,   -1.0,  2.0,    -2.0,  0.5,    3.0,   -3.5,
                          10.0,   -10.0, 100.0, 1e-9,   1e6,   -1e6,   1e20,  1e29,
                          1e30,   -1e30, 1.5e30, -1e40, INFINITY, -INFINITY, NAN, -0.0,
                          5e-324, 1.7e308, 7.0,  4.0,    -4.0,  1e-3,   0.25,  -0.75};
constexpr int kValueCount = sizeof(kValues) / sizeof(kValues[0]);
const char kSenses[] = {'L', 'G', 'E', 'N', 'R', 0, 'X', 'l', 'B', 'L', 'G', 'E'};
const char kTypes[] = {'C', 'B', 'I', 'X', 'c', 0, 'C', 'I'};

const std::string kLongName(300, 'n');
const char* const kNames[] = {nullptr, "",     "x",    "y",   "x",        "C0",  "R1",
                              "a b",   "end",  "1abc", "x\ty", "free",    "z_9", "obj",
                              "OBJ",   "é",    "  ",   "y",   kLongName.c_str(), "C1"};
constexpr int kNameCount = sizeof(kNames) / sizeof(kNames[0]);

const char* const kParamNames[] = {"TimeLimit", "timelimit", "FeasTol",    "RelGap",
                                   "LpMethod",  "Presolve",  "NodeLimit",  "Logging",
                                   "LogToConsole", "IntTol", "Cols",       "NoSuchParam",
                                   "",          nullptr,     "ObjVal",     "CutLevel",
                                   "InfBound",  "Scaling",   "Dualize",    "MipStartMode",
                                   "DualTol",   "AbsGap",    "HeurLevel",  "ReqFarkasRay"};
constexpr int kParamCount = sizeof(kParamNames) / sizeof(kParamNames[0]);
const char* const kAttrNames[] = {"Cols",  "Rows",   "Elems",   "ObjVal",  "Status", "HasSol",
                                  "Bins",  "Ints",   "IsMIP",   "MinElem", "MaxRHS", "BestBnd",
                                  "ObjBound", "LpObjVal", "TimeLimit", "nosuch", "", nullptr,
                                  "PoolSols", "HasBasis", "MaxCost", "MinBound"};
constexpr int kAttrCount = sizeof(kAttrNames) / sizeof(kAttrNames[0]);
const char* const kInfoNames[] = {"Value", "Slack", "Dual", "RedCost", "LB",  "UB",
                                  "Obj",   "BranchFactor", "DualFarkas", "PrimalRay", "lb",
                                  "Nope",  nullptr};
constexpr int kInfoCount = sizeof(kInfoNames) / sizeof(kInfoNames[0]);

[[noreturn]] void Violation(int step, const char* what, const std::string& detail) {
  std::fprintf(stderr, "fuzz_calls: step %d: %s: %s\n", step, what, detail.c_str());
  std::fflush(stderr);
  std::abort();
}

// ---- Input decoding ----------------------------------------------------------------------------

class Src {
 public:
  Src(const uint8_t* p, size_t n) : p_(p), n_(n) {}
  bool Empty() const { return n_ == 0; }
  uint8_t U8() {
    if (n_ == 0) return 0;
    --n_;
    return *p_++;
  }
  bool Flag() { return U8() & 1; }
  int Index(int limit) {
    const uint8_t b = U8();
    if (b < 0xF0) return static_cast<int>(b % (std::max(limit, 0) + 2)) - 1;
    switch (b & 7) {
      case 0: return INT_MIN;
      case 1: return INT_MAX;
      case 2: return -2;
      case 3: return limit;
      case 4: return limit + 1000;
      default: return 0;
    }
  }
  int Count(int max) {
    const uint8_t b = U8();
    if (b < 0xF8) return b % (max + 1);
    switch (b & 7) {
      case 0: return -1;
      case 1: return INT_MIN;
      case 2: return INT_MAX;
      case 3: return 1 << 20;
      default: return 0;
    }
  }
  double Value() { return kValues[U8() % kValueCount]; }
  char Sense() { return kSenses[U8() % sizeof(kSenses)]; }
  char Type() { return kTypes[U8() % sizeof(kTypes)]; }
  const char* Name() { return kNames[U8() % kNameCount]; }

 private:
  const uint8_t* p_;
  size_t n_;
};

// Entries the harness fills for a count (arrays of counts outside (0, kMaxArr] have one entry).
int Fill(int num) { return num > 0 && num <= kMaxArr ? num : 0; }

// Arrays for a count: `n` entries when 0 < n <= kMaxArr, else one entry (never read by a
// correct engine); Ptr() is null for counts the engine must refuse without reading.
template <class T>
struct Arr {
  std::vector<T> v;
  bool null = false;
  Arr(int n, bool forceNull = false) : v(n > 0 && n <= kMaxArr ? n : 1), null(forceNull || n > kMaxArr) {}
  T* Ptr() { return null ? nullptr : v.data(); }
  int Size() const { return static_cast<int>(v.size()); }
};

// ---- Snapshots and the shadow problem ----------------------------------------------------------

bool Same(double a, double b) { return a == b || (std::isnan(a) && std::isnan(b)); }
double NormInf(double v) { return v >= kInf ? kInf : (v <= -kInf ? -kInf : v); }

// ZELQ_FUZZ_TRACE is set: print what an input does, to investigate it.
bool Tracing() {
  static const bool trace = std::getenv("ZELQ_FUZZ_TRACE") != nullptr;
  return trace;
}

// Copies a file to stderr (while tracing).
void ShowFile(const std::string& path) {
  FILE* f = std::fopen(path.c_str(), "r");
  if (!f) {
    std::fprintf(stderr, "cannot show %s\n", path.c_str());
    return;
  }
  char buf[4096];
  for (size_t n; (n = std::fread(buf, 1, sizeof buf, f)) > 0;) std::fwrite(buf, 1, n, stderr);
  std::fclose(f);
}

struct Snap {
  int cols = 0, rows = 0, sense = 1, lazy = 0;
  double k = 0.0;
  std::vector<double> obj, lb, ub, rlo, rup, branch;
  std::string types;
  std::vector<std::string> cn, rn;
  std::map<std::pair<int, int>, double> a;  // (row, col) -> non-zero value

  std::string Diff(const Snap& o, bool withNames = true) const {
    if (cols != o.cols || rows != o.rows)
      return "size " + std::to_string(cols) + "x" + std::to_string(rows) + " vs " +
             std::to_string(o.cols) + "x" + std::to_string(o.rows);
    if (sense != o.sense) return "objective sense";
    if (!Same(k, o.k)) return "objective constant " + std::to_string(k) + " vs " + std::to_string(o.k);
    if (lazy != o.lazy) return "lazy constraint count";
    auto vec = [](const char* what, const std::vector<double>& x,
                  const std::vector<double>& y) -> std::string {
      for (size_t i = 0; i < x.size(); ++i)
        if (!Same(x[i], y[i])) {
          char b[160];
          std::snprintf(b, sizeof b, "%s[%zu] %.17g vs %.17g", what, i, x[i], y[i]);
          return b;
        }
      return "";
    };
    std::string r;
    if (!(r = vec("obj", obj, o.obj)).empty()) return r;
    if (!(r = vec("colLower", lb, o.lb)).empty()) return r;
    if (!(r = vec("colUpper", ub, o.ub)).empty()) return r;
    if (!(r = vec("rowLower", rlo, o.rlo)).empty()) return r;
    if (!(r = vec("rowUpper", rup, o.rup)).empty()) return r;
    if (!(r = vec("branchFactor", branch, o.branch)).empty()) return r;
    if (types != o.types) return "types '" + types + "' vs '" + o.types + "'";
    if (withNames && cn != o.cn) return "column names";
    if (withNames && rn != o.rn) return "row names";
    if (a.size() != o.a.size()) return "matrix entry count " + std::to_string(a.size()) + " vs " + std::to_string(o.a.size());
    for (const auto& [rc, v] : a) {
      auto it = o.a.find(rc);
      if (it == o.a.end() || !Same(it->second, v))
        return "matrix entry (" + std::to_string(rc.first) + ", " + std::to_string(rc.second) + ")";
    }
    return "";
  }

  // Shadow operations: what a successful call must make of the content.
  void AddCol(double c, char t, double lo, double up, const char* name) {
    obj.push_back(c);
    types.push_back(t);
    lb.push_back(NormInf(lo));
    ub.push_back(NormInf(up));
    branch.push_back(0.0);
    cn.push_back(name && *name ? name : "#");  // unnamed: "C<j>" wherever it ends up
    ++cols;
  }
  void AddRow(double lo, double up, const char* name) {
    rlo.push_back(lo);
    rup.push_back(up);
    rn.push_back(name && *name ? name : "#");
    ++rows;
  }
  void SetA(int r, int c, double v) {
    if (v == 0.0) a.erase({r, c});
    else a[{r, c}] = v;
  }
  // Removes the columns (ofCols) or rows in `drop`, renumbering the rest in order.
  void Delete(bool ofCols, const std::set<int>& drop) {
    int& count = ofCols ? cols : rows;
    std::vector<int> ni(count, -1);
    int next = 0;
    for (int k = 0; k < count; ++k)
      if (!drop.count(k)) ni[k] = next++;
    auto keep = [&](auto& v) {
      size_t out = 0;
      for (int k = 0; k < count; ++k)
        if (ni[k] >= 0) v[out++] = v[k];
      v.resize(out);
    };
    if (ofCols) keep(obj), keep(lb), keep(ub), keep(branch), keep(cn), keep(types);
    else keep(rlo), keep(rup), keep(rn);
    std::map<std::pair<int, int>, double> na;
    for (const auto& [rc, v] : a) {
      const int r = ofCols ? rc.first : ni[rc.first], c = ofCols ? ni[rc.second] : rc.second;
      if (r >= 0 && c >= 0) na[{r, c}] = v;
    }
    a.swap(na);
    count = next;
  }
};

// Default names are positional ("C3" is column 3's name only while it is column 3), so the
// shadow keeps unnamed elements as "#" and turns them into display names when comparing.
void Display(Snap& s) {
  for (int j = 0; j < s.cols; ++j)
    if (s.cn[j] == "#") s.cn[j] = "C" + std::to_string(j);
  for (int i = 0; i < s.rows; ++i)
    if (s.rn[i] == "#") s.rn[i] = "R" + std::to_string(i);
}

std::string ErrOf(ZELQprob* p) {
  char b[1200];
  b[0] = '\0';
  if (ZELQ_GetLastError(p, b, sizeof b) != 0) return "<GetLastError failed>";
  return b;
}

// Reads the content of p through the C interface; an empty string when all went well.
std::string TakeSnap(ZELQprob* p, Snap* s) {
  *s = Snap{};
  auto need = [&](int rc, const char* what) -> std::string {
    if (rc == 0) return "";
    return std::string(what) + " failed with " + std::to_string(rc) + ": " + ErrOf(p);
  };
  std::string e;
  int elems = 0;
  if (!(e = need(ZELQ_GetIntAttr(p, "Cols", &s->cols), "Cols")).empty()) return e;
  if (!(e = need(ZELQ_GetIntAttr(p, "Rows", &s->rows), "Rows")).empty()) return e;
  if (!(e = need(ZELQ_GetIntAttr(p, "ObjSense", &s->sense), "ObjSense")).empty()) return e;
  if (!(e = need(ZELQ_GetIntAttr(p, "LazyCons", &s->lazy), "LazyCons")).empty()) return e;
  if (!(e = need(ZELQ_GetIntAttr(p, "Elems", &elems), "Elems")).empty()) return e;
  if (!(e = need(ZELQ_GetDblAttr(p, "ObjConst", &s->k), "ObjConst")).empty()) return e;
  const int n = s->cols, m = s->rows;
  if (n < 0 || m < 0 || n > 100000 || m > 100000) return "implausible size";
  s->obj.resize(n), s->lb.resize(n), s->ub.resize(n), s->branch.resize(n);
  s->rlo.resize(m), s->rup.resize(m);
  std::vector<char> t(n + 1);
  std::vector<double> sink(1);
  if (!(e = need(ZELQ_GetColInfo(p, "Obj", n, nullptr, n ? s->obj.data() : sink.data()), "Obj")).empty()) return e;
  if (!(e = need(ZELQ_GetColInfo(p, "LB", n, nullptr, n ? s->lb.data() : sink.data()), "LB")).empty()) return e;
  if (!(e = need(ZELQ_GetColInfo(p, "UB", n, nullptr, n ? s->ub.data() : sink.data()), "UB")).empty()) return e;
  if (!(e = need(ZELQ_GetColInfo(p, "BranchFactor", n, nullptr, n ? s->branch.data() : sink.data()), "BranchFactor")).empty()) return e;
  if (!(e = need(ZELQ_GetRowInfo(p, "LB", m, nullptr, m ? s->rlo.data() : sink.data()), "row LB")).empty()) return e;
  if (!(e = need(ZELQ_GetRowInfo(p, "UB", m, nullptr, m ? s->rup.data() : sink.data()), "row UB")).empty()) return e;
  if (!(e = need(ZELQ_GetColType(p, n, nullptr, t.data()), "GetColType")).empty()) return e;
  s->types.assign(t.data(), n);
  auto names = [&](bool col, int count, std::vector<std::string>* out) -> std::string {
    for (int i = 0; i < count; ++i) {
      int req = 0;
      int rc = col ? ZELQ_GetColName(p, i, nullptr, 0, &req) : ZELQ_GetRowName(p, i, nullptr, 0, &req);
      if (rc != 0 || req < 1) return "name size query failed: " + ErrOf(p);
      std::vector<char> b(req);
      rc = col ? ZELQ_GetColName(p, i, b.data(), req, nullptr) : ZELQ_GetRowName(p, i, b.data(), req, nullptr);
      if (rc != 0 || static_cast<int>(std::strlen(b.data())) != req - 1) return "name fetch failed";
      out->emplace_back(b.data());
    }
    // The lookup of a name gives an element with that name, the first one when several hold
    // it; a default name that no element holds gives -1.
    for (int i = 0; i < count; ++i) {
      const std::string& nm = (*out)[i];
      const bool isDefault = nm == (col ? "C" : "R") + std::to_string(i);
      int idx = -2;
      const int rc = col ? ZELQ_GetColIdx(p, nm.c_str(), &idx) : ZELQ_GetRowIdx(p, nm.c_str(), &idx);
      if (rc != 0) return "name lookup failed";
      if (idx == -1 ? !isDefault
                    : (idx < 0 || idx >= count || (*out)[idx] != nm || (!isDefault && idx > i)))
        return "lookup of \"" + nm + "\" gives " + std::to_string(idx) + " for element " +
               std::to_string(i);
    }
    return "";
  };
  if (!(e = names(true, n, &s->cn)).empty()) return e;
  if (!(e = names(false, m, &s->rn)).empty()) return e;
  // Matrix by rows and by columns.
  int req = -1;
  if (!(e = need(ZELQ_GetRows(p, m, nullptr, nullptr, nullptr, nullptr, nullptr, 0, &req), "GetRows size")).empty()) return e;
  if (req != elems) return "GetRows gives " + std::to_string(req) + " entries, Elems " + std::to_string(elems);
  std::vector<int> beg(m + 1), cnt(m + 1), idx(req + 1);
  std::vector<double> val(req + 1);
  if (!(e = need(ZELQ_GetRows(p, m, nullptr, beg.data(), cnt.data(), idx.data(), val.data(), req, &req), "GetRows")).empty()) return e;
  for (int i = 0; i < m; ++i)
    for (int q = beg[i]; q < beg[i] + cnt[i]; ++q) {
      if (q < 0 || q >= req || idx[q] < 0 || idx[q] >= n) return "GetRows entry out of range";
      if (val[q] == 0.0 || !std::isfinite(val[q])) return "GetRows gives a zero or non-finite entry";
      if (!s->a.emplace(std::make_pair(i, idx[q]), val[q]).second) return "GetRows gives a duplicate entry";
    }
  int reqc = -1;
  if (!(e = need(ZELQ_GetCols(p, n, nullptr, nullptr, nullptr, nullptr, nullptr, 0, &reqc), "GetCols size")).empty()) return e;
  if (reqc != req) return "GetCols and GetRows disagree on the entry count";
  std::vector<int> cb(n + 1), cc(n + 1), ci(reqc + 1);
  std::vector<double> cv(reqc + 1);
  if (!(e = need(ZELQ_GetCols(p, n, nullptr, cb.data(), cc.data(), ci.data(), cv.data(), reqc, nullptr), "GetCols")).empty()) return e;
  for (int j = 0; j < n; ++j)
    for (int q = cb[j]; q < cb[j] + cc[j]; ++q) {
      if (q < 0 || q >= reqc || ci[q] < 0 || ci[q] >= m) return "GetCols entry out of range";
      auto it = s->a.find({ci[q], j});
      if (it == s->a.end() || !Same(it->second, cv[q])) return "GetCols and GetRows disagree";
    }
  return "";
}

// ---- The program state -------------------------------------------------------------------------

enum Op {
  kAddCol, kAddCols, kAddRow, kAddRows, kDelCols, kDelRows, kSetValues, kReplaceObj, kSetTypes,
  kSetElem, kSetElems, kSetNames, kObjSenseConst, kLoadProb, kQueryMatrix, kQueryInfo,
  kQueryNames, kAttr, kParam, kSolve, kSolution, kCopy, kLife, kFile, kClear, kStart, kLazy,
  kSolFiles, kOpCount
};

struct Runner {
  ZELQenv* env = nullptr;
  ZELQprob* slot[2] = {nullptr, nullptr};
  Snap shadow[2];
  int step = 0;
  int solves = 0;
  std::string file;  // scratch file stem in /dev/shm

  ~Runner() {
    for (auto& p : slot) ZELQ_DeleteProb(&p);
    ZELQ_DeleteEnv(&env);
    for (const char* ext : {".mps", ".lp", ".sol", ".bas", ".mst", ".prm", ".log"})
      ::unlink((file + ext).c_str());
  }

  void Fail(const char* what, const std::string& detail) { Violation(step, what, detail); }

  // Current content of slot s (must agree with the shadow).
  void Verify(int s, const char* after) {
    if (!slot[s]) return;
    Snap now;
    std::string e = TakeSnap(slot[s], &now);
    if (!e.empty()) Fail(after, "reading the problem back: " + e);
    Snap want = shadow[s];
    Display(want);
    e = want.Diff(now);
    if (!e.empty()) Fail(after, "content differs from the expected one: " + e);
  }

  // Common checks for a call on slot s with result rc; `mustFail` marks clearly bad arguments.
  // Returns true when the call succeeded (the caller then updates the shadow and calls Verify).
  bool Result(int s, int rc, const char* call, bool mustFail = false) {
    if (rc != 0 && rc != 1 && rc != 2 && rc != 3 && rc != 5 && rc != 10)
      Fail(call, "unexpected return code " + std::to_string(rc));
    if (!slot[s]) {
      if (rc != ZELQ_RETCODE_INVALID) Fail(call, "a null problem gave " + std::to_string(rc));
      return false;
    }
    const std::string err = ErrOf(slot[s]);
    if (rc != 0) {
      if (err.empty()) Fail(call, "failed with " + std::to_string(rc) + " but left no message");
      Verify(s, call);  // unchanged
      return false;
    }
    if (mustFail) Fail(call, "accepted invalid arguments");
    if (!err.empty()) Fail(call, "succeeded but the last error is \"" + err + "\"");
    return true;
  }

  void Run(Src& in);
  void Step(Src& in);
  void OpAddCols(Src& in, int s, bool one);
  void OpAddRows(Src& in, int s, bool one);
  void OpDel(Src& in, int s, bool cols);
  void OpSetValues(Src& in, int s);
  void OpSetElems(Src& in, int s, bool one);
  void OpLoad(Src& in, int s);
  void OpQueries(Src& in, int s, Op op);
  void OpParam(Src& in, int s);
  void OpSolve(Src& in, int s);
  void OpSolution(Src& in, int s);
  void OpFile(Src& in, int s);
  void OpSolFiles(Src& in, int s);
  void OpMisc(Src& in, int s, Op op);
  void CheckOptimal(int s);
  void CheckDualSigns(int s);
};

void LogSink(char* msg, void* userdata) {
  *static_cast<size_t*>(userdata) += std::strlen(msg);
}
size_t gLogBytes = 0;

ZELQprob* NewProb(ZELQenv* env) {
  ZELQprob* p = nullptr;
  if (ZELQ_CreateProb(env, &p) != 0 || p == nullptr) Violation(-1, "CreateProb", "failed");
  ZELQ_SetLogCallback(p, LogSink, &gLogBytes);
  return p;
}

void Runner::Run(Src& in) {
  ZELQenvconfig* cfg = nullptr;
  if (ZELQ_CreateEnvConfig(&cfg) != 0) Violation(-1, "CreateEnvConfig", "failed");
  if (ZELQ_SetEnvConfig(cfg, "LogToConsole", "0") != 0) Violation(-1, "SetEnvConfig", "failed");
  if (ZELQ_CreateEnvWithConfig(cfg, &env) != 0) Violation(-1, "CreateEnvWithConfig", "failed");
  ZELQ_DeleteEnvConfig(&cfg);
  file = "/dev/shm/zelq_fuzz_calls_" + std::to_string(::getpid());
  slot[0] = NewProb(env);
  for (step = 0; step < kMaxSteps && !in.Empty(); ++step) Step(in);
}

void Runner::Step(Src& in) {
  const uint8_t code = in.U8();
  const int s = code & 1;
  const Op op = static_cast<Op>((code >> 1) % kOpCount);
  if (Tracing()) std::fprintf(stderr, "step %d: op %d on slot %d\n", step, static_cast<int>(op), s);
  switch (op) {
    case kAddCol: return OpAddCols(in, s, true);
    case kAddCols: return OpAddCols(in, s, false);
    case kAddRow: return OpAddRows(in, s, true);
    case kAddRows: return OpAddRows(in, s, false);
    case kDelCols: return OpDel(in, s, true);
    case kDelRows: return OpDel(in, s, false);
    case kSetValues: return OpSetValues(in, s);
    case kSetElem: return OpSetElems(in, s, true);
    case kSetElems: return OpSetElems(in, s, false);
    case kLoadProb: return OpLoad(in, s);
    case kQueryMatrix:
    case kQueryInfo:
    case kQueryNames:
    case kAttr: return OpQueries(in, s, op);
    case kParam: return OpParam(in, s);
    case kSolve: return OpSolve(in, s);
    case kSolution: return OpSolution(in, s);
    case kFile: return OpFile(in, s);
    case kSolFiles: return OpSolFiles(in, s);
    default: return OpMisc(in, s, op);
  }
}

bool BadLower(double v) { return std::isnan(v) || v >= kInf; }
bool BadUpper(double v) { return std::isnan(v) || v <= -kInf; }
bool BadFinite(double v) { return !std::isfinite(v) || std::fabs(v) >= kInf; }
bool BadType(char t) { return t != 'C' && t != 'B' && t != 'I'; }

// Row bounds the engine must give for a sense; false when the arguments must be refused.
bool RowBounds(char sense, double b, double u, double* lo, double* up) {
  switch (sense) {
    case 'L': *lo = -kInf, *up = b; break;
    case 'G': *lo = b, *up = kInf; break;
    case 'E': *lo = *up = b; break;
    case 'N': *lo = -kInf, *up = kInf; break;
    case 'R':
    case 0: *lo = b, *up = u; break;
    default: return false;
  }
  if (sense != 'N' && std::isnan(b)) return false;
  if ((sense == 'R' || sense == 0) && std::isnan(u)) return false;
  *lo = NormInf(*lo), *up = NormInf(*up);
  return !(*lo >= kInf || *up <= -kInf);
}

// Sparse entries for a column (limit rows) or row (limit columns); may hold duplicates and bad
// indices. Returns false when the entries must be refused.
bool Entries(Src& in, int n, int limit, std::vector<int>* idx, std::vector<double>* val) {
  bool ok = true;
  std::set<int> seen;
  for (int k = 0; k < n; ++k) {
    const int i = in.Index(limit);
    const double v = in.Value();
    idx->push_back(i), val->push_back(v);
    if (i < 0 || i >= limit || !seen.insert(i).second || BadFinite(v)) ok = false;
  }
  return ok;
}

void Runner::OpAddCols(Src& in, int s, bool one) {
  ZELQprob* p = slot[s];
  const Snap& sh = shadow[s];
  const int m = sh.rows;
  const int nCol = one ? 1 : in.Count(4);
  // Huge counts with null arrays are legal requests for that many default columns; they would
  // only measure the allocator, so the harness does not make them.
  if (nCol > kMaxArr || (nCol > 0 && sh.cols + nCol > kMaxDim)) return;
  int mode = in.U8();  // bit 0: colMatCnt null; 1: obj null; 2: types null; 3: bounds null;
                       // 4: names null; 5: beg null
  bool valid = nCol >= 0;
  std::vector<int> beg, cnt, idx;
  std::vector<double> val, obj, lo, up;
  std::string types;
  std::vector<const char*> names;
  const int n = Fill(nCol);
  for (int k = 0; k < n; ++k) {
    beg.push_back(static_cast<int>(idx.size()));
    const int c = in.Count(3);
    const int take = Fill(c);
    if (c < 0 && !(mode & 32) && !(mode & 1)) valid = false;
    cnt.push_back(c < 0 ? c : take);
    if (!Entries(in, take, m, &idx, &val)) valid = valid && (mode & 32);
    obj.push_back(in.Value()), lo.push_back(in.Value()), up.push_back(in.Value());
    types.push_back(in.Type());
    names.push_back(in.Name());
  }
  beg.push_back(static_cast<int>(idx.size()));
  for (int k = 0; k < n; ++k) {
    if (!(mode & 2) && BadFinite(obj[k])) valid = false;
    if (!(mode & 4) && BadType(types[k])) valid = false;
    if (!(mode & 8) && (BadLower(lo[k]) || BadUpper(up[k]))) valid = false;
  }
  int rc;
  if (one) {
    if (nCol != 1) return;
    const int c = cnt[0];
    rc = ZELQ_AddCol(p, obj[0], c, c > 0 ? idx.data() : nullptr, c > 0 ? val.data() : nullptr,
                     types[0], lo[0], up[0], names[0]);
    valid = c >= 0 && !BadFinite(obj[0]) && !BadType(types[0]) && !BadLower(lo[0]) &&
            !BadUpper(up[0]);
    std::set<int> seen;
    for (int q = 0; q < c; ++q)
      if (idx[q] < 0 || idx[q] >= m || !seen.insert(idx[q]).second || BadFinite(val[q]))
        valid = false;
    mode = 0;
  } else {
    rc = ZELQ_AddCols(p, nCol, (mode & 2) ? nullptr : obj.data(),
                      (mode & 32) ? nullptr : beg.data(), (mode & 1) ? nullptr : cnt.data(),
                      idx.data(), val.data(), (mode & 4) ? nullptr : types.data(),
                      (mode & 8) ? nullptr : lo.data(), (mode & 8) ? nullptr : up.data(),
                      (mode & 16) ? nullptr : names.data());
    if (nCol == 0) valid = true;
  }
  if (!Result(s, rc, one ? "AddCol" : "AddCols", nCol >= 0 && !valid)) return;
  Snap& w = shadow[s];
  const int first = w.cols;
  for (int k = 0; k < n; ++k)
    w.AddCol((mode & 2) ? 0.0 : obj[k], (mode & 4) ? 'C' : types[k], (mode & 8) ? 0.0 : lo[k],
             (mode & 8) ? kInf : up[k], (mode & 16) ? nullptr : names[k]);
  if (!(mode & 32))
    for (int k = 0; k < n; ++k)
      for (int q = beg[k]; q < beg[k] + cnt[k]; ++q) w.SetA(idx[q], first + k, val[q]);
  Verify(s, one ? "AddCol" : "AddCols");
}

void Runner::OpAddRows(Src& in, int s, bool one) {
  ZELQprob* p = slot[s];
  const int nCols = shadow[s].cols;
  const int nRow = one ? 1 : in.Count(4);
  if (nRow > kMaxArr || (nRow > 0 && shadow[s].rows + nRow > kMaxDim)) return;
  int mode = in.U8();  // bit 0: cnt null; 1: sense null; 2: bound null; 3: upper null;
                       // 4: names null
  bool valid = nRow >= 0;
  const int n = Fill(nRow);
  std::vector<int> beg, cnt, idx;
  std::vector<double> val, bound, upper;
  std::string sense;
  std::vector<const char*> names;
  for (int k = 0; k < n; ++k) {
    beg.push_back(static_cast<int>(idx.size()));
    const int c = in.Count(3);
    const int take = Fill(c);
    cnt.push_back(c < 0 ? c : take);
    if (c < 0 && !(mode & 1)) valid = false;
    if (!Entries(in, take, nCols, &idx, &val)) valid = false;
    sense.push_back(in.Sense()), bound.push_back(in.Value()), upper.push_back(in.Value());
    names.push_back(in.Name());
  }
  beg.push_back(static_cast<int>(idx.size()));
  std::vector<double> lo(n), up(n);
  for (int k = 0; k < n; ++k) {
    if (!(mode & 2)) {
      const char sk = sense[k];
      if ((sk == 'R' || sk == 0) && (mode & 8)) valid = false;
      if (!RowBounds(sk, (mode & 4) ? 0.0 : bound[k], (mode & 8) ? kInf : upper[k], &lo[k], &up[k]))
        valid = false;
    } else if (!RowBounds('R', (mode & 4) ? -kInf : bound[k], (mode & 8) ? kInf : upper[k], &lo[k], &up[k])) {
      valid = false;
    }
  }
  int rc;
  const char* call = one ? "AddRow" : "AddRows";
  if (one) {
    const int c = cnt[0];
    valid = c >= 0 && RowBounds(sense[0], bound[0], upper[0], &lo[0], &up[0]);
    std::set<int> seen;
    for (int q = 0; q < c; ++q)
      if (idx[q] < 0 || idx[q] >= nCols || !seen.insert(idx[q]).second || BadFinite(val[q]))
        valid = false;
    rc = ZELQ_AddRow(p, c, c > 0 ? idx.data() : nullptr, c > 0 ? val.data() : nullptr, sense[0],
                     bound[0], upper[0], names[0]);
    mode = 0;
  } else {
    rc = ZELQ_AddRows(p, nRow, beg.data(), (mode & 1) ? nullptr : cnt.data(), idx.data(),
                      val.data(), (mode & 2) ? nullptr : sense.data(),
                      (mode & 4) ? nullptr : bound.data(), (mode & 8) ? nullptr : upper.data(),
                      (mode & 16) ? nullptr : names.data());
    if (nRow == 0) valid = true;
  }
  if (!Result(s, rc, call, nRow >= 0 && !valid)) return;
  Snap& w = shadow[s];
  for (int k = 0; k < n; ++k) {
    const int r = w.rows;
    const char* nm = (mode & 16) ? nullptr : names[k];
    w.AddRow(lo[k], up[k], nm);
    for (int q = beg[k]; q < beg[k] + cnt[k]; ++q) w.SetA(r, idx[q], val[q]);
  }
  Verify(s, call);
}

void Runner::OpDel(Src& in, int s, bool cols) {
  const int limit = cols ? shadow[s].cols : shadow[s].rows;
  const int num = in.Count(4);
  Arr<int> list(num, in.Flag() && in.Flag());
  bool valid = num >= 0 && !(num > 0 && list.Ptr() == nullptr);
  std::set<int> drop;
  if (num > 0 && num <= kMaxArr)
    for (int k = 0; k < num; ++k) {
      list.v[k] = in.Index(limit);
      if (list.v[k] < 0 || list.v[k] >= limit) valid = false;
      drop.insert(list.v[k]);
    }
  const int rc = cols ? ZELQ_DelCols(slot[s], num, list.Ptr()) : ZELQ_DelRows(slot[s], num, list.Ptr());
  const char* call = cols ? "DelCols" : "DelRows";
  if (!Result(s, rc, call, !valid)) return;
  Snap& w = shadow[s];
  // Unnamed elements move: keep them marked so their default names follow the new positions.
  w.Delete(cols, drop);
  Verify(s, call);
}

void Runner::OpSetValues(Src& in, int s) {
  const int which = in.U8() % 6;  // obj, col lower, col upper, branch, row lower, row upper
  static const char* const kCalls[] = {"SetColObj", "SetColLower", "SetColUpper",
                                       "SetColBranchFactors", "SetRowLower", "SetRowUpper"};
  Snap& w = shadow[s];
  const int limit = which >= 4 ? w.rows : w.cols;
  const int num = in.Count(4);
  const bool nullList = (in.U8() & 7) == 0, nullVals = (in.U8() & 7) == 0;
  Arr<int> list(num, nullList);
  Arr<double> vals(num, nullVals);
  bool valid = num >= 0 && !(num > 0 && (list.Ptr() == nullptr || vals.Ptr() == nullptr));
  for (int k = 0; k < Fill(num); ++k) {
    list.v[k] = in.Index(limit);
    vals.v[k] = in.Value();
    if (list.v[k] < 0 || list.v[k] >= limit) valid = false;
    const double v = vals.v[k];
    if ((which == 0 || which == 3) && BadFinite(v)) valid = false;
    if ((which == 1 || which == 4) && BadLower(v)) valid = false;
    if ((which == 2 || which == 5) && BadUpper(v)) valid = false;
  }
  ZELQprob* p = slot[s];
  int rc = 0;
  switch (which) {
    case 0: rc = ZELQ_SetColObj(p, num, list.Ptr(), vals.Ptr()); break;
    case 1: rc = ZELQ_SetColLower(p, num, list.Ptr(), vals.Ptr()); break;
    case 2: rc = ZELQ_SetColUpper(p, num, list.Ptr(), vals.Ptr()); break;
    case 3: rc = ZELQ_SetColBranchFactors(p, num, list.Ptr(), vals.Ptr()); break;
    case 4: rc = ZELQ_SetRowLower(p, num, list.Ptr(), vals.Ptr()); break;
    default: rc = ZELQ_SetRowUpper(p, num, list.Ptr(), vals.Ptr()); break;
  }
  if (!Result(s, rc, kCalls[which], !valid)) return;
  std::vector<double>* target[] = {&w.obj, &w.lb, &w.ub, &w.branch, &w.rlo, &w.rup};
  for (int k = 0; k < num; ++k) (*target[which])[list.v[k]] = NormInf(vals.v[k]);
  Verify(s, kCalls[which]);
}

void Runner::OpSetElems(Src& in, int s, bool one) {
  Snap& w = shadow[s];
  if (one) {
    const int c = in.Index(w.cols), r = in.Index(w.rows);
    const double v = in.Value();
    const bool valid = c >= 0 && c < w.cols && r >= 0 && r < w.rows && !BadFinite(v);
    const int rc = ZELQ_SetElem(slot[s], c, r, v);
    if (!Result(s, rc, "SetElem", !valid)) return;
    double back = NAN;
    if (ZELQ_GetElem(slot[s], c, r, &back) != 0 || !Same(back, v == 0.0 ? 0.0 : v))
      Fail("SetElem", "the coefficient does not read back");
    w.SetA(r, c, v);
    Verify(s, "SetElem");
    return;
  }
  const int num = in.Count(5);
  Arr<int> cols(num, (in.U8() & 7) == 0), rows(num, (in.U8() & 7) == 0);
  Arr<double> vals(num, (in.U8() & 7) == 0);
  bool valid = num >= 0 && !(num > 0 && (!cols.Ptr() || !rows.Ptr() || !vals.Ptr()));
  for (int k = 0; k < Fill(num); ++k) {
    cols.v[k] = in.Index(w.cols), rows.v[k] = in.Index(w.rows), vals.v[k] = in.Value();
    if (cols.v[k] < 0 || cols.v[k] >= w.cols || rows.v[k] < 0 || rows.v[k] >= w.rows ||
        BadFinite(vals.v[k]))
      valid = false;
  }
  const int rc = ZELQ_SetElems(slot[s], num, cols.Ptr(), rows.Ptr(), vals.Ptr());
  if (!Result(s, rc, "SetElems", !valid)) return;
  for (int k = 0; k < num; ++k) w.SetA(rows.v[k], cols.v[k], vals.v[k]);  // the last one wins
  Verify(s, "SetElems");
}

void Runner::OpLoad(Src& in, int s) {
  const int nCol = in.Count(6), nRow = in.Count(6);
  if (nCol > kMaxDim || nRow > kMaxDim) return;  // see OpAddCols
  if (nCol < 0 || nRow < 0) {
    const int rc = ZELQ_LoadProb(slot[s], nCol, nRow, 1, 0.0, nullptr, nullptr, nullptr, nullptr,
                                 nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                                 nullptr, nullptr);
    // Huge or negative counts with null arrays: all-default content is legal for huge counts,
    // but this harness keeps problems small, so only refusals are followed.
    if (rc == 0) {
      if (nCol < 0 || nRow < 0) Fail("LoadProb", "negative count accepted");
      // Accepted: rebuild the shadow from the engine (checked for plausibility by TakeSnap).
      Snap now;
      std::string e = TakeSnap(slot[s], &now);
      if (!e.empty()) Fail("LoadProb", e);
      if (now.cols != nCol || now.rows != nRow) Fail("LoadProb", "sizes differ");
      ZELQ_DeleteProb(&slot[s]);
      shadow[s] = Snap{};
      slot[s] = NewProb(env);
      return;
    }
    Result(s, rc, "LoadProb", false);
    return;
  }
  const int sense = in.U8() % 5 == 0 ? 0 : (in.Flag() ? 1 : -1);
  const double k = in.Value();
  const int mode = in.U8();  // 1: obj null, 2: matrix null, 4: types null, 8: bounds null,
                             // 16: sense null, 32: names null, 64: rowUpper null
  bool valid = nCol >= 0 && nRow >= 0 && sense != 0 && !BadFinite(k);
  const int n = std::max(nCol, 0), m = std::max(nRow, 0);
  std::vector<int> beg, cnt, idx;
  std::vector<double> val, obj(n + 1), lo(n + 1), up(n + 1), rb(m + 1), ru(m + 1);
  std::string types(n + 1, 'C'), senses(m + 1, 'L');
  std::vector<const char*> cn(n + 1), rn(m + 1);
  for (int j = 0; j < n; ++j) {
    beg.push_back(static_cast<int>(idx.size()));
    const int c = in.Count(3);
    cnt.push_back(c < 0 ? c : Fill(c));
    if (c < 0 && !(mode & 2)) valid = false;
    if (!Entries(in, Fill(c), m, &idx, &val) && !(mode & 2)) valid = false;
    obj[j] = in.Value(), lo[j] = in.Value(), up[j] = in.Value(), types[j] = in.Type();
    cn[j] = in.Name();
    if (!(mode & 1) && BadFinite(obj[j])) valid = false;
    if (!(mode & 4) && BadType(types[j])) valid = false;
    if (!(mode & 8) && (BadLower(lo[j]) || BadUpper(up[j]))) valid = false;
  }
  beg.push_back(static_cast<int>(idx.size()));
  cnt.push_back(0);
  std::vector<double> rlo(m), rup(m);
  for (int i = 0; i < m; ++i) {
    senses[i] = in.Sense(), rb[i] = in.Value(), ru[i] = in.Value(), rn[i] = in.Name();
    const bool ranged = senses[i] == 'R' || senses[i] == 0;
    if (!(mode & 16)) {
      if (ranged && (mode & 64)) valid = false;
      if (!RowBounds(senses[i], rb[i], (mode & 64) ? kInf : ru[i], &rlo[i], &rup[i])) valid = false;
    } else if (!RowBounds('R', rb[i], (mode & 64) ? kInf : ru[i], &rlo[i], &rup[i])) {
      valid = false;
    }
  }
  idx.push_back(0), val.push_back(0.0);
  const int rc = ZELQ_LoadProb(
      slot[s], nCol, nRow, sense, k, (mode & 1) ? nullptr : obj.data(),
      (mode & 2) ? nullptr : beg.data(), (mode & 2) ? nullptr : cnt.data(), idx.data(),
      val.data(), (mode & 4) ? nullptr : types.data(), (mode & 8) ? nullptr : lo.data(),
      (mode & 8) ? nullptr : up.data(), (mode & 16) ? nullptr : senses.data(), rb.data(),
      (mode & 64) ? nullptr : ru.data(), (mode & 32) ? nullptr : cn.data(),
      (mode & 32) ? nullptr : rn.data());
  if (!Result(s, rc, "LoadProb", !valid)) return;
  Snap w;
  w.sense = sense, w.k = k;
  for (int j = 0; j < n; ++j) {
    const char* nm = (mode & 32) ? nullptr : cn[j];
    w.AddCol((mode & 1) ? 0.0 : obj[j], (mode & 4) ? 'C' : types[j], (mode & 8) ? 0.0 : lo[j],
             (mode & 8) ? kInf : up[j], nm);
  }
  for (int i = 0; i < m; ++i) {
    const char* nm = (mode & 32) ? nullptr : rn[i];
    w.AddRow(rlo[i], rup[i], nm);
  }
  if (!(mode & 2))
    for (int j = 0; j < n; ++j)
      for (int q = beg[j]; q < beg[j] + cnt[j]; ++q) w.SetA(idx[q], j, val[q]);
  shadow[s] = w;
  Verify(s, "LoadProb");
}

void Runner::OpQueries(Src& in, int s, Op op) {
  ZELQprob* p = slot[s];
  const Snap& w = shadow[s];
  if (op == kQueryMatrix) {
    const bool rows = in.Flag();
    const int limit = rows ? w.rows : w.cols;
    const int num = in.Count(4);
    Arr<int> list(num, in.Flag());
    bool valid = num >= 0 && (list.Ptr() ? true : num == limit || num == 0);
    for (int k = 0; k < Fill(num) && list.Ptr(); ++k) {
      list.v[k] = in.Index(limit);
      if (list.v[k] < 0 || list.v[k] >= limit) valid = false;
    }
    if (!list.Ptr() && num > kMaxArr) valid = false;
    int req = -1;
    int rc = rows ? ZELQ_GetRows(p, num, list.Ptr(), nullptr, nullptr, nullptr, nullptr, 0, &req)
                  : ZELQ_GetCols(p, num, list.Ptr(), nullptr, nullptr, nullptr, nullptr, 0, &req);
    if (!Result(s, rc, rows ? "GetRows" : "GetCols", !valid)) return;
    int want = 0;
    for (int k = 0; k < num; ++k) {
      const int e = list.Ptr() ? list.v[k] : k;
      for (const auto& [rc2, v] : w.a) want += (rows ? rc2.first : rc2.second) == e;
    }
    if (req != want) Fail("GetRows/GetCols", "size query gives " + std::to_string(req));
    // A buffer one entry short must be refused; the exact one must work.
    const int size = in.Flag() && req > 0 ? req - 1 : req;
    std::vector<int> beg(std::clamp(num, 1, kMaxArr)), cnt(beg.size()), idx(size + 1);
    std::vector<double> val(size + 1);
    rc = rows ? ZELQ_GetRows(p, num, list.Ptr(), beg.data(), cnt.data(), idx.data(), val.data(), size, nullptr)
              : ZELQ_GetCols(p, num, list.Ptr(), beg.data(), cnt.data(), idx.data(), val.data(), size, nullptr);
    if ((rc == 0) != (size == req)) Fail("GetRows/GetCols", "buffer size not honoured");
    Result(s, rc, "GetRows/GetCols");
    return;
  }
  if (op == kQueryInfo) {
    const bool rows = in.Flag();
    const char* name = kInfoNames[in.U8() % kInfoCount];
    const int limit = rows ? w.rows : w.cols;
    const int num = in.Count(4);
    Arr<int> list(num, in.Flag());
    Arr<double> out(std::max(num, limit), in.U8() == 0);
    for (int k = 0; k < Fill(num) && list.Ptr(); ++k) list.v[k] = in.Index(limit);
    const int rc = rows ? ZELQ_GetRowInfo(p, name, num, list.Ptr(), out.Ptr())
                        : ZELQ_GetColInfo(p, name, num, list.Ptr(), out.Ptr());
    Result(s, rc, rows ? "GetRowInfo" : "GetColInfo");
    if (rc == 0 && name && (!strcasecmp(name, "LB") || !strcasecmp(name, "UB"))) {
      const std::vector<double>& src = rows ? (name[0] == 'L' || name[0] == 'l' ? w.rlo : w.rup)
                                            : (name[0] == 'L' || name[0] == 'l' ? w.lb : w.ub);
      for (int k = 0; k < num; ++k)
        if (!Same(out.v[k], src[list.Ptr() ? list.v[k] : k])) Fail("GetInfo", "bound differs");
    }
    return;
  }
  if (op == kQueryNames) {
    const bool rows = in.Flag();
    const int limit = rows ? w.rows : w.cols;
    const int i = in.Index(limit);
    const int len = in.Count(12);
    const bool nullBuf = in.Flag(), nullReq = in.Flag();
    // The buffer really holds `len` bytes (names are at most 300 bytes, so huge lengths get 1024).
    std::vector<char> buff(std::clamp(len, 1, 1024), '\x7f');
    int req = -7;
    const int rc = rows ? ZELQ_GetRowName(p, i, nullBuf ? nullptr : buff.data(), len, nullReq ? nullptr : &req)
                        : ZELQ_GetColName(p, i, nullBuf ? nullptr : buff.data(), len, nullReq ? nullptr : &req);
    const bool inRange = i >= 0 && i < limit;
    const bool bad = !inRange || (nullBuf && nullReq) || (!nullBuf && len <= 0);
    if (!Result(s, rc, rows ? "GetRowName" : "GetColName", bad)) return;
    if (!nullBuf) {
      Snap d = w;
      Display(d);
      const std::string& nm = rows ? d.rn[i] : d.cn[i];
      if (std::strcmp(buff.data(), nm.c_str()) != 0) Fail("GetName", "name differs: " + nm);
    }
    if (!nullReq && req < 1) Fail("GetName", "size below 1");
    const char* name = in.Name();
    const bool nullIdx = in.Flag();
    int idx = -5;
    const int rc2 = rows ? ZELQ_GetRowIdx(p, name, nullIdx ? nullptr : &idx)
                         : ZELQ_GetColIdx(p, name, nullIdx ? nullptr : &idx);
    Result(s, rc2, "GetIdx", name == nullptr || nullIdx);
    return;
  }
  // Attributes and name searches.
  const char* name = kAttrNames[in.U8() % kAttrCount];
  const bool nullOut = in.U8() == 0;
  int iv = 0;
  double dv = 0;
  int rc = in.Flag() ? ZELQ_GetIntAttr(p, name, nullOut ? nullptr : &iv)
                     : ZELQ_GetDblAttr(p, name, nullOut ? nullptr : &dv);
  Result(s, rc, "GetAttr", name == nullptr || nullOut);
  int kind = 9;
  ZELQprob* q = in.Flag() ? nullptr : p;
  rc = ZELQ_SearchParamAttr(q, name, &kind);
  if (q) Result(s, rc, "SearchParamAttr", name == nullptr);
  else if (rc != (name ? 0 : ZELQ_RETCODE_INVALID)) Fail("SearchParamAttr", "without a problem");
  if (rc == 0 && (kind < -1 || kind > 3)) Fail("SearchParamAttr", "kind out of range");
}

void Runner::OpParam(Src& in, int s) {
  ZELQprob* p = slot[s];
  const char* name = kParamNames[in.U8() % kParamCount];
  const int what = in.U8() % 8;
  if (what == 0 || what == 1) {  // set int
    int v = in.Index(6);
    if (v > INT_MIN) --v;
    if (in.U8() == 0xFF) v = INT_MAX;
    if (name && !strcasecmp(name, "LogToConsole") && v == 1) v = 0;  // keep the fuzzer quiet
    int before = 0;
    const bool had = p && ZELQ_GetIntParam(p, name, &before) == 0;
    const int rc = ZELQ_SetIntParam(p, name, v);
    if (!Result(s, rc, "SetIntParam", name == nullptr)) {
      int after = 0;
      if (had && (ZELQ_GetIntParam(p, name, &after) != 0 || after != before))
        Fail("SetIntParam", "a failed set changed the value");
      return;
    }
    int back = 0, lo = 0, hi = 0;
    if (ZELQ_GetIntParam(p, name, &back) != 0 || back != v) Fail("SetIntParam", "does not read back");
    if (ZELQ_GetIntParamMin(p, name, &lo) != 0 || ZELQ_GetIntParamMax(p, name, &hi) != 0 || v < lo || v > hi)
      Fail("SetIntParam", "accepted a value outside [min, max]");
    return;
  }
  if (what == 2 || what == 3) {  // set double
    const double v = in.Value();
    double before = 0;
    const bool had = p && ZELQ_GetDblParam(p, name, &before) == 0;
    const int rc = ZELQ_SetDblParam(p, name, v);
    if (!Result(s, rc, "SetDblParam", name == nullptr || std::isnan(v))) {
      double after = 0;
      if (had && (ZELQ_GetDblParam(p, name, &after) != 0 || !Same(after, before)))
        Fail("SetDblParam", "a failed set changed the value");
      return;
    }
    double back = 0, lo = 0, hi = 0;
    if (ZELQ_GetDblParam(p, name, &back) != 0) Fail("SetDblParam", "does not read back");
    if (ZELQ_GetDblParamMin(p, name, &lo) != 0 || ZELQ_GetDblParamMax(p, name, &hi) != 0 ||
        back < lo || back > hi)
      Fail("SetDblParam", "value outside [min, max]");
    if (!Same(back, v) && !(std::fabs(v) >= kInf && std::fabs(back) >= kInf))
      Fail("SetDblParam", "does not read back");
    return;
  }
  int iv = 0;
  double dv = 0;
  const bool nullOut = in.U8() == 0;
  int rc = 0;
  switch (what) {
    case 4: rc = ZELQ_GetIntParam(p, name, nullOut ? nullptr : &iv); break;
    case 5: rc = ZELQ_GetDblParamDef(p, name, nullOut ? nullptr : &dv); break;
    case 6: rc = ZELQ_GetIntParamMax(p, name, nullOut ? nullptr : &iv); break;
    default: rc = ZELQ_ResetParam(p); break;
  }
  Result(s, rc, "GetParam", what != 7 && (name == nullptr || nullOut));
}

void Runner::CheckOptimal(int s) {
  ZELQprob* p = slot[s];
  const Snap& w = shadow[s];
  int status = -1, isMip = 0;
  if (ZELQ_GetIntAttr(p, "Status", &status) != 0 || status < 0 || status > 10)
    Fail("Solve", "Status unreadable or out of range");
  if (status != ZELQ_OPTIMAL) return;
  // Only well-scaled problems are checked: the solvers work with absolute tolerances.
  auto scaled = [](const std::vector<double>& v, bool bounds) {
    for (double x : v)
      if (bounds ? (std::fabs(x) > 1e4 && std::fabs(x) < kInf) : std::fabs(x) > 1e4) return false;
    return true;
  };
  if (!scaled(w.obj, false) || !scaled(w.lb, true) || !scaled(w.ub, true) ||
      !scaled(w.rlo, true) || !scaled(w.rup, true) || std::fabs(w.k) > 1e4)
    return;
  for (const auto& [rc, v] : w.a)
    if (std::fabs(v) > 1e4 || std::fabs(v) < 1e-4) return;
  ZELQ_GetIntAttr(p, "IsMIP", &isMip);
  std::vector<double> x(w.cols + 1);
  if (ZELQ_GetSolution(p, x.data()) != 0) Fail("Solve", "optimal but no solution: " + ErrOf(p));
  double feasTol = 1e-6, intTol = 1e-6, objVal = 0;
  ZELQ_GetDblParam(p, "FeasTol", &feasTol);
  ZELQ_GetDblParam(p, "IntTol", &intTol);
  ZELQ_GetDblAttr(p, "ObjVal", &objVal);
  const double tol = std::max(1e-5, 20 * feasTol);
  double cx = w.k;
  for (int j = 0; j < w.cols; ++j) {
    const double xj = x[j];
    if (!std::isfinite(xj)) Fail("Solve", "non-finite value in an optimal solution");
    cx += w.obj[j] * xj;
    if (xj < w.lb[j] - tol * (1 + std::fabs(w.lb[j])) || xj > w.ub[j] + tol * (1 + std::fabs(w.ub[j])))
      Fail("Solve", "column " + std::to_string(j) + " = " + std::to_string(xj) + " violates its bounds");
    if (isMip && w.types[j] != 'C' && std::fabs(xj - std::round(xj)) > std::max(1e-5, 2 * intTol))
      Fail("Solve", "integer column " + std::to_string(j) + " = " + std::to_string(xj));
  }
  std::vector<double> act(w.rows, 0.0), mag(w.rows, 0.0);
  for (const auto& [rc, v] : w.a) act[rc.first] += v * x[rc.second], mag[rc.first] += std::fabs(v * x[rc.second]);
  for (int i = 0; i < w.rows; ++i) {
    const double t = tol * (1 + mag[i] + std::fabs(w.rlo[i] > -kInf ? w.rlo[i] : 0) + std::fabs(w.rup[i] < kInf ? w.rup[i] : 0));
    if (act[i] < w.rlo[i] - t || act[i] > w.rup[i] + t)
      Fail("Solve", "row " + std::to_string(i) + " activity " + std::to_string(act[i]) + " outside [" +
                        std::to_string(w.rlo[i]) + ", " + std::to_string(w.rup[i]) + "]");
  }
  if (std::fabs(objVal - cx) > 1e-6 * (1 + std::fabs(cx)))
    Fail("Solve", "ObjVal " + std::to_string(objVal) + " but c'x + constant = " + std::to_string(cx));
  if (!isMip && w.lazy == 0) CheckDualSigns(s);
}

// An optimal LP has no reduced cost or dual with the sign that improves the objective without
// limit: in a minimisation no negative reduced cost on a column without upper bound, no
// positive one without lower bound, and likewise for the rows' duals (signs flip when
// maximising). A solver that calls an unbounded LP optimal breaks this.
void Runner::CheckDualSigns(int s) {
  ZELQprob* p = slot[s];
  const Snap& w = shadow[s];
  std::vector<double> y(w.rows + 1), dj(w.cols + 1);
  if (ZELQ_GetLpSolution(p, nullptr, nullptr, y.data(), dj.data()) != 0)
    Fail("Solve", "optimal LP without duals: " + ErrOf(p));
  double size = 1;
  for (double v : w.obj) size = std::max(size, std::fabs(v));
  for (double v : y) size = std::max(size, std::fabs(v));
  for (double v : dj) size = std::max(size, std::fabs(v));
  const double tol = 1e-6 * size;
  auto check = [&](const char* what, int k, double d, double lo, double up) {
    d *= w.sense;
    if ((d < -tol && up >= kInf) || (d > tol && lo <= -kInf))
      Fail("Solve", std::string(what) + " " + std::to_string(k) + " has dual " + std::to_string(d) +
                        " (minimisation sense) that improves without limit");
  };
  for (int j = 0; j < w.cols; ++j) check("column", j, dj[j], w.lb[j], w.ub[j]);
  for (int i = 0; i < w.rows; ++i) check("row", i, y[i], w.rlo[i], w.rup[i]);
}

// Prints the problem about to be solved (as MPS) and its non-default parameters, so that a
// traced input shows what the solver was given.
void TraceProblem(ZELQprob* p, const std::string& stem) {
  const std::string mps = stem + ".trace.mps", prm = stem + ".trace.prm";
  const int mpsRc = ZELQ_WriteMps(p, mps.c_str()), prmRc = ZELQ_WriteParam(p, prm.c_str());
  for (const auto& [path, rc] : {std::pair{mps, mpsRc}, std::pair{prm, prmRc}}) {
    std::fprintf(stderr, "--- %s before the solve (write rc %d)\n", path.c_str(), rc);
    ShowFile(path);
    ::unlink(path.c_str());
  }
}

void Runner::OpSolve(Src& in, int s) {
  const int how = in.U8() % 3;
  if (slot[s] && ++solves > kMaxSolves) return;
  if (slot[s] && (shadow[s].cols > kMaxDim || shadow[s].rows > kMaxDim)) return;
  if (slot[s] && Tracing()) TraceProblem(slot[s], file);
  const int rc = how == 2 ? ZELQ_SolveLp(slot[s]) : ZELQ_Solve(slot[s]);
  if (!Result(s, rc, "Solve")) return;
  Verify(s, "Solve");
  if (how != 2) CheckOptimal(s);
}

void Runner::OpSolution(Src& in, int s) {
  ZELQprob* p = slot[s];
  const Snap& w = shadow[s];
  const int n = w.cols, m = w.rows;
  std::vector<double> a(n + m + 1), b(n + m + 1), c(n + m + 1), d(n + m + 1);
  std::vector<int> ia(n + m + 1), ib(n + m + 1);
  int rc = 0;
  const char* call = "solution query";
  switch (in.U8() % 10) {
    case 0: call = "GetSolution"; rc = ZELQ_GetSolution(p, in.U8() == 0 ? nullptr : a.data()); break;
    case 1: call = "GetLpSolution"; rc = ZELQ_GetLpSolution(p, a.data(), b.data(), in.Flag() ? nullptr : c.data(), d.data()); break;
    case 2: call = "GetBasis"; rc = ZELQ_GetBasis(p, ia.data(), in.Flag() ? nullptr : ib.data()); break;
    case 3: {
      call = "GetColBasis";
      const int num = in.Count(3);
      Arr<int> list(num, in.Flag());
      for (int k = 0; k < Fill(num) && list.Ptr(); ++k) list.v[k] = in.Index(n);
      Arr<int> out(std::max(num, n));
      rc = ZELQ_GetColBasis(p, num, list.Ptr(), out.Ptr());
      break;
    }
    case 4: {
      call = "GetPoolSolution";
      const int i = in.Index(2);
      rc = in.Flag() ? ZELQ_GetPoolObjVal(p, i, &a[0]) : ZELQ_GetPoolSolution(p, i, n, nullptr, a.data());
      break;
    }
    case 5:
    case 6: {
      call = "FSolve/BSolve";
      for (int i = 0; i < m; ++i) b[i] = in.Value();
      int len = in.Flag() ? m : m - 1;
      if (len < 0) len = 0;
      rc = (in.Flag() ? ZELQ_FSolve : ZELQ_BSolve)(p, b.data(), a.data(), &len);
      break;
    }
    case 7: call = "GetBasisHead"; rc = ZELQ_GetBasisHead(p, in.U8() == 0 ? nullptr : ia.data()); break;
    case 8: {
      call = "ComputeShadowPriceRange";
      double lo = 0, up = 0;
      const int row = in.Index(m), side = in.Index(2);
      rc = ZELQ_ComputeShadowPriceRange(p, row, side, &lo, &up);
      break;
    }
    default: {
      call = "SetLpSolution";
      for (int j = 0; j < n + m; ++j) a[j] = in.Value();
      rc = ZELQ_SetLpSolution(p, a.data(), in.Flag() ? nullptr : a.data() + n, nullptr, nullptr);
      break;
    }
  }
  if (Result(s, rc, call)) Verify(s, call);
}

bool PlainNames(const std::vector<std::string>& names, char prefix) {
  std::set<std::string> seen;
  for (size_t i = 0; i < names.size(); ++i) {
    const std::string& nm = names[i];
    if (nm.empty() || nm.size() > 8 || !seen.insert(nm).second) return false;
    if (!std::isalpha(static_cast<unsigned char>(nm[0]))) return false;
    for (char ch : nm)
      if (!std::isalnum(static_cast<unsigned char>(ch)) && ch != '_') return false;
    (void)prefix;
  }
  return true;
}

void Runner::OpFile(Src& in, int s) {
  const int kind = in.U8() % 6;
  const int other = 1 - s;
  if (kind == 5) {  // MPS text into a buffer
    int req = 0;
    const int rc = ZELQ_WriteMpsStr(slot[s], nullptr, 0, &req);
    if (!Result(s, rc, "WriteMpsStr")) return;
    std::vector<char> buff(req + 1);
    const int size = in.Flag() ? req : req - 1;
    const int rc2 = ZELQ_WriteMpsStr(slot[s], buff.data(), size, &req);
    if ((rc2 == 0) != (size >= req)) Fail("WriteMpsStr", "buffer size not honoured");
    Result(s, rc2, "WriteMpsStr");
    return;
  }
  if (kind == 4) {  // bad names
    const int rc = in.Flag() ? ZELQ_ReadMps(slot[s], in.Flag() ? nullptr : "/nonexistent/dir/x.mps")
                             : ZELQ_WriteLp(slot[s], in.Flag() ? "" : "/nonexistent/dir/x.lp");
    Result(s, rc, "file with a bad name", rc == 0);
    return;
  }
  const bool lp = kind & 1;
  const std::string path = file + (lp ? ".lp" : ".mps");
  const int rc = lp ? ZELQ_WriteLp(slot[s], path.c_str()) : ZELQ_WriteMps(slot[s], path.c_str());
  if (!Result(s, rc, lp ? "WriteLp" : "WriteMps")) return;
  if (!slot[other]) slot[other] = NewProb(env), shadow[other] = Snap{};
  const int rc2 = lp ? ZELQ_ReadLp(slot[other], path.c_str()) : ZELQ_ReadMps(slot[other], path.c_str());
  if (Tracing()) ShowFile(path);
  if (rc2 != 0) {
    Fail(lp ? "ReadLp" : "ReadMps", "cannot read back a written file: " + ErrOf(slot[other]));
  }
  Snap back;
  const std::string e = TakeSnap(slot[other], &back);
  if (!e.empty()) Fail("read back", e);
  Snap want = shadow[s];
  Display(want);
  // Branching priorities are not part of either format.
  want.branch.assign(want.cols, 0.0);
  if (!lp) {
    // Names with blanks (none longer than 8 characters, none starting or ending with a blank)
    // make the writer use the fixed layout, whose number fields hold 12 characters.
    bool blank = false, fits = true;
    for (const auto* list : {&want.cn, &want.rn})
      for (const std::string& nm : *list) {
        blank = blank || nm.find(' ') != std::string::npos;
        fits = fits && nm.size() <= 8 && (nm.empty() || (nm.front() != ' ' && nm.back() != ' '));
      }
    const double rel = blank && fits ? 1e-6 : 4 * 2.220446049250313e-16;
    for (int i = 0; i < want.rows && i < back.rows; ++i) {
      const double lo = want.rlo[i], up = want.rup[i];
      // MPS cannot say lo > up: such a row is written as an L row with its upper bound (and
      // the log says so).
      if (lo > up) want.rlo[i] = -kInf;
      // A range row keeps its upper bound as RHS and the range up - lo, so the lower bound
      // reads back with the rounding of that difference.
      if (lo > -kInf && up < kInf && lo < up &&
          std::fabs(back.rlo[i] - lo) <= rel * std::max(std::fabs(lo), std::fabs(up)))
        want.rlo[i] = back.rlo[i];
    }
  }
  // Files hold names: the reader's names are stored ones, not defaults.
  const bool names = !lp && PlainNames(want.cn, 'C') && PlainNames(want.rn, 'R');
  std::string d = want.Diff(back, names);
  if (!d.empty()) Fail(lp ? "LP round trip" : "MPS round trip", d);
  // The read problem becomes the other slot's content; its names are whatever the file held.
  shadow[other] = back;
}

void Runner::OpSolFiles(Src& in, int s) {
  ZELQprob* p = slot[s];
  const int kind = in.U8() % 6;
  const char* exts[] = {".sol", ".bas", ".mst", ".prm", ".sol", ".log"};
  const std::string path = file + exts[kind];
  int rc = 0;
  const bool read = in.Flag();
  switch (kind) {
    case 0: rc = read ? ZELQ_ReadSol(p, path.c_str()) : ZELQ_WriteSol(p, path.c_str()); break;
    case 1: rc = read ? ZELQ_ReadBasis(p, path.c_str()) : ZELQ_WriteBasis(p, path.c_str()); break;
    case 2: rc = read ? ZELQ_ReadMst(p, path.c_str()) : ZELQ_WriteMst(p, path.c_str()); break;
    case 3: rc = read ? ZELQ_ReadParam(p, path.c_str()) : ZELQ_WriteParam(p, path.c_str()); break;
    case 4: {
      int req = 0;
      rc = ZELQ_WriteJsonStr(p, nullptr, 0, &req);
      if (rc == 0) {
        std::vector<char> buff(req + 1);
        rc = ZELQ_WriteJsonStr(p, buff.data(), req, &req);
        if (rc == 0 && read) {
          Result(s, rc, "WriteJsonStr");
          rc = ZELQ_ReadJsonStr(p, buff.data());
        }
      }
      break;
    }
    default: rc = ZELQ_SetLogFile(p, read ? path.c_str() : (in.Flag() ? nullptr : "/nonexistent/d/x.log")); break;
  }
  if (Result(s, rc, "solution file")) Verify(s, "solution file");
}

void Runner::OpMisc(Src& in, int s, Op op) {
  ZELQprob* p = slot[s];
  Snap& w = shadow[s];
  switch (op) {
    case kReplaceObj: {
      const int num = in.Count(4);
      Arr<int> list(num, in.U8() == 0);
      Arr<double> vals(num, in.U8() == 0);
      bool valid = num >= 0 && !(num > 0 && (!list.Ptr() || !vals.Ptr()));
      for (int k = 0; k < Fill(num); ++k) {
        list.v[k] = in.Index(w.cols), vals.v[k] = in.Value();
        if (list.v[k] < 0 || list.v[k] >= w.cols || BadFinite(vals.v[k])) valid = false;
      }
      if (!Result(s, ZELQ_ReplaceColObj(p, num, list.Ptr(), vals.Ptr()), "ReplaceColObj", !valid)) return;
      std::fill(w.obj.begin(), w.obj.end(), 0.0);
      for (int k = 0; k < num; ++k) w.obj[list.v[k]] = vals.v[k];
      return Verify(s, "ReplaceColObj");
    }
    case kSetTypes: {
      const int num = in.Count(4);
      Arr<int> list(num, in.U8() == 0);
      Arr<char> types(num, in.U8() == 0);
      bool valid = num >= 0 && !(num > 0 && (!list.Ptr() || !types.Ptr()));
      for (int k = 0; k < Fill(num); ++k) {
        list.v[k] = in.Index(w.cols), types.v[k] = in.Type();
        if (list.v[k] < 0 || list.v[k] >= w.cols || BadType(types.v[k])) valid = false;
      }
      if (!Result(s, ZELQ_SetColType(p, num, list.Ptr(), types.Ptr()), "SetColType", !valid)) return;
      for (int k = 0; k < num; ++k) w.types[list.v[k]] = types.v[k];
      return Verify(s, "SetColType");
    }
    case kSetNames: {
      const bool rows = in.Flag();
      const int limit = rows ? w.rows : w.cols;
      const int num = in.Count(3);
      Arr<int> list(num, in.U8() == 0);
      Arr<const char*> names(num, in.U8() == 0);
      bool valid = num >= 0 && !(num > 0 && (!list.Ptr() || !names.Ptr()));
      for (int k = 0; k < Fill(num); ++k) {
        list.v[k] = in.Index(limit), names.v[k] = in.Name();
        if (list.v[k] < 0 || list.v[k] >= limit) valid = false;
      }
      const int rc = rows ? ZELQ_SetRowNames(p, num, list.Ptr(), names.Ptr())
                          : ZELQ_SetColNames(p, num, list.Ptr(), names.Ptr());
      if (!Result(s, rc, "SetNames", !valid)) return;
      auto& nl = rows ? w.rn : w.cn;
      for (int k = 0; k < num; ++k) {
        const char* nm = names.v[k];
        nl[list.v[k]] = nm && *nm ? nm : "#";
      }
      return Verify(s, "SetNames");
    }
    case kObjSenseConst: {
      if (in.Flag()) {
        const int sign = in.Index(2) == 1 ? 0 : (in.Flag() ? 1 : -1);
        const int sense = sign * (in.U8() == 7 ? 2 : 1);
        if (!Result(s, ZELQ_SetObjSense(p, sense), "SetObjSense", sense != 1 && sense != -1)) return;
        w.sense = sense;
        return Verify(s, "SetObjSense");
      }
      const double k = in.Value();
      if (!Result(s, ZELQ_SetObjConst(p, k), "SetObjConst", BadFinite(k))) return;
      w.k = k;
      return Verify(s, "SetObjConst");
    }
    case kCopy: {
      const int other = 1 - s;
      ZELQprob* copy = nullptr;
      const int rc = ZELQ_CreateCopy(p, in.U8() == 0 ? nullptr : &copy);
      if (!Result(s, rc, "CreateCopy")) return;
      ZELQ_DeleteProb(&slot[other]);
      slot[other] = copy;
      shadow[other] = shadow[s];
      if (!ErrOf(copy).empty()) Fail("CreateCopy", "the copy starts with an error message");
      Verify(other, "CreateCopy");
      return;
    }
    case kLife: {
      const int what = in.U8() % 4;
      if (what == 0) {  // delete
        if (ZELQ_DeleteProb(&slot[s]) != 0) Fail("DeleteProb", "failed");
        if (slot[s] != nullptr) Fail("DeleteProb", "left the pointer set");
        shadow[s] = Snap{};
      } else if (what == 1) {
        if (!slot[s]) slot[s] = NewProb(env), shadow[s] = Snap{};
      } else if (what == 2) {
        if (ZELQ_DeleteProb(nullptr) != ZELQ_RETCODE_INVALID) Fail("DeleteProb", "null accepted");
        if (ZELQ_CreateProb(env, nullptr) != ZELQ_RETCODE_INVALID) Fail("CreateProb", "null accepted");
        if (ZELQ_CreateProb(nullptr, &p) != ZELQ_RETCODE_INVALID) Fail("CreateProb", "null env accepted");
      } else {
        char b[64];
        const int code = in.Index(12);
        if (ZELQ_GetRetcodeMsg(code, b, in.Flag() ? 1 : sizeof b) != 0 ||
            std::strlen(b) >= sizeof b)
          Fail("GetRetcodeMsg", "failed");
        if (ZELQ_GetLastError(p, nullptr, 10) != ZELQ_RETCODE_INVALID) Fail("GetLastError", "null buffer accepted");
      }
      return;
    }
    case kClear: {
      const int what = in.U8() % 4;
      int rc = 0;
      if (what == 0) {
        rc = ZELQ_ClearProb(p);
        if (Result(s, rc, "ClearProb")) w = Snap{}, Verify(s, "ClearProb");
        return;
      }
      const int arg = in.Index(2);
      if (what == 3) {
        // Interrupt may run on another thread during a solve: it touches nothing but a flag, so
        // it neither checks nor clears the last error.
        rc = ZELQ_Interrupt(p);
        if (rc != (p ? 0 : ZELQ_RETCODE_INVALID)) Fail("Interrupt", std::to_string(rc));
        return Verify(s, "Interrupt");
      }
      rc = what == 1 ? ZELQ_Reset(p, arg) : ZELQ_Update(p);
      if (Result(s, rc, "Reset/Update", what == 1 && arg != 0 && arg != 1))
        Verify(s, "Reset/Update");
      return;
    }
    case kStart: {
      const int what = in.U8() % 3;
      int rc;
      if (what == 0) {
        const int num = in.Count(4);
        Arr<int> list(num, in.U8() == 0);
        Arr<double> vals(num, in.U8() == 0);
        for (int k = 0; k < Fill(num); ++k) list.v[k] = in.Index(w.cols), vals.v[k] = in.Value();
        rc = ZELQ_AddMipStart(p, num, list.Ptr(), vals.Ptr());
      } else if (what == 1) {
        std::vector<int> cb(w.cols + 1), rb(w.rows + 1);
        for (auto& v : cb) v = in.Index(5);
        for (auto& v : rb) v = in.Index(5);
        rc = ZELQ_SetBasis(p, cb.data(), in.U8() == 0 ? nullptr : rb.data());
      } else {
        rc = ZELQ_SetSlackBasis(p);
      }
      if (Result(s, rc, "MIP start / basis")) Verify(s, "MIP start / basis");
      return;
    }
    case kLazy: {
      const int c = in.Count(3);
      std::vector<int> idx;
      std::vector<double> val;
      bool valid = c >= 0 && c <= kMaxArr && Entries(in, Fill(c), w.cols, &idx, &val);
      idx.push_back(0), val.push_back(0.0);
      const bool big = c > kMaxArr;  // huge counts come with null arrays
      const char sense = in.Sense();
      const double b = in.Value(), u = in.Value();
      double lo, up;
      if (!RowBounds(sense, b, u, &lo, &up)) valid = false;
      const bool cut = in.Flag();
      const int* ip = big ? nullptr : idx.data();
      const double* vp = big ? nullptr : val.data();
      const int rc = cut ? ZELQ_AddUserCut(p, c, ip, vp, sense, b, u, in.Name())
                         : ZELQ_AddLazyConstr(p, c, ip, vp, sense, b, u, in.Name());
      if (!Result(s, rc, "AddLazyConstr/AddUserCut", !valid)) return;
      if (!cut) ++w.lazy;
      return Verify(s, "AddLazyConstr/AddUserCut");
    }
    default: return;
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  Src in(data, size);
  Runner r;
  r.Run(in);
  return 0;
}

#ifdef ZELQ_FUZZ_CALLS_MAIN
// Seed generator: writes the hand-made programs below into the directory given as argument.
// Build: c++ -std=c++20 -DZELQ_FUZZ_CALLS_MAIN -Iinclude fuzz/fuzz_calls.cc <engine libs>
namespace {

class Program {
 public:
  Program& Call(Op op, int slot = 0) { return Byte(static_cast<int>(op) * 2 + slot); }
  Program& Byte(int b) {
    bytes_.push_back(static_cast<uint8_t>(b));
    return *this;
  }
  Program& Index(int i) { return Byte(i + 1); }  // an in-range index for Src::Index
  Program& Value(double v) {
    for (int k = 0; k < kValueCount; ++k)
      if (kValues[k] == v) return Byte(k);
    std::fprintf(stderr, "value %g is not in the table\n", v);
    std::exit(1);
  }
  Program& Sense(char c) { return Byte(static_cast<int>(std::strchr(kSenses, c) - kSenses)); }
  Program& Type(char c) { return Byte(static_cast<int>(std::strchr(kTypes, c) - kTypes)); }
  Program& Name(const char* n) {
    for (int k = 0; k < kNameCount; ++k)
      if (n == nullptr ? kNames[k] == nullptr : (kNames[k] && !std::strcmp(kNames[k], n))) return Byte(k);
    std::fprintf(stderr, "name %s is not in the table\n", n ? n : "(null)");
    std::exit(1);
  }
  // A column for AddCols/LoadProb: entries (row, value), objective, bounds, type and name.
  Program& Col(std::vector<std::pair<int, double>> e, double c, double lo, double up, char t,
               const char* name) {
    Byte(static_cast<int>(e.size()));
    for (auto [r, v] : e) Index(r).Value(v);
    return Value(c).Value(lo).Value(up).Type(t).Name(name);
  }
  // A row for AddRows (entries, sense, bound, upper, name) or LoadProb (sense, bound, upper, name).
  Program& Row(std::vector<std::pair<int, double>> e, char sense, double b, double u,
               const char* name) {
    Byte(static_cast<int>(e.size()));
    for (auto [c, v] : e) Index(c).Value(v);
    return Sense(sense).Value(b).Value(u).Name(name);
  }
  Program& LoadRow(char sense, double b, double u, const char* name) {
    return Sense(sense).Value(b).Value(u).Name(name);
  }
  void Save(const std::string& path) const {
    FILE* f = std::fopen(path.c_str(), "wb");
    if (!f || std::fwrite(bytes_.data(), 1, bytes_.size(), f) != bytes_.size() || std::fclose(f)) {
      std::fprintf(stderr, "cannot write %s\n", path.c_str());
      std::exit(1);
    }
  }

 private:
  std::vector<uint8_t> bytes_;
};

void WriteSeeds(const std::string& dir) {
  // An LP built column- then row-wise, solved, queried, changed, solved again, made a MIP,
  // copied, written and read back in both formats, then cut down and solved once more.
  Program lp;
  lp.Call(kAddCols).Byte(2).Byte(0);
  lp.Col({}, -1.0, 0.0, 10.0, 'C', "x").Col({}, -2.0, 0.0, 4.0, 'C', "y");
  lp.Call(kAddRows).Byte(2).Byte(0);
  lp.Row({{0, 1.0}, {1, 1.0}}, 'L', 4.0, 1.0, "z_9").Row({{0, 1.0}, {1, 3.0}}, 'L', 10.0, 0.0, nullptr);
  lp.Call(kSolve).Byte(0);
  lp.Call(kSolution).Byte(0).Byte(1);
  lp.Call(kSolution).Byte(1).Byte(0);
  lp.Call(kSolution).Byte(7).Byte(1);                           // basis head
  lp.Call(kSetValues).Byte(2).Byte(1).Byte(1).Byte(1).Index(1).Value(2.0);  // y <= 2
  lp.Call(kSetElem).Index(0).Index(1).Value(2.0);
  lp.Call(kSolve).Byte(0);
  lp.Call(kSetTypes).Byte(1).Byte(1).Byte(1).Index(0).Type('I');
  lp.Call(kSolve).Byte(0);
  lp.Call(kQueryMatrix).Byte(1).Byte(2).Byte(1).Byte(0);
  lp.Call(kCopy).Byte(1);
  lp.Call(kFile).Byte(0);                                       // MPS round trip into slot 1
  lp.Call(kFile).Byte(1);                                       // LP round trip
  lp.Call(kSolve, 1).Byte(0);
  lp.Call(kParam).Byte(0).Byte(2).Value(100.0);                 // TimeLimit
  lp.Call(kDelRows).Byte(1).Byte(0).Index(0);
  lp.Call(kSolve).Byte(0);
  lp.Save(dir + "/build-solve-modify-resolve");

  // A maximising MIP loaded at once, with a binary, an integer and a ranged row; solution,
  // basis and start files; a lazy constraint; a blank in a name; a deleted column.
  Program mip;
  mip.Call(kLoadProb).Byte(3).Byte(2).Byte(1).Byte(0).Value(0.0).Byte(0);
  mip.Col({{0, 2.0}, {1, 4.0}}, 7.0, 0.0, 1.0, 'B', "x")
      .Col({{0, 3.0}, {1, 1.0}}, 4.0, 0.0, 10.0, 'I', "y")
      .Col({{0, 1.0}}, 3.0, 0.0, 1e30, 'C', "z_9");
  mip.LoadRow('L', 10.0, 0.0, "OBJ").LoadRow('R', 1.0, 100.0, nullptr);
  mip.Call(kSolve).Byte(0);
  mip.Call(kSolution).Byte(0).Byte(1);
  mip.Call(kSolFiles).Byte(0).Byte(0).Call(kSolFiles).Byte(0).Byte(1);   // write, read .sol
  mip.Call(kSolFiles).Byte(2).Byte(0).Call(kSolFiles).Byte(2).Byte(1);   // .mst
  mip.Call(kSolFiles).Byte(3).Byte(0).Call(kSolFiles).Byte(3).Byte(1);   // parameters
  mip.Call(kLazy).Byte(1).Index(0).Value(1.0).Sense('L').Value(0.5).Value(0.0).Byte(0).Name(nullptr);
  mip.Call(kSolve).Byte(0);
  mip.Call(kSetNames).Byte(0).Byte(1).Byte(1).Byte(1).Index(1).Name("a b");
  mip.Call(kFile).Byte(0);
  mip.Call(kDelCols).Byte(1).Byte(0).Index(0);
  mip.Call(kSolve).Byte(0).Call(kSolution).Byte(0).Byte(1);
  mip.Call(kStart).Byte(0).Byte(1).Byte(1).Byte(1).Index(0).Value(1.0);
  mip.Call(kSolve).Byte(0);
  mip.Save(dir + "/load-mip-files-lazy");

  // Every call once on each slot with all-zero arguments (slot 1 starts empty).
  Program each;
  for (int op = 0; op < kOpCount; ++op)
    for (int slot = 0; slot < 2; ++slot) {
      each.Call(static_cast<Op>(op), slot);
      for (int k = 0; k < 6; ++k) each.Byte(0);
    }
  each.Save(dir + "/every-call-once");
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) {
    std::fprintf(stderr, "usage: %s SEED_DIRECTORY\n", argv[0]);
    return 2;
  }
  WriteSeeds(argv[1]);
  return 0;
}
#endif
