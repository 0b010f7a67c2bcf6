// "Memory Display Address": the go-to-address dialog under the memory
// window's caption. It takes a number in any notation or a symbol; an
// accepted address is left in MemoryGoAddress, with EntryAccepted true.
#pragma once

#include "code/frmAddress.h"

#include <cstdint>

extern std::int32_t MemoryGoAddress;

class frmMemAdr : public frmAddress {
    Q_OBJECT
public:
    // The caller clears EntryAccepted first.
    static void ShowModal();

    explicit frmMemAdr(QWidget* parent = nullptr);
};
