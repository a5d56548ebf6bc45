// Captions, tool tips and (for the main window) the global strings of the
// active language file, applied to one form.
#pragma once

#include "AppState.h"
#include "platform/Services.h"

#include <QWidget>

namespace quarle::ui {

// The form's section is its object name ("FrmMain", "DlgCompile", ...).
// Run for FrmMain it also loads IdsTexts, the messages (MsgTexts) and the
// recent-file entries.
void ApplyLanguage(AppState& state, platform::Services& services, QWidget* form);

} // namespace quarle::ui
