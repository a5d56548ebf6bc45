// The settings the main window keeps between runs: which keys it reads and
// writes, and what an empty value stands for. The store ignores the case of
// keys, so a key read as "StudioMdl" finds the value written as "StudioMDL".
#pragma once

#include "AppState.h"
#include "platform/SettingsStore.h"

#include <QList>
#include <QString>
#include <utility>

namespace quarle::ui {

// The compiler, viewer and editor to use when the store names none.
//
// On Windows these are the programs beside Quarle and the system editor.
// Elsewhere the compiler and viewer are still the Windows programs beside
// Quarle (the host runs an ".exe" through wine), and the editor is
// "xdg-open" ("open" on macOS), which hands the script to the editor the
// user chose for text files and is present on every desktop.
QString DefaultStudioMdlPath(const QString& programFolder);
QString DefaultModelViewerPath(const QString& programFolder);
QString DefaultTextEditorPath();
inline constexpr const char* DefaultLanguage = "deutsch.lng";
inline constexpr const char* EmptyRecentFile = "...";

// Reads the tools and the language, and fills in the defaults of empty ones.
void ReadToolSettings(const platform::SettingsStore& store, const QString& programFolder,
                      ToolSettings& settings);
// Reads the four recent entries; an empty one becomes "...".
void ReadRecentFiles(const platform::SettingsStore& store, ToolSettings& settings);

// What the stop writes, key and value, in the order written.
QList<std::pair<QString, QString>> SettingsToWrite(const ToolSettings& settings);
void WriteSettings(platform::SettingsStore& store, const ToolSettings& settings);

} // namespace quarle::ui
