// Points the settings store at a fresh temporary folder for the life of the
// object, so a test starts from an empty store and leaves the user's alone.
#pragma once

#include <QString>
#include <QTemporaryDir>

class TestSettings {
public:
    TestSettings();
    ~TestSettings();
    // The INI file that the store writes.
    QString FilePath() const;

private:
    QTemporaryDir dir_;
};
