#include "frame/zelq_envr.h"

#include "frame/engine_index.h"
#include "model/zelq_model.h"

namespace Zelq {

ZelqEnvr::ZelqEnvr(ILogCallback* sink) {
  Shared<EnvBox> box = Shared<EnvBox>::Wrap(new EnvBox(sink));
  core_ = Shared<EnvrCore>::Wrap(new EnvrCore{std::move(box), ErrorRecord()});
}

IModel* ZelqEnvr::CreateModel(const char* name) { return NewModel(core_->box, name); }

int ZelqEnvr::Close() { return Engine().CloseEnv(&core_->box->env); }

int ZelqEnvr::GetCpuAffinity(int cpuStart, int cpuCount) {
  int allowed = 0;
  int rc = Engine().GetCpuAffinity(core_->box->env, cpuStart, cpuCount, &allowed);
  SetError(core_->error, rc, "Fail to get CPU affinity");
  return rc == 0 ? allowed : 0;
}

void ZelqEnvr::SetCpuAffinity(int cpuStart, int cpuCount, int mode) {
  SetError(core_->error, Engine().SetCpuAffinity(core_->box->env, cpuStart, cpuCount, mode),
           "Fail to set CPU affinity");
}

void ZelqEnvr::BindNumaCpu(int node, int flags) {
  SetError(core_->error, Engine().BindNumaCpu(core_->box->env, node, flags),
           "Fail to bind CPU to NUMA node %d", node);
}

void ZelqEnvr::BindNumaMem(int node, int flags) {
  SetError(core_->error, Engine().BindNumaMem(core_->box->env, node, flags),
           "Fail to bind memory to NUMA node %d", node);
}

int ZelqEnvr::GetNumaNodeCount() {
  int count = 0;
  int rc = Engine().GetNumaNodeCount(core_->box->env, &count);
  SetError(core_->error, rc, "Fail to get number of NUMA nodes");
  return rc == 0 ? count : 0;
}

}  // namespace Zelq
