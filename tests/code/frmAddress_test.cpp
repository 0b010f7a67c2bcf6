#include <QtTest>

#include "code/SymbolTable.h"
#include "code/frmAddress.h"
#include "support/MainFormFixture.h"
#include "support/ModalPlayer.h"
#include "views/EntryFields.h"

#include <QLabel>

namespace {
void LoadTable()
{
    SymbolTable = {{0x1000, 2, {0x86, 0x01}, "START", "START LDAA #1"},
                   {0x2000, 0, {}, "start", ""},     // stored in lower case: never found
                   {0x5555, 0, {}, "1234", ""},       // reads as a number: never looked up
                   {0x3000, 0, {}, "START", ""}};     // defined twice: the first wins
    SymbolCount = static_cast<std::int16_t>(SymbolTable.size());
}
}  // namespace

class frmAddressTest : public QObject {
    Q_OBJECT
private slots:
    void init() { LoadTable(); }
    void cleanup()
    {
        SymbolTable.clear();
        SymbolCount = 0;
    }

    void numbersWinOverSymbols_data()
    {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<int>("address");
        QTest::newRow("decimal") << "1000" << 1000;
        QTest::newRow("hexadecimal") << "$1000" << 0x1000;
        QTest::newRow("binary") << "%1111" << 15;
        QTest::newRow("octal") << "@17" << 15;
        QTest::newRow("symbol in upper case") << "START" << 0x1000;
        QTest::newRow("symbol in lower case") << "start" << 0x1000;
        QTest::newRow("symbol in mixed case") << "Start" << 0x1000;
        QTest::newRow("label that reads as a number") << "1234" << 1234;
        QTest::newRow("past 16 bits") << "$10000" << -1;
        QTest::newRow("unknown name") << "NOWHERE" << -1;
    }

    void numbersWinOverSymbols()
    {
        QFETCH(QString, typed);
        QFETCH(int, address);
        QCOMPARE(AddressFromText(typed), address);
    }

    void aValidAddressClosesTheDialog()
    {
        MainFormFixture f;
        f.Start();
        QString caption;
        ModalPlayer player([&](QDialog& dialog) {
            caption = dialog.findChild<QLabel*>("lbAdr")->text();
            TypeAndPressOK(dialog, "txtAdr", "start");
        });
        EntryAccepted = false;
        frmAddress::ShowModal();
        QCOMPARE(caption, QString("Address:"));
        QVERIFY(EntryAccepted);
        QCOMPARE(EntryValue, 0x1000);
        QVERIFY(f.boxes.boxes.isEmpty());
    }

    void anInvalidAddressIsToldAndTheDialogStays()
    {
        MainFormFixture f;
        f.Start();
        QString left;
        bool open = false;
        ModalPlayer player([&](QDialog& dialog) {
            TypeAndPressOK(dialog, "txtAdr", "$10000");
            left = dialog.findChild<QLineEdit*>("txtAdr")->text();
            open = dialog.isVisible();
            dialog.findChild<QPushButton*>("cmdCancel")->click();
        });
        EntryAccepted = false;
        frmAddress::ShowModal();
        QVERIFY(open);
        QCOMPARE(left, QString());
        QCOMPARE(f.boxes.boxes.size(), 1);
        QCOMPARE(f.boxes.boxes[0].text, QString("Invalid Address !"));
        QCOMPARE(f.boxes.boxes[0].caption, QString("Orvane - Go To Address"));
        QCOMPARE(f.boxes.boxes[0].style, int(MbInformation));
        QVERIFY(!EntryAccepted);
    }

    void anEmptyBoxNeitherClosesNorComplains()
    {
        MainFormFixture f;
        f.Start();
        bool open = false;
        ModalPlayer player([&](QDialog& dialog) {
            TypeAndPressOK(dialog, "txtAdr", "");
            QTest::keyClick(dialog.findChild<QLineEdit*>("txtAdr"), Qt::Key_Return);
            open = dialog.isVisible();
        });
        EntryAccepted = false;
        frmAddress::ShowModal();
        QVERIFY(open);
        QVERIFY(f.boxes.boxes.isEmpty());
        QVERIFY(!EntryAccepted);
    }

    void enterAcceptsAndEscapeCancels()
    {
        MainFormFixture f;
        f.Start();
        QVariant topic;
        {
            ModalPlayer player([&](QDialog& dialog) {
                topic = dialog.property("HelpContextID");
                auto* box = dialog.findChild<QLineEdit*>("txtAdr");
                QTest::keyClicks(box, "$E000");
                QTest::keyClick(box, Qt::Key_Return);
            });
            EntryAccepted = false;
            frmAddress::HelpContextID = 192;   // as the stack window asks
            frmAddress::ShowModal();
        }
        QCOMPARE(topic.toInt(), 192);
        QVERIFY(EntryAccepted);
        QCOMPARE(EntryValue, 0xE000);

        ModalPlayer player([&](QDialog& dialog) {
            dialog.findChild<QLineEdit*>("txtAdr")->setText("$1000");
            QTest::keyClick(&dialog, Qt::Key_Escape);
        });
        EntryAccepted = false;
        frmAddress::ShowModal();
        QVERIFY(!EntryAccepted);
    }
};

QTEST_MAIN(frmAddressTest)
#include "frmAddress_test.moc"
