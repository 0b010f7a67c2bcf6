// One run of the external assembler: the source is copied under the fixed
// name Temp$$$.asm into a work folder of this user and this process, ASM.BAT
// (beside the program) is started there, and once it has left its marker
// Temp$$$.$$$ the listing, machine code and error file are written back
// beside the source under its base name, all of them or none. The program's
// folder is never written, so an installed copy and two IDEs at once both work.
#pragma once

#include <QObject>

class QEventLoop;
#include <QString>
#include <QStringList>

#include <initializer_list>

class AssembleRun : public QObject {
    Q_OBJECT
public:
    enum class Status {
        Finished,        // the batch left its marker; see the Arrived flags
        NotStarted,      // a missing tool, work folder or copy: nothing was run
        TimedOut,        // no marker before the time limit: the batch was stopped
        Cancelled,       // Cancel during the wait: the batch was stopped
        NoMarker,        // the batch ended without its marker
    };

    struct Outcome {
        Status status = Status::NotStarted;
        // For "Orvane - Assemble Error": why the run did not finish, or the
        // files that could not be read or deleted, or what the assembler said
        // when it could not read or write (its exit status 2). Empty when all
        // went well.
        QStringList problems;
        // For "Orvane - Write Error": why the results could not be put
        // beside the source, in the system's words. The files there are then
        // as they were.
        QString writeError;
        bool listingArrived = false;
        bool machineCodeArrived = false;
        bool errorsArrived = false;
    };

    // programFolder holds AS11.EXE and ASM.BAT; workFolder is where the
    // Temp$$$ files live (created when missing).
    AssembleRun(const QString& programFolder, const QString& workFolder);

    // Assembles sourcePath into listing, machineCode and errors (full paths,
    // beside the source). Waits, with the events of the windows let through,
    // until the batch ends, Cancel is called or timeoutMs has passed; between
    // Started and Ended the window side keeps the user's input away.
    Outcome Run(const QString& sourcePath, const QString& listing, const QString& machineCode,
                const QString& errors, int timeoutMs = 10000);

    // "Can't Find AS11.EXE !" or "Can't Find ASM.BAT !" when a tool is not
    // in the program's folder, else empty.
    QString MissingTool() const;

    // Stops the batch of a run that is waiting; the run returns Cancelled.
    void Cancel();
    bool Running() const { return running_; }

    // The work folder of this user and this process, in the user's runtime
    // or cache folder: ".../assemble-<pid>".
    static QString DefaultWorkFolder();
    // Removes the files a run may have left in workFolder (Temp$$$.*), and
    // the folder when nothing else is in it.
    static void Clean(const QString& workFolder);

signals:
    // The batch has been started; a test or the window may cancel from here.
    void Started();
    // The wait is over, whatever ended it.
    void Ended();

private:
    struct Result {
        QString workName;   // in the work folder
        QString target;     // beside the source
        bool* arrived;
    };
    void MoveResultsBack(std::initializer_list<Result> results, Outcome& outcome) const;
    QString Tool(const QString& name) const;
    QString Work(const QString& name) const;

    QString programFolder_;
    QString workFolder_;
    QEventLoop* wait_ = nullptr;
    bool running_ = false;
    bool cancelRequested_ = false;
};
