#include <QtTest>

#include "platform/Fonts.h"

#include <QFontInfo>

class FontsTest : public QObject {
    Q_OBJECT
private slots:
    void missingNamedFontFallsBackToFixedPitch()
    {
        for (const char* name : {"Fixedsys", "Terminal", "Courier New", "No Such Font At All"}) {
            const QFont font = FixedPitchFont(name, 9, true, false);
            QVERIFY2(QFontInfo(font).fixedPitch(), name);
            QCOMPARE(font.pointSizeF(), 9.0);
            QVERIFY(font.bold());
        }
    }
};

QTEST_MAIN(FontsTest)
#include "Fonts_test.moc"
