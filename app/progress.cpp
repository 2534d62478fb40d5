#include "app/progress.h"

#include <algorithm>
#include <cstdlib>
#include <iostream>
#include <string_view>
#include <utility>

#include <fmt/format.h>
#include <unistd.h>

#include "app/printable.h"

namespace orvane::app
{
namespace
{

using namespace std::chrono_literals;

constexpr auto beforeFirst = 300ms, betweenDrawings = 50ms;

// Whether the terminal can go back on its line and clear it.
bool canRedraw()
{
    char const * const terminal = std::getenv("TERM");
    char const * const plain = std::getenv("NO_COLOR");
    return isatty(STDERR_FILENO) && terminal && *terminal && std::string_view(terminal) != "dumb" && !(plain && *plain);
}

}  // namespace

Progress::Progress(std::string title) : title(printable(title)), isShown(canRedraw()), next(Clock::now() + beforeFirst)
{
}

Progress::~Progress()
{
    if (isDrawn) std::cerr << "\r\033[K" << std::flush;
}

void Progress::show(double share)
{
    if (!isShown || Clock::now() < next) return;
    constexpr int width = 30;
    int const full = static_cast<int>(std::clamp(share, 0.0, 1.0) * width);
    std::cerr << fmt::format("\r{} [{:<{}}] {:3}%\033[K", title, std::string(static_cast<std::size_t>(full), '#'),
                             width, full * 100 / width)
              << std::flush;
    isDrawn = true;
    next = Clock::now() + betweenDrawings;
}

}  // namespace orvane::app
