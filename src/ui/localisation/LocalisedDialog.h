// What every dialog and wizard page shares for its languages: the localise
// button (hidden unless localisation mode is on) and the first step of its
// load, the language of its section. A constructor builds the designed form
// only; its load (Form_Load) runs once, when the form is first shown or when
// whoever shows it calls Load earlier, so that a form built and not shown
// (the catalogue's factories) holds its designed texts. A click on the button asks for the
// language editor on the form; whoever opens the form connects
// LocaliseRequested to FrmMain::Localise, or forwards it with
// ForwardLocalise when the form is opened by another dialog.
#pragma once

#include "AppState.h"
#include "platform/Services.h"

#include <QDialog>

class QPushButton;

namespace quarle::ui {

class LocalisedDialog : public QDialog {
    Q_OBJECT

public:
    QPushButton* CmdLocalise = nullptr;

    void CmdLocalise_Click();

    // Passes the requests of a dialog this one opens on to this one's opener.
    void ForwardLocalise(LocalisedDialog& child);

    // Runs Form_Load unless it ran.
    void Load();
    // The first showing loads the form.
    void setVisible(bool visible) override;

signals:
    // The language editor is to open on this form.
    void LocaliseRequested(QWidget* form);

protected:
    LocalisedDialog(AppState& state, platform::Services& services, QWidget* parent);
    ~LocalisedDialog() override;

    // Creates CmdLocalise, hidden, and registers it at this point of the
    // form's creation order. The caller places it.
    QPushButton* CreateCmdLocalise();
    // The first steps of Form_Load: the language of the form's section
    // (forms the language reader is not applied to pass false), then
    // CmdLocalise shown while localisation mode is on.
    void LoadLanguage(bool applyLanguage = true);
    // The form's load: the language, then what it shows of the document.
    virtual void Form_Load() {}

    AppState& state_;
    platform::Services& services_;

private:
    bool loaded_ = false;
};

} // namespace quarle::ui
