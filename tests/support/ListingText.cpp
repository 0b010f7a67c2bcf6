#include "support/ListingText.h"

#include <QDir>
#include <QFile>

QString ListingLine(const QString& number, const QString& address, const QStringList& bytes, const QString& source)
{
    QString line = number + ' ' + address + ' ';
    for (int place = 0; place < 5; ++place)
        line += (place < bytes.size() ? bytes[place] : QStringLiteral("  ")) + ' ';
    return line + QStringLiteral("  ") + source;
}

QString ListingLine(int number, int address, const QStringList& bytes, const QString& source)
{
    return ListingLine(QStringLiteral("%1").arg(number, 4, 10, QLatin1Char('0')),
                       QStringLiteral("%1").arg(address, 4, 16, QLatin1Char('0')).toUpper(), bytes, source);
}

QString WriteListing(const QString& folder, const QString& name, const QStringList& lines, const QString& lineEnd)
{
    const QString path = QDir(folder).filePath(name);
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate))
        qFatal("cannot write %s", qPrintable(path));
    for (const QString& line : lines)
        file.write((line + lineEnd).toLatin1());
    return path;
}
