#pragma once

#include "filem/Commands.h"

#include <filesystem>
#include <iosfwd>
#include <optional>

namespace zolhost::filem
{

/// What the program was called with.
struct CommandLine
{
    std::optional<std::filesystem::path> root;
    std::optional<std::filesystem::path> config;
    std::optional<std::filesystem::path> library;
    std::optional<std::filesystem::path> policies;
    std::optional<std::filesystem::path> script;
    Words command; ///< with its arguments; empty if there is none
};

/// Nothing if help was asked for, which is then printed. Throws CommandFailure.
std::optional<CommandLine> parseCommandLine(int argc, const char* const* argv, std::ostream& out);

} // namespace zolhost::filem
