#include "ui/localisation/LanguageWrite.h"

#include "document/InputFile.h"
#include "platform/LanguageFolders.h"
#include "ui/localisation/ApplyLanguage.h"
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
    // The copy the forms read: a broken copy of the user's is passed over.
    const LanguageRead read = ReadLanguage(state, services, fileName.toStdString());
    const QString path =
        read.Path.isEmpty() ? platform::LanguageReadPath(services, fileName) : read.Path;
    if (!QFileInfo::exists(path)) {
        return QByteArray();
    }
    InputFile file = InputFile::OpenExact(FsPath(path), FileKind::Language,
                                          QDir::toNativeSeparators(path).toStdString());
    std::string bytes;
    if (!file.ReadAll(bytes)) {
        Refuse(state, services, fileName, OpenProblemText(state, file.Problem()));
        return std::nullopt;
    }
    return QByteArray(bytes.data(), static_cast<qsizetype>(bytes.size()));
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
