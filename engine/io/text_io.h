// Whole-file text input and output for the file readers and writers, with transparent
// compression (".gz" and ".bz2" through CoinUtils when reading, ".gz" through zlib when writing),
// and the small lexical helpers every text format shares.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace zelq::engine::io {

// Reads the whole of `path` into `text`. Compressed input is recognised by its first bytes, so a
// ".gz" or ".bz2" file is read whatever its name. Returns 0, or 2 with `err` set to
// "cannot open 'path': <reason>" (or a read failure message).
int ReadTextFile(const std::string& path, std::string& text, std::string& err);

// Writes `text` to `path` (gzip-compressed when the name ends in ".gz"). Returns 0 or 2 with `err`.
int WriteTextFile(const std::string& path, std::string_view text, std::string& err);

// Splits text into lines (without "\n" or "\r\n"); lines()[i] is line i + 1 of the file.
std::vector<std::string_view> SplitLines(std::string_view text);

// Whitespace (blank, tab, CR, form feed, vertical tab) separated tokens of one line.
std::vector<std::string_view> Tokens(std::string_view line);

std::string_view Trim(std::string_view s);
bool IEquals(std::string_view a, std::string_view b);
std::string Lower(std::string_view s);

// Parses a whole token as a number: C syntax, a leading '+', Fortran 'D' exponents, and
// "inf"/"infinity" in any case. NaN and trailing garbage are rejected. Magnitudes >= 1e30 become
// +-1e30 (the engine's infinity).
bool ParseNumber(std::string_view s, double* out);

// Shortest text that reads back as exactly `v`; +-1e30 and beyond print as "1e+30"/"-1e+30".
std::string Num(double v);

// `text` quoted for an error message (escaped and shortened).
std::string Quote(std::string_view text);

}  // namespace zelq::engine::io
