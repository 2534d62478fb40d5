#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <map>
#include <set>

#include "tests/support/plain_links.h"
#include "tests/support/plan_builder.h"
#include "tests/support/recording_host.h"
#include "tests/support/task_history.h"

using namespace orvane;

namespace
{

// ---- random actions against plain rows ------------------------------------------------------------

// A task by a number that never comes again; its identifier is learned from the project.
struct Row
{
    int key;
    int depth = 0;
    bool valid = true;
    bool keyDate = false;
    std::vector<int> links{};  // the upstream tasks
};
using Rows = std::vector<Row>;

// A project, and the outline that it should have: row under row, a task with all below it in one stretch. What the
// rules do is done to the rows as plainly as it can be told.
class Outline
{
public:
    explicit Outline(unsigned seed) : random(seed)
    {
        CTaskArray imported;
        imported.addTask(aTask("a").with({aTask("b"), aTask("c").with({aTask("d")}), aTask("e")}).make());
        for (int each = 0; each < 2; ++each) imported.addTask(aTask("k").keyDate().make());
        for (int const depth : {0, 1, 1, 2, 1}) rows.push_back({.key = ++last, .depth = depth});
        for (int each = 0; each < 2; ++each) rows.push_back({.key = ++last, .keyDate = true});
        for (int key = 1; key <= last; ++key) shown.insert(key);
        plan.act([&](auto & rules) { return rules.importTasks(imported); });
        compare();
    }

    // One action on both; what it was.
    std::string step()
    {
        int const a = anyKey(), b = anyKey(), kind = below(5), index = below(7) - 1;
        std::vector<int> some;
        for (int each = below(5); each > 0; --each) some.push_back(anyKey());
        CTaskIDArray someIDs;
        for (int const key : some) someIDs.Add(id(key));
        CTaskPasteMode mode;
        mode = kind;
        CInsertType type;
        type = kind;
        std::string name;
        host.boxes.clear();
        warned = false;
        auto const both = [&](char const * told, auto const & rule, auto const & plain) {
            name = told;
            bool const ruled = plan.act(rule);
            EXPECT_EQ(ruled, plain()) << told;
        };
        switch (rows.size() > 150 ? 2 : below(8))
        {
        case 0:
            both("insert", [&](auto & r) { return r.insertBlankTask(id(a), type); },
                 [&] { return insert(a, kind); });
            break;
        case 1:
            both("move", [&](auto & r) { return r.repositionTask(id(a), index); }, [&] { return move(a, index); });
            break;
        case 2:
        case 3:
            both("move some", [&](auto & r) { return r.repositionTasks(someIDs, id(b), index); },
                 [&] { return moveSome(some, b, index); });
            break;
        case 4:
            name = "link";
            plan.act([&](auto & r) { return r.addLink(id(a), id(b), CLinkType::FinishToStart); });
            if (at(a) >= 0 && at(b) >= 0) rows[at(b)].links.push_back(a);
            warned = !host.boxes.empty();
            break;
        case 5:
            both("paste new", [&](auto & r) { return r.pasteIntoNewTask(id(a), index, mode); },
                 [&] { return pasteNew(a, index, kind); });
            break;
        default:
            both("paste over", [&](auto & r) { return r.pasteIntoTask(id(a), id(b), mode); },
                 [&] { return pasteOver(a, b, kind); });
        }
        EXPECT_EQ(host.boxes.size(), warned ? 1U : 0U) << name;
        compare();
        return name;
    }

private:
    int below(int limit) { return std::uniform_int_distribution<int>(0, limit - 1)(random); }
    // Now and then no task: 0 is null, -1 is unknown.
    int anyKey()
    {
        return below(20) ? rows[static_cast<std::size_t>(below(static_cast<int>(rows.size())))].key : -below(2);
    }
    CTaskID id(int key) const { return ids.contains(key) ? ids.at(key) : key ? CTaskID() : CTaskID(nullID); }
    bool isInCircle(int key)
    {
        return warned = test::plainIsInCircularChain(plan.project, *plan.project.getTask(id(key)));
    }

    long at(int key) const
    {
        auto const row = std::ranges::find(rows, key, &Row::key);
        return row == rows.end() ? -1 : row - rows.begin();
    }
    long count() const { return static_cast<long>(rows.size()); }
    int depthBelow(long row) const { return row < 0 ? 0 : rows[row].depth + 1; }
    long end(long row) const
    {
        long past = row + 1;
        while (past < count() && rows[past].depth >= depthBelow(row)) ++past;
        return past;
    }
    long parent(long row) const
    {
        long above = row;
        while (above >= 0 && rows[above].depth >= rows[row].depth) --above;
        return above;
    }
    std::vector<long> children(long row) const
    {
        std::vector<long> found;
        for (long each = row + 1; each < end(row); ++each)
            if (rows[each].depth == depthBelow(row)) found.push_back(each);
        return found;
    }
    Rows take(long first, long past)
    {
        Rows const taken(rows.begin() + first, rows.begin() + past);
        rows.erase(rows.begin() + first, rows.begin() + past);
        return taken;
    }
    long put(Rows moved, long above, int position)
    {
        std::vector<long> const siblings = children(above);
        long const place = position < static_cast<int>(siblings.size()) ? siblings[position] : end(above);
        int const shift = depthBelow(above) - moved[0].depth;
        for (Row & row : moved) row.depth += shift;
        rows.insert(rows.begin() + place, moved.begin(), moved.end());
        return place;
    }
    int position(long row) const
    {
        std::vector<long> const siblings = children(parent(row));
        return static_cast<int>(std::ranges::find(siblings, row) - siblings.begin());
    }

