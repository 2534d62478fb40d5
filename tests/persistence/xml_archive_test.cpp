#include "platform/project_xml_archive.h"

#include <gtest/gtest.h>

#include "persistence/compressed_file.h"
#include "persistence/xml_attribute.h"
#include "tests/support/document_text.h"
#include "tests/support/recording_host.h"
#include "tests/support/scratch_folder.h"
#include "values/date_array.h"
#include "values/date_time.h"
#include "values/enumerations.h"
#include "values/identifier_arrays.h"
#include "values/sorted_word_array.h"
#include "values/string_array.h"
#include "values/time_of_day_span_array.h"

namespace
{

using namespace orvane;
using Action = DocumentAction;
using std::string;

TEST(XmlArchiveTest, FramesADocumentAndItsLines)
{
    CString text;
    CProjectXMLArchive archive;
    archive.openForWrite(&text, "", 0, "Some Root", "urn:s", "by us");
    for (int each = 0; each < 3; ++each) archive.undent();
    unsigned char bytes[] = {0x0A, 0xFF};
    archive.out("n", CString("a<b"));
    archive.out("i", 1500);
    archive.out("d", 0.5);
    archive.outBool("b", 2);
    archive.startEntity("E");
    archive.out(2, bytes);
    archive.endEntity();
    archive.outStartTag("F");
    archive.outEndTag(0);
    archive.outEmptyEndTag();
    archive.format("%d%%", 7);
    archive.close();
    archive.out("too late");
    CString day = CTime::GetCurrentTime().Format("%A, %B %d, %Y");
    CString const head = "<?xml version = \"1.0\" encoding = 'utf-8'?>\n<!-- File Format - by us -->\n<Some Root\n"
                         "   xmlns:xsi = \"urn:s\"\n   date = \"";
    char const * const lines = "<n>a<b</n>\n<i>1500</i>\n<d>0.5</d>\n<b>true</b>\n<E\n   0aff\n/>\n<F>\n/>\n7%";
    EXPECT_EQ(text, head + day + "\"\n" + lines + "</Some Root>\n");
}

// The value is written as the text, and the text is read as the value `back`.
template <class Value>
void expectForm(Value value, string const & text, Value const & back, Value const & fallback = {})
{
    string const line = text.empty() ? "" : "   a = \"" + text + "\"\n";
    auto const exchange = [&](auto & archive)
    {
        if constexpr (requires { value.xmlSerialize(archive, "a"); }) value.xmlSerialize(archive, "a");
        else EXPECT_EQ(archive.attribute("a", value, fallback), !text.empty());
    };
    EXPECT_EQ(written(exchange), line);
    readBack(line, exchange);
    EXPECT_EQ(value, back) << text;
    if constexpr (requires { value.isValid(); })
    {
        EXPECT_EQ(value.isValid(), back.isValid()) << text;
    }
}

TEST(XmlArchiveTest, WritesAndReadsEveryForm)
{
    expectForm<int>(1500, "1.5e+3", 1);
    expectForm<int>(-12, "-12", -12);
    expectForm<int>(0, "0", 0, 7);
    expectForm<short>(-7, "-7", -7);
    expectForm<double>(-0.001, "-1e-3", -0.001);
    expectForm<float>(0.25F, "0.25", 0.25F, 1);
    expectForm<bool>(false, "false", false, true);
    expectForm<CString>("a<b>\"'&", "a&lt;b&gt;&quot;&apos;&amp;", "a<b>\"'&");
    expectForm<CString>("x\ny", "x\n   y", "x    y");
    expectForm<CString>("Br\u00FCcke", "Br\u00FCcke", "Br\u00FCcke");
    expectForm<CProjectBool>({}, "", false);
    expectForm<CProjectDouble>(0.0, "", 0.0);
    expectForm<CProjectString>("a\r\nb<", "a[X ]b&lt;", "a\r\nb<");
    expectForm<CTaskStatus>(CTaskStatus::Started, "6", CTaskStatus::Started);
    expectForm<CTaskStatus>({}, "", CTaskStatus::Hold);
    expectForm<CProjectColor>(CColor(1, 0, 0), "1.000000, 0.000000, 0.000000", CColor(1, 0, 0));
    expectForm<CProjectDate>({2004, 1, 5}, "Mo, 05 Jan, 2004", {});
    expectForm<CProjectTime>({2004, 1, 5, 14, 30}, "14:30 Mo, 05 Jan, 2004", {});
    expectForm<CProjectTimeOfDay>({14, 30}, "14:30", {13, 59});
    expectForm<CProjectDuration>({0, 0}, "0 Days", {0, 0});
    expectForm<CProjectDuration>({}, "", {});
}

TEST(XmlArchiveTest, WritesAndReadsWhatHasAFormOfItsOwn)
{
    CString paragraph = "+ one  two\n+ three";
    auto const note = [&](auto & archive) { archive.attributeParagraph("note", paragraph, ""); };
    string const lines = written(note);
    EXPECT_EQ(lines, "   note = \"+ one  two\n          + three\"\n");
    readBack(lines, note);
    EXPECT_EQ(paragraph, "\n+ one two \n+ three");

    CTaskID id;
    id.setGUID(CString("000102030405060708090a0b0c0d0eff"));
    CTaskID const before = id;
    auto const identify = [&](auto & archive) { archive.attribute("a", id, 0); };
    EXPECT_EQ(written(identify), " a = \"ff0e0d0c0b0a09080706050403020100\"");
    readBack("", identify);
    EXPECT_TRUE(id.isNULL());
    readBack("a='ff0e0d0c0b0a09080706050403020100'", identify);
    EXPECT_EQ(id, before);

    CColor color(0.5F, 0, 1);
    auto const paint = [&](auto & archive) { archive.attribute("a", color); };
    readBack("a='0.1, 0.2'", paint);
    EXPECT_EQ(color, CColor(0.5F, 0, 1));
    readBack("a='0.25,9, -1'", paint);
    EXPECT_EQ(color, CColor(0.25F, 1, 0));

    CSortedWordArray words;
    auto const exchange = [&](auto & archive) { archive.attribute("w", words); };
    EXPECT_EQ(written(exchange), "");
    words.Add(1500);
    EXPECT_EQ(written(exchange), "   w = \"1.5e+3\"\n");
    words.Add(3);
    EXPECT_EQ(written(exchange), "   w = \n      \"\n      1500\n      3\n      \"\n");
    CWordArray plain;
    readBack("w='9 x 70000&#9;-1 99999999999 2'", [&](auto & archive) { archive.attribute("w", plain); });
    string read;
    for (int const word : plain) read += std::to_string(word) + ' ';
    EXPECT_EQ(read, "9 65535 0 65535 2 ");

    CProjectStateIndex index(3);
    EXPECT_EQ(written([&](auto & archive) { index.xmlSerialize(archive), archive.out("."); }),
              "   <ProjectStateIndex\n      index = \"3\"\n   />\n      .\n");
    std::pair<char const *, CProjectDate> const dates[] = {{"Mon, Jan 5 2004", {2004, 1, 5}},
                                                           {"x DEC, 31, 1999 12:00", {1999, 12, 31}},
                                                           {"Mon Jan 5", {}},
                                                           {"a May b 2004", {}},
                                                           {"a May 1 99999999999", {INT_MAX, 5, 1}}};
    for (auto const & [text, expected] : dates)
    {
        CProjectDate date(2000, 1, 1);
        readBack(string("a='") + text + "'", [&](auto & archive) { date.xmlSerialize(archive, "a"); });
        EXPECT_TRUE(date == expected && date.isValid() == expected.isValid()) << text;
    }
}

TEST(XmlArchiveTest, TakesWhatIsNoValueForTheDefault)
{
    CReader reader(
        [](auto & archive)
        {
            auto const expectDefault = [&](auto value, auto other)
            {
                for (char const * name : {"word", "empty", "missing"})
                {
                    auto found = value;
                    EXPECT_TRUE(archive.find(name, found) == 0 && found == value) << name;
                    EXPECT_TRUE(archive.attribute(name, found, other) == 0 && found == other) << name;
                }
            };
            expectDefault(5, 9);
            expectDefault(5.0, 9.0);
            expectDefault(true, false);
            int number = 5;
            short small = 0;
            double fraction = 5;
            EXPECT_EQ(archive.find("huge", fraction) + archive.find("nan", fraction), 0);
            EXPECT_TRUE(archive.find("long", number) && number == INT_MIN);
            EXPECT_TRUE(archive.find("long", small) && small == SHRT_MIN);
            EXPECT_TRUE(archive.find("plus", number) && number == 4);
            CTaskID id;
            EXPECT_EQ(archive.attribute("word", id), 1);
            EXPECT_EQ(archive.idToString(id), CString("0a0e") + CString('0', 28));
        });
    EXPECT_EQ(parse("<r word='xaxe' empty='' huge='1e999' nan='nan' long='-99999999999' plus=' +4 '/>", reader), 1);

    // Text, length, whether it is a pair, the position behind it.
    std::tuple<CString, int, int, int> const pairs[] = {{"  1,2 3,4", 99, 1, 5},
                                                        {"1,2", 1, 0, 1},
                                                        {"   ", 9, 0, 0},
                                                        {"1;2 ", 4, 0, 3},
                                                        {CString('1', 300), 300, 0, 300}};
    for (auto const & [text, length, found, behind] : pairs)
    {
        int position = 0;
        double x = 0, y = 0;
        EXPECT_EQ(CProjectXMLArchive::getXYPair(text, length, position, x, y), found) << text.view();
        EXPECT_EQ(position, behind) << text.view();
    }
}

TEST(XmlArchiveTest, HandsElementsToTheCurrentProcessor)
{
    CReader inner;
    CReader outer(
        [&](auto & archive)
        {
            if (archive.isTag("MINE")) archive.setTagProcessor(&inner);
            if (archive.isTag("nobody")) archive.setTagProcessor(nullptr);
            if (!archive.isTag("lost")) return;
            CReader passing;
            archive.setTagProcessor(&passing);
        });
    parse("<r><mine><a><b/></a></mine><n:x xmlns:n='urn:n'/><nobody><c/></nobody><lost><e/></lost><d/></r>", outer);
    EXPECT_EQ(outer.tags, "r mine urn:n:x nobody lost d ");
    EXPECT_EQ(inner.tags, "a b ");

    CReader throws([](auto &) { throw CFileException(CFileException::diskFull); });
    EXPECT_EQ(causeOf([&] { parse("<r/>", throws); }), CFileException::diskFull);
    // One document is read at a time.
    CReader again([&](auto &) { EXPECT_EQ(parse("<r/>", inner), 0); });
    EXPECT_EQ(parse("<r/>", again), 1);
    for (char const * path : {"missing", "http://localhost:1/x.xml", "/"})
        EXPECT_EQ(CProjectXMLArchive().parse(path, &inner), 0) << path;
}

string repeated(string const & text, int count)
{
    string result;
    while (count-- > 0) result += text;
    return result;
}

TEST(XmlArchiveTest, EndsHostileDocumentsWithTheirResult)
{
    CScratchFolder const folder;
    string const secret = "SYSTEM \"" + string(folder.write("secret", "<!ELEMENT r ANY>").view()) + "\"";
    auto const withDtd = [](string const & declarations, string const & rest)
    { return "<!DOCTYPE r [<!ELEMENT r ANY><!ATTLIST r a CDATA #IMPLIED>" + declarations + "]>" + rest; };
    string const utf16("\xFF\xFE<\0r\0/\0>\0", 10);
    // The document, the result, and the elements that were processed.
    std::tuple<string, int, string> const cases[] = {
        {"", 0, ""},
        {"<r", 0, ""},
        {"<r><a></r>", 0, "r a "},
        {"<r/><r/>", 0, "r "},
        {"<Some Root\ndate = \"x\"\n>\n</Some Root>", 0, ""},
        {"<?xml version='1.0' encoding='utf-8'?><r a='\xE4'/>", 0, ""},
        {"<?xml version='1.0' encoding='no-such-code'?><r/>", 0, ""},
        {utf16, 1, "r "},
        {string("\x1F\x8B\x08\0", 4), 0, ""},
        // A mere warning: nothing more is processed, and the document is read to its end.
        {withDtd("<!ATTLIST r a CDATA #IMPLIED>", "<r/>"), 1, ""},
        {withDtd("", "<r><x/><y/></r>"), 0, "r "},
        {withDtd("<!ENTITY e 'x'>", "<r a='&e;'>&e;</r>"), 1, "r "},
        {"<r a='" + repeated("&amp;&#65;", 5000) + "'/>", 1, "r "},
        {withDtd("<!ENTITY e 'x'>", "<r a='" + repeated("&e;", 101) + "'/>"), 0, ""},
        {withDtd("<!ENTITY e 'x'><!ENTITY f '" + repeated("&e;", 60) + "'>", "<r>&f;&f;</r>"), 0, "r "},
        {withDtd("<!ENTITY % e '<!ENTITY f \"x\">'> %e;", "<r/>"), 0, ""},
        {withDtd("<!ENTITY e " + secret + ">", "<r>&e;</r>"), 0, "r "},
        {"<!DOCTYPE r " + secret + "><r/>", 0, ""},
        {"<!DOCTYPE r SYSTEM 'http://localhost:1/r.dtd'><r/>", 0, ""},
        {"<r xmlns:xsi='http://www.w3.org/2001/XMLSchema-instance' xsi:noNamespaceSchemaLocation='/etc/passwd'/>", 1,
         "r "},
        {"<!DOCTYPE r [<!ELEMENT r (" + repeated("a|", 200000) + "b)>]><r/>", 0, ""},
        {"<!DOCTYPE r [<!ELEMENT r ((a|b)*,a" + repeated(",(a|b)", 40) + ")>]><r/>", 0, ""},
        {repeated("<r>", 1000) + repeated("</r>", 1000), 1, repeated("r ", 1000)},
        {repeated("<r>", 200000), 0, repeated("r ", 1000)},
        {"<r a='" + string(50'000'000, 'x') + "'/>", 0, ""},
    };
    for (auto const & [document, result, tags] : cases)
    {
        CReader reader;
        EXPECT_EQ(parse(document, reader), result) << document.substr(0, 200);
        EXPECT_EQ(reader.tags, tags) << document.substr(0, 200);
    }
    CReader reader;
    CProjectXMLArchive archive;
    archive.parse(folder.write("broken", "<r>\n</s>"), &reader);
    CString const message = archive.parserMessage();
    EXPECT_TRUE(message.Find("Fatal Error at file ") == 0 && message.Find("at line 2 column ") > 0) << message.view();
}

TEST(XmlArchiveTest, WritesAndReadsArrays)
{
    auto const exchange = [](auto & array) { return [&](auto & archive) { array.xmlSerialize(archive); }; };
    CTaskIDArray tasks;
    EXPECT_EQ(written(exchange(tasks)), "   <TaskIDs/>\n");
    tasks.Add(CTaskID(nullID));
    EXPECT_EQ(written(exchange(tasks)), "   <TaskIDs>\n      id = \"" + string(32, '0') + "\"\n   </TaskIDs>\n");
    EXPECT_EQ(parse("<TaskIDs><TaskID id='1'/></TaskIDs>", tasks), 1);
    EXPECT_TRUE(tasks.IsEmpty());

    CCompanyIDArray companies;
    for (int each = 0; each < 2; ++each) companies.Add(CCompanyID());
    CCompanyIDArray const before = companies;
    string const elements = written(exchange(companies));
    // Each element leaves the level raised.
    EXPECT_NE(elements.find("\n      />\n         <CompanyID\n            id = \""), string::npos) << elements;
    EXPECT_EQ(parse(elements, companies), 1);
    EXPECT_EQ(companies, before);

    CProjectStringArray names;
    EXPECT_EQ(written(exchange(names)), "");
    names.Add("x");
    EXPECT_EQ(written([&](auto & archive) { names.xmlSerialize(archive, "Names"); }),
              "   <Names>\n      <ProjectString\n         value = \"x\"\n      />\n   </Names>\n");
    CProjectTimeOfDaySpanArray spans;
    parse("<ProjectTimeOfDaySpans><ProjectTimeOfDaySpan start='9' finish='18:00'/><TimeOfDaySpan/>"
          "</ProjectTimeOfDaySpans>",
          spans);
    ASSERT_EQ(spans.GetSize(), 1);
    EXPECT_EQ(spans.GetAt(0).getEnd(), CProjectTimeOfDay(17, 59));

    CAttributeArray attributes, copy;
    attributes.Add(CAttribute("n", "<v>"));
    EXPECT_EQ(parse(written(exchange(attributes)), copy), 1);
    EXPECT_EQ(copy, attributes);
    EXPECT_TRUE(copy.GetAt(0).isLoaded());
}

TEST(XmlArchiveTest, WritesFiles)
{
    CRecordingHost host;
    CScratchFolder const folder;
    auto const save = [&](CString const & path, int compressed)
    {
        CProjectXMLArchive archive;
        if (!archive.openForWrite(nullptr, path, compressed, "r", "", "")) return false;
        for (int each = 0; each < 20000; ++each) archive.out("line");
        archive.close();
        return true;
    };
    ASSERT_TRUE(save(folder.path("plain"), 0) && save(folder.path("packed"), 1));
    string const plain = folder.read("plain");
    SECCompressFile packed;
    packed.Open(folder.path("packed"), CFile::modeRead);
    string unpacked(plain.size() + 1, '\0');
    unpacked.resize(packed.Read(unpacked.data(), static_cast<unsigned int>(unpacked.size())));
    EXPECT_EQ(unpacked, plain);
    EXPECT_FALSE(save(folder.path("no/such"), 0));
    ASSERT_EQ(host.boxes.size(), 1U);
    EXPECT_EQ(host.boxes[0].text, "I/O error " + folder.path("no/such") + " : Bad path");
    EXPECT_EQ(causeOf([&] { CFullDisk(100'000), save(folder.path("full"), 0); }), CFileException::diskFull);
    CProjectXMLArchive().openForWrite(nullptr, folder.path("unclosed"), 0, "r", "", "");
    EXPECT_TRUE(folder.read("unclosed").ends_with("\"\n")) << folder.read("unclosed");
    // What was never opened leaves values alone.
    int number = 5;
    CProjectXMLArchive closed;
    EXPECT_EQ(closed.attribute("a", number, 9), 0);
    EXPECT_EQ(number, 5);
}

}  // namespace
