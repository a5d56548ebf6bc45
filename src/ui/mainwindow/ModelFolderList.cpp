#include "ui/mainwindow/ModelFolderList.h"

#include "document/Paths.h"
#include "platform/Cp1252Text.h"

#include <QDir>
#include <QListWidget>

namespace quarle::ui {

bool ModelFolderList::SetFileListPath(const QString& folder) {
    if (folder.isEmpty() || !QDir(folder).exists()) {
        return false;
    }
    path_ = folder;
    FileListRefresh();
    return true;
}

void ModelFolderList::FileListRefresh() {
    list_->clear();
    if (path_.isEmpty()) {
        return;
    }
    // Scripts and models come from Windows, where "*.smd" matches any case.
    // Files in subfolders are listed by their names below the folder
    // ("meshes/body.smd"), as scripts name them.
    for (const std::string& name : paths::ListFilesBelow(platform::ToCp1252Marked(path_), ".smd")) {
        list_->addItem(platform::FromCp1252(name));
    }
}

} // namespace quarle::ui
