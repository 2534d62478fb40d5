#include "app/dump/json_text.h"

#include <ostream>

#include <nlohmann/json.hpp>

namespace orvane::app
{

void printJson(std::ostream & out, Json const & value, int blanksPerLevel)
{
    out << value.dump(blanksPerLevel, ' ', false, Json::error_handler_t::replace) << '\n';
}

}  // namespace orvane::app
