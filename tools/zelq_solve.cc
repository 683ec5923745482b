// zelq-solve: reads a problem file, solves it with the engine and prints the result.
//
//   zelq-solve FILE [Name=Value ...] [--write OUT]
//
// FILE is an MPS (.mps, .mps.gz) or LP (.lp) file. Name=Value pairs set engine parameters by
// name (case-insensitive), e.g. TimeLimit=10 Logging=0. --write saves the solution (.sol, .json)
// or the problem (.mps, .lp) by the ending of OUT.
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#include "zelq/zelq.h"

namespace {

const char* StatusText(int status) {
  switch (status) {
    case ZELQ_UNSTARTED: return "unstarted";
    case ZELQ_OPTIMAL: return "optimal";
    case ZELQ_INFEASIBLE: return "infeasible";
    case ZELQ_UNBOUNDED: return "unbounded";
    case ZELQ_INF_OR_UNB: return "infeasible or unbounded";
    case ZELQ_NUMERICAL: return "numerical trouble";
    case ZELQ_NODELIMIT: return "node limit reached";
    case ZELQ_IMPRECISE: return "imprecise";
    case ZELQ_TIMEOUT: return "time limit reached";
    case ZELQ_UNFINISHED: return "unfinished";
    case ZELQ_INTERRUPTED: return "interrupted";
    default: return "unknown";
  }
}

bool EndsWith(const std::string& s, const char* tail) {
  size_t n = std::strlen(tail);
  return s.size() >= n && s.compare(s.size() - n, n, tail) == 0;
}

// Prints the engine's message for a failed call and returns the exit code 1.
int Report(ZELQprob* prob, int rc, const char* what) {
  char text[1024] = {0}, detail[1024] = {0};
  ZELQ_GetRetcodeMsg(rc, text, sizeof text);
  if (prob) ZELQ_GetLastError(prob, detail, sizeof detail);
  std::fprintf(stderr, "zelq-solve: %s failed (code %d: %s)%s%s\n", what, rc, text,
               detail[0] ? "\n  " : "", detail);
  return 1;
}

// Sets one Name=Value parameter, choosing the integer or double setter by the name's kind.
int SetParam(ZELQprob* prob, const std::string& arg) {
  size_t eq = arg.find('=');
  std::string name = arg.substr(0, eq), value = arg.substr(eq + 1);
  int kind = -1;
  ZELQ_SearchParamAttr(prob, name.c_str(), &kind);
  char* end = nullptr;
  if (kind == ZELQ_KIND_INTPARAM) {
    long v = std::strtol(value.c_str(), &end, 10);
    if (*end != '\0' || value.empty()) {
      std::fprintf(stderr, "zelq-solve: parameter %s takes an integer, got '%s'\n", name.c_str(),
                   value.c_str());
      return 1;
    }
    int rc = ZELQ_SetIntParam(prob, name.c_str(), static_cast<int>(v));
    return rc ? Report(prob, rc, ("setting " + name).c_str()) : 0;
  }
  if (kind == ZELQ_KIND_DBLPARAM) {
    double v = std::strtod(value.c_str(), &end);
    if (*end != '\0' || value.empty()) {
      std::fprintf(stderr, "zelq-solve: parameter %s takes a number, got '%s'\n", name.c_str(),
                   value.c_str());
      return 1;
    }
    int rc = ZELQ_SetDblParam(prob, name.c_str(), v);
    return rc ? Report(prob, rc, ("setting " + name).c_str()) : 0;
  }
  std::fprintf(stderr, "zelq-solve: unknown parameter '%s'\n", name.c_str());
  return 1;
}

int Write(ZELQprob* prob, const std::string& out) {
  int rc;
  if (EndsWith(out, ".sol")) rc = ZELQ_WriteSol(prob, out.c_str());
  else if (EndsWith(out, ".json")) rc = ZELQ_WriteJsonSol(prob, out.c_str());
  else if (EndsWith(out, ".mps")) rc = ZELQ_WriteMps(prob, out.c_str());
  else if (EndsWith(out, ".lp")) rc = ZELQ_WriteLp(prob, out.c_str());
  else {
    std::fprintf(stderr, "zelq-solve: cannot tell the format of '%s' from its ending\n",
                 out.c_str());
    return 1;
  }
  return rc ? Report(prob, rc, ("writing " + out).c_str()) : 0;
}

int Run(ZELQprob* prob, int argc, char** argv) {
  std::string file = argv[1], out;
  for (int i = 2; i < argc; ++i) {
    std::string a = argv[i];
    if (a == "--write" && i + 1 < argc) {
      out = argv[++i];
    } else if (a.find('=') != std::string::npos) {
      if (SetParam(prob, a)) return 1;
    } else {
      std::fprintf(stderr, "zelq-solve: unexpected argument '%s'\n", a.c_str());
      return 1;
    }
  }
  std::string lower = file;
  for (char& c : lower) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  bool lp = EndsWith(lower, ".lp") || EndsWith(lower, ".lp.gz");
  int rc = lp ? ZELQ_ReadLp(prob, file.c_str()) : ZELQ_ReadMps(prob, file.c_str());
  if (rc) return Report(prob, rc, ("reading " + file).c_str());
  if ((rc = ZELQ_Solve(prob)) != 0) return Report(prob, rc, "solving");
  int status = 0, hasSol = 0, isMip = 0;
  ZELQ_GetIntAttr(prob, "Status", &status);
  ZELQ_GetIntAttr(prob, "HasSol", &hasSol);
  ZELQ_GetIntAttr(prob, "IsMIP", &isMip);
  double obj = 0, seconds = 0, gap = 0;
  ZELQ_GetDblAttr(prob, "SolvingTime", &seconds);
  std::printf("Status: %s\n", StatusText(status));
  if (hasSol) {
    ZELQ_GetDblAttr(prob, "ObjVal", &obj);
    std::printf("Objective: %.10g\n", obj);
    if (isMip) {
      ZELQ_GetDblAttr(prob, "BestGap", &gap);
      std::printf("Gap: %.4g%%\n", 100.0 * gap);
    }
  }
  std::printf("Time: %.3f s\n", seconds);
  return out.empty() ? 0 : Write(prob, out);
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 2 || std::strcmp(argv[1], "--help") == 0) {
    std::fprintf(stderr, "usage: zelq-solve FILE [Name=Value ...] [--write OUT]\n");
    return argc < 2 ? 2 : 0;
  }
  // The engine leaves the greeting to its callers.
  char banner[1024] = {};
  if (ZELQ_GetBanner(banner, 1020) == 0 && banner[0] != '\0') std::printf("%s\n", banner);
  ZELQenv* env = nullptr;
  ZELQprob* prob = nullptr;
  int rc = ZELQ_CreateEnvWithPath(nullptr, &env);
  if (rc) return Report(nullptr, rc, "creating the environment");
  if ((rc = ZELQ_CreateProb(env, &prob)) != 0) return Report(nullptr, rc, "creating a problem");
  int exitCode = Run(prob, argc, argv);
  ZELQ_DeleteProb(&prob);
  ZELQ_DeleteEnv(&env);
  return exitCode;
}
