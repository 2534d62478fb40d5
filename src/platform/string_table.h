#pragma once

#include "platform/string.h"

namespace orvane
{

// The texts that are loaded by number.
namespace text
{
constexpr int notFound = 50, circularLink = 53, alreadyLinked = 54, undoPastLogin = 55;
}

// The text of a number; for an unknown number the one that says so.
CString loadString(int number);

}  // namespace orvane
