#include "filem/shell/Completion.h"

#include "engine/ConfigurationText.h"
#include "filem/Session.h"
#include "filem/Tokenizer.h"
#include "filem/output/Interrupt.h"
#include "filem/output/PrintableText.h"
#include "support/LoadedLibrary.h"
#include "support/TemporaryTree.h"

#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sstream>
#include <string>
#include <vector>

using namespace zolhost::filem;
using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::IsSupersetOf;
using testing::Not;
using zolhost::Host;
using zoltest::LoadedLibrary;
using zoltest::TemporaryTree;

namespace
{

using Texts = std::vector<std::string>;

class CompletionTest : public testing::Test
{
protected:
    CompletionTest()
    {
        tree.file("logs/a.log");
        tree.file("logs/b.log");
        tree.file("logs/archive/old");
        tree.directory("tmp");
        tree.file("in the root");
    }

    Completion at(const std::string& textToCursor) { return complete(textToCursor, session); }

    /// The whole text to the cursor afterwards.
    std::string after(const std::string& textToCursor)
    {
        const auto completion = at(textToCursor);
        return textToCursor.substr(0, completion.start) + completion.text;
    }

    Texts words(const std::string& textToCursor)
    {
        Texts result;
        for (const auto& candidate : at(textToCursor).candidates)
        {
            result.push_back(candidate.word);
        }
        return result;
    }

    TemporaryTree tree;
    Host host{{LoadedLibrary::path(), zolhost::configurationFor(tree.path()), {}}};
    std::ostringstream out;
    std::ostringstream err;
    Session session{host, tree.path(), {.mode = Session::Mode::Shell}, out, err};
};

} // namespace

TEST_F(CompletionTest, FinishesAVerbThatIsClear)
{
    EXPECT_EQ(after("resta"), "restage ");
    EXPECT_EQ(after("ls tmp; resta"), "ls tmp; restage ");
}

TEST_F(CompletionTest, KnowsAliases)
{
    EXPECT_THAT(words("ex"), ElementsAre("exists", "exit"));
    EXPECT_EQ(after("prev"), "preview ");
}

TEST_F(CompletionTest, LeavesAWordThatNothingBeginsWith)
{
    EXPECT_EQ(after("nonsense"), "nonsense");
    EXPECT_THAT(words("nonsense lo"), IsEmpty());
}

TEST_F(CompletionTest, OffersFiltersBehindABar)
{
    EXPECT_THAT(words("ls | "), ElementsAre("count", "except", "match"));
    EXPECT_EQ(after("ls | match a | c"), "ls | match a | count ");
    EXPECT_THAT(words("ls | match lo"), IsEmpty());
}

TEST_F(CompletionTest, OffersOptionsOfTheVerb)
{
    EXPECT_EQ(after("rmtree --fo"), "rmtree --force-root ");
    EXPECT_THAT(words("ls -"), IsSupersetOf({"--all", "--json", "--long", "--recursive", "--help"}));
    EXPECT_THAT(words("ls -"), Not(Contains("--force-root")));
}

TEST_F(CompletionTest, OffersNoOptionsBehindTwoDashes)
{
    EXPECT_THAT(words("ls -- -"), IsEmpty());
}

TEST_F(CompletionTest, TakesTheWordBehindAnOptionForItsValue)
{
    EXPECT_THAT(words("find --type "), ElementsAre("d", "f"));
    EXPECT_THAT(words("find --type=f"), ElementsAre("--type=f"));
    EXPECT_THAT(words("tree -L lo"), IsEmpty());
    EXPECT_EQ(after("tree -L 2 lo"), "tree -L 2 logs/");
    EXPECT_EQ(after("tree -L2 lo"), "tree -L2 logs/");
    EXPECT_EQ(after("tree --level=2 lo"), "tree --level=2 logs/");
    EXPECT_EQ(after("ls -lR lo"), "ls -lR logs/");
}

TEST_F(CompletionTest, GoesDownPathsAtAnyDepth)
{
    EXPECT_EQ(after("ls lo"), "ls logs/");
    EXPECT_EQ(after("ls logs/ar"), "ls logs/archive/");
    EXPECT_EQ(after("ls logs/archive/o"), "ls logs/archive/old ");
    EXPECT_EQ(after("ls /logs/archive/o"), "ls /logs/archive/old ");
    EXPECT_THAT(words("ls logs/"), ElementsAre("logs/a.log", "logs/archive/", "logs/b.log"));
    EXPECT_THAT(words("ls logs/none/"), IsEmpty());
}

TEST_F(CompletionTest, BeginsWhereOneIs)
{
    session.run({"cd", "logs"});
    EXPECT_EQ(after("ls ar"), "ls archive/");
    EXPECT_EQ(after("ls .."), "ls ../");
    EXPECT_EQ(after("ls ../tm"), "ls ../tmp/");
    EXPECT_EQ(after("ls /tm"), "ls /tmp/");
}

