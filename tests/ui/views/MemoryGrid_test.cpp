// The memory window's page and cursor without a widget: key moves at the
// edges of the page and of the address space, clicks, the address dialog's
// target, the drag hint, the cells and the in-cell editor.

#include "ui/views/MemoryGrid.h"

namespace {
struct Place {
    std::int32_t page;
    int row;
    int byte;
    MemorySide side;
};

MemoryGrid GridAt(int lines, const Place& at)
{
    MemoryGrid grid;
    grid.SetLinesPerPage(lines);
    grid.Scroll(at.page / 16);
    grid.Click(at.row, MemoryGrid::ColumnOf(at.side, at.byte));
    return grid;
}
}  // namespace

Q_DECLARE_METATYPE(Place)
Q_DECLARE_METATYPE(MemoryKey)

class MemoryGridTest : public QObject {
    Q_OBJECT
private slots:
    void keys_data()
    {
        QTest::addColumn<Place>("from");
        QTest::addColumn<MemoryKey>("key");
        QTest::addColumn<Place>("to");
        const auto H = MemorySide::Hex, C = MemorySide::Char;
        // 8 lines: End is $FF80.
        QTest::newRow("left wraps to the row above") << Place{0x100, 3, 0, H} << MemoryKey::Left << Place{0x100, 2, 15, H};
        QTest::newRow("left at $0000 stays") << Place{0, 0, 0, H} << MemoryKey::Left << Place{0, 0, 0, H};
        QTest::newRow("left from the top row scrolls one row")
            << Place{0x100, 0, 0, C} << MemoryKey::Left << Place{0xF0, 0, 15, C};
        QTest::newRow("right wraps on its own side") << Place{0x100, 2, 15, C} << MemoryKey::Right << Place{0x100, 3, 0, C};
        QTest::newRow("right from the last row scrolls")
            << Place{0x100, 7, 15, H} << MemoryKey::Right << Place{0x110, 7, 0, H};
        QTest::newRow("right at $FFFF stays") << Place{0xFF80, 7, 15, H} << MemoryKey::Right << Place{0xFF80, 7, 15, H};
        QTest::newRow("up from the top row scrolls") << Place{0x100, 0, 4, H} << MemoryKey::Up << Place{0xF0, 0, 4, H};
        QTest::newRow("up at $0000 stays") << Place{0, 0, 4, H} << MemoryKey::Up << Place{0, 0, 4, H};
        QTest::newRow("down from the last row scrolls") << Place{0x100, 7, 4, H} << MemoryKey::Down << Place{0x110, 7, 4, H};
        QTest::newRow("down at the end stays") << Place{0xFF80, 7, 4, H} << MemoryKey::Down << Place{0xFF80, 7, 4, H};
        QTest::newRow("page up keeps the row") << Place{0x200, 5, 1, H} << MemoryKey::PageUp << Place{0x180, 5, 1, H};
        QTest::newRow("page up stops at $0000") << Place{0x40, 5, 1, H} << MemoryKey::PageUp << Place{0, 5, 1, H};
        QTest::newRow("page up on the first page goes to the top row")
            << Place{0, 5, 1, H} << MemoryKey::PageUp << Place{0, 0, 1, H};
        QTest::newRow("page down keeps the row") << Place{0x200, 5, 1, H} << MemoryKey::PageDown << Place{0x280, 5, 1, H};
        QTest::newRow("page down near the end lands on the last page's last row")
            << Place{0xFF40, 2, 1, H} << MemoryKey::PageDown << Place{0xFF80, 7, 1, H};
        QTest::newRow("home") << Place{0x200, 5, 9, C} << MemoryKey::Home << Place{0x200, 5, 0, C};
        QTest::newRow("end") << Place{0x200, 5, 9, H} << MemoryKey::End << Place{0x200, 5, 15, H};
        QTest::newRow("tab changes sides on the same byte") << Place{0x200, 5, 9, H} << MemoryKey::Tab << Place{0x200, 5, 9, C};
    }
    void keys()
    {
        QFETCH(Place, from);
        QFETCH(MemoryKey, key);
        QFETCH(Place, to);
        MemoryGrid grid = GridAt(8, from);
        const bool moved = grid.Key(key);
        QCOMPARE(grid.PageAddress(), to.page);
        QCOMPARE(grid.CursorRow(), to.row);
        QCOMPARE(grid.CursorByte(), to.byte);
        QCOMPARE(grid.CursorSide(), to.side);
        QCOMPARE(moved, from.page != to.page);
        QVERIFY(grid.PageAddress() % 16 == 0 && grid.PageAddress() <= grid.End());
    }

    void aWindowWithoutRowsIgnoresKeys()
    {
        MemoryGrid grid;
        grid.SetLinesPerPage(0);
        QCOMPARE(grid.Rows(), 0);
        QVERIFY(!grid.Key(MemoryKey::PageDown));
        QCOMPARE(grid.PageAddress(), 0);
        QCOMPARE(grid.ScrollMaximum(), 4096);
    }

