// What a setting costs.

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <filesystem>

#include "config/project_config.h"
#include "platform/settings_store.h"

namespace
{

// Each project asks for it when it is made.
void cachedSetting(benchmark::State & state)
{
    for (auto _ : state) benchmark::DoNotOptimize(CProjectConfig::getFullHistory());
}
BENCHMARK(cachedSetting);

void cachedText(benchmark::State & state)
{
    for (auto _ : state) benchmark::DoNotOptimize(CProjectConfig::getOrvaneScheduleVersion());
}
BENCHMARK(cachedText);

struct TemporaryFile
{
    ~TemporaryFile() { std::filesystem::remove_all(folder); }
    char pattern[32] = "/tmp/orvane_bench_XXXXXX";
    std::filesystem::path const folder = ::mkdtemp(pattern), path = folder / "settings.db";
};

constexpr int settings = 250;

CString settingName(int index)
{
    CString name;
    name.Format("Setting%d", index);
    return name;
}

// A start of the application that asks for every setting: opens the store and reads each once.
void allSettingsOfAStart(benchmark::State & state)
{
    TemporaryFile const file;
    auto const filled = orvane::makeSettingsFile(file.path);
    for (int i = 0; i < settings; ++i) filled->write("Root\\Section", settingName(i), CString("value"));
    for (auto _ : state)
    {
        auto const store = orvane::makeSettingsFile(file.path);
        for (int i = 0; i < settings; ++i) benchmark::DoNotOptimize(store->read("Root\\Section", settingName(i)));
    }
}
BENCHMARK(allSettingsOfAStart)->Unit(benchmark::kMillisecond);

void firstStart(benchmark::State & state)
{
    TemporaryFile const file;
    for (auto _ : state)
    {
        auto const store = orvane::makeSettingsFile(file.path);
        for (int i = 0; i < settings; ++i) benchmark::DoNotOptimize(store->read("Root\\Section", settingName(i)));
    }
}
BENCHMARK(firstStart)->Unit(benchmark::kMillisecond);

void writeSetting(benchmark::State & state)
{
    TemporaryFile const file;
    auto const store = orvane::makeSettingsFile(file.path);
    std::uint32_t value = 0;
    for (auto _ : state) store->write("Root\\Section", "Width", ++value);
}
BENCHMARK(writeSetting)->Unit(benchmark::kMillisecond)->UseRealTime();

}  // namespace
