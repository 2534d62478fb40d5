// A plan with links, assignments and risks as an XML document: writing it, beside handing the same bytes to the file at
// once; reading it, beside a bare pass of the parser that takes every name and value as UTF-8.

#include <benchmark/benchmark.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <memory>
#include <string>

#include <xercesc/sax2/Attributes.hpp>
#include <xercesc/sax2/DefaultHandler.hpp>
#include <xercesc/sax2/SAX2XMLReader.hpp>
#include <xercesc/sax2/XMLReaderFactory.hpp>
#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/TransService.hpp>

#include "bench/bench_site.h"
#include "platform/file.h"
#include "platform/project_xml_archive.h"

namespace
{

using orvane::madeOnce;

std::string scratch(char const * name)
{
    return (std::filesystem::temp_directory_path() / name).string();
}

// The companies and their resources go by the project's calendar, as new ones do. One that has a calendar of its own
// moves all lines behind it further in, and a thousand of them would leave little but blanks to measure.
std::unique_ptr<CProject> makeSite(std::int64_t leaves)
{
    CProject & all = *madeOnce(static_cast<std::int32_t>(leaves), true, true).project;
    std::unique_ptr<CProjectData> const data(all.getCopyOfProjectData());
    CCalendar unused;
    unused.setInUse(false);
    auto const setUnused = [&](auto & resource)
    {
        if constexpr (requires { resource.setCalendar(unused); }) resource.setCalendar(unused);
    };
    CCompanyArray companies = data->getCompanies();
    for (int each = 0; each < companies.GetSize(); ++each)
    {
        setUnused(companies.elementForPass(each));
        companies.elementForPass(each).forEachKind(
            [&](auto & resources)
            {
                for (int one = 0; one < resources.GetSize(); ++one) setUnused(resources.elementForPass(one));
            });
    }
    data->setCompanies(companies);
    return std::make_unique<CProject>(*data);
}

CProject & site(std::int64_t leaves)
{
    static std::map<std::int64_t, std::unique_ptr<CProject>> sites;
    std::unique_ptr<CProject> & made = sites[leaves];
    if (!made) made = makeSite(leaves);
    return *made;
}

void replaceFirst(std::string & text, std::string const & from, std::string const & to, std::size_t after = 0)
{
    text.replace(text.find(from, after), from.size(), to);
}

// The document of the plan, under a root's name that a parser takes.
std::string const & savedDocument(std::int64_t leaves)
{
    static std::string const path = scratch("orvane_bench.xml");
    static std::int64_t saved = 0;
    if (saved == leaves) return path;
    site(leaves).xmlSerialize(true, path.c_str(), false);
    std::ifstream written(path, std::ios::binary);
    std::string text(std::istreambuf_iterator<char>(written), {});
    std::string const root = "Brindlewood Co";
    replaceFirst(text, "<" + root, "<Root");
    replaceFirst(text, "</" + root, "</Root", text.size() - root.size() - 5);
    std::ofstream(path, std::ios::binary) << text;
    saved = leaves;
    return path;
}

std::string contents(std::string const & path)
{
    std::ifstream file(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(file), {});
}

void writeDocument(benchmark::State & state)
{
    CProject & project = site(state.range(0));
    std::string const path = scratch("orvane_bench_write.xml");
    for (auto _ : state) project.xmlSerialize(true, path.c_str(), false);
    state.counters["MB"] = static_cast<double>(std::filesystem::file_size(path)) / 1e6;
    std::filesystem::remove(path);
}

void writeSameBytes(benchmark::State & state)
{
    std::string const bytes = contents(savedDocument(state.range(0)));
    std::string const path = scratch("orvane_bench_write.xml");
    for (auto _ : state)
    {
        CFile file;
        if (!file.Open(path.c_str(), CFile::modeCreate | CFile::modeWrite)) std::abort();
        file.Write(bytes.data(), static_cast<unsigned int>(bytes.size()));
        file.Close();
    }
    std::filesystem::remove(path);
}

void readDocument(benchmark::State & state)
{
    std::string const & path = savedDocument(state.range(0));
    for (auto _ : state)
    {
        CProjectData data;
        if (CProjectXMLArchive().parse(path.c_str(), &data) == 0) std::abort();
    }
}

// Takes what any reader of the document must take.
class CBareHandler : public xercesc::DefaultHandler
{
public:
    CBareHandler()
    {
        xercesc::XMLTransService::Codes outcome;
        transcoder.reset(xercesc::XMLPlatformUtils::fgTransService->makeNewTranscoderFor("UTF-8", outcome, 4096));
    }
    void startElement(XMLCh const *, XMLCh const * name, XMLCh const *, xercesc::Attributes const & attributes) override
    {
        take(name);
        for (XMLSize_t each = 0; each < attributes.getLength(); ++each)
        {
            take(attributes.getQName(each));
            take(attributes.getValue(each));
        }
    }

private:
    void take(XMLCh const * text)
    {
        xercesc::TranscodeToStr const bytes(text, transcoder.get());
        benchmark::DoNotOptimize(bytes.str());
    }

    std::unique_ptr<xercesc::XMLTranscoder> transcoder;
};

void barePass(benchmark::State & state)
{
    std::string const & path = savedDocument(state.range(0));
    for (auto _ : state)
    {
        xercesc::XMLPlatformUtils::Initialize();
        {
            CBareHandler handler;
            std::unique_ptr<xercesc::SAX2XMLReader> const reader(xercesc::XMLReaderFactory::createXMLReader());
            reader->setContentHandler(&handler);
            reader->parse(path.c_str());
        }
        xercesc::XMLPlatformUtils::Terminate();
    }
}

constexpr int tasks = 10'000;

BENCHMARK(writeSameBytes)->Arg(tasks)->Unit(benchmark::kMillisecond);
BENCHMARK(writeDocument)->Arg(tasks)->Unit(benchmark::kMillisecond);
BENCHMARK(barePass)->Arg(tasks)->Unit(benchmark::kMillisecond);
BENCHMARK(readDocument)->Arg(tasks)->Unit(benchmark::kMillisecond);

}  // namespace
