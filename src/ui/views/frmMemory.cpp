#include "ui/views/frmMemory.h"

#include "engine/state/ByteHistory.h"
#include "engine/state/Conversions.h"
#include "engine/state/TargetState.h"
#include "platform/widgets/Fonts.h"
#include "platform/widgets/MsgBox.h"
#include "platform/widgets/WindowPlacement.h"
#include "engine/link/TargetLink.h"
#include "ui/views/ChangedBitsDelegate.h"
#include "ui/views/EntryFields.h"
#include "ui/views/frmMemAdr.h"
#include "ui/main/frmMain.h"

#include <QAbstractTableModel>
#include <QAction>
#include <QCoreApplication>
#include <QFrame>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLayout>
#include <QLineEdit>
#include <QMouseEvent>
#include <QPainter>
#include <QStaticText>
#include <QScrollBar>
#include <QTableView>
#include <QToolTip>

#include <algorithm>
#include <array>
#include <span>

namespace {
constexpr double RowTwips = 210;
constexpr double AddressTwips = 930, SpacerTwips = 300, HexTwips = 330, CharTwips = 195;

QString HeadText(int column)
{
    if (column == 0)
        return QStringLiteral("Address");
    if (!MemoryGrid::IsByteColumn(column))
        return QStringLiteral(" ");
    const int byte = MemoryGrid::ByteOf(column);
    return MemoryGrid::SideOf(column) == MemorySide::Hex ? HexPadded(byte, 2) : HexPadded(byte, 1);
}
}  // namespace

// The page as a table: rows and cells come from MemoryGrid and MemoryPage.
class MemoryTableModel : public QAbstractTableModel {
public:
    explicit MemoryTableModel(frmMemory& window) : QAbstractTableModel(&window), window_(window) {}

    int rowCount(const QModelIndex& parent) const override { return parent.isValid() ? 0 : window_.Grid.Rows(); }
    int columnCount(const QModelIndex& parent) const override
    {
        return parent.isValid() ? 0 : MemoryGrid::ColumnCount;
    }
    QVariant data(const QModelIndex& index, int role) const override
    {
        if (role == Qt::DisplayRole)
            return window_.CellText(index.row(), index.column());
        if (role == Qt::UserRole)
            return window_.PageByte(index.row(), index.column());
        if (role == Qt::TextAlignmentRole && MemoryGrid::IsByteColumn(index.column()))
            return int(Qt::AlignCenter);
        if (role == Qt::ForegroundRole && window_.CellChanged(index.row(), index.column()))
            return QColor(ChangedValueColour);
        return {};
    }
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override
    {
        if (orientation == Qt::Horizontal && role == Qt::DisplayRole)
            return HeadText(section);
        return {};
    }
    void Reset()
    {
        beginResetModel();
        endResetModel();
    }
    void RowChanged(int row) { emit dataChanged(index(row, 0), index(row, MemoryGrid::ColumnCount - 1)); }

private:
    frmMemory& window_;
};

// A cell painter that draws the text straight, without the style's item
// machinery: a page of 64 rows is 2,240 cells, redrawn at every read. The 256
// hex and 256 character cells are laid out once and only placed afterwards.
class MemoryCellPainter : public QAbstractItemDelegate {
public:
    using QAbstractItemDelegate::QAbstractItemDelegate;

    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override
    {
        const bool current = option.state & QStyle::State_Selected;
        if (current)
            painter->fillRect(option.rect, option.palette.brush(QPalette::Highlight));
        if (index.column() == 0) {
            painter->setPen(option.palette.color(QPalette::Text));
            painter->drawText(option.rect.left() + 2,
                              option.rect.top() + (option.rect.height() + option.fontMetrics.ascent() -
                                                   option.fontMetrics.descent()) / 2,
                              index.data(Qt::DisplayRole).toString());
            return;
        }
        if (!MemoryGrid::IsByteColumn(index.column()))
            return;   // the spacers stay empty
        const QVariant colour = index.data(Qt::ForegroundRole);
        painter->setPen(current           ? option.palette.color(QPalette::HighlightedText)
                        : colour.isValid() ? colour.value<QColor>()
                                           : option.palette.color(QPalette::Text));
        const int byte = index.data(Qt::UserRole).toInt();
        if (byte < 0)
            return;
        const QStaticText& text = Cached(option.font, MemoryGrid::SideOf(index.column()), byte);
        const QSizeF size = text.size();
        painter->drawStaticText(QPointF(option.rect.left() + (option.rect.width() - size.width()) / 2,
                                        option.rect.top() + (option.rect.height() - size.height()) / 2),
                                text);
    }
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override
    {
        return option.fontMetrics.size(0, index.data(Qt::DisplayRole).toString());
    }

private:
    const QStaticText& Cached(const QFont& font, MemorySide side, int byte) const
    {
        if (font != font_) {
            font_ = font;
            for (int i = 0; i < 256; ++i) {
                hex_[i] = QStaticText(HexCell(static_cast<std::uint8_t>(i)));
                chars_[i] = QStaticText(CharCell(static_cast<std::uint8_t>(i)));
                hex_[i].prepare(QTransform(), font);
                chars_[i].prepare(QTransform(), font);
            }
        }
        return side == MemorySide::Hex ? hex_[byte] : chars_[byte];
    }

