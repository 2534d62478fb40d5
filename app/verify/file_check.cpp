#include "app/verify/file_check.h"

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <string_view>

#include <fmt/format.h>

#include "app/command_host.h"
#include "app/failure.h"
#include "app/verify/byte_source.h"
#include "app/verify/text_checks.h"
#include "app/walks.h"
#include "model/project.h"
#include "persistence/project_file.h"
#include "platform/bytes.h"
#include "platform/file.h"

namespace orvane::app
{
namespace
{

namespace fs = std::filesystem;

// ---- files of projects ------------------------------------------------------------------------------

void countProject(CProject const & project, FileCheck & check)
{
    std::uint64_t links = 0, resources = 0;
    visitItems(project.getAllTasks(), [&](CTask const & task)
               { links += static_cast<std::uint64_t>(task.getUpstreamLinks().GetSize()); });
    forEachResource(project, [&](auto const &) { ++resources; });
    CObArray entities;
    project.getScene().getAllEntities(entities, CEntity::GetThisClass(), true);
    auto const add = [&](char const * name, int count)
    { check.counts.emplace_back(name, static_cast<std::uint64_t>(count)); };
    add("tasks", project.getTotalNumberOfTasks());
    check.counts.emplace_back("links", links);
    add("companies", project.getNumberOfCompanies());
    check.counts.emplace_back("resources", resources);
    add("risks", project.getNumberOfRisks());
    add("users", project.getNumberOfUsers());
    add("filters", project.getNumberOfFilters());
    add("entities", static_cast<int>(entities.GetSize()));
}

// Reads a file of that part to its end and leaves in the check what is wrong. The version is known then.
template <class Part>
void readWhole(Part & part, std::string const & path, FileCheck & check)
{
    // What a reader would show is told by the check.
    CommandHost const silent;
    CFileException failure;
    bool isMore = false;
    try
    {
        auto const read = [&](CProjectArchive & archive)
        {
            part.Serialize(archive);
            char next = 0;
            if (!archive.GetFile()) archive.refuse();
            isMore = archive.read(&next, 1) > 0;
        };
        if (!loadProjectFile(path.c_str(), failure, read)) check.fault = "cannot be read";
        else if (isMore) check.fault = "other bytes follow the content";
    }
    catch (CArchiveException const & wrong)
    {
        check.fault =
            wrong.m_cause == CArchiveException::endOfFile ? "the content ends too early" : "the content is damaged";
    }
    catch (CFileException const & wrong)
    {
        check.fault = describe(wrong);
    }
}

void checkProject(std::string const & path, FileCheck & check)
{
    CProject project(nullptr, false);
    readWhole(project, path, check);
    if (check.fault.empty()) countProject(project, check);
}

void checkData(std::string const & path, FileCheck & check)
{
    CProject project(nullptr, false);
    auto data = std::make_unique<CProjectData>();
    readWhole(*data, path, check);
    if (!check.fault.empty()) return;
    project.setProjectData(data.get());
    countProject(project, check);
}

// Older files bear other headers, and files of views none: such a file is what it can be read as, to its end.
bool checkByReading(std::string const & path, int version, FileCheck & check)
{
    if (version < 1 || version > CProjectArchive::currentVersion || !check.fault.empty()) return false;
    auto const reads = [&](char const * kind, auto const & read)
    {
        FileCheck tried = check;
        read(tried);
        if (!tried.fault.empty()) return false;
        check = tried;
        check.kind = kind;
        check.version = std::to_string(version);
        return true;
    };
    return reads("project file", [&](FileCheck & tried) { checkProject(path, tried); }) ||
           reads("view state",
                 [&](FileCheck & tried)
                 {
                     CPresentationData views;
                     readWhole(views, path, tried);
                 });
}

// ---- what a file is ---------------------------------------------------------------------------------

struct FileHead
{
    std::string bytes;
    // The first item of a project file.
    int version = 0;
    std::string_view afterVersion;

