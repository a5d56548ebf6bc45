// The commands of the file menu and the compile button, driven headless on a
// started main window: scripted dialogs, a settings store of the test's own,
// the stand-in compiler, and the working files in a folder of the test's own.
#include "AppState.h"
#include "FakeCompiler.h"
#include "document/QcWriter.h"
#include "localisation/GlobalStrings.h"
#include "support/ModalScript.h"
#include "support/ScriptedServices.h"
#include "support/TempSettings.h"
#include "ui/compile/DlgCompile.h"
#include "ui/mainwindow/FrmMain.h"

#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QListWidget>
#include <QLocale>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <gtest/gtest.h>
#include <memory>

namespace quarle::ui {
namespace {

using platform::FilePick;
using Recent = std::array<std::string, 4>;

QByteArray Read(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("<missing>");
}

void Write(const QString& path, const QByteArray& bytes) {
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate)) << path.toStdString();
    file.write(bytes);
}

FilePick Pick(const QString& path) {
    return FilePick{path, QFileInfo(path).fileName()};
}

// What the compile dialog showed before it was closed.
struct CompileSeen {
    bool Shown = false;
    QString Title;
    QStringList Rows;
    bool ViewerBoxEnabled = false;
};

// A started window whose global strings read as their keys. The compiler is
// the stand-in; the viewer and the editor are files in the program folder
// (their starts are only recorded).
class DocumentCommandsTest : public ::testing::Test {
protected:
    DocumentCommandsTest() {
        services.ProgramFolderPath = programDir.path();
        Write(InProgramDir("viewer"), "");
        Write(InProgramDir("editor"), "");
        settings.Store().Set("StudioMDL", QUARLE_FAKE_COMPILER);
        settings.Store().Set("ModelViewer", InProgramDir("viewer"));
        settings.Store().Set("TextEditor", InProgramDir("editor"));
        form = std::make_unique<FrmMain>(*state, services, settings.Store());
        form->WorkFolder = work.path();
        form->Form_Load();
        for (std::size_t i = 0; i < IdsKeyTable.size(); ++i) {
            state->IdsTexts[i] = IdsKeyTable[i];
        }
    }

    QString InProgramDir(const QString& name) const {
        return QDir(programDir.path()).filePath(name);
    }
    QString InModels(const QString& name) const { return QDir(models.path()).filePath(name); }
    QString InWork(const QString& name) const { return QDir(work.path()).filePath(name); }
    QString QcFile() const { return QString::fromStdString(state->Doc.QcFile); }
    QString ModelName() const { return QString::fromStdString(state->Doc.ModelName); }

    // A model that passes the checks: a folder with a reference mesh, the
    // mesh as the one part of "body", no animations.
    void MakeCompilableModel(Document& doc) {
        Write(InModels("robot_ref.smd"), "version 1\r\nnodes\r\nend\r\ntriangles\r\nend\r\n");
        doc.ModelPath = models.path().toStdString();
        doc.TexturePath = doc.ModelPath;
        doc.BodyGroups[1].PartCount = 1;
        doc.BodyGroups[1].Parts[1] = "robot_ref";
    }

    // Arms a script for the compile dialog the next command opens: it waits
    // for the closing row, keeps what the dialog shows, ticks the viewer box
    // when asked, and presses OK.
    std::unique_ptr<test::ModalScript> ExpectCompile(CompileSeen& seen, bool tickViewer = false) {
        return std::make_unique<test::ModalScript>([&seen, tickViewer](QWidget* modal) {
            auto* dialog = qobject_cast<DlgCompile*>(modal);
            ASSERT_NE(dialog, nullptr) << "not the compile dialog";
            ASSERT_TRUE(QTest::qWaitFor([&] { return dialog->OKButton->isEnabled(); }, 20000));
            seen.Shown = true;
            seen.Title = dialog->windowTitle();
            for (int i = 0; i < dialog->List1->count(); ++i) {
                seen.Rows << dialog->List1->item(i)->text();
            }
            seen.ViewerBoxEnabled = dialog->ChkViewAfterCompile->isEnabled();
            dialog->ChkViewAfterCompile->setChecked(tickViewer);
            QTest::mouseClick(dialog->OKButton, Qt::LeftButton);
        });
    }

