// The text of a printed PDF, read back with pdftotext (poppler-utils) in its
// layout mode, which keeps the blanks between words as the page shows them.
#pragma once

#include <QProcess>
#include <QStandardPaths>
#include <QStringList>

inline bool PdfTextAvailable() { return !QStandardPaths::findExecutable(QStringLiteral("pdftotext")).isEmpty(); }

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
