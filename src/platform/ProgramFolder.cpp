#include "platform/ProgramFolder.h"

#include <QCoreApplication>

namespace {
QString& Override()
{
    static QString folder;
    return folder;
}
}  // namespace

void SetProgramFolder(const QString& folder)
{
    Override() = folder;
}

QString ProgramFolder()
{
    return Override().isEmpty() ? QCoreApplication::applicationDirPath() : Override();
}
