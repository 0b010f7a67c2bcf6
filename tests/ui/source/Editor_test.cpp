// The editor documents on the real main window. With ORVANE_SCREENSHOT set to
// a folder, editors.png (a coloured editor) is saved there.

#include "engine/source/EditorRecords.h"
#include "engine/source/SourceRecords.h"
#include "ui/source/frmEditor.h"
#include "ui/source/frmReplace.h"
#include "support/FileSizeLimit.h"
#include "engine/source/SourceDocuments.h"
#include "support/ui/FileChooser.h"
#include "support/ui/MainFormFixture.h"
#include "support/ui/ModalPlayer.h"
#include "support/ui/ShownWindow.h"
#include "support/WorkFolder.h"

#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QLabel>
#include <QPlainTextEdit>
#include <QRadioButton>
#include <QTextBlock>

namespace {
// Where line 2 starts: behind the first CR LF, LF or lone CR.
qsizetype SecondLine(const QByteArray& bytes)
{
    for (qsizetype i = 0; i < bytes.size(); ++i)
        if (bytes[i] == '\n' || bytes[i] == '\r')
            return i + 1 + (bytes.mid(i, 2) == "\r\n");
    return -1;
}

struct Session {
    MainFormFixture f;
    WorkFolder folder;
    FileChooser chooser;
    frmMain& form;
    bool shown = false;
    // The IDE is started from the work folder, as from a terminal there.
    Session() : form((folder.Enter(), f.Start()))
    {
        UntitledCount = 0;
        shown = ShowAt(form, {900, 600});
    }
    ~Session() { Discard(); }
    static void Discard()   // unsaved test documents go without a question
    {
        for (frmEditor* editor : LoadedEditors())
            editor->TextChanged = false;
    }
    void UndoAll(frmEditor* editor)
    {
        while (editor->Undo)
            form.mnuEditUndo_Click();
    }
    QStringList Boxes() const
    {
        QStringList texts;
        for (const auto& box : f.boxes.boxes)
            texts << box.text;
        return texts;
    }
    frmEditor* Open(const QString& name)
    {
        chooser.answer = folder.Path(name);
        form.Menu("mnuFileOpen")->trigger();
        return ActiveEditor();
    }
};
}  // namespace

