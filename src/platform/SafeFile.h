// Files written so that no failure costs the old content: the bytes go to a
// fresh file beside the target, reach the disk and are counted there, and
// only then does the new file take the target's name. Plain C++ on the
// system's calls, so that the command-line assembler writes the same way;
// the IDE uses the Qt forms at the end.
#pragma once

#include <string>
#include <string_view>

class PendingFile {
public:
    PendingFile() = default;
    PendingFile(const PendingFile&) = delete;
    PendingFile& operator=(const PendingFile&) = delete;
    // A file that was written but not committed goes again.
    ~PendingFile();

    // Writes bytes to a new file in target's folder (a symbolic link's
    // target's), with the old file's permissions and owner, synced to the disk
    // and its size checked. False on any failure, with nothing left behind;
    // a folder in the target's place fails here already.
    bool Write(const std::string& target, std::string_view bytes);
    // The written file takes the target's name.
    bool Commit();
    // Why Write or Commit failed, in the system's words.
    const std::string& Error() const { return error_; }

private:
    bool Fail(int error);
    void Discard();

    std::string target_, temporary_, error_;
};

// Write and Commit in one: empty on success, else the system's reason.
std::string WriteFileSafely(const std::string& path, std::string_view bytes);

#ifdef QT_CORE_LIB
#include <QByteArray>
#include <QFile>
#include <QString>

// The same for Qt's texts: paths in the file system's encoding, the reason in the platform's words.
inline std::string LocalPath(const QString& path)
{
    return QFile::encodeName(path).toStdString();
}

inline bool WriteFileSafely(const QString& path, const QByteArray& bytes, QString& error)
{
    error = QString::fromLocal8Bit(WriteFileSafely(LocalPath(path), std::string_view(bytes.constData(), bytes.size())));
    return error.isEmpty();
}
#endif
