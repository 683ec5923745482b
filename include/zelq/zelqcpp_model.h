// Header layer of the model: Zelq::Model, and Zelq::ProbBuffer (text the
// model writes to memory).
//
//   Zelq::Model model = env.CreateModel("plan");
//   Zelq::Var x = model.AddVar(0, Zelq::kInfinity, 0, Zelq::kContinuous, "x");
//   Zelq::Var y = model.AddVar(0, Zelq::kInfinity, 0, Zelq::kContinuous, "y");
//   model.AddConstr(x + y <= 4);
//   model.SetObjective(3 * x + 2 * y, Zelq::kMaximize);
//   model.Solve();
//   double best = model.GetDblAttr("ObjVal");
//
// Every call checks the model's error record and throws Zelq::Exception with
// the recorded code and message. Copies of a Model share one model; Clone()
// makes an independent copy.
#ifndef ZELQ_ZELQCPP_MODEL_H_
#define ZELQ_ZELQCPP_MODEL_H_

#include <algorithm>
#include <atomic>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <functional>
#include <memory>
#include <string>
#include <type_traits>
#include <vector>

#include "zelq/zelqcpp_check.h"
#include "zelq/zelqcpp_consts.h"
#include "zelq/zelqcpp_elems.h"
#include "zelq/zelqcpp_exports.h"
#include "zelq/zelqcpp_expr.h"

namespace Zelq {

namespace detail {

// Hands the library's messages to an application function. Environments and
// the models made from them hold it, so it outlives every use the library
// can make of it. An exception thrown by the function is dropped: it must
// not unwind through the library.
class LogSink final : public ILogCallback {
 public:
  explicit LogSink(std::function<void(const char*)> sink) : sink_(std::move(sink)) {}
  void DisplayMessage(const char* message) override {
    try {
      if (sink_) sink_(message != nullptr ? message : "");
    } catch (...) {
    }
  }

 private:
  std::function<void(const char*)> sink_;
};

// A new, empty file in the temporary directory, named "zelq_<...><suffix>".
inline std::string NewTempFile(const char* suffix) {
  static std::atomic<unsigned> counter{0};
  const char* dir = std::getenv("TMPDIR");
  if (dir == nullptr || *dir == '\0') dir = std::getenv("TEMP");
  if (dir == nullptr || *dir == '\0') dir = std::getenv("TMP");
#if defined(_WIN32)
  if (dir == nullptr || *dir == '\0') dir = ".";
#else
  if (dir == nullptr || *dir == '\0') dir = "/tmp";
#endif
  const auto stamp = static_cast<unsigned long long>(std::time(nullptr));
  const auto address = static_cast<unsigned long long>(reinterpret_cast<std::uintptr_t>(&counter));
  for (int attempt = 0; attempt < 100; ++attempt) {
    std::string path = std::string(dir) + "/zelq_" + std::to_string(stamp) + "_" +
                       std::to_string(address % 1000003) + "_" + std::to_string(counter++) + suffix;
    // "x": fails when the file exists, so two models never share a name.
    if (std::FILE* file = std::fopen(path.c_str(), "wx")) {
      std::fclose(file);
      return path;
    }
  }
  Fail("Fail to create a temporary file in " + std::string(dir), kErrorFILE);
}

// Removes the file when the scope ends, on every path.
class TempFile {
 public:
  explicit TempFile(const char* suffix) : path_(NewTempFile(suffix)) {}
  ~TempFile() { std::remove(path_.c_str()); }
  TempFile(const TempFile&) = delete;
  TempFile& operator=(const TempFile&) = delete;
  const char* Path() const { return path_.c_str(); }

