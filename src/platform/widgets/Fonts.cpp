#include "platform/widgets/Fonts.h"

#include <QFontDatabase>
#include <QFontInfo>
#include <QStringList>

namespace {
QFont Styled(QFont font, double pointSize, bool bold, bool italic)
{
    font.setPointSizeF(pointSize > 0 ? pointSize : 9);
    font.setBold(bold);
    font.setItalic(italic);
    return font;
}

// What the font really resolves to with its size and style: a missing family,
// or a missing bold face, is silently replaced by whatever the system matches.
bool ResolvesFixedPitch(const QFont& font)
{
    return QFontInfo(font).fixedPitch();
}
}  // namespace

QFont FixedPitchFont(const QString& name, double pointSize, bool bold, bool italic)
{
    QFont font = Styled(QFont(name), pointSize, bold, italic);
    if (ResolvesFixedPitch(font))
        return font;
    QFont fallback = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    fallback.setStyleHint(QFont::TypeWriter);
    font = Styled(fallback, pointSize, bold, italic);
    if (ResolvesFixedPitch(font))
        return font;
    // The system's choice resolved to a proportional face: take the first
    // installed family that really is fixed-pitch in this size and style.
    for (const QString& family : QFontDatabase::families()) {
        if (!QFontDatabase::isFixedPitch(family))
            continue;
        QFont candidate = Styled(QFont(family), pointSize, bold, italic);
        if (ResolvesFixedPitch(candidate))
            return candidate;
    }
    return font;   // a system without any fixed-pitch face
}
