// The settings the main window keeps between runs (keys in SettingKeys.h):
// how they are read and written, and the programs an empty path stands for.
#pragma once

#include "AppState.h"
#include "platform/SettingsStore.h"
#include "platform/ToolSearch.h"
#include "ui/mainwindow/SettingKeys.h"

#include <QList>
#include <QString>
#include <utility>

namespace quarle::ui {

// The compiler, viewer and editor to use when the store names none.
//
// On Windows these are the programs beside Quarle and the system editor.
// Elsewhere they are looked up on the host (platform/ToolSearch.h: the search
// path, the usual folders under the home, $VISUAL and $EDITOR); a compiler
// or viewer found nowhere is still the Windows program beside Quarle (which
// the host would run through wine), so that a compile names the path it
// tried, and an editor found nowhere is "xdg-open" ("open" on macOS), which
// hands the script to the editor the user chose for text files.
QString DefaultStudioMdlPath(const QString& programFolder);
QString DefaultModelViewerPath(const QString& programFolder);
QString DefaultTextEditorPath();
inline constexpr const char* EmptyRecentFile = setting::RecentFiles[0].Default;

// Reads the tools and the language, and fills in the defaults of empty ones
// (the language of a first start follows env.Language).
void ReadToolSettings(const platform::SettingsStore& store, const QString& programFolder,
                      const platform::HostEnvironment& env, ToolSettings& settings);

// Whether the start is to say that no compiler can be started: only off
// Windows, only when the store names no compiler (a first start), and only
// until it was said once.
bool ToolNoticeDue(const platform::SettingsStore& store, const platform::HostEnvironment& env,
                   const ToolSettings& settings);
// Whether the compile command is offered for this compiler: the file is
// there (a bare name on the search path) and, where a Windows program needs
// wine, wine is there to run it.
bool CompilerOffered(const QString& studioMdlPath, const platform::HostEnvironment& env);

// Reads the four recent entries; an empty one becomes "...".
void ReadRecentFiles(const platform::SettingsStore& store, ToolSettings& settings);

// What the stop writes, key and value, in the order written.
QList<std::pair<QString, QString>> SettingsToWrite(const ToolSettings& settings);
void WriteSettings(platform::SettingsStore& store, const ToolSettings& settings);

} // namespace quarle::ui
