// The per-user settings store: text values addressed by application, section
// and key, kept in an INI file of the user's configuration folder
// (~/.config/Orvane/Orvane.ini). A missing or unreadable file reads as empty.
#pragma once

#include <QString>

// The value stored under section/key, or def when the key is missing.
QString GetSetting(const QString& section, const QString& key, const QString& def = QString());
void SaveSetting(const QString& section, const QString& key, const QString& value);

// Where the store lives; tests point it at a temporary folder.
void SetSettingsFolder(const QString& folder);
QString SettingsFilePath();
