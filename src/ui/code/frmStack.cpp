#include "ui/code/frmStack.h"

#include "engine/code/StackView.h"
#include "ui/code/frmAddress.h"
#include "engine/state/TargetState.h"
#include "platform/widgets/Fonts.h"
#include "platform/widgets/WindowPlacement.h"
#include "ui/views/EntryFields.h"
#include "ui/views/frmEnterVal.h"
#include "engine/link/TargetLink.h"
#include "ui/main/frmMain.h"

#include <QAction>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QLayout>

#include <algorithm>
#include <vector>

namespace {
constexpr double RowTwips = 225;
}  // namespace

QWidget* CreateStack(frmMain& main)
{
    return new frmStack(main);
}

frmStack::frmStack(frmMain& main) : ToolWindow(main, QStringLiteral("Stack"), QStringLiteral("Stack"))
{
    setFocusPolicy(Qt::StrongFocus);   // the window swallows every key itself
    setFont(FixedPitchFont(QStringLiteral("Courier New"), 9.75));
    for (int i = 1; i <= RowCount; ++i)
        Label[i] = AddRow(i, RowHeight());
}

int frmStack::RowHeight() const
{
    return TwipsToPixelsY(RowTwips);
}

void frmStack::PaintRow(int row, bool current)
{
    SetLook(Label[row], current ? Qt::white : Qt::black, current ? CurrentColour : PlainColour());
}

void frmStack::Load()
{
    // The rows to show depend on the size the frame has just been given.
    if (QWidget* frame = parentWidget(); frame && frame->layout())
        frame->layout()->activate();
    Form_Resize();
    ClearScreen();
    mnuGoToSPAddress();
}

void frmStack::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    Form_Resize();
}

void frmStack::Form_Resize()
{
    VisibleRows = static_cast<std::int16_t>(std::min(height() / RowHeight(), RowCount));
    for (int i = 1; i <= RowCount; ++i)
        Label[i]->setVisible(i <= VisibleRows);
}

// ---- Drawing -------------------------------------------------------------------------

void frmStack::ClearScreen()
{
    for (int i = 1; i <= RowCount; ++i) {
        Label[i]->setText(QString());
        PaintRow(i, false);
    }
    CurRow = 0;
}

void frmStack::ClearMarks()
{
    for (int i = 1; i <= RowCount; ++i)
        SetBold(Label[i], false);
    if (CurRow != 0)
        PaintRow(CurRow, false);
}

void frmStack::Redraw()
{
    for (int i = 1; i <= RowCount; ++i) {
        const std::int32_t address = StackRowAddress(StackViewAddress, i);
        PaintRow(i, false);
        SetBold(Label[i], address == CpuRegisters.SP);
        const QString text = StackRowText(address, StackViewBuffer[i - 1]);
        if (Label[i]->text() != text)
            Label[i]->setText(text);
    }
}

void frmStack::SetCurRow(std::int16_t& Row)
{
    if (CurRow != 0)
        PaintRow(CurRow, false);
    CurRow = std::min(Row, VisibleRows);
    if (CurRow == 0)
        CurRow = 1;
    if (IsActiveForm())
        PaintRow(CurRow, true);
}

// ---- Reading the target -------------------------------------------------------------

bool frmStack::Read()
{
    std::int32_t address = StackViewAddress;
    std::vector<std::uint8_t> data;
    link_.InBytes(address, data, RowCount);
    if (!BoardConnected || data.size() != StackViewBuffer.size())
        return false;
    std::copy(data.begin(), data.end(), StackViewBuffer.begin());
    return true;
}

void frmStack::mnuRefresh()
{
    if (!Read()) {
        ClearScreen();
        return;
    }
    Redraw();
    std::int16_t row = CurRow == 0 ? std::int16_t(1) : CurRow;
    SetCurRow(row);
}

void frmStack::PageRead()
{
    PageBusy = true;
    const bool good = Read();
    PageBusy = false;
    if (!good) {
        ClearScreen();
        return;
    }
    Redraw();
    SetCurRow(CurRow);
}

// ---- Commands ------------------------------------------------------------------------------

