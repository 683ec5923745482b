// JSON solution files.
//
//   {
//     "status": "OPTIMAL", "status_code": 1, "objective": 3089,
//     "columns": [ {"name": "x1", "value": 1, "reduced_cost": 0}, ... ],
//     "rows": [ {"name": "r1", "activity": 2, "dual": 0.5}, ... ]
//   }
//
// "reduced_cost" and "dual" are present for LP solutions only, "rows" when row activities exist.
// Non-finite numbers are written as null. Reading takes the column values back (a MIP start).
#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "io/sol_files.h"

namespace zelq::engine::io {

struct SolutionView {
  int status = 0;
  double objective = 0.0;
  const std::vector<std::string>* colNames = nullptr;
  const std::vector<std::string>* rowNames = nullptr;
  const double* x = nullptr;         // one per column
  const double* redCost = nullptr;   // optional
  const double* activity = nullptr;  // optional, one per row
  const double* dual = nullptr;      // optional
};

std::string FormatJsonSolution(const SolutionView& s);

// Reads the "columns" array of a JSON solution: every entry needs a known "name" and a numeric
// "value" (entries with a null value are skipped). Returns 0 or 3 with `err` = "file:line: ...".
int ParseJsonColumnValues(std::string_view text, const std::string& source, const NameIndex& cols,
                          std::vector<std::pair<int, double>>& out, std::string& err);

}  // namespace zelq::engine::io
