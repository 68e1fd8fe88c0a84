#include "staging/Protections.h"

#include "staging/Plan.h"
#include "support/TemporaryTree.h"
#include "support/WorkingDirectory.h"

#include <gtest/gtest.h>
#include <stdexcept>
#include <string>
#include <sys/stat.h>
#include <vector>

using zolhost::Plan;
using zolhost::protectionsOf;
using zoltest::TemporaryTree;

namespace
{

using Names = std::vector<std::string>;

class ProtectionsTest : public testing::Test
{
protected:
    zolhost::Protections of(const std::string& name) const { return protectionsOf(tree.path(name), plan); }

    TemporaryTree tree;
    Plan plan;
};

} // namespace

TEST(MarkerName, IsOneOfThreeExactly)
{
    for (const char* const name :
         {".filemnohousekeeping", ".filemnodirectorycreate", ".filemnodirectorydelete"})
    {
        EXPECT_TRUE(zolhost::isMarkerName(name)) << name;
        EXPECT_FALSE(zolhost::isMarkerName(std::string(name) + "2")) << name;
    }
    EXPECT_FALSE(zolhost::isMarkerName(""));
}

TEST_F(ProtectionsTest, OfWhatIsMissingAreThoseOfItsParent)
{
    tree.file("d/.filemnodirectorycreate");
    const auto found = of("d/new/");
    EXPECT_FALSE(found.isThere);
    EXPECT_EQ(found.parentMarkers, Names{".filemnodirectorycreate"});
    EXPECT_EQ(found.markers, Names{});
}

TEST_F(ProtectionsTest, OfADirectoryAreItsMarkersAndThoseBelow)
{
    tree.file("d/.filemnohousekeeping");
    tree.directory("d/.filemnodirectorydelete");
    tree.file("d/e/f/.filemnodirectorycreate");
    tree.file("d/a/.filemnodirectorycreate");
    tree.link("d/.filemnodirectorycreate", "nowhere");
    for (const char* const name : {"d", "d/"})
    {
        const auto found = of(name);
        EXPECT_TRUE(found.isThere);
        EXPECT_EQ(found.markers, (Names{".filemnodirectorydelete", ".filemnohousekeeping"}));
        EXPECT_EQ(found.markersBelow, (Names{tree.path("d/a/.filemnodirectorycreate"),
                                             tree.path("d/e/f/.filemnodirectorycreate")}));
        EXPECT_EQ(found.parentMarkers, Names{});
        EXPECT_EQ(found.filesBelow, 0U) << "markers aren't visible";
        EXPECT_EQ(found.aFileBelow, "");
    }
}

TEST_F(ProtectionsTest, OfALinkAreItsTargetAlone)
{
    tree.file("d/f");
    tree.file("d/.filemnodirectorycreate");
    tree.link("l", tree.path("d"));
    for (const char* const name : {"l", "l/"})
    {
        const auto found = of(name);
        EXPECT_TRUE(found.isThere);
        EXPECT_TRUE(found.isLink);
        EXPECT_EQ(found.linkTarget, tree.path("d"));
        EXPECT_EQ(found.filesBelow, 0U);
        EXPECT_EQ(found.markers, Names{});
    }
    tree.link("dangling", "nowhere");
    EXPECT_TRUE(of("dangling").isThere);
    EXPECT_EQ(of("dangling").linkTarget, "nowhere");
}

TEST_F(ProtectionsTest, CountVisibleFilesAndNameTheFirst)
{
    tree.file("d/b");
    tree.file("d/a/x");
    tree.file("d/a.b");
    tree.link("d/0", tree.path("d/b"));
    mkfifo(tree.path("d/1").c_str(), 0600);
    const auto found = of("d");
    EXPECT_EQ(found.filesBelow, 3U) << "links to files and pipes aren't visible";
    EXPECT_EQ(found.aFileBelow, tree.path("d/a.b"));
    EXPECT_FALSE(found.isLink);
}

TEST_F(ProtectionsTest, LeaveOutWhatTheTransactionRemoves)
{
    tree.file("d/a");
    tree.file("d/b");
    tree.file("d/c/x");
    tree.file("d/c2/x");
    plan.removeFile(tree.path("d/a"));
    plan.removeTree(tree.path("d/b"));
    plan.removeTree(tree.path("d/c/"));
    const auto found = of("d");
    EXPECT_EQ(found.filesBelow, 1U);
    EXPECT_EQ(found.aFileBelow, tree.path("d/c2/x"));
}

TEST_F(ProtectionsTest, GoThroughLinksToDirectoriesOnce)
{
    tree.file("elsewhere/f");
    tree.file("elsewhere/.filemnodirectorycreate");
    tree.file("elsewhere/e/.filemnodirectorycreate");
    tree.file("d/e/g");
    tree.link("d/again", tree.path("elsewhere"));
    tree.link("d/l", tree.path("elsewhere"));
    tree.link("d/a-round", tree.path("d"));
    tree.file("d/e/.filemnodirectorydelete");
    const auto found = of("d");
    EXPECT_EQ(found.filesBelow, 2U);
    EXPECT_EQ(found.markersBelow, Names{tree.path("d/e/.filemnodirectorydelete")})
        << "a tree takes along what is in it, not what its links lead to";

    plan.removeTree(tree.path("d/again/"));
    plan.removeTree(tree.path("d/l/"));
    EXPECT_EQ(of("d").filesBelow, 1U);
}

TEST_F(ProtectionsTest, LookRelativeTargetsUpFromTheWorkingDirectory)
{
    tree.file("elsewhere/f");
    tree.link("d/l", "../elsewhere");
    const zoltest::WorkingDirectory outside("/");
    EXPECT_EQ(of("d").filesBelow, 0U);
    const zoltest::WorkingDirectory inside(tree.path("d"));
    EXPECT_EQ(of("d").filesBelow, 1U);
}

TEST_F(ProtectionsTest, OfAFileAreThoseOfItsParent)
{
    tree.file("d/.filemnohousekeeping");
    tree.file("d/f");
    const auto found = of("d/f");
    EXPECT_TRUE(found.isThere);
    EXPECT_EQ(found.parentMarkers, Names{".filemnohousekeeping"});
    EXPECT_EQ(found.filesBelow, 0U);
}

TEST_F(ProtectionsTest, TellTheirProgressAndCanBeEndedByIt)
{
    for (int i = 0; i < 600; ++i)
    {
        tree.file("d/" + std::to_string(i));
    }
    std::vector<std::size_t> calls;
    protectionsOf(tree.path("d"), plan, [&](std::size_t done) { calls.push_back(done); });
    EXPECT_EQ(calls, (std::vector<std::size_t>{256, 512}));
    EXPECT_THROW(protectionsOf(tree.path("d"), plan, [](std::size_t) { throw std::runtime_error("enough"); }),
                 std::runtime_error);
}
