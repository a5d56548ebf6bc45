// How the model compiler reads numbers and compares words, without the
// locale of the machine: the C library's atof, atoi and scanf numbers in the
// "C" locale, and its case-blind comparisons of ASCII letters.
#pragma once

#include "document/Paths.h"

#include <cstddef>
#include <optional>
#include <string_view>

namespace quarle::compile {

// A number at s[pos] as scanf's %f (float) or strtod (double) reads it, no
// blanks skipped: sign, decimal or hexadecimal digits, exponent, "inf",
// "nan". pos moves behind it; nothing when no number starts there.
template <class T> std::optional<T> ReadCNumber(std::string_view s, std::size_t& pos);
extern template std::optional<float> ReadCNumber(std::string_view, std::size_t&);
extern template std::optional<double> ReadCNumber(std::string_view, std::size_t&);

// An integer at s[pos] as scanf's %d reads it (no blanks skipped); pos
// moves behind it.
std::optional<int> ReadCInt(std::string_view s, std::size_t& pos);

// atof and atoi: blanks skipped, the longest number at the start, 0 when
// there is none.
double Atof(std::string_view s);
int Atoi(std::string_view s);
// Whether the text starts with a number atoi reads (after blanks).
bool StartsWithNumber(std::string_view s);

// stricmp(a, b) == 0: the same text, ignoring the case of ASCII letters.
using paths::EqualsNoCase;
// strnicmp(word, token, n) == 0: the first n characters agree, ignoring
// case; a shorter token agrees only when it ends where the word does.
bool PrefixNoCase(std::string_view word, std::string_view token, std::size_t n);

} // namespace quarle::compile
