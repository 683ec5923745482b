// Building whole models: the engine's row loop and bulk load, the library's
// interfaces, the header layer's value classes and operators, and PuLP, side
// by side in one table, at one or several sizes.
//
// Every run of a variant happens in a child process of its own, so its peak
// resident memory (ru_maxrss from wait4) belongs to that variant alone. The
// time is the best of --reps runs of the building code (environment creation
// excluded). Before timing, a checking pass builds every variant at a small
// size: the basic model is solved and its optimum compared with the known
// one, the knapsack row is read back and its coefficients summed; the sizes
// (rows, columns, non-zeros) must match in both passes.
//
// PuLP runs pulp_build.py under a Python interpreter; the script times its
// own building and its writing of the MPS file Cbc would get, so the
// interpreter's start-up and the import are not in the times (they are in
// the peak memory). The engine then reads that file back: it must have the
// sizes of the other variants and, in the checking pass, the same optimum.
//
// Usage: bench_build_models [--n N[,N...]] [--knap M[,M...]] [--reps K]
//                           [--only TEXT] [--check-n N] [--check-knap M]
//                           [--python PATH] [--pulp-script PATH]
//                           [--pulp-limit SECONDS] [--tmp-dir DIR]
//   --n      basic model sizes: 2 N^2 variables and 2 N^2 rows (default 1000)
//   --knap   terms of the knapsack row (default 1000000)
//   --reps   runs per variant, the fastest is shown (default 3)
//   --only   run the variant labelled TEXT ("basic header, operators"), or
//            else every variant whose label contains TEXT
//   --python      interpreter with PuLP (default /usr/bin/python3)
//   --pulp-script the PuLP script (default: pulp_build.py in the sources)
//   --pulp-limit  skip PuLP at a size where one run (build + write) is
//                 expected to take longer, from its time at the size before
//                 (default 180; 0 skips PuLP)
//   --tmp-dir     where MPS files are written (default /dev/shm, else /tmp)
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <string>
#include <vector>

#include "build_models_bench.h"

#ifndef ZELQ_BENCH_SOURCE_DIR
#define ZELQ_BENCH_SOURCE_DIR "bench"
#endif

