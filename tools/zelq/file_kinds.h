// Files the zelq command reads and writes, told apart by the ending of their name.
#ifndef ZELQ_TOOLS_ZELQ_FILE_KINDS_H_
#define ZELQ_TOOLS_ZELQ_FILE_KINDS_H_

#include <string>

#include "zelq/zelqcpp.h"

namespace zelqcli {

enum class FileRole { kProblem, kResult };

// The endings accepted in each place, for usage and error messages.
const char* ProblemReadEndings();   // FILE of solve, info and convert (".gz" allowed)
const char* ProblemWriteEndings();  // OUT of convert
const char* AnyWriteEndings();      // --write of solve

// Throws CliFailure (usage) unless the ending names a writer; with problemOnly, a problem writer.
void CheckWritable(const std::string& path, bool problemOnly);

// Reads a problem file into the model. A missing file, an unknown ending or a parse error
// throws CliFailure with exit code 3 and a message naming the file.
void ReadProblem(Zelq::Model& model, const std::string& path);

// Writes by ending (checked beforehand with CheckWritable); failures throw CliFailure (3).
void WriteFile(Zelq::Model& model, const std::string& path);

}  // namespace zelqcli

#endif  // ZELQ_TOOLS_ZELQ_FILE_KINDS_H_
