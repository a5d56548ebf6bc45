// What the dialogs, the wizards, the preview and the settings reach of the
// window through MainWindowAccess, beyond the pages' own operations.
#include "ui/localisation/ApplyLanguage.h"
#include "ui/mainwindow/FrmMain.h"

#include <QAction>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QSignalBlocker>
#include <QTabWidget>

namespace quarle::ui {

int FrmMain::AnimationRowCount() const {
    return LstAnimations->count();
}

void FrmMain::AppendAnimationRow(const QString& name) {
    // The new entry is not selected.
    const QSignalBlocker block(LstAnimations);
    LstAnimations->addItem(name);
}

QStringList FrmMain::ModelFileNames() const {
    QStringList names;
    for (int i = 0; i < LstFiles->count(); ++i) {
        names.append(LstFiles->item(i)->text());
    }
    return names;
}

void FrmMain::AppendPartRow(const QString& name) {
    LstParts->addItem(name);
}

void FrmMain::ShowPaths(const QString& texturePath, const QString& modelPath) {
    TxtTexturepath->setText(texturePath);
    // The change of the box opens the model files and the animation wizard
    // and lists the folder's files.
    TxtModelpath->setText(modelPath);
    SetFileListPath(modelPath);
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
