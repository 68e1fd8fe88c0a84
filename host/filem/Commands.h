#pragma once

#include "filem/ExitCode.h"

#include <cstddef>
#include <iosfwd>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace zolhost::filem
{

class Session;

using Words = std::vector<std::string>;

struct Command
{
    std::string_view name;
    std::string_view parameters; ///< as help shows them
    std::size_t fewest;          ///< arguments that it takes at least
    std::size_t most;
    bool changesTree;
    bool needsSession; ///< makes no sense alone
    /// Throws Refusal or CommandFailure.
    ExitCode (*run)(Session& session, const Words& arguments);
    std::string_view help;
};

std::span<const Command> commands();

/// Null if there is no such command.
const Command* findCommand(std::string_view name);

/// The command that the words ask for, of which there is at least one. Throws CommandFailure if there is none
/// or the number of its arguments is wrong.
const Command& commandOf(const Words& words);

// ReadCommands.cpp
ExitCode list(Session& session, const Words& arguments);
ExitCode showAttributes(Session& session, const Words& arguments);
ExitCode listFiles(Session& session, const Words& arguments);
ExitCode tellExistence(Session& session, const Words& arguments);
ExitCode countChildren(Session& session, const Words& arguments);

// ChangeCommands.cpp
ExitCode create(Session& session, const Words& arguments);
ExitCode deleteObject(Session& session, const Words& arguments);
ExitCode remove(Session& session, const Words& arguments);
ExitCode removeFile(Session& session, const Words& arguments);
ExitCode commit(Session& session, const Words& arguments);
ExitCode abort(Session& session, const Words& arguments);

// HelpCommand.cpp
ExitCode help(Session& session, const Words& arguments);
ExitCode quit(Session& session, const Words& arguments);

/// What the command `help` prints; it needs no host. Throws CommandFailure for an unknown topic.
void printHelp(std::ostream& out, const Words& arguments);

} // namespace zolhost::filem
