// Prints a source document on a paged device (a printer or a PDF file) in
// the printer font, laid out by the engine's page layout.
#pragma once

#include <QString>

class QFont;
class QPagedPaintDevice;

// Prints the document on the device in the font; copies times when the device
// cannot make copies itself. False if the device could not be opened for painting.
bool PrintSource(const QString& title, const QString& text, const QFont& font, QPagedPaintDevice& device,
                 int copies = 1);
