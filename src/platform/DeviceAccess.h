// Serial devices that exist but are not this user's to open: on Linux they
// belong to a group (usually "dialout"), and the fix is to join it.
#pragma once

#include <QString>

// True when the device at path exists and this process may not both read and
// write it, judged by the effective user and groups as opening judges it.
bool AccessRefused(const QString& path);

// The name of the group that owns the file at path; empty when there is no
// such file or the group has no name.
QString OwningGroup(const QString& path);

// What opening a refused device reports: "No permission to open /dev/ttyUSB0.
// Add your user to the group dialout, which owns it (sudo usermod -aG dialout
// $USER), then log in again".
QString PermissionAdvice(const QString& path);

// A label of the device at path, with the same in a few words behind it when
// the device is refused: "/dev/ttyUSB0 (no permission: join the group dialout)".
QString WithAccessNote(const QString& label, const QString& path);
