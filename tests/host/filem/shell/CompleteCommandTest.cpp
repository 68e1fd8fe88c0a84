#include "../Filem.h"

#include <gtest/gtest.h>
#include <string>

namespace
{

/// The hidden command that the completions of shells call.
class CompleteCommand : public Filem
{
protected:
    std::string candidatesFor(const Texts& words) const
    {
        Texts command = {"__complete", "--"};
        command.insert(command.end(), words.begin(), words.end());
        const auto outcome = filem(command);
        EXPECT_EQ(outcome.exitCode, 0);
        EXPECT_EQ(outcome.err, "");
        return outcome.out;
    }
};

} // namespace

TEST_F(CompleteCommand, GivesVerbsThatStandAlone)
{
    EXPECT_EQ(candidatesFor({"rm"}), "rm\nrmdir\nrmtree\n");
    EXPECT_EQ(candidatesFor({"comm"}), "");
}

TEST_F(CompleteCommand, GivesPlacesWithoutQuotes)
{
    tree.file("my dir/a file");
    EXPECT_EQ(candidatesFor({"ls", ""}), "my dir/\n");
    EXPECT_EQ(candidatesFor({"ls", "my dir/"}), "my dir/a file\n");
}

TEST_F(CompleteCommand, GivesNamesWithControlCharactersAsAShellReadsThem)
{
    tree.file("d/new\nline");
    EXPECT_EQ(candidatesFor({"ls", "d/"}), "$'d/new\\nline'\n");
}

TEST_F(CompleteCommand, GivesOptionsOfTheProgramAndOfVerbs)
{
    EXPECT_EQ(candidatesFor({"--keep"}), "--keep-going\n");
    EXPECT_EQ(candidatesFor({"rmtree", "--force"}), "--force-root\n");
}

TEST_F(CompleteCommand, NeedsNoTreeForVerbsAndOptions)
{
    EXPECT_EQ(run({"__complete", "--", "rmt"}), (Outcome{0, "rmtree\n", ""}));
    EXPECT_EQ(run({"--root", tree.path("none"), "__complete", "--", "rmtree", "--y"}),
              (Outcome{0, "--yes\n", ""}));
}

TEST_F(CompleteCommand, IsSilentWhateverIsWrong)
{
    const Outcome silence{0, "", ""};
    EXPECT_EQ(run({"--root", tree.path("none"), "__complete", "--", "ls", ""}), silence);
    EXPECT_EQ(run({"--library", "/none", "--root", tree.path(), "__complete", "--", "ls", ""}), silence);
    EXPECT_EQ(run({"--bogus", "__complete", "--", "ls", ""}), silence);
    EXPECT_EQ(run({"__complete", "--", "nonsense", ""}), silence);
    EXPECT_EQ(run({"__complete", "--"}), silence);
    EXPECT_EQ(run({"__complete"}), silence);
    EXPECT_EQ(filem({"__complete", "--", "ls", "none/none/"}), silence);
}

TEST_F(CompleteCommand, IsNoNameThatOthersCannotUse)
{
    EXPECT_EQ(filem({"ls", "__complete"}).exitCode, 4);
}
