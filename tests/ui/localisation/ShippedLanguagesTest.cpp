// The shipped language files against the forms as they are built: every
// designed caption and tool tip has its entry, every entry names a control,
// and applying a file changes each control to exactly the file's text.
#include "AppState.h"
#include "localisation/LanguageFile.h"
#include "platform/Reflection.h"
#include "support/ScriptedServices.h"
#include "support/TempSettings.h"
#include "ui/dialogs/DlgAnimExt.h"
#include "ui/dialogs/DlgModeleinstellungen.h"
#include "ui/dialogs/DlgOrigin.h"
#include "ui/dialogs/FrmEvents.h"
#include "ui/localisation/ApplyLanguage.h"
#include "ui/mainwindow/FrmMain.h"

#include <QAction>
#include <QDir>
#include <QTabWidget>
#include <functional>
#include <gtest/gtest.h>
#include <map>
#include <memory>
#include <set>

#include "ui/compile/DlgCompile.h"
#include "ui/dialogs/DlgBindung.h"
#include "ui/dialogs/DlgController.h"
#include "ui/wizards/AnimWiz1.h"
#include "ui/wizards/AnimWiz2.h"
#include "ui/wizards/AnimWiz3.h"
#include "ui/wizards/AnimWiz4.h"
#include "ui/wizards/AnimWiz5.h"
#include "ui/wizards/Wizard2.h"
#include "ui/wizards/Wizard3.h"
#include "ui/wizards/Wizard4.h"
#include "ui/wizards/Wizard5.h"

#include "ui/localisation/DlgSettings.h"
#include "ui/localisation/frmAbout.h"

namespace quarle::ui {
namespace {

struct Env {
    AppState& State;
    platform::Services& Services;
    platform::SettingsStore& Settings;
};
using FormFactory = std::function<std::unique_ptr<QWidget>(Env&)>;

// A dialog that works through the main window, with a main window of its own
// that goes with it.
template <class Dialog> std::unique_ptr<QWidget> WithMain(Env& env) {
    auto main = std::make_unique<FrmMain>(env.State, env.Services, env.Settings);
    auto dialog = std::make_unique<Dialog>(env.State, env.Services, *main);
    main.release()->setParent(dialog.get(), Qt::Window);
    return dialog;
}
// A wizard page on its own, outside a run.
template <class Page> FormFactory WizardPage() {
    return [](Env& env) -> std::unique_ptr<QWidget> {
        static WizardChain chain(nullptr, {});
        return std::make_unique<Page>(env.State, env.Services, chain);
    };
}
// The last pages also write into the main window, which goes with them.
template <class Page> FormFactory LastWizardPage() {
    return [](Env& env) -> std::unique_ptr<QWidget> {
        static WizardChain chain(nullptr, {});
        auto* main = new FrmMain(env.State, env.Services, env.Settings);
        auto page = std::make_unique<Page>(env.State, env.Services, chain, *main);
        QObject::connect(page.get(), &QObject::destroyed, [main] { delete main; });
        return page;
    };
}

// Every form that reads a language file.
const std::map<std::string, FormFactory>& Forms() {
    static const std::map<std::string, FormFactory> forms = {
        {"FrmMain",
         [](Env& env) { return std::make_unique<FrmMain>(env.State, env.Services, env.Settings); }},
        {"DlgModeleinstellungen", WithMain<DlgModeleinstellungen>},
        {"DlgAnimExt", WithMain<DlgAnimExt>},
        {"FrmEvents", WithMain<FrmEvents>},
        {"DlgOrigin", WithMain<DlgOrigin>},
        {"DlgCompile",
         [](Env& env) { return std::make_unique<DlgCompile>(env.State, env.Services, 0); }},
        {"DlgBindung", WithMain<DlgBindung>},
        {"DlgController", WithMain<DlgController>},
        {"Wizard2", WizardPage<Wizard2>()},
        {"Wizard3", WizardPage<Wizard3>()},
        {"Wizard4", WizardPage<Wizard4>()},
        {"Wizard5", LastWizardPage<Wizard5>()},
        {"AnimWiz1", WizardPage<AnimWiz1>()},
        {"AnimWiz2", WizardPage<AnimWiz2>()},
        {"AnimWiz3", WizardPage<AnimWiz3>()},
        {"AnimWiz4", WizardPage<AnimWiz4>()},
        {"AnimWiz5", LastWizardPage<AnimWiz5>()},
        {"DlgSettings",
         [](Env& env) -> std::unique_ptr<QWidget> {
             auto* main = new FrmMain(env.State, env.Services, env.Settings);
             auto dialog = std::make_unique<DlgSettings>(env.State, env.Services, *main);
             main->setParent(dialog.get(), Qt::Window); // goes with the dialog
             return dialog;
         }},
        {"frmAbout",
         [](Env& env) { return std::make_unique<frmAbout>(env.State, env.Services); }},
    };
    return forms;
}

std::string Upper(const QString& s) {
    return s.toUpper().toStdString();
}

class ShippedLanguage : public ::testing::TestWithParam<const char*> {
protected:
    void SetUp() override {
        FillIdsNames(state->IdsNames);
        state->Settings.LanguageFile = GetParam();
        state->Settings.RecentFiles = {"c:\\one.qc", "c:\\two.qc", "...", "..."};
        const auto lines =
            ReadLanguageLines(QDir(services.ProgramFolder()).filePath(GetParam()).toStdString());
        ASSERT_TRUE(lines) << "not beside the program: " << GetParam();
        contents = ParseLanguageFile(*lines);
    }

