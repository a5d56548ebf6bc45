// The commands of the file menu and the compile button on a started window
// whose global strings read as their keys. The compiler is the stand-in; the
// viewer and the editor are files in the program folder (their starts are
// only recorded). What the compile dialog itself does is its own tests'.
#include "FakeCompiler.h"
#include "support/MainWindowFixture.h"
#include "ui/localisation/Messages.h"

#include <QAction>
#include <QLineEdit>
#include <QStandardPaths>

namespace quarle::ui {
namespace {

using platform::Answer;
using platform::FilePick;
using platform::Icon;
using test::Items;
using test::Pick;
using test::ReadFile;
using test::WriteFile;
using Recent = std::array<std::string, 4>;

class DocumentCommandsTest : public test::MainWindowFixture {
protected:
    DocumentCommandsTest() {
        WriteFile(InProgramDir("viewer"));
        WriteFile(InProgramDir("editor"));
        settings.Store().Set("StudioMDL", QUARLE_FAKE_COMPILER);
        settings.Store().Set("ModelViewer", InProgramDir("viewer"));
        settings.Store().Set("TextEditor", InProgramDir("editor"));
        Start(Texts::Keys);
    }

    // The head of a script whose folders are the model folder.
    QByteArray Head() const {
        return "$cd \"" + models.path().toUtf8() + "\"\r\n$cdtexture \"" + models.path().toUtf8() +
               "\"\r\n";
    }
};

// ---------------------------------------------------------------------------
// Save and save as

TEST_F(DocumentCommandsTest, SaveAsAddsTheExtensionAndPutsTheModelBesideTheScript) {
    Doc().ModelName = "c:\\from\\modelname.mdl";
    services.QueueSave(Pick(InModels("robot")));
    form->MnuDateiSpeichernunter->trigger();
    ASSERT_EQ(services.Prompts().size(), 1);
    EXPECT_EQ(services.Prompts()[0].Filter, "QC-IDS_FILE|*.qc");
    EXPECT_EQ(QcFile(), InModels("robot.qc"));
    EXPECT_EQ(ModelName(), InModels("robot.mdl")) << "replaces the name $modelname gave";
    EXPECT_TRUE(ReadFile(InModels("robot.qc"))
                    .contains("\r\n$modelname \"" + InModels("robot.mdl").toUtf8() + "\"\r\n"));

    // The name with its extension gives the same two paths; only ".qc" in
    // lower case counts as the extension.
    for (const auto& [picked, script] : {std::pair{"robot.qc", "robot"}, {"loud.QC", "loud.QC"}}) {
        services.QueueSave(Pick(InModels(picked)));
        form->Commands().MnuDateiSpeichernunter_Click();
        EXPECT_EQ(QcFile(), InModels(script) + ".qc");
        EXPECT_EQ(ModelName(), InModels(script) + ".mdl");
    }
    EXPECT_FALSE(QFileInfo::exists(InModels("robot.qc.qc")));

    // With a file, save writes over it at once, asking nothing.
    Doc().ModelScale = 2.0f;
    form->MnuDateiSpeichern->trigger();
    EXPECT_EQ(services.Prompts().size(), 3);
    EXPECT_TRUE(ReadFile(InModels("loud.QC.qc")).contains("\r\n$scale 2\r\n"));
    // The save dialog opens where the script lies.
    EXPECT_EQ(services.Prompts()[2].InitialDir, models.path());

    // A name with a double quote cannot stand in the script: refused, and
    // the document stays with its file.
    services.QueueSave(Pick(InModels("say \"hi\"")));
    services.QueueMsgBox(Answer::Ok);
    form->Commands().MnuDateiSpeichernunter_Click();
    EXPECT_EQ(services.Prompts().last().Text,
              ui::MessageText(*state, MSG_SAVE_NAME_QUOTE, {InModels("say \"hi\"")}));
    EXPECT_EQ(QcFile(), InModels("loud.QC.qc"));
    EXPECT_FALSE(QFileInfo::exists(InModels("say \"hi\".qc")));
    services.VerifyAllUsed();
}

TEST_F(DocumentCommandsTest, TheDesktopKeysOpenSaveAndSaveAs) {
    form->show();
    form->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(form.get()));
    const struct {
        Qt::KeyboardModifiers Modifiers;
        Qt::Key Key;
        const char* Kind;
    } keys[] = {
        {Qt::ControlModifier, Qt::Key_O, "Open"},
        {Qt::ControlModifier, Qt::Key_S, "Save"}, // no file yet: save as
        {Qt::ControlModifier | Qt::ShiftModifier, Qt::Key_S, "Save"},
    };
    for (const auto& key : keys) {
        const auto before = services.Prompts().size();
        key.Kind == std::string("Open") ? services.QueueOpen(std::nullopt)
                                        : services.QueueSave(std::nullopt);
        QTest::keyClick(form.get(), key.Key, key.Modifiers);
        ASSERT_EQ(services.Prompts().size(), before + 1) << key.Kind;
        EXPECT_EQ(services.Prompts().back().Kind, key.Kind);
    }
}

TEST_F(DocumentCommandsTest, CancelledDialogsChangeNothing) {
    Doc().ModelName = "keep.mdl";
    form->Commands().MarkSaved(); // as loaded: no question about changes
    // Save on a document without a file asks for one.
    services.QueueSave(std::nullopt);
    form->Commands().MnuDateiSpeichern_Click();
    services.QueueSave(FilePick{}); // a dialog that reports no file chose nothing
    form->Commands().MnuDateiSpeichernunter_Click();
    EXPECT_EQ(Doc().QcFile, "");
    EXPECT_EQ(Doc().ModelName, "keep.mdl");
    EXPECT_EQ(state->Settings.RecentFiles, (Recent{"...", "...", "...", "..."}));

    // Compile on a new document: the save dialog first; its cancel ends
    // the command before the compile dialog.
    CompileSeen seen;
    {
        const auto script = ExpectCompile(seen);
        services.QueueSave(std::nullopt);
        form->Commands().MnuDateiComp_Click();
        EXPECT_FALSE(script->Ran());
    }
    EXPECT_EQ(services.Prompts().size(), 3);
    EXPECT_EQ(services.Prompts().last().Kind, "Save");

    // A cancelled open keeps the document and its list.
    form->LstAnimations->addItem("idle");
    services.QueueOpen(std::nullopt);
    form->MnuDateiOeffnen->trigger();
    EXPECT_EQ(services.Prompts().last().Kind, "Open");
    EXPECT_EQ(form->LstAnimations->count(), 1);
    EXPECT_EQ(Doc().ModelName, "keep.mdl");
}

TEST_F(DocumentCommandsTest, FailedSaveReportsAndLosesNothing) {
    // A script that is write-protected: refused, and whole afterwards.
    const QString locked = InModels("locked.qc");
    WriteFile(locked, "// the old script\r\n");
    ASSERT_TRUE(QFile::setPermissions(locked, QFileDevice::ReadOwner | QFileDevice::ReadUser));
    Doc().QcFile = locked.toStdString();
    services.QueueMsgBox(Answer::Ok);
    form->Commands().MnuDateiSpeichern_Click();
    ASSERT_EQ(services.Prompts().size(), 1);
    EXPECT_EQ(services.Prompts()[0].Icon, Icon::Critical);
    EXPECT_TRUE(services.Prompts()[0].Text.contains(locked));
    const QString kept = QString::fromStdString(state->MsgTexts[MSG_SAVE_OLD_FILE_KEPT]);
    const QString why = QString::fromStdString(state->MsgTexts[MSG_SAVE_WRITE_PROTECTED]);
    EXPECT_TRUE(services.Prompts()[0].Text.contains(kept));
    EXPECT_TRUE(services.Prompts()[0].Text.contains(why.left(why.indexOf(u'%'))));
    EXPECT_EQ(ReadFile(locked), "// the old script\r\n");
    EXPECT_EQ(state->Settings.RecentFiles, (Recent{"...", "...", "...", "..."}))
        << "a file that was not written does not enter the list";

    // A compile stops at the failed save: no dialog on a stale script.
    CompileSeen seen;
    {
        const auto script = ExpectCompile(seen);
        services.QueueMsgBox(Answer::Ok);
        form->Commands().CmdCompile_Click();
        EXPECT_FALSE(script->Ran());
    }

    // A folder that does not exist: the document keeps its old file names.
    Doc().ModelName = InModels("locked.mdl").toStdString();
    services.QueueSave(Pick(InModels("gone/robot")));
    services.QueueMsgBox(Answer::Ok);
    form->Commands().MnuDateiSpeichernunter_Click();
    EXPECT_EQ(QcFile(), locked);
    EXPECT_EQ(ModelName(), InModels("locked.mdl"));
    EXPECT_TRUE(services.Prompts().last().Text.contains(InModels("gone/robot.qc")));
    EXPECT_FALSE(services.Prompts().last().Text.contains(kept)) << "there was no old file";
    EXPECT_FALSE(QFileInfo::exists(InModels("gone")));
    EXPECT_EQ(QDir(models.path()).entryList(QDir::Files), QStringList{"locked.qc"})
        << "no temporary file is left behind";
}

// ---------------------------------------------------------------------------
// Recent files

// (How saves and opens change the list is pinned on the end-to-end road.)
TEST_F(DocumentCommandsTest, RecentEntryOfADeletedFileReportsOnceAndBecomesAGap) {
    const QString first = InModels("first.qc");
    const QString gone = InModels("gone.qc");
    const QString last = InModels("last.qc");
    WriteFile(first, "$modelname \"first.mdl\"\r\n");
    WriteFile(last, "$modelname \"last.mdl\"\r\n");
    state->Settings.RecentFiles = {first.toStdString(), gone.toStdString(), "...",
                                   last.toStdString()};
    form->Commands().ShowRecentFiles();
    Doc().ModelName = "keep.mdl";
    form->Commands().MarkSaved();

    // A gap does nothing.
    form->MnuDateiLast3->trigger();
    EXPECT_TRUE(services.Prompts().isEmpty());
    EXPECT_EQ(Doc().ModelName, "keep.mdl");

    services.QueueMsgBox(Answer::Ok);
    form->MnuDateiLast2->trigger();
    ASSERT_EQ(services.Prompts().size(), 1);
    const auto& message = services.Prompts()[0];
    EXPECT_EQ(message.Text, "IDS_CANTFINDFILE_PART1 " + gone + " IDS_CANTFINDFILE_PART2");
    EXPECT_EQ(state->Settings.RecentFiles,
              (Recent{first.toStdString(), "...", "...", last.toStdString()}));
    EXPECT_EQ(form->MnuDateiLast2->text(), "...");
    EXPECT_EQ(Doc().ModelName, "keep.mdl") << "the document stays";

    // Now a gap: a second click says nothing.
    form->MnuDateiLast2->trigger();
    EXPECT_EQ(services.Prompts().size(), 1);

    // The entries around the gap still open their files.
    form->MnuDateiLast4->trigger();
    EXPECT_EQ(QcFile(), last);
    EXPECT_EQ(ModelName(), InModels("last.mdl"));
}

// ---------------------------------------------------------------------------
// Open: the script reader asks its questions through the window

TEST_F(DocumentCommandsTest, OpenAsksForAMissingFolderAndFillsTheWindow) {
    OpenSampleModel();
    // The folder the window knows is not the script's: the load brings it.
    Doc().ModelPath.clear();
    form->Update();
    form->Commands().MarkSaved();
    form->LstAnimations->addItem("left over");
    form->TxtAnimNr->setText("1");
    const QString qc = InModels("robot.qc");
    WriteFile(qc, "$cd \"c:\\gone\\robot\"\r\n$bodygroup body\r\n{\r\nstudio \"robot_ref\"\r\n}\r\n"
                  "$sequence \"stand\" \"idle\" fps 20\r\n$sequence \"walk\" \"walk\" loop\r\n"
                  "$sequencegroup legs\r\n$sequence \"kick\" \"run\"\r\n");
    services.QueueOpen(Pick(qc));
    services.QueueMsgBox(Answer::Ok);
    services.QueueFolder(models.path());
    services.QueueMsgBox(Answer::Ok); // the report names the folder a save writes
    form->MnuDateiOeffnen->trigger();

    ASSERT_EQ(services.Prompts().size(), 4);
    EXPECT_EQ(services.Prompts()[1].Text, "IDS_MODELPATH: IDS_MSGBOX_CANTFINDPATH_PART1 "
                                          "\"c:\\gone\\robot\" IDS_MSGBOX_CANTFINDPATH_PART2");
    EXPECT_EQ(QcFile(), qc);
    EXPECT_EQ(Doc().ModelPath, models.path().toStdString());
    EXPECT_EQ(Items(form->LstFiles), (QStringList{"robot_head", "robot_helmet", "robot_ref"}));
    EXPECT_EQ(Items(form->LstParts), QStringList{"robot_ref"});
    // The number stays, and the list shows the group it names.
    EXPECT_EQ(form->TxtAnimNr->text(), QStringLiteral("1"));
    EXPECT_EQ(Items(form->LstAnimations), QStringList{"kick"});
    EXPECT_EQ(Doc().Anims[0][0].Fps, 20);
    form->MnuDateiNeu->trigger(); // a new document keeps the number too
    EXPECT_EQ(form->TxtAnimNr->text(), QStringLiteral("1"));
    EXPECT_EQ(form->LstAnimations->count(), 0);
    EXPECT_FALSE(QFileInfo::exists(InWork("loadbuffer.dat"))) << "removed after the load";

    // Started from a folder nobody may write to: the load works in the
    // user's cache folder, the compile in the user's own folder.
    QStandardPaths::setTestModeEnabled(true);
    const QString before = QDir::currentPath();
    ASSERT_TRUE(QDir::setCurrent(QStringLiteral("/proc")));
    form->WorkFolder.clear();
    const QString own = QStandardPaths::writableLocation(QStandardPaths::CacheLocation);
    QFile::remove(QDir(own).filePath("loadbuffer.dat"));
    services.QueueOpen(Pick(qc));
    services.QueueMsgBox(Answer::Ok);
    services.QueueFolder(models.path());
    services.QueueMsgBox(Answer::Ok);
    form->MnuDateiOeffnen->trigger();
    EXPECT_EQ(form->Commands().WorkingFolder(), own);
    QDir::setCurrent(before);
    EXPECT_FALSE(QFileInfo::exists(QDir(own).filePath("loadbuffer.dat")));
    EXPECT_EQ(services.Prompts().size(), 8) << "the same questions, and no failure";
}

// A load that takes longer than half a second shows the busy cursor and a
// progress window; its Cancel puts the document back as it was. The working
// file goes after every load.
TEST_F(DocumentCommandsTest, ALongLoadShowsItsProgressAndCanBeCancelled) {
    WriteFile(InModels("old.qc"), Head() + "$sequence \"stand\" \"stand\"\r\n");
    WriteFile(InModels("new.qc"), Head() + "$sequence \"run\" \"run\"\r\n"
                                           "$sequence \"jump\" \"jump\"\r\n");
    services.QueueOpen(Pick(InModels("old.qc")));
    form->MnuDateiOeffnen->trigger();
    ASSERT_EQ(Items(form->LstAnimations), QStringList{"stand"});
    EXPECT_FALSE(QFileInfo::exists(InWork("loadbuffer.dat")));

    // Each look at the clock finds it 300 ms on: the load runs long.
    services.ClockStep = 300;
    services.CancelProgressAt = 1;
    services.QueueOpen(Pick(InModels("new.qc")));
    form->MnuDateiOeffnen->trigger();
    ASSERT_EQ(services.Prompts().last().Kind, "Progress");
    EXPECT_EQ(services.Prompts().last().Text, "Reading new.qc ...");
    EXPECT_EQ(QcFile(), InModels("old.qc"));
    EXPECT_EQ(Doc().Anims[0][0].Name, "stand");
    EXPECT_TRUE(Doc().Anims[0][1].Name.empty());
    EXPECT_EQ(Items(form->LstAnimations), QStringList{"stand"});
    EXPECT_FALSE(services.ProgressShown || services.BusyCursor);
    EXPECT_FALSE(QFileInfo::exists(InWork("loadbuffer.dat")));

    services.CancelProgressAt = 0;
    services.QueueOpen(Pick(InModels("new.qc")));
    form->MnuDateiOeffnen->trigger();
    EXPECT_EQ(QcFile(), InModels("new.qc"));
    EXPECT_EQ(Items(form->LstAnimations), (QStringList{"run", "jump"}));
    EXPECT_FALSE(services.ProgressShown || services.BusyCursor);
}

TEST_F(DocumentCommandsTest, OpenBrokenOffByTheUserEndsInANewDocument) {
    OpenSampleModel();
    const QString qc = InModels("robot.qc");
    // Opens the script; the answers for the reader's questions are queued after its pick.
    auto open = [&](const QByteArray& script, std::initializer_list<Answer> answers,
                    std::initializer_list<std::optional<FilePick>> picks = {}) {
        WriteFile(qc, script);
        services.QueueOpen(Pick(qc));
        for (const Answer answer : answers) {
            services.QueueMsgBox(answer);
        }
        for (const auto& pick : picks) {
            services.QueueOpen(pick);
        }
        form->MnuDateiOeffnen->trigger();
    };
    // A refused folder.
    open("$sequence \"stand\" \"idle\"\r\n$cd \"c:\\gone\\robot\"\r\n", {Answer::Cancel});
    EXPECT_EQ(services.Prompts().size(), 2);
    EXPECT_EQ(form->LstAnimations->count(), 0);
    EXPECT_EQ(Doc().QcFile, "");
    EXPECT_EQ(Items(form->CmbBodyGroup), QStringList{"body"});

    // A missing part is picked as a file of the model folder ...
    const QByteArray goneRef = Head() + "$bodygroup body\r\n{\r\nstudio \"robot_gone\"\r\n}\r\n";
    open(goneRef, {Answer::Ok, Answer::Ok}, {Pick(InModels("robot_head.smd"))});
    const auto& question = services.Prompts()[3];
    EXPECT_TRUE(question.Text.startsWith("IDS_REFERENCEMODEL: "));
    EXPECT_TRUE(question.Text.contains("robot_gone.smd"));
    EXPECT_EQ(services.Prompts()[4].InitialDir, models.path());
    EXPECT_EQ(Items(form->LstParts), QStringList{"robot_head"});
    // ... and a cancelled pick breaks the load off.
    open(goneRef, {Answer::Ok}, {std::nullopt});
    EXPECT_EQ(Doc().BodyGroups[1].PartCount, 0);
    EXPECT_EQ(Doc().QcFile, "");

    // A line the compiler refuses is shown as a warning, and the load goes on.
    open(Head() + "$Scale 2\r\n", {Answer::Ok});
    EXPECT_EQ(services.Prompts().last().Icon, Icon::Exclamation);
    EXPECT_EQ(QcFile(), qc);
}

// ---------------------------------------------------------------------------
// Compile, the viewer and the editor

TEST_F(DocumentCommandsTest, ViewerCompilesAMissingModelFirst) {
    // A model that passes the checks and has no animations.
    WriteFile(InModels("robot_ref.smd"), "version 1\r\nnodes\r\nend\r\ntriangles\r\nend\r\n");
    Doc().ModelPath = models.path().toStdString();
    Doc().TexturePath = Doc().ModelPath;
    Doc().BodyGroups[1].PartCount = 1;
    Doc().BodyGroups[1].Parts[1] = "robot_ref";
    services.QueueSave(Pick(InModels("robot")));
    CompileSeen seen;
    {
        const auto script = ExpectCompile(seen);
        form->MnuDateiView->trigger();
        ASSERT_TRUE(script->Ran());
    }
    EXPECT_TRUE(seen.ViewerBoxEnabled);
    EXPECT_EQ(ReadFile(InModels("robot.mdl")), "IDST1");

    // The model is there now: the viewer gets it as its one argument.
    ASSERT_EQ(services.Starts.size(), 1);
    EXPECT_EQ(services.Starts[0].Program, InProgramDir("viewer"));
    EXPECT_EQ(services.Starts[0].Arguments, QStringList{ModelName()});
    EXPECT_EQ(services.Prompts().size(), 1) << "only the save asked";
}

TEST_F(DocumentCommandsTest, EditorShowsTheScriptAsLastSaved) {
    // No file yet: save as first, then the editor.
    services.QueueSave(Pick(InModels("robot")));
    form->MnuDateiViewCode->trigger();
    const QString qc = InModels("robot.qc");
    ASSERT_EQ(services.Starts.size(), 1);
    EXPECT_EQ(services.Starts[0].Program, InProgramDir("editor"));
    EXPECT_EQ(services.Starts[0].Arguments, QStringList{qc});

    // With the file on disk the command writes nothing.
    const QByteArray saved = ReadFile(qc);
    Doc().ModelScale = 3.0f;
    form->Commands().MnuDateiViewCode_Click();
    EXPECT_EQ(ReadFile(qc), saved);
    EXPECT_EQ(services.Starts.size(), 2);
    EXPECT_EQ(services.Prompts().size(), 1);

    // A script deleted since its save is saved under a new name first.
    QFile::remove(qc);
    services.QueueSave(Pick(InModels("again")));
    form->Commands().MnuDateiViewCode_Click();
    EXPECT_EQ(services.Starts.last().Arguments, QStringList{InModels("again.qc")});
    EXPECT_TRUE(ReadFile(InModels("again.qc")).contains("\r\n$scale 3\r\n"));

    // A cancelled save starts nothing.
    QFile::remove(InModels("again.qc"));
    services.QueueSave(std::nullopt);
    form->Commands().MnuDateiViewCode_Click();
    EXPECT_EQ(services.Starts.size(), 3);
}

TEST_F(DocumentCommandsTest, MissingOrFailingProgramsAreReported) {
    const QString qc = InModels("robot.qc");
    WriteFile(qc, "// saved\r\n");
    Doc().QcFile = qc.toStdString();
    state->Settings.TextEditorPath = InProgramDir("no-editor").toStdString();
    services.QueueMsgBox(Answer::Ok);
    form->Commands().MnuDateiViewCode_Click();
    EXPECT_TRUE(services.Starts.isEmpty());
    ASSERT_EQ(services.Prompts().size(), 1);
    EXPECT_TRUE(services.Prompts()[0].Text.contains(InProgramDir("no-editor")));

    // A viewer that is there but does not start.
    WriteFile(InModels("robot.mdl"), "IDST");
    Doc().ModelName = InModels("robot.mdl").toStdString();
    services.StartResult = false;
    services.QueueMsgBox(Answer::Ok);
    form->Commands().MnuDateiView_Click();
    EXPECT_EQ(services.Starts.size(), 1);
    EXPECT_TRUE(services.Prompts().last().Text.contains(InProgramDir("viewer")));

    // A model the compile did not make: nothing more, no message.
    Doc().ModelName = InModels("never.mdl").toStdString();
    Doc().QcFile.clear();
    services.QueueSave(std::nullopt);
    form->Commands().MnuDateiView_Click();
    EXPECT_EQ(services.Starts.size(), 1);
    EXPECT_EQ(services.Prompts().last().Kind, "Save");
}

} // namespace
} // namespace quarle::ui
