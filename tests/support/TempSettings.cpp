#include "TempSettings.h"

#include <QDir>

namespace quarle::test {

TempSettings::TempSettings()
    : path_(QDir(dir_.path()).filePath(QStringLiteral("settings.ini"))),
      store_(std::make_unique<platform::SettingsStore>(path_)) {
    // The user of a test has been told of a missing compiler already; a test
    // of that notice clears the key.
    store_->Set(QStringLiteral("ToolNotice"), QStringLiteral("1"));
}

TempSettings::~TempSettings() = default;

} // namespace quarle::test
