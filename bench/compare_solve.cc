// bench_compare_solve: every Netlib LP (with the Kennington LPs) and every MIPLIB 3 instance
// of the shared data set solved by zelq through its header layer, by Clp / Cbc called
// directly with the options the engine passes, and by HiGHS as bundled with scipy, one
// instance and one solver at a time, each solver in a child process. Prints a Markdown table
// (times, ratios, objective agreement with the published optima, peak memory) and summary
// lines. Progress goes to standard error.
//
//   bench_compare_solve [--limit SECONDS] [--only NAME[,NAME...]] [--sets netlib,miplib3]
//                       [--data DIR] [--reps N] [--python PATH] [--script PATH] [--no-highs]
#include <sys/utsname.h>
#include <unistd.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "compare_solve.h"
#include "compare_solve_run.h"

namespace zelqbench {
namespace {

constexpr double kTol = 1e-6;        // relative agreement tolerance of objectives
constexpr double kRepeatBelow = 1.0;  // solves faster than this are repeated for a median

struct Options {
  double limit = 60.0;
  std::vector<std::string> only;
  std::vector<std::string> sets = {"netlib", "miplib3"};
  std::string data = ZELQ_SHARED_DATA;
  int reps = 3;
  HighsSetup highs = {"/usr/bin/python3", ZELQ_BENCH_DIR "/highs_solve.py"};
  bool runHighs = true;
};

std::vector<std::string> SplitCommas(const std::string& s) {
  std::vector<std::string> out;
  std::stringstream in(s);
  std::string item;
  while (std::getline(in, item, ','))
    if (!item.empty()) out.push_back(item);
  return out;
}

[[noreturn]] void Usage(const std::string& problem) {
  std::fprintf(stderr,
               "bench_compare_solve: %s\nusage: bench_compare_solve [--limit SECONDS] [--only "
               "NAME[,NAME...]] [--sets netlib,kennington,miplib3] [--data DIR] [--reps N] "
               "[--python PATH] [--script PATH] [--no-highs]\n",
               problem.c_str());
  std::exit(2);
}

Options ParseOptions(int argc, char** argv) {
  Options o;
  for (int i = 1; i < argc; ++i) {
    const std::string a = argv[i];
    auto value = [&]() -> std::string {
      if (i + 1 >= argc) Usage(a + " needs a value");
      return argv[++i];
    };
    if (a == "--limit") {
      const std::string v = value();
      char* end = nullptr;
      o.limit = std::strtod(v.c_str(), &end);
      if (*end != '\0' || !(o.limit > 0)) Usage("--limit needs a positive number of seconds, not '" + v + "'");
    } else if (a == "--only") {
      o.only = SplitCommas(value());
    } else if (a == "--sets") {
      o.sets = SplitCommas(value());
      for (const std::string& s : o.sets)
        if (s != "netlib" && s != "kennington" && s != "miplib3") Usage("unknown set '" + s + "'");
    } else if (a == "--data") {
      o.data = value();
    } else if (a == "--reps") {
      o.reps = std::atoi(value().c_str());
      if (o.reps < 1) Usage("--reps needs a positive count");
    } else if (a == "--python") {
      o.highs.python = value();
    } else if (a == "--script") {
      o.highs.script = value();
    } else if (a == "--no-highs") {
      o.runHighs = false;
    } else {
      Usage("unknown argument '" + a + "'");
    }
  }
  return o;
}

bool ReadText(const std::string& path, std::string* text) {
  std::ifstream in(path, std::ios::binary);
  if (!in) return false;
  std::stringstream s;
  s << in.rdbuf();
  *text = s.str();
  return true;
}

bool Exists(const std::string& path) { return access(path.c_str(), R_OK) == 0; }

double Median(std::vector<double> v) {
  std::sort(v.begin(), v.end());
  return v[v.size() / 2];
}

// Repeats a quick optimal solve for the median of `reps` runs; slower ones run once.
template <class Run>
SolverResult Measure(const Run& run, int reps) {
  SolverResult first = run();
  if (first.outcome != Outcome::kOptimal || first.solveSec >= kRepeatBelow || reps <= 1) return first;
  std::vector<double> solve = {first.solveSec}, cpu = {first.cpuSec}, read = {first.readSec};
  SolverResult out = first;
  for (int r = 1; r < reps; ++r) {
    SolverResult next = run();
    if (next.outcome != Outcome::kOptimal) return next;  // a run that differs is reported as is
    solve.push_back(next.solveSec);
    cpu.push_back(next.cpuSec);
    read.push_back(next.readSec);
    out.peakMb = std::max(out.peakMb, next.peakMb);
  }
  out.solveSec = Median(solve);
  out.cpuSec = Median(cpu);
  out.readSec = Median(read);
  out.runs = reps;
  return out;
}


struct Row {
  IndexEntry entry;
  InstanceInfo info;
  bool skipped = false;
  std::string skipReason;
  SolverResult zelq, direct, highs;
  Agreement agreement;
};

// The solve's CPU time, or its wall time with `wall`; "TL" marks a time-limited run.
std::string Time(const SolverResult& r, bool wall = false) {
  if (r.outcome == Outcome::kSkipped) return "-";
  if (r.outcome != Outcome::kOptimal && r.outcome != Outcome::kTimeLimit) return OutcomeText(r.outcome);
  const double t = wall ? r.solveSec : r.cpuSec;
  char buf[64];
  if (r.outcome == Outcome::kTimeLimit)
    std::snprintf(buf, sizeof buf, "TL %.0f s", t);
  else if (t < 1.0)
    std::snprintf(buf, sizeof buf, "%.2f ms", 1e3 * t);
  else
    std::snprintf(buf, sizeof buf, "%.2f s", t);
  return buf;
}

// zelq and the direct call took the same path: the same simplex iterations (and nodes).
bool SamePath(const Row& row) {
  return row.zelq.iterations >= 0 && row.zelq.iterations == row.direct.iterations &&
         row.zelq.nodes == row.direct.nodes;
}

std::string PathCell(const Row& row) {
  if (row.zelq.iterations < 0 || row.direct.iterations < 0) return "-";
  if (SamePath(row)) return "same";
  char buf[96];
  if (row.info.isMip)
    std::snprintf(buf, sizeof buf, "%lld / %lld it, %lld / %lld nodes", row.zelq.iterations,
                  row.direct.iterations, row.zelq.nodes, row.direct.nodes);
  else
    std::snprintf(buf, sizeof buf, "%lld / %lld it", row.zelq.iterations, row.direct.iterations);
  return buf;
}

// CPU time ratio of two optimal runs.
std::string Ratio(const SolverResult& a, const SolverResult& b) {
  if (a.outcome != Outcome::kOptimal || b.outcome != Outcome::kOptimal || b.cpuSec <= 0) return "-";
  char buf[32];
  std::snprintf(buf, sizeof buf, "%.3f", a.cpuSec / b.cpuSec);
  return buf;
}

std::string WallCell(const Row& row, bool highs) {
  char buf[96];
  auto one = [](const SolverResult& r) {
    if (r.outcome == Outcome::kSkipped) return std::string("-");
    char b[32];
    std::snprintf(b, sizeof b, r.solveSec < 1.0 ? "%.4f" : "%.2f", r.solveSec);
    return std::string(b);
  };
  std::snprintf(buf, sizeof buf, "%s / %s / %s", one(row.zelq).c_str(), one(row.direct).c_str(),
                highs ? one(row.highs).c_str() : "-");
  return buf;
}

// Relative difference to the published optimum; "TL" marks a time-limited value.
std::string ObjCell(const SolverResult& r, double optimum) {
  if (!r.hasObj) return r.outcome == Outcome::kSkipped ? "-" : "no value";
  char buf[48];
  double d = RelDiff(r.obj, optimum);
  std::snprintf(buf, sizeof buf, "%s%s%.0e", r.outcome == Outcome::kTimeLimit ? "TL " : "",
                d > kTol ? "**" : "", d);
  std::string s = buf;
  if (d > kTol) s += "**";
  return s;
}

std::string Mb(const SolverResult& r) {
  if (r.outcome == Outcome::kSkipped) return "-";
  char buf[32];
  std::snprintf(buf, sizeof buf, "%.0f", r.peakMb);
  return buf;
}

std::string Machine() {
  std::string cpu = "unknown CPU";
  std::string text;
  if (ReadText("/proc/cpuinfo", &text)) {
    size_t p = text.find("model name");
    if (p != std::string::npos) {
      size_t colon = text.find(':', p), eol = text.find('\n', p);
      cpu = text.substr(colon + 2, eol - colon - 2);
    }
  }
  long cores = sysconf(_SC_NPROCESSORS_ONLN);
  long pages = sysconf(_SC_PHYS_PAGES), pageSize = sysconf(_SC_PAGESIZE);
  utsname u{};
  uname(&u);
  char buf[512];
  std::snprintf(buf, sizeof buf, "%s, %ld cores, %.0f GiB, %s %s", cpu.c_str(), cores,
                static_cast<double>(pages) * static_cast<double>(pageSize) / (1 << 30), u.sysname,
                u.release);
  return buf;
}

std::string Load() {
  std::string text;
  if (!ReadText("/proc/loadavg", &text)) return "unknown";
  std::istringstream in(text);
  std::string a, b, c;
  in >> a >> b >> c;
  return a + " " + b + " " + c;
}

std::string Fixed(double v, const char* fmt = "%.3f") {
  if (std::isnan(v)) return "n/a";
  char buf[32];
  std::snprintf(buf, sizeof buf, fmt, v);
  return buf;
}

void PrintRatioLine(const char* label, const std::vector<double>& r) {
  std::printf("- %s: **%s** over %zu instances", label, Fixed(GeoMean(r)).c_str(), r.size());
  if (!r.empty()) {
    std::printf(" (range %s to %s)", Fixed(*std::min_element(r.begin(), r.end())).c_str(),
                Fixed(*std::max_element(r.begin(), r.end())).c_str());
  }
  std::printf("\n");
}

void PrintSummary(const std::vector<Row>& rows, double limit, bool ranHighs) {
  std::vector<double> zdLp, zdMip, zdAll, zdSlow, zdWall, zdSame, zdSameSlow, zhNetlib, zhMip, zhSlow;
  std::vector<double> mipTimes[3];  // shifted geomean over all MIPs, a time limit counts in full
  int agree[3] = {0, 0, 0}, disagree[3] = {0, 0, 0}, limited[3] = {0, 0, 0}, failed[3] = {0, 0, 0};
  int mutualOff = 0, compared = 0;
  for (const Row& row : rows) {
    if (row.skipped) continue;
    ++compared;
    const SolverResult* s[3] = {&row.zelq, &row.direct, &row.highs};
    for (int k = 0; k < 3; ++k) {
      if (s[k]->outcome == Outcome::kSkipped) continue;
      if (s[k]->hasObj && RelDiff(s[k]->obj, row.entry.optimum) <= kTol)
        ++agree[k];
      else if (s[k]->outcome == Outcome::kTimeLimit)
        ++limited[k];
      else if (s[k]->hasObj)
        ++disagree[k];
      else
        ++failed[k];
      if (row.info.isMip)
        mipTimes[k].push_back(s[k]->outcome == Outcome::kOptimal ? s[k]->cpuSec : limit);
    }
    if (!row.agreement.mutual) ++mutualOff;
    const bool zOk = row.zelq.outcome == Outcome::kOptimal;
    if (zOk && row.direct.outcome == Outcome::kOptimal) {
      double r = row.zelq.cpuSec / row.direct.cpuSec;
      (row.info.isMip ? zdMip : zdLp).push_back(r);
      zdAll.push_back(r);
      if (row.direct.cpuSec >= 0.1) zdSlow.push_back(r);
      zdWall.push_back(row.zelq.solveSec / row.direct.solveSec);
      if (SamePath(row)) {
        zdSame.push_back(r);
        if (row.direct.cpuSec >= 0.1) zdSameSlow.push_back(r);
      }
    }
    if (zOk && row.highs.outcome == Outcome::kOptimal) {
      double r = row.zelq.cpuSec / row.highs.cpuSec;
      (row.info.isMip ? zhMip : zhNetlib).push_back(r);
      if (std::max(row.zelq.cpuSec, row.highs.cpuSec) >= 0.1) zhSlow.push_back(r);
    }
  }
  std::printf("\nSummary (%d instances compared; ratios are plain geometric means of the "
              "per-instance CPU-time ratios over the instances both solvers solved to "
              "optimality):\n\n",
              compared);
  PrintRatioLine("zelq / direct, LP (Clp)", zdLp);
  PrintRatioLine("zelq / direct, MIP (Cbc)", zdMip);
  PrintRatioLine("zelq / direct, all", zdAll);
  PrintRatioLine("zelq / direct, instances taking >= 0.1 s directly", zdSlow);
  PrintRatioLine("zelq / direct, all, wall-clock times instead of CPU", zdWall);
  PrintRatioLine("zelq / direct, same path (equal iterations and nodes)", zdSame);
  PrintRatioLine("zelq / direct, same path, >= 0.1 s directly", zdSameSlow);
  if (ranHighs) {
    PrintRatioLine("zelq / HiGHS, Netlib and Kennington", zhNetlib);
    PrintRatioLine("zelq / HiGHS, MIPLIB 3", zhMip);
    PrintRatioLine("zelq / HiGHS, instances where either takes >= 0.1 s", zhSlow);
    if (!mipTimes[0].empty()) {
      std::printf("- MIPLIB 3, shifted geometric mean of CPU solve times (shift 1 s, a time "
                  "limit counts as %.0f s): zelq %s s, direct %s s, HiGHS %s s\n",
                  limit, Fixed(ShiftedGeoMean(mipTimes[0], 1.0), "%.2f").c_str(),
                  Fixed(ShiftedGeoMean(mipTimes[1], 1.0), "%.2f").c_str(),
                  Fixed(ShiftedGeoMean(mipTimes[2], 1.0), "%.2f").c_str());
    }
  }
  const char* names[3] = {"zelq", "direct", "HiGHS"};
  for (int k = 0; k < (ranHighs ? 3 : 2); ++k)
    std::printf("- %s: %d at the published optimum (rel. %.0e), %d off it, %d time-limited "
                "without it, %d without a value\n",
                names[k], agree[k], kTol, disagree[k], limited[k], failed[k]);
  std::printf("- objectives of the solvers differing from each other by more than %.0e: %d "
              "instances\n",
              kTol, mutualOff);
}

}  // namespace
}  // namespace zelqbench

