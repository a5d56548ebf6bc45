// The messages of the active language (MessageTexts.h) as the forms show
// them.
#pragma once

#include "AppState.h"
#include "platform/Services.h"

#include <QString>
#include <initializer_list>
#include <optional>
#include <string>

namespace quarle::ui {

// The text of a message with the arguments in place of %1, %2, ...
QString MessageText(const AppState& state, Msg key, std::initializer_list<QString> args = {});

// A text the user typed, as the document holds text (cp1252 bytes). A text
// with a character cp1252 cannot hold is refused with a message box, and
// nothing comes back: the caller leaves the document as it was.
std::optional<std::string> TypedText(const AppState& state, platform::Services& services,
                                     const QString& text);

} // namespace quarle::ui
