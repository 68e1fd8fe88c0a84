#include "filem/CompleteCommand.h"

#include "engine/RootDirectory.h"
#include "filem/HostSetup.h"
#include "filem/Session.h"
#include "filem/output/PrintableText.h"
#include "filem/output/Quoting.h"
#include "filem/shell/Candidates.h"

#include <algorithm>
#include <fcntl.h>
#include <iostream>
#include <optional>
#include <string_view>
#include <unistd.h>

namespace zolhost::filem
{

namespace
{

constexpr std::string_view COMPLETE = "__complete";

} // namespace

bool isCompleteCommand(const CommandLine& line)
{
    return line.command.size() > 2 && line.command[0] == COMPLETE && line.command[1] == "--";
}

bool asksForCandidates(const Words& arguments)
{
    const auto complete = std::ranges::find(arguments, COMPLETE);
    return complete != arguments.end() && std::none_of(arguments.begin(), complete, findVerb);
}

void printCandidates(const CommandLine& line, std::ostream& out)
{
    std::optional<Host> host;
    std::optional<Session> session;
    const auto openSession = [&]() -> Session& {
        const auto setup = setupOf(line);
        host.emplace(setup);
        const std::string root = rootDirectoryOf(*host, setup.configuration);
        return session.emplace(*host, root, Session::Surroundings(), out, std::cerr);
    };
    const Words words(line.command.begin() + 2, line.command.end());
    auto candidates = candidatesFor(words, CommandKind::Alone, openSession);
    candidates.sort();
    for (const auto& candidate : candidates.list)
    {
        const bool isPrintable = printable(candidate.word) == candidate.word;
        out << (isPrintable ? candidate.word : shellQuoted(candidate.word)) << '\n';
    }
}

void silenceErrors()
{
    const int silence = open("/dev/null", O_WRONLY | O_CLOEXEC);
    dup2(silence, STDERR_FILENO);
    close(silence);
}

} // namespace zolhost::filem
