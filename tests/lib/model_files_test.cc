// Files by name in the model: the choice of engine reader and writer by the
// ending, every kind's failure message, path conversion (home directory,
// character checks), compaction before problem writes, the string forms, and
// round trips through the real engine checked against the known optimum.
#include <gtest/gtest.h>

#include <array>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <optional>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "frame/engine_index.h"
#include "frame/prob_buffer.h"
#include "model/file_path.h"
#include "model/zelq_model.h"

namespace Zelq {
namespace {

using PathFn = int (*)(ZELQprob*, const char*);
using Operation = void (ZelqModel::*)(const char*);
constexpr int kFail = 7;  // a code the library never makes itself: "(SERVER) "

// What the replaced engine entries saw.
int g_entry = -1;
int g_calls = 0;
std::string g_path;

template <size_t K>
int RecordPath(ZELQprob*, const char* path) {
  g_entry = static_cast<int>(K);
  g_path = path;
  ++g_calls;
  return 0;
}

int FailPath(ZELQprob*, const char*) { return ++g_calls, kFail; }

constexpr std::array<PathFn EngineIndex::*, 12> kReaders = {
    &EngineIndex::ReadMps,   &EngineIndex::ReadLp,    &EngineIndex::ReadSDPA,
    &EngineIndex::ReadCbf,   &EngineIndex::ReadBin,   &EngineIndex::ReadSol,
    &EngineIndex::ReadJsonSol, &EngineIndex::ReadBasis, &EngineIndex::ReadMst,
    &EngineIndex::ReadOrd,   &EngineIndex::ReadParam, &EngineIndex::ReadTune};
enum Reader { kMps, kLp, kSdpa, kCbf, kBin, kSol, kJson, kBas, kMst, kOrd, kPar, kTune };

// Replaces every reader: reader k records k and the path.
using Guards = std::vector<std::unique_ptr<EngineOverride<PathFn>>>;
template <size_t... K>
Guards RecordReaders(std::index_sequence<K...>) {
  Guards guards;
  (guards.push_back(std::make_unique<EngineOverride<PathFn>>(kReaders[K], &RecordPath<K>)), ...);
  return guards;
}

constexpr int kNone = -1;

std::string Slurp(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  std::ostringstream text;
  text << in.rdbuf();
  return text.str();
}

// Sets (for null: unsets) the home variables for one scope.
class HomeEnv {
 public:
  HomeEnv(const char* home, const char* drive, const char* path) {
    const char* values[] = {home, drive, path};
    for (int k = 0; k < 3; ++k) {
      if (const char* old = std::getenv(kNames[k])) saved_[k] = old;
      Set(kNames[k], values[k]);
    }
  }
  ~HomeEnv() {
    for (int k = 0; k < 3; ++k) Set(kNames[k], saved_[k] ? saved_[k]->c_str() : nullptr);
  }

 private:
  static void Set(const char* name, const char* value) {
    value != nullptr ? setenv(name, value, 1) : unsetenv(name);
  }
  static constexpr const char* kNames[3] = {"HOME", "HOMEDRIVE", "HOMEPATH"};
  std::optional<std::string> saved_[3];
};

class ModelFilesTest : public ::testing::Test {
 protected:
  void SetUp() override {
    g_entry = kNone;
    g_calls = 0;
    g_path.clear();
    char pattern[] = "/tmp/zelq_files_XXXXXX";
    ASSERT_NE(mkdtemp(pattern), nullptr);
    dir_ = pattern;
    env_ = Shared<EnvBox>::Wrap(new EnvBox);
    ASSERT_EQ(Engine().CreateEnvWithPath(nullptr, &env_->env), 0);
    model_ = NewLp();
  }
  void TearDown() override { std::filesystem::remove_all(dir_); }

  std::unique_ptr<ZelqModel> Empty() const {
    auto model = std::unique_ptr<ZelqModel>(static_cast<ZelqModel*>(NewModel(env_, "m")));
    EXPECT_EQ(Engine().SetIntParam(model->Prob(), "Logging", 0), 0);
    return model;
  }

