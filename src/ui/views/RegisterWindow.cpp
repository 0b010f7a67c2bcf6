#include "ui/views/RegisterWindow.h"

#include "engine/state/ByteHistory.h"
#include "engine/state/TargetState.h"
#include "ui/main/frmMain.h"

#include <QTreeWidget>

namespace {
constexpr int RegisterPopupHelp = 95;
constexpr int EntryHelp = 193;
}  // namespace

void ReadRegisterBlockSource(frmMain& main)
{
    main.ReadRegisterBlock();
}

std::int32_t RegisterBlockValue(const RegisterRow& row, int)
{
    return BlockValue(row, RegisterBlock, RegisterBlockAddress);
}

RegisterWindow::RegisterWindow(frmMain& main, const RegisterWindowKind& kind)
    : ListWindow(main, QString::fromLatin1(kind.caption), QString::fromLatin1(kind.placementPrefix),
                 {kind.autoRefresh, RegisterPopupHelp, EntryHelp}),
      kind_(kind)
{
    for (const RegisterRow& row : kind.rows) {
        auto* item = new QTreeWidgetItem(QStringList{QString::fromLatin1(row.name), QString()});
        item->setToolTip(0, RowToolTip(row));
        item->setToolTip(1, RowToolTip(row));
        ListView->addTopLevelItem(item);
        RowFormat.push_back(row.format);
    }
    ShowSimulatedLines();
}

void RegisterWindow::ShowSimulatedLines()
{
    for (int i = 0; i < RowCount(); ++i)
        if (kind_.rows[i].write == RowWrite::SimulatedLine)
            ListView->topLevelItem(i)->setHidden(!ChipSimulated());
}

int RegisterWindow::RowCount() const
{
    return static_cast<int>(kind_.rows.size());
}

QString RegisterWindow::RowLabel(int row, bool) const
{
    return QString::fromLatin1(kind_.rows[row].name);
}

std::int32_t RegisterWindow::RowValue(int row) const
{
    const RegisterRow& r = kind_.rows[row];
    // The input levels are the chip model's own: no copy of them is kept.
    if (r.write == RowWrite::SimulatedLine)
        return main_.Link().ChipSim.LineLevel(static_cast<SimulatedLine>(r.address));
    return kind_.value(r, row);
}

QString RegisterWindow::ValueText(int row) const
{
    return CellText(kind_.rows[row], RowValue(row), RowFormat[row]);
}

std::uint32_t RegisterWindow::ChangedBits(int row) const
{
    const RegisterRow& r = kind_.rows[row];
    const bool targetBytes = kind_.tracked && r.write != RowWrite::SimulatedLine;
    return targetBytes ? SeenBytes.ChangedBits(r.address, r.isWord ? 2 : 1) : 0;
}

QString RegisterWindow::EntryStart(int row) const
{
    return EntryTextOf(kind_.rows[row], RowValue(row), Cell(row));
}

bool RegisterWindow::Read()
{
    ShowSimulatedLines();
    kind_.read(main_);
    return BoardConnected;
}

void RegisterWindow::Write(int row, std::int32_t value)
{
    const RegisterRow& r = kind_.rows[row];
    if (r.write == RowWrite::HostPC)
        CpuRegisters.PC = value;
    else if (r.write == RowWrite::Target)
        WriteBytes(r.address, WriteBytesOf(r, value));
    else if (r.write == RowWrite::SimulatedLine)
        main_.Link().ChipSim.SetLineLevel(static_cast<SimulatedLine>(r.address), static_cast<std::uint8_t>(value));
}
