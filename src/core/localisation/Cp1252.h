// Windows-1252, the single-byte code page of scripts, .smd files and
// language files. The document holds its text (names, paths) as cp1252
// bytes, as the files have it; the texts of the language files are turned
// into UTF-8 when read, since only the forms show them. Paths reach the file
// system as UTF-8 (Paths.h).
#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>

namespace quarle {

// The code page's one table: the code points of the bytes 0x80 to 0x9F (the
// others are their own code point). The undefined ones keep their number.
// Header only, so that the platform's crossing to Qt's text reads the same
// table without linking the core.
inline constexpr std::array<char32_t, 32> Cp1252High = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178,
};

// The character of one byte.
constexpr char32_t Cp1252CodePoint(unsigned char byte) {
    return byte >= 0x80 && byte < 0xA0 ? Cp1252High[byte - 0x80u] : char32_t{byte};
}

// The byte of one character; nothing when the code page has none.
constexpr std::optional<char> Cp1252Byte(char32_t c) {
    if (c < 0x80 || (c >= 0xA0 && c <= 0xFF)) {
        return static_cast<char>(c);
    }
    for (std::size_t i = 0; i < Cp1252High.size(); ++i) {
        if (Cp1252High[i] == c) {
            return static_cast<char>(0x80 + i);
        }
    }
    return std::nullopt;
}

// Every byte maps to one character. The five bytes that the code page leaves
// undefined (0x81, 0x8D, 0x8F, 0x90, 0x9D) become the control characters of
// the same number, so that any file survives a round trip unchanged.
std::string Cp1252ToUtf8(std::string_view bytes);

// Characters the code page cannot hold, and bytes that are not valid UTF-8,
// become '?'.
std::string Utf8ToCp1252(std::string_view text);

} // namespace quarle