    explicit FileHead(std::string first) : bytes(std::move(first))
    {
        if (bytes.size() <= sizeof version) return;
        NumberBytes<int> number;
        std::memcpy(number.data(), bytes.data(), number.size());
        version = fromBytes<int>(number);
        afterVersion = std::string_view(bytes).substr(sizeof version);
    }
    // A short text as it stands in a project file.
    bool hasText(std::string_view text) const
    {
        return !afterVersion.empty() && static_cast<unsigned char>(afterVersion[0]) == text.size() &&
               afterVersion.substr(1).starts_with(text);
    }
    std::string_view text() const
    {
        std::string_view rest = bytes;
        if (rest.starts_with("\xEF\xBB\xBF")) rest.remove_prefix(3);
        return rest.substr(std::min(rest.find_first_not_of(" \t\r\n"), rest.size()));
    }
    std::string_view firstLine() const { return text().substr(0, text().find_first_of("\r\n")); }
};

// Reads all of the file.
FileHead readHead(std::string const & path, FileCheck & check)
{
    constexpr std::size_t most = 4096;
    ByteSource source(path);
    std::string head;
    char block[65536];
    while (std::size_t const got = source.read(block, sizeof block))
        head.append(block, std::min(got, most - std::min(most, head.size())));
    check.isCompressed = source.isCompressed();
    check.contentSize = source.contentSize();
    check.fault = source.fault();
    std::error_code ignored;
    check.fileSize = fs::file_size(path, ignored);
    return FileHead(std::move(head));
}

bool isUtf16(std::string_view text)
{
    return text.starts_with("\xFF\xFE<") || text.starts_with(std::string_view("\xFE\xFF\0<", 4));
}

// The character between the columns of a table; zero when it is none.
char guessSeparator(FileHead const & head)
{
    if (head.bytes.find('\0') != head.bytes.npos) return '\0';
    std::string_view const line = head.firstLine();
    for (char const each : {',', ';', '\t'})
        if (line.find(each) != line.npos) return each;
    return '\0';
}

// Whether it lies where the states before actions are kept.
bool isKeptState(std::string const & path)
{
    std::error_code ignored;
    return fs::absolute(path, ignored).parent_path().extension() == ".history";
}

// A fault that reading the bytes has met is told first: it is the cause of any other.
template <class Check>
void keepingFault(FileCheck & check, Check const & further)
{
    std::string const first = check.fault;
    further();
    if (!first.empty()) check.fault = first;
}

void checkContent(std::string const & path, FileHead const & head, FileCheck & check)
{
    std::string_view const text = head.text();
    auto const checkAs = [&](char const * kind, auto const & further)
    {
        check.kind = kind;
        keepingFault(check, further);
    };
    auto const checkText = [&](char const * kind, auto function, auto... arguments)
    {
        ByteSource source(path);
        checkAs(kind, [&] { function(source, check, arguments...); });
    };
    if (head.hasText("Orvane Schedule Project") || head.hasText("Orvane Schedule Project Data"))
    {
        check.version = std::to_string(head.version);
        if (head.hasText("Orvane Schedule Project Data")) checkAs("data file", [&] { checkData(path, check); });
        else checkAs(isKeptState(path) ? "kept state" : "project file", [&] { checkProject(path, check); });
    }
    else if (head.bytes.find("<!-- File Format - Orvane Schedule") < 200)
        checkText("project document", checkProjectDocument);
    else if (text.starts_with('<') || isUtf16(head.bytes)) checkText("XML document", checkXml);
    else if (text.starts_with('{') || text.starts_with('[')) checkText("JSON document", checkJson);
    else if (char const separator = guessSeparator(head)) checkText("CSV table", checkCsv, separator);
    else if (head.bytes.empty() && check.fault.empty())
    {
        check.kind = "empty file";
        check.fault = "holds nothing";
    }
    else if (!checkByReading(path, head.version, check))
        check.kind = check.isCompressed ? "gzip file of something else" : "something else";
}

}  // namespace

FileCheck checkFile(std::string const & path)
{
    FileCheck check;
    FileHead const head = readHead(path, check);
    checkContent(path, head, check);
    return check;
}

}  // namespace orvane::app
