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
    Session session{host, out, err};
};

} // namespace

TEST_F(SessionTest, KeepsOneTransactionUntilTheCommit)
{
    EXPECT_FALSE(session.hasChanges());
    session.run({"create", "FileGroup=a"});
    session.run({"create", "FileGroup=b"});
    EXPECT_TRUE(session.hasChanges());
    EXPECT_EQ(tree.listing(), Texts{});
    session.run({"commit"});
    EXPECT_FALSE(session.hasChanges());
    EXPECT_EQ(tree.listing(), (Texts{"d a", "d b"}));
}

TEST_F(SessionTest, HasNoTransactionLeftAfterAScriptThatFailed)
{
    std::istringstream script("create FileGroup=a\nls FileGroup=none\n");
    EXPECT_THROW(runScript(session, script, err), CommandFailure);
    EXPECT_FALSE(session.hasChanges());
    session.run({"commit"});
    EXPECT_EQ(tree.listing(), Texts{});
}

TEST_F(SessionTest, IsWithoutChangesAfterACommandThatFailed)
{
    EXPECT_THROW(session.run({"create", "FileGroup=a|b"}), CommandFailure);
    EXPECT_FALSE(session.hasChanges());
}

TEST_F(SessionTest, ShowsWhatTheComponentSaysAlsoIfItDoesWhatItIsAsked)
{
    ThreadContext::table()->addMessage(1, "by the way\x1b");
    session.run({"ls"});
    EXPECT_EQ(err.str(), "filem: by the way\\x1b\n");
    EXPECT_EQ(out.str(), "FileMConfigData=1\n");
}
