#include "persistence/xml_attribute.h"

#include <algorithm>
#include <cstddef>

#include <xercesc/sax/SAXParseException.hpp>
#include <xercesc/sax2/Attributes.hpp>
#include <xercesc/util/SecurityManager.hpp>

#include "persistence/xml_parser_impl.h"
#include "platform/file.h"
#include "platform/utf8_impl.h"

namespace
{

using Character = XMLCh;

// Far beyond what documents of projects need, and what they can cost is known. The parser walks through declarations
// recursively, so that they must be short.
constexpr std::size_t entityLimit = 100;
constexpr std::size_t memoryLimit = std::size_t{128} << 20;
constexpr int depthLimit = 1000;
constexpr std::size_t declarationsLimit = 8 * 1024;
constexpr std::size_t pieceSize = 1024;

// The archive whose document is being read.
CProjectXMLArchive * activeArchive = nullptr;

class CActivity
{
public:
    explicit CActivity(CProjectXMLArchive & archive) { set(&archive); }
    CActivity(CActivity const &) = delete;
    CActivity & operator=(CActivity const &) = delete;
    ~CActivity() { set(nullptr); }

private:
    static void set(CProjectXMLArchive * archive)
    {
        activeArchive = archive;
        orvane::tagProcessorsInUse = archive != nullptr;
    }
};

using Refused = orvane::RefusedXml;

// Whether the parser came through without an exception of its own.
template <class Parse>
bool completes(Parse const & parse)
{
    try
    {
        return parse();
    }
    catch (xercesc::XMLException const &)
    {
    }
    catch (xercesc::SAXException const &)
    {
    }
    catch (xercesc::OutOfMemoryException const &)
    {
    }
    catch (Refused const &)
    {
    }
    return false;
}

}  // namespace

// Hands what the parser finds to the archive. Text between tags and processing instructions end in the empty
// operations of the base: documents of projects have none.
class CProjectXMLArchive::CParser : public xercesc::DefaultHandler
{
public:
    explicit CParser(CProjectXMLArchive & archive) : archive(archive) {}

    // Whether the parser found no error.
    bool parse(CFile & file);

private:
    void startElement(Character const * uri, Character const * localName, Character const * qualifiedName,
                      xercesc::Attributes const & attributes) override;
    void endElement(Character const * uri, Character const * localName, Character const * qualifiedName) override;
    void warning(xercesc::SAXParseException const & fault) override { tell("Warning", fault); }
    void error(xercesc::SAXParseException const & fault) override { tell("Error", fault); }
    void fatalError(xercesc::SAXParseException const & fault) override { tell("Fatal Error", fault); }
    // No other file is read, whatever the document asks for.
    xercesc::InputSource * resolveEntity(Character const *, Character const *) override { throw Refused(); }
    void internalEntityDecl(Character const * name, Character const * value) override;
    void startDTD(Character const *, Character const *, Character const *) override { isDeclaring = true; }
    void endDTD() override { isDeclaring = false; }

    std::size_t read(CFile & file, char * bytes, std::size_t most);
    void tell(char const * severity, xercesc::SAXParseException const & fault);
    void showXMLError(CString const & text, int line, int column);
    CString utf8(Character const * text);

    CProjectXMLArchive & archive;
    orvane::CXmlMemory memory{memoryLimit};
    xercesc::SecurityManager security;
    bool isDeclaring = false;
    std::size_t declared = 0;
    int depth = 0;
    // Kept, so that its memory serves all texts.
    std::string plainText;
};

int CProjectXMLArchive::parse(CString const & fileName, IProjectXMLTagProcessor * processor)
{
    if (!processor || activeArchive) return 0;
    reading = 1;
    writing = 0;
    this->fileName = fileName;
    currentProcessor = processor;
    processorStack.push_back(processor);
    CFile source;
    if (!source.Open(fileName, CFile::modeRead)) return 0;
    CActivity const activity(*this);
    return completes(
        [&]
        {
            orvane::CXmlPlatform const platform;
            CParser parser(*this);
            // Exceptions of the parser must not outlive its platform.
            return completes([&] { return parser.parse(source); });
        });
}

