#include "platform/Cp1252Text.h"

#include "localisation/Cp1252.h"

#include <QList>

namespace quarle::platform {

QString FromCp1252(std::string_view bytes) {
    QString text;
    text.reserve(static_cast<qsizetype>(bytes.size()));
    for (char c : bytes) {
        const auto b = static_cast<unsigned char>(c);
        text += QChar(static_cast<char16_t>(Cp1252CodePoint(b)));
    }
    return text;
}

std::optional<std::string> ToCp1252(const QString& text) {
    std::string bytes;
    bytes.reserve(static_cast<std::size_t>(text.size()));
    for (const char32_t c : text.toUcs4()) {
        const std::optional<char> byte = Cp1252Byte(c);
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
        bytes += Cp1252Byte(c).value_or('?');
    }
    return bytes;
}

} // namespace quarle::platform
