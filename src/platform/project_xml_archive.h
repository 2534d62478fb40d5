#pragma once

#include <cstddef>
#include <initializer_list>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/string.h"

class CAttributeArray;
class CColor;
class CFile;
class CIDBase;
class CProjectXMLArchive;
class CSortedWordArray;
class CWordArray;
class IProjectXMLTagProcessor;

namespace orvane
{

// Whether a document is being read, so that a processor that goes must be forgotten.
inline bool tagProcessorsInUse = false;
void forgetTagProcessor(IProjectXMLTagProcessor const & processor);

}  // namespace orvane

// What stands in a document by itself. One operation serves both directions: storing, it writes the object's
// element; loading, it is called for an element when the object is the archive's tag processor, or its owner
// passes the element on. A processor that is destroyed while a document is read is forgotten.
class IProjectXMLTagProcessor
{
public:
    virtual void xmlSerialize(CProjectXMLArchive & archive) = 0;

protected:
    IProjectXMLTagProcessor() = default;
    IProjectXMLTagProcessor(IProjectXMLTagProcessor const &) = default;
    IProjectXMLTagProcessor & operator=(IProjectXMLTagProcessor const &) = default;
    ~IProjectXMLTagProcessor()
    {
        if (orvane::tagProcessorsInUse) orvane::forgetTagProcessor(*this);
    }
};

// An XML document that is written or read, once. Flags and answers are 1 or 0.
//
// To write: openForWrite leaves the root's start tag open; the root object adds attributes, the line ">" and its
// children; close ends the document. Lines end in a line feed and are indented by three blanks a level. To read:
// parse hands every element to the current tag processor.
//
// The `attribute` operations serve both directions. Storing, one that equals its default leaves no trace and
// answers 0. Loading, one that is missing or cannot be read takes its default and answers 0.
class CProjectXMLArchive
{
public:
    CProjectXMLArchive();
    CProjectXMLArchive(CProjectXMLArchive const &) = delete;
    CProjectXMLArchive & operator=(CProjectXMLArchive const &) = delete;
    // A file that was not closed keeps what was written, without the root's end tag.
    virtual ~CProjectXMLArchive();

    // Text goes to the end of `output` or, when that is null, to a file, gzip-compressed on request. 0 when the
    // file cannot be opened, which the user is told. The root takes the day of writing as an attribute, and the
    // schema's location unless that is empty.
    int openForWrite(CString * output, CString const & fileName, int compressed, CString const & rootTag,
                     CString const & schemaLocation, CString const & fileFormat);
    // Opens the file and says the direction; parse needs none of it.
    int openForRead(CString const & fileName);
    // Reads a document that is not compressed. 0 for no processor, for a file that cannot be read, and for a
    // document that is not well-formed, not valid by its own declarations, nested deeper than 1,000 elements, or
    // that needs another file, more than 100 entities or more memory than a document can ask for. Elements before
    // the fault have been processed. Exceptions of processors pass. One document is read at a time.
    int parse(CString const & fileName, IProjectXMLTagProcessor * processor);
    // Ends the document and closes the file; throws CFileException when the file did not take all of it.
    virtual void close();

    int isStoring() const { return writing; }
    int isLoading() const { return reading; }
    // The name of the current element; behind the name of its namespace and a colon, if it has one.
    CString const & tagName() const { return currentTag; }
    // Whether the current element has that name; ASCII case plays no part.
    bool isTag(char const * name) const { return currentTag.CompareNoCase(name) == 0; }
    // Whether an element of another name is being read; false while storing.
    bool readsAnother(char const * name) const { return reading && !isTag(name); }
    // Whether an element of one of the names is being read.
    bool readsAny(std::initializer_list<char const *> names) const
    {
        for (char const * name : names)
            if (isTag(name)) return true;
        return false;
    }
    // Who gets the children of the current element; otherwise they go to who got the element itself.
    void setTagProcessor(IProjectXMLTagProcessor * processor) { currentProcessor = processor; }
    // What the parser found wrong first, a warning included; empty when it found nothing.
    CString const & parserMessage() const { return message; }

    // ---- writing; while reading, and once closed, nothing comes of it --------------------------------------
    // Text without indentation or line end.
    [[gnu::format(printf, 2, 3)]] void format(char const * format, ...);
    void indent() { ++indentLevel; }
    void undent() { indentLevel -= indentLevel > 0; }
    // An indented line.
    void out(CString const & text);
    // Indentation and "<name", without a line end.
    void outStartTag(CString const & name);
    void outEndTag(int indentFirst);
    void outEmptyEndTag();
    // "<name>value</name>", an indented line. A text is written as it stands.
    void out(CString const & name, CString const & value);
    void out(CString const & name, int value);
    void out(CString const & name, double value);
    void outBool(CString const & name, int value);
    // An indented line of two hexadecimal digits a byte.
    void out(int count, unsigned char const * bytes);
    // The line "<name" and one level more; one level less and the element's end, "/>" unless told otherwise.
    void startEntity(CString const & name);
    void endEntity(CString const & end = "/>");

