#include "tests/support/file_layout.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <functional>
#include <vector>

namespace orvane
{

namespace
{

constexpr int present = 42;
constexpr int stays = 1000;
constexpr char const * fresh = "?";  // drawn anew by the loading project
constexpr char const * none = "";    // nothing stands for it in the present layout

struct Item
{
    char const * name;
    // A value ("int", "id", ...), "1..7" for an enumeration, "=text" for a fixed text, a class, or a class in one of
    // the forms "[Class]" (array), "?[Class]" (optional array), "{Class}" (map from identifiers).
    std::string kind;
    int since = 1;
    int until = stays;
    // What stands in the present layout after loading a version that lacks the item; another item by "@name".
    char const * absent = none;
    // The flag among the items before, without which the item is not there.
    char const * when = nullptr;
};

using Items = std::vector<Item>;

Items joined(Items first, Items const & second)
{
    first.insert(first.end(), second.begin(), second.end());
    return first;
}

Items const resource = {
    {"id", "id"}, {"name", "string"}, {"description", "string"}, {"references", "[String]"}, {"autoAccept", "bool"},
    {"status", "1..4"}, {"leadTime", "duration"}, {"orderRequired", "bool"}, {"costs", "?[Cost]"},
    {"presentation", "Expanded", 1, 32}, {"flag", "bool", 1, 29}, {"representations", "[ID]"},
    {"otherFlag", "bool", 23, 25}, {"units", "int", 23, stays, "0+"}, {"unitType", "0..34", 24, stays, "0"}};

Items working(Items const & own, std::string const & kind)
{
    return joined(joined(joined(resource, {{"calendar", "Calendar"}, {"rate", "int"}, {"used", "int"}}), own),
                  {{"from", "date"}, {"to", "date"}, {"below", "?[" + kind + "]"}});
}

Items accessRights()
{
    Items items;
    for (char const * name : {"writeTasks", "readTasks", "writeTaskCosts", "readTaskCosts"}) items.push_back({name, "1..5"});
    char const * const details[][2] = {{"writeTaskResources", "@writeTasks"}, {"readTaskResources", "@readTasks"},
                                       {"writeTaskRisks", "@writeTasks"}, {"readTaskRisks", "@readTasks"},
                                       {"writeTaskRiskCosts", "@writeTaskCosts"}, {"readTaskRiskCosts", "@readTaskCosts"},
                                       {"writeTaskReports", "@writeTasks"}, {"readTaskReports", "@readTasks"},
                                       {"writeTaskReportCosts", "@writeTaskCosts"}, {"readTaskReportCosts", "@readTaskCosts"}};
    for (auto const & [name, like] : details) items.push_back({name, "1..5", 20, stays, like});
    for (char const * name : {"writeResources", "readResources", "writeResourceCosts", "readResourceCosts"})
        items.push_back({name, "1..5", 26, stays, "1"});
    for (char const * name : {"writeUsers", "writeRoles"}) items.push_back({name, "1..5"});
    return items;
}

Items flags(std::vector<char const *> const & names)
{
    Items items;
    for (char const * name : names) items.push_back({name, "bool"});
    return items;
}

std::map<std::string, Items> const & layouts()
{
    static std::map<std::string, Items> const all = {
        {"ProjectData",
         {{"header", "=Orvane Schedule Project Data"},
          {"state", "state", 4, stays, "0+-"},
          {"master", "id"},
          {"client", "id", 5, stays, "@master"},
          {"companies", "[Company]"},
          {"users", "[User]"},
          {"roles", "[Role]", 15, stays, fresh},
          {"tasks", "[Task]"},
          {"categories", "[Category]", 27, stays, "[]"},
          {"risks", "[Risk]"},
          {"filters", "[Filter]"},
          {"oldUsers", "[User]", 1, 11},
          {"calendar", "Calendar"},
          {"view1", "id", 1, 28}, {"view2", "[ID]", 1, 28}, {"view3", "id", 1, 28}, {"view4", "id", 1, 28},
          {"view5", "id", 1, 28}, {"view6", "id", 3, 28}, {"view7", "id", 3, 28}, {"view8", "id", 14, 28},
          {"view9", "id", 16, 28}, {"view10", "id", 1, 28}, {"view11", "id", 1, 28}, {"view12", "id", 1, 28},
          {"view13", "id", 1, 28}, {"view14", "Utilisation", 1, 28}, {"view15", "Navigator", 1, 28},
          {"view16", "3D", 1, 28}, {"view17", "Gantt", 1, 28}, {"view18", "EVA", 19, 28},
          {"views", "PresentationData", 28, 39},
          {"scene", "scene"},
          {"adminUser", "id", 21, stays, "0"},
          {"adminRole", "id", 21, stays, "0"}}},
        {"PresentationData",
         {{"primaryTask", "id"}, {"tasks", "[ID]"}, {"company", "id"}, {"resource", "id"}, {"risk", "id"},
          {"report", "id"}, {"reportCost", "id"}, {"user", "id"}, {"role", "id"}, {"filter", "id"}, {"riskCost", "id"},
          {"taskCost", "id"}, {"resourceCost", "id"}, {"utilisation", "Utilisation"}, {"navigator", "Navigator"},
          {"3D", "3D"}, {"gantt", "Gantt"}, {"eva", "EVA"},
          {"resourceRows", "{Expanded}", 32, stays, "[]"}, {"riskRows", "{Expanded}", 33, stays, "[]"},
          {"taskRows", "{TaskRow}", 34, stays, "[]"},
          {"entity", "id", 42, stays, "0"}, {"entities", "[ID]", 42, stays, "[]"}}},
        {"Task",
         {{"id", "id"}, {"risks", "[AssignedRisk]"}, {"resources", "[AssignedResource]"}, {"row", "TaskRow", 1, 34},
          {"status", "1..7"}, {"riskType", "1..2"}, {"constraint", "1..2", 9, 10}, {"links", "[Link]"},
          {"calendar", "id"}, {"number", "int", 1, 2}, {"name", "string"}, {"start", "time"}, {"duration", "duration"},
          {"below", "?[Task]"}, {"costs", "?[Cost]"}, {"actualStart", "time"}, {"predicted", "time"},
          {"actualFinish", "time"}, {"reports", "[Report]"}, {"baselineSet", "bool"},
          {"baseline", "Baseline", 1, stays, none, "baselineSet"}, {"buffer", "bool"},
          {"comments", "string", 7, stays, "''+"}, {"oldType", "0..2", 9, 10}, {"constraint", "1..2", 10, stays, "1"},
          {"chain", "SupplyChain", 14, stays, "0"}, {"category", "id", 28, stays, "0"},
          {"template", "bool", 28, stays, "0+"}, {"type", "0..2", 30, stays, "1"}}},
        {"Baseline",
         {{"start", "time"}, {"duration", "duration"}, {"finish", "time"}, {"equipment", "double"}, {"human", "double"},
          {"location", "double"}, {"material", "double"}, {"mitigated", "double"}, {"unmitigated", "double"}, {"task", "double"}}},
        {"SupplyChain", {{"id", "id"}, {"supplier", "id"}, {"customers", "[ID]", 20, stays, "[]"}}},
        {"Report",
         {{"id", "id"}, {"risk", "id"}, {"date", "date"}, {"duration", "duration"}, {"type", "1..2"},
          {"comments", "string", 5, stays, "''+"}, {"costs", "[Cost]"}}},
        {"Cost", {{"id", "id"}, {"description", "string"}, {"amount", "double"}, {"type", "1..7"}}},
        {"Link", {{"id", "id"}, {"upstream", "id"}, {"type", "1..4"}, {"status", "1..2"}, {"delay", "duration"}}},
        {"AssignedResource",
         {{"transform", "transform", 22, stays, "identity"}, {"id", "id"}, {"resource", "id"}, {"amount", "int"},
          {"profile", "1..3"}, {"percent", "bool", 25, stays, "1+"}}},
        {"AssignedRisk",
         {{"id", "id"}, {"risk", "id"}, {"status", "1..3"}, {"weight", "1..3"}, {"percent", "double"},
          {"fixed", "duration"}, {"costs", "?[Cost]"}, {"buffer", "id"}, {"mode", "1..2"}}},
        {"Risk", {{"id", "id"}, {"description", "string"}, {"below", "?[Risk]"}, {"mode", "1..2"}, {"row", "Expanded", 1, 33}}},
        {"Category", {{"name", "string"}, {"id", "id"}}},
        {"Company",
         {{"id", "id"}, {"type", "1..22"}, {"calendar", "Calendar"}, {"equipment", "[Equipment]"}, {"people", "[Human]"},
          {"places", "[Place]"}, {"materials", "[Material]"}, {"oldUsers", "[ID]", 12, 18}, {"look", "Color", 1, 35},
          {"name", "string"}, {"address", "string"}, {"telephone", "string"}, {"fax", "string"}, {"email", "string"},
          {"color", "color", 31, stays, "1 1 1"}}},
        {"Equipment", working({}, "Equipment")},
        {"Place", working({}, "Place")},
        {"Human", working({{"locations", "[ID]", 1, 29}}, "Human")},
        {"Material", joined(resource, {{"below", "?[Material]", 8, stays, "null"}, {"usedOn", "time"}, {"rate", "int"}})},
        {"User",
         {{"id", "id"}, {"oldCompany", "id", 1, 11}, {"function", "JobFunction", 1, 17}, {"name", "string"},
          {"login", "string"}, {"password", "string"}, {"email", "string"}, {"telephone", "string"}, {"mobile", "string"},
          {"role", "id", 17, stays, "0"}, {"company", "id", 18, stays, "0"},
          {"permissions", "Permissions", 18, stays, "5"}}},
        {"JobFunction", flags({"controller", "planner", "package", "site", "supplier", "procurement", "accounts", "sales", "manager"})},
        {"Role", {{"id", "id"}, {"name", "string"}, {"permissions", "Permissions"}}},
        {"Permissions", accessRights()},
        {"Calendar",
         {{"inUse", "bool"}, {"id", "id"}, {"week", "Week", 1, stays, none, "inUse"},
          {"exceptions", "[Exception]", 1, stays, none, "inUse"}, {"dayTypes", "[DayType]", 1, stays, none, "inUse"},
          {"normalDay", "bool", 1, stays, none, "inUse"}}},
        {"Week", {{"1", "id"}, {"2", "id"}, {"3", "id"}, {"4", "id"}, {"5", "id"}, {"6", "id"}, {"7", "id"}}},
        {"DayType", {{"id", "id"}, {"description", "string"}, {"color", "color"}, {"type", "1..3"}, {"blocks", "[Span]"}}},
        {"Span", {{"start", "timeOfDay"}, {"end", "timeOfDay"}}},
        {"Exception", {{"date", "date"}, {"dayType", "id"}}},
        {"Filter",
         {{"id", "id"}, {"name", "string"}, {"mode", "1..2"}, {"nameUsed", "bool"}, {"names", "[String]"},
          {"matches", "bool"}, {"case", "bool"}, {"wholeWord", "bool"}, {"datesUsed", "bool"}, {"start", "date"},
          {"end", "date"}, {"overlaps", "bool"}, {"statusUsed", "bool"}, {"hold", "bool"}, {"approved", "bool"},
          {"ready", "bool"}, {"go", "bool"}, {"tba", "bool"}, {"started", "bool"}, {"finished", "bool"},
          {"resourcesUsed", "bool"}, {"resources", "[ID]"}, {"risksUsed", "bool"}, {"risks", "[ID]"},
          {"companiesUsed", "bool"}, {"companies", "[ID]"}, {"companyMode", "1..4", 37, stays, "4"}}},
        {"Utilisation", {{"chart", "1..2"}, {"for", "3..4"}, {"utilisationFor", "1..7"}, {"minute", "bool"}}},
        {"Navigator",
         {{"companyType", "1..22"}, {"companyUsed", "bool"}, {"resource", "id"}, {"equipment", "bool"}, {"people", "bool"},
          {"places", "bool"}, {"materials", "bool"}}},
        {"3D", {{"display", "1..7"}, {"lock", "1..3", 41, stays, "3"}}},
        {"Gantt",
         {{"zoom", "double"}, {"focussed", "time"}, {"playing", "bool"}, {"speed", "duration"}, {"viewStart", "time"},
          {"scroll", "int"}}},
        {"EVA", flags({"BCWS", "BCWP", "ACWP"})},
        {"Expanded", flags({"expanded"})},
        {"TaskRow", {{"height", "int"}, {"children", "bool"}}},
        {"Color", {{"color", "color"}}},
        {"ID", {{"", "id"}}},
        {"String", {{"", "string"}}},
    };
    return all;
}

template <class T>
std::string bytesOf(T number)
{
    std::string bytes(sizeof number, '\0');
    std::memcpy(bytes.data(), &number, sizeof number);
    return bytes;
}

// As scene/scene_form_impl.h tells it.
std::string const emptyScene("OSCN\1\0\0\0\0\0\0\0", 12);

// How one value stands in the stream, and as a text. Where the stream ends early the text is empty.
struct Cursor
{
    std::string_view rest;

