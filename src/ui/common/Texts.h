#pragma once

// The two ways a string of the core becomes a Qt text in the forms.

#include "platform/Cp1252Text.h"

#include <QString>
#include <string>

namespace quarle::ui {

// A text of the language file, held in UTF-8.
inline QString Text(const std::string& s) {
    return QString::fromStdString(s);
}

// A text of the document, a path or a name, held in the script's code page.
inline QString Doc(const std::string& s) {
    return platform::FromCp1252(s);
}

} // namespace quarle::ui
