// Exported factory functions of the object library (C linkage).
//
// Each returns a new object that the caller owns and frees with delete
// through the interface; none returns null. Failures while building an
// environment or a model are kept in the new object's error record.
//
//   Zelq::IEnvr* env = CreateEnvr(nullptr);
//   Zelq::IModel* model = CreateModel(env, "diet");
#ifndef ZELQ_ZELQCPP_EXPORTS_H_
#define ZELQ_ZELQCPP_EXPORTS_H_

#include "zelq/zelqcpp_elem_iface.h"
#include "zelq/zelqcpp_envr_iface.h"
#include "zelq/zelqcpp_export.h"
#include "zelq/zelqcpp_expr_iface.h"
#include "zelq/zelqcpp_model_iface.h"
#include "zelq/zelqcpp_ndarray_exports.h"

extern "C" {
// Environments. `sink` (may be null) receives the banner instead of stdout.
ZELQCPP_API Zelq::IEnvr* CreateEnvr(Zelq::ILogCallback* sink);
ZELQCPP_API Zelq::IEnvr* CreateEnvrWithPath(const char* path, Zelq::ILogCallback* sink);
ZELQCPP_API Zelq::IEnvr* CreateEnvrWithConfig(Zelq::IEnvrConfig* config, Zelq::ILogCallback* sink);
ZELQCPP_API Zelq::IEnvrConfig* CreateEnvrConfig();

ZELQCPP_API Zelq::IModel* CreateModel(Zelq::IEnvr* env, const char* name);

// Empty element arrays and columns.
ZELQCPP_API Zelq::IVarArray* CreateVarArray();
ZELQCPP_API Zelq::IConstrArray* CreateConstrArray();
ZELQCPP_API Zelq::IColumn* CreateColumn();
ZELQCPP_API Zelq::IColumnArray* CreateColumnArray();

// Linear expressions: a constant, or one term (var, coeff).
ZELQCPP_API Zelq::IExpr* CreateExpr(double constant);
ZELQCPP_API Zelq::IExpr* CreateLinExpr(Zelq::IVar* var, double coeff);

// A zeroed buffer of size + 1 bytes.
ZELQCPP_API Zelq::IProbBuffer* CreateProbBuffer(int size);

// Version part 0, 1, 2: major, minor, technical; -1 for any other part.
ZELQCPP_API int GetLibVersion(int part);
}

#endif  // ZELQ_ZELQCPP_EXPORTS_H_
