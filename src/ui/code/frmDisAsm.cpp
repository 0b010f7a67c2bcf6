#include "ui/code/frmDisAsm.h"

#include "ui/code/frmAddress.h"
#include "engine/state/TargetState.h"
#include "engine/execution/Breakpoints.h"
#include "platform/widgets/Fonts.h"
#include "platform/widgets/MsgBox.h"
#include "platform/TickCount.h"
#include "platform/widgets/WindowPlacement.h"
#include "ui/views/EntryFields.h"
#include "engine/link/TargetLink.h"
#include "ui/main/frmMain.h"

#include <QAction>
#include <QElapsedTimer>
#include <QFontMetrics>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QScrollBar>
#include <algorithm>
#include <vector>

namespace {
frmDisAsm* TheInstance = nullptr;
const QString Prefix = QStringLiteral("DisAsm");
constexpr double RowTwips = 225;
constexpr std::uint32_t RefreshPauseMs = 10;

QFont RowFont()
{
    return FixedPitchFont(QStringLiteral("Courier New"), 9.75);
}
}  // namespace

const QColor frmDisAsm::BreakpointColour{255, 0, 0};
const QColor frmDisAsm::CurrentBreakColour{255, 0, 255};

frmDisAsm* frmDisAsm::Instance()
{
    return TheInstance;
}

int frmDisAsm::SymbolRowWidth()
{
    // A call with the source line at the listing's tab stops.
    const std::uint8_t call[] = {0xBD, 0xE0, 0x10};
    QString row;
    BuildRowText(row, 0xE000, call, 3, QLatin1Char(' '), u"LOOP    JSR     SUBROUT");
    return QFontMetrics(RowFont()).horizontalAdvance(row);
}

frmDisAsm* frmDisAsm::Open()
{
    return qobject_cast<frmDisAsm*>(ToolWindow::Open(QStringLiteral("frmDisAsm")));
}

QWidget* CreateDisAsm(frmMain& main)
{
    auto* form = new frmDisAsm(main);
    TheInstance = form;
    return form;
}

frmDisAsm::frmDisAsm(frmMain& main) : ToolWindow(main, QStringLiteral("Disassembler"), Prefix)
{
    setFont(RowFont());
    // The window itself takes the keyboard focus: its keys never reach a control.
    setFocusPolicy(Qt::StrongFocus);
    QPalette own = palette();
    own.setColor(QPalette::Window, PlainColour());
    setPalette(own);
    setAutoFillBackground(true);
    for (int i = 1; i <= PageRowCount; ++i) {
        Label[i] = AddRow(i, RowHeight());
        Label[i]->setAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    }
    HScroll = new QScrollBar(Qt::Horizontal, this);
    HScroll->setObjectName(QStringLiteral("HScroll"));
    HScroll->setFocusPolicy(Qt::NoFocus);
    HScroll->hide();
    connect(HScroll, &QScrollBar::valueChanged, this, &frmDisAsm::HScroll_Change);
}

frmDisAsm::~frmDisAsm()
{
    if (TheInstance == this)
        TheInstance = nullptr;
}

int frmDisAsm::RowHeight() const
{
    return TwipsToPixelsY(RowTwips);
}

// ---- Load, unload, activation ----------------------------------------------

void frmDisAsm::Load()
{
    ClearScreen();
    mnuGoToPCAddress();
}

void frmDisAsm::Form_Unload()
{
    MainForm->DisAsmUnloaded();
    if (TheInstance == this)
        TheInstance = nullptr;
}

void frmDisAsm::Form_Activate()
{
    Menus();
    // A click on a row activates the window first; the click sets the row itself.
    if (CurRow != 0 && !(QGuiApplication::mouseButtons() & Qt::LeftButton))
        SetCurRow(CurRow);
}

void frmDisAsm::Form_Deactivate()
{
    if (CurRow != 0)
        Unhighlight(CurRow);
    MainForm->DisAsmDeactivated();
}

void frmDisAsm::Menus()
{
    MainForm->DisAsmMenus();
}

// ---- Row looks ---------------------------------------------------------------

void frmDisAsm::SetLook(int row, const QColor& text, const QColor& background)
{
    ToolWindow::SetLook(Label[row], text, background);
}

