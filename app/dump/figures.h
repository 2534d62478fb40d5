#pragma once

#include <array>
#include <optional>
#include <string>
#include <unordered_map>

#include <nlohmann/json_fwd.hpp>

#include "config/project_config.h"
#include "model/project.h"
#include "platform/settings_store.h"

// What the model computes of a plan.
namespace orvane::app
{

using Json = nlohmann::ordered_json;

// What tasks cost by kind, as budgeted and as they really came.
struct CostTotals
{
    static constexpr std::array kinds{"tasks",          "equipment",        "people",  "places", "materials",
                                      "mitigatedRisks", "unmitigatedRisks", "reports", "total"};
    static constexpr std::size_t total = kinds.size() - 1;
    std::array<double, kinds.size()> budgeted{};
    std::array<double, kinds.size()> actual{};

    CostTotals & operator+=(CostTotals const & other);
};

// The costs of each task with all below it, and of the plan: each task is asked once.
class PlanCosts
{
public:
    explicit PlanCosts(CProject const & project);
    CostTotals of(CTask const & task) const;
    CostTotals const & ofPlan() const { return all; }

private:
    CostTotals add(CTask const & task);

    // Of summary tasks; the others are asked again.
    std::unordered_map<CTask const *, CostTotals> summaries;
    CostTotals all;
};

// As an object behind a text. Kinds that cost nothing are left out, but for the total.
void appendCosts(std::string & text, CostTotals const & totals);

// The longest chain of the plan.
struct CriticalChain
{
    explicit CriticalChain(CProject const & project);

    CProjectDuration duration;
    // From the first to the last; each link leads from its task to the next.
    std::vector<CTask const *> tasks;
    std::vector<CLink const *> links;
};

// A project that is read while one of these lives has its longest chain, whatever the setting that shows it. The
// stored setting stays as it is.
class CriticalPathAsked
{
public:
    CriticalPathAsked();
    CriticalPathAsked(CriticalPathAsked const &) = delete;
    CriticalPathAsked & operator=(CriticalPathAsked const &) = delete;
    ~CriticalPathAsked();

private:
    // Hands out what is stored and keeps nothing.
    class Untouched : public ISettingsStore
    {
    public:
        explicit Untouched(ISettingsStore & stored) : stored(stored) {}
        std::optional<StoredValue> read(CString const & key, CString const & name) override
        {
            return stored.read(key, name);
        }
        bool write(CString const &, CString const &, StoredValue const &) override { return false; }
        std::vector<CString> subkeys(CString const & key) override { return stored.subkeys(key); }
        bool removeKey(CString const &) override { return false; }

    private:
        ISettingsStore & stored;
    };

    Untouched store;
    ISettingsStore * before;
    int shown;
};

}  // namespace orvane::app
