// The settings dialog and the translation tools, in each language:
//   DlgSettings.png                 a language just picked
//   DlgSettings-Localisation.png    localisation mode switched on
//   DlgNewLocalisation.png          a new language being named
//   DlgLocaliseMain-Strings.png     the editor on the global strings
//   DlgLocaliseMain.png             the editor on the main window
//   frmAbout.png
#include "GallerySupport.h"
#include "support/ModalScript.h"
#include "ui/localisation/DlgLocaliseMain.h"
#include "ui/localisation/DlgNewLocalisation.h"
#include "ui/localisation/DlgSettings.h"
#include "ui/localisation/frmAbout.h"

#include <QComboBox>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>

namespace {

using quarle::gallery::Fail;
using quarle::gallery::Save;
using quarle::test::ModalScript;
namespace ui = quarle::ui;

// Picks a row of the editor's list and saves the editor with it.
void ShootEditor(QWidget* modal, const QString& row, const QString& folder, const QString& name) {
    auto* editor = qobject_cast<ui::DlgLocaliseMain*>(modal);
    if (editor == nullptr) {
        Fail(QStringLiteral("%1: not the language editor").arg(name));
        modal->close();
        return;
    }
    const auto found = editor->LstToLocalise->findItems(row, Qt::MatchExactly);
    if (found.isEmpty()) {
        Fail(QStringLiteral("%1: no row %2").arg(name, row));
    } else {
        editor->LstToLocalise->setCurrentItem(found.first());
    }
    Save(editor, folder, name);
    QTest::mouseClick(editor->OKButton, Qt::LeftButton);
}

} // namespace

void LocalisationGallery(const QString& folder, const char* languageFile) {
    quarle::gallery::Window window(languageFile);
    // The editor saves what it shows on closing: into a folder of its own,
    // never into the shipped files beside the program.
    QTemporaryDir userData;
    window.Services.ReadOnlyFolders = {window.Services.ProgramFolderPath};
    window.Services.UserDataFolderPath = userData.path();
    ui::FrmMain& form = window.Start();

    ModalScript settings([&](QWidget* modal) {
        auto* dialog = qobject_cast<ui::DlgSettings*>(modal);
        if (dialog == nullptr) {
            Fail(QStringLiteral("not the settings dialog"));
            modal->close();
            return;
        }
        dialog->TxtStudioMDL->setText(QStringLiteral("c:\\half-life\\tools\\studiomdl.exe"));
        dialog->TxtModelviewer->setText(QStringLiteral("c:\\half-life\\tools\\hlmv.exe"));
        dialog->TxtEditor->setText(QStringLiteral("notepad.exe"));
        const int current = dialog->CmbLanguage->currentIndex();
        emit dialog->CmbLanguage->activated(current);
        Save(dialog, folder, QStringLiteral("DlgSettings"));

        ModalScript create([&](QWidget* inner) {
            auto* named = qobject_cast<ui::DlgNewLocalisation*>(inner);
            if (named != nullptr) {
                named->TxtLanguage->setText(QStringLiteral("francais"));
                named->TxtDescription->setPlainText(QStringLiteral("Fran\u00e7ais"));
            }
            Save(inner, folder, QStringLiteral("DlgNewLocalisation"));
            inner->close();
        });
        QTest::mouseClick(dialog->CmdNewLocalisation, Qt::LeftButton);

        QTest::mouseClick(dialog->CmdLocalisationmode, Qt::LeftButton);
        Save(dialog, folder, QStringLiteral("DlgSettings-Localisation"));
        ModalScript strings([&](QWidget* inner) {
            ShootEditor(inner, QStringLiteral("IDS_VERSION"), folder,
                        QStringLiteral("DlgLocaliseMain-Strings"));
        });
        QTest::mouseClick(dialog->CmdLocaliseStrings, Qt::LeftButton);
        QTest::mouseClick(dialog->CancelButton, Qt::LeftButton);
    });
    form.MnuEinstAllg->trigger();

    ModalScript editor([&](QWidget* modal) {
        ShootEditor(modal, QStringLiteral("CmdCompile"), folder, QStringLiteral("DlgLocaliseMain"));
    });
    QTest::mouseClick(form.CmdLocalise, Qt::LeftButton);

    window.State->LocalisationMode = false;
    form.MnuHilfeUeber->trigger();
    if (auto* about = form.findChild<ui::frmAbout*>()) {
        Save(about, folder, QStringLiteral("frmAbout"));
        about->close();
    } else {
        Fail(QStringLiteral("no about box"));
    }
    if (!settings.Ran() || !editor.Ran()) {
        Fail(QStringLiteral("the settings dialog or the editor did not open"));
    }
    quarle::gallery::ExpectNoPrompts(window.Services,
                                     QStringLiteral("localisation (%1)").arg(languageFile));
}
