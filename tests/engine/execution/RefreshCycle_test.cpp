// The refresh round over recorded views.

#include "engine/state/TargetState.h"
#include "engine/execution/RefreshCycle.h"
#include "support/DebuggerFixture.h"

namespace {
using V = TargetView;

struct RecordedViews : RefreshViews {
    QList<TargetView> shown, refreshed;
    std::function<void(TargetView)> onRefresh;
    bool ViewShown(TargetView view) override { return shown.contains(view); }
    void RefreshView(TargetView view) override
    {
        refreshed << view;
        if (onRefresh)
            onRefresh(view);
    }
};
}  // namespace

class RefreshCycleTest : public QObject {
    Q_OBJECT
private slots:
    void theRoundGoesInOrderUntilTheBoardIsLost()
    {
        DebuggerFixture f(true);
        RecordedViews views;
        RefreshCycle cycle(f.link, views);
        BoardConnected = true;
        TargetMemory[0x1000] = 0x5A;
        TargetMemory[0x103F] = 0xA5;
        views.shown = {V::Pia, V::RegisterBlock, V::Watches, V::Stack, V::CpuRegisters, V::Code};
        cycle.Refresh();
        QCOMPARE(views.refreshed,
                 QList<TargetView>({V::Code, V::CpuRegisters, V::Stack, V::Watches, V::RegisterBlock, V::Pia}));
        QCOMPARE(RegisterBlock[0], 0x5A);   // one read for all seven windows
        QCOMPARE(RegisterBlock[63], 0xA5);

        // The view that finds the board gone ends the round.
        views.onRefresh = [](TargetView view) { BoardConnected = BoardConnected && view != V::Stack; };
        views.refreshed.clear();
        cycle.RefreshRun();
        QCOMPARE(views.refreshed, QList<TargetView>({V::CpuRegisters, V::Stack}));
        // Refresh with the board already gone redraws the code page only.
        views.refreshed.clear();
        cycle.Refresh();
        QCOMPARE(views.refreshed, QList<TargetView>({V::Code}));
    }
};

QTEST_MAIN(RefreshCycleTest)
#include "RefreshCycle_test.moc"
