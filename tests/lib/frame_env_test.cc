// Environments, their configuration, the banner, the frame's exported
// factories and the problem buffer.
#include <gtest/gtest.h>
#include <unistd.h>

#include <memory>
#include <string>

#include "frame/engine_index.h"
#include "zelq/zelqcpp_exports.h"

namespace Zelq {
namespace {

struct CountingSink : ILogCallback {
  int calls = 0;
  std::string last;
  void DisplayMessage(const char* message) override { ++calls, last = message; }
};

// Counters for engine overrides (overrides are plain function pointers).
int g_calls = 0;
int g_args[2] = {};

size_t Count(const std::string& text, const std::string& part) {
  size_t n = 0;
  for (size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) ++n;
  return n;
}

// Code and message of an object's error record, in one comparable text.
template <class T>
std::string Record(const T& object) {
  const char* message = object->GetErrorMessage();
  return std::to_string(object->GetErrorCode()) + " " + (message ? message : "<null>");
}

std::unique_ptr<IEnvrConfig> Config(const char* name, const char* value) {
  std::unique_ptr<IEnvrConfig> config(CreateEnvrConfig());
  if (name != nullptr) config->Set(name, value);
  return config;
}

// Environment made from a configuration that shows nothing.
std::unique_ptr<IEnvr> QuietEnvr() {
  auto config = Config("Banner", "0");
  return std::unique_ptr<IEnvr>(CreateEnvrWithConfig(config.get(), nullptr));
}

TEST(EnvrCreate, PlainPathAndConfigSucceedAndMakeModels) {
  CountingSink sink;
  char dir[] = "/tmp/zelq_frame_env_XXXXXX";
  ASSERT_NE(::mkdtemp(dir), nullptr);
  auto config = Config("Threads", "2");
  std::unique_ptr<IEnvr> envs[] = {
      std::unique_ptr<IEnvr>(CreateEnvr(&sink)),
      std::unique_ptr<IEnvr>(CreateEnvrWithPath("", &sink)),
      std::unique_ptr<IEnvr>(CreateEnvrWithPath(nullptr, &sink)),
      std::unique_ptr<IEnvr>(CreateEnvrWithPath(dir, &sink)),
      std::unique_ptr<IEnvr>(CreateEnvrWithConfig(config.get(), &sink))};
  ::rmdir(dir);
  config.reset();  // the configuration need not outlive the creation
  EXPECT_EQ(sink.calls, 5);
  EXPECT_EQ(sink.last.rfind("Zelq engine 8.0.7", 0), 0u) << sink.last;
  for (const auto& env : envs) {
    EXPECT_EQ(Record(env), "0 <null>");
    std::unique_ptr<IModel> model(CreateModel(env.get(), "m"));
    EXPECT_EQ(model->GetErrorCode(), 0);
    EXPECT_STREQ(model->GetName(), "m");
  }
}

TEST(EnvrCreate, FailuresStillReturnAnEnvironmentWithTheCode) {
  CountingSink sink;
  std::unique_ptr<IEnvr> missing(CreateEnvrWithPath("/nonexistent/zelq/dir", &sink));
  EXPECT_EQ(Record(missing), "2 (FILE) Fail to create ZELQ environment with path");
  {
    EngineOverride fail(&EngineIndex::CreateEnvWithPath, [](auto...) { return 5; });
    EXPECT_EQ(Record(std::unique_ptr<IEnvr>(CreateEnvr(&sink))),
              "5 (INTERNAL) Fail to create ZELQ environment");
  }
  g_calls = 0;
  {
    EngineOverride fail(&EngineIndex::CreateEnvWithConfig, [](auto...) { return ++g_calls, 3; });
    struct ForeignConfig : IEnvrConfig {
      void Set(const char*, const char*) override {}
      int GetErrorCode() const override { return 0; }
      const char* GetErrorMessage() const override { return nullptr; }
    } foreign;
    auto ours = Config(nullptr, nullptr);
    // Null and foreign configurations are refused before the engine is asked.
    for (IEnvrConfig* config : {ours.get(), static_cast<IEnvrConfig*>(&foreign),
                                static_cast<IEnvrConfig*>(nullptr)}) {
      EXPECT_EQ(Record(std::unique_ptr<IEnvr>(CreateEnvrWithConfig(config, &sink))),
                "3 (INVALID) Fail to create ZELQ environment with config");
    }
    EXPECT_EQ(g_calls, 1);
  }
  // A failed banner fetch stops before the engine environment is made.
  g_calls = 0;
  EngineOverride count(&EngineIndex::CreateEnvWithPath, [](auto...) { return ++g_calls, 0; });
  EngineOverride fail(&EngineIndex::GetBanner, [](auto...) { return 1; });
  EXPECT_EQ(Record(std::unique_ptr<IEnvr>(CreateEnvr(&sink))),
            "1 (MEMORY) Fail to create ZELQ environment");
  EXPECT_EQ(Record(std::unique_ptr<IEnvr>(CreateEnvrWithPath("", nullptr))),
            "1 (MEMORY) Fail to create ZELQ environment with path");
  EXPECT_EQ(g_calls, 0);
  EXPECT_EQ(sink.calls, 0);  // no banner for a failed creation
}

TEST(Banner, ShownOnceWhereTheSettingsSay) {
  // The engine itself prints nothing when it makes an environment.
  testing::internal::CaptureStdout();
  ZELQenv* raw = nullptr;
  ASSERT_EQ(DefaultEngine().CreateEnvWithPath(nullptr, &raw), 0);
  DefaultEngine().DeleteEnv(&raw);
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "");

