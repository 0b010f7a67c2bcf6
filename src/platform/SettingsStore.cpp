#include "platform/SettingsStore.h"

#include "platform/SafeFile.h"

#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

namespace {
QString& Folder()
{
    static QString folder = QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation);
    return folder;
}

struct FailureReport {
    SettingsWriteFailure handler;
    bool told = false;
};

FailureReport& Failure()
{
    static FailureReport report;
    return report;
}

// The file's lines without their line feeds; joined with line feeds they are the file again.
QList<QByteArray> ReadLines()
{
    QFile file(SettingsFilePath());
    return file.open(QIODevice::ReadOnly) ? file.readAll().split('\n') : QList<QByteArray>{QByteArray()};
}

// Where section/key stands: the line of the key, and the last line of the
// section, behind which a new key goes; -1 for what is not there. Names
// compare without regard to case, and comments (; or #) are skipped.
struct Place {
    qsizetype keyLine = -1;
    qsizetype sectionEnd = -1;
    qsizetype equals = -1;   // of the key's line
};

Place Find(const QList<QByteArray>& lines, const QString& section, const QString& key)
{
    Place place;
    bool inSection = false;
    for (qsizetype i = 0; i < lines.size(); ++i) {
        const QString line = QString::fromUtf8(lines[i]).trimmed();
        if (line.startsWith(QLatin1Char('[')) && line.endsWith(QLatin1Char(']'))) {
            inSection = line.mid(1, line.size() - 2).trimmed().compare(section, Qt::CaseInsensitive) == 0;
            if (inSection)
                place.sectionEnd = i;
            continue;
        }
        if (!inSection || line.isEmpty() || line.startsWith(QLatin1Char(';')) || line.startsWith(QLatin1Char('#')))
            continue;
        place.sectionEnd = i;
        const qsizetype equals = line.indexOf(QLatin1Char('='));
        if (place.keyLine < 0 && equals > 0 && line.left(equals).trimmed().compare(key, Qt::CaseInsensitive) == 0) {
            place.keyLine = i;
            place.equals = equals;
        }
    }
    return place;
}

void Report(const QString& reason)
{
    FailureReport& failure = Failure();
    if (!failure.told && failure.handler)
        failure.handler(reason);
    failure.told = true;
}
}  // namespace

QString GetSetting(const QString& section, const QString& key, const QString& def)
{
    const QList<QByteArray> lines = ReadLines();
    const Place place = Find(lines, section, key);
    if (place.keyLine < 0)
        return def;
    QString value = QString::fromUtf8(lines[place.keyLine]).trimmed().mid(place.equals + 1).trimmed();
    // A value in quotes, as other INI writers leave a text with commas or blanks at its ends.
    if (value.size() >= 2 && value.startsWith(QLatin1Char('"')) && value.endsWith(QLatin1Char('"')))
        value = value.mid(1, value.size() - 2);
    return value;
}

void SaveSetting(const QString& section, const QString& key, const QString& value)
{
    QList<QByteArray> lines = ReadLines();
    const QByteArray before = lines.join('\n');
    const Place place = Find(lines, section, key);
    // A line written ends as the line it replaces or follows: a file of CR LF lines stays one.
    const auto endingAs = [](const QByteArray& text, const QByteArray& like) {
        return like.endsWith('\r') ? text + '\r' : text;
    };
    const QByteArray line = (key + QLatin1Char('=') + value).toUtf8();
    if (place.keyLine >= 0) {
        lines[place.keyLine] = endingAs(line, lines[place.keyLine]);
    } else if (place.sectionEnd >= 0) {
        lines.insert(place.sectionEnd + 1, endingAs(line, lines[place.sectionEnd]));
    } else {
        if (!lines.last().isEmpty())
            lines << QByteArray();
        const QByteArray like = lines.first();
        lines.insert(lines.size() - 1, endingAs('[' + section.toUtf8() + ']', like));
        lines.insert(lines.size() - 1, endingAs(line, like));
    }
    const QByteArray after = lines.join('\n');
    if (after == before)
        return;
    QString error;
    if (!QDir().mkpath(QFileInfo(SettingsFilePath()).path()))
        error = QStringLiteral("Can't create the folder ") + QFileInfo(SettingsFilePath()).path();
    else
        WriteFileSafely(SettingsFilePath(), after, error);
    if (error.isEmpty())
        Failure().told = false;
    else
        Report(error);
}

void SetSettingsWriteFailure(SettingsWriteFailure handler)
{
    Failure() = {std::move(handler), false};
}

void SetSettingsFolder(const QString& folder)
{
    Folder() = folder;
}

QString SettingsFilePath()
{
    return QDir(Folder()).filePath(QStringLiteral("Orvane/Orvane.ini"));
}
