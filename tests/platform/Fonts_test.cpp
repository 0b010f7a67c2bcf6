#include <QtTest>

#include "platform/Fonts.h"

#include <QFontInfo>
#include <QFontMetrics>

class FontsTest : public QObject {
    Q_OBJECT
private slots:
    // Whatever fonts the machine has: what the font resolves to, in bold and
    // italic too, draws every character the same width.
    void missingNamedFontFallsBackToFixedPitch()
    {
        for (const char* name : {"Fixedsys", "Terminal", "Courier New", "No Such Font At All"}) {
            const QFont font = FixedPitchFont(name, 9, true, false);
            QVERIFY2(QFontInfo(font).fixedPitch(), name);
            const QFontMetrics metrics(font);
            QVERIFY2(metrics.horizontalAdvance(u'i') == metrics.horizontalAdvance(u'W'), name);
            QCOMPARE(font.pointSizeF(), 9.0);
            QVERIFY(font.bold());
            QVERIFY(QFontInfo(FixedPitchFont(name, 12, false, true)).fixedPitch());
        }
    }
};

QTEST_MAIN(FontsTest)
#include "Fonts_test.moc"
