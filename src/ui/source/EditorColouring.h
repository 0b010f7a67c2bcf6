// The painter of assembly colouring in an editor's text control.
#pragma once

#include <QObject>

class QPlainTextEdit;

// Paints the parts of the lines of a text control in their colours. Lines
// are coloured as they come into view and again after each change, so that
// opening a long file does not pay for lines nobody has looked at yet.
class AsmColourer : public QObject {
public:
    explicit AsmColourer(QPlainTextEdit* text);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void TextChanged(int from, int removed, int added);
    void ColourVisibleLines();

    QPlainTextEdit* text_;
    bool colouring_ = false;
};
