// ZelqEnvr: the implementation of Zelq::IEnvr.
//
// The core shares the environment box (the engine environment and the
// message sink) with every model made from it, so the engine environment is
// deleted only when the environment object and all its models are gone.
// Placement operations pass their arguments to the engine unchanged and
// record a failure with the engine's code.
//
//   IEnvr* env = NewEnvr(nullptr);          // prints the banner once
//   if (env->GetErrorCode() != 0) { ... }   // a failed creation still returns
#ifndef ZELQ_FRAME_ZELQ_ENVR_H_
#define ZELQ_FRAME_ZELQ_ENVR_H_

#include "frame/engine_boxes.h"
#include "frame/error_record.h"
#include "frame/shared_block.h"
#include "zelq/zelqcpp_envr_iface.h"

namespace Zelq {

struct EnvrCore {
  Shared<EnvBox> box;
  ErrorRecord error;
};

class ZelqEnvr final : public IEnvr {
 public:
  // A core with an empty environment box that keeps `sink` (not owned).
  explicit ZelqEnvr(ILogCallback* sink);

  IModel* CreateModel(const char* name) override;
  int Close() override;
  int GetCpuAffinity(int cpuStart, int cpuCount) override;
  void SetCpuAffinity(int cpuStart, int cpuCount, int mode) override;
  void BindNumaCpu(int node, int flags) override;
  void BindNumaMem(int node, int flags) override;
  int GetNumaNodeCount() override;
  int GetErrorCode() const override { return core_->error.Code(); }
  const char* GetErrorMessage() const override { return core_->error.Message(); }

  const Shared<EnvBox>& Box() const { return core_->box; }
  ErrorRecord& Error() const { return core_->error; }

 private:
  Shared<EnvrCore> core_;
};

// Environment creation: the banner is fetched first when it is to be shown,
// shown after a successful creation, and the creation's code recorded with
// "Fail to create ZELQ environment" (... " with path", " with config").
IEnvr* NewEnvr(ILogCallback* sink);
IEnvr* NewEnvrWithPath(const char* path, ILogCallback* sink);
// `config` must be a configuration made by this library; anything else
// (null included) gives code 3 without an engine call.
IEnvr* NewEnvrWithConfig(IEnvrConfig* config, ILogCallback* sink);

}  // namespace Zelq

#endif  // ZELQ_FRAME_ZELQ_ENVR_H_
