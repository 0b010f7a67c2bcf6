// The text of a printed PDF, read back with pdftotext (poppler-utils) in its
// layout mode, which keeps the blanks between words as the page shows them.
#pragma once

#include <QProcess>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QStringList>

inline bool PdfTextAvailable()
{
    return !QStandardPaths::findExecutable(QStringLiteral("pdftotext")).isEmpty();
}

// One entry per page; each page's lines without their trailing blanks.
inline QList<QStringList> PdfPages(const QString& pdfFile)
{
    QProcess tool;
    tool.start(QStringLiteral("pdftotext"), {QStringLiteral("-layout"), pdfFile, QStringLiteral("-")});
    if (!tool.waitForFinished(30000) || tool.exitCode() != 0)
        return {};
    QStringList pageTexts = QString::fromUtf8(tool.readAllStandardOutput()).split(QLatin1Char('\f'));
    if (!pageTexts.isEmpty() && pageTexts.last().trimmed().isEmpty())
        pageTexts.removeLast();   // the form feed after the last page
    QList<QStringList> pages;
    for (const QString& text : pageTexts) {
        QStringList lines;
        for (QString line : text.split(QLatin1Char('\n'))) {
            while (line.endsWith(QLatin1Char(' ')))
                line.chop(1);
            lines << line;
        }
        while (!lines.isEmpty() && lines.last().isEmpty())
            lines.removeLast();
        pages << lines;
    }
    return pages;
}

// Each word of the PDF with its edges in points. pdftotext reads blocks of
// words, so words of one row need not come together: compare their tops.
struct PdfWord {
    double left;
    double right;
    double top;
    QString text;
    int page;   // from 0
};
inline QList<PdfWord> PdfWords(const QString& pdfFile)
{
    QProcess tool;
    tool.start(QStringLiteral("pdftotext"), {QStringLiteral("-bbox"), pdfFile, QStringLiteral("-")});
    if (!tool.waitForFinished(30000) || tool.exitCode() != 0)
        return {};
    static const QRegularExpression word(
        QStringLiteral("<word xMin=\"([0-9.]+)\" yMin=\"([0-9.]+)\" xMax=\"([0-9.]+)\" yMax=\"[0-9.]+\">([^<]*)</word>"));
    QList<PdfWord> words;
    const QStringList pages = QString::fromUtf8(tool.readAllStandardOutput()).split(QStringLiteral("<page "));
    for (int page = 1; page < pages.size(); ++page) {
        for (auto match = word.globalMatch(pages[page]); match.hasNext();) {
            const auto m = match.next();
            words << PdfWord{m.captured(1).toDouble(), m.captured(3).toDouble(), m.captured(2).toDouble(),
                             m.captured(4), page - 1};
        }
    }
    return words;
}
