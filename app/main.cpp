#include <clocale>

#include "app/command.h"
#include "app/stored_settings.h"

int main(int count, char ** arguments)
{
    // Widths of characters come from the locale; numbers and dates must not.
    std::setlocale(LC_CTYPE, "C.UTF-8");
    orvane::app::useStoredSettings();
    return orvane::app::run(count, arguments);
}
