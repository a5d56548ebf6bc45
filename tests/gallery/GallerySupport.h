// What the pictures of the form gallery share: the count of failures, saving
// a form as PNG, and a main window started in a language as the program
// starts it.
#pragma once

#include "AppState.h"
#include "support/ScriptedServices.h"
#include "support/TempSettings.h"
#include "ui/mainwindow/AnimationsPage.h"
#include "ui/mainwindow/DocumentCommands.h"
#include "ui/mainwindow/FrmMain.h"
#include "ui/mainwindow/ModelFilesPage.h"
#include "ui/mainwindow/ModelFolderList.h"

#include <QString>
#include <memory>

class QWidget;

namespace quarle::gallery {

// Reports a failure on stderr and counts it.
void Fail(const QString& what);
int Failures();

// Lets pending events run, then writes folder/name.png and prints its path.
void Save(QWidget* form, const QString& folder, const QString& name);
// Whether this run saved folder/name.png or a folder/name-*.png.
bool Shown(const QString& folder, const QString& name);

// Fails when the services recorded any question.
void ExpectNoPrompts(const test::ScriptedServices& services, const QString& what);

// A main window, built, with settings of its own whose language is
// languageFile. Settings, State and the form may be changed before Start
// runs the start sequence.
struct Window {
    explicit Window(const char* languageFile);

    // Form_Load, then shows the window.
    ui::FrmMain& Start();

    test::TempSettings Settings;
    test::ScriptedServices Services;
    std::unique_ptr<AppState> State = std::make_unique<AppState>();
    std::unique_ptr<ui::FrmMain> Form;
};

} // namespace quarle::gallery