    mutable QFont font_;
    mutable std::array<QStaticText, 256> hex_;
    mutable std::array<QStaticText, 256> chars_;
};

QWidget* CreateMemory(frmMain& main)
{
    return new frmMemory(main);
}

frmMemory::frmMemory(frmMain& main) : ToolWindow(main, QStringLiteral("Memory Window"), QStringLiteral("Memory"))
{
    model_ = new MemoryTableModel(*this);

    gridMemory = new QTableView(this);
    gridMemory->setObjectName(QStringLiteral("gridMemory"));
    gridMemory->setFont(FixedPitchFont(QStringLiteral("Courier New"), 10));
    gridMemory->setModel(model_);
    gridMemory->setItemDelegate(new MemoryCellPainter(gridMemory));
    gridMemory->verticalHeader()->hide();
    gridMemory->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    gridMemory->setSelectionMode(QAbstractItemView::SingleSelection);
    gridMemory->setEditTriggers(QAbstractItemView::NoEditTriggers);
    gridMemory->setShowGrid(false);
    gridMemory->setTabKeyNavigation(false);
    gridMemory->horizontalHeader()->setSectionsClickable(false);
    gridMemory->horizontalHeader()->setMinimumSectionSize(1);
    const QFontMetrics metrics(gridMemory->font());
    const int rowHeight = std::max(TwipsToPixelsY(RowTwips), metrics.height() + 2);
    gridMemory->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    gridMemory->verticalHeader()->setDefaultSectionSize(rowHeight);
    gridMemory->horizontalHeader()->setFixedHeight(rowHeight + 2);
    for (int column = 0; column < MemoryGrid::ColumnCount; ++column) {
        const double twips = column == 0                             ? AddressTwips
                             : !MemoryGrid::IsByteColumn(column)     ? SpacerTwips
                             : MemoryGrid::SideOf(column) == MemorySide::Hex ? HexTwips
                                                                             : CharTwips;
        // Courier's cells must hold their text whatever the font that stands in for it.
        const int text = metrics.horizontalAdvance(HeadText(column) == QLatin1String("Address")
                                                       ? QStringLiteral(" $FFFF: ")
                                                       : QStringLiteral("WW").left(column >= 19 ? 1 : 2));
        gridMemory->setColumnWidth(column, std::max(TwipsToPixelsX(twips), text + 4));
    }
    gridMemory->installEventFilter(this);
    gridMemory->viewport()->installEventFilter(this);

    VScroll = new QScrollBar(Qt::Vertical, this);
    VScroll->setObjectName(QStringLiteral("VScroll"));
    VScroll->setTracking(false);   // the page follows when the thumb is let go
    connect(VScroll, &QScrollBar::valueChanged, this, &frmMemory::VScroll_Change);
    connect(VScroll, &QScrollBar::sliderMoved, this, &frmMemory::VScroll_Scroll);

    txtData = new QLineEdit(gridMemory->viewport());
    txtData->setObjectName(QStringLiteral("txtData"));
    txtData->setFont(gridMemory->font());
    txtData->setFrame(false);
    txtData->hide();
    txtData->installEventFilter(this);

    frameAdr = new QFrame(this);
    frameAdr->setObjectName(QStringLiteral("frameAdr"));
    frameAdr->setFrameStyle(QFrame::Box | QFrame::Plain);
    frameAdr->setAutoFillBackground(true);
    frameAdr->setPalette(QToolTip::palette());
    lbAdr = new QLabel(frameAdr);
    lbAdr->setObjectName(QStringLiteral("lbAdr"));
    auto* hint = new QHBoxLayout(frameAdr);
    hint->setContentsMargins(2, 1, 2, 1);
    hint->addWidget(lbAdr);
    frameAdr->setFixedWidth(std::max(TwipsToPixelsX(705), metrics.horizontalAdvance(QStringLiteral("$FFFF")) + 8));
    frameAdr->hide();
}