  std::string Read() const {
    std::string text;
    std::FILE* file = std::fopen(path_.c_str(), "rb");
    if (file == nullptr) Fail("Fail to read temporary file " + path_, kErrorFILE);
    char chunk[4096];
    size_t got = 0;
    while ((got = std::fread(chunk, 1, sizeof chunk, file)) > 0) text.append(chunk, got);
    std::fclose(file);
    return text;
  }
  void Write(const char* text) const {
    std::FILE* file = std::fopen(path_.c_str(), "wb");
    const std::string body = text != nullptr ? text : "";
    const bool ok =
        file != nullptr && std::fwrite(body.data(), 1, body.size(), file) == body.size();
    if (file != nullptr) std::fclose(file);
    if (!ok) Fail("Fail to write temporary file " + path_, kErrorFILE);
  }

 private:
  std::string path_;
};

// A buffer pointer the library accepts even for zero elements.
template <class T>
T* DataOf(std::vector<T>& values) {
  if (values.empty()) values.reserve(1);
  return values.data();
}

}  // namespace detail

// Bytes written by the model, e.g. an MPS text.
class ProbBuffer {
 public:
  explicit ProbBuffer(int size = 0)
      : buffer_(detail::Require(CreateProbBuffer(Checked(size)), "buffer")) {}

  char* GetData() { return buffer_->GetData(); }
  int GetSize() const { return buffer_->GetSize(); }
  void Resize(int size) { buffer_->Resize(Checked(size)); }
  std::string ToString() const {
    const char* data = buffer_->GetData();
    return data != nullptr ? std::string(data, static_cast<size_t>(GetSize())) : std::string();
  }

  IProbBuffer* Get() const { return buffer_.get(); }

 private:
  static int Checked(int size) {
    if (size < 0) detail::Fail("Negative buffer size: " + std::to_string(size));
    return size;
  }

  detail::Handle<IProbBuffer> buffer_;
};

// The constraint matrix by columns: column j has colCnt[j] entries starting
// at colBeg[j] in rowIdx and values.
struct CoeffMatrix {
  std::vector<int> colBeg;
  std::vector<int> colCnt;
  std::vector<int> rowIdx;
  std::vector<double> values;
};

class Model {
 public:
  static constexpr const char* kWhat = "model";

  // Takes ownership of a model returned by the library and throws its
  // creation failure, if any. `sink` is kept alive with the model.
  explicit Model(IModel* raw, std::shared_ptr<ILogCallback> sink = nullptr)
      : sink_(std::move(sink)), model_(detail::Require(raw, kWhat)) {
    detail::Check(model_.get());
  }

  std::string GetName() const {
    const char* name = Ref().GetName();
    return name != nullptr ? name : "";
  }

  // Problem, solution, basis, start, priority and parameter files; the kind
  // is chosen by the file name's ending for Read and Write.
  void Read(const char* path) {
    detail::CheckedCall(Ref(), [&](IModel& m) { m.Read(path); });
  }
  void ReadMps(const char* path) {
    detail::CheckedCall(Ref(), [&](IModel& m) { m.ReadMps(path); });
  }
  void ReadLp(const char* path) {
    detail::CheckedCall(Ref(), [&](IModel& m) { m.ReadLp(path); });
  }
  void ReadSdpa(const char* path) {
    detail::CheckedCall(Ref(), [&](IModel& m) { m.ReadSdpa(path); });
  }
  void ReadCbf(const char* path) {
    detail::CheckedCall(Ref(), [&](IModel& m) { m.ReadCbf(path); });
  }
  void ReadBin(const char* path) {
    detail::CheckedCall(Ref(), [&](IModel& m) { m.ReadBin(path); });
  }
  void ReadSol(const char* path) {
    detail::CheckedCall(Ref(), [&](IModel& m) { m.ReadSol(path); });
  }
  void ReadJsonSol(const char* path) {
    detail::CheckedCall(Ref(), [&](IModel& m) { m.ReadJsonSol(path); });
  }
  void ReadBasis(const char* path) {
    detail::CheckedCall(Ref(), [&](IModel& m) { m.ReadBasis(path); });
  }
  void ReadMst(const char* path) {
    detail::CheckedCall(Ref(), [&](IModel& m) { m.ReadMst(path); });
  }
  void ReadOrd(const char* path) {
    detail::CheckedCall(Ref(), [&](IModel& m) { m.ReadOrd(path); });
  }
  void ReadParam(const char* path) {
    detail::CheckedCall(Ref(), [&](IModel& m) { m.ReadParam(path); });
  }
  void ReadTune(const char* path) {
    detail::CheckedCall(Ref(), [&](IModel& m) { m.ReadTune(path); });
  }

