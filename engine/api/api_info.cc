// Per-column and per-row information by name ("Value", "Dual", "LB", ...). Names are matched
// without regard to ASCII case.
#include <strings.h>

#include "api/checks.h"

using namespace zelq::engine;

namespace {

enum class Info { kValue, kSlack, kDual, kRedCost, kLB, kUB, kObj, kBranch, kFarkas, kRay };

bool ParseInfo(const char* name, Info* out) {
  static const struct {
    const char* text;
    Info info;
  } kNames[] = {{"Value", Info::kValue},   {"Slack", Info::kSlack},
                {"Dual", Info::kDual},     {"RedCost", Info::kRedCost},
                {"LB", Info::kLB},         {"UB", Info::kUB},
                {"Obj", Info::kObj},       {"BranchFactor", Info::kBranch},
                {"DualFarkas", Info::kFarkas}, {"PrimalRay", Info::kRay}};
  for (const auto& n : kNames)
    if (strcasecmp(n.text, name) == 0) {
      *out = n.info;
      return true;
    }
  return false;
}

// The vector an information name reads for columns (rows: isRow). Null with a failure code in
// *rc when the information is unavailable.
const std::vector<double>* Select(ZELQprob* prob, Info info, bool isRow, const char* name,
                                  int* rc) {
  const Solution& s = prob->solution;
  const Problem& p = prob->problem;
  auto none = [&](const char* why) -> const std::vector<double>* {
    *rc = Fail(prob, ZELQ_RETCODE_INVALID, "\"%s\" is not available: %s", name, why);
    return nullptr;
  };
  switch (info) {
    case Info::kValue:
    case Info::kSlack:
      if (!isRow && info == Info::kSlack) return none("\"Slack\" is a row information");
      // A MIP solution is the answer the user asked for; an LP solution otherwise.
      if (s.hasMipSol) return isRow ? &s.mipActivity : &s.mipX;
      if (s.hasLpSol) return isRow ? &s.activity : &s.x;
      return none("no solution available");
    case Info::kDual:
      if (!isRow) return none("\"Dual\" is a row information (use \"RedCost\" for columns)");
      return s.hasLpSol ? &s.dual : none("no LP solution available");
    case Info::kRedCost:
      if (isRow) return none("\"RedCost\" is a column information (use \"Dual\" for rows)");
      return s.hasLpSol ? &s.redcost : none("no LP solution available");
    case Info::kLB: return isRow ? &p.rowLower : &p.colLower;
    case Info::kUB: return isRow ? &p.rowUpper : &p.colUpper;
    case Info::kObj: return isRow ? none("\"Obj\" is a column information") : &p.obj;
    case Info::kBranch:
      return isRow ? none("\"BranchFactor\" is a column information") : &p.branchFactor;
    case Info::kFarkas:
      if (!isRow) return none("\"DualFarkas\" is a row information");
      return s.hasDualFarkas ? &s.farkas : none("no Farkas certificate available");
    case Info::kRay:
      if (isRow) return none("\"PrimalRay\" is a column information");
      return s.hasPrimalRay ? &s.ray : none("no primal ray available");
  }
  return none("unknown information");
}

int GetInfo(ZELQprob* prob, bool isRow, const char* infoName, int num, const int* list,
            double* info) {
  const int count = isRow ? prob->problem.rows() : prob->problem.cols();
  if (infoName == nullptr) return Fail(prob, ZELQ_RETCODE_INVALID, "information name is null");
  Info which;
  if (!ParseInfo(infoName, &which))
    return Fail(prob, ZELQ_RETCODE_INVALID,
                "unknown information name \"%s\"; use Value, Slack, Dual, RedCost, LB, UB, Obj, "
                "BranchFactor, DualFarkas or PrimalRay",
                QuoteForMessage(infoName).c_str());
  if (int rc = CheckGetList(prob, num, list, count, isRow ? "rows" : "columns")) return rc;
  if (int rc = CheckPtr(prob, num, info, "info")) return rc;
  int rc = ZELQ_RETCODE_OK;
  const std::vector<double>* v = Select(prob, which, isRow, infoName, &rc);
  if (v == nullptr) return rc;
  if (static_cast<int>(v->size()) != count)
    return Fail(prob, ZELQ_RETCODE_INTERNAL, "\"%s\" holds %zu entries for %d elements",
                infoName, v->size(), count);
  for (int k = 0; k < num; ++k) info[k] = (*v)[ListAt(list, k)];
  return ZELQ_RETCODE_OK;
}

}  // namespace

int ZELQ_GetColInfo(ZELQprob* prob, const char* infoName, int num, const int* list,
                    double* info) {
  return Guard(prob, __func__,
               [&]() -> int { return GetInfo(prob, false, infoName, num, list, info); });
}

int ZELQ_GetRowInfo(ZELQprob* prob, const char* infoName, int num, const int* list,
                    double* info) {
  return Guard(prob, __func__,
               [&]() -> int { return GetInfo(prob, true, infoName, num, list, info); });
}
