// Processor and memory placement of the process (Linux): CPU affinity and NUMA nodes.
#include <dirent.h>
#include <sched.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <string>
#include <vector>

#include "api/guard.h"

using namespace zelq::engine;

namespace {

constexpr const char* kNodeDir = "/sys/devices/system/node";
constexpr int kMpolPreferred = 1;  // MPOL_PREFERRED of <linux/mempolicy.h>

// Validates [start, start+count) against the cpu_set_t capacity; count -1 means "to the end".
bool CpuRange(int start, int count, int* end) {
  if (start < 0 || start >= CPU_SETSIZE || count < -1) return false;
  if (count == -1) {
    *end = CPU_SETSIZE;
    return true;
  }
  if (count > CPU_SETSIZE - start) return false;
  *end = start + count;
  return true;
}

int NodeCount() {
  DIR* d = ::opendir(kNodeDir);
  if (d == nullptr) return 1;
  int n = 0;
  while (dirent* e = ::readdir(d)) {
    const char* s = e->d_name;
    if (std::strncmp(s, "node", 4) != 0 || s[4] == '\0') continue;
    bool digits = true;
    for (const char* p = s + 4; *p; ++p) digits = digits && (*p >= '0' && *p <= '9');
    n += digits;
  }
  ::closedir(d);
  return n > 0 ? n : 1;
}

// Parses a kernel CPU list such as "0-3,8,10-11" into `set`. False on malformed text.
bool ParseCpuList(const std::string& text, cpu_set_t* set) {
  CPU_ZERO(set);
  size_t pos = 0;
  while (pos < text.size() && text[pos] != '\n') {
    char* end = nullptr;
    long a = std::strtol(text.c_str() + pos, &end, 10);
    long b = a;
    if (end == text.c_str() + pos) return false;
    pos = end - text.c_str();
    if (pos < text.size() && text[pos] == '-') {
      b = std::strtol(text.c_str() + pos + 1, &end, 10);
      pos = end - text.c_str();
    }
    if (a < 0 || b < a || b >= CPU_SETSIZE) return false;
    for (long c = a; c <= b; ++c) CPU_SET(c, set);
    if (pos < text.size() && text[pos] == ',') ++pos;
  }
  return true;
}

}  // namespace

int ZELQ_GetCpuAffinity(ZELQenv* env, int cpuStart, int cpuCount, int* p_nAllowed) {
  return GuardNoProb(__func__, [&]() -> int {
    int end = 0;
    if (!ValidEnv(env) || p_nAllowed == nullptr || !CpuRange(cpuStart, cpuCount, &end))
      return ZELQ_RETCODE_INVALID;
    cpu_set_t set;
    CPU_ZERO(&set);
    if (::sched_getaffinity(0, sizeof set, &set) != 0) return ZELQ_RETCODE_INTERNAL;
    int n = 0;
    for (int c = cpuStart; c < end; ++c) n += CPU_ISSET(c, &set) ? 1 : 0;
    *p_nAllowed = n;
    return ZELQ_RETCODE_OK;
  });
}

int ZELQ_SetCpuAffinity(ZELQenv* env, int cpuStart, int cpuCount, int mode) {
  return GuardNoProb(__func__, [&]() -> int {
    int end = 0;
    if (!ValidEnv(env) || mode < 0 || mode > 2 || !CpuRange(cpuStart, cpuCount, &end))
      return ZELQ_RETCODE_INVALID;
    cpu_set_t set;
    CPU_ZERO(&set);
    if (mode != 0 && ::sched_getaffinity(0, sizeof set, &set) != 0) return ZELQ_RETCODE_INTERNAL;
    for (int c = cpuStart; c < end; ++c) {
      if (mode == 2)
        CPU_CLR(c, &set);
      else
        CPU_SET(c, &set);
    }
    if (CPU_COUNT(&set) == 0) return ZELQ_RETCODE_INVALID;  // would leave no CPU to run on
    if (::sched_setaffinity(0, sizeof set, &set) != 0)
      return errno == EINVAL ? ZELQ_RETCODE_INVALID : ZELQ_RETCODE_INTERNAL;
    return ZELQ_RETCODE_OK;
  });
}

int ZELQ_GetNumaNodeCount(ZELQenv* env, int* p_count) {
  return GuardNoProb(__func__, [&]() -> int {
    if (!ValidEnv(env) || p_count == nullptr) return ZELQ_RETCODE_INVALID;
    *p_count = NodeCount();
    return ZELQ_RETCODE_OK;
  });
}

int ZELQ_BindNumaCpu(ZELQenv* env, int node, int flags) {
  return GuardNoProb(__func__, [&]() -> int {
    if (!ValidEnv(env) || flags != 0 || node < 0 || node >= NodeCount())
      return ZELQ_RETCODE_INVALID;
    cpu_set_t set;
    std::ifstream in(std::string(kNodeDir) + "/node" + std::to_string(node) + "/cpulist");
    std::string text;
    if (in) {
      std::getline(in, text);
      if (!ParseCpuList(text, &set) || CPU_COUNT(&set) == 0) return ZELQ_RETCODE_INTERNAL;
    } else if (node == 0) {
      // No NUMA information: the single node holds every CPU the process may use.
      if (::sched_getaffinity(0, sizeof set, &set) != 0) return ZELQ_RETCODE_INTERNAL;
    } else {
      return ZELQ_RETCODE_INTERNAL;
    }
    if (::sched_setaffinity(0, sizeof set, &set) != 0) return ZELQ_RETCODE_INTERNAL;
    return ZELQ_RETCODE_OK;
  });
}

int ZELQ_BindNumaMem(ZELQenv* env, int node, int flags) {
  return GuardNoProb(__func__, [&]() -> int {
    if (!ValidEnv(env) || flags != 0 || node < 0 || node >= NodeCount())
      return ZELQ_RETCODE_INVALID;
    constexpr int kBits = 8 * sizeof(unsigned long);
    std::vector<unsigned long> mask(node / kBits + 1, 0UL);
    mask[node / kBits] |= 1UL << (node % kBits);
    const unsigned long maxnode = mask.size() * kBits + 1;
    if (::syscall(SYS_set_mempolicy, kMpolPreferred, mask.data(), maxnode) != 0)
      return ZELQ_RETCODE_INTERNAL;
    return ZELQ_RETCODE_OK;
  });
}
