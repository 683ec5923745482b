// The slot positions of the interfaces are the library's binary interface:
// applications built against one release call operations by slot. These
// checks pin the positions that the documentation names.
#include <gtest/gtest.h>

#include <cstddef>
#include <cstring>

#include "zelq/zelqcpp_model_iface.h"

namespace {

// Slot of a virtual member function under the Itanium C++ ABI, where a
// pointer to a virtual member holds 1 + the byte offset of its slot.
template <class F>
std::ptrdiff_t Slot(F member) {
  std::ptrdiff_t raw = 0;
  std::memcpy(&raw, &member, sizeof(raw));
  return (raw - 1) / static_cast<std::ptrdiff_t>(sizeof(void*));
}

using Zelq::IModel;

TEST(InterfaceSlots, ModelHasAllOperationsInOrder) {
  EXPECT_EQ(Slot(&IModel::GetName), 2);
  EXPECT_EQ(Slot(&IModel::Read), 3);
  EXPECT_EQ(Slot(&IModel::ReadTune), 15);
  EXPECT_EQ(Slot(&IModel::GetIntParamInfo), 16);
  EXPECT_EQ(Slot(&IModel::SetDblParam), 21);
  EXPECT_EQ(Slot(&IModel::Write), 22);
  EXPECT_EQ(Slot(&IModel::WriteTuneParam), 38);
  EXPECT_EQ(Slot(&IModel::GetIntAttr), 39);
  EXPECT_EQ(Slot(static_cast<Zelq::IVar* (IModel::*)(double, double, double, char, const char*)>(
                &IModel::AddVar)),
            42);
  EXPECT_EQ(Slot(static_cast<Zelq::IConstraint* (IModel::*)(const Zelq::IExpr*, char, double,
                                                             const char*)>(&IModel::AddConstr)),
            66);
  EXPECT_EQ(Slot(&IModel::AddLmiConstr), 153);
  EXPECT_EQ(Slot(&IModel::GetSolution), 183);
  EXPECT_EQ(Slot(&IModel::GetColLowerIIS), 192);
  EXPECT_EQ(Slot(&IModel::GetCoeff), 198);
  EXPECT_EQ(Slot(&IModel::GetA), 207);
  EXPECT_EQ(Slot(&IModel::LoadMatrix), 208);
  EXPECT_EQ(Slot(&IModel::GetVar), 216);
  EXPECT_EQ(Slot(&IModel::GetConstr), 221);
  EXPECT_EQ(Slot(&IModel::GetSos), 228);
  EXPECT_EQ(Slot(&IModel::GetLmiRow), 282);
  EXPECT_EQ(Slot(&IModel::SetObjSense), 283);
  EXPECT_EQ(Slot(&IModel::MultiObjSetColObj), 289);
  EXPECT_EQ(Slot(&IModel::SetNlObjective), 304);
  EXPECT_EQ(Slot(static_cast<void (IModel::*)(const Zelq::IExpr*, int)>(&IModel::SetObjective)),
            314);
  EXPECT_EQ(Slot(&IModel::SetMipStart), 317);
  EXPECT_EQ(Slot(&IModel::GetColInfo), 321);
  EXPECT_EQ(Slot(&IModel::SetColInfo), 326);
  EXPECT_EQ(Slot(&IModel::Solve), 330);
  EXPECT_EQ(Slot(&IModel::SolveLp), 331);
  EXPECT_EQ(Slot(&IModel::ComputeIIS), 332);
  EXPECT_EQ(Slot(&IModel::Interrupt), 339);
  EXPECT_EQ(Slot(static_cast<void (IModel::*)(Zelq::IMVar<0>*)>(&IModel::Remove)), 340);
  EXPECT_EQ(Slot(static_cast<void (IModel::*)(Zelq::IVarArray*)>(&IModel::Remove)), 356);
  EXPECT_EQ(Slot(static_cast<void (IModel::*)(Zelq::ILmiConstrArray*)>(&IModel::Remove)), 367);
  EXPECT_EQ(Slot(&IModel::ResetParam), 368);
  EXPECT_EQ(Slot(&IModel::Clear), 371);
  EXPECT_EQ(Slot(&IModel::Clone), 372);
  EXPECT_EQ(Slot(&IModel::SetCallback), 373);
  EXPECT_EQ(Slot(&IModel::Update), 376);
  EXPECT_EQ(Slot(&IModel::ComputeShadowPriceRange), 383);
  EXPECT_EQ(Slot(&IModel::GetErrorCode), 384);
  EXPECT_EQ(Slot(&IModel::GetErrorMessage), 385);
}

}  // namespace
