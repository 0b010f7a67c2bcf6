#include "views/frmWatch.h"

#include "core/TargetState.h"
#include "platform/Fonts.h"
#include "platform/PopupMenu.h"
#include "platform/WindowPlacement.h"
#include "views/ByteHistory.h"
#include "views/EntryFields.h"
#include "views/WatchTable.h"
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
const QString Prefix = QStringLiteral("Watch");
constexpr double LabelColumnTwips = 780;
const QColor ChangedColour(200, 0, 0);

// ---- The window's one road to the target ------------------------------------------

bool ReadFromTarget(std::int32_t address, int count, std::vector<std::uint8_t>& bytes)
{
    if (count == 1) {
        std::uint8_t byte = 0;
        MainForm->InByte(address, byte);
        bytes.assign(1, byte);
    } else {
        MainForm->InBytes(address, bytes, static_cast<std::int16_t>(count));
    }
    if (BoardConnected)
        SeenBytes.Seen(address, bytes);
    return BoardConnected;
}

void WriteToTarget(std::int32_t address, const std::vector<std::uint8_t>& bytes)
{
    if (bytes.size() == 1)
        MainForm->OutByte(address, bytes[0]);
    else
        MainForm->OutBytes(address, bytes, static_cast<std::int16_t>(bytes.size()));
}

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

const char* const WatchEntries[] = {"mnuPopupViewAddWatch", "mnuPopupViewEditWatch", "mnuPopupViewRemoveWatch",
                                    "mnuPopupViewBar1"};
}  // namespace

QWidget* CreateWatch(frmMain&)
{
    return new frmWatch;
}

frmWatch::frmWatch(QWidget* parent) : QWidget(parent)
{
    setWindowTitle(QStringLiteral("Watch Window"));
    setFont(FixedPitchFont(QStringLiteral("Courier New"), 9.75));
    ListView = new QTreeWidget(this);
    ListView->setObjectName(QStringLiteral("ListView"));
    ListView->setColumnCount(2);
    ListView->setRootIsDecorated(false);
    ListView->setHeaderHidden(true);
    ListView->setUniformRowHeights(true);
    ListView->setTextElideMode(Qt::ElideNone);
    ListView->setSelectionBehavior(QAbstractItemView::SelectRows);
    ListView->header()->setStretchLastSection(false);
    ListView->header()->setMinimumSectionSize(0);
    // A long symbol is cut by the column.
    ListView->setColumnWidth(0, TwipsToPixelsX(LabelColumnTwips));
    ListView->setColumnWidth(1, 0);
    ListView->installEventFilter(this);
    ListView->viewport()->installEventFilter(this);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(ListView);
    connect(MainForm->mdiArea(), &QMdiArea::subWindowActivated, this, &frmWatch::SubWindowActivated);
}

// ---- Rows -----------------------------------------------------------------------------

int frmWatch::ValueColumnWidth() const
{
    return ListView->columnWidth(1);
}

QString frmWatch::Label(int row) const
{
    return ListView->topLevelItem(row)->text(0);
}

QString frmWatch::Cell(int row) const
{
    return ListView->topLevelItem(row)->text(1);
}

bool frmWatch::CellChanged(int row) const
{
    return ListView->topLevelItem(row)->foreground(1).color() == ChangedColour;
}

int frmWatch::SelectedRow() const
{
    QTreeWidgetItem* item = ListView->currentItem();
    const int row = item && item->isSelected() ? ListView->indexOfTopLevelItem(item) : -1;
    return row < WatchCount ? row : -1;
}

void frmWatch::SelectRow(int row)
{
    MatchRows();
    if (row >= 0 && row < ListView->topLevelItemCount())
        ListView->setCurrentItem(ListView->topLevelItem(row));
}

void frmWatch::MatchRows()
{
    while (ListView->topLevelItemCount() > WatchCount)
        delete ListView->takeTopLevelItem(ListView->topLevelItemCount() - 1);
    while (ListView->topLevelItemCount() < WatchCount)
        ListView->addTopLevelItem(new QTreeWidgetItem(QStringList{QString(), QString()}));
}

// ---- Load and unload ----------------------------------------------------------------

void frmWatch::Form_Load()
{
    LoadPlacement(this, Prefix, MainForm->PlacementDefault(Prefix));
    MatchRows();
    ClearScreen();
    AutoRefresh = false;
    mnuRefresh();
    if (MainForm->ActiveWindow() == this)
        Form_Activate();
}

void frmWatch::closeEvent(QCloseEvent* event)
{
    SavePlacement(this, Prefix);
    if (active_)
        Form_Deactivate();
    MainForm->Menu(QStringLiteral("mnuViewWatch"))->setChecked(false);
    event->accept();
}

// ---- Drawing ----------------------------------------------------------------------------

void frmWatch::Redraw()
{
    MatchRows();
    const QFontMetrics metrics(ListView->font());
    int widest = 0;
    for (int i = 0; i < WatchCount; ++i) {
        QTreeWidgetItem* item = ListView->topLevelItem(i);
        const QString label = WatchLabel(i);
        const QString value = WatchValueText(i);
        if (item->text(0) != label)
            item->setText(0, label);
        if (item->text(1) != value)
            item->setText(1, value);
        const bool changed = SeenBytes.AnyChanged(WatchTable[static_cast<std::size_t>(i)].WatchAddress, WatchSize(i));
        item->setForeground(1, changed ? QBrush(ChangedColour) : QBrush());
        widest = std::max(widest, metrics.horizontalAdvance(value));
    }
    const int padding = 2 * (ListView->style()->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, ListView) + 1);
    ListView->setColumnWidth(1, widest + padding);
}

