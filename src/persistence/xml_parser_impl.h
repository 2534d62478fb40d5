#pragma once

#include <cstddef>
#include <cstdlib>
#include <functional>
#include <memory>
#include <new>
#include <utility>

#include <xercesc/framework/MemoryManager.hpp>
#include <xercesc/sax/InputSource.hpp>
#include <xercesc/sax2/DefaultHandler.hpp>
#include <xercesc/sax2/SAX2XMLReader.hpp>
#include <xercesc/sax2/XMLReaderFactory.hpp>
#include <xercesc/util/BinInputStream.hpp>
#include <xercesc/util/OutOfMemoryException.hpp>
#include <xercesc/util/PanicHandler.hpp>
#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/XMLUni.hpp>

// What all readers of documents from outside give the parser, so that no document harms its reader.
namespace orvane
{

// Thrown through the parser, to end a document that is not fit to be read on.
struct RefusedXml
{
};

// The parser's own libraries, for as long as a document is read; its exceptions must not outlive them. When they cannot
// go on, the document is refused instead of the program ended.
class CXmlPlatform
{
public:
    CXmlPlatform() { xercesc::XMLPlatformUtils::Initialize(xercesc::XMLUni::fgXercescDefaultLocale, nullptr, &panic); }
    CXmlPlatform(CXmlPlatform const &) = delete;
    CXmlPlatform & operator=(CXmlPlatform const &) = delete;
    ~CXmlPlatform() { xercesc::XMLPlatformUtils::Terminate(); }

private:
    class CPanic : public xercesc::PanicHandler
    {
    public:
        void panic(PanicReasons const) override { throw RefusedXml(); }
    };

    CPanic panic;
};

// Memory that a document cannot make the parser take without end: beyond the limit, in bytes, it throws
// OutOfMemoryException. What the parser loses when it breaks off is given back in the end.
class CXmlMemory : public xercesc::MemoryManager
{
public:
    explicit CXmlMemory(std::size_t limit) : limit(limit) {}
    CXmlMemory(CXmlMemory const &) = delete;
    CXmlMemory & operator=(CXmlMemory const &) = delete;
    ~CXmlMemory() override
    {
        while (blocks.next != &blocks) release(*blocks.next);
    }
    // Exceptions outlive the parser.
    xercesc::MemoryManager * getExceptionMemoryManager() override { return xercesc::XMLPlatformUtils::fgMemoryManager; }
    void * allocate(XMLSize_t size) override
    {
        bool const isTooMuch = size > limit || size + sizeof(Block) > limit - taken;
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

    std::size_t limit;
    Block blocks{&blocks, &blocks, 0};
    std::size_t taken = 0;
};

// Puts at most so many bytes of a document there, and answers how many; 0 at its end.
using XmlBytes = std::function<std::size_t(char * bytes, std::size_t most)>;

// A document that is already open. The parser never opens one itself: what it was given is a path, never an address.
class CXmlSource : public xercesc::InputSource
{
public:
    CXmlSource(XmlBytes read, CXmlMemory & memory) : InputSource(&memory), read(std::move(read)) {}
    xercesc::BinInputStream * makeStream() const override { return new (getMemoryManager()) CStream(read); }

private:
    class CStream : public xercesc::BinInputStream
    {
    public:
        explicit CStream(XmlBytes const & read) : read(read) {}
        XMLFilePos curPos() const override { return position; }
        XMLSize_t readBytes(XMLByte * bytes, XMLSize_t count) override
        {
            XMLSize_t const got = read(reinterpret_cast<char *>(bytes), count);
            position += got;
            return got;
        }
        XMLCh const * getContentType() const override { return nullptr; }

    private:
        XmlBytes const & read;
        XMLFilePos position = 0;
    };

    XmlBytes read;
};

// A parser that tells the handler all it finds, and asks it alone for what else a document refers to.
inline std::unique_ptr<xercesc::SAX2XMLReader> makeXmlParser(xercesc::DefaultHandler & handler, CXmlMemory & memory)
{
    using xercesc::XMLUni;
    std::unique_ptr<xercesc::SAX2XMLReader> parser(xercesc::XMLReaderFactory::createXMLReader(&memory));
    parser->setFeature(XMLUni::fgXercesSchema, false);
    parser->setFeature(XMLUni::fgXercesDisableDefaultEntityResolution, true);
    parser->setContentHandler(&handler);
    parser->setErrorHandler(&handler);
    parser->setEntityResolver(&handler);
    parser->setDeclarationHandler(&handler);
    parser->setLexicalHandler(&handler);
    return parser;
}

}  // namespace orvane
