// The register windows: a list window (ListWindow.h) with one row per
// register. A window is a RegisterWindowKind: its table of rows, where its
// data is read and where a row's value comes from.
#pragma once

#include "ui/views/ListWindow.h"
#include "ui/views/RegisterRows.h"

#include <span>

struct RegisterWindowKind {
    const char* caption;
    const char* placementPrefix;        // key prefix of the window's placement
    std::span<const RegisterRow> rows;  // in display order
    bool autoRefresh;                   // has mnuAutoRefresh and drives tmrRefresh
    // Reads the window's data from the target into the host's copy; the
    // caller tests BoardConnected afterwards.
    void (*read)(frmMain& main);
    // The value of rows[index] in the host's copy.
    std::int32_t (*value)(const RegisterRow& row, int index);
    // Whether the rows' bytes are the target's at their addresses, whose
    // changes engine/state/ByteHistory.h tracks; the CPU's are not.
    bool tracked = false;
};

// Sources for the windows that draw from RegisterBlock ($1000, 64 bytes).
void ReadRegisterBlockSource(frmMain& main);
std::int32_t RegisterBlockValue(const RegisterRow& row, int index);

class RegisterWindow : public ListWindow {
    Q_OBJECT
public:
    RegisterWindow(frmMain& main, const RegisterWindowKind& kind);

    const RegisterWindowKind& Kind() const { return kind_; }
    std::vector<char> RowFormat;   // per row: ' ', '$' or '%'; a reopened window starts from its table

protected:
    int RowCount() const override;
    QString RowLabel(int row, bool live) const override;
    QString ValueText(int row) const override;
    std::uint32_t ChangedBits(int row) const override;
    char Format(int row) const override { return RowFormat[row]; }
    void SetFormat(int row, char format) override { RowFormat[row] = format; }
    bool FormatFixed(int row) const override { return kind_.rows[row].flagLetters; }
    bool ReadOnly(int row) const override { return kind_.rows[row].readOnly; }
    bool IsWord(int row) const override { return kind_.rows[row].isWord; }
    QString EntryStart(int row) const override;
    bool Read() override;
    void Write(int row, std::int32_t value) override;

private:
    // The row's value: the host's copy, or an input level of the chip model.
    std::int32_t RowValue(int row) const;
    // The input level rows are there on the simulated chip only.
    void ShowSimulatedLines();

    const RegisterWindowKind& kind_;
};
