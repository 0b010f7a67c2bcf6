#include "platform/Version.h"

// Set for this file alone by src/platform/CMakeLists.txt, so that a new
// version rebuilds one file.
const char* VersionText()
{
    return ORVANE_VERSION;
}
