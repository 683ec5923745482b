// The zelq command run as a program: what it prints and the exit code of each kind of failure;
// and its number parsing and problem statistics on their own.
#include <gtest/gtest.h>

#include <unistd.h>

#include <algorithm>
#include <climits>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <string>

#include "cli_text.h"
#include "tool_run.h"
#include "model_stats.h"

namespace {

using CliRun = zelq_test::ToolRun;

CliRun Zelq(const std::string& args) {
  return zelq_test::Execute(std::string(ZELQ_CLI_BIN) + " " + args);
}

bool Has(const CliRun& r, const std::string& text) { return r.out.find(text) != std::string::npos; }

// The number after "Objective: " in a solve's output, or NaN.
double Objective(const CliRun& r) {
  size_t at = r.out.find("Objective: ");
  return at == std::string::npos ? std::nan("") : std::strtod(r.out.c_str() + at + 11, nullptr);
}

const std::string kData = ZELQ_TEST_DATA;
const std::string kP0033 = kData + "/p0033.mps";
const std::string kAfiro = kData + "/afiro.mps";

// A fresh directory for files a test writes, removed with its content at the end.
class TempDir {
 public:
  TempDir() {
    char tmpl[] = "/tmp/zelq_cli_XXXXXX";
    path_ = mkdtemp(tmpl) ? tmpl : "/tmp";
  }
  ~TempDir() { std::system(("rm -rf '" + path_ + "'").c_str()); }
  std::string File(const std::string& name) const { return path_ + "/" + name; }