  void Write(const char* path) {
    detail::CheckedCall(Ref(), [&](IModel& m) { m.Write(path); });
  }
  void WriteMps(const char* path) {
    detail::CheckedCall(Ref(), [&](IModel& m) { m.WriteMps(path); });
  }
  void WriteLp(const char* path) {
    detail::CheckedCall(Ref(), [&](IModel& m) { m.WriteLp(path); });
  }
  void WriteCbf(const char* path) {
    detail::CheckedCall(Ref(), [&](IModel& m) { m.WriteCbf(path); });
  }
  void WriteBin(const char* path) {
    detail::CheckedCall(Ref(), [&](IModel& m) { m.WriteBin(path); });
  }
  void WriteNL(const char* path) {
    detail::CheckedCall(Ref(), [&](IModel& m) { m.WriteNL(path); });
  }
  void WriteIIS(const char* path) {
    detail::CheckedCall(Ref(), [&](IModel& m) { m.WriteIIS(path); });
  }
  void WriteRelax(const char* path) {
    detail::CheckedCall(Ref(), [&](IModel& m) { m.WriteRelax(path); });
  }
  void WriteSol(const char* path) {
    detail::CheckedCall(Ref(), [&](IModel& m) { m.WriteSol(path); });
  }
  void WriteJsonSol(const char* path) {
    detail::CheckedCall(Ref(), [&](IModel& m) { m.WriteJsonSol(path); });
  }
  void WritePoolSol(int solution, const char* path) {
    detail::CheckedCall(Ref(), [&](IModel& m) { m.WritePoolSol(solution, path); });
  }
  void WriteBasis(const char* path) {
    detail::CheckedCall(Ref(), [&](IModel& m) { m.WriteBasis(path); });
  }
  void WriteMst(const char* path) {
    detail::CheckedCall(Ref(), [&](IModel& m) { m.WriteMst(path); });
  }
  void WriteOrd(const char* path) {
    detail::CheckedCall(Ref(), [&](IModel& m) { m.WriteOrd(path); });
  }
  void WriteParam(const char* path) {
    detail::CheckedCall(Ref(), [&](IModel& m) { m.WriteParam(path); });
  }
  void WriteTuneParam(int result, const char* path) {
    detail::CheckedCall(Ref(), [&](IModel& m) { m.WriteTuneParam(result, path); });
  }
  // The problem as MPS text.
  std::string WriteMpsString() {
    ProbBuffer buffer;
    detail::CheckedCall(Ref(), [&](IModel& m) { m.WriteMpsString(buffer.Get()); });
    return buffer.ToString();
  }
  // The solution as JSON text, and back (through a temporary file).
  std::string WriteJsonString() {
    detail::TempFile file(".json");
    WriteJsonSol(file.Path());
    return file.Read();
  }
  void ReadJsonString(const char* text) {
    detail::TempFile file(".json");
    file.Write(text);
    ReadJsonSol(file.Path());
  }

