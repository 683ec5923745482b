// Argument checks shared by the C entry points. Each check records a message naming the
// function (through Fail), the offending position and value, and the valid range, and returns
// ZELQ_RETCODE_INVALID; ZELQ_RETCODE_OK when the argument is acceptable.
#pragma once

#include <cstdint>
#include <vector>

#include "api/guard.h"

namespace zelq::engine {

// |v| >= 1e30 becomes +-1e30 (the engine's infinity).
inline double NormInf(double v) { return v >= kInf ? kInf : (v <= -kInf ? -kInf : v); }

int CheckCount(ZELQprob* prob, int num, const char* what);
// CheckCount, and `have` + num within the int range of indices (adding to `have` elements).
int CheckGrowth(ZELQprob* prob, int have, int num, const char* what);
// Requires a non-null pointer when num > 0.
int CheckPtr(ZELQprob* prob, int num, const void* p, const char* what);
int CheckIndex(ZELQprob* prob, int i, int limit, const char* what);
// num >= 0, list non-null when num > 0, every entry in [0, limit).
int CheckList(ZELQprob* prob, int num, const int* list, int limit, const char* what);
// For getters: list null means all elements and then requires num == limit; otherwise as
// CheckList.
int CheckGetList(ZELQprob* prob, int num, const int* list, int limit, const char* what);
inline int ListAt(const int* list, int k) { return list ? list[k] : k; }
// Finite values (objective coefficients, matrix entries, constants).
int CheckFinite(ZELQprob* prob, int num, const double* v, const char* what);
// Lower bounds: not NaN, not +inf. Upper bounds: not NaN, not -inf.
int CheckLower(ZELQprob* prob, int num, const double* v, const char* what);
int CheckUpper(ZELQprob* prob, int num, const double* v, const char* what);
int CheckColTypes(ZELQprob* prob, int num, const char* types);

// Duplicate detection over index sets that arrive one group at a time (the entries of one row
// or column): Begin() starts a group, Seen(i) reports whether i was already in this group.
// O(1) per index; the mark array grows with the largest index seen.
class DupMarker {
 public:
  void Begin(int limit);
  bool Seen(int i) {
    if (mark_[i] == gen_) return true;
    mark_[i] = gen_;
    return false;
  }

 private:
  std::vector<uint32_t> mark_;
  uint32_t gen_ = 0;
};

// Checks one sparse vector: n >= 0, idx/val non-null when n > 0, indices in [0, limit) and
// distinct, values finite. `what` and `number` name the vector in messages ("row 3"; number -1:
// just "row").
int CheckSparse(ZELQprob* prob, DupMarker& marks, int n, const int* idx, const double* val,
                int limit, const char* what, int number = -1);

// A compressed list of groups (CSR rows or CSC columns): beg/cnt as in the C interface
// (beg null: all groups empty; cnt null: beg[k+1] - beg[k]). Checks the offsets and every
// group's entries; fills offset/length of each group for the caller.
struct Groups {
  std::vector<int64_t> off;
  std::vector<int> len;
  int64_t total = 0;
};
int CheckGroups(ZELQprob* prob, int n, const int* beg, const int* cnt, const int* idx,
                const double* val, int limit, const char* groupWord, Groups* out);

// Row bounds from sense/bound/upper arrays as AddRows and LoadProb take them (sense null:
// bound/upper are lower/upper bounds, null meaning -inf/+inf; sense given: bound null means 0,
// upper is needed by 'R'/0 rows). Checks senses and values; fills lo/up.
int RowBoundsFromArrays(ZELQprob* prob, int n, const char* sense, const double* bound,
                        const double* upper, std::vector<double>* lo, std::vector<double>* up);
// The same for one row; `number` >= 0 names the row in messages.
int RowBoundsOne(ZELQprob* prob, char sense, double bound, double upper, double* lo, double* up,
                 int number = -1);

// Copies text into a caller buffer: reqSize gets strlen + 1 when not null; buff null is a size
// query; a buffer too small is filled with a cut-short copy and gives code 3.
int CopyOut(ZELQprob* prob, const std::string& text, char* buff, int buffLen, int* reqSize);

}  // namespace zelq::engine
