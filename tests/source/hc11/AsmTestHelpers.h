// Small helpers of the assembler tests: assemble a snippet and look at its
// bytes or its errors.
#pragma once

#include <QtTest>

#include <string>
#include <vector>

#include "source/hc11/Assembler.h"
#include "support/S19Image.h"

namespace asmtest {

// The bytes the snippet emits, in address order from `from`, as a hex string
// such as "86 12"; errors fail the calling test.
inline std::vector<std::uint8_t> CodeAt(const std::string& source, int from, int count)
{
    const auto result = hc11::as11::AssembleSource(source);
    for (const auto& e : result.errors)
        qWarning("unexpected error %d: %s", e.line, e.message.c_str());
    const S19Image image = ReadS19(result.s19);
    std::vector<std::uint8_t> bytes;
    for (int a = from; a < from + count; ++a) {
        const auto it = image.bytes.find(a & 0xFFFF);
        bytes.push_back(it == image.bytes.end() ? 0xEE : it->second);
    }
    return result.errors.empty() && image.problem.empty() ? bytes : std::vector<std::uint8_t>{};
}

inline QString Hex(const std::vector<std::uint8_t>& bytes)
{
    QStringList parts;
    for (auto b : bytes)
        parts << QString::asprintf("%02X", b);
    return parts.join(' ');
}

// The bytes of a snippet assembled at $1000: the first `count` of them.
inline QString Code(const std::string& body, int count)
{
    return Hex(CodeAt("        ORG $1000\n" + body, 0x1000, count));
}

// "line: message" of every error, one a line.
inline QString Errors(const std::string& source)
{
    return QString::fromStdString(hc11::as11::AssembleSource(source).ErrorFileText()).trimmed();
}

} // namespace asmtest
