// Tests of the file entry points through the C interface: reading the shipped instances and
// solving them to their known optima, round trips through every format, error codes and
// messages, and the problem left unchanged by a failed read. Linked against the static engine
// so that start data (MIP starts, start basis) can be inspected.
#include <gtest/gtest.h>
#include <unistd.h>

#include <cmath>
#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>

#include "api/handles.h"
#include "io_test_util.h"
#include "quiet_prob.h"
#include "zelq/zelq.h"

namespace {

namespace fs = std::filesystem;
const std::string kData = ZELQ_TEST_DATA;

using Quiet = engine_test::QuietProb;

// A fresh directory for the files one test writes, removed afterwards.
class TempDir {
 public:
  TempDir() {
    static int counter = 0;
    path_ = fs::temp_directory_path() /
            ("zelq_io_" + std::to_string(::getpid()) + "_" + std::to_string(counter++));
    fs::create_directories(path_);
  }
  ~TempDir() {
    std::error_code ec;
    fs::remove_all(path_, ec);
  }
  std::string operator/(const std::string& name) const { return (path_ / name).string(); }

 private:
  fs::path path_;
};

std::string LastError(ZELQprob* prob) {
  char buf[2048] = {0};
  ZELQ_GetLastError(prob, buf, sizeof buf);
  return buf;
}
int IntAttr(ZELQprob* prob, const char* name) {
  int v = -12345;
  EXPECT_EQ(ZELQ_GetIntAttr(prob, name, &v), 0) << name;
  return v;
}
double DblAttr(ZELQprob* prob, const char* name) {
  double v = -12345;
  EXPECT_EQ(ZELQ_GetDblAttr(prob, name, &v), 0) << name;
  return v;
}
void WriteFile(const std::string& path, const std::string& text) {
  std::FILE* f = std::fopen(path.c_str(), "wb");
  ASSERT_NE(f, nullptr);
  std::fwrite(text.data(), 1, text.size(), f);
  std::fclose(f);
}
void ExpectOptimum(ZELQprob* prob, double want, const std::string& what) {
  ASSERT_EQ(ZELQ_Solve(prob), 0) << what << ": " << LastError(prob);
  EXPECT_EQ(IntAttr(prob, "Status"), ZELQ_OPTIMAL) << what;
  EXPECT_NEAR(DblAttr(prob, "ObjVal"), want, 1e-6 * (1.0 + std::fabs(want))) << what;
}

struct Instance {
  const char* file;
  int cols, rows, elems;
  double optimum;  // known optimum (INDEX.tsv for the public instances)
};
const Instance kInstances[] = {
    {"afiro.mps", 32, 27, 83, -4.6475314286E+02},
    {"afiro_crlf.mps", 32, 27, 83, -4.6475314286E+02},
    {"afiro.mps.gz", 32, 27, 83, -4.6475314286E+02},
    {"blend.mps", 83, 74, 491, -3.0812149846E+01},
    {"sc50b.mps", 48, 50, 118, -7.0000000000E+01},
    {"sc50b.mps.bz2", 48, 50, 118, -7.0000000000E+01},
    {"p0033.mps", 33, 16, 98, 3089},
    {"flugpl.mps", 18, 18, 46, 1201500},
    {"names_blanks.mps", 3, 3, 5, -5},  // fixed layout with blanks in names
    {"traps_free.mps", 4, 4, 8, 14.5},  // maximisation with constant 7.5 included
};

TEST(FileApi, ShippedInstancesReadAndSolveToKnownOptima) {
  for (const Instance& in : kInstances) {
    Quiet prob;
    ASSERT_EQ(ZELQ_ReadMps(prob, (kData + "/" + in.file).c_str()), 0) << LastError(prob);
    EXPECT_EQ(IntAttr(prob, "Cols"), in.cols) << in.file;
    EXPECT_EQ(IntAttr(prob, "Rows"), in.rows) << in.file;
    EXPECT_EQ(IntAttr(prob, "Elems"), in.elems) << in.file;
    ExpectOptimum(prob, in.optimum, in.file);
  }
}

TEST(FileApi, NamesWithBlanksSurviveReadAndWrite) {
  Quiet prob;
  TempDir dir;
  ASSERT_EQ(ZELQ_ReadMps(prob, (kData + "/names_blanks.mps").c_str()), 0) << LastError(prob);
  int idx = -1;
  ASSERT_EQ(ZELQ_GetColIdx(prob, "Y 3", &idx), 0);
  EXPECT_EQ(idx, 2);
  ASSERT_EQ(ZELQ_WriteMps(prob, (dir / "b.mps").c_str()), 0) << LastError(prob);
  Quiet back;
  ASSERT_EQ(ZELQ_ReadMps(back, (dir / "b.mps").c_str()), 0) << LastError(back);
  ASSERT_EQ(ZELQ_GetRowIdx(back, "DEM 1R", &idx), 0);
  EXPECT_EQ(idx, 1);
}

// MPS -> LP -> MPS through files: same dimensions and the same optimum at every step.
TEST(FileApi, MpsLpMpsRoundTripKeepsDimensionsAndOptimum) {
  for (const Instance& in : kInstances) {
    if (std::string(in.file).find('.') != std::string(in.file).rfind('.')) continue;  // .gz/.bz2
    TempDir dir;
    Quiet a, b, c;
    ASSERT_EQ(ZELQ_ReadMps(a, (kData + "/" + in.file).c_str()), 0) << LastError(a);
    ASSERT_EQ(ZELQ_WriteLp(a, (dir / "m.lp").c_str()), 0) << LastError(a);
    ASSERT_EQ(ZELQ_ReadLp(b, (dir / "m.lp").c_str()), 0) << in.file << LastError(b);
    ASSERT_EQ(ZELQ_WriteMps(b, (dir / "m.mps.gz").c_str()), 0) << LastError(b);
    ASSERT_EQ(ZELQ_ReadMps(c, (dir / "m.mps.gz").c_str()), 0) << LastError(c);
    for (ZELQprob* p : {b.operator ZELQprob*(), c.operator ZELQprob*()}) {
      EXPECT_EQ(IntAttr(p, "Cols"), in.cols) << in.file;
      EXPECT_EQ(IntAttr(p, "Rows"), in.rows) << in.file;
      EXPECT_EQ(IntAttr(p, "Elems"), in.elems) << in.file;
      ExpectOptimum(p, in.optimum, in.file);
    }
  }
}

TEST(FileApi, LazyConstraintsAndCutsSurviveMpsAndLpFiles) {
  TempDir dir;
  Quiet prob;
  ASSERT_EQ(ZELQ_ReadMps(prob, (kData + "/p0033.mps").c_str()), 0);
  const int idx[] = {0, 1};
  const double val[] = {1.0, 1.0};
  ASSERT_EQ(ZELQ_AddLazyConstr(prob, 2, idx, val, 'L', 1.0, 0.0, "lz"), 0) << LastError(prob);
  ASSERT_EQ(ZELQ_AddUserCut(prob, 1, idx, val, 'G', 0.0, 0.0, nullptr), 0) << LastError(prob);
  for (const char* name : {"m.mps", "m.lp"}) {
    bool lp = std::string(name) == "m.lp";
    ASSERT_EQ(
        lp ? ZELQ_WriteLp(prob, (dir / name).c_str()) : ZELQ_WriteMps(prob, (dir / name).c_str()),
        0);
    Quiet back;
    ASSERT_EQ(
        lp ? ZELQ_ReadLp(back, (dir / name).c_str()) : ZELQ_ReadMps(back, (dir / name).c_str()), 0)
        << LastError(back);
    EXPECT_EQ(IntAttr(back, "Rows"), 16) << name;
    ASSERT_EQ(back->problem.lazy.count(), 1) << name;
    ASSERT_EQ(back->problem.cuts.count(), 1) << name;
    EXPECT_EQ(back->problem.lazy.names[0], "lz");
    EXPECT_EQ(back->problem.lazy.upper[0], 1.0);
    EXPECT_EQ(back->problem.cuts.lower[0], 0.0);
    EXPECT_EQ(back->problem.lazy.idx, (std::vector<int>{0, 1}));
  }
}

TEST(FileApi, FailedReadLeavesProblemUnchanged) {
  Quiet prob;
  TempDir dir;
  ASSERT_EQ(ZELQ_ReadMps(prob, (kData + "/afiro.mps").c_str()), 0);
  ASSERT_EQ(ZELQ_Solve(prob), 0);
  WriteFile(dir / "bad.mps", "NAME x\nROWS\n N obj\n L r\nCOLUMNS\n x r 1\n x s 2\nENDATA\n");
  WriteFile(dir / "bad.lp", "Minimize\n x\nSubject To\n c: x <=\nEnd\n");
  EXPECT_EQ(ZELQ_ReadMps(prob, (dir / "bad.mps").c_str()), ZELQ_RETCODE_INVALID);
  std::string err = LastError(prob);
  EXPECT_NE(err.find("ZELQ_ReadMps"), std::string::npos) << err;
  EXPECT_NE(err.find("bad.mps:7: unknown row 's'"), std::string::npos) << err;
  EXPECT_EQ(ZELQ_ReadLp(prob, (dir / "bad.lp").c_str()), ZELQ_RETCODE_INVALID);
  EXPECT_NE(LastError(prob).find("bad.lp:5: expected a number"), std::string::npos)
      << LastError(prob);
  EXPECT_EQ(ZELQ_ReadMps(prob, (dir / "missing.mps").c_str()), ZELQ_RETCODE_FILE);
  EXPECT_NE(LastError(prob).find("cannot open '" + (dir / "missing.mps") +
                                 "': No such file or directory"),
            std::string::npos)
      << LastError(prob);
  // Content and the last solution are untouched.
  EXPECT_EQ(IntAttr(prob, "Cols"), 32);
  EXPECT_EQ(IntAttr(prob, "Rows"), 27);
  EXPECT_EQ(IntAttr(prob, "HasSol"), 1);
}

TEST(FileApi, ReadingAProblemDropsSolutionAndStartData) {
  Quiet prob;
  ASSERT_EQ(ZELQ_ReadMps(prob, (kData + "/p0033.mps").c_str()), 0);
  ASSERT_EQ(ZELQ_Solve(prob), 0);
  const int col = 0;
  const double v = 1.0;
  ASSERT_EQ(ZELQ_AddMipStart(prob, 1, &col, &v), 0) << LastError(prob);
  prob->startColBasis.assign(33, 0);
  prob->startRowBasis.assign(16, 1);
  ASSERT_EQ(ZELQ_ReadMps(prob, (kData + "/flugpl.mps").c_str()), 0);
  EXPECT_EQ(IntAttr(prob, "HasSol"), 0);
  EXPECT_TRUE(prob->mipStarts.empty());
  EXPECT_TRUE(prob->startColBasis.empty());
  EXPECT_TRUE(prob->startRowBasis.empty());
}

using NameFn = int (*)(ZELQprob*, const char*);

TEST(FileApi, EveryFileFunctionRejectsMissingNamesAndBadHandles) {
  const std::pair<const char*, NameFn> fns[] = {
      {"ReadMps", ZELQ_ReadMps},           {"ReadLp", ZELQ_ReadLp},
      {"ReadSDPA", ZELQ_ReadSDPA},         {"ReadCbf", ZELQ_ReadCbf},
      {"ReadBin", ZELQ_ReadBin},           {"ReadSol", ZELQ_ReadSol},
      {"ReadJsonSol", ZELQ_ReadJsonSol},   {"ReadBasis", ZELQ_ReadBasis},
      {"ReadMst", ZELQ_ReadMst},           {"ReadOrd", ZELQ_ReadOrd},
      {"ReadParam", ZELQ_ReadParam},       {"ReadTune", ZELQ_ReadTune},
      {"WriteMps", ZELQ_WriteMps},         {"WriteLp", ZELQ_WriteLp},
      {"WriteCbf", ZELQ_WriteCbf},         {"WriteBin", ZELQ_WriteBin},
      {"WriteNL", ZELQ_WriteNL},           {"WriteIIS", ZELQ_WriteIIS},
      {"WriteRelax", ZELQ_WriteRelax},     {"WriteSol", ZELQ_WriteSol},
      {"WriteJsonSol", ZELQ_WriteJsonSol}, {"WriteBasis", ZELQ_WriteBasis},
      {"WriteMst", ZELQ_WriteMst},         {"WriteOrd", ZELQ_WriteOrd},
      {"WriteParam", ZELQ_WriteParam}};
  Quiet prob;
  for (const auto& [name, fn] : fns) {
    EXPECT_EQ(fn(prob, nullptr), ZELQ_RETCODE_INVALID) << name;
    EXPECT_NE(LastError(prob).find("no file name given"), std::string::npos) << name;
    EXPECT_NE(LastError(prob).find(std::string("ZELQ_") + name), std::string::npos) << name;
    EXPECT_EQ(fn(prob, ""), ZELQ_RETCODE_INVALID) << name;
    EXPECT_EQ(fn(nullptr, "x.mps"), ZELQ_RETCODE_INVALID) << name;
  }
  EXPECT_EQ(ZELQ_WriteTuneParam(prob, 0, nullptr), ZELQ_RETCODE_INVALID);
  EXPECT_EQ(ZELQ_WritePoolSol(prob, 0, ""), ZELQ_RETCODE_INVALID);
  EXPECT_EQ(ZELQ_ReadJsonStr(prob, nullptr), ZELQ_RETCODE_INVALID);
}

TEST(FileApi, FormatsOfOtherProblemClassesAreNotSupported) {
  const std::pair<const char*, NameFn> fns[] = {
      {"SDPA", ZELQ_ReadSDPA},   {"CBF", ZELQ_ReadCbf},  {"binary", ZELQ_ReadBin},
      {"tuning", ZELQ_ReadTune}, {"CBF", ZELQ_WriteCbf}, {"binary", ZELQ_WriteBin},
      {"NL", ZELQ_WriteNL},      {"IIS", ZELQ_WriteIIS}, {"relaxation", ZELQ_WriteRelax}};
  Quiet prob;
  for (const auto& [what, fn] : fns) {
    EXPECT_EQ(fn(prob, "some.file"), ZELQ_RETCODE_NOTSUPPORTED) << what;
    EXPECT_NE(LastError(prob).find(what), std::string::npos) << LastError(prob);
    EXPECT_NE(LastError(prob).find("not supported"), std::string::npos) << LastError(prob);
  }
  EXPECT_EQ(ZELQ_WriteTuneParam(prob, 0, "t.par"), ZELQ_RETCODE_NOTSUPPORTED);
}

TEST(FileApi, WriteMpsStrSizeQueryAndBuffer) {
  Quiet prob;
  TempDir dir;
  ASSERT_EQ(ZELQ_ReadMps(prob, (kData + "/afiro.mps").c_str()), 0);
  int need = 0;
  EXPECT_EQ(ZELQ_WriteMpsStr(prob, nullptr, 0, nullptr), ZELQ_RETCODE_INVALID);
  ASSERT_EQ(ZELQ_WriteMpsStr(prob, nullptr, 0, &need), 0);
  ASSERT_GT(need, 1);
  std::vector<char> buf(static_cast<size_t>(need), 'x');
  int again = 0;
  EXPECT_EQ(ZELQ_WriteMpsStr(prob, buf.data(), need - 1, &again), ZELQ_RETCODE_INVALID);
  EXPECT_EQ(again, need);  // the size is reported even when the buffer is too small
  EXPECT_NE(LastError(prob).find(std::to_string(need)), std::string::npos) << LastError(prob);
  ASSERT_EQ(ZELQ_WriteMpsStr(prob, buf.data(), need, nullptr), 0);
  EXPECT_EQ(buf[static_cast<size_t>(need) - 1], '\0');
  ASSERT_EQ(ZELQ_WriteMps(prob, (dir / "a.mps").c_str()), 0);
  EXPECT_EQ(std::string(buf.data()), zelq::engine::io::ReadAll(dir / "a.mps"));
}

TEST(FileApi, WritersWithoutSolutionFail) {
  Quiet prob;
  TempDir dir;
  ASSERT_EQ(ZELQ_ReadMps(prob, (kData + "/afiro.mps").c_str()), 0);
  const std::pair<const char*, NameFn> fns[] = {{"WriteSol", ZELQ_WriteSol},
                                                {"WriteJsonSol", ZELQ_WriteJsonSol},
                                                {"WriteMst", ZELQ_WriteMst},
                                                {"WriteBasis", ZELQ_WriteBasis}};
  for (const auto& [name, fn] : fns) {
    EXPECT_EQ(fn(prob, (dir / "out").c_str()), ZELQ_RETCODE_INVALID) << name;
    EXPECT_NE(LastError(prob).find("available"), std::string::npos) << LastError(prob);
  }
  int need = 0;
  EXPECT_EQ(ZELQ_WriteJsonStr(prob, nullptr, 0, &need), ZELQ_RETCODE_INVALID);
  EXPECT_EQ(ZELQ_WritePoolSol(prob, 0, (dir / "p.sol").c_str()), ZELQ_RETCODE_INVALID);
  EXPECT_NE(LastError(prob).find("no solution available"), std::string::npos);
  EXPECT_FALSE(fs::exists(dir / "out"));
}

// Solution file -> MIP start of an identical problem: every column value comes back.
TEST(FileApi, SolMstAndJsonRoundTripsGiveMipStarts) {
  Quiet prob;
  TempDir dir;
  ASSERT_EQ(ZELQ_ReadMps(prob, (kData + "/p0033.mps").c_str()), 0);
  ExpectOptimum(prob, 3089, "p0033");
  std::vector<double> x(33);
  ASSERT_EQ(ZELQ_GetSolution(prob, x.data()), 0);
  ASSERT_EQ(ZELQ_WriteSol(prob, (dir / "s.sol").c_str()), 0) << LastError(prob);
  ASSERT_EQ(ZELQ_WriteMst(prob, (dir / "s.mst").c_str()), 0) << LastError(prob);
  ASSERT_EQ(ZELQ_WriteJsonSol(prob, (dir / "s.json").c_str()), 0) << LastError(prob);
  std::string sol = zelq::engine::io::ReadAll(dir / "s.sol");
  EXPECT_NE(sol.find("# Status: OPTIMAL\n# Objective: 3089\n"), std::string::npos) << sol;
  int need = 0;
  ASSERT_EQ(ZELQ_WriteJsonStr(prob, nullptr, 0, &need), 0);
  std::vector<char> json(static_cast<size_t>(need));
  ASSERT_EQ(ZELQ_WriteJsonStr(prob, json.data(), need, nullptr), 0);
  EXPECT_EQ(std::string(json.data()), zelq::engine::io::ReadAll(dir / "s.json"));
  EXPECT_NE(std::string(json.data()).find("\"status\": \"OPTIMAL\""), std::string::npos);

  Quiet other;
  ASSERT_EQ(ZELQ_ReadMps(other, (kData + "/p0033.mps").c_str()), 0);
  ASSERT_EQ(ZELQ_ReadSol(other, (dir / "s.sol").c_str()), 0) << LastError(other);
  ASSERT_EQ(ZELQ_ReadMst(other, (dir / "s.mst").c_str()), 0) << LastError(other);
  ASSERT_EQ(ZELQ_ReadJsonSol(other, (dir / "s.json").c_str()), 0) << LastError(other);
  ASSERT_EQ(ZELQ_ReadJsonStr(other, json.data()), 0) << LastError(other);
  ASSERT_EQ(other->mipStarts.size(), 4u);
  for (const auto& start : other->mipStarts) {
    ASSERT_EQ(start.size(), 33u);
    for (auto [j, v] : start) EXPECT_EQ(v, x[static_cast<size_t>(j)]) << j;
  }
  ExpectOptimum(other, 3089, "p0033 with starts");
}

TEST(FileApi, StartFileErrorsNameFileAndLine) {
  Quiet prob;
  TempDir dir;
  ASSERT_EQ(ZELQ_ReadMps(prob, (kData + "/p0033.mps").c_str()), 0);
  struct Case {
    const char* text;
    const char* what;
  } cases[] = {
      {"# header\nC157 1\nNOPE 0\n", "s.sol:3: unknown column 'NOPE'"},
      {"C157 x\n", "s.sol:1: bad value 'x' for column 'C157'"},
      {"C157 inf\n", "s.sol:1: bad value 'inf'"},
      {"C157\n", "s.sol:1: expected a column name and a value"},
      {"C157 1\nC157 0\n", "s.sol:2: column 'C157' is listed twice"},
      {"# nothing\n", "no column values found"},
  };
  for (const Case& c : cases) {
    WriteFile(dir / "s.sol", c.text);
    EXPECT_EQ(ZELQ_ReadSol(prob, (dir / "s.sol").c_str()), ZELQ_RETCODE_INVALID) << c.text;
    EXPECT_NE(LastError(prob).find(c.what), std::string::npos) << LastError(prob);
  }
  const char* badJson[][2] = {
      {"{\"columns\": [ {\"name\": \"C157\", \"value\": 1},\n {\"name\": \"Q\", \"value\": 1}]}",
       "<string>:2: unknown column 'Q'"},
      {"{\"columns\": [\n {\"name\": \"C157\" \"value\": 1}]}", "<string>:2: expected ',' or '}'"},
      {"[1, 2]", "<string>:1: expected a JSON object"},
      {"{\"status\": 1}", "no \"columns\" array"},
      {"{\"columns\": [{\"name\": \"C157\", \"value\": \"1\"}]}", "not a finite number"},
  };
  for (const auto& c : badJson) {
    EXPECT_EQ(ZELQ_ReadJsonStr(prob, c[0]), ZELQ_RETCODE_INVALID) << c[0];
    EXPECT_NE(LastError(prob).find(c[1]), std::string::npos) << LastError(prob);
  }
  EXPECT_TRUE(prob->mipStarts.empty());  // nothing was added by the failed reads
}

TEST(FileApi, BasisRoundTripAndErrors) {
  Quiet prob;
  TempDir dir;
  ASSERT_EQ(ZELQ_ReadMps(prob, (kData + "/afiro.mps").c_str()), 0);
  ExpectOptimum(prob, -4.6475314286E+02, "afiro");
  std::vector<int> cb(32), rb(27);
  ASSERT_EQ(ZELQ_GetBasis(prob, cb.data(), rb.data()), 0) << LastError(prob);
  ASSERT_EQ(ZELQ_WriteBasis(prob, (dir / "a.bas").c_str()), 0) << LastError(prob);
  Quiet other;
  ASSERT_EQ(ZELQ_ReadMps(other, (kData + "/afiro.mps").c_str()), 0);
  ASSERT_EQ(ZELQ_ReadBasis(other, (dir / "a.bas").c_str()), 0) << LastError(other);
  EXPECT_EQ(other->startColBasis, cb);
  EXPECT_EQ(other->startRowBasis, rb);
  ExpectOptimum(other, -4.6475314286E+02, "afiro from basis");
  EXPECT_EQ(IntAttr(other, "SimplexIter"), 0);  // the optimal basis needs no pivots

  struct Case {
    const char* text;
    const char* what;
  } cases[] = {
      {"C X01 BASIC\n", "BASIC entries"},
      {"C X01 MIDDLE\n", "a.bas:1: unknown basis status 'MIDDLE'"},
      {"# c\nC NOPE LOWER\n", "a.bas:2: unknown column 'NOPE'"},
      {"R NOPE LOWER\n", "a.bas:1: unknown row 'NOPE'"},
      {"X X01 LOWER\n", "a.bas:1: expected 'C name STATUS'"},
  };
  for (const Case& c : cases) {
    WriteFile(dir / "a.bas", c.text);
    EXPECT_EQ(ZELQ_ReadBasis(other, (dir / "a.bas").c_str()), ZELQ_RETCODE_INVALID);
    EXPECT_NE(LastError(other).find(c.what), std::string::npos) << LastError(other);
  }
  EXPECT_EQ(other->startColBasis, cb);  // unchanged by the failures
}

TEST(FileApi, OrderFileRoundTrip) {
  Quiet prob;
  TempDir dir;
  ASSERT_EQ(ZELQ_ReadMps(prob, (kData + "/p0033.mps").c_str()), 0);
  const int list[] = {3, 7};
  const double factors[] = {5.0, 0.25};
  ASSERT_EQ(ZELQ_SetColBranchFactors(prob, 2, list, factors), 0) << LastError(prob);
  ASSERT_EQ(ZELQ_WriteOrd(prob, (dir / "p.ord").c_str()), 0) << LastError(prob);
  std::string text = zelq::engine::io::ReadAll(dir / "p.ord");
  EXPECT_NE(text.find("\nC160 5\nC164 0.25\n"), std::string::npos) << text;
  Quiet other;
  ASSERT_EQ(ZELQ_ReadMps(other, (kData + "/p0033.mps").c_str()), 0);
  std::vector<double> pre(33, 9.0);
  other->problem.branchFactor = pre;  // reading replaces the whole order
  ASSERT_EQ(ZELQ_ReadOrd(other, (dir / "p.ord").c_str()), 0) << LastError(other);
  std::vector<double> want(33, 0.0);
  want[3] = 5.0;
  want[7] = 0.25;
  EXPECT_EQ(other->problem.branchFactor, want);
  WriteFile(dir / "bad.ord", "C160 1\nC164 nan\n");
  EXPECT_EQ(ZELQ_ReadOrd(other, (dir / "bad.ord").c_str()), ZELQ_RETCODE_INVALID);
  EXPECT_NE(LastError(other).find("bad.ord:2: bad priority 'nan'"), std::string::npos)
      << LastError(other);
  EXPECT_EQ(other->problem.branchFactor, want);
}

TEST(FileApi, ParameterFileRoundTrip) {
  Quiet prob;
  TempDir dir;
  ASSERT_EQ(ZELQ_SetDblParam(prob, "TimeLimit", 12.5), 0);
  ASSERT_EQ(ZELQ_SetIntParam(prob, "Threads", 2), 0);
  ASSERT_EQ(ZELQ_WriteParam(prob, (dir / "p.par").c_str()), 0) << LastError(prob);
  Quiet other;
  ASSERT_EQ(ZELQ_ReadParam(other, (dir / "p.par").c_str()), 0) << LastError(other);
  double t = 0;
  int th = 0;
  ASSERT_EQ(ZELQ_GetDblParam(other, "TimeLimit", &t), 0);
  ASSERT_EQ(ZELQ_GetIntParam(other, "Threads", &th), 0);
  EXPECT_EQ(t, 12.5);
  EXPECT_EQ(th, 2);
  WriteFile(dir / "bad.par", "TimeLimit 5\nNoSuchParam 1\n");
  EXPECT_EQ(ZELQ_ReadParam(other, (dir / "bad.par").c_str()), ZELQ_RETCODE_INVALID);
  EXPECT_NE(LastError(other).find("bad.par:2:"), std::string::npos) << LastError(other);
  ASSERT_EQ(ZELQ_GetDblParam(other, "TimeLimit", &t), 0);
  EXPECT_EQ(t, 12.5);  // a bad file applies nothing
  EXPECT_EQ(ZELQ_ReadParam(other, (dir / "none.par").c_str()), ZELQ_RETCODE_FILE);
}

TEST(FileApi, PoolSolutionFile) {
  Quiet prob;
  TempDir dir;
  ASSERT_EQ(ZELQ_ReadMps(prob, (kData + "/p0033.mps").c_str()), 0);
  ExpectOptimum(prob, 3089, "p0033");
  int count = IntAttr(prob, "PoolSols");
  ASSERT_GE(count, 1);
  ASSERT_EQ(ZELQ_WritePoolSol(prob, 0, (dir / "p0.sol").c_str()), 0) << LastError(prob);
  EXPECT_NE(zelq::engine::io::ReadAll(dir / "p0.sol").find("# Zelq pool solution 0\n"),
            std::string::npos);
  EXPECT_EQ(ZELQ_WritePoolSol(prob, count, (dir / "pn.sol").c_str()), ZELQ_RETCODE_INVALID);
  EXPECT_NE(LastError(prob).find("out of range [0, " + std::to_string(count) + ")"),
            std::string::npos)
      << LastError(prob);
  EXPECT_EQ(ZELQ_WritePoolSol(prob, -1, (dir / "pn.sol").c_str()), ZELQ_RETCODE_INVALID);
}

}  // namespace
