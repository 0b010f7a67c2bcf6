// The Help menu: which help each entry asks for, the help window's topics,
// F1 over an open menu, the about box and the toolbar's pictures.
#include <QtTest>

#include "platform/Help.h"
#include "platform/HelpViewer.h"
#include "platform/ModalDialog.h"
#include "support/MainFormFixture.h"
#include "workspace/ToolbarIcons.h"
#include "workspace/frmAbout.h"

#include <QDir>
#include <QImage>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QPainter>
#include <QPushButton>
#include <QToolBar>

namespace {
struct HelpCall {
    QString file;
    int command;
    int context;
};

// Records the help calls for its lifetime.
struct HelpRecorder {
    HelpRecorder()
    {
        previous = SetHelpHandler([this](const QString& file, int command, int context) {
            calls << HelpCall{file, command, context};
        });
    }
    ~HelpRecorder() { SetHelpHandler(previous); }
    QList<HelpCall> calls;
    HelpHandler previous;
};
}  // namespace

class HelpMenuTest : public QObject {
    Q_OBJECT
private slots:
    void entriesAskForTheirHelp()
    {
        MainFormFixture f;
        frmMain& form = f.Start();
        HelpRecorder help;
        form.Menu("mnuHelpOrvaneHelp")->trigger();
        form.Menu("mnuHelpUsingHelp")->trigger();
        form.Menu("mnuHelpHC11Symbols")->trigger();
        QCOMPARE(help.calls.size(), 3);
        QCOMPARE(help.calls[0].command, 3);
        QCOMPARE(help.calls[1].command, 4);
        QCOMPARE(help.calls[2].command, 1);
        QCOMPARE(help.calls[2].context, 999);
        for (const HelpCall& call : help.calls)
            QCOMPARE(QFileInfo(call.file).fileName(), QString("Orvane.HLP"));
    }

    void f1InAnOpenMenuAsksForTheHighlightedEntry()
    {
        MainFormFixture f;
        frmMain& form = f.Start();
        HelpRecorder help;
        QMenu* view = form.MenuOf("mnuView");
        const auto pressF1On = [view](QAction* entry) {
            view->popup(QPoint(0, 0));
            view->setActiveAction(entry);
            QKeyEvent f1(QEvent::KeyPress, Qt::Key_F1, Qt::NoModifier);
            QVERIFY(QCoreApplication::sendEvent(view, &f1));
            QVERIFY2(!view->isVisible(), "the menu closes for the help window");
        };
        pressF1On(form.Menu("mnuViewStack"));
        // An entry without a number of its own gives the menu's.
        pressF1On(form.Menu("mnuViewIOunit"));
        QCOMPARE(help.calls.size(), 2);
        QCOMPARE(help.calls[0].context, 38);
        QCOMPARE(help.calls[1].context, 25);
        QCOMPARE(help.calls[1].command, 1);
    }

    void contextsLeadToTheirTopics()
    {
        QCOMPARE(HelpTopicUrl(3, 0), QUrl("qrc:/help/index.html"));
        QCOMPARE(HelpTopicUrl(4, 0), QUrl("qrc:/help/usinghelp.html"));
        QCOMPARE(HelpTopicUrl(1, 999), QUrl("qrc:/help/hc11symbols.html#c999"));
        QCOMPARE(HelpTopicUrl(1, 12), QUrl("qrc:/help/file.html#c12"));
        QCOMPARE(HelpTopicUrl(1, 13), QUrl("qrc:/help/edit.html#c13"));
        QCOMPARE(HelpTopicUrl(1, 55), QUrl("qrc:/help/debug.html#c55"));
        QCOMPARE(HelpTopicUrl(1, 97), QUrl("qrc:/help/registers.html#c97"));
        QCOMPARE(HelpTopicUrl(1, 500), QUrl("qrc:/help/index.html"));
    }

    void everyContextHasItsAnchorInItsPage()
    {
        // A topic the program can ask for must exist, or the user sees the page top.
        HelpViewer::Show(HelpTopicUrl(3, 0));
        for (int context = 1; context <= 99; ++context) {
            const QUrl topic = HelpTopicUrl(1, context);
            QFile page(QStringLiteral(":") + topic.path());
            QVERIFY2(page.open(QIODevice::ReadOnly), qPrintable(topic.toString()));
            QVERIFY2(page.readAll().contains(QStringLiteral("name=\"c%1\"").arg(context).toLatin1()),
                     qPrintable(topic.toString()));
        }
        HelpViewer::CloseAll();
    }

