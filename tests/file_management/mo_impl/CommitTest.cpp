#include "ChangesFixture.h"
#include "SystemFaults.h"
#include "support/ChildProcess.h"

#include <array>
#include <fcntl.h>
#include <filesystem>
#include <sys/resource.h>
#include <unistd.h>

using testing::ElementsAre;
using testing::IsEmpty;
using zoltest::FileCreationMask;
using zoltest::fileGroup;
using zoltest::fileInformation;
using zoltest::fileM;
using zoltest::RecordedLog;
using zoltest::SystemFaults;
using zoltest::Texts;

namespace
{

constexpr mode_t setgid = 02000;

class Commit : public zoltest::Changes
{
protected:
    Commit() { tree.chmod("", 0755); }

    // Below the tree's root as well as below everything made in it.
    void setSetgid(const std::string& name) const { tree.chmod(name, tree.mode(name) | setgid); }

    // Each call as "<text of the path below the tree> <octal mode>".
    void keepModes()
    {
        system.chmod = [this](const std::string& path, mode_t mode) {
            std::array<char, 16> octal{};
            std::snprintf(octal.data(), octal.size(), "%o", mode);
            modes.push_back(path.substr(tree.path().size() + 1) + " " + octal.data());
            return 0;
        };
    }

    SystemFaults system;
    Texts modes;
};

} // namespace

TEST_F(Commit, OfNothingTouchesNothing)
{
    tree.file("d/f");
    tree.chmod("d", 0700);
    const Texts before = tree.listing();
    keepModes();
    system.createDirectory = [](const std::string& path) { ADD_FAILURE() << "created " << path; };
    system.remove = [](const std::string& path) { ADD_FAILURE() << "removed " << path; };

    const RecordedLog log;
    EXPECT_EQ(worker.commit(), 0);
    EXPECT_THAT(log.statements(), ElementsAre("enter  >> ", "exit  << "));
    EXPECT_EQ(tree.listing(), before);
    EXPECT_THAT(modes, IsEmpty());
}

TEST_F(Commit, NeedsNoMoreHandlesForRemovalsWhereItHasMadeDeepDirectories)
{
    tree.directory("gone/b/c");
    ASSERT_EQ(remove(fileGroup("gone")), "0 bool[true]");
    std::string parentDn = fileM;
    for (int level = 0; level < 25; ++level)
    {
        ASSERT_EQ(create("new", parentDn), 0);
        parentDn = fileGroup("new", parentDn);
    }
    const zoltest::ChildOutcome outcome = zoltest::runInChild([this] {
        const int lowest = ::open("/", O_PATH | O_CLOEXEC);
        ::close(lowest);
        const auto three = static_cast<rlim_t>(lowest + 3);
        const rlimit limit{three, three};
        return ::setrlimit(RLIMIT_NOFILE, &limit) == 0 ? worker.commit() : 1;
    });
    EXPECT_EQ(outcome.exitStatus, 0) << outcome.standardError;
    EXPECT_FALSE(std::filesystem::exists(tree.path("gone")));
}

TEST_F(Commit, AppliesAllThatWaitsAndTracesOnlyItsBeginningAndItsEnd)
{
    tree.file("d/f");
    tree.directory("gone");
    ASSERT_EQ(deleteM(fileInformation("f", fileGroup("d"))), 0);
    ASSERT_EQ(create("new"), 0);
    ASSERT_EQ(deleteM(fileGroup("gone")), 0);

    const RecordedLog log;
    EXPECT_EQ(worker.commit(), 0);
    EXPECT_THAT(log.statements(), ElementsAre("enter  >> ", "exit  << "));
    EXPECT_THAT(tree.listing(), ElementsAre("d d", "d new"));
}

TEST_F(Commit, LeavesNothingWaiting)
{
    tree.file("d/f");
    tree.directory("gone");
    ASSERT_EQ(deleteM(fileInformation("f", fileGroup("d"))), 0);
    ASSERT_EQ(create("new"), 0);
    ASSERT_EQ(deleteM(fileGroup("gone")), 0);
    ASSERT_EQ(worker.commit(), 0);

    tree.file("d/f");
    tree.directory("gone");
    std::filesystem::remove(tree.path("new"));
    EXPECT_EQ(worker.commit(), 0);
    EXPECT_THAT(tree.listing(), ElementsAre("d d", "d gone", "f d/f 1"));
}

TEST_F(Commit, LeavesTheTransactionReadyForMore)
{
    ASSERT_EQ(create("a"), 0);
    ASSERT_EQ(worker.commit(), 0);
    ASSERT_EQ(deleteM(fileGroup("a")), 0);
    ASSERT_EQ(create("b"), 0);
    EXPECT_EQ(worker.commit(), 0);
    EXPECT_THAT(tree.listing(), ElementsAre("d b"));
}

