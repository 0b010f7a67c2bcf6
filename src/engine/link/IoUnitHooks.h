// What the input-output unit's window offers the target link: the host's
// writes to $6000-$6003 and the simulated program's accesses to the unit are
// shown through these four calls. The window implements them; frmMain holds it
// in IoUnitWindow while it is loaded.
#pragma once

#include <cstdint>

class IoUnitHooks {
public:
    virtual ~IoUnitHooks() = default;
    // Bit 0 of the byte lights (1) or darkens (0) the "Data Pending" lamp.
    virtual void setInFresh(std::uint8_t Data) = 0;
    // The byte the user entered, as shown by the "In Unit".
    virtual void setInDataRegister(std::uint8_t Data) = 0;
    // Bit 0 of the byte lights or darkens the "Data Ready" lamp.
    virtual void setOutFresh(std::uint8_t Data) = 0;
    // The byte the program wrote, shown by the "Out Unit" and its LEDs.
    virtual void setOutDataRegister(std::uint8_t Data) = 0;
};
