// Runs Debian's binutils-m68hc1x on an MRI-syntax source: m68hc11-as, then
// m68hc11-ld placing .text at an origin, then m68hc11-objcopy to S-records.
// Header-only and Qt-free: the cross-check test and the benchmark share it.
#pragma once

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <string>

namespace asmtest {

inline bool GnuHc11Available() { return std::system("m68hc11-as --version > /dev/null 2>&1") == 0; }

// Assembles `source` in the folder `dir` (which must exist) into S-record
// text. False on any failure, with the tools' messages in `log`.
inline bool RunGnuHc11(const std::string& dir, const std::string& source, unsigned origin,
                       std::string& s19, std::string& log)
{
    {
        std::ofstream(dir + "/gnu.s") << source;
        char script[96];
        std::snprintf(script, sizeof script, "SECTIONS { .text 0x%X : { *(.text) } }\n", origin);
        std::ofstream(dir + "/gnu.ld") << script;
    }
    const std::string command = "cd '" + dir + "' && m68hc11-as --mri -o gnu.o gnu.s > gnu.log 2>&1"
        " && m68hc11-ld -T gnu.ld -o gnu.elf gnu.o >> gnu.log 2>&1"
        " && m68hc11-objcopy -O srec gnu.elf gnu.s19 >> gnu.log 2>&1";
    const int status = std::system(command.c_str());
    const auto slurp = [](const std::string& path) {
        std::ifstream in(path);
        std::stringstream text;
        text << in.rdbuf();
        return text.str();
    };
    log = slurp(dir + "/gnu.log");
    if (status != 0)
        return false;
    s19 = slurp(dir + "/gnu.s19");
    return true;
}

} // namespace asmtest
