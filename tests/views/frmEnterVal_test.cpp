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
    EntryLabel = label;
    EntryText = text;
    EntryIsWord = word;
    frmEnterVal::ShowModal();
}
}  // namespace

class frmEnterValTest : public QObject {
    Q_OBJECT
private slots:
    void init() { f.Start(); }
    void cleanup() { f.boxes.boxes.clear(); }

    void everyNotationAndWidth_data()
    {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<bool>("word");
        QTest::addColumn<int>("value");   // -1: refused
        QTest::newRow("256 in a byte") << "256" << false << -1;
        QTest::newRow("256 in a word") << "256" << true << 256;
        QTest::newRow("$100 in a byte") << "$100" << false << -1;
        QTest::newRow("$ff") << "$ff" << false << 255;
        QTest::newRow("%0000000000000001 in a byte") << "%0000000000000001" << false << 1;
        QTest::newRow("@377 in a byte") << "@377" << false << 255;
        QTest::newRow("@400 in a byte") << "@400" << false << -1;
        QTest::newRow("000255 by its length") << "000255" << true << -1;
        QTest::newRow("$ alone") << "$" << true << -1;
        QTest::newRow("-1") << "-1" << true << -1;
        QTest::newRow("a symbol is no number here") << "START" << true << -1;
    }

    void everyNotationAndWidth()
    {
        QFETCH(QString, typed);
        QFETCH(bool, word);
        QFETCH(int, value);
        QString leftInBox;
        ModalPlayer player([&](QDialog& dialog) {
            TypeAndPressOK(dialog, "Text", typed);
            leftInBox = dialog.findChild<QLineEdit*>("Text")->text();
        });
        Ask("A", "0", word);
        QCOMPARE(EntryAccepted, value >= 0);
        if (value >= 0) {
            QCOMPARE(EntryValue, value);
            QVERIFY(f.boxes.boxes.isEmpty());
            return;
        }
        QCOMPARE(leftInBox, QString());   // cleared for another try
        QCOMPARE(f.boxes.boxes.size(), 1);
        QCOMPARE(f.boxes.boxes[0].text, QString("Invalid Number !"));
        QCOMPARE(f.boxes.boxes[0].caption, QString("Orvane - Enter Value"));
        QCOMPARE(f.boxes.boxes[0].style, int(MbInformation));
    }

    void theShownValueComesBackOnEnter()
    {
        for (const auto& [shown, word, value] : {std::tuple{"$FF", false, 255}, {"%11111111", false, 255},
                                                  {"255", false, 255}, {"%0001001000110100", true, 0x1234}}) {
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
            QVERIFY(wholeTextSelected);   // the first key typed replaces the value
            QVERIFY(EntryAccepted);
            QCOMPARE(EntryValue, value);
        }
    }

    void emptyOrRefusedTextKeepsTheDialogOpen()
    {
        QList<bool> openAfter;
        ModalPlayer player([&](QDialog& dialog) {
            TypeAndPressOK(dialog, "Text", "");
            openAfter << dialog.isVisible();
            TypeAndPressOK(dialog, "Text", "300");
            openAfter << dialog.isVisible();
            TypeAndPressOK(dialog, "Text", "200");
            openAfter << dialog.isVisible();
        });
        Ask("B", "$00", false);
        QCOMPARE(openAfter, (QList<bool>{true, true, false}));
        QCOMPARE(f.boxes.boxes.size(), 1);   // only the refused number is told
        QVERIFY(EntryAccepted);
        QCOMPARE(EntryValue, 200);
    }

    void cancelEscAndTheWindowButtonGiveNoValue()
    {
        QCOMPARE(frmEnterVal::HelpContextID, 193);
        for (int way = 0; way < 3; ++way) {
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
        }
        QVERIFY(f.boxes.boxes.isEmpty());
    }

private:
    MainFormFixture f;
};

QTEST_MAIN(frmEnterValTest)
#include "frmEnterVal_test.moc"
