// The messages of the active language (MessageTexts.h) as the forms show
// them.
#pragma once

#include "AppState.h"

#include <QString>
#include <initializer_list>

namespace quarle::ui {

// The text of a message with the arguments in place of %1, %2, ...
QString MessageText(const AppState& state, Msg key, std::initializer_list<QString> args = {});

} // namespace quarle::ui
