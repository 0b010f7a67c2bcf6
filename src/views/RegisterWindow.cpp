#include "views/RegisterWindow.h"

#include "core/TargetState.h"
#include "platform/Fonts.h"
#include "platform/PopupMenu.h"
#include "platform/WindowPlacement.h"
#include "views/ChangedBitsDelegate.h"
#include "views/EntryFields.h"
#include "views/frmEnterVal.h"
#include "workspace/frmMain.h"

#include <QAction>
#include <QCloseEvent>
#include <QHeaderView>
#include <QKeyEvent>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>
#include <QMouseEvent>
#include <QStyle>
#include <QTreeWidget>
#include <QVBoxLayout>

#include <algorithm>

namespace {
constexpr double NameColumnTwips = 780;

QAction* Entry(const char* name)
{
    return MainForm->Menu(QString::fromLatin1(name));
}

QAction* FormatEntry(char format)
{
    switch (format) {
    case '$': return Entry("mnuPopupViewHex");
    case '%': return Entry("mnuPopupViewBin");
    default: return Entry("mnuPopupViewDec");
    }
}
}  // namespace

void ReadRegisterBlockSource(frmMain& main)
{
    main.ReadRegisterBlock();
}

std::int32_t RegisterBlockValue(const RegisterRow& row, int)
{
    return BlockValue(row, RegisterBlock, RegisterBlockAddress);
}

RegisterWindow::RegisterWindow(const RegisterWindowKind& kind, QWidget* parent) : QWidget(parent), kind_(kind)
{
    setWindowTitle(QString::fromLatin1(kind.caption));
    setFont(FixedPitchFont(QStringLiteral("Courier New"), 9.75));

    ListView = new QTreeWidget(this);
    ListView->setObjectName(QStringLiteral("ListView"));
    ListView->setColumnCount(2);
    ListView->setRootIsDecorated(false);
    ListView->setHeaderHidden(true);   // two columns without captions
    ListView->setUniformRowHeights(true);
    ListView->setTextElideMode(Qt::ElideNone);
    ListView->setSelectionBehavior(QAbstractItemView::SelectRows);
    ListView->header()->setStretchLastSection(false);
    ListView->header()->setMinimumSectionSize(0);
    ListView->setColumnWidth(0, TwipsToPixelsX(NameColumnTwips));
    ListView->setColumnWidth(1, 0);
    ListView->setItemDelegateForColumn(1, new ChangedBitsDelegate(ListView));
    for (const RegisterRow& row : kind.rows) {
        auto* item = new QTreeWidgetItem(QStringList{QString::fromLatin1(row.name), QString()});
        item->setToolTip(0, RowToolTip(row));
        item->setToolTip(1, RowToolTip(row));
        ListView->addTopLevelItem(item);
        RowFormat.push_back(row.format);
    }
    ListView->installEventFilter(this);
    ListView->viewport()->installEventFilter(this);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(ListView);

    if (kind.autoRefresh)
        connect(MainForm->mdiArea(), &QMdiArea::subWindowActivated, this, &RegisterWindow::SubWindowActivated);
}

int RegisterWindow::ValueColumnWidth() const
{
    return ListView->columnWidth(1);
}

QString RegisterWindow::Cell(int row) const
{
    return ListView->topLevelItem(row)->text(1);
}

int RegisterWindow::SelectedRow() const
{
    QTreeWidgetItem* item = ListView->currentItem();
    return item && item->isSelected() ? ListView->indexOfTopLevelItem(item) : -1;
}

void RegisterWindow::SelectRow(int row)
{
    ListView->setCurrentItem(ListView->topLevelItem(row));
}

void RegisterWindow::Form_Load()
{
    LoadPlacement(this, QString::fromLatin1(kind_.placementPrefix),
                  MainForm->PlacementDefault(QString::fromLatin1(kind_.placementPrefix)));
    AutoRefresh = false;
    mnuRefresh();
}

void RegisterWindow::closeEvent(QCloseEvent* event)
{
    // Formats and AutoRefresh are not kept: a reopened window starts from its table.
    SavePlacement(this, QString::fromLatin1(kind_.placementPrefix));
    if (active_)
        Form_Deactivate();
    MainForm->Menu(QString::fromLatin1(kind_.viewEntry))->setChecked(false);
    event->accept();
}

