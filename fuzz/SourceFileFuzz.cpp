// libFuzzer target: any bytes as a source file opened in an editor. Saving it
// unedited must give back the very bytes that were read, whatever the file holds.
#include "engine/source/SourceFile.h"

#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    const DecodedSource source = DecodeSource(bytes);
    QByteArray back;
    if (!EncodeSource(source.text, source.encoding, back))
        std::abort();   // what was read can always be written
    if (back != bytes)
        std::abort();
    return 0;
}
