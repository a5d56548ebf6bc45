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

QString LanguageWriteFolder(Services& services, const QString& fileName) {
    // A file written behind a copy that wins over it would never be read:
    // only the place the file is read from and those ahead of it qualify,
    // the last of them that takes files first.
    const QStringList places = LanguagePlaces(services);
    qsizetype last = places.size() - 1;
    for (qsizetype i = 0; i < places.size(); ++i) {
        if (QFileInfo(QDir(places[i]).filePath(fileName)).isFile()) {
            last = i;
            break;
        }
    }
    for (qsizetype i = last; i >= 0; --i) {
        if (QDir().mkpath(places[i]) && services.CanWriteTo(places[i])) {
            return places[i];
        }
    }
    return {};
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
