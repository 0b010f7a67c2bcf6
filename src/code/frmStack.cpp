#include "code/frmStack.h"

#include "code/StackView.h"
#include "code/frmAddress.h"
#include "core/TargetState.h"
#include "platform/Fonts.h"
#include "platform/PopupMenu.h"
#include "platform/WindowPlacement.h"
#include "views/EntryFields.h"
#include "views/frmEnterVal.h"
#include "workspace/frmMain.h"

#include <QAction>
#include <QCloseEvent>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QLayout>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMouseEvent>
#include <QScreen>

#include <algorithm>
#include <vector>

namespace {
const QString Prefix = QStringLiteral("Stack");
constexpr double RowTwips = 225;
const QColor PureBlue(0, 0, 255);
}  // namespace

QWidget* CreateStack(frmMain&)
{
    return new frmStack;
}

frmStack::frmStack(QWidget* parent) : QWidget(parent)
{
    setWindowTitle(QStringLiteral("Stack"));
    setFocusPolicy(Qt::StrongFocus);   // the window swallows every key itself
    const QFont font = FixedPitchFont(QStringLiteral("Courier New"), 9.75);
    const QScreen* screen = QGuiApplication::primaryScreen();
    const int width = screen ? screen->size().width() : 1024;
    for (int i = 1; i <= RowCount; ++i) {
        auto* label = new QLabel(this);
        label->setObjectName(QStringLiteral("Label%1").arg(i));
        label->setFont(font);
        label->setAutoFillBackground(true);
        label->setGeometry(0, (i - 1) * RowHeight(), width, RowHeight());
        label->installEventFilter(this);
        Label[i] = label;
    }
    connect(MainForm->mdiArea(), &QMdiArea::subWindowActivated, this, &frmStack::SubWindowActivated);
}

int frmStack::RowHeight() const
{
    return TwipsToPixelsY(RowTwips);
}

bool frmStack::IsActive() const
{
    return MainForm->ActiveWindow() == this;
}

void frmStack::PaintRow(int row, bool current)
{
    QPalette palette = Label[row]->palette();
    palette.setColor(QPalette::Window, current ? PureBlue : QGuiApplication::palette().color(QPalette::Base));
    palette.setColor(QPalette::WindowText, current ? QColor(Qt::white) : QColor(Qt::black));
    Label[row]->setPalette(palette);
}

// ---- Load and unload ------------------------------------------------------------

void frmStack::Form_Load()
{
    LoadPlacement(this, Prefix, MainForm->PlacementDefault(Prefix));
    // The rows to show depend on the size the frame has just been given.
    if (QWidget* frame = parentWidget(); frame && frame->layout())
        frame->layout()->activate();
    Form_Resize();
    ClearScreen();
    mnuGoToSPAddress();
}

void frmStack::closeEvent(QCloseEvent* event)
{
    SavePlacement(this, Prefix);
    MainForm->Menu(QStringLiteral("mnuViewStack"))->setChecked(false);
    event->accept();
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
    for (int i = 1; i <= RowCount; ++i) {
        if (Label[i]->font().bold()) {
            QFont font = Label[i]->font();
            font.setBold(false);
            Label[i]->setFont(font);
        }
    }
    if (CurRow != 0)
        PaintRow(CurRow, false);
}

void frmStack::Redraw()
{
    for (int i = 1; i <= RowCount; ++i) {
        const std::int32_t address = StackRowAddress(StackViewAddress, i);
        PaintRow(i, false);
        if (const bool bold = address == CpuRegisters.SP; Label[i]->font().bold() != bold) {
            QFont font = Label[i]->font();
            font.setBold(bold);
            Label[i]->setFont(font);
        }
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
    if (IsActive())
        PaintRow(CurRow, true);
}

// ---- Reading the target -------------------------------------------------------------

bool frmStack::Read()
{
    std::int32_t address = StackViewAddress;
    std::vector<std::uint8_t> data;
    MainForm->InBytes(address, data, RowCount);
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
    MainForm->OutByte(address, static_cast<std::uint8_t>(EntryValue));
    // The row changes by the refresh that follows, not by itself.
    if (BoardConnected)
        MainForm->Refresh();
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

void frmStack::Label_MouseDown(int index, Qt::MouseButton button, const QPoint& globalPos)
{
    if (button != Qt::RightButton)
        return;
    if (auto* sub = qobject_cast<QMdiSubWindow*>(parentWidget()))
        MainForm->mdiArea()->setActiveSubWindow(sub);
    setFocus();
    QAction* enter = MainForm->Menu(QStringLiteral("mnuPopupStackEnter"));
    enter->setEnabled(CurRow != 0);
    if (CurRow != 0) {
        std::int16_t row = static_cast<std::int16_t>(index);
        SetCurRow(row);
    }
    PopupMenu(MainForm->MenuOf(QStringLiteral("mnuPopupStack")), globalPos);
}

bool frmStack::eventFilter(QObject* watched, QEvent* event)
{
    const auto* label = qobject_cast<QLabel*>(watched);
    const int index = label ? static_cast<int>(std::find(Label.begin(), Label.end(), label) - Label.begin()) : 0;
    if (index >= 1 && index <= RowCount) {
        if (event->type() == QEvent::MouseButtonPress) {
            const auto* press = static_cast<QMouseEvent*>(event);
            if (press->button() == Qt::LeftButton)
                Label_Click(index);
            else
                Label_MouseDown(index, press->button(), press->globalPosition().toPoint());
            return true;
        }
        if (event->type() == QEvent::MouseButtonDblClick) {
            Label_DblClick(index);
            return true;
        }
    }
    return QWidget::eventFilter(watched, event);
}

// ---- Activation ---------------------------------------------------------------------------------

void frmStack::SubWindowActivated(QMdiSubWindow* sub)
{
    const bool mine = sub && sub == parentWidget();
    if (mine && !active_)
        Form_Activate();
    else if (!mine && active_)
        Form_Deactivate();
}

void frmStack::Form_Activate()
{
    active_ = true;
    // A click on a row sets the row itself.
    if (CurRow != 0 && !(QGuiApplication::mouseButtons() & Qt::LeftButton))
        SetCurRow(CurRow);
}

void frmStack::Form_Deactivate()
{
    active_ = false;
    if (CurRow != 0 && Label[CurRow]->palette().color(QPalette::Window) == PureBlue)
        PaintRow(CurRow, false);
}