    int addBlank() { return rows.push_back({.key = ++last, .valid = false}), last; }
    bool insert(int target, int type)
    {
        long const row = at(target);
        if (row < 0 || (type == 3 && (!rows[row].valid || rows[row].keyDate))) return false;
        if (type == 3) put({{.key = ++last}}, row, INT_MAX);
        else put({{.key = ++last}}, parent(row), position(row) + (type == 2));
        shown.insert(last);
        return true;
    }
    bool move(int key, int to)
    {
        long const row = at(key);
        if (row < 0) return false;
        long const above = parent(row);
        if (to < 0 || to == position(row) || to >= static_cast<int>(children(above).size())) return false;
        put(take(row, end(row)), above, to);
        return true;
    }
    bool moveSome(std::vector<int> const & keys, int target, int index)
    {
        std::vector<int> ordered;
        for (Row const & row : rows)
            if (std::ranges::count(keys, row.key)) ordered.push_back(row.key);
        if (keys.empty() || (at(target) < 0 && index < 0)) return false;
        for (int const key : ordered)
        {
            int const to = index++;
            long const row = at(key), above = parent(row);
            if (row < 0) return false;
            bool const isInside = at(target) >= row && at(target) < end(row);
            if (isInside || (above < 0 ? 0 : rows[above].key) == target) continue;
            Rows const moved = take(row, end(row));
            if (above >= 0 && std::ranges::none_of(children(above), [&](long child) { return rows[child].valid; }))
                take(above + 1, end(above));
            long const into = at(target);
            if (into >= 0 && (!rows[into].valid || rows[into].keyDate)) return false;
            while (into < 0 && static_cast<int>(children(-1).size()) < to) addBlank();
            if (to >= 0 && to <= static_cast<int>(children(into).size())) put(moved, into, to);
        }
        for (int const key : ordered)
            if (at(key) < 0 || isInCircle(key)) return false;
        return true;
    }
    void finishPaste(int source, long copy, int mode)
    {
        std::map<int, int> became{{source, rows[copy].key}};
        for (long each = copy; each < end(copy); ++each)
        {
            if (each > copy) rows[each].key = became[rows[each].key] = ++last;
            rows[each].links.clear();
            shown.insert(rows[each].key);
        }
        for (Row & row : rows)
        {
            for (int const up : std::vector<int>(row.links))
            {
                bool const begins = became.contains(up), ends = became.contains(row.key);
                bool const inner = begins && ends && up != source && row.key != source;
                if ((mode == 3 && (begins || ends)) || (mode == 2 && inner))
                    (ends ? rows[at(became[row.key])] : row).links.push_back(begins ? became[up] : up);
            }
        }
    }
    bool pasteOver(int target, int source, int mode)
    {
        long const to = at(target), from = at(source);
        if (to < 0 || from < 0 || (from >= to && from < end(to)) || (to >= from && to < end(from))) return false;
        std::vector<long> bare = children(to);
        if (bare.empty()) bare = {to};
        for (long const each : bare)
        {
            rows[each].links.clear();
            for (Row & row : rows) std::erase(row.links, rows[each].key);
        }
        Rows copy(rows.begin() + from, rows.begin() + end(from));
        copy[0].key = target;
        int const place = position(to);
        long const above = parent(to) < to ? parent(to) : -1;
        int const aboveKey = above < 0 ? 0 : rows[above].key;
        take(to, end(to));
        finishPaste(source, put(copy, at(aboveKey), place), mode);
        return !isInCircle(target);
    }
    bool pasteNew(int source, int blankCount, int mode)
    {
        for (int each = 0; each < blankCount; ++each) shown.insert(addBlank());
        if (at(source) < 0) return false;
        Rows copy(rows.begin() + at(source), rows.begin() + end(at(source)));
        copy[0].key = ++last;
        finishPaste(source, put(copy, -1, INT_MAX), mode);
        return true;
    }

