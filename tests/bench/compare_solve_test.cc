// The solving comparison's own logic: which instances the index yields, the exported problem
// the HiGHS child solves (against the engine's problem, and read back by highs_solve.py when
// scipy is present), and the agreement and mean arithmetic of its summary.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <limits>
#include <string>
#include <vector>

#include "compare_solve.h"
#include "zelq/zelq.h"

namespace zelqbench {
namespace {

const double kInf = std::numeric_limits<double>::infinity();

std::string TempPath(const char* name) {
  return std::string(::testing::TempDir()) + "compare_solve_" + name;
}

void WriteBytes(const std::string& path, const std::string& bytes) {
  std::FILE* f = std::fopen(path.c_str(), "wb");
  ASSERT_NE(f, nullptr);
  std::fwrite(bytes.data(), 1, bytes.size(), f);
  std::fclose(f);
}

std::string ReadBytes(const std::string& path) {
  std::string s;
  std::FILE* f = std::fopen(path.c_str(), "rb");
  if (f == nullptr) return s;
  char buf[4096];
  size_t n = 0;
  while ((n = std::fread(buf, 1, sizeof buf, f)) > 0) s.append(buf, n);
  std::fclose(f);
  return s;
}

TEST(CompareSolveIndex, SelectsSetsNamesAndOptima) {
  const std::string index =
      "set\tfile\tformat\toptimum\tsource\n"
      "netlib-lp\tnetlib/afiro.mps\tMPS (fixed)\t-4.6475314286E+02\tx\n"
      "netlib-lp\tnetlib/afiro_crlf.mps\tMPS (fixed)\t-4.6475314286E+02\tx\r\n"
      "netlib-lp\tnetlib/pilot87.mps.gz\tMPS (fixed), gzip\t3.0171072827E+02\tx\n"
      "netlib-kennington-lp\tkennington/cre-a.mps\tMPS (fixed)\t2.3595407e+07\tx\n"
      "miplib3\tmiplib3/enigma.mps\tMPS\t0.0\tx\n"
      "maros-meszaros-qp\tmaros_meszaros/HS21.QPS\tQPS\t-99.96\tx\n";
  std::vector<IndexEntry> e;
  std::string error;
  ASSERT_TRUE(ParseIndex(index, {"netlib"}, &e, &error)) << error;
  ASSERT_EQ(e.size(), 3u);  // afiro_crlf is afiro again; "netlib" includes Kennington
  EXPECT_EQ(e[0].name, "afiro");
  EXPECT_DOUBLE_EQ(e[0].optimum, -464.75314286);
  EXPECT_EQ(e[1].name, "pilot87");
  EXPECT_EQ(e[1].file, "netlib/pilot87.mps.gz");
  EXPECT_EQ(e[2].set, "kennington");
  EXPECT_EQ(e[2].name, "cre-a");

  ASSERT_TRUE(ParseIndex(index, {"kennington", "miplib3"}, &e, &error));
  ASSERT_EQ(e.size(), 2u);
  EXPECT_EQ(e[0].name, "cre-a");
  EXPECT_EQ(e[1].set, "miplib3");
  EXPECT_EQ(e[1].optimum, 0.0);

  // A chosen line without a number fails with its line and file; an unchosen one is ignored.
  const std::string bad = index + "miplib3\tmiplib3/p0033.mps\tMPS\t3089x\tx\n";
  ASSERT_TRUE(ParseIndex(bad, {"netlib"}, &e, &error));
  EXPECT_FALSE(ParseIndex(bad, {"miplib3"}, &e, &error));
  EXPECT_EQ(error, "index line 8: optimum '3089x' of miplib3/p0033.mps is not a number");
  EXPECT_FALSE(ParseIndex("miplib3\tmiplib3/a.mps\tMPS\t\tx\n", {"miplib3"}, &e, &error));
  EXPECT_EQ(error, "index line 1: optimum '' of miplib3/a.mps is not a number");

  // The shared data set's own index: every Netlib LP once, the Kennington LPs and MIPLIB 3.
  const std::string shared = ReadBytes(std::string(ZELQ_BENCH_DIR) + "/../../shared/data/INDEX.tsv");
  if (!shared.empty()) {
    ASSERT_TRUE(ParseIndex(shared, {"netlib", "miplib3"}, &e, &error)) << error;
    int netlib = 0, kennington = 0, miplib = 0;
    for (const IndexEntry& x : e) {
      netlib += x.set == "netlib";
      kennington += x.set == "kennington";
      miplib += x.set == "miplib3";
      EXPECT_TRUE(std::isfinite(x.optimum)) << x.name;
    }
    EXPECT_EQ(netlib, 30);
    EXPECT_EQ(kennington, 2);
    EXPECT_EQ(miplib, 27);
  }
}

// max 3x + 2y + 5z + w + 1 over x in [0, 10], y >= 0, z binary (given bounds [-1, 5]),
// w integer in [0, 10]; rows x + y <= 4, 1 <= x - y <= 3, y + z = 1.5, 2w - x <= 0 and a
// free row x + w. Optimum 18.5 (x 3.5, y 0.5, z 1, w 1); LP relaxation 19.25 (w 1.75).
class CompareSolveExport : public ::testing::Test {
 protected:
  void SetUp() override {
    ZELQenvconfig* cfg = nullptr;
    ASSERT_EQ(ZELQ_CreateEnvConfig(&cfg), 0);
    ZELQ_SetEnvConfig(cfg, "Banner", "0");
    ZELQ_SetEnvConfig(cfg, "Logging", "0");
    ASSERT_EQ(ZELQ_CreateEnvWithConfig(cfg, &env_), 0);
    ZELQ_DeleteEnvConfig(&cfg);
    ASSERT_EQ(ZELQ_CreateProb(env_, &prob_), 0);
    ZELQ_SetIntParam(prob_, "Logging", 0);
    const double obj[] = {3, 2, 5, 1};
    const int beg[] = {0, 4, 7, 8}, cnt[] = {4, 3, 1, 2};
    const int idx[] = {0, 1, 3, 4, 0, 1, 2, 2, 3, 4};
    const double val[] = {1, 1, -1, 1, 1, -1, 1, 1, 2, 1};
    const double colLo[] = {0, 0, -1, 0}, colUp[] = {10, ZELQ_INFINITY, 5, 10};
    const double rowLo[] = {-ZELQ_INFINITY, 1, 1.5, -ZELQ_INFINITY, -ZELQ_INFINITY};
    const double rowUp[] = {4, 3, 1.5, 0, ZELQ_INFINITY};
    ASSERT_EQ(ZELQ_LoadProb(prob_, 4, 5, -1, 1.0, obj, beg, cnt, idx, val, "CCBI", colLo, colUp,
                            nullptr, rowLo, rowUp, nullptr, nullptr),
              0);
  }
  void TearDown() override {
    if (prob_ != nullptr) ZELQ_DeleteProb(&prob_);
    if (env_ != nullptr) ZELQ_DeleteEnv(&env_);
  }

