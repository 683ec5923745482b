// Reading and writing problem, solution, basis, start, order, parameter and
// tuning files, and the string forms of MPS problems and JSON solutions.
//
// Every read compacts first, so the engine holds exactly the model's live
// elements when a file's names are matched against them. Problem writes
// compact first; solution and other data writes write what the engine holds.
// A problem file that was read replaces the engine's content, so the model
// then starts over with one record per column and row.
#include "frame/engine_index.h"
#include "model/file_kinds.h"
#include "model/file_path.h"
#include "model/zelq_model.h"

namespace Zelq {
namespace {

// A dispatcher outcome recorded with the kind's message, or with the path
// conversion's own text when the conversion failed on the characters.
void Record(ErrorRecord& error, const FileOutcome& outcome, const char* message) {
  SetError(error, outcome.code, "%s", outcome.message != nullptr ? outcome.message : message);
}

// Rebuilds the element tables after the engine's content was replaced:
// handles of the old content become invalid. Returns the engine's code.
int Restart(ZelqModel& model) {
  ModelData& data = model.Data();
  data.DetachAll();
  data.psd_dims.clear();
  data.lmi_dims.clear();
  int cols = 0, rows = 0;
  int rc = Engine().GetIntAttr(model.Prob(), "Cols", &cols);
  if (rc == 0) rc = Engine().GetIntAttr(model.Prob(), "Rows", &rows);
  if (rc != 0) return rc;
  data.Table(kVarKind).records.reserve(cols);
  data.Table(kConstrKind).records.reserve(rows);
  for (int j = 0; j < cols; ++j) data.Append(kVarKind);
  for (int i = 0; i < rows; ++i) data.Append(kConstrKind);
  return 0;
}

enum class Content { kData, kProblem };

void ReadFile(ZelqModel& model, const char* path, const char* ending, const char* message,
              Content content) {
  if (!model.Compact()) return;
  FileOutcome outcome = ReadAs(model.Prob(), path, ending);
  if (outcome.code == 0 && content == Content::kProblem) outcome.code = Restart(model);
  Record(model.Error(), outcome, message);
}

void WriteFile(ZelqModel& model, const char* path, const char* ending, const char* message,
               Content content) {
  if (content == Content::kProblem && !model.Compact()) return;
  Record(model.Error(), WriteAs(model.Prob(), path, ending), message);
}

// Writers addressed by a number (pool solution, tuning result): the same
// path conversion as the dispatchers, then the engine call.
using NumberedWriteFn = int (*)(ZELQprob*, int, const char*);
void WriteNumbered(ZelqModel& model, NumberedWriteFn EngineIndex::*call, int number,
                   const char* path, const char* message) {
  EnginePath converted = ToEnginePath(path);
  FileOutcome outcome{converted.code, converted.message};
  if (converted.code == 0) {
    outcome.code = (Engine().*call)(model.Prob(), number, converted.path.c_str());
  }
  Record(model.Error(), outcome, message);
}

// Query the size, then fetch into the resized buffer.
struct TextForm {
  const char* size_message;
  const char* too_large_message;
  const char* fetch_message;
};
using TextWriteFn = int (*)(ZELQprob*, char*, int, int*);
void WriteText(ZelqModel& model, TextWriteFn EngineIndex::*call, IProbBuffer* buffer,
               const TextForm& form) {
  ErrorRecord& error = model.Error();
  int size = 0;
  int rc = (Engine().*call)(model.Prob(), nullptr, 0, &size);
  SetError(error, rc, "%s", form.size_message);
  if (rc == 0 && size < 0) SetError(error, kErrorINTERNAL, "%s", form.too_large_message);
  if (error.Failed()) return;
  buffer->Resize(size);
  SetError(error, (Engine().*call)(model.Prob(), buffer->GetData(), size, nullptr), "%s",
           form.fetch_message);
}

using Operation = void (ZelqModel::*)(const char*);

struct ReadChoice {
  const char* ending;
  const char* compressed;
  Operation read;
};

// Read tests the endings in this order; the first match reads.
constexpr ReadChoice kReadChoices[] = {
    {".mps", ".mps.gz", &ZelqModel::ReadMps},       {".lp", ".lp.gz", &ZelqModel::ReadLp},
    {".bin", ".bin.gz", &ZelqModel::ReadBin},       {".dat-s", ".dat-s.gz", &ZelqModel::ReadSdpa},
    {".cbf", ".cbf.gz", &ZelqModel::ReadCbf},       {".sol", ".sol.gz", &ZelqModel::ReadSol},
    {".json", ".json.gz", &ZelqModel::ReadJsonSol}, {".bas", ".bas.gz", &ZelqModel::ReadBasis},
    {".mst", ".mst.gz", &ZelqModel::ReadMst},       {".ord", ".ord.gz", &ZelqModel::ReadOrd},
    {".par", ".par.gz", &ZelqModel::ReadParam},     {".tune", ".tune.gz", &ZelqModel::ReadTune},
};

struct WriteChoice {
  const char* ending;
  Operation write;
};

// Write tests the problem endings first, then the data endings; it knows no
// compressed forms.
constexpr WriteChoice kWriteChoices[] = {
    {".mps", &ZelqModel::WriteMps},   {".lp", &ZelqModel::WriteLp},
    {".cbf", &ZelqModel::WriteCbf},   {".bin", &ZelqModel::WriteBin},
    {".nl", &ZelqModel::WriteNL},     {".iis", &ZelqModel::WriteIIS},
    {".relax", &ZelqModel::WriteRelax}, {".sol", &ZelqModel::WriteSol},
    {".json", &ZelqModel::WriteJsonSol}, {".bas", &ZelqModel::WriteBasis},
    {".mst", &ZelqModel::WriteMst},   {".ord", &ZelqModel::WriteOrd},
    {".par", &ZelqModel::WriteParam},
};

}  // namespace

void ZelqModel::Read(const char* path) {
  for (const ReadChoice& choice : kReadChoices) {
    if (EndsWithNoCase(path, choice.ending) || EndsWithNoCase(path, choice.compressed)) {
      (this->*choice.read)(path);
      return;
    }
  }
  SetError(Error(), kErrorINVALID, "Unknown file type");
}

void ZelqModel::ReadMps(const char* path) {
  ReadFile(*this, path, ".mps", "Failed to read MPS file", Content::kProblem);
}

void ZelqModel::ReadLp(const char* path) {
  ReadFile(*this, path, ".lp", "Failed to read LP file", Content::kProblem);
}

void ZelqModel::ReadSdpa(const char* path) {
  ReadFile(*this, path, ".dat-s", "Failed to read SDPA file", Content::kProblem);
}

void ZelqModel::ReadCbf(const char* path) {
  ReadFile(*this, path, ".cbf", "Failed to read CBF file", Content::kProblem);
}

void ZelqModel::ReadBin(const char* path) {
  ReadFile(*this, path, ".bin", "Failed to read ZELQ binary file", Content::kProblem);
}

void ZelqModel::ReadSol(const char* path) {
  ReadFile(*this, path, ".sol", "Failed to read solution file", Content::kData);
}

void ZelqModel::ReadJsonSol(const char* path) {
  ReadFile(*this, path, ".json", "Failed to read JSON solution file", Content::kData);
}

void ZelqModel::ReadBasis(const char* path) {
  ReadFile(*this, path, ".bas", "Failed to read basis file", Content::kData);
}

void ZelqModel::ReadMst(const char* path) {
  ReadFile(*this, path, ".mst", "Failed to read MIP start file", Content::kData);
}

void ZelqModel::ReadOrd(const char* path) {
  ReadFile(*this, path, ".ord", "Failed to read branching order file", Content::kData);
}

void ZelqModel::ReadParam(const char* path) {
  ReadFile(*this, path, ".par", "Failed to read parameter file", Content::kData);
}

void ZelqModel::ReadTune(const char* path) {
  ReadFile(*this, path, ".tune", "Failed to read tuning file", Content::kData);
}

void ZelqModel::ReadJsonString(const char* text) {
  if (text == nullptr) {
    SetError(Error(), kErrorINVALID, "Failed to read JSON solution string");
    return;
  }
  if (!Compact()) return;
  SetError(Error(), Engine().ReadJsonStr(Prob(), text), "Failed to read JSON solution string");
}

// An unknown ending does nothing and leaves the record as it was.
void ZelqModel::Write(const char* path) {
  for (const WriteChoice& choice : kWriteChoices) {
    if (EndsWithNoCase(path, choice.ending)) {
      (this->*choice.write)(path);
      return;
    }
  }
}

void ZelqModel::WriteMps(const char* path) {
  WriteFile(*this, path, ".mps", "Fail to write to MPS file", Content::kProblem);
}

void ZelqModel::WriteMpsString(IProbBuffer* buffer) {
  if (buffer == nullptr || !Compact()) return;
  WriteText(*this, &EngineIndex::WriteMpsStr, buffer,
            {"Fail to get required size of MPS problem",
             "The size of MPS problem exceeds the limit", "Fail to output MPS problem to string"});
}

void ZelqModel::WriteJsonString(IProbBuffer* buffer) {
  if (buffer == nullptr) return;
  WriteText(*this, &EngineIndex::WriteJsonStr, buffer,
            {"Fail to write to JSON solution string", "The size of JSON solution exceeds the limit",
             "Fail to write to JSON solution string"});
}

void ZelqModel::WriteLp(const char* path) {
  WriteFile(*this, path, ".lp", "Fail to write to LP file", Content::kProblem);
}

void ZelqModel::WriteCbf(const char* path) {
  WriteFile(*this, path, ".cbf", "Fail to write to CBF file", Content::kProblem);
}

void ZelqModel::WriteBin(const char* path) {
  WriteFile(*this, path, ".bin", "Fail to write to ZELQ binary file", Content::kProblem);
}

void ZelqModel::WriteNL(const char* path) {
  WriteFile(*this, path, ".nl", "Fail to write to NL file", Content::kProblem);
}

void ZelqModel::WriteIIS(const char* path) {
  WriteFile(*this, path, ".iis", "Fail to write to IIS file", Content::kProblem);
}

void ZelqModel::WriteRelax(const char* path) {
  WriteFile(*this, path, ".relax", "Fail to write to feasibility relaxation problem file",
            Content::kProblem);
}

void ZelqModel::WriteSol(const char* path) {
  WriteFile(*this, path, ".sol", "Fail to write to solution file", Content::kData);
}

void ZelqModel::WriteJsonSol(const char* path) {
  WriteFile(*this, path, ".json", "Fail to write to JSON solution file", Content::kData);
}

void ZelqModel::WritePoolSol(int solution, const char* path) {
  WriteNumbered(*this, &EngineIndex::WritePoolSol, solution, path,
                "Fail to write to solution file");
}

void ZelqModel::WriteBasis(const char* path) {
  WriteFile(*this, path, ".bas", "Fail to write to basis file", Content::kData);
}

void ZelqModel::WriteMst(const char* path) {
  WriteFile(*this, path, ".mst", "Fail to write to MIP start file", Content::kData);
}

void ZelqModel::WriteOrd(const char* path) {
  WriteFile(*this, path, ".ord", "Fail to write to branching order file", Content::kData);
}

void ZelqModel::WriteParam(const char* path) {
  WriteFile(*this, path, ".par", "Fail to write to Param file", Content::kData);
}

void ZelqModel::WriteTuneParam(int result, const char* path) {
  WriteNumbered(*this, &EngineIndex::WriteTuneParam, result, path,
                "Fail to write tuned parameters to file");
}

}  // namespace Zelq