    std::string_view take(std::size_t size)
    {
        std::string_view const taken = rest.substr(0, size);
        rest.remove_prefix(taken.size());
        return taken;
    }
    template <class T>
    T number()
    {
        T value{};
        std::string_view const bytes = take(sizeof value);
        if (bytes.size() == sizeof value) std::memcpy(&value, bytes.data(), sizeof value);
        return value;
    }
    std::string valid() { return number<char>() ? "+" : "-"; }
};

std::string readValue(std::string const & kind, Cursor & from)
{
    auto const withFlag = [&](auto value) { return std::to_string(value) + from.valid(); };
    if (kind == "bool") return withFlag(int{from.number<char>()});
    if (kind == "double") return withFlag(from.number<double>());
    if (kind == "state")
    {
        std::string const index = withFlag(from.number<std::int32_t>());
        return index + from.valid();
    }
    if (kind == "string")
    {
        std::string const valid = from.valid();
        std::size_t const length = from.number<unsigned char>();
        return "'" + std::string(from.take(length)) + "'" + valid;
    }
    if (kind == "id")
    {
        std::string text;
        for (unsigned char const byte : from.take(16)) text += std::to_string(byte) + ".";
        return text == "0.0.0.0.0.0.0.0.0.0.0.0.0.0.0.0." ? "0" : text;
    }
    if (kind == "color")
    {
        std::string text;
        for (int each = 0; each < 3; ++each) text += (each ? " " : "") + std::to_string(static_cast<int>(from.number<float>()));
        return text;
    }
    if (kind == "transform")
    {
        bool const identity = from.number<char>() == 0;
        return identity ? "identity" : std::string(from.take(128));
    }
    if (kind == "scene") return from.take(emptyScene.size()) == emptyScene ? "empty" : "other";
    if (kind.find("..") != kind.npos) return std::to_string(from.number<std::int32_t>());
    // int, date, time, timeOfDay and duration.
    return withFlag(from.number<std::int32_t>());
}

bool isValue(std::string const & kind)
{
    return !layouts().contains(kind);
}

class Writer
{
public:
    explicit Writer(int version) : version(version) { laid.stream = bytesOf(std::int32_t{version}); }