  // Parameters and attributes by name (case-insensitive).
  void SetIntParam(const char* name, int value) {
    detail::CheckedCall(Ref(), [&](IModel& m) { m.SetIntParam(name, value); });
  }
  void SetDblParam(const char* name, double value) {
    detail::CheckedCall(Ref(), [&](IModel& m) { m.SetDblParam(name, value); });
  }
  int GetIntParam(const char* name) {
    return detail::CheckedCall(Ref(), [&](IModel& m) { return m.GetIntParam(name); });
  }
  double GetDblParam(const char* name) {
    return detail::CheckedCall(Ref(), [&](IModel& m) { return m.GetDblParam(name); });
  }
  void GetIntParamInfo(const char* name, int* current, int* defaultValue, int* minimum,
                       int* maximum) {
    detail::CheckedCall(Ref(), [&](IModel& m) {
      m.GetIntParamInfo(name, current, defaultValue, minimum, maximum);
    });
  }
  void GetDblParamInfo(const char* name, double* current, double* defaultValue, double* minimum,
                       double* maximum) {
    detail::CheckedCall(Ref(), [&](IModel& m) {
      m.GetDblParamInfo(name, current, defaultValue, minimum, maximum);
    });
  }
  int GetIntAttr(const char* name) {
    return detail::CheckedCall(Ref(), [&](IModel& m) { return m.GetIntAttr(name); });
  }
  double GetDblAttr(const char* name) {
    return detail::CheckedCall(Ref(), [&](IModel& m) { return m.GetDblAttr(name); });
  }
  int GetParamAttrType(const char* name) {
    return detail::CheckedCall(Ref(), [&](IModel& m) { return m.GetParamAttrType(name); });
  }

  // Variables. Names made from a prefix are the prefix and the running index.
  Var AddVar(double lb, double ub, double obj, char vtype, const char* name = "") {
    return Make<Var>([&](IModel& m) { return m.AddVar(lb, ub, obj, vtype, name); });
  }
  Var AddVar(double lb, double ub, double obj, char vtype, const Column& col,
             const char* name = "") {
    return Make<Var>([&](IModel& m) { return m.AddVar(lb, ub, obj, vtype, col.Get(), name); });
  }
  VarArray AddVars(int count, char vtype, const char* prefix = "") {
    return Make<VarArray>([&](IModel& m) { return m.AddVars(count, vtype, prefix); });
  }
  VarArray AddVars(int count, double lb, double ub, double obj, char vtype,
                   const char* prefix = "") {
    return Make<VarArray>([&](IModel& m) { return m.AddVars(count, lb, ub, obj, vtype, prefix); });
  }
  VarArray AddVars(int count, const double* lbs, const double* ubs, const double* objs,
                   const char* vtypes, const char* prefix = "") {
    return Make<VarArray>(
        [&](IModel& m) { return m.AddVars(count, lbs, ubs, objs, vtypes, prefix); });
  }
  // One name per variable.
  VarArray AddVars(int count, const double* lbs, const double* ubs, const double* objs,
                   const char* vtypes, const std::vector<std::string>& names) {
    std::vector<const char*> list;
    list.reserve(names.size());
    for (const std::string& name : names) list.push_back(name.c_str());
    return Make<VarArray>([&](IModel& m) {
      return m.AddVars(count, lbs, ubs, objs, vtypes, list.data(), static_cast<int>(list.size()));
    });
  }

