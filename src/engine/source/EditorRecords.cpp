#include "engine/source/EditorRecords.h"

bool EditorActive = false;
std::int16_t EditorCount = 0;
std::int16_t UntitledCount = 0;
std::int16_t OpenFilterIndex = 0;