// ---- Drawing ----------------------------------------------------------------

void RegisterWindow::Redraw()
{
    // Play redraws the CPU window at every step, but nothing is painted
    // between the loop's event passes: the cells are written once a pass,
    // with the values of the last step.
    if (!PlayActive) {
        WriteCells();
        return;
    }
    if (cellsPending_)
        return;
    cellsPending_ = true;
    QMetaObject::invokeMethod(
        this, [this] { if (cellsPending_) WriteCells(); }, Qt::QueuedConnection);
}

void RegisterWindow::WriteCells()
{
    cellsPending_ = false;
    const QFontMetrics metrics(ListView->font());
    int widest = 0;
    for (int i = 0; i < static_cast<int>(kind_.rows.size()); ++i) {
        const RegisterRow& row = kind_.rows[i];
        const QString text = CellText(row, kind_.value(row, i), RowFormat[i]);
        // Only changed cells are written.
        QTreeWidgetItem* item = ListView->topLevelItem(i);
        if (item->text(1) != text)
            item->setText(1, text);
        if (kind_.changedBits)
            MarkChanges(*item, kind_.changedBits(row, i));
        widest = std::max(widest, metrics.horizontalAdvance(text));
    }
    // The list pads each cell by the style's text margin on both sides.
    const int padding = 2 * (ListView->style()->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, ListView) + 1);
    if (ListView->columnWidth(1) != widest + padding)
        ListView->setColumnWidth(1, widest + padding);
}

void RegisterWindow::MarkChanges(QTreeWidgetItem& item, std::uint32_t bits)
{
    // Bits that changed since the last stop stand out (ChangedBitsDelegate).
    const QVariant mark = bits ? QVariant(bits) : QVariant();
    if (item.data(1, ChangedBitsRole) != mark)
        item.setData(1, ChangedBitsRole, mark);
}

void RegisterWindow::ClearScreen()
{
    cellsPending_ = false;
    for (int i = 0; i < ListView->topLevelItemCount(); ++i)
        ListView->topLevelItem(i)->setText(1, QString());
    ListView->setColumnWidth(1, 0);
}

void RegisterWindow::mnuRefresh()
{
    if (kind_.autoRefresh)
        MainForm->tmrRefresh.stop();
    kind_.read(*MainForm);
    if (BoardConnected) {
        Redraw();
    } else {
        ClearScreen();
        AutoRefresh = false;
    }
    StartTimerIfAuto();
}

// ---- Formats ------------------------------------------------------------------

void RegisterWindow::SetFormat(char format)
{
    const int row = SelectedRow();
    if (row < 0 || kind_.rows[row].flagLetters)
        return;   // the flag row keeps its letters
    RowFormat[row] = format;
    Redraw();
}

void RegisterWindow::mnuViewDec() { SetFormat(' '); }
void RegisterWindow::mnuViewHex() { SetFormat('$'); }
void RegisterWindow::mnuViewBin() { SetFormat('%'); }

// ---- Value entry ----------------------------------------------------------------

void RegisterWindow::mnuEnter()
{
    if (ValueColumnWidth() == 0)
        return;
    const int index = SelectedRow();
    if (index < 0 || kind_.rows[index].readOnly)
        return;
    const RegisterRow& row = kind_.rows[index];
    if (kind_.autoRefresh)
        MainForm->tmrRefresh.stop();
    EntryAccepted = false;
    EntryLabel = QString::fromLatin1(row.name);
    EntryText = EntryTextOf(row, kind_.value(row, index), Cell(index));
    EntryIsWord = row.isWord;
    frmEnterVal::ShowModal();
    if (EntryAccepted) {
        if (row.write == RowWrite::HostPC) {
            CpuRegisters.PC = EntryValue;
        } else if (row.write == RowWrite::Target) {
            std::int32_t address = row.address;
            const std::vector<std::uint8_t> bytes = WriteBytesOf(row, EntryValue);
            if (row.isWord)
                MainForm->OutBytes(address, bytes, 2);
            else
                MainForm->OutByte(address, bytes[0]);
        }
        // The window shows what the target gives back, not what was typed.
        if (BoardConnected) {
            MainForm->Refresh();
        } else {
            ClearScreen();
            AutoRefresh = false;
        }
    }
    StartTimerIfAuto();
}

