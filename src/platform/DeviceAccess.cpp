#include "platform/DeviceAccess.h"

#include <QFile>
#include <fcntl.h>
#include <grp.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {
// The group named in advice; the usual owner of serial devices when the real
// one can't be told.
QString GroupToJoin(const QString& path)
{
    const QString group = OwningGroup(path);
    return group.isEmpty() ? QStringLiteral("dialout") : group;
}
}  // namespace

bool AccessRefused(const QString& path)
{
    const QByteArray name = QFile::encodeName(path);
    // AT_EACCESS: the effective ids, which open() uses, not the real ones.
    return ::faccessat(AT_FDCWD, name.constData(), F_OK, AT_EACCESS) == 0 &&
           ::faccessat(AT_FDCWD, name.constData(), R_OK | W_OK, AT_EACCESS) != 0;
}

QString OwningGroup(const QString& path)
{
    struct stat info {};
    if (::stat(QFile::encodeName(path).constData(), &info) != 0)
        return {};
    const group* owner = ::getgrgid(info.st_gid);
    return owner && owner->gr_name ? QString::fromLocal8Bit(owner->gr_name) : QString();
}

QString PermissionAdvice(const QString& path)
{
    const QString group = GroupToJoin(path);
    return QStringLiteral("No permission to open %1. Add your user to the group %2, which owns it "
                          "(sudo usermod -aG %2 $USER), then log in again")
        .arg(path, group);
}

QString WithAccessNote(const QString& label, const QString& path)
{
    if (!AccessRefused(path))
        return label;
    return QStringLiteral("%1 (no permission: join the group %2)").arg(label, GroupToJoin(path));
}
