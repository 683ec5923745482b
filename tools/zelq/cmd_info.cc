// zelq info FILE
#include <cstdio>
#include <string>
#include <vector>

#include "cli.h"
#include "file_kinds.h"
#include "model_stats.h"
#include "session.h"

namespace zelqcli {
namespace {

struct Sizes {
  int rows = 0, cols = 0, nonZeros = 0, binaries = 0, integers = 0, sense = 1;
  double objConst = 0.0;
};

// The smallest and largest absolute matrix coefficient, from the column-wise matrix.
AbsRange MatrixRange(Zelq::Model& model) {
  AbsRange range;
  for (double v : model.GetA().values) range.Add(v);
  return range;
}

void Print(const std::string& file, const Sizes& z, const BoundStats& s, const AbsRange& matrix) {
  std::printf("Problem:     %s\n", file.c_str());
  std::printf("Rows:        %d\n", z.rows);
  std::printf("Columns:     %d (%d continuous, %d binary, %d integer)\n", z.cols,
              z.cols - z.binaries - z.integers, z.binaries, z.integers);
  std::printf("Non-zeros:   %d\n", z.nonZeros);
  std::printf("Objective:   %s, constant %.10g\n", z.sense < 0 ? "maximize" : "minimize",
              z.objConst);
  const ColumnCounts& c = s.columns;
  std::printf("Columns by bounds: %d free, %d fixed, %d boxed, %d lower bound only, "
              "%d upper bound only\n", c.free, c.fixed, c.boxed, c.lowerOnly, c.upperOnly);
  const RowCounts& r = s.rows;
  std::printf("Rows by sense: %d equal, %d less-equal, %d greater-equal, %d ranged, %d free\n",
              r.equal, r.lessEqual, r.greaterEqual, r.ranged, r.free);
  std::printf("Coefficient ranges (absolute non-zero values):\n");
  std::printf("  Matrix     %s\n", matrix.ToString().c_str());
  std::printf("  Objective  %s\n", s.objective.ToString().c_str());
  std::printf("  Bounds     %s\n", s.bounds.ToString().c_str());
  std::printf("  RHS        %s\n", s.rhs.ToString().c_str());
}

}  // namespace

int RunInfo(const Args& args) {
  for (const std::string& a : args) {
    if (a.size() > 1 && a[0] == '-') throw CliFailure{kExitUsage, "unknown option '" + a + "' for info"};
  }
  if (args.size() != 1) throw CliFailure{kExitUsage, "info needs exactly one problem file"};
  Zelq::Model model = OpenModel(true);
  ReadProblem(model, args[0]);
  try {
    Sizes z;
    z.rows = model.GetIntAttr("Rows");
    z.cols = model.GetIntAttr("Cols");
    z.nonZeros = model.GetIntAttr("Elems");
    z.binaries = model.GetIntAttr("Bins");
    z.integers = model.GetIntAttr("Ints");
    z.sense = model.GetObjSense();
    z.objConst = model.GetDblAttr("ObjConst");
    Zelq::VarArray vars = model.GetVars();
    Zelq::ConstrArray constrs = model.GetConstrs();
    BoundStats stats = ComputeBoundStats(
        model.GetColInfo("LB", vars), model.GetColInfo("UB", vars),
        model.GetColInfo("Obj", vars), model.GetRowInfo("LB", constrs),
        model.GetRowInfo("UB", constrs));
    Print(args[0], z, stats, MatrixRange(model));
  } catch (const Zelq::Exception& e) {
    throw CliFailure{kExitFile, "cannot inspect '" + args[0] + "': " + e.what()};
  }
  return kExitOk;
}

}  // namespace zelqcli
