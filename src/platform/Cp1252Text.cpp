#include "platform/Cp1252Text.h"

#include <QList>
#include <array>

namespace quarle::platform {
namespace {

// Code points of the bytes 0x80 to 0x9F; the undefined ones keep their number.
constexpr std::array<char32_t, 32> High = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178,
};

// The byte of one character; nothing when cp1252 has none.
std::optional<char> Byte(char32_t c) {
    if (c < 0x80 || (c >= 0xA0 && c <= 0xFF)) {
        return static_cast<char>(c);
    }
    for (std::size_t i = 0; i < High.size(); ++i) {
        if (High[i] == c) {
            return static_cast<char>(0x80 + i);
        }
    }
    return std::nullopt;
}

} // namespace

QString FromCp1252(std::string_view bytes) {
    QString text;
    text.reserve(static_cast<qsizetype>(bytes.size()));
    for (char c : bytes) {
        const auto b = static_cast<unsigned char>(c);
        text += (b >= 0x80 && b < 0xA0) ? QChar(static_cast<char16_t>(High[b - 0x80])) : QChar(b);
    }
    return text;
}

std::optional<std::string> ToCp1252(const QString& text) {
    std::string bytes;
    bytes.reserve(static_cast<std::size_t>(text.size()));
    for (const char32_t c : text.toUcs4()) {
        const std::optional<char> byte = Byte(c);
        if (!byte) {
            return std::nullopt;
        }
        bytes += *byte;
    }
    return bytes;
}

std::string ToCp1252Marked(const QString& text) {
    std::string bytes;
    bytes.reserve(static_cast<std::size_t>(text.size()));
    for (const char32_t c : text.toUcs4()) {
        bytes += Byte(c).value_or('?');
    }
    return bytes;
}

} // namespace quarle::platform
