#include "engine/source/AssembleRun.h"

#include <QCoreApplication>
#include <QDir>
#include <QEventLoop>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>
#include <QTimer>

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
    QFile source(sourcePath);
    if (!source.copy(Work(Source))) {
        outcome.problems << QStringLiteral("Can't copy ") + sourcePath + QStringLiteral(" to ") + Work(Source)
                                + QStringLiteral(": ") + source.errorString() + QStringLiteral(" !");
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
    {
        // The wait ends on the batch's end, the time limit, or Cancel.
        limit.start(timeoutMs);
        wait_ = &wait;
        emit Started();
        if (batch.state() != QProcess::NotRunning && !cancelRequested_)
            wait.exec();
        wait_ = nullptr;
        emit Ended();
    }
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

    // A run that leaves no new file leaves no old one either.
    for (const QString& old : {listing, errors, machineCode}) {
        if (!RemoveIfThere(old))
            outcome.problems << QStringLiteral("Can't delete ") + old + QStringLiteral(" !");
    }
    const auto moveBack = [&](const QString& name, const QString& to) {
        if (!QFileInfo::exists(Work(name)))
            return false;
        QFile result(Work(name));
        if (result.rename(to))
            return true;
        outcome.problems << QStringLiteral("Can't move ") + Work(name) + QStringLiteral(" to ") + to
                                + QStringLiteral(": ") + result.errorString() + QStringLiteral(" !");
        return false;
    };
    outcome.machineCodeArrived = moveBack(MachineCode, machineCode);
    outcome.listingArrived = moveBack(Listing, listing);
    outcome.errorsArrived = moveBack(Errors, errors);
    Clean(workFolder_);
    return outcome;
}
