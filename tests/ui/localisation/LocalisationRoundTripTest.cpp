// The translator's road through the running program: settings, a new
// language, the editor on the live main window, a restart.
#include "support/MainWindowFixture.h"
#include "ui/localisation/DlgLocaliseMain.h"
#include "ui/localisation/DlgNewLocalisation.h"
#include "ui/localisation/DlgSettings.h"
#include "ui/localisation/frmAbout.h"

#include <QAction>
#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPlainTextEdit>

namespace quarle::test {
namespace {

class LocalisationTest : public MainWindowFixture {
protected:
    // The shipped languages in a program folder that cannot be written, as
    // in a system-wide installation.
    void SetUp() override {
        for (const char* name : {"deutsch.lng", "english.lng"}) {
            ASSERT_TRUE(
                QFile::copy(QStringLiteral(QUARLE_BINARY_DIR "/bin/") + name, InProgramDir(name)));
        }
        services.ReadOnlyFolders = {programDir.path()};
        services.UserDataFolderPath = QDir(userDir.path()).filePath(QStringLiteral("Quarle"));
        Start();
    }

    QString InUserDir(const QString& name) const {
        return QDir(services.UserDataFolderPath).filePath(name);
    }

    // Closes the window and starts the program anew on the same store.
    void Restart() {
        form->close();
        state = std::make_unique<AppState>();
        form = std::make_unique<ui::FrmMain>(*state, services, settings.Store());
        form->EndProcess = [] {};
        Start();
    }

    static void PickLanguage(QComboBox* box, const QString& text) {
        const int index = box->findText(text);
        ASSERT_GE(index, 0) << text.toStdString();
        box->setCurrentIndex(index);
        emit box->activated(index);
    }

    static void Choose(QListWidget* list, const QString& row) {
        const auto found = list->findItems(row, Qt::MatchExactly);
        ASSERT_EQ(found.size(), 1) << row.toStdString();
        list->setCurrentItem(found.first());
    }

