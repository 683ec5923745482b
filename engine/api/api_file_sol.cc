// File entry points for solution-side data: solutions (.sol, .json), pool solutions, bases,
// MIP starts, branching orders and parameter files.
#include <climits>
#include <cstring>
#include <string>
#include <vector>

#include "api/guard.h"
#include "api/prob_setup.h"
#include "io/json_sol.h"
#include "io/sol_files.h"
#include "io/text_io.h"
#include "io/write_names.h"
#include "params/param_file.h"

namespace zelq::engine {
namespace {

int CheckName(ZELQprob* prob, const char* name) {
  if (name == nullptr || name[0] == '\0') {
    return Fail(prob, ZELQ_RETCODE_INVALID, "no file name given (null or empty)");
  }
  return ZELQ_RETCODE_OK;
}

std::vector<std::string> ColNames(ZELQprob* prob) {
  return io::OutputNames(prob->problem.colNames, prob->problem.cols(), 'C');
}
std::vector<std::string> RowNames(ZELQprob* prob) {
  return io::OutputNames(prob->problem.rowNames, prob->problem.rows(), 'R');
}

// The values GetSolution reports: the best MIP solution, else the LP solution; null when none
// exists for the current content.
const std::vector<double>* ReportedValues(ZELQprob* prob) {
  const Solution& s = prob->solution;
  size_t n = static_cast<size_t>(prob->problem.cols());
  if (s.hasMipSol && s.mipX.size() == n) return &s.mipX;
  if (s.hasLpSol && s.x.size() == n) return &s.x;
  return nullptr;
}

int NoSolution(ZELQprob* prob) { return Fail(prob, ZELQ_RETCODE_INVALID, "no solution available"); }

int WriteText(ZELQprob* prob, const char* file, const std::string& text) {
  std::string err;
  if (int rc = io::WriteTextFile(file, text, err); rc != 0)
    return FileFailure(prob, rc, err);
  return ZELQ_RETCODE_OK;
}

int ReadText(ZELQprob* prob, const char* file, std::string& text) {
  if (int rc = CheckName(prob, file); rc != ZELQ_RETCODE_OK) return rc;
  std::string err;
  if (int rc = io::ReadTextFile(file, text, err); rc != 0) return FileFailure(prob, rc, err);
  return ZELQ_RETCODE_OK;
}

int WriteValues(ZELQprob* prob, const char* file, const char* title, double obj,
                const std::vector<double>& x) {
  std::vector<std::string> header = {
      title, std::string("Status: ") + io::StatusText(prob->solution.status),
      "Objective: " + io::Num(obj)};
  return WriteText(prob, file, io::FormatNameValues(header, ColNames(prob), x.data()));
}

// Appends the (column, value) pairs as a MIP start for the next solve.
int AddStart(ZELQprob* prob, const std::string& source, MipStart&& start) {
  if (start.empty())
    return Fail(prob, ZELQ_RETCODE_INVALID, "%s: no column values found", source.c_str());
  prob->mipStarts.push_back(std::move(start));
  return ZELQ_RETCODE_OK;
}

int ReadStartFile(ZELQprob* prob, const char* file) {
  std::string text;
  if (int rc = ReadText(prob, file, text); rc != ZELQ_RETCODE_OK) return rc;
  MipStart start;
  std::string err;
  io::NameIndex index = io::IndexNames(ColNames(prob));
  if (io::ParseNameValues(text, file, index, "value", false, start, err) != 0) {
    return FileFailure(prob, ZELQ_RETCODE_INVALID, err);
  }
  return AddStart(prob, file, std::move(start));
}

int ReadJson(ZELQprob* prob, std::string_view text, const std::string& source) {
  MipStart start;
  std::string err;
  io::NameIndex index = io::IndexNames(ColNames(prob));
  if (io::ParseJsonColumnValues(text, source, index, start, err) != 0) {
    return FileFailure(prob, ZELQ_RETCODE_INVALID, err);
  }
  return AddStart(prob, source, std::move(start));
}

// The JSON text of the current solution, or false when there is none.
bool JsonText(ZELQprob* prob, std::string& out) {
  const std::vector<double>* x = ReportedValues(prob);
  if (x == nullptr) return false;
  const Solution& s = prob->solution;
  std::vector<std::string> cols = ColNames(prob), rows = RowNames(prob);
  size_t m = rows.size(), n = cols.size();
  io::SolutionView v;
  v.status = s.status;
  v.objective = s.objVal;
  v.colNames = &cols;
  v.rowNames = &rows;
  v.x = x->data();
  if (x == &s.x) {
    if (s.redcost.size() == n) v.redCost = s.redcost.data();
    if (s.activity.size() == m) v.activity = s.activity.data();
    if (s.dual.size() == m) v.dual = s.dual.data();
  } else if (s.mipActivity.size() == m) {
    v.activity = s.mipActivity.data();
  }
  out = io::FormatJsonSolution(v);
  return true;
}

}  // namespace
}  // namespace zelq::engine

