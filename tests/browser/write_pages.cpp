// Writes pages for the browser to open, and what the library says of the entities at some times.
//
// usage: write_pages FOLDER            the pages of the test, with small.json
//        write_pages FOLDER FLOORS WIDE DEEP   one page of a building of that size

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>

#include <nlohmann/json.hpp>

#include "pictures/play.h"
#include "pictures/play_site.h"
#include "scene/solids.h"
#include "rules/local_rules_checker.h"
#include "tests/browser/building.h"

namespace
{

using namespace orvane;
using namespace orvane::pictures;
using orvane::test::Building;
using orvane::test::makeBuilding;

void write(std::filesystem::path const & file, std::string const & text)
{
    std::ofstream(file, std::ios::binary) << text;
}

// Every state occurs at one of these.
CProjectTime const times[] = {
    {2027, 3, 1, 8, 0}, {2027, 3, 3, 12, 0}, {2027, 3, 10, 10, 0}, {2027, 3, 30, 12, 0}, {2027, 5, 31, 12, 0}};

nlohmann::json statesAt(CProject const & project, CProjectTime const & time)
{
    nlohmann::json states = nlohmann::json::array();
    Site const site = siteOf(project);
    std::int64_t const minute = time.getLocalMinutes();
    for (Site::Entity const & each : site.entities)
        states.push_back({entityAt(usesDuring(site, each.users, Dates::plan), minute).state,
                          entityAt(usesDuring(site, each.users, Dates::baseline), minute).state});
    return states;
}

// The page counts minutes from the day on which the plan begins.
void writeSmall(std::filesystem::path const & folder)
{
    Building const building = makeBuilding({});
    write(folder / "small.html", playPage(*building.project, {.title = "A building of three floors"}));
    nlohmann::json expected = nlohmann::json::array();
    CProjectTime const first(2027, 3, 1, 0, 0);
    for (CProjectTime const & time : times)
        expected.push_back({{"minute", time.getLocalMinutes() - first.getLocalMinutes()},
                            {"states", statesAt(*building.project, time)}});
    write(folder / "small.json", expected.dump());
}

// Whatever a project may hold, the page opens.
void writeOdd(std::filesystem::path const & folder)
{
    CProject const empty(nullptr, false);
    write(folder / "empty.html", playPage(empty, {.title = ""}));

    char const * const names[] = {
        "</script><script>document.title='broken'</script>",
        "<img src=x onerror=alert(1)>&lt;b&gt;",
        "\xE2\x80\xA8line\xE2\x80\xA9",
        "\xD7\xA9\xD7\x9C\xD7\x95\xD7\x9D \xD8\xB3\xD9\x84\xD8\xA7\xD9\x85 abc",
        "\xE5\xBB\xBA\xE7\xAD\x91 \xE0\xA4\xAD\xE0\xA4\xB5\xE0\xA4\xA8 \xE0\xB8\xAD\xE0\xB8\xB2",
        "\xFF\xFE broken",
        "<!-- -->]]>"};
    CTaskArray tasks;
    for (char const * name : names)
    {
        CTask task;
        task.setName(name);
        task.setPlannedStartTime(CProjectTime(2027, 3, 1, 9, 0));
        tasks.addTask(task);
    }
    CTask old;
    old.setName("A hundred years before");
    old.setPlannedStartTime(CProjectTime(1927, 3, 1, 9, 0));
    tasks.addTask(old);
    std::unique_ptr<CProjectData> const data(empty.getCopyOfProjectData());
    data->setTasks(tasks);
    CProject odd(*data);
    odd.postSerialize();
    CObArray entities;
    for (double size : {1.0, 1e300, 1e-9})
    {
        auto * const ball = new CEntitySphere;
        ball->setName(names[0]);
        ball->setRadius(1);
        ball->setTransform(CTransform::translation({size, 0, 0}));
        ball->setDefaultMaterial(CMaterial(CColor(7, -3, 0.5F)));
        entities.Add(ball);
    }
    CLocalRulesChecker(&odd, CRulesCheckerContext::OriginatingClient).addEntitiesToScene(entities);
    write(folder / "odd.html", playPage(odd, {.title = names[0]}));
}

}  // namespace

int main(int count, char ** arguments)
{
    if (count != 2 && count != 5) return 2;
    std::filesystem::path const folder = arguments[1];
    if (count == 2)
    {
        writeSmall(folder);
        writeOdd(folder);
        return 0;
    }
    Building const building = makeBuilding({.floors = std::atoi(arguments[2]),
                                            .zonesWide = std::atoi(arguments[3]),
                                            .zonesDeep = std::atoi(arguments[4]),
                                            .daysBetween = 0.25,
                                            .hasBaseline = false});
    std::string const page = playPage(*building.project, {.title = "A large building"});
    std::cout << building.project->getTotalNumberOfTasks() << " tasks, " << building.entities.size() << " entities, "
              << page.size() << " bytes\n";
    write(folder / "large.html", page);
    building.project->saveToFile((folder / "large.prj").string().c_str());
}
