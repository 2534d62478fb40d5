#include "platform/string_table.h"

namespace orvane
{

CString loadString(int number)
{
    switch (number)
    {
        case text::circularLink: return "This action would produce a circular link.";
        case text::alreadyLinked: return "These Tasks are already linked.";
        case text::undoPastLogin: return "Can't 'Undo' past the creation of the currently logged in User!";
        case text::notFound:
        default: return "Cannot find the string";
    }
}

}  // namespace orvane
