// Reading the active language file whole, and writing a language file
// without ever losing the old one.
#pragma once

#include "AppState.h"
#include "platform/Services.h"

#include <QByteArray>
#include <QString>
#include <optional>
#include <string>

namespace quarle::ui {

// The bytes of a language file where the program reads it; empty for a
// file that does not exist; nothing (after a message box) for one that
// exists but cannot be read.
std::optional<QByteArray> ReadLanguageBytes(const AppState& state, platform::Services& services,
                                            const QString& fileName);

// Writes "temp.lng" completely in the folder fileName is written to, syncs
// it to the disk and renames it over fileName there. A failure leaves the
// old file whole, removes the working file and says so in a message box.
bool WriteLanguageFile(const AppState& state, platform::Services& services, const QString& fileName,
                       const std::string& bytes);

} // namespace quarle::ui
