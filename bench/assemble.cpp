// From the Assemble command to symbols loaded and panel 3 updated, in
// simulator mode: the copy into the work folder, ASM.BAT and AS11.EXE, the
// moves back, the listing read. For a 2,000-line and a 30,000-line source.
#include <QDir>
#include <QFile>

#include "BenchFigures.h"
#include "HeadlessApp.h"
#include "code/SymbolTable.h"
#include "platform/MsgBox.h"
#include "platform/ProgramFolder.h"
#include "platform/SettingsStore.h"
#include "source/SourceRecords.h"
#include "workspace/frmMain.h"

namespace {
// Routines of ten lines each: labels, loads and stores, a table, a branch back.
QByteArray GeneratedSource(int lines)
{
    QByteArray text = " ORG $8000\n";
    for (int n = 1; text.count('\n') < lines; ++n) {
        text += QStringLiteral("R%1 LDX #$1000\t; routine %1\n"
                               " LDAA 4,X\n"
                               " ANDA #$0F\n"
                               " STAA $40\n"
                               " LDD $42\n"
                               " ADDD #%1\n"
                               " STD 2,Y\n"
                               " BNE R%1\n"
                               "T%1 FCB 1,2,3,4\n"
                               " RTS\n").arg(n).toLatin1();
    }
    return text;
}
}  // namespace

int main(int argc, char* argv[])
{
    HeadlessApp app(argc, argv);
    SetProgramFolder(qEnvironmentVariable("ORVANE_PROGRAM_DIR", QStringLiteral(ORVANE_PROGRAM_DIR)));
    SaveSetting(QStringLiteral("Settings"), QStringLiteral("SimEnabled"), QStringLiteral("True"));
    SetMsgBoxHandler([](const QString&, int, const QString&) { return MbResultOk; });
    frmMain window;
    window.MDIForm_Load();
    QDir::setCurrent(app.StorePath());

    for (const auto& [name, lines] : {std::pair{"assemble_roundtrip_ms", 2000}, {"assemble_roundtrip_30000_lines_ms", 30000}}) {
        QFile source(QStringLiteral("bench.asm"));
        if (!source.open(QIODevice::WriteOnly) || source.write(GeneratedSource(lines)) < 0)
            return 1;
        source.close();
        AsmFile = QStringLiteral("bench.asm");
        window.mnuFileAssemble_Click();   // the first run warms the caches
        SymbolCount = 0;
        const double ms = MeanMs(5, [&] { window.mnuFileAssemble_Click(); });
        // Without the symbols and the panel the figure would mean nothing.
        if (SymbolCount == 0 || window.PanelText(3) != QStringLiteral("Symbols: bench.lst") || QFile::exists("bench.err"))
            return 2;
        Print(name, ms, "ms");
    }
    return 0;
}