    QTemporaryDir programDir;
    QTemporaryDir models;
    QTemporaryDir work;
    test::TempSettings settings;
    test::ScriptedServices services;
    std::unique_ptr<AppState> state = std::make_unique<AppState>();
    std::unique_ptr<FrmMain> form;
};

// ---------------------------------------------------------------------------
// Save and save as

TEST_F(DocumentCommandsTest, SaveAsAddsTheExtensionAndPutsTheModelBesideTheScript) {
    state->Doc.ModelName = "c:\\from\\modelname.mdl";
    services.QueueSave(Pick(InModels("robot")));
    form->MnuDateiSpeichernunter->trigger();

    ASSERT_EQ(services.Prompts().size(), 1);
    EXPECT_EQ(services.Prompts()[0].Kind, "Save");
    EXPECT_EQ(services.Prompts()[0].Title, "IDS_SAVEAS...");
    EXPECT_EQ(services.Prompts()[0].Filter, "QC-IDS_FILE|*.qc");
    EXPECT_EQ(QcFile(), InModels("robot.qc"));
    EXPECT_EQ(ModelName(), InModels("robot.mdl")) << "replaces the name $modelname gave";
    const QByteArray script = Read(InModels("robot.qc"));
    EXPECT_TRUE(script.startsWith("// QC-File for Half-Life Model: \"" +
                                  InModels("robot.mdl").toUtf8() + "\"\r\n"));
    EXPECT_TRUE(script.contains("\r\n$modelname \"" + InModels("robot.mdl").toUtf8() + "\"\r\n"));

    // The name with its extension gives the same two paths.
    services.QueueSave(Pick(InModels("robot.qc")));
    form->MnuDateiSpeichernunter_Click();
    EXPECT_EQ(QcFile(), InModels("robot.qc"));
    EXPECT_EQ(ModelName(), InModels("robot.mdl"));
    EXPECT_FALSE(QFileInfo::exists(InModels("robot.qc.qc")));

    // Only ".qc" in lower case counts as the extension.
    services.QueueSave(Pick(InModels("loud.QC")));
    form->MnuDateiSpeichernunter_Click();
    EXPECT_EQ(QcFile(), InModels("loud.QC.qc"));
    EXPECT_EQ(ModelName(), InModels("loud.QC.mdl"));

    // With a file, save writes over it at once, asking nothing.
    state->Doc.ModelScale = 2.0f;
    form->MnuDateiSpeichern->trigger();
    EXPECT_EQ(services.Prompts().size(), 3);
    EXPECT_TRUE(Read(InModels("loud.QC.qc")).contains("\r\n$scale 2\r\n"));
    // The save dialog opens where the script lies.
    EXPECT_EQ(services.Prompts()[2].InitialDir, models.path());
}

TEST_F(DocumentCommandsTest, CancelledDialogsChangeNothing) {
    state->Doc.ModelName = "keep.mdl";
    // Save on a document without a file asks for one.
    services.QueueSave(std::nullopt);
    form->MnuDateiSpeichern_Click();
    services.QueueSave(FilePick{}); // a dialog that reports no file chose nothing
    form->MnuDateiSpeichernunter_Click();
    EXPECT_EQ(state->Doc.QcFile, "");
    EXPECT_EQ(state->Doc.ModelName, "keep.mdl");
    EXPECT_EQ(state->Settings.RecentFiles, (Recent{"...", "...", "...", "..."}));

    // Compile on a new document: the save dialog first; its cancel ends
    // the command before the compile dialog.
    CompileSeen seen;
    {
        const auto script = ExpectCompile(seen);
        services.QueueSave(std::nullopt);
        form->MnuDateiComp_Click();
        EXPECT_FALSE(script->Ran());
    }
    EXPECT_EQ(services.Prompts().size(), 3);
    EXPECT_EQ(services.Prompts().last().Kind, "Save");

    // A cancelled open keeps the document and its list.
    form->LstAnimations->addItem("idle");
    services.QueueOpen(std::nullopt);
    form->MnuDateiOeffnen->trigger();
    EXPECT_EQ(services.Prompts().last().Title, "IDS_OPEN...");
    EXPECT_EQ(services.Prompts().last().Filter, "QC-IDS_FILE|*.qc");
    EXPECT_EQ(form->LstAnimations->count(), 1);
    EXPECT_EQ(state->Doc.ModelName, "keep.mdl");
}