int main(int argc, char** argv) {
  using namespace zelqbench;
  Options opt = ParseOptions(argc, argv);
  std::string index;
  if (!ReadText(opt.data + "/INDEX.tsv", &index)) {
    std::fprintf(stderr, "bench_compare_solve: cannot read %s/INDEX.tsv (use --data DIR)\n",
                 opt.data.c_str());
    return 1;
  }
  std::vector<IndexEntry> entries;
  std::string error;
  if (!ParseIndex(index, opt.sets, &entries, &error)) {
    std::fprintf(stderr, "bench_compare_solve: %s/INDEX.tsv: %s\n", opt.data.c_str(), error.c_str());
    return 1;
  }
  if (!opt.only.empty()) {
    std::erase_if(entries, [&](const IndexEntry& e) {
      return std::find(opt.only.begin(), opt.only.end(), e.name) == opt.only.end();
    });
    if (entries.empty()) {
      std::fprintf(stderr, "bench_compare_solve: no instance named by --only in the chosen sets\n");
      return 1;
    }
  }
  // Solvers run one at a time; keep BLAS and OpenMP pools of the Python child to one thread.
  setenv("OPENBLAS_NUM_THREADS", "1", 1);
  setenv("OMP_NUM_THREADS", "1", 1);
  std::string scipyVersion = "not run";
  if (opt.runHighs) {
    // The script answers "check nan 0 0 scipy-<version>" when numpy and scipy import.
    SolverResult check = RunHighsOnce(opt.highs, "--check", false, 60.0);
    if (check.note.rfind("check: ", 0) != 0) {
      std::fprintf(stderr, "bench_compare_solve: HiGHS left out (%s)\n", check.note.c_str());
      opt.runHighs = false;
      scipyVersion = "not available";
    } else {
      scipyVersion = check.note.substr(7);
    }
  }
  char tmpl[] = "/tmp/zelq_compare_XXXXXX";
  const char* dir = mkdtemp(tmpl);
  if (dir == nullptr) {
    std::fprintf(stderr, "bench_compare_solve: cannot create a temporary directory\n");
    return 1;
  }
  const std::string exported = std::string(dir) + "/problem.bin";
  const std::string loadStart = Load();

  std::vector<Row> rows;
  for (const IndexEntry& e : entries) {
    Row row;
    row.entry = e;
    const std::string path = opt.data + "/" + e.file;
    std::fprintf(stderr, "%-12s %-10s ", e.set.c_str(), e.name.c_str());
    if (!Exists(path)) {
      row.skipped = true;
      row.skipReason = "file not found";
    } else if (!ExportInChild(path, exported, &row.info, &error)) {
      row.skipped = true;
      row.skipReason = "engine read failed: " + error;
    }
    if (row.skipped) {
      std::fprintf(stderr, "skipped (%s)\n", row.skipReason.c_str());
      rows.push_back(row);
      continue;
    }
    row.zelq = Measure([&] { return RunZelqOnce(path, row.info.isMip, opt.limit); }, opt.reps);
    row.direct = Measure([&] { return RunDirectOnce(path, row.info.isMip, opt.limit); }, opt.reps);
    if (opt.runHighs)
      row.highs = Measure([&] { return RunHighsOnce(opt.highs, exported, row.info.isMip, opt.limit); },
                          opt.reps);
    std::vector<const SolverResult*> all = {&row.zelq, &row.direct};
    if (opt.runHighs) all.push_back(&row.highs);
    row.agreement = Compare(all, e.optimum, kTol);
    std::fprintf(stderr, "zelq %s, direct %s, HiGHS %s%s%s%s\n", Time(row.zelq).c_str(),
                 Time(row.direct).c_str(), Time(row.highs).c_str(),
                 row.agreement.mutual ? "" : "  OBJECTIVES DIFFER",
                 row.zelq.note.empty() ? "" : ("  zelq: " + row.zelq.note).c_str(),
                 row.highs.note.empty() ? "" : ("  HiGHS: " + row.highs.note).c_str());
    rows.push_back(row);
  }
  std::remove(exported.c_str());
  rmdir(dir);

  std::printf("Machine: %s. Load average at the start %s, at the end %s.\n", Machine().c_str(),
              loadStart.c_str(), Load().c_str());
  std::printf("Time limit %.0f s (wall clock) per solve. Times are CPU times of the solve "
              "call, the median of %d runs for solves under %.0f s, one run otherwise; wall-clock "
              "times in their own column. HiGHS from %s.\n\n",
              opt.limit, opt.reps, kRepeatBelow, scipyVersion.c_str());
  std::printf("| set | instance | rows | cols | zelq | direct | HiGHS | zelq/direct | zelq/HiGHS "
              "| obj zelq | obj direct | obj HiGHS | agree | path zelq / direct | wall s zelq / direct / HiGHS "
              "| read zelq / direct | peak MB zelq / direct / HiGHS |\n");
  std::printf("|---|---|---|---|---|---|---|---|---|---|---|---|---|---|---|---|---|\n");
  for (const Row& row : rows) {
    if (row.skipped) {
      std::printf("| %s | %s | | | skipped: %s | | | | | | | | | | | | |\n", row.entry.set.c_str(),
                  row.entry.name.c_str(), row.skipReason.c_str());
      continue;
    }
    const double opt0 = row.entry.optimum;
    char read[64];
    std::snprintf(read, sizeof read, "%.1f / %.1f ms", 1e3 * row.zelq.readSec,
                  1e3 * row.direct.readSec);
    std::string agree = row.agreement.mutual ? "yes" : "**no** (" + Fixed(row.agreement.worstMutual, "%.0e") + ")";
    std::printf("| %s | %s | %lld | %lld | %s | %s | %s | %s | %s | %s | %s | %s | %s | %s | %s | %s | %s / %s / %s |\n",
                row.entry.set.c_str(), row.entry.name.c_str(), static_cast<long long>(row.info.rows),
                static_cast<long long>(row.info.cols), Time(row.zelq).c_str(),
                Time(row.direct).c_str(), Time(row.highs).c_str(),
                Ratio(row.zelq, row.direct).c_str(), Ratio(row.zelq, row.highs).c_str(),
                ObjCell(row.zelq, opt0).c_str(), ObjCell(row.direct, opt0).c_str(),
                ObjCell(row.highs, opt0).c_str(), agree.c_str(), PathCell(row).c_str(), WallCell(row, opt.runHighs).c_str(), read,
                Mb(row.zelq).c_str(),
                Mb(row.direct).c_str(), Mb(row.highs).c_str());
  }
  PrintSummary(rows, opt.limit, opt.runHighs);
  // Objectives in full where they differ, and failures, below the table.
  bool header = false;
  for (const Row& row : rows) {
    if (row.skipped || row.agreement.mutual) continue;
    if (!header) std::printf("\nObjectives differing by more than %.0e:\n\n", kTol);
    header = true;
    std::printf("- %s: published %.12g; zelq %.12g, direct %.12g, HiGHS %.12g\n", row.entry.name.c_str(),
                row.entry.optimum, row.zelq.obj, row.direct.obj, row.highs.obj);
  }
  header = false;
  for (const Row& row : rows) {
    const std::pair<const char*, const SolverResult*> s[3] = {
        {"zelq", &row.zelq}, {"direct", &row.direct}, {"HiGHS", &row.highs}};
    for (const auto& [name, r] : s) {
      if (r->note.empty() || r->outcome == Outcome::kOptimal) continue;
      if (!header) std::printf("\nNot solved to optimality:\n\n");
      header = true;
      std::printf("- %s, %s: %s (%s)\n", row.entry.name.c_str(), name, OutcomeText(r->outcome),
                  r->note.c_str());
    }
  }
  return 0;
}
