#include <QtTest>

#include "code/SymbolTable.h"
#include "code/frmAddress.h"
#include "support/MainFormFixture.h"
#include "support/ModalPlayer.h"
#include "views/EntryFields.h"

class frmAddressTest : public QObject {
    Q_OBJECT
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

    void numbersWinOverSymbols()
    {
        QCOMPARE(AddressFromText("1000"), 1000);
        QCOMPARE(AddressFromText("$1000"), 0x1000);
        QCOMPARE(AddressFromText("1234"), 1234);
        QCOMPARE(AddressFromText("START"), 0x1000);
        QCOMPARE(AddressFromText("NOWHERE"), -1);
    }

    void aSymbolIsAcceptedByEnter()
    {
        QVariant topic;
        ModalPlayer player([&](QDialog& dialog) {
            topic = dialog.property("HelpContextID");
            QTest::keyClicks(dialog.findChild<QLineEdit*>("txtAdr"), "Start");
            QTest::keyClick(dialog.findChild<QLineEdit*>("txtAdr"), Qt::Key_Return);
        });
        frmAddress::HelpContextID = 192;   // as the stack window asks
        frmAddress::ShowModal();
        QCOMPARE(topic.toInt(), 192);
        QVERIFY(EntryAccepted);
        QCOMPARE(EntryValue, 0x1000);
        QVERIFY(f.boxes.boxes.isEmpty());
    }

    void emptyAndInvalidTextKeepTheDialogOpen()
    {
        QList<bool> openAfter;
        QString left;
        ModalPlayer player([&](QDialog& dialog) {
            TypeAndPressOK(dialog, "txtAdr", "");
            openAfter << dialog.isVisible();
            TypeAndPressOK(dialog, "txtAdr", "$10000");
            openAfter << dialog.isVisible();
            left = dialog.findChild<QLineEdit*>("txtAdr")->text();
            QTest::keyClick(&dialog, Qt::Key_Escape);
        });
        frmAddress::ShowModal();
        QCOMPARE(openAfter, (QList<bool>{true, true}));
        QCOMPARE(left, QString());
        QCOMPARE(f.boxes.boxes.size(), 1);
        QCOMPARE(f.boxes.boxes[0].text, QString("Invalid Address !"));
        QCOMPARE(f.boxes.boxes[0].caption, QString("Orvane - Go To Address"));
        QCOMPARE(f.boxes.boxes[0].style, int(MbInformation));
        QVERIFY(!EntryAccepted);
    }

private:
    MainFormFixture f;
};

QTEST_MAIN(frmAddressTest)
#include "frmAddress_test.moc"