  // Linear constraints.
  // The row is the one AddConstr(expr, ...) below gives for the expression
  // and bounds of the comparison; a named expression is not copied.
  Constraint AddConstr(const TempConstr& constr, const char* name = "") {
    if (constr.IsRange()) return AddConstr(constr.expr_, constr.first_, constr.second_, name);
    return AddConstr(constr.expr_, constr.sense_, constr.first_, name);
  }
  // expr (sense) rhs; the expression's constant moves to the right-hand
  // side and its duplicate terms are merged in place.
  Constraint AddConstr(const Expr& expr, char sense, double rhs, const char* name = "") {
    return Make<Constraint>(
        [&](IModel& m) { return m.AddConstr(detail::Raw(expr), sense, rhs, name); });
  }
  // lower <= expr <= upper.
  Constraint AddConstr(const Expr& expr, double lower, double upper, const char* name = "") {
    return Make<Constraint>(
        [&](IModel& m) { return m.AddConstr(detail::Raw(expr), lower, upper, name); });
  }
  // Rows without terms, to be filled by SetCoeff.
  // Senses 'L', 'G', 'E' or 'N' (free); a bad sense throws before any row is added.
  ConstrArray AddConstrs(int count, const char* senses, const double* rhs,
                         const char* prefix = "") {
    for (int i = 0; senses != nullptr && rhs != nullptr && i < count; ++i) {
      if (senses[i] == 'R') detail::Fail("Use constrbuilder to add range constraint");
      if (senses[i] != kLessEqual && senses[i] != kGreaterEqual && senses[i] != kEqual &&
          senses[i] != 'N') {
        detail::Fail("Invalid constraint sense");
      }
    }
    return Make<ConstrArray>([&](IModel& m) { return m.AddConstrs(count, senses, rhs, prefix); });
  }
  ConstrArray AddConstrs(int count, const double* lbs, const double* ubs, const char* prefix = "") {
    return Make<ConstrArray>([&](IModel& m) { return m.AddConstrs(count, lbs, ubs, prefix); });
  }

  // Objective.
  void SetObjective(const Expr& expr, int sense = kMinimize) {
    detail::CheckedCall(Ref(), [&](IModel& m) { m.SetObjective(detail::Raw(expr), sense); });
  }
  // Linear objective only; the sense stays.
  void SetLinObjective(const Expr& expr) {
    detail::CheckedCall(Ref(), [&](IModel& m) { m.SetLinObjective(detail::Raw(expr)); });
  }
  Expr GetObjective() {
    return Make<Expr>([](IModel& m) { return m.GetObjective(); });
  }
  void SetObjSense(int sense) {
    detail::CheckedCall(Ref(), [&](IModel& m) { m.SetObjSense(sense); });
  }
  int GetObjSense() {
    return detail::CheckedCall(Ref(), [](IModel& m) { return m.GetObjSense(); });
  }
  void SetObjConst(double constant) {
    detail::CheckedCall(Ref(), [&](IModel& m) { m.SetObjConst(constant); });
  }

  // Access.
  Var GetVar(int i) {
    return Make<Var>([&](IModel& m) { return m.GetVar(i); });
  }
  Var GetVarByName(const char* name) {
    return Make<Var>([&](IModel& m) { return m.GetVarByName(name); });
  }
  VarArray GetVars() {
    return Make<VarArray>([](IModel& m) { return m.GetVars(); });
  }
  Constraint GetConstr(int i) {
    return Make<Constraint>([&](IModel& m) { return m.GetConstr(i); });
  }
  Constraint GetConstrByName(const char* name) {
    return Make<Constraint>([&](IModel& m) { return m.GetConstrByName(name); });
  }
  ConstrArray GetConstrs() {
    return Make<ConstrArray>([](IModel& m) { return m.GetConstrs(); });
  }
  Column GetCol(const Var& var) {
    return Make<Column>([&](IModel& m) { return m.GetCol(detail::Raw(var)); });
  }
  Expr GetRow(const Constraint& constr) {
    return Make<Expr>([&](IModel& m) { return m.GetRow(detail::Raw(constr)); });
  }
  double GetCoeff(const Constraint& constr, const Var& var) {
    return detail::CheckedCall(
        Ref(), [&](IModel& m) { return m.GetCoeff(detail::Raw(constr), detail::Raw(var)); });
  }
  void SetCoeff(const Constraint& constr, const Var& var, double value) {
    detail::CheckedCall(
        Ref(), [&](IModel& m) { m.SetCoeff(detail::Raw(constr), detail::Raw(var), value); });
  }
  void SetCoeffs(const ConstrArray& constrs, const VarArray& vars,
                 const std::vector<double>& values) {
    detail::CheckedCall(Ref(), [&](IModel& m) {
      m.SetCoeffs(constrs.Get(), vars.Get(), values.data(), static_cast<int>(values.size()));
    });
  }
  CoeffMatrix GetA() {
    const int cols = GetIntAttr("Cols");
    const int entries = detail::CheckedCall(
        Ref(), [](IModel& m) { return m.GetA(nullptr, nullptr, nullptr, nullptr); });
    CoeffMatrix a;
    a.colBeg.resize(static_cast<size_t>(cols));
    a.colCnt.resize(static_cast<size_t>(cols));
    a.rowIdx.resize(static_cast<size_t>(entries));
    a.values.resize(static_cast<size_t>(entries));
    detail::CheckedCall(Ref(), [&](IModel& m) {
      m.GetA(detail::DataOf(a.colBeg), detail::DataOf(a.colCnt), detail::DataOf(a.rowIdx),
             detail::DataOf(a.values));
    });
    return a;
  }

