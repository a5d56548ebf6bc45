// The dialogs and wizards opened from the main window's menus and buttons,
// and the language editor.
#include "ui/dialogs/DlgModeleinstellungen.h"
#include "ui/localisation/DlgLocaliseMain.h"
#include "ui/localisation/DlgSettings.h"
#include "ui/localisation/frmAbout.h"
#include "ui/mainwindow/FrmMain.h"
#include "ui/mainwindow/LimitMessages.h"
#include "ui/wizards/AnimWiz1.h"
#include "ui/wizards/AnimWiz2.h"
#include "ui/wizards/AnimWiz3.h"
#include "ui/wizards/AnimWiz4.h"
#include "ui/wizards/AnimWiz5.h"
#include "ui/wizards/Wizard2.h"
#include "ui/wizards/Wizard3.h"
#include "ui/wizards/Wizard4.h"
#include "ui/wizards/Wizard5.h"

#include <QLineEdit>
#include <QListWidget>

#include <QPushButton>

namespace quarle::ui {

void FrmMain::MnuEinstModel_Click() {
    DlgModeleinstellungen dialog(state_, services_, *this, this);
    connect(&dialog, &LocalisedDialog::LocaliseRequested, this, &FrmMain::Localise);
    dialog.exec();
}

void FrmMain::CmdModeleinst_Click() {
    MnuEinstModel_Click();
}

void FrmMain::MnuEinstAllg_Click() {
    DlgSettings dialog(state_, services_, *this, this);
    connect(&dialog, &LocalisedDialog::LocaliseRequested, this, &FrmMain::Localise);
    dialog.exec();
}

void FrmMain::MnuWizardsGrWiz_Click() {
    WizardChain chain(this, [this](LocalisedDialog& page) {
        connect(&page, &LocalisedDialog::LocaliseRequested, this, &FrmMain::Localise);
    });
    chain.AddPage([this](WizardChain& c) { return new Wizard2(state_, services_, c, this); });
    chain.AddPage([this](WizardChain& c) { return new Wizard3(state_, services_, c, this); });
    chain.AddPage([this](WizardChain& c) { return new Wizard4(state_, services_, c, this); });
    chain.AddPage(
        [this](WizardChain& c) { return new Wizard5(state_, services_, c, *this, this); });
    chain.Run();
}

void FrmMain::MnuWizardsAnimWiz_Click() {
    // The animation goes to the group on show; a box left empty shows group 0.
    if (!AnimGroup()) {
        TxtAnimNr->setText(QStringLiteral("0"));
    }
    // A full group is refused before the user fills in five pages for it.
    if (LstAnimations->count() > limits::LastWrittenAnimSlot) {
        RefuseAtLimit(state_, services_, MSG_ANIMATIONS_FULL, limits::LastWrittenAnimSlot + 1);
        return;
    }
    WizardChain chain(this, [this](LocalisedDialog& page) {
        connect(&page, &LocalisedDialog::LocaliseRequested, this, &FrmMain::Localise);
    });
    chain.AddPage([this](WizardChain& c) { return new AnimWiz1(state_, services_, c, this); });
    chain.AddPage([this](WizardChain& c) { return new AnimWiz2(state_, services_, c, this); });
    chain.AddPage([this](WizardChain& c) { return new AnimWiz3(state_, services_, c, this); });
    chain.AddPage([this](WizardChain& c) { return new AnimWiz4(state_, services_, c, this); });
    chain.AddPage(
        [this](WizardChain& c) { return new AnimWiz5(state_, services_, c, *this, this); });
    chain.Run();
}

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
