// Windows-1252, the single-byte code page of scripts, .smd files and
// language files. The document holds its text (names, paths) as cp1252
// bytes, as the files have it; the texts of the language files are turned
// into UTF-8 when read, since only the forms show them. Paths reach the file
// system as UTF-8 (Paths.h).
#pragma once

#include <string>
#include <string_view>

namespace quarle {

// Every byte maps to one character. The five bytes that the code page leaves
// undefined (0x81, 0x8D, 0x8F, 0x90, 0x9D) become the control characters of
// the same number, so that any file survives a round trip unchanged.
std::string Cp1252ToUtf8(std::string_view bytes);

// Characters the code page cannot hold, and bytes that are not valid UTF-8,
// become '?'.
std::string Utf8ToCp1252(std::string_view text);

} // namespace quarle
