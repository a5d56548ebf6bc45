#include "platform/SettingsStore.h"

#include "support/TempSettings.h"

#include <QFile>
#include <QSettings>
#include <gtest/gtest.h>

namespace quarle::platform {
namespace {

using test::TempSettings;

TEST(SettingsStore, KeysIgnoreCaseAndKeepOneSpelling) {
    TempSettings temp;
    SettingsStore& store = temp.Store();
    store.Set("StudioMDL", "c:\\hl\\studiomdl.exe");
    store.Set("RecentFile2", "c:\\m\\a.qc");
    EXPECT_EQ(store.Get("StudioMdl"), "c:\\hl\\studiomdl.exe");
    EXPECT_EQ(store.Get("Recentfile2"), "c:\\m\\a.qc");
    EXPECT_EQ(store.Get("RECENTFILE2"), "c:\\m\\a.qc");

    // Writing with other capitals replaces the value instead of adding a key.
    store.Set("Recentfile2", "c:\\m\\b.qc");
    EXPECT_EQ(store.Get("RecentFile2"), "c:\\m\\b.qc");
    store.Sync();

    QSettings raw(temp.Path(), QSettings::IniFormat);
    raw.beginGroup("Settings");
    EXPECT_EQ(raw.childKeys(), QStringList({"Recentfile2", "StudioMDL"}));
}

TEST(SettingsStore, MissingAndEmptyReadTheSameAndValuesSurviveAReopen) {
    TempSettings temp;
    EXPECT_EQ(temp.Store().Get("Language"), "");
    temp.Store().Set("Language", "");
    EXPECT_EQ(temp.Store().Get("Language"), "");
    temp.Store().Set("RecentFile0", "...");
    temp.Store().Set("TextEditor", "notepad.exe");
    temp.Store().Sync();

    // A store written by one run is read by the next, in the "Settings" section.
    SettingsStore again(temp.Path());
    EXPECT_EQ(again.Get("recentfile0"), "...");
    EXPECT_EQ(again.Get("TextEditor"), "notepad.exe");
    QFile file(temp.Path());
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_TRUE(file.readAll().contains("[Settings]"));
}

} // namespace
} // namespace quarle::platform