TEST_F(DocumentCommandsTest, FailedSaveReportsAndLosesNothing) {
    // A script that is write-protected: refused, and whole afterwards.
    const QString locked = InModels("locked.qc");
    Write(locked, "// the old script\r\n");
    ASSERT_TRUE(QFile::setPermissions(locked, QFileDevice::ReadOwner | QFileDevice::ReadUser));
    state->Doc.QcFile = locked.toStdString();
    services.QueueMsgBox(platform::Answer::Ok);
    form->MnuDateiSpeichern_Click();
    ASSERT_EQ(services.Prompts().size(), 1);
    EXPECT_EQ(services.Prompts()[0].Title, "IDS_ERROR");
    EXPECT_EQ(services.Prompts()[0].Icon, platform::Icon::Critical);
    EXPECT_TRUE(services.Prompts()[0].Text.contains(locked));
    EXPECT_EQ(Read(locked), "// the old script\r\n");
    EXPECT_EQ(state->Settings.RecentFiles, (Recent{"...", "...", "...", "..."}))
        << "a file that was not written does not enter the list";

    // A compile stops at the failed save: no dialog on a stale script.
    CompileSeen seen;
    {
        const auto script = ExpectCompile(seen);
        services.QueueMsgBox(platform::Answer::Ok);
        form->CmdCompile_Click();
        EXPECT_FALSE(script->Ran());
    }

    // A folder that does not exist: the document keeps its old file names.
    state->Doc.ModelName = locked.chopped(3).toStdString() + ".mdl";
    services.QueueSave(Pick(InModels("gone/robot")));
    services.QueueMsgBox(platform::Answer::Ok);
    form->MnuDateiSpeichernunter_Click();
    EXPECT_EQ(QcFile(), locked);
    EXPECT_EQ(ModelName(), InModels("locked.mdl"));
    EXPECT_EQ(services.Prompts().last().Title, "IDS_ERROR");
    EXPECT_TRUE(services.Prompts().last().Text.contains(InModels("gone/robot.qc")));
    EXPECT_FALSE(QFileInfo::exists(InModels("gone")));
    EXPECT_EQ(QDir(models.path()).entryList(QDir::Files), QStringList{"locked.qc"})
        << "no temporary file is left behind";
}

TEST_F(DocumentCommandsTest, LocaleFormOfNumbersUsesTheUsersSeparator) {
    const QString point = QLocale::system().decimalPoint();
    const QByteArray separator =
        point.size() == 1 && point[0].unicode() < 0x7f ? point.toLatin1() : QByteArray(".");
    state->Doc.EyesOn = 1;
    state->Doc.EyeX = 1.5f;
    state->Doc.ModelScale = 2.5f;
    services.QueueSave(Pick(InModels("eyes.qc")));
    form->MnuDateiSpeichern_Click();
    const QByteArray script = Read(InModels("eyes.qc"));
    EXPECT_TRUE(script.contains("\r\n$eyeposition 1" + separator + "5 0 0\r\n"));
    EXPECT_TRUE(script.contains("\r\n$scale 2.5\r\n")) << "the point form stays a point";
}

// ---------------------------------------------------------------------------
// Recent files

TEST_F(DocumentCommandsTest, RecentListFollowsSavesButNotOpens) {
    // (The order of the list itself is the shell's, tested with it.)
    auto saveAs = [&](const QString& name) {
        services.QueueSave(Pick(InModels(name)));
        form->MnuDateiSpeichernunter_Click();
    };
    const std::string a = InModels("a.qc").toStdString();
    const std::string b = InModels("b.qc").toStdString();
    auto& recent = state->Settings.RecentFiles;
    // Folders that exist, so that reading the scripts back asks nothing.
    state->Doc.ModelPath = models.path().toStdString();
    state->Doc.TexturePath = state->Doc.ModelPath;

    saveAs("a");
    form->MnuDateiSpeichern_Click(); // the same file again
    saveAs("b");
    EXPECT_EQ(recent, (Recent{b, a, "...", "..."}));
    EXPECT_EQ(form->MnuDateiLast2->text().toStdString(), a);

    // Opening through the menu or an entry leaves the list as it is.
    services.QueueOpen(Pick(InModels("a.qc")));
    form->MnuDateiOeffnen_Click();
    EXPECT_EQ(state->Doc.QcFile, a);
    form->MnuDateiLast1->trigger();
    EXPECT_EQ(state->Doc.QcFile, b);
    EXPECT_EQ(recent, (Recent{b, a, "...", "..."}));
    EXPECT_EQ(services.Prompts().size(), 3) << "no message on the way";
}