using zelq::engine::Fail;
using zelq::engine::FileFailure;
using zelq::engine::Guard;
namespace ze = zelq::engine;

extern "C" {

ZELQ_API int ZELQ_WriteSol(ZELQprob* prob, const char* solfilename) {
  return Guard(prob, __func__, [&]() -> int {
    if (int rc = ze::CheckName(prob, solfilename); rc != ZELQ_RETCODE_OK) return rc;
    const std::vector<double>* x = ze::ReportedValues(prob);
    if (x == nullptr) return ze::NoSolution(prob);
    return ze::WriteValues(prob, solfilename, "Zelq solution", prob->solution.objVal, *x);
  });
}

ZELQ_API int ZELQ_WritePoolSol(ZELQprob* prob, int iSol, const char* solfilename) {
  return Guard(prob, __func__, [&]() -> int {
    if (int rc = ze::CheckName(prob, solfilename); rc != ZELQ_RETCODE_OK) return rc;
    const auto& pool = prob->solution.pool;
    if (pool.empty() && !prob->solution.HasSol()) return ze::NoSolution(prob);
    if (iSol < 0 || iSol >= static_cast<int>(pool.size())) {
      return Fail(prob, ZELQ_RETCODE_INVALID, "solution index %d is out of range [0, %d)", iSol,
                  static_cast<int>(pool.size()));
    }
    const ze::PoolEntry& e = pool[static_cast<size_t>(iSol)];
    if (e.x.size() != static_cast<size_t>(prob->problem.cols())) return ze::NoSolution(prob);
    std::string title = "Zelq pool solution " + std::to_string(iSol);
    return ze::WriteValues(prob, solfilename, title.c_str(), e.obj, e.x);
  });
}

ZELQ_API int ZELQ_WriteMst(ZELQprob* prob, const char* mstfilename) {
  return Guard(prob, __func__, [&]() -> int {
    if (int rc = ze::CheckName(prob, mstfilename); rc != ZELQ_RETCODE_OK) return rc;
    const std::vector<double>* x = ze::ReportedValues(prob);
    if (x == nullptr) return ze::NoSolution(prob);
    return ze::WriteValues(prob, mstfilename, "Zelq MIP start", prob->solution.objVal, *x);
  });
}

ZELQ_API int ZELQ_ReadSol(ZELQprob* prob, const char* solfilename) {
  return Guard(prob, __func__, [&] { return ze::ReadStartFile(prob, solfilename); });
}

ZELQ_API int ZELQ_ReadMst(ZELQprob* prob, const char* mstfilename) {
  return Guard(prob, __func__, [&] { return ze::ReadStartFile(prob, mstfilename); });
}

ZELQ_API int ZELQ_WriteJsonSol(ZELQprob* prob, const char* jsonfilename) {
  return Guard(prob, __func__, [&]() -> int {
    if (int rc = ze::CheckName(prob, jsonfilename); rc != ZELQ_RETCODE_OK) return rc;
    std::string text;
    if (!ze::JsonText(prob, text)) return ze::NoSolution(prob);
    return ze::WriteText(prob, jsonfilename, text);
  });
}

ZELQ_API int ZELQ_WriteJsonStr(ZELQprob* prob, char* buff, int buffSize, int* pReqSize) {
  return Guard(prob, __func__, [&]() -> int {
    if (buff == nullptr && pReqSize == nullptr) {
      return Fail(prob, ZELQ_RETCODE_INVALID, "buff and pReqSize are both null");
    }
    if (buff != nullptr && buffSize < 0) {
      return Fail(prob, ZELQ_RETCODE_INVALID, "buffSize %d is negative", buffSize);
    }
    std::string text;
    if (!ze::JsonText(prob, text)) return ze::NoSolution(prob);
    if (text.size() >= static_cast<size_t>(INT_MAX)) {
      return Fail(prob, ZELQ_RETCODE_INVALID, "the JSON text is too long for an int size");
    }
    int need = static_cast<int>(text.size()) + 1;
    if (pReqSize != nullptr) *pReqSize = need;
    if (buff == nullptr) return ZELQ_RETCODE_OK;
    if (buffSize < need) {
      return Fail(prob, ZELQ_RETCODE_INVALID,
                  "buffer of %d bytes is too small: the JSON text needs %d (with the terminator)",
                  buffSize, need);
    }
    std::memcpy(buff, text.c_str(), static_cast<size_t>(need));
    return ZELQ_RETCODE_OK;
  });
}

ZELQ_API int ZELQ_ReadJsonSol(ZELQprob* prob, const char* jsonfilename) {
  return Guard(prob, __func__, [&]() -> int {
    std::string text;
    if (int rc = ze::ReadText(prob, jsonfilename, text); rc != ZELQ_RETCODE_OK) return rc;
    return ze::ReadJson(prob, text, jsonfilename);
  });
}

ZELQ_API int ZELQ_ReadJsonStr(ZELQprob* prob, const char* str) {
  return Guard(prob, __func__, [&]() -> int {
    if (str == nullptr) return Fail(prob, ZELQ_RETCODE_INVALID, "str is null");
    return ze::ReadJson(prob, str, "<string>");
  });
}

ZELQ_API int ZELQ_WriteBasis(ZELQprob* prob, const char* basfilename) {
  return Guard(prob, __func__, [&]() -> int {
    if (int rc = ze::CheckName(prob, basfilename); rc != ZELQ_RETCODE_OK) return rc;
    const ze::Solution& s = prob->solution;
    if (!s.hasBasis || s.colBasis.size() != static_cast<size_t>(prob->problem.cols()) ||
        s.rowBasis.size() != static_cast<size_t>(prob->problem.rows())) {
      return Fail(prob, ZELQ_RETCODE_INVALID, "no basis available (solve the LP first)");
    }
    return ze::WriteText(
        prob, basfilename,
        ze::io::FormatBasis(ze::ColNames(prob), ze::RowNames(prob), s.colBasis, s.rowBasis));
  });
}

ZELQ_API int ZELQ_ReadBasis(ZELQprob* prob, const char* basfilename) {
  return Guard(prob, __func__, [&]() -> int {
    std::string text;
    if (int rc = ze::ReadText(prob, basfilename, text); rc != ZELQ_RETCODE_OK) return rc;
    std::vector<int> cb, rb;
    std::string err;
    if (ze::io::ParseBasis(text, basfilename, ze::io::IndexNames(ze::ColNames(prob)),
                           ze::io::IndexNames(ze::RowNames(prob)), cb, rb, err) != 0) {
      return FileFailure(prob, ZELQ_RETCODE_INVALID, err);
    }
    prob->startColBasis = std::move(cb);
    prob->startRowBasis = std::move(rb);
    return ZELQ_RETCODE_OK;
  });
}

ZELQ_API int ZELQ_WriteOrd(ZELQprob* prob, const char* ordfilename) {
  return Guard(prob, __func__, [&]() -> int {
    if (int rc = ze::CheckName(prob, ordfilename); rc != ZELQ_RETCODE_OK) return rc;
    const ze::Problem& p = prob->problem;
    std::vector<std::string> all = ze::ColNames(prob), names;
    std::vector<double> prio;
    for (int j = 0; j < p.cols(); ++j) {
      double f = static_cast<size_t>(j) < p.branchFactor.size() ? p.branchFactor[j] : 0.0;
      if (f != 0.0) {
        names.push_back(all[j]);
        prio.push_back(f);
      }
    }
    return ze::WriteText(
        prob, ordfilename,
        ze::io::FormatNameValues({"Zelq branching order: column priority"}, names, prio.data()));
  });
}

ZELQ_API int ZELQ_ReadOrd(ZELQprob* prob, const char* ordfilename) {
  return Guard(prob, __func__, [&]() -> int {
    std::string text;
    if (int rc = ze::ReadText(prob, ordfilename, text); rc != ZELQ_RETCODE_OK) return rc;
    std::vector<std::pair<int, double>> entries;
    std::string err;
    if (ze::io::ParseNameValues(text, ordfilename, ze::io::IndexNames(ze::ColNames(prob)),
                                "priority", false, entries, err) != 0) {
      return FileFailure(prob, ZELQ_RETCODE_INVALID, err);
    }
    // The file replaces the whole order: columns it does not list get priority 0.
    std::vector<double> factor(static_cast<size_t>(prob->problem.cols()), 0.0);
    for (auto [j, v] : entries) factor[static_cast<size_t>(j)] = v;
    prob->problem.branchFactor = std::move(factor);
    return ZELQ_RETCODE_OK;
  });
}

ZELQ_API int ZELQ_ReadParam(ZELQprob* prob, const char* parfilename) {
  return Guard(prob, __func__, [&]() -> int {
    if (int rc = ze::CheckName(prob, parfilename); rc != ZELQ_RETCODE_OK) return rc;
    std::string msg;
    int rc = ze::ReadParamFile(parfilename, prob->params, msg);
    if (rc != ze::kParamOk) return Fail(prob, rc, "%s", msg.c_str());
    ze::SyncLogger(prob);  // "Logging" and "LogToConsole" may have changed
    return ZELQ_RETCODE_OK;
  });
}

ZELQ_API int ZELQ_WriteParam(ZELQprob* prob, const char* parfilename) {
  return Guard(prob, __func__, [&]() -> int {
    if (int rc = ze::CheckName(prob, parfilename); rc != ZELQ_RETCODE_OK) return rc;
    std::string msg;
    int rc = ze::WriteParamFile(parfilename, prob->params, msg);
    if (rc != ze::kParamOk) return Fail(prob, rc, "%s", msg.c_str());
    return ZELQ_RETCODE_OK;
  });
}

}  // extern "C"
