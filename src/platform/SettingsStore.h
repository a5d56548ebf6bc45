// The per-user settings store: application "Quarle", section "Settings",
// text values, keys that ignore case on every platform. A missing key and
// an empty value both read as "". The file keeps one spelling per key: a
// write replaces any spelling of the same key with the one written.
//
// The user's store is QSettings' native one (on Linux an ini file under
// ~/.config/Quarle, on Windows the registry).
#pragma once

#include <QString>
#include <memory>
#include <system_error>

class QSettings;

namespace quarle::platform {

class SettingsStore {
public:
    // The user's store.
    SettingsStore();
    // A store in the given INI file (tests).
    explicit SettingsStore(const QString& iniFile);
    ~SettingsStore();

    SettingsStore(const SettingsStore&) = delete;
    SettingsStore& operator=(const SettingsStore&) = delete;

    QString Get(const QString& key) const;
    void Set(const QString& key, const QString& value);
    void Sync();

    // Where the store is kept (a file, or the registry's key on Windows).
    QString FileName() const;
    // Why the store cannot be written; no error when it can.
    std::error_code WriteError() const;

private:
    // The stored spelling of key, or "" when the key is missing.
    QString StoredKey(const QString& key) const;

    std::unique_ptr<QSettings> settings_;
};

} // namespace quarle::platform