// ---- Load, size and unload ---------------------------------------------------------

void frmMemory::Load()
{
    if (QWidget* frame = parentWidget(); frame && frame->layout())
        frame->layout()->activate();
    Form_Resize();
    // Opening starts with the address dialog, once the window is up.
    QMetaObject::invokeMethod(
        this,
        [this] {
            firstShow_ = false;
            mnuMemoryAddress();
        },
        Qt::QueuedConnection);
}

int frmMemory::TableWidth() const
{
    int width = 0;
    for (int column = 0; column < MemoryGrid::ColumnCount; ++column)
        width += gridMemory->columnWidth(column);
    return width;
}

QSize frmMemory::ContentSize() const
{
    constexpr int OpeningRows = 16;
    const int frame = 2 * gridMemory->frameWidth();
    return {TableWidth() + frame + VScroll->sizeHint().width(),
            gridMemory->horizontalHeader()->height() + OpeningRows * gridMemory->verticalHeader()->defaultSectionSize() +
                frame};
}

void frmMemory::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    Form_Resize();
}

void frmMemory::Form_Resize()
{
    const int barWidth = VScroll->sizeHint().width();
    const int header = gridMemory->horizontalHeader()->height();
    gridMemory->setGeometry(0, 0, std::max(width() - barWidth, 0), height());
    // A table wider than the window has its own horizontal bar, which takes rows.
    const int frame = 2 * gridMemory->frameWidth();
    const int horizontalBar =
        TableWidth() > gridMemory->width() - frame ? gridMemory->horizontalScrollBar()->sizeHint().height() : 0;
    const int rowsHeight = height() - header - frame - horizontalBar;
    VScroll->setGeometry(width() - barWidth, header, barWidth, std::max(height() - header - horizontalBar, 0));
    const int before = Grid.Rows();
    Grid.SetLinesPerPage(rowsHeight / gridMemory->verticalHeader()->defaultSectionSize());
    scrolling_ = true;
    VScroll->setRange(0, Grid.ScrollMaximum());
    VScroll->setPageStep(std::max(Grid.LinesPerPage(), 1));
    VScroll->setSingleStep(1);
    scrolling_ = false;
    // Rows come and go from the bytes already read: a resize doesn't read.
    if (Grid.Rows() != before)
        model_->Reset();
    ShowCursor();
}

void frmMemory::Form_Activate()
{
    if (!firstShow_ && main_.IsOpen(QStringLiteral("frmMemory")))
        mnuMemoryRefresh();
}

// ---- Drawing -----------------------------------------------------------------------

QString frmMemory::CellText(int row, int column) const
{
    if (column == 0)
        return AddressCell(Grid.RowAddress(row));
    const int byte = PageByte(row, column);
    if (byte < 0)
        return QString();
    const auto value = static_cast<std::uint8_t>(byte);
    return MemoryGrid::SideOf(column) == MemorySide::Hex ? HexCell(value) : CharCell(value);
}

int frmMemory::PageByte(int row, int column) const
{
    if (!pageRead_ || !MemoryGrid::IsByteColumn(column))
        return -1;
    return MemoryPage[static_cast<std::size_t>(row * MemoryGrid::BytesPerRow + MemoryGrid::ByteOf(column))];
}

bool frmMemory::CellChanged(int row, int column) const
{
    return pageRead_ && MemoryGrid::IsByteColumn(column) &&
           SeenBytes.Changed(Grid.RowAddress(row) + MemoryGrid::ByteOf(column));
}

