#include "platform/widgets/Help.h"
#include "platform/widgets/HelpViewer.h"
#include "support/ui/MainFormFixture.h"

#include <QMenu>
#include <array>

class HelpMenuTest : public QObject {
    Q_OBJECT
private slots:
    void entriesAndF1AskForTheirHelp()
    {
        MainFormFixture f;
        frmMain& form = f.Start();
        QList<std::array<int, 2>> calls;   // command, context
        const HelpHandler previous = SetHelpHandler([&](const QString& file, int command, int context) {
            QCOMPARE(QFileInfo(file).fileName(), QString("Orvane.HLP"));
            calls.push_back({command, context});
        });
        for (const char* entry : {"mnuHelpOrvaneHelp", "mnuHelpUsingHelp", "mnuHelpHC11Symbols"})
            form.Menu(entry)->trigger();
        // F1 in an open menu: the highlighted entry, or the menu's own number.
        QMenu* view = form.MenuOf("mnuView");
        for (const char* entry : {"mnuViewStack", "mnuViewIOunit"}) {
            view->popup(QPoint(0, 0));
            view->setActiveAction(form.Menu(entry));
            QKeyEvent f1(QEvent::KeyPress, Qt::Key_F1, Qt::NoModifier);
            QVERIFY(QCoreApplication::sendEvent(view, &f1));
            QVERIFY2(!view->isVisible(), "the menu closes for the help window");
        }
        SetHelpHandler(previous);
        QCOMPARE(calls, (QList<std::array<int, 2>>{{3, 0}, {4, 0}, {1, 999}, {1, 38}, {1, 25}}));
        // A command in two menus has one topic.
        QCOMPARE(form.HelpContextOf("mnuPopupStackRefresh"), form.HelpContextOf("mnuDebugRefresh"));
        QVERIFY(form.HelpContextOf("mnuDebugRefresh") > 0);
    }

    void everyContextLeadsToItsAnchorAndTheSymbolsTopicListsTheRegisterBlock()
    {
        ShowHelp("Orvane.HLP", 1, 999);
        QVERIFY(HelpViewer::Instance());
        const QString text = HelpViewer::Instance()->TopicText();
        QVERIFY(text.contains("$1000\nPORTA") && text.contains("$103F\nCONFIG"));   // the register block's ends
        // A topic the program can ask for must exist, or the user sees the page top.
        for (int context = 1; context <= 99; ++context) {
            const QUrl topic = HelpTopicUrl(1, context);
            QFile page(QStringLiteral(":") + topic.path());
            QVERIFY2(page.open(QIODevice::ReadOnly), qPrintable(topic.toString()));
            QVERIFY2(page.readAll().contains(QStringLiteral("name=\"c%1\"").arg(context).toLatin1()),
                     qPrintable(topic.toString()));
        }
        ShowHelp("Orvane.HLP", 2, 0);
        QTRY_VERIFY(!HelpViewer::Instance());
    }
};

QTEST_MAIN(HelpMenuTest)
#include "HelpMenu_test.moc"