TEST_F(DocumentCommandsTest, RecentEntryOfADeletedFileReportsOnceAndBecomesAGap) {
    const QString first = InModels("first.qc");
    const QString gone = InModels("gone.qc");
    const QString last = InModels("last.qc");
    Write(first, "$modelname \"first.mdl\"\r\n");
    Write(last, "$modelname \"last.mdl\"\r\n");
    state->Settings.RecentFiles = {first.toStdString(), gone.toStdString(), "...",
                                   last.toStdString()};
    form->ShowRecentFiles();
    state->Doc.ModelName = "keep.mdl";

    // A gap does nothing.
    form->MnuDateiLast3->trigger();
    EXPECT_TRUE(services.Prompts().isEmpty());
    EXPECT_EQ(state->Doc.ModelName, "keep.mdl");

    services.QueueMsgBox(platform::Answer::Ok);
    form->MnuDateiLast2->trigger();
    ASSERT_EQ(services.Prompts().size(), 1);
    const auto& message = services.Prompts()[0];
    EXPECT_EQ(message.Text, "IDS_CANTFINDFILE_PART1 " + gone + " IDS_CANTFINDFILE_PART2");
    EXPECT_EQ(message.Title, "IDS_ERROR");
    EXPECT_EQ(message.Icon, platform::Icon::Critical);
    EXPECT_EQ(message.Buttons, platform::Buttons::Ok);
    EXPECT_EQ(state->Settings.RecentFiles,
              (Recent{first.toStdString(), "...", "...", last.toStdString()}));
    EXPECT_EQ(form->MnuDateiLast2->text(), "...");
    EXPECT_EQ(state->Doc.ModelName, "keep.mdl") << "the document stays";

    // Now a gap: a second click says nothing.
    form->MnuDateiLast2->trigger();
    EXPECT_EQ(services.Prompts().size(), 1);

    // The entries around the gap still open their files.
    form->MnuDateiLast4->trigger();
    EXPECT_EQ(QcFile(), last);
    EXPECT_EQ(ModelName(), InModels("last.mdl"));
}

// ---------------------------------------------------------------------------
// Open

TEST_F(DocumentCommandsTest, SecondOpenEmptiesTheAnimationListFirst) {
    Write(InModels("ref.smd"), "version 1\r\nnodes\r\nend\r\ntriangles\r\nend\r\n");
    const QByteArray head = "$cd \"" + models.path().toUtf8() + "\"\r\n$cdtexture \"" +
                            models.path().toUtf8() + "\"\r\n$body body \"ref\"\r\n";
    Write(InModels("two.qc"), head + "$sequence \"idle\" \"idle\" fps 30\r\n"
                                     "$sequence \"walk\" \"walk\" fps 24 loop\r\n");
    Write(InModels("one.qc"), head + "$sequence \"run\" \"run\" fps 40\r\n");

    services.QueueOpen(Pick(InModels("two.qc")));
    form->MnuDateiOeffnen->trigger();
    ASSERT_EQ(form->LstAnimations->count(), 2);
    EXPECT_EQ(form->LstAnimations->item(1)->text(), "walk");
    EXPECT_EQ(form->CmbBodyGroup->currentText(), "body");
    EXPECT_EQ(form->LstParts->count(), 1);
    EXPECT_TRUE(form->FrmModelfiles->isEnabled());
    EXPECT_TRUE(form->MnuWizardsAnimWiz->isEnabled());

    services.QueueOpen(Pick(InModels("one.qc")));
    form->MnuDateiOeffnen->trigger();
    ASSERT_EQ(form->LstAnimations->count(), 1);
    EXPECT_EQ(form->LstAnimations->item(0)->text(), "run");
    EXPECT_EQ(QcFile(), InModels("one.qc"));
    EXPECT_EQ(state->Doc.Anims[0][1].Name, "") << "nothing of the first script is left";
    EXPECT_TRUE(QFileInfo::exists(InWork("loadbuffer.dat"))) << "the load works in WorkFolder";
    EXPECT_EQ(services.Prompts().size(), 2);
}