    void theSymbolsTopicListsTheRegisterBlock()
    {
        ShowHelp("Orvane.HLP", 1, 999);
        HelpViewer* viewer = HelpViewer::Instance();
        QVERIFY(viewer);
        QCOMPARE(viewer->Topic().fragment(), QString("c999"));
        const QString text = viewer->TopicText();
        for (const char* row : {"$1000\nPORTA", "$1004\nPORTB", "$102E\nSCSR", "$102F\nSCDR", "$1030\nADCTL",
                                "$1039\nOPTION", "$103F\nCONFIG"})
            QVERIFY2(text.contains(QString::fromLatin1(row)), row);
        // One row an address, $1000 to $103F.
        for (int offset = 0; offset < 64; ++offset)
            QVERIFY(text.contains(QStringLiteral("$%1\n").arg(0x1000 + offset, 4, 16, QLatin1Char('0')).toUpper()));
        ShowHelp("Orvane.HLP", 2, 0);
        QTRY_VERIFY(!HelpViewer::Instance());
    }

    void aboutBoxIsModalWithTitleAndVersion()
    {
        MainFormFixture f;
        frmMain& form = f.Start();
        QString caption, version, title;
        QWidget* parent = nullptr;
        const ModalHook previous = SetModalHook([&](QDialog& dialog) {
            auto& about = static_cast<frmAbout&>(dialog);
            caption = about.windowTitle();
            version = about.lblVersion->text();
            title = about.lblTitle->text();
            parent = about.parentWidget();
            about.cmdOK->click();
        });
        form.Button(36)->trigger();
        SetModalHook(previous);
        QCOMPARE(caption, QString("About HC11 Orvane"));
        QCOMPARE(title, QString("Orvane Integrated Development Tools"));
        QCOMPARE(version, QString("Version %1.%2").arg(VersionMajor).arg(VersionMinor));
        QCOMPARE(parent, &form);
    }

    void everyButtonHasItsOwnPicture()
    {
        MainFormFixture f;
        frmMain& form = f.Start();
        QSet<qint64> pictures;
        int buttons = 0;
        for (int position = 1; position <= 37; ++position) {
            QAction* button = form.Button(position);
            if (button->isSeparator() || !button->isVisible())
                continue;
            ++buttons;
            const QImage image = button->icon().pixmap(16, 16).toImage();
            QVERIFY2(!image.isNull(), qPrintable(button->toolTip()));
            // Something is drawn, and not the same as another button's.
            int drawn = 0;
            for (int y = 0; y < 16; ++y)
                for (int x = 0; x < 16; ++x)
                    drawn += qAlpha(image.pixel(x, y)) > 0;
            QVERIFY2(drawn > 20, qPrintable(button->toolTip()));
            pictures.insert(qHashBits(image.constBits(), image.sizeInBytes()));
        }
        QCOMPARE(buttons, 24);
        QCOMPARE(pictures.size(), 24);
        QVERIFY(!form.windowIcon().isNull());
    }

    void screenshotOfTheMainWindow()
    {
        // With ORVANE_SCREENSHOT set to a folder, the main window is saved there
        // as main-window.png, and with its View menu open as
        // main-window-view-menu.png (run under a real display for its fonts).
        MainFormFixture f;
        frmMain& form = f.Start();
        form.showNormal();
        form.resize(1000, 560);
        QVERIFY(QTest::qWaitForWindowExposed(&form));
        QImage shot = form.grab().toImage();
        QVERIFY(shot.width() >= 1000);
        const QString folder = qEnvironmentVariable("ORVANE_SCREENSHOT");
        if (folder.isEmpty())
            return;
        QVERIFY(shot.save(QDir(folder).filePath("main-window.png")));
        QMenu* view = form.MenuOf("mnuView");
        const QRect title = form.menuBar()->actionGeometry(view->menuAction());
        view->popup(form.menuBar()->mapToGlobal(title.bottomLeft()));
        QVERIFY(QTest::qWaitForWindowExposed(view));
        QPainter painter(&shot);
        painter.drawPixmap(form.mapFromGlobal(view->pos()), view->grab());
        painter.end();
        view->close();
        QVERIFY(shot.save(QDir(folder).filePath("main-window-view-menu.png")));
        // The pictures of the bar, eight times their size, to judge them.
        QImage sheet(24 * 136, 136, QImage::Format_ARGB32);
        sheet.fill(Qt::white);
        QPainter sheetPainter(&sheet);
        int x = 0;
        for (int position = 1; position <= 37; ++position) {
            QAction* button = form.Button(position);
            if (button->isSeparator() || !button->isVisible())
                continue;
            sheetPainter.drawImage(QRect(x + 4, 4, 128, 128), button->icon().pixmap(16, 16).toImage());
            x += 136;
        }
        sheetPainter.end();
        QVERIFY(sheet.save(QDir(folder).filePath("toolbar-icons.png")));
    }
};

QTEST_MAIN(HelpMenuTest)
#include "HelpMenu_test.moc"