// ---- Popup --------------------------------------------------------------------------

void RegisterWindow::ListView_RightButton(const QPoint& viewportPos)
{
    MainForm->SetRegistersHelp();
    if (auto* sub = qobject_cast<QMdiSubWindow*>(parentWidget()))
        MainForm->mdiArea()->setActiveSubWindow(sub);
    ListView->setFocus();

    QAction* enter = Entry("mnuPopupViewEnter");
    QTreeWidgetItem* item = ListView->itemAt(viewportPos);
    for (char format : {'$', '%', ' '})
        FormatEntry(format)->setChecked(false);
    if (!item || ValueColumnWidth() == 0) {
        enter->setEnabled(false);
        for (char format : {'$', '%', ' '})
            FormatEntry(format)->setEnabled(false);
    } else {
        ListView->setCurrentItem(item);
        const RegisterRow& row = kind_.rows[ListView->indexOfTopLevelItem(item)];
        for (char format : {'$', '%', ' '})
            FormatEntry(format)->setEnabled(!row.flagLetters);
        enter->setEnabled(!row.readOnly);
    }
    if (const int selected = SelectedRow(); selected >= 0)
        FormatEntry(RowFormat[selected])->setChecked(true);

    QAction* refresh = Entry("mnuPopupViewRefresh");
    QAction* autoRefresh = Entry("mnuPopupViewAutoRefresh");
    QMenu* popup = MainForm->MenuOf(QStringLiteral("mnuPopupView"));
    const QPoint globalPos = ListView->viewport()->mapToGlobal(viewportPos);
    if (!kind_.autoRefresh) {
        // The entry stays for the other windows; this one has no auto refresh.
        refresh->setEnabled(true);
        autoRefresh->setVisible(false);
        PopupMenu(popup, globalPos);
        autoRefresh->setVisible(true);
        return;
    }
    refresh->setEnabled(!AutoRefresh);
    autoRefresh->setChecked(AutoRefresh);
    MainForm->tmrRefresh.stop();
    PopupMenu(popup, globalPos);
    StartTimerIfAuto();
}

bool RegisterWindow::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == ListView->viewport()) {
        if (event->type() == QEvent::MouseButtonPress) {
            const auto* press = static_cast<QMouseEvent*>(event);
            if (press->button() == Qt::RightButton) {
                ListView_RightButton(press->position().toPoint());
                return true;
            }
        } else if (event->type() == QEvent::MouseButtonDblClick) {
            mnuEnter();
            return true;
        }
    } else if (watched == ListView && event->type() == QEvent::KeyPress) {
        const auto* key = static_cast<QKeyEvent*>(event);
        if (key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter) {
            mnuEnter();
            return true;
        }
    }
    return QWidget::eventFilter(watched, event);
}

// ---- Auto refresh -----------------------------------------------------------------------

void RegisterWindow::mnuAutoRefresh()
{
    if (!kind_.autoRefresh)
        return;
    AutoRefresh = !AutoRefresh;
    if (AutoRefresh)
        MainForm->tmrRefresh.start();
    else
        MainForm->tmrRefresh.stop();
}

void RegisterWindow::StartTimerIfAuto()
{
    if (kind_.autoRefresh && AutoRefresh)
        MainForm->tmrRefresh.start();
}

void RegisterWindow::SubWindowActivated(QMdiSubWindow* sub)
{
    // The main window's teardown hides its children, which reports activations.
    if (!MainForm)
        return;
    const bool mine = sub && sub == parentWidget();
    if (mine && !active_)
        Form_Activate();
    else if (!mine && active_)
        Form_Deactivate();
}

void RegisterWindow::Form_Activate()
{
    active_ = true;
    StartTimerIfAuto();
}

void RegisterWindow::Form_Deactivate()
{
    active_ = false;
    MainForm->tmrRefresh.stop();
}