  // max 3x + 5y  s.t.  x <= 4, 2y <= 12, 3x + 2y <= 18: optimum 36 at (2, 6).
  std::unique_ptr<ZelqModel> NewLp() const {
    auto model = Empty();
    delete model->AddVar(0, 1e30, 3, 'C', "x");
    delete model->AddVar(0, 1e30, 5, 'C', "y");
    const int x[] = {0}, y[] = {1}, xy[] = {0, 1};
    const double one[] = {1}, two[] = {2}, three_two[] = {3, 2};
    delete model->AddConstr(1, x, one, 'L', 4, "r1");
    delete model->AddConstr(1, y, two, 'L', 12, "r2");
    delete model->AddConstr(2, xy, three_two, 'L', 18, "r3");
    model->SetObjSense(ZELQ_MAXIMIZE);
    EXPECT_EQ(model->GetErrorCode(), 0);
    return model;
  }

  std::string File(const std::string& name) const { return dir_ + "/" + name; }

  static void ExpectError(const ZelqModel& model, int code, const std::string& message) {
    EXPECT_EQ(model.GetErrorCode(), code) << message;
    const char* text = model.GetErrorMessage();
    EXPECT_EQ(text != nullptr ? text : "", message);
  }

  static int EngineCount(const ZelqModel& model, const char* attr) {
    int value = -1;
    EXPECT_EQ(Engine().GetIntAttr(model.Prob(), attr, &value), 0);
    return value;
  }

  std::string dir_;
  Shared<EnvBox> env_;
  std::unique_ptr<ZelqModel> model_;
};

#define KIND(op, entry, path, message) {&ZelqModel::op, &EngineIndex::entry, path, message}

TEST_F(ModelFilesTest, EveryKindReachesItsEngineFunctionWithItsMessage) {
  const struct {
    Operation op;
    PathFn EngineIndex::*entry;
    const char* path;
    const char* message;
  } cases[] = {
      KIND(ReadMps, ReadMps, "a.mps", "Failed to read MPS file"),
      KIND(ReadLp, ReadLp, "a.lp", "Failed to read LP file"),
      KIND(ReadSdpa, ReadSDPA, "a.dat-s", "Failed to read SDPA file"),
      KIND(ReadCbf, ReadCbf, "a.cbf", "Failed to read CBF file"),
      KIND(ReadBin, ReadBin, "a.bin", "Failed to read ZELQ binary file"),
      KIND(ReadSol, ReadSol, "a.sol", "Failed to read solution file"),
      KIND(ReadJsonSol, ReadJsonSol, "a.json", "Failed to read JSON solution file"),
      KIND(ReadBasis, ReadBasis, "a.bas", "Failed to read basis file"),
      KIND(ReadMst, ReadMst, "a.mst", "Failed to read MIP start file"),
      KIND(ReadOrd, ReadOrd, "a.ord", "Failed to read branching order file"),
      KIND(ReadParam, ReadParam, "a.par", "Failed to read parameter file"),
      KIND(ReadTune, ReadTune, "a.tune", "Failed to read tuning file"),
      KIND(WriteMps, WriteMps, "a.mps", "Fail to write to MPS file"),
      KIND(WriteLp, WriteLp, "a.lp", "Fail to write to LP file"),
      KIND(WriteCbf, WriteCbf, "a.cbf", "Fail to write to CBF file"),
      KIND(WriteBin, WriteBin, "a.bin", "Fail to write to ZELQ binary file"),
      KIND(WriteNL, WriteNL, "a.nl", "Fail to write to NL file"),
      KIND(WriteIIS, WriteIIS, "a.iis", "Fail to write to IIS file"),
      KIND(WriteRelax, WriteRelax, "a.relax",
           "Fail to write to feasibility relaxation problem file"),
      KIND(WriteSol, WriteSol, "a.sol", "Fail to write to solution file"),
      KIND(WriteJsonSol, WriteJsonSol, "a.json", "Fail to write to JSON solution file"),
      KIND(WriteBasis, WriteBasis, "a.bas", "Fail to write to basis file"),
      KIND(WriteMst, WriteMst, "a.mst", "Fail to write to MIP start file"),
      KIND(WriteOrd, WriteOrd, "a.ord", "Fail to write to branching order file"),
      KIND(WriteParam, WriteParam, "a.par", "Fail to write to Param file"),
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.message);
    EngineOverride<PathFn> fail(c.entry, &FailPath);
    g_calls = 0;
    (model_.get()->*c.op)(c.path);
    ExpectError(*model_, kFail, std::string("(SERVER) ") + c.message);
    // Read and Write reach the same kind from the upper-case ending.
    std::string upper = c.path;
    for (char& ch : upper) ch = static_cast<char>(std::toupper(static_cast<unsigned char>(ch)));
    bool read = std::string(c.message).starts_with("Failed");
    (model_.get()->*(read ? &ZelqModel::Read : &ZelqModel::Write))(upper.c_str());
    ExpectError(*model_, kFail, std::string("(SERVER) ") + c.message);
    // No path: code 3 with the kind's message, and no engine call.
    (model_.get()->*c.op)("");
    ExpectError(*model_, 3, std::string("(INVALID) ") + c.message);
    EXPECT_EQ(g_calls, 2);
  }

