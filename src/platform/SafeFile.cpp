#include "platform/SafeFile.h"

#include <atomic>
#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

// A symbolic link stays a link: the file it points to is the one replaced.
std::string ResolvedTarget(const std::string& target)
{
    struct stat link {};
    if (lstat(target.c_str(), &link) != 0 || !S_ISLNK(link.st_mode))
        return target;
    char resolved[PATH_MAX];
    return realpath(target.c_str(), resolved) ? std::string(resolved) : target;
}

std::string FolderOf(const std::string& path)
{
    const std::size_t slash = path.rfind('/');
    return slash == std::string::npos ? std::string(".") : slash == 0 ? std::string("/") : path.substr(0, slash);
}

// A fresh name beside target: "<target>.<six hex digits>", made by this call alone.
int CreateBeside(const std::string& target, std::string& name)
{
    static std::atomic<unsigned> counter{0};
    for (int attempt = 0; attempt < 100; ++attempt) {
        const unsigned mix = unsigned(getpid()) * 2654435761u ^ unsigned(std::time(nullptr))
                             ^ ++counter * 40503u ^ unsigned(std::clock());
        char suffix[16];
        std::snprintf(suffix, sizeof suffix, ".%06x", mix & 0xFFFFFFu);
        name = target + suffix;
        // 0666 and the umask, as for any new file of the user.
        const int fd = open(name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
        if (fd >= 0 || errno != EEXIST)
            return fd;
    }
    return -1;
}

bool WriteAll(int fd, std::string_view bytes)
{
    while (!bytes.empty()) {
        const ssize_t n = write(fd, bytes.data(), bytes.size());
        if (n < 0 && errno == EINTR)
            continue;
        if (n <= 0) {
            if (n == 0)
                errno = ENOSPC;
            return false;
        }
        bytes.remove_prefix(std::size_t(n));
    }
    return true;
}

// The rename itself reaches the disk with the folder; a folder that cannot be synced is no failure.
void SyncFolder(const std::string& path)
{
    const int fd = open(FolderOf(path).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (fd >= 0) {
        fsync(fd);
        close(fd);
    }
}

}  // namespace

PendingFile::~PendingFile()
{
    Discard();
}

void PendingFile::Discard()
{
    if (!temporary_.empty())
        unlink(temporary_.c_str());
    temporary_.clear();
}

bool PendingFile::Fail(int error)
{
    error_ = std::strerror(error);
    Discard();
    return false;
}

bool PendingFile::Write(const std::string& target, std::string_view bytes)
{
    Discard();
    error_.clear();
    target_ = ResolvedTarget(target);
    struct stat old {};
    const bool replacing = stat(target_.c_str(), &old) == 0;
    if (replacing && S_ISDIR(old.st_mode))
        return Fail(EISDIR);
    const int fd = CreateBeside(target_, temporary_);
    if (fd < 0) {
        const int error = errno;
        temporary_.clear();
        return Fail(error);
    }
    if (replacing) {
        // The old file's permissions and owner stay, as far as the system lets them.
        struct stat made {};
        const bool otherOwner = fstat(fd, &made) == 0 && (made.st_uid != old.st_uid || made.st_gid != old.st_gid);
        if (otherOwner && fchown(fd, old.st_uid, old.st_gid) != 0) {
            // Only the administrator may give a file away: the new file stays the writer's.
        }
        fchmod(fd, old.st_mode & 07777);
    }
    struct stat written {};
    bool ok = WriteAll(fd, bytes);
    // A file system that cannot sync this file says EINVAL: nothing is lost by that.
    ok = ok && (fsync(fd) == 0 || errno == EINVAL);
    if (ok && (fstat(fd, &written) != 0 || written.st_size != off_t(bytes.size()))) {
        ok = false;
        errno = EIO;
    }
    const int error = errno;
    if (close(fd) != 0 && ok)
        return Fail(errno);
    return ok || Fail(error);
}

bool PendingFile::Commit()
{
    if (temporary_.empty())
        return false;
    if (rename(temporary_.c_str(), target_.c_str()) != 0)
        return Fail(errno);
    temporary_.clear();
    SyncFolder(target_);
    return true;
}

std::string WriteFileSafely(const std::string& path, std::string_view bytes)
{
    PendingFile file;
    if (file.Write(path, bytes))
        file.Commit();
    return file.Error();
}
