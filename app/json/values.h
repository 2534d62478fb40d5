#pragma once

#include <concepts>
#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <type_traits>

#include <nlohmann/json.hpp>

#include "app/text_values.h"
#include "scene/geometry.h"
#include "scene/material.h"
#include "scene/transform.h"
#include "values/enumerations.h"
#include "values/scalars.h"

class CProject;

// How values of the model stand in JSON, in both directions.
//
// Identifiers are 32 hexadecimal digits, null for NULL. Times are ISO 8601 by the local clock, null when not valid.
// Durations are minutes; "5d" and the like are read too. Enumerations are their text, null when not valid; their
// numbers are read too. Colours are "#rrggbb", or a number with red in the low byte. A transform is its matrix as 16
// numbers, row after row; three numbers, which move along x, y and z, are read too. Points are
// lists of their coordinates.
namespace orvane::app
{

using Json = nlohmann::ordered_json;

// What reading needs to know beyond the JSON itself.
struct Reader
{
    // Whose normal day is the day of "5d".
    CCalendar const & calendar;
    // Finds the identifier that a text of another form than digits names, such as "$label"; refuses the text
    // otherwise. May be empty.
    std::function<void(std::string_view text, CIDBase & id)> named = {};
    // The reading only proves the form: what is named need not be known yet.
    bool isProof = false;
    // To which tasks that are read belong: its calendars say when they may start. May be null.
    CProject * project = nullptr;
};

// Throws a refusal: the JSON, as far as one line holds it, is not what was expected.
[[noreturn]] void refuseJson(Json const & json, std::string_view expected);
// Refuse JSON of another kind.
std::string const & textOf(Json const & json);
Json const & arrayOf(Json const & json);
Json const & objectOf(Json const & json);
// Refuses a text that is no JSON, nests without end or is larger than 64 MiB.
Json parseJson(std::string_view text);
// The JSON in few bytes, whatever bytes its texts have.
std::string jsonText(Json const & json);
// The same behind a text. Fast for what is neither list nor object.
void appendJson(std::string & text, Json const & json);

// ---- leaves -----------------------------------------------------------------------------------------

Json leafJson(CIDBase const & id);
Json leafJson(CProjectTime const & time);
Json leafJson(CProjectDate const & date);
Json leafJson(CProjectTimeOfDay const & time);
Json leafJson(CProjectDuration const & duration);
Json leafJson(CString const & text);
Json leafJson(CColor const & color);
Json leafJson(CTransform const & transform);
Json leafJson(CPoint2D const & point);
Json leafJson(CPoint3D const & point);
// In the fewest digits that give the number back.
Json shortest(float number);
inline Json leafJson(CProjectBool const & flag)
{
    return flag.getValue();
}
inline Json leafJson(CProjectInt const & number)
{
    return number.getValue();
}
inline Json leafJson(CProjectDouble const & number)
{
    return number.getValue();
}
inline Json leafJson(CProjectColor const & color)
{
    return leafJson(static_cast<CColor const &>(color));
}

void readLeaf(Json const & json, CIDBase & id, Reader const & reader);
void readLeaf(Json const & json, CProjectTime & time, Reader const & reader);
void readLeaf(Json const & json, CProjectDate & date, Reader const & reader);
void readLeaf(Json const & json, CProjectTimeOfDay & time, Reader const & reader);
void readLeaf(Json const & json, CProjectDuration & duration, Reader const & reader);
void readLeaf(Json const & json, CString & text, Reader const & reader);
void readLeaf(Json const & json, CProjectString & text, Reader const & reader);
void readLeaf(Json const & json, CColor & color, Reader const & reader);
void readLeaf(Json const & json, CProjectColor & color, Reader const & reader);
void readLeaf(Json const & json, CTransform & transform, Reader const & reader);
void readLeaf(Json const & json, CPoint2D & point, Reader const & reader);
void readLeaf(Json const & json, CPoint3D & point, Reader const & reader);
void readLeaf(Json const & json, bool & flag, Reader const & reader);
void readLeaf(Json const & json, int & number, Reader const & reader);
// Only colours are such numbers.
void readLeaf(Json const & json, unsigned long & color, Reader const & reader);
void readLeaf(Json const & json, double & number, Reader const & reader);
void readLeaf(Json const & json, float & number, Reader const & reader);
inline void readLeaf(Json const & json, CProjectBool & flag, Reader const & reader)
{
    bool given = false;
    readLeaf(json, given, reader);
    flag = CProjectBool(given);
}
inline void readLeaf(Json const & json, CProjectInt & number, Reader const & reader)
{
    int given = 0;
    readLeaf(json, given, reader);
    number = CProjectInt(given);
}
inline void readLeaf(Json const & json, CProjectDouble & number, Reader const & reader)
{
    double given = 0;
    readLeaf(json, given, reader);
    number = CProjectDouble(given);
}

// ---- enumerations -----------------------------------------------------------------------------------

template <class Value>
concept Enumerated = requires { Value::row; typename Value::Number; };

// Those that have no texts of their own are called by the names of their numbers.
template <class Enum>
inline constexpr char const * namesOfNumbers[1] = {""};
template <>
inline constexpr char const * namesOfNumbers<CLinkType>[] = {"FinishToStart", "StartToFinish", "StartToStart",
                                                             "FinishToFinish"};
template <>
inline constexpr char const * namesOfNumbers<CInsertType>[] = {"Above", "Below", "AsChild"};
template <>
inline constexpr char const * namesOfNumbers<CTaskPasteMode>[] = {"WithoutLinks", "WithInnerLinks", "WithAllLinks"};
template <>
inline constexpr char const * namesOfNumbers<CRiskValueMode>[] = {"Percent", "Fixed"};
template <>
inline constexpr char const * namesOfNumbers<CDayType>[] = {"NormalWorkingDay", "NonWorkingDay", "OtherWorkingDay"};
template <>
inline constexpr char const * namesOfNumbers<CFilterMode>[] = {"PassEvery", "PassAny"};
template <>
inline constexpr char const * namesOfNumbers<CCompanyFilterMode>[] = {"Supplier", "Customer", "SupplierOrCustomer",
                                                                      "ResourceOwner"};

// From the first number of the enumeration on.
template <Enumerated Enum>
constexpr std::span<char const * const> textsOf()
{
    if constexpr (requires { Enum::texts; }) return Enum::texts;
    else
    {
        constexpr auto count = static_cast<std::size_t>(Enum::row.last - Enum::row.first + 1);
        static_assert(std::size(namesOfNumbers<Enum>) == count);
        return namesOfNumbers<Enum>;
    }
}

// The number that the JSON tells by itself or by one of the texts, which are compared without regard to case.
int enumeratedNumber(Json const & json, std::span<char const * const> texts, int first);
// The text of the number, or the number where it has none.
Json enumeratedJson(int number, std::span<char const * const> texts, int first);

template <Enumerated Enum>
Json leafJson(Enum const & value)
{
    if (!value.isValid()) return nullptr;
    return enumeratedJson(value.getEquivalentValue(), textsOf<Enum>(), Enum::row.first);
}
template <Enumerated Enum>
void readLeaf(Json const & json, Enum & value, Reader const &)
{
    if (json.is_null()) value = Enum();
    else value = enumeratedNumber(json, textsOf<Enum>(), Enum::row.first);
}

}  // namespace orvane::app
