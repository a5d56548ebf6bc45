// What the dialogs, the wizards, the preview and the settings reach of the
// window through MainWindowAccess: the pages answer for their lists, the
// window for its own controls.
#include "ui/localisation/ApplyLanguage.h"
#include "ui/mainwindow/AnimationsPage.h"
#include "ui/mainwindow/FrmMain.h"
#include "ui/mainwindow/ModelFilesPage.h"

#include <QAction>
#include <QPushButton>
#include <QTabWidget>

namespace quarle::ui {

std::optional<int> FrmMain::AnimGroup() const {
    return animations_->AnimGroup();
}

AnimRec* FrmMain::CurrentAnim() {
    return animations_->CurrentAnim();
}

int FrmMain::AnimationRowCount() const {
    return animations_->AnimationRowCount();
}

void FrmMain::AppendAnimationRow(const QString& name) {
    animations_->AppendAnimationRow(name);
}

std::optional<std::pair<int, int>> FrmMain::PreviewAnimation() const {
    return animations_->PreviewAnimation();
}

QStringList FrmMain::ModelFileNames() const {
    return modelFiles_->ModelFileNames();
}

void FrmMain::AppendPartRow(const QString& name) {
    modelFiles_->AppendPartRow(name);
}

void FrmMain::ShowPaths(const QString& texturePath, const QString& modelPath) {
    modelFiles_->ShowPaths(texturePath, modelPath);
}

std::vector<int> FrmMain::PreviewParts() const {
    return modelFiles_->PreviewParts();
}

void FrmMain::ShowLanguage() {
    // The section's caption for TabSmd goes to the page showing: the first.
    TabSmd->setCurrentIndex(0);
    ApplyLanguage(state_, services_, this);
}

void FrmMain::ShowLocaliseButton(bool on) {
    CmdLocalise->setVisible(on);
}

void FrmMain::LocaliseGlobalStringsNext() {
    Tag = QStringLiteral("null");
}

void FrmMain::OfferTools(bool compiler, bool editor, bool viewer) {
    CmdCompile->setEnabled(compiler);
    MnuDateiViewCode->setEnabled(editor);
    MnuDateiView->setEnabled(viewer);
}

} // namespace quarle::ui
