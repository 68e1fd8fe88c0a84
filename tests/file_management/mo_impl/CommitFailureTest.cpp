#include "ChangesFixture.h"
#include "SystemFaults.h"

#include <Poco/File.h>
#include <cerrno>
#include <filesystem>
#include <stdexcept>

using testing::ElementsAre;
using testing::IsEmpty;
using zoltest::FileCreationMask;
using zoltest::fileGroup;
using zoltest::fileInformation;
using zoltest::RecordedLog;
using zoltest::SystemFaults;
using zoltest::Texts;

namespace
{

// Thrown by what may throw anything.
struct Foreign
{};

class CommitFailure : public zoltest::Changes
{
protected:
    void expectOnlyBeginningAndEnd(const RecordedLog& log) const
    {
        EXPECT_THAT(log.statements(), ElementsAre("enter  >> ", "exit  << "));
    }

    SystemFaults system;
};

std::string textOfFailedCreation(const std::string& directory)
{
    try
    {
        Poco::File(directory).createDirectories();
    }
    catch (const std::exception& failure)
    {
        return failure.what();
    }
    return "no failure";
}

} // namespace

TEST_F(CommitFailure, FileThatHasVanishedIsSkippedSilently)
{
    tree.file("d/f");
    tree.file("d/g");
    ASSERT_EQ(deleteM(fileInformation("f", fileGroup("d"))), 0);
    ASSERT_EQ(deleteM(fileInformation("g", fileGroup("d"))), 0);
    std::filesystem::remove(tree.path("d/f"));
    const RecordedLog log;
    EXPECT_EQ(worker.commit(), 0);
    expectOnlyBeginningAndEnd(log);
    EXPECT_THAT(tree.listing(), ElementsAre("d d"));
}

TEST_F(CommitFailure, DirectoryThatHasVanishedIsSkippedSilently)
{
    tree.directory("a");
    tree.directory("b");
    ASSERT_EQ(deleteM(fileGroup("a")), 0);
    ASSERT_EQ(deleteM(fileGroup("b")), 0);
    std::filesystem::remove(tree.path("a"));
    const RecordedLog log;
    EXPECT_EQ(worker.commit(), 0);
    expectOnlyBeginningAndEnd(log);
    EXPECT_THAT(tree.listing(), IsEmpty());
}

TEST_F(CommitFailure, FileBelowWhatIsNoDirectoryAnyMoreIsSkippedSilently)
{
    tree.file("d/f");
    tree.file("e/f");
    ASSERT_EQ(deleteM(fileInformation("f", fileGroup("d"))), 0);
    ASSERT_EQ(deleteM(fileInformation("f", fileGroup("e"))), 0);
    std::filesystem::remove_all(tree.path("d"));
    tree.file("d");
    const RecordedLog log;
    EXPECT_EQ(worker.commit(), 0);
    expectOnlyBeginningAndEnd(log);
    EXPECT_THAT(tree.listing(), ElementsAre("d e", "f d 1"));
}

TEST_F(CommitFailure, WhateverRemoveThrowsIsDroppedAndTheRestGoes)
{
    tree.file("d/f1");
    tree.file("d/f2");
    tree.file("d/f3");
    tree.directory("r1");
    tree.directory("r2");
    tree.directory("r3");
    for (const char* name : {"f1", "f2", "f3"})
    {
        ASSERT_EQ(deleteM(fileInformation(name, fileGroup("d"))), 0);
    }
    for (const char* name : {"r1", "r2", "r3"})
    {
        ASSERT_EQ(deleteM(fileGroup(name)), 0);
    }
    system.remove = [](const std::string& path) {
        if (path.ends_with('1'))
        {
            throw std::runtime_error("can't be removed");
        }
        if (path.ends_with('2'))
        {
            throw Foreign();
        }
    };
    const RecordedLog log;
    EXPECT_EQ(worker.commit(), 0);
    expectOnlyBeginningAndEnd(log);
    EXPECT_THAT(tree.listing(), ElementsAre("d d", "d r1", "d r2", "f d/f1 1", "f d/f2 1"));
}

TEST_F(CommitFailure, WhatCouldNotBeRemovedIsNotTriedAgain)
{
    tree.directory("a");
    ASSERT_EQ(deleteM(fileGroup("a")), 0);
    system.remove = [](const std::string&) { throw std::runtime_error("can't be removed"); };
    ASSERT_EQ(worker.commit(), 0);
    system.remove = nullptr;
    EXPECT_EQ(worker.commit(), 0);
    EXPECT_THAT(tree.listing(), ElementsAre("d a"));
}

