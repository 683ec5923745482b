// Small text helpers of the zelq command: endings, strict number parsing and number printing.
#ifndef ZELQ_TOOLS_ZELQ_CLI_TEXT_H_
#define ZELQ_TOOLS_ZELQ_CLI_TEXT_H_

#include <string>

namespace zelqcli {

std::string Lower(std::string text);
// Case-insensitive test of a file name's ending.
bool EndsWithNoCase(const std::string& text, const std::string& tail);

// Whole-text parses: no leading or trailing characters, no empty text. An integer must fit
// in 32 bits; a number must be finite.
bool ParseInt(const std::string& text, int* value);
bool ParseDouble(const std::string& text, double* value);

// Numbers as the results table prints them: up to 10 significant digits, "inf"/"-inf" for
// the engine's infinity (magnitude 1e30 or more).
std::string FormatNumber(double value);

}  // namespace zelqcli

#endif  // ZELQ_TOOLS_ZELQ_CLI_TEXT_H_
