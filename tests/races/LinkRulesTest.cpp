#include "file_management/mo_impl/ChangesFixture.h"
#include "races/SystemCalls.h"

using zoltest::fileGroup;
using zoltest::SystemCalls;

namespace
{

/// What the component's rules let links do without any race. A host that doesn't want it looks by itself.
class LinkRules : public zoltest::Changes
{
protected:
    LinkRules() { ZolFileManagement::FileMTransaction::initialize(tree.directory("root")); }
};

} // namespace

TEST_F(LinkRules, ANewDirectoryGivesItsModeToTheDirectoryThatALinkOfItsNameLeadsTo)
{
    tree.directory("outside");
    tree.chmod("outside", 0700);
    tree.link("root/new", tree.path("outside"));
    ASSERT_EQ(create("new"), 0);
    EXPECT_EQ(worker.commit(), 0);
    EXPECT_EQ(tree.mode("outside"), 0770U);
}

TEST_F(LinkRules, ANewDirectoryIsMadeWhereLinksOnTheWayLead)
{
    tree.directory("outside");
    tree.link("root/way", tree.path("outside"));
    ASSERT_EQ(create("new", fileGroup("way")), 0);
    EXPECT_EQ(worker.commit(), 0);
    EXPECT_EQ(tree.mode("outside/new"), 0770U);
}

TEST_F(LinkRules, ATreeGoesWhereLinksOnTheWayLead)
{
    tree.file("outside/top/f");
    tree.link("root/way", tree.path("outside"));
    ASSERT_EQ(remove(fileGroup("top", fileGroup("way"))), "0 bool[true]");
    EXPECT_EQ(worker.commit(), 0);
    EXPECT_FALSE(tree.exists("outside/top"));
}

TEST_F(LinkRules, ACheckForFilesWalksADirectoryOnceForEachWayThatLinksOpen)
{
    constexpr int levels = 6;
    for (int level = 0; level < levels; ++level)
    {
        const std::string directory = "d" + std::to_string(level);
        const std::string next = tree.directory("root/d" + std::to_string(level + 1));
        tree.link("root/" + directory + "/one", next);
        tree.link("root/" + directory + "/two", next);
    }
    int walks = 0;
    {
        const SystemCalls calls(
            [&walks](const SystemCalls::Call& call) { walks += call.name == "open" ? 1 : 0; });
        EXPECT_EQ(deleteM(fileGroup("d0")), 0);
    }
    // each directory is walked for files and, except for the last ones, in which nothing is, for directories
    EXPECT_EQ(walks, 3 * (1 << levels) - 2);
}

TEST_F(LinkRules, ARemovalGoesIntoEachDirectoryOnceWhateverLinksAreInIt)
{
    tree.directory("root/d/sub");
    tree.link("root/d/one", tree.path("root/d"));
    tree.link("root/d/sub/two", tree.path("root/d"));
    ASSERT_EQ(remove(fileGroup("d")), "0 bool[true]");
    int walks = 0;
    {
        const SystemCalls calls(
            [&walks](const SystemCalls::Call& call) { walks += call.name == "fdopendir" ? 1 : 0; });
        EXPECT_EQ(worker.commit(), 0);
    }
    EXPECT_EQ(walks, 2);
    EXPECT_FALSE(tree.exists("root/d"));
}
