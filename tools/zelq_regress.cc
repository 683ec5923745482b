// zelq-regress: solves every instance of a benchmark index and compares with the known optima.
//
//   zelq-regress INDEX.tsv DATA_ROOT [--time-limit S] [--tol T] [--set NAME]... [--only TEXT]
//
// The index is tab-separated with a header line naming at least the columns "set", "file",
// "format" and "optimum" (any order; other columns are ignored). Instances whose format this
// build cannot read or solve are listed as skipped with the reason. Output: one header line,
// one row per instance, then one summary line.
#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <iostream>
#include <sstream>
#include <string>
#include <vector>

#include "zelq/zelq.h"

namespace {

struct Options {
  std::string index, root;
  double timeLimit = 120.0;
  double tol = 1e-6;
  std::vector<std::string> sets;
  std::string only;
};

struct Instance {
  std::string set, file, format, optimum;
};

struct Row {
  std::string status, objective, relError;
  double seconds = 0.0;
  bool withinTol = false;
};

[[noreturn]] void Usage(const char* msg) {
  std::fprintf(stderr,
               "zelq-regress: %s\nusage: zelq-regress INDEX.tsv DATA_ROOT [--time-limit S] "
               "[--tol T] [--set NAME]... [--only TEXT]\n",
               msg);
  std::exit(2);
}

Options ParseArgs(int argc, char** argv) {
  Options o;
  std::vector<std::string> pos;
  for (int i = 1; i < argc; ++i) {
    std::string a = argv[i];
    auto value = [&]() -> std::string {
      if (i + 1 >= argc) Usage(("missing value after " + a).c_str());
      return argv[++i];
    };
    if (a == "--time-limit") {
      o.timeLimit = std::atof(value().c_str());
    } else if (a == "--tol") {
      o.tol = std::atof(value().c_str());
    } else if (a == "--set") {
      o.sets.push_back(value());
    } else if (a == "--only") {
      o.only = value();
    } else if (a.rfind("--", 0) == 0) {
      Usage(("unknown option " + a).c_str());
    } else {
      pos.push_back(a);
    }
  }
  if (pos.size() != 2) Usage("expected INDEX.tsv and DATA_ROOT");
  if (!(o.timeLimit > 0)) Usage("--time-limit must be positive");
  o.index = pos[0];
  o.root = pos[1];
  return o;
}

std::vector<std::string> SplitTabs(const std::string& line) {
  std::vector<std::string> out;
  std::string cur;
  std::istringstream in(line);
  while (std::getline(in, cur, '\t')) out.push_back(cur);
  if (!line.empty() && line.back() == '\t') out.emplace_back();
  return out;
}

std::vector<Instance> ReadIndex(const std::string& path) {
  std::ifstream in(path);
  if (!in) {
    std::fprintf(stderr, "zelq-regress: cannot open index '%s'\n", path.c_str());
    std::exit(2);
  }
  std::string line;
  if (!std::getline(in, line)) Usage("the index is empty");
  if (!line.empty() && line.back() == '\r') line.pop_back();
  std::vector<std::string> head = SplitTabs(line);
  auto col = [&](const char* name) {
    auto it = std::find(head.begin(), head.end(), name);
    if (it == head.end()) {
      std::fprintf(stderr, "zelq-regress: %s:1: no column named '%s'\n", path.c_str(), name);
      std::exit(2);
    }
    return static_cast<size_t>(it - head.begin());
  };
  size_t cSet = col("set"), cFile = col("file"), cFormat = col("format"), cOpt = col("optimum");
  size_t need = std::max({cSet, cFile, cFormat, cOpt});
  std::vector<Instance> out;
  int lineNo = 1;
  while (std::getline(in, line)) {
    ++lineNo;
    if (!line.empty() && line.back() == '\r') line.pop_back();
    if (line.empty() || line[0] == '#') continue;
    std::vector<std::string> f = SplitTabs(line);
    if (f.size() <= need) {
      std::fprintf(stderr, "zelq-regress: %s:%d: too few columns, line skipped\n", path.c_str(),
                   lineNo);
      continue;
    }
    out.push_back({f[cSet], f[cFile], f[cFormat], f[cOpt]});
  }
  return out;
}

std::string Lower(std::string s) {
  for (char& c : s) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  return s;
}

bool EndsWith(const std::string& s, const std::string& tail) {
  return s.size() >= tail.size() && s.compare(s.size() - tail.size(), tail.size(), tail) == 0;
}

std::string InstanceName(const std::string& file) {
  std::string name = file.substr(file.find_last_of('/') + 1);
  for (const char* ext : {".gz", ".bz2", ".mps", ".lp", ".qps", ".dat-s", ".cbf", ".nl"}) {
    if (EndsWith(Lower(name), ext)) name.resize(name.size() - std::strlen(ext));
  }
  return name;
}

// Which engine reader handles this instance; empty with a reason when the build cannot.
std::string ReaderFor(const Instance& inst, std::string* reason) {
  std::string fmt = Lower(inst.format), file = Lower(inst.file);
  if (EndsWith(file, ".gz")) file.resize(file.size() - 3);
  if (EndsWith(file, ".bz2")) file.resize(file.size() - 4);
  if (fmt.find("qps") != std::string::npos || fmt.find("quadobj") != std::string::npos ||
      EndsWith(file, ".qps")) {
    *reason = "quadratic objectives are not supported by this build";
    return "";
  }
  if (EndsWith(file, ".mps")) return "mps";
  if (EndsWith(file, ".lp")) return "lp";
  *reason = "format not supported by this build: " + inst.format;
  return "";
}

std::string Num(double v) {
  char buf[64];
  std::snprintf(buf, sizeof buf, "%.10g", v);
  return buf;
}

std::string LastError(ZELQprob* prob) {
  char buf[512] = {0};
  ZELQ_GetLastError(prob, buf, sizeof buf);
  std::string s = buf;
  std::replace(s.begin(), s.end(), '\t', ' ');
  return s.empty() ? "engine error" : s;
}

// Solves one instance and fills the row's status and objective.
void SolveOne(ZELQenv* env, const Options& opt, const Instance& inst, const std::string& reader,
              Row* row) {
  ZELQprob* prob = nullptr;
  if (ZELQ_CreateProb(env, &prob) != 0) {
    row->status = "error";
    row->objective = "cannot create problem";
    return;
  }
  ZELQ_SetIntParam(prob, "Logging", 0);
  ZELQ_SetDblParam(prob, "TimeLimit", opt.timeLimit);
  std::string path = opt.root + "/" + inst.file;
  int rc = reader == "mps" ? ZELQ_ReadMps(prob, path.c_str()) : ZELQ_ReadLp(prob, path.c_str());
  if (rc == 0) rc = ZELQ_Solve(prob);
  int status = 0;
  if (rc == 0) rc = ZELQ_GetIntAttr(prob, "Status", &status);
  if (rc != 0) {
    row->status = "error";
    row->objective = LastError(prob);
    ZELQ_DeleteProb(&prob);
    return;
  }
  double obj = 1e30;
  int hasSol = 0;
  ZELQ_GetIntAttr(prob, "HasSol", &hasSol);
  if (hasSol) ZELQ_GetDblAttr(prob, "ObjVal", &obj);
  switch (status) {
    case ZELQ_OPTIMAL: row->status = "optimal"; break;
    case ZELQ_INFEASIBLE: row->status = "infeasible"; break;
    case ZELQ_UNBOUNDED: row->status = "unbounded"; break;
    case ZELQ_TIMEOUT:
    case ZELQ_NODELIMIT:
    case ZELQ_INTERRUPTED: row->status = "time_limit"; break;
    default: row->status = "error"; break;
  }
  row->objective = hasSol ? Num(obj) : (row->status == "error" ? "status " + std::to_string(status)
                                                                : "-");
  ZELQ_DeleteProb(&prob);
}

// Compares the row with the published optimum: a number, or a word such as "infeasible".
void Compare(const Options& opt, const Instance& inst, Row* row) {
  char* end = nullptr;
  double optimum = std::strtod(inst.optimum.c_str(), &end);
  bool numeric = end != inst.optimum.c_str() && *end == '\0';
  row->relError = "-";
  if (numeric && row->status == "optimal") {
    double obj = std::strtod(row->objective.c_str(), nullptr);
    double err = std::fabs(obj - optimum) / std::max(1.0, std::fabs(optimum));
    row->relError = Num(err);
    row->withinTol = err <= opt.tol;
  } else if (!numeric) {
    std::string want = Lower(inst.optimum);
    bool dualInf = want.find("dual infeasible") != std::string::npos ||
                   want.find("unbounded") != std::string::npos;
    row->withinTol = dualInf ? row->status == "unbounded"
                             : (want.find("infeasible") != std::string::npos &&
                                row->status == "infeasible");
  }
}

}  // namespace

