#include "ui/localisation/ApplyLanguage.h"

#include "AppState.h"
#include "localisation/Cp1252.h"
#include "localisation/GlobalStrings.h"
#include "localisation/MessageTexts.h"
#include "platform/Reflection.h"
#include "support/ScriptedServices.h"

#include <QAction>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTimer>
#include <algorithm>
#include <gtest/gtest.h>
#include <memory>

namespace quarle::ui {
namespace {

using platform::Answer;
using platform::Control;

// A small form with one control of each kind the reader meets.
struct TestForm {
    explicit TestForm(const QString& name) {
        form.setObjectName(name);
        form.setWindowTitle("Designed");
        Cmd = Control(new QPushButton("Erstelle Modell", &form), "CmdCompile");
        Cmd->setToolTip("Was wohl?");
        Txt = Control(new QLineEdit("text", &form), "TxtTexturepath");
        Tabs = Control(new QTabWidget(&form), "TabSmd");
        Tabs->addTab(new QWidget, "Modeldateien");
        Tabs->addTab(new QWidget, "Animationsdateien");
        Opt0 = Control(new QRadioButton("X-Achse", &form), "OptModes", 0);
        Opt1 = Control(new QRadioButton("Y-Achse", &form), "OptModes", 1);
        Last2 = Control(new QAction("designed", &form), "MnuDateiLast2");
        Timer = Control(new QTimer(&form), "TmrAnim");
    }
    QWidget form;
    QPushButton* Cmd;
    QLineEdit* Txt;
    QTabWidget* Tabs;
    QRadioButton* Opt0;
    QRadioButton* Opt1;
    QAction* Last2;
    QTimer* Timer;
};

class ApplyLanguageTest : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(dir.isValid());
        services.ProgramFolderPath = dir.path();
        FillIdsNames(state->IdsNames);
        state->Settings.LanguageFile = "english.lng";
        state->Settings.RecentFiles = {"c:\\a.qc", "c:\\b.qc", "...", "..."};
    }

