// The refusals at the ends of the document's tables: a message of the active
// language with the limit in it, titled with the language's word for an error.
#pragma once

#include "AppState.h"
#include "platform/Services.h"

#include <QString>
#include <initializer_list>

namespace quarle::ui {

// A message box with the text of message (MSG_PARTS_FULL, MSG_GROUPS_FULL,
// MSG_ANIMATIONS_FULL), the limit as its %1, an OK button and an exclamation
// mark.
void RefuseAtLimit(const AppState& state, platform::Services& services, Msg message, int limit);
// The same box for a message with more to say than the limit: args are its
// %1, %2, ...
void RefuseAtLimit(const AppState& state, platform::Services& services, Msg message,
                   std::initializer_list<QString> args);

} // namespace quarle::ui
