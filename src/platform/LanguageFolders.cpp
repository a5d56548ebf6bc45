#include "platform/LanguageFolders.h"

#include <QDir>
#include <QFileInfo>

namespace quarle::platform {

QStringList LanguagePlaces(Services& services) {
    QStringList places;
    const QString user = services.UserDataFolder();
    const QString program = services.ProgramFolder();
    if (!user.isEmpty() && QDir::cleanPath(user) != QDir::cleanPath(program)) {
        places.append(user);
    }
    places.append(program);
    return places;
}

QString LanguageReadPath(Services& services, const QString& fileName) {
    for (const QString& place : LanguagePlaces(services)) {
        const QString path = QDir(place).filePath(fileName);
        if (QFileInfo(path).isFile()) {
            return path;
        }
    }
    return QDir(services.ProgramFolder()).filePath(fileName);
}

QString LanguageWriteFolder(Services& services) {
    const QString program = services.ProgramFolder();
    if (services.CanWriteTo(program)) {
        return program;
    }
    const QString user = services.UserDataFolder();
    if (user.isEmpty() || !QDir().mkpath(user) || !services.CanWriteTo(user)) {
        return {};
    }
    return user;
}

QStringList LanguageFileNames(Services& services) {
    QStringList names;
    for (const QString& place : LanguagePlaces(services)) {
        for (const QString& name :
             QDir(place).entryList({QStringLiteral("*.lng")}, QDir::Files, QDir::Name)) {
            if (!names.contains(name, Qt::CaseInsensitive)) {
                names.append(name);
            }
        }
    }
    names.sort(Qt::CaseInsensitive);
    return names;
}

} // namespace quarle::platform
