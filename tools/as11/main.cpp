// AS11.EXE: the command-line assembler. `AS11.EXE prog.asm` writes prog.lst
// and prog.s19 beside the source, and prog.err when there are errors, which
// it prints on standard error as well. Exit code: 0 clean, 1 errors, 2 when
// the source cannot be read or an output cannot be written.
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <string>

#include "source/hc11/Assembler.h"

namespace {

namespace fs = std::filesystem;

bool ReadFile(const fs::path& path, std::string& text)
{
    std::ifstream in(path, std::ios::binary | std::ios::ate);
    if (!in)
        return false;
    const std::streamoff size = in.tellg();
    if (size < 0)
        return false;
    text.resize(std::size_t(size));
    in.seekg(0);
    in.read(text.data(), size);
    return in.gcount() == size;
}

bool WriteFile(const fs::path& path, const std::string& text)
{
    // A new file, not a truncated old one: ext4 flushes a file that was
    // truncated and rewritten to the disk on close, which costs more than
    // the whole assembly.
    std::error_code ignored;
    fs::remove(path, ignored);
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    out.write(text.data(), std::streamsize(text.size()));
    out.close();
    if (!out)
        std::cerr << "AS11: cannot write " << path.string() << "\n";
    return bool(out);
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 2) {
        std::cerr << "usage: AS11.EXE source.asm\n"
                     "  writes source.lst and source.s19, and source.err when there are errors\n";
        return 2;
    }
    const fs::path source = argv[1];
    std::string text;
    if (!ReadFile(source, text)) {
        std::cerr << "AS11: cannot read " << source.string() << "\n";
        return 2;
    }
    // prog.asm gives prog.lst: only the last extension of the file name goes.
    fs::path base = source;
    base.replace_extension();
    const auto withExtension = [&](const char* extension) { return fs::path(base.string() + extension); };

    const hc11::as11::AssemblyResult result =
        hc11::as11::AssembleSource(text, base.filename().string());

    bool written = WriteFile(withExtension(".lst"), result.listing);
    written = WriteFile(withExtension(".s19"), result.s19) && written;
    std::error_code ignored;
    if (result.errors.empty()) {
        fs::remove(withExtension(".err"), ignored);   // no stale errors from an earlier run
    } else {
        written = WriteFile(withExtension(".err"), result.ErrorFileText()) && written;
        for (const auto& error : result.errors)
            std::cerr << source.string() << ":" << error.line << ": " << error.message << "\n";
        std::cerr << result.errors.size() << (result.errors.size() == 1 ? " error\n" : " errors\n");
    }
    if (!written)
        return 2;
    return result.errors.empty() ? 0 : 1;
}
