// An XML document out of hostile bytes: reading ends, whatever its elements are taken for. Values that were read are
// written, and what was written is read without complaint.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "fuzz/memory_path.h"
#include "persistence/xml_attribute.h"
#include "values/date_time.h"
#include "values/enumerations.h"
#include "values/identifier_arrays.h"
#include "values/sorted_word_array.h"
#include "values/time_of_day_span_array.h"

namespace
{

// One of each kind of value, as the attributes "a" to "m" of every element, and arrays below.
class CSample : public IProjectXMLTagProcessor
{
public:
    void xmlSerialize(CProjectXMLArchive & archive) override
    {
        archive.startEntity("Sample");
        exchangeAll(archive, "abcdefghi", flag, number, fraction, text, date, time, timeOfDay, status, color);
        id.xmlSerialize(archive, "j");
        archive.attribute("k", words);
        archive.attributeParagraph("l", paragraph, "");
        archive.attribute("m", single, 0.0F);
        archive.out(">");
        companies.xmlSerialize(archive);
        attributes.xmlSerialize(archive);
        if (archive.isLoading()) spans.xmlSerialize(archive);
        archive.endEntity("</Sample>");
    }

private:
    template <class... Fields>
    static void exchangeAll(CProjectXMLArchive & archive, char const * names, Fields &... fields)
    {
        (fields.xmlSerialize(archive, CString(*names++)), ...);
    }

    CProjectBool flag;
    CProjectInt number;
    CProjectDouble fraction;
    CProjectString text;
    CProjectDate date;
    CProjectTime time;
    CProjectTimeOfDay timeOfDay;
    CTaskStatus status;
    CProjectColor color;
    CTaskID id;
    CSortedWordArray words;
    CString paragraph;
    float single = 0;
    CCompanyIDArray companies;
    CAttributeArray attributes;
    CProjectTimeOfDaySpanArray spans;
};

int read(void const * data, std::size_t size, CSample & sample)
{
    CMemoryPath const file(data, size);
    return CProjectXMLArchive().parse(file.path(), &sample);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const * data, std::size_t size)
{
    CSample sample;
    read(data, size, sample);
    CString document;
    CProjectXMLArchive writer;
    writer.openForWrite(&document, "", 0, "Root", "", "fuzz");
    writer.out(">");
    sample.xmlSerialize(writer);
    writer.close();
    CSample again;
    if (!read(document.view().data(), document.view().size(), again)) std::abort();
    return 0;
}
