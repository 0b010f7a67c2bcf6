// A temporary folder that becomes the current folder, as a file dialog or
// a start from a terminal there would leave it, and the previous one again
// at the end.
#pragma once

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

struct WorkFolder {
    QTemporaryDir dir;
    QString previous = QDir::currentPath();

    void Enter() const { QDir::setCurrent(dir.path()); }
    ~WorkFolder() { QDir::setCurrent(previous); }

    QString Path(const QString& name) const { return dir.filePath(name); }
    bool Write(const QString& name, const QByteArray& text) const
    {
        QFile file(Path(name));
        return file.open(QIODevice::WriteOnly) && file.write(text) == text.size();
    }
    // The file's bytes; "<unreadable>" when it cannot be read.
    QByteArray Read(const QString& name) const
    {
        QFile file(Path(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("<unreadable>");
    }
};
