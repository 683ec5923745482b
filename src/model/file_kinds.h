// Choosing the engine's reader or writer by a file kind's ending.
//
// ReadAs and WriteAs convert the path (file_path.h), find the kind whose
// ending matches `ending` ignoring case, and call its engine function with
// the converted path. They record nothing: the caller records the outcome
// with its own message, unless the outcome carries the conversion's text.
//
//   FileOutcome out = ReadAs(prob, "model.mps.gz", ".mps");  // ZELQ_ReadMps
#ifndef ZELQ_MODEL_FILE_KINDS_H_
#define ZELQ_MODEL_FILE_KINDS_H_

#include "zelq/zelq.h"

namespace Zelq {

struct FileOutcome {
  // The engine's code; 3 for a null or empty path or an unknown kind; 2 for
  // a path that converts to nothing or cannot be converted.
  int code = 0;
  // Set when the path's characters could not be converted: this text
  // replaces the caller's message.
  const char* message = nullptr;
};

// Kinds in order: ".mps", ".lp", ".dat-s", ".cbf", ".bin", ".sol", ".json",
// ".bas", ".mst", ".ord", ".par", ".tune".
FileOutcome ReadAs(ZELQprob* prob, const char* path, const char* ending);

// Kinds in order: ".mps", ".lp", ".cbf", ".bin", ".nl", ".iis", ".ord",
// ".relax", ".sol", ".json", ".bas", ".mst", ".par".
FileOutcome WriteAs(ZELQprob* prob, const char* path, const char* ending);

// True when `text` ends with `ending`, comparing with tolower. A null text
// ends with nothing.
bool EndsWithNoCase(const char* text, const char* ending);

}  // namespace Zelq

#endif  // ZELQ_MODEL_FILE_KINDS_H_
