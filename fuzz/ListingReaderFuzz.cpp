// libFuzzer target: any bytes as an assembler listing. The reader must neither
// crash nor run away, and the table it builds keeps its own limits.
#include "engine/code/ListingReader.h"

#include <QBuffer>
#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    QBuffer device(&bytes);
    device.open(QIODevice::ReadOnly);
    qsizetype lines = 0;
    try {
        ReadSymbols(device, [&] { ++lines; });
    } catch (const ListingReadError&) {
        // Too many counted lines: the user is told; the table keeps what fits.
    }
    if (SymbolCount < 0 || SymbolCount > lines || SymbolTable.size() < SymbolCount)
        std::abort();
    for (int i = 0; i < SymbolCount; ++i)
        if (SymbolTable[i].SymbolAddress < 0 || SymbolTable[i].SymbolAddress > 0xFFFF ||
            SymbolTable[i].SymbolCodeSize < 0 || SymbolTable[i].SymbolCodeSize > 5)
            std::abort();
    return 0;
}
