#include "ui/source/SourcePrinter.h"

#include "engine/source/SourcePageLayout.h"

#include <QFontMetricsF>
#include <QPagedPaintDevice>
#include <QPainter>
#include <algorithm>

bool PrintSource(const QString& title, const QString& text, const QFont& font, QPagedPaintDevice& device,
                 int copies)
{
    const QFontMetricsF metrics(font, &device);
    const PrintMeasure measure{double(device.width()), double(device.height()), metrics.height(),
                               [&metrics](const QString& s) { return metrics.horizontalAdvance(s); }};
    const std::vector<PrintedPage> pages = LayOutPages(title, text, measure);
    if (pages.empty())
        return true;   // no room for a source line: nothing is printed
    QPainter painter;
    if (!painter.begin(&device))
        return false;
    painter.setFont(font);
    const double rule = measure.lineHeight * 1.5;
    for (int copy = 0; copy < std::max(copies, 1); ++copy) {
        for (size_t p = 0; p < pages.size(); ++p) {
            if (copy > 0 || p > 0)
                device.newPage();
            painter.drawText(QPointF(0, metrics.ascent()), pages[p].header);
            painter.drawLine(QPointF(0, rule), QPointF(measure.pageWidth, rule));
            double top = PrintHeaderRows * measure.lineHeight;
            for (const QString& line : pages[p].lines) {
                painter.drawText(QPointF(0, top + metrics.ascent()), line);
                top += measure.lineHeight;
            }
        }
    }
    return painter.end();
}
