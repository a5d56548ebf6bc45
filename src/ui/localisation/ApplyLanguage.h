// Captions, tool tips and (for the main window) the global strings of the
// active language file, applied to one form.
#pragma once

#include "AppState.h"
#include "platform/Services.h"

#include <QString>
#include <QWidget>
#include <optional>
#include <string>
#include <vector>

namespace quarle::ui {

// The form's section is its object name ("FrmMain", "DlgCompile", ...).
// Run for FrmMain it also loads IdsTexts, the messages (MsgTexts) and the
// recent-file entries.
void ApplyLanguage(AppState& state, platform::Services& services, QWidget* form);

// The language file fileName from the first place (LanguageFolders.h) whose
// copy can be used: it is read (InputFile.h) and holds the global strings.
// A copy passed over is named in Broken (the first one), with why. When no
// copy is whole, the first that can be read at all, as it is.
struct LanguageRead {
    std::optional<std::vector<std::string>> Lines;
    QString Path; // the copy read
    QString Broken;
    QString Why;
};
LanguageRead ReadLanguage(const AppState& state, platform::Services& services,
                          const std::string& fileName);

} // namespace quarle::ui
