#include "api/checks.h"

#include <climits>
#include <cmath>
#include <cstring>

namespace zelq::engine {

int CheckCount(ZELQprob* prob, int num, const char* what) {
  if (num < 0)
    return Fail(prob, ZELQ_RETCODE_INVALID, "count of %s is %d; it must be >= 0", what, num);
  return ZELQ_RETCODE_OK;
}

int CheckGrowth(ZELQprob* prob, int have, int num, const char* what) {
  if (int rc = CheckCount(prob, num, what)) return rc;
  if (static_cast<int64_t>(have) + num > INT_MAX)
    return Fail(prob, ZELQ_RETCODE_INVALID, "%d more %s on top of %d exceed the limit of %d", num,
                what, have, INT_MAX);
  return ZELQ_RETCODE_OK;
}

int CheckPtr(ZELQprob* prob, int num, const void* p, const char* what) {
  if (num > 0 && p == nullptr)
    return Fail(prob, ZELQ_RETCODE_INVALID, "%s is null but %d entries are expected", what, num);
  return ZELQ_RETCODE_OK;
}

int CheckIndex(ZELQprob* prob, int i, int limit, const char* what) {
  if (i < 0 || i >= limit) {
    if (limit == 0) return Fail(prob, ZELQ_RETCODE_INVALID, "%s index %d: there are none", what, i);
    return Fail(prob, ZELQ_RETCODE_INVALID, "%s index %d is outside [0, %d]", what, i, limit - 1);
  }
  return ZELQ_RETCODE_OK;
}

int CheckList(ZELQprob* prob, int num, const int* list, int limit, const char* what) {
  if (int rc = CheckCount(prob, num, what)) return rc;
  if (int rc = CheckPtr(prob, num, list, "the index list")) return rc;
  for (int k = 0; k < num; ++k) {
    if (list[k] >= 0 && list[k] < limit) continue;
    if (limit == 0)
      return Fail(prob, ZELQ_RETCODE_INVALID, "list[%d] = %d: there are no %s", k, list[k], what);
    return Fail(prob, ZELQ_RETCODE_INVALID, "list[%d] = %d is outside the %s range [0, %d]", k,
                list[k], what, limit - 1);
  }
  return ZELQ_RETCODE_OK;
}

int CheckGetList(ZELQprob* prob, int num, const int* list, int limit, const char* what) {
  if (list == nullptr && num != limit) {
    if (int rc = CheckCount(prob, num, what)) return rc;
    if (num == 0) return ZELQ_RETCODE_OK;
    return Fail(prob, ZELQ_RETCODE_INVALID,
                "the index list is null but num = %d; pass num = %d (all %s) or a list", num,
                limit, what);
  }
  if (list == nullptr) return ZELQ_RETCODE_OK;
  return CheckList(prob, num, list, limit, what);
}

int CheckFinite(ZELQprob* prob, int num, const double* v, const char* what) {
  if (v == nullptr) return ZELQ_RETCODE_OK;
  for (int k = 0; k < num; ++k)
    if (!std::isfinite(v[k]) || std::fabs(v[k]) >= kInf)
      return Fail(prob, ZELQ_RETCODE_INVALID, "%s[%d] = %g is not a finite value below 1e30",
                  what, k, v[k]);
  return ZELQ_RETCODE_OK;
}

int CheckLower(ZELQprob* prob, int num, const double* v, const char* what) {
  if (v == nullptr) return ZELQ_RETCODE_OK;
  for (int k = 0; k < num; ++k)
    if (std::isnan(v[k]) || v[k] >= kInf)
      return Fail(prob, ZELQ_RETCODE_INVALID,
                  "%s[%d] = %g is not a valid lower bound (a number below 1e30, or -1e30 for none)",
                  what, k, v[k]);
  return ZELQ_RETCODE_OK;
}

int CheckUpper(ZELQprob* prob, int num, const double* v, const char* what) {
  if (v == nullptr) return ZELQ_RETCODE_OK;
  for (int k = 0; k < num; ++k)
    if (std::isnan(v[k]) || v[k] <= -kInf)
      return Fail(prob, ZELQ_RETCODE_INVALID,
                  "%s[%d] = %g is not a valid upper bound (a number above -1e30, or 1e30 for none)",
                  what, k, v[k]);
  return ZELQ_RETCODE_OK;
}

int CheckColTypes(ZELQprob* prob, int num, const char* types) {
  if (types == nullptr) return ZELQ_RETCODE_OK;
  for (int k = 0; k < num; ++k) {
    const char t = types[k];
    if (t != 'C' && t != 'B' && t != 'I')
      return Fail(prob, ZELQ_RETCODE_INVALID,
                  "type[%d] = '%c' (%d) is not a column type; use 'C', 'B' or 'I'", k,
                  (t >= 32 && t < 127) ? t : '?', static_cast<int>(t));
  }
  return ZELQ_RETCODE_OK;
}

void DupMarker::Begin(int limit) {
  if (static_cast<int>(mark_.size()) < limit) mark_.resize(limit, 0);
  if (++gen_ == 0) {  // wrapped: forget every old mark
    std::fill(mark_.begin(), mark_.end(), 0);
    gen_ = 1;
  }
}

int CheckSparse(ZELQprob* prob, DupMarker& marks, int n, const int* idx, const double* val,
                int limit, const char* what, int number) {
  // The label is only formatted when a check fails, so good input pays nothing for it.
  auto label = [&]() {
    std::string l = what;
    if (number >= 0) {
      l += ' ';
      l += std::to_string(number);
    }
    return l;
  };
  if (n < 0)
    return Fail(prob, ZELQ_RETCODE_INVALID, "%s: entry count %d is negative", label().c_str(), n);
  if (n > 0 && (idx == nullptr || val == nullptr))
    return Fail(prob, ZELQ_RETCODE_INVALID, "%s: %d entries but a null index or value array",
                label().c_str(), n);
  marks.Begin(limit);
  for (int k = 0; k < n; ++k) {
    const int i = idx[k];
    if (i < 0 || i >= limit)
      return Fail(prob, ZELQ_RETCODE_INVALID, "%s: entry %d has index %d outside [0, %d)",
                  label().c_str(), k, i, limit);
    if (marks.Seen(i))
      return Fail(prob, ZELQ_RETCODE_INVALID, "%s: index %d appears twice", label().c_str(), i);
    if (!std::isfinite(val[k]) || std::fabs(val[k]) >= kInf)
      return Fail(prob, ZELQ_RETCODE_INVALID, "%s: entry %d (index %d) has value %g, not finite",
                  label().c_str(), k, i, val[k]);
  }
  return ZELQ_RETCODE_OK;
}

static int GroupOffsets(ZELQprob* prob, int n, const int* beg, const int* cnt,
                        const char* groupWord, Groups* out) {
  out->off.assign(n, 0);
  out->len.assign(n, 0);
  out->total = 0;
  if (beg == nullptr) return ZELQ_RETCODE_OK;
  for (int k = 0; k < n; ++k) {
    const int64_t b = beg[k];
    const int64_t len = cnt ? cnt[k] : static_cast<int64_t>(beg[k + 1]) - b;
    if (b < 0)
      return Fail(prob, ZELQ_RETCODE_INVALID, "%s %d: start offset %lld is negative", groupWord,
                  k, static_cast<long long>(b));
    if (len < 0)
      return Fail(prob, ZELQ_RETCODE_INVALID, "%s %d: entry count %lld is negative", groupWord,
                  k, static_cast<long long>(len));
    out->off[k] = b;
    out->len[k] = static_cast<int>(len);
    out->total += len;
  }
  return ZELQ_RETCODE_OK;
}

int CheckGroups(ZELQprob* prob, int n, const int* beg, const int* cnt, const int* idx,
                const double* val, int limit, const char* groupWord, Groups* out) {
  if (int rc = GroupOffsets(prob, n, beg, cnt, groupWord, out)) return rc;
  if (out->total > 0 && (idx == nullptr || val == nullptr))
    return Fail(prob, ZELQ_RETCODE_INVALID, "%lld entries but a null index or value array",
                static_cast<long long>(out->total));
  DupMarker marks;
  for (int k = 0; k < n; ++k) {
    if (out->len[k] == 0) continue;
    const int64_t b = out->off[k];
    if (int rc = CheckSparse(prob, marks, out->len[k], idx + b, val + b, limit, groupWord, k))
      return rc;
  }
  return ZELQ_RETCODE_OK;
}

int RowBoundsOne(ZELQprob* prob, char sense, double bound, double upper, double* lo, double* up,
                 int number) {
  const std::string row = number >= 0 ? "row " + std::to_string(number) + ": " : "";
  if (!SenseToBounds(sense, bound, upper, lo, up))
    return Fail(prob, ZELQ_RETCODE_INVALID,
                "%ssense '%c' (%d) is not a row sense; use 'L', 'G', 'E', 'N', 'R' or 0",
                row.c_str(), (sense >= 32 && sense < 127) ? sense : '?', static_cast<int>(sense));
  const bool ranged = sense == 'R' || sense == 0;
  if (sense != 'N' && std::isnan(bound))
    return Fail(prob, ZELQ_RETCODE_INVALID, "%srow bound is NaN", row.c_str());
  if (ranged && std::isnan(upper))
    return Fail(prob, ZELQ_RETCODE_INVALID, "%srow upper bound is NaN", row.c_str());
  if (*lo >= kInf || *up <= -kInf)
    return Fail(prob, ZELQ_RETCODE_INVALID,
                "%ssense '%c' with bound %g and upper %g gives row bounds [%g, %g], which no value "
                "satisfies (a lower bound of +1e30 or an upper bound of -1e30)",
                row.c_str(), sense ? sense : 'R', bound, upper, *lo, *up);
  return ZELQ_RETCODE_OK;
}

int RowBoundsFromArrays(ZELQprob* prob, int n, const char* sense, const double* bound,
                        const double* upper, std::vector<double>* lo, std::vector<double>* up) {
  lo->resize(n);
  up->resize(n);
  for (int k = 0; k < n; ++k) {
    const char s = sense ? sense[k] : 'R';
    const bool ranged = s == 'R' || s == 0;
    if (ranged && sense != nullptr && upper == nullptr)
      return Fail(prob, ZELQ_RETCODE_INVALID,
                  "row %d has sense '%c' but the upper bound array is null", k, s ? s : 'R');
    const double b = bound ? bound[k] : (sense ? 0.0 : -kInf);
    const double u = upper ? upper[k] : kInf;
    if (int rc = RowBoundsOne(prob, s, b, u, &(*lo)[k], &(*up)[k], k)) return rc;
  }
  return ZELQ_RETCODE_OK;
}

int CopyOut(ZELQprob* prob, const std::string& text, char* buff, int buffLen, int* reqSize) {
  const int need = static_cast<int>(text.size()) + 1;
  if (reqSize) *reqSize = need;
  if (buff == nullptr) {
    if (reqSize == nullptr)
      return Fail(prob, ZELQ_RETCODE_INVALID, "both the buffer and the size pointer are null");
    return ZELQ_RETCODE_OK;
  }
  if (buffLen <= 0)
    return Fail(prob, ZELQ_RETCODE_INVALID, "buffer length %d must be positive", buffLen);
  const int n = need <= buffLen ? need - 1 : buffLen - 1;
  std::memcpy(buff, text.data(), n);
  buff[n] = '\0';
  if (need > buffLen)
    return Fail(prob, ZELQ_RETCODE_INVALID, "buffer of %d bytes is too small; %d are needed",
                buffLen, need);
  return ZELQ_RETCODE_OK;
}

}  // namespace zelq::engine
