#include "engine/Place.h"

#include "support/TemporaryTree.h"

#include <gtest/gtest.h>
#include <string>

using zolhost::isOutsideRoot;
using zolhost::linkOnTheWay;
using zolhost::Place;
using zoltest::TemporaryTree;

namespace
{

const std::string rootDn = "ManagedElement=1,SystemFunctions=1,FileM=1";

} // namespace

TEST(Place, HasADnAPathAndAShortPath)
{
    const Place root("/tree");
    struct Case
    {
        Place place;
        std::string dn;
        std::string path;
        std::string shortPath;
        std::string value;
    };
    const Case cases[] = {
        {root, rootDn, "/tree/", "/", "1"},
        {root.configuration(), rootDn + ",FileMConfigData=1", "/tree/", "FileMConfigData=1", "1"},
        {root.directory("a"), rootDn + ",FileGroup=a", "/tree/a/", "a", "a"},
        {root.directory("a").directory("b+c"), rootDn + ",FileGroup=a,FileGroup=b\\2Bc", "/tree/a/b+c/",
         "a/b+c", "b\\2Bc"},
        {root.directory("a=b"), rootDn + ",FileGroup=a=b", "/tree/a=b/", "a=b", "a?\?b"},
        {root.directory("\"q\""), rootDn + ",FileGroup=\"q\"", "/tree/\"q\"/", "\"q\"", "q"},
        {root.directory("a").file("f+g"), rootDn + ",FileGroup=a,FileInformation=f+g", "/tree/a/f+g", "a/f+g",
         "f?\?g"},
    };
    for (const auto& [place, dn, path, shortPath, value] : cases)
    {
        EXPECT_EQ(place.dn(), dn);
        EXPECT_EQ(place.path(), path);
        EXPECT_EQ(place.shortPath(), shortPath);
        EXPECT_EQ(place.value(), value);
        EXPECT_TRUE(place.isReachable()) << dn;
    }
}

TEST(Place, StandsBelowAnother)
{
    const Place root("/tree");
    EXPECT_EQ(root.parent(), root);
    EXPECT_EQ(root.directory("a").parent(), root);
    EXPECT_EQ(root.directory("a").file("f").parent(), root.directory("a"));
    EXPECT_EQ(root.configuration().parent(), root);
    EXPECT_TRUE(root.isDirectory());
    EXPECT_TRUE(root.directory("a").isDirectory());
    EXPECT_FALSE(root.configuration().isDirectory());
    EXPECT_TRUE(root.directory("a").file("f").isFile());
}

TEST(Place, IsOutOfReachIfNoDnGivesItsPath)
{
    const Place root("/tree");
    for (const std::string name : {"a,b", "a\\2Bb", "a\\2b"})
    {
        EXPECT_FALSE(root.directory(name).isReachable()) << name;
        EXPECT_FALSE(root.directory(name).file("f").isReachable()) << name;
    }
    EXPECT_FALSE(root.directory("a").file("b,c").isReachable());
    EXPECT_TRUE(root.directory("a").file("b\\2Bc").isReachable());
    EXPECT_FALSE(root.directory("a").file("FileGroup\\2Bc").isReachable());
    EXPECT_FALSE(root.file("f").isReachable()) << "its DN stands for the root";
}

TEST(Place, TellsTheLinksOnTheWayToIt)
{
    const TemporaryTree tree;
    tree.file("root/d/f");
    tree.directory("elsewhere");
    tree.link("root/out", tree.path("elsewhere"));
    tree.link("root/in", tree.path("root/d"));
    const Place root(tree.path("root"));
    EXPECT_EQ(linkOnTheWay(root.directory("d").file("f")), "");
    EXPECT_EQ(linkOnTheWay(root.directory("in")), tree.path("root/in"));
    EXPECT_EQ(linkOnTheWay(root.directory("in").file("f")), tree.path("root/in"));
    EXPECT_EQ(linkOnTheWay(root.file("in")), "") << "a file is no step on the way";
    EXPECT_FALSE(isOutsideRoot(root.directory("in").file("f")));
    EXPECT_TRUE(isOutsideRoot(root.directory("out").directory("new")));
    EXPECT_FALSE(isOutsideRoot(root.directory("d").directory("new")));
}
