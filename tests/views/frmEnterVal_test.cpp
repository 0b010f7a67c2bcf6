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
            QStringList leftInBox;   // empty text is passed over; a refused number is told and cleared
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
        for (const bool button : {true, false}) {   // Cancel, or the window's close button
            ModalPlayer player([&](QDialog& dialog) {
                dialog.findChild<QLineEdit*>("Text")->setText("12");
                button ? dialog.findChild<QPushButton*>("cmdCancel")->click() : void(dialog.close());
            });
            ask("A", "5", false);
            QVERIFY(!EntryAccepted);
        }
    }
};

QTEST_MAIN(frmEnterValTest)
#include "frmEnterVal_test.moc"
