#include "platform/SettingsStore.h"

#include <QSettings>
#include <QStringList>

namespace {
const QString AppName = QStringLiteral("Orvane");
}  // namespace

QString GetSetting(const QString& section, const QString& key, const QString& def)
{
    QSettings store(QSettings::IniFormat, QSettings::UserScope, AppName, AppName);
    const QVariant value = store.value(section + '/' + key);
    if (!value.isValid())
        return def;
    // The INI reader turns a text with commas into a list; give the text back whole.
    if (value.typeId() == QMetaType::QStringList)
        return value.toStringList().join(QStringLiteral(", "));
    return value.toString();
}

void SaveSetting(const QString& section, const QString& key, const QString& value)
{
    QSettings store(QSettings::IniFormat, QSettings::UserScope, AppName, AppName);
    store.setValue(section + '/' + key, value);
}

void SetSettingsFolder(const QString& folder)
{
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, folder);
}

QString SettingsFilePath()
{
    QSettings store(QSettings::IniFormat, QSettings::UserScope, AppName, AppName);
    return store.fileName();
}
