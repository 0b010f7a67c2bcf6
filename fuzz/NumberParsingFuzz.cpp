// libFuzzer target: any text as a number the user types, and as hexadecimal
// digits of a file. What the reader accepts must stay in range and come back
// unchanged through the notation it is shown in.
#include "engine/state/Conversions.h"

#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QString text = QString::fromUtf8(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    for (const bool wide : {false, true}) {
        const std::int32_t value = ParseNumber(text, wide);
        if (value == -1)
            continue;
        if (value < 0 || value > (wide ? 0xFFFF : 0xFF))
            std::abort();
        for (const char* prefix : {" ", "$", "%"})
            if (ParseNumber(FormatValue(value, QString::fromLatin1(prefix), wide).trimmed(), wide) != value)
                std::abort();
    }
    if (HexToLong(text) < 0 && text.size() < 8)
        std::abort();   // fewer than eight digits cannot reach the sign bit
    const QString expanded = ExpandTabs(text);
    if (expanded.contains(u'\t') || expanded.size() < text.size())
        std::abort();
    return 0;
}