  // Information of many elements at once. Removed elements are skipped, so
  // the result holds one value per live element, in order.
  std::vector<double> GetColInfo(const char* name, const VarArray& vars) {
    std::vector<double> values(static_cast<size_t>(vars.Size()));
    const int count = detail::CheckedCall(
        Ref(), [&](IModel& m) { return m.GetColInfo(name, vars.Get(), detail::DataOf(values)); });
    values.resize(static_cast<size_t>(std::max(count, 0)));
    return values;
  }
  std::vector<double> GetRowInfo(const char* name, const ConstrArray& constrs) {
    std::vector<double> values(static_cast<size_t>(constrs.Size()));
    const int count = detail::CheckedCall(Ref(), [&](IModel& m) {
      return m.GetRowInfo(name, constrs.Get(), detail::DataOf(values));
    });
    values.resize(static_cast<size_t>(std::max(count, 0)));
    return values;
  }
  // "LB", "UB", "Obj", "BranchFactor" of variables; "LB", "UB" of constraints.
  void SetColInfo(const char* name, const VarArray& vars, const std::vector<double>& values) {
    std::vector<double> copy = values;
    detail::CheckedCall(Ref(), [&](IModel& m) {
      m.SetColInfo(name, vars.Get(), detail::DataOf(copy), static_cast<int>(copy.size()));
    });
  }
  void SetRowInfo(const char* name, const ConstrArray& constrs, const std::vector<double>& values) {
    std::vector<double> copy = values;
    detail::CheckedCall(Ref(), [&](IModel& m) {
      m.SetRowInfo(name, constrs.Get(), detail::DataOf(copy), static_cast<int>(copy.size()));
    });
  }

