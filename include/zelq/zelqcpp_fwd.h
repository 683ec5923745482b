// Forward declarations of every Zelq::I* interface.
//
// Interfaces of families that later releases fill in are declared here so
// that Zelq::IModel can name them in its operations; a header of their own
// defines each one when its family arrives.
#ifndef ZELQ_ZELQCPP_FWD_H_
#define ZELQ_ZELQCPP_FWD_H_

namespace Zelq {

class IEnvr;
class IEnvrConfig;
class ILogCallback;
class IModel;
class IProbBuffer;
class IVar;
class IVarArray;
class IConstraint;
class IConstrArray;
class IColumn;
class IColumnArray;
class IExpr;

class ICallbackBase;
class INlpCallback;
class IQuadExpr;
class IPsdExpr;
class ILmiExpr;
class INlExpr;
class ISymMatExpr;
class ISymMatrix;
class IQConstraint;
class IQConstrArray;
class IPsdVar;
class IPsdVarArray;
class IPsdConstraint;
class IPsdConstrArray;
class ILmiConstraint;
class ILmiConstrArray;
class INlConstraint;
class INlConstrArray;
class ISos;
class ISosArray;
class IGenConstr;
class IGenConstrArray;
class ICone;
class IConeArray;
class IExpCone;
class IExpConeArray;
class IAffineCone;
class IAffineConeArray;
class IConstrBuilder;
class IConstrBuilderArray;
class IQConstrBuilder;
class IQConstrBuilderArray;
class IPsdConstrBuilder;
class IPsdConstrBuilderArray;
class INlConstrBuilder;
class INlConstrBuilderArray;
class ISosBuilder;
class ISosBuilderArray;
class IGenConstrBuilder;
class IGenConstrBuilderArray;
class IConeBuilder;
class IConeBuilderArray;
class IExpConeBuilder;
class IExpConeBuilderArray;
class IAffineConeBuilder;
class IAffineConeBuilderArray;
class IMExpression;

template <int N>
class IMVar;
template <int N>
class IMLinExpr;
template <int N>
class IMQuadExpr;
template <int N>
class IMPsdExpr;
template <int N>
class IMConstr;
template <int N>
class IMQConstr;
template <int N>
class IMPsdConstr;
template <int N>
class IMConstrBuilder;
template <int N>
class IMQConstrBuilder;
template <int N>
class IMPsdConstrBuilder;

}  // namespace Zelq

#endif  // ZELQ_ZELQCPP_FWD_H_
