#include "engine/execution/Breakpoints.h"

#include "engine/state/TargetState.h"

#include <algorithm>

int FindBreakpoint(std::int32_t address)
{
    for (int i = 0; i < BreakpointCount; ++i)
        if (BreakpointTable[i] == address)
            return i;
    return -1;
}

bool HasBreakpoint(std::int32_t address)
{
    return FindBreakpoint(address) >= 0;
}

bool AddBreakpoint(std::int32_t address)
{
    if (BreakpointCount >= MaxBreakpoints)
        return false;
    BreakpointTable[BreakpointCount++] = address;
    return true;
}

void RemoveBreakpoint(int index)
{
    if (index < 0 || index >= BreakpointCount)
        return;
    std::copy(BreakpointTable.begin() + index + 1, BreakpointTable.begin() + BreakpointCount,
              BreakpointTable.begin() + index);
    --BreakpointCount;
}

BreakpointToggle ToggleBreakpoint(std::int32_t address)
{
    if (const int index = FindBreakpoint(address); index >= 0) {
        RemoveBreakpoint(index);
        return BreakpointToggle::Removed;
    }
    return AddBreakpoint(address) ? BreakpointToggle::Added : BreakpointToggle::TableFull;
}

bool TakeLastBreakpoint(std::int32_t& address)
{
    if (BreakpointCount <= 0)
        return false;
    address = BreakpointTable[--BreakpointCount];
    return true;
}

std::bitset<65536> BreakpointMap()
{
    std::bitset<65536> map;
    for (int i = 0; i < BreakpointCount; ++i)
        map.set(static_cast<std::size_t>(BreakpointTable[i] & 0xFFFF));
    return map;
}