namespace build_models {

std::vector<double> KnapWeights(int m) {
  std::vector<double> weights(m);
  for (int j = 0; j < m; ++j) weights[j] = KnapWeight(j);
  return weights;
}

double KnapCapacity(const std::vector<double>& weights) {
  double total = 0;
  for (double w : weights) total += w;
  return std::floor(total / 2);
}

void Fail(Outcome* out, const char* what, int code, const char* message) {
  if (out->error[0] != '\0') return;
  std::snprintf(out->error, sizeof out->error, "%s: code %d %s", what, code,
                message != nullptr ? message : "");
}

namespace {

constexpr long kMaxN = 23170;

struct Settings {
  Options run;
  std::vector<int> ns{1000};
  std::vector<int> knaps{1000000};
  int reps = 3;
  std::string only;
  int check_n = 30;
  int check_knap = 1000;
  PulpSetup pulp;
  double pulp_limit = 180;
};

bool ParseInt(const char* text, long low, long high, int* value) {
  char* end = nullptr;
  errno = 0;
  const long parsed = std::strtol(text, &end, 10);
  if (end == text || *end != '\0' || errno != 0 || parsed < low || parsed > high) return false;
  *value = static_cast<int>(parsed);
  return true;
}

// "100,300,1000": sorted and without repeats, so that PuLP's time at one size
// predicts the next.
bool ParseList(const char* text, long low, long high, std::vector<int>* values) {
  values->clear();
  std::string item;
  for (const char* p = text;; ++p) {
    if (*p == ',' || *p == '\0') {
      int value = 0;
      if (!ParseInt(item.c_str(), low, high, &value)) return false;
      values->push_back(value);
      item.clear();
      if (*p == '\0') break;
    } else {
      item += *p;
    }
  }
  std::sort(values->begin(), values->end());
  values->erase(std::unique(values->begin(), values->end()), values->end());
  return true;
}

bool ParseArgs(int argc, char** argv, Settings* settings) {
  for (int a = 1; a < argc; ++a) {
    const std::string flag = argv[a];
    if (a + 1 >= argc) return false;
    const char* value = argv[++a];
    bool ok = true;
    // 4 N^2 non-zeros must fit the engine's int offsets.
    if (flag == "--n") ok = ParseList(value, 2, kMaxN, &settings->ns);
    else if (flag == "--knap") ok = ParseList(value, 1, 100000000, &settings->knaps);
    else if (flag == "--reps") ok = ParseInt(value, 1, 1000, &settings->reps);
    else if (flag == "--only") settings->only = value;
    else if (flag == "--check-n") ok = ParseInt(value, 2, kMaxN, &settings->check_n);
    else if (flag == "--check-knap") ok = ParseInt(value, 1, 100000000, &settings->check_knap);
    else if (flag == "--python") settings->pulp.python = value;
    else if (flag == "--pulp-script") settings->pulp.script = value;
    else if (flag == "--tmp-dir") settings->run.scratch_dir = value;
    else if (flag == "--pulp-limit") {
      char* end = nullptr;
      settings->pulp_limit = std::strtod(value, &end);
      ok = end != value && *end == '\0' && settings->pulp_limit >= 0;
    } else {
      ok = false;
    }
    if (!ok) return false;
  }
  return true;
}

struct Measured {
  Outcome outcome;
  double peak_mb = 0;
};

// Runs one variant in a child process and collects its outcome and peak RSS.
Measured RunInChild(RunFn run, const Options& options) {
  Measured result;
  int fds[2];
  if (pipe(fds) != 0) {
    Fail(&result.outcome, "pipe", errno, std::strerror(errno));
    return result;
  }
  std::fflush(stdout);
  std::fflush(stderr);
  const pid_t child = fork();
  if (child == 0) {
    close(fds[0]);
    Outcome out;
    run(options, &out);
    const ssize_t written = write(fds[1], &out, sizeof out);
    _exit(written == static_cast<ssize_t>(sizeof out) ? 0 : 1);
  }
  close(fds[1]);
  if (child < 0) {
    close(fds[0]);
    Fail(&result.outcome, "fork", errno, std::strerror(errno));
    return result;
  }
  size_t got = 0;
  char* bytes = reinterpret_cast<char*>(&result.outcome);
  while (got < sizeof(Outcome)) {
    const ssize_t n = read(fds[0], bytes + got, sizeof(Outcome) - got);
    if (n <= 0) break;
    got += static_cast<size_t>(n);
  }
  close(fds[0]);
  int status = 0;
  rusage usage{};
  wait4(child, &status, 0, &usage);
  result.peak_mb = static_cast<double>(usage.ru_maxrss) / 1024.0;  // KiB on Linux
  if (got != sizeof(Outcome)) {
    result.outcome = Outcome();
    char what[64];
    std::snprintf(what, sizeof what, "child ended (status %d%s)",
                  WIFSIGNALED(status) ? WTERMSIG(status) : WEXITSTATUS(status),
                  WIFSIGNALED(status) ? ", signal" : "");
    Fail(&result.outcome, what, -1, "");
  }
  return result;
}

bool IsBasic(const char* model) { return std::strcmp(model, "basic") == 0; }

long long SizeOf(const char* model, const Options& options) {
  return IsBasic(model) ? options.n : options.knap;
}

// PuLP: the script builds and writes, then a child reads the file back
// (sizes, and the optimum or coefficient sum in the checking pass).
Measured RunPulpVariant(const Variant& v, const Options& options, const PulpSetup& setup) {
  Measured result;
  Options read = options;
  read.mps_path = ScratchFile(options, "pulp") + ".mps";
  if (RunPulp(setup, v.model, SizeOf(v.model, options), read.mps_path, &result.outcome,
              &result.peak_mb)) {
    const Measured back = RunInChild(IsBasic(v.model) ? ReadBackBasic : ReadBackKnapsack, read);
    if (back.outcome.error[0] != '\0') {
      const std::string why = back.outcome.error;  // cut short to fit if need be
      Fail(&result.outcome, "reading back PuLP's MPS file", -1, why.c_str());
    } else {
      result.outcome.rows = back.outcome.rows;
      result.outcome.cols = back.outcome.cols;
      result.outcome.elems = back.outcome.elems;
      result.outcome.check_value = back.outcome.check_value;
    }
  }
  unlink(read.mps_path.c_str());
  return result;
}

Measured Measure(const Variant& v, const Options& options, const Settings& settings) {
  return v.pulp ? RunPulpVariant(v, options, settings.pulp) : RunInChild(v.run, options);
}

struct Expected {
  long long rows, cols, elems;
  double check_value;
};

Expected ExpectedFor(const Variant& v, const Options& options) {
  if (IsBasic(v.model)) {
    const long long pairs = static_cast<long long>(options.n) * options.n;
    return {2 * pairs, 2 * pairs, 4 * pairs, BasicOptimum(options.n)};
  }
  double sum = 0;
  for (int j = 0; j < options.knap; ++j) sum += KnapWeight(j);
  // PuLP gives an objective without terms one fixed column of its own
  // ("__dummy", in the objective only), so its file has one column more.
  return {1, options.knap + (v.pulp ? 1LL : 0LL), options.knap, sum};
}

// Empty when the outcome is the expected model; else what differs.
std::string Mismatch(const Outcome& out, const Expected& want, bool check_value) {
  if (out.error[0] != '\0') return out.error;
  char text[200] = {};
  if (out.rows != want.rows || out.cols != want.cols || out.elems != want.elems)
    std::snprintf(text, sizeof text, "sizes %lld x %lld, %lld non-zeros; expected %lld x %lld, %lld",
                  out.rows, out.cols, out.elems, want.rows, want.cols, want.elems);
  else if (check_value &&
           std::fabs(out.check_value - want.check_value) > 1e-6 * (1 + std::fabs(want.check_value)))
    std::snprintf(text, sizeof text, "check value %.10g, expected %.10g", out.check_value,
                  want.check_value);
  return text;
}

const char* BaselineOf(const Variant& v) {
  if (v.baseline != nullptr) return v.baseline;
  return IsBasic(v.model) ? kRowLoop : kAddTerms;
}

struct Row {
  const Variant* variant;
  Measured best;
  std::string problem;  // failure
  std::string skipped;  // why it was not run
};

// One model at one size: every chosen variant of that model.
struct Group {
  const char* model;
  Options options;
  std::vector<Row> rows;
};

const Row* Find(const std::vector<Row>& rows, const char* name) {
  for (const Row& row : rows)
    if (std::strcmp(row.variant->name, name) == 0 && row.problem.empty() && row.skipped.empty())
      return &row;
  return nullptr;
}

double Total(const Row& row) { return row.best.outcome.seconds + row.best.outcome.write_seconds; }

// "1.23 ok", "1.53 MISS", "1.23" (no target) or "-" (no baseline).
std::string RatioText(const std::vector<Row>& rows, const Row& row, const char* baseline,
                      double target) {
  const Row* base = Find(rows, baseline);
  if (base == nullptr || base->best.outcome.seconds <= 0) return "-";
  const double ratio = row.best.outcome.seconds / base->best.outcome.seconds;
  char text[48];
  if (target > 0)
    std::snprintf(text, sizeof text, "%.2f (<=%.1f %s)", ratio, target,
                  ratio <= target ? "ok" : "MISS");
  else
    std::snprintf(text, sizeof text, "%.2f", ratio);
  return text;
}

// How many times longer PuLP takes than the header layer, building only and
// building plus writing; empty when either side is missing.
bool Speedups(const std::vector<Row>& rows, const Row& row, double* build, double* total) {
  const Variant& v = *row.variant;
  const Row* peer = v.peer != nullptr ? Find(rows, v.peer) : nullptr;
  const Row* write_peer = v.write_peer != nullptr ? Find(rows, v.write_peer) : nullptr;
  *build = peer != nullptr && peer->best.outcome.seconds > 0
               ? row.best.outcome.seconds / peer->best.outcome.seconds
               : 0;
  *total = write_peer != nullptr && Total(*write_peer) > 0 ? Total(row) / Total(*write_peer) : 0;
  return *build > 0 || *total > 0;
}

std::string SizeText(const Group& group) {
  char text[48];
  if (IsBasic(group.model))
    std::snprintf(text, sizeof text, "N = %d", group.options.n);
  else
    std::snprintf(text, sizeof text, "%d terms", group.options.knap);
  return text;
}

std::string LoadAverage() {
  std::ifstream in("/proc/loadavg");
  double one = 0, five = 0, fifteen = 0;
  if (!(in >> one >> five >> fifteen)) return "unknown";
  char text[64];
  std::snprintf(text, sizeof text, "%.2f %.2f %.2f", one, five, fifteen);
  return text;
}

void PrintTable(const std::vector<Group>& groups, const Settings& settings) {
  std::printf("\nbest of %d; times are building (write s: writing the MPS file)\n\n", settings.reps);
  std::printf("| model | size | variant | time s | write s | peak MB | ratio to baseline | "
              "ratio to bulk load | header layer faster by |\n");
  std::printf("|---|---|---|---|---|---|---|---|---|\n");
  for (const Group& group : groups) {
    const std::string size = SizeText(group);
    for (const Row& row : group.rows) {
      const Variant& v = *row.variant;
      if (!row.skipped.empty() || !row.problem.empty()) {
        std::printf("| %s | %s | %s | %s: %s | | | | | |\n", v.model, size.c_str(), v.name,
                    row.skipped.empty() ? "FAILED" : "skipped",
                    (row.skipped.empty() ? row.problem : row.skipped).c_str());
        continue;
      }
      const Outcome& out = row.best.outcome;
      char write[32] = "";
      if (out.write_seconds > 0) std::snprintf(write, sizeof write, "%.3f", out.write_seconds);
      std::string speedup;
      double build = 0, total = 0;
      if (v.pulp && Speedups(group.rows, row, &build, &total)) {
        char text[64];
        if (build > 0) {
          std::snprintf(text, sizeof text, "build %.1fx", build);
          speedup = text;
        }
        if (total > 0) {
          std::snprintf(text, sizeof text, "%sbuild + write %.1fx", speedup.empty() ? "" : ", ",
                        total);
          speedup += text;
        }
      }
      std::printf("| %s | %s | %s | %.3f | %s | %.1f | %s | %s | %s |\n", v.model, size.c_str(),
                  v.name, out.seconds, write, row.best.peak_mb,
                  RatioText(group.rows, row, BaselineOf(v), v.target).c_str(),
                  IsBasic(v.model) ? RatioText(group.rows, row, kBulkLoad, v.bulk_target).c_str()
                                   : "",
                  speedup.c_str());
    }
  }
  std::printf(
      "\nRatios compare building times. Baselines: %s (basic; the named variants: %s), %s "
      "(knapsack).\n"
      "PuLP: time s and write s are what its script measured around building the model and "
      "around writeMPS (what its Cbc back end writes), without the interpreter's start-up and "
      "the import; its peak MB is the whole Python process, interpreter included. \"header "
      "layer faster by\": PuLP's building time over \"%s\" (knapsack: \"%s\"), and its building "
      "plus writing time over the \"+ write MPS\" variant's.\n",
      kRowLoop, kRowLoopNamed, kAddTerms, kHeaderOps, kHeaderKnap);

  std::printf("\nHeadline:\n");
  for (const Group& group : groups) {
    const bool basic = IsBasic(group.model);
    const Row* row = Find(group.rows, basic ? kHeaderOps : kHeaderKnap);
    if (row == nullptr) continue;
    std::string line = std::string(group.model) + " " + SizeText(group) + ": header layer";
    const std::string base = RatioText(group.rows, *row, BaselineOf(*row->variant), 0);
    if (base != "-") line += " " + base + " x the " + BaselineOf(*row->variant);
    const std::string bulk = basic ? RatioText(group.rows, *row, kBulkLoad, 0) : "-";
    if (bulk != "-") line += ", " + bulk + " x the " + kBulkLoad;
    for (const Row& pulp : group.rows) {
      double build = 0, total = 0;
      char text[120];
      if (!pulp.variant->pulp) continue;
      if (!pulp.skipped.empty()) {
        line += "; PuLP skipped";
      } else if (Speedups(group.rows, pulp, &build, &total)) {
        if (build > 0) {
          std::snprintf(text, sizeof text, "; %.1f times faster than PuLP building", build);
          line += text;
        }
        if (total > 0) {
          std::snprintf(text, sizeof text, "; %.1f times faster building and writing", total);
          line += text;
        }
      }
    }
    std::printf("  %s\n", line.c_str());
  }
}

// Why PuLP is not run at this size ("" when it is): not available, switched
// off, or its last run scaled up to this size exceeds the limit.
struct PulpBudget {
  std::string unavailable;
  double limit = 0;
  // Per model: last measured size (rows built) and time of one run.
  double basic_units = 0, basic_seconds = 0, knap_units = 0, knap_seconds = 0;

