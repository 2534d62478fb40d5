#pragma once

#include <algorithm>
#include <string_view>
#include <vector>

#include <fmt/format.h>

#include "app/command.h"
#include "app/json/records.h"

namespace orvane::app
{

// The fields of a JSON object, asked for one by one; what goes wrong with one is told by its name.
class GivenFields
{
public:
    explicit GivenFields(Json const & json) : json(objectOf(json)) {}

    // Calls `body` with the field's JSON when it is given; whether it is.
    template <class Body>
    bool with(std::string_view name, Body const & body)
    {
        known.push_back(name);
        auto const given = json.find(name);
        if (given == json.end()) return false;
        ++met;
        try
        {
            body(*given);
        }
        catch (Refusal const & refusal)
        {
            throw Refusal(fmt::format("field \"{}\": {}", name, refusal.what()));
        }
        return true;
    }
    template <class Value>
    bool read(std::string_view name, Value & value, Reader const & reader)
    {
        return with(name, [&](Json const & given) { readJson(given, value, reader); });
    }
    // The same for a field without which nothing goes.
    template <class Value>
    void need(std::string_view name, Value & value, Reader const & reader)
    {
        if (!read(name, value, reader)) throw Refusal(fmt::format("field \"{}\" is missing", name));
    }
    // To be called when all that there may be has been asked for.
    void refuseOthers() const
    {
        if (met == json.size()) return;
        std::string names;
        for (std::string_view const each : known) names += fmt::format("{}{}", names.empty() ? "" : ", ", each);
        for (auto const & [name, value] : json.items())
            if (std::find(known.begin(), known.end(), name) == known.end())
                throw Refusal(fmt::format("there is no field \"{}\"; there are {}", name, names));
    }

private:
    Json const & json;
    std::vector<std::string_view> known;
    std::size_t met = 0;
};

}  // namespace orvane::app
