// The value dialog as a register window uses it: the text it starts from,
// refused text, and the ways to leave.
#include <QtTest>

#include "support/MainFormFixture.h"
#include "support/ModalPlayer.h"
#include "views/EntryFields.h"
#include "views/frmEnterVal.h"

#include <QLabel>

namespace {
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

    void theShownValueComesBackOnEnter()
    {
        for (const auto& [shown, word, value] : {std::tuple{"%11111111", false, 255},
                                                  {"%0001001000110100", true, 0x1234}}) {
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
            QCOMPARE(EntryValue, value);
        }
    }

    void onlyOkWithAValidValueEndsTheDialogWithOne()
    {
        // Empty text is passed over; a refused number is told and cleared for another try.
        QStringList leftInBox;
        ModalPlayer player([&](QDialog& dialog) {
            for (const char* text : {"", "300", "200"}) {
                TypeAndPressOK(dialog, "Text", text);
                leftInBox << (dialog.isVisible() ? dialog.findChild<QLineEdit*>("Text")->text() : "closed");
            }
        });
        Ask("B", "$00", false);
        QCOMPARE(leftInBox, (QStringList{"", "", "closed"}));
        QCOMPARE(f.boxes.boxes.size(), 1);
        QCOMPARE(f.boxes.boxes[0].text, QString("Invalid Number !"));
        QCOMPARE(f.boxes.boxes[0].caption, QString("Orvane - Enter Value"));
        QCOMPARE(EntryValue, 200);

        for (int way = 0; way < 3; ++way) {   // Cancel, Esc, the window button
            ModalPlayer leave([&](QDialog& dialog) {
                dialog.findChild<QLineEdit*>("Text")->setText("12");
                if (way == 0)
                    dialog.findChild<QPushButton*>("cmdCancel")->click();
                else if (way == 1)
                    QTest::keyClick(&dialog, Qt::Key_Escape);
                else
                    dialog.close();
            });
            Ask("A", "5", false);
            QVERIFY(!EntryAccepted);
        }
    }

private:
    MainFormFixture f;
};

QTEST_MAIN(frmEnterValTest)
#include "frmEnterVal_test.moc"