    void clicks()
    {
        MemoryGrid grid = GridAt(8, {0x100, 2, 5, MemorySide::Char});
        grid.Click(4, 0);   // an address cell: Home on the side the cursor is on
        QCOMPARE(grid.CursorColumn(), MemoryGrid::FirstCharColumn);
        QCOMPARE(grid.CursorRow(), 4);
        grid.Click(4, 18);  // the spacer: the nearest byte of the cursor's side
        QCOMPARE(grid.CursorColumn(), 19);
        grid.Click(4, 7);
        grid.Click(4, 18);
        QCOMPARE(grid.CursorColumn(), 17);
        grid.Click(1, 1);
        QCOMPARE(grid.CursorColumn(), 2);
        QCOMPARE(grid.CursorAddress(), 0x110);
        grid.Click(8, 5);   // below the page
        QCOMPARE(grid.CursorAddress(), 0x110);
    }

    void goTo_data()
    {
        QTest::addColumn<int>("lines");
        QTest::addColumn<int>("address");
        QTest::addColumn<int>("page");
        QTest::addColumn<int>("row");
        QTest::addColumn<int>("column");
        QTest::newRow("$0123 in the top row") << 8 << 0x0123 << 0x0120 << 0 << 5;
        QTest::newRow("$FFFF on the last row") << 8 << 0xFFFF << 0xFF80 << 7 << 17;
        QTest::newRow("$FF85 on the page that ends at $FFFF") << 8 << 0xFF85 << 0xFF80 << 0 << 7;
        QTest::newRow("$FF90, one row down") << 8 << 0xFF90 << 0xFF80 << 1 << 2;
        QTest::newRow("$FFF0 in a full-height window") << 64 << 0xFFF0 << 0xFC00 << 63 << 2;
    }
    void goTo()
    {
        QFETCH(int, lines);
        QFETCH(int, address);
        MemoryGrid grid = GridAt(lines, {0x400, 3, 3, MemorySide::Char});
        grid.GoTo(address);
        QTEST(grid.PageAddress(), "page");
        QTEST(grid.CursorRow(), "row");
        QTEST(grid.CursorColumn(), "column");
        QCOMPARE(grid.CursorAddress(), address);
    }

    void scrollBarAndDragHint()
    {
        MemoryGrid grid;
        grid.SetLinesPerPage(8);
        QCOMPARE(grid.ScrollMaximum(), 4088);
        QVERIFY(grid.Scroll(5000));   // past the end: the last page
        QCOMPARE(grid.PageAddress(), 0xFF80);
        QCOMPARE(grid.RowAddress(7), 0xFFF0);
        QCOMPARE(grid.DragAddress(0), 0);
        QCOMPARE(grid.DragAddress(31), 512);
        QCOMPARE(grid.DragAddress(4087), 0xFE00);
        QCOMPARE(grid.DragAddress(4088), 0xFF80);
        // A taller window near the top of memory shows only the rows up to $FFFF.
        grid.SetLinesPerPage(20);
        QCOMPARE(grid.PageAddress(), 0xFF80);
        QCOMPARE(grid.Rows(), 8);
        grid.SetLinesPerPage(100);
        QCOMPARE(grid.LinesPerPage(), 64);
    }

    void cells()
    {
        QCOMPARE(AddressCell(0x0120), QString(" $0120:"));
        QCOMPARE(HexCell(0x0A), QString("0A"));
        const std::pair<int, QString> chars[] = {{0, "."}, {31, "."}, {32, " "}, {65, "A"}, {126, "~"}, {127, "."},
                                                 {0x80, "."}, {0xFF, "."}};
        for (const auto& [byte, text] : chars)
            QCOMPARE(CharCell(static_cast<std::uint8_t>(byte)), text);
    }

    void typing_data()
    {
        QTest::addColumn<int>("side");
        QTest::addColumn<QString>("keys");
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("byte");
        // The box starts with the cell's text, all selected.
        QTest::newRow("one hex digit") << 0 << "A" << "A" << 0x0A;
        QTest::newRow("lower case becomes upper") << 0 << "fe" << "FE" << 0xFE;
        QTest::newRow("a third digit is dropped") << 0 << "123" << "12" << 0x12;
        QTest::newRow("not hex is dropped") << 0 << "g5x" << "5" << 0x05;
        QTest::newRow("a character") << 1 << "Az" << "A" << 0x41;
        QTest::newRow("a control character is dropped") << 1 << "\t" << "" << -1;
    }
    void typing()
    {
        QFETCH(int, side);
        QFETCH(QString, keys);
        const MemorySide s = side == 0 ? MemorySide::Hex : MemorySide::Char;
        QString text = s == MemorySide::Hex ? "3F" : ".";
        int caret = 0, selection = static_cast<int>(text.size());
        for (QChar key : keys)
            TypeIntoCell(s, key, text, caret, selection);
        if (selection > 0)
            text.remove(caret, selection);   // nothing typed: Enter sends what stands
        QTEST(text, "text");
        QTEST(CellByte(s, text), "byte");
    }

    void overtypeReplacesTheCharacterBehindTheCaret()
    {
        QString text = "AB";
        int caret = 0, selection = 0;
        QVERIFY(TypeIntoCell(MemorySide::Hex, '7', text, caret, selection));
        QCOMPARE(text, QString("7B"));
        QCOMPARE(caret, 1);
        // A non-printable byte's "." is sent as $2E unless the user types.
        QCOMPARE(CellByte(MemorySide::Char, "."), 0x2E);
    }
};

QTEST_MAIN(MemoryGridTest)
#include "MemoryGrid_test.moc"
