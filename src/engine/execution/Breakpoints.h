// The breakpoint table: addresses the host compares with PC while it steps.
// Nothing is planted in the target. The table stays packed, in the order the
// entries were set; these routines keep BreakpointTable and BreakpointCount
// in step and leave the menus and the window's colours to their callers.
#pragma once

#include <bitset>
#include <cstdint>

// The index of the first entry with that address, or -1.
int FindBreakpoint(std::int32_t address);
bool HasBreakpoint(std::int32_t address);

// Appends an entry; false, with the table unchanged, when all 32 are taken.
bool AddBreakpoint(std::int32_t address);
// Takes the entry at index out and moves those behind it one place down.
void RemoveBreakpoint(int index);

enum class BreakpointToggle { Removed, Added, TableFull };
// Removes the address if it is in the table, else appends it if there is room.
BreakpointToggle ToggleBreakpoint(std::int32_t address);

// Takes the last entry off the table into address; false when it is empty.
bool TakeLastBreakpoint(std::int32_t& address);

// The table as a map of every address, for a run that tests each instruction.
std::bitset<65536> BreakpointMap();