    const LngSection* Section(const std::string& name) const {
        for (const LngSection& section : contents.Sections) {
            if (section.Name == name) {
                return &section;
            }
        }
        return nullptr;
    }

    test::ScriptedServices services;
    test::TempSettings settings;
    std::unique_ptr<AppState> state = std::make_unique<AppState>();
    Env env{*state, services, settings.Store()};
    LngContents contents;
};

TEST_P(ShippedLanguage, CoversEveryControlOfEveryForm) {
    for (const auto& [name, make] : Forms()) {
        SCOPED_TRACE(name);
        const LngSection* section = Section(name);
        ASSERT_NE(section, nullptr);
        std::set<std::string> keys;
        for (const LngEntry& entry : section->Entries) {
            keys.insert(Upper(QString::fromStdString(entry.Key)));
        }

        const std::unique_ptr<QWidget> form = make(env);
        std::set<std::string> controls;
        for (const platform::ControlInfo& control : platform::ControlsOf(form.get())) {
            controls.insert(Upper(control.Key()));
            const QString caption = platform::Caption(control.Object).value_or(QString());
            const QString tip = platform::ToolTipText(control.Object).value_or(QString());
            const bool designed = !caption.isEmpty() || !tip.isEmpty();
            EXPECT_TRUE(!designed || keys.count(Upper(control.Key())))
                << "no entry for " << control.Key().toStdString();
        }
        for (const LngEntry& entry : section->Entries) {
            EXPECT_TRUE(entry.Key == TitleKey ||
                        controls.count(Upper(QString::fromStdString(entry.Key))))
                << "no control " << entry.Key;
        }
    }
}

// (How each entry lands on its control is the reader's own test; here the
// shipped files go through without a warning and leave no string empty.)
TEST_P(ShippedLanguage, AppliesWithoutWarningAndFillsEveryString) {
    for (const auto& [name, make] : Forms()) {
        SCOPED_TRACE(name);
        const std::unique_ptr<QWidget> form = make(env);
        ApplyLanguage(*state, services, form.get());
        EXPECT_TRUE(services.Prompts().isEmpty());
        EXPECT_EQ(form->windowTitle().toStdString(), Section(name)->Entries[0].Value);
    }
    FrmMain main(*state, services, settings.Store());
    ApplyLanguage(*state, services, &main);
    const auto* tabs = qobject_cast<QTabWidget*>(platform::FindControl(&main, "TabSmd"));
    ASSERT_NE(tabs, nullptr);
    EXPECT_EQ(tabs->tabText(1).toStdString(), state->IdsTexts[IDS_ANIMATIONFILES]);
    for (std::size_t i = 1; i <= GlobalStringCount; ++i) {
        EXPECT_FALSE(state->IdsTexts[i].empty()) << IdsKeyTable[i];
    }
}

INSTANTIATE_TEST_SUITE_P(Shipped, ShippedLanguage, ::testing::Values("deutsch.lng", "english.lng"),
                         [](const auto& info) { return std::string(info.param).substr(0, 7); });

// The real start on a first run: German, silently.
TEST(ShippedLanguageStart, FirstRunStartsInGerman) {
    test::ScriptedServices services;
    test::TempSettings settings;
    auto state = std::make_unique<AppState>();
    FrmMain form(*state, services, settings.Store());
    form.Form_Load();
    EXPECT_TRUE(services.Prompts().isEmpty());
    EXPECT_EQ(state->Settings.LanguageFile, "deutsch.lng");
    EXPECT_EQ(state->IdsTexts[IDS_ANIMATIONFILES], "Animationsdateien");
    EXPECT_EQ(state->IdsTexts[IDS_OPEN], "\xC3\x96"
                                         "ffnen");
    EXPECT_EQ(form.windowTitle(), "Quarle");
    EXPECT_EQ(state->MsgTexts[MSG_WARNINGS], "%1 Warnungen");
}

} // namespace
} // namespace quarle::ui
