#include <QtTest>

#include "support/MainFormFixture.h"
#include "support/ModalPlayer.h"
#include "views/EntryFields.h"
#include "views/frmEnterVal.h"

#include <QLabel>

namespace {
// The caller's side of the exchange, as a register window does it.
void Ask(const QString& label, const QString& text, bool word)
{
    EntryAccepted = false;
    EntryValue = -1;
    EntryLabel = label;
    EntryText = text;
    EntryIsWord = word;
    frmEnterVal::ShowModal();
}
}  // namespace

class frmEnterValTest : public QObject {
    Q_OBJECT
private slots:
    void everyNotationAndWidth_data()
    {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<bool>("word");
        QTest::addColumn<int>("value");   // -1: refused
        QTest::newRow("decimal byte") << "255" << false << 255;
        QTest::newRow("decimal 256 in a byte") << "256" << false << -1;
        QTest::newRow("decimal 256 in a word") << "256" << true << 256;
        QTest::newRow("decimal word limit") << "65535" << true << 65535;
        QTest::newRow("decimal over the word") << "65536" << true << -1;
        QTest::newRow("leading zeros count") << "000255" << true << -1;
        QTest::newRow("hex lower case") << "$ff" << false << 255;
        QTest::newRow("hex upper case") << "$FF" << false << 255;
        QTest::newRow("hex $100 in a byte") << "$100" << false << -1;
        QTest::newRow("hex $100 in a word") << "$100" << true << 256;
        QTest::newRow("hex too long") << "$10000" << true << -1;
        QTest::newRow("binary byte") << "%11111111" << false << 255;
        QTest::newRow("binary over a byte") << "%100000000" << false << -1;
        QTest::newRow("binary with zeros, byte") << "%0000000000000001" << false << 1;
        QTest::newRow("binary with zeros, word") << "%0000000000000001" << true << 1;
        QTest::newRow("octal byte") << "@377" << false << 255;
        QTest::newRow("octal over a byte") << "@400" << false << -1;
        QTest::newRow("octal in a word") << "@177777" << true << 65535;
        QTest::newRow("octal digit 8") << "@8" << true << -1;
        QTest::newRow("dollar alone") << "$" << true << -1;
        QTest::newRow("percent alone") << "%" << true << -1;
        QTest::newRow("at alone") << "@" << true << -1;
        QTest::newRow("negative") << "-1" << true << -1;
        QTest::newRow("leading blank") << " 12" << true << -1;
        QTest::newRow("a symbol is no number here") << "START" << true << -1;
    }

    void everyNotationAndWidth()
    {
        QFETCH(QString, typed);
        QFETCH(bool, word);
        QFETCH(int, value);
        MainFormFixture f;
        f.Start();
        QString leftInBox = "unset";
        ModalPlayer player([&](QDialog& dialog) {
            TypeAndPressOK(dialog, "Text", typed);
            leftInBox = dialog.findChild<QLineEdit*>("Text")->text();
        });
        Ask("A", "0", word);
        if (value < 0) {
            QVERIFY(!EntryAccepted);
            QCOMPARE(leftInBox, QString());   // the box is cleared for another try
            QCOMPARE(f.boxes.boxes.size(), 1);
            QCOMPARE(f.boxes.boxes[0].text, QString("Invalid Number !"));
            QCOMPARE(f.boxes.boxes[0].caption, QString("Orvane - Enter Value"));
            QCOMPARE(f.boxes.boxes[0].style, int(MbInformation));
        } else {
            QVERIFY(EntryAccepted);
            QCOMPARE(EntryValue, value);
            QVERIFY(f.boxes.boxes.isEmpty());
        }
    }

    void theShownValueComesBackOnEnter_data()
    {
        QTest::addColumn<QString>("shown");
        QTest::addColumn<bool>("word");
        QTest::addColumn<int>("value");
        QTest::newRow("decimal") << "255" << false << 255;
        QTest::newRow("hex byte") << "$FF" << false << 255;
        QTest::newRow("binary byte") << "%11111111" << false << 255;
        QTest::newRow("hex word") << "$1234" << true << 0x1234;
        QTest::newRow("binary word") << "%0001001000110100" << true << 0x1234;
    }

