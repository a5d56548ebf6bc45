// The document and every file of the format hold text as cp1252 bytes; Qt
// holds Unicode. Text crosses between them here and nowhere else.
#pragma once

#include <QString>
#include <optional>
#include <string>
#include <string_view>

namespace quarle::platform {

// Every byte maps to one character; the five bytes cp1252 leaves undefined
// become the control characters of the same number, so nothing is lost.
QString FromCp1252(std::string_view bytes);

// The bytes of text in cp1252, or nothing when it holds a character that
// cp1252 cannot hold (the form refuses such a text; it is never written as
// something else).
std::optional<std::string> ToCp1252(const QString& text);

// The bytes of text in cp1252 with '?' for each character cp1252 cannot
// hold: for a path that is only handed on (a program, the working folder),
// where the failure that follows names it.
std::string ToCp1252Marked(const QString& text);

} // namespace quarle::platform
