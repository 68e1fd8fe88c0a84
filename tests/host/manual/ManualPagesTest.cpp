#include "engine/MoModel.h"
#include "filem/CommandLine.h"
#include "filem/ExitCode.h"
#include "filem/Verb.h"
#include "filem/output/LineFilter.h"
#include "filem/verbs/Help.h"
#include "support/Process.h"
#include "support/TemporaryTree.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sstream>

namespace
{

using namespace zolhost::filem;
using testing::ContainsRegex;
using testing::HasSubstr;

std::string made(const std::string& page)
{
    const auto outcome = zoltest::runProcess({FILEM_MANUAL_PROGRAM, page});
    EXPECT_EQ(outcome.exitCode, 0);
    EXPECT_EQ(outcome.err, "");
    return outcome.out;
}

/// A page as mandoc shows it, its lines without margins and one blank in place of several.
class Shown
{
public:
    explicit Shown(const std::string& page)
    {
        const zoltest::TemporaryTree tree;
        const auto outcome = zoltest::runProcess(
            {"/usr/bin/mandoc", "-T", "ascii", "-O", "width=200", tree.file(page, made(page))});
        std::istringstream lines(outcome.out);
        for (std::string line; std::getline(lines, line);)
        {
            add(line);
        }
    }

    const std::string& text() const { return _text; }

    /// In this part of the page, what stands between the line that begins with this term and the next empty
    /// one.
    std::string entry(const std::string& part, const std::string& term) const
    {
        const auto head = _text.find("\n" + part + "\n");
        const auto begin =
            std::min(_text.find("\n" + term + " ", head), _text.find("\n" + term + "\n", head));
        return begin == std::string::npos ? "" : _text.substr(begin, _text.find("\n\n", begin + 1) - begin);
    }

private:
    void add(const std::string& line)
    {
        std::string plain;
        for (const char character : line)
        {
            if (character == '\b')
            {
                // it prints a letter again to make it bold, or on a line
                plain.pop_back();
            }
            else if (character != ' ' || (!plain.empty() && plain.back() != ' '))
            {
                plain += character;
            }
        }
        _text += plain + "\n";
    }

