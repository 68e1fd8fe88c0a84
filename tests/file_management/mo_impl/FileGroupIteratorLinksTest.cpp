#include "Faults.h"
#include "SpecialFiles.h"
#include "WalkFixture.h"
#include "support/WorkingDirectory.h"

#include <cerrno>
#include <filesystem>

using namespace testing;

namespace zoltest
{

namespace
{

using Links = Walk;

TEST_F(Links, ToDirectoriesAreWalkedThrough)
{
    tree.file("target/f");
    tree.directory("target/d");
    tree.link("a/link", tree.path("target"));

    EXPECT_THAT(directoriesIn("a"), ElementsAre("a/link/"));
    EXPECT_THAT(filesIn("a/link"), ElementsAre("a/link/f"));
    EXPECT_THAT(directoriesIn("a/link"), ElementsAre("a/link/d/"));
}

// A relative target is looked up from the working directory, as the tests with a working directory show.

TEST_F(Links, WithARelativeTargetCountAsDangling)
{
    tree.directory("a/target");
    tree.link("a/link", "target");
    const WorkingDirectory elsewhere(tree.path());
    const RecordedLog log;

    EXPECT_THAT(directoriesIn("a"), ElementsAre("a/target/"));
    EXPECT_THAT(log.statements(),
                ElementsAre("severity-4 Link <" + tree.path("a/link") +
                            "> refers to a non existing target <target>, treated as a file"));
}

TEST_F(Links, WithARelativeTargetAreDirectoriesWhereTheTargetHappensToResolve)
{
    tree.directory("a/target");
    tree.link("a/link", "target");
    const WorkingDirectory here(tree.path("a"));
    const RecordedLog log;

    EXPECT_THAT(directoriesIn("a"), UnorderedElementsAre("a/target/", "a/link/"));
    EXPECT_THAT(log.statements(), IsEmpty());
}

TEST_F(Links, WithARelativeTargetAreSkippedWhereItHappensToBeAFile)
{
    tree.directory("a/target");
    tree.link("a/link", "target");
    tree.file("b/target");
    const WorkingDirectory elsewhere(tree.path("b"));
    const RecordedLog log;

    EXPECT_THAT(directoriesIn("a"), ElementsAre("a/target/"));
    EXPECT_THAT(log.statements(), IsEmpty());
}

TEST_F(Links, ToAPipeAreDirectoriesWhereTheTargetHappensToBeOne)
{
    tree.directory("a");
    makePipe(tree.path("a/target"));
    tree.link("a/link", "target");
    tree.directory("b/target");
    const WorkingDirectory elsewhere(tree.path("b"));

    EXPECT_THAT(directoriesIn("a"), ElementsAre("a/link/"));
    EXPECT_THAT(filesIn("a"), IsEmpty());
}

TEST_F(Links, ThatStopReferringToADirectoryInBetweenAreSkipped)
{
    tree.directory("a");
    makePipe(tree.path("a/pipe"));
    tree.link("a/link", "pipe");
    tree.directory("b/pipe");
    const WorkingDirectory elsewhere(tree.path("b"));
    Faults faults;
    int looks = 0;
    faults.readlink = [&looks](const std::string&) {
        if (++looks == 2)
        {
            std::filesystem::remove("pipe");
            makePipe("pipe");
        }
        return 0;
    };
    const RecordedLog log;

    EXPECT_THAT(directoriesIn("a"), IsEmpty());
    EXPECT_THAT(log.statements(), ElementsAre("severity-4 Link <" + tree.path("a/link") +
                                              "> refers to a link <pipe>, treated as a file"));
}

TEST_F(Links, ToAFileAreFilesWhereTheTargetHappensToBeADirectory)
{
    tree.file("a/target");
    tree.link("a/link", "target");
    tree.directory("b/target");
    const WorkingDirectory elsewhere(tree.path("b"));

    EXPECT_THAT(filesIn("a"), UnorderedElementsAre("a/target", "a/link"));
    EXPECT_THAT(directoriesIn("a"), IsEmpty());
}

TEST_F(Links, ToNothingEndTheWalkWhereTheTargetHappensToBeADirectory)
{
    tree.link("a/link", "target");
    changes.addCreatedDir(directory("a/new"));
    tree.directory("b/target");
    const WorkingDirectory elsewhere(tree.path("b"));
    const RecordedLog log;

    EXPECT_THAT(directoriesIn("a"), IsEmpty());
    EXPECT_THAT(log.statements(), ElementsAre("plain Unexpected exception :File not found"));
}

TEST_F(Links, ThatCantBeReadEndTheWalk)
{
    tree.link("link", tree.directory("target/d"));
    tree.link("a/link", tree.path("target/d"));
    changes.addCreatedDir(directory("a/new"));
    Faults faults;
    faults.readlink = [](const std::string&) { return EIO; };
    const RecordedLog log;
    Iterator iterator = open("a", directories);

    EXPECT_EQ(step(iterator), "end");
    EXPECT_EQ(step(iterator), "end");
    EXPECT_THAT(log.statements(),
                ElementsAre("severity-3 Linked target path does not exist, error 5, link path :" +
                                tree.path("a/link"),
                            "plain Unexpected exception :Assertion violation"));
}

TEST_F(Links, ThatCantBeExaminedCountAsWhatTheyReferTo)
{
    tree.file("target/f");
    tree.link("a/toFile", tree.path("target/f"));
    tree.link("a/toDirectory", tree.path("target"));
    Faults faults;
    faults.lstat = [](const std::string&) { return EACCES; };
    const RecordedLog log;

    EXPECT_THAT(filesIn("a"), ElementsAre("a/toFile"));
    EXPECT_THAT(directoriesIn("a"), ElementsAre("a/toDirectory/"));
    EXPECT_THAT(
        log.statements(),
        UnorderedElementsAre("plain Warning: could not stat " + tree.path("a/toFile") + ", reason :13",
                             "plain Warning: could not stat " + tree.path("a/toDirectory") + ", reason :13",
                             "plain Warning: could not stat " + tree.path("a/toFile") + ", reason :13",
                             "plain Warning: could not stat " + tree.path("a/toDirectory") + ", reason :13"));
}

TEST_F(Links, ReferToADirectoryByTheKindOfTheirTarget)
{
    makePipe(tree.path("pipe"));
    struct
    {
        const char* description;
        std::string target;
        bool refersToDirectory;
        std::string log;
    } const cases[] = {
        {"directory", tree.directory("d"), true, ""},
        {"directory with a slash behind it", tree.path("d") + "/", true, ""},
        {"link to a directory", tree.link("toDirectory", tree.path("d")), true, ""},
        {"file", tree.file("f"), false, ""},
        {"link to a file", tree.link("toFile", tree.path("f")), false, ""},
        {"nothing", "/no/where", false, "refers to a non existing target </no/where>, treated as a file"},
        {"pipe", tree.path("pipe"), false, "refers to a link <" + tree.path("pipe") + ">, treated as a file"},
    };
    for (const auto& row : cases)
    {
        const std::string link = tree.link(std::string("links/to ") + row.description, row.target);
        const RecordedLog log;

        EXPECT_EQ(Iterator::isLinkReferringToDirectory(link), row.refersToDirectory) << row.description;
        EXPECT_EQ(log.statements(),
                  row.log.empty() ? Texts{} : Texts{"severity-4 Link <" + link + "> " + row.log})
            << row.description;
    }
}

TEST_F(Links, GiveTheirTargetAsTheyHoldIt)
{
    for (const std::string target : {"/no/where", "relative/../target/", "."})
    {
        const std::string link = tree.link("links/" + std::to_string(target.size()), target);
        EXPECT_EQ(Iterator::getLinkTarget(link), target);
    }
}

TEST_F(Links, GiveNoTargetWhenTheyCantBeRead)
{
    const std::string file = tree.file("f");
    const std::string nothing = tree.path("nothing");
    const RecordedLog log;

    EXPECT_EQ(Iterator::getLinkTarget(file), "");
    EXPECT_EQ(Iterator::getLinkTarget(nothing), "");
    EXPECT_THAT(log.statements(),
                ElementsAre("severity-3 Linked target path does not exist, error 22, link path :" + file,
                            "severity-3 Linked target path does not exist, error 2, link path :" + nothing));
}

TEST_F(Links, GiveALongTargetUpToTheRoomForIt)
{
    for (const std::size_t length : {4094U, 4095U, 4096U, 9000U})
    {
        Faults faults;
        faults.linkTarget = std::string(length, 'x');

        EXPECT_EQ(Iterator::getLinkTarget("any"), std::string(std::min<std::size_t>(length, 4095), 'x'));
        EXPECT_EQ(faults.roomForLinkTarget, 4095U);
    }
}

} // namespace

} // namespace zoltest
