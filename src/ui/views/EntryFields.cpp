#include "ui/views/EntryFields.h"

bool EntryAccepted = false;
QString EntryLabel;
QString EntryText;
bool EntryIsWord = false;
std::int32_t EntryValue = -1;
