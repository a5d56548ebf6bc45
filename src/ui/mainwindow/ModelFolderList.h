// The hidden list of the model folder's files (FileList): every "*.smd" file
// below the folder, in any case, named as scripts name them. Both pages list
// their entries from it.
#pragma once

#include <QString>

class QListWidget;

namespace quarle::ui {

class ModelFolderList {
public:
    explicit ModelFolderList(QListWidget* list) : list_(list) {}

    // A folder that does not exist is refused and the old list kept.
    bool SetFileListPath(const QString& folder);
    void FileListRefresh();
    QString FileListPath() const { return path_; }

private:
    QListWidget* list_;
    QString path_;
};

} // namespace quarle::ui
