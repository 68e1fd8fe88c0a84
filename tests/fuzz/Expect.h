#pragma once

#include <string>
#include <string_view>

namespace zolfuzz
{

/// A text as it can be read in a report.
std::string shown(std::string_view text);

/// Ends the process unless the two are the same. `input` says of what they are.
void expectSame(std::string_view found, std::string_view expected, std::string_view what,
                std::string_view input);
void expectSame(long long found, long long expected, std::string_view what, std::string_view input);
void expect(bool condition, std::string_view what, std::string_view input);

} // namespace zolfuzz