void frmWatch::ClearScreen()
{
    // A cleared window shows addresses only; symbols come back with the next Redraw.
    MatchRows();
    for (int i = 0; i < WatchCount; ++i) {
        ListView->topLevelItem(i)->setText(0, WatchAddressText(i));
        ListView->topLevelItem(i)->setText(1, QString());
    }
    ListView->setColumnWidth(1, 0);
}

void frmWatch::mnuRefresh()
{
    MatchRows();
    if (WatchCount == 0)
        return;
    MainForm->tmrRefresh.stop();
    if (ReadWatches(&ReadFromTarget)) {
        Redraw();
    } else {
        ClearScreen();
        AutoRefresh = false;
    }
    StartTimerIfAuto();
}

// ---- Formats and value entry -------------------------------------------------------------

void frmWatch::SetFormat(char format)
{
    const int row = SelectedRow();
    if (row < 0)
        return;
    WatchTable[static_cast<std::size_t>(row)].WatchFormat = format;
    if (ValueColumnWidth() > 0)
        Redraw();
}

void frmWatch::mnuViewDec() { SetFormat(' '); }
void frmWatch::mnuViewHex() { SetFormat('$'); }
void frmWatch::mnuViewBin() { SetFormat('%'); }

void frmWatch::mnuEnter()
{
    const int row = SelectedRow();
    if (WatchCount == 0 || row < 0)
        return;
    MainForm->tmrRefresh.stop();
    EntryAccepted = false;
    EntryLabel = Label(row);
    EntryText = Cell(row);
    EntryIsWord = WatchTable[static_cast<std::size_t>(row)].WatchIsWord;
    frmEnterVal::HelpContextID = 194;
    frmEnterVal::ShowModal();
    frmEnterVal::HelpContextID = 193;
    if (EntryAccepted) {
        WriteToTarget(WatchTable[static_cast<std::size_t>(row)].WatchAddress, WatchBytes(row, EntryValue));
        // The row shows what the target reads back, not what was typed.
        if (BoardConnected) {
            MainForm->Refresh();
        } else {
            ClearScreen();
            AutoRefresh = false;
        }
    }
    StartTimerIfAuto();
}

// ---- Popup ---------------------------------------------------------------------------------

void frmWatch::ListView_RightButton(const QPoint& viewportPos)
{
    MainForm->SetHelpContext(QStringLiteral("mnuPopupViewEnter"), 82);
    MainForm->SetHelpContext(QStringLiteral("mnuPopupViewHex"), 83);
    MainForm->SetHelpContext(QStringLiteral("mnuPopupViewBin"), 84);
    MainForm->SetHelpContext(QStringLiteral("mnuPopupViewDec"), 85);
    MainForm->SetHelpContext(QStringLiteral("mnuPopupViewAutoRefresh"), 86);
    if (auto* sub = qobject_cast<QMdiSubWindow*>(parentWidget()))
        MainForm->mdiArea()->setActiveSubWindow(sub);
    ListView->setFocus();
    MatchRows();
    for (char format : {'$', '%', ' '})
        FormatEntry(format)->setChecked(false);

    QTreeWidgetItem* item = ListView->itemAt(viewportPos);
    const bool rowWithValue = item && ValueColumnWidth() > 0;
    if (rowWithValue)
        ListView->setCurrentItem(item);
    Entry("mnuPopupViewEnter")->setEnabled(rowWithValue);
    for (char format : {'$', '%', ' '})
        FormatEntry(format)->setEnabled(rowWithValue);
    // Edit and remove need a row to act on.
    const bool selected = SelectedRow() >= 0;
    Entry("mnuPopupViewEditWatch")->setEnabled(selected);
    Entry("mnuPopupViewRemoveWatch")->setEnabled(selected);
    if (selected)
        FormatEntry(WatchTable[static_cast<std::size_t>(SelectedRow())].WatchFormat)->setChecked(true);

    for (const char* name : WatchEntries)
        Entry(name)->setVisible(true);
    Entry("mnuPopupViewRefresh")->setEnabled(!AutoRefresh);
    Entry("mnuPopupViewAutoRefresh")->setChecked(AutoRefresh);
    MainForm->tmrRefresh.stop();
    PopupMenu(MainForm->MenuOf(QStringLiteral("mnuPopupView")), ListView->viewport()->mapToGlobal(viewportPos));
    StartTimerIfAuto();
    for (const char* name : WatchEntries)
        Entry(name)->setVisible(false);
}

bool frmWatch::eventFilter(QObject* watched, QEvent* event)
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

// ---- Auto refresh and activation -------------------------------------------------------------

void frmWatch::mnuAutoRefresh()
{
    AutoRefresh = !AutoRefresh;
    if (AutoRefresh)
        MainForm->tmrRefresh.start();
    else
        MainForm->tmrRefresh.stop();
}

void frmWatch::StartTimerIfAuto()
{
    if (AutoRefresh)
        MainForm->tmrRefresh.start();
}

void frmWatch::SubWindowActivated(QMdiSubWindow* sub)
{
    if (!MainForm)
        return;   // the main window is going, with its children
    const bool mine = sub && sub == parentWidget();
    if (mine && !active_)
        Form_Activate();
    else if (!mine && active_)
        Form_Deactivate();
}

void frmWatch::Form_Activate()
{
    active_ = true;
    MainForm->SetEditWatchCommand(WatchCount > 0);
    StartTimerIfAuto();
}

void frmWatch::Form_Deactivate()
{
    active_ = false;
    MainForm->SetEditWatchCommand(false);
    MainForm->tmrRefresh.stop();
}
