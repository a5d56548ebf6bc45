#include "ui/mainwindow/DialogFolder.h"

#include "document/Paths.h"
#include "platform/Cp1252Text.h"

#include <QFileInfo>

namespace quarle::ui {

QString DialogFolder(const Document& doc) {
    if (!doc.QcFile.empty()) {
        const std::string folder = paths::FolderOf(doc.QcFile);
        if (paths::FolderExists(folder)) {
            return platform::FromCp1252(paths::Resolve(folder).value_or(folder));
        }
    }
    if (paths::FolderExists(doc.ModelPath)) {
        return platform::FromCp1252(paths::Resolve(doc.ModelPath).value_or(doc.ModelPath));
    }
    return {};
}

std::optional<QString> PickFolder(platform::Services& services, const Document& doc,
                                  const QString& title, const QString& current) {
    const QString start =
        !current.isEmpty() && QFileInfo(current).isDir() ? current : DialogFolder(doc);
    const std::optional<QString> folder = services.ShowFolder(title, start);
    if (!folder || folder->isEmpty()) {
        return std::nullopt;
    }
    return folder;
}

} // namespace quarle::ui
