#include "app/xml_parser.h"

#include <xercesc/sax/SAXParseException.hpp>

#include "persistence/xml_parser_impl.h"
#include "platform/utf8_impl.h"

namespace orvane::app
{

void XmlHandler::error(xercesc::SAXParseException const & fault)
{
    fatalError(fault);
}

void XmlHandler::fatalError(xercesc::SAXParseException const & fault)
{
    throw XmlFault{utf8(fault.getMessage()), fault.getLineNumber(), fault.getColumnNumber()};
}

void parseXml(std::function<std::size_t(char * bytes, std::size_t most)> const & read, XmlHandler & handler,
              std::size_t mostMemory)
{
    using xercesc::XMLUni;
    CXmlPlatform const platform;
    CXmlMemory memory(mostMemory);
    try
    {
        auto const parser = makeXmlParser(handler, memory);
        parser->setFeature(XMLUni::fgSAX2CoreValidation, false);
        parser->setFeature(XMLUni::fgXercesLoadExternalDTD, false);
        parser->parse(CXmlSource(read, memory));
    }
    catch (xercesc::XMLException const & fault)
    {
        throw XmlFault{utf8(fault.getMessage())};
    }
    catch (xercesc::SAXException const & fault)
    {
        throw XmlFault{utf8(fault.getMessage())};
    }
    catch (xercesc::OutOfMemoryException const &)
    {
        throw XmlTooLarge();
    }
    catch (RefusedXml const &)
    {
        throw XmlFault{"the parser cannot go on"};
    }
}

}  // namespace orvane::app