 private:
  std::string path_;
};

std::string ReadAll(const std::string& path) {
  std::ifstream in(path);
  std::stringstream s;
  s << in.rdbuf();
  return s.str();
}

TEST(ZelqCli, SolvesMipWithLogAndSummary) {
  CliRun r = Zelq("solve " + kP0033);
  ASSERT_EQ(r.exitCode, 0) << r.out;
  EXPECT_TRUE(Has(r, "Zelq engine")) << r.out;  // banner and solver log on the console
  EXPECT_TRUE(Has(r, "Status: optimal\nObjective: 3089\nBest bound: ")) << r.out;
  EXPECT_TRUE(Has(r, "\nGap: ")) << r.out;
  EXPECT_TRUE(Has(r, "\nSolve time: ")) << r.out;

  // An LP prints no bound or gap; the compressed copy reads like the plain file.
  CliRun lp = Zelq("solve " + kData + "/afiro.mps.gz Logging=0");
  ASSERT_EQ(lp.exitCode, 0) << lp.out;
  EXPECT_NEAR(Objective(lp), -464.7531429, 1e-6) << lp.out;
  EXPECT_FALSE(Has(lp, "Best bound")) << lp.out;
}

TEST(ZelqCli, ParametersByNameInAnyCase) {
  // Logging switched off in odd case: nothing but the five result lines.
  CliRun quiet = Zelq("solve " + kP0033 + " lOgGiNg=0");
  ASSERT_EQ(quiet.exitCode, 0) << quiet.out;
  EXPECT_EQ(quiet.out.rfind("Status: optimal\nObjective: 3089\nBest bound: 3089\nGap: 0%\n"
                            "Solve time: ", 0), 0u) << quiet.out;
  EXPECT_EQ(std::count(quiet.out.begin(), quiet.out.end(), '\n'), 5) << quiet.out;

  // A node limit of one, spelled in upper case, stops the branch and bound early.
  CliRun limited = Zelq("solve " + kData + "/flugpl.mps Logging=0 NODELIMIT=1 HEURLEVEL=0");
  ASSERT_EQ(limited.exitCode, 0) << limited.out;
  EXPECT_TRUE(Has(limited, "Status: node limit reached")) << limited.out;
}

TEST(ZelqCli, BadParametersStopBeforeSolving) {
  struct Case {
    const char* setting;
    const char* message;
  } cases[] = {
      {"NoSuchParam=1", "zelq: unknown parameter 'NoSuchParam'\n"},
      {"timelimit=abc", "zelq: parameter timelimit takes a number, got 'abc'\n"},
      {"TimeLimit=", "zelq: parameter TimeLimit takes a number, got ''\n"},
      {"TimeLimit=nan", "zelq: parameter TimeLimit takes a number, got 'nan'\n"},
      {"Threads=1.5", "zelq: parameter Threads takes an integer, got '1.5'\n"},
      {"Threads=4294967296", "zelq: parameter Threads takes an integer, got '4294967296'\n"},
      {"TimeLimit=-5", "zelq: value -5 of parameter TimeLimit is out of range [0, inf]\n"},
      {"ObjVal=1", "zelq: 'ObjVal' is an attribute, not a parameter\n"},
  };
  for (const Case& c : cases) {
    CliRun r = Zelq("solve " + kAfiro + " Logging=0 " + c.setting);
    EXPECT_EQ(r.exitCode, 2) << c.setting << "\n" << r.out;
    EXPECT_EQ(r.out, c.message) << c.setting;
  }
}

TEST(ZelqCli, UnreadableFilesExitWithThree) {
  CliRun missing = Zelq("solve /nonexistent/model.mps");
  EXPECT_EQ(missing.exitCode, 3);
  EXPECT_TRUE(Has(missing, "zelq: cannot open '/nonexistent/model.mps': No such file or directory"))
      << missing.out;

  CliRun unknown = Zelq("info " + kData + "/regress/INDEX.tsv");
  EXPECT_EQ(unknown.exitCode, 3);
  EXPECT_TRUE(Has(unknown, "cannot tell the format of '" + kData + "/regress/INDEX.tsv'"))
      << unknown.out;

  TempDir dir;
  std::string broken = dir.File("broken.mps");
  std::ofstream(broken) << "NAME broken\nROWS\n N obj\n L c1\nCOLUMNSS\n    x obj 1 c1 1\n"
                           "RHS\n    rhs c1 4\nENDATA\n";
  CliRun parse = Zelq("solve " + broken);
  EXPECT_EQ(parse.exitCode, 3) << parse.out;
  EXPECT_TRUE(Has(parse, "zelq: cannot read '" + broken + "': (INVALID) Failed to read MPS file\n"))
      << parse.out;
  EXPECT_FALSE(Has(parse, "Status:")) << parse.out;
  // The engine's log names the line; info (quiet otherwise) shows it too.
  EXPECT_TRUE(Has(parse, "Error: ZELQ_ReadMps: " + broken + ":5: ")) << parse.out;
  CliRun info = Zelq("info " + broken);
  EXPECT_EQ(info.exitCode, 3);
  EXPECT_TRUE(Has(info, broken + ":5: ")) << info.out;
}

TEST(ZelqCli, WritesByEndingAndRejectsUnknownEndings) {
  TempDir dir;
  CliRun bad = Zelq("solve " + kAfiro + " --write " + dir.File("out.txt"));
  EXPECT_EQ(bad.exitCode, 1);
  EXPECT_TRUE(Has(bad, "zelq: cannot tell what to write to '" + dir.File("out.txt") +
                           "' from its ending; use .mps, .lp,")) << bad.out;
  EXPECT_FALSE(Has(bad, "Status:")) << "checked before solving\n" << bad.out;
  EXPECT_EQ(Zelq("solve " + kAfiro + " --write " + dir.File("out.mps.gz")).exitCode, 1);
  EXPECT_EQ(Zelq("solve " + kAfiro + " --write").exitCode, 1);

  CliRun ok = Zelq("solve " + kAfiro + " Logging=0 --write " + dir.File("a.sol") + " --write=" +
                dir.File("a.json"));
  ASSERT_EQ(ok.exitCode, 0) << ok.out;
  EXPECT_TRUE(Has(ok, "Wrote " + dir.File("a.sol"))) << ok.out;
  EXPECT_FALSE(ReadAll(dir.File("a.sol")).empty());
  EXPECT_NE(ReadAll(dir.File("a.json")).find("-464.75314"), std::string::npos);

  CliRun noDir = Zelq("solve " + kAfiro + " Logging=0 --write /nonexistent/dir/a.sol");
  EXPECT_EQ(noDir.exitCode, 3) << noDir.out;
  EXPECT_TRUE(Has(noDir, "zelq: cannot write '/nonexistent/dir/a.sol'")) << noDir.out;
}

TEST(ZelqCli, ConvertRoundTripKeepsTheOptimum) {
  TempDir dir;
  std::string lp = dir.File("p.lp"), mps = dir.File("p.mps");
  ASSERT_EQ(Zelq("convert " + kP0033 + " " + lp).exitCode, 0);
  ASSERT_EQ(Zelq("convert " + lp + " " + mps).exitCode, 0);
  CliRun r = Zelq("solve " + mps + " Logging=0");
  ASSERT_EQ(r.exitCode, 0) << r.out;
  EXPECT_EQ(Objective(r), 3089.0) << r.out;
  // Everything info reports survives the trip, column types and bounds included.
  auto profile = [](const std::string& file) {
    std::string out = Zelq("info " + file).out;
    return out.substr(out.find("Rows:"));
  };
  EXPECT_EQ(profile(mps), profile(kP0033));
  EXPECT_EQ(profile(lp), profile(kP0033));

  EXPECT_EQ(Zelq("convert " + kP0033).exitCode, 1);
  EXPECT_EQ(Zelq("convert " + kP0033 + " " + dir.File("p.sol")).exitCode, 1);
  EXPECT_EQ(Zelq("convert /nonexistent.mps " + mps).exitCode, 3);
}

TEST(ZelqCli, InfoPrintsSizesCountsAndRanges) {
  CliRun r = Zelq("info " + kAfiro);
  ASSERT_EQ(r.exitCode, 0) << r.out;
  EXPECT_TRUE(Has(r, "Rows:        27\n"
                     "Columns:     32 (32 continuous, 0 binary, 0 integer)\n"
                     "Non-zeros:   83\n"
                     "Objective:   minimize, constant 0\n"
                     "Columns by bounds: 0 free, 0 fixed, 0 boxed, 32 lower bound only, "
                     "0 upper bound only\n"
                     "Rows by sense: 8 equal, 19 less-equal, 0 greater-equal, 0 ranged, 0 free\n"))
      << r.out;
  EXPECT_TRUE(Has(r, "  Matrix     [1e-01, 2e+00]\n  Objective  [3e-01, 1e+01]\n"
                     "  Bounds     none\n  RHS        [4e+01, 5e+02]\n")) << r.out;
  EXPECT_FALSE(Has(r, "Zelq engine")) << "info is quiet\n" << r.out;
}

TEST(ZelqCli, UsageHelpAndVersion) {
  CliRun none = Zelq("");
  EXPECT_EQ(none.exitCode, 1);
  EXPECT_TRUE(Has(none, "usage: zelq solve FILE")) << none.out;
  CliRun help = Zelq("--help");
  EXPECT_EQ(help.exitCode, 0);
  EXPECT_TRUE(Has(help, "Exit codes: 0 ok, 1 usage error")) << help.out;
  CliRun version = Zelq("--version");
  EXPECT_EQ(version.exitCode, 0);
  EXPECT_EQ(version.out, "zelq 8.0.7\n");
  for (const char* args : {"frobnicate x.mps", "solve", "solve --fast x.mps", "info",
                           "info a.mps b.mps", "solve a.mps b.mps"}) {
    CliRun r = Zelq(args);
    EXPECT_EQ(r.exitCode, 1) << args << "\n" << r.out;
    EXPECT_TRUE(Has(r, "Run 'zelq --help' for usage.")) << args;
  }
}

TEST(ZelqCliText, StrictNumbersAndPrinting) {
  int i = 7;
  EXPECT_TRUE(zelqcli::ParseInt("2147483647", &i));
  EXPECT_EQ(i, INT_MAX);
  EXPECT_TRUE(zelqcli::ParseInt("-2147483648", &i));
  EXPECT_EQ(i, INT_MIN);
  i = 7;
  for (const char* bad : {"2147483648", "-2147483649", "", " 1", "1 ", "1.0", "0x", "1e3"}) {
    EXPECT_FALSE(zelqcli::ParseInt(bad, &i)) << bad;
  }
  EXPECT_EQ(i, 7) << "untouched on failure";
  double d = 7;
  EXPECT_TRUE(zelqcli::ParseDouble("1e-3", &d));
  EXPECT_EQ(d, 1e-3);
  for (const char* bad : {"", "inf", "nan", "1e400", "2x", " 2"}) {
    EXPECT_FALSE(zelqcli::ParseDouble(bad, &d)) << bad;
  }
  EXPECT_EQ(zelqcli::FormatNumber(1e30), "inf");
  EXPECT_EQ(zelqcli::FormatNumber(-1e30), "-inf");
  EXPECT_EQ(zelqcli::FormatNumber(-464.753142857), "-464.7531429");
  EXPECT_TRUE(zelqcli::EndsWithNoCase("A.MPS.GZ", ".mps.gz"));
  EXPECT_FALSE(zelqcli::EndsWithNoCase("mps", ".mps"));
}

TEST(ZelqCliStats, ClassifiesBoundsAndTakesRanges) {
  const double inf = 1e30;
  // Columns: free, fixed, boxed, lower only, upper only; just below 1e30 counts as finite.
  zelqcli::BoundStats s = zelqcli::ComputeBoundStats(
      {-inf, 2, 0, -3, -inf, 0}, {inf, 2, 9.9e29, inf, 0.5, 1}, {0, -4, 1e-7},
      {5, -inf, 1, -inf, -1e31}, {5, 8, inf, inf, 1e31});
  EXPECT_EQ(s.columns.free, 1);
  EXPECT_EQ(s.columns.fixed, 1);
  EXPECT_EQ(s.columns.boxed, 2);
  EXPECT_EQ(s.columns.lowerOnly, 1);
  EXPECT_EQ(s.columns.upperOnly, 1);
  EXPECT_EQ(s.rows.equal, 1);
  EXPECT_EQ(s.rows.lessEqual, 1);
  EXPECT_EQ(s.rows.greaterEqual, 1);
  EXPECT_EQ(s.rows.free, 2);
  EXPECT_EQ(s.rows.ranged, 0);
  // Zeros and infinite values stay out of the ranges.
  EXPECT_EQ(s.objective.low, 1e-7);
  EXPECT_EQ(s.objective.high, 4);
  EXPECT_EQ(s.bounds.low, 0.5);
  EXPECT_EQ(s.bounds.high, 9.9e29);
  EXPECT_EQ(s.rhs.ToString(), "[1e+00, 8e+00]");
  EXPECT_EQ(zelqcli::AbsRange().ToString(), "none");
}

}  // namespace
