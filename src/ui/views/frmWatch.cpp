#include "ui/views/frmWatch.h"

#include "engine/state/ByteHistory.h"
#include "engine/state/TargetState.h"
#include "engine/link/TargetLink.h"
#include "ui/views/WatchTable.h"
#include "ui/main/frmMain.h"

#include <QAction>

namespace {
constexpr int WatchPopupHelp = 82;
constexpr int EntryHelp = 194;
const char* const WatchEntries[] = {"mnuPopupViewAddWatch", "mnuPopupViewEditWatch", "mnuPopupViewRemoveWatch",
                                    "mnuPopupViewBar1"};

WatchEntry& Watch(int row)
{
    return WatchTable[static_cast<std::size_t>(row)];
}
}  // namespace

QWidget* CreateWatch(frmMain& main)
{
    return new frmWatch(main);
}

frmWatch::frmWatch(frmMain& main)
    : ListWindow(main, QStringLiteral("Watch Window"), QStringLiteral("Watch"), {true, WatchPopupHelp, EntryHelp, true})
{
}

int frmWatch::RowCount() const
{
    return WatchCount;
}

QString frmWatch::RowLabel(int row, bool live) const
{
    // Symbols come back with the next drawing.
    return live ? WatchLabel(row) : WatchAddressText(row);
}

QString frmWatch::ValueText(int row) const
{
    return WatchValueText(row);
}

std::uint32_t frmWatch::ChangedBits(int row) const
{
    return SeenBytes.ChangedBits(Watch(row).WatchAddress, WatchSize(row));
}

char frmWatch::Format(int row) const
{
    return Watch(row).WatchFormat;
}

void frmWatch::SetFormat(int row, char format)
{
    Watch(row).WatchFormat = format;
}

bool frmWatch::IsWord(int row) const
{
    return Watch(row).WatchIsWord;
}

bool frmWatch::Read()
{
    return ReadWatches([this](std::int32_t address, int count, std::vector<std::uint8_t>& bytes) {
        if (count == 1) {
            std::uint8_t byte = 0;
            link_.InByte(address, byte);
            bytes.assign(1, byte);
        } else {
            link_.InBytes(address, bytes, static_cast<std::int16_t>(count));
        }
        if (BoardConnected)
            SeenBytes.Seen(address, bytes);
        return BoardConnected;
    });
}

void frmWatch::Write(int row, std::int32_t value)
{
    WriteBytes(Watch(row).WatchAddress, WatchBytes(row, value));
}

void frmWatch::PreparePopup()
{
    // Edit and remove need a row to act on.
    const bool selected = SelectedRow() >= 0;
    main_.Menu(QStringLiteral("mnuPopupViewEditWatch"))->setEnabled(selected);
    main_.Menu(QStringLiteral("mnuPopupViewRemoveWatch"))->setEnabled(selected);
    for (const char* name : WatchEntries)
        main_.Menu(QString::fromLatin1(name))->setVisible(true);
}

void frmWatch::PopupClosed()
{
    for (const char* name : WatchEntries)
        main_.Menu(QString::fromLatin1(name))->setVisible(false);
}

void frmWatch::Form_Activate()
{
    main_.SetEditWatchCommand(WatchCount > 0);
    ListWindow::Form_Activate();
}

void frmWatch::Form_Deactivate()
{
    main_.SetEditWatchCommand(false);
    ListWindow::Form_Deactivate();
}
