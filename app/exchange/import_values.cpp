#include "app/exchange/import_values.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace orvane::app
{

CProjectDuration minutesLong(Minute minutes)
{
    return CProjectDuration(std::clamp<Minute>(minutes, -INT32_MAX / 60, INT32_MAX / 60) * 60);
}

std::string heldText(std::string text, std::size_t longest, TextLines lines, bool & isChanged)
{
    std::erase(text, '\r');
    std::string const before = text;
    for (char & c : text)
        if (static_cast<unsigned char>(c) < 0x20 && c != '\t' && !(c == '\n' && lines == TextLines::many)) c = ' ';
    if (text.size() > longest)
    {
        // Not in the middle of a letter.
        while (longest > 0 && (static_cast<unsigned char>(text[longest]) & 0xC0) == 0x80) --longest;
        text.resize(longest);
    }
    isChanged = text != before;
    return text;
}

void addCost(CCostArray & costs, std::string const & description, double amount, CCostType::COST_TYPE type)
{
    if (amount == 0 || !std::isfinite(amount)) return;
    CCost cost;
    cost.setDescription(description.c_str());
    cost.setAmount(amount);
    cost.setType(CCostType(type));
    costs.Add(cost);
}

}  // namespace orvane::app
