#include "engine/code/S1Record.h"

#include "engine/state/Conversions.h"

namespace {
// The value of the digits at a column (from 0); a short line gives what is there.
std::int32_t HexAt(const QString& line, int column, int digits)
{
    return HexToLong(line.mid(column, digits));
}
}  // namespace

S1Record ReadS1Line(const QByteArray& line)
{
    S1Record record;
    if (!line.startsWith("S1"))
        return record;
    const QString text = QString::fromLatin1(line);
    const int byteCount = HexAt(text, 2, 2);
    qsizetype length = text.size();
    while (length > 0 && (text[length - 1] == u'\n' || text[length - 1] == u'\r'))
        --length;
    if (byteCount <= 3) {
        record.kind = S1Record::Kind::NoData;
        return record;
    }
    // Count, address, data and checksum: two digits for each counted byte.
    if (length < 4 + 2 * byteCount) {
        record.kind = S1Record::Kind::Truncated;
        return record;
    }
    record.Address = HexAt(text, 4, 4);
    const int count = byteCount - 3;
    record.Data.resize(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i)
        record.Data[static_cast<std::size_t>(i)] = static_cast<std::uint8_t>(HexAt(text, 8 + 2 * i, 2));
    const int checksum = HexAt(text, 8 + 2 * count, 2);
    record.kind = S1ChecksumGood(byteCount, record.Address, record.Data, checksum) ? S1Record::Kind::Good
                                                                                    : S1Record::Kind::BadChecksum;
    return record;
}

bool S1ChecksumGood(int byteCount, std::int32_t address, const std::vector<std::uint8_t>& data, int checksum)
{
    unsigned sum = static_cast<unsigned>(byteCount + (address >> 8) + (address & 0xFF) + checksum);
    for (const std::uint8_t byte : data)
        sum += byte;
    return sum % 256 == 255;
}

bool S1RecordFits(const S1Record& record)
{
    return record.Address + static_cast<std::int32_t>(record.Data.size()) <= 0x10000;
}

QString DownloadAddressText(std::int32_t address)
{
    return QStringLiteral("Address = $") + HexPadded(address, 4);
}

QString DownloadSizeText(int count)
{
    return QString::number(count) + (count == 1 ? QStringLiteral(" byte") : QStringLiteral(" bytes"));
}

int DownloadProgress(qint64 consumed, qint64 length)
{
    if (length <= 0)
        return 100;
    return static_cast<int>(qMin<qint64>(consumed, length) * 100 / length);
}
