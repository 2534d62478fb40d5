#pragma once

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "platform/dialog.h"

namespace orvane
{

// An open dialog that notes, each time it is told of a change, what it can read of the model at that moment.
class Watcher : public CModelessDialog
{
public:
    explicit Watcher(std::function<std::string()> read) : read(std::move(read)) {}

    std::vector<std::string> seen;

private:
    void updateFromModel(bool) override { seen.push_back(read()); }

    std::function<std::string()> read;
};

}  // namespace orvane