class EditorTest : public QObject {
    Q_OBJECT
private slots:
    // Every file saves to its own bytes after edits that are all undone, and
    // an edit changes only its own bytes: a typed character in line 2, or a
    // new line behind line 1, which takes the end most lines have.
    void filesKeepTheirBytesThroughEditsAndUndo()
    {
        QByteArray binary;
        for (int i = 0, x = 7; i < 700; ++i, x = (x * 109 + 89) % 256)
            binary += char(i < 256 ? i : x);
        const struct { const char* name; QByteArray bytes, usual; /* the line end a new line takes */ } rows[] = {
            {"lone CR", "A\rBC\rD", "\r"},
            {"CR LF", "A\r\nBC\r\nD\r\n", "\r\n"},
            {"LF", "A\nBC\nD\n", "\n"},
            {"mostly CR LF", "A\nBC\r\nD\r\n\r\nE\n", "\r\n"},
            {"mostly LF", "A\r\nBC\nD\rE\n\r\n\n", "\n"},
            {"separators", "AB\r\n\xe2\x80\xa9" "C\xe2\x80\xa8\r\nD", "\r\n"},
            {"one byte a character", "* \xa0\xe9\xff\x85\r\n NOP\r\n RTS", "\r\n"},
            {"NUL", QByteArray("\0A\n\0\rB\0\n", 9), "\n"},
            {"byte order mark", "\xef\xbb\xbf NOP\r\n RTS\r\n", "\r\n"},
            {"binary", binary, "\n"},
        };
        Session s;
        QApplication::clipboard()->setText(QString("p\r\nq\rr") + QChar(0x2029) + "s" + QChar(0x2028) + "t\n");
        for (const auto& row : rows) {
            QVERIFY(s.folder.Write("prog.asm", row.bytes));
            frmEditor* editor = s.Open("prog.asm");
            QVERIFY(editor && editor->windowTitle() == "prog.asm" && AsmFile == "prog.asm");
            QCoreApplication::processEvents();   // the colouring runs; it is no change of the text
            QVERIFY(!editor->TextChanged && !s.form.Menu("mnuFileSave")->isEnabled());
            const auto keys = [editor](std::initializer_list<QKeyCombination> keys) {
                for (QKeyCombination key : keys)
                    QTest::keyClick(editor->Text, key.key(), key.keyboardModifiers());
            };
            const auto save = [&] {
                s.form.Menu("mnuFileSave")->trigger();
                return editor->TextChanged ? QByteArray("<unsaved>") : s.folder.Read("prog.asm");
            };
            const auto lineStart = [editor](int line) {
                editor->SetSelection(editor->Text->document()->findBlockByNumber(line).position(), 0);
            };
            lineStart(1);
            keys({Qt::CTRL | Qt::Key_V, Qt::CTRL | Qt::Key_End, Qt::Key_Return});
            lineStart(0);
            keys({Qt::Key_Right, Qt::SHIFT | Qt::Key_Return, Qt::Key_End, Qt::KeypadModifier | Qt::Key_Enter});
            lineStart(2);
            keys({Qt::Key_Backspace, Qt::SHIFT | Qt::Key_Down, Qt::SHIFT | Qt::Key_Down, Qt::Key_Delete, Qt::Key_X});
            const QString edited = editor->FileText();
            const QString usual = QString::fromLatin1(row.usual);
            QVERIFY2(edited.contains("r" + usual + "s" + usual) && !edited.contains(QChar::LineSeparator), row.name);
            s.UndoAll(editor);
            QVERIFY2(save() == row.bytes, row.name);
            while (editor->Redo)
                s.form.mnuEditRedo_Click();
            QVERIFY2(editor->FileText() == edited, row.name);
            s.UndoAll(editor);

            lineStart(1);
            keys({Qt::Key_X});
            QVERIFY2(save() == QByteArray(row.bytes).insert(SecondLine(row.bytes), 'x'), row.name);
            s.form.mnuEditUndo_Click();
            lineStart(0);
            keys({Qt::Key_End, Qt::Key_Return});
            QVERIFY2(save() == QByteArray(row.bytes).insert(SecondLine(row.bytes), row.usual), row.name);
            editor->TextChanged = false;
            editor->parentWidget()->close();
        }
        QVERIFY(s.f.boxes.boxes.isEmpty());
    }

    // A file changed by another program is not written over unasked: Yes
    // loads it; No keeps the text and asks again before the save, not at
    // every activation. The editor's own save, or a file that is gone, asks nothing.
    void savesRespectTheFileOnDisk()
    {
        Session s;
        QVERIFY(s.folder.Write("prog.asm", "mine\n"));
        frmEditor* editor = s.Open("prog.asm");
        s.form.Menu("mnuFileNew")->trigger();
        const auto comeBack = [&] {   // to the other editor and back
            for (frmEditor* next : {LoadedEditors().last(), editor})
                Activate(s.form, next);
        };
        QVERIFY(s.folder.Write("prog.asm", "theirs, longer\n"));
        s.f.boxes.answer = MbResultYes;
        comeBack();
        QCOMPARE(s.Boxes(), QStringList{"prog.asm has been changed outside Orvane. Reload it?"});
        QVERIFY(editor->PlainText() == "theirs, longer\n" && !editor->TextChanged && !s.form.Menu("mnuFileSave")->isEnabled());

        QTest::keyClicks(editor->Text, "+");
        QVERIFY(s.folder.Write("prog.asm", "theirs again\n"));
        s.f.boxes.answer = MbResultNo;
        comeBack();
        comeBack();
        QCOMPARE(s.f.boxes.boxes.size(), 2);
        s.form.Menu("mnuFileSave")->trigger();
        QVERIFY(s.f.boxes.boxes.size() == 3 && s.folder.Read("prog.asm") == QByteArray("+theirs, longer\n"));

        comeBack();
        QVERIFY(QFile::remove(s.folder.Path("prog.asm")));
        comeBack();
        QTest::keyClicks(editor->Text, "*");
        s.form.Menu("mnuFileSave")->trigger();
        QVERIFY(s.f.boxes.boxes.size() == 3 && s.folder.Read("prog.asm") == editor->PlainText().toUtf8());

        // A full disk: the old file stays whole, the editor keeps its change, the user is told why.
        const QByteArray old = s.folder.Read("prog.asm");
        QTest::keyClicks(editor->Text, "new ");
        {
            FileSizeLimit full(old.size());
            s.form.Menu("mnuFileSave")->trigger();
        }
        QVERIFY(s.Boxes().last() == "File too large !" && s.folder.Read("prog.asm") == old);
        QVERIFY(editor->TextChanged && s.form.Menu("mnuFileSave")->isEnabled());
    }

