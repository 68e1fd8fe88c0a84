#pragma once

#include <string>

namespace zolhost
{

/// An expression for the action `removeFile` that means the whole name: the component puts "^" in front of it
/// and "$" behind, which of "a|b" would bind the one to a and the other to b. One that isn't valid stays as
/// it is.
std::string forWholeName(const std::string& expression);

/// What the component makes of it.
std::string anchored(const std::string& expression);

/// Why it can't be made to mean the whole name; empty if it can.
std::string whyNotForWholeName(const std::string& expression);

bool isValidExpression(const std::string& expression);

} // namespace zolhost
