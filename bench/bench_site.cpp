#include "bench/bench_site.h"

#include <functional>
#include <map>
#include <random>
#include <tuple>

namespace orvane
{
namespace
{

constexpr int companies = 20;
constexpr int resourcesEach = 50;
constexpr int buffers = 500;

void forLeaves(CTaskArray & tasks, std::function<void(CTask &)> const & visit)
{
    for (int each = 0; each < tasks.GetSize(); ++each)
    {
        CTask & task = tasks.elementForPass(each);
        if (CTaskArray * const below = task.getWritableSubTasks()) forLeaves(*below, visit);
        else visit(task);
    }
}

CCost hourly(double amount)
{
    CCost cost;
    cost.setType(CCostType::Hourly);
    cost.setAmount(amount);
    return cost;
}

CCompanyArray makeCompanies(Made & made)
{
    CCompanyArray all;
    for (int each = 0; each < companies; ++each)
    {
        CCompany company;
        for (int number = 0; number < resourcesEach; ++number)
        {
            auto const add = [&](auto resource, auto & array) {
                resource.addCost(hourly(number), -1);
                resource.addCost(CCost(), -1);
                made.resources.push_back(resource.getID());
                array.Add(resource);
            };
            switch (number % 4)
            {
                case 0: add(CEquipmentResource(), company.getWritableEquipmentResources()); break;
                case 1: add(CHumanResource(), company.getWritableHumanResources()); break;
                case 2: add(CLocationResource(), company.getWritableLocationResources()); break;
                default: add(CMaterialResource(), company.getWritableMaterialResources()); break;
            }
        }
        all.Add(company);
    }
    return all;
}

Made make(std::int32_t leaves, bool withResources, bool withRisks)
{
    Made made;
    std::unique_ptr<CProjectData> const data(benchProject(leaves).getCopyOfProjectData());
    CTaskArray tasks(data->getTasks());
    forLeaves(tasks, [&](CTask & task) { made.leaves.push_back(task.getID()); });
    if (withResources) data->setCompanies(makeCompanies(made));
    std::mt19937 random(1);
    forLeaves(tasks, [&](CTask & task) {
        CAssignedResourceArray resources;
        for (int each = 0; withResources && each < 3; ++each)
            resources.Add(CAssignedResource(CAssignedResourceID(), made.resources[random() % made.resources.size()], 100));
        task.setAssignedResources(resources);
        CAssignedRiskArray risks;
        for (int each = 0; withRisks && each < 2; ++each)
        {
            CAssignedRisk risk(CRiskID(), each ? CRiskValueMode::Fixed : CRiskValueMode::Percent);
            risk.setValuePercent(5);
            risk.setValueFixed(CProjectDuration(3600));
            if (random() % 3 == 0)
            {
                risk.setStatus(CRiskStatus::Buffered);
                risk.setBufferID(made.leaves[random() % buffers * (made.leaves.size() / buffers)]);
            }
            risks.Add(risk);
        }
        task.setAssignedRisks(risks);
    });
    for (int each = 0; withRisks && each < buffers; ++each)
        if (CTask * const task = tasks.findInForest(made.leaves[static_cast<std::size_t>(each) * (made.leaves.size() / buffers)]))
            task->setRiskBuffer(true);
    data->setTasks(tasks);
    made.project = std::make_unique<CProject>(*data);
    made.project->postSerialize();
    made.project->resetChanged();
    return made;
}

}  // namespace

Made & madeOnce(std::int32_t leaves, bool withResources, bool withRisks)
{
    static std::map<std::tuple<std::int32_t, bool, bool>, Made> all;
    Made & made = all[{leaves, withResources, withRisks}];
    if (!made.project) made = make(leaves, withResources, withRisks);
    return made;
}

}  // namespace orvane
