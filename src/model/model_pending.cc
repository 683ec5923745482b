// Operations of the families a later release provides: each records code 3
// with a message naming the operation and returns an empty result, so a
// caller never mistakes them for success.
#include <type_traits>

#include "frame/error_record.h"
#include "model/zelq_model.h"

#pragma GCC diagnostic ignored "-Wunused-parameter"

namespace Zelq {
namespace {

template <class T>
T EmptyResult() {
  if constexpr (std::is_void_v<T>) {
    return;
  } else if constexpr (std::is_pointer_v<T>) {
    return nullptr;
  } else if constexpr (std::is_floating_point_v<T>) {
    return 1e30;
  } else {
    return -1;
  }
}

}  // namespace

#define ZELQ_PENDING(result, name, params, qualifier)                                     \
  result ZelqModel::name params qualifier {                                               \
    SetError(Error(), kErrorINVALID, "Operation %s is not available in this version", #name); \
    return EmptyResult<result>();                                                          \
  }
#define ZELQ_PENDING_File(...)
#define ZELQ_PENDING_MVar ZELQ_PENDING
#define ZELQ_PENDING_MConstr ZELQ_PENDING
#define ZELQ_PENDING_Nl ZELQ_PENDING
#define ZELQ_PENDING_Sos ZELQ_PENDING
#define ZELQ_PENDING_Gen ZELQ_PENDING
#define ZELQ_PENDING_Cone ZELQ_PENDING
#define ZELQ_PENDING_Quad ZELQ_PENDING
#define ZELQ_PENDING_MQuad ZELQ_PENDING
#define ZELQ_PENDING_Psd ZELQ_PENDING
#define ZELQ_PENDING_MPsd ZELQ_PENDING
#define ZELQ_PENDING_Lmi ZELQ_PENDING
#define ZELQ_PENDING_Cut ZELQ_PENDING
#define ZELQ_PENDING_SymMat ZELQ_PENDING
#define ZELQ_PENDING_MultiObj ZELQ_PENDING
#define ZELQ_PENDING_Relax ZELQ_PENDING
#define ZELQ_PENDING_MRemove ZELQ_PENDING
#define ZELQ_PENDING_RemoveLater ZELQ_PENDING
#define ZELQ_PENDING_Callback ZELQ_PENDING
#define ZELQ_PENDING_Builder ZELQ_PENDING
// Families of this release: a family defined in its own file maps to nothing.
#define ZELQ_PENDING_Life(...)
#define ZELQ_PENDING_Param(...)
#define ZELQ_PENDING_Attr(...)
#define ZELQ_PENDING_Var(...)
#define ZELQ_PENDING_Constr(...)
#define ZELQ_PENDING_Result(...)
#define ZELQ_PENDING_Iis(...)
#define ZELQ_PENDING_Coeff(...)
#define ZELQ_PENDING_Load(...)
#define ZELQ_PENDING_Access(...)
#define ZELQ_PENDING_Objective(...)
#define ZELQ_PENDING_Start(...)
#define ZELQ_PENDING_Info(...)
#define ZELQ_PENDING_Solve(...)
#define ZELQ_PENDING_Remove(...)
#define ZELQ_PENDING_Basis(...)
#define ZELQ_PENDING_Error(...)

#define ZELQ_MODEL_OP(family, result, name, params, qualifier) \
  ZELQ_PENDING_##family(result, name, params, qualifier)
#include "zelq/zelqcpp_model_ops.inc"
#undef ZELQ_MODEL_OP

}  // namespace Zelq
