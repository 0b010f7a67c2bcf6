// What the program keeps between runs: the section "Settings" of the per-user
// store (truth values as "True"/"False", numbers in plain decimal) and the
// placement defaults of the section "Windows".
#pragma once


#include <QString>
#include <cstdint>

struct FontRecord {
    QString Name;
    float Size = 0;
    bool Bold = false;
    bool Italic = false;
};

// "Bold Italic", "Bold", "Italic" or "Regular".
QString FontStyleText(const FontRecord& font);

extern std::int16_t COMPort;    // serial port number 1 to 4
extern FontRecord ScreenFont;   // the editors' font
extern FontRecord PrintFont;    // the printer's font

// Keys of the section "Settings". A missing key, or a value that does not
// convert, gives the default.
bool GetFlagSetting(const QString& key, bool def);
void SaveFlagSetting(const QString& key, bool value);
double GetNumberSetting(const QString& key, double def);
void SaveNumberSetting(const QString& key, double value);
QString GetTextSetting(const QString& key, const QString& def);
void SaveTextSetting(const QString& key, const QString& value);

// "COMPort" and the eight font keys, into and out of COMPort, ScreenFont, PrintFont.
void LoadPortAndFonts();
void SavePortAndFonts();
