// The per-user settings store: application "Quarle", section "Settings",
// text values, keys that ignore case on every platform. A missing key and
// an empty value both read as "".
#pragma once

#include <QString>
#include <memory>

class QSettings;

namespace quarle::platform {

class SettingsStore {
public:
    // The user's store.
    SettingsStore();
    // A store in the given INI file (tests).
    explicit SettingsStore(const QString& iniFile);
    ~SettingsStore();

    QString Get(const QString& key) const;
    void Set(const QString& key, const QString& value);
    void Sync();

private:
    std::unique_ptr<QSettings> settings_;
};

} // namespace quarle::platform
