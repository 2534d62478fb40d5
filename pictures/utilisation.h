#pragma once

#include <string>
#include <vector>

#include "pictures/chart_steps.h"
#include "values/enumerations.h"
#include "values/identifiers.h"

class CProject;

namespace orvane::pictures
{

struct UtilisationOptions
{
    // What one band of the chart stands for.
    enum class By
    {
        resource,
        company,
        kind
    };

    By by = By::resource;
    CDisplayUtilisationChartFor whose = CDisplayUtilisationChartFor::AllResources;
    // To the minute, use counts only while tasks really work at the same time; otherwise every task that works on a day
    // counts for the whole day.
    bool isToTheMinute = true;
};

// As the views of the project are set up: a band for each resource, or for each company when the chart is displayed for
// the second of its two choices.
UtilisationOptions utilisationOptionsOf(CProject const & project);

// How many units of resources are in use, day by day, against how many there are.
//
// An assignment uses the percentage assigned of one unit, in the working time of its task from its start to its end.
// There are as many units as the resource has in all or, if that is not told, as it works a day; a parent has those of
// the leaves below it, and their use is its own. They are there on the days on which the resource's calendar works and
// from the date on which it is available to the date until which it is. Materials are used up rather than occupied:
// nothing limits how much of them is in use, and among the resources of a company they do not count. What is assigned
// nothing is left out, unless it is the one resource asked for.
struct Utilisation
{
    // The most that was in use and the most that was there on a day of the step. A step is over when on one of its days
    // more was in use than there, if that is limited.
    struct Load
    {
        double used = 0;
        double available = 0;
        bool isOver = false;

        friend bool operator==(Load const &, Load const &) = default;
    };
    struct Band
    {
        std::string name = {};
        std::string owner = {};        // the company of a resource
        std::string unit = {};         // what is counted; empty where that is not told or differs
        CResourceType kind = {};       // not valid for a company
        CCompanyID companyID{nullID};  // NULL for a kind
        std::vector<Load> loads = {};  // one a step
        bool isLimited = true;         // not where there are materials alone
        double mostUsed = 0;
        double mostAvailable = 0;
        int daysOver = 0;
    };

    TimeSteps steps;
    std::vector<Band> bands;  // in the order of companies, kinds and trees
    // Resources that are assigned nothing.
    int idle = 0;
};

Utilisation utilisationOf(CProject const & project, UtilisationOptions const & options, TimeRange const & range = {});

}  // namespace orvane::pictures