    QTemporaryDir userDir;
};

TEST_F(LocalisationTest, TranslatorMakesALanguageAndRenamesCaptionsOnTheLiveWindow) {
    const QByteArray english = ReadFile(InProgramDir("english.lng"));
    WriteFile(InWork("studiomdl"));
    services.QueueOpen(Pick(InWork("studiomdl")));

    ModalScript settingsScript([&](QWidget* modal) {
        auto* dialog = qobject_cast<ui::DlgSettings*>(modal);
        ASSERT_NE(dialog, nullptr);
        EXPECT_EQ(Items(dialog->CmbLanguage), QStringList({"deutsch", "english"}));
        EXPECT_EQ(dialog->CmbLanguage->currentText(), "deutsch");
        EXPECT_EQ(dialog->LblVers->text(), "");

        PickLanguage(dialog->CmbLanguage, "english");
        EXPECT_EQ(form->CmdCompile->text(), "Build model");
        EXPECT_EQ(dialog->OKButton->text(), "OK");
        EXPECT_EQ(dialog->CancelButton->text(), "Cancel");
        EXPECT_EQ(dialog->LblInfo->text(), "English");
        EXPECT_EQ(dialog->LblVers->text(), "0.8.4");

        ModalScript newLanguage([](QWidget* inner) {
            auto* create = qobject_cast<ui::DlgNewLocalisation*>(inner);
            ASSERT_NE(create, nullptr);
            create->TxtLanguage->setText("english");
            QTest::mouseClick(create->OKButton, Qt::LeftButton); // the file in use: refused
            create->TxtLanguage->setText("fran cais");
            create->TxtDescription->setPlainText(QString::fromUtf8("Français, à l'essai"));
            QTest::mouseClick(create->OKButton, Qt::LeftButton);
        });
        services.QueueMsgBox(platform::Answer::Ok);
        QTest::mouseClick(dialog->CmdNewLocalisation, Qt::LeftButton);
        EXPECT_TRUE(newLanguage.Ran());

        QTest::mouseClick(dialog->CmdLocalisationmode, Qt::LeftButton);
        EXPECT_EQ(dialog->CmdLocalisationmode->text(), "Localisationmode off");
        EXPECT_TRUE(dialog->CmdLocaliseStrings->isVisibleTo(dialog));

        QTest::mouseClick(dialog->Command1, Qt::LeftButton);
        dialog->ChkPreviewViewer->setChecked(false);
        dialog->TxtModelviewer->setText(InWork("no-viewer"));
        QTest::mouseClick(dialog->OKButton, Qt::LeftButton);
    });
    form->MnuEinstAllg->trigger();
    ASSERT_TRUE(settingsScript.Ran());
    EXPECT_EQ(services.Prompts().at(0).Text,
              "\"english.lng\" is the language file in use. Please choose another name for the "
              "new language.");
    EXPECT_EQ(state->Settings.LanguageFile, "francais.lng");
    EXPECT_EQ(state->Settings.StudioMdlPath, InWork("studiomdl").toStdString());
    EXPECT_TRUE(form->CmdCompile->isEnabled());
    EXPECT_FALSE(form->MnuDateiView->isEnabled());
    EXPECT_TRUE(form->CmdLocalise->isVisibleTo(form.get()));
    EXPECT_TRUE(ReadFile(InUserDir("francais.lng"))
                    .startsWith("InfoForThis = Fran\xe7"
                                "ais, \xe0 l'essai\r\nVersion = 0.8.4\r\n"));

    ModalScript editor([&](QWidget* modal) {
        auto* dialog = qobject_cast<ui::DlgLocaliseMain*>(modal);
        ASSERT_NE(dialog, nullptr);
        EXPECT_EQ(dialog->windowTitle(), "Localisation for FrmMain");
        Choose(dialog->LstToLocalise, "CmdCompile");
        EXPECT_EQ(dialog->LblOldCaption->text(), "Build model");
        EXPECT_TRUE(QTest::qWaitFor([&] { return form->CmdCompile->isHidden(); }, 2000)); // blinks
        dialog->TxtNewCaption->setText(QString::fromUtf8("Créer le modèle"));
        Choose(dialog->LstToLocalise, "MnuDatei"); // the caption shows on the window at once
        EXPECT_EQ(form->CmdCompile->text(), QString::fromUtf8("Créer le modèle"));
        EXPECT_FALSE(form->CmdCompile->isHidden());
        EXPECT_EQ(dialog->LblOldTooltip->text(), "<not available>");
        dialog->TxtNewCaption->setText("&Fichier");
        QTest::mouseClick(dialog->OKButton, Qt::LeftButton);
    });
    QTest::mouseClick(form->CmdLocalise, Qt::LeftButton);
    ASSERT_TRUE(editor.Ran());
    EXPECT_EQ(ReadFile(InProgramDir("english.lng")), english);
    EXPECT_FALSE(QFile::exists(InProgramDir("francais.lng")));
    const QByteArray saved = ReadFile(InUserDir("francais.lng"));
    EXPECT_TRUE(saved.startsWith("Version = 0.8.4\r\nInfoForThis = Fran\xe7"
                                 "ais, \xe0"));
    EXPECT_TRUE(saved.contains("\r\nCmdCompile = Cr\xe9"
                               "er le mod\xe8le\r\nCmdCompile = "));
    EXPECT_TRUE(saved.contains("\r\nMnuDatei = &Fichier\r\nMnuDatei = <not available>\r\n"));

    // A restart reads the new language from the user's folder.
    Restart();
    EXPECT_EQ(state->Settings.LanguageFile, "francais.lng");
    EXPECT_EQ(form->CmdCompile->text(), QString::fromUtf8("Créer le modèle"));
    EXPECT_EQ(form->MnuDatei->title(), "&Fichier");
    EXPECT_FALSE(form->CmdLocalise->isVisibleTo(form.get()));
    services.VerifyAllUsed();
}

// The language in use in both folders, the program's taking files: the
// user's copy is the one read, so each edit of every group goes there, shows
// at once and reads back after a restart.
TEST_F(LocalisationTest, EditsOfEveryGroupGoToTheCopyThatIsReadAndShowAtOnce) {
    services.ReadOnlyFolders.clear();
    ASSERT_TRUE(QDir().mkpath(services.UserDataFolderPath));
    ASSERT_TRUE(QFile::copy(InProgramDir("deutsch.lng"), InUserDir("deutsch.lng")));
    const QByteArray program = ReadFile(InProgramDir("deutsch.lng"));
    struct Edit {
        bool strings;
        const char* row;
        const char* caption;
        const char* tooltip;
        const char* lines; // as they stand in the file after the save
    } const edits[] = {
        {false, "Titel", "Quarle X", nullptr,
         "\r\nFrmMain\r\nTitel = Quarle X\r\nCmdModeleinst = Modelleinstellungen\r\n"},
        {false, "CmdCompile", "Bauen", "Baut es",
         "\r\nCmdCompile = Bauen\r\nCmdCompile = Baut es\r\n"},
        {true, "IDS_VERSION", "Fassung", nullptr, "\r\nIDS_VERSION = Fassung\r\n"},
        {true, "MSG_LANGUAGE_NAME_INVALID", "Kein Name", nullptr,
         "\r\nMSG_LANGUAGE_NAME_INVALID = Kein Name\r\n"},
    };
    for (const Edit& edit : edits) {
        ModalScript editor([&](QWidget* modal) {
            auto* dialog = qobject_cast<ui::DlgLocaliseMain*>(modal);
            ASSERT_NE(dialog, nullptr);
            Choose(dialog->LstToLocalise, edit.row);
            dialog->TxtNewCaption->setText(edit.caption);
            if (edit.tooltip != nullptr) {
                dialog->TxtNewTooltip->setText(edit.tooltip);
            }
            QTest::mouseClick(dialog->OKButton, Qt::LeftButton);
        });
        form->Tag = edit.strings ? QStringLiteral("null") : QString();
        form->Localise(form.get());
        ASSERT_TRUE(editor.Ran()) << edit.row;
    }
    const QByteArray saved = ReadFile(InUserDir("deutsch.lng"));
    for (const Edit& edit : edits) {
        EXPECT_TRUE(saved.contains(edit.lines)) << edit.row;
    }
    EXPECT_EQ(ReadFile(InProgramDir("deutsch.lng")), program);

    // The running program shows every edit.
    const auto shown = [&](const char* when) {
        EXPECT_TRUE(form->windowTitle().endsWith(" \u2014 Quarle X")) << when;
        EXPECT_EQ(form->CmdCompile->text(), "Bauen") << when;
        form->MnuHilfeUeber->trigger();
        auto* about = form->findChild<ui::frmAbout*>();
        ASSERT_NE(about, nullptr) << when;
        EXPECT_EQ(about->LblVersion->text(), "Fassung: 0.8.4") << when;
        about->close();
        ui::DlgNewLocalisation create(*state, services, form.get());
        services.QueueMsgBox(platform::Answer::Ok);
        create.OKButton_Click(); // no name
        EXPECT_EQ(services.Prompts().back().Text, "Kein Name") << when;
    };
    shown("at once");
    Restart();
    shown("after a restart");
    EXPECT_EQ(form->CmdCompile->toolTip(), "Baut es");

    // A language without a "Version" line: the warning, and "-" for its version.
    WriteFile(InProgramDir("alt.lng"), program.mid(program.indexOf('\n') + 1));
    ModalScript settingsScript([&](QWidget* modal) {
        auto* dialog = qobject_cast<ui::DlgSettings*>(modal);
        ASSERT_NE(dialog, nullptr);
        services.QueueMsgBox(platform::Answer::Ok);
        PickLanguage(dialog->CmbLanguage, "alt");
        EXPECT_EQ(dialog->LblInfo->text(), "Deutsch");
        EXPECT_EQ(dialog->LblVers->text(), "-");
        QTest::mouseClick(dialog->CancelButton, Qt::LeftButton);
    });
    form->MnuEinstAllg->trigger();
    ASSERT_TRUE(settingsScript.Ran());
    EXPECT_EQ(services.Prompts().back().Text, "WARNING: Outdated Languagefile.");
    services.VerifyAllUsed();
}

TEST_F(LocalisationTest, AGlobalStringThatCannotBeWrittenLeavesFileAndTextAsTheyWere) {
    services.ReadOnlyFolders.append(services.UserDataFolderPath);
    QDir().mkpath(services.UserDataFolderPath);
    const QByteArray german = ReadFile(InProgramDir("deutsch.lng"));
    const std::string version = state->IdsTexts[IDS_VERSION];
    state->LocalisationMode = true;
    ModalScript settingsScript([&](QWidget* modal) {
        auto* dialog = qobject_cast<ui::DlgSettings*>(modal);
        ASSERT_NE(dialog, nullptr);
        ModalScript editor([](QWidget* inner) {
            auto* strings = qobject_cast<ui::DlgLocaliseMain*>(inner);
            ASSERT_NE(strings, nullptr);
            Choose(strings->LstToLocalise, "IDS_VERSION");
            strings->TxtNewCaption->setText("Fassung");
            QTest::mouseClick(strings->OKButton, Qt::LeftButton);
        });
        services.QueueMsgBox(platform::Answer::Ok);
        QTest::mouseClick(dialog->CmdLocaliseStrings, Qt::LeftButton);
        EXPECT_TRUE(editor.Ran());
        QTest::mouseClick(dialog->CancelButton, Qt::LeftButton);
    });
    form->MnuEinstAllg->trigger();
    ASSERT_TRUE(settingsScript.Ran());
    EXPECT_TRUE(services.Prompts().at(0).Text.startsWith(
        QString::fromUtf8("Die Sprachdatei „deutsch.lng“ konnte nicht geschrieben werden")));
    EXPECT_EQ(ReadFile(InProgramDir("deutsch.lng")), german);
    EXPECT_EQ(state->IdsTexts[IDS_VERSION], version);
    EXPECT_TRUE(form->Tag.isEmpty());
    EXPECT_EQ(QDir(services.UserDataFolderPath).entryList(QDir::Files), QStringList());
    services.VerifyAllUsed();
}

} // namespace
} // namespace quarle::test