    void write(std::string const & className, std::string const & path, bool counts)
    {
        std::map<std::string, std::string> values;
        for (Item const & item : layouts().at(className))
        {
            std::string const at = item.name[0] ? path + "." + item.name : path;
            if (item.when && values[item.when][0] != '1') continue;
            bool const here = item.since <= version && version < item.until;
            bool const remains = counts && item.until > present;
            if (here) writeItem(item.kind, at, counts && (item.until > present || isMoved(className, item)));
            else if (remains && item.since > version && !laid.expected.contains(at)) expectAbsent(item, at, path);
            values[item.name] = laid.expected[at];
            if (laid.expected[at].empty()) laid.expected.erase(at);
        }
    }

    LaidOut laid;

private:
    // An item that stands elsewhere in the present layout, under the same name.
    static bool isMoved(std::string const & className, Item const & item)
    {
        return className == "Task" && std::string_view(item.name) == "constraint";
    }

    void expectAbsent(Item const & item, std::string const & at, std::string const & path)
    {
        // Six rights say nothing of resources; sixteen rights give all of them.
        if (item.since == 26 && version < 20) laid.expected[at] = "5";
        else if (item.absent == fresh) laid.expected[at] = fresh;
        else if (item.absent[0] == '@') laid.expected[at] = laid.expected[path + "." + (item.absent + 1)];
        else if (item.kind == "SupplyChain")
        {
            laid.expected[at + ".id"] = fresh;
            laid.expected[at + ".supplier"] = "0";
            laid.expected[at + ".customers"] = "[0]";
        }
        else if (item.kind == "Permissions")
            for (Item const & right : layouts().at("Permissions")) laid.expected[at + "." + right.name] = item.absent;
        else laid.expected[at] = std::string_view(item.absent) == "[]" ? "[0]" : item.absent;
    }

