// ZelqEnvrConfig: the implementation of Zelq::IEnvrConfig.
//
// The core shares a box that owns the engine configuration handle (deleted
// with ZELQ_DeleteEnvConfig when the last reference goes) together with the
// banner settings the configuration was given, and keeps an error record.
#ifndef ZELQ_FRAME_ZELQ_ENVR_CONFIG_H_
#define ZELQ_FRAME_ZELQ_ENVR_CONFIG_H_

#include "frame/banner_settings.h"
#include "frame/error_record.h"
#include "frame/shared_block.h"
#include "zelq/zelq.h"
#include "zelq/zelqcpp_envr_iface.h"

namespace Zelq {

struct ConfigBox {
  ZELQenvconfig* config = nullptr;
  BannerSettings banner;

  ConfigBox() = default;
  ~ConfigBox() noexcept;
  ConfigBox(const ConfigBox&) = delete;
  ConfigBox& operator=(const ConfigBox&) = delete;
};

struct EnvrConfigCore {
  Shared<ConfigBox> box;
  ErrorRecord error;
};

class ZelqEnvrConfig final : public IEnvrConfig {
 public:
  // Creates the engine configuration (ZELQ_CreateEnvConfig); a failure is
  // kept in the record, and Set then fails in the engine.
  ZelqEnvrConfig();

  void Set(const char* name, const char* value) override;
  int GetErrorCode() const override { return core_->error.Code(); }
  const char* GetErrorMessage() const override { return core_->error.Message(); }

  ConfigBox& Box() const { return *core_->box; }

 private:
  Shared<EnvrConfigCore> core_;
};

}  // namespace Zelq

#endif  // ZELQ_FRAME_ZELQ_ENVR_CONFIG_H_
