#include <QtTest>

#include "code/SymbolTable.h"
#include "code/frmLabel.h"
#include "platform/CommonDialog.h"
#include "source/SourceRecords.h"
#include "support/ListingText.h"
#include "support/MainFormFixture.h"

#include <QTemporaryDir>
#include <QTreeWidget>

namespace {
const QStringList ThreeSymbols{ListingLine(1, 0x1000, {"86", "01"}, "START LDAA #1"),
                               ListingLine(2, 0x1002, {"20", "FE"}, "LOOP BRA LOOP"),
                               ListingLine(3, 0x0040, {}, "LIMIT EQU $40")};
}  // namespace

class SymbolLoadTest : public QObject {
    Q_OBJECT
    QTemporaryDir dir;
    std::unique_ptr<MainFormFixture> f;

private slots:
    void init()
    {
        SymbolTable.clear();
        SymbolCount = 0;
        LstFile = "PROG.LST";
        f = std::make_unique<MainFormFixture>();
        f->Start();
    }
    void cleanup() { f.reset(); }

    void menuCommandAsksForAListingAndLoadsIt()
    {
        frmLabel* labels = frmLabel::Open();
        int told = 0;
        QObject::connect(f->form.get(), &frmMain::SymbolsLoaded, [&] { ++told; });
        QString chosen = WriteListing(dir.path(), "blink.lst", ThreeSymbols);
        CommonDialog asked;
        const auto previous = CommonDialog::SetHandler([&](CommonDialog& dialog, CommonDialog::Kind kind) {
            asked = dialog;
            dialog.FileName = chosen;
            return kind == CommonDialog::Kind::Open && !chosen.isEmpty();
        });
        f->form->Menu("mnuFileLoadSymbols")->trigger();
        QCOMPARE(asked.DialogTitle, QString("Load Symbols"));
        QCOMPARE(asked.FileName, QString("PROG.LST"));   // the last listing is offered
        QCOMPARE(LstFile, QString("blink.lst"));
        QCOMPARE(f->form->PanelText(3), QString("Symbols: blink.lst"));
        QString name = "limit";
        QCOMPARE(SymbolValue(name), 0x40);
        QCOMPARE(told, 1);   // the label window is redrawn, the others are told
        QCOMPARE(labels->ListView->topLevelItemCount(), 3);

        chosen.clear();   // the user cancels: nothing changes
        f->form->mnuFileLoadSymbols_Click();
        CommonDialog::SetHandler(previous);
        QCOMPARE(int(SymbolCount), 3);
        QCOMPARE(LstFile, QString("blink.lst"));
        QVERIFY(f->boxes.boxes.isEmpty());
    }

    void theTableStopsAt32767Entries()
    {
        QStringList lines;
        for (int i = 0; i < 32770; ++i)
            lines << ListingLine(i % 10000, i & 0xFFFF, {"01"}, QStringLiteral("L%1 NOP").arg(i));
        f->form->Dialog.FileName = WriteListing(dir.path(), "big.lst", lines, "\n");
        f->form->LoadSymbols();
        QCOMPARE(int(SymbolCount), 32767);
        QCOMPARE(SymbolTable[32766].SymbolLabel, QString("L32766"));
        QCOMPARE(f->boxes.boxes.size(), 1);
        QVERIFY(f->boxes.boxes[0].text.startsWith("Overflow"));
    }
};

QTEST_MAIN(SymbolLoadTest)
#include "SymbolLoad_test.moc"
