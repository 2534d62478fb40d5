#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

#include <nlohmann/json.hpp>

// Plans that others made, with the answers that others computed. They lie beside the source tree, or where
// ORVANE_ORACLES says; without them their tests are skipped.
namespace orvane::test
{

inline std::filesystem::path realCasesFolder()
{
    char const * const given = std::getenv("ORVANE_ORACLES");
    return given ? given : std::filesystem::path(ORVANE_SOURCE_DIR) / "../shared/oracles";
}

// Calls visit(record) for every record of one source; false when the source is not there.
template <class Visit>
bool forRealCases(std::string const & source, Visit const & visit)
{
    std::ifstream lines(realCasesFolder() / source / "shown.jsonl");
    if (!lines) return false;
    for (std::string line; std::getline(lines, line);) visit(nlohmann::json::parse(line));
    return true;
}

}  // namespace orvane::test
