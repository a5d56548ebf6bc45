// Where the main window's file dialogs and folder chooser open.
#pragma once

#include "document/Document.h"
#include "platform/Services.h"

#include <QString>
#include <optional>

namespace quarle::ui {

// The folder a file dialog opens in: that of the script, else the model
// folder, else the dialog's own choice (empty).
QString DialogFolder(const Document& doc);

// The folder chooser, opened at current when that is a folder, else near the
// script: the chosen folder, or nothing after a cancel.
std::optional<QString> PickFolder(platform::Services& services, const Document& doc,
                                  const QString& title, const QString& current);

} // namespace quarle::ui