void frmDisAsm::Unhighlight(int row)
{
    const QColor background = RowBackground(row);
    if (background == CurrentColour)
        SetLook(row, Qt::black, PlainColour());
    else if (background == CurrentBreakColour)
        SetLook(row, Qt::black, BreakpointColour);
}

QColor frmDisAsm::RowBackground(int row) const
{
    return Label[row]->palette().color(QPalette::Window);
}

QColor frmDisAsm::RowTextColour(int row) const
{
    return Label[row]->palette().color(QPalette::WindowText);
}

bool frmDisAsm::RowBold(int row) const
{
    return Label[row]->font().bold();
}

QString frmDisAsm::RowCaption(int row) const
{
    return Label[row]->text();
}

void frmDisAsm::SetCurRow(std::int16_t& Row)
{
    if (CurRow >= 1 && CurRow <= PageRowCount)
        Unhighlight(CurRow);
    CurRow = Row;
    if (CurRow < 1 || CurRow > PageRowCount || !IsActiveForm())
        return;
    if (RowBackground(CurRow) == BreakpointColour)
        SetLook(CurRow, Qt::black, CurrentBreakColour);
    else
        SetLook(CurRow, Qt::white, CurrentColour);
}

void frmDisAsm::ClearScreen()
{
    for (int i = 1; i <= PageRowCount; ++i) {
        PageRows[i - 1].RowText.resize(0);
        Label[i]->clear();
        SetLook(i, Qt::black, PlainColour());
        SetBold(Label[i], false);
    }
    CurRow = 0;
    HScroll->hide();
}

void frmDisAsm::ClearMarks()
{
    for (int i = 1; i <= PageRowCount; ++i)
        SetBold(Label[i], false);
    if (CurRow >= 1 && CurRow <= PageRowCount)
        Unhighlight(CurRow);
}

// ---- Drawing -----------------------------------------------------------------

void frmDisAsm::DisAsmPage()
{
    PageSwitches switches;
    switches.CodeOn = MainForm->Menu("mnuDebugCodeOn")->isChecked();
    switches.IncludeSym = MainForm->Menu("mnuDebugIncludeSym")->isChecked();
    switches.ReadTarget = MainForm->Link().Reader();
    DecodePage(TopAddress, switches, PageRows);
    for (int i = 1; i <= PageRowCount; ++i) {
        const PageRow& row = PageRows[i - 1];
        SetLook(i, Qt::black, row.Breakpoint ? BreakpointColour : PlainColour());
        SetBold(Label[i], row.AtPC);
    }
    Form_Resize();
    HScroll_Change();
}

void frmDisAsm::PageRedraw()
{
    if (CurRow == 0)
        return;
    DisAsmPage();
    SetCurRow(CurRow);
}

void frmDisAsm::Form_Resize()
{
    int longest = 0;
    for (int i = 0; i < std::min<int>(VisibleRows, PageRowCount); ++i)
        longest = std::max(longest, static_cast<int>(PageRows[i].RowText.size()));
    const int charWidth = std::max(1, fontMetrics().horizontalAdvance(QLatin1Char(' ')));
    const int clientWidth = width();
    const int clientHeight = height();
    if (CurRow != 0 && longest * charWidth > clientWidth) {
        const int barHeight = HScroll->sizeHint().height();
        const int top = std::max(0, clientHeight - barHeight);
        HScroll->setGeometry(0, top, clientWidth, barHeight);
        HScroll->setMaximum(longest - clientWidth / charWidth);
        HScroll->setPageStep(clientWidth / charWidth);
        HScroll->show();
        HScroll->raise();
        VisibleRows = static_cast<std::int16_t>(top / RowHeight());
    } else {
        HScroll->hide();
        HScroll->setValue(0);
        VisibleRows = static_cast<std::int16_t>(clientHeight / RowHeight());
    }
    VisibleRows = std::min<std::int16_t>(VisibleRows, PageRowCount);
    // Rows are as wide as the screen, or as the window where that spans more.
    const int rowWidth = std::max(Label[1]->width(), clientWidth);
    for (int i = 1; i <= PageRowCount; ++i) {
        if (Label[i]->width() != rowWidth)
            Label[i]->resize(rowWidth, RowHeight());
        Label[i]->setVisible(i <= VisibleRows);
    }
}

void frmDisAsm::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    Form_Resize();
}

