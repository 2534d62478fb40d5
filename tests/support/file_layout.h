#pragma once

#include <map>
#include <string>
#include <string_view>

namespace orvane
{

// The layouts that project files ever had, as one table, and a writer and a reader that know nothing else: the judge
// of what the library reads and writes.

// Every item of a stream by its path, such as "tasks[0].links[1].delay", as a short text.
using LayoutValues = std::map<std::string, std::string>;

struct LaidOut
{
    std::string stream;
    // What a file of the present version holds after this stream was loaded and stored: what was written, and the
    // default of what the version does not have yet.
    LayoutValues expected;
};

// The version and then the class, such as "ProjectData", with a recognisable value in each item of that
// version, those that were dropped later included. Values and paths follow from the name of the root.
LaidOut layOut(std::string const & className, int version, std::string const & root);

// The items of a stream of the present version. Fails the test where the stream does not follow the table to its end.
LayoutValues readLayout(std::string const & className, std::string_view stream);

}  // namespace orvane
