#include "Faults.h"
#include "ReadsFixture.h"
#include "support/WorkingDirectory.h"

#include <Poco/DirectoryIterator.h>
#include <stdexcept>

using namespace testing;

namespace zoltest
{

namespace
{

using ChildCount = Reads;

TEST_F(ChildCount, IsThatOfTheNamesThatAnIterationGives)
{
    tree.file("a/f");
    tree.file("a/g");
    tree.file("a/.filemnohousekeeping");
    tree.link("a/toFile", tree.path("a/f"));
    tree.link("a/toDirectory", tree.path());
    tree.directory("a/d");
    tree.directory("a/gone");
    create("new", groupDn("a"));
    create("inner", groupDn("new", groupDn("a")));
    remove(groupDn("gone", groupDn("a")));
    remove(fileDn("g", groupDn("a")));

    EXPECT_EQ(count(groupDn("a"), "FileInformation"), 1U);
    EXPECT_EQ(count(groupDn("a"), "FileGroup"), 3U);
    for (const char* className : {"FileInformation", "FileGroup"})
    {
        EXPECT_THAT(children(groupDn("a"), className), SizeIs(count(groupDn("a"), className)));
    }
}

TEST_F(ChildCount, IsThatOfTheMomentAndTakesNothingFromAnIteration)
{
    tree.file("f");
    const auto id = newIterator(fileM, "FileInformation");
    EXPECT_EQ(count(fileM, "FileInformation"), 1U);
    tree.file("g");
    EXPECT_EQ(count(fileM, "FileInformation"), 2U);

    EXPECT_EQ(next(id), "f");
}

TEST_F(ChildCount, OfConfigurationDataIsNoneAlthoughAnIterationYieldsOne)
{
    EXPECT_EQ(count(fileM, "FileMConfigData"), 0U);
    EXPECT_THAT(children(fileM, "FileMConfigData"), ElementsAre("1"));
}

TEST_F(ChildCount, OfOtherClassesIsNoneAndWritesNothing)
{
    tree.directory("d");
    const RecordedLog log;

    for (const char* className : {"FileMConfigData", "FileGroupPolicy", "filegroup", ""})
    {
        EXPECT_EQ(count(fileM, className), 0U) << className;
    }
    EXPECT_THAT(log.statements(), IsEmpty());
}

TEST_F(ChildCount, OfAMissingDirectoryOrAFileIsThatOfItsNewDirectories)
{
    create("child", groupDn("missing"));
    tree.file("f");

    EXPECT_EQ(count(groupDn("missing"), "FileGroup"), 1U);
    EXPECT_EQ(count(groupDn("missing"), "FileInformation"), 0U);
    EXPECT_EQ(count(groupDn("f"), "FileGroup"), 0U);
}

TEST_F(ChildCount, IsWhatWasCountedUntilTheWalkFailed)
{
    for (int i = 0; i < 16; ++i)
    {
        tree.file("d/f" + std::to_string(i));
    }
    // taken for a directory by its target from here, and then nothing is there
    tree.link("d/link", "target");
    tree.directory("elsewhere/target");
    const WorkingDirectory elsewhere(tree.path("elsewhere"));
    unsigned long long before = 0;
    for (Poco::DirectoryIterator entry(tree.path("d")); entry.name() != "link"; ++entry)
    {
        ++before;
    }
    const RecordedLog log;

    EXPECT_EQ(count(groupDn("d"), "FileInformation"), before);
    EXPECT_THAT(log.statements(), ElementsAre("plain Unexpected exception :File not found"));
}

TEST_F(ChildCount, LetsThroughWhatTheConversionOfTheParentThrowsForAnyClass)
{
    Faults faults;
    faults.classOfDn = [] { throw std::runtime_error("no class"); };

    for (const char* className : {"FileGroup", "FileInformation", "FileMConfigData", "Other"})
    {
        unsigned long long result = 4711;
        EXPECT_THROW(worker.countMoChildren(fileM.c_str(), className, &result), std::runtime_error);
        EXPECT_EQ(result, 0U);
    }
}

} // namespace

} // namespace zoltest
