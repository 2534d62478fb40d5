#include "app/verify/text_checks.h"

#include <map>

#include <fmt/format.h>

#include "app/xml_parser.h"

namespace orvane::app
{
namespace
{

// What ends a document that is well formed and all the same not read on.
struct NotReadOn
{
    char const * why;
};

// Far beyond what the elements and texts of any schedule need.
constexpr std::size_t mostMemory = std::size_t{256} << 20;

// Looks whether each element is what it may be, and counts what tells a schedule of another program.
class XmlWalk : public XmlHandler
{
public:
    std::uint64_t elements = 0;
    bool isSchedule = false;
    std::string version;
    // Of elements, by name.
    std::map<std::u16string, std::uint64_t, std::less<>> counts{
        {u"Task", 0}, {u"Resource", 0}, {u"Assignment", 0}, {u"Calendar", 0}};

private:
    static constexpr int mostLevels = 1000;

    void startElement(XMLCh const * uri, XMLCh const * name, XMLCh const *, xercesc::Attributes const &) override
    {
        if (++level > mostLevels) throw NotReadOn{"elements nest too deep"};
        constexpr std::u16string_view scheduleSpace = u"http://schemas.microsoft.com/project";
        if (level == 1) isSchedule = uri == scheduleSpace && name == std::u16string_view(u"Project");
        ++elements;
        if (auto const counted = counts.find(std::u16string_view(name)); counted != counts.end()) ++counted->second;
        isVersion = level == 2 && name == std::u16string_view(u"SaveVersion");
    }
    void endElement(XMLCh const *, XMLCh const *, XMLCh const *) override
    {
        --level;
        isVersion = false;
    }
    void characters(XMLCh const * text, XMLSize_t length) override
    {
        constexpr std::size_t longest = 20;
        for (XMLSize_t each = 0; isVersion && each < length && version.size() < longest; ++each)
            if (text[each] >= u'0' && text[each] <= u'9') version += static_cast<char>(text[each]);
    }
    void startDTD(XMLCh const *, XMLCh const *, XMLCh const *) override
    {
        throw NotReadOn{"declares a type of document; such documents are not read"};
    }
    xercesc::InputSource * resolveEntity(XMLCh const *, XMLCh const *) override
    {
        throw NotReadOn{"refers to another file; such documents are not read"};
    }

    int level = 0;
    bool isVersion = false;
};

// Why the document is not whole; empty when it is.
std::string faultOf(ByteSource & source, XmlWalk & handler)
{
    try
    {
        parseXml([&](char * bytes, std::size_t most) { return source.read(bytes, most); }, handler, mostMemory);
        return {};
    }
    catch (XmlFault const & wrong)
    {
        return wrong.line == 0 ? wrong.what
                               : fmt::format("line {}, column {}: {}", wrong.line, wrong.column, wrong.what);
    }
    catch (XmlTooLarge const &)
    {
        return "takes more memory than a document should";
    }
    catch (NotReadOn const & reason)
    {
        return reason.why;
    }
}

}  // namespace

void checkXml(ByteSource & source, FileCheck & check)
{
    XmlWalk handler;
    check.fault = faultOf(source, handler);
    check.kind = handler.isSchedule ? "MSPDI document" : "XML document";
    check.counts = {{"elements", handler.elements}};
    if (!handler.isSchedule) return;
    check.version = handler.version;
    for (auto const & [tag, name] : {std::pair{u"Task", "tasks"},
                                     {u"Resource", "resources"},
                                     {u"Assignment", "assignments"},
                                     {u"Calendar", "calendars"}})
        check.counts.emplace_back(name, handler.counts.at(tag));
}

}  // namespace orvane::app
