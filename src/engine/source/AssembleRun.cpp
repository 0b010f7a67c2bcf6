#include "engine/source/AssembleRun.h"

#include "platform/SafeFile.h"
#include "engine/source/SourceFile.h"

#include <QCoreApplication>
#include <QDir>
#include <QEventLoop>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>
#include <QTimer>

#include <deque>
#include <vector>

#ifdef Q_OS_UNIX
#include <csignal>
#include <sys/types.h>
#endif

namespace {
const QString Marker = QStringLiteral("Temp$$$.$$$");
const QString Source = QStringLiteral("Temp$$$.asm");
const QString Listing = QStringLiteral("Temp$$$.lst");
const QString MachineCode = QStringLiteral("Temp$$$.s19");
const QString Errors = QStringLiteral("Temp$$$.err");

// Removes a file if it is there; false only when it is there and stays.
bool RemoveIfThere(const QString& path)
{
    return !QFileInfo::exists(path) || QFile::remove(path);
}
}  // namespace

AssembleRun::AssembleRun(const QString& programFolder, const QString& workFolder)
    : programFolder_(programFolder), workFolder_(workFolder)
{
}

QString AssembleRun::Tool(const QString& name) const
{
    return QDir(programFolder_).filePath(name);
}

QString AssembleRun::Work(const QString& name) const
{
    return QDir(workFolder_).filePath(name);
}

QString AssembleRun::DefaultWorkFolder()
{
    // The runtime folder where the session has one, else the cache: both
    // belong to the user alone. The process number keeps two IDEs apart.
    const QString base = qEnvironmentVariableIsSet("XDG_RUNTIME_DIR")
                             ? QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation)
                             : QStandardPaths::writableLocation(QStandardPaths::GenericCacheLocation)
                                   + QStringLiteral("/orvane");
    const QString name = QStringLiteral("assemble-%1").arg(QCoreApplication::applicationPid());
    return QDir(base).filePath(name);
}

void AssembleRun::Clean(const QString& workFolder)
{
    const QDir folder(workFolder);
    for (const QString& name : {Marker, Source, Listing, Errors, MachineCode})
        RemoveIfThere(folder.filePath(name));
    // The folder itself goes too, unless something else has been put there.
    QDir().rmdir(workFolder);
}

QString AssembleRun::MissingTool() const
{
    for (const QString& tool : {QStringLiteral("AS11.EXE"), QStringLiteral("ASM.BAT")}) {
        if (!QFileInfo(Tool(tool)).isFile())
            return QStringLiteral("Can't Find ") + tool + QStringLiteral(" !");
    }
    return {};
}

void AssembleRun::Cancel()
{
    if (!running_)
        return;
    cancelRequested_ = true;
    if (wait_)
        wait_->quit();
}

