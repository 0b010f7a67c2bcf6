// The memory window's refresh: one InMemory of 1024 bytes and the redraw of
// a 64-row page, in simulator mode, and on hc11board at the wire's pace
// beside the time its four 256-byte reads take on a 38400 bit/s line.
#include <QMdiSubWindow>
#include <QProcess>
#include <QTableView>

#include "BenchFigures.h"
#include "HeadlessApp.h"
#include "engine/state/TargetState.h"
#include "platform/widgets/ModalDialog.h"
#include "platform/widgets/MsgBox.h"
#include "platform/QtSerialDevice.h"
#include "platform/SettingsStore.h"
#include "ui/views/frmMemory.h"
#include "ui/main/frmMain.h"

namespace {
// Four "R" frames, each answered with an ACK, 256 bytes and a checksum.
constexpr double WirePageMs = 4 * 258 * 10 * 1000.0 / 38400;

// The memory window open with 64 rows; nullptr if it could not be.
frmMemory* OpenFullPage(frmMain& form)
{
    form.resize(1200, 1500);
    form.show();
    form.Menu("mnuViewMemory")->trigger();
    QCoreApplication::processEvents();   // its address dialog, cancelled: $0000
    auto* memory = qobject_cast<frmMemory*>(form.Window("frmMemory"));
    if (!memory)
        return nullptr;
    memory->parentWidget()->resize(1000, 1400);
    QCoreApplication::processEvents();
    return memory->Grid.Rows() == 64 ? memory : nullptr;
}

double RefreshMs(frmMemory& memory, int rounds)
{
    return MeanMs(rounds, [&] {
        memory.mnuMemoryRefresh();
        memory.gridMemory->viewport()->repaint();
    });
}
}  // namespace

int main(int argc, char* argv[])
{
    HeadlessApp app(argc, argv);
    int failures = 0;
    CountMessageBoxesAsFailures(failures);
    SetModalHook([](QDialog&) {});

    double simulatorMs = 0;
    {
        SaveSetting("Settings", "SimEnabled", "True");
        frmMain form;
        form.MDIForm_Load();
        frmMemory* memory = OpenFullPage(form);
        if (!memory)
            return 1;
        RefreshMs(*memory, 20);   // warm-up
        simulatorMs = RefreshMs(*memory, 200);
        form.UnloadWindow("frmMemory");
    }

    double boardMs = 0;
    {
        SaveSetting("Settings", "SimEnabled", "False");
        QProcess board;
        const QString path = StartBoard(board, {QStringLiteral("--paced")});
        if (board.state() == QProcess::NotRunning)
            return 1;
        {
            frmMain form;
            form.MSComm.SetDeviceFactory(
                [path](int) -> std::unique_ptr<SerialDevice> { return std::make_unique<QtSerialDevice>(path); });
            form.MDIForm_Load();
            frmMemory* memory = OpenFullPage(form);
            if (!memory || !BoardConnected)
                return 1;
            boardMs = RefreshMs(*memory, 8);
            form.UnloadWindow("frmMemory");
            form.MSComm.SetPortOpen(false);
        }
        board.terminate();
        board.waitForFinished(5000);
    }
    if (failures != 0)
        return 1;

    Print("memory_refresh_sim_us", simulatorMs * 1000, "us");
    Print("memory_refresh_board_ms", boardMs, "ms");
    Print("memory_refresh_board_wire_ratio", boardMs / WirePageMs, "");
    return 0;
}
