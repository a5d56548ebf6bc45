#include "platform/SettingsStore.h"

#include "support/TempSettings.h"

#include <QSettings>
#include <gtest/gtest.h>

namespace quarle::platform {
namespace {

using test::TempSettings;

TEST(SettingsStore, KeysIgnoreCaseKeepOneSpellingAndSurviveAReopen) {
    TempSettings temp;
    SettingsStore& store = temp.Store();
    EXPECT_EQ(store.Get("Language"), ""); // missing and empty read the same
    store.Set("Language", "");
    EXPECT_EQ(store.Get("Language"), "");
    store.Set("StudioMDL", "c:\\hl\\studiomdl.exe");
    store.Set("RecentFile2", "c:\\m\\a.qc");
    EXPECT_EQ(store.Get("StudioMdl"), "c:\\hl\\studiomdl.exe");
    EXPECT_EQ(store.Get("RECENTFILE2"), "c:\\m\\a.qc");

    // Writing with other capitals replaces the value instead of adding a key.
    store.Set("Recentfile2", "c:\\m\\b.qc");
    EXPECT_EQ(store.Get("RecentFile2"), "c:\\m\\b.qc");
    store.Sync();
    QSettings raw(temp.Path(), QSettings::IniFormat);
    raw.beginGroup("Settings");
    EXPECT_EQ(raw.childKeys(), QStringList({"Language", "Recentfile2", "StudioMDL", "ToolNotice"}));

    // A store written by one run is read by the next.
    SettingsStore again(temp.Path());
    EXPECT_EQ(again.Get("recentfile2"), "c:\\m\\b.qc");
    EXPECT_EQ(again.Get("STUDIOMDL"), "c:\\hl\\studiomdl.exe");
}

} // namespace
} // namespace quarle::platform