    void writeItem(std::string const & kind, std::string const & path, bool counts)
    {
        if (kind[0] == '?')
        {
            // What contains its own kind ends somewhere.
            bool const exists = std::count(path.begin(), path.end(), '[') < 3;
            laid.stream += bytesOf(char{exists});
            if (exists) writeItem(kind.substr(1), path, counts);
            else if (counts) laid.expected[path] = "null";
        }
        else if (kind[0] == '[' || kind[0] == '{') writeElements(kind.substr(1, kind.size() - 2), path, counts, kind[0] == '{');
        else if (kind[0] == '=') writeText(kind.substr(1), path, counts);
        else if (isValue(kind)) writeValue(kind, path, counts);
        else write(kind, path, counts);
    }
    void writeElements(std::string const & element, std::string const & path, bool counts, bool keyed)
    {
        constexpr std::int32_t count = 2;
        laid.stream += bytesOf(count);
        if (counts) laid.expected[path] = "[2]";
        for (int each = 0; each < count; ++each)
        {
            std::string at = path + "[" + std::to_string(each) + "]";
            if (keyed)
            {
                std::string const key = some(16, at);
                laid.stream += key;
                Cursor cursor{key};
                at = path + "[" + readValue("id", cursor) + "]";
            }
            write(element, at, counts);
        }
    }
    void writeText(std::string const & text, std::string const & path, bool counts)
    {
        laid.stream += static_cast<char>(text.size()) + text;
        if (counts) laid.expected[path] = text;
    }
    void writeValue(std::string const & kind, std::string const & path, bool counts)
    {
        std::string const bytes = valueBytes(kind, path);
        laid.stream += bytes;
        Cursor cursor{bytes};
        if (counts) laid.expected[path] = readValue(kind, cursor);
    }

