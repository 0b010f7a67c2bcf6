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
    bool operator==(const Place&) const = default;
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

class MemoryGridTest : public QObject {
    Q_OBJECT
private slots:
    void keys()
    {
        const auto H = MemorySide::Hex, C = MemorySide::Char;
        using K = MemoryKey;
        // 8 lines: End is $FF80.
        const struct { const char* name; Place from; MemoryKey key; Place to; } rows[] = {
            {"left wraps to the row above", {0x100, 3, 0, H}, K::Left, {0x100, 2, 15, H}},
            {"left at $0000 stays", {0, 0, 0, H}, K::Left, {0, 0, 0, H}},
            {"left from the top row scrolls one row", {0x100, 0, 0, C}, K::Left, {0xF0, 0, 15, C}},
            {"right wraps on its own side", {0x100, 2, 15, C}, K::Right, {0x100, 3, 0, C}},
            {"right from the last row scrolls", {0x100, 7, 15, H}, K::Right, {0x110, 7, 0, H}},
            {"right at $FFFF stays", {0xFF80, 7, 15, H}, K::Right, {0xFF80, 7, 15, H}},
            {"up from the top row scrolls", {0x100, 0, 4, H}, K::Up, {0xF0, 0, 4, H}},
            {"up at $0000 stays", {0, 0, 4, H}, K::Up, {0, 0, 4, H}},
            {"down from the last row scrolls", {0x100, 7, 4, H}, K::Down, {0x110, 7, 4, H}},
            {"down at the end stays", {0xFF80, 7, 4, H}, K::Down, {0xFF80, 7, 4, H}},
            {"page up keeps the row", {0x200, 5, 1, H}, K::PageUp, {0x180, 5, 1, H}},
            {"page up stops at $0000", {0x40, 5, 1, H}, K::PageUp, {0, 5, 1, H}},
            {"page up on the first page goes to the top row", {0, 5, 1, H}, K::PageUp, {0, 0, 1, H}},
            {"page down keeps the row", {0x200, 5, 1, H}, K::PageDown, {0x280, 5, 1, H}},
            {"page down near the end: the last page's last row", {0xFF40, 2, 1, H}, K::PageDown, {0xFF80, 7, 1, H}},
            {"home", {0x200, 5, 9, C}, K::Home, {0x200, 5, 0, C}},
            {"end", {0x200, 5, 9, H}, K::End, {0x200, 5, 15, H}},
            {"tab changes sides on the same byte", {0x200, 5, 9, H}, K::Tab, {0x200, 5, 9, C}},
        };
        for (const auto& [name, from, key, to] : rows) {
            MemoryGrid grid = GridAt(8, from);
            const bool moved = grid.Key(key);
            QVERIFY2((Place{grid.PageAddress(), grid.CursorRow(), grid.CursorByte(), grid.CursorSide()} == to), name);
            QVERIFY2(moved == (from.page != to.page) && grid.PageAddress() % 16 == 0 && grid.PageAddress() <= grid.End(), name);
        }
    }

    void clicks()
    {
        MemoryGrid grid = GridAt(8, {0x100, 2, 5, MemorySide::Char});
        grid.Click(4, 0);   // an address cell: Home on the side the cursor is on
        QVERIFY(grid.CursorColumn() == MemoryGrid::FirstCharColumn && grid.CursorRow() == 4);
        grid.Click(4, 18);  // the spacer: the nearest byte of the cursor's side
        QCOMPARE(grid.CursorColumn(), 19);
        grid.Click(4, 7);
        grid.Click(4, 18);
        QCOMPARE(grid.CursorColumn(), 17);
        grid.Click(1, 1);
        QVERIFY(grid.CursorColumn() == 2 && grid.CursorAddress() == 0x110);
        grid.Click(8, 5);   // below the page
        QCOMPARE(grid.CursorAddress(), 0x110);
    }

