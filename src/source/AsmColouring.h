// Colouring of assembly source in the editors: the parts of a line by kind,
// and the highlighter that paints them. The text itself is never touched.
#pragma once

#include <QList>
#include <QString>
#include <QSyntaxHighlighter>

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

class AsmHighlighter : public QSyntaxHighlighter {
public:
    explicit AsmHighlighter(QTextDocument* document);

protected:
    void highlightBlock(const QString& text) override;
};
