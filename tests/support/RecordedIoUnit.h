// The input-output unit's side of the link for tests: every byte the program
// writes to the unit's output is kept, and each call goes on to the unit's
// window when one is set.
#pragma once

#include "engine/link/IoUnitHooks.h"

#include <QList>

struct RecordedIoUnit : IoUnitHooks {
    IoUnitHooks* window = nullptr;
    QList<int> written;
    void setInFresh(std::uint8_t d) override { window ? window->setInFresh(d) : void(); }
    void setInDataRegister(std::uint8_t d) override { window ? window->setInDataRegister(d) : void(); }
    void setOutFresh(std::uint8_t d) override { window ? window->setOutFresh(d) : void(); }
    void setOutDataRegister(std::uint8_t d) override
    {
        written << d;
        window ? window->setOutDataRegister(d) : void();
    }
};