  std::string SkipReason(const char* model, const Options& options) const {
    if (!unavailable.empty()) return unavailable;
    if (limit <= 0) return "--pulp-limit 0";
    const bool basic = IsBasic(model);
    const double units = basic ? static_cast<double>(options.n) * options.n : options.knap;
    const double last_units = basic ? basic_units : knap_units;
    const double last_seconds = basic ? basic_seconds : knap_seconds;
    if (last_units <= 0) return "";
    const double estimate = last_seconds * units / last_units;
    if (estimate <= limit) return "";
    char text[160];
    std::snprintf(text, sizeof text,
                  "one run would take about %.3g s (scaled from its time at %s = %.0f), "
                  "more than --pulp-limit %g s",
                  estimate, basic ? "N" : "M", basic ? std::sqrt(last_units) : last_units, limit);
    return text;
  }

  void Record(const char* model, const Options& options, double seconds) {
    if (IsBasic(model)) {
      basic_units = static_cast<double>(options.n) * options.n;
      basic_seconds = seconds;
    } else {
      knap_units = options.knap;
      knap_seconds = seconds;
    }
  }
};

}  // namespace
}  // namespace build_models

int main(int argc, char** argv) {
  using namespace build_models;
  Settings settings;
  settings.pulp.script = std::string(ZELQ_BENCH_SOURCE_DIR) + "/pulp_build.py";
  settings.run.scratch_dir = access("/dev/shm", W_OK) == 0 ? "/dev/shm" : "/tmp";
  if (!ParseArgs(argc, argv, &settings)) {
    std::fprintf(stderr,
                 "usage: %s [--n N[,N...]] [--knap M[,M...]] [--reps K] [--only TEXT] "
                 "[--check-n N] [--check-knap M] [--python PATH] [--pulp-script PATH] "
                 "[--pulp-limit SECONDS] [--tmp-dir DIR]\n",
                 argv[0]);
    return 2;
  }
  if (access(settings.run.scratch_dir.c_str(), W_OK) != 0) {
    std::fprintf(stderr, "cannot write into %s: %s\n", settings.run.scratch_dir.c_str(),
                 std::strerror(errno));
    return 2;
  }
  std::vector<Variant> all;
  AddEngineVariants(&all);
  AddRawVariants(&all);
  AddHeaderVariants(&all);
  AddPulpVariants(&all);
  // --only: the variant whose "model name" label equals TEXT, else every
  // label containing it.
  std::vector<const Variant*> chosen;
  for (int exact = 1; exact >= 0 && chosen.empty(); --exact) {
    for (const Variant& v : all) {
      const std::string label = std::string(v.model) + " " + v.name;
      if (settings.only.empty() || (exact ? label == settings.only
                                          : label.find(settings.only) != std::string::npos))
        chosen.push_back(&v);
    }
  }
  if (chosen.empty()) {
    std::fprintf(stderr, "no variant matches \"%s\"\n", settings.only.c_str());
    return 2;
  }
  PulpBudget budget;
  budget.limit = settings.pulp_limit;
  if (settings.pulp_limit > 0 &&
      std::any_of(chosen.begin(), chosen.end(), [](const Variant* v) { return v->pulp; })) {
    budget.unavailable = PulpUnavailable(settings.pulp);
    if (!budget.unavailable.empty())
      std::printf("PuLP skipped: %s\n", budget.unavailable.c_str());
  }

  // Checking pass: small sizes, solve or read back, compare with the known answer.
  Options check = settings.run;
  check.n = settings.check_n;
  check.knap = settings.check_knap;
  check.check = true;
  int failures = 0;
  std::printf("checking at N = %d, %d knapsack terms:\n", check.n, check.knap);
  for (const Variant* v : chosen) {
    if (v->pulp && !budget.SkipReason(v->model, check).empty()) continue;
    const Measured m = Measure(*v, check, settings);
    const std::string problem = Mismatch(m.outcome, ExpectedFor(*v, check), true);
    std::printf("  %-9s %-40s %s\n", v->model, v->name,
                problem.empty() ? "same model, same answer" : problem.c_str());
    failures += !problem.empty();
  }

  // One group per model and size, smaller sizes first.
  std::vector<Group> groups;
  for (const char* model : {"basic", "knapsack"}) {
    const std::vector<int>& sizes = IsBasic(model) ? settings.ns : settings.knaps;
    for (int size : sizes) {
      Group group{model, settings.run, {}};
      (IsBasic(model) ? group.options.n : group.options.knap) = size;
      for (const Variant* v : chosen)
        if (std::strcmp(v->model, model) == 0) group.rows.push_back(Row{v, {}, {}, {}});
      if (!group.rows.empty()) groups.push_back(std::move(group));
    }
  }

  const std::string load_before = LoadAverage();
  for (Group& group : groups) {
    std::printf("timing %s at %s, %d runs each:\n", group.model, SizeText(group).c_str(),
                settings.reps);
    for (Row& row : group.rows) {
      row.best.outcome.seconds = 1e30;
      if (row.variant->pulp) row.skipped = budget.SkipReason(group.model, group.options);
    }
    // Rounds over all variants rather than all runs of one variant after the
    // other, so that a change of load on a shared machine spreads over all of
    // them. The fastest run is the least disturbed one.
    for (int rep = 0; rep < settings.reps; ++rep) {
      for (Row& row : group.rows) {
        if (!row.problem.empty() || !row.skipped.empty()) continue;
        const Measured m = Measure(*row.variant, group.options, settings);
        row.problem = Mismatch(m.outcome, ExpectedFor(*row.variant, group.options), false);
        if (row.problem.empty() && m.outcome.seconds + m.outcome.write_seconds < Total(row))
          row.best = m;
      }
      std::printf("  round %d of %d done (load %s)\n", rep + 1, settings.reps,
                  LoadAverage().c_str());
    }
    for (const Row& row : group.rows) {
      failures += !row.problem.empty();
      if (row.variant->pulp && row.problem.empty() && row.skipped.empty())
        budget.Record(group.model, group.options, Total(row));
    }
  }
  PrintTable(groups, settings);
  std::printf("\nload average (1, 5, 15 min): %s before timing, %s after\n", load_before.c_str(),
              LoadAverage().c_str());
  return failures == 0 ? 0 : 1;
}
