#pragma once

#include "filem/Verb.h"

#include <filesystem>
#include <memory>
#include <optional>
#include <string>

namespace zolhost::filem
{

/// What the program was called with.
struct CommandLine
{
    std::optional<std::filesystem::path> root;
    std::optional<std::filesystem::path> config;
    std::optional<std::filesystem::path> library;
    std::optional<std::filesystem::path> policies;
    std::optional<std::filesystem::path> audit;
    std::optional<std::filesystem::path> script;
    std::optional<std::string> commands; ///< of -c
    bool keepsGoing = false;
    bool noPager = false;
    bool isPlain = false;
    bool wantsHelp = false;
    Words command; ///< with its arguments; empty if there is none
};

/// Throws CommandFailure.
CommandLine parseCommandLine(int argc, const char* const* argv);

/// The parser of the options in front of a command, bound to `line`. Help and the manual come from it.
std::unique_ptr<CLI::App> globalParser(CommandLine& line);

/// What --help prints.
std::string helpText();

} // namespace zolhost::filem
