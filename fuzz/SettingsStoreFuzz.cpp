// libFuzzer target: any bytes as the settings file, then a value of any text
// saved and read back. A damaged file must not crash the reader, and a saved
// value must come back as it was given.
#include "platform/SettingsStore.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv)
{
    static QCoreApplication app(*argc, *argv);
    static QTemporaryDir folder;
    SetSettingsFolder(folder.path());
    QDir().mkpath(QFileInfo(SettingsFilePath()).path());
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    // The first half is the file, the second the value to save.
    const std::size_t half = size / 2;
    QFile file(SettingsFilePath());
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate))
        std::abort();
    file.write(reinterpret_cast<const char*>(data), static_cast<qint64>(half));
    file.close();

    for (const char* key : {"PortDevice1", "SimEnabled", "FontName"})
        GetSetting(QStringLiteral("Settings"), QString::fromLatin1(key), QStringLiteral("default"));

    const QString value =
        QString::fromUtf8(reinterpret_cast<const char*>(data + half), static_cast<qsizetype>(size - half));
    SaveSetting(QStringLiteral("Fuzz"), QStringLiteral("Value"), value);
    if (GetSetting(QStringLiteral("Fuzz"), QStringLiteral("Value")) != value)
        std::abort();
    return 0;
}
