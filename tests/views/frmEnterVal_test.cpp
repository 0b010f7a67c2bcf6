// The value dialog as a register window uses it: the text it starts from
// comes back on Enter, refused text is told and cleared, and Cancel, Esc or
// the window button give no value.
#include <QtTest>

#include "support/MainFormFixture.h"
#include "support/ModalPlayer.h"
#include "views/EntryFields.h"
#include "views/frmEnterVal.h"

#include <QLabel>

class frmEnterValTest : public QObject {
    Q_OBJECT
private slots:
    void enterOkAndTheWaysToLeave()
    {
        MainFormFixture f;
        f.Start();
        const auto ask = [](const QString& label, const QString& text, bool word) {
            EntryAccepted = false;
            EntryLabel = label;
            EntryText = text;
            EntryIsWord = word;
            frmEnterVal::ShowModal();
        };
        {
            QStringList seen;   // the label, and whether the first key typed replaces the whole value
            ModalPlayer player([&](QDialog& dialog) {
                auto* box = dialog.findChild<QLineEdit*>("Text");
                seen << dialog.findChild<QLabel*>("Label")->text() << box->selectedText();
                QTest::keyClick(box, Qt::Key_Return);
            });
            ask("IX", "%0001001000110100", true);
            QCOMPARE(seen, (QStringList{"IX:", "%0001001000110100"}));
            QVERIFY(EntryAccepted);
            QCOMPARE(EntryValue, 0x1234);
        }
        {
            // Empty text is passed over; a refused number is told and cleared for another try.
            QStringList leftInBox;
            ModalPlayer player([&](QDialog& dialog) {
                for (const char* text : {"", "300", "200"}) {
                    TypeAndPressOK(dialog, "Text", text);
                    leftInBox << (dialog.isVisible() ? dialog.findChild<QLineEdit*>("Text")->text() : "closed");
                }
            });
            ask("B", "$00", false);
            QCOMPARE(leftInBox, (QStringList{"", "", "closed"}));
            QCOMPARE(f.boxes.boxes.size(), 1);
            QCOMPARE(f.boxes.boxes[0].text, QString("Invalid Number !"));
            QCOMPARE(f.boxes.boxes[0].caption, QString("Orvane - Enter Value"));
            QCOMPARE(EntryValue, 200);
        }
        for (int way = 0; way < 3; ++way) {
            ModalPlayer player([&](QDialog& dialog) {
                dialog.findChild<QLineEdit*>("Text")->setText("12");
                if (way == 0)
                    dialog.findChild<QPushButton*>("cmdCancel")->click();
                else if (way == 1)
                    QTest::keyClick(&dialog, Qt::Key_Escape);
                else
                    dialog.close();
            });
            ask("A", "5", false);
            QVERIFY(!EntryAccepted);
        }
    }
};

QTEST_MAIN(frmEnterValTest)
#include "frmEnterVal_test.moc"
