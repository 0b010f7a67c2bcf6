#include <QtTest>

#include "platform/Fonts.h"
#include "source/SourcePrinter.h"
#include "support/PdfText.h"

#include <QFontMetricsF>
#include <QPdfWriter>
#include <QTemporaryDir>

namespace {
// A fixed-pitch page of columns x rows characters, each 10 units wide and high.
PrintMeasure Page(int columns, int rows)
{
    return {columns * 10.0, rows * 10.0, 10.0, [](const QString& s) { return s.size() * 10.0; }};
}

QString Numbered(int count)
{
    QStringList lines;
    for (int i = 1; i <= count; ++i)
        lines << QStringLiteral("line %1").arg(i, 3, 10, QLatin1Char('0'));
    return lines.join('\n');
}

QStringList Marks(const std::vector<PrintedPage>& pages)
{
    QStringList marks;
    for (const PrintedPage& page : pages)
        marks << page.header.section(' ', -1);
    return marks;
}
}  // namespace

class SourcePrinterTest : public QObject {
    Q_OBJECT
private slots:
    void pagesFollowTheRoomOnThePage();
    void headerAndLinesAreCutAtTheRightEdge();
    void printedPdfHoldsEveryLineInOrder();
};

void SourcePrinterTest::pagesFollowTheRoomOnThePage()
{
    const struct {
        QString text;
        int rows;
        QStringList marks;
        QList<int> linesPerPage;
    } cases[] = {
        {Numbered(120), 63, {"1/2", "2/2"}, {60, 60}},
        {QString(), 63, {"1/1"}, {1}},
        {Numbered(2), 4, {"1/2", "2/2"}, {1, 1}},   // room for one source row
        {Numbered(3), 3, {}, {}},                   // no room for a source row
        {QStringLiteral("a\nb\n"), 5, {"1/2", "2/2"}, {2, 1}},   // a final line end is an empty line
    };
    for (const auto& c : cases) {
        const std::vector<PrintedPage> pages = LayOutPages(QStringLiteral("T.ASM"), c.text, Page(80, c.rows));
        QCOMPARE(Marks(pages), c.marks);
        QList<int> counts;
        QStringList printed;
        for (const PrintedPage& page : pages) {
            counts << page.lines.size();
            printed << page.lines;
        }
        QCOMPARE(counts, c.linesPerPage);
        if (!pages.empty())
            QCOMPARE(printed, c.text.split('\n'));   // nothing lost, nothing doubled, in order
    }
}

void SourcePrinterTest::headerAndLinesAreCutAtTheRightEdge()
{
    // A title too long for the page is cut, and one blank still stands before the mark.
    const QString text = QStringLiteral("LOOP\tLDAA\t#$10\r\n\tNOP\r\n") + QString(30, QLatin1Char('Z'));
    const std::vector<PrintedPage> pages = LayOutPages(QString(40, QLatin1Char('X')), text, Page(20, 10));
    QCOMPARE(pages[0].header, QString(16, QLatin1Char('X')) + QStringLiteral(" 1/1"));
    QCOMPARE(pages[0].lines, (QStringList{QStringLiteral("LOOP     LDAA     #$"), QStringLiteral("         NOP"),
                                          QString(20, QLatin1Char('Z'))}));
}

void SourcePrinterTest::printedPdfHoldsEveryLineInOrder()
{
    if (!PdfTextAvailable())
        QSKIP("pdftotext (poppler-utils) is not installed: scripts/setup.sh installs it");
    QTemporaryDir dir;
    const QString file = dir.filePath(QStringLiteral("listing.pdf"));
    const QFont font = FixedPitchFont(QStringLiteral("Courier New"), 10);
    int rows = 0;
    {
        QPdfWriter writer(file);
        writer.setResolution(300);
        // A page exactly 53 rows of this font high (and a little more): 50 source lines a page.
        const QFontMetricsF metrics(font, &writer);
        const double inch = writer.resolution();
        const double height = metrics.height() * 53.5 / inch * 72.0;
        writer.setPageMargins(QMarginsF(0, 0, 0, 0));
        writer.setPageSize(QPageSize(QSizeF(500, height), QPageSize::Point));
        rows = int(writer.height() / metrics.height());
        QString text;
        for (int i = 1; i <= 200; ++i)
            text += (i == 7 ? QStringLiteral("TAB\tLDAA\t#$%1").arg(i) : QStringLiteral("line %1").arg(i)) + "\r\n";
        text.chop(2);
        QVERIFY(PrintSource(QStringLiteral("PROGRAM.ASM"), text, font, writer));
    }
    QCOMPARE(rows, 53);
    const QList<QStringList> pages = PdfPages(file);
    QCOMPARE(pages.size(), 4);
    QStringList body;
    for (int p = 0; p < pages.size(); ++p) {
        const QString header = pages[p].value(0);
        QVERIFY2(header.startsWith("PROGRAM.ASM ") && header.endsWith(QStringLiteral(" %1/4").arg(p + 1)),
                 qPrintable(header));
        for (const QString& line : pages[p].mid(1))
            if (!line.trimmed().isEmpty() && !line.startsWith("TAB"))
                body << line;
    }
    QStringList expected;   // every line but the tabbed one, in order
    for (int i = 1; i <= 200; ++i)
        if (i != 7)
            expected << QStringLiteral("line %1").arg(i);
    QCOMPARE(body, expected);
    // The tabbed line: its words start at columns 0, 9 and 18, whatever the font's width.
    const QList<PdfWord> words = PdfWords(file);
    const auto tab = std::find_if(words.begin(), words.end(), [](const PdfWord& w) { return w.text == "TAB"; });
    QVERIFY(tab != words.end());
    const double column = (tab->right - tab->left) / 3;
    QStringList columns;
    for (const PdfWord& w : words)
        if (w.page == tab->page && qAbs(w.top - tab->top) < 0.5)
            columns << QStringLiteral("%1 %2").arg(qRound((w.left - tab->left) / column)).arg(w.text);
    QCOMPARE(columns, (QStringList{"0 TAB", "9 LDAA", "18 #$7"}));
}

QTEST_MAIN(SourcePrinterTest)
#include "SourcePrinter_test.moc"
