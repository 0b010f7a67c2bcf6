// The pages of a source document printed as a plain listing: each page has one header
// line with the document's title and its page mark ("2/5"), a rule under it,
// an empty row, and then the source lines with tabs expanded to 9-column stops.
// There are no margins of our own: the device's printable area is the page.
#pragma once

#include <QString>
#include <QStringList>
#include <functional>
#include <vector>

// The measures of the device in one unit (device pixels when printing).
struct PrintMeasure {
    double pageWidth = 0;
    double pageHeight = 0;
    double lineHeight = 0;                               // the height of one row
    std::function<double(const QString&)> textWidth;     // in the printer font
};

struct PrintedPage {
    QString header;         // title, at least one blank, page mark
    QStringList lines;      // the source rows, tabs expanded, cut at the right edge
};

// The header takes three rows: the title line, the rule, an empty row.
constexpr int PrintHeaderRows = 3;

// The pages of a document. Empty when the page has no room for the header
// and one source line: then nothing is printed.
std::vector<PrintedPage> LayOutPages(const QString& title, const QString& text, const PrintMeasure& measure);
