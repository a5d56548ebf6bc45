// The main window's start and stop, the refresh from the document, the
// folder question, the recent files and the path buttons, driven headless
// with scripted dialogs and a settings store of the test's own.
#include "ui/mainwindow/FrmMain.h"

#include "AppState.h"
#include "localisation/GlobalStrings.h"
#include "platform/Reflection.h"
#include "platform/Twips.h"
#include "support/ScriptedServices.h"
#include "support/TempSettings.h"
#include "ui/mainwindow/ShellSettings.h"

#include <QAction>
#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QSettings>
#include <QTabWidget>
#include <QTemporaryDir>
#include <gtest/gtest.h>
#include <memory>

namespace quarle::ui {
namespace {

using platform::Answer;
using platform::FilePick;

QStringList Items(const QListWidget* list) {
    QStringList items;
    for (int i = 0; i < list->count(); ++i) {
        items.append(list->item(i)->text());
    }
    return items;
}

void Touch(const QString& path, const QByteArray& text = {}) {
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly)) << path.toStdString();
    file.write(text);
}

// A window on a program folder of the test's own: no compiler, no viewer
// and no language file there unless a test puts them there.
class MainWindowTest : public ::testing::Test {
protected:
    MainWindowTest() {
        services.ProgramFolderPath = programDir.path();
        form = std::make_unique<FrmMain>(*state, services, settings.Store());
        form->EndProcess = [this] { ++ends; };
    }

    QString InProgramDir(const QString& name) const {
        return QDir(programDir.path()).filePath(name);
    }

    QTemporaryDir programDir;
    test::TempSettings settings;
    test::ScriptedServices services;
    std::unique_ptr<AppState> state = std::make_unique<AppState>();
    std::unique_ptr<FrmMain> form;
    int ends = 0;
};

TEST_F(MainWindowTest, FirstStartOnAnEmptyStore) {
    form->Form_Load();

    const ToolSettings& tools = state->Settings;
    EXPECT_EQ(tools.StudioMdlPath, DefaultStudioMdlPath(programDir.path()).toStdString());
    EXPECT_EQ(tools.ModelViewerPath, DefaultModelViewerPath(programDir.path()).toStdString());
    EXPECT_EQ(tools.TextEditorPath, DefaultTextEditorPath().toStdString());
    EXPECT_EQ(tools.LanguageFile, "deutsch.lng");
    for (std::size_t i = 0; i < 4; ++i) {
        EXPECT_EQ(tools.RecentFiles[i], "...");
        EXPECT_EQ(form->MnuDateiLast()[i]->text(), QStringLiteral("..."));
    }

    // A new document on show.
    EXPECT_EQ(form->CmbBodyGroup->count(), 1);
    EXPECT_EQ(form->CmbBodyGroup->currentText(), QStringLiteral("body"));
    // Enabled themselves; the frame around them is off until a model folder is known.
    EXPECT_TRUE(form->CmdDel->isEnabledTo(form->FrmModelfiles));
    EXPECT_TRUE(form->CmdRename->isEnabledTo(form->FrmModelfiles));
    EXPECT_EQ(form->LstParts->count(), 0);
    EXPECT_EQ(form->LstAnimations->count(), 0);
    EXPECT_EQ(form->TxtAnimNr->text(), QStringLiteral("0"));
    EXPECT_FALSE(form->FrmModelfiles->isEnabled());
    EXPECT_FALSE(form->MnuWizardsAnimWiz->isEnabled());
    EXPECT_EQ(state->IdsNames[IDS_VERYOLD], "IDS_VERYOLD");
    EXPECT_FLOAT_EQ(state->Doc.Gamma, DefaultGamma);

    // Neither program is there.
    EXPECT_FALSE(form->CmdCompile->isEnabled());
    EXPECT_FALSE(form->MnuDateiView->isEnabled());
    EXPECT_FALSE(platform::Visible(form->CmdLocalise).value());

    EXPECT_EQ(platform::WidthTwips(form.get()), 7650);
    EXPECT_EQ(platform::HeightTwips(form.get()), 6420);
    EXPECT_EQ(platform::WidthTwips(form->FrmModelfiles), 7215);
    EXPECT_EQ(platform::HeightTwips(form->FrmModelfiles), 4575);
    EXPECT_TRUE(services.Prompts().isEmpty());
}

