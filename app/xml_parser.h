#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>

#include <xercesc/sax2/DefaultHandler.hpp>

namespace orvane::app
{

// Why a document is not well formed.
struct XmlFault
{
    std::string what;
    // From 1; 0 where nobody knows them.
    std::uint64_t line = 0, column = 0;
};

// A document for which the parser needs more memory than it may take.
struct XmlTooLarge
{
};

// What is told of a document. The first error ends it; whatever an operation throws leaves the parser.
class XmlHandler : public xercesc::DefaultHandler
{
private:
    void error(xercesc::SAXParseException const & fault) override;
    void fatalError(xercesc::SAXParseException const & fault) override;
};

// Reads a document to its end without validating it, and no other one. `read` puts at most so many bytes there and
// answers how many, 0 at the end. The handler refuses declarations of types, if it should, in startDTD. Throws XmlFault
// and XmlTooLarge.
void parseXml(std::function<std::size_t(char * bytes, std::size_t most)> const & read, XmlHandler & handler,
              std::size_t mostMemory);

}  // namespace orvane::app
