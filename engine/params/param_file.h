// Parameter files (".par"): plain text, one "Name Value" pair per line.
//
//   # Zelq parameter file
//   TimeLimit 60
//   threads   4        # names are matched ignoring case
//
// Rules:
// - '#' starts a comment that runs to the end of the line; blank lines are
//   ignored; lines may end in "\n" or "\r\n"; a leading UTF-8 byte order
//   mark is skipped.
// - A line holds exactly two fields separated by spaces or tabs: a parameter
//   name (public or unlisted, any case) and its value.
// - Integer parameters take a decimal integer, double parameters a decimal
//   or scientific number ("1e-6", "1e+30", "inf"); a leading '+' is allowed.
//   Values are checked against the parameter's range.
// - A name given twice takes the later value.
// - Reading applies the listed values on top of the current ones; parameters
//   not in the file keep their values.
//
// Writing stores, in table order, exactly the parameters whose value differs
// from the default, so a file read into a default ParamSet reproduces the
// set. Doubles are written in their shortest exact form.
#pragma once

#include <string>
#include <string_view>

#include "params.h"

namespace zelq::engine {

// Text of a parameter file for `params`.
std::string FormatParamFile(const ParamSet& params);

// Parses `text` and, only when every line is valid, applies it to `params`.
// `source` names the file in messages: "model.par:3: unknown parameter 'Foo'".
// Returns kParamOk, kParamErrInvalid for bad content or kParamErrMemory.
int ParseParamFile(std::string_view text, std::string_view source, ParamSet& params,
                   std::string& msg);

// Writes FormatParamFile(params) to `path` through a temporary file that
// replaces `path` only once it is complete. Returns kParamOk,
// kParamErrFile or kParamErrInvalid (null path).
int WriteParamFile(const char* path, const ParamSet& params, std::string& msg);

// Reads `path` and applies it as ParseParamFile does. Returns kParamOk,
// kParamErrFile when the file cannot be read, kParamErrInvalid for bad
// content or a null path, kParamErrMemory. `params` is unchanged on failure.
int ReadParamFile(const char* path, ParamSet& params, std::string& msg);

}  // namespace zelq::engine
