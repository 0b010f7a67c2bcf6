#include "engine/code/ListingReader.h"

#include "engine/state/Conversions.h"

#include <QFile>
#include <QIODevice>
#include <limits>

namespace {
constexpr qsizetype SourceColumn = 27;            // column 28, counted from 0
constexpr qsizetype BytePlaces[5] = {10, 13, 16, 19, 22};
constexpr qsizetype BlankColumns[] = {4, 9, 12, 15, 18, 21, 24, 25, 26};
constexpr qsizetype ChunkSize = 64 * 1024;
constexpr int MaxSymbols = std::numeric_limits<decltype(SymbolCount)>::max();

bool IsDirective(const QString& text)
{
    const QString upper = text.left(4).toUpper();
    return upper.startsWith(QLatin1String("FCB")) || upper.startsWith(QLatin1String("FCC"))
        || upper.startsWith(QLatin1String("FDB")) || upper == QLatin1String("FILL");
}

QString WithoutLeadingBlanks(const QString& text)
{
    qsizetype first = 0;
    while (first < text.size() && text[first] == ' ')
        ++first;
    return text.mid(first);
}
}  // namespace

bool ListingLineCounts(const QString& line)
{
    if (line.size() < SourceColumn + 1)
        return false;
    if (ParseNumber(line.left(4), true) < 0)
        return false;
    if (ParseNumber('$' + line.mid(5, 4).toUpper(), true) < 0)
        return false;
    for (const qsizetype column : BlankColumns) {
        if (line[column] != ' ')
            return false;
    }
    return true;
}

bool ReadListingLine(const QString& raw, SymbolEntry& entry)
{
    if (!ListingLineCounts(raw))
        return false;
    // The test above is on the line as read; the fields come from the line
    // with its tabs expanded, so a tab in the source text moves what follows.
    const QString line = ExpandTabs(raw);

    SymbolEntry result;
    result.SymbolAddress = HexToLong(line.mid(5, 4).toUpper());
    for (int place = 0; place < 5; ++place) {
        if (line[BytePlaces[place]] == ' ')
            continue;
        result.SymbolCode[place] = static_cast<std::uint8_t>(HexToLong(line.mid(BytePlaces[place], 2).toUpper()));
        ++result.SymbolCodeSize;
    }

    // A label starts at column 28 and ends at a blank; one that ends the line
    // has no blank behind it and is not taken.
    qsizetype labelLength = 0;
    if (line[SourceColumn] != ' ') {
        const qsizetype blank = line.indexOf(' ', SourceColumn);
        if (blank >= 0) {
            labelLength = blank - SourceColumn;
            result.SymbolLabel = line.mid(SourceColumn, labelLength);
        }
    }

    // A data line gives its label a value but can never stand in for decoded code.
    if (IsDirective(WithoutLeadingBlanks(line.mid(SourceColumn + labelLength))))
        result.SymbolCodeSize = 0;
    else
        result.SymbolSource = line.mid(SourceColumn);

    entry = std::move(result);
    return true;
}

ListingLines::ListingLines(QIODevice& device) : device_(device) {}

bool ListingLines::Fill()
{
    if (atEnd_)
        return false;
    QByteArray chunk(ChunkSize, Qt::Uninitialized);
    const qint64 got = device_.read(chunk.data(), ChunkSize);
    if (got < 0)
        throw ListingReadError(device_.errorString().toStdString());
    if (got == 0) {
        atEnd_ = true;
        return false;
    }
    // Drop what was handed out already; a long line only grows the buffer.
    if (position_ > 0) {
        buffer_.remove(0, position_);
        position_ = 0;
    }
    buffer_.append(chunk.constData(), got);
    return true;
}

bool ListingLines::Next(QString& line)
{
    qsizetype from = position_;
    for (;;) {
        qsizetype end = from;
        while (end < buffer_.size() && buffer_[end] != '\n' && buffer_[end] != '\r')
            ++end;
        if (end < buffer_.size()) {
            // A CR at the end of the buffer may be the first half of CR LF.
            if (buffer_[end] == '\r' && end + 1 == buffer_.size() && !atEnd_) {
                const qsizetype scanned = end - position_;
                if (Fill()) {
                    from = position_ + scanned;
                    continue;
                }
            }
            line = QString::fromLatin1(buffer_.constData() + position_, end - position_);
            qsizetype next = end + 1;
            if (buffer_[end] == '\r' && next < buffer_.size() && buffer_[next] == '\n')
                ++next;
            position_ = next;
            return true;
        }
        const qsizetype scanned = end - position_;
        if (!Fill()) {
            if (position_ >= buffer_.size())
                return false;
            // The last line has no line end.
            line = QString::fromLatin1(buffer_.constData() + position_, buffer_.size() - position_);
            position_ = buffer_.size();
            return true;
        }
        from = position_ + scanned;
    }
}

void ReadSymbols(QIODevice& device, const std::function<void()>& afterLine)
{
    SymbolCount = 0;
    SymbolTable.clear();
    ListingLines lines(device);
    QString line;
    SymbolEntry entry;
    while (lines.Next(line)) {
        if (ReadListingLine(line, entry)) {
            if (SymbolCount == MaxSymbols)
                throw ListingReadError("Overflow: the symbol table holds at most 32767 entries");
            SymbolTable.append(entry);
            ++SymbolCount;
        }
        if (afterLine)
            afterLine();
    }
}

ListingLoad LoadListingFile(const QString& path, const std::function<void()>& afterLine)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {false, file.errorString()};
    try {
        ReadSymbols(file, afterLine);
    } catch (const std::exception& error) {
        // The entries read before the failure stay in the table.
        return {true, QString::fromLocal8Bit(error.what())};
    }
    return {true, {}};
}
