// Colouring of assembly source in the editors: the parts of a line by kind,
// and the highlighter that paints them. The text itself is never touched.
#pragma once

#include <QList>
#include <QString>
#include <QObject>

class QPlainTextEdit;

enum class AsmPart { Label, Mnemonic, Directive, Number, String, Comment };

struct AsmSpan {
    AsmPart part;
    qsizetype start;
    qsizetype length;
    bool operator==(const AsmSpan&) const = default;
};

// The coloured parts of one line, left to right; what is not named (blanks,
// symbols in operands, operators) keeps the plain colour. Mnemonics and
// directives are the assembler's own keywords, aliases included.
QList<AsmSpan> ColourParts(const QString& line);

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