  // Solving and results.
  void Solve() {
    detail::CheckedCall(Ref(), [](IModel& m) { m.Solve(); });
  }
  void SolveLp() {
    detail::CheckedCall(Ref(), [](IModel& m) { m.SolveLp(); });
  }
  void Interrupt() {
    detail::CheckedCall(Ref(), [](IModel& m) { m.Interrupt(); });
  }
  void Update() {
    detail::CheckedCall(Ref(), [](IModel& m) { m.Update(); });
  }
  // One value per variable, in index order.
  std::vector<double> GetSolution() {
    std::vector<double> values(static_cast<size_t>(GetIntAttr("Cols")));
    detail::CheckedCall(Ref(), [&](IModel& m) { m.GetSolution(detail::DataOf(values)); });
    return values;
  }
  // Any output may be null; the others are filled, one value per variable
  // (values, reduced costs) or per constraint (slacks, duals).
  void GetLpSolution(std::vector<double>* values, std::vector<double>* slack,
                     std::vector<double>* duals, std::vector<double>* redcost) {
    if (values == nullptr && slack == nullptr && duals == nullptr && redcost == nullptr) return;
    const auto cols = static_cast<size_t>(GetIntAttr("Cols"));
    const auto rows = static_cast<size_t>(GetIntAttr("Rows"));
    auto buffer = [](std::vector<double>* out, size_t size) -> double* {
      if (out == nullptr) return nullptr;
      out->assign(size, 0.0);
      return detail::DataOf(*out);
    };
    double* v = buffer(values, cols);
    double* s = buffer(slack, rows);
    double* d = buffer(duals, rows);
    double* r = buffer(redcost, cols);
    detail::CheckedCall(Ref(), [&](IModel& m) { m.GetLpSolution(v, s, d, r); });
  }
  std::vector<int> GetColBasis() {
    std::vector<int> basis(static_cast<size_t>(GetIntAttr("Cols")));
    detail::CheckedCall(Ref(), [&](IModel& m) { return m.GetColBasis(detail::DataOf(basis)); });
    return basis;
  }
  std::vector<int> GetRowBasis() {
    std::vector<int> basis(static_cast<size_t>(GetIntAttr("Rows")));
    detail::CheckedCall(Ref(), [&](IModel& m) { return m.GetRowBasis(detail::DataOf(basis)); });
    return basis;
  }
  double GetPoolObjVal(int solution) {
    return detail::CheckedCall(Ref(), [&](IModel& m) { return m.GetPoolObjVal(solution); });
  }
  std::vector<double> GetPoolSolution(int solution, const VarArray& vars) {
    std::vector<double> values(static_cast<size_t>(vars.Size()));
    const int count = detail::CheckedCall(Ref(), [&](IModel& m) {
      return m.GetPoolSolution(solution, vars.Get(), detail::DataOf(values));
    });
    values.resize(static_cast<size_t>(std::max(count, 0)));
    return values;
  }
  // A MIP start is collected variable by variable, then handed over at once.
  void SetMipStart(const Var& var, double value) {
    detail::CheckedCall(Ref(), [&](IModel& m) { m.SetMipStart(detail::Raw(var), value); });
  }
  void AddMipStart() {
    detail::CheckedCall(Ref(), [](IModel& m) { m.AddMipStart(); });
  }

  // Removal is lazy: elements are deleted at the next solve, attribute read
  // or file write, and the survivors renumbered.
  void Remove(const Var& var) {
    VarArray one;
    one.PushBack(var);
    Remove(one);
  }
  void Remove(const Constraint& constr) {
    ConstrArray one;
    one.PushBack(constr);
    Remove(one);
  }
  void Remove(const VarArray& vars) {
    detail::CheckedCall(Ref(), [&](IModel& m) { m.Remove(vars.Get()); });
  }
  void Remove(const ConstrArray& constrs) {
    detail::CheckedCall(Ref(), [&](IModel& m) { m.Remove(constrs.Get()); });
  }

  void Reset() {
    detail::CheckedCall(Ref(), [](IModel& m) { m.Reset(); });
  }
  void ResetAll() {
    detail::CheckedCall(Ref(), [](IModel& m) { m.ResetAll(); });
  }
  void ResetParam() {
    detail::CheckedCall(Ref(), [](IModel& m) { m.ResetParam(); });
  }
  // Empties the model: elements, objective, parameters and callback.
  void Clear() {
    detail::CheckedCall(Ref(), [](IModel& m) { m.Clear(); });
  }
  // An independent copy named "<name>_copy".
  Model Clone() {
    std::unique_ptr<IModel> copy(Ref().Clone());
    detail::Check(&Ref());
    return Model(copy.release(), sink_);
  }

  IModel* Get() const { return model_.get(); }

 private:
  IModel& Ref() const { return *detail::Raw(*this); }

  // Wraps the object an operation returns; the model's failure comes first.
  template <class Value, class F>
  Value Make(F&& call) const {
    IModel& m = Ref();
    std::unique_ptr<std::remove_pointer_t<decltype(call(m))>> owned(call(m));
    detail::Check(&m);
    return Value(owned.release());
  }

  std::shared_ptr<ILogCallback> sink_;
  detail::Handle<IModel> model_;
};

}  // namespace Zelq

#endif  // ZELQ_ZELQCPP_MODEL_H_
