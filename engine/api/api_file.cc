// File entry points for problem files (MPS, LP) and the formats this build cannot read or write.
#include <climits>
#include <cstring>
#include <string>
#include <vector>

#include "api/guard.h"
#include "io/lp_format.h"
#include "io/model_builder.h"
#include "io/mps_read.h"
#include "io/mps_write.h"
#include "io/text_io.h"

namespace zelq::engine {
namespace {

using Parser = int (*)(std::string_view, const std::string&, io::ModelBuilder&, std::string&,
                       std::vector<std::string>&);
using Formatter = std::string (*)(const Problem&, std::vector<std::string>&);

int CheckFileName(ZELQprob* prob, const char* name) {
  if (name == nullptr || name[0] == '\0') {
    return Fail(prob, ZELQ_RETCODE_INVALID, "no file name given (null or empty)");
  }
  return ZELQ_RETCODE_OK;
}

void LogNotes(ZELQprob* prob, const std::vector<std::string>& notes) {
  for (const std::string& n : notes) prob->log.Line(n);
}

// Parses the whole file into a fresh problem and swaps it in only when everything was accepted.
int ReadProblem(ZELQprob* prob, const char* file, Parser parse) {
  if (int rc = CheckFileName(prob, file); rc != ZELQ_RETCODE_OK) return rc;
  std::string text, err;
  if (int rc = io::ReadTextFile(file, text, err); rc != 0) return FileFailure(prob, rc, err);
  io::ModelBuilder model;
  std::vector<std::string> notes;
  if (int rc = parse(text, file, model, err, notes); rc != 0) return FileFailure(prob, rc, err);
  Problem fresh;
  model.Build(fresh);
  LogNotes(prob, notes);
  prob->problem = std::move(fresh);
  InvalidateSolution(prob);
  prob->mipStarts.clear();
  prob->startColBasis.clear();
  prob->startRowBasis.clear();
  return ZELQ_RETCODE_OK;
}

int WriteProblem(ZELQprob* prob, const char* file, Formatter format) {
  if (int rc = CheckFileName(prob, file); rc != ZELQ_RETCODE_OK) return rc;
  std::vector<std::string> notes;
  std::string text = format(prob->problem, notes);
  LogNotes(prob, notes);
  std::string err;
  if (int rc = io::WriteTextFile(file, text, err); rc != 0) return FileFailure(prob, rc, err);
  return ZELQ_RETCODE_OK;
}

int NotSupported(ZELQprob* prob, const char* file, const char* what) {
  if (int rc = CheckFileName(prob, file); rc != ZELQ_RETCODE_OK) return rc;
  return Fail(prob, ZELQ_RETCODE_NOTSUPPORTED, "%s are not supported by this build", what);
}

}  // namespace
}  // namespace zelq::engine

using zelq::engine::Fail;
using zelq::engine::FileFailure;
using zelq::engine::Guard;

