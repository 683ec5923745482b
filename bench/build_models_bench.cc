// Building whole models: the engine's row loop and bulk load, the library's
// interfaces, and the header layer's value classes and operators, side by
// side in one table.
//
// Every run of a variant happens in a child process of its own, so its peak
// resident memory (ru_maxrss from wait4) belongs to that variant alone. The
// time is the best of --reps runs of the building code (environment creation
// excluded). Before timing, a checking pass builds every variant at a small
// size: the basic model is solved and its optimum compared with the known
// one, the knapsack row is read back and its coefficients summed; the sizes
// (rows, columns, non-zeros) must match in both passes.
//
// Usage: bench_build_models [--n N] [--knap M] [--reps K] [--only TEXT]
//                           [--check-n N] [--check-knap M]
//   --n      basic model size: 2 N^2 variables and 2 N^2 rows (default 1000)
//   --knap   terms of the knapsack row (default 1000000)
//   --reps   runs per variant, the fastest is shown (default 3)
//   --only   run the variant labelled TEXT ("basic header, operators"), or
//            else every variant whose label contains TEXT
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include "build_models_bench.h"

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
  int reps = 3;
  std::string only;
  int check_n = 30;
  int check_knap = 1000;
};

bool ParseInt(const char* text, long low, long high, int* value) {
  char* end = nullptr;
  const long parsed = std::strtol(text, &end, 10);
  if (end == text || *end != '\0' || parsed < low || parsed > high) return false;
  *value = static_cast<int>(parsed);
  return true;
}

bool ParseArgs(int argc, char** argv, Settings* settings) {
  for (int a = 1; a < argc; ++a) {
    const std::string flag = argv[a];
    if (a + 1 >= argc) return false;
    const char* value = argv[++a];
    bool ok = true;
    // 4 N^2 non-zeros must fit the engine's int offsets.
    if (flag == "--n") ok = ParseInt(value, 2, kMaxN, &settings->run.n);
    else if (flag == "--knap") ok = ParseInt(value, 1, 100000000, &settings->run.knap);
    else if (flag == "--reps") ok = ParseInt(value, 1, 1000, &settings->reps);
    else if (flag == "--only") settings->only = value;
    else if (flag == "--check-n") ok = ParseInt(value, 2, kMaxN, &settings->check_n);
    else if (flag == "--check-knap") ok = ParseInt(value, 1, 100000000, &settings->check_knap);
    else ok = false;
    if (!ok) return false;
  }
  return true;
}

struct Measured {
  Outcome outcome;
  double peak_mb = 0;
};

