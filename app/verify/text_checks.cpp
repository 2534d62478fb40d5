#include "app/verify/text_checks.h"

#include <istream>
#include <map>

#include <csv.h>
#include <fmt/format.h>
#include <nlohmann/json.hpp>

namespace orvane::app
{

// ---- the document of a project ----------------------------------------------------------------------

namespace
{

// Goes through tags without asking what they may be called, and looks that each that opens is closed.
class TagWalk
{
public:
    explicit TagWalk(std::istream & in) : in(in)
    {
        for (int c = in.get(); c != EOF; c = in.get())
            if (c == '<') takeTag();
    }

    bool isWhole() const { return opened > 0 && depth == 0 && !isBroken; }
    std::map<std::string, std::uint64_t> counts;

private:
    void takeTag()
    {
        int const first = in.peek();
        if (first == '?' || first == '!') return skipTo('>');
        if (first == '/')
        {
            --depth;
            return skipTo('>');
        }
        std::string name;
        constexpr std::size_t longest = 40;
        while (std::isalnum(in.peek()) && name.size() < longest) name += static_cast<char>(in.get());
        ++counts[name];
        ++opened;
        ++depth;
        takeAttributes();
    }
    void takeAttributes()
    {
        int last = 0;
        for (int c = in.get(); c != EOF; last = c, c = in.get())
        {
            if (c == '"' || c == '\'') skipTo(c);
            if (c != '>') continue;
            depth -= last == '/';
            return;
        }
        isBroken = true;
    }
    void skipTo(int end)
    {
        int c = in.get();
        while (c != EOF && c != end) c = in.get();
        if (c == EOF) isBroken = true;
    }

    std::istream & in;
    std::int64_t opened = 0;
    std::int64_t depth = 0;
    bool isBroken = false;
};

}  // namespace

void checkProjectDocument(ByteSource & source, FileCheck & check)
{
    ByteSourceBuffer buffer(source);
    std::istream in(&buffer);
    TagWalk const walk(in);
    constexpr std::pair<char const *, char const *> told[] = {
        {"Task", "tasks"}, {"Company", "companies"}, {"User", "users"}, {"Risk", "risks"}};
    for (auto const & [tag, name] : told)
    {
        auto const found = walk.counts.find(tag);
        check.counts.emplace_back(name, found == walk.counts.end() ? 0 : found->second);
    }
    if (!walk.isWhole()) check.fault = "the document ends before its last element is closed";
}

// ---- JSON -------------------------------------------------------------------------------------------

namespace
{

// Goes through a value without keeping it.
struct JsonWalk : nlohmann::json_sax<nlohmann::json>
{
    // clang-format off
    bool null() override { return true; }
    bool boolean(bool) override { return true; }
    bool number_integer(std::int64_t) override { return true; }
    bool number_unsigned(std::uint64_t) override { return true; }
    bool number_float(double, std::string const &) override { return true; }
    bool string(std::string &) override { return true; }
    bool binary(nlohmann::json::binary_t &) override { return true; }
    bool start_object(std::size_t) override { return true; }
    bool key(std::string &) override { return true; }
    bool end_object() override { return true; }
    bool start_array(std::size_t) override { return true; }
    bool end_array() override { return true; }
    // clang-format on
    bool parse_error(std::size_t place, std::string const &, nlohmann::json::exception const &) override
    {
        position = place;
        return false;
    }

    std::size_t position = 0;
};

}  // namespace

void checkJson(ByteSource & source, FileCheck & check)
{
    ByteSourceBuffer buffer(source);
    std::istream in(&buffer);
    std::uint64_t values = 0;
    JsonWalk walk;
    while (!(in >> std::ws).eof())
    {
        if (!nlohmann::json::sax_parse(in, &walk, nlohmann::json::input_format_t::json, false))
        {
            check.fault = fmt::format("value {}, byte {}: no JSON, or cut off", values + 1, walk.position);
            break;
        }
        ++values;
    }
    check.kind = values <= 1 ? "JSON document" : "JSON lines";
    check.counts = {{"values", values}};
}

// ---- CSV --------------------------------------------------------------------------------------------

namespace
{

struct CsvCount
{
    std::uint64_t rows = 0, fields = 0, columns = 0, lastFields = 0;
};

void countField(void *, std::size_t, void * data)
{
    ++static_cast<CsvCount *>(data)->fields;
}

void countRow(int, void * data)
{
    auto & count = *static_cast<CsvCount *>(data);
    if (++count.rows == 1) count.columns = count.fields;
    count.lastFields = std::exchange(count.fields, 0);
}

struct CsvParser : csv_parser
{
    CsvParser() { csv_init(this, CSV_STRICT | CSV_STRICT_FINI | CSV_APPEND_NULL); }
    CsvParser(CsvParser const &) = delete;
    CsvParser & operator=(CsvParser const &) = delete;
    ~CsvParser() { csv_free(this); }
};

}  // namespace

void checkCsv(ByteSource & source, FileCheck & check, char separator)
{
    CsvParser parser;
    csv_set_delim(&parser, static_cast<unsigned char>(separator));
    CsvCount count;
    char block[65536];
    char last = '\n';
    while (std::size_t const got = source.read(block, sizeof block))
    {
        last = block[got - 1];
        if (csv_parse(&parser, block, got, countField, countRow, &count) != got)
        {
            check.fault = fmt::format("row {}: {}", count.rows + 1, csv_strerror(csv_error(&parser)));
            break;
        }
    }
    if (check.fault.empty() && csv_fini(&parser, countField, countRow, &count) != 0)
        check.fault = "ends within quotation marks";
    else if (check.fault.empty() && last != '\n' && last != '\r' && count.lastFields < count.columns)
        check.fault = "ends in the middle of a row";
    check.counts = {{"rows", count.rows}, {"columns", count.columns}};
}

}  // namespace orvane::app
