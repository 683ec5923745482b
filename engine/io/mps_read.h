// MPS reader (fixed and free format, detected per file).
//
// A file whose data lines all keep the fixed-format separator columns blank is read by column
// positions, so names may contain blanks; any other file is split at whitespace. Conventions:
// the first N row is the objective (or the one named by OBJNAME), later N rows are dropped; an
// RHS on the objective row is minus the objective constant; RANGES follow the usual sign table
// relative to the final RHS; columns inside MARKER INTORG/INTEND blocks are integer with default
// bounds [0, 1] until a bound record other than BV gives them [0, inf) plus that record; a
// negative UP bound on a column whose lower bound was never set makes the lower bound -inf.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "io/model_builder.h"

namespace zelq::engine::io {

// Parses MPS text. `source` names the file in messages ("afiro.mps:12: unknown row 'R9'").
// Returns 0; 3 with `err` for malformed content; 10 for sections this build cannot hold
// (quadratic, cones, SOS, indicators, semi-continuous bounds). Remarks that do not stop the
// reading (dropped free rows, the negative-UP rule, ignored extra RHS sets) go to `notes`.
int ParseMps(std::string_view text, const std::string& source, ModelBuilder& out, std::string& err,
             std::vector<std::string>& notes);

}  // namespace zelq::engine::io
