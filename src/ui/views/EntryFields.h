// The exchange fields of the value dialogs. A caller clears EntryAccepted,
// fills the others, shows the dialog modally, and reads EntryValue only when
// EntryAccepted came back true.
#pragma once

#include <QString>
#include <cstdint>

extern bool EntryAccepted;        // the dialog ended with a valid value
extern QString EntryLabel;        // what the value is for, shown as the label
extern QString EntryText;         // the value to start from, in any accepted form
extern bool EntryIsWord;          // 16 bits; otherwise 8, which sets the limit
extern std::int32_t EntryValue;   // the result, 0 to 65535; -1 is invalid
