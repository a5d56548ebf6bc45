// German names typed into every name field reach the script as cp1252 bytes
// and come back from it whole; a character cp1252 cannot hold is refused.
#include "platform/Cp1252Text.h"
#include "support/MainWindowFixture.h"
#include "ui/dialogs/DlgName.h"
#include "ui/dialogs/DlgRenameGroup.h"
#include "ui/localisation/DlgSettings.h"

#include <QAction>
#include <QLineEdit>
#include <functional>

namespace quarle::ui {
namespace {

using platform::Answer;
using test::Items;
using test::Pick;

class DocumentTextTest : public test::MainWindowFixture {
protected:
    DocumentTextTest() {
        Start(Texts::Keys);
        OpenSampleModel();
        Doc().TexturePath = Doc().ModelPath;
    }

    void NewGroup(const QString& name) {
        form->CmdNewGroup->click();
        DlgName* dialog = form->ModelFiles().OpenDlgName();
        ASSERT_NE(dialog, nullptr);
        dialog->TxtName->setText(name);
        dialog->CmdOK->click();
    }
};

TEST_F(DocumentTextTest, GermanNamesRoundTripThroughTheScript) {
    test::SelectText(form->LstFiles, "robot_ref");
    form->CmdAdd->click(); // the group "body" with the reference
    NewGroup(QStringLiteral("Kopf"));
    form->CmbBodyGroup->setCurrentIndex(1);
    test::ModalScript rename([](QWidget* modal) {
        auto* dialog = qobject_cast<DlgRenameGroup*>(modal);
        ASSERT_NE(dialog, nullptr);
        dialog->TxtNewCaption->setText(QStringLiteral("K\u00f6rper"));
        dialog->OKButton->click();
    });
    form->CmdRename->click();
    ASSERT_TRUE(rename.Ran());
    test::SelectText(form->LstFiles, "robot_head");
    form->CmdAdd->click();
    NewGroup(QStringLiteral("H\u00e4nde"));

    ShowPage(1);
    test::SelectText(form->LstFiles, "walk");
    form->CmdAdd->click();
    test::Click(form->LstAnimations, 0);
    form->TxtAnimName->setText(QStringLiteral("\u00dcbung"));
    form->TxtAnimID->setEditText(QStringLiteral("ACT_\u00c4 1"));

    // A character cp1252 cannot hold is refused at the field and the
    // document keeps the last name it took.
    services.QueueMsgBox(Answer::Ok);
    form->TxtAnimName->setText(QStringLiteral("\u0141\u00f3d\u017a"));
    ASSERT_EQ(services.Prompts().size(), 1);
    EXPECT_TRUE(services.Prompts()[0].Text.contains(QStringLiteral("\u0141\u00f3d\u017a")));
    EXPECT_EQ(form->TxtAnimName->text(), QStringLiteral("\u00dcbung"));
    services.QueueMsgBox(Answer::Ok);
    form->CmdNewGroup->click();
    form->ModelFiles().OpenDlgName()->TxtName->setText(QStringLiteral("\u0141"));
    form->ModelFiles().OpenDlgName()->CmdOK->click();
    EXPECT_EQ(Doc().BodyGroupCount, 3) << "the refused name adds no group";
    EXPECT_TRUE(form->ModelFiles().OpenDlgName()->isVisible()) << "the dialog stays for another name";
    form->ModelFiles().OpenDlgName()->CmdAbbrechen->click();

    // The script's own name holds an umlaut too: the file on disk is named
    // in UTF-8, the script's text in cp1252.
    services.QueueSave(Pick(InModels(QStringLiteral("R\u00fcstung.qc"))));
    form->MnuDateiSpeichernunter->trigger();
    const QByteArray script = test::ReadFile(InModels(QStringLiteral("R\u00fcstung.qc")));
    EXPECT_FALSE(script.contains("\xC3")) << script.toStdString();
    for (const char* bytes : {"$body \"K\xF6rper\" \"robot_head\"", "$bodygroup \"H\xE4nde\"\r\n",
                              "$sequence \"\xDC"
                              "bung\"",
                              "ACT_\xC4 1", "$modelname \"", "R\xFCstung.mdl\""}) {
        EXPECT_TRUE(script.contains(bytes)) << bytes << "\n" << script.toStdString();
    }

    // Read back, every name shows as typed.
    services.QueueOpen(Pick(InModels(QStringLiteral("R\u00fcstung.qc"))));
    form->MnuDateiOeffnen->trigger();
    EXPECT_EQ(Items(form->CmbBodyGroup),
              (QStringList{"body", QStringLiteral("K\u00f6rper"), QStringLiteral("H\u00e4nde")}));
    EXPECT_EQ(Items(form->LstAnimations), QStringList{QStringLiteral("\u00dcbung")});
    // "ACT_\u00c4" is no activity the compiler knows: it reads it as a file,
    // and so does the load, which keeps it as written.
    EXPECT_EQ(Doc().Anims[0][0].ActivityId, "");
    services.VerifyAllUsed();
}

// The tools' paths cross the settings dialog as every other path does: shown,
// browsed, stored and written back at stop with their umlauts whole.
class ToolPathsTest : public test::MainWindowFixture {};

TEST_F(ToolPathsTest, UmlautsCrossTheSettingsDialog) {
    QDir(programDir.path()).mkdir(QStringLiteral("Werkzeug f\u00fcr HL"));
    const QString compiler = InProgramDir(QStringLiteral("Werkzeug f\u00fcr HL/studiomdl.exe"));
    const QString viewer = InProgramDir(QStringLiteral("Werkzeug f\u00fcr HL/hlmv.exe"));
    const QString editor = InProgramDir(QStringLiteral("Werkzeug f\u00fcr HL/Schreibb\u00fcro"));
    for (const QString& file : {compiler, viewer, editor}) {
        test::WriteFile(file);
    }
#ifndef Q_OS_WIN
    // The Windows compiler runs through wine.
    const QString wine = InProgramDir(QStringLiteral("wine"));
    test::WriteFile(wine);
    QFile::setPermissions(wine, QFile::permissions(wine) | QFile::ExeOwner);
    services.Env.Path = programDir.path();
#endif
    settings.Store().Set(QStringLiteral("StudioMdl"), compiler);
    settings.Store().Set(QStringLiteral("ModelViewer"), viewer);
    settings.Store().Set(QStringLiteral("TextEditor"), QStringLiteral("kate"));
    Start(Texts::Keys);
    const std::string compilerBytes = *platform::ToCp1252(compiler);

    const auto openSettings = [this](const std::function<void(DlgSettings*)>& steps) {
        test::ModalScript script([&steps](QWidget* modal) {
            auto* dialog = qobject_cast<DlgSettings*>(modal);
            ASSERT_NE(dialog, nullptr);
            steps(dialog);
        });
        form->MnuEinstAllg->trigger();
        ASSERT_TRUE(script.Ran());
    };
    // Shown whole; Cancel keeps every path as it was.
    openSettings([&](DlgSettings* dialog) {
        EXPECT_EQ(dialog->TxtStudioMDL->text(), compiler);
        EXPECT_EQ(dialog->TxtModelviewer->text(), viewer);
        dialog->TxtStudioMDL->setText(QStringLiteral("anderswo"));
        dialog->CancelButton->click();
    });
    EXPECT_EQ(state->Settings.StudioMdlPath, compilerBytes);
    EXPECT_TRUE(form->CmdCompile->isEnabled());

    // A path the code page cannot name is refused, and the dialog stays.
    openSettings([&](DlgSettings* dialog) {
        services.QueueMsgBox(Answer::Ok);
        dialog->TxtModelviewer->setText(QStringLiteral("/opt/\u0141\u00f3d\u017a/hlmv"));
        dialog->OKButton->click();
        EXPECT_TRUE(dialog->isVisible());
        dialog->CancelButton->click();
    });
    EXPECT_EQ(state->Settings.ModelViewerPath, *platform::ToCp1252(viewer));

    // OK takes the untouched paths as they were and the browsed editor.
    services.QueueOpen(Pick(editor));
    openSettings([&](DlgSettings* dialog) {
        dialog->Command3->click();
        dialog->OKButton->click();
    });
    EXPECT_EQ(state->Settings.StudioMdlPath, compilerBytes);
    EXPECT_EQ(state->Settings.TextEditorPath, *platform::ToCp1252(editor));
    EXPECT_TRUE(form->CmdCompile->isEnabled());
    EXPECT_TRUE(form->MnuDateiViewCode->isEnabled());
    EXPECT_TRUE(form->MnuDateiView->isEnabled());

    form->close();
    EXPECT_EQ(settings.Store().Get(QStringLiteral("StudioMdl")), compiler);
    EXPECT_EQ(settings.Store().Get(QStringLiteral("ModelViewer")), viewer);
    EXPECT_EQ(settings.Store().Get(QStringLiteral("TextEditor")), editor);
    services.VerifyAllUsed();
}

} // namespace
} // namespace quarle::ui