    void unsavedTextAtTheEndOfTheProgram()
    {
        Session s;
        for (const char* text : {"first", "second"}) {
            s.form.Menu("mnuFileNew")->trigger();
            QTest::keyClicks(ActiveEditor()->Text, text);
        }

        // Cancel at the first question: nobody else is asked, the program goes on.
        s.f.boxes.answer = MbResultCancel;
        QVERIFY(!s.form.close() && s.f.boxes.boxes.size() == 1);
        QCOMPARE(s.f.boxes.boxes[0].caption, QString("Orvane - Warning"));
        QVERIFY(s.f.boxes.boxes[0].style == int(MbYesNoCancel + MbQuestion) && LoadedEditors().size() == 2 &&
                !QFile::exists(s.f.settings.FilePath()));

        // Yes: each document is saved under its own title in the current folder.
        s.f.boxes.answer = MbResultYes;
        QVERIFY(s.form.close());
        QCOMPARE(s.Boxes().mid(1), (QStringList{"Save changes to Untitled1.asm ?", "Save changes to Untitled2.asm ?"}));
        QCOMPARE(s.folder.Read("Untitled1.asm") + s.folder.Read("Untitled2.asm"), QByteArray("firstsecond"));
        QVERIFY(EditorCount == std::int16_t(0) && !EditorActive && AsmFile.isEmpty());
    }

    void commandsFollowTheActiveEditor()
    {
        Session s;
        for (int i = 0; i < 3; ++i)
            s.form.Menu("mnuFileNew")->trigger();
        frmEditor* editor = ActiveEditor();
        QVERIFY(editor->windowTitle() == "Untitled3.asm" && AsmFile.isEmpty());   // no file yet
        QVERIFY(s.form.Panel(5)->isVisible() && s.form.Panel(7)->isVisible());
        QCOMPARE(s.form.PanelText(5) + "/" + s.form.PanelText(6), QString("Line 1/Col. 1"));
        for (Qt::Key key : {Qt::Key_A, Qt::Key_Return, Qt::Key_Tab, Qt::Key_B})
            QTest::keyClick(editor->Text, key);
        QCOMPARE(s.form.PanelText(5) + "/" + s.form.PanelText(6), QString("Line 2/Col. 11"));

        // Undo and Redo follow the history, step by step (the rules themselves are the enable rules test's).
        QVERIFY(s.form.Button(13)->isEnabled() && !s.form.Button(14)->isEnabled());
        s.UndoAll(editor);
        QVERIFY(editor->PlainText().isEmpty() && editor->TextChanged);
        QVERIFY(!s.form.Button(13)->isEnabled() && s.form.Button(14)->isEnabled());
        s.form.mnuEditRedo_Click();
        QVERIFY(s.form.Button(13)->isEnabled() && s.form.Menu("mnuEditRedo")->isEnabled() &&
                !s.form.Menu("mnuEditCut")->isEnabled());
        s.form.mnuEditSelectAll_Click();
        QVERIFY(s.form.Button(9)->isEnabled() && s.form.Button(10)->isEnabled());

        Session::Discard();
        while (ActiveEditor())
            s.form.Menu("mnuFileClose")->trigger();
        QVERIFY(EditorCount == std::int16_t(0) && !s.form.Panel(5)->isVisible() && !s.form.Panel(7)->isVisible());
        QVERIFY(!s.form.Menu("mnuFileClose")->isEnabled() && !s.form.Menu("mnuFileSaveAs")->isEnabled());
    }

