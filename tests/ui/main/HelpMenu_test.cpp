#include <QtTest>

#include "platform/Version.h"
#include "platform/widgets/Help.h"
#include "platform/widgets/HelpViewer.h"
#include "platform/widgets/ModalDialog.h"
#include "support/ui/MainFormFixture.h"
#include "ui/main/frmAbout.h"

#include <QImage>
#include <QLabel>
#include <QMenu>
#include <QPushButton>
#include <QToolBar>
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
        form.Menu("mnuHelpOrvaneHelp")->trigger();
        form.Menu("mnuHelpUsingHelp")->trigger();
        form.Menu("mnuHelpHC11Symbols")->trigger();
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

    void aboutBoxIsModalWithTitleAndVersion()
    {
        MainFormFixture f;
        frmMain& form = f.Start();
        QStringList texts;
        const ModalHook previous = SetModalHook([&](QDialog& dialog) {
            auto& about = static_cast<frmAbout&>(dialog);
            texts << about.windowTitle() << about.lblVersion->text();
            QCOMPARE(about.parentWidget(), &form);
            about.cmdOK->click();
        });
        form.Button(36)->trigger();
        SetModalHook(previous);
        QCOMPARE(texts, QStringList({"About HC11 Orvane", QString("Version ") + VersionText()}));
    }

    void everyButtonHasAPictureOfItsOwn()
    {
        MainFormFixture f;
        frmMain& form = f.Start();
        QSet<qint64> pictures;
        for (QAction* button : form.tbToolbar->actions())
            if (!button->isSeparator() && button->isVisible()) {
                const QImage image = button->icon().pixmap(16, 16).toImage();
                pictures.insert(qHashBits(image.constBits(), image.sizeInBytes()));
            }
        QCOMPARE(pictures.size(), 24);
    }
};

QTEST_MAIN(HelpMenuTest)
#include "HelpMenu_test.moc"