  using NumberedFn = int (*)(ZELQprob*, int, const char*);
  constexpr auto kFailFour = [](ZELQprob*, int i, const char*) { return i == 4 ? kFail : 0; };
  EngineOverride<NumberedFn> pool(&EngineIndex::WritePoolSol, kFailFour);
  EngineOverride<NumberedFn> tune(&EngineIndex::WriteTuneParam, kFailFour);
  model_->WritePoolSol(4, "p.sol");
  ExpectError(*model_, kFail, "(SERVER) Fail to write to solution file");
  model_->WritePoolSol(4, nullptr);
  ExpectError(*model_, 3, "(INVALID) Fail to write to solution file");
  model_->WriteTuneParam(4, "t.par");
  ExpectError(*model_, kFail, "(SERVER) Fail to write tuned parameters to file");
}

TEST_F(ModelFilesTest, CompressedNamesReadAsTheirKindAndUnknownWritesChangeNothing) {
  Guards readers = RecordReaders(std::make_index_sequence<kReaders.size()>());
  const std::pair<const char*, int> reads[] = {
      {"x.mps.gz", kMps}, {"dir/x.MPS", kMps},   {"a.lp.mps", kMps},   {"a.mps.lp", kLp},
      {"b.LP.GZ", kLp},   {"c.dat-s.gz", kSdpa}, {"t.tune.gz", kTune}, {"x.gz", kNone},
      {"x.txt", kNone},   {"mps", kNone},        {"x.mps.bz2", kNone}, {"", kNone},
      {nullptr, kNone}};
  for (const auto& [path, reader] : reads) {
    SCOPED_TRACE(path != nullptr ? path : "(null)");
    g_entry = kNone;
    model_->Read(path);
    EXPECT_EQ(g_entry, reader);
    if (reader == kNone) {
      ExpectError(*model_, 3, "(INVALID) Unknown file type");
    } else {
      EXPECT_EQ(g_path, path);  // compressed names reach the engine unchanged
      EXPECT_EQ(model_->GetErrorCode(), 0);
    }
  }

  // Write knows no compressed forms and no read-only kinds. An unknown ending
  // writes nothing, does not compact and leaves a recorded failure alone.
  ElementRef x = model_->Data().Table(kVarKind).records[0];
  x->index = RemovedIndex(0);
  model_->Data().update_flag = 1;
  for (const char* name : {"x.mps.gz", "x.dat-s", "x.tune", "x.txt", "x.mps.", ""}) {
    SetError(model_->Error(), kFail, "earlier");
    model_->Write(File(name).c_str());
    ExpectError(*model_, kFail, "(SERVER) earlier");
  }
  model_->Write(nullptr);
  ExpectError(*model_, kFail, "(SERVER) earlier");
  EXPECT_TRUE(std::filesystem::is_empty(dir_));
  EXPECT_EQ(x->index, RemovedIndex(0));
  EXPECT_EQ(EngineCount(*model_, "Cols"), 2);
}

TEST_F(ModelFilesTest, PathConversionExpandsHomeAndRejectsMalformedUtf8) {
  Guards readers = RecordReaders(std::make_index_sequence<kReaders.size()>());
  // Stray continuation, overlong forms, surrogate, beyond U+10FFFF, cut short.
  for (const char* path : {"\x80.mps", "a\xC0\xAF.mps", "\xE0\x9F\xBF.mps", "\xED\xA0\x80.mps",
                           "\xF4\x90\x80\x80.mps", "\xF5\x80\x80\x80.mps", "x\xE2\x82.mps",
                           "\xC3\x28.mps"}) {
    model_->Read(path);
    ExpectError(*model_, 2, "(FILE) Cannot convert character sequence");
  }
  model_->WriteTuneParam(0, "\xC0\xAF.par");
  ExpectError(*model_, 2, "(FILE) Cannot convert character sequence");
  {
    // "~" with an empty home converts to nothing: code 2 with the kind's message.
    HomeEnv home("", nullptr, nullptr);
    model_->ReadBasis("~");
    ExpectError(*model_, 2, "(FILE) Failed to read basis file");
  }
  EXPECT_EQ(g_entry, kNone);
  // Well-formed sequences of two, three and four bytes, up to U+10FFFF, pass unchanged.
  const char* utf8 = "r\xC3\xA9-\xE2\x82\xAC-\xED\x9F\xBF-\xF0\x9F\x98\x80-\xF4\x8F\xBF\xBF.mps";
  model_->ReadMps(utf8);
  EXPECT_EQ(model_->GetErrorCode(), 0);
  EXPECT_EQ(g_path, utf8);

  // HOME, or HOMEDRIVE + HOMEPATH when HOMEPATH is set; only "~" and "~/...".
  const struct {
    const char *home, *drive, *home_path, *path, *expanded;
  } homes[] = {
      {"/h/me", nullptr, nullptr, "~/a.mps", "/h/me/a.mps"},
      {"/h/me", nullptr, nullptr, "~", "/h/me"},
      {"/h/me", nullptr, nullptr, "~other/a.mps", "~other/a.mps"},
      {"/h/me", nullptr, nullptr, "a/~/b.mps", "a/~/b.mps"},
      {"/h/me", "C:", "\\Users\\me", "~/a.mps", "C:\\Users\\me/a.mps"},
      {"/h/me", nullptr, "/win/me", "~/a.mps", "/win/me/a.mps"},
      {nullptr, "C:", nullptr, "~/a.mps", "~/a.mps"},
      {nullptr, nullptr, nullptr, "~", "~"},
  };
  for (const auto& c : homes) {
    HomeEnv home(c.home, c.drive, c.home_path);
    EXPECT_EQ(ExpandHome(c.path), c.expanded) << c.path;
  }
}

TEST_F(ModelFilesTest, ProblemWritesDeleteRemovedElementsFirst) {
  ElementRef y = model_->Data().Table(kVarKind).records[1];
  y->index = RemovedIndex(1);
  model_->Data().update_flag = 1;
  {
    // A failed deletion stops the write before the engine writer.
    EngineOverride<int (*)(ZELQprob*, int, const int*)> fail(
        &EngineIndex::DelCols, [](ZELQprob*, int, const int*) { return kFail; });
    EngineOverride<PathFn> writer(&EngineIndex::WriteMps, &RecordPath<0>);
    model_->Write(File("a.mps").c_str());
    ExpectError(*model_, kFail, "(SERVER) Fail to del cols");
    EXPECT_EQ(g_entry, kNone);
    EXPECT_EQ(EngineCount(*model_, "Cols"), 2);
  }
  // The engine writes where the home directory points.
  HomeEnv home(dir_.c_str(), nullptr, nullptr);
  model_->Write("~/a.mps");
  EXPECT_EQ(model_->GetErrorCode(), 0);
  EXPECT_EQ(EngineCount(*model_, "Cols"), 1);
  EXPECT_EQ(model_->Data().Table(kVarKind).records.size(), 1u);
  EXPECT_EQ(Slurp(File("a.mps")).find(" y "), std::string::npos);
  EXPECT_NE(Slurp(File("a.mps")).find(" x "), std::string::npos);
}

// A size query reports g_size; a fetch of exactly g_size bytes fails.
int g_size = 0;
int SizeThenFetch(ZELQprob*, char* buff, int buffSize, int* size) {
  ++g_calls;
  if (buff == nullptr) {
    *size = g_size;
    return 0;
  }
  return buffSize == g_size ? kFail : 0;
}

TEST_F(ModelFilesTest, StringFormsQuerySizeThenFetch) {
  using TextFn = int (*)(ZELQprob*, char*, int, int*);
  const struct {
    void (ZelqModel::*op)(IProbBuffer*);
    TextFn EngineIndex::*entry;
    const char *size_failed, *too_large, *fetch_failed;
  } cases[] = {
      {&ZelqModel::WriteMpsString, &EngineIndex::WriteMpsStr,
       "(SERVER) Fail to get required size of MPS problem",
       "(INTERNAL) The size of MPS problem exceeds the limit",
       "(SERVER) Fail to output MPS problem to string"},
      {&ZelqModel::WriteJsonString, &EngineIndex::WriteJsonStr,
       "(SERVER) Fail to write to JSON solution string",
       "(INTERNAL) The size of JSON solution exceeds the limit",
       "(SERVER) Fail to write to JSON solution string"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.too_large);
    ZelqProbBuffer buffer(3);
    SetError(model_->Error(), kFail, "earlier");
    (model_.get()->*c.op)(nullptr);
    ExpectError(*model_, kFail, "(SERVER) earlier");
    {
      EngineOverride<TextFn> fail(c.entry, [](ZELQprob*, char*, int, int*) { return kFail; });
      (model_.get()->*c.op)(&buffer);
      ExpectError(*model_, kFail, c.size_failed);
    }
    EngineOverride<TextFn> fake(c.entry, &SizeThenFetch);
    g_calls = 0;
    g_size = -1;
    (model_.get()->*c.op)(&buffer);
    ExpectError(*model_, 5, c.too_large);
    EXPECT_EQ(g_calls, 1);
    EXPECT_EQ(buffer.GetSize(), 3);
    g_size = 40;
    (model_.get()->*c.op)(&buffer);
    ExpectError(*model_, kFail, c.fetch_failed);
    EXPECT_EQ(buffer.GetSize(), 40);
  }

  // Reading a JSON solution string: null and malformed texts fail with its message.
  model_->ReadJsonString(nullptr);
  ExpectError(*model_, 3, "(INVALID) Failed to read JSON solution string");
  model_->ReadJsonString("{\"columns\": [{\"name\": \"nosuch\", \"value\": 1}]}");
  ExpectError(*model_, 3, "(INVALID) Failed to read JSON solution string");
}

TEST_F(ModelFilesTest, StringFormsMatchTheFilesTheEngineWrites) {
  ZelqProbBuffer mps(0);
  model_->WriteMpsString(&mps);
  ASSERT_EQ(model_->GetErrorCode(), 0);
  model_->Write(File("m.mps").c_str());
  EXPECT_EQ(std::string(mps.GetData()), Slurp(File("m.mps")));

  model_->Solve();
  ZelqProbBuffer json(0);
  model_->WriteJsonString(&json);
  ASSERT_EQ(model_->GetErrorCode(), 0);
  model_->Write(File("s.json").c_str());
  EXPECT_EQ(std::string(json.GetData()), Slurp(File("s.json")));
  auto other = NewLp();
  other->ReadJsonString(json.GetData());
  EXPECT_EQ(other->GetErrorCode(), 0);
}

TEST_F(ModelFilesTest, ProblemFilesRoundTripToTheSameOptimum) {
  ElementRef old_x = model_->Data().Table(kVarKind).records[0];
  for (const char* name : {"p.mps", "p.lp", "p.mps.gz"}) {
    SCOPED_TRACE(name);
    std::string path = File(name);
    // Write knows no compressed endings; the single-kind writer passes the name on.
    if (path.ends_with(".gz")) {
      model_->WriteMps(path.c_str());
    } else {
      model_->Write(path.c_str());
    }
    ASSERT_EQ(model_->GetErrorCode(), 0);
    auto back = Empty();
    delete back->AddVar(0, 1, 0, 'C', "stale");
    ElementRef stale = back->Data().Table(kVarKind).records[0];
    back->Read(path.c_str());
    ASSERT_EQ(back->GetErrorCode(), 0);
    // The model starts over with the file's elements; old handles are invalid.
    EXPECT_EQ(stale->index, kInvalidIndex);
    EXPECT_EQ(back->Data().Table(kVarKind).count, 2);
    EXPECT_EQ(back->Data().Table(kConstrKind).count, 3);
    back->Solve();
    EXPECT_NEAR(back->GetDblAttr("ObjVal"), 36, 1e-9);
  }
  EXPECT_EQ(old_x->index, 0);

  // A failed read leaves the model as it was; so does a failed size read after it.
  model_->Read(File("missing.mps").c_str());
  ExpectError(*model_, 2, "(FILE) Failed to read MPS file");
  EXPECT_EQ(old_x->index, 0);
  EngineOverride<int (*)(ZELQprob*, const char*, int*)> fail(
      &EngineIndex::GetIntAttr, [](ZELQprob*, const char*, int*) { return kFail; });
  model_->Read(File("p.lp").c_str());
  ExpectError(*model_, kFail, "(SERVER) Failed to read LP file");
}

TEST_F(ModelFilesTest, DataFilesRoundTripThroughAFreshModel) {
  model_->SetDblParam("TimeLimit", 12.5);
  const int cols[] = {0, 1};
  const double priorities[] = {5, 0.25};
  ASSERT_EQ(Engine().SetColBranchFactors(model_->Prob(), 2, cols, priorities), 0);
  model_->Solve();
  ASSERT_NEAR(model_->GetDblAttr("ObjVal"), 36, 1e-9);
  // Each file written by the solved model is read into a fresh copy of the
  // problem, which solves and writes it again: the two files agree.
  for (const char* ending : {".sol", ".json", ".bas", ".mst", ".ord", ".par"}) {
    SCOPED_TRACE(ending);
    std::string first = File(std::string("first") + ending);
    std::string second = File(std::string("second") + ending);
    model_->Write(first.c_str());
    ASSERT_EQ(model_->GetErrorCode(), 0);
    auto back = NewLp();
    back->Read(first.c_str());
    ASSERT_EQ(back->GetErrorCode(), 0);
    back->Solve();
    EXPECT_NEAR(back->GetDblAttr("ObjVal"), 36, 1e-9);
    back->Write(second.c_str());
    ASSERT_EQ(back->GetErrorCode(), 0);
    EXPECT_FALSE(Slurp(first).empty());
    EXPECT_EQ(Slurp(second), Slurp(first));
  }
  // Pool solutions come from a MIP search.
  auto back = NewLp();
  const char types[] = "II";
  ASSERT_EQ(Engine().SetColType(back->Prob(), 2, cols, types), 0);
  back->Solve();
  back->WritePoolSol(0, File("pool.sol").c_str());
  EXPECT_EQ(back->GetErrorCode(), 0);
  EXPECT_NE(Slurp(File("pool.sol")).find("\nx 2\n"), std::string::npos);
}

TEST_F(ModelFilesTest, UnsupportedFormatsReportTheEngineCode) {
  const std::pair<const char*, const char*> cases[] = {
      {"in.cbf", "Failed to read CBF file"},    {"in.bin", "Failed to read ZELQ binary file"},
      {"in.dat-s", "Failed to read SDPA file"}, {"in.tune", "Failed to read tuning file"},
      {"out.cbf", "Fail to write to CBF file"}, {"out.bin", "Fail to write to ZELQ binary file"},
      {"out.nl", "Fail to write to NL file"},   {"out.iis", "Fail to write to IIS file"},
      {"out.relax", "Fail to write to feasibility relaxation problem file"}};
  for (const auto& [name, message] : cases) {
    std::string path = File(name);
    path.starts_with(File("in")) ? model_->Read(path.c_str()) : model_->Write(path.c_str());
    ExpectError(*model_, ZELQ_RETCODE_NOTSUPPORTED, std::string("(UNKNOWN) ") + message);
  }
  model_->WriteTuneParam(0, File("out.tune").c_str());
  ExpectError(*model_, ZELQ_RETCODE_NOTSUPPORTED,
              "(UNKNOWN) Fail to write tuned parameters to file");
  EXPECT_EQ(EngineCount(*model_, "Cols"), 2);
}

}  // namespace
}  // namespace Zelq