TEST_F(CompletionTest, ShowsTheLastPartOnly)
{
    EXPECT_EQ(at("ls logs/archive/o").candidates,
              (std::vector<Candidate>{{"logs/archive/old", "old", true}}));
    EXPECT_EQ(at("ls logs/ar").candidates, (std::vector<Candidate>{{"logs/archive/", "archive/", false}}));
}

TEST_F(CompletionTest, LeavesOutFilesOfTheRootWhichAreNoObjects)
{
    EXPECT_THAT(words("ls "), ElementsAre("logs/", "tmp/"));
}

TEST_F(CompletionTest, OffersDirectoriesAloneWhereFilesMakeNoSense)
{
    for (const auto* const verb : {"cd", "mkdir", "rmdir", "rmtree", "tree", "find", "count",
                                   "rm --matching x", "rm -e x", "why rmdir"})
    {
        EXPECT_THAT(words(std::string(verb) + " logs/"), ElementsAre("logs/archive/")) << verb;
    }
    for (const auto* const verb : {"ls", "stat", "get", "rm", "delete", "action", "exists", "why rm"})
    {
        EXPECT_THAT(words(std::string(verb) + " logs/"), Contains("logs/a.log")) << verb;
    }
}

TEST_F(CompletionTest, OffersEveryPlaceOfAVerbThatTakesMany)
{
    EXPECT_EQ(after("rm logs/a.log logs/b"), "rm logs/a.log logs/b.log ");
    EXPECT_THAT(words("cd logs t"), IsEmpty());
}

TEST_F(CompletionTest, SeesTheTreeAsTheTransactionDoes)
{
    session.run({"mkdir", "logs/new"});
    session.run({"rm", "logs/a.log"});
    session.run({"rmtree", "tmp"});
    EXPECT_THAT(words("ls logs/"), ElementsAre("logs/archive/", "logs/b.log", "logs/new/"));
    EXPECT_EQ(after("ls t"), "ls t");
}

TEST_F(CompletionTest, GoesDownDirectoriesThatAreStaged)
{
    session.run({"mkdir", "-p", "new/inner/most"});
    EXPECT_EQ(after("cd n"), "cd new/");
    EXPECT_EQ(after("cd new/i"), "cd new/inner/");
    EXPECT_EQ(after("cd new/inner/"), "cd new/inner/most/");
}

TEST_F(CompletionTest, GoesDownNames)
{
    EXPECT_EQ(after("ls FileG"), "ls FileGroup=");
    EXPECT_EQ(after("ls FileGroup=l"), "ls FileGroup=logs");
    EXPECT_THAT(words("ls FileGroup=logs,"),
                ElementsAre("FileGroup=logs,FileGroup=", "FileGroup=logs,FileInformation="));
    EXPECT_THAT(words("ls FileGroup=logs,FileInformation="),
                ElementsAre("FileGroup=logs,FileInformation=a.log", "FileGroup=logs,FileInformation=b.log"));
    EXPECT_EQ(after("stat FileGroup=logs,FileGroup=archive,FileInformation="),
              "stat FileGroup=logs,FileGroup=archive,FileInformation=old ");
    EXPECT_EQ(after("cd FileGroup=logs,"), "cd FileGroup=logs,FileGroup=");
}

TEST_F(CompletionTest, GoesDownNamesFromTheRootWhereverOneIs)
{
    session.run({"cd", "logs"});
    EXPECT_EQ(after("ls FileGroup=t"), "ls FileGroup=tmp");
}

TEST_F(CompletionTest, KnowsTheNameOfTheRoot)
{
    const std::string root = "ManagedElement=1,SystemFunctions=1,FileM=1";
    EXPECT_EQ(after("ls Man"), "ls " + root);
    EXPECT_EQ(after("ls ManagedElement=1,Sys"), "ls " + root);
    EXPECT_EQ(after("ls " + root + ",FileGroup=l"), "ls " + root + ",FileGroup=logs");
    EXPECT_EQ(after("get " + root + ",FileMC"), "get " + root + ",FileMConfigData=");
    EXPECT_EQ(after("get FileMConfigData="), "get FileMConfigData=1 ");
}

TEST_F(CompletionTest, OffersWhatTheClassOfThePlaceHas)
{
    EXPECT_THAT(words("get logs "),
                ElementsAre("fileGroupId", "files", "internalHousekeeping", "reservedByPolicy"));
    EXPECT_EQ(after("get logs/a.log s"), "get logs/a.log size ");
    EXPECT_EQ(after("get logs files re"), "get logs files reservedByPolicy ");
    EXPECT_THAT(words("action logs "), ElementsAre("remove", "removeFile"));
    EXPECT_THAT(words("action logs/a.log "), ElementsAre("remove"));
    EXPECT_THAT(words("count logs "), ElementsAre("FileGroup", "FileInformation"));
    EXPECT_THAT(words("count / "), ElementsAre("FileGroup"));
    EXPECT_THAT(words("get ../.. "), IsEmpty());
}

TEST_F(CompletionTest, OffersVerbsToVerbsAboutVerbs)
{
    EXPECT_THAT(words("why "), ElementsAre("create", "delete", "mkdir", "rm", "rmdir", "rmtree"));
    EXPECT_EQ(after("help rest"), "help restage ");
    EXPECT_EQ(after("help FileI"), "help FileInformation ");
}

