// From the Assemble command to symbols loaded and panel 3 updated, in
// simulator mode: the copy into the work folder, ASM.BAT and AS11.EXE, the
// moves back, the listing read. For a 2,000-line and a 30,000-line source.
#include <QDir>
#include <QFile>

#include "BenchFigures.h"
#include "HeadlessApp.h"
#include "engine/code/SymbolTable.h"
#include "platform/widgets/MsgBox.h"
#include "platform/ProgramFolder.h"
#include "platform/SettingsStore.h"
#include "engine/source/SourceRecords.h"
#include "ui/main/frmMain.h"

namespace {
// Routines of ten lines each, as people write them: comments, an equate, a
// blank line, loads and stores, a table, a branch back; 12 bytes of code.
QByteArray GeneratedSource(int lines)
{
    QByteArray text = " ORG $1000\n";
    for (int n = 1; text.count('\n') < lines; ++n) {
        text += QStringLiteral("* routine %1\n"
                               "R%1 LDX #$1000\t; the register block\n"
                               " LDAA 4,X\n"
                               " STAA $40\n"
                               "C%1 EQU $7F\n"
                               "\n"
                               " BNE R%1\n"
                               "T%1 FCB 1,C%1\n"
                               " RTS\n"
                               "* end of routine %1\n").arg(n).toLatin1();
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
