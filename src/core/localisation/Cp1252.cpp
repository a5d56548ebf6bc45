#include "localisation/Cp1252.h"

#include <array>

namespace quarle {
namespace {

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

} // namespace

std::string Cp1252ToUtf8(std::string_view bytes) {
    std::string out;
    out.reserve(bytes.size() + bytes.size() / 8);
    // Runs of ASCII are copied whole: a language file is mostly ASCII, and
    // the start reads one of 50 KB before the window shows.
    std::size_t i = 0;
    while (i < bytes.size()) {
        std::size_t ascii = i;
        while (ascii < bytes.size() && static_cast<unsigned char>(bytes[ascii]) < 0x80) {
            ++ascii;
        }
        out.append(bytes.substr(i, ascii - i));
        if (ascii < bytes.size()) {
            AppendUtf8(out, Cp1252CodePoint(static_cast<unsigned char>(bytes[ascii])));
            ++ascii;
        }
        i = ascii;
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
        out += Cp1252Byte(cp).value_or('?');
        i += length;
    }
    return out;
}

} // namespace quarle