void frmStack::mnuEnter()
{
    if (CurRow == 0)
        return;
    EntryAccepted = false;
    const QString caption = Label[CurRow]->text();
    EntryLabel = StackRowAddressText(caption);
    EntryText = StackRowValueText(caption);
    EntryIsWord = false;
    frmEnterVal::ShowModal();
    if (!EntryAccepted)
        return;
    std::int32_t address = StackRowAddressOf(caption);
    link_.OutByte(address, static_cast<std::uint8_t>(EntryValue));
    // The row changes by the refresh that follows, not by itself.
    if (BoardConnected)
        main_.Refresh();
    else
        ClearScreen();
}

void frmStack::mnuGoToAddress()
{
    EntryAccepted = false;
    frmAddress::HelpContextID = 192;
    frmAddress::ShowModal();
    if (!EntryAccepted)
        return;
    StackViewAddress = EntryValue;
    if (!Read()) {
        ClearScreen();
        return;
    }
    Redraw();
    std::int16_t first = 1;
    SetCurRow(first);
}

void frmStack::mnuGoToSPAddress()
{
    if (CurRow != 0) {
        if (!BoardConnected) {
            ClearScreen();
            return;
        }
        // A visible SP doesn't move the view.
        for (std::int16_t row = 1; row <= VisibleRows; ++row) {
            if (StackRowAddress(StackViewAddress, row) == CpuRegisters.SP) {
                Redraw();
                SetCurRow(row);
                return;
            }
        }
    }
    if (!BoardConnected) {
        ClearScreen();
        return;
    }
    // SP rests on the last visible row; the pushed bytes lie below it.
    StackViewAddress = StackViewForSP(CpuRegisters.SP, VisibleRows);
    if (!Read()) {
        ClearScreen();
        return;
    }
    Redraw();
    SetCurRow(VisibleRows);
}

// ---- Keys and mouse -------------------------------------------------------------------------

void frmStack::Form_KeyDown(int key)
{
    if (CurRow == 0 || VisibleRows == 0 || PageBusy)
        return;
    StackKey move;
    switch (key) {
    case Qt::Key_Up: move = StackKey::Up; break;
    case Qt::Key_Down: move = StackKey::Down; break;
    case Qt::Key_PageUp: move = StackKey::PageUp; break;
    case Qt::Key_PageDown: move = StackKey::PageDown; break;
    case Qt::Key_Return:
    case Qt::Key_Enter: mnuEnter(); return;
    default: return;
    }
    const StackKeyMove to = MoveByKey(move, CurRow, VisibleRows, StackViewAddress);
    if (!to.read) {
        std::int16_t row = static_cast<std::int16_t>(to.curRow);
        SetCurRow(row);
        return;
    }
    StackViewAddress = to.viewAddress;
    PageRead();
}

void frmStack::keyPressEvent(QKeyEvent* event)
{
    Form_KeyDown(event->key());
    event->accept();
}

void frmStack::Label_Click(int index)
{
    if (CurRow == 0 || VisibleRows == 0)
        return;
    std::int16_t row = static_cast<std::int16_t>(index);
    SetCurRow(row);
}

void frmStack::Label_DblClick(int)
{
    if (CurRow != 0 && VisibleRows != 0)
        mnuEnter();
}

void frmStack::Label_RightButton(int index, const QPoint& globalPos)
{
    main_.Menu(QStringLiteral("mnuPopupStackEnter"))->setEnabled(CurRow != 0);
    if (CurRow != 0) {
        std::int16_t row = static_cast<std::int16_t>(index);
        SetCurRow(row);
    }
    ShowPopup("mnuPopupStack", this, globalPos);
}

// ---- Activation ---------------------------------------------------------------------------------

void frmStack::Form_Activate()
{
    // A click on a row sets the row itself.
    if (CurRow != 0 && !(QGuiApplication::mouseButtons() & Qt::LeftButton))
        SetCurRow(CurRow);
}

void frmStack::Form_Deactivate()
{
    if (CurRow != 0 && Label[CurRow]->palette().color(QPalette::Window) == CurrentColour)
        PaintRow(CurRow, false);
}
