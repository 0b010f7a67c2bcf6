// libFuzzer target: any bytes as the assembler's error file. The reader must
// read to the end, run the event pass once a line, and take as rows only lines
// that start with a line number the editor can go to.
#include "engine/source/ErrorFile.h"

#include <QBuffer>
#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    QBuffer device(&bytes);
    device.open(QIODevice::ReadOnly);
    QList<ErrorRow> rows;
    qsizetype passes = 0;
    if (!ReadErrorRows(device, rows, [&] { ++passes; }))
        std::abort();   // a buffer never fails

    const qsizetype lines = bytes.count('\n') + (bytes.isEmpty() || bytes.endsWith('\n') ? 0 : 1);
    if (passes != lines || rows.size() > lines)
        std::abort();
    for (const ErrorRow& row : rows)
        if (row.line < 1 || row.line > 0xFFFF || !row.text.contains(u':') || row.text.contains(u'\n'))
            std::abort();
    return 0;
}
