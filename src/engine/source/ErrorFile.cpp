#include "engine/source/ErrorFile.h"

#include "engine/state/Conversions.h"

#include <QIODevice>

bool ErrorRowOf(const QString& line, ErrorRow& row)
{
    const qsizetype colon = line.indexOf(QLatin1Char(':'));
    if (colon < 0)
        return false;
    const std::int32_t number = ParseNumber(line.left(colon), true);
    if (number <= 0)
        return false;
    row = {number, line};
    return true;
}

bool ReadErrorRows(QIODevice& file, QList<ErrorRow>& rows, const std::function<void()>& afterEachLine)
{
    while (!file.atEnd()) {
        QByteArray bytes = file.readLine();
        if (bytes.isEmpty() && !file.atEnd())
            return false;
        while (bytes.endsWith('\n') || bytes.endsWith('\r'))
            bytes.chop(1);
        ErrorRow row;
        if (ErrorRowOf(QString::fromLatin1(bytes), row))
            rows.append(row);
        if (afterEachLine)
            afterEachLine();
    }
    return true;
}