    void theShownValueComesBackOnEnter()
    {
        QFETCH(QString, shown);
        QFETCH(bool, word);
        QFETCH(int, value);
        MainFormFixture f;
        f.Start();
        QString caption;
        bool wholeTextSelected = false;
        ModalPlayer player([&](QDialog& dialog) {
            caption = dialog.findChild<QLabel*>("Label")->text();
            auto* box = dialog.findChild<QLineEdit*>("Text");
            wholeTextSelected = box->selectedText() == box->text();
            QTest::keyClick(box, Qt::Key_Return);
        });
        Ask("CCR", shown, word);
        QCOMPARE(caption, QString("CCR:"));
        QVERIFY(wholeTextSelected);
        QVERIFY(EntryAccepted);
        QCOMPARE(EntryValue, value);
    }

    void aRefusedValueLeavesTheDialogOpenForAnotherTry()
    {
        MainFormFixture f;
        f.Start();
        QList<bool> openAfter;
        ModalPlayer player([&](QDialog& dialog) {
            TypeAndPressOK(dialog, "Text", "300");
            openAfter << dialog.isVisible();
            TypeAndPressOK(dialog, "Text", "200");
            openAfter << dialog.isVisible();
        });
        Ask("B", "$00", false);
        QCOMPARE(openAfter, (QList<bool>{true, false}));
        QCOMPARE(f.boxes.boxes.size(), 1);
        QVERIFY(EntryAccepted);
        QCOMPARE(EntryValue, 200);
    }

    void anEmptyBoxDoesNothing()
    {
        MainFormFixture f;
        f.Start();
        bool stillOpen = false;
        ModalPlayer player([&](QDialog& dialog) {
            TypeAndPressOK(dialog, "Text", "");
            QTest::keyClick(dialog.findChild<QLineEdit*>("Text"), Qt::Key_Return);
            stillOpen = dialog.isVisible();
        });
        Ask("A", "12", false);
        QVERIFY(stillOpen);
        QVERIFY(f.boxes.boxes.isEmpty());
        QVERIFY(!EntryAccepted);   // left open, the dialog ends as by its window button
    }

    void everyWayOutButOKGivesNoValue_data()
    {
        QTest::addColumn<int>("way");
        QTest::newRow("Cancel") << 0;
        QTest::newRow("Esc") << 1;
        QTest::newRow("window button") << 2;
    }

    void everyWayOutButOKGivesNoValue()
    {
        QFETCH(int, way);
        MainFormFixture f;
        f.Start();
        ModalPlayer player([&](QDialog& dialog) {
            dialog.findChild<QLineEdit*>("Text")->setText("12");
            if (way == 0)
                dialog.findChild<QPushButton*>("cmdCancel")->click();
            else if (way == 1)
                QTest::keyClick(&dialog, Qt::Key_Escape);
            else
                dialog.close();
            QVERIFY(!dialog.isVisible());
        });
        Ask("A", "5", false);
        QVERIFY(!EntryAccepted);
        QVERIFY(f.boxes.boxes.isEmpty());
    }

    void theDialogCarriesItsHelpTopic()
    {
        MainFormFixture f;
        f.Start();
        QCOMPARE(frmEnterVal::HelpContextID, 193);
        QVariant topic;
        ModalPlayer player([&](QDialog& dialog) { topic = dialog.property("HelpContextID"); });
        frmEnterVal::HelpContextID = 194;   // as the watch window asks
        Ask("COUNT", "0", false);
        frmEnterVal::HelpContextID = 193;
        QCOMPARE(topic.toInt(), 194);
    }
};

QTEST_MAIN(frmEnterValTest)
#include "frmEnterVal_test.moc"