bool CProjectXMLArchive::CParser::parse(CFile & file)
{
    using xercesc::XMLUni;
    auto const parser = orvane::makeXmlParser(*this, memory);
    // By the document's own declarations, where it has any.
    parser->setFeature(XMLUni::fgSAX2CoreValidation, true);
    parser->setFeature(XMLUni::fgXercesDynamic, true);
    security.setEntityExpansionLimit(entityLimit);
    parser->setProperty(XMLUni::fgXercesSecurityManager, &security);
    auto const bytes = [&](char * to, std::size_t most) { return read(file, to, most); };
    parser->parse(orvane::CXmlSource(bytes, memory));
    return parser->getErrorCount() == 0;
}

// In small pieces, so that it is known how much of the document the parser has seen.
std::size_t CProjectXMLArchive::CParser::read(CFile & file, char * bytes, std::size_t most)
{
    if (isDeclaring && (declared += pieceSize) > declarationsLimit) throw Refused();
    try
    {
        return file.Read(bytes, static_cast<unsigned int>(std::min(most, pieceSize)));
    }
    catch (CFileException const &)
    {
        throw Refused();
    }
}

CString CProjectXMLArchive::CParser::utf8(Character const * text)
{
    if (!text) return {};
    orvane::assignUtf8(plainText, text);
    return CString(std::string_view(plainText));
}

void CProjectXMLArchive::CParser::startElement(Character const * uri, Character const * localName,
                                               Character const * qualifiedName, xercesc::Attributes const & attributes)
{
    if (++depth > depthLimit) throw Refused();
    if (archive.failed) return;
    archive.attributes->RemoveAll();
    for (XMLSize_t each = 0; each < attributes.getLength(); ++each)
        archive.attributes->add(utf8(attributes.getQName(each)), utf8(attributes.getValue(each)));
    bool const hasNamespace = archive.useNamespaces && uri && *uri;
    archive.currentTag =
        hasNamespace ? utf8(uri) + ":" + utf8(localName) : utf8(archive.useNamespaces ? localName : qualifiedName);
    if (archive.currentProcessor) archive.currentProcessor->xmlSerialize(archive);
    archive.processorStack.push_back(archive.currentProcessor);
}

void CProjectXMLArchive::CParser::endElement(Character const *, Character const *, Character const *)
{
    --depth;
    if (archive.failed) return;
    archive.processorStack.pop_back();
    archive.currentProcessor = archive.processorStack.empty() ? nullptr : archive.processorStack.back();
}

// Entities of the declarations themselves are refused, since nothing counts how often they are expanded.
void CProjectXMLArchive::CParser::internalEntityDecl(Character const * name, Character const *)
{
    if (name && *name == u'%') throw Refused();
}

void CProjectXMLArchive::CParser::tell(char const * severity, xercesc::SAXParseException const & fault)
{
    if (archive.failed) return;
    int const line = static_cast<int>(fault.getLineNumber());
    int const column = static_cast<int>(fault.getColumnNumber());
    CString const cause = utf8(fault.getMessage());
    CString text;
    text.Format("%s at file %s at line %d column %d %s", severity, static_cast<char const *>(archive.fileName), line,
                column, static_cast<char const *>(cause));
    showXMLError(text, line, column);
}

// Nobody is disturbed: whoever asked for the document looks at the answer, and at the message if he likes.
void CProjectXMLArchive::CParser::showXMLError(CString const & text, int, int)
{
    archive.failed = 1;
    archive.message = text;
}

void orvane::forgetTagProcessor(IProjectXMLTagProcessor const & processor)
{
    if (!activeArchive) return;
    std::ranges::replace(activeArchive->processorStack, const_cast<IProjectXMLTagProcessor *>(&processor), nullptr);
    if (activeArchive->currentProcessor == &processor) activeArchive->currentProcessor = nullptr;
}
