// The dialogs and wizards opened from the main window's menus and buttons,
// and the language editor.
#include "document/Paths.h"
#include "platform/Cp1252Text.h"
#include "ui/common/LimitMessages.h"
#include "ui/dialogs/DlgModeleinstellungen.h"
#include "ui/localisation/DlgLocaliseMain.h"
#include "ui/localisation/DlgSettings.h"
#include "ui/localisation/Messages.h"
#include "ui/localisation/frmAbout.h"
#include "ui/mainwindow/DocumentCommands.h"
#include "ui/mainwindow/FrmMain.h"
#include "ui/preview/FrmCompiledModel.h"
#include "ui/preview/FrmPreview.h"
#include "ui/wizards/AnimWiz1.h"
#include "ui/wizards/AnimWiz2.h"
#include "ui/wizards/AnimWiz3.h"
#include "ui/wizards/AnimWiz4.h"
#include "ui/wizards/AnimWiz5.h"
#include "ui/wizards/Wizard2.h"
#include "ui/wizards/Wizard3.h"
#include "ui/wizards/Wizard4.h"
#include "ui/wizards/Wizard5.h"

#include <QComboBox>
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
    // The wizard sets up a new model over what is open.
    if (!commands_->SaveChangesFirst()) {
        return;
    }
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

void FrmMain::MnuDateiPreview_Click() {
    if (preview_ != nullptr) {
        preview_->raise();
        preview_->activateWindow();
        return;
    }
    preview_ = new FrmPreview(state_, services_, *this, this);
    preview_->setAttribute(Qt::WA_DeleteOnClose);
    connect(preview_, &LocalisedDialog::LocaliseRequested, this, &FrmMain::Localise);
    preview_->show();
}

FrmPreview* FrmMain::OpenFrmPreview() const {
    return preview_;
}

void FrmMain::MnuDateiOpenCompiled_Click() {
    const Document& doc = state_.Doc;
    const QString folder =
        platform::FromCp1252(paths::FolderOf(doc.ModelName.empty() ? doc.QcFile : doc.ModelName));
    const std::optional<platform::FilePick> pick = services_.ShowOpen(
        MessageText(state_, MSG_OPEN_COMPILED_TITLE), QStringLiteral("Model|*.mdl"), folder);
    if (!pick || pick->FileName.isEmpty()) {
        return;
    }
    if (const std::optional<std::string> path = TypedText(state_, services_, pick->FileName)) {
        ShowCompiledModel(*path);
    }
}

void FrmMain::ShowCompiledModel(const std::string& path) {
    if (compiledModel_ == nullptr) {
        compiledModel_ = new FrmCompiledModel(state_, services_, this);
        compiledModel_->setAttribute(Qt::WA_DeleteOnClose);
        connect(compiledModel_, &LocalisedDialog::LocaliseRequested, this, &FrmMain::Localise);
    }
    compiledModel_->ShowModel(path);
    compiledModel_->show();
    compiledModel_->raise();
    compiledModel_->activateWindow();
}

FrmCompiledModel* FrmMain::OpenFrmCompiledModel() const {
    return compiledModel_;
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
