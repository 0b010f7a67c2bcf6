// AS11.EXE: the command-line assembler. `AS11.EXE prog.asm` writes prog.lst
// and prog.s19 beside the source, and prog.err when there are errors, which
// it prints on standard error as well. Exit code: 0 clean, 1 errors, 2 when
// the source cannot be read or an output cannot be written; after a 2 the
// files of the previous run are as they were.
#include <csignal>
#include <deque>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <string>

#include "hc11/asm/Assembler.h"
#include "platform/SafeFile.h"

namespace {

namespace fs = std::filesystem;

// Only a regular file is read: a directory would read as garbage and a FIFO
// would wait for a writer that never comes.
bool ReadFile(const fs::path& path, std::string& text)
{
    std::error_code error;
    if (!fs::is_regular_file(fs::status(path, error)))
        return false;
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

} // namespace

int main(int argc, char** argv)
{
    // A write past a size limit fails with an error instead of a signal.
    std::signal(SIGXFSZ, SIG_IGN);
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
    for (const char* extension : {".lst", ".s19", ".err"}) {
        std::error_code different;
        if (fs::equivalent(source, withExtension(extension), different)) {
            std::cerr << "AS11: " << source.string() << " would be replaced by its own results: "
                         "give the source another name\n";
            return 2;
        }
    }

    const hc11::as11::AssemblyResult result =
        hc11::as11::AssembleSource(text, base.filename().string());

    // Every output is written whole beside its name first, and they take
    // their names only when all of them are on the disk.
    std::deque<PendingFile> pending;
    const auto write = [&](const fs::path& target, const std::string& bytes) {
        if (pending.emplace_back().Write(target.string(), bytes))
            return true;
        std::cerr << "AS11: cannot write " << target.string() << ": " << pending.back().Error() << "\n";
        return false;
    };
    if (!write(withExtension(".lst"), result.listing) || !write(withExtension(".s19"), result.s19)
        || (!result.errors.empty() && !write(withExtension(".err"), result.ErrorFileText())))
        return 2;
    if (result.errors.empty()) {
        // A stale error file would send the IDE to errors this run did not have.
        std::error_code error;
        fs::remove(withExtension(".err"), error);
        if (error) {
            std::cerr << "AS11: cannot remove " << withExtension(".err").string() << ": " << error.message() << "\n";
            return 2;
        }
    }
    for (PendingFile& file : pending) {
        if (!file.Commit()) {
            std::cerr << "AS11: cannot write: " << file.Error() << "\n";
            return 2;
        }
    }
    for (const auto& error : result.errors)
        std::cerr << source.string() << ":" << error.line << ": " << error.message << "\n";
    if (!result.errors.empty())
        std::cerr << result.errors.size() << (result.errors.size() == 1 ? " error\n" : " errors\n");
    return result.errors.empty() ? 0 : 1;
}
