#include "filem/CommandLine.h"
#include "filem/Verb.h"
#include "support/Process.h"
#include "support/TemporaryTree.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <array>
#include <cstdlib>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sstream>

namespace
{

using namespace zolhost::filem;
using testing::Contains;
using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;
using testing::UnorderedElementsAreArray;
using Texts = std::vector<std::string>;

/// Gives what begins with its last argument, and notes its arguments.
constexpr const char* FAKE_FILEM = R"BASH(#!/bin/bash
{ printf '<%s>' "$@"; echo; } >>"${0%/*}/calls"
candidates=(logs/ logs/a.log 'logs/my file' "logs/it's" FileGroup= FileGroup=logs FileGroup=logs,FileInformation=a.log)
[[ " $* " != *' odd '* ]] || candidates=(plain "\$'a\\x1b'")
for candidate in "${candidates[@]}"; do
    [[ $candidate != "${@: -1}"* || $candidate == "${@: -1}" ]] || echo "$candidate"
done
)BASH";

Texts linesOf(const std::string& text)
{
    std::istringstream stream(text);
    Texts lines;
    for (std::string line; std::getline(stream, line);)
    {
        if (!line.empty())
        {
            lines.push_back(line);
        }
    }
    return lines;
}

/// Of the verbs that make sense on a command line and need no quotes there.
Texts verbNames()
{
    Texts names;
    for (const auto& verb : verbs())
    {
        if (verb.kind != VerbKind::Session)
        {
            names.emplace_back(verb.name);
            if (!verb.alias.empty() && verb.alias != "?")
            {
                names.emplace_back(verb.alias);
            }
        }
    }
    return names;
}

Texts optionNames(const CLI::App& parser)
{
    Texts names;
    for (const auto* const option : parser.get_options())
    {
        for (const auto& name : option->get_snames())
        {
            names.push_back("-" + name);
        }
        for (const auto& name : option->get_lnames())
        {
            names.push_back("--" + name);
        }
    }
    return names;
}

Texts optionNames(const std::string& name)
{
    const auto* const description = findVerb(name);
    const auto verb = description->make();
    return optionNames(*parserFor(*description, *verb));
}

class Completion : public testing::Test
{
protected:
    Completion()
    {
        tree.file("bin/filem", FAKE_FILEM);
        tree.chmod("bin/filem", 0755);
        tree.file("work/tree/node.xml");
        tree.directory("work/tree/a b");
    }

    std::string script(const std::string& shell, const std::string& name) const
    {
        return tree.file("scripts/" + name, zoltest::runProcess({FILEM_MANUAL_PROGRAM, shell}).out);
    }

    std::string run(const Texts& words) const
    {
        zoltest::ProcessSurroundings surroundings;
        surroundings.directory = tree.path("work");
        surroundings.environment = {{"HOME", tree.path("home")},
                                    {"XDG_CONFIG_HOME", tree.path("home")},
                                    {"XDG_DATA_HOME", tree.path("home")},
                                    {"NAME", "tree"},
                                    {"PATH", tree.path("bin") + ":/usr/bin:/bin"}};
        Texts command = {"/usr/bin/env"};
        command.insert(command.end(), words.begin(), words.end());
        const auto outcome = zoltest::runProcess(command, surroundings);
        EXPECT_EQ(outcome.exitCode, 0) << outcome.out << outcome.err;
        EXPECT_EQ(outcome.err, "");
        return outcome.out;
    }

    /// COMPREPLY for a line with these words.
    Texts bash(const std::string& line, const Texts& words) const
    {
        Texts command = {"bash", MANUAL_TESTS "/comp_reply.bash", script("bash", "filem"), line};
        command.insert(command.end(), words.begin(), words.end());
        return linesOf(run(command));
    }

    /// With the description of each behind a tab.
    Texts fishWithDescriptions(const std::string& line) const
    {
        return linesOf(run({"fish", "--no-config", "-c", "source $argv[1]; complete -C $argv[2]",
                            script("fish", "filem.fish"), line}));
    }

    Texts fish(const std::string& line) const
    {
        Texts lines = fishWithDescriptions(line);
        std::ranges::for_each(lines, [](auto& text) { text.erase(std::min(text.find('\t'), text.size())); });
        return lines;
    }

    /// The lines as a Tab completes each of them.
    Texts typed(const std::string& shell, const Texts& lines) const
    {
        Texts command = {"python3", MANUAL_TESTS "/type_and_tab.py", shell,
                         script(shell, shell == "zsh" ? "_filem" : "filem")};
        command.insert(command.end(), lines.begin(), lines.end());
        return linesOf(run(command));
    }

    /// What filem was asked.
    Texts calls() const { return linesOf(run({"sh", "-c", "cat \"${0%/*}/bin/calls\"", tree.path("bin")})); }

