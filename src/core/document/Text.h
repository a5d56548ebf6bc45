// Text and number helpers of the script dialect. Positions count from 1, as
// in the script format's own rules; every routine is pure but for its in/out
// arguments.
//
// Every routine takes any input: a position below 1 counts as 1 (Left and
// SplitAt take a count below 0 as 0), a position past the end reads an empty
// text. Text is cp1252, and case-insensitive comparisons use its upper case
// (ToUpper).
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace quarle {

// "gg-1gg": no token left / no value found.
inline constexpr std::string_view NoToken = "gg-1gg";

// Next token of Line from position Pos (1-based); Pos moves behind it.
// An unquoted token ends at a blank or tab, which is used up; a token that
// starts on a double quote ends at the next double quote, which stays in the
// token, and the blank behind it is not used up. Three blanks in a row give an
// empty token. NoToken when nothing is left; Pos then stays where it was.
// The token is a view into Line.
std::string_view NextToken(std::string_view line, int& pos);

// While Find occurs exactly, cut out its first case-insensitive occurrence.
// An empty Find changes nothing.
std::string RemoveAll(std::string_view source, std::string_view find);
// Every exact Find, left to right, replaced by With. An empty Find changes nothing.
std::string ReplaceAll(std::string_view source, std::string_view find, std::string_view with);
// Position of the last Find, searching down from Start - length of Find; -1 when none.
int FindLast(int start, std::string_view source, std::string_view find);
// Head = Left(Source, Pos), Tail = Mid(Source, Pos + 1).
void SplitAt(std::string_view source, int pos, std::string& head, std::string& tail);
// What stands behind the first Pattern (case-insensitive) from Start on, or "-1".
std::string TextAfter(std::string_view source, std::string_view pattern, int start);
// The number at the start of Text; a point in every locale; 0 when there is none.
// Blanks and tabs are skipped wherever they stand ("1 2" is 12); then an
// optional sign, digits, an optional point with digits, an optional exponent
// (E or e, optional sign, at least one digit). Reading stops at the first
// character that cannot belong to the number, so "1,5" is 1. A number beyond
// the double range gives an infinity, one below it 0; "-0" gives plain 0.
double TextToNumber(std::string_view text);
// Rounding of a TextToNumber result into an i16 field: nearest, halves to even,
// clamped to the field's range.
std::int16_t ToI16(double value);
// Rounding of a TextToNumber result into an f32 field: the nearest float,
// clamped to the largest finite float; NaN gives 0.
float ToF32(double value);
// The key filter of number fields. Bit 0 of Flags allows a point, bit 1 a minus.
int FilterKey(int& key, int flags);

// Left, Mid and Trim of the format's rules (Trim removes blanks only, not tabs).
std::string_view Left(std::string_view s, int n);
std::string_view Mid(std::string_view s, int p);
std::string_view Mid(std::string_view s, int p, int n);
std::string_view Trim(std::string_view s);
// Upper case of cp1252: ASCII letters, à-þ to À-Þ, š œ ž ÿ to Š Œ Ž Ÿ; ÷ and ß stay.
std::string ToUpper(std::string_view s);

} // namespace quarle