    void saveAsProposesTheNameAndItsType()
    {
        Session s;
        s.form.Menu("mnuFileNew")->trigger();
        frmEditor* editor = ActiveEditor();
        QTest::keyClicks(editor->Text, "x");
        // Save on a document without a file asks for a name; Cancel changes nothing.
        s.form.Menu("mnuFileSave")->trigger();
        QVERIFY(s.chooser.asked.last().FileName == "Untitled1.asm" && s.chooser.asked.last().FilterIndex == 1);
        QVERIFY(editor->EditorName.isEmpty() && editor->TextChanged);

        for (const auto& [name, filterIndex] : {std::pair{"a.lst", 2}, {"a.b.TXT", 3}, {"plain", 4}}) {
            s.chooser.answer = s.folder.Path(name);
            s.form.Menu("mnuFileSaveAs")->trigger();
            s.form.Menu("mnuFileSaveAs")->trigger();
            QCOMPARE(s.chooser.asked.last().FilterIndex, filterIndex);
            QVERIFY(editor->windowTitle() == name && AsmFile == name && s.folder.Read(name) == QByteArray("x"));
        }

        // Open remembers the file type the user chose, even through a Cancel.
        s.chooser.answer.clear();
        s.chooser.filterIndex = 3;
        s.form.Menu("mnuFileOpen")->trigger();
        s.chooser.filterIndex = 0;
        s.form.Menu("mnuFileOpen")->trigger();
        QVERIFY(s.chooser.asked.last().FilterIndex == 3 && LoadedEditors().size() == 1);

        // A bare name lands in the folder the IDE was started from, never in the
        // program's folder.
        s.chooser.answer = "bare.asm";
        s.form.Menu("mnuFileSaveAs")->trigger();
        QVERIFY(s.folder.Read("bare.asm") == QByteArray("x") && editor->EditorName == s.folder.Path("bare.asm"));

        // A file that cannot be read gives no editor.
        s.chooser.answer = s.folder.Path("missing.asm");
        s.form.Menu("mnuFileOpen")->trigger();
        QVERIFY(LoadedEditors().size() == 1 && s.f.boxes.boxes.last().caption == QString("Orvane - Read Error"));
    }

    // The keys of the Edit entries work the moment an editor has the focus,
    // with the menu never opened: the entries follow the editor's state.
    void editKeysWorkInAFreshlyOpenedEditor()
    {
        Session s;
        QApplication::setActiveWindow(&s.form);
        QVERIFY(QTest::qWaitForWindowActive(&s.form) && s.folder.Write("prog.asm", "LOOP BRA LOOP\n"));
        frmEditor* editor = s.Open("prog.asm");
        editor->Text->setFocus();
        frmReplace* dialog = FindReplaceDialog();
        for (const auto& [key, replace] : {std::pair{Qt::Key_F, false}, {Qt::Key_H, true}}) {
            QTest::keyClick(editor->Text, key, Qt::ControlModifier);
            QVERIFY(dialog->isVisible() && dialog->cbWith->isVisibleTo(dialog) == replace);
            dialog->hide();
            editor->Text->setFocus();
        }
        int lineDialogs = 0;
        ModalPlayer player([&](QDialog&) { ++lineDialogs; });
        QTest::keyClick(editor->Text, Qt::Key_G, Qt::ControlModifier);
        QCOMPARE(lineDialogs, 1);

        // Copy, then Paste at once: the entry follows the clipboard as it changes.
        QApplication::clipboard()->clear();
        QVERIFY(!s.form.Menu("mnuEditPaste")->isEnabled());
        editor->SetSelection(0, 4);
        QTest::keyClick(editor->Text, Qt::Key_C, Qt::ControlModifier);
        QVERIFY(s.form.Menu("mnuEditPaste")->isEnabled() && s.form.Button(11)->isEnabled());
    }

