#include "TempSettings.h"

#include <QDir>

namespace quarle::test {

TempSettings::TempSettings()
    : path_(QDir(dir_.path()).filePath(QStringLiteral("settings.ini"))),
      store_(std::make_unique<platform::SettingsStore>(path_)) {}

TempSettings::~TempSettings() = default;

} // namespace quarle::test
