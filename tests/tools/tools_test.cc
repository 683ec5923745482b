// Runs the command-line tools on shipped instances and checks what they print.
#include <gtest/gtest.h>


#include <cstdio>
#include <sstream>
#include <string>
#include <vector>

#include "tool_run.h"

namespace {

using zelq_test::Execute;
using zelq_test::ToolRun;

std::vector<std::string> Lines(const std::string& text) {
  std::vector<std::string> out;
  std::istringstream in(text);
  for (std::string line; std::getline(in, line);) out.push_back(line);
  return out;
}

std::vector<std::string> Fields(const std::string& line) {
  std::vector<std::string> out;
  std::istringstream in(line);
  for (std::string f; std::getline(in, f, '\t');) out.push_back(f);
  return out;
}

const std::string kData = ZELQ_TEST_DATA;

TEST(RegressTool, SolvesIndexAndReportsEveryRow) {
  ToolRun r = Execute(std::string(ZELQ_REGRESS_BIN) + " " + kData + "/regress/INDEX.tsv " + kData);
  ASSERT_EQ(r.exitCode, 0) << r.out;
  std::vector<std::string> lines = Lines(r.out);
  ASSERT_EQ(lines.size(), 7u) << r.out;
  EXPECT_EQ(lines[0], "set\tname\tstatus\tobjective\toptimum\trel_error\tseconds");
  struct Want {
    const char* name;
    const char* status;
  } want[] = {{"afiro", "optimal"}, {"p0033", "optimal"}, {"infeas", "infeasible"},
              {"unbnd", "unbounded"}, {"none", "skipped"}};
  for (int i = 0; i < 5; ++i) {
    std::vector<std::string> f = Fields(lines[i + 1]);
    ASSERT_EQ(f.size(), 7u) << lines[i + 1];
    EXPECT_EQ(f[1], want[i].name);
    EXPECT_EQ(f[2], want[i].status) << lines[i + 1];
  }
  // Optimal rows carry a relative error within 1e-6; the skipped row gives its reason.
  EXPECT_LE(std::stod(Fields(lines[1])[5]), 1e-6);
  EXPECT_LE(std::stod(Fields(lines[2])[5]), 1e-6);
  EXPECT_NE(Fields(lines[5])[3].find("not supported"), std::string::npos);
  EXPECT_EQ(lines[6].rfind("summary: 5 instances, 4 solved, 4 match the published value", 0), 0u)
      << lines[6];
}

TEST(RegressTool, RejectsBadArguments) {
  EXPECT_EQ(Execute(ZELQ_REGRESS_BIN).exitCode, 2);
  ToolRun missing = Execute(std::string(ZELQ_REGRESS_BIN) + " /nonexistent/INDEX.tsv /tmp");
  EXPECT_EQ(missing.exitCode, 2);
  EXPECT_NE(missing.out.find("cannot open index '/nonexistent/INDEX.tsv'"), std::string::npos);
}

TEST(SolveTool, SolvesShippedMipAndReportsErrors) {
  ToolRun ok = Execute(std::string(ZELQ_SOLVE_BIN) + " " + kData + "/p0033.mps Logging=0");
  ASSERT_EQ(ok.exitCode, 0) << ok.out;
  EXPECT_NE(ok.out.find("Status: optimal"), std::string::npos) << ok.out;
  EXPECT_NE(ok.out.find("Objective: 3089"), std::string::npos) << ok.out;

  ToolRun missing = Execute(std::string(ZELQ_SOLVE_BIN) + " /nonexistent/model.mps");
  EXPECT_EQ(missing.exitCode, 1);
  EXPECT_NE(missing.out.find("reading /nonexistent/model.mps failed (code 2"), std::string::npos)
      << missing.out;

  ToolRun badParam = Execute(std::string(ZELQ_SOLVE_BIN) + " " + kData +
                         "/afiro.mps NoSuchParam=1");
  EXPECT_EQ(badParam.exitCode, 1);
  EXPECT_NE(badParam.out.find("unknown parameter 'NoSuchParam'"), std::string::npos);

  ToolRun badValue = Execute(std::string(ZELQ_SOLVE_BIN) + " " + kData +
                         "/afiro.mps TimeLimit=-5");
  EXPECT_EQ(badValue.exitCode, 1);
  EXPECT_NE(badValue.out.find("setting TimeLimit failed (code 3"), std::string::npos)
      << badValue.out;
}

}  // namespace
