#include "platform/SettingsStore.h"
#include "platform/widgets/WindowPlacement.h"
#include "support/TestSettings.h"
#include "ui/main/DefaultPlacements.h"
#include "ui/source/frmEditor.h"
#include "support/ui/FakeToolWindow.h"
#include "support/ui/MainFormFixture.h"
#include "ui/main/WindowArrangement.h"
#include "support/ui/ModalPlayer.h"
#include "support/ui/ShownWindow.h"
#include "ui/code/frmDisAsm.h"
#include "ui/views/frmMemory.h"

#include <QPlainTextEdit>
#include <QTableView>

namespace {
QString Text(const WindowPlacement& p)
{
    return QString("%1,%2,%3,%4").arg(p.Left).arg(p.Top).arg(p.Width).arg(p.Height);
}

QRect Pixels(const WindowPlacement& p)
{
    return QRect(TwipsToPixelsX(p.Left), TwipsToPixelsY(p.Top), TwipsToPixelsX(p.Width), TwipsToPixelsY(p.Height));
}

QWidget* Frame(QWidget* window) { return window->parentWidget(); }

WindowPlacement PlacementOf(const std::vector<DebuggerPlacement>& rows, const char* window)
{
    for (const DebuggerPlacement& row : rows)
        if (QString(row.window) == window)
            return row.placement;
    return {};
}
}  // namespace

class WindowArrangementTest : public QObject {
    Q_OBJECT
private slots:
    // Arrange Debugger: the disassembly window takes what the others leave.
    void placementsOfTheArrangeCommands()
    {
        QStringList placed;
        for (const DebuggerPlacement& row : DebuggerPlacements(9000, 8000))
            placed << QString("%1=%2 %3").arg(row.window, row.prefix, Text(row.placement));
        QCOMPARE(placed.join(" | "), QString("frmLabel=Label 7800,2450,2600,5550 | frmWatch=Watch 7800,0,2600,2450 | "
                                             "frmStack=Stack 5200,2450,2600,5550 | frmRegCPU=RegCPU 5200,0,2600,2450 | "
                                             "frmDisAsm=DisAsm 0,0,5200,8000"));
        QCOMPARE(Text(TileHorizontalPlacements(1, 12000, 9000).at(0)), QString("0,0,12000,9000"));
        QCOMPARE(Text(TileHorizontalPlacements(3, 12000, 10000).at(2)), QString("0,6666,12000,3333"));   // 1 twip stays free
        QCOMPARE(Text(TileVerticalPlacements(4, 10001, 6000).at(3)), QString("7500,0,2500,6000"));
        // One editor: at the corner with 80 percent; many: the step shrinks to fit.
        QCOMPARE(Text(CascadePlacements(1, 10000, 5000, 15, 15).at(0)), QString("0,0,8000,4000"));
        QCOMPARE(Text(CascadePlacements(3, 10000, 5000, 15, 15).at(2)), QString("720,666,8000,4000"));
        QCOMPARE(Text(CascadePlacements(100, 10000, 5000, 15, 15).at(99)), QString("1980,990,8000,4000"));
        QVERIFY(CascadePlacements(0, 10000, 5000, 15, 15).empty());
    }

    // Windows never placed show their content (an editor 80 by 25, the disassembly a symbol row and
    // the CPU and stack windows beside it, the memory 16 bytes); a stored placement still wins.
    void firstOpeningsShowTheirContent()
    {
        MainFormFixture f;
        ModalPlayer closesEveryDialog([](QDialog&) {});
        frmMain& form = StartInSimulator(f);
        QVERIFY(ShowAt(form, {1400, 900}));
        const QSize client = form.mdiArea()->viewport()->size();

        form.NewEditor();
        const QPlainTextEdit* text = LoadedEditors().value(0)->Text;
        const QFontMetrics metrics(text->font());
        QVERIFY(text->viewport()->width() >= 80 * metrics.horizontalAdvance('0') &&
                text->viewport()->height() >= 25 * metrics.lineSpacing());

        QWidget* disAsm = form.LoadWindow("frmDisAsm");
        QVERIFY(disAsm->width() >= frmDisAsm::SymbolRowWidth());
        for (const char* beside : {"frmRegCPU", "frmStack"})
            QVERIFY2(Frame(form.LoadWindow(beside))->x() >= Frame(disAsm)->geometry().right(), beside);

        auto* memory = qobject_cast<frmMemory*>(form.LoadWindow("frmMemory"));
        QTableView* grid = memory->gridMemory;
        const int last = MemoryGrid::ColumnCount - 1;
        QVERIFY(grid->columnViewportPosition(last) + grid->columnWidth(last) <= grid->viewport()->width());
        QVERIFY(Frame(memory)->width() < client.width() && Frame(memory)->height() < client.height() / 2 + 200);

        form.UnloadWindow("frmMemory");
        QCoreApplication::processEvents();
        SaveSetting("Windows", "MemoryWidth", "3000");
        QCOMPARE(Frame(form.LoadWindow("frmMemory"))->width(), TwipsToPixelsX(3000));
    }