// Runs one variant in a child process and collects its outcome and peak RSS.
Measured RunInChild(const Variant& variant, const Options& options) {
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
    variant.run(options, &out);
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

struct Expected {
  long long rows, cols, elems;
  double check_value;
};

Expected ExpectedFor(const char* model, const Options& options) {
  if (std::strcmp(model, "basic") == 0) {
    const long long pairs = static_cast<long long>(options.n) * options.n;
    return {2 * pairs, 2 * pairs, 4 * pairs, BasicOptimum(options.n)};
  }
  double sum = 0;
  for (int j = 0; j < options.knap; ++j) sum += KnapWeight(j);
  return {1, options.knap, options.knap, sum};
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
  return std::strcmp(v.model, "basic") == 0 ? kRowLoop : kAddTerms;
}

struct Row {
  const Variant* variant;
  Measured best;
  std::string problem;
};

const Row* Find(const std::vector<Row>& rows, const char* name) {
  for (const Row& row : rows)
    if (std::strcmp(row.variant->name, name) == 0 && row.problem.empty()) return &row;
  return nullptr;
}

// "1.23 ok", "1.53 MISS", "1.23" (no target) or "-" (no baseline).
std::string RatioText(const std::vector<Row>& rows, const Row& row, const char* baseline,
                      double target) {
  const Row* base = Find(rows, baseline);
  if (base == nullptr || !row.problem.empty() || base->best.outcome.seconds <= 0) return "-";
  const double ratio = row.best.outcome.seconds / base->best.outcome.seconds;
  char text[48];
  if (target > 0)
    std::snprintf(text, sizeof text, "%.2f (<=%.1f %s)", ratio, target,
                  ratio <= target ? "ok" : "MISS");
  else
    std::snprintf(text, sizeof text, "%.2f", ratio);
  return text;
}

void PrintTable(const std::vector<Row>& rows, const Settings& settings) {
  std::printf("\nbasic: N = %d (%lld variables, %lld rows); knapsack: %d terms; best of %d\n",
              settings.run.n, 2LL * settings.run.n * settings.run.n,
              2LL * settings.run.n * settings.run.n, settings.run.knap, settings.reps);
  std::printf("%-9s %-34s %9s %9s  %-20s %-20s\n", "model", "variant", "time s", "peak MB",
              "ratio to baseline", "ratio to bulk load");
  for (const Row& row : rows) {
    const Variant& v = *row.variant;
    if (!row.problem.empty()) {
      std::printf("%-9s %-34s  FAILED: %s\n", v.model, v.name, row.problem.c_str());
      continue;
    }
    const bool basic = std::strcmp(v.model, "basic") == 0;
    std::printf("%-9s %-34s %9.3f %9.1f  %-20s %-20s\n", v.model, v.name,
                row.best.outcome.seconds, row.best.peak_mb,
                RatioText(rows, row, BaselineOf(v), v.target).c_str(),
                basic ? RatioText(rows, row, kBulkLoad, v.bulk_target).c_str() : "");
  }
  std::printf("baselines: %s (basic; named variants: %s), %s (knapsack)\n", kRowLoop,
              kRowLoopNamed, kAddTerms);
}

}  // namespace
}  // namespace build_models

int main(int argc, char** argv) {
  using namespace build_models;
  Settings settings;
  if (!ParseArgs(argc, argv, &settings)) {
    std::fprintf(stderr,
                 "usage: %s [--n N] [--knap M] [--reps K] [--only TEXT] [--check-n N] "
                 "[--check-knap M]\n",
                 argv[0]);
    return 2;
  }
  std::vector<Variant> all;
  AddEngineVariants(&all);
  AddRawVariants(&all);
  AddHeaderVariants(&all);
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

  // Checking pass: small sizes, solve or read back, compare with the known answer.
  Options check = settings.run;
  check.n = settings.check_n;
  check.knap = settings.check_knap;
  check.check = true;
  int failures = 0;
  std::printf("checking at N = %d, %d knapsack terms:\n", check.n, check.knap);
  for (const Variant* v : chosen) {
    const Measured m = RunInChild(*v, check);
    const std::string problem = Mismatch(m.outcome, ExpectedFor(v->model, check), true);
    std::printf("  %-9s %-34s %s\n", v->model, v->name,
                problem.empty() ? "same model, same answer" : problem.c_str());
    failures += !problem.empty();
  }

  std::printf("timing at N = %d, %d knapsack terms, %d runs each:\n", settings.run.n,
              settings.run.knap, settings.reps);
  // Rounds over all variants rather than all runs of one variant after the
  // other, so that a change of load on a shared machine spreads over all of
  // them. The fastest run is the least disturbed one.
  std::vector<Row> rows;
  for (const Variant* v : chosen) {
    rows.push_back(Row{v, {}, {}});
    rows.back().best.outcome.seconds = 1e30;
  }
  for (int rep = 0; rep < settings.reps; ++rep) {
    for (Row& row : rows) {
      if (!row.problem.empty()) continue;
      const Measured m = RunInChild(*row.variant, settings.run);
      row.problem = Mismatch(m.outcome, ExpectedFor(row.variant->model, settings.run), false);
      if (row.problem.empty() && m.outcome.seconds < row.best.outcome.seconds) row.best = m;
    }
    std::printf("  round %d of %d done\n", rep + 1, settings.reps);
  }
  for (const Row& row : rows) failures += !row.problem.empty();
  PrintTable(rows, settings);
  return failures == 0 ? 0 : 1;
}