void frmMemory::DisplayPage()
{
    HideEditor();
    MemoryPageAddress = Grid.PageAddress();
    link_.InMemory();
    pageRead_ = BoardConnected;
    if (pageRead_)
        SeenBytes.Seen(MemoryPageAddress, MemoryPage);
    model_->Reset();
    scrolling_ = true;
    VScroll->setValue(Grid.ScrollValue());
    scrolling_ = false;
    ShowCursor();
}

void frmMemory::ShowCursor()
{
    if (Grid.Rows() == 0) {
        gridMemory->clearSelection();
        return;
    }
    const QModelIndex cell = model_->index(Grid.CursorRow(), Grid.CursorColumn());
    gridMemory->setCurrentIndex(cell);
    gridMemory->scrollTo(cell);
}

void frmMemory::AfterMove(bool pageMoved)
{
    if (pageMoved)
        DisplayPage();
    else
        ShowCursor();
}

// ---- Scroll bar --------------------------------------------------------------------

void frmMemory::VScroll_Change(int value)
{
    if (scrolling_)
        return;
    HideEditor();
    if (frameAdr->isVisible()) {
        // A drag has ended: the page starts where the hint said.
        frameAdr->hide();
        value = Grid.DragAddress(value) / MemoryGrid::BytesPerRow;
    }
    Grid.Scroll(value);
    DisplayPage();
    gridMemory->setFocus();
}

void frmMemory::VScroll_Scroll(int value)
{
    HideEditor();
    lbAdr->setText(QLatin1Char('$') + HexPadded(Grid.DragAddress(value), 4));
    if (!frameAdr->isVisible()) {
        const int top = VScroll->y() + TwipsToPixelsY(120) +
                        (VScroll->height() - TwipsToPixelsY(480)) * value / std::max(VScroll->maximum() + 1, 1);
        frameAdr->move(VScroll->x() - frameAdr->width() - TwipsToPixelsX(120), std::max(top, 0));
        frameAdr->show();
        frameAdr->raise();
    }
}

// ---- Keys and mouse ----------------------------------------------------------------

void frmMemory::gridMemory_KeyDown(int key)
{
    static const std::pair<int, MemoryKey> Keys[] = {
        {Qt::Key_Left, MemoryKey::Left},         {Qt::Key_Right, MemoryKey::Right},
        {Qt::Key_Up, MemoryKey::Up},             {Qt::Key_Down, MemoryKey::Down},
        {Qt::Key_PageUp, MemoryKey::PageUp},     {Qt::Key_PageDown, MemoryKey::PageDown},
        {Qt::Key_Home, MemoryKey::Home},         {Qt::Key_End, MemoryKey::End},
        {Qt::Key_Tab, MemoryKey::Tab},           {Qt::Key_Backtab, MemoryKey::Tab},
    };
    for (const auto& [code, move] : Keys)
        if (code == key) {
            HideEditor();
            AfterMove(Grid.Key(move));
            return;
        }
    if (key == Qt::Key_Return || key == Qt::Key_Enter)
        mnuMemoryEnter();
}

bool frmMemory::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == gridMemory && event->type() == QEvent::KeyPress) {
        // Typing in the table itself does nothing: editing starts with Enter.
        gridMemory_KeyDown(static_cast<QKeyEvent*>(event)->key());
        return true;
    }
    if (watched == gridMemory->viewport()) {
        if (event->type() == QEvent::MouseButtonPress) {
            const auto* press = static_cast<QMouseEvent*>(event);
            HideEditor();
            gridMemory->setFocus();
            if (press->button() == Qt::RightButton) {
                // The cursor stays where it was for the menu.
                ShowPopup("mnuPopupMemory", gridMemory, press->globalPosition().toPoint());
            } else {
                const QModelIndex cell = gridMemory->indexAt(press->position().toPoint());
                if (cell.isValid())
                    Grid.Click(cell.row(), cell.column());
                ShowCursor();
            }
            return true;
        }
        if (event->type() == QEvent::MouseButtonDblClick) {
            const QModelIndex cell = gridMemory->indexAt(static_cast<QMouseEvent*>(event)->position().toPoint());
            if (cell.isValid() && cell.column() == 0)
                mnuMemoryAddress();
            else if (cell.isValid())
                EnterData(cell.row(), cell.column());
            return true;
        }
        if (event->type() == QEvent::MouseMove)
            frameAdr->hide();
    }
    if (watched == txtData) {
        if (event->type() == QEvent::FocusOut) {
            txtData->hide();
        } else if (event->type() == QEvent::KeyPress) {
            const auto* key = static_cast<QKeyEvent*>(event);
            txtData_KeyPress(key->key(), key->text());
            return true;
        }
    }
    return ToolWindow::eventFilter(watched, event);
}