void frmDisAsm::HScroll_Change()
{
    const int from = HScroll->value();
    for (int i = 1; i <= PageRowCount; ++i) {
        const QStringView caption = QStringView(PageRows[i - 1].RowText).mid(std::min<qsizetype>(
            from, PageRows[i - 1].RowText.size()));
        // Only a changed caption is written: Animate redraws the page at every step.
        if (Label[i]->text() != caption)
            Label[i]->setText(caption.toString());
    }
}

// ---- Reading the target ------------------------------------------------------

void frmDisAsm::ReadProgramPC()
{
    std::int32_t pc = CpuRegisters.PC;
    std::vector<std::uint8_t> bytes;
    link_.InBytes(pc, bytes, static_cast<std::int16_t>(InstructionWindow.size()));
    if (BoardConnected && bytes.size() == InstructionWindow.size())
        std::copy(bytes.begin(), bytes.end(), InstructionWindow.begin());
}

bool frmDisAsm::ReadPage()
{
    PageBusy = true;
    link_.InProgram();
    PageBusy = false;
    Menus();
    if (!BoardConnected) {
        ClearScreen();
        return false;
    }
    return true;
}

void frmDisAsm::ShowPageAtBase()
{
    Menus();
    if (!BoardConnected) {
        ClearScreen();
        return;
    }
    TopAddress = ProgramBase;
    DisAsmPage();
    std::int16_t first = 1;
    SetCurRow(first);
}

void frmDisAsm::mnuGoToAddress()
{
    EntryAccepted = false;
    frmAddress::HelpContextID = 191;
    frmAddress::ShowModal();
    if (!EntryAccepted)
        return;
    ProgramBase = EntryValue;
    link_.InCPU();
    if (BoardConnected)
        ReadProgramPC();
    if (BoardConnected)
        link_.InProgram();
    ShowPageAtBase();
}

void frmDisAsm::mnuGoToPCAddress()
{
    link_.InCPU();
    CpuRegisters.PC &= 0xFFFF;
    if (BoardConnected)
        ReadProgramPC();
    if (CurRow != 0 && BoardConnected) {
        for (int i = 1; i <= std::min<int>(VisibleRows, PageRowCount); ++i) {
            if (PageRows[i - 1].RowAddress == CpuRegisters.PC) {
                // PC on the page: the page stays, only the current row moves.
                Menus();
                CurRow = static_cast<std::int16_t>(i);
                PageRedraw();
                return;
            }
        }
    }
    if (BoardConnected) {
        ProgramBase = CpuRegisters.PC;
        link_.InProgram();
    }
    ShowPageAtBase();
}

void frmDisAsm::mnuRefresh()
{
    if (VisibleRows == 0)
        return;
    link_.InCPU();
    if (BoardConnected)
        ReadProgramPC();
    // The board's pause between the two exchanges, with no events let in. The
    // real clock bounds it too, so a test clock that stands still cannot hang it.
    const std::uint32_t start = GetTickCount();
    QElapsedTimer bound;
    bound.start();
    while (GetTickCount() - start < RefreshPauseMs && bound.elapsed() < RefreshPauseMs) {
    }
    if (BoardConnected)
        link_.InProgram();
    if (CurRow != 0 && BoardConnected) {
        // The page stays where it is, on the fresh bytes.
        Menus();
        PageRedraw();
        return;
    }
    ShowPageAtBase();
}

std::optional<std::int32_t> frmDisAsm::CursorAddress() const
{
    if (CurRow == 0)
        return std::nullopt;
    return PageRows[CurRow - 1].RowAddress;
}

void frmDisAsm::mnuSetNewPC()
{
    if (const auto cursor = CursorAddress()) {
        CpuRegisters.PC = *cursor;
        MainForm->Refresh();
    }
}

void frmDisAsm::mnuRunToCursor()
{
    if (const auto cursor = CursorAddress())
        RunToAddress = *cursor;
}

// ---- Keys --------------------------------------------------------------------

void frmDisAsm::keyPressEvent(QKeyEvent* event)
{
    Form_KeyDown(event->key());
    event->accept();
}

