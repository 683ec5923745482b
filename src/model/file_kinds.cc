#include "model/file_kinds.h"

#include <cctype>
#include <cstring>

#include "frame/engine_index.h"
#include "model/file_path.h"
#include "zelq/zelqcpp_error_codes.h"

namespace Zelq {
namespace {

using PathFn = int (*)(ZELQprob*, const char*);

struct FileKind {
  const char* ending;
  PathFn EngineIndex::*call;
};

// The first match wins, so the order of each table is part of its contract.
constexpr FileKind kReaders[] = {
    {".mps", &EngineIndex::ReadMps},     {".lp", &EngineIndex::ReadLp},
    {".dat-s", &EngineIndex::ReadSDPA},  {".cbf", &EngineIndex::ReadCbf},
    {".bin", &EngineIndex::ReadBin},     {".sol", &EngineIndex::ReadSol},
    {".json", &EngineIndex::ReadJsonSol}, {".bas", &EngineIndex::ReadBasis},
    {".mst", &EngineIndex::ReadMst},     {".ord", &EngineIndex::ReadOrd},
    {".par", &EngineIndex::ReadParam},   {".tune", &EngineIndex::ReadTune},
};

constexpr FileKind kWriters[] = {
    {".mps", &EngineIndex::WriteMps},    {".lp", &EngineIndex::WriteLp},
    {".cbf", &EngineIndex::WriteCbf},    {".bin", &EngineIndex::WriteBin},
    {".nl", &EngineIndex::WriteNL},      {".iis", &EngineIndex::WriteIIS},
    {".ord", &EngineIndex::WriteOrd},    {".relax", &EngineIndex::WriteRelax},
    {".sol", &EngineIndex::WriteSol},    {".json", &EngineIndex::WriteJsonSol},
    {".bas", &EngineIndex::WriteBasis},  {".mst", &EngineIndex::WriteMst},
    {".par", &EngineIndex::WriteParam},
};

bool SameNoCase(const char* a, const char* b) {
  for (; *a != '\0' && *b != '\0'; ++a, ++b) {
    if (std::tolower(static_cast<unsigned char>(*a)) !=
        std::tolower(static_cast<unsigned char>(*b))) {
      return false;
    }
  }
  return *a == *b;
}

template <size_t N>
FileOutcome Dispatch(const FileKind (&kinds)[N], ZELQprob* prob, const char* path,
                     const char* ending) {
  EnginePath converted = ToEnginePath(path);
  if (converted.code != 0) return {converted.code, converted.message};
  if (ending != nullptr) {
    for (const FileKind& kind : kinds) {
      if (SameNoCase(ending, kind.ending)) {
        return {(Engine().*kind.call)(prob, converted.path.c_str())};
      }
    }
  }
  return {kErrorINVALID};
}

}  // namespace

bool EndsWithNoCase(const char* text, const char* ending) {
  if (text == nullptr) return false;
  size_t length = std::strlen(text), tail = std::strlen(ending);
  return length >= tail && SameNoCase(text + (length - tail), ending);
}

FileOutcome ReadAs(ZELQprob* prob, const char* path, const char* ending) {
  return Dispatch(kReaders, prob, path, ending);
}

FileOutcome WriteAs(ZELQprob* prob, const char* path, const char* ending) {
  return Dispatch(kWriters, prob, path, ending);
}

}  // namespace Zelq
