// main() of a test executable that holds several test files (see
// TestRegistry.h). `NAME [qtest options]` runs the test in file NAME.cpp as
// its own program would; without a name every test runs, one after the other.
// Each executable compiles it anew: one that links Qt Widgets creates the
// QApplication its window tests need, the engine's a QCoreApplication, as
// QTEST_MAIN itself would.
#include "support/TestRegistry.h"

#include <QFileInfo>
#ifdef QT_WIDGETS_LIB
#include <QApplication>
#endif

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <vector>

namespace testgroup {

static std::vector<Entry>& Entries()
{
    static std::vector<Entry> entries;
    return entries;
}

bool Register(const Entry& entry)
{
    Entries().push_back(entry);
    return true;
}

static QString NameOf(const Entry& entry) { return QFileInfo(QString::fromLocal8Bit(entry.file)).completeBaseName(); }

}  // namespace testgroup

int main(int argc, char* argv[])
{
    using namespace testgroup;
    std::vector<Entry> chosen = Entries();
    std::sort(chosen.begin(), chosen.end(), [](const Entry& a, const Entry& b) { return NameOf(a) < NameOf(b); });

    if (argc > 1 && argv[1][0] != '-') {
        const QString wanted = QString::fromLocal8Bit(argv[1]);
        std::erase_if(chosen, [&](const Entry& e) { return NameOf(e) != wanted; });
        if (chosen.empty()) {
            std::fprintf(stderr, "No test named %s. The tests here:\n", argv[1]);
            for (const Entry& e : Entries())
                std::fprintf(stderr, "  %s\n", qPrintable(NameOf(e)));
            return 2;
        }
        // The test sees the command line it would have had as its own program.
        std::memmove(&argv[1], &argv[2], sizeof(char*) * (argc - 1));
        --argc;
    }

    AppKind app = AppKind::None;
    for (const Entry& e : chosen) {
        e.initMain();
        app = std::max(app, e.app);
    }
    std::unique_ptr<QCoreApplication> application;
#ifdef QT_WIDGETS_LIB
    if (app == AppKind::Widgets)
        application = std::make_unique<QApplication>(argc, argv);
#endif
    if (app != AppKind::None && !application)
        application = std::make_unique<QCoreApplication>(argc, argv);
    if (application)
        application->setAttribute(Qt::AA_Use96Dpi, true);

    int failed = 0;
    for (const Entry& e : chosen) {
        const std::unique_ptr<QObject> test = e.make();
        QTest::setMainSourcePath(e.file);
        failed += QTest::qExec(test.get(), argc, argv);
    }
    return std::min(failed, 127);
}