    void findAndReplaceThroughTheDialog()
    {
        Session s;
        QVERIFY(s.folder.Write("prog.asm", "ab xab ab\nab"));
        frmEditor* editor = s.Open("prog.asm");
        frmReplace* dialog = FindReplaceDialog();
        // A selection becomes the search text.
        editor->SetSelection(0, 2);
        s.form.mnuEditFind_Click();
        QVERIFY(dialog->isVisible() && s.form.Button(17)->isEnabled());
        QCOMPARE(dialog->windowTitle() + dialog->cbWhat->currentText(), QString("Findab"));

        dialog->chkWord->setChecked(true);   // the options reach the search
        dialog->cmdFindNext_Click();
        QCOMPARE(editor->SelStart(), 7);
        editor->SetSelection(10, 2);
        s.form.mnuEditFindNext_Click();
        QVERIFY(s.f.boxes.boxes.last().text == QString("Search Text not found !") && editor->SelStart() == 10);

        // The Replace button of the Find layout only changes the layout.
        dialog->cmdReplace_Click();
        QVERIFY(dialog->windowTitle() == QString("Replace") && editor->PlainText() == QString("ab xab ab\nab"));

        // Upward, with a replacement that holds the search text: it ends, each match once.
        dialog->chkWord->setChecked(false);
        dialog->optUp->setChecked(true);
        dialog->cbWith->setEditText("[ab]");
        editor->SetSelection(12, 0);
        dialog->cmdReplaceAll_Click();
        QCOMPARE(editor->PlainText(), QString("[ab] x[ab] [ab]\n[ab]"));
        QCOMPARE(s.Boxes(), (QStringList{"Search Text not found !", "4 items replaced !"}));
        // One Undo takes the whole Replace All back.
        s.form.mnuEditUndo_Click();
        QCOMPARE(editor->PlainText(), QString("ab xab ab\nab"));

        // Replace replaces a selected match, then goes on to the next.
        dialog->optDown->setChecked(true);
        dialog->cbWith->setEditText("");
        editor->SetSelection(0, 2);
        dialog->cmdReplace_Click();
        QCOMPARE(editor->PlainText(), QString(" xab ab\nab"));
        dialog->cmdReplace_Click();
        QCOMPARE(editor->SelStart(), 2);
        QCOMPARE(dialog->cbWhat->count(), 1);   // the same text is not listed twice in a row

        // The dialog losing the activation gives the focus back to the editor's text.
        dialog->activateWindow();
        QTRY_VERIFY(dialog->isActiveWindow());
        s.form.mdiArea()->setFocus();
        s.form.activateWindow();
        QTRY_VERIFY(s.form.isActiveWindow());
        QCOMPARE(QApplication::focusWidget(), editor->Text);

        // Deactivating the editor hides the dialog.
        s.form.Menu("mnuFileNew")->trigger();
        QVERIFY(!dialog->isVisible());
    }

    // Go To Line and the error list's jump put the caret at the start of the
    // line; the jump takes the first editor on the source, the last line for one behind the end.
    void goToLineMovesTheCaretOrSaysWhy()
    {
        Session s;
        QVERIFY(s.folder.Write("prog.asm", "one\ntwo\nthree"));
        frmEditor* editor = s.Open("prog.asm");
        const std::pair<const char*, int> rows[] = {{"2", 4}, {"0", 1}};   // entry, caret afterwards
        for (const auto& [entry, caret] : rows) {
            editor->SetSelection(1, 0);
            ModalPlayer player([&](QDialog& dialog) { TypeAndPressOK(dialog, "txtLine", entry); });
            s.form.mnuEditGoToLine_Click();
            QCOMPARE(editor->SelStart(), caret);
        }
        QCOMPARE(s.Boxes(), QStringList{"Please Enter an Integer (1 .. 999999999) !"});

        QVERIFY(s.Open("prog.asm") != editor);
        for (const auto& [line, caret] : {std::pair{2, 4}, {99, 8}}) {   // line from 1, caret afterwards
            s.form.Documents->ShowLine(s.folder.Path("prog.asm"), "prog.asm", line);
            QVERIFY(ActiveEditor() == editor && s.form.focusWidget() == editor->Text);
            QVERIFY(editor->SelStart() == caret && editor->SelLength() == 0);
        }
    }

    // The parts of a line are the colouring test's; here: drawn lines take
    // their colours, which is no change of the text, and an edit recolours.
    void editorsShowTheFilesInColour()
    {
        Session s;
        QVERIFY(s.folder.Write("count.asm", "PORTB   EQU  $1004\nLOOP    STAA PORTB     show it\n"));
        frmEditor* count = s.Open("count.asm");
        QVERIFY(count && s.shown);
        s.form.grab();   // the lines are drawn
        SaveScreenshot(&s.form, "editors.png");
        const QTextBlock loop = count->Text->document()->findBlockByNumber(1);
        QVERIFY(loop.layout()->formats().size() == 3 && !count->TextChanged && !count->Undo);
        count->SetSelection(loop.position() + 8, 4);
        count->SetSelText("NOP ");
        count->Text->viewport()->grab();
        QCOMPARE(count->Text->document()->findBlockByNumber(1).layout()->formats().size(), 3);
    }
};

QTEST_MAIN(EditorTest)
#include "Editor_test.moc"