void frmDisAsm::Form_KeyDown(int key)
{
    if (CurRow == 0 || VisibleRows == 0)
        return;
    std::int16_t row = CurRow;
    switch (key) {
    case Qt::Key_Up:
        if (CurRow >= 2) {
            row = static_cast<std::int16_t>(CurRow - 1);
            SetCurRow(row);
        } else if (!PageBusy) {
            ScrollUpOne();
        }
        break;
    case Qt::Key_Down:
        if (CurRow < VisibleRows) {
            row = static_cast<std::int16_t>(CurRow + 1);
            SetCurRow(row);
        } else if (!PageBusy) {
            ProgramBase = PageRows[1].RowAddress;
            if (!ReadPage())
                return;
            TopAddress = ProgramBase;
            DisAsmPage();
            row = VisibleRows;
            SetCurRow(row);
        }
        break;
    case Qt::Key_PageDown:
        if (PageBusy)
            return;
        // The bottom row becomes the top row.
        ProgramBase = PageRows[VisibleRows - 1].RowAddress;
        if (!ReadPage())
            return;
        TopAddress = ProgramBase;
        DisAsmPage();
        SetCurRow(row);
        break;
    case Qt::Key_PageUp:
        if (!PageBusy)
            PageUp();
        break;
    default:
        break;
    }
}

void frmDisAsm::ScrollUpOne()
{
    // Machine code has no marks where an instruction starts: try the candidates.
    const std::int32_t base = (PageRows[0].RowAddress - 5) & 0xFFFF;
    ProgramBase = base;
    if (!ReadPage())
        return;
    TopAddress = ScrollUpTop(base);
    DisAsmPage();
    std::int16_t row = CurRow;
    SetCurRow(row);
}

void frmDisAsm::PageUp()
{
    const std::int32_t oldTop = TopAddress & 0xFFFF;
    const std::int32_t base = (PageRows[VisibleRows - 1].RowAddress - 250) & 0xFFFF;
    ProgramBase = base;
    if (!ReadPage())
        return;
    TopAddress = PageUpTop(base, oldTop, VisibleRows);
    DisAsmPage();
    std::int16_t row = CurRow;
    SetCurRow(row);
}

// ---- Mouse and breakpoints -----------------------------------------------------

void frmDisAsm::Label_Click(int Index)
{
    std::int16_t row = static_cast<std::int16_t>(Index);
    if (CurRow != 0)
        SetCurRow(row);
}

void frmDisAsm::Label_RightButton(int Index, const QPoint& globalPos)
{
    setFocus();
    std::int16_t row = static_cast<std::int16_t>(Index);
    if (CurRow != 0)
        SetCurRow(row);
    MainForm->ShowDebugPopup(globalPos);
}

void frmDisAsm::Label_DblClick(int Index)
{
    if (CurRow == 0 || Index < 1 || Index > PageRowCount)
        return;
    switch (ToggleBreakpoint(PageRows[Index - 1].RowAddress)) {
    case BreakpointToggle::Removed:
        MainForm->BreakpointCountChanged();
        SetLook(Index, Qt::black, PlainColour());
        if (Index == CurRow && IsActiveForm())
            SetLook(Index, Qt::white, CurrentColour);
        break;
    case BreakpointToggle::TableFull:
        SayTableFull();
        break;
    case BreakpointToggle::Added: {
        MainForm->BreakpointCountChanged();
        SetLook(Index, Qt::black, BreakpointColour);
        std::int16_t row = static_cast<std::int16_t>(Index);
        SetCurRow(row);
        break;
    }
    }
}

void frmDisAsm::SayTableFull()
{
    MsgBox(QStringLiteral("  Can't Set Breakpoint !\n (Max. Breakpoints = %1)").arg(MaxBreakpoints),
           MbOkOnly | MbExclamation, QStringLiteral("Orvane - Breakpoint Error"));
}

void frmDisAsm::mnuToggleBreakpoint()
{
    Label_DblClick(CurRow);
}

void frmDisAsm::mnuClearAllBreakpoints()
{
    std::int32_t address = 0;
    while (TakeLastBreakpoint(address)) {
        if (CurRow == 0)
            continue;
        for (int i = 1; i <= PageRowCount; ++i) {
            if (PageRows[i - 1].RowAddress != address)
                continue;
            if (i == CurRow && IsActiveForm())
                SetLook(i, Qt::white, CurrentColour);
            else
                SetLook(i, Qt::black, PlainColour());
        }
    }
    MainForm->BreakpointCountChanged();
}