    // ---- attributes in both directions; `newLine` 1 takes a line, 0 goes on in the current one -----------------
    // Characters that XML reserves are written as entities. Behind a line feed stands the indentation, and a reader
    // sees a blank in its place.
    int attribute(CString const & name, CString & value, CString const & fallback, int newLine = 1);
    // A text whose lines begin with "+", all but the first: they come back as lines.
    int attributeParagraph(CString const & name, CString & value, CString const & fallback);
    // Numbers are written by convertToNumber. A whole number is read up to the first character that is no digit:
    // 1500 is written as "1.5e+3" and read as 1.
    int attribute(CString const & name, int & value, int fallback, int newLine = 1);
    int attribute(CString const & name, short & value, short fallback);
    int attribute(CString const & name, double & value, double fallback, int newLine = 1);
    int attribute(CString const & name, float & value, float fallback, int newLine = 1);
    int attribute(CString const & name, bool & value, bool fallback);
    int attributeBool(CString const & name, int & value, int fallback, int newLine = 1);
    // Always written; NULL when missing.
    int attribute(CString const & name, CIDBase & value, int newLine = 1);
    // Always written; left alone when missing. Components are brought into the range from 0 to 1.
    int attribute(CString const & name, CColor & value);
    // An empty array is not written. Numbers beyond 16 bits become the nearest; words that are no number are passed
    // over. The second array takes them in their order.
    int attribute(CString const & name, CWordArray & value);
    int attribute(CString const & name, CSortedWordArray & value);
    // Bytes have no form in a document: nothing happens, and the answer is 1.
    int attribute(CString const & name, unsigned char * value);
    // Written as it stands, never read.
    int attributeOut(CString const & name, CString const & value, CString const & fallback);

    // ---- attributes of the current element; without one that can be read `value` is left alone -----------------
    // The text as the parser gives it.
    int findAttribute(CString const & name, CString & value) const;
    int find(CString const & name, short & value) const;
    int find(CString const & name, int & value) const;
    int find(CString const & name, double & value) const;
    int find(CString const & name, float & value) const;
    int find(CString const & name, bool & value) const;
    int findBool(CString const & name, int & value) const;

    // 32 hexadecimal digits, from the last byte to the first. Reading takes what is no digit, or missing, as 0.
    static CString idToString(CIDBase const & id);
    static void stringToHandle(CString const & text, CIDBase & id);
    // The next "x,y" of a list that is separated by blanks, within its first `length` bytes. 0 when there is none,
    // when it is no pair or has 256 characters or more; `position` is behind it then, if there was something.
    static int getXYPair(CString const & text, int length, int & position, double & x, double & y);

private:
    friend void orvane::forgetTagProcessor(IProjectXMLTagProcessor const & processor);
    class CParser;

    void put(std::initializer_list<std::string_view> pieces);
    void putIntoFile(std::string_view text);
    void putLine(std::string_view text);
    void deliver();
    std::string_view indentation(int furtherBlanks = 0) const;
    int putAttribute(CString const & name, std::string_view value, int newLine);
    int putText(CString const & name, CString const & value, CString const & fallback, int newLine,
                int furtherBlanks);
    void putWords(CString const & name, CWordArray const & words);
    bool findWords(CString const & name, std::vector<unsigned short> & words) const;
    template <class Value>
    int orFallback(int found, Value & value, Value const & fallback) const;
    template <class Number>
    int number(CString const & name, Number & value, Number fallback, int newLine);
    template <class Words>
    int words(CString const & name, Words & value, bool sorted);

    CString fileName;
    std::unique_ptr<CFile> file;
    // What the file has not got yet: a file has no buffer of its own.
    std::unique_ptr<char[]> pending;
    std::size_t pendingSize = 0;
    CString * outputString = nullptr;
    CString rootTag;
    int indentLevel = 0;
    int reading = 0;
    int writing = 0;

    int failed = 0;
    CString message;
    bool useNamespaces = true;
    CString currentTag;
    std::unique_ptr<CAttributeArray> attributes;
    std::vector<IProjectXMLTagProcessor *> processorStack;
    IProjectXMLTagProcessor * currentProcessor = nullptr;
};
