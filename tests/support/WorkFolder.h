// A temporary folder that becomes the current folder, as a file dialog would
// leave it, and the previous one again at the end. Start-up moves to the
// program's folder, so a test calls Enter after it.
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
