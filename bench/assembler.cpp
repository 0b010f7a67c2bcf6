// Assembler throughput on a generated 100,000-line source (every instruction
// in every mode, over and over), in memory; then the whole AS11.EXE run on
// the file against the GNU HC11 pipeline (as, ld, objcopy) on the same
// program, one after the other, by the processor time the programs take.
#include <ctime>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <sys/resource.h>
#include <unistd.h>

#include "../tests/support/AsmPrograms.h"
#include "../tests/support/GnuHc11Pipeline.h"
#include "hc11/asm/Assembler.h"

namespace {

double ThreadSeconds()
{
    timespec t{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &t);
    return double(t.tv_sec) + t.tv_nsec / 1e9;
}

// Processor time of all finished child processes so far. The pipelines are
// compared by it, since wall time on a shared machine measures the neighbours.
double ChildSeconds()
{
    rusage usage{};
    getrusage(RUSAGE_CHILDREN, &usage);
    const auto seconds = [](const timeval& t) { return double(t.tv_sec) + t.tv_usec / 1e6; };
    return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

// The instruction block repeated until the source has at least `lines`
// lines. Our copy starts each block at `origin` again, so a long source
// never runs past the top of memory; the GNU copy has a comment there.
asmtest::TwinSource RepeatedProgram(int lines, unsigned origin)
{
    asmtest::TwinSource out;
    char org[32];
    std::snprintf(org, sizeof org, "        ORG $%04X\n", origin);
    for (int block = 0; out.lines < lines; ++block) {
        out.ours += org;
        out.gnu += "* block\n";
        ++out.lines;
        std::string suffix = "_";   // built by +=: GCC 12 warns falsely on "_" + string
        suffix += std::to_string(block);
        asmtest::AppendEveryInstruction(out, suffix);
    }
    return out;
}

} // namespace

int main()
{
    constexpr int Lines = 100000;
    constexpr unsigned Origin = 0x1000;
    const asmtest::TwinSource program = RepeatedProgram(Lines, Origin);

    // Best of several runs, in processor time: the figure of the code, not
    // of a machine shared with others.
    double best = 1e9;
    std::size_t errors = 0;
    for (int run = 0; run < 10; ++run) {
        const double start = ThreadSeconds();
        const auto result = hc11::as11::AssembleSource(program.ours);
        best = std::min(best, ThreadSeconds() - start);
        errors = result.errors.size();
    }
    if (errors != 0) {
        std::fprintf(stderr, "the generated source gave %zu errors\n", errors);
        return 1;
    }
    std::printf("asm_lines_per_s: %.0f lines/s\n", program.lines / best);

    if (!asmtest::GnuHc11Available()) {
        std::fprintf(stderr, "asm_vs_gnu_as skipped: m68hc11-as is not installed\n");
        return 0;
    }
    const std::filesystem::path dir =
        std::filesystem::temp_directory_path() / ("orvane_bench_asm_" + std::to_string(getpid()));
    std::filesystem::create_directories(dir);
    std::ofstream(dir / "bench.asm") << program.ours;

    std::string as11 = "'";
    as11 += ORVANE_PROGRAM_DIR;
    as11 += "/AS11.EXE' '";
    as11 += (dir / "bench.asm").string();
    as11 += "'";
    // Best of three runs each, one pipeline after the other.
    double ours = 1e9, gnu = 1e9;
    int status = 0;
    bool gnuOk = true;
    std::string s19, log;
    for (int run = 0; run < 3; ++run) {
        double before = ChildSeconds();
        status |= std::system(as11.c_str());
        ours = std::min(ours, ChildSeconds() - before);
        before = ChildSeconds();
        gnuOk = asmtest::RunGnuHc11(dir.string(), program.gnu, Origin, s19, log) && gnuOk;
        gnu = std::min(gnu, ChildSeconds() - before);
    }
    std::filesystem::remove_all(dir);
    if (status != 0 || !gnuOk) {
        std::fprintf(stderr, "a pipeline failed: AS11.EXE status %d; GNU: %s\n", status, log.c_str());
        return 1;
    }
    std::printf("asm_vs_gnu_as: %.1f x\n", gnu / ours);
    return 0;
}
