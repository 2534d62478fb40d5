// A plan with links, assignments and risks to a file and back, beside zlib alone on the same bytes at the same level.

#include <benchmark/benchmark.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include <zlib.h>

#include "bench/bench_site.h"
#include "persistence/compressed_file.h"
#include "platform/path.h"
#include "rules/local_rules_checker.h"

namespace
{

using orvane::madeOnce;

std::string scratch(char const * name)
{
    return (std::filesystem::temp_directory_path() / name).string();
}

CProject & site(std::int64_t leaves)
{
    return *madeOnce(static_cast<std::int32_t>(leaves), true, true).project;
}

std::string const & savedFile(std::int64_t leaves)
{
    static std::string const path = scratch("orvane_bench.prj");
    static std::int64_t saved = 0;
    if (saved != leaves && site(leaves).saveToFile(path.c_str()) == 0) std::abort();
    saved = leaves;
    return path;
}

// What stands in the file, inflated.
std::vector<unsigned char> const & stream(std::int64_t leaves)
{
    static std::vector<unsigned char> bytes;
    static std::int64_t of = 0;
    if (of == leaves) return bytes;
    of = leaves;
    bytes.clear();
    SECCompressFile file;
    if (!file.Open(savedFile(leaves).c_str(), CFile::modeRead)) std::abort();
    std::vector<unsigned char> piece(1 << 16);
    while (unsigned int const got = file.Read(piece.data(), static_cast<unsigned int>(piece.size())))
        bytes.insert(bytes.end(), piece.begin(), piece.begin() + got);
    return bytes;
}

void save(benchmark::State & state)
{
    CProject & project = site(state.range(0));
    std::string const path = scratch("orvane_bench_save.prj");
    for (auto _ : state) benchmark::DoNotOptimize(project.saveToFile(path.c_str()));
    state.counters["stream_MB"] = static_cast<double>(stream(state.range(0)).size()) / 1e6;
    state.counters["file_MB"] = static_cast<double>(std::filesystem::file_size(path)) / 1e6;
    std::filesystem::remove(path);
}

void load(benchmark::State & state)
{
    std::string const & path = savedFile(state.range(0));
    for (auto _ : state)
    {
        auto project = std::make_unique<CProject>(nullptr, false);
        if (project->readFromFile(path.c_str(), false) == 0) std::abort();
        state.PauseTiming();
        project.reset();
        state.ResumeTiming();
    }
}

// In pieces of 4,096 bytes, as the archive hands them on.
template <class Run>
void inPieces(z_stream & z, Run const & run, int flush)
{
    std::vector<unsigned char> out(4096);
    int result = Z_OK;
    while (result == Z_OK)
    {
        z.next_out = out.data();
        z.avail_out = static_cast<uInt>(out.size());
        result = run(&z, flush);
    }
    if (result != Z_STREAM_END) std::abort();
}

std::vector<unsigned char> deflated(std::vector<unsigned char> const & bytes)
{
    std::vector<unsigned char> out(compressBound(bytes.size()));
    z_stream z{};
    deflateInit2(&z, Z_DEFAULT_COMPRESSION, Z_DEFLATED, -15, 8, Z_DEFAULT_STRATEGY);
    z.next_in = const_cast<unsigned char *>(bytes.data());
    z.avail_in = static_cast<uInt>(bytes.size());
    z.next_out = out.data();
    z.avail_out = static_cast<uInt>(out.size());
    if (deflate(&z, Z_FINISH) != Z_STREAM_END) std::abort();
    out.resize(z.total_out);
    deflateEnd(&z);
    return out;
}

void rawDeflate(benchmark::State & state)
{
    std::vector<unsigned char> const & bytes = stream(state.range(0));
    for (auto _ : state) benchmark::DoNotOptimize(deflated(bytes));
}

void rawInflate(benchmark::State & state)
{
    std::vector<unsigned char> const bytes = deflated(stream(state.range(0)));
    for (auto _ : state)
    {
        z_stream z{};
        inflateInit2(&z, -15);
        z.next_in = const_cast<unsigned char *>(bytes.data());
        z.avail_in = static_cast<uInt>(bytes.size());
        inPieces(z, inflate, Z_NO_FLUSH);
        inflateEnd(&z);
    }
}

// One action that can be undone: the state is kept, one task renamed, everything derived.
void undoableAction(benchmark::State & state)
{
    orvane::Made & made = madeOnce(static_cast<std::int32_t>(state.range(0)), true, true);
    CProject & project = *made.project;
    std::string const folder = scratch("orvane_bench_history");
    std::filesystem::create_directories(folder);
    project.setProjectNameDirectoryAndHistoryDirectory("bench", folder.c_str(), folder.c_str());
    project.setFullHistory(true);
    int index = 1;
    for (auto _ : state)
    {
        project.setCurrentStateIndex(CProjectStateIndex(index++));
        project.pushState("rename");
        CLocalRulesChecker rules(&project, CRulesCheckerContext(CRulesCheckerContext::OriginatingClient));
        rules.changeTaskName(made.leaves[0], "renamed");
    }
    project.setFullHistory(false);
    std::filesystem::remove_all(folder);
}

constexpr int small = 1'000;
constexpr int large = 100'000;

BENCHMARK(rawDeflate)->Arg(large)->Unit(benchmark::kMillisecond);
BENCHMARK(save)->Arg(large)->Unit(benchmark::kMillisecond);
BENCHMARK(rawInflate)->Arg(large)->Unit(benchmark::kMillisecond);
BENCHMARK(load)->Arg(large)->Unit(benchmark::kMillisecond);
BENCHMARK(rawDeflate)->Arg(small)->Unit(benchmark::kMillisecond);
BENCHMARK(undoableAction)->Arg(small)->Unit(benchmark::kMillisecond);

}  // namespace