    zoltest::TemporaryTree tree;
};

TEST_F(Completion, IsWellFormedForEachShell)
{
    EXPECT_EQ(run({"bash", "-n", script("bash", "filem")}), "");
    EXPECT_EQ(run({"zsh", "-n", script("zsh", "_filem")}), "");
    EXPECT_EQ(run({"fish", "--no-config", "-n", script("fish", "filem.fish")}), "");
}

TEST_F(Completion, OfBashKnowsTheVerbsOfTheCommandLine)
{
    EXPECT_THAT(bash("filem ", {"filem", ""}), UnorderedElementsAreArray(verbNames()));
    EXPECT_THAT(bash("filem --plain l", {"filem", "--plain", "l"}), ElementsAre("ls"));
    EXPECT_THAT(bash("filem comm", {"filem", "comm"}), IsEmpty());
}

TEST_F(Completion, OfBashKnowsTheOptions)
{
    CommandLine line;
    EXPECT_THAT(bash("filem -", {"filem", "-"}), UnorderedElementsAreArray(optionNames(*globalParser(line))));
    for (const auto& verb : verbNames())
    {
        EXPECT_THAT(bash("filem " + verb + " -", {"filem", verb, "-"}),
                    UnorderedElementsAreArray(optionNames(verb)));
    }
    EXPECT_THAT(bash("filem rm -- -", {"filem", "rm", "--", "-"}), IsEmpty());
}

TEST_F(Completion, OfBashGivesFilesAndFoldersWhereOptionsTakeThem)
{
    EXPECT_THAT(bash("filem --root tree/", {"filem", "--root", "tree/"}), ElementsAre("tree/a\\ b/"));
    EXPECT_THAT(bash("filem --root=tr", {"filem", "--root", "=", "tr"}), ElementsAre("tree/"));
    EXPECT_THAT(bash("filem --config tree/", {"filem", "--config", "tree/"}),
                testing::UnorderedElementsAre("tree/a\\ b/", "tree/node.xml"));
    EXPECT_THAT(bash("filem -c tr", {"filem", "-c", "tr"}), IsEmpty());
}

TEST_F(Completion, OfBashGivesChoices)
{
    EXPECT_THAT(bash("filem find --type ", {"filem", "find", "--type", ""}), ElementsAre("d", "f"));
    EXPECT_THAT(bash("filem rm -m l", {"filem", "rm", "-m", "l"}), IsEmpty());
}

TEST_F(Completion, OfBashAsksForPlaces)
{
    EXPECT_THAT(bash("filem ls logs/", {"filem", "ls", "logs/"}),
                ElementsAre("logs/a.log", "logs/my\\ file", "logs/it\\'s"));
    EXPECT_THAT(calls(), ElementsAre("<__complete><--><ls><logs/>"));
}

TEST_F(Completion, OfBashReplacesWhatStandsBehindAnEqualsSign)
{
    EXPECT_THAT(bash("filem ls FileGroup=", {"filem", "ls", "FileGroup", "="}),
                ElementsAre("logs", "logs,FileInformation=a.log"));
    EXPECT_THAT(bash("filem ls FileGroup=logs,F", {"filem", "ls", "FileGroup", "=", "logs,F"}),
                ElementsAre("logs,FileInformation=a.log"));
    EXPECT_THAT(calls(),
                ElementsAre("<__complete><--><ls><FileGroup=>", "<__complete><--><ls><FileGroup=logs,F>"));
}

TEST_F(Completion, OfBashPassesOnWhichTreeItIs)
{
    bash("filem --root ~ --plain --library=x.so --audit audit --policies \"$NAME/p q\" ls -l b lo",
         {"filem", "--root", "~", "--plain", "--library", "=", "x.so", "--audit", "audit", "--policies",
          "\"$NAME/p q\"", "ls", "-l", "b", "lo"});
    EXPECT_THAT(calls(),
                ElementsAre("<--root><" + tree.path("home") +
                            "><--library=x.so><--policies><tree/p q><__complete><--><ls><-l><b><lo>"));
}

TEST_F(Completion, OfEachShellLeavesOutNamesThatCanNotStandInALine)
{
    EXPECT_THAT(bash("filem ls odd ", {"filem", "ls", "odd", ""}), ElementsAre("plain"));
    EXPECT_THAT(fish("filem ls odd "), ElementsAre("plain"));
    EXPECT_THAT(typed("zsh", {"filem ls odd "}), ElementsAre("filem ls odd plain "));
}

TEST_F(Completion, OfEachShellShowsTheTree)
{
    tree.file("work/tree/logs/a.log");
    tree.directory("work/tree/logs/my directory");
    const std::string command = FILEM_PROGRAM " --root tree ls logs/";
    EXPECT_THAT(bash(command, {FILEM_PROGRAM, "--root", "tree", "ls", "logs/"}),
                ElementsAre("logs/a.log", "logs/my\\ directory/"));
    EXPECT_THAT(fish(command), ElementsAre("logs/a.log", "logs/my directory/"));
    EXPECT_THAT(typed("zsh", {command + "m"}), ElementsAre(command + "my\\ directory/"));
}