    // Arrange Debugger moves the open debugger windows (at two sizes) and writes a closed one's place;
    // the editor commands move editors only.
    void arrangementCommandsMoveTheirOwnWindowsOnly()
    {
        PluggedWindows plugged({"frmStack", "frmRegCPU", "frmWatch", "frmLabel", "frmDisAsm"});
        MainFormFixture f;
        frmMain& form = f.Start();
        form.showNormal();
        for (int i = 0; i < 3; ++i)
            form.NewEditor();
        QWidget* editorFrame = Frame(LoadedEditors().value(0));
        editorFrame->setGeometry(30, 40, 200, 100);
        for (const char* window : {"frmStack", "frmRegCPU", "frmDisAsm"})
            QVERIFY(form.LoadWindow(window));
        Frame(form.Window("frmStack"))->showMaximized();
        const QWidget* client = form.mdiArea()->viewport();
        for (const QSize size : {QSize(1100, 700), QSize(600, 500)}) {
            form.resize(size);
            QCoreApplication::processEvents();
            const auto placements =
                DebuggerPlacements(PixelsToTwipsX(client->width()), PixelsToTwipsY(client->height()));
            form.Menu("mnuWindowArrangeDebugger")->trigger();
            for (const char* window : {"frmStack", "frmRegCPU", "frmDisAsm"}) {
                QVERIFY(!Frame(form.Window(window))->isMaximized());
                QCOMPARE(Frame(form.Window(window))->geometry(), Pixels(PlacementOf(placements, window)));
            }
            const WindowPlacement watch = PlacementOf(placements, "frmWatch");
            QVERIFY(GetSetting("Windows", "WatchLeft").toDouble() == double(float(watch.Left)) && !form.Window("frmWatch"));
            QCOMPARE(GetSetting("Windows", "WatchState"), QString("0"));
            QCOMPARE(editorFrame->geometry(), QRect(30, 40, 200, 100));
        }

        QWidget* stack = Frame(form.Window("frmStack"));
        const QRect stackPlace = stack->geometry();
        Frame(LoadedEditors().value(1))->showMaximized();
        QCoreApplication::processEvents();
        const double W = PixelsToTwipsX(client->width()), H = PixelsToTwipsY(client->height());
        const struct { const char* entry; std::vector<WindowPlacement> expected; } rows[] = {
            {"mnuWindowTileHorizontal", TileHorizontalPlacements(3, W, H)},
            {"mnuWindowTileVertical", TileVerticalPlacements(3, W, H)},
            {"mnuWindowCascade", CascadePlacements(3, W, H, PixelsToTwipsX(1), PixelsToTwipsY(1))},
        };
        for (const auto& row : rows) {
            form.Menu(row.entry)->trigger();
            const QList<frmEditor*> editors = LoadedEditors();
            for (int i = 0; i < 3; ++i) {
                QVERIFY(!Frame(editors[i])->isMaximized());
                QCOMPARE(Frame(editors[i])->geometry(), Pixels(row.expected[i]));
            }
            QCOMPARE(stack->geometry(), stackPlace);
        }
    }

    void placementsFollowTheClientAreaAndKeepTheNormalSizeWhenMaximised()
    {
        QCOMPARE(DefaultPlacement("Serial", 10000, 8000).Height, 6400.0);   // defaults follow the client area
        for (int pixels : {0, 1, 15, 640, 1920})
            QCOMPARE(TwipsToPixelsX(PixelsToTwipsX(pixels)), pixels);

        TestSettings store;
        QWidget window;
        LoadPlacement(&window, "Test", {0, 1500, 750, 6000, 4500});
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        const WindowPlacement normal = CurrentPlacement(&window);
        SavePlacement(&window, "Test");
        window.showMaximized();   // saved maximised, the normal placement stays
        QTRY_VERIFY(window.isMaximized());
        SavePlacement(&window, "Test");
        QVERIFY(GetSetting("Windows", "TestState") == "2" && GetSetting("Windows", "TestWidth").toDouble() == normal.Width);

        QWidget again;
        LoadPlacement(&again, "Test", {});
        again.show();
        QTRY_VERIFY(again.isMaximized());
        again.showNormal();
        QTRY_COMPARE(again.size(), QSize(TwipsToPixelsX(6000), TwipsToPixelsY(normal.Height)));
    }
};

QTEST_MAIN(WindowArrangementTest)
#include "WindowArrangement_test.moc"
