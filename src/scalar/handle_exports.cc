// The exported factories of empty element arrays and columns.
#include "scalar/handles.h"
#include "scalar/zelq_column.h"
#include "zelq/zelqcpp_exports.h"

extern "C" {

ZELQCPP_API Zelq::IVarArray* CreateVarArray() { return Zelq::NewVarArray({}); }

ZELQCPP_API Zelq::IConstrArray* CreateConstrArray() { return Zelq::NewConstrArray({}); }

ZELQCPP_API Zelq::IColumn* CreateColumn() { return Zelq::NewColumn(Zelq::ColumnData()); }

ZELQCPP_API Zelq::IColumnArray* CreateColumnArray() { return Zelq::NewColumnArray(); }

}  // extern "C"
