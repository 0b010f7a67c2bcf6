// From source to a target ready to step on the real main window. The target is
// the simulator: downloads, and steps anywhere, are the download and debugger tests'.

#include "ui/code/frmDisAsm.h"
#include "engine/state/TargetState.h"
#include "platform/ProgramFolder.h"
#include "ui/source/frmEditor.h"
#include "engine/source/SourceRecords.h"
#include "ui/source/frmError.h"
#include "support/ui/FileChooser.h"
#include "support/ui/MainFormFixture.h"
#include "support/ui/ShownWindow.h"
#include "support/WorkFolder.h"

#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>

namespace {
const QByteArray Broken = " ORG $E000\n"
                          "START LDS #$00FF\n"
                          " LDX #$1000\n"
                          "LOOP LDAX 4,X\n"
                          " BRA LOOP\n"
                          " ORG $FFFE\n"
                          " FDB START\n";
}  // namespace

class AssembleEndToEndTest : public QObject {
    Q_OBJECT
private slots:
    void initTestCase() { SetProgramFolder(qEnvironmentVariable("ORVANE_PROGRAM_DIR")); }

    void writeAssembleAndDownload()
    {
        MainFormFixture f;
        frmMain& form = StartInSimulator(f);
        form.show();
        WorkFolder folder;
        folder.Enter();
        QVERIFY(folder.Write("first prog.asm", "; to be written\n"));
        frmEditor* editor = form.OpenEditor(folder.Path("first prog.asm"));
        QVERIFY(editor && AsmFile == "first prog.asm");
        const auto type = [editor](const QByteArray& text) {
            editor->SetSelection(0, editor->PlainText().size());
            editor->SetSelText(QString::fromLatin1(text));
        };
        f.boxes.answer = MbResultYes;   // "Save ... ?" and the OK boxes
        FileChooser chooser;   // a file dialog is cancelled

        // A typo on line 4: Assemble asks to save, the list leads to the line.
        type(Broken);
        form.Menu("mnuFileAssemble")->trigger();
        QCOMPARE(f.boxes.Texts(), (QStringList{"Save first prog.asm ?", "Assembly Source:\tfirst prog.asm\n\r"
                                               "Listing (Symbol):\tfirst prog.lst\n\rMachine Code:\tfirst prog.s19"}));
        frmError* errors = form.ErrorList();
        QVERIFY(errors && errors->isVisible() && errors->List->count() == 1);
        QCOMPARE(errors->windowTitle() + " " + errors->List->item(0)->text(),
                 QString("first prog.err 4: unknown mnemonic 'LDAX'"));
        editor->SetSelection(0, 0);
        QTest::keyClick(errors->List, Qt::Key_Return);
        QCOMPARE(tuple(ActiveEditor(), editor->Text->textCursor().blockNumber()), tuple(editor, 3));

        // Fixed and assembled from the toolbar: no error file is left.
        type(QByteArray(Broken).replace("LDAX", "LDAA"));
        form.tbToolbar_ButtonClick(form.Button(19));
        QVERIFY(f.boxes.boxes.size() == 4 && !QFile::exists(folder.Path("first prog.err")) && AsmFile == "first prog.asm");
        QCOMPARE(form.PanelText(3), QString("Symbols: first prog.lst"));

        // The toolbar's Download takes the fresh machine code without asking.
        form.tbToolbar_ButtonClick(form.Button(21));
        QVERIFY2(chooser.asked.isEmpty() && f.boxes.boxes.size() == 4, qPrintable(f.boxes.boxes.last().text));
        QCOMPARE(tuple(form.PanelText(2), CpuRegisters.PC), tuple("Program: first prog.s19", 0xE000));

        auto* disasm = qobject_cast<frmDisAsm*>(form.Window("frmDisAsm"));
        QVERIFY(disasm);
        if (!form.Menu("mnuDebugIncludeSym")->isChecked())
            form.mnuDebugIncludeSym_Click();
        const auto& rows = disasm->PageRows;
        const auto start = std::find_if(rows.begin(), rows.end(), [](const auto& row) { return row.RowAddress == 0xE000; });
        QVERIFY(start + 2 < rows.end());
        QVERIFY2(start->RowText.contains("START LDS #$00FF"), qPrintable(start->RowText));
        QVERIFY(start[2].RowText.contains("LOOP LDAA 4,X"));

        AsmFile = S19File = LstFile = QString();
    }

