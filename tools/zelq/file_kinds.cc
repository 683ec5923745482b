#include "file_kinds.h"

#include <cerrno>
#include <cstdio>
#include <cstring>

#include "cli.h"
#include "cli_text.h"

namespace zelqcli {
namespace {

struct FileKind {
  const char* ending;
  FileRole role;
  bool readable;  // whether the model reads this kind (every kind listed is written)
};

// The kinds Model::Read and Model::Write choose by ending; problem kinds first, then results,
// in the order of the help text. The table only decides what the command accepts before
// anything is read or solved; the model does the dispatch itself.
const FileKind kKinds[] = {
    {".mps", FileRole::kProblem, true},    {".lp", FileRole::kProblem, true},
    {".cbf", FileRole::kProblem, true},    {".bin", FileRole::kProblem, true},
    {".dat-s", FileRole::kProblem, true},  {".nl", FileRole::kProblem, false},
    {".iis", FileRole::kResult, false},    {".relax", FileRole::kResult, false},
    {".sol", FileRole::kResult, false},    {".json", FileRole::kResult, false},
    {".bas", FileRole::kResult, false},    {".mst", FileRole::kResult, false},
    {".ord", FileRole::kResult, false},    {".par", FileRole::kResult, false},
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
  bool ok = kind != nullptr && (!problemOnly || kind->role == FileRole::kProblem);
  if (!ok) {
    throw CliFailure{kExitUsage, "cannot tell what to write to '" + path +
                                     "' from its ending; use " +
                                     (problemOnly ? ProblemWriteEndings() : AnyWriteEndings())};
  }
}

void ReadProblem(Zelq::Model& model, const std::string& path) {
  const FileKind* kind = FindKind(WithoutGz(path));
  if (kind == nullptr || !kind->readable || kind->role != FileRole::kProblem) {
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
    model.Read(path.c_str());  // ".gz" names are read by the ending before it
  } catch (const Zelq::Exception& e) {
    throw CliFailure{kExitFile, "cannot read '" + path + "': " + e.what()};
  }
}

void WriteFile(Zelq::Model& model, const std::string& path) {
  CheckWritable(path, false);
  try {
    model.Write(path.c_str());
  } catch (const Zelq::Exception& e) {
    throw CliFailure{kExitFile, "cannot write '" + path + "': " + e.what()};
  }
}

}  // namespace zelqcli
