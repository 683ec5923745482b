// MPS writer.
//
// Writes free MPS with fields at the classic column positions. When some name contains a blank
// and every name fits in 8 characters, the file is written in strict fixed layout instead (so
// the blanks survive a read-back); otherwise blanks in names become '_'. Maximisation is written
// as "OBJSENSE / MAX" with the coefficients as they are; the objective constant as minus the RHS
// of the objective row; a row lo <= a'x <= up with both sides finite as an L row with a range;
// a free row as an L row with RHS 1e+30; integer columns inside MARKER blocks with explicit
// bounds (BV for binaries), so no reader's [0, 1] default applies; lazy constraints and user
// cuts as LAZYCONS and USERCUTS sections (declared like ROWS, entries in COLUMNS/RHS/RANGES).
#pragma once

#include <string>
#include <vector>

#include "problem/problem.h"

namespace zelq::engine::io {

// The MPS text of `p`. Remarks (renamed elements, rows that cannot be written exactly) go to
// `notes`.
std::string FormatMps(const Problem& p, std::vector<std::string>& notes);

}  // namespace zelq::engine::io
