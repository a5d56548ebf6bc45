#include "ui/localisation/LanguageWrite.h"

#include "platform/LanguageFolders.h"
#include "ui/localisation/Messages.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <filesystem>
#include <system_error>

namespace quarle::ui {
namespace {

void Refuse(const AppState& state, platform::Services& services, const QString& fileName,
            const QString& reason) {
    services.MsgBox(MessageText(state, MSG_LANGUAGE_NOT_SAVED, {fileName, reason}),
                    platform::Buttons::Ok, platform::Icon::Exclamation, QStringLiteral("Quarle"));
}

std::filesystem::path FsPath(const QString& path) {
    return std::filesystem::path(path.toStdU16String());
}

} // namespace

std::optional<QByteArray> ReadLanguageBytes(const AppState& state, platform::Services& services,
                                            const QString& fileName) {
    const QString path = platform::LanguageReadPath(services, fileName);
    if (!QFileInfo::exists(path)) {
        return QByteArray();
    }
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        Refuse(state, services, fileName, file.errorString());
        return std::nullopt;
    }
    return file.readAll();
}

bool WriteLanguageFile(const AppState& state, platform::Services& services, const QString& fileName,
                       const std::string& bytes) {
    const QString folder = platform::LanguageWriteFolder(services, fileName);
    if (folder.isEmpty()) {
        // Neither folder takes files: name the one that was tried last.
        const QString user = services.UserDataFolder();
        Refuse(state, services, fileName,
               QDir::toNativeSeparators(user.isEmpty() ? services.ProgramFolder() : user));
        return false;
    }
    const QString temp = QDir(folder).filePath(QStringLiteral("temp.lng"));
    QFile file(temp);
    const auto size = static_cast<qint64>(bytes.size());
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate) ||
        file.write(bytes.data(), size) != size || !file.flush()) {
        const QString reason = file.errorString();
        file.close();
        QFile::remove(temp);
        Refuse(state, services, fileName, reason);
        return false;
    }
    file.close();
    std::error_code error;
    std::filesystem::rename(FsPath(temp), FsPath(QDir(folder).filePath(fileName)), error);
    if (error) {
        QFile::remove(temp);
        Refuse(state, services, fileName, QString::fromLocal8Bit(error.message().c_str()));
        return false;
    }
    return true;
}

} // namespace quarle::ui