    // Lines in UTF-8, written as cp1252 with CR LF.
    void Write(const QString& name, const std::vector<std::string>& lines, QString folder = {}) {
        std::string bytes;
        for (const auto& line : lines) {
            bytes += Utf8ToCp1252(line) + "\r\n";
        }
        QFile file(QDir(folder.isEmpty() ? dir.path() : folder).filePath(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes.data(), static_cast<qint64>(bytes.size()));
    }

    // A complete file: head, the main form's section, 93 strings "<tag> i".
    static std::vector<std::string> Complete(const std::string& tag,
                                             std::vector<std::string> head = {"Version = 0.8.4"}) {
        std::vector<std::string> lines = std::move(head);
        for (const char* line : {"FrmMain",
                                 "Titel = Quarle ",
                                 "CmdCompile = Build model",
                                 "CmdCompile = Compiles it",
                                 "TxtTexturepath = <not available>",
                                 "TxtTexturepath = Texture folder",
                                 "TabSmd = Model files",
                                 "TabSmd = ",
                                 "optmodes(1) = Y axis",
                                 "OptModes(1) = Axis",
                                 "MnuDateiLast2 = ignored",
                                 "MnuDateiLast2 = <not available>",
                                 "TmrAnim = <not available>",
                                 "TmrAnim = <not available>",
                                 "",
                                 "DlgOther",
                                 "Titel = Other",
                                 "",
                                 "Global Strings",
                                 "Count = 93"}) {
            lines.push_back(line);
        }
        for (int i = 1; i <= 93; ++i) {
            lines.push_back("IDS = " + tag + " " + std::to_string(i));
        }
        return lines;
    }

    // Lines with a messages section put ahead of "Global Strings".
    static std::vector<std::string> WithMessages(std::vector<std::string> lines,
                                                 const std::vector<std::string>& entries) {
        auto at = std::find(lines.begin(), lines.end(), "Global Strings");
        at = lines.insert(at, "Quarle Messages") + 1;
        at = lines.insert(at, entries.begin(), entries.end()) + static_cast<long>(entries.size());
        lines.insert(at, {"", "----------------------"});
        return lines;
    }

    void ExpectWarnings(std::initializer_list<const char*> titles) {
        const auto& prompts = services.Prompts();
        ASSERT_EQ(prompts.size(), static_cast<qsizetype>(titles.size()));
        qsizetype i = 0;
        for (const char* title : titles) {
            const auto& p = prompts[i++];
            EXPECT_EQ(p.Kind, "MsgBox");
            EXPECT_EQ(p.Title, title);
            EXPECT_EQ(p.Text, QString(title).startsWith("Outdated")
                                  ? "WARNING: Outdated Languagefile."
                                  : "WARNING: Incomplete Languagefile.");
        }
    }

    QTemporaryDir dir;
    test::ScriptedServices services;
    std::unique_ptr<AppState> state = std::make_unique<AppState>();
};

TEST_F(ApplyLanguageTest, MainFormTakesStringsCaptionsTipsAndRecentFiles) {
    Write("english.lng", Complete("en"));
    TestForm f("FrmMain");
    ApplyLanguage(*state, services, &f.form);

    EXPECT_TRUE(services.Prompts().isEmpty());
    EXPECT_EQ(state->IdsTexts[IDS_VERSION], "en 1");
    EXPECT_EQ(state->IdsTexts[IDS_VERYOLD], "en 93");
    EXPECT_EQ(state->IdsTexts[0], "");
    EXPECT_EQ(f.form.windowTitle(), "Quarle");
    EXPECT_EQ(f.Cmd->text(), "Build model");
    EXPECT_EQ(f.Cmd->toolTip(), "Compiles it");
    // A text box has no caption: its text stays, its tool tip is taken.
    EXPECT_EQ(f.Txt->text(), "text");
    EXPECT_EQ(f.Txt->toolTip(), "Texture folder");
    EXPECT_EQ(f.Opt0->text(), "X-Achse");
    EXPECT_EQ(f.Opt1->text(), "Y axis");
    EXPECT_EQ(f.Opt1->toolTip(), "Axis");
    // The page showing takes the section's entry, the second page the string.
    EXPECT_EQ(f.Tabs->tabText(0), "Model files");
    EXPECT_EQ(f.Tabs->tabText(1), "en 85");
    EXPECT_EQ(f.Last2->text(), "c:\\b.qc");
}

// The messages load with the global strings: only for the main form, and a
// language without them says them in English again.
TEST_F(ApplyLanguageTest, MessagesFollowTheLanguageOfTheMainForm) {
    Write("deutsch.lng",
          WithMessages(Complete("de"), {"MSG_PARTS_FULL = Schon %1 Teile", "MSG_GONE = skipped"}));
    Write("english.lng", Complete("en"));
    EXPECT_EQ(state->MsgTexts, EnglishMessageTexts()) << "English from the start";

    state->Settings.LanguageFile = "deutsch.lng";
    TestForm other("DlgOther");
    ApplyLanguage(*state, services, &other.form);
    EXPECT_EQ(state->MsgTexts, EnglishMessageTexts()) << "another form reads no messages";

    TestForm main("FrmMain");
    ApplyLanguage(*state, services, &main.form);
    EXPECT_EQ(state->MsgTexts[MSG_PARTS_FULL], "Schon %1 Teile");
    // The section is no form's, and the reader has nothing to warn about.
    EXPECT_EQ(main.Cmd->text(), "Build model");
    EXPECT_EQ(state->IdsTexts[IDS_VERYOLD], "de 93");
    EXPECT_TRUE(services.Prompts().isEmpty());

    state->Settings.LanguageFile = "english.lng";
    ApplyLanguage(*state, services, &main.form);
    EXPECT_EQ(state->MsgTexts, EnglishMessageTexts());
    EXPECT_TRUE(services.Prompts().isEmpty());
}

TEST_F(ApplyLanguageTest, MissingLanguageFallsBackToGermanOnlyForTheMainForm) {
    Write("deutsch.lng", Complete("de"));
    state->Settings.LanguageFile = "klingon.lng";

    TestForm other("DlgOther");
    ApplyLanguage(*state, services, &other.form);
    EXPECT_EQ(other.form.windowTitle(), "Designed");
    EXPECT_EQ(state->Settings.LanguageFile, "klingon.lng");
    EXPECT_EQ(state->IdsTexts[1], "");

    TestForm main("FrmMain");
    ApplyLanguage(*state, services, &main.form);
    EXPECT_EQ(state->Settings.LanguageFile, "deutsch.lng");
    EXPECT_EQ(state->IdsTexts[1], "de 1");
    EXPECT_EQ(main.Cmd->text(), "Build model");

    // Now the other form reads the German file too.
    ApplyLanguage(*state, services, &other.form);
    EXPECT_EQ(other.form.windowTitle(), "Other");
    EXPECT_TRUE(services.Prompts().isEmpty());
}

TEST_F(ApplyLanguageTest, WithoutAnyLanguageEverythingStaysAsDesigned) {
    state->IdsTexts[5] = "kept";
    TestForm f("FrmMain");
    ApplyLanguage(*state, services, &f.form);
    EXPECT_EQ(state->Settings.LanguageFile, "deutsch.lng");
    EXPECT_EQ(state->IdsTexts[5], "kept");
    EXPECT_EQ(f.form.windowTitle(), "Designed");
    EXPECT_EQ(f.Tabs->tabText(1), "Animationsdateien");
    EXPECT_EQ(f.Last2->text(), "designed");
    EXPECT_TRUE(services.Prompts().isEmpty());
}

// (Which heads and cuts warn is the reader's own test; here the warnings
// reach the user, only from the main form, and what the file fails to reach
// stays.)
TEST_F(ApplyLanguageTest, DamagedFilesWarnAndApplyWhatTheyHold) {
    Write("english.lng", Complete("en", {"InfoForThis = English"}));
    TestForm f("FrmMain");
    services.QueueMsgBox(Answer::Ok);
    ApplyLanguage(*state, services, &f.form);
    ExpectWarnings({"Outdated languagefile"});
    EXPECT_EQ(state->IdsTexts[93], "en 93");
    EXPECT_EQ(f.Cmd->text(), "Build model");
    TestForm other("DlgOther");
    ApplyLanguage(*state, services, &other.form);
    EXPECT_EQ(other.form.windowTitle(), "Other");
    EXPECT_EQ(services.Prompts().size(), 1) << "other forms read no header";

    // Cut off before "Global Strings": nothing at all is applied.
    TestForm g("FrmMain");
    state->IdsTexts[1] = "old 1";
    auto lines = Complete("en");
    lines.resize(10);
    Write("english.lng", lines);
    services.QueueMsgBox(Answer::Ok);
    ApplyLanguage(*state, services, &g.form);
    ExpectWarnings({"Outdated languagefile", "Incomplete languagefile"});
    EXPECT_EQ(g.Cmd->text(), "Erstelle Modell");
    EXPECT_EQ(state->IdsTexts[1], "old 1");
    EXPECT_EQ(g.Tabs->tabText(1), "Animationsdateien");
}

// The user's own copy of a language, cut short, is named, and the intact
// copy of the program's folder is read in its place.
TEST_F(ApplyLanguageTest, ABrokenCopyOfTheUsersGivesWayToTheIntactOne) {
    QTemporaryDir user;
    services.UserDataFolderPath = user.path();
    Write("english.lng", Complete("en"));
    auto cut = Complete("mine");
    cut.resize(10);
    Write("english.lng", cut, user.path());
    TestForm f("FrmMain");
    services.QueueMsgBox(Answer::Ok);
    ApplyLanguage(*state, services, &f.form);
    EXPECT_EQ(state->IdsTexts[1], "en 1");
    ASSERT_EQ(services.Prompts().size(), 1);
    const QString told = services.Prompts()[0].Text;
    EXPECT_TRUE(told.contains(QDir::toNativeSeparators(QDir(user.path()).filePath("english.lng"))))
        << told.toStdString();
    EXPECT_TRUE(told.contains(QDir::toNativeSeparators(QDir(dir.path()).filePath("english.lng"))))
        << told.toStdString();

    TestForm other("DlgOther");
    ApplyLanguage(*state, services, &other.form);
    EXPECT_EQ(other.form.windowTitle(), "Other") << "the other forms read the intact copy too";
}

} // namespace
} // namespace quarle::ui