AssembleRun::Outcome AssembleRun::Run(const QString& sourcePath, const QString& listing,
                                      const QString& machineCode, const QString& errors, int timeoutMs)
{
    Outcome outcome;
    if (running_) {
        outcome.problems << QStringLiteral("An assembly is already running !");
        return outcome;
    }
    const QString missing = MissingTool();
    if (!missing.isEmpty()) {
        outcome.problems << missing;
        return outcome;
    }
    if (!QDir().mkpath(workFolder_)) {
        outcome.problems << QStringLiteral("Can't create the work folder ") + workFolder_ + QStringLiteral(" !");
        return outcome;
    }
    // No stale result or marker may survive into this run.
    for (const QString& name : {Marker, Source, Listing, Errors, MachineCode}) {
        if (!RemoveIfThere(Work(name))) {
            outcome.problems << QStringLiteral("Can't delete ") + Work(name) + QStringLiteral(" !");
            return outcome;
        }
    }
    // Checked to the last byte like every write: a short copy would be assembled without a word.
    QByteArray source;
    QString error;
    if (!ReadSourceFile(sourcePath, source, error) || !WriteFileSafely(Work(Source), source, error)) {
        outcome.problems << QStringLiteral("Can't copy ") + sourcePath + QStringLiteral(" to ") + Work(Source)
                                + QStringLiteral(": ") + error + QStringLiteral(" !");
        Clean(workFolder_);
        return outcome;
    }

    QProcess batch;
    batch.setWorkingDirectory(workFolder_);
#ifdef Q_OS_UNIX
    // A group of its own, so that a stop reaches the assembler under the batch too.
    batch.setChildProcessModifier([] { setpgid(0, 0); });
#endif
    QEventLoop wait;
    QTimer limit;
    limit.setSingleShot(true);
    bool timedOut = false;
    connect(&batch, &QProcess::finished, &wait, &QEventLoop::quit);
    connect(&limit, &QTimer::timeout, &wait, [&] {
        timedOut = true;
        wait.quit();
    });

    running_ = true;
    cancelRequested_ = false;
    batch.start(Tool(QStringLiteral("ASM.BAT")), {});
    if (!batch.waitForStarted()) {
        running_ = false;
        outcome.problems << batch.errorString() + QStringLiteral(" !");
        Clean(workFolder_);
        return outcome;
    }
    // The wait ends on the batch's end, the time limit, or Cancel.
    limit.start(timeoutMs);
    wait_ = &wait;
    emit Started();
    if (batch.state() != QProcess::NotRunning && !cancelRequested_)
        wait.exec();
    wait_ = nullptr;
    emit Ended();
    running_ = false;

    if (batch.state() != QProcess::NotRunning) {
#ifdef Q_OS_UNIX
        ::kill(-static_cast<pid_t>(batch.processId()), SIGKILL);
#endif
        batch.kill();
        batch.waitForFinished(2000);
        Clean(workFolder_);
        if (timedOut) {
            outcome.status = Status::TimedOut;
            outcome.problems << QStringLiteral("ASM.BAT did not finish within %1 seconds !").arg(timeoutMs / 1000.0);
        } else {
            outcome.status = Status::Cancelled;
        }
        return outcome;
    }
    if (!QFileInfo::exists(Work(Marker))) {
        outcome.status = Status::NoMarker;
        outcome.problems << QStringLiteral("ASM.BAT ended without leaving ") + Marker + QStringLiteral(" !");
        Clean(workFolder_);
        return outcome;
    }
    outcome.status = Status::Finished;
    // Exit status 2: the assembler could not read or write; its words say why.
    if (batch.exitStatus() == QProcess::NormalExit && batch.exitCode() >= 2) {
        const QString said = QString::fromLocal8Bit(batch.readAllStandardError()).trimmed();
        outcome.problems << (said.isEmpty() ? QStringLiteral("AS11.EXE failed !") : said + QStringLiteral(" !"));
    }

    MoveResultsBack({{Listing, listing, &outcome.listingArrived},
                     {MachineCode, machineCode, &outcome.machineCodeArrived},
                     {Errors, errors, &outcome.errorsArrived}},
                    outcome);
    Clean(workFolder_);
    return outcome;
}

void AssembleRun::MoveResultsBack(std::initializer_list<Result> results, Outcome& outcome) const
{
    // Every result is written beside the source under a temporary name
    // first; they take their names only when all of them are on the disk, so
    // a failure leaves the files of the last run as they were.
    std::deque<PendingFile> written;
    std::vector<const Result*> arriving, missing;
    for (const Result& result : results) {
        if (!QFileInfo::exists(Work(result.workName))) {
            missing.push_back(&result);
            continue;
        }
        QByteArray bytes;
        QString error;
        if (!ReadSourceFile(Work(result.workName), bytes, error)) {
            outcome.problems << QStringLiteral("Can't read ") + Work(result.workName) + QStringLiteral(": ") + error
                                    + QStringLiteral(" !");
            return;
        }
        PendingFile& file = written.emplace_back();
        if (!file.Write(LocalPath(result.target), std::string_view(bytes.constData(), bytes.size()))) {
            outcome.writeError = QString::fromLocal8Bit(file.Error());
            return;
        }
        arriving.push_back(&result);
    }
    // A run that leaves no new file leaves no old one either.
    for (const Result* result : missing) {
        if (!RemoveIfThere(result->target))
            outcome.problems << QStringLiteral("Can't delete ") + result->target + QStringLiteral(" !");
    }
    for (std::size_t i = 0; i < written.size(); ++i) {
        if (!written[i].Commit()) {
            outcome.writeError = QString::fromLocal8Bit(written[i].Error());
            return;
        }
        *arriving[i]->arrived = true;
    }
}
