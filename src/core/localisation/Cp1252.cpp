#include "localisation/Cp1252.h"

#include <array>

namespace quarle {
namespace {

// Code points of the bytes 0x80 to 0x9F; the undefined ones keep their number.
constexpr std::array<char32_t, 32> High = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178,
};

void AppendUtf8(std::string& out, char32_t cp) {
    if (cp < 0x80) {
        out += static_cast<char>(cp);
    } else if (cp < 0x800) {
        out += static_cast<char>(0xC0 | (cp >> 6));
        out += static_cast<char>(0x80 | (cp & 0x3F));
    } else {
        out += static_cast<char>(0xE0 | (cp >> 12));
        out += static_cast<char>(0x80 | ((cp >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (cp & 0x3F));
    }
}

char ToByte(char32_t cp) {
    if (cp < 0x80 || (cp >= 0xA0 && cp <= 0xFF)) {
        return static_cast<char>(cp);
    }
    for (std::size_t i = 0; i < High.size(); ++i) {
        if (High[i] == cp) {
            return static_cast<char>(0x80 + i);
        }
    }
    return '?';
}

} // namespace

std::string Cp1252ToUtf8(std::string_view bytes) {
    std::string out;
    out.reserve(bytes.size() + bytes.size() / 8);
    for (char c : bytes) {
        const auto b = static_cast<unsigned char>(c);
        if (b < 0x80) {
            out += c;
        } else if (b < 0xA0) {
            AppendUtf8(out, High[b - 0x80]);
        } else {
            AppendUtf8(out, b);
        }
    }
    return out;
}

std::string Utf8ToCp1252(std::string_view text) {
    std::string out;
    out.reserve(text.size());
    std::size_t i = 0;
    while (i < text.size()) {
        const auto b = static_cast<unsigned char>(text[i]);
        if (b < 0x80) {
            out += static_cast<char>(b);
            ++i;
            continue;
        }
        int length = 0;
        char32_t cp = 0;
        if ((b & 0xE0) == 0xC0) {
            length = 2;
            cp = b & 0x1F;
        } else if ((b & 0xF0) == 0xE0) {
            length = 3;
            cp = b & 0x0F;
        } else if ((b & 0xF8) == 0xF0) {
            length = 4;
            cp = b & 0x07;
        }
        bool valid = length > 0 && i + length <= text.size();
        for (int k = 1; valid && k < length; ++k) {
            const auto cont = static_cast<unsigned char>(text[i + k]);
            if ((cont & 0xC0) != 0x80) {
                valid = false;
            } else {
                cp = (cp << 6) | (cont & 0x3F);
            }
        }
        // Overlong forms are not valid UTF-8 either.
        if (valid && ((length == 2 && cp < 0x80) || (length == 3 && cp < 0x800) ||
                      (length == 4 && cp < 0x10000))) {
            valid = false;
        }
        if (!valid) {
            out += '?';
            ++i;
            continue;
        }
        out += ToByte(cp);
        i += length;
    }
    return out;
}

} // namespace quarle