    static std::string valueBytes(std::string const & kind, std::string const & path)
    {
        std::size_t const seed = std::hash<std::string>()(path);
        std::string const valid = bytesOf(char(seed % 5 != 0));
        if (std::size_t const dots = kind.find(".."); dots != kind.npos)
        {
            int const first = std::stoi(kind);
            int const last = std::stoi(kind.substr(dots + 2));
            return bytesOf(std::int32_t(first + static_cast<int>(seed % static_cast<std::size_t>(last - first + 1))));
        }
        if (kind == "bool") return bytesOf(char(seed % 2)) + valid;
        if (kind == "double") return bytesOf(static_cast<double>(seed % 1000) / 8) + valid;
        if (kind == "state") return bytesOf(std::int32_t(seed % 1000)) + valid + bytesOf(char(seed % 2));
        if (kind == "string") return valid + static_cast<char>(path.size() % 250) + path.substr(0, path.size() % 250);
        if (kind == "id") return some(16, path);
        if (kind == "color") return bytesOf(float(seed % 2)) + bytesOf(float(seed / 2 % 2)) + bytesOf(float(seed / 4 % 2));
        if (kind == "transform") return bytesOf(char{1}) + some(128, path);
        if (kind == "scene") return emptyScene;
        return bytesOf(std::int32_t(seed % 1'000'000'000)) + valid;
    }
    // Bytes that are finite numbers however they are read.
    static std::string some(std::size_t size, std::string const & path)
    {
        std::string bytes;
        for (std::size_t each = 0; bytes.size() < size; ++each)
            bytes += bytesOf(std::uint64_t{std::hash<std::string>()(path + "#" + std::to_string(each))} & 0x3FFFFFFFFFFFFFFF);
        return bytes.substr(0, size);
    }

    int version;
};

class Reader
{
public:
    explicit Reader(std::string_view stream) : cursor{stream} {}

    void read(std::string const & className, std::string const & path)
    {
        for (Item const & item : layouts().at(className))
        {
            std::string const at = item.name[0] ? path + "." + item.name : path;
            if (item.since > present || item.until <= present) continue;
            if (item.when && values[path + "." + item.when][0] != '1') continue;
            readItem(item.kind, at);
        }
    }

    Cursor cursor;
    LayoutValues values;

private:
    void readItem(std::string const & kind, std::string const & path)
    {
        if (kind[0] == '?')
        {
            if (cursor.number<char>()) readItem(kind.substr(1), path);
            else values[path] = "null";
        }
        else if (kind[0] == '[' || kind[0] == '{') readElements(kind.substr(1, kind.size() - 2), path, kind[0] == '{');
        else if (kind[0] == '=') values[path] = std::string(cursor.take(cursor.number<unsigned char>()));
        else if (isValue(kind)) values[path] = readValue(kind, cursor);
        else read(kind, path);
    }
    void readElements(std::string const & element, std::string const & path, bool keyed)
    {
        std::int32_t const count = cursor.number<std::int32_t>();
        values[path] = "[" + std::to_string(count) + "]";
        for (int each = 0; each < count && !cursor.rest.empty(); ++each)
        {
            std::string const key = keyed ? readValue("id", cursor) : std::to_string(each);
            read(element, path + "[" + key + "]");
        }
    }
};

}  // namespace

LaidOut layOut(std::string const & className, int version, std::string const & root)
{
    Writer writer(version);
    writer.write(className, root, true);
    return writer.laid;
}

LayoutValues readLayout(std::string const & className, std::string_view stream)
{
    Reader reader(stream);
    EXPECT_EQ(reader.cursor.number<std::int32_t>(), present);
    reader.read(className, className);
    EXPECT_TRUE(reader.cursor.rest.empty()) << reader.cursor.rest.size() << " bytes are left";
    return reader.values;
}

}  // namespace orvane
