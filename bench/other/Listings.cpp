#include "other/Listings.h"

#include "rig/PipedProcess.h"
#include "rig/Tasks.h"
#include "rig/Timing.h"
#include "sftp/SftpClient.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cstring>
#include <stdexcept>

namespace zolbench
{

namespace
{

struct Command
{
    std::string name;
    std::vector<std::string> words;
    std::string input;
};

struct Duration
{
    double firstLine;
    double whole;
};

const std::string reference = "ls -lU";

std::vector<Command> commandsFor(const std::string& root, const std::string& directory,
                                 const std::filesystem::path& filem)
{
    const auto name = std::filesystem::path(directory).filename().string();
    std::vector<Command> commands{
        {"filem ls", {filem.string(), "--root", root, "ls", name}, ""},
        {"filem ls -l", {filem.string(), "--root", root, "ls", "-l", name}, ""},
        {reference, {"ls", "-lU", directory}, ""},
        {"find -printf", {"find", directory, "-type", "f", "-printf", "%s %c %f\n"}, ""},
    };
    const std::string client = "/usr/bin/sftp";
    const auto server = SftpClient::installedServer();
    if (server && std::filesystem::exists(client))
    {
        commands.push_back(
            {"sftp ls -l", {client, "-q", "-b", "-", "-D", server->string()}, "ls -l " + directory + '\n'});
    }
    return commands;
}

Duration run(const Command& command, std::size_t entries)
{
    using Clock = std::chrono::steady_clock;
    using Milliseconds = std::chrono::duration<double, std::milli>;
    const auto begin = Clock::now();
    Duration duration{};
    std::size_t lines = 0;
    {
        PipedProcess process(command.words);
        process.write(command.input.data(), command.input.size());
        process.closeInput();
        std::array<char, 65536> buffer; // NOLINT(cppcoreguidelines-pro-type-member-init)
        while (const std::size_t got = process.read(buffer.data(), buffer.size()))
        {
            const auto newLines =
                static_cast<std::size_t>(std::count(buffer.data(), buffer.data() + got, '\n'));
            if (lines == 0 && newLines > 0)
            {
                duration.firstLine = Milliseconds(Clock::now() - begin).count();
            }
            lines += newLines;
        }
    }
    duration.whole = Milliseconds(Clock::now() - begin).count();
    if (lines < entries)
    {
        throw std::runtime_error(command.name + " lists " + std::to_string(lines) + " lines");
    }
    return duration;
}

} // namespace

std::vector<Listing> measureListings(const Stage& stage, const std::filesystem::path& filem,
                                     std::size_t entries, std::size_t repetitions)
{
    const Task task = filesIn(stage.root(), entries);
    stage.fill(task);
    const std::vector<Command> commands = commandsFor(stage.root(), task.path, filem);
    Times first;
    Times whole;
    for (std::size_t repetition = 0; repetition < repetitions; ++repetition)
    {
        for (const Command& command : commands)
        {
            const Duration duration = run(command, entries);
            first[command.name].push_back(duration.firstLine);
            whole[command.name].push_back(duration.whole);
        }
    }
    std::vector<Listing> listings;
    for (const Command& command : commands)
    {
        listings.push_back({command.name, entries, median(first[command.name]), median(whole[command.name]),
                            ratio(whole, command.name, reference)});
    }
    return listings;
}

} // namespace zolbench
