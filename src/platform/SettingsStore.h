// The per-user settings store: text values addressed by application, section
// and key, kept in an INI file of the user's configuration folder
// (~/.config/Orvane/Orvane.ini). A missing or unreadable file reads as empty.
// A change rewrites only the line of its key, through the safe writer: a
// failed write leaves the file as it was.
#pragma once

#include <QString>
#include <functional>

// The value stored under section/key, or def when the key is missing.
QString GetSetting(const QString& section, const QString& key, const QString& def = QString());
void SaveSetting(const QString& section, const QString& key, const QString& value);

// Told the system's reason when the file could not be written; once, until
// a write succeeds again, so a run of saves at the end is one message.
using SettingsWriteFailure = std::function<void(const QString& reason)>;
void SetSettingsWriteFailure(SettingsWriteFailure handler);

// Where the store lives; tests point it at a temporary folder.
void SetSettingsFolder(const QString& folder);
QString SettingsFilePath();