extern "C" {

ZELQ_API int ZELQ_ReadMps(ZELQprob* prob, const char* mpsfilename) {
  return Guard(prob, __func__, [&] {
    return zelq::engine::ReadProblem(prob, mpsfilename, zelq::engine::io::ParseMps);
  });
}

ZELQ_API int ZELQ_ReadLp(ZELQprob* prob, const char* lpfilename) {
  return Guard(prob, __func__, [&] {
    return zelq::engine::ReadProblem(prob, lpfilename, zelq::engine::io::ParseLp);
  });
}

ZELQ_API int ZELQ_WriteMps(ZELQprob* prob, const char* mpsfilename) {
  return Guard(prob, __func__, [&] {
    return zelq::engine::WriteProblem(prob, mpsfilename, zelq::engine::io::FormatMps);
  });
}

ZELQ_API int ZELQ_WriteLp(ZELQprob* prob, const char* lpfilename) {
  return Guard(prob, __func__, [&] {
    return zelq::engine::WriteProblem(prob, lpfilename, zelq::engine::io::FormatLp);
  });
}

ZELQ_API int ZELQ_WriteMpsStr(ZELQprob* prob, char* buff, int buffSize, int* pReqSize) {
  return Guard(prob, __func__, [&]() -> int {
    if (buff == nullptr && pReqSize == nullptr) {
      return Fail(prob, ZELQ_RETCODE_INVALID, "buff and pReqSize are both null");
    }
    if (buff != nullptr && buffSize < 0) {
      return Fail(prob, ZELQ_RETCODE_INVALID, "buffSize %d is negative", buffSize);
    }
    std::vector<std::string> notes;
    std::string text = zelq::engine::io::FormatMps(prob->problem, notes);
    if (text.size() >= static_cast<size_t>(INT_MAX)) {
      return Fail(prob, ZELQ_RETCODE_INVALID,
                  "the MPS text (%zu bytes) is too long for an int size", text.size());
    }
    int need = static_cast<int>(text.size()) + 1;
    if (pReqSize != nullptr) *pReqSize = need;
    if (buff == nullptr) return ZELQ_RETCODE_OK;
    if (buffSize < need) {
      return Fail(prob, ZELQ_RETCODE_INVALID,
                  "buffer of %d bytes is too small: the MPS text needs %d (with the terminator)",
                  buffSize, need);
    }
    std::memcpy(buff, text.c_str(), static_cast<size_t>(need));
    return ZELQ_RETCODE_OK;
  });
}

ZELQ_API int ZELQ_ReadSDPA(ZELQprob* prob, const char* sdpafilename) {
  return Guard(prob, __func__, [&] {
    return zelq::engine::NotSupported(prob, sdpafilename, "SDPA files (semidefinite problems)");
  });
}

ZELQ_API int ZELQ_ReadCbf(ZELQprob* prob, const char* cbffilename) {
  return Guard(prob, __func__, [&] {
    return zelq::engine::NotSupported(prob, cbffilename, "CBF files (conic problems)");
  });
}

ZELQ_API int ZELQ_ReadBin(ZELQprob* prob, const char* binfilename) {
  return Guard(prob, __func__, [&] {
    return zelq::engine::NotSupported(prob, binfilename, "binary problem files");
  });
}

ZELQ_API int ZELQ_ReadTune(ZELQprob* prob, const char* tunefilename) {
  return Guard(prob, __func__,
               [&] { return zelq::engine::NotSupported(prob, tunefilename, "tuning files"); });
}

ZELQ_API int ZELQ_WriteCbf(ZELQprob* prob, const char* cbffilename) {
  return Guard(prob, __func__, [&] {
    return zelq::engine::NotSupported(prob, cbffilename, "CBF files (conic problems)");
  });
}

ZELQ_API int ZELQ_WriteBin(ZELQprob* prob, const char* binfilename) {
  return Guard(prob, __func__, [&] {
    return zelq::engine::NotSupported(prob, binfilename, "binary problem files");
  });
}

ZELQ_API int ZELQ_WriteNL(ZELQprob* prob, const char* nlfilename) {
  return Guard(prob, __func__, [&] {
    return zelq::engine::NotSupported(prob, nlfilename, "NL files (nonlinear problems)");
  });
}

ZELQ_API int ZELQ_WriteIIS(ZELQprob* prob, const char* iisfilename) {
  return Guard(prob, __func__, [&] {
    return zelq::engine::NotSupported(prob, iisfilename, "IIS files (IIS computation)");
  });
}

ZELQ_API int ZELQ_WriteRelax(ZELQprob* prob, const char* relaxfilename) {
  return Guard(prob, __func__, [&] {
    return zelq::engine::NotSupported(prob, relaxfilename,
                                      "feasibility relaxation files (feasibility relaxation)");
  });
}

ZELQ_API int ZELQ_WriteTuneParam(ZELQprob* prob, int idx, const char* parfilename) {
  return Guard(prob, __func__, [&] {
    (void)idx;
    return zelq::engine::NotSupported(prob, parfilename, "tuning results (tuning)");
  });
}

}  // extern "C"
