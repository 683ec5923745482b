// Making element handles and arrays, and reaching the value behind one.
//
// Every Zelq::IVar, IConstraint, IVarArray, IConstrArray, IColumn and
// IColumnArray the library sees was made by the library, so the model and
// the expressions reach their values directly through these functions.
#ifndef ZELQ_SCALAR_HANDLES_H_
#define ZELQ_SCALAR_HANDLES_H_

#include <vector>

#include "scalar/element_values.h"
#include "zelq/zelqcpp_elem_iface.h"

namespace Zelq {

// Terms (constraint, coefficient) of a column; no error record.
struct ColumnData {
  std::vector<ElementRef> constrs;
  std::vector<double> coeffs;
};

// New handles. A handle on an invalid record reports index -2.
IVar* NewVarHandle(Var value);
IConstraint* NewConstrHandle(Constraint value);
IVarArray* NewVarArray(std::vector<ElementRef> records);
IConstrArray* NewConstrArray(std::vector<ElementRef> records);
IColumn* NewColumn(ColumnData data);

// The value behind a handle made by the library; null for a null pointer.
Var* VarOf(const IVar* var);
Constraint* ConstrOf(const IConstraint* constr);
const std::vector<ElementRef>* RecordsOf(const IVarArray* vars);
const std::vector<ElementRef>* RecordsOf(const IConstrArray* constrs);
const ColumnData* ColumnOf(const IColumn* column);
// Records of the arrays of element kinds whose handles arrive in a later
// release. No such array can be made yet, so these return null (an empty
// list) for now.
const std::vector<ElementRef>* RecordsOf(const ISosArray* soss);
const std::vector<ElementRef>* RecordsOf(const IGenConstrArray* constrs);
const std::vector<ElementRef>* RecordsOf(const INlConstrArray* constrs);
const std::vector<ElementRef>* RecordsOf(const IQConstrArray* constrs);
const std::vector<ElementRef>* RecordsOf(const IPsdConstrArray* constrs);
// Columns of an array, in order (each a ColumnData).
const std::vector<ColumnData>* ColumnsOf(const IColumnArray* columns);

// Operations shared by handles and expressions.
// Name of a variable: the cached name, fetched from the engine first when
// the element is live and nothing is cached. Null when it cannot be had
// (the failure is recorded in `var.error`).
const char* VarName(Var& var);
// Information of a variable by name ("Value", "LB", ...), with the checks and
// messages of IVar::Get; 1e30 on failure (recorded in `var.error`).
double VarInfo(Var& var, const char* info);

}  // namespace Zelq

#endif  // ZELQ_SCALAR_HANDLES_H_