TEST_F(CompletionTest, StopsAtWhatCandidatesHaveInCommon)
{
    tree.file("tmp/server-1.log");
    tree.file("tmp/server-2.log");
    EXPECT_EQ(after("ls tmp/s"), "ls tmp/server-");
    EXPECT_EQ(after("ls tmp/server-"), "ls tmp/server-");
}

TEST_F(CompletionTest, CutsNoCharacterInTwo)
{
    tree.file("tmp/x\u00e4");
    tree.file("tmp/x\u00e5");
    EXPECT_EQ(after("ls tmp/x"), "ls tmp/x");
}

TEST_F(CompletionTest, QuotesWhatNeedsIt)
{
    tree.file("tmp/a b");
    EXPECT_EQ(after("ls tmp/a"), "ls 'tmp/a b' ");
    EXPECT_EQ(after("ls tmp/a\\ "), "ls 'tmp/a b' ");
    EXPECT_EQ(after("ls 'tmp/a"), "ls 'tmp/a b' ");
    EXPECT_EQ(after("ls \"tmp/a"), "ls \"tmp/a b\" ");
    EXPECT_EQ(after("ls $'tmp/a"), "ls $'tmp/a b' ");
    EXPECT_EQ(after("ls tmp/'a "), "ls 'tmp/a b' ");
}

TEST_F(CompletionTest, LeavesQuotesOpenWhereMoreIsToCome)
{
    tree.file("my dir/one");
    tree.file("my dir/one more");
    EXPECT_EQ(after("ls my"), "ls 'my dir/");
    EXPECT_EQ(after("ls 'my dir/"), "ls 'my dir/one");
    EXPECT_EQ(after("ls \"my"), "ls \"my dir/");
    EXPECT_EQ(after("ls 'lo"), "ls 'logs/");
}

TEST_F(CompletionTest, GivesWordsThatAreReadBackAsTheName)
{
    const Texts names = {"it's", "a\"b$c`d\\", "new\nline", "esc\x1b[2J", "bad\xff", "#x", "a|b;c", "~"};
    for (const auto& name : names)
    {
        const TemporaryTree own;
        own.file("d/" + name);
        std::filesystem::rename(own.path("d"), tree.path("d"));
        for (const auto* const quote : {"", "'", "\"", "$'"})
        {
            const std::string text = after("ls " + std::string(quote) + "d/");
            EXPECT_EQ(printable(text), text);
            const auto tokens = tokenize(text);
            ASSERT_EQ(tokens.size(), 2U) << text;
            EXPECT_EQ(session.place(tokens.back().text).path(), tree.path("d/" + name)) << text;
            session.renewReads();
        }
        std::filesystem::rename(tree.path("d"), own.path("d"));
    }
}

TEST_F(CompletionTest, ShowsNothingThatATerminalObeys)
{
    tree.file("tmp/x\x1b]0;evil\x07");
    EXPECT_EQ(at("ls tmp/").candidates.front().shown, R"($'x\x1b]0;evil\x07')");
    EXPECT_EQ(after("ls tmp/"), R"(ls $'tmp/x\x1b]0;evil\x07' )");
}

TEST_F(CompletionTest, OffersNothingInACommentOrBehindABackslash)
{
    EXPECT_EQ(after("ls # lo"), "ls # lo");
    EXPECT_EQ(after("ls lo\\"), "ls lo\\");
    EXPECT_EQ(after("ls $'\\q"), "ls $'\\q");
}

TEST_F(CompletionTest, FindsFilesByTheirNameOnDiskAndDirectoriesByTheirValue)
{
    tree.file("tmp/a=b");
    tree.directory("c+d");
    EXPECT_EQ(after("ls tmp/a"), "ls tmp/a=b ");
    EXPECT_EQ(after("ls c"), "ls 'c\\2Bd/");
    EXPECT_EQ(after("ls c+"), "ls c+d/");
    EXPECT_EQ(after("ls tmp/a?"), "ls 'tmp/a?\?b' ");
}

TEST_F(CompletionTest, OffersNoNameThatAnObjectsNameCannotHold)
{
    tree.file("tmp/a,b");
    EXPECT_THAT(words("ls FileGroup=tmp,FileInformation="),
                ElementsAre("FileGroup=tmp,FileInformation=a?\?b"));
}

TEST_F(CompletionTest, StopsLookingAtVeryMany)
{
    for (int i = 0; i < 10'050; ++i)
    {
        tree.file("tmp/file" + std::to_string(i), "");
    }
    const auto completion = at("ls tmp/");
    EXPECT_TRUE(completion.isCut);
    EXPECT_LT(completion.candidates.size(), 10'050U);
    EXPECT_EQ(completion.text, "tmp/");
    EXPECT_FALSE(at("ls tmp/file1004").isCut);
}

TEST_F(CompletionTest, CanBeInterrupted)
{
    interrupt::request();
    EXPECT_THROW(at("ls logs/"), Interrupted);
    interrupt::clear();
}
