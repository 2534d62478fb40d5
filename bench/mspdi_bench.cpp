// A schedule in Microsoft Project's XML: reading and writing it, beside a bare pass of the parser that counts elements.
// ORVANE_MSPDI may name a file to measure with; else it is a document of our own.

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <memory>
#include <string>

#include <xercesc/framework/MemBufInputSource.hpp>
#include <xercesc/sax2/DefaultHandler.hpp>
#include <xercesc/sax2/SAX2XMLReader.hpp>
#include <xercesc/sax2/XMLReaderFactory.hpp>
#include <xercesc/util/PlatformUtils.hpp>

#include "app/exchange/mspdi_reader.h"
#include "app/exchange/mspdi_writer.h"

namespace
{

using namespace orvane::app;

// Chains of twenty tasks below summary tasks, each with a resource.
Plan makePlan(int count)
{
    constexpr Minute start = 29'000'000, day = 1440;
    Plan plan;
    plan.name = "Measured";
    for (int uid = 1; uid <= count; ++uid)
    {
        PlanTask & task = plan.tasks.emplace_back();
        task.uid = task.id = uid;
        task.name = "Lay the slab of bay " + std::to_string(uid);
        task.isSummary = uid % 21 == 1;
        task.outlineLevel = task.isSummary ? 1 : 2;
        task.duration = 480 * (1 + uid % 10);
        task.start = start + uid % 300 * day;
        task.finish = *task.start + *task.duration * 3;
        if (uid % 21 > 2) task.links.push_back({uid - 1, PlanLinkType::finishToStart, PlanLink::Lag::work, 60});
        plan.assignments.push_back({uid, 1 + uid % 50, 1, 0});
    }
    for (int uid = 1; uid <= 50; ++uid)
    {
        plan.resources.emplace_back().uid = uid;
        plan.resources.back().name = "Crew " + std::to_string(uid);
    }
    return plan;
}

std::string const & measured()
{
    static std::string const text = []
    {
        char const * const path = std::getenv("ORVANE_MSPDI");
        if (!path) return writeMspdi(makePlan(10'000));
        std::ifstream file(path, std::ios::binary);
        return std::string(std::istreambuf_iterator<char>(file), {});
    }();
    return text;
}

class CountingHandler : public xercesc::DefaultHandler
{
public:
    void startElement(XMLCh const *, XMLCh const *, XMLCh const *, xercesc::Attributes const &) override { ++count; }
    std::size_t count = 0;
};

void countBytes(benchmark::State & state)
{
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(measured().size()));
}

void mspdiBareCount(benchmark::State & state)
{
    std::string const & text = measured();
    xercesc::XMLPlatformUtils::Initialize();
    for (auto _ : state)
    {
        CountingHandler handler;
        std::unique_ptr<xercesc::SAX2XMLReader> const parser(xercesc::XMLReaderFactory::createXMLReader());
        parser->setContentHandler(&handler);
        xercesc::MemBufInputSource source(reinterpret_cast<XMLByte const *>(text.data()), text.size(), "");
        source.setCopyBufToStream(false);
        parser->parse(source);
        benchmark::DoNotOptimize(handler.count);
    }
    xercesc::XMLPlatformUtils::Terminate();
    countBytes(state);
}
BENCHMARK(mspdiBareCount)->Unit(benchmark::kMillisecond);

void mspdiRead(benchmark::State & state)
{
    std::string const & text = measured();
    for (auto _ : state) benchmark::DoNotOptimize(readMspdi(text, "measured"));
    countBytes(state);
}
BENCHMARK(mspdiRead)->Unit(benchmark::kMillisecond);

void mspdiWrite(benchmark::State & state)
{
    Plan const plan = readMspdi(measured(), "measured");
    for (auto _ : state) benchmark::DoNotOptimize(writeMspdi(plan));
}
BENCHMARK(mspdiWrite)->Unit(benchmark::kMillisecond);

}  // namespace
