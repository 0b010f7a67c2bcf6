#include "source/EditorRecords.h"

bool EditorActive = false;
std::int16_t EditorCount = 0;
