#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace orvane::app
{

// What a file turned out to be, after reading all of it.
struct FileCheck
{
    // In a few words, such as "project file".
    std::string kind;
    // As the file tells it; empty for a kind without versions.
    std::string version;
    bool isCompressed = false;
    std::uint64_t fileSize = 0;
    std::uint64_t contentSize = 0;
    // What it holds, such as "tasks".
    std::vector<std::pair<std::string, std::uint64_t>> counts;
    // Why it is not whole; empty when it is.
    std::string fault;
};

// Refuses a file that cannot be opened.
FileCheck checkFile(std::string const & path);

}  // namespace orvane::app
