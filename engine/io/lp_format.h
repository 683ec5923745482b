// LP format (the row-oriented algebraic text format): reader and writer.
//
// Reader: sections Minimize/Maximize (with an optional constant term, the objective constant),
// Subject To (rows "expr sense rhs", ranges "lo <= expr <= hi", constants on the left moved to
// the right), Bounds, General/Integer, Binary and End; '\' starts a comment. Variables are
// numbered in order of first appearance. A lone negative upper bound ("x <= -1") keeps the
// lower bound 0. "Lazy Constraints" and "User Cuts" sections (row syntax) fill the problem's lazy
// constraints and user cuts. Quadratic terms, indicator, SOS and semi-continuous sections give 10.
//
// Writer: names are cleaned to the LP alphabet (see docs/file-formats.md), the objective lists
// every column (zero coefficients too, so the column order survives a read-back), ranged rows
// are written as one row "name: lo <= expr <= hi", free rows as "expr >= -inf", and every bound
// as "lo <= x <= up" with -inf/+inf words. Lazy constraints and user cuts get their own sections.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "io/model_builder.h"
#include "problem/problem.h"

namespace zelq::engine::io {

// Returns 0, 3 with `err` ("model.lp:7: expected a number after '<='"), or 10.
int ParseLp(std::string_view text, const std::string& source, ModelBuilder& out, std::string& err,
            std::vector<std::string>& notes);

std::string FormatLp(const Problem& p, std::vector<std::string>& notes);

}  // namespace zelq::engine::io
