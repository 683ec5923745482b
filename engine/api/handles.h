// The structs behind the C interface's opaque handles.
#pragma once

#include <atomic>
#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "params/params.h"
#include "problem/problem.h"
#include "solve/logger.h"
#include "solve/solution.h"

namespace zelq::engine {

// Settings an environment gives to the problems made from it.
struct EnvState {
  int logging = 1;       // "Logging"
  int logToConsole = 1;  // "LogToConsole"
  int threads = -1;      // "Threads" (-1: solver's choice)
  int banner = 1;        // "Banner": kept for the front end, which shows the banner
  bool closed = false;
};

// Solver state kept after an LP solve for basis operations (FSolve, BSolve, basis head, ranges);
// defined by the Clp adapter and dropped whenever the problem changes.
struct LpCache;
struct LpCacheDeleter {
  void operator()(LpCache* cache) const;
};

inline constexpr uint64_t kProbMagic = 0x5a454c5150524f42ULL;  // "ZELQPROB"
inline constexpr uint64_t kEnvMagic = 0x5a454c51454e5653ULL;   // "ZELQENVS"

using MipStart = std::vector<std::pair<int, double>>;  // (column, value) pairs

}  // namespace zelq::engine

struct zelq_env_s {
  uint64_t magic = zelq::engine::kEnvMagic;
  std::shared_ptr<zelq::engine::EnvState> state;
};

struct zelq_envconfig_s {
  uint64_t magic = zelq::engine::kEnvMagic ^ 1;
  zelq::engine::EnvState settings;
};

struct zelq_prob_s {
  uint64_t magic = zelq::engine::kProbMagic;
  std::shared_ptr<zelq::engine::EnvState> env;
  zelq::engine::Problem problem;
  zelq::engine::ParamSet params;
  zelq::engine::Solution solution;
  // Start information for the next solve.
  std::vector<zelq::engine::MipStart> mipStarts;
  std::vector<int> startColBasis, startRowBasis;  // empty when no start basis is set
  std::unique_ptr<zelq::engine::LpCache, zelq::engine::LpCacheDeleter> lpCache;
  zelq::engine::Logger log;
  std::atomic<bool> interrupt{false};
  std::atomic<bool> solving{false};
  std::string lastError;
};
