// "Memory Display Address": the memory window's address dialog. Its box takes
// up to 4 hex digits, typed as into a hex cell of the window (a digit typed
// inside full text replaces the one behind the caret), so there is nothing
// to refuse. An accepted address is left in MemoryGoAddress, with
// EntryAccepted true; the caller clears EntryAccepted first.
#pragma once

#include "ui/code/frmAddress.h"

#include <cstdint>

extern std::int32_t MemoryGoAddress;

// The layout of frmAddress with its own caption, label and box.
class frmMemAdr : public frmAddress {
    Q_OBJECT
public:
    static void ShowModal();

    explicit frmMemAdr(QWidget* parent = nullptr);

    void cmdOK_Click() override;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
};
