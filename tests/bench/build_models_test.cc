// The model-building benchmark run as a program at tiny sizes: every variant,
// PuLP's included, must build the same model (the driver's own checks decide
// its exit code), a PuLP file of a different model must be caught, PuLP runs
// only where its expected time fits, bad arguments are refused; and the
// engine reads the MPS layout PuLP writes for Cbc.
#include <gtest/gtest.h>
#include <unistd.h>

#include <cmath>
#include <cstdio>
#include <filesystem>
#include <string>

#include "../engine/quiet_prob.h"
#include "../tools/tool_run.h"
#include "zelq/zelq.h"

namespace {

namespace fs = std::filesystem;
using zelq_test::Execute;
using zelq_test::ToolRun;

const std::string kBench = ZELQ_BUILD_MODELS_BIN;

class TempDir {
 public:
  TempDir() {
    static int counter = 0;
    path_ = fs::temp_directory_path() /
            ("zelq_bm_" + std::to_string(::getpid()) + "_" + std::to_string(counter++));
    fs::create_directories(path_);
  }
  ~TempDir() {
    std::error_code ec;
    fs::remove_all(path_, ec);
  }
  std::string str() const { return path_.string(); }
  std::string operator/(const std::string& name) const { return (path_ / name).string(); }
  bool Empty() const { return fs::is_empty(path_); }