// ---------------------------------------------------------------------------
// Compile

TEST_F(DocumentCommandsTest, SavedFreshDocumentIsCheckedAndNotCompiled) {
    // A fresh document with its two folders chosen, saved by the compile.
    services.QueueOpen(Pick(InModels("any.smd")));
    form->CmdBrowseModel_Click();
    services.QueueOpen(Pick(InModels("any.bmp")));
    form->CmdBrowseTexture_Click();
    CompileSeen seen;
    {
        const auto script = ExpectCompile(seen);
        services.QueueSave(Pick(InModels("fresh")));
        form->MnuDateiComp->trigger();
        ASSERT_TRUE(script->Ran());
    }
    EXPECT_EQ(seen.Title, "IDS_COMPILE " + InModels("fresh.qc"));
    EXPECT_EQ(seen.Rows,
              (QStringList{"IDS_CHECKMODELINFO",
                           "IDS_WARNING_BODYGROUP_PART1 \"body\" IDS_WARNING_BODYGROUP_PART2",
                           "IDS_ERROR_NOREFERENCEMODEL", "IDS_WARNING_IDLEANIMATION", " ",
                           "IDS_CANTCOMPILE", "IDS_DONE (1 IDS_ERRORS)"}));
    // The script as saved, with the idle line the checks appended.
    const QByteArray mdl = InModels("fresh.mdl").toUtf8();
    const QByteArray folder = models.path().toUtf8();
    EXPECT_EQ(Read(InModels("fresh.qc")),
              "// QC-File for Half-Life Model: \"" + mdl +
                  "\"\r\n"
                  "// Createt with \"Quarle 0.8.4\"\r\n" +
                  QByteArray(MakersNotice.data(), static_cast<qsizetype>(MakersNotice.size())) +
                  "\r\n\r\n// Pathdata\r\n$modelname \"" + mdl + "\"\r\n$cd \"" + folder +
                  "\"\r\n$cdtexture \"" + folder +
                  "\"\r\n\r\n// Modelsettings\r\n$bodygroup body\r\n{\r\n}\r\n\r\n"
                  "// Animations\r\n$sequence idle \"\"\r\n");
    EXPECT_FALSE(QFileInfo::exists(InWork("compile.sh")));
    EXPECT_FALSE(QFileInfo::exists(InWork("compile.bat")));
    EXPECT_EQ(state->Settings.RecentFiles[0], InModels("fresh.qc").toStdString());
}

TEST_F(DocumentCommandsTest, ViewerCompilesAMissingModelWithTheIdleLineFirst) {
    MakeCompilableModel(state->Doc);
    // Left by an earlier run: neither ends the wait nor reaches the list.
    Write(InWork("fert.dat"), "Fertig\r\n");
    Write(InWork("compile.log"), "stale line\r\n");
    services.QueueSave(Pick(InModels("robot")));
    CompileSeen seen;
    {
        const auto script = ExpectCompile(seen);
        form->MnuDateiView->trigger();
        ASSERT_TRUE(script->Ran());
    }
    const QString qc = InModels("robot.qc");
    EXPECT_EQ(seen.Rows,
              (QStringList{"IDS_CHECKMODELINFO", "IDS_WARNING_IDLEANIMATION", " ",
                           "IDS_COMPILEMODEL", " fake studiomdl 1.0", " arguments: 1", " qc: " + qc,
                           " grabbing sequence idle \"robot_ref\"", " sequences: 1",
                           " writing " + ModelName(), "IDS_DONE (0 IDS_ERRORS)"}));
    EXPECT_TRUE(seen.ViewerBoxEnabled);
    EXPECT_TRUE(Read(qc).endsWith("\r\n$sequence idle \"robot_ref\"\r\n"));
    EXPECT_EQ(Read(InModels("robot.mdl")), "IDST1");

    // The model is there now: the viewer gets it as its one argument.
    ASSERT_EQ(services.Starts.size(), 1);
    EXPECT_EQ(services.Starts[0].Program, InProgramDir("viewer"));
    EXPECT_EQ(services.Starts[0].Arguments, QStringList{ModelName()});

    // With the model on disk the viewer starts without a compile.
    {
        const auto script = ExpectCompile(seen);
        form->MnuDateiView_Click();
        EXPECT_FALSE(script->Ran());
    }
    EXPECT_EQ(services.Starts.size(), 2);
    EXPECT_EQ(services.Prompts().size(), 1) << "only the first save asked";
}

