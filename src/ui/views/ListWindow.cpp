#include "ui/views/ListWindow.h"

#include "engine/state/TargetState.h"
#include "platform/widgets/PopupMenu.h"
#include "engine/link/TargetLink.h"
#include "ui/views/ChangedBitsDelegate.h"
#include "ui/views/EntryFields.h"
#include "ui/views/frmEnterVal.h"
#include "ui/views/LabelValueList.h"
#include "ui/main/frmMain.h"

#include <QAction>
#include <QHeaderView>
#include <QKeyEvent>
#include <QMenu>
#include <QMouseEvent>
#include <QStyle>
#include <QTreeWidget>

#include <algorithm>

namespace {
constexpr int DefaultEntryHelp = 193;
const char* const PopupHelpEntries[] = {"mnuPopupViewEnter", "mnuPopupViewHex", "mnuPopupViewBin",
                                        "mnuPopupViewDec", "mnuPopupViewAutoRefresh"};

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

ListWindow::ListWindow(frmMain& main, const QString& caption, const QString& placementPrefix, Traits traits)
    : ToolWindow(main, caption, placementPrefix), traits_(traits)
{
    ListView = AddLabelValueList(*this);
    ListView->setTextElideMode(Qt::ElideNone);
    ListView->header()->setStretchLastSection(false);
    ListView->header()->setMinimumSectionSize(0);
    ListView->setColumnWidth(1, 0);
    ListView->setItemDelegateForColumn(1, new ChangedBitsDelegate(ListView));
    ListView->installEventFilter(this);   // Enter opens the value dialog
}

// ---- Rows ---------------------------------------------------------------------

int ListWindow::ValueColumnWidth() const
{
    return ListView->columnWidth(1);
}

QString ListWindow::Label(int row) const
{
    return ListView->topLevelItem(row)->text(0);
}

QString ListWindow::Cell(int row) const
{
    return ListView->topLevelItem(row)->text(1);
}

bool ListWindow::CellChanged(int row) const
{
    return ListView->topLevelItem(row)->data(1, ChangedBitsRole).toUInt() != 0;
}

int ListWindow::SelectedRow() const
{
    QTreeWidgetItem* item = ListView->currentItem();
    const int row = item && item->isSelected() ? ListView->indexOfTopLevelItem(item) : -1;
    return row < RowCount() ? row : -1;
}

void ListWindow::SelectRow(int row)
{
    MatchRows();
    if (row >= 0 && row < ListView->topLevelItemCount())
        ListView->setCurrentItem(ListView->topLevelItem(row));
}

void ListWindow::MatchRows()
{
    while (ListView->topLevelItemCount() > RowCount())
        delete ListView->takeTopLevelItem(ListView->topLevelItemCount() - 1);
    while (ListView->topLevelItemCount() < RowCount())
        ListView->addTopLevelItem(new QTreeWidgetItem(QStringList{QString(), QString()}));
}

// ---- Load, activation ------------------------------------------------------------

void ListWindow::Load()
{
    ClearScreen();
    AutoRefresh = false;
    mnuRefresh();
}

void ListWindow::Form_Activate()
{
    StartTimerIfAuto();
}

void ListWindow::Form_Deactivate()
{
    StopTimer();
}

// ---- Drawing ----------------------------------------------------------------------

void ListWindow::Redraw()
{
    // Play redraws at every step, but nothing is painted between the loop's
    // event passes: the cells are written once a pass, with the last values.
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

void ListWindow::WriteCells()
{
    cellsPending_ = false;
    MatchRows();
    const QFontMetrics metrics(ListView->font());
    int widest = 0;
    for (int i = 0; i < RowCount(); ++i) {
        QTreeWidgetItem* item = ListView->topLevelItem(i);
        // Only changed cells are written.
        const QString label = RowLabel(i, true);
        const QString value = ValueText(i);
        if (item->text(0) != label)
            item->setText(0, label);
        if (item->text(1) != value)
            item->setText(1, value);
        // Bits that changed across the last step or run stand out (ChangedBitsDelegate).
        const std::uint32_t bits = ChangedBits(i);
        const QVariant mark = bits ? QVariant(bits) : QVariant();
        if (item->data(1, ChangedBitsRole) != mark)
            item->setData(1, ChangedBitsRole, mark);
        widest = std::max(widest, metrics.horizontalAdvance(value));
    }
    // The list pads each cell by the style's text margin on both sides.
    const int padding = 2 * (ListView->style()->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, ListView) + 1);
    if (ListView->columnWidth(1) != widest + padding)
        ListView->setColumnWidth(1, widest + padding);
}

void ListWindow::ClearScreen()
{
    cellsPending_ = false;
    MatchRows();
    for (int i = 0; i < RowCount(); ++i) {
        ListView->topLevelItem(i)->setText(0, RowLabel(i, false));
        ListView->topLevelItem(i)->setText(1, QString());
    }
    ListView->setColumnWidth(1, 0);
}

void ListWindow::Lost()
{
    ClearScreen();
    AutoRefresh = false;
}

void ListWindow::mnuRefresh()
{
    MatchRows();
    if (RowCount() == 0)
        return;
    StopTimer();
    if (Read())
        Redraw();
    else
        Lost();
    StartTimerIfAuto();
}

// ---- Formats and value entry ----------------------------------------------------------

void ListWindow::ChangeFormat(char format)
{
    const int row = SelectedRow();
    if (row < 0 || FormatFixed(row))
        return;   // a flag row keeps its letters
    SetFormat(row, format);
    if (ValueColumnWidth() > 0)
        Redraw();
}

void ListWindow::mnuViewDec() { ChangeFormat(' '); }
void ListWindow::mnuViewHex() { ChangeFormat('$'); }
void ListWindow::mnuViewBin() { ChangeFormat('%'); }

void ListWindow::WriteBytes(std::int32_t address, const std::vector<std::uint8_t>& bytes)
{
    if (bytes.size() == 1)
        link_.OutByte(address, bytes[0]);
    else
        link_.OutBytes(address, bytes, static_cast<std::int16_t>(bytes.size()));
}

void ListWindow::mnuEnter()
{
    const int row = SelectedRow();
    if ((ValueColumnWidth() == 0 && !traits_.entryWhenCleared) || row < 0 || ReadOnly(row))
        return;
    StopTimer();
    EntryAccepted = false;
    EntryLabel = Label(row);
    EntryText = EntryStart(row);
    EntryIsWord = IsWord(row);
    frmEnterVal::HelpContextID = traits_.entryHelp;
    frmEnterVal::ShowModal();
    frmEnterVal::HelpContextID = DefaultEntryHelp;
    if (EntryAccepted) {
        Write(row, EntryValue);
        // The window shows what the target gives back, not what was typed.
        if (BoardConnected)
            main_.Refresh();
        else
            Lost();
    }
    StartTimerIfAuto();
}

// ---- Popup ---------------------------------------------------------------------------

void ListWindow::ListView_RightButton(const QPoint& viewportPos)
{
    for (int i = 0; i < 5; ++i)
        main_.SetHelpContext(QString::fromLatin1(PopupHelpEntries[i]), traits_.popupHelp + i);
    MatchRows();
    QTreeWidgetItem* item = ListView->itemAt(viewportPos);
    const bool live = item && ValueColumnWidth() > 0;
    if (live)
        ListView->setCurrentItem(item);
    const int row = live ? ListView->indexOfTopLevelItem(item) : -1;
    Entry("mnuPopupViewEnter")->setEnabled(live && !ReadOnly(row));
    for (char format : {'$', '%', ' '}) {
        FormatEntry(format)->setChecked(false);
        FormatEntry(format)->setEnabled(live && !FormatFixed(row));
    }
    if (const int selected = SelectedRow(); selected >= 0)
        FormatEntry(Format(selected))->setChecked(true);
    PreparePopup();
    // The entry stays for the other windows; a window without auto refresh hides it.
    Entry("mnuPopupViewAutoRefresh")->setVisible(traits_.autoRefresh);
    Entry("mnuPopupViewAutoRefresh")->setChecked(AutoRefresh);
    Entry("mnuPopupViewRefresh")->setEnabled(!AutoRefresh);
    StopTimer();
    ShowPopup("mnuPopupView", ListView, ListView->viewport()->mapToGlobal(viewportPos));
    StartTimerIfAuto();
    Entry("mnuPopupViewAutoRefresh")->setVisible(true);
    PopupClosed();
}

bool ListWindow::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == ListView->viewport()) {
        if (const QMouseEvent* press = RightButtonPress(event)) {
            ListView_RightButton(press->position().toPoint());
            return true;
        }
        if (event->type() == QEvent::MouseButtonDblClick) {
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
    return ToolWindow::eventFilter(watched, event);
}

// ---- Auto refresh ---------------------------------------------------------------------------

void ListWindow::mnuAutoRefresh()
{
    if (!traits_.autoRefresh)
        return;
    AutoRefresh = !AutoRefresh;
    if (AutoRefresh)
        main_.tmrRefresh.start();
    else
        main_.tmrRefresh.stop();
}

void ListWindow::StopTimer()
{
    if (traits_.autoRefresh)
        main_.tmrRefresh.stop();
}

void ListWindow::StartTimerIfAuto()
{
    if (traits_.autoRefresh && AutoRefresh)
        main_.tmrRefresh.start();
}
