// A settings store of its own for one test: an INI file in a temporary
// folder that goes away with the object. It holds only "ToolNotice", so that
// a first start does not stop to say that no compiler was found.
#pragma once

#include "platform/SettingsStore.h"

#include <QString>
#include <QTemporaryDir>
#include <memory>

namespace quarle::test {

class TempSettings {
public:
    TempSettings();
    ~TempSettings();
    TempSettings(const TempSettings&) = delete;
    TempSettings& operator=(const TempSettings&) = delete;

    platform::SettingsStore& Store() { return *store_; }
    // The INI file.
    QString Path() const { return path_; }

private:
    QTemporaryDir dir_;
    QString path_;
    std::unique_ptr<platform::SettingsStore> store_;
};

} // namespace quarle::test
