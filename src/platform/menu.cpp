#include "platform/menu.h"

#include "platform/host.h"

namespace
{

orvane::MenuItem * findItem(std::vector<orvane::MenuItem> & items, int id)
{
    for (orvane::MenuItem & item : items)
    {
        if (item.id == id) return &item;
        if (orvane::MenuItem * const found = findItem(item.popup, id)) return found;
    }
    return nullptr;
}

void setIfChanged(CMenu & menu, int id, bool orvane::MenuItem::*flag, bool value)
{
    orvane::MenuItem * const item = menu.find(id);
    if (!item || item->*flag == value) return;
    item->*flag = value;
    orvane::host().menuChanged(menu);
}

}  // namespace

orvane::MenuItem * CMenu::find(int id)
{
    return findItem(items, id);
}

void checkMenuItem(CMenu & menu, int id, bool checked)
{
    setIfChanged(menu, id, &orvane::MenuItem::checked, checked);
}

void enableMenuItem(CMenu & menu, int id, bool enabled)
{
    setIfChanged(menu, id, &orvane::MenuItem::enabled, enabled);
}

void copyMenuIntoPopup(CMenu const & menu, CMenu & popup)
{
    if (menu.items.empty()) return;
    std::vector<orvane::MenuItem> const copies = menu.items;
    popup.items.insert(popup.items.end(), copies.begin(), copies.end());
    orvane::host().menuChanged(popup);
}
