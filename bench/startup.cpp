// Time from process start-up code to a shown, exposed main window.
#include <QApplication>
#include <QElapsedTimer>
#include <QTemporaryDir>
#include <QWindow>
#include <cstdio>

#include "platform/SettingsStore.h"
#include "workspace/frmMain.h"

int main(int argc, char* argv[])
{
    qputenv("QT_QPA_PLATFORM", qgetenv("QT_QPA_PLATFORM").isEmpty() ? "offscreen" : qgetenv("QT_QPA_PLATFORM"));
    QElapsedTimer clock;
    clock.start();
    QApplication app(argc, argv);
    QTemporaryDir store;   // a first start: an empty settings store
    SetSettingsFolder(store.path());
    frmMain window;
    window.MDIForm_Load();
    window.show();
    while (!(window.windowHandle() && window.windowHandle()->isExposed())) {
        if (clock.elapsed() > 10000)
            return 1;
        QCoreApplication::processEvents(QEventLoop::AllEvents, 5);
    }
    std::printf("startup_ms: %lld ms\n", static_cast<long long>(clock.elapsed()));
    return 0;
}