// ---------------------------------------------------------------------------
// The viewer and the editor

TEST_F(DocumentCommandsTest, EditorShowsTheScriptAsLastSaved) {
    // No file yet: save as first, then the editor.
    services.QueueSave(Pick(InModels("robot")));
    form->MnuDateiViewCode->trigger();
    const QString qc = InModels("robot.qc");
    ASSERT_EQ(services.Starts.size(), 1);
    EXPECT_EQ(services.Starts[0].Program, InProgramDir("editor"));
    EXPECT_EQ(services.Starts[0].Arguments, QStringList{qc});

    // With the file on disk the command writes nothing.
    const QByteArray saved = Read(qc);
    state->Doc.ModelScale = 3.0f;
    form->MnuDateiViewCode_Click();
    EXPECT_EQ(Read(qc), saved);
    EXPECT_EQ(services.Starts.size(), 2);
    EXPECT_EQ(services.Prompts().size(), 1);

    // A script deleted since its save is saved under a new name first.
    QFile::remove(qc);
    services.QueueSave(Pick(InModels("again")));
    form->MnuDateiViewCode_Click();
    EXPECT_EQ(services.Prompts().last().Kind, "Save");
    EXPECT_EQ(services.Starts.last().Arguments, QStringList{InModels("again.qc")});
    EXPECT_TRUE(Read(InModels("again.qc")).contains("\r\n$scale 3\r\n"));

    // A cancelled save starts nothing.
    QFile::remove(InModels("again.qc"));
    services.QueueSave(std::nullopt);
    form->MnuDateiViewCode_Click();
    EXPECT_EQ(services.Starts.size(), 3);
}

TEST_F(DocumentCommandsTest, MissingOrFailingProgramsAreReported) {
    const QString qc = InModels("robot.qc");
    Write(qc, "// saved\r\n");
    state->Doc.QcFile = qc.toStdString();
    state->Settings.TextEditorPath = InProgramDir("no-editor").toStdString();
    services.QueueMsgBox(platform::Answer::Ok);
    form->MnuDateiViewCode_Click();
    EXPECT_TRUE(services.Starts.isEmpty());
    ASSERT_EQ(services.Prompts().size(), 1);
    EXPECT_EQ(services.Prompts()[0].Title, "IDS_ERROR");
    EXPECT_TRUE(services.Prompts()[0].Text.contains(InProgramDir("no-editor")));

    // A viewer that is there but does not start.
    Write(InModels("robot.mdl"), "IDST");
    state->Doc.ModelName = InModels("robot.mdl").toStdString();
    services.StartResult = false;
    services.QueueMsgBox(platform::Answer::Ok);
    form->MnuDateiView_Click();
    EXPECT_EQ(services.Starts.size(), 1);
    EXPECT_EQ(services.Prompts().last().Title, "IDS_ERROR");
    EXPECT_TRUE(services.Prompts().last().Text.contains(InProgramDir("viewer")));

    // A model the compile did not make: nothing more, no message.
    state->Doc.ModelName.clear();
    services.QueueSave(std::nullopt);
    state->Doc.QcFile.clear();
    form->MnuDateiView_Click();
    EXPECT_EQ(services.Starts.size(), 1);
    EXPECT_EQ(services.Prompts().last().Kind, "Save");
}

} // namespace
} // namespace quarle::ui
