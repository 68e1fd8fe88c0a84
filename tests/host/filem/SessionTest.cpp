#include "filem/Session.h"

#include "engine/ConfigurationText.h"
#include "engine/ThreadContext.h"
#include "filem/Script.h"
#include "support/LoadedLibrary.h"
#include "support/TemporaryTree.h"

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
    const auto first = session.transaction().objects();
    session.run({"ls"});
    session.run({"mkdir", "a"});
    const auto* const staged = &session.transaction();
    session.run({"ls"});
    EXPECT_EQ(&session.transaction(), staged) << "what is staged stays";
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
                         "! new/  appeared since it was staged\n");
    session.run({"commit"});
    EXPECT_EQ(err.str().substr(0, err.str().find('\n')), "filem: d/f changed since it was staged");
}

TEST_F(SessionTest, ShowsWhatTheComponentSaysAlsoIfItDoesWhatItIsAsked)
{
    ThreadContext::table()->addMessage(1, "by the way\x1b");
    session.run({"ls"});
    EXPECT_EQ(err.str(), "filem: by the way\\x1b\n");
    EXPECT_EQ(out.str(), "FileMConfigData=1\n");
}
