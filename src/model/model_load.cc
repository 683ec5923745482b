// Loading a whole problem: the engine replaces the problem's content, and the
// model starts over with one record per loaded variable and constraint.
#include "frame/engine_index.h"
#include "model/zelq_model.h"

namespace Zelq {

void ZelqModel::LoadMatrix(int nCol, int nRow, int objSense, double objConst, const double* colObj,
                           const int* colBeg, const int* colCnt, const int* colIdx,
                           const double* colVal, const char* colTypes, const double* colLower,
                           const double* colUpper, const char* rowSense, const double* rowBound,
                           const double* rowUpper, const char* const* colNames,
                           const char* const* rowNames) {
  ErrorRecord& error = Error();
  if (nCol < 0 || nRow < 0) {
    SetError(error, kErrorINVALID, "Invalid number of variables or constraints");
    return;
  }
  if (!Compact()) return;
  int rc = Engine().LoadProb(Prob(), nCol, nRow, objSense, objConst, colObj, colBeg, colCnt, colIdx,
                             colVal, colTypes, colLower, colUpper, rowSense, rowBound, rowUpper,
                             colNames, rowNames);
  SetError(error, rc, "Fail to load problem");
  if (rc != 0) return;
  // Every element of the old content is gone: its handles become invalid.
  ModelData& data = Data();
  data.DetachAll();
  data.psd_dims.clear();
  data.lmi_dims.clear();
  data.Table(kVarKind).records.reserve(nCol);
  data.Table(kConstrKind).records.reserve(nRow);
  for (int j = 0; j < nCol; ++j) data.Append(kVarKind, colNames != nullptr ? colNames[j] : nullptr);
  for (int i = 0; i < nRow; ++i) {
    data.Append(kConstrKind, rowNames != nullptr ? rowNames[i] : nullptr);
  }
}

}  // namespace Zelq
