// AS11.EXE: the command-line assembler. `AS11.EXE prog.asm` writes prog.lst
// and prog.s19 beside the source, and prog.err when there are errors, which
// it prints on standard error as well. Exit code: 0 clean, 1 errors, 2 when
// the source cannot be read or an output cannot be written; after a 2 the
// files of the previous run are as they were.
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <string>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

#include "hc11/asm/Assembler.h"

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

// One output written beside its final name, renamed into place only when
// every output has been written whole.
struct PendingFile {
    fs::path target;
    std::string temporary;
};

bool WriteTemporary(const fs::path& target, const std::string& text, std::vector<PendingFile>& pending)
{
    // A fresh file, not a truncated old one: ext4 flushes a file that was
    // truncated and rewritten to the disk on close, which costs more than
    // the whole assembly.
    std::string name = target.string() + ".XXXXXX";
    const int fd = mkstemp(name.data());
    if (fd < 0) {
        std::cerr << "AS11: cannot write " << target.string() << "\n";
        return false;
    }
    pending.push_back({target, name});
    std::size_t done = 0;
    while (done < text.size()) {
        const ssize_t n = write(fd, text.data() + done, text.size() - done);
        if (n <= 0)
            break;
        done += std::size_t(n);
    }
    const bool closed = close(fd) == 0;
    if (done != text.size() || !closed) {
        std::cerr << "AS11: cannot write " << target.string() << "\n";
        return false;
    }
    // mkstemp gives 0600; the results are ordinary files of the user.
    const mode_t mask = umask(0);
    umask(mask);
    fs::permissions(name, fs::perms(0666 & ~mask), fs::perm_options::replace);
    return true;
}

void Discard(const std::vector<PendingFile>& pending)
{
    std::error_code ignored;
    for (const PendingFile& file : pending)
        fs::remove(file.temporary, ignored);
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

    const hc11::as11::AssemblyResult result =
        hc11::as11::AssembleSource(text, base.filename().string());

    std::vector<PendingFile> pending;
    bool written = WriteTemporary(withExtension(".lst"), result.listing, pending)
                   && WriteTemporary(withExtension(".s19"), result.s19, pending)
                   && (result.errors.empty() || WriteTemporary(withExtension(".err"), result.ErrorFileText(), pending));
    if (written && result.errors.empty()) {
        // A stale error file would send the IDE to errors this run did not have.
        std::error_code error;
        fs::remove(withExtension(".err"), error);
        if (error) {
            std::cerr << "AS11: cannot remove " << withExtension(".err").string() << ": " << error.message() << "\n";
            written = false;
        }
    }
    if (!written) {
        Discard(pending);
        return 2;
    }
    for (const PendingFile& file : pending) {
        std::error_code error;
        fs::rename(file.temporary, file.target, error);
        if (error) {
            std::cerr << "AS11: cannot write " << file.target.string() << ": " << error.message() << "\n";
            Discard(pending);
            return 2;
        }
    }
    for (const auto& error : result.errors)
        std::cerr << source.string() << ":" << error.line << ": " << error.message << "\n";
    if (!result.errors.empty())
        std::cerr << result.errors.size() << (result.errors.size() == 1 ? " error\n" : " errors\n");
    return result.errors.empty() ? 0 : 1;
}
