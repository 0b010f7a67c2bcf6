// The stack window's arithmetic: row addresses and texts, the columns the
// value entry takes from a row, the view that brings SP in, and the keys.
#include <QtTest>

#include "code/StackView.h"

class StackViewTest : public QObject {
    Q_OBJECT
private slots:
    void rowsWrapPastTheTopOfMemory()
    {
        QCOMPARE(StackRowAddress(0xFFFF, 1), 0xFFFF);
        QCOMPARE(StackRowAddress(0xFFFF, 2), 0x0000);
        QCOMPARE(StackRowAddress(0xFFF0, 50), 0x0021);
    }

    void theEntryTakesAddressAndValueFromTheRowText()
    {
        const QString text = StackRowText(0x00EC, 0x0A);
        QCOMPARE(text, QString(" $00EC:   $0A"));
        QCOMPARE(StackRowAddressText(text), QString("$00EC"));
        QCOMPARE(StackRowValueText(text), QString("$0A"));
        QCOMPARE(StackRowAddressOf(text), 0x00EC);
        QCOMPARE(StackRowAddressOf(StackRowText(0xFFFF, 0xFF)), 0xFFFF);
    }

    void spComesToRestOnTheLastVisibleRow()
    {
        QCOMPARE(StackViewForSP(0x00FF, 20), 0x00EC);
        QCOMPARE(StackRowAddress(StackViewForSP(0x00FF, 20), 20), 0x00FF);
        QCOMPARE(StackViewForSP(0x0005, 20), 0xFFF2);   // wraps below $0000
        QCOMPARE(StackViewForSP(0x1234, 1), 0x1234);
    }

    void keysMoveTheRowInsideTheViewAndTheViewAtItsEdges()
    {
        StackKeyMove m = MoveByKey(StackKey::Up, 5, 20, 0x0100);
        QVERIFY(!m.read);
        QCOMPARE(m.curRow, 4);
        QCOMPARE(m.viewAddress, 0x0100);
        m = MoveByKey(StackKey::Up, 1, 20, 0x0000);
        QVERIFY(m.read);
        QCOMPARE(m.curRow, 1);
        QCOMPARE(m.viewAddress, 0xFFFF);
        m = MoveByKey(StackKey::Down, 19, 20, 0x0100);
        QCOMPARE(m.curRow, 20);
        QVERIFY(!m.read);
        m = MoveByKey(StackKey::Down, 20, 20, 0xFFFF);
        QVERIFY(m.read);
        QCOMPARE(m.curRow, 20);
        QCOMPARE(m.viewAddress, 0x0000);
        m = MoveByKey(StackKey::PageUp, 7, 20, 0x0005);
        QCOMPARE(m.viewAddress, 0xFFF1);
        QCOMPARE(m.curRow, 7);
        m = MoveByKey(StackKey::PageDown, 7, 20, 0xFFF1);
        QCOMPARE(m.viewAddress, 0x0005);
    }
};

QTEST_APPLESS_MAIN(StackViewTest)
#include "StackView_test.moc"
