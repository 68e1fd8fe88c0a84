#include "ChangesFixture.h"
#include "SystemFaults.h"

using testing::ElementsAre;
using testing::IsEmpty;
using zoltest::FileCreationMask;
using zoltest::fileGroup;
using zoltest::fileInformation;
using zoltest::fileM;
using zoltest::RecordedLog;
using zoltest::Texts;

namespace
{

const std::string d = fileGroup("d");
const std::string yes = "0 bool[true]";

class Remove : public zoltest::Changes
{};

} // namespace

TEST_F(Remove, TakesADirectoryWithAllThatIsInItAndAsksNoMarker)
{
    tree.file("d/.filemnodirectorydelete");
    tree.file("d/f");
    tree.file("d/sub/g");
    const RecordedLog log;
    EXPECT_EQ(remove(d), yes);
    EXPECT_THAT(log.statements(), IsEmpty());
    EXPECT_THAT(host.messages(), IsEmpty());
    EXPECT_TRUE(tree.exists("d/f"));
    EXPECT_EQ(worker.commit(), 0);
    EXPECT_THAT(tree.listing(), IsEmpty());
}

TEST_F(Remove, TakesAFileToo)
{
    tree.file("d/f");
    tree.file("d/g");
    EXPECT_EQ(remove(fileInformation("f", d)), yes);
    EXPECT_EQ(worker.commit(), 0);
    EXPECT_THAT(tree.listing(), ElementsAre("d d", "f d/g 1"));
}

TEST_F(Remove, OfAFileMakesNoRoomForANewDirectoryOfItsName)
{
    tree.file("d/f");
    EXPECT_EQ(remove(fileInformation("f", d)), yes);
    ASSERT_EQ(create("f", d), 0);
    EXPECT_EQ(worker.commit(), 0);
    EXPECT_THAT(tree.listing(), ElementsAre("d d"));
}

TEST_F(Remove, OfTheRootObjectTakesTheWholeInternalRoot)
{
    tree.file("root/d/f");
    tree.file("beside");
    for (const std::string& dn : {fileM, zoltest::fileMConfigData})
    {
        tree.file("root/d/f");
        ZolFileManagement::FileMTransaction::initialize(tree.path("root"));
        EXPECT_EQ(remove(dn), yes);
        EXPECT_EQ(worker.commit(), 0);
        EXPECT_THAT(tree.listing(), ElementsAre("f beside 1"));
    }
}

TEST_F(Remove, OfALinkIsRefusedSilently)
{
    tree.file("d/f");
    tree.link("toDirectory", tree.path("d"));
    tree.link("d/toFile", tree.path("d/f"));
    tree.link("toNothing", tree.path("nothing"));
    const Texts before = tree.listing();
    for (const std::string& dn :
         {fileGroup("toDirectory"), fileInformation("toFile", d), fileGroup("toNothing")})
    {
        SCOPED_TRACE(dn);
        const RecordedLog log;
        EXPECT_EQ(remove(dn), "-1 bool[false]");
        EXPECT_THAT(log.statements(), IsEmpty());
    }
    EXPECT_THAT(host.messages(), IsEmpty());
    EXPECT_EQ(worker.commit(), 0);
    EXPECT_EQ(tree.listing(), before);
}

TEST_F(Remove, TakesLinksInTheDirectoryButNotTheirTargets)
{
    tree.file("target/f");
    tree.directory("d");
    tree.link("d/link", tree.path("target"));
    EXPECT_EQ(remove(d), yes);
    EXPECT_EQ(worker.commit(), 0);
    EXPECT_THAT(tree.listing(), ElementsAre("d target", "f target/f 1"));
}

TEST_F(Remove, DoesNotAskWhetherThePathExists)
{
    const RecordedLog log;
    EXPECT_EQ(remove(fileGroup("later")), yes);
    EXPECT_THAT(log.statements(),
                ElementsAre("plain Warning: could not stat " + tree.path("later") + ", reason :2"));
    tree.file("later/f");
    EXPECT_EQ(worker.commit(), 0);
    EXPECT_THAT(tree.listing(), IsEmpty());
}

TEST_F(Remove, DoesNotSearchForTheName)
{
    tree.directory("a=b");
    EXPECT_EQ(remove(fileGroup("a?\?b")), yes);
    EXPECT_EQ(worker.commit(), 0);
    EXPECT_THAT(tree.listing(), ElementsAre("d a=b"));
}

TEST_F(Remove, LeavesNewDirectoriesBelowForTheCommitToCreateAndRemoveAgain)
{
    tree.directory("d");
    ASSERT_EQ(create("new", d), 0);
    EXPECT_EQ(remove(d), yes);
    Texts created;
    zoltest::SystemFaults system;
    system.createDirectory = [&](const std::string& path) { created.push_back(path); };
    EXPECT_EQ(worker.commit(), 0);
    EXPECT_THAT(created, ElementsAre(tree.path("d/new")));
    EXPECT_THAT(tree.listing(), IsEmpty());
}

TEST_F(Remove, OfANewDirectoryWithdrawsItAlone)
{
    ASSERT_EQ(create("d"), 0);
    ASSERT_EQ(create("new", d), 0);
    EXPECT_EQ(remove(d), yes);
    const FileCreationMask mask(027);
    EXPECT_EQ(worker.commit(), 0);
    EXPECT_THAT(tree.listing(), ElementsAre("d d", "d d/new"));
    EXPECT_EQ(tree.mode("d"), 0750U); // only an ancestor now
    EXPECT_EQ(tree.mode("d/new"), 0770U);
}

TEST_F(Remove, TwiceIsOneEntryThatACreationWithdraws)
{
    tree.file("d/f");
    EXPECT_EQ(remove(d), yes);
    EXPECT_EQ(remove(d), yes);
    ASSERT_EQ(create("d"), 0);
    EXPECT_EQ(worker.commit(), 0);
    EXPECT_THAT(tree.listing(), ElementsAre("d d", "f d/f 1"));
}

TEST_F(Remove, OfADirectoryNamedLikeAHomeDirectoryOrADeviceTakesThatOne)
{
    for (const char* name : {"~", "~root", "a:"})
    {
        tree.file(std::string(name) + "/f");
        EXPECT_EQ(remove(fileGroup(name)), yes);
    }
    EXPECT_EQ(worker.commit(), 0);
    EXPECT_THAT(tree.listing(), IsEmpty());
}