TEST_F(Completion, OfBashRunsNothingThatIsTyped)
{
    bash("filem ls $(touch ran) `touch ran` ", {"filem", "ls", "$(touch ran)", "`touch ran`", ""});
    EXPECT_FALSE(tree.exists("work/ran"));
}

TEST_F(Completion, OfBashGoesOnInAQuoteThatBeginsInAWord)
{
    EXPECT_THAT(typed("bash", {"filem ls logs/'m"}), ElementsAre("filem ls logs/'my file' "));
}

constexpr std::array TYPED_LINES = {
    std::pair("filem mkd", "filem mkdir "),
    std::pair("filem --pla", "filem --plain "),
    std::pair("filem --root tr", "filem --root tree/"),
    std::pair("filem --root=tree/a", "filem --root=tree/a\\ b/"),
    std::pair("filem ls --lo", "filem ls --long "),
    std::pair("filem ls logs/m", "filem ls logs/my\\ file "),
    std::pair("filem ls 'logs/m", "filem ls 'logs/my file' "),
    std::pair("filem ls \"logs/i", "filem ls \"logs/it's\" "),
    std::pair("filem ls FileGroup=logs,", "filem ls FileGroup=logs,FileInformation=a.log "),
    std::pair("filem --root tree ls l", "filem --root tree ls logs/"),
};

class TypedCompletion : public Completion, public testing::WithParamInterface<std::string>
{};

TEST_P(TypedCompletion, CompletesLinesAtATerminal)
{
    Texts lines;
    Texts completed;
    for (const auto& [line, whole] : TYPED_LINES)
    {
        lines.emplace_back(line);
        completed.emplace_back(whole);
    }
    EXPECT_THAT(typed(GetParam(), lines), ElementsAreArray(completed));
    EXPECT_THAT(calls(), Contains("<--root><tree><__complete><--><ls><l>"));
}

INSTANTIATE_TEST_SUITE_P(Of, TypedCompletion, testing::Values("bash", "zsh"),
                         [](const auto& shell) { return shell.param; });

TEST_F(Completion, OfZshKnowsVerbsAndOptions)
{
    Texts lines;
    Texts completed;
    const auto add = [&](const std::string& command, const std::string& word) {
        lines.push_back(command + word.substr(0, word.size() - 1));
        completed.push_back(command + word + " ");
    };
    for (const auto* const verb : {"tree", "find", "create", "rmtree", "show", "action"})
    {
        add("filem ", verb);
    }
    add("filem rm ", "--through-links");
    add("filem rm ", "--dry-run");
    add("filem delete ", "--yes");
    EXPECT_THAT(typed("zsh", lines), ElementsAreArray(completed));
}

TEST_F(Completion, OfFishKnowsTheVerbsOfTheCommandLine)
{
    EXPECT_THAT(fish("filem "), UnorderedElementsAreArray(verbNames()));
    EXPECT_THAT(fishWithDescriptions("filem --plain l"), ElementsAre("ls\tlists directories and files"));
}

TEST_F(Completion, OfFishKnowsTheOptions)
{
    CommandLine line;
    EXPECT_THAT(fish("filem -"), UnorderedElementsAreArray(optionNames(*globalParser(line))));
    for (const std::string verb : {"ls", "find", "rm", "create"})
    {
        EXPECT_THAT(fish("filem --plain " + verb + " -"), UnorderedElementsAreArray(optionNames(verb)));
    }
}

TEST_F(Completion, OfFishGivesFilesAndFoldersWhereOptionsTakeThem)
{
    EXPECT_THAT(fish("filem --root tree/"), ElementsAre("tree/a b/"));
    EXPECT_THAT(fish("filem --config tree/"), ElementsAre("tree/a b/", "tree/node.xml"));
    EXPECT_THAT(fish("filem find --type "), ElementsAre("d", "f"));
}

TEST_F(Completion, OfFishAsksForPlacesAndPassesOnWhichTreeItIs)
{
    EXPECT_THAT(fish("filem --root ~ --plain --library=x.so --audit audit --policies $NAME/p ls -l b logs/m"),
                ElementsAre("logs/my file"));
    EXPECT_THAT(fish("filem ls 'logs/m"), ElementsAre("logs/my file"));
    EXPECT_THAT(calls(),
                ElementsAre("<--root><" + tree.path("home") +
                                "><--library=x.so><--policies><tree/p><__complete><--><ls><-l><b><logs/m>",
                            "<__complete><--><ls><logs/m>"));
}

} // namespace
