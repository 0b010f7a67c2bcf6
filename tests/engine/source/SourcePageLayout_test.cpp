#include "engine/source/SourcePageLayout.h"

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

class SourcePageLayoutTest : public QObject {
    Q_OBJECT
private slots:
    void pagesFollowTheRoomOnThePage()
    {
        const struct { QString text; int rows; QStringList marks; QList<int> linesPerPage; } cases[] = {
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

    void headerAndLinesAreCutAtTheRightEdge()
    {
        // A title too long for the page is cut, and one blank still stands before the mark.
        const QString text = QStringLiteral("LOOP\tLDAA\t#$10\r\n\tNOP\r\n") + QString(30, QLatin1Char('Z'));
        const std::vector<PrintedPage> pages = LayOutPages(QString(40, QLatin1Char('X')), text, Page(20, 10));
        QCOMPARE(pages[0].header, QString(16, QLatin1Char('X')) + QStringLiteral(" 1/1"));
        QCOMPARE(pages[0].lines, (QStringList{QStringLiteral("LOOP     LDAA     #$"), QStringLiteral("         NOP"),
                                              QString(20, QLatin1Char('Z'))}));
    }
};

QTEST_MAIN(SourcePageLayoutTest)
#include "SourcePageLayout_test.moc"