TEST_F(Commit, RemovesFilesBeforeItCreatesDirectories)
{
    tree.file("d/name");
    ASSERT_EQ(deleteM(fileInformation("name", fileGroup("d"))), 0);
    ASSERT_EQ(create("name", fileGroup("d")), 0);
    EXPECT_EQ(worker.commit(), 0);
    EXPECT_THAT(tree.listing(), ElementsAre("d d", "d d/name"));
    EXPECT_EQ(tree.mode("d/name"), 0770U);
}

TEST_F(Commit, CreatesDirectoriesBeforeItRemovesDirectories)
{
    tree.file("d/f");
    ASSERT_EQ(create("new", fileGroup("d")), 0);
    ASSERT_EQ(remove(fileGroup("d")), "0 bool[true]");
    Texts created;
    system.createDirectory = [&](const std::string& path) { created.push_back(path); };
    EXPECT_EQ(worker.commit(), 0);
    EXPECT_THAT(created, ElementsAre(tree.path("d/new")));
    EXPECT_THAT(tree.listing(), IsEmpty());
}

TEST_F(Commit, GoesThroughEachSetInTheOrderOfTheWholeTexts)
{
    for (const char* name : {"c/x", "c-d", "c.d", "c", "c0"})
    {
        tree.directory(std::string("dirs/") + name);
    }
    for (const char* name : {"f/x", "f-g", "f.g"})
    {
        tree.file(std::string("files/") + name);
    }
    const std::string dirs = fileGroup("dirs");
    const std::string files = fileGroup("files");
    for (const char* name : {"c0", "c", "c.d", "c-d"})
    {
        ASSERT_EQ(remove(fileGroup(name, dirs)), "0 bool[true]");
    }
    ASSERT_EQ(remove(fileGroup("x", fileGroup("c", dirs))), "0 bool[true]");
    ASSERT_EQ(deleteM(fileInformation("x", fileGroup("f", files))), 0);
    ASSERT_EQ(deleteM(fileInformation("f.g", files)), 0);
    ASSERT_EQ(deleteM(fileInformation("f-g", files)), 0);
    for (const char* name : {"n0", "n", "n.m", "n-m", "n,m"})
    {
        ASSERT_EQ(create(name), 0);
    }
    ASSERT_EQ(create("x", fileGroup("n")), 0);

    Texts steps;
    const auto keep = [&](const std::string& path) { steps.push_back(path.substr(tree.path().size() + 1)); };
    system.createDirectory = keep;
    system.remove = keep;
    EXPECT_EQ(worker.commit(), 0);
    EXPECT_THAT(steps, ElementsAre("files/f-g", "files/f.g", "files/f/x", //
                                   "n,m", "n-m", "n.m", "n", "n/x", "n0", //
                                   "dirs/c-d", "dirs/c.d", "dirs/c", "dirs/c/x", "dirs/c0"));
}

TEST_F(Commit, NewDirectoryGets0770WhateverTheMask)
{
    ASSERT_EQ(create("strict"), 0);
    {
        const FileCreationMask mask(077);
        ASSERT_EQ(worker.commit(), 0);
    }
    ASSERT_EQ(create("lax"), 0);
    {
        const FileCreationMask mask(0);
        ASSERT_EQ(worker.commit(), 0);
    }
    EXPECT_EQ(tree.mode("strict"), 0770U);
    EXPECT_EQ(tree.mode("lax"), 0770U);
}

TEST_F(Commit, NewDirectoryBelowSetgidParentGets02770)
{
    tree.directory("p");
    setSetgid("p");
    ASSERT_EQ(create("a", fileGroup("p")), 0);
    ASSERT_EQ(create("a"), 0);
    EXPECT_EQ(worker.commit(), 0);
    EXPECT_EQ(tree.mode("p/a"), 02770U);
    EXPECT_EQ(tree.mode("a"), 0770U);
}

TEST_F(Commit, OtherBitsOfTheParentAreNotTheChilds)
{
    tree.directory("p");
    tree.chmod("p", 05777); // set-user-ID and sticky
    ASSERT_EQ(create("a", fileGroup("p")), 0);
    EXPECT_EQ(worker.commit(), 0);
    EXPECT_EQ(tree.mode("p/a"), 0770U);
}

TEST_F(Commit, AWholeChainOfNewDirectoriesBelowASetgidParentGets02770)
{
    setSetgid("");
    ASSERT_EQ(create("c", fileGroup("b", fileGroup("a"))), 0);
    ASSERT_EQ(create("b", fileGroup("a")), 0);
    ASSERT_EQ(create("a"), 0);
    keepModes();
    EXPECT_EQ(worker.commit(), 0);
    EXPECT_EQ(tree.mode("a"), 02770U);
    EXPECT_EQ(tree.mode("a/b"), 02770U);
    EXPECT_EQ(tree.mode("a/b/c"), 02770U);
    EXPECT_THAT(modes, ElementsAre("a/ 2770", "a/b/ 2770", "a/b/c/ 2770"));
}

