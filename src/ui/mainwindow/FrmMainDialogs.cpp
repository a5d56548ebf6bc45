// The dialogs and wizards opened from the main window's menus and buttons,
// and the language editor.
#include "ui/localisation/DlgLocaliseMain.h"
#include "ui/localisation/DlgSettings.h"
#include "ui/localisation/frmAbout.h"
#include "ui/mainwindow/FrmMain.h"

#include <QPushButton>

namespace quarle::ui {

void FrmMain::MnuEinstModel_Click() {}

void FrmMain::CmdModeleinst_Click() {
    MnuEinstModel_Click();
}

void FrmMain::MnuEinstAllg_Click() {
    DlgSettings dialog(state_, services_, *this, this);
    connect(&dialog, &LocalisedDialog::LocaliseRequested, this, &FrmMain::Localise);
    dialog.exec();
}

void FrmMain::MnuWizardsGrWiz_Click() {}

void FrmMain::MnuWizardsAnimWiz_Click() {}

void FrmMain::MnuHilfeUeber_Click() {
    if (about_ != nullptr) {
        about_->raise();
        about_->activateWindow();
        return;
    }
    about_ = new frmAbout(state_, services_, this);
    about_->setAttribute(Qt::WA_DeleteOnClose);
    connect(about_, &LocalisedDialog::LocaliseRequested, this, &FrmMain::Localise);
    about_->show();
}

void FrmMain::Localise(QWidget* obj) {
    LocaliseTarget = obj;
    // The editor stands on the form it works on, also over a modal dialog.
    DlgLocaliseMain dialog(state_, services_, obj, Tag == QLatin1String("null"),
                           obj != nullptr ? obj : this);
    dialog.exec();
    Tag.clear();
    LocaliseTarget = nullptr;
}

void FrmMain::CmdLocalise_Click() {
    Localise(this);
}

} // namespace quarle::ui
