// The command line of hc11board.
#pragma once

#include "hc11board/Monitor.h"

#include <string>
#include <vector>

namespace hc11board {

struct Options {
    std::string device;    // serve this device instead of a new pseudo-terminal
    std::string rom;       // run this S19 image on the chip instead of the monitor
    bool paced = false;    // the host's bytes and the board's at the wire's speed, 38400 bit/s
    bool fast = false;     // free run as fast as the host allows, not at 2 MHz
    bool stay = false;     // keep serving when the host closes the line
    bool help = false;
    MonitorSettings monitor;
};

struct ParsedOptions {
    Options options;
    std::string error;     // empty when the command line was good
};

ParsedOptions ParseOptions(const std::vector<std::string>& arguments);

// The text of --help.
std::string Usage();

} // namespace hc11board
