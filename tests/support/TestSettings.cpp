#include "support/TestSettings.h"

#include "platform/SettingsStore.h"

TestSettings::TestSettings() { SetSettingsFolder(dir_.path()); }

TestSettings::~TestSettings()
{
    // Never fall back on the real store: park it in a folder that no longer exists.
    SetSettingsFolder(dir_.path() + QStringLiteral("/gone"));
}

QString TestSettings::FilePath() const { return SettingsFilePath(); }
