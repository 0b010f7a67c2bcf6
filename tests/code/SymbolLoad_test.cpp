#include <QtTest>

#include "code/SymbolTable.h"
#include "code/frmLabel.h"
#include "core/Conversions.h"
#include "platform/CommonDialog.h"
#include "platform/DoEvents.h"
#include "source/SourceRecords.h"
#include "support/ListingText.h"
#include "support/MainFormFixture.h"

#include <QGuiApplication>
#include <QTemporaryDir>
#include <QTreeWidget>

namespace {
// Answers the file dialog for the life of the object and keeps what it was asked.
struct FileChooser {
    explicit FileChooser(QString path) : path(std::move(path))
    {
        previous = CommonDialog::SetHandler([this](CommonDialog& dialog, CommonDialog::Kind kind) {
            asked = dialog;
            askedKind = kind;
            ++shown;
            if (this->path.isEmpty())
                return false;
            dialog.FileName = this->path;
            return true;
        });
    }
    ~FileChooser() { CommonDialog::SetHandler(previous); }

    QString path;   // empty: the user cancels
    CommonDialog asked;
    CommonDialog::Kind askedKind = CommonDialog::Kind::Save;
    int shown = 0;
    CommonDialog::Handler previous;
};

// Runs the hook in place of the event pump for the life of the object.
struct PumpHook {
    explicit PumpHook(std::function<void()> hook) { previous = SetDoEventsHook(std::move(hook)); }
    ~PumpHook() { SetDoEventsHook(previous); }
    std::function<void()> previous;
};

const QStringList ThreeSymbols{ListingLine(1, 0x1000, {"86", "01"}, "START LDAA #1"),
                               ListingLine(2, 0x1002, {"20", "FE"}, "LOOP BRA LOOP"),
                               ListingLine(3, 0x0040, {}, "LIMIT EQU $40")};
}  // namespace

class SymbolLoadTest : public QObject {
    Q_OBJECT
private slots:
    void init()
    {
        SymbolTable.clear();
        SymbolCount = 0;
        LstFile.clear();
    }

    void menuCommandAsksForAListingAndLoadsIt()
    {
        MainFormFixture f;
        frmMain& form = f.Start();
        LstFile = "PROG.LST";
        FileChooser chooser(WriteListing(dir.path(), "blink.lst", ThreeSymbols));
        form.Menu("mnuFileLoadSymbols")->trigger();

        QCOMPARE(chooser.shown, 1);
        QVERIFY(chooser.askedKind == CommonDialog::Kind::Open);
        QCOMPARE(chooser.asked.DialogTitle, QString("Load Symbols"));
        QCOMPARE(chooser.asked.Filter, QString("Listing Files (*.lst)|*.lst|All Files (*.*)|*.*"));
        QCOMPARE(chooser.asked.FilterIndex, 1);
        QCOMPARE(chooser.asked.FileName, QString("PROG.LST"));   // the last listing is offered

        QCOMPARE(LstFile, QString("blink.lst"));
        QCOMPARE(form.PanelText(3), QString("Symbols: blink.lst"));
        QCOMPARE(int(SymbolCount), 3);
        QString name = "limit";
        QCOMPARE(SymbolValue(name), 0x40);
        QVERIFY(f.boxes.boxes.isEmpty());
    }

    void cancelLeavesEverythingAsItWas()
    {
        MainFormFixture f;
        frmMain& form = f.Start();
        SymbolTable = {{0x100, 0, {}, "KEEP", ""}};
        SymbolCount = 1;
        LstFile = "old.lst";
        form.SetPanelText(3, "Symbols: old.lst");
        FileChooser chooser({});
        form.mnuFileLoadSymbols_Click();
        QCOMPARE(chooser.shown, 1);
        QCOMPARE(int(SymbolCount), 1);
        QCOMPARE(LstFile, QString("old.lst"));
        QCOMPARE(form.PanelText(3), QString("Symbols: old.lst"));
        QVERIFY(f.boxes.boxes.isEmpty());
    }

    void aFileWithoutListingLinesEmptiesTheTable()
    {
        MainFormFixture f;
        frmMain& form = f.Start();
        form.Dialog.FileName = WriteListing(dir.path(), "a.lst", ThreeSymbols);
        LstFile = "a.lst";
        form.LoadSymbols();
        QCOMPARE(int(SymbolCount), 3);
        form.Dialog.FileName = WriteListing(dir.path(), "notes.txt", {"Some notes", "", "0001 not a listing"});
        LstFile = "notes.txt";
        form.LoadSymbols();
        QCOMPARE(int(SymbolCount), 0);
        QCOMPARE(form.PanelText(3), QString("Symbols: <None>"));
        QVERIFY(f.boxes.boxes.isEmpty());
    }

