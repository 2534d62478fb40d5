#pragma once

#include <string>
#include <vector>

#include "platform/host.h"

namespace orvane::app
{

// The desktop of a command, as long as it lives: keeps what the library tells the user, and nobody is there to agree to
// a question.
class CommandHost : public IHost
{
public:
    CommandHost() : previous(setHost(this)) {}
    CommandHost(CommandHost const &) = delete;
    CommandHost & operator=(CommandHost const &) = delete;
    ~CommandHost() override { setHost(previous); }

    int messageBox(CString const & text, CString const &, unsigned flags) override
    {
        messages.emplace_back(text.view());
        return box::asks(flags) ? answer::no : answer::ok;
    }

    std::vector<std::string> messages;

private:
    IHost * previous;
};

}  // namespace orvane::app