    // A source named as one of its results is refused before the question to
    // save; a result that cannot be written leaves the last run's files.
    void assemblingNeverCostsTheSourceOrTheLastRun()
    {
        MainFormFixture f;
        frmMain& form = f.Start();
        WorkFolder folder;
        folder.Enter();
        const QByteArray source = " ORG $E000\n NOP\n";
        const QStringList names = {"a.err", "b.lst", "c.s19"};
        for (const QString& name : names) {
            QVERIFY(folder.Write(name, source));
            frmEditor* editor = form.OpenEditor(folder.Path(name));
            QTest::keyClicks(editor->Text, "*");
            form.Menu("mnuFileAssemble")->trigger();
            QCOMPARE(tuple(f.boxes.boxes.size(), folder.Read(name)), tuple(1, source));   // no question to save before
            QCOMPARE(f.boxes.boxes.takeFirst().caption, QString("Orvane - Assemble Error"));
            QVERIFY(editor->TextChanged && form.Menu("mnuFileSave")->isEnabled());
            editor->TextChanged = false;
        }
        QCOMPARE(QDir(folder.dir.path()).entryList(QDir::Files), names);
        // A folder in the machine code's place.
        QVERIFY(folder.Write("y.asm", source) && folder.Write("y.lst", "last run"));
        QVERIFY(QDir(folder.dir.path()).mkdir("y.s19") && form.OpenEditor(folder.Path("y.asm")));
        form.Menu("mnuFileAssemble")->trigger();
        QCOMPARE(f.boxes.Texts(), QStringList{"Is a directory !"});
        QCOMPARE(folder.Read("y.lst"), QByteArray("last run"));
        QCOMPARE(QDir(folder.dir.path()).entryList(QDir::Files), names + QStringList({"y.asm", "y.lst"}));
        AsmFile.clear();
    }

    void errorRowsAndWhereTheyLead()
    {
        WorkFolder folder;
        folder.Enter();
        frmError list(nullptr);
        QList<int> jumps;
        list.GoToLine = [&](int line) { jumps << line; };

        // Only a number above 0 before the first colon makes a row.
        QVERIFY(folder.Write("x.err", "AS11 error report\r\n\n0: no line\nLDAX: no number\nno colon\n"
                                      "12: twelve\r\n$C: hex twelve: again\n%11:three\n70000: too far\n"));
        ErrFile = "x.err";
        list.ErrorShow();
        QCOMPARE(tuple(list.windowTitle(), list.ErrorCount, list.List->currentRow()), tuple("x.err", 3, 0));
        QCOMPARE(list.ErrorLines, (std::vector<std::int32_t>{12, 12, 3}));
        QCOMPARE(list.List->item(1)->text(), QString("$C: hex twelve: again"));
        list.List->setCurrentRow(2);
        QTest::keyClick(list.List, Qt::Key_Return);
        QCOMPARE(jumps, QList<int>{3});

        // A file without rows: nothing to show, and a click goes nowhere.
        QVERIFY(folder.Write("x.err", "no errors\n"));
        list.ErrorShow();
        QCOMPARE(tuple(list.ErrorCount, list.cmdShow->isEnabled()), tuple(0, false));
        list.cmdShow_Click();
        QTest::keyClick(list.List, Qt::Key_Return);
        QCOMPARE(jumps.size(), 1);
        ErrFile.clear();
    }
};

QTEST_MAIN(AssembleEndToEndTest)
#include "AssembleEndToEnd_test.moc"
