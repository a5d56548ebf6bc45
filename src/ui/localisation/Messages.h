// The messages of the active language (MessageTexts.h) as the forms show
// them.
#pragma once

#include "AppState.h"
#include "document/InputFile.h"
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

// Why a file is not read (InputFile.h), naming it, in the active language.
QString OpenProblemText(const AppState& state, const OpenProblem& problem);

// A file that exists but is not read (a folder, a pipe, a device, too large,
// refused by the system) is told in a message box; a missing file is not:
// the forms go on without it as before. True when something was told.
bool TellUnreadFile(const AppState& state, platform::Services& services,
                    const OpenProblem& problem);

} // namespace quarle::ui
