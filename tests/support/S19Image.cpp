#include "support/S19Image.h"

#include "hc11/asm/S19Reader.h"

namespace asmtest {

S19Image ReadS19(const std::string& text)
{
    const hc11::as11::S19Image read = hc11::as11::ReadS19(text);
    S19Image image;
    hc11::as11::ForEachByte(read, [&image](std::uint16_t address, std::uint8_t byte) { image.bytes[address] = byte; });
    image.start = read.start;
    image.header = read.header;
    image.dataRecords = int(read.blocks.size());
    if (!read.error.empty())
        image.problem = "record " + std::to_string(read.errorLine) + ": " + read.error;
    return image;
}

} // namespace asmtest
