// libFuzzer target: any bytes as a source. The assembler must neither crash
// nor take long, and what it writes must keep its own rules.
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "hc11/asm/Assembler.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string_view source(reinterpret_cast<const char*>(data), size);
    const hc11::as11::AssemblyResult result = hc11::as11::AssembleSource(source);

    // Every error names a real line; the S19 text is S-records only.
    int lines = 1;
    for (char c : source)
        lines += c == '\n' || c == '\r';
    for (const auto& error : result.errors)
        if (error.line < 1 || error.line > lines || error.message.empty())
            std::abort();
    for (std::size_t i = 0; i < result.s19.size(); i = result.s19.find('\n', i) + 1)
        if (result.s19[i] != 'S')
            std::abort();
    return 0;
}
