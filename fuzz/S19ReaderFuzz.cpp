// libFuzzer target: any bytes as one line of a machine-code file. A record is
// good only when every digit its byte count promises is there and the sum
// holds; nothing else may be handed to the download.
#include "engine/code/S1Record.h"

#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QByteArray line(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    const S1Record record = ReadS1Line(line);
    if (record.kind != S1Record::Kind::Good)
        return 0;
    const qsizetype digits = 2 * (3 + static_cast<qsizetype>(record.Data.size()));
    if (!line.startsWith("S1") || line.size() < 4 + digits || record.Data.empty())
        std::abort();
    if (record.Address < 0 || record.Address > 0xFFFF)
        std::abort();
    return 0;
}
