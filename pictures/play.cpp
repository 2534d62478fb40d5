#include "pictures/play.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <map>
#include <optional>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include <nlohmann/json.hpp>

#include "config/project_config.h"
#include "config/project_constants.h"
#include "model/project.h"
#include "pictures/canvas.h"
#include "pictures/play_page.h"
#include "pictures/play_shapes.h"
#include "pictures/play_site.h"
#include "scene/entity.h"

namespace orvane::pictures
{
namespace
{

using Json = nlohmann::ordered_json;
using Minute = std::int64_t;

constexpr Minute minutesOfDay = 24 * 60;

// ---- values as JSON ---------------------------------------------------------------------------------

// Names go into lines; what is longer than any line is cut between two characters.
std::string nameOf(CString const & text)
{
    constexpr std::size_t most = 1000;
    std::string_view view = text.view();
    if (view.size() > most)
    {
        view = view.substr(0, most);
        while (!view.empty() && (static_cast<unsigned char>(view.back()) & 0xC0) == 0x80) view.remove_suffix(1);
        view.remove_suffix(view.empty() ? 0 : 1);
    }
    return std::string(view);
}

int percentOf(double share)
{
    return static_cast<int>(std::lround(std::clamp(std::isfinite(share) ? share : 1.0, 0.0, 1.0) * 100));
}

Color colorOf(CColor const & color)
{
    auto const part = [](float share) {
        return static_cast<std::uint8_t>(
            std::lround(std::clamp(std::isfinite(share) ? share : 1.0F, 0.0F, 1.0F) * 255));
    };
    return {part(color.red()), part(color.green()), part(color.blue())};
}

Json json(Color color)
{
    return Json::array({color.red, color.green, color.blue});
}

// So that nothing in it can end the element of the page that holds it: these characters occur in texts alone.
std::string asElement(Json const & data)
{
    std::string const text = data.dump(-1, ' ', false, Json::error_handler_t::replace);
    std::string safe;
    safe.reserve(text.size());
    for (char const each : text) switch (each)
        {
            case '<': safe += "\\u003c"; break;
            case '>': safe += "\\u003e"; break;
            case '&': safe += "\\u0026"; break;
            default: safe += each;
        }
    return safe;
}

// ---- how entities look ------------------------------------------------------------------------------

// A colour, which may be the entity's own, and an opacity in percent.
struct Style
{
    std::optional<Color> color;
    int opacity = 100;
};

// In the order of the numbers of profiles; idle is what waits for its next use.
enum class Look : std::size_t
{
    install,
    temporary,
    remove,
    idle
};
constexpr std::size_t numberOfLooks = 4;

// What the settings say of one kind of resource in one look.
struct LookSettings
{
    int (*color)();
    int (*opacity)();
    int (*keepsColor)();
};
struct KindSettings
{
    char const * name;
    std::array<LookSettings, numberOfLooks> looks;
};

using Config = CProjectConfig;

// Whether resources of any kind keep their colour.
constexpr std::array<int (*)(), numberOfLooks> anyKeepsColor = {
    Config::getDisplayActiveResourceInstallWithOriginalColor,
    Config::getDisplayActiveResourceTemporaryWithOriginalColor, Config::getDisplayActiveResourceRemoveWithOriginalColor,
    Config::getDisplayInactiveResourceWithOriginalColor};

#define ORVANE_LOOKS(kind)                                                                                             \
    {                                                                                                                  \
        {                                                                                                              \
            {Config::get##kind##ResourceInstallColor, Config::get##kind##ResourceInstallOpacity,                       \
             Config::getDisplayActive##kind##ResourceInstallWithOriginalColor},                                        \
                {Config::get##kind##ResourceTemporaryColor, Config::get##kind##ResourceTemporaryOpacity,               \
                 Config::getDisplayActive##kind##ResourceTemporaryWithOriginalColor},                                  \
                {Config::get##kind##ResourceRemoveColor, Config::get##kind##ResourceRemoveOpacity,                     \
                 Config::getDisplayActive##kind##ResourceRemoveWithOriginalColor},                                     \
            {                                                                                                          \
                Config::get##kind##ResourceInactiveColor, Config::get##kind##ResourceInactiveOpacity,                  \
                    Config::getDisplayInactiveResourceWithOriginalColor                                                \
            }                                                                                                          \
        }                                                                                                              \
    }

constexpr std::array<KindSettings, 4> kinds = {{{"Equipment", ORVANE_LOOKS(Equipment)},
                                                {"People", ORVANE_LOOKS(Human)},
                                                {"Places", ORVANE_LOOKS(Location)},
                                                {"Materials", ORVANE_LOOKS(Material)}}};
#undef ORVANE_LOOKS

Style styleOf(std::size_t kind, Look look, CCompany const * company)
{
    auto const number = static_cast<std::size_t>(look);
    LookSettings const & settings = kinds[kind].looks[number];
    Style style{Color::ofNumber(settings.color()), std::clamp(settings.opacity(), 0, 100)};
    if (settings.keepsColor() || anyKeepsColor[number]()) style.color.reset();
    else if (company && look != Look::idle && Config::getDisplayResourceWithCompanyColor())
        style.color = colorOf(company->getColor());
    return style;
}

// ---- the data of the page ---------------------------------------------------------------------------

class PageData
{
public:
    PageData(CProject const & project, PlayOptions const & options)
        : project(project), options(options), site(siteOf(project)), shapes(bounds())
    {
    }

    Json make()
    {
        findTasks(project.getAllTasks(), 0);
        findTimes();
        Json data = {{"title", options.title}, {"origin", origin}, {"length", length}};
        addTimes(data);
        data["settings"] = settingsJson();
        data["statuses"] = statusesJson();
        data["kinds"] = kindsJson();
        data["companies"] = companiesJson();
        data["resources"] = resourcesJson();
        data["tasks"] = tasksJson();
        data["uses"] = usesJson();
        data["histories"] = historiesJson();
        data["entities"] = entitiesJson();
        data["shapes"] = shapesJson();
        data["half"] = shapes.halfSize();
        data["styles"] = std::move(styles);
        data["placings"] = std::move(placings);
        return data;
    }

private:
    struct Row
    {
        CTask const * task;
        int depth;
    };

    orvane::Box bounds() const
    {
        orvane::Box all;
        for (Site::Entity const & each : site.entities) all.include(each.entity->getBounds());
        return all;
    }

    void findTasks(CTaskArray const & tasks, int depth)
    {
        for (CTask const & task : tasks)
        {
            if (!task.isValid()) continue;
            if (task.getStartTime().isValid() && task.getEndTime().isValid())
            {
                rowOf.emplace(&task, rows.size());
                rows.push_back({&task, depth});
            }
            if (task.getSubTasks()) findTasks(*task.getSubTasks(), depth + 1);
        }
    }

    static bool hasBaseline(CTask const & task)
    {
        return task.isBaselineSet() && task.getBaselineStart().isValid() && task.getBaselineFinish().isValid();
    }

    // Whole days around all that has a time.
    void findTimes()
    {
        if (rows.empty()) return;
        Minute first = std::numeric_limits<Minute>::max(), last = std::numeric_limits<Minute>::min();
        auto const include = [&](CProjectTime const & from, CProjectTime const & to)
        {
            first = std::min({first, from.getLocalMinutes(), to.getLocalMinutes()});
            last = std::max({last, from.getLocalMinutes(), to.getLocalMinutes()});
        };
        for (Row const & row : rows)
        {
            include(row.task->getStartTime(), row.task->getEndTime());
            if (hasBaseline(*row.task)) include(row.task->getBaselineStart(), row.task->getBaselineFinish());
        }
        origin = orvane::floorDiv(first, minutesOfDay) * minutesOfDay;
        length = (orvane::floorDiv(last - origin, minutesOfDay) + 1) * minutesOfDay;
    }

    Minute fromOrigin(CProjectTime const & time) const { return time.getLocalMinutes() - origin; }
    // Null when it is outside the plan.
    Json within(CProjectTime const & time) const
    {
        if (!time.isValid()) return nullptr;
        Minute const minute = fromOrigin(time);
        return minute >= 0 && minute <= length ? Json(minute) : Json(nullptr);
    }

    void addTimes(Json & data) const
    {
        data["now"] = within(options.now);
        data["at"] = within(options.at);
        auto const & speed = project.getGanttPresentation().getPlaySpeed();
        data["speed"] = speed.isValid() ? std::max(speed.GetTotalMinutes(), 1L) : minutesOfDay;
        data["hasBaseline"] = std::ranges::any_of(rows, [](Row const & row) { return hasBaseline(*row.task); });
    }

    Json settingsJson() const
    {
        double const tint = Config::getSelectedTaskTintOpaqueness();
        CScene const & scene = project.getScene();
        return {{"selected", json(Color::ofNumber(Config::getSelectedTaskColor()))},
                {"tint", percentOf(tint)},
                {"cursor", json(Color::ofNumber(Config::getFocussedTimeColor()))},
                {"now", json(Color::ofNumber(Config::getCurrentTimeColor()))},
                {"background", json(colorOf(scene.getBackgroundColor()))},
                {"headLight", scene.getHeadLight()},
                {"barsByCompany", Config::getGanttUseCompanyColors() != 0},
                {"companyColors", Config::getDisplayResourceWithCompanyColor() != 0}};
    }

    static Json statusesJson()
    {
        Json all = Json::array();
        for (int number = CTaskStatus::Hold; number <= CTaskStatus::Finished; ++number)
        {
            CTaskStatus status;
            status = number;
            Color const color = Color::ofNumber(static_cast<long>(CProjectConstants::getColor(status)));
            all.push_back({nameOf(status.getString()), json(color)});
        }
        return all;
    }

    Json kindsJson()
    {
        Json all = Json::array();
        for (std::size_t kind = 0; kind < kinds.size(); ++kind)
        {
            Json ofKind = Json::array();
            for (std::size_t look = 0; look < numberOfLooks; ++look)
                ofKind.push_back(numberOf(styleOf(kind, static_cast<Look>(look), nullptr)));
            all.push_back({kinds[kind].name, ofKind});
        }
        return all;
    }

    Json companiesJson() const
    {
        Json all = Json::array();
        for (CCompany const & company : project.getAllCompanies())
            all.push_back({nameOf(company.getName()), json(colorOf(company.getColor()))});
        return all;
    }

    Json resourcesJson() const
    {
        Json all = Json::array();
        CCompanyArray const & companies = project.getAllCompanies();
        int company = -1;
        CCompany const * present = nullptr;
        for (Site::Resource const & each : site.resources)
        {
            // They come company by company.
            while (each.company != present) present = &companies.GetAt(++company);
            int const parent = each.parent == Site::none ? -1 : static_cast<int>(each.parent);
            all.push_back({nameOf(each.resource->getName()), each.kind, company, parent});
        }
        return all;
    }

    Json tasksJson() const
    {
        Json all = Json::array();
        for (Row const & row : rows)
        {
            CTask const & task = *row.task;
            int const kind = task.isSummaryTask() ? 1 : task.isKeyDate() ? 2 : 0;
            int const status = std::clamp(task.getStatus().getEquivalentValue(), 1, 7) - 1;
            Json fields = {nameOf(task.getName()),
                           row.depth,
                           kind,
                           fromOrigin(task.getStartTime()),
                           fromOrigin(task.getEndTime()),
                           status,
                           percentOf(task.getPercentComplete() / 100)};
            if (hasBaseline(task))
            {
                fields.push_back(fromOrigin(task.getBaselineStart()));
                fields.push_back(fromOrigin(task.getBaselineFinish()));
            }
            all.push_back(std::move(fields));
        }
        return all;
    }

    Json usesJson() const
    {
        Json all = Json::array();
        for (Site::Use const & use : site.uses)
            all.push_back({rowOf.at(use.task), use.resource, use.during(Dates::plan).profile});
        return all;
    }

    // For each list of uses: the uses, the changes of the plan, and those of the baseline where they are others.
    Json historiesJson()
    {
        Json all = Json::array();
        for (std::size_t users = 0; users < site.usersOf.size(); ++users)
        {
            Json const plan = changesJson(users, Dates::plan), baseline = changesJson(users, Dates::baseline);
            Json history = {site.usersOf[users], plan};
            if (baseline != plan) history.push_back(baseline);
            all.push_back(std::move(history));
        }
        return all;
    }

    // Five numbers a change: from when, the state, the use, the style and the placing, each -1 for none.
    Json changesJson(std::size_t users, Dates dates)
    {
        Json numbers = Json::array();
        for (EntityChange const & change : entityChanges(usesDuring(site, users, dates)))
        {
            numbers.push_back(std::max<Minute>(change.from, origin) - origin);
            numbers.push_back(static_cast<int>(change.moment.state));
            int const position = change.moment.use;
            if (position == EntityMoment::noUse)
            {
                for (int each = 0; each < 3; ++each) numbers.push_back(-1);
                continue;
            }
            std::size_t const use = site.usersOf[users][static_cast<std::size_t>(position)];
            numbers.push_back(use);
            numbers.push_back(styleIn(change.moment.state, site.uses[use]));
            numbers.push_back(placingOf(site.uses[use].assigned->getTransform()));
        }
        return numbers;
    }

    int styleIn(EntityState state, Site::Use const & use)
    {
        Site::Resource const & resource = site.resources[use.resource];
        int const profile = use.assigned->getResourceProfileType().getEquivalentValue();
        auto const look = static_cast<Look>(profile - CResourceProfileType::Install);
        bool const isActive = state == EntityState::underWay || state == EntityState::inUse;
        bool const isIdle = state == EntityState::inPlace && look == Look::temporary;
        if (!isActive && !isIdle) return -1;
        return numberOf(styleOf(resource.kind, isIdle ? Look::idle : look, resource.company));
    }

    // The position of a style on the page, where each stands once.
    int numberOf(Style const & style)
    {
        Json entry = style.color ? json(*style.color) : Json::array({-1, -1, -1});
        entry.push_back(style.opacity);
        auto const [known, isNew] = styleNumbers.try_emplace(entry.dump(), static_cast<int>(styles.size()));
        if (isNew) styles.push_back(std::move(entry));
        return known->second;
    }
    int placingOf(CTransform const & transform)
    {
        if (transform.isIdentity()) return -1;
        Json entry = shapes.toPage(transform).getMatrix();
        auto const [known, isNew] = placingNumbers.try_emplace(entry.dump(), static_cast<int>(placings.size()));
        if (isNew) placings.push_back(std::move(entry));
        return known->second;
    }

    Json entitiesJson()
    {
        Json all = Json::array();
        for (Site::Entity const & each : site.entities)
        {
            CMaterial const & material = each.entity->getMaterial();
            PlayShapes::Placed const placed = shapes.add(each.entity->getMesh());
            all.push_back({nameOf(each.entity->getName()), placed.shape, placed.at, json(colorOf(material.getColor())),
                           percentOf(static_cast<double>(material.getOpacity())), each.users, each.resources});
        }
        return all;
    }

    Json shapesJson() const
    {
        Json all = Json::array();
        auto const flat = [](auto const & triples)
        {
            Json numbers = Json::array();
            for (auto const & triple : triples)
                for (auto const number : triple) numbers.push_back(number);
            return numbers;
        };
        for (PlayShapes::Shape const * shape : shapes.shapes())
            all.push_back({flat(shape->points), flat(shape->triangles)});
        return all;
    }

    CProject const & project;
    PlayOptions const & options;
    Site site;
    PlayShapes shapes;
    std::vector<Row> rows;
    std::unordered_map<CTask const *, std::size_t> rowOf;
    Minute origin = 0;
    Minute length = 0;
    Json styles = Json::array();
    Json placings = Json::array();
    std::map<std::string, int> styleNumbers;
    std::map<std::string, int> placingNumbers;
};

}  // namespace

std::string playPage(CProject const & project, PlayOptions const & options)
{
    std::string page(pageBeforeData());
    page += asElement(PageData(project, options).make());
    page += pageBehindData();
    return page;
}

}  // namespace orvane::pictures
