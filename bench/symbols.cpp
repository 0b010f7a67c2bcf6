// Time to load the symbols of a 30,000-line listing through the File menu's
// road (file, column reader, the event pump after every line, panel 3), and
// to expand one listing line of 20,000 tabs.
#include <QElapsedTimer>
#include <QFile>
#include <algorithm>
#include <cstdio>
#include <vector>

#include "BenchFigures.h"
#include "HeadlessApp.h"
#include "engine/code/SymbolTable.h"
#include "engine/state/Conversions.h"
#include "engine/source/SourceRecords.h"
#include "ui/main/frmMain.h"

namespace {
// One line in the assembler's columns: number, address, up to five bytes, source from column 28.
QString Line(int number, int address, const QStringList& bytes, const QString& source)
{
    QString line = QStringLiteral("%1 %2 ").arg(number % 10000, 4, 10, QLatin1Char('0'))
                       .arg(address & 0xFFFF, 4, 16, QLatin1Char('0')).toUpper();
    for (int place = 0; place < 5; ++place)
        line += (place < bytes.size() ? bytes[place] : QStringLiteral("  ")) + ' ';
    return line + QStringLiteral("  ") + source;
}

// A listing as the assembler writes it: page headers, code lines with and
// without labels, tabs in the source, tables under FCB, equates, blank lines.
QByteArray GeneratedListing(int lines)
{
    QByteArray text;
    int address = 0xE000;
    for (int n = 1; n <= lines; ++n) {
        QString line;
        switch (n % 10) {
        case 0: line = QStringLiteral("Orvane HC11 assembler      page %1").arg(n / 60); break;
        case 1: line = Line(n, address, {"CE", "10", "00"}, QStringLiteral("L%1 LDX #$1000").arg(n)); address += 3; break;
        case 2: line = Line(n, address, {"86", "55"}, QStringLiteral("\tLDAA #$55\t; a tab in the source")); address += 2; break;
        case 3: line = Line(n, address, {"A7", "00"}, QStringLiteral(" STAA 0,X")); address += 2; break;
        case 4: line = Line(n, address, {"01", "02", "03", "04", "05"}, QStringLiteral("T%1 FCB 1,2,3,4,5").arg(n)); address += 5; break;
        case 5: line = Line(n, 0x40, {}, QStringLiteral("C%1 EQU $40").arg(n)); break;
        case 6: break;
        case 7: line = Line(n, address, {"18", "CE", "12", "34"}, QStringLiteral(" LDY #$1234")); address += 4; break;
        case 8: line = Line(n, address, {"26", "F0"}, QStringLiteral(" BNE L%1").arg(n - 7)); address += 2; break;
        default: line = Line(n, address, {"39"}, QStringLiteral(" RTS")); address += 1; break;
        }
        text += line.toLatin1() + "\r\n";
    }
    return text;
}
}  // namespace

int main(int argc, char* argv[])
{
    HeadlessApp app(argc, argv);
    const QDir folder(app.StorePath());
    frmMain window;

    const QString path = folder.filePath(QStringLiteral("bench.lst"));
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(GeneratedListing(30000)) < 0)
        return 1;
    file.close();

    window.Dialog.FileName = path;
    LstFile = QStringLiteral("bench.lst");
    std::vector<qint64> times;
    for (int run = 0; run < 5; ++run) {
        QElapsedTimer clock;
        clock.start();
        window.LoadSymbols();
        times.push_back(clock.elapsed());
    }
    if (SymbolCount != 24000)
        return 2;   // the listing did not read as it should: the figure would mean nothing
    std::sort(times.begin(), times.end());
    std::printf("load_symbols_ms: %lld ms\n", static_cast<long long>(times[times.size() / 2]));

    const QString tabs = QStringLiteral("0001 E000 01") + QString(20000, QLatin1Char('\t')) + QStringLiteral("NOP");
    qsizetype width = 0;
    Print("expand_20000_tabs_ms", MeanMs(5, [&] { width = ExpandTabs(tabs).size(); }), "ms");
    if (width < 20000)   // every tab gives at least one blank
        return 3;
    return 0;
}
