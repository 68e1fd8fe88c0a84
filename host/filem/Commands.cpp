#include "filem/Commands.h"

#include "filem/PrintableText.h"

#include <algorithm>

namespace zolhost::filem
{

namespace
{

constexpr Command COMMANDS[] = {
    {"ls", "[DN]", 0, 1, false, false, list, "lists the children of an object, of the root without DN"},
    {"stat", "DN", 1, 1, false, false, showAttributes, "shows all attributes of an object"},
    {"files", "DN", 1, 1, false, false, listFiles, "shows the files of a directory as a table"},
    {"exists", "DN", 1, 1, false, false, tellExistence, "tells whether there is such an object"},
    {"count", "DN CLASS", 2, 2, false, false, countChildren, "counts the children of a class"},
    {"create", "DN", 1, 1, true, false, create, "creates a directory"},
    {"delete", "DN", 1, 1, true, false, deleteObject, "deletes a file, or a directory with no files in it"},
    {"remove", "DN", 1, 1, true, false, remove, "deletes a directory with all that is in it, or a file"},
    {"remove-file", "DN REGEX", 2, 2, true, false, removeFile,
     "deletes the files of a directory whose whole name matches"},
    {"commit", "", 0, 0, false, true, commit, "does what was asked for since the last commit or abort"},
    {"abort", "", 0, 0, false, true, abort, "forgets what was asked for since the last commit or abort"},
    {"help", "[COMMAND|CLASS]", 0, 1, false, false, help, "explains the commands, one command or a class"},
    {"quit", "", 0, 0, false, true, quit, "ends the session; what isn't committed is forgotten"},
};

} // namespace

std::span<const Command> commands()
{
    return COMMANDS;
}

const Command* findCommand(std::string_view name)
{
    const auto* const found = std::ranges::find(COMMANDS, name, &Command::name);
    return found == std::end(COMMANDS) ? nullptr : found;
}

const Command& commandOf(const Words& words)
{
    const Command* const command = findCommand(words.front());
    if (command == nullptr)
    {
        throw CommandFailure(ExitCode::Usage,
                             "there is no command " + printable(words.front()) + ", see help");
    }
    const std::size_t arguments = words.size() - 1;
    if (arguments < command->fewest || arguments > command->most)
    {
        throw CommandFailure(ExitCode::Usage,
                             "usage: " + std::string(command->name) + " " + std::string(command->parameters));
    }
    return *command;
}

} // namespace zolhost::filem