    std::string _text = "\n";
};

std::vector<std::string> namesOf(const CLI::Option& option)
{
    std::vector<std::string> names;
    std::ranges::transform(option.get_snames(), std::back_inserter(names),
                           [](const auto& name) { return "-" + name; });
    std::ranges::transform(option.get_lnames(), std::back_inserter(names),
                           [](const auto& name) { return "--" + name; });
    return names;
}

void expectParameters(const std::string& entry, const CLI::App& parser)
{
    for (const auto* const option : parser.get_options())
    {
        if (option->get_positional())
        {
            EXPECT_THAT(entry, HasSubstr("\n" + option->get_name(true)));
        }
        else if (option != parser.get_help_ptr())
        {
            const auto names = namesOf(*option);
            EXPECT_THAT(entry,
                        HasSubstr("\n" + names.front() + (names.size() > 1 ? ", " + names.back() : "")));
        }
        EXPECT_THAT(entry, HasSubstr(option == parser.get_help_ptr() ? "" : option->get_description()));
    }
}

TEST(ManualPages, AreCleanForMandoc)
{
    const zoltest::TemporaryTree tree;
    for (const std::string page : {"filem.1", "filem-config.5"})
    {
        EXPECT_EQ(
            zoltest::runProcess({"/usr/bin/mandoc", "-T", "lint", "-W", "all", tree.file(page, made(page))}),
            zoltest::ProcessOutcome({0, "", ""}))
            << page;
    }
}

TEST(ManualPages, OfTheCommandHasEveryOptionInFrontOfAVerb)
{
    CommandLine line;
    const std::string text = Shown("filem.1").text();
    const auto begin = text.find("\nThe options in front of a command:\n");
    ASSERT_NE(begin, std::string::npos);
    expectParameters(text.substr(begin, text.find("\nPlaces\n") - begin), *globalParser(line));
}

TEST(ManualPages, OfTheCommandHasEveryVerbWithItsAliasOptionsAndArguments)
{
    const Shown page("filem.1");
    for (const auto& description : verbs())
    {
        SCOPED_TRACE(description.name);
        const auto verb = description.make();
        const std::string entry =
            page.entry(std::string(headOf(description.kind)), std::string(description.name));
        EXPECT_THAT(entry, ContainsRegex(std::string(description.summary).substr(1)));
        if (!description.alias.empty())
        {
            EXPECT_THAT(entry, HasSubstr("The same as " + std::string(description.alias) + "."));
        }
        EXPECT_THAT(entry, HasSubstr(std::string(description.operations)));
        expectParameters(entry, *parserFor(description, *verb));
    }
}

TEST(ManualPages, OfTheCommandHasEveryFilter)
{
    const Shown page("filem.1");
    for (const auto& filter : filters())
    {
        EXPECT_THAT(page.entry("Filters", filter.name), HasSubstr(filter.summary));
    }
}

TEST(ManualPages, OfTheCommandHasEveryClassWithItsAttributesAndActions)
{
    const Shown page("filem.1");
    for (const auto& moClass : zolhost::moClasses())
    {
        SCOPED_TRACE(moClass.name);
        const std::string entry = page.entry("Classes of objects", std::string(moClass.name));
        EXPECT_THAT(entry, HasSubstr(std::string(moClass.help).substr(1)));
        for (const auto& attribute : moClass.attributes)
        {
            EXPECT_THAT(entry, HasSubstr("\n" + std::string(attribute.name)));
            EXPECT_THAT(entry, HasSubstr(std::string(attribute.help)));
            for (const auto& member : attribute.members)
            {
                EXPECT_THAT(entry, HasSubstr("\n" + std::string(member.name)));
            }
        }
        for (const auto& action : moClass.actions)
        {
            EXPECT_THAT(entry,
                        HasSubstr(std::string(action.name) + "(" + std::string(action.parameter) + ")"));
        }
    }
}

TEST(ManualPages, OfTheCommandHasEveryExitCode)
{
    const std::string text = Shown("filem.1").text();
    for (const auto& [code, meaning] : EXIT_CODES)
    {
        EXPECT_THAT(text, HasSubstr("\n" + std::to_string(static_cast<int>(code)) + " " +
                                    std::string(meaning) + "\n"));
    }
}

TEST(ManualPages, ShowBackslashesAndQuotes)
{
    EXPECT_THAT(Shown("filem.1").text(), HasSubstr("--matching 'core\\..*' cores\n"));
    EXPECT_THAT(Shown("filem-config.5").text(), HasSubstr("\n{\"FileGroupPolicy\": [\n"));
}

TEST(ManualPages, OfTheConfigurationTellsDocumentsAndVariables)
{
    const Shown page("filem-config.5");
    EXPECT_THAT(page.text(), HasSubstr("element ZolFileManagementComponent exactly once"));
    EXPECT_THAT(page.text(), HasSubstr("<internal_root>/var/node/files</internal_root>"));
    for (const std::string variable :
         {"ZOL_LOG_LEVEL", "ZOL_LOG_FILE", "PAGER", "NO_COLOR", "XDG_STATE_HOME"})
    {
        EXPECT_NE(page.entry("ENVIRONMENT", variable), "") << variable;
    }
}

TEST(ManualProgram, RefusesAPageThatThereIsNot)
{
    for (const auto& arguments : {std::vector<std::string>{}, {"filem.2"}, {"bash", "zsh"}})
    {
        std::vector<std::string> words = {FILEM_MANUAL_PROGRAM};
        words.insert(words.end(), arguments.begin(), arguments.end());
        const auto outcome = zoltest::runProcess(words);
        EXPECT_EQ(outcome.exitCode, 2);
        EXPECT_EQ(outcome.out, "");
        EXPECT_THAT(outcome.err, HasSubstr("usage: filem-manual"));
    }
}

} // namespace
