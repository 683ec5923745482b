#include "frame/zelq_envr_config.h"

#include "frame/engine_index.h"

namespace Zelq {

ConfigBox::~ConfigBox() noexcept {
  if (config != nullptr) Engine().DeleteEnvConfig(&config);
}

ZelqEnvrConfig::ZelqEnvrConfig() {
  Shared<ConfigBox> box = Shared<ConfigBox>::Wrap(new ConfigBox);
  int rc = Engine().CreateEnvConfig(&box->config);
  core_ = Shared<EnvrConfigCore>::Wrap(new EnvrConfigCore{std::move(box), ErrorRecord()});
  SetError(core_->error, rc, "Fail to create ZELQ environment config");
}

void ZelqEnvrConfig::Set(const char* name, const char* value) {
  ErrorRecord& error = core_->error;
  if (name == nullptr || value == nullptr) {
    SetError(error, kErrorINVALID, "Fail to set ZELQ environment config");
    return;
  }
  ConfigBox& box = *core_->box;
  SetError(error, Engine().SetEnvConfig(box.config, name, value),
           "Fail to set ZELQ environment config");
  if (!error.Failed()) box.banner.Remember(name, value);
}

}  // namespace Zelq
