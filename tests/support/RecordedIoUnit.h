// The input-output unit's side of the link for tests: every call is logged
// in order, every byte the program writes to the unit's output is kept, and
// each call goes on to the unit's window when one is set.
#pragma once

#include "engine/link/IoUnitHooks.h"

#include <QList>
#include <QStringList>

struct RecordedIoUnit : IoUnitHooks {
    IoUnitHooks* window = nullptr;
    QStringList calls;   // "InFresh 0", "OutData 119"...
    QList<int> written;
    void setInFresh(std::uint8_t d) override { Pass("InFresh", d, &IoUnitHooks::setInFresh); }
    void setInDataRegister(std::uint8_t d) override { Pass("InData", d, &IoUnitHooks::setInDataRegister); }
    void setOutFresh(std::uint8_t d) override { Pass("OutFresh", d, &IoUnitHooks::setOutFresh); }
    void setOutDataRegister(std::uint8_t d) override
    {
        written << d;
        Pass("OutData", d, &IoUnitHooks::setOutDataRegister);
    }

private:
    void Pass(const char* name, std::uint8_t d, void (IoUnitHooks::*call)(std::uint8_t))
    {
        calls << QString("%1 %2").arg(name).arg(d);
        if (window)
            (window->*call)(d);
    }
};
