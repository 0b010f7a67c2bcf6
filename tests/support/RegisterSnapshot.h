// The host's copy of the CPU registers as one value that QCOMPARE compares
// and prints, for tests that hold two runs side by side.
#pragma once

#include "engine/state/TargetState.h"

#include <QString>
#include <QtGlobal>

struct RegisterSnapshot {
    std::int32_t pc, ix, iy, sp;
    int a, b, ccr;
    bool operator==(const RegisterSnapshot&) const = default;
};

inline char* toString(const RegisterSnapshot& r)
{
    return qstrdup(qPrintable(QString::asprintf("PC %04X IX %04X IY %04X SP %04X A %02X B %02X CCR %02X", r.pc,
                                                r.ix, r.iy, r.sp, r.a, r.b, r.ccr)));
}

inline RegisterSnapshot HostRegisters()
{
    const CpuRegisterRecord& r = CpuRegisters;
    return {r.PC, r.IX, r.IY, r.SP, r.A, r.B, r.CCR};
}
