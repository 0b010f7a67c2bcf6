// Colouring of assembly source in the editors: the parts of a line by kind.
// The editors' painter is ui/source/EditorColouring.h.
#pragma once

#include <QList>
#include <QString>

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
