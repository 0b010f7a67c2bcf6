#include "engine/code/S19Download.h"

#include "engine/code/S1Record.h"
#include "engine/state/TargetState.h"
#include "engine/source/SourceRecords.h"

#include <QFile>
#include <QFileInfo>

namespace {
DownloadResult Failure(const QString& text)
{
    return {DownloadResult::Kind::Failed, text, false};
}
}  // namespace

DownloadResult DownloadMachineCode(TargetLink& link, const QString& path, DownloadView& view)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return Failure(file.errorString());

    // The simulated erase leaves BoardConnected alone, and a port that
    // failed at start-up left it false: the simulator is always there.
    if (TargetMode == SimulatorMode)
        link.FindBoard();
    link.FlashErase();
    if (!BoardConnected)
        return {DownloadResult::Kind::NoTarget, {}, false};

    DownloadResult result;
    const qint64 length = file.size();
    int lineNumber = 0;
    while (!file.atEnd() && !view.CancelRequested()) {
        const QByteArray line = file.readLine();
        ++lineNumber;
        if (line.isEmpty() && file.error() != QFileDevice::NoError)
            return Failure(file.errorString());
        view.ShowProgress(DownloadProgress(file.pos(), length));

        S1Record record = ReadS1Line(line);
        if (record.kind == S1Record::Kind::NoData)
            return Failure(QStringLiteral("S1 record without data in line %1").arg(lineNumber));
        if (record.kind == S1Record::Kind::Truncated)
            return Failure(QStringLiteral("S1 record shorter than its byte count in line %1").arg(lineNumber));
        if (record.kind == S1Record::Kind::Good) {
            // The monitor and the simulator would both wrap into the save area at $0000.
            if (!S1RecordFits(record))
                return Failure(QStringLiteral("S1 record past $FFFF in line %1").arg(lineNumber));
            const auto count = static_cast<std::int16_t>(record.Data.size());
            view.ShowRecord(record.Address, count);
            link.Programm(record.Address, record.Data, count);
            if (!BoardConnected)
                break;
            result.written = true;
        }
        view.LetEventsRun();
    }
    // A Cancel takes back what the run has written: the program is not set up.
    if (view.CancelRequested())
        result.written = false;
    link.InResetVector(CpuRegisters.PC);
    return result;
}

bool S19FileExists()
{
    return !S19File.isEmpty() && QFileInfo(S19File).isFile();
}
