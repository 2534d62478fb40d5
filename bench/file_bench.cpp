// The compressed file against zlib alone, on bytes like those of a project.

#include <benchmark/benchmark.h>
#include <zlib.h>

#include <algorithm>
#include <filesystem>
#include <random>
#include <string>
#include <vector>

#include "persistence/compressed_file.h"

namespace
{

// What an archive hands to its file at once.
constexpr unsigned int piece = 4096;
constexpr std::size_t total = std::size_t{50} << 20;

template <class T>
void append(std::string & bytes, T number)
{
    bytes.append(reinterpret_cast<char const *>(&number), sizeof number);
}

// Records of an identifier, flags, times that rise slowly and a name out of a few words.
std::string const & projectBytes()
{
    static std::string const all = [] {
        static constexpr char const * words[] = {"Excavate", "Foundation", "Formwork", "Wall",
                                                 "Level",    "Install",    "Duct"};
        std::mt19937 random(1);
        std::string bytes;
        for (int row = 0; bytes.size() < total; ++row)
        {
            for (int part = 0; part < 4; ++part) append(bytes, random());
            append(bytes, 1'000'000'000 + row * 3600 + static_cast<int>(random() % 86400));
            append(bytes, static_cast<int>(random() % 20) * 28800);
            bytes += std::string("\1\1\0\1\0\0\0\0\1\1", 10);
            std::string const name = std::string(words[random() % 7]) + ' ' + words[random() % 7] + ' ' +
                                     std::to_string(random() % 500);
            bytes += static_cast<char>(name.size()) + name;
        }
        bytes.resize(total);
        return bytes;
    }();
    return all;
}

CString benchPath()
{
    return CString((std::filesystem::temp_directory_path() / "orvane-bench.prj").string());
}

template <class Take>
void eachPiece(std::string const & bytes, Take && take)
{
    for (std::size_t at = 0; at < bytes.size(); at += piece)
        take(bytes.data() + at, static_cast<unsigned int>(std::min<std::size_t>(piece, bytes.size() - at)));
}

std::string deflated(std::string const & bytes)
{
    z_stream z{};
    deflateInit2(&z, Z_DEFAULT_COMPRESSION, Z_DEFLATED, -15, 8, Z_DEFAULT_STRATEGY);
    std::string out(deflateBound(&z, bytes.size()), '\0');
    z.next_out = reinterpret_cast<Bytef *>(out.data());
    z.avail_out = static_cast<uInt>(out.size());
    eachPiece(bytes, [&](char const * data, unsigned int size) {
        z.next_in = reinterpret_cast<Bytef *>(const_cast<char *>(data));
        z.avail_in = size;
        deflate(&z, Z_NO_FLUSH);
    });
    deflate(&z, Z_FINISH);
    out.resize(z.total_out);
    deflateEnd(&z);
    return out;
}

void writeFile()
{
    std::filesystem::remove(benchPath().view());
    SECCompressFile file;
    file.Open(benchPath(), CFile::modeCreate | CFile::modeWrite);
    eachPiece(projectBytes(), [&](char const * data, unsigned int size) { file.Write(data, size); });
    file.Close();
}

void finish(benchmark::State & state)
{
    std::filesystem::remove(benchPath().view());
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * total));
}

void writeZlibAlone(benchmark::State & state)
{
    projectBytes();
    for (auto _ : state) benchmark::DoNotOptimize(deflated(projectBytes()));
    finish(state);
}

void writeCompressedFile(benchmark::State & state)
{
    projectBytes();
    for (auto _ : state) writeFile();
    finish(state);
}

void readZlibAlone(benchmark::State & state)
{
    static std::string const bytes = deflated(projectBytes());
    std::vector<Bytef> out(piece);
    for (auto _ : state)
    {
        z_stream z{};
        inflateInit2(&z, -15);
        z.next_in = reinterpret_cast<Bytef *>(const_cast<char *>(bytes.data()));
        z.avail_in = static_cast<uInt>(bytes.size());
        do
        {
            z.next_out = out.data();
            z.avail_out = piece;
        } while (inflate(&z, Z_NO_FLUSH) == Z_OK);
        inflateEnd(&z);
    }
    finish(state);
}

void readCompressedFile(benchmark::State & state)
{
    writeFile();
    std::vector<char> out(piece);
    for (auto _ : state)
    {
        SECCompressFile file;
        file.Open(benchPath(), CFile::modeRead);
        while (file.Read(out.data(), piece) > 0) {}
        file.Close();
    }
    finish(state);
}

BENCHMARK(writeZlibAlone)->Unit(benchmark::kMillisecond);
BENCHMARK(writeCompressedFile)->Unit(benchmark::kMillisecond);
BENCHMARK(readZlibAlone)->Unit(benchmark::kMillisecond);
BENCHMARK(readCompressedFile)->Unit(benchmark::kMillisecond);

}  // namespace