 private:
  fs::path path_;
};

void WriteFile(const std::string& path, const std::string& text) {
  std::FILE* f = std::fopen(path.c_str(), "wb");
  ASSERT_NE(f, nullptr) << path;
  std::fwrite(text.data(), 1, text.size(), f);
  std::fclose(f);
}

bool PulpInstalled() {
  return Execute("/usr/bin/python3 -c 'import pulp'").exitCode == 0;
}

ToolRun Bench(const std::string& args) { return Execute(kBench + " " + args); }

int Count(const std::string& text, const std::string& what) {
  int n = 0;
  for (size_t at = text.find(what); at != std::string::npos; at = text.find(what, at + 1)) ++n;
  return n;
}

TEST(BuildModelsBench, EveryVariantBuildsTheSameModelAtEverySize) {
  TempDir dir;
  const ToolRun r = Bench("--n 3,5,3 --knap 40 --reps 1 --check-n 4 --check-knap 30 --tmp-dir " +
                          dir.str());
  ASSERT_EQ(r.exitCode, 0) << r.out;
  const bool pulp = PulpInstalled();
  // 9 basic and 5 knapsack variants besides PuLP's two.
  EXPECT_EQ(Count(r.out, "same model, same answer"), pulp ? 16 : 14) << r.out;
  // The size list is sorted and without repeats: one group each for N = 3, N = 5.
  EXPECT_EQ(Count(r.out, "| basic | N = 3 | "), 10) << r.out;
  EXPECT_EQ(Count(r.out, "| basic | N = 5 | "), 10) << r.out;
  EXPECT_EQ(Count(r.out, "| knapsack | 40 terms | "), 6) << r.out;
  EXPECT_NE(r.out.find("| basic | N = 5 | header, operators + write MPS | "), std::string::npos);
  if (pulp) {
    EXPECT_EQ(Count(r.out, "x, build + write "), 3) << r.out;
    EXPECT_NE(r.out.find("times faster than PuLP building"), std::string::npos) << r.out;
  } else {
    EXPECT_NE(r.out.find("PuLP skipped: /usr/bin/python3 cannot import pulp"), std::string::npos)
        << r.out;
  }
  EXPECT_TRUE(dir.Empty()) << "MPS files left behind in " << dir.str();
}

TEST(BuildModelsBench, PulpRunsOnlyWhereItFitsAndIsChecked) {
  if (!PulpInstalled()) GTEST_SKIP() << "python3-pulp is not installed";
  TempDir dir;
  // The first size always runs; the next one is estimated from it.
  ToolRun r = Bench("--only PuLP --n 3,30 --knap 5 --reps 1 --check-n 3 --check-knap 5 "
                    "--pulp-limit 0.000001 --tmp-dir " + dir.str());
  ASSERT_EQ(r.exitCode, 0) << r.out;
  EXPECT_NE(r.out.find("| basic | N = 3 | PuLP, lpSum and += (writeMPS for Cbc) | 0."),
            std::string::npos) << r.out;
  EXPECT_NE(r.out.find("| basic | N = 30 | PuLP, lpSum and += (writeMPS for Cbc) | skipped: "
                       "one run would take about "),
            std::string::npos) << r.out;
  EXPECT_NE(r.out.find("s (scaled from its time at N = 3), more than --pulp-limit 1e-06 s"),
            std::string::npos) << r.out;

  r = Bench("--only PuLP --n 3 --knap 5 --reps 1 --check-n 3 --check-knap 5 --pulp-limit 0");
  ASSERT_EQ(r.exitCode, 0) << r.out;
  EXPECT_EQ(Count(r.out, "skipped: --pulp-limit 0"), 2) << r.out;
  EXPECT_EQ(r.out.find("same model"), std::string::npos) << r.out;

  // A script that reports success but writes another model (one row short):
  // the read-back finds it, and so does the solve of the checking pass.
  const std::string fake = dir / "fake.py";
  WriteFile(fake,
            "import sys\n"
            "a = dict(zip(sys.argv[1::2], sys.argv[2::2]))\n"
            "open(a['--out'], 'w').write('NAME X\\nROWS\\n N OBJ\\n G R1\\nCOLUMNS\\n"
            "    X1 OBJ 1 R1 1\\nRHS\\n    RHS R1 5\\nENDATA\\n')\n"
            "print('pulp model=%s size=%s build_s=0.5 write_s=0.25 cols=1 rows=1'"
            " % (a['--model'], a['--size']))\n");
  r = Bench("--only \"basic PuLP\" --n 3 --reps 1 --check-n 3 --pulp-script " + fake +
            " --tmp-dir " + dir.str());
  EXPECT_EQ(r.exitCode, 1) << r.out;
  EXPECT_NE(r.out.find("sizes 1 x 1, 1 non-zeros; expected 18 x 18, 36"), std::string::npos)
      << r.out;
  EXPECT_NE(r.out.find("FAILED: sizes 1 x 1, 1 non-zeros; expected 18 x 18, 36"),
            std::string::npos) << r.out;
  for (const auto& entry : fs::directory_iterator(dir.str()))
    EXPECT_EQ(entry.path().filename(), "fake.py") << "left behind";

  // A script that fails: its last line of output is the reason.
  WriteFile(fake, "raise SystemExit('no solver here')\n");
  r = Bench("--only \"knapsack PuLP\" --knap 5 --reps 1 --check-knap 5 --pulp-script " + fake);
  EXPECT_EQ(r.exitCode, 1) << r.out;
  EXPECT_NE(r.out.find("PuLP script failed: code 1 no solver here"), std::string::npos) << r.out;
}

TEST(BuildModelsBench, BadArgumentsAreRefused) {
  const struct {
    const char* args;
    const char* message;
  } cases[] = {
      {"--n 100,,300", "usage:"},     {"--n 1", "usage:"},
      {"--n 5,", "usage:"},           {"--n 23171", "usage:"},
      {"--knap 0", "usage:"},         {"--pulp-limit -1", "usage:"},
      {"--pulp-limit x", "usage:"},   {"--reps", "usage:"},
      {"--bogus 1", "usage:"},        {"--only nothing-like-this", "no variant matches"},
      {"--tmp-dir /nonexistent/dir", "cannot write into /nonexistent/dir"},
  };
  for (const auto& c : cases) {
    const ToolRun r = Bench(c.args);
    EXPECT_EQ(r.exitCode, 2) << c.args << "\n" << r.out;
    EXPECT_NE(r.out.find(c.message), std::string::npos) << c.args << "\n" << r.out;
  }
  // PuLP missing is no failure: the rows say why they were skipped.
  const ToolRun r = Bench("--only PuLP --n 3 --knap 5 --reps 1 --python /bin/false");
  EXPECT_EQ(r.exitCode, 0) << r.out;
  EXPECT_NE(r.out.find("skipped: /bin/false cannot import pulp"), std::string::npos) << r.out;
}

// The layout PuLP's writeMPS(rename=1) produces for Cbc: the sense only as a
// comment, integer columns each between their own markers, BV and FX bounds,
// the objective-only dummy column of an empty objective, right-hand sides in
// "% .12e" form.
TEST(PulpMpsLayout, EngineReadsItWithTypesBoundsAndOptimum) {
  TempDir dir;
  WriteFile(dir / "p.mps",
            "*SENSE:Minimize\n"
            "NAME          MODEL\n"
            "ROWS\n"
            " N  OBJ\n"
            " L  C0000000\n"
            " G  C0000001\n"
            " E  C0000002\n"
            "COLUMNS\n"
            "    X0000000  OBJ        1.000000000000e+00\n"
            "    MARK      'MARKER'                 'INTORG'\n"
            "    X0000001  C0000000   3.000000000000e+00\n"
            "    X0000001  OBJ       -2.000000000000e+00\n"
            "    MARK      'MARKER'                 'INTEND'\n"
            "    MARK      'MARKER'                 'INTORG'\n"
            "    X0000002  C0000000   5.000000000000e+00\n"
            "    X0000002  C0000001   1.000000000000e+00\n"
            "    X0000002  OBJ       -3.000000000000e+00\n"
            "    MARK      'MARKER'                 'INTEND'\n"
            "    X0000003  C0000001   1.000000000000e+00\n"
            "    X0000003  C0000002   1.000000000000e+00\n"
            "    X0000003  OBJ        1.000000000000e+00\n"
            "RHS\n"
            "    RHS       C0000000   7.000000000000e+00\n"
            "    RHS       C0000001  -1.500000000000e+00\n"
            "    RHS       C0000002   2.500000000000e-01\n"
            "BOUNDS\n"
            " FX BND       X0000000   0.000000000000e+00\n"
            " BV BND       X0000001\n"
            " BV BND       X0000002\n"
            " LO BND       X0000003  -2.000000000000e+00\n"
            " UP BND       X0000003   4.000000000000e+00\n"
            "ENDATA\n");
  engine_test::QuietProb prob;
  ASSERT_EQ(ZELQ_ReadMps(prob, (dir / "p.mps").c_str()), 0);
  int cols = 0, rows = 0, elems = 0;
  ZELQ_GetIntAttr(prob, "Cols", &cols);
  ZELQ_GetIntAttr(prob, "Rows", &rows);
  ZELQ_GetIntAttr(prob, "Elems", &elems);
  EXPECT_EQ(cols, 4);
  EXPECT_EQ(rows, 3);
  EXPECT_EQ(elems, 5);
  char types[4] = {};
  ASSERT_EQ(ZELQ_GetColType(prob, 4, nullptr, types), 0);
  EXPECT_EQ(std::string(types, 4), std::string("CBBC"));
  double lb[4], ub[4], row_lb[3], row_ub[3];
  ASSERT_EQ(ZELQ_GetColInfo(prob, "LB", 4, nullptr, lb), 0);
  ASSERT_EQ(ZELQ_GetColInfo(prob, "UB", 4, nullptr, ub), 0);
  EXPECT_EQ(lb[0], 0);
  EXPECT_EQ(ub[0], 0);
  EXPECT_EQ(ub[1], 1);
  EXPECT_EQ(lb[3], -2);
  EXPECT_EQ(ub[3], 4);
  ASSERT_EQ(ZELQ_GetRowInfo(prob, "LB", 3, nullptr, row_lb), 0);
  ASSERT_EQ(ZELQ_GetRowInfo(prob, "UB", 3, nullptr, row_ub), 0);
  EXPECT_EQ(row_ub[0], 7);
  EXPECT_EQ(row_lb[1], -1.5);
  EXPECT_EQ(row_lb[2], 0.25);
  EXPECT_EQ(row_ub[2], 0.25);
  // x3 = 0.25 (the equality); 3 x1 + 5 x2 <= 7 allows one of them: x2 (-3) wins.
  ASSERT_EQ(ZELQ_Solve(prob), 0);
  double obj = 0;
  ASSERT_EQ(ZELQ_GetDblAttr(prob, "ObjVal", &obj), 0);
  EXPECT_NEAR(obj, -3 + 0.25, 1e-9);
}

std::string ColName(ZELQprob* prob, int j) {
  char name[64] = {};
  int size = 0;
  EXPECT_EQ(ZELQ_GetColName(prob, j, name, sizeof name, &size), 0);
  return name;
}

// Written names are unique: default names alone need no check, but an
// explicit name equal to another element's default name must still be
// renamed; and the coefficients survive the round trip either way.
TEST(MpsNames, DefaultAndExplicitNamesStayDistinctThroughAWrite) {
  TempDir dir;
  for (const bool named : {false, true}) {
    engine_test::QuietProb prob;
    const double obj[3] = {1, 2, 3};
    const char* names[3] = {"C2", "", "x"};  // column 0 takes column 2's default name
    ASSERT_EQ(ZELQ_AddCols(prob, 3, obj, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                           nullptr, named ? names : nullptr),
              0);
    const int idx[3] = {0, 1, 2};
    const double val[3] = {1, -2, 4};
    ASSERT_EQ(ZELQ_AddRow(prob, 3, idx, val, 'G', 1, 0, nullptr), 0);
    ASSERT_EQ(ZELQ_AddRow(prob, 2, idx + 1, val + 1, 'L', 5, 0, nullptr), 0);
    const std::string path = dir / (named ? "named.mps" : "plain.mps");
    ASSERT_EQ(ZELQ_WriteMps(prob, path.c_str()), 0);
    engine_test::QuietProb back;
    ASSERT_EQ(ZELQ_ReadMps(back, path.c_str()), 0);
    int cols = 0, elems = 0;
    ZELQ_GetIntAttr(back, "Cols", &cols);
    ZELQ_GetIntAttr(back, "Elems", &elems);
    ASSERT_EQ(cols, 3) << named;
    EXPECT_EQ(elems, 5) << named;
    if (named) {
      EXPECT_EQ(ColName(back, 0), "C2");
      EXPECT_EQ(ColName(back, 1), "C1");
      EXPECT_EQ(ColName(back, 2), "x");
    } else {
      EXPECT_EQ(ColName(back, 0), "C0");
      EXPECT_EQ(ColName(back, 2), "C2");
    }
    double elem = 0;
    ASSERT_EQ(ZELQ_GetElem(back, 2, 1, &elem), 0);
    EXPECT_EQ(elem, 4) << named;
  }
  // A clash that needs the renaming: column 1's explicit name is column 0's default.
  engine_test::QuietProb prob;
  const char* names[2] = {"", "C0"};
  ASSERT_EQ(ZELQ_AddCols(prob, 2, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                         nullptr, names),
            0);
  const std::string path = dir / "clash.mps";
  ASSERT_EQ(ZELQ_WriteMps(prob, path.c_str()), 0);
  engine_test::QuietProb back;
  ASSERT_EQ(ZELQ_ReadMps(back, path.c_str()), 0);
  EXPECT_EQ(ColName(back, 0), "C0");
  EXPECT_EQ(ColName(back, 1), "C0_1");
}

}  // namespace
