#include "file_kinds.h"

#include <cerrno>
#include <cstdio>
#include <cstring>

#include "cli.h"
#include "cli_text.h"

namespace zelqcli {
namespace {

using FileOp = void (*)(Zelq::Model&, const char*);

struct FileKind {
  const char* ending;
  FileRole role;
  FileOp read;   // null: the engine cannot read this kind
  FileOp write;  // null: the engine cannot write this kind
};

// The problem kinds first, then results; the order of the help text.
const FileKind kKinds[] = {
    {".mps", FileRole::kProblem, [](Zelq::Model& m, const char* p) { m.ReadMps(p); },
     [](Zelq::Model& m, const char* p) { m.WriteMps(p); }},
    {".lp", FileRole::kProblem, [](Zelq::Model& m, const char* p) { m.ReadLp(p); },
     [](Zelq::Model& m, const char* p) { m.WriteLp(p); }},
    {".cbf", FileRole::kProblem, [](Zelq::Model& m, const char* p) { m.ReadCbf(p); },
     [](Zelq::Model& m, const char* p) { m.WriteCbf(p); }},
    {".bin", FileRole::kProblem, [](Zelq::Model& m, const char* p) { m.ReadBin(p); },
     [](Zelq::Model& m, const char* p) { m.WriteBin(p); }},
    {".dat-s", FileRole::kProblem, [](Zelq::Model& m, const char* p) { m.ReadSdpa(p); }, nullptr},
    {".nl", FileRole::kProblem, nullptr, [](Zelq::Model& m, const char* p) { m.WriteNL(p); }},
    {".iis", FileRole::kResult, nullptr, [](Zelq::Model& m, const char* p) { m.WriteIIS(p); }},
    {".relax", FileRole::kResult, nullptr,
     [](Zelq::Model& m, const char* p) { m.WriteRelax(p); }},
    {".sol", FileRole::kResult, nullptr, [](Zelq::Model& m, const char* p) { m.WriteSol(p); }},
    {".json", FileRole::kResult, nullptr,
     [](Zelq::Model& m, const char* p) { m.WriteJsonSol(p); }},
    {".bas", FileRole::kResult, nullptr, [](Zelq::Model& m, const char* p) { m.WriteBasis(p); }},
    {".mst", FileRole::kResult, nullptr, [](Zelq::Model& m, const char* p) { m.WriteMst(p); }},
    {".ord", FileRole::kResult, nullptr, [](Zelq::Model& m, const char* p) { m.WriteOrd(p); }},
    {".par", FileRole::kResult, nullptr, [](Zelq::Model& m, const char* p) { m.WriteParam(p); }},
};

// The kind whose ending closes `name` (matched case-insensitively), or null.
const FileKind* FindKind(const std::string& name) {
  for (const FileKind& kind : kKinds) {
    if (EndsWithNoCase(name, kind.ending)) return &kind;
  }
  return nullptr;
}

// The name without a trailing ".gz": compressed problems are read by the ending before it.
std::string WithoutGz(const std::string& path) {
  return EndsWithNoCase(path, ".gz") ? path.substr(0, path.size() - 3) : path;
}

}  // namespace

const char* ProblemReadEndings() { return ".mps, .lp, .cbf, .bin or .dat-s, optionally with .gz"; }
const char* ProblemWriteEndings() { return ".mps, .lp, .cbf, .bin or .nl"; }
const char* AnyWriteEndings() {
  return ".mps, .lp, .cbf, .bin, .nl, .iis, .relax, .sol, .json, .bas, .mst, .ord or .par";
}

void CheckWritable(const std::string& path, bool problemOnly) {
  const FileKind* kind = FindKind(path);
  bool ok = kind != nullptr && kind->write != nullptr &&
            (!problemOnly || kind->role == FileRole::kProblem);
  if (!ok) {
    throw CliFailure{kExitUsage, "cannot tell what to write to '" + path +
                                     "' from its ending; use " +
                                     (problemOnly ? ProblemWriteEndings() : AnyWriteEndings())};
  }
}

void ReadProblem(Zelq::Model& model, const std::string& path) {
  const FileKind* kind = FindKind(WithoutGz(path));
  if (kind == nullptr || kind->read == nullptr || kind->role != FileRole::kProblem) {
    throw CliFailure{kExitFile, "cannot tell the format of '" + path + "' from its ending; use " +
                                    ProblemReadEndings()};
  }
  // Opening the file first gives the system's own reason for a missing or unreadable file.
  std::FILE* f = std::fopen(path.c_str(), "rb");
  if (f == nullptr) {
    throw CliFailure{kExitFile, "cannot open '" + path + "': " + std::strerror(errno)};
  }
  std::fclose(f);
  try {
    kind->read(model, path.c_str());
  } catch (const Zelq::Exception& e) {
    throw CliFailure{kExitFile, "cannot read '" + path + "': " + e.what()};
  }
}

void WriteFile(Zelq::Model& model, const std::string& path) {
  CheckWritable(path, false);
  try {
    FindKind(path)->write(model, path.c_str());
  } catch (const Zelq::Exception& e) {
    throw CliFailure{kExitFile, "cannot write '" + path + "': " + e.what()};
  }
}

}  // namespace zelqcli
