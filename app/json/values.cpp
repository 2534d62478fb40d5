#include "app/json/values.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <iterator>
#include <limits>

#include <fmt/format.h>

#include "app/command.h"
#include "app/printable.h"

namespace orvane::app
{
namespace
{

bool equalIgnoringCase(std::string_view a, std::string_view b)
{
    auto const lower = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c; };
    return std::ranges::equal(a, b, {}, lower, lower);
}

template <class Number>
Number numberWithin(Json const & json, Number lowest, Number highest, char const * expected)
{
    if (!json.is_number()) refuseJson(json, expected);
    auto const number = json.get<double>();
    if (!(number >= static_cast<double>(lowest) && number <= static_cast<double>(highest))) refuseJson(json, expected);
    return json.get<Number>();
}

template <std::size_t Size>
std::array<double, Size> numbersOf(Json const & json, char const * expected)
{
    std::array<double, Size> numbers{};
    if (!json.is_array() || json.size() != Size) refuseJson(json, expected);
    constexpr double most = std::numeric_limits<double>::max();
    std::ranges::transform(json, numbers.begin(),
                           [&](Json const & each) { return numberWithin<double>(each, -most, most, expected); });
    return numbers;
}

// Reads a text, or null for a value that is not valid.
template <class Value, class Read>
Value readNullable(Json const & json, char const * expected, Read const & read)
{
    if (json.is_null()) return Value();
    if (!json.is_string()) refuseJson(json, expected);
    return read(json.get_ref<std::string const &>());
}

Json nullIfEmpty(std::string const & text)
{
    return text.empty() ? Json() : Json(text);
}

constexpr unsigned long largestColor = 0xFFFFFF;

int byteOf(float component)
{
    return static_cast<int>(std::lround(component * 255.0F));
}

// Red in the low byte.
unsigned long colorNumber(Json const & json)
{
    char const * const expected = "colour; one is written as \"#rrggbb\"";
    if (json.is_number()) return numberWithin<unsigned long>(json, 0, largestColor, expected);
    std::string const text = json.is_string() ? json.get<std::string>() : std::string();
    unsigned long number = 0;
    char const * const last = text.data() + text.size();
    bool const fits = text.size() == 7 && text[0] == '#';
    if (!fits || std::from_chars(text.data() + 1, last, number, 16).ptr != last) refuseJson(json, expected);
    return (number & 0xFF) << 16 | (number & 0xFF00) | number >> 16;
}

}  // namespace

void refuseJson(Json const & json, std::string_view expected)
{
    // What nests is not shown: it may nest without end.
    std::string const shown = json.is_structured() ? json.type_name() : fitted(jsonText(json), 60);
    throw Refusal(fmt::format("{} is no {}", shown, expected));
}

std::string const & textOf(Json const & json)
{
    if (!json.is_string()) refuseJson(json, "text");
    return json.get_ref<std::string const &>();
}

Json const & arrayOf(Json const & json)
{
    if (!json.is_array()) refuseJson(json, "array");
    return json;
}

Json const & objectOf(Json const & json)
{
    if (!json.is_object()) refuseJson(json, "object");
    return json;
}

Json parseJson(std::string_view text)
{
    constexpr std::size_t most = std::size_t{64} << 20;
    constexpr int deepest = 250;
    if (text.size() > most) throw Refusal("is larger than 64 MiB");
    auto const watch = [](int depth, Json::parse_event_t, Json &)
    {
        if (depth > deepest) throw Refusal("nests too deeply");
        return true;
    };
    try
    {
        return Json::parse(text, watch);
    }
    catch (Json::parse_error const & error)
    {
        throw Refusal(fmt::format("is no JSON: wrong at byte {}", error.byte));
    }
    catch (Json::exception const &)
    {
        throw Refusal("holds a number that is too large");
    }
}

std::string jsonText(Json const & json)
{
    return json.dump(-1, ' ', false, Json::error_handler_t::replace);
}

void appendJson(std::string & text, Json const & json)
{
    auto const isPlain = [](char c) { return c >= ' ' && c < 0x7F && c != '"' && c != '\\'; };
    if (json.is_null()) text += "null";
    else if (json.is_boolean()) text += json.get<bool>() ? "true" : "false";
    else if (json.is_number_integer()) fmt::format_to(std::back_inserter(text), "{}", json.get<std::int64_t>());
    else if (json.is_string() && std::ranges::all_of(json.get_ref<std::string const &>(), isPlain))
        ((text += '"') += json.get_ref<std::string const &>()) += '"';
    else text += jsonText(json);
}

// ---- writing ----------------------------------------------------------------------------------------

Json leafJson(CIDBase const & id)
{
    return id.isNULL() ? Json() : Json(idText(id));
}

Json leafJson(CProjectTime const & time)
{
    return nullIfEmpty(isoTime(time));
}

Json leafJson(CProjectDate const & date)
{
    return nullIfEmpty(isoDate(date));
}

Json leafJson(CProjectTimeOfDay const & time)
{
    return nullIfEmpty(isoTimeOfDay(time));
}

Json leafJson(CProjectDuration const & duration)
{
    return duration.isValid() ? Json(duration.GetTotalMinutes()) : Json();
}

Json leafJson(CString const & text)
{
    return std::string(text.view());
}

Json leafJson(CColor const & color)
{
    return fmt::format("#{:02x}{:02x}{:02x}", byteOf(color.red()), byteOf(color.green()), byteOf(color.blue()));
}

