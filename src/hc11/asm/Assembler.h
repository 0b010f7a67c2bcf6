// The HC11 assembler: source text in, listing, S19 text and errors out. Two
// passes over the lines; nothing here touches files, so the command-line
// program, the tests and the fuzzer all call AssembleSource in memory.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace hc11::as11 {

struct AsmError {
    int line = 0;          // 1-based source line
    std::string message;   // names the problem and the offending text
};

struct AssemblyResult {
    std::string listing;
    std::string s19;
    std::vector<AsmError> errors;   // in line order

    // The error file: one "line: message" per error.
    std::string ErrorFileText() const;
};

// `moduleName` goes into the S0 header record, e.g. the source's base name.
AssemblyResult AssembleSource(std::string_view source, std::string_view moduleName = "AS11");

} // namespace hc11::as11
