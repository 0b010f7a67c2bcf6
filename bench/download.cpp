// Downloading a machine-code file that fills the whole 8 KB flash ($E000 to
// $FFFF, 32 bytes a record): in simulator mode, and to hc11board sending at
// the wire's pace. For the board the time is set against the bare wire time
// of every byte that crossed the line in both directions at 38400 bit/s
// (the host's frames and the monitor's answers), and, since the
// pseudo-terminal carries the host's bytes at once, against the answers alone.
#include <QDir>
#include <QElapsedTimer>
#include <QProcess>
#include <QTemporaryDir>
#include <cstdio>

#include "BenchFigures.h"
#include "HeadlessApp.h"
#include "engine/state/TargetState.h"
#include "platform/widgets/MsgBox.h"
#include "platform/QtSerialDevice.h"
#include "platform/SettingsStore.h"
#include "engine/source/SourceRecords.h"
#include "ui/main/frmMain.h"

namespace {
constexpr double ByteMs = 10 * 1000.0 / 38400;
constexpr int RecordSize = 32;

QByteArray FlashImage()
{
    QByteArray text = "S00600004844521B\n";
    for (int address = FlashAddress; address < 0x10000; address += RecordSize) {
        std::vector<std::uint8_t> data(RecordSize);
        for (int i = 0; i < RecordSize; ++i)
            data[std::size_t(i)] = std::uint8_t((address + i) * 7 + 3);
        if (address + RecordSize == 0x10000) {   // the reset vector: $E000
            data[RecordSize - 2] = 0xE0;
            data[RecordSize - 1] = 0x00;
        }
        int sum = RecordSize + 3 + (address >> 8) + (address & 0xFF);
        QByteArray line = QByteArray("S1") + QByteArray::number(RecordSize + 3, 16).rightJustified(2, '0') +
                          QByteArray::number(address, 16).rightJustified(4, '0');
        for (const std::uint8_t byte : data) {
            line += QByteArray::number(byte, 16).rightJustified(2, '0');
            sum += byte;
        }
        line += QByteArray::number((0xFF - sum) & 0xFF, 16).rightJustified(2, '0');
        text += line.toUpper() + "\n";
    }
    return text + "S9030000FC\n";
}

// The real port, counting what crosses it.
class CountingDevice : public SerialDevice {
public:
    explicit CountingDevice(const QString& path) : port_(path) {}
    bool Open(QString& error) override
    {
        port_.DataArrived = [this] { if (DataArrived) DataArrived(); };
        port_.LineLost = [this] { if (LineLost) LineLost(); };
        return port_.Open(error);
    }
    void Close() override { port_.Close(); }
    QByteArray ReadAvailable() override
    {
        const QByteArray bytes = port_.ReadAvailable();
        Received += bytes.size();
        return bytes;
    }
    void WaitForInput(std::chrono::milliseconds most) override { port_.WaitForInput(most); }
    void Write(const QByteArray& bytes) override
    {
        Sent += bytes.size();
        port_.Write(bytes);
    }
    std::optional<bool> Cts() override { return port_.Cts(); }

    static inline qint64 Sent = 0;
    static inline qint64 Received = 0;

private:
    QtSerialDevice port_;
};

struct BoardRun {
    double ms = 0;            // one download
    double wireMs = 0;        // its bytes, both ways, at 38400 bit/s
    double replyWireMs = 0;   // the board's answers alone
};

// Downloads S19File to a fresh hc11board started with arguments.
BoardRun DownloadToBoard(const QStringList& arguments, const QString& folder, int& failures)
{
    constexpr int Rounds = 3;
    BoardRun run;
    QProcess board;
    const QString path = StartBoard(board, arguments);
    if (board.state() == QProcess::NotRunning) {
        ++failures;
        return run;
    }
    {
        frmMain form;
        form.MSComm.SetDeviceFactory(
            [path](int) -> std::unique_ptr<SerialDevice> { return std::make_unique<CountingDevice>(path); });
        form.MDIForm_Load();
        QDir::setCurrent(folder);
        ProgramBase = 0xE000;
        form.Link().InProgram();   // the board notices its host
        CountingDevice::Sent = CountingDevice::Received = 0;
        run.ms = MeanMs(Rounds, [&] { form.FileDownload(); });
        run.wireMs = double(CountingDevice::Sent + CountingDevice::Received) * ByteMs / Rounds;
        run.replyWireMs = double(CountingDevice::Received) * ByteMs / Rounds;
        ProgramBase = 0xFF00;
        form.Link().InProgram();
        if (ProgramBuffer[0xFE] != 0xE0 || CpuRegisters.PC != 0xE000)
            ++failures;
        form.MSComm.SetPortOpen(false);
    }
    board.terminate();
    board.waitForFinished(5000);
    return run;
}

}  // namespace

int main(int argc, char* argv[])
{
    HeadlessApp app(argc, argv);
    QTemporaryDir work;
    int failures = 0;
    SetMsgBoxHandler([&failures](const QString& text, int, const QString&) {
        std::fprintf(stderr, "%s\n", qPrintable(text));
        ++failures;
        return MbResultOk;
    });
    {
        QFile file(work.filePath("flash.s19"));
        if (!file.open(QIODevice::WriteOnly))
            return 1;
        file.write(FlashImage());
    }
    S19File = QStringLiteral("flash.s19");

    double simMs = 0;
    {
        SaveSetting("Settings", "SimEnabled", "True");
        frmMain form;
        form.MDIForm_Load();
        QDir::setCurrent(work.path());
        form.FileDownload();   // the first run builds the dialog's resources
        simMs = MeanMs(20, [&] { form.FileDownload(); });
        if (TargetMemory[0xE000] != 3 || CpuRegisters.PC != 0xE000)
            return 1;
    }

    SaveSetting("Settings", "SimEnabled", "False");
    const BoardRun paced = DownloadToBoard({QStringLiteral("--paced")}, work.path(), failures);
    const BoardRun unpaced = DownloadToBoard({}, work.path(), failures);
    if (failures != 0)
        return 1;

    Print("download_sim_ms", simMs, "ms");
    Print("download_board_ms", paced.ms, "ms");
    Print("download_board_wire_ms", paced.wireMs, "ms");
    Print("download_board_wire_ratio", paced.ms / paced.wireMs, "x");
    Print("download_board_reply_wire_ratio", paced.ms / paced.replyWireMs, "x");
    Print("download_board_unpaced_ms", unpaced.ms, "ms");
    return 0;
}