TEST_F(MainWindowTest, ProgramsThatExistEnableTheirCommands) {
    Touch(InProgramDir(QStringLiteral("studiomdl.exe")));
    form->Form_Load();
    EXPECT_TRUE(form->CmdCompile->isEnabled());
    EXPECT_FALSE(form->MnuDateiView->isEnabled());

    // A viewer stored under its key is taken as it stands; a compiler path
    // whose file is gone leaves the button disabled.
    test::TempSettings other;
    other.Store().Set(QStringLiteral("ModelViewer"), InProgramDir(QStringLiteral("studiomdl.exe")));
    other.Store().Set(QStringLiteral("StudioMDL"), InProgramDir(QStringLiteral("gone.exe")));
    auto otherState = std::make_unique<AppState>();
    FrmMain second(*otherState, services, other.Store());
    second.Form_Load();
    EXPECT_FALSE(second.CmdCompile->isEnabled());
    EXPECT_TRUE(second.MnuDateiView->isEnabled());
}

TEST_F(MainWindowTest, KeysAreFoundWhateverTheirCapitals) {
    // Written as the stop writes them, read as the start reads them.
    settings.Store().Set(QStringLiteral("StudioMDL"), QStringLiteral("/opt/hl/studiomdl.exe"));
    settings.Store().Set(QStringLiteral("RecentFile2"), QStringLiteral("c:\\m\\robot.qc"));
    settings.Store().Set(QStringLiteral("TEXTEDITOR"), QStringLiteral("kate"));
    form->Form_Load();
    EXPECT_EQ(state->Settings.StudioMdlPath, "/opt/hl/studiomdl.exe");
    EXPECT_EQ(state->Settings.TextEditorPath, "kate");
    EXPECT_EQ(state->Settings.RecentFiles[2], "c:\\m\\robot.qc");
    EXPECT_EQ(form->MnuDateiLast3->text(), QStringLiteral("c:\\m\\robot.qc"));
    EXPECT_EQ(state->Settings.RecentFiles[1], "...");
}

TEST_F(MainWindowTest, StopWritesEverySettingOnceAndEndsTheProcess) {
    settings.Store().Set(QStringLiteral("Recentfile0"), QStringLiteral("/m/a.qc"));
    form->Form_Load();
    state->Settings.LanguageFile = "english.lng";
    state->Settings.TextEditorPath = "gedit";

    const auto writes = SettingsToWrite(state->Settings);
    QStringList keys;
    for (const auto& write : writes) {
        keys.append(write.first);
    }
    EXPECT_EQ(keys, (QStringList{"StudioMDL", "TextEditor", "ModelViewer", "Language",
                                 "RecentFile0", "RecentFile1", "RecentFile2", "RecentFile3"}));

    form->MnuDateiBeenden_Click();
    form->close(); // a second close does not stop twice
    EXPECT_EQ(ends, 1);

    // What reaches the file, with the keys as written.
    QSettings ini(settings.Path(), QSettings::IniFormat);
    ini.beginGroup(QStringLiteral("Settings"));
    EXPECT_EQ(ini.value("StudioMDL").toString(), DefaultStudioMdlPath(programDir.path()));
    EXPECT_EQ(ini.value("TextEditor").toString(), QStringLiteral("gedit"));
    EXPECT_EQ(ini.value("Language").toString(), QStringLiteral("english.lng"));
    EXPECT_EQ(ini.value("RecentFile0").toString(), QStringLiteral("/m/a.qc"));
    EXPECT_EQ(ini.value("RecentFile3").toString(), QStringLiteral("..."));
    EXPECT_FALSE(ini.contains("Recentfile0")); // one spelling per key
}

