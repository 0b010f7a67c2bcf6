// A disassembly row's state as its colours record it.
#pragma once

#include "ui/code/frmDisAsm.h"

enum class Look { Plain, Breakpoint, Current, CurrentBreakpoint, Other };

inline Look LookOf(const frmDisAsm* w, int row)
{
    const QColor back = w->RowBackground(row);
    const QColor text = w->RowTextColour(row);
    if (back == frmDisAsm::CurrentColour && text == Qt::white)
        return Look::Current;
    if (back == frmDisAsm::CurrentBreakColour && text == Qt::black)
        return Look::CurrentBreakpoint;
    if (back == frmDisAsm::BreakpointColour && text == Qt::black)
        return Look::Breakpoint;
    if (back == frmDisAsm::PlainColour() && text == Qt::black)
        return Look::Plain;
    return Look::Other;   // a colour that records no state
}