    void goTo()
    {
        const struct { const char* name; int lines, address, page, row, column; } rows[] = {
            {"$0123 in the top row", 8, 0x0123, 0x0120, 0, 5},
            {"$FFFF on the last row", 8, 0xFFFF, 0xFF80, 7, 17},
            {"$FF85 on the page that ends at $FFFF", 8, 0xFF85, 0xFF80, 0, 7},
            {"$FF90, one row down", 8, 0xFF90, 0xFF80, 1, 2},
            {"$FFF0 in a full-height window", 64, 0xFFF0, 0xFC00, 63, 2},
        };
        for (const auto& r : rows) {
            MemoryGrid grid = GridAt(r.lines, {0x400, 3, 3, MemorySide::Char});
            grid.GoTo(r.address);
            QVERIFY2(grid.PageAddress() == r.page && grid.CursorRow() == r.row && grid.CursorColumn() == r.column, r.name);
            QVERIFY2(grid.CursorAddress() == r.address, r.name);
        }
    }

    void scrollBarAndDragHint()
    {
        MemoryGrid grid;
        grid.SetLinesPerPage(0);   // a window without rows ignores keys
        QVERIFY(grid.Rows() == 0 && !grid.Key(MemoryKey::PageDown) && grid.PageAddress() == 0);
        QCOMPARE(grid.ScrollMaximum(), 4096);
        grid.SetLinesPerPage(8);
        QCOMPARE(grid.ScrollMaximum(), 4088);
        QVERIFY(grid.Scroll(5000));   // past the end: the last page
        QVERIFY(grid.PageAddress() == 0xFF80 && grid.RowAddress(7) == 0xFFF0);
        for (auto [position, address] : {std::pair{0, 0}, {31, 512}, {4087, 0xFE00}, {4088, 0xFF80}})
            QCOMPARE(grid.DragAddress(position), address);
        // A taller window near the top of memory shows only the rows up to $FFFF.
        grid.SetLinesPerPage(20);
        QVERIFY(grid.PageAddress() == 0xFF80 && grid.Rows() == 8);
        grid.SetLinesPerPage(100);
        QCOMPARE(grid.LinesPerPage(), 64);
    }

    void cells()
    {
        QVERIFY(AddressCell(0x0120) == QString(" $0120:") && HexCell(0x0A) == QString("0A"));
        const std::pair<int, QString> chars[] = {{0, "."}, {31, "."}, {32, " "}, {65, "A"}, {126, "~"}, {127, "."},
                                                 {0x80, "."}, {0xFF, "."}};
        for (const auto& [byte, text] : chars)
            QCOMPARE(CharCell(static_cast<std::uint8_t>(byte)), text);
    }

    void typing()
    {
        const auto H = MemorySide::Hex, C = MemorySide::Char;
        // The box starts with the cell's text, all selected.
        const struct { const char* name; MemorySide side; const char* keys; QString text; int byte; } rows[] = {
            {"one hex digit", H, "A", "A", 0x0A},
            {"lower case becomes upper", H, "fe", "FE", 0xFE},
            {"a third digit is dropped", H, "123", "12", 0x12},
            {"not hex is dropped", H, "g5x", "5", 0x05},
            {"a character", C, "Az", "A", 0x41},
            {"a control character is dropped", C, "\t", "", -1},
        };
        for (const auto& r : rows) {
            QString text = r.side == H ? "3F" : ".";
            int caret = 0, selection = static_cast<int>(text.size());
            for (QChar key : QString(r.keys))
                TypeIntoCell(r.side, key, text, caret, selection);
            if (selection > 0)
                text.remove(caret, selection);   // nothing typed: Enter sends what stands
            QVERIFY2(text == r.text && CellByte(r.side, text) == r.byte, r.name);
        }
        // Overtype replaces the character behind the caret.
        QString text = "AB";
        int caret = 0, selection = 0;
        QVERIFY(TypeIntoCell(MemorySide::Hex, '7', text, caret, selection) && text == "7B" && caret == 1);
        // A non-printable byte's "." is sent as $2E unless the user types.
        QCOMPARE(CellByte(MemorySide::Char, "."), 0x2E);
    }
};

QTEST_MAIN(MemoryGridTest)
#include "MemoryGrid_test.moc"
