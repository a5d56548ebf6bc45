// The refusals at the ends of the document's tables. The system's language
// files carry no texts for them, so they are fixed English sentences; the
// title is the language's word for an error.
#pragma once

#include "AppState.h"
#include "platform/Services.h"

namespace quarle::ui {

inline constexpr const char* PartsFullText =
    "This body group already has 16 parts, the most a group can hold. No part was added.";
inline constexpr const char* GroupsFullText =
    "The model already has 32 body groups, the most it can hold. No group was added.";
inline constexpr const char* AnimationsFullText =
    "This sequence group already has 101 animations, the most a group can hold. No animation "
    "was added.";

// A message box with the text, an OK button and an exclamation mark.
void RefuseAtLimit(const AppState& state, platform::Services& services, const char* text);

} // namespace quarle::ui
