#include "app/commands/commands.h"

#include <iostream>
#include <map>
#include <memory>
#include <vector>

#include <CLI/CLI.hpp>
#include <fmt/ostream.h>

#include "app/apply/names.h"
#include "app/apply/solids.h"
#include "app/command.h"
#include "app/failure.h"
#include "app/json/given_fields.h"
#include "app/session.h"
#include "app/table.h"
#include "app/walks.h"

namespace orvane::app
{
namespace
{

struct SceneOptions
{
    std::string project;
    std::string file;
    Login login;
    bool json = false;
};

// ---- add --------------------------------------------------------------------------------------------

// A solid on its way to the site.
struct NewSolid
{
    std::unique_ptr<CEntity> entity;
    CEntityID id;
    // NULL for none.
    CResourceID resourceID{nullID};
};

// An entity of the file: a solid, with the resource that it stands for.
NewSolid readEntity(Json json, Reader const & reader)
{
    NewSolid solid;
    objectOf(json);
    if (auto const resource = json.find("resource"); resource != json.end())
    {
        // Names of resources are written plainly here.
        bool const isPlain = resource->is_string() && !readID(textOf(*resource), solid.resourceID);
        if (isPlain && !textOf(*resource).starts_with('@')) *resource = "@" + textOf(*resource);
        readLeaf(*resource, solid.resourceID, reader);
        json.erase("resource");
    }
    solid.entity = readSolid(json, reader);
    solid.id = idOf(*solid.entity);
    return solid;
}

// The file holds an array of entities, or an object with the field "entities".
Json const & entitiesIn(Json const & json)
{
    if (json.is_array()) return json;
    Json const * entities = nullptr;
    GivenFields fields(json);
    if (!fields.with("entities", [&](Json const & given) { entities = &arrayOf(given); }))
        throw Refusal("field \"entities\" is missing");
    fields.refuseOthers();
    return *entities;
}

std::vector<NewSolid> readEntities(std::string const & file, CProject const & project)
{
    Names const names(project);
    Reader const reader{.calendar = project.getProjectCalendar(),
                        .named = [&](std::string_view text, CIDBase & id) { names.find(text, id); }};
    std::vector<NewSolid> solids;
    std::string where = file;
    try
    {
        Json const json = parseJson(readText(file));
        for (Json const & each : entitiesIn(json))
        {
            where = fmt::format("{}: entity {}", file, solids.size() + 1);
            solids.push_back(readEntity(each, reader));
            if (exists(project, solids.back().id)) throw Refusal("the scene has an entity of that identifier");
        }
    }
    catch (Refusal const & refusal)
    {
        std::string const what = refusal.what();
        throw Refusal(what.starts_with(file) ? what : fmt::format("{}: {}", where, what));
    }
    return solids;
}

// The first thing that the rules refuse, in words; empty when all went well.
std::string addToScene(CLocalRulesChecker & rules, CProject const & project, std::vector<NewSolid> & solids)
{
    for (NewSolid & each : solids)
    {
        std::string const name(each.entity->getName().view());
        CObArray entities;
        entities.Add(each.entity.get());
        bool const isAdded = rules.addEntitiesToScene(entities);
        if (project.getEntity(each.id) == each.entity.get()) static_cast<void>(each.entity.release());
        if (!isAdded) return fmt::format("entity \"{}\" cannot be added", name);
        if (!rules.renameEntityInScene(each.id, CString(std::string_view(name))))
            return fmt::format("\"{}\" is no name for an entity", name);
        if (!each.resourceID.isNULL() && !rules.assignEntityToResource(each.id, each.resourceID))
            return fmt::format("entity \"{}\" cannot stand for its resource", name);
    }
    return {};
}

int runAdd(SceneOptions const & options)
{
    Session session(options.project, Session::Purpose::changing, options.login);
    std::vector<NewSolid> solids = readEntities(options.file, session.project());
    std::string refused;
    auto const body = [&](CLocalRulesChecker & rules)
    { return (refused = addToScene(rules, session.project(), solids)).empty(); };
    if (!session.act("Add to the scene", body))
    {
        session.takeBack();
        throw Refusal(fmt::format("{}: {}", options.file, refused));
    }
    session.save();
    fmt::print(std::cout, "{} {} added\n", solids.size(), solids.size() == 1 ? "entity" : "entities");
    return ending::done;
}

// ---- list -------------------------------------------------------------------------------------------

std::vector<CEntity const *> entitiesOf(CProject const & project)
{
    CObArray found;
    project.getScene().getAllEntities(found, CEntity::GetThisClass(), true);
    std::vector<CEntity const *> entities;
    for (int each = 0; each < found.GetSize(); ++each) entities.push_back(static_cast<CEntity const *>(found.GetAt(each)));
    return entities;
}

// By the digits of the entity's identifier: the names of the resources for which it stands.
using ResourceNames = std::multimap<std::string, std::string>;

ResourceNames namesOfResources(CProject const & project)
{
    ResourceNames names;
    forEachResource(project,
                    [&](auto const & resource)
                    {
                        for (CEntityID const & each : resource.getRepresentations())
                            names.emplace(idText(each), std::string(resource.getName().view()));
                    });
    return names;
}

Json listedJson(CEntity const & entity, ResourceNames const & names)
{
    Json json = solidJson(entity);
    json["parent"] = entity.getParent() ? leafJson(idOf(*entity.getParent())) : Json();
    Json resources = Json::array();
    auto const [first, last] = names.equal_range(idText(idOf(entity)));
    for (auto each = first; each != last; ++each) resources.push_back(each->second);
    json["resources"] = std::move(resources);
    return json;
}

// The edges of the box around it, along x, y and z.
std::string sizeText(CEntity const & entity)
{
    Box const box = entity.getBounds();
    if (box.isEmpty()) return {};
    CVector const size = box.high - box.low;
    return fmt::format("{:.2f} x {:.2f} x {:.2f}", size.x, size.y, size.z);
}

void printTable(std::vector<Json> const & listed, std::vector<CEntity const *> const & entities)
{
    Table table({{"Name"}, {"Kind"}, {"Size in m", Table::Align::right}, {"Colour"}, {"Opacity", Table::Align::right},
                 {"Resources"}});
    for (std::size_t each = 0; each < listed.size(); ++each)
    {
        Json const & json = listed[each];
        std::string resources;
        for (Json const & name : json["resources"]) resources += (resources.empty() ? "" : ", ") + textOf(name);
        table.add({textOf(json["name"]), textOf(json["kind"]), sizeText(*entities[each]),
                   textOf(json["material"]["color"]), jsonText(json["material"]["opacity"]), resources});
    }
    table.print(std::cout);
}

int runList(SceneOptions const & options)
{
    Session const session(options.project, Session::Purpose::reading, options.login);
    ResourceNames const names = namesOfResources(session.project());
    std::vector<CEntity const *> const entities = entitiesOf(session.project());
    std::vector<Json> listed;
    for (CEntity const * const entity : entities) listed.push_back(listedJson(*entity, names));
    if (options.json) fmt::print(std::cout, "{}\n", jsonText(Json{{"entities", listed}}));
    else printTable(listed, entities);
    return ending::done;
}

CLI::App & addSceneCommand(CLI::App & scene, std::shared_ptr<SceneOptions> const & options, std::string const & name,
                           std::string const & summary, std::string const & example, int (*run)(SceneOptions const &))
{
    CLI::App & command = addCommand(scene, name, summary, example);
    addLoginOption(command, options->login);
    onRun(command, [options, run] { return run(*options); });
    return command;
}

}  // namespace

void addScene(CLI::App & program)
{
    auto const options = std::make_shared<SceneOptions>();
    CLI::App & scene = addCommand(program, "scene", "Puts solids on the site, or lists what stands there.",
                                  "  orvane scene bridge.prj add piers.json\n  orvane scene bridge.prj list --json");
    addProject(scene, options->project);
    scene.require_subcommand(1);
    addSceneCommand(scene, options, "add", "Adds boxes, cylinders, spheres and extrusions in one action.",
                    "  orvane scene bridge.prj add piers.json", runAdd)
        .add_option("FILE", options->file, "a JSON file of entities; - is the standard input")
        ->required();
    addJson(addSceneCommand(scene, options, "list", "Lists every entity with what it stands for.",
                            "  orvane scene bridge.prj list --json", runList),
            options->json);
}

}  // namespace orvane::app