TEST_F(Commit, ParentThatLosesItsSetgidBitInTheSameCommitCountsWithoutIt)
{
    tree.directory("p");
    setSetgid("p");
    ASSERT_EQ(create("p"), 0);
    ASSERT_EQ(create("a", fileGroup("p")), 0);
    EXPECT_EQ(worker.commit(), 0);
    EXPECT_EQ(tree.mode("p"), 0770U);
    EXPECT_EQ(tree.mode("p/a"), 0770U);
}

TEST_F(Commit, ParentThatGetsTheSetgidBitInTheSameCommitCountsWithIt)
{
    tree.directory("p");
    tree.chmod("p", 0755);
    setSetgid("");
    ASSERT_EQ(create("p"), 0);
    ASSERT_EQ(create("a", fileGroup("p")), 0);
    EXPECT_EQ(worker.commit(), 0);
    EXPECT_EQ(tree.mode("p"), 02770U);
    EXPECT_EQ(tree.mode("p/a"), 02770U);
}

TEST_F(Commit, MissingAncestorsAreLeftToTheMask)
{
    ASSERT_EQ(create("new", fileGroup("b", fileGroup("a"))), 0);
    const FileCreationMask mask(027);
    keepModes();
    EXPECT_EQ(worker.commit(), 0);
    EXPECT_EQ(tree.mode("a"), 0750U);
    EXPECT_EQ(tree.mode("a/b"), 0750U);
    EXPECT_EQ(tree.mode("a/b/new"), 0770U);
    EXPECT_THAT(modes, ElementsAre("a/b/new/ 770"));
}

TEST_F(Commit, DirectoryThatHasAppearedMeanwhileGetsTheModeOfANewOne)
{
    ASSERT_EQ(create("a"), 0);
    tree.file("a/f");
    tree.chmod("a", 0700);
    const RecordedLog log;
    EXPECT_EQ(worker.commit(), 0);
    EXPECT_THAT(log.statements(), ElementsAre("enter  >> ", "exit  << "));
    EXPECT_EQ(tree.mode("a"), 0770U);
    EXPECT_THAT(tree.listing(), ElementsAre("d a", "f a/f 1"));
}

TEST_F(Commit, ADeletedDirectoryGoesWithAllThatHasComeIntoItMeanwhile)
{
    tree.directory("a");
    ASSERT_EQ(deleteM(fileGroup("a")), 0);
    tree.file("a/b/f");
    tree.file("a/.filemnodirectorydelete");
    EXPECT_EQ(worker.commit(), 0);
    EXPECT_THAT(tree.listing(), IsEmpty());
}

TEST_F(Commit, WhatStandsInThePlaceOfADeletedFileGoesWithItsContent)
{
    tree.file("d/f");
    ASSERT_EQ(deleteM(fileInformation("f", fileGroup("d"))), 0);
    std::filesystem::remove(tree.path("d/f"));
    tree.file("d/f/inner");
    EXPECT_EQ(worker.commit(), 0);
    EXPECT_THAT(tree.listing(), ElementsAre("d d"));
}

TEST_F(Commit, ANewDirectoryThatWasWithdrawnIsNotTouched)
{
    ASSERT_EQ(create("a"), 0);
    ASSERT_EQ(deleteM(fileGroup("a")), 0);
    tree.directory("a");
    tree.chmod("a", 0700);
    keepModes();
    EXPECT_EQ(worker.commit(), 0);
    EXPECT_EQ(tree.mode("a"), 0700U);
    EXPECT_THAT(modes, IsEmpty());
}

TEST_F(Commit, ChangesNoOwnerAndNoGroup)
{
    bool isChanged = false;
    system.chown = [&](const std::string&, uid_t, gid_t) {
        isChanged = true;
        return 0;
    };
    setSetgid("");
    ASSERT_EQ(create("a"), 0);
    EXPECT_EQ(worker.commit(), 0);
    EXPECT_FALSE(isChanged);
}

TEST_F(Commit, AnOpenIterationGoesOn)
{
    tree.directory("a");
    ASSERT_EQ(create("b"), 0);
    unsigned long long iterator = 0;
    ASSERT_EQ(worker.newIterator(fileM.c_str(), "FileGroup", &iterator), 0);
    char* first = nullptr;
    ASSERT_EQ(worker.next(iterator, &first), 0);
    ASSERT_EQ(worker.commit(), 0);
    char* second = nullptr;
    EXPECT_EQ(worker.next(iterator, &second), 0);
    EXPECT_STREQ(first, "a");
    EXPECT_STREQ(second, "b");
}