// ---- Editing -------------------------------------------------------------------------

void frmMemory::mnuMemoryEnter()
{
    EnterData(Grid.CursorRow(), Grid.CursorColumn());
}

void frmMemory::EnterData(int row, int column)
{
    if (row < 0 || row >= Grid.Rows() || !MemoryGrid::IsByteColumn(column))
        return;
    Grid.Click(row, column);
    ShowCursor();
    const QRect cell = gridMemory->visualRect(model_->index(row, column));
    txtData->setGeometry(cell.adjusted(1, 0, -1, 0));
    txtData->setText(CellText(row, column));
    txtData->selectAll();
    txtData->show();
    txtData->setFocus();
}

void frmMemory::txtData_KeyPress(int key, const QString& text)
{
    switch (key) {
    case Qt::Key_Escape:
        HideEditor();
        gridMemory->setFocus();
        return;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        if (txtData->text().isEmpty())
            return;
        txtData->hide();
        SendByte();
        gridMemory->setFocus();
        return;
    case Qt::Key_Backspace:
    case Qt::Key_Delete:
    case Qt::Key_Left:
    case Qt::Key_Right:
    case Qt::Key_Home:
    case Qt::Key_End: {
        // Ordinary editing.
        QKeyEvent ordinary(QEvent::KeyPress, key, Qt::NoModifier, text);
        txtData->removeEventFilter(this);
        QCoreApplication::sendEvent(txtData, &ordinary);
        txtData->installEventFilter(this);
        return;
    }
    default:
        break;
    }
    if (text.size() != 1)
        return;
    QString box = txtData->text();
    int caret = txtData->hasSelectedText() ? txtData->selectionStart() : txtData->cursorPosition();
    int selection = static_cast<int>(txtData->selectedText().size());
    if (!TypeIntoCell(Grid.CursorSide(), text.at(0), box, caret, selection))
        return;
    txtData->setText(box);
    txtData->setCursorPosition(caret);
}

void frmMemory::SendByte()
{
    const int sent = CellByte(Grid.CursorSide(), txtData->text());
    if (sent < 0)
        return;
    const std::int32_t address = Grid.CursorAddress();
    std::int32_t at = address;
    link_.OutByte(at, static_cast<std::uint8_t>(sent));
    if (!BoardConnected)
        return;
    std::uint8_t readBack = 0;
    link_.InByte(at, readBack);
    if (!BoardConnected)
        return;
    SeenBytes.Seen(address, readBack);
    // Both cells of the byte show what the target kept, not what was typed.
    MemoryPage[static_cast<std::size_t>(address - Grid.PageAddress())] = readBack;
    model_->RowChanged(Grid.CursorRow());
    if (readBack != sent)
        MsgBox(QStringLiteral("Can't Write to Memory !\n\r (Read Only Memory)"), MbOkOnly | MbExclamation,
               QStringLiteral("Orvane - Memory Write Error"));
    if (BoardConnected)
        main_.Refresh();   // the other views follow the write
}

void frmMemory::HideEditor()
{
    txtData->hide();
}

// ---- Commands -------------------------------------------------------------------------

void frmMemory::mnuMemoryAddress()
{
    EntryAccepted = false;
    frmMemAdr::ShowModal();
    if (!EntryAccepted)
        MemoryGoAddress = 0;
    Grid.GoTo(MemoryGoAddress);
    DisplayPage();
    gridMemory->setFocus();
}

void frmMemory::mnuMemoryRefresh()
{
    DisplayPage();
    gridMemory->setFocus();
}
