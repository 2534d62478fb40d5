#pragma once

#include <chrono>
#include <string>

namespace orvane::app
{

// A line on the terminal that shows how far long work has come. It appears when the work takes longer than a moment,
// only where the standard error is a terminal that can redraw a line, and goes when the work is done.
class Progress
{
public:
    explicit Progress(std::string title);
    Progress(Progress const &) = delete;
    Progress & operator=(Progress const &) = delete;
    ~Progress();

    // From 0 to 1. May be called as often as one likes.
    void show(double share);

private:
    using Clock = std::chrono::steady_clock;

    std::string title;
    bool isShown;
    bool isDrawn = false;
    Clock::time_point next;
};

}  // namespace orvane::app
