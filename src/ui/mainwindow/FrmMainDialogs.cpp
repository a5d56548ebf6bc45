// The dialogs and wizards opened from the main window's menus and buttons,
// and the language editor. Each opener is wired; the forms come later.
#include "ui/dialogs/DlgModeleinstellungen.h"
#include "ui/mainwindow/FrmMain.h"

namespace quarle::ui {

void FrmMain::MnuEinstModel_Click() {
    DlgModeleinstellungen dialog(state_, services_, *this, this);
    connect(&dialog, &LocalisedDialog::LocaliseRequested, this, &FrmMain::Localise);
    dialog.exec();
}

void FrmMain::CmdModeleinst_Click() {
    MnuEinstModel_Click();
}

void FrmMain::MnuEinstAllg_Click() {}

void FrmMain::MnuWizardsGrWiz_Click() {}

void FrmMain::MnuWizardsAnimWiz_Click() {}

void FrmMain::MnuHilfeUeber_Click() {}

void FrmMain::Localise(QWidget* /*obj*/) {}

void FrmMain::CmdLocalise_Click() {
    Localise(this);
}

} // namespace quarle::ui
