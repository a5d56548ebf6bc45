#include "platform/SettingsStore.h"

#include <QSettings>

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

} // namespace quarle::platform