int main(int argc, char** argv) {
  Options opt = ParseArgs(argc, argv);
  std::vector<Instance> all = ReadIndex(opt.index);
  ZELQenvconfig* config = nullptr;
  ZELQenv* env = nullptr;
  if (ZELQ_CreateEnvConfig(&config) != 0 || ZELQ_SetEnvConfig(config, "Banner", "0") != 0 ||
      ZELQ_CreateEnvWithConfig(config, &env) != 0) {
    std::fprintf(stderr, "zelq-regress: cannot create the engine environment\n");
    return 2;
  }
  ZELQ_DeleteEnvConfig(&config);

  std::printf("set\tname\tstatus\tobjective\toptimum\trel_error\tseconds\n");
  int total = 0, solved = 0, within = 0, limits = 0, errors = 0, skipped = 0;
  double totalSeconds = 0.0;
  for (const Instance& inst : all) {
    if (!opt.sets.empty() &&
        std::find(opt.sets.begin(), opt.sets.end(), inst.set) == opt.sets.end())
      continue;
    if (!opt.only.empty() && inst.file.find(opt.only) == std::string::npos) continue;
    ++total;
    Row row;
    std::string reason;
    std::string reader = ReaderFor(inst, &reason);
    if (reader.empty()) {
      row.status = "skipped";
      row.objective = reason;
      row.relError = "-";
      ++skipped;
    } else {
      auto t0 = std::chrono::steady_clock::now();
      SolveOne(env, opt, inst, reader, &row);
      row.seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - t0).count();
      totalSeconds += row.seconds;
      Compare(opt, inst, &row);
      if (row.status == "error") ++errors;
      else if (row.status == "time_limit") ++limits;
      else ++solved;
      if (row.withinTol) ++within;
    }
    std::printf("%s\t%s\t%s\t%s\t%s\t%s\t%.2f\n", inst.set.c_str(),
                InstanceName(inst.file).c_str(), row.status.c_str(), row.objective.c_str(),
                inst.optimum.c_str(), row.relError.c_str(), row.seconds);
    std::fflush(stdout);
  }
  std::printf(
      "summary: %d instances, %d solved, %d match the published value within %g, %d time_limit, "
      "%d error, %d skipped, %.1f s\n",
      total, solved, within, opt.tol, limits, errors, skipped, totalSeconds);
  ZELQ_DeleteEnv(&env);
  return errors > 0 ? 1 : 0;
}
