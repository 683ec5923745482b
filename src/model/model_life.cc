// Model creation, name, resets, clearing and copying.
#include "frame/engine_index.h"
#include "model/zelq_model.h"

namespace Zelq {
namespace {

// Wraps a new core around `data` in a new handle.
IModel* WrapModel(ModelData* data) {
  Shared<ModelData> shared = Shared<ModelData>::Wrap(data);
  auto* core = new ModelCore;
  core->data = std::move(shared);
  return new ZelqModel(Shared<ModelCore>::Wrap(core));
}

}  // namespace

IModel* NewModel(const Shared<EnvBox>& env, const char* name) {
  auto* data = new ModelData;
  data->env = env;
  data->prob = ProbRef::Wrap(new ProbBox(env ? env->env : nullptr));
  if (name != nullptr && name[0] != '\0') data->name = name;
  int status = data->prob->status;
  IModel* model = WrapModel(data);
  if (status != 0) {
    SetError(static_cast<ZelqModel*>(model)->Error(), status, "Critical: fail to create problem");
  }
  return model;
}

const char* ZelqModel::GetName() const { return Data().name.c_str(); }

void ZelqModel::ResetParam() {
  SetError(Error(), Engine().ResetParam(Prob()), "Fail to reset parameter settings");
}

void ZelqModel::ResetAll() {
  SetError(Error(), Engine().Reset(Prob(), 1), "Fail to reset solution and additional information");
}

void ZelqModel::Reset() { SetError(Error(), Engine().Reset(Prob(), 0), "Fail to reset solution"); }

void ZelqModel::Clear() {
  ErrorRecord& error = Error();
  ZELQprob* prob = Prob();
  SetError(error, Engine().Reset(prob, 1), "Fail to reset solution and additional information");
  if (error.Failed()) return;
  SetError(error, Engine().ResetParam(prob), "Fail to reset parameter settings");
  if (error.Failed()) return;
  Core().user_callback = nullptr;
  SetError(error, Engine().SetCallback(prob, nullptr, 0, nullptr), "Fail to clean user callback");
  if (error.Failed()) return;
  SetError(error, Engine().ClearProb(prob), "Fail to clear problem");
  if (error.Failed()) return;
  Data().DetachAll();
  Data().update_flag = 0;
  for (std::vector<double>& list : Core().work) list.clear();
  Core().mip_start.clear();
}

IModel* ZelqModel::Clone() {
  if (!Compact()) return nullptr;
  ModelData& source = Data();
  auto* data = new ModelData;
  data->env = source.env;
  data->prob = ProbRef::Wrap(new ProbBox(*source.prob));
  data->name = source.name + "_copy";
  data->settings = source.settings;
  IModel* copy = WrapModel(data);
  if (data->Prob() == nullptr) {
    SetError(Error(), kErrorMEMORY, "Critical: fail to clone problem");
    return copy;
  }
  // The copy starts with records for the elements the source holds, so that
  // GetVar/GetConstr on the copy find them.
  for (int kind = 0; kind < kElementKindCount; ++kind) {
    for (const ElementRef& ref : source.tables[kind].records) {
      data->Append(static_cast<ElementKind>(kind), ref->name.empty() ? nullptr : ref->name.c_str());
    }
  }
  ZELQprob* prob = data->Prob();
  int psd_count = static_cast<int>(source.psd_dims.size());
  if (psd_count > 0) {
    data->psd_dims.assign(psd_count, 0);
    int rc = Engine().GetPSDCols(prob, psd_count, nullptr, data->psd_dims.data(), nullptr);
    SetError(Error(), rc, "Fail to load dimensions of PSD variables");
    if (rc != 0) return copy;
  }
  int lmi_count = static_cast<int>(source.lmi_dims.size());
  if (lmi_count > 0) {
    data->lmi_dims.assign(lmi_count, 0);
    for (int i = 0; i < lmi_count; ++i) {
      int rc = Engine().GetLMIConstr(prob, i, &data->lmi_dims[i], nullptr, nullptr, nullptr,
                                     nullptr, 0, nullptr);
      SetError(Error(), rc, "Fail to load dimensions of LMI constraints");
      if (rc != 0) return copy;
    }
  }
  return copy;
}

}  // namespace Zelq