Json leafJson(CTransform const & transform)
{
    Json result = Json::array();
    for (int row = 0; row < 4; ++row)
        for (int column = 0; column < 4; ++column) result.push_back(transform.getElement(row, column));
    return result;
}

Json leafJson(CPoint2D const & point)
{
    return Json::array({point.x, point.y});
}

Json leafJson(CPoint3D const & point)
{
    return Json::array({point.x, point.y, point.z});
}

Json shortest(float number)
{
    std::string const text = fmt::format("{}", number);
    double value = 0;
    std::from_chars(text.data(), text.data() + text.size(), value);
    return value;
}

Json enumeratedJson(int number, std::span<char const * const> texts, int first)
{
    auto const position = static_cast<std::size_t>(number - first);
    bool const hasText = number >= first && position < texts.size() && *texts[position];
    return hasText ? Json(texts[position]) : Json(number);
}

// ---- reading ----------------------------------------------------------------------------------------

void readLeaf(Json const & json, CIDBase & id, Reader const & reader)
{
    if (json.is_null()) return id.clear();
    if (!json.is_string()) refuseJson(json, "identifier");
    std::string_view const text = json.get_ref<std::string const &>();
    if (readID(text, id)) return;
    if (!reader.named) refuseJson(json, "identifier; one has 32 hexadecimal digits");
    reader.named(text, id);
}

void readLeaf(Json const & json, CProjectTime & time, Reader const &)
{
    time = readNullable<CProjectTime>(json, "time", readTime);
}

void readLeaf(Json const & json, CProjectDate & date, Reader const &)
{
    date = readNullable<CProjectDate>(json, "date", readDate);
}

void readLeaf(Json const & json, CProjectTimeOfDay & time, Reader const &)
{
    time = readNullable<CProjectTimeOfDay>(json, "time of day", readTimeOfDay);
}

void readLeaf(Json const & json, CProjectDuration & duration, Reader const & reader)
{
    constexpr long most = INT32_MAX / 60;
    auto const read = [&](std::string_view text) { return readDuration(text, reader.calendar); };
    if (!json.is_number()) duration = readNullable<CProjectDuration>(json, "duration", read);
    else duration = CProjectDuration(numberWithin<long>(json, -most, most, "duration in minutes that fits") * 60);
}

void readLeaf(Json const & json, CString & text, Reader const &)
{
    text = CString(std::string_view(textOf(json)));
}

void readLeaf(Json const & json, CProjectString & text, Reader const &)
{
    text = CString(std::string_view(textOf(json)));
}

void readLeaf(Json const & json, CColor & color, Reader const &)
{
    color = CProjectColor(colorNumber(json));
}

void readLeaf(Json const & json, CProjectColor & color, Reader const &)
{
    color = CProjectColor(colorNumber(json));
}

void readLeaf(Json const & json, CTransform & transform, Reader const &)
{
    char const * const expected = "transform of 3 or 16 numbers";
    if (json.is_array() && json.size() == 3)
    {
        auto const [x, y, z] = numbersOf<3>(json, expected);
        transform = CTransform::translation({x, y, z});
        return;
    }
    auto const rows = numbersOf<16>(json, expected);
    CTransform::Matrix columns{};
    for (std::size_t each = 0; each < 16; ++each) columns[each % 4 * 4 + each / 4] = rows[each];
    transform = CTransform(columns);
}

void readLeaf(Json const & json, CPoint2D & point, Reader const &)
{
    auto const [x, y] = numbersOf<2>(json, "point; one is written as [2.5, 4]");
    point = {x, y};
}

void readLeaf(Json const & json, CPoint3D & point, Reader const &)
{
    auto const [x, y, z] = numbersOf<3>(json, "point; one is written as [2.5, 4, 0]");
    point = {x, y, z};
}

void readLeaf(Json const & json, bool & flag, Reader const &)
{
    if (!json.is_boolean()) refuseJson(json, "true or false");
    flag = json.get<bool>();
}

void readLeaf(Json const & json, int & number, Reader const &)
{
    char const * const expected = "whole number of 32 bits";
    if (!json.is_number_integer()) refuseJson(json, expected);
    number = numberWithin<int>(json, INT32_MIN, INT32_MAX, expected);
}

void readLeaf(Json const & json, unsigned long & color, Reader const &)
{
    color = colorNumber(json);
}

void readLeaf(Json const & json, double & number, Reader const &)
{
    constexpr double most = std::numeric_limits<double>::max();
    number = numberWithin<double>(json, -most, most, "number");
}

void readLeaf(Json const & json, float & number, Reader const &)
{
    constexpr float most = std::numeric_limits<float>::max();
    number = numberWithin<float>(json, -most, most, "number");
}

int enumeratedNumber(Json const & json, std::span<char const * const> texts, int first)
{
    for (std::size_t each = 0; each < texts.size(); ++each)
    {
        int const number = first + static_cast<int>(each);
        bool const isText = json.is_string() && equalIgnoringCase(json.get_ref<std::string const &>(), texts[each]);
        if (isText || (json.is_number_integer() && json == number)) return number;
    }
    std::string known;
    for (std::size_t each = 0; each < texts.size(); ++each)
        known += fmt::format("{}{} {}", each ? ", " : "", first + static_cast<int>(each), texts[each]);
    refuseJson(json, "value of the list " + known);
}

}  // namespace orvane::app
