#include "values/duration_text.h"

#include "config/project_config.h"
#include "values/duration.h"

namespace
{

// How a number of a unit reads.
struct UnitForms
{
    char const * concise;
    char const * one;
    char const * more;
};
constexpr UnitForms dayUnit{"%lid", "%li Day", "%li Days"};
constexpr UnitForms hourUnit{"%lih", "%li Hour", "%li Hours"};
constexpr UnitForms minuteUnit{"%lim", "%li Minute", "%li Minutes"};

}  // namespace

namespace orvane
{

CString durationText(DurationPiece days, DurationPiece hours, DurationPiece minutes)
{
    bool const concise = CProjectConfig::getDisplayDurationConcise();
    CString text;
    auto const add = [&](DurationPiece piece, UnitForms const & unit)
    {
        if (piece.count < 1) return;
        CString counted;
        counted.Format(concise ? unit.concise : piece.plural ? unit.more : unit.one, piece.count);
        if (!text.IsEmpty()) text += ", ";
        text += counted;
    };
    add(days, dayUnit);
    add(hours, hourUnit);
    add(minutes, minuteUnit);
    return text.IsEmpty() ? CString("0 Days") : text;
}

}  // namespace orvane

CString CProjectDuration::getString() const
{
    if (!valid) return CString();
    // The days go by the hours: users know it so.
    bool const hoursPlural = GetHours() != 1;
    return orvane::durationText({GetTotalHours() / 24, hoursPlural}, {GetTotalHours() % 24, hoursPlural},
                                {GetMinutes(), GetMinutes() != 1});
}