  testing::internal::CaptureStdout();
  std::unique_ptr<IEnvr>(CreateEnvr(nullptr));
  std::string out = testing::internal::GetCapturedStdout();
  EXPECT_EQ(Count(out, "Zelq engine 8.0.7"), 1u) << out;
  EXPECT_EQ(out.back(), '\n');

  // {key, value, sink given, calls to the sink, banners on stdout}
  struct Case {
    const char* name;
    const char* value;
    bool sink;
    int calls;
    size_t printed;
  } cases[] = {{nullptr, nullptr, false, 0, 1}, {nullptr, nullptr, true, 1, 0},
               {"Banner", "0", false, 0, 0},    {"Banner", "0", true, 0, 0},
               {"Logging", "0", false, 0, 0},   {"logging", " 0 ", true, 0, 0},
               {"LogToConsole", "0", false, 0, 0}, {"LOGTOCONSOLE", "0", true, 1, 0},
               {"Banner", "2", false, 0, 1},    {"Threads", "0", true, 1, 0}};
  for (const Case& c : cases) {
    auto config = Config(c.name, c.value);
    CountingSink sink;
    testing::internal::CaptureStdout();
    std::unique_ptr<IEnvr>(CreateEnvrWithConfig(config.get(), c.sink ? &sink : nullptr));
    out = testing::internal::GetCapturedStdout();
    EXPECT_EQ(sink.calls, c.calls) << (c.name ? c.name : "-") << " sink " << c.sink;
    EXPECT_EQ(Count(out, "Zelq engine"), c.printed) << (c.name ? c.name : "-");
  }
  // When nothing is to be shown the banner is not even fetched.
  g_calls = 0;
  EngineOverride count(&EngineIndex::GetBanner, [](auto...) { return ++g_calls, 0; });
  QuietEnvr();
  EXPECT_EQ(g_calls, 0);
}

TEST(EnvrConfig, SetRecordsFailuresAndTheHandleIsDeletedOnce) {
  auto config = Config("NoSuchKey", "1");
  EXPECT_EQ(Record(config), "3 (INVALID) Fail to set ZELQ environment config");
  config->Set("Threads", "4");
  EXPECT_EQ(config->GetErrorCode(), 0);  // success clears the code
  g_calls = 0;
  {
    EngineOverride fail(&EngineIndex::SetEnvConfig, [](auto...) { return ++g_calls, 5; });
    config->Set(nullptr, "1");
    EXPECT_EQ(config->GetErrorCode(), 3);
    config->Set("Logging", nullptr);
    EXPECT_EQ(config->GetErrorCode(), 3);
    EXPECT_EQ(g_calls, 0);  // null arguments never reach the engine
    config->Set("Banner", "0");
    EXPECT_EQ(Record(config), "5 (INTERNAL) Fail to set ZELQ environment config");
  }
  CountingSink sink;
  std::unique_ptr<IEnvr>(CreateEnvrWithConfig(config.get(), &sink));
  EXPECT_EQ(sink.calls, 1);  // the refused "Banner" setting was not remembered
  {
    EngineOverride fail(&EngineIndex::CreateEnvConfig, [](auto...) { return 1; });
    auto broken = Config(nullptr, nullptr);
    EXPECT_EQ(Record(broken), "1 (MEMORY) Fail to create ZELQ environment config");
    broken->Set("Logging", "0");
    EXPECT_EQ(broken->GetErrorCode(), 3);  // the engine refuses a null configuration
  }
  g_calls = 0;
  EngineOverride count(&EngineIndex::DeleteEnvConfig,
                       [](auto c) { return ++g_calls, DefaultEngine().DeleteEnvConfig(c); });
  Config(nullptr, nullptr);
  EXPECT_EQ(g_calls, 1);
}

TEST(Envr, PlacementOperationsPassArgumentsAndRecordEngineCodes) {
  std::unique_ptr<IEnvr> env = QuietEnvr();
  EXPECT_GE(env->GetNumaNodeCount(), 1);
  EXPECT_GE(env->GetCpuAffinity(0, -1), 1);
  EXPECT_EQ(env->GetErrorCode(), 0);
  {
    EngineOverride fail(&EngineIndex::GetNumaNodeCount,
                        [](auto, int* count) { return *count = 4, 3; });
    EXPECT_EQ(env->GetNumaNodeCount(), 0);
    EXPECT_EQ(Record(env), "3 (INVALID) Fail to get number of NUMA nodes");
  }
  {
    EngineOverride fail(&EngineIndex::GetCpuAffinity, [](ZELQenv*, int a, int b, int* n) {
      return *n = 99, g_args[0] = a * 10 + b, 6;
    });
    EXPECT_EQ(env->GetCpuAffinity(2, 5), 0);
    EXPECT_EQ(g_args[0], 25);
    EXPECT_EQ(Record(env), "6 (THREAD) Fail to get CPU affinity");
  }
  {
    EngineOverride set(&EngineIndex::SetCpuAffinity, [](ZELQenv*, int a, int b, int c) {
      return g_args[0] = a * 100 + b * 10 + c, 3;
    });
    EngineOverride cpu(&EngineIndex::BindNumaCpu, [](ZELQenv*, int node, int flags) {
      return g_args[1] = node * 10 + flags, 3;
    });
    EngineOverride mem(&EngineIndex::BindNumaMem, [](ZELQenv*, int, int) { return 2; });
    env->SetCpuAffinity(1, 2, 7);
    EXPECT_EQ(Record(env), "3 (INVALID) Fail to set CPU affinity");
    env->BindNumaCpu(3, 9);
    EXPECT_EQ(Record(env), "3 (INVALID) Fail to bind CPU to NUMA node 3");
    EXPECT_EQ(g_args[0] * 100 + g_args[1], 12739);  // arguments passed on unchanged
    env->BindNumaMem(-7, 0);
    EXPECT_EQ(Record(env), "2 (FILE) Fail to bind memory to NUMA node -7");
  }
  EXPECT_GE(env->GetNumaNodeCount(), 1);
  EXPECT_EQ(env->GetErrorCode(), 0);
}

TEST(Envr, CloseReturnsTheEngineCodeUnrecorded) {
  std::unique_ptr<IEnvr> env = QuietEnvr();
  {
    EngineOverride fail(&EngineIndex::CloseEnv, [](ZELQenv**) { return 7; });
    EXPECT_EQ(env->Close(), 7);
    EXPECT_EQ(Record(env), "0 <null>");
  }
  std::unique_ptr<IModel> before(env->CreateModel("before"));
  EXPECT_EQ(env->Close(), 0);
  std::unique_ptr<IModel> after(env->CreateModel("after"));
  EXPECT_EQ(after->GetErrorCode(), 3);  // a closed environment makes no problems
  EXPECT_EQ(before->GetErrorCode(), 0);
}

TEST(Envr, EngineEnvironmentLivesUntilTheLastModelIsGone) {
  g_calls = 0;
  EngineOverride count(&EngineIndex::DeleteEnv,
                       [](ZELQenv** env) { return ++g_calls, DefaultEngine().DeleteEnv(env); });
  std::unique_ptr<IEnvr> env = QuietEnvr();
  std::unique_ptr<IModel> first(CreateModel(env.get(), "first"));
  std::unique_ptr<IModel> second(env->CreateModel(nullptr));
  EXPECT_EQ(first->GetErrorCode(), 0);
  EXPECT_STREQ(second->GetName(), "");
  env.reset();
  first.reset();
  EXPECT_EQ(g_calls, 0);
  second.reset();
  EXPECT_EQ(g_calls, 1);
  QuietEnvr();
  EXPECT_EQ(g_calls, 2);
  std::unique_ptr<IEnvr>(CreateEnvrWithPath("/nonexistent/zelq/dir", nullptr));
  EXPECT_EQ(g_calls, 2);  // no engine environment was made
}

TEST(FrameExports, ModelWithoutEnvironmentVersionAndBuffers) {
  EXPECT_EQ(Record(std::unique_ptr<IModel>(CreateModel(nullptr, "m"))),
            "3 (INVALID) Invalid environment");
  EXPECT_EQ(GetLibVersion(0) * 100 + GetLibVersion(1) * 10 + GetLibVersion(2), 807);
  EXPECT_EQ(GetLibVersion(3), -1);
  EXPECT_EQ(GetLibVersion(-1), -1);

  for (int size : {0, -4}) {
    std::unique_ptr<IProbBuffer> empty(CreateProbBuffer(size));
    EXPECT_EQ(empty->GetSize(), 0);
    EXPECT_EQ(empty->GetData()[0], '\0');
  }
  std::unique_ptr<IProbBuffer> buffer(CreateProbBuffer(5));
  ASSERT_EQ(buffer->GetSize(), 5);
  EXPECT_EQ(std::string(buffer->GetData(), 6), std::string(6, '\0'));
  std::string("abcde").copy(buffer->GetData(), 5);
  buffer->Resize(-1);  // refused: nothing lost
  EXPECT_STREQ(buffer->GetData(), "abcde");
  buffer->Resize(3);
  EXPECT_EQ(buffer->GetSize(), 3);
  EXPECT_STREQ(buffer->GetData(), "abc");
  buffer->GetData()[3] = 'x';  // a stray write on the terminator is cleared by growing
  buffer->Resize(7);
  EXPECT_EQ(buffer->GetSize(), 7);
  EXPECT_EQ(std::string(buffer->GetData(), 8), std::string("abc") + std::string(5, '\0'));
}

}  // namespace
}  // namespace Zelq
