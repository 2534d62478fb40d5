#pragma once

#include <iostream>
#include <sstream>
#include <string>
#include <vector>

#include "app/command.h"

namespace orvane::test
{

// How a run of the command ended, and what it wrote.
struct Ran
{
    int ending;
    std::string out, err;
};

// Runs the command in this process, with the arguments behind its name.
inline Ran ran(std::vector<std::string> const & arguments)
{
    // While it lives, a stream writes into a text.
    struct Captured
    {
        explicit Captured(std::ostream & stream) : stream(stream), before(stream.rdbuf(text.rdbuf())) {}
        Captured(Captured const &) = delete;
        Captured & operator=(Captured const &) = delete;
        ~Captured() { stream.rdbuf(before); }

        std::ostringstream text;
        std::ostream & stream;
        std::streambuf * before;
    };
    std::vector<char const *> all{"orvane"};
    for (std::string const & argument : arguments) all.push_back(argument.c_str());
    Captured out(std::cout), err(std::cerr);
    int const ending = app::run(static_cast<int>(all.size()), all.data());
    return {ending, out.text.str(), err.text.str()};
}

}  // namespace orvane::test
