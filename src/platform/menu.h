#pragma once

#include <vector>

#include "platform/object.h"
#include "platform/string.h"

namespace orvane
{

// An entry of a menu; with entries of its own it opens a further menu.
struct MenuItem
{
    int id;
    CString text;
    bool checked = false;
    bool enabled = true;
    std::vector<MenuItem> popup{};

    friend bool operator==(MenuItem const &, MenuItem const &) = default;
};

}  // namespace orvane

// A menu of the application. The host shows it, and is told when one of the functions below changed it.
class CMenu : public CDynamic<CMenu>
{
public:
    std::vector<orvane::MenuItem> items;

    // The first entry of that number, those of further menus included; null when there is none.
    orvane::MenuItem * find(int id);
};

// These do nothing where there is no such entry, and where it is so already.
void checkMenuItem(CMenu & menu, int id, bool checked);
void enableMenuItem(CMenu & menu, int id, bool enabled);

// Appends copies of all entries of a menu to another, which may be the same.
void copyMenuIntoPopup(CMenu const & menu, CMenu & popup);
