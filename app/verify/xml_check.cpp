#include "app/verify/text_checks.h"

#include <cstdlib>
#include <map>

#include <fmt/format.h>
#include <xercesc/framework/MemBufInputSource.hpp>
#include <xercesc/sax/SAXParseException.hpp>
#include <xercesc/sax2/Attributes.hpp>
#include <xercesc/sax2/DefaultHandler.hpp>
#include <xercesc/sax2/SAX2XMLReader.hpp>
#include <xercesc/sax2/XMLReaderFactory.hpp>
#include <xercesc/util/BinInputStream.hpp>
#include <xercesc/util/OutOfMemoryException.hpp>
#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/XMLUni.hpp>

namespace orvane::app
{
namespace
{

// What ends a document that is well formed and all the same not read on.
struct NotReadOn
{
    char const * why;
};

// Memory that a document cannot make the parser take without end.
class CountedMemory : public xercesc::MemoryManager
{
public:
    xercesc::MemoryManager * getExceptionMemoryManager() override { return xercesc::XMLPlatformUtils::fgMemoryManager; }
    void * allocate(XMLSize_t size) override
    {
        constexpr std::size_t most = std::size_t{256} << 20;
        bool const isTooMuch = size > most || size > most - taken;
        auto * const block = isTooMuch ? nullptr : static_cast<std::max_align_t *>(std::malloc(sizeof(Head) + size));
        if (!block) throw xercesc::OutOfMemoryException();
        *reinterpret_cast<std::size_t *>(block) = size;
        taken += size;
        return reinterpret_cast<char *>(block) + sizeof(Head);
    }
    void deallocate(void * memory) override
    {
        if (!memory) return;
        char * const block = static_cast<char *>(memory) - sizeof(Head);
        taken -= *reinterpret_cast<std::size_t *>(block);
        std::free(block);
    }

private:
    struct alignas(std::max_align_t) Head
    {
        std::size_t size;
    };
    std::size_t taken = 0;
};

class SourceStream : public xercesc::BinInputStream
{
public:
    explicit SourceStream(ByteSource & source) : source(source) {}
    XMLFilePos curPos() const override { return source.contentSize(); }
    XMLSize_t readBytes(XMLByte * bytes, XMLSize_t count) override
    {
        return source.read(reinterpret_cast<char *>(bytes), count);
    }
    XMLCh const * getContentType() const override { return nullptr; }

private:
    ByteSource & source;
};

class SourceInput : public xercesc::InputSource
{
public:
    SourceInput(ByteSource & source, xercesc::MemoryManager * memory) : InputSource(memory), source(source) {}
    xercesc::BinInputStream * makeStream() const override { return new (getMemoryManager()) SourceStream(source); }

private:
    ByteSource & source;
};

// Looks whether each element is what it may be, and counts what tells a schedule of another program.
class XmlWalk : public xercesc::DefaultHandler
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
    void error(xercesc::SAXParseException const & fault) override { throw fault; }
    void fatalError(xercesc::SAXParseException const & fault) override { throw fault; }

    int level = 0;
    bool isVersion = false;
};

std::string messageText(XMLCh const * text)
{
    char * const bytes = xercesc::XMLString::transcode(text);
    std::string const result = bytes ? bytes : "";
    xercesc::XMLString::release(const_cast<char **>(&bytes));
    return result;
}

void walkXml(ByteSource & source, XmlWalk & handler, std::string & fault)
{
    CountedMemory memory;
    try
    {
        using xercesc::XMLUni;
        std::unique_ptr<xercesc::SAX2XMLReader> const reader(xercesc::XMLReaderFactory::createXMLReader(&memory));
        reader->setFeature(XMLUni::fgSAX2CoreValidation, false);
        reader->setFeature(XMLUni::fgXercesSchema, false);
        reader->setFeature(XMLUni::fgXercesLoadExternalDTD, false);
        reader->setFeature(XMLUni::fgXercesDisableDefaultEntityResolution, true);
        reader->setContentHandler(&handler);
        reader->setErrorHandler(&handler);
        reader->setEntityResolver(&handler);
        reader->setLexicalHandler(&handler);
        reader->parse(SourceInput(source, &memory));
    }
    catch (xercesc::SAXParseException const & wrong)
    {
        fault = fmt::format("line {}, column {}: {}", wrong.getLineNumber(), wrong.getColumnNumber(),
                            messageText(wrong.getMessage()));
    }
    catch (xercesc::SAXException const & wrong)
    {
        fault = messageText(wrong.getMessage());
    }
    catch (xercesc::XMLException const & wrong)
    {
        fault = messageText(wrong.getMessage());
    }
    catch (xercesc::OutOfMemoryException const &)
    {
        fault = "takes more memory than a document should";
    }
    catch (NotReadOn const & reason)
    {
        fault = reason.why;
    }
}

}  // namespace

void checkXml(ByteSource & source, FileCheck & check)
{
    XmlWalk handler;
    xercesc::XMLPlatformUtils::Initialize();
    walkXml(source, handler, check.fault);
    xercesc::XMLPlatformUtils::Terminate();
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
