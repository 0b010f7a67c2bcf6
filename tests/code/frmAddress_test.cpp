#include <QtTest>

#include "code/SymbolTable.h"
#include "code/frmAddress.h"
#include "support/MainFormFixture.h"
#include "support/ModalPlayer.h"
#include "views/EntryFields.h"

class frmAddressTest : public QObject {
    Q_OBJECT
    MainFormFixture f;

private slots:
    void init()
    {
        SymbolTable = {{0x1000, 2, {0x86, 0x01}, "START", "START LDAA #1"},
                       {0x2000, 0, {}, "start", ""},   // stored in lower case: never found
                       {0x5555, 0, {}, "1234", ""}};   // reads as a number: never looked up
        SymbolCount = 3;
        f.Start();
        f.boxes.boxes.clear();
        EntryAccepted = false;
    }

    void numbersWinOverSymbolsAndASymbolIsAcceptedByEnter()
    {
        QCOMPARE(AddressFromText("$1000"), 0x1000);
        QCOMPARE(AddressFromText("1234"), 1234);
        QCOMPARE(AddressFromText("NOWHERE"), -1);
        ModalPlayer player([&](QDialog& dialog) {
            QTest::keyClicks(dialog.findChild<QLineEdit*>("txtAdr"), "Start");
            QTest::keyClick(dialog.findChild<QLineEdit*>("txtAdr"), Qt::Key_Return);
        });
        frmAddress::ShowModal();
        QVERIFY(EntryAccepted);
        QCOMPARE(EntryValue, 0x1000);
        QVERIFY(f.boxes.boxes.isEmpty());
    }

    void emptyAndInvalidTextKeepTheDialogOpen()
    {
        QList<bool> openAfter;
        ModalPlayer player([&](QDialog& dialog) {
            TypeAndPressOK(dialog, "txtAdr", "");
            openAfter << dialog.isVisible();
            TypeAndPressOK(dialog, "txtAdr", "$10000");
            openAfter << dialog.isVisible() << dialog.findChild<QLineEdit*>("txtAdr")->text().isEmpty();
            QTest::keyClick(&dialog, Qt::Key_Escape);
        });
        frmAddress::ShowModal();
        QCOMPARE(openAfter, (QList<bool>{true, true, true}));
        QCOMPARE(f.boxes.boxes.size(), 1);
        QCOMPARE(f.boxes.boxes[0].text, QString("Invalid Address !"));
        QVERIFY(!EntryAccepted);
    }
};

QTEST_MAIN(frmAddressTest)
#include "frmAddress_test.moc"
