// The main window's start and stop, the refresh from the document, the
// folder question, the recent files and the path buttons.
#include "platform/Reflection.h"
#include "support/MainWindowFixture.h"
#include "ui/mainwindow/ShellSettings.h"

#include <QAction>
#include <QApplication>
#include <QHelpEvent>
#include <QToolTip>
#include <QLineEdit>
#include <QSettings>

namespace quarle::ui {
namespace {

using platform::Answer;
using platform::FilePick;
using test::Items;
using test::Pick;
using test::WriteFile;

class MainWindowTest : public test::MainWindowFixture {};

TEST_F(MainWindowTest, FirstStartOnAnEmptyStore) {
    Start();

    const ToolSettings& tools = state->Settings;
    EXPECT_EQ(tools.StudioMdlPath, DefaultStudioMdlPath(programDir.path()).toStdString());
    EXPECT_EQ(tools.ModelViewerPath, DefaultModelViewerPath(programDir.path()).toStdString());
    EXPECT_EQ(tools.TextEditorPath, DefaultTextEditorPath().toStdString());
    EXPECT_EQ(tools.LanguageFile, "deutsch.lng");
    for (std::size_t i = 0; i < 4; ++i) {
        EXPECT_EQ(tools.RecentFiles[i], "...");
        EXPECT_EQ(form->MnuDateiLast()[i]->text(), QStringLiteral("..."));
    }

    // A new document on show; the model files wait for a model folder.
    EXPECT_EQ(form->CmbBodyGroup->currentIndex(), 0);
    EXPECT_FALSE(form->FrmModelfiles->isEnabled());

    // Neither program is there; off Windows the preview is the viewer.
    EXPECT_FALSE(form->CmdCompile->isEnabled());
#ifdef Q_OS_WIN
    EXPECT_FALSE(form->MnuDateiView->isEnabled());
#else
    EXPECT_TRUE(form->MnuDateiView->isEnabled());
#endif
    EXPECT_FALSE(platform::Visible(form->CmdLocalise).value());
    EXPECT_TRUE(services.Prompts().isEmpty());
}

// Settings that could not be kept are said at the start, naming the file.
TEST_F(MainWindowTest, ASettingsFileThatCannotBeWrittenIsToldAtTheStart) {
    QFile::remove(settings.Path());
    ASSERT_TRUE(QDir().mkdir(settings.Path()));
    services.QueueMsgBox(Answer::Ok);
    Start(Texts::Keys);
    ASSERT_EQ(services.Prompts().size(), 1);
    const QString told = services.Prompts()[0].Text;
    EXPECT_TRUE(told.contains(QDir::toNativeSeparators(settings.Path())) &&
                told.contains(QLatin1String("it is a folder")))
        << told.toStdString();
}

TEST_F(MainWindowTest, ProgramsThatExistEnableTheirCommands) {
    // The compiler at its default place, the viewer where the store says.
    WriteFile(InProgramDir("studiomdl.exe"));
    WriteFile(InProgramDir("hlmv"));
    settings.Store().Set("ModelViewer", InProgramDir("hlmv"));
#ifndef Q_OS_WIN
    // Off Windows that compiler needs wine on the search path.
    const QString wine = InProgramDir("wine");
    WriteFile(wine);
    QFile::setPermissions(wine, QFile::permissions(wine) | QFile::ExeOwner);
    services.Env.Path = programDir.path();
#endif
    state->LocalisationMode = true;
    Start();
    EXPECT_TRUE(form->CmdCompile->isEnabled());
    EXPECT_TRUE(form->MnuDateiView->isEnabled());
    EXPECT_TRUE(platform::Visible(form->CmdLocalise).value());
}

#ifndef Q_OS_WIN
TEST_F(MainWindowTest, AWindowsCompilerWithoutWineLeavesTheCompileDisabled) {
    WriteFile(InProgramDir("studiomdl.exe"));
    Start();
    EXPECT_FALSE(form->CmdCompile->isEnabled());
}
#endif

TEST_F(MainWindowTest, SettingsAreReadWhateverTheirCapitalsAndWrittenOnceAtTheStop) {
    settings.Store().Set("STUDIOMDL", "/opt/hl/studiomdl.exe");
    settings.Store().Set("Recentfile0", "/m/a.qc");
    settings.Store().Set("RECENTFILE2", "c:\\m\\robot.qc");
    settings.Store().Set("texteditor", "kate");
    Start();
    EXPECT_EQ(state->Settings.StudioMdlPath, "/opt/hl/studiomdl.exe");
    EXPECT_EQ(state->Settings.TextEditorPath, "kate");
    EXPECT_EQ(state->Settings.RecentFiles,
              (std::array<std::string, 4>{"/m/a.qc", "...", "c:\\m\\robot.qc", "..."}));
    EXPECT_EQ(form->MnuDateiLast3->text(), QStringLiteral("c:\\m\\robot.qc"));

    state->Settings.LanguageFile = "english.lng";
    form->MnuDateiBeenden->trigger();
    form->close(); // a second close does not stop twice
    EXPECT_EQ(ends, 1);

    // Every setting once, with the keys as the stop spells them.
    QSettings ini(settings.Path(), QSettings::IniFormat);
    ini.beginGroup(QStringLiteral("Settings"));
    EXPECT_EQ(ini.childKeys(),
              (QStringList{"Language", "ModelViewer", "RecentFile0", "RecentFile1", "RecentFile2",
                           "RecentFile3", "StudioMDL", "TextEditor", "ToolNotice"}));
    EXPECT_EQ(ini.value("StudioMDL").toString(), QStringLiteral("/opt/hl/studiomdl.exe"));
    EXPECT_EQ(ini.value("ModelViewer").toString(), DefaultModelViewerPath(programDir.path()));
    EXPECT_EQ(ini.value("Language").toString(), QStringLiteral("english.lng"));
    EXPECT_EQ(ini.value("RecentFile2").toString(), QStringLiteral("c:\\m\\robot.qc"));
    EXPECT_EQ(ini.value("RecentFile3").toString(), QStringLiteral("..."));
}

TEST_F(MainWindowTest, RecentFilesTakeOnlyNewFilesOnTop) {
    Start();
    auto& recent = state->Settings.RecentFiles;
    auto save = [&](const char* file) {
        Doc().QcFile = file;
        form->Commands().PushRecentFile();
    };
    save("/m/a.qc");
    save("/m/a.qc");
    EXPECT_EQ(recent, (std::array<std::string, 4>{"/m/a.qc", "...", "...", "..."}));

    save("/m/b.qc");
    save("/m/c.qc");
    save("/m/d.qc");
    save("/m/e.qc"); // the fifth drops the oldest
    EXPECT_EQ(recent, (std::array<std::string, 4>{"/m/e.qc", "/m/d.qc", "/m/c.qc", "/m/b.qc"}));
    EXPECT_EQ(form->MnuDateiLast1->text(), QStringLiteral("/m/e.qc"));
    EXPECT_EQ(form->MnuDateiLast4->text(), QStringLiteral("/m/b.qc"));

    save("/m/c.qc"); // already third: stays third
    save("/m/C.qc"); // the comparison sees capitals
    EXPECT_EQ(recent, (std::array<std::string, 4>{"/m/C.qc", "/m/e.qc", "/m/d.qc", "/m/c.qc"}));
}

TEST_F(MainWindowTest, NewDirAsksThenTakesTheChosenFolder) {
    Start(Texts::Keys);
    services.QueueMsgBox(Answer::Ok);
    services.QueueFolder(QStringLiteral("/home/m/new dir"));
    EXPECT_EQ(form->ScriptReaderHost().NewDir("c:\\old\\dir", "$cd"), "/home/m/new dir");
    ASSERT_EQ(services.Prompts().size(), 2);
    EXPECT_EQ(services.Prompts()[0].Buttons, platform::Buttons::OkCancel);
    EXPECT_EQ(services.Prompts()[1].Kind, QStringLiteral("Folder"));

    // Giving up answers "0": Cancel (no chooser then), or a cancelled choice.
    services.QueueMsgBox(Answer::Cancel);
    EXPECT_EQ(form->ScriptReaderHost().NewDir("/gone", "ref.smd"), "0");
    EXPECT_EQ(services.Prompts().size(), 3);
    services.QueueMsgBox(Answer::Ok);
    services.QueueFolder(std::nullopt);
    EXPECT_EQ(form->ScriptReaderHost().NewDir("/gone", "ref.smd"), "0");
}

TEST_F(MainWindowTest, UpdateShowsTheDocumentAndRefillsOnlyOnANewModelFolder) {
    Start();
    WriteFile(InModels("ref.smd"), "triangles\r\nend\r\n");
    WriteFile(InModels("notes.txt"));
    Doc().ModelPath = models.path().toStdString();
    Doc().BodyGroupCount = 2;
    Doc().BodyGroups[1].PartCount = 2;
    Doc().BodyGroups[1].Parts[1] = "ref";
    Doc().BodyGroups[1].Parts[2] = Blank;
    Doc().BodyGroups[2].Name = "head";
    form->Update();
    EXPECT_EQ(form->TxtModelpath->text(), models.path());
    EXPECT_TRUE(form->FrmModelfiles->isEnabled());
    EXPECT_TRUE(form->MnuWizardsAnimWiz->isEnabled());
    EXPECT_EQ(Items(form->FileList), QStringList{"ref.smd"});
    EXPECT_EQ(Items(form->LstFiles), QStringList{"ref"});
    EXPECT_EQ(Items(form->CmbBodyGroup), (QStringList{"body", "head"}));
    EXPECT_EQ(form->CmbBodyGroup->currentIndex(), 0);
    EXPECT_EQ(Items(form->LstParts), (QStringList{"ref", "<blank>"}));

    // The same folder again: the list is left as it is.
    form->LstFiles->addItem(QStringLiteral("zz-marker"));
    form->Update();
    EXPECT_TRUE(Items(form->LstFiles).contains("zz-marker"));

    // No folder: the frame is off, the old files stay listed.
    Doc().ModelPath.clear();
    form->Update();
    EXPECT_FALSE(form->FrmModelfiles->isEnabled());
    EXPECT_FALSE(form->MnuWizardsAnimWiz->isEnabled());
    EXPECT_TRUE(Items(form->LstFiles).contains("zz-marker"));

    // A document without body groups: nothing to select, nothing listed.
    Doc().BodyGroupCount = 0;
    form->Update();
    EXPECT_EQ(form->CmbBodyGroup->count(), 0);
    EXPECT_EQ(form->LstParts->count(), 0);

    // A new document keeps the folders; InitVars leaves the animations list
    // to its callers, the menu command empties it.
    Doc().TexturePath = "/m/tex";
    Doc().QcFile = "/m/a.qc";
    form->LstAnimations->addItem(QStringLiteral("run"));
    form->Commands().InitVars();
    EXPECT_EQ(form->LstAnimations->count(), 1);
    EXPECT_EQ(Doc().QcFile, "");
    EXPECT_EQ(form->TxtTexturepath->text(), QStringLiteral("/m/tex"));
    services.QueueMsgBox(Answer::No); // the changes above are let go
    form->MnuDateiNeu->trigger();
    EXPECT_EQ(form->LstAnimations->count(), 0);
    EXPECT_EQ(Items(form->CmbBodyGroup), QStringList{"body"});
    EXPECT_EQ(form->LstParts->count(), 0);
}

TEST_F(MainWindowTest, PathsAreChosenOrTypedAsFolders) {
    Start(Texts::Keys);
    // A texture folder without bitmaps is taken, and the field says so.
    services.QueueFolder(models.path());
    form->CmdBrowseTexture->click();
    EXPECT_EQ(services.Prompts().last().Kind, QStringLiteral("Folder"));
    EXPECT_EQ(Doc().TexturePath, models.path().toStdString());
    EXPECT_EQ(form->TxtTexturepath->text(), models.path());
    ASSERT_EQ(form->TxtTexturepath->actions().size(), 1);
    EXPECT_TRUE(form->TxtTexturepath->actions()[0]->isVisible());
    WriteFile(InModels("skin.BMP"));
    services.QueueFolder(models.path());
    form->CmdBrowseTexture->click();
    EXPECT_FALSE(form->TxtTexturepath->actions()[0]->isVisible());
    services.QueueFolder(std::nullopt);
    form->CmdBrowseTexture->click();
    EXPECT_EQ(Doc().TexturePath, models.path().toStdString());
    EXPECT_EQ(services.Prompts().last().InitialDir, models.path()) << "opens at the folder in use";

    WriteFile(InModels("run.SMD"));
    WriteFile(InModels("ref.smd"));
    services.QueueFolder(models.path());
    form->CmdBrowseModel->click();
    EXPECT_EQ(Doc().ModelPath, models.path().toStdString());
    EXPECT_EQ(form->TxtModelpath->text(), models.path());
    EXPECT_EQ(Items(form->FileList), (QStringList{"ref.smd", "run.SMD"}));
    services.QueueFolder(std::nullopt);
    form->CmdBrowseModel->click();
    EXPECT_EQ(Doc().ModelPath, models.path().toStdString());

    // A typed folder is taken when the field is left; anything else gives
    // way to the folder in use.
    const QString sub = InModels("tex");
    ASSERT_TRUE(QDir().mkpath(sub));
    const auto type = [&](QLineEdit* field, const QString& text) {
        field->setFocus();
        field->selectAll();
        QTest::keyClicks(field, text);
        QTest::keyClick(field, Qt::Key_Return);
    };
    type(form->TxtTexturepath, sub + "/");
    EXPECT_EQ(Doc().TexturePath, sub.toStdString());
    EXPECT_EQ(form->TxtTexturepath->text(), sub);
    type(form->TxtTexturepath, InModels("nothing here"));
    EXPECT_EQ(Doc().TexturePath, sub.toStdString());
    EXPECT_EQ(form->TxtTexturepath->text(), sub);
    type(form->TxtModelpath, InModels("ref.smd"));
    EXPECT_EQ(Doc().ModelPath, models.path().toStdString());
    EXPECT_EQ(form->TxtModelpath->text(), models.path());

    // A folder that is gone is refused and the old list kept.
    EXPECT_FALSE(form->FolderList().SetFileListPath(InModels("gone")));
    EXPECT_EQ(form->FolderList().FileListPath(), models.path());
    EXPECT_EQ(form->FileList->count(), 2);
}

TEST_F(MainWindowTest, AWindowLargerThanDesignedGivesItsRoomToPathsAndLists) {
    Start();
    form->show();
    const QSize designed = form->size();
    // Not smaller than designed.
    form->resize(designed / 2);
    EXPECT_EQ(form->size(), designed);

    // The parked mascot stands beside the buttons, not on them.
    const QRect mascot = form->PicWiz->geometry();
    for (const QWidget* button : {form->CmdModeleinst, form->CmdCompile}) {
        EXPECT_FALSE(button->geometry().intersects(mascot)) << button->objectName().toStdString();
    }

    // A group name of 20 characters shows whole.
    const QString name = QStringLiteral("Ruestung_Oberkoerper");
    form->CmbBodyGroup->setItemText(0, name);
    const int room = form->CmbBodyGroup->width() - 24; // less the arrow
    EXPECT_GE(room, form->CmbBodyGroup->fontMetrics().horizontalAdvance(name));

    const QWidget* grows[] = {form->TxtTexturepath, form->TxtModelpath, form->LstFiles,
                              form->LstParts,       form->TabSmd,        form->FrmModelfiles};
    std::vector<QSize> before;
    for (const QWidget* w : grows) {
        before.push_back(w->size());
    }
    form->resize(designed + QSize(150, 90));
    QTest::qWait(50); // the layouts of the frames follow
    for (std::size_t i = 0; i < before.size(); ++i) {
        const QSize now = grows[i]->size();
        EXPECT_TRUE(now.width() > before[i].width() || now.height() > before[i].height())
            << grows[i]->objectName().toStdString();
    }
    EXPECT_EQ(form->FrmModelfiles->width(), before.back().width() + 150);
    EXPECT_EQ(form->FrmModelfiles->height(), before.back().height() + 90);

    // A path that does not fit shows whole in the tool tip, above the field's tip.
    const QString path = QStringLiteral("/") + QString(40, QLatin1Char('m')) +
                         QStringLiteral("/models/robot/reference/meshes");
    form->TxtModelpath->setText(path);
    QHelpEvent tip(QEvent::ToolTip, QPoint(5, 5), form->TxtModelpath->mapToGlobal(QPoint(5, 5)));
    QApplication::sendEvent(form->TxtModelpath, &tip);
    EXPECT_EQ(QToolTip::text(), path + "\n" + form->TxtModelpath->toolTip());
}

} // namespace
} // namespace quarle::ui
