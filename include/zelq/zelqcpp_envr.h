// Header layer of the environment: Zelq::Envr, which owns the solver
// engine's environment and makes models, and Zelq::EnvrConfig, settings
// given to the engine before the environment exists.
//
//   Zelq::EnvrConfig config;
//   config.Set("Banner", "0");
//   Zelq::Envr env(config);
//   Zelq::Model model = env.CreateModel("diet");
//
//   std::vector<std::string> lines;
//   Zelq::Envr logged([&](const char* text) { lines.push_back(text); });
//
// The engine environment lives until the Envr and every model made from it
// are gone. Failures throw Zelq::Exception with the recorded code and message.
#ifndef ZELQ_ZELQCPP_ENVR_H_
#define ZELQ_ZELQCPP_ENVR_H_

#include <functional>
#include <memory>
#include <utility>

#include "zelq/zelqcpp_check.h"
#include "zelq/zelqcpp_exports.h"
#include "zelq/zelqcpp_model.h"

namespace Zelq {

class EnvrConfig {
 public:
  EnvrConfig() : config_(detail::Take(CreateEnvrConfig())) {}

  void Set(const char* name, const char* value) {
    config_->Set(name, value);
    detail::Check(config_.get());
  }

  IEnvrConfig* Get() const { return config_.get(); }

 private:
  detail::Handle<IEnvrConfig> config_;
};

class Envr {
 public:
  using LogFunction = std::function<void(const char*)>;

  // The engine banner is printed on standard output.
  Envr() : envr_(detail::Take(CreateEnvr(nullptr))) {}
  explicit Envr(const EnvrConfig& config)
      : envr_(detail::Take(CreateEnvrWithConfig(config.Get(), nullptr))) {}
  // The banner and the library's messages go to `logSink` instead.
  explicit Envr(LogFunction logSink)
      : sink_(MakeSink(std::move(logSink))), envr_(detail::Take(CreateEnvr(sink_.get()))) {}
  Envr(const EnvrConfig& config, LogFunction logSink)
      : sink_(MakeSink(std::move(logSink))),
        envr_(detail::Take(CreateEnvrWithConfig(config.Get(), sink_.get()))) {}

  Model CreateModel(const char* name = "") const { return Model(envr_->CreateModel(name), sink_); }

  // Closes the engine environment; models made from it can no longer solve.
  void Close() {
    const int code = envr_->Close();
    if (code != 0) detail::Fail("Fail to close ZELQ environment", code);
  }

  IEnvr* Get() const { return envr_.get(); }

 private:
  static std::shared_ptr<ILogCallback> MakeSink(LogFunction function) {
    if (!function) return nullptr;
    return std::make_shared<detail::LogSink>(std::move(function));
  }

  // Declared first: the library may write to the sink while the environment
  // is created, and it must outlive the environment.
  std::shared_ptr<ILogCallback> sink_;
  detail::Handle<IEnvr> envr_;
};

}  // namespace Zelq

#endif  // ZELQ_ZELQCPP_ENVR_H_
