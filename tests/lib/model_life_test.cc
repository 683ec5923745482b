// Model lifecycle: creation, names, copies, clearing, resets, and the
// release of the engine problem.
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "frame/engine_index.h"
#include "model/zelq_model.h"

namespace Zelq {
namespace {

std::vector<std::string> g_calls;

class ModelLifeTest : public ::testing::Test {
 protected:
  void SetUp() override {
    g_calls.clear();
    env_ = Shared<EnvBox>::Wrap(new EnvBox);
    ASSERT_EQ(Engine().CreateEnvWithPath(nullptr, &env_->env), 0);
  }
  std::unique_ptr<ZelqModel> Make(const char* name) {
    auto* model = static_cast<ZelqModel*>(NewModel(env_, name));
    Engine().SetIntParam(model->Prob(), "Logging", 0);
    return std::unique_ptr<ZelqModel>(model);
  }
  static std::string Message(const IModel& model) {
    const char* text = model.GetErrorMessage();
    return text != nullptr ? text : "";
  }
  Shared<EnvBox> env_;
};

TEST_F(ModelLifeTest, NamesAndCopies) {
  auto unnamed = Make(nullptr);
  EXPECT_STREQ(unnamed->GetName(), "");
  std::unique_ptr<IModel> unnamed_copy(unnamed->Clone());
  EXPECT_STREQ(unnamed_copy->GetName(), "_copy");

  auto model = Make("plants");
  std::unique_ptr<IVar> x(model->AddVar(0, 4, 1, 'C', "x"));
  std::unique_ptr<IVar> y(model->AddVar(0, 4, 1, 'C', "y"));
  y->Remove();  // deleted before the copy is made
  std::unique_ptr<IModel> copy(model->Clone());
  EXPECT_STREQ(copy->GetName(), "plants_copy");
  EXPECT_EQ(copy->GetIntAttr("Cols"), 1);
  std::unique_ptr<IVar> copied_x(copy->GetVar(0));
  EXPECT_STREQ(copied_x->GetName(), "x");
  // The copy is independent: changes to one do not reach the other.
  std::unique_ptr<IVar> z(copy->AddVar(0, 1, 0, 'C', "z"));
  EXPECT_EQ(z->GetIdx(), 1);
  EXPECT_EQ(copy->GetIntAttr("Cols"), 2);
  EXPECT_EQ(model->GetIntAttr("Cols"), 1);
  copied_x->Set("UB", 9);
  EXPECT_EQ(x->Get("UB"), 4);
}

TEST_F(ModelLifeTest, FailedCreationAndCopyAreRecorded) {
  {
    EngineOverride fail(&EngineIndex::CreateProb, [](ZELQenv*, ZELQprob**) { return 1; });
    auto model = Make("m");
    EXPECT_EQ(model->GetErrorCode(), 1);
    EXPECT_EQ(Message(*model), "(MEMORY) Critical: fail to create problem");
    EXPECT_EQ(model->Prob(), nullptr);
  }
  auto model = Make("m");
  EngineOverride fail(&EngineIndex::CreateCopy, [](ZELQprob*, ZELQprob** copy) {
    *copy = nullptr;
    return 7;
  });
  std::unique_ptr<IModel> copy(model->Clone());
  ASSERT_NE(copy, nullptr);
  EXPECT_EQ(model->GetErrorCode(), 1);
  EXPECT_EQ(Message(*model), "(MEMORY) Critical: fail to clone problem");
}

TEST_F(ModelLifeTest, ClearStopsAtTheFirstFailureAndOtherwiseEmptiesTheModel) {
  auto model = Make("m");
  std::unique_ptr<IVar> x(model->AddVar(0, 1, 1, 'C', "x"));
  {
    EngineOverride fail(&EngineIndex::Reset, [](ZELQprob*, int) { return 5; });
    EngineOverride count(&EngineIndex::ClearProb, [](ZELQprob*) {
      g_calls.push_back("ClearProb");
      return 0;
    });
    model->Clear();
    EXPECT_EQ(Message(*model), "(INTERNAL) Fail to reset solution and additional information");
    EXPECT_TRUE(g_calls.empty());
    EXPECT_EQ(x->GetIdx(), 0);
  }
  {
    EngineOverride fail(&EngineIndex::ClearProb, [](ZELQprob*) { return 3; });
    model->Clear();
    EXPECT_EQ(Message(*model), "(INVALID) Fail to clear problem");
    EXPECT_EQ(x->GetIdx(), 0);
  }
  {
    // The callback is removed from the engine before the problem is cleared.
    EngineOverride callback(&EngineIndex::SetCallback, [](ZELQprob*, ZELQcallback cb, int, void*) {
      g_calls.push_back(cb == nullptr ? "SetCallback(null)" : "SetCallback");
      return 0;
    });
    EngineOverride clear(&EngineIndex::ClearProb, [](ZELQprob* prob) {
      g_calls.push_back("ClearProb");
      return DefaultEngine().ClearProb(prob);
    });
    model->Clear();
  }
  EXPECT_EQ(g_calls, (std::vector<std::string>{"SetCallback(null)", "ClearProb"}));
  EXPECT_EQ(model->GetErrorCode(), 0);
  EXPECT_EQ(model->GetIntAttr("Cols"), 0);
  EXPECT_EQ(x->GetIdx(), -2);  // old handles are detached
  x->Set("UB", 3);
  EXPECT_EQ(x->GetErrorCode(), 3);
  std::unique_ptr<IVar> y(model->AddVar(0, 1, 1, 'C', "y"));
  EXPECT_EQ(y->GetIdx(), 0);
}

TEST_F(ModelLifeTest, ResetsRecordTheirOwnMessages) {
  auto model = Make("m");
  model->SetIntParam("Threads", 3);
  model->ResetParam();
  EXPECT_EQ(model->GetIntParam("Threads"), -1);
  EngineOverride reset(&EngineIndex::Reset, [](ZELQprob*, int) { return 6; });
  model->ResetAll();
  EXPECT_EQ(Message(*model), "(THREAD) Fail to reset solution and additional information");
  model->Reset();
  EXPECT_EQ(Message(*model), "(THREAD) Fail to reset solution");
  EngineOverride param(&EngineIndex::ResetParam, [](ZELQprob*) { return 2; });
  model->ResetParam();
  EXPECT_EQ(Message(*model), "(FILE) Fail to reset parameter settings");
}

TEST_F(ModelLifeTest, TheEngineProblemGoesWithTheLastModelHandle) {
  static int deleted = 0;
  deleted = 0;
  EngineOverride count(&EngineIndex::DeleteProb, [](ZELQprob** prob) {
    ++deleted;
    return DefaultEngine().DeleteProb(prob);
  });
  auto model = Make("m");
  std::unique_ptr<IVar> x(model->AddVar(0, 1, 1, 'C', "x"));
  std::unique_ptr<IModel> copy(model->Clone());
  model.reset();
  EXPECT_EQ(deleted, 1);  // the source's problem; the copy keeps its own
  EXPECT_EQ(x->GetIdx(), -2);
  EXPECT_EQ(x->Get("UB"), 1e30);
  copy.reset();
  EXPECT_EQ(deleted, 2);
}

}  // namespace
}  // namespace Zelq
