// Every key the program keeps between runs, written once: its name as the
// store writes it, the kind of value and what an empty value stands for. All
// of them live in the store's one section ("Settings"); the store ignores the
// case of keys when it reads, so the spellings of earlier versions
// ("StudioMdl", "Recentfile0") are found, and the next write leaves the
// spelling given here.
#pragma once

#include "platform/SettingsStore.h"

#include <QString>
#include <array>

namespace quarle::ui {

enum class SettingKind {
    ProgramPath,  // a program to start; empty: looked for on the host
    LanguageFile, // a language file's name; empty: the user's locale decides
    ScriptPath,   // a recent script; empty stands for Default
    Flag,         // "1" or empty
};

struct SettingKey {
    const char* Name;
    SettingKind Kind;
    // What an empty value stands for where that is one fixed text; null
    // where it is worked out at the start (ReadToolSettings).
    const char* Default;
};

namespace setting {
inline constexpr SettingKey StudioMdl{"StudioMDL", SettingKind::ProgramPath, nullptr};
inline constexpr SettingKey TextEditor{"TextEditor", SettingKind::ProgramPath, nullptr};
inline constexpr SettingKey ModelViewer{"ModelViewer", SettingKind::ProgramPath, nullptr};
inline constexpr SettingKey Language{"Language", SettingKind::LanguageFile, nullptr};
// The four entries of the recent-file list, the latest first.
inline constexpr std::array<SettingKey, 4> RecentFiles{{
    {"RecentFile0", SettingKind::ScriptPath, "..."},
    {"RecentFile1", SettingKind::ScriptPath, "..."},
    {"RecentFile2", SettingKind::ScriptPath, "..."},
    {"RecentFile3", SettingKind::ScriptPath, "..."},
}};
// Set once the user was told that no compiler can be started.
inline constexpr SettingKey ToolNotice{"ToolNotice", SettingKind::Flag, ""};
} // namespace setting

inline QString ReadSetting(const platform::SettingsStore& store, const SettingKey& key) {
    return store.Get(QLatin1String(key.Name));
}

inline void WriteSetting(platform::SettingsStore& store, const SettingKey& key,
                         const QString& value) {
    store.Set(QLatin1String(key.Name), value);
}

} // namespace quarle::ui
