#include "persistence/xml_attribute.h"

#include <algorithm>
#include <cstdarg>
#include <cstdint>
#include <cstring>
#include <utility>

#include "config/text_tools.h"
#include "persistence/compressed_file.h"
#include "platform/io_error.h"
#include "platform/time.h"
#include "platform/xml_text.h"

namespace
{

constexpr std::size_t roomForPending = 64 * 1024;
constexpr int blanksPerLevel = 3;
// No line starts further in, however deep the level: elements of some kinds leave it raised, and documents that hold
// many of them would otherwise grow with their square.
constexpr int furthestIndentation = 16383;

std::unique_ptr<CFile> newFile(int compressed)
{
    if (compressed) return std::make_unique<SECCompressFile>();
    return std::make_unique<CFile>();
}

// Null, and the user knows, when it cannot be opened.
std::unique_ptr<CFile> opened(std::unique_ptr<CFile> file, CString const & fileName, unsigned int flags)
{
    CFileException exception;
    if (file->Open(fileName, flags, &exception)) return file;
    reportIOError(fileName, exception);
    return nullptr;
}

}  // namespace

CProjectXMLArchive::CProjectXMLArchive() : attributes(std::make_unique<CAttributeArray>()) {}

CProjectXMLArchive::~CProjectXMLArchive()
{
    try
    {
        deliver();
    }
    catch (CFileException const &)
    {
        // Who must know whether all arrived closes before.
    }
}

int CProjectXMLArchive::openForWrite(CString * output, CString const & fileName, int compressed,
                                     CString const & rootTag, CString const & schemaLocation,
                                     CString const & fileFormat)
{
    this->rootTag = rootTag;
    outputString = output;
    if (!output) file = opened(newFile(compressed), fileName, CFile::modeCreate | CFile::modeWrite);
    if (!output && !file) return 0;
    reading = 0;
    writing = 1;
    out("<?xml version = \"1.0\" encoding = 'utf-8'?>");
    out("<!-- File Format - " + fileFormat + " -->");
    startEntity(rootTag);
    if (!schemaLocation.IsEmpty()) out("xmlns:xsi = \"" + schemaLocation + "\"");
    CString day = CTime::GetCurrentTime().Format("%A, %B %d, %Y");
    attribute("date", day, "", 1);
    return 1;
}

int CProjectXMLArchive::openForRead(CString const & fileName)
{
    file = opened(newFile(false), fileName, CFile::modeRead);
    if (!file) return 0;
    reading = 1;
    writing = 0;
    return 1;
}

void CProjectXMLArchive::close()
{
    if (writing) endEntity("</" + rootTag + ">");
    deliver();
    outputString = nullptr;
    std::unique_ptr<CFile> const closing = std::move(file);
    if (closing) closing->Close();
}

void CProjectXMLArchive::put(std::initializer_list<std::string_view> pieces)
{
    if (!writing) return;
    if (outputString)
        for (std::string_view const piece : pieces) *outputString += CString(piece);
    else if (file)
        for (std::string_view const piece : pieces) putIntoFile(piece);
}

void CProjectXMLArchive::putIntoFile(std::string_view text)
{
    if (!pending) pending = std::make_unique_for_overwrite<char[]>(roomForPending);
    if (text.size() > roomForPending - pendingSize) deliver();
    if (text.size() > roomForPending) return file->Write(text.data(), static_cast<unsigned int>(text.size()));
    std::memcpy(pending.get() + pendingSize, text.data(), text.size());
    pendingSize += text.size();
}

// Hands on what was written, and keeps the room for what comes. What the file refuses is gone: it is not offered a
// second time.
void CProjectXMLArchive::deliver()
{
    std::size_t const size = std::exchange(pendingSize, 0);
    if (file && size > 0) file->Write(pending.get(), static_cast<unsigned int>(size));
}

std::string_view CProjectXMLArchive::indentation(int furtherBlanks) const
{
    static std::string const blanks(furthestIndentation, ' ');
    std::int64_t const wanted = std::int64_t{indentLevel} * blanksPerLevel + furtherBlanks;
    return std::string_view(blanks).substr(0, static_cast<std::size_t>(wanted));
}

void CProjectXMLArchive::putLine(std::string_view text)
{
    put({indentation(), text, "\n"});
}

void CProjectXMLArchive::format(char const * format, ...)
{
    CString text;
    std::va_list arguments;
    va_start(arguments, format);
    text.FormatV(format, arguments);
    va_end(arguments);
    put({text.view()});
}

void CProjectXMLArchive::out(CString const & text)
{
    putLine(text.view());
}

void CProjectXMLArchive::outStartTag(CString const & name)
{
    put({indentation(), "<", name.view()});
}

void CProjectXMLArchive::outEndTag(int indentFirst)
{
    put({indentFirst ? indentation() : "", ">\n"});
}

void CProjectXMLArchive::outEmptyEndTag()
{
    put({"/>\n"});
}

void CProjectXMLArchive::out(CString const & name, CString const & value)
{
    out("<" + name + ">" + value + "</" + name + ">");
}

void CProjectXMLArchive::out(CString const & name, int value)
{
    out(name, CString(std::string_view(std::to_string(value))));
}

void CProjectXMLArchive::out(CString const & name, double value)
{
    out(name, convertToNumber(value));
}

void CProjectXMLArchive::outBool(CString const & name, int value)
{
    out(name, CString(orvane::boolText(value != 0)));
}

void CProjectXMLArchive::out(int count, unsigned char const * bytes)
{
    constexpr char digits[] = "0123456789abcdef";
    std::string line;
    for (int each = 0; bytes && each < count; ++each)
    {
        line += digits[bytes[each] >> 4];
        line += digits[bytes[each] & 0xF];
    }
    putLine(line);
}

void CProjectXMLArchive::startEntity(CString const & name)
{
    put({indentation(), "<", name.view(), "\n"});
    indent();
}

void CProjectXMLArchive::endEntity(CString const & end)
{
    undent();
    out(end);
}
