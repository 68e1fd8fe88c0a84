#include "staging/PlaceFinder.h"

#include "engine/Refusal.h"
#include "support/TemporaryTree.h"

#include <gtest/gtest.h>
#include <string>

using namespace zolhost;
using Wanted = PlaceFinder::Wanted;
using zoltest::TemporaryTree;

namespace
{

class PlaceFinderTest : public testing::Test
{
protected:
    Place find(const std::string& text, const Place& from, Wanted wanted = Wanted::Anything) const
    {
        return PlaceFinder(tree.path(), plan).find(text, from, wanted);
    }
    Place find(const std::string& text, Wanted wanted = Wanted::Anything) const
    {
        return find(text, root, wanted);
    }
    std::string whyRefused(const std::string& text) const
    {
        try
        {
            find(text);
            return "found";
        }
        catch (const Refusal& refusal)
        {
            EXPECT_EQ(refusal.kind(), Refusal::Kind::BadName);
            EXPECT_EQ(refusal.dn(), text);
            return refusal.what();
        }
    }

    TemporaryTree tree;
    Plan plan;
    const Place root{tree.path()};
    const std::string rootDn = "ManagedElement=1,SystemFunctions=1,FileM=1";
};

} // namespace

TEST_F(PlaceFinderTest, FindsTheSamePlaceByDnAndByPath)
{
    tree.file("logs/old/a.log");
    const Place file = root.directory("logs").directory("old").file("a.log");
    for (const std::string text :
         {"logs/old/a.log", "/logs/old/a.log", "logs//old/./a.log", "logs/x/../old/a.log",
          "FileGroup=logs,FileGroup=old,FileInformation=a.log",
          "ManagedElement=1,SystemFunctions=1,FileM=1,FileGroup=logs,FileGroup=old,FileInformation=a.log"})
    {
        EXPECT_EQ(find(text), file) << text;
    }
    EXPECT_EQ(find("/"), root);
    EXPECT_EQ(find("."), root);
    EXPECT_EQ(find(rootDn), root);
    EXPECT_EQ(find("FileMConfigData=1"), root.configuration());
}

TEST_F(PlaceFinderTest, StartsWhereOneIsExceptWithADnOrASlash)
{
    tree.file("logs/old/a.log");
    const Place logs = root.directory("logs");
    EXPECT_EQ(find("old/a.log", logs), logs.directory("old").file("a.log"));
    EXPECT_EQ(find("..", logs), root);
    EXPECT_EQ(find("../logs", logs), logs);
    EXPECT_EQ(find("/logs", logs), logs);
    EXPECT_EQ(find("FileGroup=logs", logs), logs);
}

TEST_F(PlaceFinderTest, TakesADirectoryBeforeAFileAndWhatASlashEndsForADirectory)
{
    tree.directory("d/sub");
    EXPECT_TRUE(find("d/sub").isDirectory());
    EXPECT_TRUE(find("d/missing").isFile());
    EXPECT_TRUE(find("d/missing/").isDirectory());
    EXPECT_TRUE(find("d/missing", Wanted::Directory).isDirectory());
    EXPECT_TRUE(find("d/sub", Wanted::File).isFile());
    EXPECT_TRUE(find("missing").isDirectory()) << "a file in the root is no object";
    EXPECT_TRUE(find("missing", Wanted::File).isFile());
    tree.file("top");
    EXPECT_TRUE(find("top").isFile());
}

TEST_F(PlaceFinderTest, TakesTheValueThatIsListedAndTheNameOnDisk)
{
    tree.file("a+b/c=d");
    tree.directory("\"q\"");
    tree.directory(" padded ");
    const Place directory = root.directory("a+b");
    EXPECT_EQ(find("a+b"), directory);
    EXPECT_EQ(find("a\\2Bb"), directory);
    EXPECT_EQ(find("a\\2bb/c=d"), directory.file("c=d"));
    EXPECT_EQ(find("a+b/c?\?d"), directory.file("c=d"));
    EXPECT_EQ(find("FileGroup=a+b,FileInformation=c?\?d"), directory.file("c=d"));
    EXPECT_EQ(find("q"), root.directory("\"q\""));
    EXPECT_EQ(find("padded"), root.directory(" padded "));
}

