// What the parts of the main window reach of the window that holds them:
// beyond what the dialogs reach (MainWindowAccess, which a part hands on to
// the dialogs it opens), the language editor for those dialogs, the window
// of compiled models and the settings written at once.
#pragma once

#include "ui/common/MainWindowAccess.h"

#include <string>

class QWidget;

namespace quarle::ui {

class MainWindowShell : public MainWindowAccess {
public:
    // Opens the language editor on a form and returns when it closes; the
    // dialogs of the parts ask for it through their localise button.
    virtual void Localise(QWidget* form) = 0;
    // Shows a compiled model (document bytes) in the window of compiled models.
    virtual void ShowCompiledModel(const std::string& path) = 0;
    // The settings are written now (the session may end without a close).
    virtual void WriteSettingsNow() = 0;

protected:
    ~MainWindowShell() = default;
};

} // namespace quarle::ui