TEST_F(CommitFailure, DirectoryThatCannotBeCreatedEndsTheCommit)
{
    tree.file("d/old");
    tree.file("f");
    tree.directory("gone");
    ASSERT_EQ(deleteM(fileInformation("old", fileGroup("d"))), 0);
    ASSERT_EQ(create("a"), 0);
    ASSERT_EQ(create("x", fileGroup("f")), 0); // a regular file is in the place of its parent
    ASSERT_EQ(create("z"), 0);
    ASSERT_EQ(deleteM(fileGroup("gone")), 0);

    RecordedLog log;
    EXPECT_EQ(worker.commit(), -1);
    EXPECT_THAT(log.statements(), ElementsAre("enter  >> ",
                                              "plain FileMTransaction::commit, unexpected exception : " +
                                                  textOfFailedCreation(tree.path("f/x")),
                                              "exit  << "));
    const Texts after = tree.listing();
    EXPECT_THAT(after, ElementsAre("d a", "d d", "d gone", "f f 1"));
    EXPECT_EQ(tree.mode("a"), 0770U);

    log.clear();
    EXPECT_EQ(worker.commit(), 0);
    expectOnlyBeginningAndEnd(log);
    EXPECT_EQ(tree.listing(), after);
}

TEST_F(CommitFailure, TheTransactionIsReadyForMoreAfterAFailedCommit)
{
    tree.file("f");
    ASSERT_EQ(create("x", fileGroup("f")), 0);
    ASSERT_EQ(worker.commit(), -1);
    ASSERT_EQ(create("a"), 0);
    EXPECT_EQ(worker.commit(), 0);
    EXPECT_THAT(tree.listing(), ElementsAre("d a", "f f 1"));
}

TEST_F(CommitFailure, AnyStandardExceptionOfACreationIsTracedWithItsText)
{
    ASSERT_EQ(create("a"), 0);
    system.createDirectory = [](const std::string&) { throw std::logic_error("so it is"); };
    const RecordedLog log;
    EXPECT_EQ(worker.commit(), -1);
    EXPECT_THAT(log.statements(),
                ElementsAre("enter  >> ", "plain FileMTransaction::commit, unexpected exception : so it is",
                            "exit  << "));
}

TEST_F(CommitFailure, ModeThatCannotBeSetIsLoggedAndTheCommitGoesOn)
{
    tree.directory("gone");
    ASSERT_EQ(create("a"), 0);
    ASSERT_EQ(create("b"), 0);
    ASSERT_EQ(deleteM(fileGroup("gone")), 0);
    system.chmod = [this](const std::string& path, mode_t) { return path == directoryText("a") ? EPERM : 0; };
    const FileCreationMask mask(027);
    const RecordedLog log;
    EXPECT_EQ(worker.commit(), 0);
    EXPECT_THAT(log.statements(),
                ElementsAre("enter  >> ",
                            "severity-4 Unable to modify the permissions of " + directoryText("a"),
                            "exit  << "));
    EXPECT_THAT(tree.listing(), ElementsAre("d a", "d b"));
    EXPECT_EQ(tree.mode("a"), 0750U);
    EXPECT_EQ(tree.mode("b"), 0770U);
}

TEST_F(CommitFailure, RegularFileInThePlaceOfANewDirectoryOnlyRefusesTheMode)
{
    tree.file("f");
    tree.chmod("f", 0600);
    ASSERT_EQ(create("f"), 0);
    const RecordedLog log;
    EXPECT_EQ(worker.commit(), 0);
    EXPECT_THAT(log.statements(),
                ElementsAre("enter  >> ",
                            "severity-4 Unable to modify the permissions of " + directoryText("f"),
                            "exit  << "));
    EXPECT_THAT(tree.listing(), ElementsAre("f f 1"));
    EXPECT_EQ(tree.mode("f"), 0600U);
}

TEST_F(CommitFailure, LinkToNothingInThePlaceOfANewDirectoryOnlyRefusesTheMode)
{
    tree.link("l", tree.path("nothing"));
    ASSERT_EQ(create("l"), 0);
    const RecordedLog log;
    EXPECT_EQ(worker.commit(), 0);
    EXPECT_THAT(log.statements(),
                ElementsAre("enter  >> ",
                            "severity-4 Unable to modify the permissions of " + directoryText("l"),
                            "exit  << "));
    EXPECT_THAT(tree.listing(), ElementsAre("l l -> " + tree.path("nothing")));
}

TEST_F(CommitFailure, ParentThatCannotBeLookedAtCountsSilentlyAsOneWithoutTheSetgidBit)
{
    tree.directory("p");
    tree.chmod("p", 02755);
    ASSERT_EQ(create("a", fileGroup("p")), 0);
    Texts lookedAt;
    system.stat = [&](const std::string& path) {
        lookedAt.push_back(path);
        return EACCES;
    };
    const RecordedLog log;
    EXPECT_EQ(worker.commit(), 0);
    system.stat = nullptr;
    expectOnlyBeginningAndEnd(log);
    EXPECT_THAT(lookedAt, ElementsAre(directoryText("p")));
    EXPECT_EQ(tree.mode("p/a"), 0770U);
}
