// Exported factories of the frame: environments, their configuration,
// models, the problem buffer and the library version.
#include "frame/prob_buffer.h"
#include "frame/zelq_envr.h"
#include "frame/zelq_envr_config.h"
#include "model/zelq_model.h"
#include "zelq/zelq.h"
#include "zelq/zelqcpp_exports.h"

extern "C" {

ZELQCPP_API Zelq::IEnvr* CreateEnvr(Zelq::ILogCallback* sink) { return Zelq::NewEnvr(sink); }

ZELQCPP_API Zelq::IEnvr* CreateEnvrWithPath(const char* path, Zelq::ILogCallback* sink) {
  return Zelq::NewEnvrWithPath(path, sink);
}

ZELQCPP_API Zelq::IEnvr* CreateEnvrWithConfig(Zelq::IEnvrConfig* config,
                                              Zelq::ILogCallback* sink) {
  return Zelq::NewEnvrWithConfig(config, sink);
}

ZELQCPP_API Zelq::IEnvrConfig* CreateEnvrConfig() { return new Zelq::ZelqEnvrConfig; }

// The environment makes the model, which shares its engine environment. A
// null environment still yields a model; its record holds code 3.
ZELQCPP_API Zelq::IModel* CreateModel(Zelq::IEnvr* env, const char* name) {
  if (env != nullptr) return env->CreateModel(name);
  Zelq::IModel* model = Zelq::NewModel(Zelq::Shared<Zelq::EnvBox>(), name);
  Zelq::SetError(static_cast<Zelq::ZelqModel*>(model)->Error(), Zelq::kErrorINVALID,
                 "Invalid environment");
  return model;
}

ZELQCPP_API Zelq::IProbBuffer* CreateProbBuffer(int size) {
  return new Zelq::ZelqProbBuffer(size);
}

ZELQCPP_API int GetLibVersion(int part) {
  switch (part) {
    case 0: return ZELQ_VERSION_MAJOR;
    case 1: return ZELQ_VERSION_MINOR;
    case 2: return ZELQ_VERSION_TECHNICAL;
    default: return -1;
  }
}

}  // extern "C"
