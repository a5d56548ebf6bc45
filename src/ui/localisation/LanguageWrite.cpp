#include "ui/localisation/LanguageWrite.h"

#include "document/InputFile.h"
#include "document/SafeWrite.h"
#include "platform/LanguageFolders.h"
#include "ui/localisation/ApplyLanguage.h"
#include "ui/localisation/Messages.h"

#include <QDir>
#include <QFileInfo>
#include <filesystem>
#include <ostream>
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
    const std::filesystem::path target = FsPath(QDir(folder).filePath(fileName));
    // A file replaced keeps the permissions the user set.
    SafeWriteOptions options;
    options.Temporary = std::filesystem::path("temp.lng");
    const SafeWriteResult written = WriteFileSafely(
        target,
        [&](std::ostream& out) { out.write(bytes.data(), static_cast<std::streamsize>(bytes.size())); },
        options);
    if (!written) {
        Refuse(state, services, fileName,
               written.System ? QString::fromStdString(SystemReasonText(written.System, state.MsgTexts))
                              : QDir::toNativeSeparators(folder));
        return false;
    }
    return true;
}

} // namespace quarle::ui
