#include "persistence/xml_attribute.h"

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <new>

#include <xercesc/sax/InputSource.hpp>
#include <xercesc/sax/SAXParseException.hpp>
#include <xercesc/sax2/Attributes.hpp>
#include <xercesc/sax2/DefaultHandler.hpp>
#include <xercesc/sax2/SAX2XMLReader.hpp>
#include <xercesc/sax2/XMLReaderFactory.hpp>
#include <xercesc/util/BinInputStream.hpp>
#include <xercesc/util/OutOfMemoryException.hpp>
#include <xercesc/util/PanicHandler.hpp>
#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/SecurityManager.hpp>
#include <xercesc/util/TransService.hpp>
#include <xercesc/util/XMLString.hpp>
#include <xercesc/util/XMLUni.hpp>

#include "platform/file.h"

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

// What ends a document that is not fit to be read on.
struct Refused
{
};

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

class CPanic : public xercesc::PanicHandler
{
public:
    void panic(PanicReasons const) override { throw Refused(); }
};

// The parser's own libraries, for as long as a document is read.
class CPlatform
{
public:
    CPlatform() { xercesc::XMLPlatformUtils::Initialize(xercesc::XMLUni::fgXercescDefaultLocale, nullptr, &panic); }
    CPlatform(CPlatform const &) = delete;
    CPlatform & operator=(CPlatform const &) = delete;
    ~CPlatform() { xercesc::XMLPlatformUtils::Terminate(); }

private:
    CPanic panic;
};

// Memory that a document cannot make the parser take without end. What the parser loses when it breaks off is given
// back in the end.
class CBoundedMemory : public xercesc::MemoryManager
{
public:
    CBoundedMemory() = default;
    ~CBoundedMemory() override
    {
        while (blocks.next != &blocks) release(*blocks.next);
    }
    // Exceptions outlive the parser.
    xercesc::MemoryManager * getExceptionMemoryManager() override { return xercesc::XMLPlatformUtils::fgMemoryManager; }
    void * allocate(XMLSize_t size) override
    {
        bool const isTooMuch = size > memoryLimit || size + sizeof(Block) > memoryLimit - taken;
        void * const memory = isTooMuch ? nullptr : std::malloc(sizeof(Block) + size);
        if (!memory) throw xercesc::OutOfMemoryException();
        auto * const block = new (memory) Block{&blocks, blocks.next, sizeof(Block) + size};
        block->next->previous = blocks.next = block;
        taken += block->size;
        return block + 1;
    }
    void deallocate(void * memory) override
    {
        if (memory) release(static_cast<Block *>(memory)[-1]);
    }

private:
    // What stands before each piece of memory: a ring of all of them.
    struct alignas(std::max_align_t) Block
    {
        Block * previous;
        Block * next;
        std::size_t size;
    };

    void release(Block & block)
    {
        block.previous->next = block.next;
        block.next->previous = block.previous;
        taken -= block.size;
        std::free(&block);
    }

    Block blocks{&blocks, &blocks, 0};
    std::size_t taken = 0;
};

// How far a document has been read.
struct Progress
{
    bool isDeclaring = false;
    std::size_t declared = 0;
};

class CFileStream : public xercesc::BinInputStream
{
public:
    CFileStream(CFile & file, Progress & progress) : file(file), progress(progress) {}
    XMLFilePos curPos() const override { return position; }
    // In small pieces, so that it is known how much of the document the parser has seen.
    XMLSize_t readBytes(XMLByte * bytes, XMLSize_t count) override
    {
        if (progress.isDeclaring && (progress.declared += pieceSize) > declarationsLimit) throw Refused();
        XMLSize_t const got = read(bytes, static_cast<unsigned int>(std::min<XMLSize_t>(count, pieceSize)));
        position += got;
        return got;
    }
    Character const * getContentType() const override { return nullptr; }

private:
    XMLSize_t read(XMLByte * bytes, unsigned int count)
    {
        try
        {
            return file.Read(bytes, count);
        }
        catch (CFileException const &)
        {
            throw Refused();
        }
    }

    CFile & file;
    Progress & progress;
    XMLFilePos position = 0;
};

// A file that is open. The parser never opens one itself: what it was given is a path, never an address.
class CFileSource : public xercesc::InputSource
{
public:
    CFileSource(CFile & file, Progress & progress, xercesc::MemoryManager * memory)
        : InputSource(memory), file(file), progress(progress)
    {
    }
    xercesc::BinInputStream * makeStream() const override
    {
        return new (getMemoryManager()) CFileStream(file, progress);
    }

private:
    CFile & file;
    Progress & progress;
};

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
    void startDTD(Character const *, Character const *, Character const *) override { progress.isDeclaring = true; }
    void endDTD() override { progress.isDeclaring = false; }

    void tell(char const * severity, xercesc::SAXParseException const & fault);
    void showXMLError(CString const & text, int line, int column);
    CString utf8(Character const * text);

    CProjectXMLArchive & archive;
    CBoundedMemory memory;
    xercesc::SecurityManager security;
    std::unique_ptr<xercesc::XMLTranscoder> transcoder;
    Progress progress;
    int depth = 0;
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
            CPlatform const platform;
            CParser parser(*this);
            // Exceptions of the parser must not outlive its platform.
            return completes([&] { return parser.parse(source); });
        });
}

bool CProjectXMLArchive::CParser::parse(CFile & file)
{
    using xercesc::XMLUni;
    xercesc::XMLTransService::Codes outcome;
    transcoder.reset(xercesc::XMLPlatformUtils::fgTransService->makeNewTranscoderFor("UTF-8", outcome, 4096));
    std::unique_ptr<xercesc::SAX2XMLReader> const reader(xercesc::XMLReaderFactory::createXMLReader(&memory));
    // By the document's own declarations, where it has any.
    reader->setFeature(XMLUni::fgSAX2CoreValidation, true);
    reader->setFeature(XMLUni::fgXercesDynamic, true);
    reader->setFeature(XMLUni::fgXercesSchema, false);
    reader->setFeature(XMLUni::fgXercesSchemaFullChecking, false);
    reader->setFeature(XMLUni::fgXercesDisableDefaultEntityResolution, true);
    security.setEntityExpansionLimit(entityLimit);
    reader->setProperty(XMLUni::fgXercesSecurityManager, &security);
    reader->setContentHandler(this);
    reader->setErrorHandler(this);
    reader->setEntityResolver(this);
    reader->setDeclarationHandler(this);
    reader->setLexicalHandler(this);
    reader->parse(CFileSource(file, progress, &memory));
    return reader->getErrorCount() == 0;
}

CString CProjectXMLArchive::CParser::utf8(Character const * text)
{
    if (!text) return {};
    // Nearly all texts are of characters that are one byte each.
    Character const * end = text;
    while (*end != 0 && *end < 0x80) ++end;
    if (*end == 0)
    {
        plainText.resize(static_cast<std::size_t>(end - text));
        std::transform(text, end, plainText.begin(), [](Character character) { return static_cast<char>(character); });
        return CString(std::string_view(plainText));
    }
    xercesc::TranscodeToStr const bytes(text, transcoder.get(), &memory);
    return CString(std::string_view(reinterpret_cast<char const *>(bytes.str()), bytes.length()));
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
