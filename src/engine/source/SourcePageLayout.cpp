#include "engine/source/SourcePageLayout.h"

#include "engine/state/Conversions.h"

#include <cmath>

namespace {
// The longest start of text that fits in width: the printer cuts long lines.
QString CutToWidth(const QString& text, double width, const PrintMeasure& measure)
{
    if (measure.textWidth(text) <= width)
        return text;
    qsizetype low = 0, high = text.size();   // low fits, high does not
    while (high - low > 1) {
        const qsizetype middle = (low + high) / 2;
        if (measure.textWidth(text.left(middle)) <= width)
            low = middle;
        else
            high = middle;
    }
    return text.left(low);
}

// The title at the left edge and the mark at the right one, with at least one
// blank between them. A title too long for the page is cut so the mark stays.
QString HeaderLine(const QString& title, const QString& mark, const PrintMeasure& measure)
{
    const double blank = measure.textWidth(QStringLiteral(" "));
    const double titleRoom = measure.pageWidth - measure.textWidth(mark) - blank;
    const QString shown = CutToWidth(title, std::max(titleRoom, 0.0), measure);
    const long gap = std::max(1L, std::lround((measure.pageWidth - measure.textWidth(shown + mark)) / blank));
    return shown + QString(gap, QLatin1Char(' ')) + mark;
}

// The document's lines; a line end is "\n" or "\r\n". A text that ends with a
// line end has an empty last line, as the editor shows it.
QStringList SourceLines(const QString& text)
{
    QStringList lines = text.split(QLatin1Char('\n'));
    for (QString& line : lines) {
        if (line.endsWith(QLatin1Char('\r')))
            line.chop(1);
    }
    return lines;
}
}  // namespace

std::vector<PrintedPage> LayOutPages(const QString& title, const QString& text, const PrintMeasure& measure)
{
    // Whole rows only: a row that would stand partly below the page is not used.
    const long rows = measure.lineHeight > 0 ? std::lround(std::floor(measure.pageHeight / measure.lineHeight + 1e-9)) : 0;
    const long perPage = rows - PrintHeaderRows;
    if (perPage < 1)
        return {};
    const QStringList lines = SourceLines(text);
    const long pageCount = (static_cast<long>(lines.size()) - 1) / perPage + 1;
    std::vector<PrintedPage> pages(static_cast<size_t>(pageCount));
    for (long p = 0; p < pageCount; ++p) {
        PrintedPage& page = pages[static_cast<size_t>(p)];
        page.header = HeaderLine(title, QString::number(p + 1) + '/' + QString::number(pageCount), measure);
        for (long i = p * perPage; i < std::min<long>((p + 1) * perPage, lines.size()); ++i)
            page.lines << CutToWidth(ExpandTabs(lines[i]), measure.pageWidth, measure);
    }
    return pages;
}
