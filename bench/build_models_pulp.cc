// PuLP, the Python modelling layer, building the same two models through its
// own script (pulp_build.py) in a child process, and the engine reading back
// the MPS file that script writes for Cbc, which is how the benchmark checks
// that PuLP built the same model as every other variant.
#include <fcntl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <string>
#include <vector>

#include "build_models_bench.h"
#include "engine_problem.h"
#include "zelq/zelq.h"

namespace build_models {

std::string ScratchFile(const Options& options, const char* stem) {
  return options.scratch_dir + "/zelq_bench_" + stem + "_" + std::to_string(getpid());
}

int RunCommand(const std::vector<std::string>& argv, std::string* output, double* peak_mb) {
  output->clear();
  *peak_mb = 0;
  int fds[2];
  if (pipe(fds) != 0) {
    *output = std::string("pipe: ") + std::strerror(errno);
    return -1;
  }
  std::vector<char*> args;
  for (const std::string& arg : argv) args.push_back(const_cast<char*>(arg.c_str()));
  args.push_back(nullptr);
  std::fflush(stdout);
  std::fflush(stderr);
  const pid_t child = fork();
  if (child == 0) {
    close(fds[0]);
    dup2(fds[1], STDOUT_FILENO);
    dup2(fds[1], STDERR_FILENO);
    close(fds[1]);
    const int devnull = open("/dev/null", O_RDONLY);
    if (devnull >= 0) dup2(devnull, STDIN_FILENO);
    execv(args[0], args.data());
    std::fprintf(stderr, "cannot run %s: %s\n", args[0], std::strerror(errno));
    _exit(127);
  }
  close(fds[1]);
  if (child < 0) {
    close(fds[0]);
    *output = std::string("fork: ") + std::strerror(errno);
    return -1;
  }
  char buffer[4096];
  for (;;) {
    const ssize_t n = read(fds[0], buffer, sizeof buffer);
    if (n < 0 && errno == EINTR) continue;
    if (n <= 0) break;
    output->append(buffer, static_cast<size_t>(n));
  }
  close(fds[0]);
  int status = 0;
  rusage usage{};
  while (wait4(child, &status, 0, &usage) < 0 && errno == EINTR) {
  }
  *peak_mb = static_cast<double>(usage.ru_maxrss) / 1024.0;  // KiB on Linux
  if (WIFEXITED(status)) return WEXITSTATUS(status);
  return 128 + (WIFSIGNALED(status) ? WTERMSIG(status) : 0);
}

namespace {

// The last non-empty line of a child's output (a Python traceback ends with
// the exception), for the failure message.
std::string LastLine(const std::string& text) {
  size_t end = text.find_last_not_of("\r\n");
  if (end == std::string::npos) return "(no output)";
  const size_t start = text.find_last_of('\n', end);
  return text.substr(start == std::string::npos ? 0 : start + 1,
                     end - (start == std::string::npos ? 0 : start + 1) + 1);
}

}  // namespace

bool ParsePulpLine(const std::string& output, const char* model, long long size, Outcome* out) {
  const size_t at = output.rfind("pulp model=");
  if (at == std::string::npos) return false;
  char got_model[16] = {};
  long long got_size = -1, cols = -1, rows = -1;
  double build = -1, write = -1;
  if (std::sscanf(output.c_str() + at,
                  "pulp model=%15s size=%lld build_s=%lf write_s=%lf cols=%lld rows=%lld",
                  got_model, &got_size, &build, &write, &cols, &rows) != 6)
    return false;
  if (std::strcmp(got_model, model) != 0 || got_size != size || build < 0 || write < 0)
    return false;
  out->seconds = build;
  out->write_seconds = write;
  out->cols = cols;
  out->rows = rows;
  return true;
}

bool RunPulp(const PulpSetup& setup, const char* model, long long size,
             const std::string& mps_path, Outcome* out, double* peak_mb) {
  std::string output;
  const int code = RunCommand({setup.python, setup.script, "--model", model, "--size",
                               std::to_string(size), "--out", mps_path},
                              &output, peak_mb);
  if (code == 0 && ParsePulpLine(output, model, size, out)) return true;
  const std::string last = LastLine(output);
  Fail(out, code == 0 ? "PuLP script printed no result line" : "PuLP script failed", code,
       last.c_str());
  return false;
}

std::string PulpUnavailable(const PulpSetup& setup) {
  if (access(setup.script.c_str(), R_OK) != 0)
    return "script " + setup.script + " not readable: " + std::strerror(errno);
  std::string output;
  double peak = 0;
  const int code =
      RunCommand({setup.python, "-c", "import pulp; print(pulp.__version__)"}, &output, &peak);
  if (code == 0) return "";
  return setup.python + " cannot import pulp (" + LastLine(output) + ")";
}

namespace {

// Reads PuLP's file into a fresh engine problem, leaving the sizes (and, for the basic model in
// the checking pass, the optimum) in `out`; false when that failed.
bool ReadBack(const Options& options, Outcome* out, EngineProblem& file, bool solve) {
  if (!file.ok() || !file.Ok(ZELQ_ReadMps(file.prob(), options.mps_path.c_str()), "ZELQ_ReadMps"))
    return false;
  file.Finish(options, solve);
  return file.ok();
}

}  // namespace

void ReadBackBasic(const Options& options, Outcome* out) {
  EngineProblem file(out);
  ReadBack(options, out, file, true);
}

void ReadBackKnapsack(const Options& options, Outcome* out) {
  EngineProblem file(out);
  if (!ReadBack(options, out, file, false) || !options.check || out->rows < 1) return;
  const int first = 0;
  int size = 0;
  if (!file.Ok(ZELQ_GetRows(file.prob(), 1, &first, nullptr, nullptr, nullptr, nullptr, 0, &size),
               "ZELQ_GetRows"))
    return;
  std::vector<int> idx(static_cast<size_t>(size) + 1);
  std::vector<double> elem(static_cast<size_t>(size) + 1);
  int beg = 0, cnt = 0;
  if (!file.Ok(ZELQ_GetRows(file.prob(), 1, &first, &beg, &cnt, idx.data(), elem.data(),
                            size + 1, &size),
               "ZELQ_GetRows"))
    return;
  for (int t = 0; t < cnt; ++t) out->check_value += elem[static_cast<size_t>(beg + t)];
}

void AddPulpVariants(std::vector<Variant>* list) {
  Variant basic{"basic", "PuLP, lpSum and += (writeMPS for Cbc)", nullptr};
  basic.pulp = true;
  basic.peer = kHeaderOps;
  basic.write_peer = kHeaderOpsWrite;
  list->push_back(basic);
  Variant knap{"knapsack", "PuLP, lpSum (writeMPS for Cbc)", nullptr};
  knap.pulp = true;
  knap.peer = kHeaderKnap;
  knap.write_peer = kHeaderKnapWrite;
  list->push_back(knap);
}

}  // namespace build_models
