// The shipped language files against the forms as they are built: every
// designed caption and tool tip has its entry, every entry names a control,
// and applying a file changes each control to exactly the file's text.
#include "AppState.h"
#include "localisation/LanguageFile.h"
#include "platform/Reflection.h"
#include "support/ScriptedServices.h"
#include "support/TempSettings.h"
#include "ui/FormCatalogue.h"
#include "ui/localisation/ApplyLanguage.h"
#include "ui/mainwindow/FrmMain.h"

#include <QDir>
#include <QTabWidget>
#include <gtest/gtest.h>
#include <memory>
#include <set>
#include <vector>

namespace quarle::ui {
namespace {

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
    FrmMain main{*state, services, settings.Store()};
    FormNeeds needs{*state, services, settings.Store(), main};
    LngContents contents;
};

// Each file has one section per form of the catalogue, in its order, and no
// other.
TEST_P(ShippedLanguage, HasTheSectionsOfTheCatalogue) {
    std::vector<std::string> forms;
    for (const CataloguedForm& form : FormCatalogue()) {
        forms.emplace_back(form.Name);
    }
    std::vector<std::string> sections;
    for (const LngSection& section : contents.Sections) {
        sections.push_back(section.Name);
    }
    EXPECT_EQ(sections, forms);
}

TEST_P(ShippedLanguage, CoversEveryControlOfEveryForm) {
    for (const CataloguedForm& catalogued : FormCatalogue()) {
        SCOPED_TRACE(catalogued.Name);
        const LngSection* section = Section(catalogued.Name);
        ASSERT_NE(section, nullptr);
        std::set<std::string> keys;
        for (const LngEntry& entry : section->Entries) {
            keys.insert(Upper(QString::fromStdString(entry.Key)));
        }

        const std::unique_ptr<QWidget> form = catalogued.Make(needs);
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

// The catalogue's factories build forms and do not load them, so the dump of
// the designed texts never holds what a load writes: a form built with a
// language active and a script open reads as one built in a bare state.
TEST_P(ShippedLanguage, FactoriesBuildWithoutLoading) {
    state->Doc.QcFile = "c:\\models\\robot.qc";
    test::ScriptedServices bareServices;
    test::TempSettings bareSettings;
    auto bareState = std::make_unique<AppState>();
    FrmMain bareMain{*bareState, bareServices, bareSettings.Store()};
    FormNeeds bare{*bareState, bareServices, bareSettings.Store(), bareMain};
    const auto texts = [](QWidget* form) {
        QStringList all{platform::Caption(form).value_or(QString())};
        for (const platform::ControlInfo& control : platform::ControlsOf(form)) {
            all << control.Key() << platform::Caption(control.Object).value_or(QString())
                << platform::ToolTipText(control.Object).value_or(QString());
        }
        return all;
    };
    for (const CataloguedForm& catalogued : FormCatalogue()) {
        SCOPED_TRACE(catalogued.Name);
        const std::unique_ptr<QWidget> form = catalogued.Make(needs);
        const std::unique_ptr<QWidget> designed = catalogued.Make(bare);
        EXPECT_EQ(texts(form.get()), texts(designed.get()));
    }
    EXPECT_TRUE(services.Prompts().isEmpty());
}

// (How each entry lands on its control is the reader's own test; here the
// shipped files go through without a warning and leave no string empty.)
TEST_P(ShippedLanguage, AppliesWithoutWarningAndFillsEveryString) {
    for (const CataloguedForm& catalogued : FormCatalogue()) {
        SCOPED_TRACE(catalogued.Name);
        const std::unique_ptr<QWidget> form = catalogued.Make(needs);
        ApplyLanguage(*state, services, form.get());
        EXPECT_TRUE(services.Prompts().isEmpty());
        const LngSection* section = Section(catalogued.Name);
        ASSERT_NE(section, nullptr);
        EXPECT_EQ(platform::Caption(form.get())->toStdString(), section->Entries[0].Value);
    }
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
    EXPECT_EQ(form.windowTitle(), "Unbenannt \u2014 Quarle");
    EXPECT_EQ(state->MsgTexts[MSG_WARNINGS], "%1 Warnungen");
}

} // namespace
} // namespace quarle::ui