    void aFileThatWillNotOpenChangesNothing()
    {
        MainFormFixture f;
        frmMain& form = f.Start();
        form.Dialog.FileName = WriteListing(dir.path(), "good.lst", ThreeSymbols);
        LstFile = "good.lst";
        form.LoadSymbols();
        for (const QString& unreadable : {dir.filePath("missing.lst"), dir.path()}) {
            f.boxes.boxes.clear();
            form.Dialog.FileName = unreadable;
            LstFile = "missing.lst";
            form.LoadSymbols();
            QCOMPARE(f.boxes.boxes.size(), 1);
            QCOMPARE(f.boxes.boxes[0].caption, QString("Orvane - Read Error"));
            QCOMPARE(f.boxes.boxes[0].style, int(MbExclamation));
            QVERIFY(f.boxes.boxes[0].text.endsWith(" !"));
            QVERIFY(f.boxes.boxes[0].text.size() > 2);
            QCOMPARE(int(SymbolCount), 3);
            QCOMPARE(form.PanelText(3), QString("Symbols: good.lst"));
            QVERIFY(!QGuiApplication::overrideCursor());
        }
    }

    void theHourglassShowsWhileThePumpRunsPerLine()
    {
        MainFormFixture f;
        frmMain& form = f.Start();
        QStringList lines = ThreeSymbols;
        lines.insert(1, "page header");
        form.Dialog.FileName = WriteListing(dir.path(), "p.lst", lines);
        int pumps = 0;
        QList<int> countsSeen;
        {
            PumpHook hook([&] {
                ++pumps;
                countsSeen << SymbolCount;
                QVERIFY(QGuiApplication::overrideCursor());
                QCOMPARE(QGuiApplication::overrideCursor()->shape(), Qt::WaitCursor);
            });
            form.LoadSymbols();
        }
        QCOMPARE(pumps, 4);
        QCOMPARE(countsSeen, (QList<int>{1, 1, 2, 3}));   // other handlers see the table grow
        QVERIFY(!QGuiApplication::overrideCursor());
    }

    void aFailurePartWayKeepsWhatWasReadAndRestoresThePointer()
    {
        MainFormFixture f;
        frmMain& form = f.Start();
        form.Dialog.FileName = WriteListing(dir.path(), "f.lst", ThreeSymbols);
        LstFile = "f.lst";
        int pumps = 0;
        {
            PumpHook hook([&] {
                if (++pumps == 2)
                    throw std::runtime_error("Disk read fault");
            });
            form.LoadSymbols();
        }
        QCOMPARE(f.boxes.boxes.size(), 1);
        QCOMPARE(f.boxes.boxes[0].text, QString("Disk read fault !"));
        QCOMPARE(f.boxes.boxes[0].caption, QString("Orvane - Read Error"));
        QCOMPARE(int(SymbolCount), 2);
        QCOMPARE(SymbolTable[1].SymbolLabel, QString("LOOP"));
        QCOMPARE(form.PanelText(3), QString("Symbols: f.lst"));
        QVERIFY(!QGuiApplication::overrideCursor());
    }

    void theTableStopsAt32767Entries()
    {
        MainFormFixture f;
        frmMain& form = f.Start();
        QStringList lines;
        for (int i = 0; i < 32770; ++i)
            lines << ListingLine(i % 10000, i & 0xFFFF, {"01"}, QStringLiteral("L%1 NOP").arg(i));
        form.Dialog.FileName = WriteListing(dir.path(), "big.lst", lines, "\n");
        LstFile = "big.lst";
        PumpHook quiet([] {});
        form.LoadSymbols();
        QCOMPARE(int(SymbolCount), 32767);
        QCOMPARE(SymbolTable[32766].SymbolLabel, QString("L32766"));
        QCOMPARE(f.boxes.boxes.size(), 1);
        QVERIFY(f.boxes.boxes[0].text.startsWith("Overflow"));
        QCOMPARE(form.PanelText(3), QString("Symbols: big.lst"));
        QVERIFY(!QGuiApplication::overrideCursor());
    }

    void aBinaryFileLoadsWithoutComplaint()
    {
        MainFormFixture f;
        frmMain& form = f.Start();
        form.Dialog.FileName = QCoreApplication::applicationFilePath();   // this test's own program
        LstFile = "binary";
        PumpHook quiet([] {});
        form.LoadSymbols();
        QVERIFY(f.boxes.boxes.isEmpty());
        QCOMPARE(form.PanelText(3), SymbolCount == 0 ? QString("Symbols: <None>") : QString("Symbols: binary"));
    }

    void reloadRedrawsTheOpenLabelWindowAndTellsTheOthers()
    {
        MainFormFixture f;
        frmMain& form = f.Start();
        frmLabel* labels = frmLabel::Open();
        QCOMPARE(labels->ListView->topLevelItemCount(), 0);
        int told = 0;
        QObject::connect(&form, &frmMain::SymbolsLoaded, [&] { ++told; });
        form.Dialog.FileName = WriteListing(dir.path(), "r.lst", ThreeSymbols);
        form.FileLoadSymbols();
        QCOMPARE(told, 1);
        QCOMPARE(labels->ListView->topLevelItemCount(), 3);
        QCOMPARE(labels->ListView->topLevelItem(2)->text(0), QString("LIMIT"));
        QCOMPARE(labels->ListView->topLevelItem(2)->text(1), QString("$0040"));
    }

private:
    QTemporaryDir dir;
};

QTEST_MAIN(SymbolLoadTest)
#include "SymbolLoad_test.moc"
