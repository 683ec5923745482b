// Environment creation from nothing, a directory path or a configuration.
#include <memory>

#include "frame/banner_settings.h"
#include "frame/engine_index.h"
#include "frame/zelq_envr.h"
#include "frame/zelq_envr_config.h"

namespace Zelq {
namespace {

// Fetches the banner (when it is to be shown) before `create` makes the
// engine environment in the box, shows it on success and records the
// outcome with `message`.
template <class CreateFn>
IEnvr* Build(ILogCallback* sink, const BannerSettings& settings, const char* message,
             CreateFn create) {
  auto envr = std::make_unique<ZelqEnvr>(sink);
  ErrorRecord& error = envr->Error();
  char banner[1024] = {};
  if (settings.Wanted(sink)) {
    int rc = Engine().GetBanner(banner, 1020);
    if (rc != 0) {
      SetError(error, rc, "%s", message);
      return envr.release();
    }
  }
  int rc = create(&envr->Box()->env);
  if (rc == 0) settings.Show(banner, sink);
  SetError(error, rc, "%s", message);
  return envr.release();
}

}  // namespace

IEnvr* NewEnvr(ILogCallback* sink) {
  return Build(sink, BannerSettings(), "Fail to create ZELQ environment",
               [](ZELQenv** env) { return Engine().CreateEnvWithPath(nullptr, env); });
}

IEnvr* NewEnvrWithPath(const char* path, ILogCallback* sink) {
  return Build(sink, BannerSettings(), "Fail to create ZELQ environment with path",
               [path](ZELQenv** env) { return Engine().CreateEnvWithPath(path, env); });
}

IEnvr* NewEnvrWithConfig(IEnvrConfig* config, ILogCallback* sink) {
  static constexpr char kMessage[] = "Fail to create ZELQ environment with config";
  auto* own = dynamic_cast<ZelqEnvrConfig*>(config);
  if (own == nullptr) {
    auto envr = std::make_unique<ZelqEnvr>(sink);
    SetError(envr->Error(), kErrorINVALID, "%s", kMessage);
    return envr.release();
  }
  ConfigBox& box = own->Box();
  return Build(sink, box.banner, kMessage,
               [&box](ZELQenv** env) { return Engine().CreateEnvWithConfig(box.config, env); });
}

}  // namespace Zelq