  ZELQenv* env_ = nullptr;
  ZELQprob* prob_ = nullptr;
};

TEST_F(CompareSolveExport, MatchesTheEngineProblemAndRoundTrips) {
  ExportedProblem p;
  std::string error;
  ASSERT_TRUE(ExportFromEngine(prob_, &p, &error)) << error;
  EXPECT_EQ(p.rows, 5);
  EXPECT_EQ(p.cols, 4);
  EXPECT_EQ(p.nnz(), 10);
  EXPECT_EQ(p.sense, -1);
  EXPECT_EQ(p.objConst, 1.0);
  EXPECT_TRUE(p.isMip());
  EXPECT_EQ(p.integer, (std::vector<uint8_t>{0, 0, 1, 1}));
  EXPECT_EQ(p.obj, (std::vector<double>{3, 2, 5, 1}));
  // Binary bounds are cut to [0, 1] as the engine hands them to its solvers; no bound is 1e30.
  EXPECT_EQ(p.colLower, (std::vector<double>{0, 0, 0, 0}));
  EXPECT_EQ(p.colUpper, (std::vector<double>{10, kInf, 1, 10}));
  EXPECT_EQ(p.rowLower, (std::vector<double>{-kInf, 1, 1.5, -kInf, -kInf}));
  EXPECT_EQ(p.rowUpper, (std::vector<double>{4, 3, 1.5, 0, kInf}));
  // Row-wise, the same coefficients as the column-wise input.
  double dense[5][4] = {};
  ASSERT_EQ(p.rowBeg.size(), 6u);
  for (int i = 0; i < 5; ++i)
    for (int64_t k = p.rowBeg[i]; k < p.rowBeg[i + 1]; ++k) dense[i][p.colIdx[k]] = p.val[k];
  const double want[5][4] = {{1, 1, 0, 0}, {1, -1, 0, 0}, {0, 1, 1, 0}, {-1, 0, 0, 2}, {1, 0, 0, 1}};
  for (int i = 0; i < 5; ++i)
    for (int j = 0; j < 4; ++j) EXPECT_EQ(dense[i][j], want[i][j]) << i << "," << j;

  const std::string path = TempPath("roundtrip.bin");
  ASSERT_TRUE(WriteExport(p, path, &error)) << error;
  ExportedProblem q;
  ASSERT_TRUE(ReadExport(path, &q, &error)) << error;
  EXPECT_EQ(q.rows, p.rows);
  EXPECT_EQ(q.sense, p.sense);
  EXPECT_EQ(q.objConst, p.objConst);
  EXPECT_EQ(q.obj, p.obj);
  EXPECT_EQ(q.colLower, p.colLower);
  EXPECT_EQ(q.colUpper, p.colUpper);
  EXPECT_EQ(q.rowLower, p.rowLower);
  EXPECT_EQ(q.rowUpper, p.rowUpper);
  EXPECT_EQ(q.rowBeg, p.rowBeg);
  EXPECT_EQ(q.colIdx, p.colIdx);
  EXPECT_EQ(q.val, p.val);
  EXPECT_EQ(q.integer, p.integer);

  // The engine solves the same problem to the known optimum.
  ASSERT_EQ(ZELQ_Solve(prob_), 0);
  double objVal = 0;
  ZELQ_GetDblAttr(prob_, "ObjVal", &objVal);
  EXPECT_NEAR(objVal, 18.5, 1e-7);
  std::remove(path.c_str());
}

TEST_F(CompareSolveExport, DamagedFilesAreRefusedWithTheReason) {
  ExportedProblem p, q;
  std::string error;
  ASSERT_TRUE(ExportFromEngine(prob_, &p, &error)) << error;
  const std::string good = TempPath("good.bin"), bad = TempPath("bad.bin");
  ASSERT_TRUE(WriteExport(p, good, &error));
  const std::string bytes = ReadBytes(good);
  ASSERT_EQ(bytes.size(), 8 + 32 + 8 + 8 * (3 * 4 + 2 * 5 + 6) + 4 * 10 + 8 * 10 + 4u);

  EXPECT_FALSE(ReadExport(TempPath("missing.bin"), &q, &error));
  EXPECT_EQ(error, "cannot open " + TempPath("missing.bin"));
  WriteBytes(bad, "ZQLPBIN2" + bytes.substr(8));
  EXPECT_FALSE(ReadExport(bad, &q, &error));
  EXPECT_EQ(error, bad + ": not an exported problem");
  WriteBytes(bad, bytes.substr(0, 20));
  EXPECT_FALSE(ReadExport(bad, &q, &error));
  EXPECT_EQ(error, bad + ": header cut short");
  WriteBytes(bad, bytes.substr(0, bytes.size() - 1));
  EXPECT_FALSE(ReadExport(bad, &q, &error));
  EXPECT_EQ(error, bad + ": data cut short");
  WriteBytes(bad, bytes + "x");
  EXPECT_FALSE(ReadExport(bad, &q, &error));
  EXPECT_EQ(error, bad + ": data after the last array");
  std::string sense = bytes;
  sense[8 + 24] = 2;  // a sense other than 1 or -1
  WriteBytes(bad, sense);
  EXPECT_FALSE(ReadExport(bad, &q, &error));
  EXPECT_EQ(error, bad + ": bad header");

  ExportedProblem broken = p;
  broken.colIdx[3] = 4;  // one past the last column
  ASSERT_TRUE(WriteExport(broken, bad, &error));
  EXPECT_FALSE(ReadExport(bad, &q, &error));
  EXPECT_EQ(error, bad + ": column index 4 out of range");
  broken = p;
  std::swap(broken.rowBeg[1], broken.rowBeg[2]);
  ASSERT_TRUE(WriteExport(broken, bad, &error));
  EXPECT_FALSE(ReadExport(bad, &q, &error));
  EXPECT_EQ(error, bad + ": row starts decrease at row 1");
  EXPECT_FALSE(WriteExport(p, TempPath("no/such/dir.bin"), &error));
  EXPECT_EQ(error, "cannot create " + TempPath("no/such/dir.bin"));
  std::remove(good.c_str());
  std::remove(bad.c_str());
}

// Runs highs_solve.py and returns its one line of output.
std::string RunScript(const std::string& args) {
  const std::string cmd = "OPENBLAS_NUM_THREADS=1 /usr/bin/python3 " + std::string(ZELQ_BENCH_DIR) +
                          "/highs_solve.py " + args + " 2>/dev/null";
  std::FILE* pipe = popen(cmd.c_str(), "r");
  if (pipe == nullptr) return "";
  std::string out;
  char buf[512];
  while (std::fgets(buf, sizeof buf, pipe) != nullptr) out += buf;
  pclose(pipe);
  return out;
}

TEST_F(CompareSolveExport, HighsSolvesTheExportedProblem) {
  if (RunScript("--check").rfind("check nan 0 0 scipy-", 0) != 0)
    GTEST_SKIP() << "python3 with scipy is not installed";
  ExportedProblem p;
  std::string error;
  ASSERT_TRUE(ExportFromEngine(prob_, &p, &error)) << error;
  const std::string path = TempPath("highs.bin");
  ASSERT_TRUE(WriteExport(p, path, &error));
  char status[32] = "";
  double obj = 0, sec = -1, cpu = -1;
  // The MIP with integrality, then its LP relaxation through linprog: ranged row split in
  // two, free row dropped, sense and constant applied on the way back.
  ASSERT_EQ(std::sscanf(RunScript(path + " 10 mip").c_str(), "%31s %lf %lf %lf", status, &obj, &sec,
                        &cpu),
            4);
  EXPECT_STREQ(status, "optimal");
  EXPECT_NEAR(obj, 18.5, 1e-7);
  EXPECT_GE(sec, 0.0);
  EXPECT_GE(cpu, 0.0);
  ASSERT_EQ(std::sscanf(RunScript(path + " 10 lp").c_str(), "%31s %lf %lf", status, &obj, &sec), 3);
  EXPECT_STREQ(status, "optimal");
  EXPECT_NEAR(obj, 19.25, 1e-7);

  // An infeasible variant: y + z = 1.5 with y <= 0.2 cannot hold for z in {0, 1}.
  p.colUpper[1] = 0.2;
  ASSERT_TRUE(WriteExport(p, path, &error));
  EXPECT_EQ(RunScript(path + " 10 mip").rfind("infeasible nan ", 0), 0u);

  const std::string bytes = ReadBytes(path);
  WriteBytes(path, bytes.substr(0, bytes.size() - 2));
  EXPECT_EQ(RunScript(path + " 10 lp"),
            "error nan 0 0 ValueError: " + path + ": data cut short in integer\n");
  EXPECT_EQ(RunScript(path + " 10"), "error nan 0 0 usage: highs_solve.py FILE LIMIT lp|mip\n");
  std::remove(path.c_str());
}

TEST(CompareSolveExportEdges, RowlessProblemAndFailedQueries) {
  ZELQenvconfig* cfg = nullptr;
  ASSERT_EQ(ZELQ_CreateEnvConfig(&cfg), 0);
  ZELQ_SetEnvConfig(cfg, "Banner", "0");
  ZELQenv* env = nullptr;
  ASSERT_EQ(ZELQ_CreateEnvWithConfig(cfg, &env), 0);
  ZELQ_DeleteEnvConfig(&cfg);
  ZELQprob* prob = nullptr;
  ASSERT_EQ(ZELQ_CreateProb(env, &prob), 0);
  // min x - 2 y + 0.5 with x in [1, 2], y integer in [-3, 2.5]: no rows at all. Optimum -3.5.
  const double obj[] = {1, -2}, lo[] = {1, -3}, up[] = {2, 2.5};
  ASSERT_EQ(ZELQ_LoadProb(prob, 2, 0, 1, 0.5, obj, nullptr, nullptr, nullptr, nullptr, "CI", lo, up,
                          nullptr, nullptr, nullptr, nullptr, nullptr),
            0);
  ExportedProblem p, q;
  std::string error;
  ASSERT_TRUE(ExportFromEngine(prob, &p, &error)) << error;
  EXPECT_EQ(p.rows, 0);
  EXPECT_EQ(p.rowBeg, (std::vector<int64_t>{0}));
  const std::string path = TempPath("rowless.bin");
  ASSERT_TRUE(WriteExport(p, path, &error));
  ASSERT_TRUE(ReadExport(path, &q, &error)) << error;
  EXPECT_EQ(q.cols, 2);
  EXPECT_EQ(q.colUpper, p.colUpper);
  if (RunScript("--check").rfind("check nan 0 0 scipy-", 0) == 0) {
    char status[32] = "";
    double value = 0;
    ASSERT_EQ(std::sscanf(RunScript(path + " 5 mip").c_str(), "%31s %lf", status, &value), 2);
    EXPECT_STREQ(status, "optimal");
    EXPECT_NEAR(value, 1 - 4 + 0.5, 1e-9);  // y = 2, the largest integer below 2.5
    ASSERT_EQ(std::sscanf(RunScript(path + " 5 lp").c_str(), "%31s %lf", status, &value), 2);
    EXPECT_NEAR(value, 1 - 5 + 0.5, 1e-9);  // y = 2.5 without integrality
  }
  std::remove(path.c_str());

  // A failing engine query names itself and gives the engine's message.
  EXPECT_FALSE(ExportFromEngine(nullptr, &p, &error));
  EXPECT_EQ(error.rfind("reading the problem's attributes failed (code 3): ", 0), 0u) << error;
  ZELQ_DeleteProb(&prob);
  ZELQ_DeleteEnv(&env);
}

TEST(CompareSolveSummary, AgreementAndMeans) {
  EXPECT_DOUBLE_EQ(RelDiff(1e-7, 0.0), 1e-7);  // absolute near zero (enigma's optimum is 0)
  EXPECT_DOUBLE_EQ(RelDiff(1001.0, 1000.0), 1e-3);

  SolverResult a, b, c;
  a.outcome = b.outcome = Outcome::kOptimal;
  a.hasObj = b.hasObj = true;
  a.obj = 100.00001;  // 1e-7 off
  b.obj = 100.0;
  c.outcome = Outcome::kTimeLimit;  // time-limited with a worse incumbent: not a disagreement
  c.hasObj = true;
  c.obj = 104.0;
  Agreement g = Compare({&a, &b, &c}, 100.0, 1e-6);
  EXPECT_EQ(g.agree, 2);
  EXPECT_EQ(g.disagree, 0);
  EXPECT_EQ(g.limited, 1);
  EXPECT_FALSE(g.mutual);
  EXPECT_NEAR(g.worstMutual, 4.0 / 104.0, 1e-12);

  c.outcome = Outcome::kOptimal;  // a solver claiming optimality off the optimum is counted
  g = Compare({&a, &b, &c}, 100.0, 1e-6);
  EXPECT_EQ(g.disagree, 1);
  EXPECT_EQ(g.limited, 0);
  c.outcome = Outcome::kCrashed;  // no value: neither agreement nor disagreement
  c.hasObj = false;
  g = Compare({&a, &b, &c}, 100.0, 1e-6);
  EXPECT_EQ(g.agree + g.disagree + g.limited, 2);
  EXPECT_TRUE(g.mutual);

  EXPECT_NEAR(GeoMean({2.0, 0.5, 1.0}), 1.0, 1e-15);
  EXPECT_NEAR(GeoMean({1.0, 4.0}), 2.0, 1e-15);
  EXPECT_TRUE(std::isnan(GeoMean({})));
  EXPECT_NEAR(ShiftedGeoMean({0.0, 3.0}, 1.0), 1.0, 1e-15);  // sqrt(1 * 4) - 1
  EXPECT_NEAR(ShiftedGeoMean({5.0}, 10.0), 5.0, 1e-12);
}

}  // namespace
}  // namespace zelqbench
