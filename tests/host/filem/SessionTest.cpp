#include "filem/Session.h"

#include "engine/ConfigurationText.h"
#include "engine/ThreadContext.h"
#include "filem/Script.h"
#include "support/LoadedLibrary.h"
#include "support/TemporaryTree.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <sstream>
#include <string>
#include <vector>

using namespace zolhost::filem;
using zolhost::Host;
using zolhost::ThreadContext;
using zoltest::LoadedLibrary;
using zoltest::TemporaryTree;

namespace
{

using Texts = std::vector<std::string>;

class SessionTest : public testing::Test
{
protected:
    TemporaryTree tree;
    Host host{{LoadedLibrary::path(), zolhost::configurationFor(tree.path()), {}}};
    std::ostringstream out;
    std::ostringstream err;
    Session session{host, tree.path(), {Session::Mode::Script}, out, err};
};

} // namespace

TEST_F(SessionTest, KeepsOneTransactionUntilTheCommit)
{
    EXPECT_FALSE(session.hasStaged());
    session.run({"mkdir", "a"});
    session.run({"mkdir", "b"});
    EXPECT_TRUE(session.hasStaged());
    EXPECT_EQ(tree.listing(), Texts{});
    session.run({"commit"});
    EXPECT_FALSE(session.hasStaged());
    EXPECT_EQ(tree.listing(), (Texts{"d a", "d b"}));
}

TEST_F(SessionTest, ReadsInATransactionOfItsOwnWhileNothingIsStaged)
{
    session.run({"ls"});
    const auto first = session.transaction().handle();
    session.run({"ls"});
    EXPECT_NE(session.transaction().handle(), first);
    session.run({"mkdir", "a"});
    const auto staging = session.transaction().handle();
    session.run({"ls"});
    EXPECT_EQ(session.transaction().handle(), staging) << "what is staged stays";
}

TEST_F(SessionTest, HasNothingStagedAfterAScriptThatFailed)
{
    std::istringstream script("mkdir a\nls none/\n");
    EXPECT_THROW(runScript(session, script, false), CommandFailure);
    EXPECT_FALSE(session.hasStaged());
    session.run({"commit"});
    EXPECT_EQ(tree.listing(), Texts{});
}

TEST_F(SessionTest, HasNothingStagedAfterACommandThatFailed)
{
    EXPECT_THROW(session.run({"mkdir", "a|b"}), CommandFailure);
    EXPECT_FALSE(session.hasStaged());
}

TEST_F(SessionTest, WarnsOfWhatChangedUnderWhatIsStaged)
{
    tree.file("d/f");
    tree.file("d/g");
    session.run({"rm", "d/f"});
    session.run({"rmtree", "d"});
    session.run({"mkdir", "new"});
    tree.file("d/f", "more");
    tree.file("d/h");
    tree.directory("new");
    session.run({"status"});
    EXPECT_EQ(out.str(), "rm d/f\nrmtree d\nmkdir new\n"
                         "! d/f  changed since d/ was staged\n"
                         "! d/h  appeared since d/ was staged\n"
                         "! d/f  changed since it was staged\n"
                         "! new  appeared since it was staged\n");
    session.run({"commit"});
    EXPECT_EQ(err.str().substr(0, err.str().find('\n')), "filem: d/f changed since d/ was staged");
}

TEST_F(SessionTest, GoesOnNoFurtherThanACommitThatFailsAndCanStageItAgain)
{
    tree.directory("d");
    for (const Texts& words : {Texts{"mkdir", "a"}, Texts{"mkdir", "d/b"}, Texts{"mkdir", "e"}})
    {
        session.run(words);
    }
    std::filesystem::remove(tree.path("d"));
    tree.file("d");
    std::istringstream script("commit\nmkdir f\ncommit\n");
    try
    {
        runScript(session, script, false);
        FAIL() << "a directory can't be made below a file";
    }
    catch (const CommandFailure& failure)
    {
        EXPECT_EQ(failure.code(), ExitCode::Failed);
        EXPECT_STREQ(failure.what(),
                     "line 1: can't commit: a step failed; what was done before it stays, the rest "
                     "is forgotten");
    }
    EXPECT_EQ(tree.listing(), (Texts{"d a", "f d 1"}));
    EXPECT_EQ(out.str().substr(0, out.str().rfind("2 remain")),
              "done     + a/  drwxrwx---\n"
              "REMAINS  + d/b/  Not a directory: " +
                  tree.path("d") + "\nREMAINS  + e/  the commit ended at " + tree.path("d/b") +
                  "\n"
                  "1 done, ");

    std::filesystem::remove(tree.path("d"));
    std::filesystem::remove(tree.path("a"));
    tree.directory("d");
    session.run({"restage"});
    EXPECT_EQ(session.run({"diff"}), ExitCode::Failed) << "something would change";
    EXPECT_EQ(session.run({"commit"}), ExitCode::Done);
    EXPECT_EQ(tree.listing(), (Texts{"d a", "d d", "d d/b", "d e"}));
    EXPECT_EQ(session.run({"diff"}), ExitCode::Done);
}

TEST_F(SessionTest, EndsACommitAfterWhichSomethingRemainsWithACodeOfItsOwn)
{
    session.run({"mkdir", "a"});
    session.run({"mkdir", "b"});
    tree.file("b");
    std::istringstream script("commit\nls\n");
    EXPECT_EQ(runScript(session, script, false), ExitCode::Remains) << "also if it goes on";
    EXPECT_EQ(out.str().substr(0, out.str().rfind(", ")),
              "done     + a/  drwxrwx---\n"
              "REMAINS  + b/  Not a directory: something else of this name is there\n"
              "1 done, 1 remains: 1 directory made");
}

TEST_F(SessionTest, ShowsWhatTheComponentSaysAlsoIfItDoesWhatItIsAsked)
{
    ThreadContext::table()->addMessage(1, "by the way\x1b");
    session.run({"ls"});
    EXPECT_EQ(err.str(), "filem: by the way\\x1b\n");
    EXPECT_EQ(out.str(), "FileMConfigData=1\n");
}
