#include "engine/state/AppSettings.h"

#include "platform/SettingsStore.h"


std::int16_t COMPort = 2;
FontRecord ScreenFont{QStringLiteral("Fixedsys"), 9, false, false};
FontRecord PrintFont{QStringLiteral("Courier New"), 8, false, false};

QString FontStyleText(const FontRecord& font)
{
    if (font.Bold)
        return font.Italic ? QStringLiteral("Bold Italic") : QStringLiteral("Bold");
    return font.Italic ? QStringLiteral("Italic") : QStringLiteral("Regular");
}

namespace {
const QString Section = QStringLiteral("Settings");
}

bool GetFlagSetting(const QString& key, bool def)
{
    const QString text = GetSetting(Section, key).trimmed();
    if (text.compare(QLatin1String("True"), Qt::CaseInsensitive) == 0)
        return true;
    if (text.compare(QLatin1String("False"), Qt::CaseInsensitive) == 0)
        return false;
    bool ok = false;
    const int number = text.toInt(&ok);   // a stored truth value may also be -1 or 0
    return ok ? number != 0 : def;
}

void SaveFlagSetting(const QString& key, bool value)
{
    SaveSetting(Section, key, value ? QStringLiteral("True") : QStringLiteral("False"));
}

double GetNumberSetting(const QString& key, double def)
{
    bool ok = false;
    const double value = GetSetting(Section, key).trimmed().toDouble(&ok);
    return ok ? value : def;
}

void SaveNumberSetting(const QString& key, double value)
{
    SaveSetting(Section, key, QString::number(static_cast<float>(value)));
}

QString GetTextSetting(const QString& key, const QString& def)
{
    return GetSetting(Section, key, def);
}

void SaveTextSetting(const QString& key, const QString& value)
{
    SaveSetting(Section, key, value);
}

namespace {
void LoadFont(const QString& prefix, FontRecord& font, const FontRecord& def)
{
    font.Name = GetTextSetting(prefix + "Name", def.Name);
    font.Size = static_cast<float>(GetNumberSetting(prefix + "Size", def.Size));
    font.Bold = GetFlagSetting(prefix + "Bold", def.Bold);
    font.Italic = GetFlagSetting(prefix + "Italic", def.Italic);
}

void SaveFont(const QString& prefix, const FontRecord& font)
{
    SaveTextSetting(prefix + "Name", font.Name);
    SaveNumberSetting(prefix + "Size", font.Size);
    SaveFlagSetting(prefix + "Bold", font.Bold);
    SaveFlagSetting(prefix + "Italic", font.Italic);
}
}  // namespace

void LoadPortAndFonts()
{
    const double port = GetNumberSetting(QStringLiteral("COMPort"), 2);
    COMPort = port >= 1 && port <= 4 ? static_cast<std::int16_t>(port) : 2;
    LoadFont(QStringLiteral("ScreenFont"), ScreenFont, {QStringLiteral("Fixedsys"), 9, false, false});
    LoadFont(QStringLiteral("PrintFont"), PrintFont, {QStringLiteral("Courier New"), 8, false, false});
}

void SavePortAndFonts()
{
    SaveSetting(Section, QStringLiteral("COMPort"), QString::number(COMPort));
    SaveFont(QStringLiteral("ScreenFont"), ScreenFont);
    SaveFont(QStringLiteral("PrintFont"), PrintFont);
}
