#include "platform/widgets/Fonts.h"

#include <QFontInfo>

class FontsTest : public QObject {
    Q_OBJECT
private slots:
    // Whatever fonts the machine has, a name it lacks resolves to a fixed-pitch face.
    void missingNamedFontFallsBackToFixedPitch()
    {
        QVERIFY(QFontInfo(FixedPitchFont("No Such Font At All", 9, true, false)).fixedPitch());
    }
};

QTEST_MAIN(FontsTest)
#include "Fonts_test.moc"
