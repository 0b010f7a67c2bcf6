#include "platform/Fonts.h"

#include <QFontDatabase>
#include <QFontInfo>

QFont FixedPitchFont(const QString& name, double pointSize, bool bold, bool italic)
{
    QFont font(name);
    // A missing family is silently replaced by a proportional default; detect that.
    if (!QFontInfo(font).fixedPitch())
        font = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    font.setPointSizeF(pointSize > 0 ? pointSize : 9);
    font.setBold(bold);
    font.setItalic(italic);
    return font;
}