TEST_F(MainWindowTest, RecentFilesTakeOnlyNewFilesOnTop) {
    form->Form_Load();
    auto& recent = state->Settings.RecentFiles;
    auto save = [&](const char* file) {
        state->Doc.QcFile = file;
        form->PushRecentFile();
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

class NewDirTest : public MainWindowTest {
protected:
    NewDirTest() {
        state->IdsTexts[IDS_MSGBOX_CANTFINDPATH_PART1] = "kann den Pfad";
        state->IdsTexts[IDS_MSGBOX_CANTFINDPATH_PART2] = "nicht finden.";
        state->IdsTexts[IDS_MSGBOX_CANTFINDPATH_TITEL] = "Pfad fehlt";
        state->IdsTexts[IDS_OPEN] = "\xC3\x96"
                                    "ffnen";
    }
};

TEST_F(NewDirTest, OkAndAPickGiveTheFolderOfThePickedFile) {
    services.QueueMsgBox(Answer::Ok);
    services.QueueOpen(FilePick{QStringLiteral("/home/m/new dir/x.smd"), QStringLiteral("x.smd")});
    EXPECT_EQ(form->NewDir("c:\\old\\dir", "$cd"), "/home/m/new dir");

    ASSERT_EQ(services.Prompts().size(), 2);
    const auto& ask = services.Prompts()[0];
    EXPECT_EQ(ask.Text, QStringLiteral("$cd: kann den Pfad \"c:\\old\\dir\" nicht finden."));
    EXPECT_EQ(ask.Title, QStringLiteral("Pfad fehlt"));
    EXPECT_EQ(ask.Buttons, platform::Buttons::OkCancel);
    EXPECT_EQ(ask.Icon, platform::Icon::Question);
    const auto& open = services.Prompts()[1];
    EXPECT_EQ(open.Kind, QStringLiteral("Open"));
    EXPECT_EQ(open.Title, QStringLiteral("\u00d6ffnen"));
    EXPECT_EQ(open.Filter, QStringLiteral("*.*|*.*"));
}

TEST_F(NewDirTest, GivingUpAnswersZero) {
    services.QueueMsgBox(Answer::Cancel);
    EXPECT_EQ(form->NewDir("/gone", "ref.smd"), "0");
    EXPECT_EQ(services.Prompts().size(), 1); // no file dialog after Cancel

    services.QueueMsgBox(Answer::Ok);
    services.QueueOpen(std::nullopt);
    EXPECT_EQ(form->NewDir("/gone", "ref.smd"), "0");

    // A dialog that reports an empty name chose nothing either.
    services.QueueMsgBox(Answer::Ok);
    services.QueueOpen(FilePick{});
    EXPECT_EQ(form->NewDir("/gone", "ref.smd"), "0");
}

TEST_F(MainWindowTest, UpdateShowsTheGroupsAndRefillsOnlyOnANewModelFolder) {
    form->Form_Load();
    QTemporaryDir model;
    Touch(QDir(model.path()).filePath("ref.smd"), "triangles\r\nend\r\n");
    Touch(QDir(model.path()).filePath("notes.txt"));

    Document& doc = state->Doc;
    doc.ModelPath = model.path().toStdString();
    doc.BodyGroupCount = 2;
    doc.BodyGroups[1].PartCount = 2;
    doc.BodyGroups[1].Parts[1] = "ref";
    doc.BodyGroups[1].Parts[2] = Blank;
    doc.BodyGroups[2].Name = "head";
    form->Update();
    EXPECT_EQ(form->TxtModelpath->text(), model.path());
    EXPECT_TRUE(form->FrmModelfiles->isEnabled());
    EXPECT_TRUE(form->MnuWizardsAnimWiz->isEnabled());
    EXPECT_EQ(Items(form->FileList), QStringList{"ref.smd"});
    EXPECT_EQ(Items(form->LstFiles), QStringList{"ref"});
    EXPECT_EQ(form->CmbBodyGroup->count(), 2);
    EXPECT_EQ(form->CmbBodyGroup->currentIndex(), 0);
    EXPECT_EQ(Items(form->LstParts), (QStringList{"ref", "<blank>"}));

    // The same folder again: the list is left as it is.
    form->LstFiles->addItem(QStringLiteral("zz-marker"));
    form->Update();
    EXPECT_TRUE(Items(form->LstFiles).contains("zz-marker"));

    // No folder: the frame is off, the old files stay listed.
    doc.ModelPath.clear();
    form->Update();
    EXPECT_FALSE(form->FrmModelfiles->isEnabled());
    EXPECT_FALSE(form->MnuWizardsAnimWiz->isEnabled());
    EXPECT_TRUE(Items(form->LstFiles).contains("zz-marker"));

    // A document without body groups: nothing to select, nothing listed.
    doc.BodyGroupCount = 0;
    form->Update();
    EXPECT_EQ(form->CmbBodyGroup->count(), 0);
    EXPECT_EQ(form->CmbBodyGroup->currentIndex(), -1);
    EXPECT_EQ(form->LstParts->count(), 0);
}

TEST_F(MainWindowTest, NewDocumentKeepsTheFoldersAndEmptiesTheLists) {
    form->Form_Load();
    state->Doc.TexturePath = "/m/tex";
    state->Doc.QcFile = "/m/a.qc";
    state->Doc.BodyGroups[1].PartCount = 1;
    state->Doc.BodyGroups[1].Parts[1] = "ref";
    form->LstAnimations->addItem(QStringLiteral("run"));

    form->InitVars(); // keeps the animations list
    EXPECT_EQ(form->LstAnimations->count(), 1);
    EXPECT_EQ(state->Doc.QcFile, "");
    EXPECT_EQ(form->TxtTexturepath->text(), QStringLiteral("/m/tex"));
    EXPECT_EQ(form->LstParts->count(), 0);

    form->MnuDateiNeu->trigger();
    EXPECT_EQ(form->LstAnimations->count(), 0);
    EXPECT_EQ(state->Doc.TexturePath, "/m/tex");
    EXPECT_EQ(form->CmbBodyGroup->currentText(), QStringLiteral("body"));
}

TEST_F(MainWindowTest, PathButtonsTakeTheFolderOfThePickedFile) {
    form->Form_Load();
    state->IdsTexts[IDS_TEXTUREPATH] = "Texturenpfad";
    state->IdsTexts[IDS_MODELFILEPATH] = "Modellpfad";

    services.QueueOpen(FilePick{QStringLiteral("C:\\wall.bmp"), QStringLiteral("wall.bmp")});
    form->CmdBrowseTexture->click();
    EXPECT_EQ(state->Doc.TexturePath, "C:"); // a drive's root, no closing separator
    EXPECT_EQ(form->TxtTexturepath->text(), QStringLiteral("C:"));
    EXPECT_EQ(services.Prompts().last().Title, QStringLiteral("Texturenpfad"));
    EXPECT_EQ(services.Prompts().last().Filter, QStringLiteral("Bitmap|*.bmp"));

    services.QueueOpen(std::nullopt);
    form->CmdBrowseTexture->click();
    EXPECT_EQ(state->Doc.TexturePath, "C:");

    QTemporaryDir model;
    Touch(QDir(model.path()).filePath("run.SMD"));
    Touch(QDir(model.path()).filePath("ref.smd"));
    services.QueueOpen(FilePick{QDir(model.path()).filePath("ref.smd"), QStringLiteral("ref.smd")});
    form->CmdBrowseModel->click();
    EXPECT_EQ(services.Prompts().last().Title, QStringLiteral("Modellpfad"));
    EXPECT_EQ(services.Prompts().last().Filter, QStringLiteral("Model|*.smd"));
    EXPECT_EQ(state->Doc.ModelPath, model.path().toStdString());
    EXPECT_EQ(form->TxtModelpath->text(), model.path());
    EXPECT_TRUE(form->FrmModelfiles->isEnabled());
    EXPECT_TRUE(form->MnuWizardsAnimWiz->isEnabled());
    EXPECT_EQ(form->FileListPath(), model.path());
    EXPECT_EQ(Items(form->FileList), (QStringList{"ref.smd", "run.SMD"}));

    services.QueueOpen(std::nullopt);
    form->CmdBrowseModel->click();
    EXPECT_EQ(state->Doc.ModelPath, model.path().toStdString());
    EXPECT_EQ(form->TxtModelpath->text(), model.path());

    // A folder that is gone is refused and the old list kept.
    EXPECT_FALSE(form->SetFileListPath(QDir(model.path()).filePath("gone")));
    EXPECT_EQ(form->FileListPath(), model.path());
    EXPECT_EQ(form->FileList->count(), 2);
}

// A language file in the program's folder reaches the controls by their
// names: captions, tool tips, the second page, the recent entries.
TEST_F(MainWindowTest, LanguageFileReachesTheControlsByName) {
    QByteArray lng = "Version = 0.8.4\r\nInfoForThis = Test\r\nFrmMain\r\n"
                     "Titel = Quarle Test\r\n"
                     "CmdCompile = Build model\r\nCmdCompile = Guess what\r\n"
                     "tabsmd = Model files\r\nTabSmd = Parts\r\n"
                     "MnuDateiLast2 = ignored\r\n"
                     "MnuDateiNeu = &New\r\nMnuDateiNeu = \r\n"
                     "LblAnimName = Name of it:\r\nLblAnimName = \r\n"
                     "\r\n----------------------\r\nGlobal Strings\r\nCount = 93\r\n";
    for (int i = 1; i <= LastIds; ++i) {
        lng += QByteArray(IdsKeyTable[static_cast<std::size_t>(i)]) + " = text " +
               QByteArray::number(i) + "\r\n";
    }
    Touch(InProgramDir(QStringLiteral("test.lng")), lng);
    settings.Store().Set(QStringLiteral("Language"), QStringLiteral("test.lng"));
    settings.Store().Set(QStringLiteral("RecentFile1"), QStringLiteral("/m/b.qc"));

    form->Form_Load();
    EXPECT_EQ(form->windowTitle(), QStringLiteral("Quarle Test"));
    EXPECT_EQ(form->CmdCompile->text(), QStringLiteral("Build model"));
    EXPECT_EQ(form->CmdCompile->toolTip(), QStringLiteral("Guess what"));
    EXPECT_EQ(form->TabSmd->tabText(0), QStringLiteral("Model files"));
    EXPECT_EQ(form->TabSmd->toolTip(), QStringLiteral("Parts"));
    EXPECT_EQ(form->TabSmd->tabText(1), QStringLiteral("text 85"));
    EXPECT_EQ(form->MnuDateiLast2->text(), QStringLiteral("/m/b.qc"));
    EXPECT_EQ(form->MnuDateiNeu->text(), QStringLiteral("&New"));
    EXPECT_EQ(form->LblAnimName->text(), QStringLiteral("Name of it:"));
    EXPECT_EQ(state->IdsTexts[IDS_VERYOLD], "text 93");
    EXPECT_TRUE(services.Prompts().isEmpty());
}

TEST_F(MainWindowTest, LocalisationModeShowsTheLocaliseButton) {
    state->LocalisationMode = true;
    form->Form_Load();
    EXPECT_TRUE(platform::Visible(form->CmdLocalise).value());
}

// Every control named in the form's design is registered under its name,
// so language files and the language editor find it.
TEST_F(MainWindowTest, ControlsAreRegisteredByName) {
    const QStringList expected = {"CmdLocalise",
                                  "CmdModeleinst",
                                  "CmdCompile",
                                  "FrmPaths",
                                  "LblTexturepath",
                                  "TxtTexturepath",
                                  "CmdBrowseTexture",
                                  "LblModelpath",
                                  "TxtModelpath",
                                  "CmdBrowseModel",
                                  "FrmModelfiles",
                                  "LstFiles",
                                  "FileList",
                                  "CmdAdd",
                                  "CmdDelAnimation",
                                  "CmdBlank",
                                  "TabSmd",
                                  "LblParameter",
                                  "CmbBodyGroup",
                                  "CmdNewGroup",
                                  "LstParts",
                                  "ChkReverse",
                                  "CmdDel",
                                  "CmdRename",
                                  "LstAnimations",
                                  "VScrAnim",
                                  "CmdAnimPfeill",
                                  "TxtAnimNr",
                                  "CmdAnimPfeilr",
                                  "TxtAnimName",
                                  "TxtAnimID",
                                  "TxtAnimDatei",
                                  "CmdAnimExt",
                                  "LblAnimGroup",
                                  "LblAnimName",
                                  "LblAnimID",
                                  "LblSMDFile",
                                  "FrmWizSay",
                                  "ShpTitel",
                                  "PicWizClose",
                                  "TxtWizSay",
                                  "CmdWizBack",
                                  "CmdNext",
                                  "CmdEnd",
                                  "TxtWizSayShadow",
                                  "PicWiz",
                                  "TmrAnim",
                                  "TmrPlayAnim",
                                  "MnuDatei",
                                  "MnuDateiNeu",
                                  "MnuDateiOeffnen",
                                  "MnuDateiSpeichern",
                                  "MnuDateiSpeichernunter",
                                  "str",
                                  "MnuDateiComp",
                                  "MnuDateiView",
                                  "MnuDateiViewCode",
                                  "MnuB",
                                  "MnuDateiLast1",
                                  "MnuDateiLast2",
                                  "MnuDateiLast3",
                                  "MnuDateiLast4",
                                  "mnustrich",
                                  "MnuDateiBeenden",
                                  "MnuEinstellungen",
                                  "MnuEinstModel",
                                  "MnuEinstAllg",
                                  "MnuWizards",
                                  "MnuWizardsWizAn",
                                  "MnuWizardsGrWiz",
                                  "MnuWizardsAnimWiz",
                                  "MnuHilfe",
                                  "MnuHilfeUeber"};
    QStringList names;
    for (const auto& control : platform::ControlsOf(form.get())) {
        names.append(control.Name);
    }
    for (const QString& name : expected) {
        EXPECT_TRUE(names.contains(name)) << name.toStdString();
    }
    EXPECT_EQ(names.size(), expected.size());
    EXPECT_EQ(platform::KindOf(form->PicWiz), platform::ControlKind::Picture);
    EXPECT_EQ(form->TxtAnimID->count(), 76);
    EXPECT_EQ(form->TxtAnimID->currentText(), QString());
    EXPECT_EQ(form->TxtAnimID->itemText(11), QStringLiteral("ACT_DETECT_SCENT 1 "));
}

} // namespace
} // namespace quarle::ui
