#pragma once

#include <utility>

#include "app/json/values.h"
#include "model/project.h"

// How the records of the model stand in JSON: an object with a field for each pair of accessors, named after them
// (getUpstreamTaskID, setUpstreamTaskID: "upstreamTaskID"). Both directions follow from one list of the fields.
namespace orvane::app
{

// The values of one field of a record, element by element.
template <class Value>
concept ListOfValues = requires(Value const & list) {
    { list.GetSize() } -> std::same_as<int>;
    list.GetAt(0);
} && !std::derived_from<Value, CString>;

template <class Value>
concept LeafValue = requires(Value const & value) { leafJson(value); };

// The two directions of a record. For CLink, CCost, CRisk, CAssignedRisk, CAssignedResource, CTaskReport, CSupplyChain,
// CTaskConstraint, CTask, the four kinds of resource, CCompany, CCalendar and its parts, CUser, CRole, CPermissions,
// CFilter and its parts, CMaterial, and no others.
template <class Record>
class RecordForm
{
public:
    // What the record stores and what belongs to it, but for one field if it is named. A user's password is left out.
    static Json write(Record const & record, std::string_view without = {});
    // The same behind a text, which takes no tree.
    static void append(std::string & text, Record const & record, std::string_view without = {});
    // Sets the fields that are given, in the order of the list and over what they hold. An array is replaced; an
    // element with the identifier of one that was there is read over that one. Refuses names that the record does not
    // have, values of another kind, and values that the record would not keep: `field "delay": "soon" is no duration`.
    // The record is partly set then.
    static void setFields(Record & record, Json const & json, Reader const & reader);
};

template <class Record>
void setFields(Record & record, Json const & json, Reader const & reader)
{
    RecordForm<Record>::setFields(record, json, reader);
}

// Any value, list or record.
template <class Value>
Json toJson(Value const & value)
{
    if constexpr (std::is_same_v<Value, float>) return shortest(value);
    else if constexpr (std::is_arithmetic_v<Value>) return value;
    else if constexpr (LeafValue<Value>) return leafJson(value);
    else if constexpr (ListOfValues<Value>)
    {
        Json list = Json::array();
        for (int each = 0; each < value.GetSize(); ++each) list.push_back(toJson(value.GetAt(each)));
        return list;
    }
    else return RecordForm<Value>::write(value);
}

// A list in JSON, of which `append` puts each element behind the text.
template <class List, class Append>
void appendList(std::string & text, List const & list, Append const & append)
{
    char before = '[';
    for (int each = 0; each < list.GetSize(); ++each)
    {
        text += std::exchange(before, ',');
        append(list.GetAt(each));
    }
    text += before == '[' ? "[]" : "]";
}

// As jsonText(toJson(value)), without the tree.
template <class Value>
void appendValue(std::string & text, Value const & value)
{
    if constexpr (std::is_arithmetic_v<Value> || LeafValue<Value>) appendJson(text, toJson(value));
    else if constexpr (ListOfValues<Value>)
        appendList(text, value, [&](auto const & each) { appendValue(text, each); });
    else RecordForm<Value>::append(text, value);
}

// An object in JSON, put behind a text member by member.
class ObjectText
{
public:
    explicit ObjectText(std::string & text) : text(text) {}
    ObjectText(ObjectText const &) = delete;
    ObjectText & operator=(ObjectText const &) = delete;

    // What is put behind the text next is the member of that name, which has plain letters.
    void begin(std::string_view name)
    {
        ((text += std::exchange(before, ',')) += '"') += name;
        text += "\":";
    }
    template <class Value>
    void add(std::string_view name, Value const & value)
    {
        begin(name);
        appendValue(text, value);
    }
    void end() { text += before == '{' ? "{}" : "}"; }

private:
    std::string & text;
    char before = '{';
};

template <class Value>
void readJson(Json const & json, Value & value, Reader const & reader);

// Makes the element new, or over the one of that identifier in the present list.
template <class List, class Element>
void readElement(Json const & json, List const & present, Element & element, Reader const & reader)
{
    if constexpr (requires { element.getID(); present.findByID(element.getID()); })
    {
        if (auto const id = objectOf(json).find("id"); id != json.end())
        {
            auto given = element.getID();
            readJson(*id, given, reader);
            if (int const position = present.findByID(given); position >= 0) element = present.GetAt(position);
        }
    }
    readJson(json, element, reader);
}

template <class List>
void readList(Json const & json, List & list, Reader const & reader)
{
    using Element = std::remove_cvref_t<decltype(list.GetAt(0))>;
    List read;
    for (Json const & each : arrayOf(json))
    {
        if constexpr (requires { read.appendNew([](Element &) {}); })
            read.appendNew([&](Element & element) { readElement(each, list, element, reader); });
        else
        {
            Element element{};
            readJson(each, element, reader);
            read.Add(element);
        }
    }
    list = read;
}

template <class Value>
void readJson(Json const & json, Value & value, Reader const & reader)
{
    if constexpr (requires { readLeaf(json, value, reader); }) readLeaf(json, value, reader);
    else if constexpr (ListOfValues<Value>) readList(json, value, reader);
    else setFields(value, json, reader);
}

}  // namespace orvane::app
