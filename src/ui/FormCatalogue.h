// The forms that have a section in a language file, in the order of the
// sections in the shipped files, each with a factory that builds it in its
// designed state (nothing of its load runs). The language tests, the form
// gallery and the dump of the designed texts (tools/lng) walk this list, so a
// new form that reads a language file is added here and nowhere else.
#pragma once

#include "AppState.h"
#include "platform/Services.h"
#include "platform/SettingsStore.h"

#include <QWidget>
#include <functional>
#include <memory>
#include <vector>

namespace quarle::ui {

class FrmMain;

// What the forms are built from. Main is the main window the dialogs work
// through; it must outlive the forms built with it.
struct FormNeeds {
    AppState& State;
    platform::Services& Services;
    platform::SettingsStore& Settings;
    FrmMain& Main;
};

struct CataloguedForm {
    // The form's Name, which is also the head line of its section.
    const char* Name;
    // False for the forms that keep their designed texts when they load; their
    // sections are there for the language editor, which rewrites them.
    bool AppliesLanguage;
    std::function<std::unique_ptr<QWidget>(FormNeeds&)> Make;
};

const std::vector<CataloguedForm>& FormCatalogue();

} // namespace quarle::ui
