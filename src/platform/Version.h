// The program's version: the project's version in CMakeLists.txt, which the
// package's name carries too.
#pragma once

// "0.1"
const char* VersionText();
