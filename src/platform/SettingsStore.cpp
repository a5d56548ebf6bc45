#include "platform/SettingsStore.h"

#include <QFile>
#include <QFileInfo>
#include <QSettings>
#include <cerrno>
#include <cstdio>

namespace quarle::platform {
namespace {

const QString Application = QStringLiteral("Quarle");
const QString Section = QStringLiteral("Settings");

} // namespace

SettingsStore::SettingsStore()
    : settings_(std::make_unique<QSettings>(QSettings::NativeFormat, QSettings::UserScope,
                                            Application, Application)) {}

SettingsStore::SettingsStore(const QString& iniFile)
    : settings_(std::make_unique<QSettings>(iniFile, QSettings::IniFormat)) {}

SettingsStore::~SettingsStore() = default;

QString SettingsStore::StoredKey(const QString& key) const {
    settings_->beginGroup(Section);
    const QStringList keys = settings_->childKeys();
    settings_->endGroup();
    if (keys.contains(key)) {
        return key;
    }
    for (const QString& stored : keys) {
        if (stored.compare(key, Qt::CaseInsensitive) == 0) {
            return stored;
        }
    }
    return {};
}

QString SettingsStore::Get(const QString& key) const {
    const QString stored = StoredKey(key);
    if (stored.isEmpty()) {
        return {};
    }
    return settings_->value(Section + QLatin1Char('/') + stored).toString();
}

void SettingsStore::Set(const QString& key, const QString& value) {
    settings_->beginGroup(Section);
    for (const QString& stored : settings_->childKeys()) {
        if (stored != key && stored.compare(key, Qt::CaseInsensitive) == 0) {
            settings_->remove(stored);
        }
    }
    settings_->setValue(key, value);
    settings_->endGroup();
}

void SettingsStore::Sync() {
    settings_->sync();
}

QString SettingsStore::FileName() const {
    return settings_->fileName();
}

std::error_code SettingsStore::WriteError() const {
    if (settings_->isWritable()) {
        return {};
    }
#ifdef Q_OS_WIN
    return std::make_error_code(std::errc::permission_denied);
#else
    // Qt says no more than that: the system is asked why.
    const QFileInfo info(settings_->fileName());
    if (info.isDir()) {
        return std::make_error_code(std::errc::is_a_directory);
    }
    errno = 0;
    std::FILE* file =
        std::fopen(QFile::encodeName(info.filePath()).constData(), info.exists() ? "r+" : "a");
    const int error = errno;
    if (file != nullptr) {
        std::fclose(file);
        if (!info.exists()) {
            QFile::remove(info.filePath());
        }
        return std::make_error_code(std::errc::permission_denied);
    }
    return error != 0 ? std::error_code(error, std::generic_category())
                      : std::make_error_code(std::errc::permission_denied);
#endif
}

} // namespace quarle::platform
