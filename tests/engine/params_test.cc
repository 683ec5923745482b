#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <climits>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <limits>
#include <set>
#include <string>
#include <unistd.h>

#include "params/param_file.h"
#include "params/params.h"

namespace zelq::engine {
namespace {

namespace fs = std::filesystem;

TEST(NameTable, RowCountsOrderAndUniqueness) {
  int counts[4][2] = {};
  bool seen_attr = false;
  std::set<std::string> lower_names;
  for (const NameRow& row : NameTable()) {
    const int kind = static_cast<int>(row.kind);
    ASSERT_GE(kind, 0);
    ASSERT_LE(kind, 3);
    ++counts[kind][row.unlisted ? 1 : 0];
    // Parameters come first, then attributes.
    if (kind >= 2) seen_attr = true;
    EXPECT_FALSE(seen_attr && kind < 2) << row.name;
    std::string lower(row.name);
    std::transform(lower.begin(), lower.end(), lower.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    EXPECT_TRUE(lower_names.insert(lower).second) << "duplicate name " << row.name;
    const std::string desc(row.description);
    EXPECT_FALSE(desc.empty()) << row.name;
    EXPECT_EQ(desc.find('\n'), std::string::npos) << row.name;
  }
  EXPECT_EQ(counts[0][0], 16);
  EXPECT_EQ(counts[0][1], 43);
  EXPECT_EQ(counts[1][0], 59);
  EXPECT_EQ(counts[1][1], 457);
  EXPECT_EQ(counts[2][0], 26);
  EXPECT_EQ(counts[2][1], 18);
  EXPECT_EQ(counts[3][0], 49);
  EXPECT_EQ(counts[3][1], 15);
  EXPECT_EQ(NameTable().size(), 683u);
  EXPECT_EQ(kDblParamCount, 59u);
  EXPECT_EQ(kIntParamCount, 516u);
  EXPECT_EQ(kDblAttrCount, 44u);
  EXPECT_EQ(kIntAttrCount, 64u);
}

TEST(NameTable, FixedDescriptionsAndEnumPositions) {
  EXPECT_STREQ(InfoOf(DblParam::TimeLimit).description, "Time limit of the optimization");
  EXPECT_STREQ(InfoOf(DblParam::HeurNoLpTimeLimit).description,
               "Time limit for the no LP heuristic (-1.0 is default behaviour)");
  EXPECT_STREQ(InfoOf(IntParam::LazyConstraints).description,
               "Whether lazy constraints will be added (-1: auto, 0: no, 1: yes).");
  EXPECT_STREQ(InfoOf(IntParam::MipStartMode).description,
               "Specifies MIP start mode (-1: default, 0: reject all, 1: accept feasible and "
               "full, 2: accept feasible, 3: accept all)");
  // Enumerators follow table order: public rows of a kind before unlisted ones.
  EXPECT_EQ(static_cast<int>(DblParam::TimeLimit), 0);
  EXPECT_EQ(static_cast<int>(DblParam::InfBound), 16);
  EXPECT_EQ(static_cast<int>(IntParam::Logging), 0);
  EXPECT_EQ(static_cast<int>(IntParam::Sifting), 59);
  EXPECT_EQ(static_cast<int>(IntParam::MipPre50), 515);
  EXPECT_STREQ(NameOf(DblAttr::SolvingTime), "SolvingTime");
  EXPECT_STREQ(NameOf(IntAttr::LpMethodUsed), "LpMethodUsed");
  EXPECT_TRUE(InfoOf(DblParam::InfBound).unlisted);
  EXPECT_FALSE(InfoOf(DblParam::MultiObjTimeLimit).unlisted);
}

TEST(NameLookup, CaseInsensitiveOverAllRows) {
  for (const char* spelling : {"TimeLimit", "timelimit", "TIMELIMIT", "tImElImIt"}) {
    NameRef ref{};
    ASSERT_TRUE(FindName(spelling, &ref)) << spelling;
    EXPECT_EQ(ref.kind, NameKind::kDblParam);
    EXPECT_EQ(ref.index, static_cast<int>(DblParam::TimeLimit));
    EXPECT_STREQ(ref.name, "TimeLimit");
    EXPECT_EQ(SearchParamAttr(spelling, nullptr), 0);
  }
  int kind = 99;
  EXPECT_EQ(SearchParamAttr("infbound", &kind), 0);  // unlisted rows are known too
  EXPECT_EQ(kind, 0);
  EXPECT_EQ(SearchParamAttr("MIPPRE50", &kind), 1);
  EXPECT_EQ(kind, 1);
  EXPECT_EQ(SearchParamAttr("objval", &kind), 2);
  EXPECT_EQ(SearchParamAttr("LPMETHODUSED", &kind), 3);
  EXPECT_EQ(kind, 3);
  for (const char* bad : {"", "TimeLimi", "TimeLimitX", " TimeLimit", "Time_Limit", "\xff"}) {
    kind = 99;
    EXPECT_EQ(SearchParamAttr(bad, &kind), -1) << bad;
    EXPECT_EQ(kind, -1);
  }
  EXPECT_EQ(SearchParamAttr(nullptr, &kind), -1);
  EXPECT_FALSE(FindName(std::string_view("TimeLimit\0", 10), nullptr));
  // Every row resolves to itself.
  int next[4] = {};
  for (const NameRow& row : NameTable()) {
    NameRef ref{};
    ASSERT_TRUE(FindName(row.name, &ref)) << row.name;
    EXPECT_EQ(ref.kind, row.kind);
    EXPECT_EQ(ref.index, next[static_cast<int>(row.kind)]++);
  }
}

TEST(ParamSet, DefaultsLieWithinRangesAndResetRestoresThem) {
  ParamSet ps;
  for (std::size_t i = 0; i < kDblParamCount; ++i) {
    const auto& info = InfoOf(static_cast<DblParam>(i));
    EXPECT_LE(info.min, info.def) << info.name;
    EXPECT_LE(info.def, info.max) << info.name;
    EXPECT_EQ(ps.Get(static_cast<DblParam>(i)), info.def);
  }
  for (std::size_t i = 0; i < kIntParamCount; ++i) {
    const auto& info = InfoOf(static_cast<IntParam>(i));
    EXPECT_LE(info.min, info.def) << info.name;
    EXPECT_LE(info.def, info.max) << info.name;
    EXPECT_EQ(ps.Get(static_cast<IntParam>(i)), info.def);
  }
  EXPECT_EQ(ps.Get(DblParam::TimeLimit), 1e30);
  EXPECT_EQ(ps.Get(DblParam::FeasTol), 1e-6);
  EXPECT_EQ(ps.Get(IntParam::Threads), -1);
  EXPECT_EQ(ps.Get(IntParam::Logging), 1);

  std::string msg;
  ASSERT_EQ(ps.SetDblByName("timelimit", 5.0, msg), kParamOk);
  ASSERT_EQ(ps.SetIntByName("HeurFJ", 0, msg), kParamOk);
  EXPECT_NE(ps, ParamSet());
  ParamSet copy = ps;
  EXPECT_EQ(copy.Get(DblParam::TimeLimit), 5.0);
  ps.Reset();
  EXPECT_EQ(ps, ParamSet());
  EXPECT_EQ(copy.Get(IntParam::HeurFJ), 0);
}

TEST(ParamSet, RangeChecksAtTheBoundaries) {
  ParamSet ps;
  std::string msg;
  EXPECT_EQ(ps.SetDblByName("TimeLimit", 0.0, msg), kParamOk);
  EXPECT_EQ(ps.SetDblByName("TimeLimit", 1e30, msg), kParamOk);
  EXPECT_EQ(ps.SetDblByName("TimeLimit", -1, msg), kParamErrInvalid);
  EXPECT_EQ(msg, "TimeLimit: value -1 is below the minimum 0 (valid range [0, 1e+30])");
  EXPECT_EQ(ps.SetDblByName("TimeLimit", std::nextafter(1e30, 2e30), msg), kParamErrInvalid);
  EXPECT_EQ(msg, "TimeLimit: value 1.0000000000000002e+30 is above the maximum 1e+30 "
                 "(valid range [0, 1e+30])");
  EXPECT_EQ(ps.SetDblByName("TimeLimit", std::numeric_limits<double>::quiet_NaN(), msg),
            kParamErrInvalid);
  EXPECT_EQ(msg, "TimeLimit: value nan is not a number (valid range [0, 1e+30])");
  EXPECT_EQ(ps.SetDblByName("FeasTol", std::numeric_limits<double>::infinity(), msg),
            kParamErrInvalid);
  EXPECT_EQ(msg, "FeasTol: value inf is above the maximum 0.01 (valid range [1e-09, 0.01])");
  EXPECT_EQ(ps.Get(DblParam::TimeLimit), 1e30);  // rejected values are not stored
  EXPECT_EQ(ps.Get(DblParam::FeasTol), 1e-6);

  EXPECT_EQ(ps.SetIntByName("Threads", 128, msg), kParamOk);
  EXPECT_EQ(ps.SetIntByName("Threads", 129, msg), kParamErrInvalid);
  EXPECT_EQ(msg, "Threads: value 129 is above the maximum 128 (valid range [-1, 128])");
  EXPECT_EQ(ps.SetIntByName("THREADS", INT_MIN, msg), kParamErrInvalid);
  EXPECT_EQ(msg, "Threads: value -2147483648 is below the minimum -1 (valid range [-1, 128])");
  EXPECT_EQ(ps.Get(IntParam::Threads), 128);
  EXPECT_EQ(ps.SetIntByName("NodeLimit", INT_MAX, msg), kParamOk);
  EXPECT_EQ(ps.Set(IntParam::Logging, 2, msg), kParamErrInvalid);
  EXPECT_EQ(msg, "Logging: value 2 is above the maximum 1 (valid range [0, 1])");
}

TEST(ParamSet, UnknownAndWrongKindNamesAreRejected) {
  ParamSet ps;
  const ParamSet before = ps;
  std::string msg;
  int iv = 7;
  double dv = 7.0;
  EXPECT_EQ(ps.SetIntByName("TimeLimit", 1, msg), kParamErrInvalid);
  EXPECT_EQ(msg, "'TimeLimit' is a double parameter, not an integer parameter");
  EXPECT_EQ(ps.SetDblByName("threads", 1.0, msg), kParamErrInvalid);
  EXPECT_EQ(msg, "'Threads' is an integer parameter, not a double parameter");
  EXPECT_EQ(ps.SetDblByName("ObjVal", 1.0, msg), kParamErrInvalid);
  EXPECT_EQ(msg, "'ObjVal' is a double attribute, not a double parameter");
  EXPECT_EQ(ps.GetIntByName("Status", &iv, msg), kParamErrInvalid);
  EXPECT_EQ(msg, "'Status' is an integer attribute, not an integer parameter");
  EXPECT_EQ(ps.SetIntByName("Foo", 1, msg), kParamErrInvalid);
  EXPECT_EQ(msg, "Unknown parameter 'Foo'");
  EXPECT_EQ(ps.SetIntByName("a\nb", 1, msg), kParamErrInvalid);
  EXPECT_EQ(msg, "Unknown parameter 'a\\x0ab'");
  EXPECT_EQ(ps.SetDblByName(nullptr, 1.0, msg), kParamErrInvalid);
  EXPECT_EQ(ps.GetDblByName("TimeLimit", nullptr, msg), kParamErrInvalid);
  EXPECT_EQ(ps.GetDblByName("Bogus", &dv, msg), kParamErrInvalid);
  EXPECT_EQ(iv, 7);  // outputs untouched on failure
  EXPECT_EQ(dv, 7.0);
  EXPECT_EQ(ps, before);

  EXPECT_EQ(ps.GetIntByName("lpmethod", &iv, msg), kParamOk);
  EXPECT_EQ(iv, -1);
  EXPECT_EQ(GetDblParamField("FeasTol", ParamField::kMin, &dv, msg), kParamOk);
  EXPECT_EQ(dv, 1e-9);
  EXPECT_EQ(GetIntParamField("Threads", ParamField::kMax, &iv, msg), kParamOk);
  EXPECT_EQ(iv, 128);
  EXPECT_EQ(GetIntParamField("PivotTol", ParamField::kDefault, &iv, msg), kParamErrInvalid);
  EXPECT_EQ(msg, "'PivotTol' is a double parameter, not an integer parameter");
  EXPECT_EQ(GetDblParamField("TimeLimit", ParamField::kMax, nullptr, msg), kParamErrInvalid);
}

class ParamFileTest : public ::testing::Test {
 protected:
  void SetUp() override {
    dir_ = fs::temp_directory_path() /
           ("zelq_params_" + std::to_string(::getpid()) + "_" +
            ::testing::UnitTest::GetInstance()->current_test_info()->name());
    fs::create_directories(dir_);
  }
  void TearDown() override { fs::remove_all(dir_); }
  std::string Path(const char* leaf) const { return (dir_ / leaf).string(); }

  fs::path dir_;
};

TEST_F(ParamFileTest, WritesOnlyChangedValuesAndRoundTrips) {
  ParamSet ps;
  std::string msg;
  EXPECT_EQ(FormatParamFile(ps),
            "# Zelq parameter file: parameters that differ from their defaults\n");
  ASSERT_EQ(ps.Set(DblParam::TimeLimit, 60.0, msg), kParamOk);
  ASSERT_EQ(ps.Set(IntParam::Threads, 4, msg), kParamOk);
  EXPECT_EQ(FormatParamFile(ps),
            "# Zelq parameter file: parameters that differ from their defaults\n"
            "TimeLimit 60\nThreads 4\n");

  ASSERT_EQ(ps.Set(DblParam::RelGap, 0.1 + 0.2, msg), kParamOk);  // needs all 17 digits
  ASSERT_EQ(ps.Set(DblParam::MipCutoffBnd, -1e30, msg), kParamOk);
  ASSERT_EQ(ps.Set(DblParam::TuneTimeLimit, -0.0, msg), kParamOk);
  ASSERT_EQ(ps.Set(IntParam::NodeLimit, INT_MAX, msg), kParamOk);
  ASSERT_EQ(ps.Set(IntParam::MipPre50, 0, msg), kParamOk);
  const std::string path = Path("model.par");
  ASSERT_EQ(WriteParamFile(path.c_str(), ps, msg), kParamOk) << msg;
  ParamSet back;
  ASSERT_EQ(ReadParamFile(path.c_str(), back, msg), kParamOk) << msg;
  EXPECT_EQ(back, ps);
  EXPECT_EQ(back.Get(DblParam::RelGap), 0.1 + 0.2);
  EXPECT_TRUE(std::signbit(back.Get(DblParam::TuneTimeLimit)));
  // Only the file and no temporary is left behind.
  EXPECT_EQ(std::distance(fs::directory_iterator(dir_), fs::directory_iterator()), 1);
}

TEST_F(ParamFileTest, ParsesCommentsCaseBlankLinesAndLineEndings) {
  ParamSet ps;
  std::string msg;
  ASSERT_EQ(ps.Set(IntParam::Presolve, 2, msg), kParamOk);
  const std::string text =
      "\xEF\xBB\xBF# leading comment\r\n"
      "\n"
      "  timelimit\t+1.5e2   # trailing comment\r\n"
      "THREADS 3\n"
      "threads 6\n"        // the later value wins
      "   \t  \n"
      "infbound 1e20\n"
      "FeasTol 1e-9";  // no final newline
  ASSERT_EQ(ParseParamFile(text, "in.par", ps, msg), kParamOk) << msg;
  EXPECT_EQ(ps.Get(DblParam::TimeLimit), 150.0);
  EXPECT_EQ(ps.Get(IntParam::Threads), 6);
  EXPECT_EQ(ps.Get(DblParam::InfBound), 1e20);
  EXPECT_EQ(ps.Get(DblParam::FeasTol), 1e-9);
  EXPECT_EQ(ps.Get(IntParam::Presolve), 2);  // values not in the file are kept
}

TEST_F(ParamFileTest, BadContentNamesLineAndLeavesParamsUnchanged) {
  struct Case {
    std::string_view text;
    const char* message;
  };
  const Case cases[] = {
      {"TimeLimit 5\nThreads 2\nFoo 1\n", "model.par:3: unknown parameter 'Foo'"},
      {"Threads\n", "model.par:1: missing value for parameter 'Threads'"},
      {"# c\nThreads 2 3\n", "model.par:2: unexpected text '3' after the value of parameter "
                             "'Threads'"},
      {"Threads 2.0\n", "model.par:1: invalid integer value '2.0' for parameter 'Threads'"},
      {"Threads 99999999999\n",
       "model.par:1: value '99999999999' for parameter 'Threads' is out of the integer range"},
      {"TimeLimit abc\n", "model.par:1: invalid double value 'abc' for parameter 'TimeLimit'"},
      {"TimeLimit 1e999\n",
       "model.par:1: value '1e999' for parameter 'TimeLimit' is out of the double range"},
      {"\n\nTimeLimit -5\n",
       "model.par:3: TimeLimit: value -5 is below the minimum 0 (valid range [0, 1e+30])"},
      {"TimeLimit nan\n",
       "model.par:1: TimeLimit: value nan is not a number (valid range [0, 1e+30])"},
      {"Threads 1\r\nStatus 1\r\n", "model.par:2: 'Status' is an attribute, not a parameter"},
      {"Threads +-1\n", "model.par:1: invalid integer value '+-1' for parameter 'Threads'"},
      {std::string_view("Threads\0 1\n", 11), "model.par:1: unknown parameter 'Threads\\x00'"},
  };
  for (const Case& c : cases) {
    ParamSet ps;
    std::string msg;
    ASSERT_EQ(ps.Set(IntParam::Threads, 7, msg), kParamOk);
    const ParamSet before = ps;
    EXPECT_EQ(ParseParamFile(c.text, "model.par", ps, msg), kParamErrInvalid) << c.text;
    EXPECT_EQ(msg, c.message);
    EXPECT_EQ(ps, before) << c.text;
  }
  // Binary junk is reported readably.
  ParamSet ps;
  std::string msg;
  EXPECT_EQ(ParseParamFile(std::string_view("\x01\xfe 1", 4), "x.par", ps, msg), kParamErrInvalid);
  EXPECT_EQ(msg, "x.par:1: unknown parameter '\\x01\\xfe'");
}

TEST_F(ParamFileTest, FileErrorsAndFailedReadsKeepParams) {
  ParamSet ps;
  std::string msg;
  ASSERT_EQ(ps.Set(IntParam::Threads, 5, msg), kParamOk);
  const ParamSet before = ps;

  const std::string missing = Path("missing.par");
  EXPECT_EQ(ReadParamFile(missing.c_str(), ps, msg), kParamErrFile);
  EXPECT_EQ(msg, "cannot open parameter file '" + missing + "': No such file or directory");
  EXPECT_EQ(ReadParamFile(dir_.string().c_str(), ps, msg), kParamErrFile);
  EXPECT_EQ(ReadParamFile(nullptr, ps, msg), kParamErrInvalid);
  EXPECT_EQ(ReadParamFile("", ps, msg), kParamErrInvalid);

  const std::string bad = Path("bad.par");
  std::ofstream(bad) << "TimeLimit 10\nThreads 8\nLpMethod 9\n";
  EXPECT_EQ(ReadParamFile(bad.c_str(), ps, msg), kParamErrInvalid);
  EXPECT_EQ(msg, bad + ":3: LpMethod: value 9 is above the maximum 3 (valid range [-1, 3])");
  EXPECT_EQ(ps, before);

  const std::string nodir = Path("no/such/dir/out.par");
  EXPECT_EQ(WriteParamFile(nodir.c_str(), ps, msg), kParamErrFile);
  EXPECT_EQ(msg.rfind("cannot write parameter file '" + nodir + "': ", 0), 0u) << msg;
  EXPECT_EQ(WriteParamFile(nullptr, ps, msg), kParamErrInvalid);

  // A failed write leaves an existing file as it was.
  const std::string keep = Path("keep.par");
  std::ofstream(keep) << "Threads 2\n";
  fs::permissions(dir_, fs::perms::owner_read | fs::perms::owner_exec);
  const int rc = WriteParamFile(keep.c_str(), ps, msg);
  fs::permissions(dir_, fs::perms::owner_all);
  if (::geteuid() != 0) {
    EXPECT_EQ(rc, kParamErrFile);
  }
  if (rc != kParamOk) {
    ParamSet reread;
    ASSERT_EQ(ReadParamFile(keep.c_str(), reread, msg), kParamOk) << msg;
    EXPECT_EQ(reread.Get(IntParam::Threads), 2);
  }
}

}  // namespace
}  // namespace zelq::engine