TEST_F(PlaceFinderTest, PrefersTheNameOnDiskAndRefusesAValueOfSeveralNames)
{
    tree.file("d/a=b");
    tree.file("d/a;b");
    EXPECT_EQ(whyRefused("d/a?\?b"), "it is the value of more than one name: a;b and a=b");
    EXPECT_EQ(find("d/a;b"), root.directory("d").file("a;b"));
    tree.file("d/a?\?b");
    EXPECT_EQ(find("d/a?\?b"), root.directory("d").file("a?\?b"));
    tree.directory("x<");
    tree.directory("x>");
    EXPECT_EQ(whyRefused("x?\?/f"), "it is the value of more than one name: x< and x>");
}

TEST_F(PlaceFinderTest, PrefersTheNameOnDiskWhateverItIsOf)
{
    tree.file("d/a");
    tree.directory("d/ a");
    tree.file("d/?\?");
    tree.directory("d/*");
    tree.directory("d/x+y");
    tree.directory("d/x\\2By");
    tree.file("d/m\\2Bn");
    tree.directory("d/m+n");
    const Place directory = root.directory("d");
    EXPECT_EQ(find("d/a"), directory.file("a"));
    EXPECT_EQ(find("d/?\?"), directory.file("?\?"));
    EXPECT_EQ(find("d/x\\2By"), directory.directory("x\\2By"));
    EXPECT_EQ(find("d/m\\2Bn"), directory.file("m\\2Bn"));
    EXPECT_EQ(find("FileGroup=d,FileGroup=x\\2By"), directory.directory("x+y")) << "what a DN means";
    tree.file("d/p=");
    tree.directory("d/p;");
    EXPECT_EQ(whyRefused("d/p?\?"), "it is the value of more than one name: p; and p=");
}

TEST_F(PlaceFinderTest, FindsWhatThePlanMakes)
{
    plan.makeDirectory(tree.path("new/"));
    plan.makeDirectory(tree.path("new/a+b/"));
    EXPECT_EQ(find("new"), root.directory("new"));
    EXPECT_EQ(find("new/a\\2Bb"), root.directory("new").directory("a+b"));
    EXPECT_TRUE(PlaceFinder(tree.path(), plan).isDirectory(root.directory("new")));
    EXPECT_FALSE(PlaceFinder(tree.path(), plan).isDirectory(root.directory("other")));
}

TEST_F(PlaceFinderTest, NeverLeavesTheTree)
{
    EXPECT_EQ(whyRefused(".."), "it would leave the tree");
    EXPECT_EQ(whyRefused("/../etc"), "it would leave the tree");
    EXPECT_EQ(whyRefused("logs/../.."), "it would leave the tree");
    EXPECT_EQ(whyRefused("FileGroup=.."), "the value \"..\" would leave the tree");
    EXPECT_EQ(whyRefused("FileGroup=a/b"), "the value \"a/b\" holds a slash and would leave its directory");
    EXPECT_EQ(whyRefused(""), "the name is empty");
    EXPECT_EQ(whyRefused(std::string("a\0b", 3)), "a name must not hold a zero byte");
    EXPECT_EQ(whyRefused("FileMConfigData=1,FileGroup=a"), "there is no FileGroup below a FileMConfigData");
}

TEST_F(PlaceFinderTest, TakesANameThatLooksLikeADnForAPathBehindADot)
{
    tree.directory("FileGroup=logs");
    EXPECT_EQ(find("./FileGroup=logs"), root.directory("FileGroup=logs"));
    EXPECT_EQ(find("FileGroup=logs"), root.directory("logs"));
    EXPECT_EQ(find("a=b"), root.directory("a=b")) << "no class of the model";
}
