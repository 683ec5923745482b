// Names used when a problem is written to a file: every element gets a name (its own, or the
// default "C<j>" / "R<i>"), names are made unique, and formats with a restricted alphabet get a
// cleaned-up spelling.
#pragma once

#include <string>
#include <vector>

#include "problem/names.h"
#include "problem/problem.h"

namespace zelq::engine::io {

// The names of `count` elements, defaults for unnamed ones ("C12", "R3"); control characters
// become '_', and a name that repeats an earlier one gets the suffix "_<index>" so that every
// written name is distinct. Readers of solution-side files index names the same way.
std::vector<std::string> OutputNames(const NameList& names, int count, char prefix);

// Replaces characters `bad` accepts by '_' and re-establishes uniqueness. Returns the number of
// names that changed.
int CleanNames(std::vector<std::string>& names, bool (*bad)(char c), const char* firstBad = "");

// Names of the model rows, then of the lazy constraints ("lazy<i>" when unnamed) and user cuts
// ("cut<i>"), all unique; the order in which writers list rows.
std::vector<std::string> AllRowNamesOf(const Problem& p);

// Makes names unique in place (later duplicates get "_<index>", repeated until unique).
void MakeUnique(std::vector<std::string>& names);

}  // namespace zelq::engine::io
