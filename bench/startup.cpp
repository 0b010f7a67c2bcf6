// Time from process start-up code to a shown, exposed main window.
#include <QElapsedTimer>
#include <QWindow>
#include <cstdio>

#include "HeadlessApp.h"
#include "ui/main/frmMain.h"

int main(int argc, char* argv[])
{
    QElapsedTimer clock;
    clock.start();
    HeadlessApp app(argc, argv);
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
