// Shared helpers of the core C-interface tests: a quiet environment and problem, and a snapshot
// of a problem's whole linear content for "a failed call changes nothing" checks.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "zelq/zelq.h"

namespace zelq_test {

struct Snapshot {
  int cols = 0, rows = 0, elems = 0, sense = 0;
  std::vector<int> beg, cnt, idx;
  std::vector<double> val, colLb, colUb, obj, rowLb, rowUb;
  std::vector<char> types;
  std::vector<std::string> colNames, rowNames;
  bool operator==(const Snapshot&) const = default;
};

inline std::string ColName(ZELQprob* p, int j) {
  char buf[256];
  EXPECT_EQ(ZELQ_GetColName(p, j, buf, sizeof buf, nullptr), 0);
  return buf;
}

inline std::string RowName(ZELQprob* p, int i) {
  char buf[256];
  EXPECT_EQ(ZELQ_GetRowName(p, i, buf, sizeof buf, nullptr), 0);
  return buf;
}

inline Snapshot Take(ZELQprob* p) {
  Snapshot s;
  EXPECT_EQ(ZELQ_GetIntAttr(p, "Cols", &s.cols), 0);
  EXPECT_EQ(ZELQ_GetIntAttr(p, "Rows", &s.rows), 0);
  EXPECT_EQ(ZELQ_GetIntAttr(p, "Elems", &s.elems), 0);
  EXPECT_EQ(ZELQ_GetIntAttr(p, "ObjSense", &s.sense), 0);
  int need = 0;
  EXPECT_EQ(ZELQ_GetRows(p, s.rows, nullptr, nullptr, nullptr, nullptr, nullptr, 0, &need), 0);
  s.beg.resize(s.rows);
  s.cnt.resize(s.rows);
  s.idx.resize(need);
  s.val.resize(need);
  EXPECT_EQ(ZELQ_GetRows(p, s.rows, nullptr, s.beg.data(), s.cnt.data(), s.idx.data(),
                         s.val.data(), need, nullptr),
            0);
  auto col = [&](const char* what, std::vector<double>& out) {
    out.resize(s.cols);
    EXPECT_EQ(ZELQ_GetColInfo(p, what, s.cols, nullptr, out.data()), 0);
  };
  col("LB", s.colLb);
  col("UB", s.colUb);
  col("Obj", s.obj);
  s.rowLb.resize(s.rows);
  s.rowUb.resize(s.rows);
  EXPECT_EQ(ZELQ_GetRowInfo(p, "LB", s.rows, nullptr, s.rowLb.data()), 0);
  EXPECT_EQ(ZELQ_GetRowInfo(p, "UB", s.rows, nullptr, s.rowUb.data()), 0);
  s.types.resize(s.cols);
  EXPECT_EQ(ZELQ_GetColType(p, s.cols, nullptr, s.types.data()), 0);
  for (int j = 0; j < s.cols; ++j) s.colNames.push_back(ColName(p, j));
  for (int i = 0; i < s.rows; ++i) s.rowNames.push_back(RowName(p, i));
  return s;
}

inline std::string LastError(ZELQprob* p) {
  char buf[1024];
  EXPECT_EQ(ZELQ_GetLastError(p, buf, sizeof buf), 0);
  return buf;
}

// A quiet environment and one problem:
//   min x + 2y + 3z  s.t.  c1: x + y <= 4,  c2: y + z >= 1 (names x, y, z, c1, c2), y integer.
class CoreProblem : public ::testing::Test {
 protected:
  void SetUp() override {
    ZELQenvconfig* cfg = nullptr;
    ASSERT_EQ(ZELQ_CreateEnvConfig(&cfg), 0);
    ASSERT_EQ(ZELQ_SetEnvConfig(cfg, "Logging", "0"), 0);
    ASSERT_EQ(ZELQ_CreateEnvWithConfig(cfg, &env_), 0);
    ASSERT_EQ(ZELQ_DeleteEnvConfig(&cfg), 0);
    ASSERT_EQ(ZELQ_CreateProb(env_, &prob_), 0);
    const double obj[] = {1, 2, 3};
    const char types[] = {'C', 'I', 'C'};
    const double ub[] = {10, 5, ZELQ_INFINITY};
    const char* names[] = {"x", "y", "z"};
    ASSERT_EQ(ZELQ_AddCols(prob_, 3, obj, nullptr, nullptr, nullptr, nullptr, types, nullptr, ub,
                           names),
              0);
    const int beg[] = {0, 2, 4};
    const int idx[] = {0, 1, 1, 2};
    const double val[] = {1, 1, 1, 1};
    const char sense[] = {'L', 'G'};
    const double rhs[] = {4, 1};
    const char* rnames[] = {"c1", "c2"};
    ASSERT_EQ(ZELQ_AddRows(prob_, 2, beg, nullptr, idx, val, sense, rhs, nullptr, rnames), 0);
  }
  void TearDown() override {
    EXPECT_EQ(ZELQ_DeleteProb(&prob_), 0);
    EXPECT_EQ(prob_, nullptr);
    EXPECT_EQ(ZELQ_DeleteEnv(&env_), 0);
  }
  ZELQenv* env_ = nullptr;
  ZELQprob* prob_ = nullptr;
};

}  // namespace zelq_test