    // New tasks stand where there are new rows.
    void compare()
    {
        std::size_t next = 0;
        std::map<CTask const *, int> depths{{nullptr, -1}};
        std::vector<CTask const *> const tasks = test::everyTask(plan.project);
        ASSERT_EQ(tasks.size(), rows.size());
        forEachTask(plan.project.getAllTasks(), [&](CTask const & task, CTask const * parent) {
            Row & row = rows[next++];
            bool const isNew = ids.try_emplace(row.key, task.getID()).second;
            EXPECT_EQ(guids.insert(task.getID().getGUID()).second, isNew) << "an identifier stands twice";
            if (isNew) row.valid = task.isValid();
            EXPECT_EQ(task.getID(), id(row.key));
            EXPECT_EQ(depths[&task] = depths[parent] + 1, row.depth);
            EXPECT_EQ(plan.project.getTaskParent(task), parent);
            EXPECT_EQ(plan.project.getTask(task.getID()), &task);
        });
        for (Row const & row : rows)
        {
            CLinkArray const & links = plan.project.getTask(id(row.key))->getUpstreamLinks();
            ASSERT_EQ(links.GetSize(), static_cast<int>(row.links.size()));
            for (int each = 0; each < links.GetSize(); ++each)
            {
                EXPECT_EQ(links.GetAt(each).getUpstreamTaskID(), id(row.links[each]));
                EXPECT_EQ(plan.project.getTask(links.GetAt(each).getID())->getID(), id(row.key));
            }
        }
        auto const & entries = plan.project.getPresentationData().getTaskPresentations();
        EXPECT_EQ(entries.GetCount(), static_cast<int>(shown.size()));
        for (int const key : shown) EXPECT_TRUE(entries.find(id(key)));
    }

    std::mt19937 random;
    CRecordingHost host;
    bool warned = false;
    Plan plan;
    Rows rows;
    int last = 0;
    std::set<int> shown;
    std::map<int, CTaskID> ids;
    std::unordered_set<_GUID> guids;
};

TEST(TreeRules, RandomActionsDoWhatTheyDoToPlainRows)
{
    for (unsigned seed = 1; seed <= 60 && !HasFailure(); ++seed)
    {
        Outline outline(seed);
        std::string history;
        for (int step = 0; step < 40 && !HasFailure(); ++step)
        {
            SCOPED_TRACE("seed " + std::to_string(seed) + history);
            history += ", " + outline.step();
        }
    }
}

// ---- what rows do not tell ------------------------------------------------------------------------

TEST(TreeRules, ACopyIsBufferedByItsOwnTasks)
{
    Plan plan({aTask("dig"), aTask("house").with({aTask("walls"), aTask("roof")}), aTask("plot")});
    CAssignedRiskArray risks;
    for (char const * buffer : {"walls", "dig"})
    {
        CAssignedRisk risk;
        risk.setStatus(CRiskStatus::Buffered);
        risk.setBufferID(plan.id(buffer));
        risks.Add(risk);
    }
    plan.writable("roof").setAssignedRisks(risks);
    EXPECT_TRUE(plan.act([&](auto & rules) {
        return rules.pasteIntoTask(plan.id("plot"), plan.id("house"), CTaskPasteMode::WithAllLinks);
    }));
    CTaskArray const & copies = *plan.tasks().GetAt(2).getSubTasks();
    CTask const & roof = copies.GetAt(1);
    EXPECT_EQ(roof.getAssignedRisks().GetAt(0).getBufferID(), copies.GetAt(0).getID());
    EXPECT_EQ(roof.getAssignedRisks().GetAt(1).getBufferID(), plan.id("dig"));
    EXPECT_EQ(roof.getAssignedRisks().findByID(risks.GetAt(0).getID()), -1);
    EXPECT_EQ(roof.getSupplyChain().getSupplierID(), plan.project.getCurrentUser()->getCompanyID());
}

TEST(TreeRules, NewRowsTakeTheLengthOfTheirPlace)
{
    Plan plan({aTask("a").lasting(3_d)});
    for (int each = 0; each < 2; ++each)
        EXPECT_TRUE(plan.act([&](auto & r) { return r.insertBlankTask(plan.id("a"), CInsertType::AsChild); }));
    EXPECT_EQ(digest(plan.project), "a: 01-05 09:00 > 01-07 17:00 3d\n  New Task: 01-05 09:00 > 01-07 17:00 3d\n"
                                    "  New Task: 01-05 09:00 > 01-05 17:00 1d\n");
}

TEST(TreeRules, FarPositionsAreRefused)
{
    Plan plan({aTask("a"), aTask("b"), aTask("c").with({aTask("d")}), aTask("e")});
    auto const move = [&](CTaskIDArray const & ids, CTaskID const & target, int index) {
        EXPECT_FALSE(plan.act([&](auto & rules) { return rules.repositionTasks(ids, target, index); }));
        return plan.tasks().GetSize();
    };
    EXPECT_EQ(move(plan.ids({"d"}), CTaskID(nullID), 65'541), 4);
    EXPECT_EQ(move(plan.ids({"d"}), CTaskID(), INT_MAX), 4);
    // Below a task what finds no place is lost.
    EXPECT_EQ(move(plan.ids({"a", "b"}), plan.id("c"), INT_MAX), 2);
}

}  // namespace
