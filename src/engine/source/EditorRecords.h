// The process-wide records of the editor documents.
#pragma once

#include <cstdint>

extern bool EditorActive;           // an editor is the active child window
extern std::int16_t EditorCount;    // loaded editors: raised at load, lowered at unload
extern std::int16_t UntitledCount;    // untitled documents made since start; only rises
extern std::int16_t OpenFilterIndex;  // the file type last chosen in the Open dialog; 0 the first
